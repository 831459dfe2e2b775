// The main window's commands: Open, New, Save, Save As, the closing
// question and the exit procedure; the tool bar, Payments, Payroll and Help
// messages.

#include "shell/filecommands.h"
#include "shell/mainwindow.h"

#include "casedata/casefile.h"
#include "shell/errorreporter.h"
#include "shell/settings.h"
#include "shell/startup.h"
#include "shellfixture.h"

#include <algorithm>

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
              std::tuple(path, rw::Flag(-1), "2018, 1st Quarter Ratewright - SAMPLE.INT"));
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
    EXPECT_EQ(rwtest::ReadBytes(paths.recoveryCopy()), rwtest::ReadBytes(path));
    EXPECT_EQ(session.recentFiles, std::vector<std::string>{path});
    EXPECT_EQ(Setting("Recent Files", "File1"), path);
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

TEST_F(FileCommands, NewClearsTheCaseAndTheMenusAndACancelledNewKeepsThePreviousCase)
{
    files.opens.push_back(WriteSampleCase("SAMPLE.INT"));
    rw::FileOpen(ctx);
    session.kase.init.sName = "Unsaved";
    rw::NoteCaseChanges(session, msgs);
    const auto opened = Snap();

    dialogs.accept = false;  // Don't Save, then Cancel in Initial Inputs
    msgs.answerSaveNext(rw::SaveAnswer::DontSave);
    rw::FileNew(ctx);
    EXPECT_EQ(Snap(), opened);
    EXPECT_EQ(session.gRates.at(0).fUPRate, 0.02f);

    dialogs.accept = true;
    msgs.answerSaveNext(rw::SaveAnswer::DontSave);
    rw::FileNew(ctx);
    rw::Case expected;
    rw::ClearInputs(expected);
    expected.init.sTaxAuth = "US  ";
    EXPECT_EQ(session.kase, expected);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - UNTITLED.INT");
    EXPECT_EQ(session.gRates.at(0).fUPRate, 0.01f);
    EXPECT_EQ(session.menus, rw::MenuState{.note = std::string(rw::kNextStepNote)});
    EXPECT_EQ(dialogs.initialInputsShown, 3);

    session.kase.init.sName = "New client";
    rw::InitialInputsAccepted(ctx);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - UNTITLED.INT*");
    EXPECT_TRUE(session.menus.initialInputsChecked && session.menus.printEnabled
                && !session.menus.saveEnabled);
    EXPECT_EQ(rwtest::ReadBytes(paths.recoveryCopy()), rw::EncodeCase(session.kase));
}

TEST_F(FileCommands, TheCaseIsUnsavedExactlyWhileItDiffersFromItsFile)
{
    files.opens.push_back(WriteSampleCase("SAMPLE.INT"));
    rw::FileOpen(ctx);
    rw::InitialInputsAccepted(ctx);  // OK with nothing changed
    EXPECT_EQ(session.gbSaved, -1);

    // A payment added outside Initial Inputs: "*", its mark, a fresh copy.
    session.kase.pmts.emplace_back();
    session.kase.init.nPmts = 4;
    session.kase.init.bAccRel = 0;
    rw::NoteCaseChanges(session, msgs);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - SAMPLE.INT*");
    EXPECT_FALSE(session.menus.accuracyChecked);
    EXPECT_EQ(rwtest::ReadBytes(paths.recoveryCopy()), rw::EncodeCase(session.kase));

    ASSERT_TRUE(rw::FileSave(ctx));
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - SAMPLE.INT");
    session.kase.init.bAccRel = 1;
    rw::NoteCaseChanges(session, msgs);
    session.kase.init.bAccRel = 0;  // changed back: nothing to save
    rw::NoteCaseChanges(session, msgs);
    EXPECT_EQ(session.gbSaved, -1);
}

// Penalties - Estimated Tax is marked exactly while the penalty is asked for.
TEST_F(FileCommands, EstimatedTaxIsMarkedWhileThePenaltyIsAskedFor)
{
    for (const bool on : {true, false, true}) {
        session.kase.estTax.on = on;
        rw::NoteCaseChanges(session, msgs);
        EXPECT_EQ(session.menus.estTaxChecked, on);
    }
}

TEST_F(FileCommands, SaveAsWritesTheChosenFileAndRemembersItsFolderAndSaveThenUsesIt)
{
    session.kase.init.sName = "Client";
    rw::NoteCaseChanges(session, msgs);
    const auto before = Snap();
    EXPECT_FALSE(rw::FileSave(ctx));  // no file of the user's choosing: Save As, cancelled
    EXPECT_EQ(Snap(), before);
    EXPECT_FALSE(fs::exists(paths.iniFile()));

    session.gsDataPath = "/from";
    const std::string path = (cases / "NEW.INT").string();
    files.saves.push_back(path);
    EXPECT_TRUE(rw::FileSaveAs(ctx));
    EXPECT_EQ(files.saveFolders, (std::vector<std::string>{"", "/from"}));
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(session.kase));
    EXPECT_EQ(std::tie(session.gsFileName, session.gbSaved, session.title),
              std::tuple(path, rw::Flag(-1), "2018, 1st Quarter Ratewright - NEW.INT"));
    EXPECT_TRUE(session.menus.saveEnabled && session.menus.saveButtonVisible);
    EXPECT_EQ(session.gsDataPath, cases.path().string());
    EXPECT_EQ(Setting("Data Files", "Data File Path"), cases.path().string());

    session.kase.init.sName = "Changed";
    rw::NoteCaseChanges(session, msgs);
    EXPECT_TRUE(rw::FileSave(ctx));
    EXPECT_EQ(files.saveFolders.size(), 2u);
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(session.kase));
    EXPECT_EQ(session.gbSaved, -1);

    session.kase.init.sName = "Changed again";  // saving to the recovery copy keeps the mark
    rw::NoteCaseChanges(session, msgs);
    files.saves.push_back(paths.recoveryCopy().string());
    rw::FileSaveAs(ctx);
    EXPECT_EQ(session.gbSaved, 0);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(FileCommands, AFileThatCannotBeWrittenIsToldAndTheCaseAndThePreviousFileStay)
{
    files.opens.push_back(WriteSampleCase("SAMPLE.INT"));
    rw::FileOpen(ctx);
    // The case's file has become a folder (which no write may replace).
    fs::remove(session.gsFileName);
    fs::create_directory(session.gsFileName);
    session.kase.init.sName = "Kept change";
    rw::NoteCaseChanges(session, msgs);
    const auto before = Snap();
    EXPECT_TRUE(rw::RunCommand(ctx, "mnuFileSave_Click", [&] { rw::FileSave(ctx); }));
    EXPECT_TRUE(fs::is_directory(session.gsFileName));
    EXPECT_EQ(Snap(), before);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "Save");
    const std::string said = msgs.shown[0].text;
    const std::string head
        = "The case could not be written.\n\nFile: " + session.gsFileName + "\nReason: ";
    EXPECT_TRUE(said.starts_with(head) && said.size() > head.size()) << said;
    EXPECT_EQ(program.ends, 0);

    // Save As elsewhere: a folder that is a file cannot hold a case.
    msgs.clear();
    rwtest::WriteBytes(cases / "plain", {'x'});
    files.saves.push_back((cases / "plain" / "NEW.INT").string());
    EXPECT_FALSE(rw::FileSaveAs(ctx));
    EXPECT_EQ(Snap(), before);
    EXPECT_EQ(msgs.shown.size(), 1u);
}

TEST_F(FileCommands, NothingIsWrittenToTheInstallationFolder)
{
    const auto listing = [&] {
        std::vector<fs::path> names;
        for (const auto& e : fs::recursive_directory_iterator(install.path()))
            names.push_back(e.path());
        std::ranges::sort(names);
        return names;
    };
    rwtest::WriteBytes(install / "qratcalc.INI", {});
    const auto installed = listing();
    rw::Startup(session, paths, msgs);
    session.kase.init.sName = "Client";
    rw::InitialInputsAccepted(ctx);
    files.saves.push_back((cases / "C.INT").string());
    EXPECT_TRUE(rw::FileSaveAs(ctx));
    rw::ReportError(ctx, rw::Fault(5, "Test"));  // the log and the recovery copy
    rw::CloseMainWindow(ctx);
    EXPECT_EQ(listing(), installed);
    EXPECT_TRUE(fs::exists(paths.recoveryCopy()) && fs::exists(paths.errorLog())
                && fs::exists(paths.iniFile()));
}

TEST_F(FileCommands, ARecoveryCopyThatCannotBeWrittenIsToldOnceAndSaveStillWorks)
{
    fs::create_directories(paths.userDataRoot);
    rwtest::WriteBytes(paths.appDataDir, {'x'});  // the folder's place is taken by a file
    for (const char* name : {"First", "Second"}) {
        session.kase.init.sName = name;
        rw::NoteCaseChanges(session, msgs);
    }
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "Recovery Copy");
    EXPECT_TRUE(msgs.shown[0].text.starts_with(
        "The recovery copy of the case, kept in case the program stops unexpectedly, could not "
        "be written.\n\nFile: "
        + paths.recoveryCopy().string()))
        << msgs.shown[0].text;
    files.saves.push_back((cases / "C.INT").string());
    EXPECT_TRUE(rw::FileSaveAs(ctx));
    EXPECT_EQ(session.gbSaved, -1);
}

// New, Open and closing the window, each answered Save, Don't Save or Cancel
// at "Save changes to ...?" (Save with the Save As dialog answered or
// cancelled). Whether the command went on, and whether the case reached its
// file.
struct PromptRow {
    const char* name;
    std::function<void(rw::ShellContext&)> command;
    rw::SaveAnswer answer;
    bool saveAsCancelled;
    bool goesOn, saved;
};

class Prompts : public FileCommands, public testing::WithParamInterface<PromptRow> { };

TEST_P(Prompts, AskBeforeTheCaseIsLost)
{
    const PromptRow& row = GetParam();
    session.kase.init.sName = "Unsaved work";
    rw::NoteCaseChanges(session, msgs);
    const auto before = Snap();
    msgs.answerSaveNext(row.answer);
    files.saves.push_back(row.saveAsCancelled
                              ? std::nullopt
                              : std::optional<std::string>((cases / "KEPT.INT").string()));
    files.opens.push_back(WriteSampleCase("OTHER.INT"));
    row.command(ctx);
    ASSERT_FALSE(msgs.shown.empty());
    EXPECT_EQ(std::tie(msgs.shown[0].title, msgs.shown[0].text),
              std::tuple("Ratewright", "Save changes to UNTITLED.INT?"));
    const bool wentOn = dialogs.initialInputsShown + program.ends > 0;
    EXPECT_EQ(wentOn, row.goesOn);
    if (!row.goesOn) {
        EXPECT_EQ(Snap(), before);
    }
    EXPECT_EQ(fs::exists(cases / "KEPT.INT"), row.saved);
}

const auto kNew = [](rw::ShellContext& c) { rw::FileNew(c); };
const auto kOpen = [](rw::ShellContext& c) { rw::FileOpen(c); };
const auto kClose = [](rw::ShellContext& c) { rw::CloseMainWindow(c); };
using enum rw::SaveAnswer;

INSTANTIATE_TEST_SUITE_P(
    FileCommands, Prompts,
    testing::Values(PromptRow{"NewSave", kNew, Save, false, true, true},
                    PromptRow{"NewDontSave", kNew, DontSave, false, true, false},
                    PromptRow{"NewCancel", kNew, Cancel, false, false, false},
                    PromptRow{"NewSaveAsCancelled", kNew, Save, true, false, false},
                    PromptRow{"OpenSave", kOpen, Save, false, true, true},
                    PromptRow{"OpenDontSave", kOpen, DontSave, false, true, false},
                    PromptRow{"OpenCancel", kOpen, Cancel, false, false, false},
                    PromptRow{"OpenSaveAsCancelled", kOpen, Save, true, false, false},
                    PromptRow{"CloseSave", kClose, Save, false, true, true},
                    PromptRow{"CloseDontSave", kClose, DontSave, false, true, false},
                    PromptRow{"CloseCancel", kClose, Cancel, false, false, false},
                    PromptRow{"CloseSaveAsCancelled", kClose, Save, true, false, false}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(FileCommands, ClosingWithNothingUnsavedAsksNothingAndStoresTheOptions)
{
    session.gsFileName = (cases / "A.INT").string();
    session.menus.showToolTipsChecked = false;
    EXPECT_TRUE(rw::CloseMainWindow(ctx));
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(Setting("Options", "ToolBar") + Setting("Options", "ToolTips"), "TrueFalse");
    EXPECT_EQ(std::tie(program.hides, program.ends), std::tuple(1, 1));
}

TEST_F(FileCommands, ASampleCaseOpensAsACopyThatSaveAsksWhereToKeep)
{
    const fs::path installed = install / "DEMO_INC.INT";
    fs::copy_file(WriteSampleCase("X.INT"), installed);
    const std::vector<char> bytes = rwtest::ReadBytes(installed);
    rw::OpenSampleCase(ctx, "DEMO_INC.INT");
    EXPECT_EQ(session.kase.init.sName.view().substr(0, 6), "Sample");
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - DEMO_INC.INT");
    EXPECT_TRUE(session.recentFiles.empty());
    session.kase.init.sName = "Changed";
    rw::NoteCaseChanges(session, msgs);
    files.saves.push_back((cases / "MINE.INT").string());
    EXPECT_TRUE(rw::FileSave(ctx));  // Save As: the sample has no file of the user's
    EXPECT_EQ(files.saveFolders.size(), 1u);
    EXPECT_EQ(rwtest::ReadBytes(installed), bytes);
}

TEST_F(FileCommands, RecentFilesKeepTheEightNewestAndForgetOneThatIsGone)
{
    std::vector<std::string> names;
    for (int i = 1; i <= 9; ++i) {
        names.push_back(WriteSampleCase("C" + std::to_string(i) + ".INT"));
        files.opens.push_back(names.back());
        rw::FileOpen(ctx);
    }
    files.opens.push_back(names[4]);  // opened again: first once more, not twice
    rw::FileOpen(ctx);
    EXPECT_EQ(session.recentFiles,
              (std::vector<std::string>{names[4], names[8], names[7], names[6], names[5], names[3],
                                        names[2], names[1]}));
    rw::Session next;
    next.paths = paths;
    rw::LoadRecentFiles(next);
    EXPECT_EQ(next.recentFiles, session.recentFiles);

    fs::remove(names[8]);
    rw::FileOpenRecent(ctx, names[8]);
    EXPECT_EQ(session.recentFiles.size(), 7u);
    EXPECT_EQ(session.gsFileName, names[4]);
    rw::FileOpenRecent(ctx, names[3]);
    EXPECT_EQ(session.gsFileName, names[3]);
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
