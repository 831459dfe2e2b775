#include "shell/filecommands.h"

#include "casedata/casefile.h"
#include "shell/errorreporter.h"
#include "shell/settings.h"

#include "shellfixture.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using rwtest::HandLayout;

class FileCommands : public rwtest::ShellTest {
protected:
    // A case file: three payments, one deposit, the California large-corporation
    // authority, the failure-to-file penalty on.
    std::string WriteSampleCase(const std::string& name = "SAMPLE.INT")
    {
        rw::Case c;
        rw::ClearInputs(c);
        c.init.sName = "Sample";
        c.init.sTaxAuth = "CAB ";
        c.init.bFtoFile = -1;
        c.init.nPmts = 3;
        c.pmts.assign(3, rw::PaymentRec{});
        c.init.nDeposits = 1;
        c.init.bPayroll = -1;
        const std::string path = (cases / name).string();
        rwtest::WriteBytes(path, rw::EncodeCase(c));
        return path;
    }
    std::string IniValue(const char* section, const char* key)
    {
        return rw::SettingsFile(paths.iniFile()).read(section, key, "(none)");
    }
    // Everything a cancelled or refused command must leave alone.
    struct Snapshot {
        std::vector<char> kase;
        std::string name, dataPath, title;
        rw::Flag saved;
        rw::MenuState menus;
        friend bool operator==(const Snapshot&, const Snapshot&) = default;
    };
    Snapshot Snap() const
    {
        return {rw::EncodeCase(session.kase), session.gsFileName, session.gsDataPath, session.title, session.gbSaved,
                session.menus};
    }
    void OpenSample()
    {
        files.opens.push_back(WriteSampleCase());
        rw::FileOpen(ctx);
        msgs.clear();
    }
};

TEST_F(FileCommands, OpenReadsTheCaseAndSetsMenusTitleAndFolder)
{
    const std::string path = WriteSampleCase();
    session.gsDataPath = "/start/here";
    files.opens.push_back(path);
    rw::FileOpen(ctx);

    EXPECT_EQ(files.openFolders, std::vector<std::string>{"/start/here"});
    EXPECT_EQ(session.kase.init.sName.trimmed(), "Sample");
    EXPECT_EQ(session.gsFileName, path);
    EXPECT_EQ(session.gbSaved, -1);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - " + path);
    EXPECT_EQ(session.gsDataPath, cases.path().string());
    EXPECT_EQ(IniValue("Data Files", "Data File Path"), cases.path().string());
    const rw::MenuState& m = session.menus;
    EXPECT_TRUE(m.initialInputsChecked);
    EXPECT_TRUE(m.paymentsChecked);
    EXPECT_TRUE(m.payrollChecked);
    EXPECT_TRUE(m.ftFileChecked);
    EXPECT_FALSE(m.ftPayChecked);
    EXPECT_TRUE(m.printEnabled && m.reportsEnabled && m.printButtonVisible && m.viewButtonVisible);
    EXPECT_TRUE(m.saveEnabled && m.saveButtonVisible);
    EXPECT_EQ(m.note, "Next Step: Click on the Inputs menu to enter other information");
    EXPECT_EQ(dialogs.initialInputsShown, 1);
    // The case's own authority table, and the recovery copy of what was read.
    ASSERT_EQ(session.gRates.size(), 1u);
    EXPECT_EQ(session.gRates[0].fUPRate, 0.02f);
    EXPECT_EQ(rwtest::ReadBytes(install / "DEBUG.INT"), rwtest::ReadBytes(path));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(FileCommands, CancellingOpenChangesNothing)
{
    session.kase.init.sName = "Current";
    session.gsDataPath = "/data";
    const Snapshot before = Snap();
    rw::FileOpen(ctx);  // no answer queued: cancel
    EXPECT_EQ(Snap(), before);
    EXPECT_EQ(dialogs.initialInputsShown, 0);
    EXPECT_FALSE(fs::exists(paths.iniFile()));
}

TEST_F(FileCommands, ARateTableIsNotOpenedAsACase)
{
    OpenSample();
    const Snapshot before = Snap();
    for (const char* name : {"fed.tbl", "CA_BUS1.TBL", "x.Tbl"}) {
        files.opens.push_back((install / name).string());
        rw::FileOpen(ctx);
        EXPECT_EQ(Snap().kase, before.kase);
        EXPECT_EQ(session.gsFileName, before.name);
        EXPECT_EQ(session.menus, before.menus);
    }
    ASSERT_EQ(msgs.shown.size(), 3u);
    EXPECT_EQ(msgs.shown[0].text, rw::RateTableNotACaseText());
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
    EXPECT_EQ(dialogs.initialInputsShown, 1);  // only the sample's open
    // The folder chosen is remembered all the same.
    EXPECT_EQ(IniValue("Data Files", "Data File Path"), install.path().string());
}

TEST_F(FileCommands, AMissingFileOrAnotherKindOfFileLeavesTheSessionAsItWas)
{
    OpenSample();
    const Snapshot before = Snap();
    rwtest::WriteBytes(cases / "OTHER.INT", {'P', 'K', 3, 4, 0, 0, 0, 0});
    for (const std::string& name : {(cases / "GONE.INT").string(), (cases / "OTHER.INT").string()}) {
        msgs.clear();
        files.opens.push_back(name);
        rw::FileOpen(ctx);
        Snapshot after = Snap();
        after.dataPath = before.dataPath;  // the folder is remembered before reading
        EXPECT_EQ(after, before) << name;
        ASSERT_EQ(msgs.shown.size(), 1u);
    }
    EXPECT_EQ(msgs.shown[0].title, "Problem With Case File");
    EXPECT_EQ(program.ends, 0);
}

TEST_F(FileCommands, ADamagedFileIsToldAndTheCaseInMemoryStays)
{
    OpenSample();
    const std::vector<char> before = rw::EncodeCase(session.kase);
    std::vector<char> cut = rwtest::ReadBytes(WriteSampleCase("CUT.INT"));
    cut.resize(600);
    rwtest::WriteBytes(cases / "CUT.INT", cut);
    files.opens.push_back((cases / "CUT.INT").string());
    rw::FileOpen(ctx);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].text, "Retrieve (Open) Error: Input past end of file");
    EXPECT_FALSE(msgs.shown[0].question);
    EXPECT_EQ(program.ends, 0);
    EXPECT_EQ(rw::EncodeCase(session.kase), before);
}

TEST_F(FileCommands, NewClearsTheCaseAndTheMenus)
{
    OpenSample();
    session.gRates.clear();
    rw::FileNew(ctx);
    rw::Case expected;
    rw::ClearInputs(expected);
    expected.init.sTaxAuth = "US  ";
    EXPECT_EQ(session.kase, expected);
    EXPECT_EQ(session.gsFileName, "UNTITLED.INT");
    EXPECT_EQ(session.gbSaved, -1);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - UNTITLED.INT");
    ASSERT_EQ(session.gRates.size(), 1u);
    EXPECT_EQ(session.gRates[0].fUPRate, 0.01f);
    const rw::MenuState& m = session.menus;
    EXPECT_FALSE(m.saveEnabled || m.saveButtonVisible);
    EXPECT_TRUE(m.saveAsEnabled);
    EXPECT_FALSE(m.printEnabled || m.reportsEnabled || m.printButtonVisible || m.viewButtonVisible);
    EXPECT_FALSE(m.initialInputsChecked || m.ftPayChecked || m.ftFileChecked || m.accuracyChecked || m.payrollChecked);
    EXPECT_FALSE(m.paymentsChecked || m.interestRatesChecked || m.suspendChecked);
    EXPECT_EQ(m.note, "Next Step: Click on the Inputs menu to enter other information");
    EXPECT_EQ(dialogs.initialInputsShown, 2);
}

TEST_F(FileCommands, ANewCaseAcceptedInInitialInputsIsMarkedUnsaved)
{
    dialogs.onInitialInputs = [&](rw::Session&) { rw::InitialInputsAccepted(ctx); };
    rw::FileNew(ctx);
    EXPECT_EQ(session.gbSaved, 0);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - UNTITLED.INT*");
    EXPECT_TRUE(session.menus.initialInputsChecked);
    EXPECT_TRUE(session.menus.printEnabled && session.menus.viewButtonVisible);
    EXPECT_FALSE(session.menus.saveEnabled);
    EXPECT_EQ(rwtest::ReadBytes(install / "DEBUG.INT"), rw::EncodeCase(session.kase));
}

TEST_F(FileCommands, SaveAsWritesTheChosenFileAndRemembersItsFolder)
{
    session.kase.init.sName = "To save";
    session.gbSaved = 0;
    session.gsDataPath = "/from";
    const std::string path = (cases / "NEW.INT").string();
    files.saves.push_back(path);
    EXPECT_TRUE(rw::FileSaveAs(ctx));
    EXPECT_EQ(files.saveFolders, std::vector<std::string>{"/from"});
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(session.kase));
    EXPECT_EQ(session.gsFileName, path);
    EXPECT_EQ(session.gbSaved, -1);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - " + path);
    EXPECT_TRUE(session.menus.saveEnabled && session.menus.saveButtonVisible);
    EXPECT_EQ(session.gsDataPath, cases.path().string());
    EXPECT_EQ(IniValue("Data Files", "Data File Path"), cases.path().string());
}

TEST_F(FileCommands, CancellingSaveAsChangesNothing)
{
    session.gbSaved = 0;
    rw::RefreshTitle(session);
    const Snapshot before = Snap();
    EXPECT_FALSE(rw::FileSaveAs(ctx));
    EXPECT_EQ(Snap(), before);
    EXPECT_FALSE(fs::exists(paths.iniFile()));
}

TEST_F(FileCommands, SaveWritesTheOwnFileAndClearsTheMark)
{
    OpenSample();
    session.kase.init.sName = "Changed";
    session.gbSaved = 0;
    rw::FileSave(ctx);
    EXPECT_EQ(rwtest::ReadBytes(session.gsFileName), rw::EncodeCase(session.kase));
    EXPECT_EQ(session.gbSaved, -1);
    EXPECT_EQ(session.title, "2018, 1st Quarter Ratewright - " + session.gsFileName);
    EXPECT_TRUE(files.saveFolders.empty());
}

TEST_F(FileCommands, SavingToTheRecoveryCopyKeepsTheMark)
{
    files.saves.push_back((install / "DEBUG.INT").string());
    session.gbSaved = 0;
    rw::FileSaveAs(ctx);
    EXPECT_EQ(session.gbSaved, 0);
    EXPECT_EQ(session.title.back(), '*');
}

TEST_F(FileCommands, SaveWithoutAFileOfTheUsersChoosingAsksForOne)
{
    files.saves.push_back((cases / "FIRST.INT").string());
    rw::FileSave(ctx);
    EXPECT_EQ(files.saveFolders.size(), 1u);
    EXPECT_TRUE(fs::exists(cases / "FIRST.INT"));
}

TEST_F(FileCommands, AFailedSaveIsReportedAndThePreviousFileStays)
{
    OpenSample();
    const std::vector<char> previous = rwtest::ReadBytes(session.gsFileName);
    fs::create_directory(session.gsFileName + ".tmp~");  // nothing can be written beside the case
    session.kase.init.sName = "Lost change";
    session.gbSaved = 0;
    msgs.answerNext(false);  // no saving elsewhere
    EXPECT_FALSE(rw::RunCommand(ctx, "mnuFileSave_Click", [&] { rw::FileSave(ctx); }));
    EXPECT_EQ(rwtest::ReadBytes(session.gsFileName), previous);
    ASSERT_FALSE(msgs.shown.empty());
    // The fault's own explanation stands after the procedure.
    const std::string& said = msgs.shown[0].text;
    EXPECT_TRUE(said.starts_with("Error 75, Path/File access error, encountered.  Location of error: WriteCase (cannot create "))
        << said;
    EXPECT_TRUE(said.ends_with(": Is a directory).  Do you want to save your data before the program ABORTS?")) << said;
    EXPECT_EQ(program.ends, 1);
    EXPECT_EQ(session.gbSaved, 0);
}

TEST_F(FileCommands, ExitPromptAsksOnlyWithUnsavedChanges)
{
    session.gsFileName = (cases / "A.INT").string();
    session.gbSaved = -1;
    rw::ExitPrompt(ctx);
    EXPECT_TRUE(msgs.shown.empty());

    session.gbSaved = 0;
    msgs.answerNext(false);
    rw::ExitPrompt(ctx);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "Warning");
    EXPECT_TRUE(msgs.shown[0].question);
    EXPECT_EQ(msgs.shown[0].text, "File " + (cases / "A.INT").string()
                                      + " has not been saved.  Do you want to save your data before exiting?");
    EXPECT_TRUE(files.saveFolders.empty());

    msgs.answerNext(true);
    files.saves.push_back((cases / "B.INT").string());
    rw::ExitPrompt(ctx);
    EXPECT_TRUE(fs::exists(cases / "B.INT"));
}

TEST_F(FileCommands, ExitProgramStoresTheOptionsAndEnds)
{
    session.menus.showToolBarChecked = true;
    session.menus.showToolTipsChecked = false;
    rw::ExitProgram(ctx, false);
    EXPECT_EQ(IniValue("Options", "ToolBar"), "True");
    EXPECT_EQ(IniValue("Options", "ToolTips"), "False");
    EXPECT_EQ(program.hides, 1);
    EXPECT_EQ(program.ends, 1);
    EXPECT_TRUE(files.saveFolders.empty());

    rw::ExitProgram(ctx, true);  // save first: the save dialog comes before the end
    EXPECT_EQ(files.saveFolders.size(), 1u);
    EXPECT_EQ(program.ends, 2);
}

TEST_F(FileCommands, ClosingTheWindowAsksThenEnds)
{
    session.gbSaved = 0;
    msgs.answerNext(false);
    rw::CloseMainWindow(ctx);
    EXPECT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(program.ends, 1);
    EXPECT_EQ(IniValue("Options", "ToolBar"), "True");
}

TEST_F(FileCommands, SaveAndExitFromTheStateCheck)
{
    files.saves.push_back((cases / "KEPT.INT").string());
    rw::InitialInputsSaveAndExit(ctx);
    EXPECT_TRUE(fs::exists(cases / "KEPT.INT"));
    EXPECT_EQ(program.ends, 1);
}

}  // namespace
