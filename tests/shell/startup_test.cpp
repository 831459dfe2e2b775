// Start-up: the data folder by platform version, the sample cases, the data
// folder from the settings, the release of the rates and the federal table,
// and the empty case the main window opens with.

#include "shell/startup.h"

#include "base/fault.h"
#include "shell/settings.h"
#include "shellfixture.h"

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;

TEST(Startup, VersionsCompareAsPlainTextAndTheUserFolderIsMadeOnDemand)
{
    // Up to "2.6.0" the installation folder; "2.10.0" sorts below "2.6".
    for (const auto& [version, install] :
         std::vector<std::pair<std::string, bool>>{{"2.6.0", true}, {"2.10.0", true}, {"2.6.1", false}}) {
        rwtest::TempDir inst, user;
        const fs::path folder = rw::DefaultDataFolder(version, rw::Paths::ForFolders(inst.path(), user.path()));
        EXPECT_EQ(folder, install ? inst.path() : user.path() / "Brindlecote" / "Qrat") << version;
        EXPECT_EQ(fs::is_directory(user.path() / "Brindlecote" / "Qrat"), !install) << version;
    }
    EXPECT_EQ(rw::WindowsVersion(), "2.6.1");  // this platform: the per-user folder
    rwtest::TempDir inst, user;                // a file where a folder should be
    rwtest::WriteBytes(user.path() / "Brindlecote", {'x'});
    EXPECT_THAT([&] { rw::GetWin7AppDataPath(rw::Paths::ForFolders(inst.path(), user.path()), "Qrat"); },
                testing::Throws<rw::Fault>(testing::AllOf(testing::Property(&rw::Fault::number, 75),
                                                          testing::Property(&rw::Fault::procedure, "GetWin7AppDataPath"))));
}

class StartupRun : public rwtest::ShellTest {
protected:
    fs::path perUser() const { return paths.userDataRoot / "Brindlecote" / "Qrat"; }
};

TEST_F(StartupRun, LeavesAnEmptyUntitledCaseWithTheFederalTableAndTheSamples)
{
    rwtest::WriteBytes(install / "DEMO_INC.INT", {'n', 'e', 'w'});  // DEMO941.INT is not installed: skipped
    fs::create_directories(perUser());
    rwtest::WriteBytes(perUser() / "DEMO_INC.INT", {'o', 'l', 'd'});
    rw::Session s;
    s.kase.init.sName = "left over";
    rw::Startup(s, paths, msgs);

    EXPECT_EQ(s.gsDataPath, perUser().string());  // no settings file: the default folder
    EXPECT_EQ(rwtest::ReadText(perUser() / "DEMO_INC.INT"), "new");
    EXPECT_FALSE(fs::exists(perUser() / "DEMO941.INT"));
    rw::Case empty;
    rw::ClearInputs(empty);
    EXPECT_EQ(s.kase, empty);
    EXPECT_EQ(s.gsFileName, "UNTITLED.INT");
    EXPECT_EQ(s.gbSaved, -1);
    ASSERT_EQ(s.gRates.size(), 1u);
    EXPECT_EQ(s.gRates[0].fUPRate, 0.01f);  // fed.tbl
    EXPECT_EQ(s.title, "2018, 1st Quarter Ratewright - Untitled.INT");
    EXPECT_EQ(s.menus, rw::MenuState{});  // Save, Print and Reports off, their buttons hidden
    EXPECT_TRUE(msgs.shown.empty());

    rw::SettingsFile(paths.iniFile()).write("Data Files", "Data File Path", "/srv/cases/pat");
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(s.gsDataPath, "/srv/cases/pat");
}

TEST_F(StartupRun, AMissingFederalTableIsToldAndStartUpGoesOn)
{
    fs::remove(install / "fed.tbl");
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(s.gRates.empty());
    EXPECT_FALSE(s.release.loaded());  // a release without its federal table cannot be used
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_NE(msgs.shown[0].text.find((install / "fed.tbl").string()), std::string::npos) << msgs.shown[0].text;
    EXPECT_EQ(msgs.shown[1].title, "File not found");
    EXPECT_EQ(s.gsFileName, "UNTITLED.INT");
}

// A later release in the user's folder: the installed one's copy, verified
// through 6/30/2018, with a federal table of its own.
TEST_F(StartupRun, ALaterUserReleaseIsUsedAndADamagedOneIsRefusedOnce)
{
    const fs::path folder = perUser() / "rates";
    rwtest::WriteRelease(folder);
    rwtest::WriteBytes(folder / "fed.tbl", rwtest::OneRowTable(0.07f));
    std::string text = rwtest::ReadText(folder / "qrat-release.txt");
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"verified_through=03/31/2018", "verified_through=06/30/2018"},
             {"verified_through_text=March 31, 2018", "verified_through_text=June 30, 2018"},
             {"name=Qrat2018Q1", "name=Qrat2018Q2"}})
        text.replace(text.find(from), from.size(), to);
    std::ofstream(folder / "qrat-release.txt", std::ios::binary) << text;

    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.release.name, "Qrat2018Q2");
    EXPECT_EQ(s.paths.ratesFolder(), folder);
    EXPECT_EQ(s.gRates.at(0).fUPRate, 0.07f);

    std::vector<char> bytes = rwtest::ReadBytes(folder / "pa1.tbl");
    bytes.resize(bytes.size() - 5);
    rwtest::WriteBytes(folder / "pa1.tbl", bytes);
    rw::Session again;
    rw::Startup(again, paths, msgs);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Exclamation);
    EXPECT_NE(msgs.shown[0].text.find((folder / "pa1.tbl").string()), std::string::npos) << msgs.shown[0].text;
    EXPECT_EQ(again.release.name, "Qrat2018Q1");
    EXPECT_EQ(again.paths.ratesFolder(), install.path());
    EXPECT_EQ(again.gRates.at(0).fUPRate, 0.01f);
}

}  // namespace
