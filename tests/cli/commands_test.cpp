#include "cli/cli.h"
#include "casejson/casejson.h"

#include "casedata/casefile.h"

#include "../casedata/handcase.h"
#include "support/tempdir.h"

#include "support/clirun.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using rwtest::CliRun;
using rwtest::RunCliCommand;

void WriteText(const std::filesystem::path& p, const std::string& text)
{
    std::ofstream(p, std::ios::binary) << text;
}

std::vector<char> ReadBytes(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

const char* kCase = R"({
  "init": { "sName": "Pat", "sTaxAuth": "US  ", "dtDue": "04/15/2016",
            "tlStart": { "dtDate": "04/15/2016", "cTax": "10000.00" }, "tlStop": { "dtDate": "12/31/2017" } },
  "payments": [ { "sDesc": "One", "dtPmt": "06/15/2016", "cAmount": "3000.00", "cToTax": "3000.00", "sMethod": "I" },
                { "sDesc": "Two", "dtPmt": "12/15/2016", "cAmount": "2000.00", "cToTax": "2000.00", "sMethod": "I" } ]
})";

TEST(CliImportExport, ImportWritesTheCaseFileAndExportReadsItBack)
{
    rwtest::TempDir dir;
    WriteText(dir / "case.json", kCase);
    const CliRun imp = RunCliCommand({"import", (dir / "case.json").string(), "-o", (dir / "CASE.INT").string()});
    ASSERT_EQ(imp.status, 0) << imp.err;
    EXPECT_EQ(imp.out, "");
    const std::vector<char> file = ReadBytes(dir / "CASE.INT");
    ASSERT_EQ(file.size(), 514u + 2 * 57);
    EXPECT_EQ(std::string(file.data(), 26), std::string("NOTVB3") + "Qrat2018Q1.10       ");
    EXPECT_EQ(std::string(file.data() + 26, 3), "Pat");
    EXPECT_EQ(std::string(file.data() + 514 + 57, 16), "Two             ");

    const CliRun exported = RunCliCommand({"export", (dir / "CASE.INT").string()});
    ASSERT_EQ(exported.status, 0) << exported.err;
    nlohmann::json doc;
    std::string error;
    ASSERT_TRUE(rw::ParseCaseJson(exported.out, doc, error)) << error;
    const std::optional<rw::Case> back = rw::CaseFromJson(doc, error);
    ASSERT_TRUE(back) << error;
    EXPECT_EQ(rw::EncodeCase(*back), file);
    EXPECT_EQ(doc["init"]["sName"], "Pat" + std::string(49, ' '));
    EXPECT_EQ(doc["payments"][1]["dtPmt"], "12/15/2016");
}

TEST(CliImportExport, ImportConvertsAnOldCaseFileToTheCurrentLayout)
{
    rwtest::TempDir dir;
    const std::vector<char> old = rwtest::HandCaseFile("Qrat1998Q4.00", rwtest::HandLayout::L482, 5, {0, 1, 0});
    std::ofstream(dir / "old.INT", std::ios::binary).write(old.data(), static_cast<std::streamsize>(old.size()));
    const CliRun imp = RunCliCommand({"import", (dir / "old.INT").string(), "-o", (dir / "new.INT").string()});
    ASSERT_EQ(imp.status, 0) << imp.err;
    const std::vector<char> now = ReadBytes(dir / "new.INT");
    ASSERT_EQ(now.size(), 514u + 56);
    const rw::CaseReadResult r = rw::DecodeCase(now);
    ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
    rwtest::ExpectInitMatches(r.kase.init, rwtest::HandLayout::L482, 5, {0, 1, 0});
    rwtest::ExpectChargeMatches(r.kase.charges[0], 5);
}

TEST(CliImportExport, AnImportErrorNamesTheFieldAndWritesNothing)
{
    rwtest::TempDir dir;
    const std::string in = (dir / "bad.json").string();
    WriteText(in, R"({"payments": [{}, {"dtPmt": "13/45/2016"}]})");
    const std::string out = (dir / "bad.INT").string();
    const CliRun r = RunCliCommand({"import", in, "-o", out});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.err, "qratcalc-cli import: " + in + R"(: payments[1].dtPmt: not a date: "13/45/2016")" + "\n");
    EXPECT_FALSE(std::filesystem::exists(out));

    // An existing output file is left as it was.
    WriteText(out, "previous");
    EXPECT_EQ(RunCliCommand({"import", in, "-o", out}).status, 2);
    const std::vector<char> kept = ReadBytes(out);
    EXPECT_EQ(std::string(kept.begin(), kept.end()), "previous");
}

TEST(CliImportExport, UsageProblems)
{
    rwtest::TempDir dir;
    WriteText(dir / "case.json", kCase);
    const std::string in = (dir / "case.json").string();
    struct Row {
        std::vector<std::string> args;
        std::string err;
    };
    for (const Row& row :
         {Row{{"import", in}, "qratcalc-cli import: name the case file to write with -o CASE.INT\n"},
          Row{{"import", in, "-o"}, "qratcalc-cli import: name the case file to write with -o CASE.INT\n"},
          Row{{"import", "-o", (dir / "x.INT").string()}, "qratcalc-cli import: usage: import CASE.json -o CASE.INT\n"},
          Row{{"export"}, "qratcalc-cli export: usage: export CASE.INT\n"},
          Row{{"export", in, in}, "qratcalc-cli export: usage: export CASE.INT\n"},
          Row{{"export", (dir / "none.INT").string()},
              "qratcalc-cli export: " + (dir / "none.INT").string() + ": no such file\n"}}) {
        const CliRun r = RunCliCommand(row.args);
        EXPECT_EQ(r.status, 2);
        EXPECT_EQ(r.err, row.err);
        EXPECT_EQ(r.out, "");
    }
    EXPECT_FALSE(std::filesystem::exists(dir / "x.INT"));
}

}  // namespace
