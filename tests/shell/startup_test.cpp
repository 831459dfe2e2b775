#include "shell/startup.h"

#include "casedata/fault.h"
#include "shell/settings.h"

#include "shellfixture.h"

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

struct VersionRow {
    const char* version;
    bool installFolder;
};

class Versions : public testing::TestWithParam<VersionRow> {};

TEST_P(Versions, CompareAsPlainText)
{
    EXPECT_EQ(rw::DataInInstallFolder(GetParam().version), GetParam().installFolder);
    rwtest::TempDir install, user;
    const rw::Paths paths = rw::Paths::ForFolders(install.path(), user.path());
    const fs::path folder = rw::DefaultDataFolder(GetParam().version, paths);
    EXPECT_EQ(folder, GetParam().installFolder ? install.path() : user.path() / "Brindlecote" / "Qrat");
    EXPECT_EQ(fs::exists(user.path() / "Brindlecote"), !GetParam().installFolder);
}

INSTANTIATE_TEST_SUITE_P(Startup, Versions,
                         testing::Values(VersionRow{"2.6.0", true}, VersionRow{"2.6.1", false},
                                         VersionRow{"2.10.0", true},  // "2.1" sorts before "2.6"
                                         VersionRow{"2.5.9", true}, VersionRow{"2.6", true},
                                         VersionRow{"3.0.0", false}, VersionRow{"", true}));

TEST(Startup, ThisPlatformUsesThePerUserFolder)
{
    EXPECT_EQ(rw::WindowsVersion(), "2.6.1");
    EXPECT_FALSE(rw::DataInInstallFolder(rw::WindowsVersion()));
}

TEST(Startup, GetWin7AppDataPathCreatesBothLevels)
{
    rwtest::TempDir install, user;
    const rw::Paths paths = rw::Paths::ForFolders(install.path(), user.path() / "share");
    const fs::path qrat = rw::GetWin7AppDataPath(paths, "Qrat");
    EXPECT_EQ(qrat, user.path() / "share" / "Brindlecote" / "Qrat");
    EXPECT_TRUE(fs::is_directory(qrat));
    // Again, with the folders there: the same folder, nothing fails.
    EXPECT_EQ(rw::GetWin7AppDataPath(paths, "Qrat"), qrat);
    // A file where a folder should be.
    rwtest::WriteBytes(user.path() / "share" / "Brindlecote" / "Other", {'x'});
    try {
        rw::GetWin7AppDataPath(paths, "Other");
        ADD_FAILURE() << "no fault";
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), 75);
        EXPECT_EQ(f.procedure(), "GetWin7AppDataPath");
    }
}

class StartupRun : public rwtest::ShellTest {};

TEST_F(StartupRun, LeavesAnEmptyUntitledCaseWithTheFederalTable)
{
    rwtest::WriteBytes(install / "DEMO_INC.INT", {'i', 'n', 'c'});
    // DEMO941.INT is not installed: it is skipped.
    rw::Session s;
    s.kase.init.sName = "left over";
    rw::Startup(s, paths, msgs);

    const fs::path perUser = paths.userDataRoot / "Brindlecote" / "Qrat";
    EXPECT_EQ(s.gsDataPath, perUser.string());  // no settings file: the default folder
    EXPECT_EQ(rwtest::ReadText(perUser / "DEMO_INC.INT"), "inc");
    EXPECT_FALSE(fs::exists(perUser / "DEMO941.INT"));

    rw::Case empty;
    rw::ClearInputs(empty);
    EXPECT_EQ(s.kase, empty);
    EXPECT_EQ(s.kase.init.sTaxAuth.view(), std::string(4, '\0'));
    EXPECT_EQ(s.gsFileName, "UNTITLED.INT");
    EXPECT_EQ(s.gbSaved, -1);
    ASSERT_EQ(s.gRates.size(), 1u);
    EXPECT_EQ(s.gRates[0].fUPRate, 0.01f);  // fed.tbl
    EXPECT_EQ(s.title, "2018, 1st Quarter Ratewright - Untitled.INT");
    EXPECT_FALSE(s.menus.saveEnabled);
    EXPECT_FALSE(s.menus.saveButtonVisible);
    EXPECT_FALSE(s.menus.printButtonVisible);
    EXPECT_FALSE(s.menus.viewButtonVisible);
    EXPECT_TRUE(s.menus.saveAsEnabled);
    EXPECT_FALSE(s.menus.initialInputsChecked);
    EXPECT_EQ(s.reportChoice.mask, 0);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(StartupRun, SampleCasesReplaceOlderCopies)
{
    const fs::path perUser = paths.userDataRoot / "Brindlecote" / "Qrat";
    fs::create_directories(perUser);
    rwtest::WriteBytes(perUser / "DEMO941.INT", {'o', 'l', 'd'});
    rwtest::WriteBytes(install / "DEMO941.INT", {'n', 'e', 'w'});
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(rwtest::ReadText(perUser / "DEMO941.INT"), "new");
}

TEST_F(StartupRun, TheDataFolderComesFromTheSettings)
{
    rw::SettingsFile(paths.iniFile()).write("Data Files", "Data File Path", "/srv/cases/pat");
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(s.gsDataPath, "/srv/cases/pat");
}

TEST_F(StartupRun, AnOlderPlatformKeepsDataInTheInstallationFolder)
{
    rwtest::WriteBytes(install / "DEMO_INC.INT", {'i'});
    rw::Session s;
    rw::Startup(s, paths, msgs, "2.6.0");
    EXPECT_EQ(s.gsDataPath, install.path().string());
    EXPECT_FALSE(fs::exists(paths.userDataRoot / "Brindlecote"));
}

TEST_F(StartupRun, AMissingFederalTableIsToldAndStartUpGoesOn)
{
    fs::remove(install / "fed.tbl");
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(s.gRates.empty());
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "File not found");
    EXPECT_EQ(s.gsFileName, "UNTITLED.INT");
}

TEST_F(StartupRun, TheTitleTakesTheReleaseDescription)
{
    std::ofstream(paths.releaseFile()) << "description=2018, 2nd Quarter\n";
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(s.title, "2018, 2nd Quarter Ratewright - Untitled.INT");
}

}  // namespace
