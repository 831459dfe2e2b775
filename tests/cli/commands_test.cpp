// qratcalc-cli import, export and compute as a shell runs them: the files
// written, the exit statuses (0 done, 1 a problem, 2 bad input) and a
// computation the rate table cannot support answered as JSON.

#include "casejson/casejson.h"
#include "casedata/casefile.h"

#include "../casedata/handcase.h"
#include "support/clirun.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

namespace {

using rwtest::RunCliCommand;

void WriteText(const std::filesystem::path& p, const std::string& text)
{
    rwtest::WriteBytes(p, {text.begin(), text.end()});
}

TEST(CliImportExport, ImportWritesTheCaseFileAndExportReadsItBack)
{
    rwtest::TempDir dir;
    WriteText(dir / "case.json", R"({"init": {"sName": "Pat"}, "payments": [{}, {"sDesc": "Two", "dtPmt": "12/15/2016"}]})");
    const auto imp = RunCliCommand({"import", (dir / "case.json").string(), "-o", (dir / "CASE.INT").string()});
    ASSERT_EQ(imp.status, 0) << imp.err;
    EXPECT_EQ(imp.out, "");
    const std::vector<char> file = rwtest::ReadBytes(dir / "CASE.INT");
    ASSERT_EQ(file.size(), 514u + 2 * 57);
    EXPECT_EQ(std::string(file.data(), 29), std::string("NOTVB3") + "Qrat2018Q1.10       Pat");
    EXPECT_EQ(std::string(file.data() + 514 + 57, 16), "Two             ");

    const auto exported = RunCliCommand({"export", (dir / "CASE.INT").string()});
    ASSERT_EQ(exported.status, 0) << exported.err;
    nlohmann::json doc;
    std::string error;
    ASSERT_TRUE(rw::ParseCaseJson(exported.out, doc, error)) << error;
    const std::optional<rw::Case> back = rw::CaseFromJson(doc, error);
    ASSERT_TRUE(back) << error;
    EXPECT_EQ(rw::EncodeCase(*back), file);
    EXPECT_EQ(doc["payments"][1]["dtPmt"], "12/15/2016");

    // An old case file is converted to the current layout.
    const std::vector<char> old = rwtest::HandCaseFile("Qrat1998Q4.00", rwtest::HandLayout::L482, 5, {0, 1, 0});
    rwtest::WriteBytes(dir / "old.INT", old);
    ASSERT_EQ(RunCliCommand({"import", (dir / "old.INT").string(), "-o", (dir / "new.INT").string()}).status, 0);
    EXPECT_EQ(rwtest::ReadBytes(dir / "new.INT"), rwtest::HandAsCurrent(old, rwtest::HandLayout::L482));
}

TEST(CliImportExport, RefusalsWriteNothingAndExitWithTheirStatus)
{
    rwtest::TempDir dir;
    const std::string bad = (dir / "bad.json").string(), good = (dir / "good.json").string();
    const std::string out = (dir / "OUT.INT").string();
    WriteText(bad, R"({"payments": [{}, {"dtPmt": "13/45/2016"}]})");
    WriteText(good, "{}");
    WriteText(out, "previous");
    const std::string usage = "qratcalc-cli import: usage: import CASE.json -o CASE.INT\n";
    struct Row {
        std::vector<std::string> args;
        int status;
        std::string err;
    };
    for (const Row& row :
         {Row{{"import", bad, "-o", out}, 2, "qratcalc-cli import: " + bad + R"(: payments[1].dtPmt: not a date: "13/45/2016")" "\n"},
          Row{{"import", good}, 2, "qratcalc-cli import: name the case file to write with -o CASE.INT\n"},
          Row{{"import", good, "-o"}, 2, "qratcalc-cli import: name the case file to write with -o CASE.INT\n"},
          Row{{"import", "-o", out}, 2, usage},
          Row{{"export"}, 2, "qratcalc-cli export: usage: export CASE.INT\n"},
          Row{{"export", good, good}, 2, "qratcalc-cli export: usage: export CASE.INT\n"},
          Row{{"export", (dir / "none.INT").string()}, 2, "qratcalc-cli export: " + (dir / "none.INT").string() + ": no such file\n"},
          Row{{"import", good, "-o", (dir / "no-folder" / "A.INT").string()}, 1, ""}}) {
        SCOPED_TRACE(row.args.back());
        const auto r = RunCliCommand(row.args);
        EXPECT_EQ(r.status, row.status);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(r.err.substr(0, row.err.empty() ? 34 : std::string::npos),
                  row.err.empty() ? "qratcalc-cli import: cannot write " : row.err);
        EXPECT_EQ(rwtest::ReadText(out), "previous");
    }
}

// Florida's table of the tests' release has no published rate for the first
// half of 2003: interest owed then cannot be computed, and the computation is
// refused as a JSON object beside the message on the error stream.
TEST(CliCompute, ARefusedComputationIsAnsweredAsJson)
{
    rwtest::TempDir dir;
    WriteText(dir / "fl.json", R"({"init": {"sTaxAuth": "FL  ", "dtDue": "01/01/2003", "dtExtended": "01/01/2003",
        "tlStart": {"dtDate": "01/01/2003", "cTax": "10000.00"}, "tlStop": {"dtDate": "06/30/2003"}}})");
    const auto r = RunCliCommand({"compute", "--json", (dir / "fl.json").string()});
    EXPECT_EQ(r.status, 2);
    const nlohmann::json j = nlohmann::json::parse(r.out);
    ASSERT_TRUE(j.size() == 1 && j["refused"]["title"].is_string()) << r.out;
    const std::string message = j["refused"]["message"];
    EXPECT_NE(message.find("no published interest rate for 1/1/2003 to 6/30/2003"), std::string::npos) << message;
    EXPECT_EQ(r.err, message + "\n");

    // Stopping on the day before the hole computes, and exits 0.
    WriteText(dir / "fl2002.json", R"({"init": {"sTaxAuth": "FL  ", "dtDue": "01/01/2002", "dtExtended": "01/01/2002",
        "tlStart": {"dtDate": "01/01/2002", "cTax": "10000.00"}, "tlStop": {"dtDate": "12/31/2002"}}})");
    const auto ok = RunCliCommand({"compute", "--json", (dir / "fl2002.json").string()});
    EXPECT_EQ(ok.status, 0) << ok.err;
    EXPECT_FALSE(nlohmann::json::parse(ok.out).contains("refused"));
}

}  // namespace
