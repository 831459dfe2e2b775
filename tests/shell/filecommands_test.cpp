// The main window's commands: Open, New, Save, Save As, the closing
// question and the exit procedure; the tool bar, Payments, Payroll and Help
// messages.

#include "shell/filecommands.h"
#include "shell/mainwindow.h"

#include "casedata/casefile.h"
#include "shell/errorreporter.h"
#include "shell/settings.h"
#include "shellfixture.h"

namespace {

namespace fs = std::filesystem;

class FileCommands : public rwtest::ShellTest {
protected:
    // A case file: three payments, one deposit, the California business
    // authority, failure to file, the increased failure-to-pay rate (which
    // alone marks Failure to Pay), accuracy-related as 1 (any flag not 0 is
    // yes), the corporate overpayment rate and a suspension.
    std::string WriteSampleCase(const std::string& name)
    {
        rw::Case c;
        rw::ClearInputs(c);
        c.init.sName = "Sample";
        c.init.sTaxAuth = "CAB ";
        c.init.bFtoFile = c.init.bPayroll = c.init.b6651d1 = c.init.bCorpOPRate = -1;
        c.init.bAccRel = 1;
        c.init.dtIntSuspend = rw::Date::fromCivil(2017, 1, 1);
        c.init.nPmts = 3;
        c.pmts.assign(3, rw::PaymentRec{});
        c.init.nDeposits = 1;
        rwtest::WriteBytes(cases / name, rw::EncodeCase(c));
        return (cases / name).string();
    }
    std::string Setting(const char* section, const char* key)
    {
        return rw::SettingsFile(paths.iniFile()).read(section, key, "");
    }
    // What a cancelled or refused command leaves alone.
    auto Snap() const
    {
        return std::tuple(rw::EncodeCase(session.kase), session.gsFileName, session.title,
                          session.gbSaved, session.menus);
    }
};

TEST_F(FileCommands, OpenReadsTheCaseAndSetsMenusTitleFolderAndTable)
{
    const std::string path = WriteSampleCase("SAMPLE.INT");
    session.gsDataPath = "/start/here";
    files.opens.push_back(path);
    rw::FileOpen(ctx);
    EXPECT_EQ(files.openFolders, std::vector<std::string>{"/start/here"});
    EXPECT_EQ(std::tie(session.gsFileName, session.gbSaved, session.title),
              std::tuple(path, rw::Flag(-1), "2018, 1st Quarter Ratewright - " + path));
    EXPECT_EQ(session.gsDataPath, cases.path().string());
    EXPECT_EQ(Setting("Data Files", "Data File Path"), cases.path().string());
    EXPECT_EQ(session.menus, (rw::MenuState{.initialInputsChecked = true,
                                            .paymentsChecked = true,
                                            .ftPayChecked = true,
                                            .ftFileChecked = true,
                                            .accuracyChecked = true,
                                            .payrollChecked = true,
                                            .interestRatesChecked = true,
                                            .suspendChecked = true,
                                            .printEnabled = true,
                                            .reportsEnabled = true,
                                            .printButtonVisible = true,
                                            .viewButtonVisible = true,
                                            .saveEnabled = true,
                                            .saveButtonVisible = true,
                                            .note = std::string(rw::kNextStepNote)}));
    EXPECT_EQ(dialogs.initialInputsShown, 1);
    EXPECT_EQ(session.gRates.at(0).fUPRate, 0.02f);  // the case's own authority
    EXPECT_EQ(rwtest::ReadBytes(install / "DEBUG.INT"),
              rwtest::ReadBytes(path));  // the recovery copy
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(FileCommands, ACancelledOrRefusedOpenLeavesTheSessionAsItWas)
{
    files.opens.push_back(WriteSampleCase("SAMPLE.INT"));
    rw::FileOpen(ctx);
    std::vector<char> cut = rwtest::ReadBytes(WriteSampleCase("CUT.INT"));
    cut.resize(600);
    rwtest::WriteBytes(cases / "CUT.INT", cut);
    rwtest::WriteBytes(cases / "OTHER.INT", {'P', 'K', 3, 4, 0, 0, 0, 0});
    const auto before = Snap();
    const std::string notACase(rw::RateTableNotACaseText());
    // The answer of the dialog (none: cancel) and what the one message says.
    for (const auto& [answer, said] :
         std::vector<std::pair<std::optional<std::string>, std::string>>{
             {std::nullopt, ""},
             {(install / "fed.tbl").string(), notACase},
             {"CA_BUS1.TBL", notACase},
             {"x.Tbl", notACase},
             {(cases / "GONE.INT").string(), ""},
             {(cases / "OTHER.INT").string(), ""},
             {(cases / "CUT.INT").string(), "Retrieve (Open) Error: Input past end of file"}}) {
        SCOPED_TRACE(answer.value_or("cancel"));
        msgs.clear();
        files.opens.push_back(answer);
        rw::FileOpen(ctx);
        EXPECT_EQ(Snap(), before);
        ASSERT_EQ(msgs.shown.size(), answer ? 1u : 0u);
        if (!said.empty()) {
            EXPECT_EQ(msgs.shown[0].text, said);
        }
    }
    EXPECT_EQ(dialogs.initialInputsShown, 1);  // only the sample's open
    EXPECT_EQ(program.ends, 0);
}

TEST_F(FileCommands, NewClearsTheCaseAndTheMenusAndAcceptingMarksItUnsaved)
{
    files.opens.push_back(WriteSampleCase("SAMPLE.INT"));
    rw::FileOpen(ctx);
    rw::FileNew(ctx);
    rw::Case expected;
    rw::ClearInputs(expected);
    expected.init.sTaxAuth = "US  ";
    EXPECT_EQ(session.kase, expected);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - UNTITLED.INT");
    EXPECT_EQ(session.gRates.at(0).fUPRate, 0.01f);
    EXPECT_EQ(session.menus, rw::MenuState{.note = std::string(rw::kNextStepNote)});
    EXPECT_EQ(dialogs.initialInputsShown, 2);

    rw::InitialInputsAccepted(ctx);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - UNTITLED.INT*");
    EXPECT_TRUE(session.menus.initialInputsChecked && session.menus.printEnabled
                && !session.menus.saveEnabled);
    EXPECT_EQ(rwtest::ReadBytes(install / "DEBUG.INT"), rw::EncodeCase(session.kase));
}

TEST_F(FileCommands, SaveAsWritesTheChosenFileAndRemembersItsFolderAndSaveThenUsesIt)
{
    session.gbSaved = 0;
    rw::RefreshTitle(session);
    const auto before = Snap();
    rw::FileSave(ctx);  // no file of the user's choosing: Save As, cancelled
    EXPECT_EQ(Snap(), before);
    EXPECT_FALSE(fs::exists(paths.iniFile()));

    session.gsDataPath = "/from";
    const std::string path = (cases / "NEW.INT").string();
    files.saves.push_back(path);
    EXPECT_TRUE(rw::FileSaveAs(ctx));
    EXPECT_EQ(files.saveFolders, (std::vector<std::string>{"", "/from"}));
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(session.kase));
    EXPECT_EQ(std::tie(session.gsFileName, session.gbSaved, session.title),
              std::tuple(path, rw::Flag(-1), "2018, 1st Quarter Ratewright - " + path));
    EXPECT_TRUE(session.menus.saveEnabled && session.menus.saveButtonVisible);
    EXPECT_EQ(session.gsDataPath, cases.path().string());
    EXPECT_EQ(Setting("Data Files", "Data File Path"), cases.path().string());

    session.kase.init.sName = "Changed";
    session.gbSaved = 0;
    rw::FileSave(ctx);
    EXPECT_EQ(files.saveFolders.size(), 2u);
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(session.kase));
    EXPECT_EQ(session.gbSaved, -1);

    session.gbSaved = 0;  // saving to the recovery copy keeps the mark
    files.saves.push_back((install / "DEBUG.INT").string());
    rw::FileSaveAs(ctx);
    EXPECT_EQ(session.gbSaved, 0);
}

TEST_F(FileCommands, AFailedSaveIsReportedWithItsCauseAndThePreviousFileStays)
{
    files.opens.push_back(WriteSampleCase("SAMPLE.INT"));
    rw::FileOpen(ctx);
    const std::vector<char> previous = rwtest::ReadBytes(session.gsFileName);
    fs::create_directory(session.gsFileName + ".tmp~");  // nothing can be written beside the case
    session.kase.init.sName = "Lost change";
    session.gbSaved = 0;
    msgs.answerNext(false);
    EXPECT_FALSE(rw::RunCommand(ctx, "mnuFileSave_Click", [&] { rw::FileSave(ctx); }));
    EXPECT_EQ(rwtest::ReadBytes(session.gsFileName), previous);
    const std::string said = msgs.shown.at(0).text;
    EXPECT_TRUE(said.starts_with(
        "Error 75, Path/File access error, encountered.  Location of error: WriteCase "
        "(cannot create "))
        << said;
    EXPECT_TRUE(said.ends_with(
        ": Is a directory).  Do you want to save your data before the program ABORTS?"))
        << said;
    EXPECT_EQ(program.ends, 1);
    EXPECT_EQ(session.gbSaved, 0);
}

TEST_F(FileCommands, ClosingAsksOnlyWithUnsavedChangesThenStoresTheOptionsAndEnds)
{
    session.gsFileName = (cases / "A.INT").string();
    rw::CloseMainWindow(ctx);  // saved: no question
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(program.ends, 1);

    session.gbSaved = 0;
    session.menus.showToolTipsChecked = false;
    msgs.answerNext(false);
    rw::CloseMainWindow(ctx);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "Warning");
    EXPECT_TRUE(msgs.shown[0].question);
    EXPECT_EQ(msgs.shown[0].text,
              "File " + (cases / "A.INT").string()
                  + " has not been saved.  Do you want to save your data before exiting?");
    EXPECT_TRUE(files.saveFolders.empty());
    EXPECT_EQ(Setting("Options", "ToolBar") + Setting("Options", "ToolTips"), "TrueFalse");
    EXPECT_EQ(program.hides, 2);
    EXPECT_EQ(program.ends, 2);

    msgs.answerNext(true);  // Yes: Save As before the end
    files.saves.push_back((cases / "B.INT").string());
    rw::CloseMainWindow(ctx);
    EXPECT_TRUE(fs::exists(cases / "B.INT"));
    EXPECT_EQ(program.ends, 3);
}

TEST(MainWindow, MessagesOfTheToolBarPaymentsPayrollAndHelp)
{
    rw::Session s;
    rwtest::RecordingMessages msgs;
    EXPECT_EQ(rw::ToolbarCommand("Print", msgs), rw::MainCommand::Print);
    EXPECT_EQ(rw::ToolbarCommand("Zoom", msgs), rw::MainCommand::Unknown);
    rw::BeforePayments(s, msgs);  // every time unless payroll
    EXPECT_FALSE(rw::BeforePayroll(s, msgs));
    rw::HelpOnHelp(msgs);
    s.kase.init.bPayroll = -1;
    rw::BeforePayments(s, msgs);
    EXPECT_TRUE(rw::BeforePayroll(s, msgs));
    ASSERT_EQ(msgs.shown.size(), 4u);
    EXPECT_TRUE(msgs.shown[0].text.starts_with(
        "The program does not understand the toolbar choice. Please let "));
    EXPECT_EQ(msgs.shown[1].text,
              "Since a payment's allocation between tax, penalty and interest is dependent upon "
              "prior penalties, "
              "other additions to tax and previous payments, it is critical that you enter all "
              "penalties and other "
              "charges before you enter payments.  Payments must be entered in chronological "
              "order.  If these "
              "guidelines are not followed, results will probably be inaccurate.");
    EXPECT_EQ(
        msgs.shown[2].text,
        "To run payroll penalties, the Initial Inputs window must have Payroll Tax indicated Yes.");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(msgs.shown[i].title == "WARNING"
                    && msgs.shown[i].icon == rw::MsgIcon::Exclamation)
            << i;
    EXPECT_EQ(msgs.shown[3].text,
              "The help file is a searchable PDF file. Menu choice Help - Contents.");
    EXPECT_EQ(msgs.shown[3].icon, rw::MsgIcon::Information);
}

}  // namespace
