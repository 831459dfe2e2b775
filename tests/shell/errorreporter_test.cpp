#include "shell/errorreporter.h"

#include "casedata/casefile.h"

#include "shellfixture.h"

#include <gtest/gtest.h>

#include <new>

namespace {

namespace fs = std::filesystem;

class ErrorReporter : public rwtest::ShellTest {};

struct ReportRow {
    int number;
    const char* procedure;
    const char* text;
    const char* hintEnd;  // the fixed end of the hint; nullptr: no hint
};

class Reports : public rwtest::ShellTest, public testing::WithParamInterface<ReportRow> {};

TEST_P(Reports, AskLogAndHint)
{
    const ReportRow& row = GetParam();
    msgs.answerNext(false);
    rw::ReportError(ctx, rw::Fault(static_cast<std::int16_t>(row.number), row.procedure));
    ASSERT_GE(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING!");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Exclamation);
    EXPECT_TRUE(msgs.shown[0].question);
    EXPECT_EQ(msgs.shown[0].text, row.text);
    if (row.hintEnd) {
        ASSERT_EQ(msgs.shown.size(), 2u);
        const rwtest::ShownMessage& hint = msgs.shown[1];
        EXPECT_EQ(hint.title, "Possible Solution:");
        EXPECT_EQ(hint.icon, rw::MsgIcon::Information);
        EXPECT_FALSE(hint.question);
        const std::string end = std::string("\n\n") + row.hintEnd;
        ASSERT_GT(hint.text.size(), end.size());
        EXPECT_EQ(hint.text.substr(hint.text.size() - end.size()), end);
        EXPECT_NE(hint.text.find("Ratewright Repair"), std::string::npos);
        if (row.number == 9) {
            EXPECT_EQ(hint.text.rfind("If this error took place in GetInterest(), ", 0), 0u);
        }
    } else {
        EXPECT_EQ(msgs.shown.size(), 1u);
    }
    EXPECT_EQ(rwtest::ReadText(install / "qraterr.log"), std::string("03-31-2018 -> ") + row.text + "\n");
    EXPECT_EQ(program.ends, 1);
    EXPECT_TRUE(files.saveFolders.empty());  // No: nothing saved
}

INSTANTIATE_TEST_SUITE_P(
    ErrorReporter, Reports,
    testing::Values(
        ReportRow{9, "GetInterest",
                  "Error 9, Subscript out of range, encountered.  Location of error: GetInterest.  Do you want to "
                  "save your data before the program ABORTS?",
                  "Sometimes error 9 occurs when a transaction date, other than the due date, has the same date as "
                  "the Start Date (Initial Inputs), or when a transaction date is on the Stop Date (Initial Inputs)."},
        ReportRow{9, "Center",
                  "Error 9, Subscript out of range, encountered.  Location of error: Center.  Do you want to save "
                  "your data before the program ABORTS?",
                  "Sometimes error 9 occurs when a transaction date, other than the due date, has the same date as "
                  "the Start Date (Initial Inputs), or when a transaction date is on the Stop Date (Initial Inputs)."},
        ReportRow{321, "OpenRates",
                  "Error 321, Invalid file format, encountered.  Location of error: OpenRates.  Do you want to save "
                  "your data before the program ABORTS?",
                  "Sometimes reinstalling the program or getting a replacement program solves the problem."},
        ReportRow{13, "BuildTimeLine",
                  "Error 13, Type mismatch, encountered.  Location of error: BuildTimeLine.  Do you want to save "
                  "your data before the program ABORTS?",
                  nullptr},
        ReportRow{6, "CalcUSPRPen",
                  "Error 6, Overflow, encountered.  Location of error: CalcUSPRPen.  Do you want to save your data "
                  "before the program ABORTS?",
                  nullptr}));

// Checks, when the question comes, that the recovery copy is already there.
class CheckingMessages : public rwtest::RecordingMessages {
public:
    std::function<void()> onAsk;
    bool ask(std::string_view title, std::string_view text, rw::MsgIcon icon) override
    {
        if (onAsk)
            onAsk();
        return RecordingMessages::ask(title, text, icon);
    }
};

TEST_F(ErrorReporter, TheRecoveryCopyIsWrittenFirstAndYesSaves)
{
    CheckingMessages checking;
    rw::ShellContext c{session, checking, files, dialogs, program, clock};
    session.kase.init.sName = "Unsaved work";
    session.gbSaved = 0;
    bool copyBeforeQuestion = false;
    checking.onAsk = [&] {
        copyBeforeQuestion = rwtest::ReadBytes(install / "DEBUG.INT") == rw::EncodeCase(session.kase);
    };
    checking.answerNext(true);
    files.saves.push_back((cases / "RESCUED.INT").string());
    rw::ReportError(c, 13, "GetInterest");
    EXPECT_TRUE(copyBeforeQuestion);
    EXPECT_EQ(rwtest::ReadBytes(cases / "RESCUED.INT"), rw::EncodeCase(session.kase));
    EXPECT_TRUE(fs::exists(install / "qraterr.log"));
    EXPECT_EQ(program.ends, 1);
}

TEST_F(ErrorReporter, TwoErrorsLeaveTwoLinesOlderFirst)
{
    msgs.defaultAnswer = false;
    clock.day = rw::Date::fromCivil(2018, 1, 5);
    rw::ReportError(ctx, 9, "GetInterest");
    clock.day = rw::Date::fromCivil(2018, 11, 20);
    rw::ReportError(ctx, 13, "BuildTimeLine");
    EXPECT_EQ(rwtest::ReadText(install / "qraterr.log"),
              "01-05-2018 -> Error 9, Subscript out of range, encountered.  Location of error: GetInterest.  Do you "
              "want to save your data before the program ABORTS?\n"
              "11-20-2018 -> Error 13, Type mismatch, encountered.  Location of error: BuildTimeLine.  Do you want "
              "to save your data before the program ABORTS?\n");
    EXPECT_EQ(program.ends, 2);
}

TEST_F(ErrorReporter, AFailingSaveDoesNotStopTheReport)
{
    msgs.answerNext(true);
    files.saves.push_back((cases / "no-such-folder" / "X.INT").string());
    rw::ReportError(ctx, 9, "GetInterest");
    EXPECT_TRUE(fs::exists(install / "qraterr.log"));
    EXPECT_EQ(program.ends, 1);
    EXPECT_EQ(msgs.shown.back().title, "Possible Solution:");
}

TEST_F(ErrorReporter, RunCommandHandsFaultsToTheReporter)
{
    msgs.defaultAnswer = false;
    bool ran = false;
    EXPECT_TRUE(rw::RunCommand(ctx, "mnuViewReports_Click", [&] { ran = true; }));
    EXPECT_TRUE(ran);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(program.ends, 0);

    struct Row {
        std::function<void()> body;
        std::string text;
    };
    const std::string ask = ".  Do you want to save your data before the program ABORTS?";
    for (const Row& row :
         {Row{[] { rw::ThrowFault(9, "GetStdPeriodRate"); },
              "Error 9, Subscript out of range, encountered.  Location of error: GetStdPeriodRate" + ask},
          Row{[] { throw std::runtime_error("boom"); },
              "Error 5, Invalid procedure call or argument, encountered.  Location of error: Cmd" + ask},
          Row{[] { throw std::bad_alloc(); }, "Error 7, Out of memory, encountered.  Location of error: Cmd" + ask}}) {
        msgs.clear();
        EXPECT_FALSE(rw::RunCommand(ctx, "Cmd", row.body));
        ASSERT_FALSE(msgs.shown.empty());
        EXPECT_EQ(msgs.shown[0].text, row.text);
    }
    EXPECT_EQ(program.ends, 3);
}

}  // namespace
