#include "shell/settings.h"

#include "base/fault.h"

#include "shellfixture.h"

#include <gtest/gtest.h>

namespace {

using rw::SettingsFile;

class Settings : public testing::Test {
protected:
    rwtest::TempDir dir;
    std::filesystem::path ini = dir / "qratcalc.INI";
    void Put(const std::string& text) { std::ofstream(ini, std::ios::binary) << text; }
};

TEST_F(Settings, ReadsWithDefaultsWhenFileSectionOrKeyIsMissing)
{
    SettingsFile f(ini);
    EXPECT_EQ(f.read("Data Files", "Data File Path", "/default"), "/default");
    Put("[Options]\nToolBar=True\n");
    EXPECT_EQ(f.read("Data Files", "Data File Path", "/default"), "/default");
    EXPECT_EQ(f.read("Options", "ToolTips", "dflt"), "dflt");
    EXPECT_EQ(f.read("Options", "ToolBar", "dflt"), "True");
}

TEST_F(Settings, NamesIgnoreCaseAndBlanksAroundThem)
{
    Put("; settings\r\n"
        "[Options]\r\n"
        "ToolBar=False\r\n"
        "  [ data FILES ]  \r\n"
        "; Data File Path=/commented\r\n"
        "  data file path  =   /home/pat/cases  \r\n"
        "Empty=\r\n"
        "Quoted=\"a b\"\r\n"
        "[Data Files]\r\n"
        "Data File Path=/second/section\r\n");
    SettingsFile f(ini);
    EXPECT_EQ(f.read("Data Files", "Data File Path", "x"), "/home/pat/cases");  // the first section counts
    EXPECT_EQ(f.read("DATA FILES", "DATA FILE PATH", "x"), "/home/pat/cases");
    EXPECT_EQ(f.read("Data Files", "Empty", "x"), "");  // given empty: not the default
    EXPECT_EQ(f.read("Data Files", "Quoted", "x"), "\"a b\"");
    EXPECT_EQ(f.read("Data Files", "ToolBar", "x"), "x");  // a key of another section
    EXPECT_EQ(f.read("options", "toolbar", "x"), "False");
}

TEST_F(Settings, ValuesAreCutToTheBuffer)
{
    const std::string longValue(300, 'v');
    Put("[S]\nK=" + longValue + "\n");
    SettingsFile f(ini);
    EXPECT_EQ(f.read("S", "K", ""), std::string(254, 'v'));
    EXPECT_EQ(f.read("S", "Missing", longValue), std::string(254, 'v'));
    Put("[S]\nK=" + std::string(254, 'w') + "\n");
    EXPECT_EQ(f.read("S", "K", ""), std::string(254, 'w'));
}

TEST_F(Settings, WritingCreatesTheFile)
{
    SettingsFile f(ini);
    f.write("Data Files", "Data File Path", "/home/pat/cases");
    EXPECT_EQ(rwtest::ReadText(ini), "[Data Files]\nData File Path=/home/pat/cases\n");
    EXPECT_EQ(f.read("Data Files", "Data File Path", ""), "/home/pat/cases");
}

TEST_F(Settings, WritingChangesOneLineAndKeepsTheRest)
{
    Put("; kept comment\r\n"
        "[Options]\r\n"
        "toolbar = True\r\n"
        "Other=1\r\n"
        "\r\n"
        "[Data Files]\r\n"
        "Data File Path=/old\r\n");
    SettingsFile f(ini);
    f.write("Options", "ToolBar", "False");
    f.write("Options", "ToolTips", "True");
    f.write("DATA FILES", "Data File Path", "/new");
    f.write("Extra", "Key", "v");
    EXPECT_EQ(rwtest::ReadText(ini),
              "; kept comment\r\n"
              "[Options]\r\n"
              "ToolBar=False\r\n"
              "Other=1\r\n"
              "ToolTips=True\r\n"
              "\r\n"
              "[Data Files]\r\n"
              "Data File Path=/new\r\n"
              "[Extra]\r\n"
              "Key=v\r\n");
}

TEST_F(Settings, WritingAfterALastLineWithoutItsEnding)
{
    Put("[Options]\nToolBar=True");
    SettingsFile f(ini);
    f.write("Options", "ToolTips", "False");
    EXPECT_EQ(rwtest::ReadText(ini), "[Options]\nToolBar=True\nToolTips=False\n");
}

TEST_F(Settings, AFileThatCannotBeWrittenIsAFault)
{
    SettingsFile f(dir / "no-such-folder" / "qratcalc.INI");
    try {
        f.write("Options", "ToolBar", "True");
        ADD_FAILURE() << "no fault";
    } catch (const rw::Fault& e) {
        EXPECT_EQ(e.number(), 75);
        EXPECT_EQ(e.procedure(), "WriteSettings");
    }
}

}  // namespace
