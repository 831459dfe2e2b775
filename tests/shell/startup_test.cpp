#include "shell/startup.h"

#include "base/fault.h"
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
    // The release without its federal table cannot be used, and the table
    // itself is not found.
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_NE(msgs.shown[0].text.find((install / "fed.tbl").string()), std::string::npos) << msgs.shown[0].text;
    EXPECT_EQ(msgs.shown[1].title, "File not found");
    EXPECT_FALSE(s.release.loaded());
    EXPECT_EQ(s.gsFileName, "UNTITLED.INT");
}

TEST_F(StartupRun, TheTitleTakesTheReleaseDescription)
{
    std::string text = rwtest::ReadText(paths.releaseFile());
    text.replace(text.find("2018, 1st Quarter"), 17, "2018, 2nd Quarter");
    std::ofstream(paths.releaseFile(), std::ios::binary) << text;
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(s.title, "2018, 2nd Quarter Ratewright - Untitled.INT");
    EXPECT_TRUE(msgs.shown.empty());
}

// ---- A later release of the rates in the user's data folder ----------------

class UserRelease : public rwtest::ShellTest {
protected:
    // The user's release: a copy of the installed one with its rates verified
    // through a later date, and a federal table whose rate tells it apart.
    fs::path writeLaterRelease()
    {
        const fs::path folder = paths.userDataRoot / "Brindlecote" / "Qrat" / "rates";
        rwtest::WriteRelease(folder);
        rwtest::WriteBytes(folder / "fed.tbl", rwtest::OneRowTable(0.07f));
        std::string text = rwtest::ReadText(folder / "qrat-release.txt");
        text.replace(text.find("verified_through=03/31/2018"), 27, "verified_through=06/30/2018");
        text.replace(text.find("verified_through_text=March 31, 2018"), 36, "verified_through_text=June 30, 2018");
        text.replace(text.find("name=Qrat2018Q1"), 15, "name=Qrat2018Q2");
        std::ofstream(folder / "qrat-release.txt", std::ios::binary) << text;
        return folder;
    }
};

TEST_F(UserRelease, ALaterOneIsUsedWithoutReinstalling)
{
    const fs::path folder = writeLaterRelease();
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.release.name, "Qrat2018Q2");
    EXPECT_EQ(s.release.verifiedThrough, rw::Date::fromCivil(2018, 6, 30));
    EXPECT_EQ(s.paths.ratesFolder(), folder);
    ASSERT_EQ(s.gRates.size(), 1u);
    EXPECT_EQ(s.gRates[0].fUPRate, 0.07f);  // the user's federal table
}

TEST_F(UserRelease, ATruncatedTableIsRefusedOnceAndTheInstalledOneIsUsed)
{
    const fs::path folder = writeLaterRelease();
    std::vector<char> bytes = rwtest::ReadBytes(folder / "pa1.tbl");
    bytes.resize(bytes.size() - 5);
    rwtest::WriteBytes(folder / "pa1.tbl", bytes);

    rw::Session s;
    rw::Startup(s, paths, msgs);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Exclamation);
    EXPECT_NE(msgs.shown[0].text.find((folder / "pa1.tbl").string()), std::string::npos) << msgs.shown[0].text;
    EXPECT_EQ(s.release.name, "Qrat2018Q1");
    EXPECT_EQ(s.paths.ratesFolder(), install.path());
    ASSERT_EQ(s.gRates.size(), 1u);
    EXPECT_EQ(s.gRates[0].fUPRate, 0.01f);
}

TEST_F(UserRelease, AReleaseFileThatCannotBeReadIsNamed)
{
    const fs::path folder = writeLaterRelease();
    std::ofstream(folder / "qrat-release.txt", std::ios::binary) << "name=Qrat2018Q2\nverified_through=6/30\n";
    rw::Session s;
    rw::Startup(s, paths, msgs);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_NE(msgs.shown[0].text.find((folder / "qrat-release.txt").string() + ":2: verified_through is not a date"),
              std::string::npos)
        << msgs.shown[0].text;
    EXPECT_EQ(s.release.name, "Qrat2018Q1");
}

TEST_F(UserRelease, OneThatIsNotLaterIsLeftQuietly)
{
    const fs::path folder = paths.userDataRoot / "Brindlecote" / "Qrat" / "rates";
    rwtest::WriteRelease(folder);
    rwtest::WriteBytes(folder / "fed.tbl", rwtest::OneRowTable(0.07f));
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.paths.ratesFolder(), install.path());
    EXPECT_EQ(s.gRates[0].fUPRate, 0.01f);
    const rw::ReleaseInUse use = rw::ChooseRelease(paths);
    ASSERT_EQ(use.notes.size(), 1u);
    EXPECT_NE(use.notes[0].find("not later"), std::string::npos);
}

TEST_F(UserRelease, WithoutAnInstalledReleaseAUsableUserOneIsUsed)
{
    fs::remove(install / "qrat-release.txt");
    const fs::path folder = writeLaterRelease();
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.paths.ratesFolder(), folder);
}

}  // namespace
