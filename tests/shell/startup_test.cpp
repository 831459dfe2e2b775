// Start-up: the settings file (how a key is read, how writing one keeps the
// rest), the data folder by platform version, the sample cases, the data
// folder from the settings, the release of the rates and the federal table,
// and the empty case the main window opens with.

#include "shell/startup.h"

#include "shell/settings.h"
#include "shellfixture.h"

namespace {

namespace fs = std::filesystem;

TEST(Settings, ReadGivesTheValueOrTheDefault)
{
    const std::string ini
        = "; settings\r\n[Options]\r\nToolBar=False\r\n  [ data FILES ]  \r\n; Path=/comment\r\n"
          "  path  =   /home/pat/cases  \r\nEmpty=\r\nQuoted=\"a b\"\r\n[Data "
          "Files]\r\nPath=/2\r\n";
    const std::string v300(300, 'v'), v254(254, 'v');
    struct Row {
        std::string name, file, section, key, def, value;
    };
    for (const Row& r :
         {Row{"NoFile", "", "Options", "ToolBar", "d", "d"},
          Row{"NoSection", "[Options]\n", "Data Files", "Path", "d", "d"},
          Row{"NoKey", "[O]\n", "O", "P", "d", "d"},
          // Names without regard to case or blanks; the first section of a name counts.
          Row{"FirstSectionAnyCase", ini, "DATA FILES", "PATH", "x", "/home/pat/cases"},
          Row{"GivenEmpty", ini, "Data Files", "Empty", "x", ""},
          Row{"QuotesKept", ini, "Data Files", "Quoted", "x", "\"a b\""},
          Row{"KeyOfAnotherSection", ini, "Data Files", "ToolBar", "x", "x"},
          Row{"ValueCut", "[S]\nK=" + v300 + "\n", "S", "K", "", v254},
          Row{"DefaultCut", "[S]\n", "S", "K", v300, v254}}) {
        SCOPED_TRACE(r.name);
        rwtest::TempDir dir;
        if (!r.file.empty())
            std::ofstream(dir / "qratcalc.INI", std::ios::binary) << r.file;
        EXPECT_EQ(rw::SettingsFile(dir / "qratcalc.INI").read(r.section, r.key, r.def), r.value);
    }
}

TEST(Settings, WritingChangesOneLineAddsKeysAndSectionsAndKeepsTheRest)
{
    rwtest::TempDir dir;
    rw::SettingsFile f(dir / "qratcalc.INI");
    f.write("Data Files", "Data File Path", "/home/pat/cases");  // creates the file
    EXPECT_EQ(rwtest::ReadText(f.path()), "[Data Files]\nData File Path=/home/pat/cases\n");

    std::ofstream(f.path(), std::ios::binary)
        << "; kept\r\n[Options]\r\ntoolbar = True\r\nOther=1\r\n\r\n"
           "[Data Files]\r\nData File Path=/old\r\n";
    f.write("Options", "ToolBar", "False");
    f.write("Options", "ToolTips", "True");
    f.write("DATA FILES", "Data File Path", "/new");
    f.write("Extra", "Key", "v");
    EXPECT_EQ(rwtest::ReadText(f.path()),
              "; kept\r\n[Options]\r\nToolBar=False\r\nOther=1\r\nToolTips=True\r\n\r\n"
              "[Data Files]\r\nData File Path=/new\r\n[Extra]\r\nKey=v\r\n");

    std::ofstream(f.path(), std::ios::binary)
        << "[Options]\nToolBar=True";  // no line end at the end
    f.write("Options", "ToolTips", "False");
    EXPECT_EQ(rwtest::ReadText(f.path()), "[Options]\nToolBar=True\nToolTips=False\n");

    rw::SettingsFile(dir / "new-folder" / "qratcalc.INI").write("Options", "ToolBar", "True");
    EXPECT_EQ(rwtest::ReadText(dir / "new-folder" / "qratcalc.INI"), "[Options]\nToolBar=True\n");
    rwtest::WriteBytes(dir / "plain", {'x'});  // a file where the folder should be
    fs::create_directory(dir / "folder.INI");  // a folder holds no settings
    EXPECT_EQ(rw::SettingsFile(dir / "folder.INI").read("Options", "ToolBar", "def"), "def");
    rw::SettingsFile lost(dir / "plain" / "qratcalc.INI");
    EXPECT_TRUE(rwtest::FaultOf([&] {
                    lost.write("Options", "ToolBar", "True");
                }).starts_with("75 WriteSettings:"));
}

TEST(Startup, VersionsCompareAsPlainTextAndAFolderThatCannotBeMadeIsAFault)
{
    // Up to "2.6.0" the installation folder; "2.10.0" sorts below "2.6".
    EXPECT_TRUE(rw::DataInInstallFolder("2.6.0") && rw::DataInInstallFolder("2.10.0"));
    EXPECT_FALSE(rw::DataInInstallFolder("2.6.1") || rw::DataInInstallFolder(rw::WindowsVersion()));
    rwtest::TempDir inst, user;
    rwtest::WriteBytes(user.path() / "Brindlecote", {'x'});  // a file where a folder should be
    const rw::Paths paths = rw::Paths::ForFolders(inst.path(), user.path());
    EXPECT_TRUE(rwtest::FaultOf([&] {
                    rw::GetWin7AppDataPath(paths, "Qrat");
                }).starts_with("75 GetWin7AppDataPath:"));
}

class StartupRun : public rwtest::ShellTest {
protected:
    fs::path perUser() const { return paths.userDataRoot / "Brindlecote" / "Qrat"; }
};

TEST_F(StartupRun, LeavesAnEmptyUntitledCaseWithTheFederalTableAndTheSamples)
{
    rwtest::WriteBytes(install / "DEMO_INC.INT", {'n', 'e', 'w'});
    rwtest::WriteBytes(install / "DEMO941.INT", {'9', '4', '1'});
    fs::create_directories(perUser());
    rwtest::WriteBytes(perUser() / "DEMO_INC.INT", {'o', 'l', 'd'});
    rw::Session s;
    s.kase.init.sName = "left over";
    rw::Startup(s, paths, msgs);

    EXPECT_EQ(s.gsDataPath, perUser().string());  // no settings file: the default folder
    EXPECT_EQ(rwtest::ReadText(perUser() / "DEMO_INC.INT"), "old");  // the user's copy stays
    EXPECT_EQ(rwtest::ReadText(perUser() / "DEMO941.INT"), "941");  // missing: copied
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

TEST_F(StartupRun, SettingsAnEarlierVersionLeftInTheInstallationFolderAreTheStartingValues)
{
    const std::string old = "[Data Files]\nData File Path=/old\n";
    rwtest::WriteBytes(install / "qratcalc.INI", {old.begin(), old.end()});
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(s.gsDataPath, "/old");
    // Read once: later values are the user's own, and the old file stays as it was.
    rw::SettingsFile(paths.iniFile()).write("Data Files", "Data File Path", "/mine");
    rw::Startup(s, paths, msgs);
    EXPECT_EQ(s.gsDataPath, "/mine");
    EXPECT_EQ(rwtest::ReadText(install / "qratcalc.INI"), old);
}

TEST_F(StartupRun, AMissingFederalTableIsToldAndStartUpGoesOn)
{
    fs::remove(install / "fed.tbl");
    rw::Session s;
    rw::Startup(s, paths, msgs);
    EXPECT_TRUE(fs::is_directory(perUser()));  // the default data folder, made
    EXPECT_TRUE(s.gRates.empty());
    EXPECT_FALSE(s.release.loaded());  // a release without its federal table cannot be used
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_NE(msgs.shown[0].text.find((install / "fed.tbl").string()), std::string::npos)
        << msgs.shown[0].text;
    EXPECT_EQ(msgs.shown[1].title, "File not found");
    EXPECT_EQ(s.gsFileName, "UNTITLED.INT");
}

// A release in the user's folder: the installed one's copy with a federal
// table of its own, then verified through 6/30/2018.
TEST_F(StartupRun, ALaterUserReleaseIsUsedAndADamagedOneIsRefusedOnce)
{
    const fs::path folder = perUser() / "rates";
    rwtest::WriteRelease(folder);
    rwtest::WriteBytes(folder / "fed.tbl", rwtest::OneRowTable(0.07f));
    rw::Startup(session, paths, msgs);  // not later: left quietly
    EXPECT_TRUE(msgs.shown.empty() && session.gRates.at(0).fUPRate == 0.01f);
    rwtest::SealRelease(folder, [](rw::ReleaseInfo& r) {
        r.name = "Qrat2018Q2";
        r.verifiedThrough = rwtest::D(2018, 6, 30);
        r.verifiedThroughText = "June 30, 2018";
    });

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
    EXPECT_NE(msgs.shown[0].text.find((folder / "pa1.tbl").string()), std::string::npos)
        << msgs.shown[0].text;
    EXPECT_EQ(again.release.name, "Qrat2018Q1");
    EXPECT_EQ(again.paths.ratesFolder(), install.path());
    EXPECT_EQ(again.gRates.at(0).fUPRate, 0.01f);
}

}  // namespace
