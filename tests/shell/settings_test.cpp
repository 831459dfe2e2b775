// The settings file: how a key is read, and how writing one keeps the rest.

#include "shell/settings.h"

#include "base/fault.h"
#include "shellfixture.h"

#include <gmock/gmock.h>

namespace {

TEST(Settings, ReadGivesTheValueOrTheDefault)
{
    const std::string ini = "; settings\r\n[Options]\r\nToolBar=False\r\n  [ data FILES ]  \r\n; Path=/commented\r\n"
                            "  path  =   /home/pat/cases  \r\nEmpty=\r\nQuoted=\"a b\"\r\n[Data Files]\r\nPath=/2nd\r\n";
    const std::string v300(300, 'v'), v254(254, 'v');
    struct Row {
        std::string file, section, key, def, value;
    };
    for (const Row& r : {Row{"", "Options", "ToolBar", "d", "d"},  // no file
                         Row{"[Options]\n", "Data Files", "Path", "d", "d"}, Row{"[Options]\n", "Options", "Path", "d", "d"},
                         // Names without regard to case or blanks; the first section of a name counts.
                         Row{ini, "DATA FILES", "PATH", "x", "/home/pat/cases"},
                         Row{ini, "Data Files", "Empty", "x", ""}, Row{ini, "Data Files", "Quoted", "x", "\"a b\""},
                         Row{ini, "Data Files", "ToolBar", "x", "x"}, Row{ini, "options", "toolbar", "x", "False"},
                         Row{"[S]\nK=" + v300 + "\n", "S", "K", "", v254}, Row{"[S]\n", "S", "K", v300, v254}}) {
        rwtest::TempDir dir;
        if (!r.file.empty())
            std::ofstream(dir / "qratcalc.INI", std::ios::binary) << r.file;
        EXPECT_EQ(rw::SettingsFile(dir / "qratcalc.INI").read(r.section, r.key, r.def), r.value) << r.key;
    }
}

TEST(Settings, WritingChangesOneLineAddsKeysAndSectionsAndKeepsTheRest)
{
    rwtest::TempDir dir;
    rw::SettingsFile f(dir / "qratcalc.INI");
    f.write("Data Files", "Data File Path", "/home/pat/cases");  // creates the file
    EXPECT_EQ(rwtest::ReadText(f.path()), "[Data Files]\nData File Path=/home/pat/cases\n");

    std::ofstream(f.path(), std::ios::binary) << "; kept\r\n[Options]\r\ntoolbar = True\r\nOther=1\r\n\r\n"
                                                 "[Data Files]\r\nData File Path=/old\r\n";
    f.write("Options", "ToolBar", "False");
    f.write("Options", "ToolTips", "True");
    f.write("DATA FILES", "Data File Path", "/new");
    f.write("Extra", "Key", "v");
    EXPECT_EQ(rwtest::ReadText(f.path()), "; kept\r\n[Options]\r\nToolBar=False\r\nOther=1\r\nToolTips=True\r\n\r\n"
                                          "[Data Files]\r\nData File Path=/new\r\n[Extra]\r\nKey=v\r\n");

    std::ofstream(f.path(), std::ios::binary) << "[Options]\nToolBar=True";  // no line end at the end
    f.write("Options", "ToolTips", "False");
    EXPECT_EQ(rwtest::ReadText(f.path()), "[Options]\nToolBar=True\nToolTips=False\n");

    rw::SettingsFile lost(dir / "no-such-folder" / "qratcalc.INI");
    EXPECT_THAT([&] { lost.write("Options", "ToolBar", "True"); },
                testing::Throws<rw::Fault>(testing::AllOf(testing::Property(&rw::Fault::number, 75),
                                                          testing::Property(&rw::Fault::procedure, "WriteSettings"))));
}

}  // namespace
