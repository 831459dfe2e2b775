// What may end the program: the error reporter (the question with and
// without a fault's explanation, the log line, the hints of errors 9 and
// 321, the recovery copy), the command boundary (a refused computation ends
// nothing), and the rate currency alert at the dates of a release.

#include "shell/errorreporter.h"
#include "shell/ratealert.h"

#include "casedata/casefile.h"
#include "shellfixture.h"

#include <new>

namespace {

namespace fs = std::filesystem;

const std::string kAsk = ".  Do you want to save your data before the program ABORTS?";
const std::string kRepair
    = "run Ratewright Repair (in the Tools folder of the Ratewright program group) to look for "
      "program files that are damaged or in conflict with other programs.\n\n";

struct ReportRow {
    std::string name;
    rw::Fault fault;
    std::string text, hint;  // no hint when empty
    friend void PrintTo(const ReportRow& r, std::ostream* os) { *os << r.name; }
};

class Reports : public rwtest::ShellTest, public testing::WithParamInterface<ReportRow> { };

TEST_P(Reports, AskLogHintAndEnd)
{
    const ReportRow& row = GetParam();
    msgs.answerNext(false);
    rw::ReportError(ctx, row.fault);
    ASSERT_EQ(msgs.shown.size(), row.hint.empty() ? 1u : 2u);
    EXPECT_EQ(std::tie(msgs.shown[0].title, msgs.shown[0].icon, msgs.shown[0].question,
                       msgs.shown[0].text),
              std::tuple("WARNING!", rw::MsgIcon::Exclamation, true, row.text));
    if (!row.hint.empty()) {
        EXPECT_EQ(std::tie(msgs.shown[1].title, msgs.shown[1].icon, msgs.shown[1].text),
                  std::tuple("Possible Solution:", rw::MsgIcon::Information, row.hint));
    }
    EXPECT_EQ(rwtest::ReadText(paths.errorLog()), "03-31-2018 -> " + row.text + "\n");
    EXPECT_EQ(program.ends, 1);
    EXPECT_TRUE(files.saveFolders.empty());  // No: nothing saved
}

INSTANTIATE_TEST_SUITE_P(
    ErrorReporter, Reports,
    testing::Values(
        ReportRow{"Error9", rw::Fault(9, "GetInterest"),
                  "Error 9, Subscript out of range, encountered.  Location of error: GetInterest"
                      + kAsk,
                  "If this error took place in GetInterest(), " + kRepair
                      + "Sometimes error 9 occurs when a transaction date, other than the due "
                        "date, has the same "
                        "date as the Start Date (Initial Inputs), or when a transaction date is on "
                        "the Stop Date "
                        "(Initial Inputs)."},
        ReportRow{"Error321", rw::Fault(321, "OpenRates"),
                  "Error 321, Invalid file format, encountered.  Location of error: OpenRates"
                      + kAsk,
                  "To look for the cause, " + kRepair
                      + "Sometimes reinstalling the program or getting a replacement program "
                        "solves the problem."},
        ReportRow{"WithTheFaultsExplanation",
                  rw::Fault(6, "CalcUSPRPen", "the penalty is out of range"),
                  "Error 6, Overflow, encountered.  Location of error: CalcUSPRPen (the penalty is "
                  "out of range)"
                      + kAsk,
                  ""}),
    [](const auto& p) { return p.param.name; });

TEST_F(Reports, TheRecoveryCopyComesBeforeTheQuestionAndYesSaves)
{
    struct CheckingMessages : rwtest::RecordingMessages {
        std::function<void()> onAsk;
        bool ask(std::string_view title, std::string_view text, rw::MsgIcon icon) override
        {
            onAsk();
            return RecordingMessages::ask(title, text, icon);
        }
    } checking;
    rw::ShellContext c{session, checking, files, dialogs, program, clock};
    session.kase.init.sName = "Unsaved work";
    bool copied = false;
    checking.onAsk
        = [&] { copied = rwtest::ReadBytes(paths.recoveryCopy()) == rw::EncodeCase(session.kase); };
    files.saves.push_back((cases / "RESCUED.INT").string());
    rw::ReportError(c, 13, "GetInterest");
    EXPECT_TRUE(copied);
    EXPECT_EQ(rwtest::ReadBytes(cases / "RESCUED.INT"), rw::EncodeCase(session.kase));
    // A second error adds its line after the first; a save that fails does
    // not stop the report.
    clock.day = rw::Date::fromCivil(2018, 11, 20);
    files.saves.push_back((cases / "no-such-folder" / "X.INT").string());
    rw::ReportError(c, 9, "BuildTimeLine");
    const std::string log = rwtest::ReadText(paths.errorLog());
    EXPECT_TRUE(log.starts_with(
        "03-31-2018 -> Error 13, Type mismatch, encountered.  Location of error: GetInterest"));
    EXPECT_NE(log.find("\n11-20-2018 -> Error 9, Subscript out of range, encountered.  Location of "
                       "error: BuildTime"),
              std::string::npos);
    EXPECT_EQ(checking.shown.back().title, "Possible Solution:");
    EXPECT_EQ(program.ends, 2);
}

TEST_F(Reports, TheCommandBoundaryReportsFaultsAndShowsARefusal)
{
    msgs.defaultAnswer = false;
    EXPECT_TRUE(rw::RunCommand(ctx, "Cmd", [] {}));
    EXPECT_TRUE(msgs.shown.empty());
    // A refused computation: its message, and nothing ends or is logged.
    EXPECT_FALSE(rw::RunCommand(
        ctx, "Cmd", [] { throw rw::Refusal("Rate Not Available", "No rate for 1/1/1950."); }));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(
        std::tie(msgs.shown[0].title, msgs.shown[0].icon, msgs.shown[0].question,
                 msgs.shown[0].text),
        std::tuple("Rate Not Available", rw::MsgIcon::Exclamation, false, "No rate for 1/1/1950."));
    EXPECT_EQ(program.ends, 0);
    EXPECT_FALSE(fs::exists(paths.errorLog()));
    // Any other exception is a fault named after the command.
    for (const auto& [body, text] : std::vector<std::pair<std::function<void()>, std::string>>{
             {[] { throw std::runtime_error("boom"); },
              "Error 5, Invalid procedure call or argument"},
             {[] { throw std::bad_alloc(); }, "Error 7, Out of memory"}}) {
        msgs.clear();
        EXPECT_FALSE(rw::RunCommand(ctx, "Cmd", body));
        EXPECT_EQ(msgs.shown.at(0).text, text + ", encountered.  Location of error: Cmd" + kAsk);
    }
    EXPECT_EQ(program.ends, 2);
}

using Kind = rw::RateAlertKind;

TEST(RateAlert, FollowsTheDatesOfTheRelease)
{
    // The release of early 2018: verified through 3/31/2018, estimated through 6/30/2018.
    const std::string head
        = "This program has verified interest rates through March 31, 2018.  The program has "
          "estimated interest rates through June 30, 2018.  Since your stop date of ";
    const std::string estimate
        = " is past March 31, 2018, but not past June 30, 2018, this calculation should be "
          "considered an ESTIMATE.  \n\n";
    const std::string end = " is past June 30, 2018, the program can not continue.  ";
    // As typed: a two-digit year stays two digits, blanks stay.
    for (const auto& [typed, kind] :
         std::vector<std::pair<std::string, Kind>>{{"3/31/2018", Kind::None},
                                                   {"4/1/2018", Kind::Estimate},
                                                   {"6/30/2018", Kind::Estimate},
                                                   {"7/1/2018", Kind::End},
                                                   {"1/1/2000", Kind::None},
                                                   {"", Kind::None},
                                                   {"13/1/2018", Kind::None},
                                                   {"4/14/1810", Kind::None},
                                                   {"07/01/18", Kind::End},
                                                   {" 5/5/2018 ", Kind::Estimate}}) {
        SCOPED_TRACE(typed);
        const rw::RateAlert a = rw::CheckRateCurrency(typed, rwtest::Release2018());
        EXPECT_EQ(a.kind, kind);
        // The maker's advice follows the text checked here.
        EXPECT_TRUE(kind == Kind::None ? a.message.empty()
                                       : a.message.starts_with(
                                           head + typed + (kind == Kind::End ? end : estimate)))
            << a.message;
        EXPECT_EQ(a.exitCaption, kind == Kind::End        ? "End Program"
                                 : kind == Kind::Estimate ? "Continue With Current Program"
                                                          : "");
    }
    // The dates are the release's: late 2026 is verified through 12/31/2026, estimated through
    // 3/31/2027.
    const rw::ReleaseInfo& r = rwtest::FixtureRelease();
    EXPECT_EQ(rw::CheckRateCurrency("12/31/2026", r).kind, Kind::None);
    EXPECT_TRUE(rw::CheckRateCurrency("1/1/2027", r)
                    .message.starts_with(
                        "This program has verified interest rates through December 31, 2026.  The "
                        "program has estimated interest rates through March 31, 2027.  Since your "
                        "stop date of 1/1/2027 is past December 31, 2026, but not past March 31, "
                        "2027, this calculation should be considered an ESTIMATE.  \n\n"));
    EXPECT_EQ(rw::CheckRateCurrency("3/31/2027", r).kind, Kind::Estimate);
    EXPECT_EQ(rw::CheckRateCurrency("4/1/2027", r).kind, Kind::End);
    EXPECT_EQ(rw::CheckRateCurrency("1/1/2000", rw::ReleaseInfo{}).kind,
              Kind::End);  // without a release
}

TEST(RateAlert, OnlyTheEndAlertEndsTheProgram)
{
    rwtest::RecordingAlertWindow window;
    rwtest::RecordingProgram program;
    const rw::ReleaseInfo& release = rwtest::Release2018();
    EXPECT_TRUE(rw::RunRateCurrencyCheck("3/31/2018", release, window, program));
    EXPECT_TRUE(rw::RunRateCurrencyCheck("4/1/2018", release, window, program));
    EXPECT_EQ(program.ends, 0);
    EXPECT_FALSE(rw::RunRateCurrencyCheck("7/1/2018", release, window, program));
    EXPECT_EQ(program.ends, 1);
    ASSERT_EQ(window.alerts.size(), 2u);
    EXPECT_EQ(window.alerts[1].kind, Kind::End);
}

}  // namespace
