// qratcalc-cli import, export, compute and release as a shell runs them: the files written, the
// exit statuses (0 done, 1 a problem, 2 bad input), a computation the rate table cannot support
// answered as JSON, releases built and shown.

#include "../casedata/handcase.h"
#include "support/clirun.h"
#include "support/ratesources.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <fstream>
#include <tuple>

namespace {

namespace fs = std::filesystem;
using rwtest::RunCliCommand;

void WriteText(const std::filesystem::path& p, const std::string& text)
{
    rwtest::WriteBytes(p, {text.begin(), text.end()});
}

TEST(CliImportExport, ImportWritesTheCaseFileAndExportReadsItBack)
{
    rwtest::TempDir dir;
    WriteText(dir / "case.json",
              R"({"init": {"sName": "Pat"}, "payments": [{}, {"dtPmt": "12/15/2016"}]})");
    const auto imp = RunCliCommand(
        {"import", (dir / "case.json").string(), "-o", (dir / "CASE.INT").string()});
    ASSERT_EQ(imp.status, 0) << imp.err;
    EXPECT_EQ(imp.out, "");
    const std::vector<char> file = rwtest::ReadBytes(dir / "CASE.INT");
    ASSERT_EQ(file.size(), 514u + 2 * 57);

    const auto exported = RunCliCommand({"export", (dir / "CASE.INT").string()});
    ASSERT_EQ(exported.status, 0) << exported.err;
    EXPECT_NE(exported.out.find(R"("dtPmt": "12/15/2016")"), std::string::npos) << exported.out;
    WriteText(dir / "back.json", exported.out);  // and imported again, the same file
    ASSERT_EQ(
        RunCliCommand({"import", (dir / "back.json").string(), "-o", (dir / "BACK.INT").string()})
            .status,
        0);
    EXPECT_EQ(rwtest::ReadBytes(dir / "BACK.INT"), file);

    // An old case file is converted to the current layout.
    const std::vector<char> old
        = rwtest::HandCaseFile("Qrat1998Q4.00", rwtest::HandLayout::L482, 5, {0, 1, 0});
    rwtest::WriteBytes(dir / "old.INT", old);
    ASSERT_EQ(
        RunCliCommand({"import", (dir / "old.INT").string(), "-o", (dir / "new.INT").string()})
            .status,
        0);
    EXPECT_EQ(rwtest::ReadBytes(dir / "new.INT"),
              rwtest::HandAsCurrent(old, rwtest::HandLayout::L482));
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
         {Row{{"import", bad, "-o", out},
              2,
              "qratcalc-cli import: " + bad
                  + R"(: payments[1].dtPmt: not a date: "13/45/2016")"
                    "\n"},
          Row{{"import", good},
              2,
              "qratcalc-cli import: name the case file to write with -o CASE.INT\n"},
          Row{{"import", "-o", out}, 2, usage},
          Row{{"export", good, good}, 2, "qratcalc-cli export: usage: export CASE.INT\n"},
          Row{{"export", out + "x"}, 2, "qratcalc-cli export: " + out + "x: no such file\n"},
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
// half of 2003: interest owed then cannot be computed.
const std::string kFloridaHole
    = R"({"init": {"sTaxAuth": "FL  ", "dtDue": "01/01/2003", "dtExtended": "01/01/2003",
        "tlStart": {"dtDate": "01/01/2003", "cTax": "10000.00"}, "tlStop": {"dtDate": "06/30/2003"}}})";

// Files written by commands are written whole or not at all: a JSON case
// that cannot be written, a PDF whose computation is refused.
TEST(CliImportExport, AFailedCommandLeavesItsOutputFileAsItWas)
{
    rwtest::TempDir dir;
    WriteText(dir / "payroll.json", R"({"init": {"bPayroll": true}})");
    WriteText(dir / "fl.json", kFloridaHole);
    WriteText(dir / "OUT.json", "previous");
    WriteText(dir / "OUT.pdf", "previous");
    fs::permissions(dir / "OUT.json", fs::perms(0444));
    const auto arranged = RunCliCommand(
        {"arrange", (dir / "payroll.json").string(), "-o", (dir / "OUT.json").string()});
    EXPECT_EQ(arranged.status, 1);
    EXPECT_EQ(arranged.err,
              "qratcalc-cli arrange: " + (dir / "OUT.json").string() + " is write-protected\n");
    EXPECT_EQ(RunCliCommand({"print", "--reports", "summary", "--pdf", (dir / "OUT.pdf").string(),
                             (dir / "fl.json").string()})
                  .status,
              2);
    EXPECT_EQ(rwtest::ReadText(dir / "OUT.json") + rwtest::ReadText(dir / "OUT.pdf"),
              "previousprevious");
}

// A refused computation is answered as a JSON object beside the message on
// the error stream.
TEST(CliCompute, ARefusedComputationIsAnsweredAsJson)
{
    rwtest::TempDir dir;
    WriteText(dir / "fl.json", kFloridaHole);
    const auto r = RunCliCommand({"compute", "--json", (dir / "fl.json").string()});
    EXPECT_EQ(r.status, 2);
    const nlohmann::json j = nlohmann::json::parse(r.out);
    ASSERT_TRUE(j.size() == 1 && j["refused"]["title"].is_string()) << r.out;
    const std::string message = j["refused"]["message"];
    EXPECT_NE(message.find("no published interest rate for 1/1/2003 to 6/30/2003"),
              std::string::npos)
        << message;
    EXPECT_EQ(r.err, message + "\n");
}

// The estimated tax penalty of an individual owing 10,000 for 2021 with no usable prior year:
// 90 % is 9,000, four installments of 2,250. The tests' federal table holds 3 % through
// 3/31/2022, one rate, so each amount is one line. The third installment, paid 10/15/2021:
// 2,250 x 3 % x 30/365 = 5.5479; the fourth, due 1/15/2022 and paid 2/14: the same, 5.5479.
// 5.55 + 5.55 = 11.10.
TEST(CliCompute, TheEstimatedTaxPenaltyIsItsOwnSection)
{
    rwtest::TempDir dir;
    const std::string kase
        = R"({"init": {"sTaxAuth": "US  ", "dtDue": "04/15/2022", "dtExtended": "04/15/2022",
        "tlStart": {"dtDate": "04/15/2022", "cTax": "100.00"}, "tlStop": {"dtDate": "06/30/2022"}},
        "estTax": {"on": ON, "taxYear": 2021, "currentTax": "10000", "estimatedPayments": [
        {"date": "4/15/2021", "amount": "2250"}, {"date": "6/15/2021", "amount": "2250"},
        {"date": "10/15/2021", "amount": "2250"}, {"date": "2/14/2022", "amount": "2250"}]}})";
    WriteText(dir / "on.json", std::string(kase).replace(kase.find("ON"), 2, "true"));
    WriteText(dir / "off.json", std::string(kase).replace(kase.find("ON"), 2, "false"));
    const auto r = RunCliCommand({"compute", "--json", (dir / "on.json").string()});
    ASSERT_EQ(r.status, 0) << r.err;
    const nlohmann::json j = nlohmann::json::parse(r.out)["estimatedTax"];
    std::vector<std::string> periods;
    for (const auto& p : j["periods"])
        periods.push_back(p["installment"].dump() + " " + p["from"].get<std::string>() + " "
                          + p["to"].get<std::string>() + " " + p["days"].dump() + " "
                          + p["penalty"].get<std::string>());
    EXPECT_EQ(periods, (std::vector<std::string>{"3 09/15/2021 10/15/2021 30 5.5500",
                                                 "4 01/15/2022 02/14/2022 30 5.5500"}));
    EXPECT_EQ(j["total"], "11.1000");
    ASSERT_EQ(j["installments"].size(), 4u);
    EXPECT_EQ(j["installments"][3]["required"], "2250.0000");
    const auto off = RunCliCommand({"compute", "--json", (dir / "off.json").string()});
    ASSERT_EQ(off.status, 0) << off.err;
    EXPECT_FALSE(nlohmann::json::parse(off.out).contains("estimatedTax"));
    // A state case figures it at the state's rates: Pennsylvania's 3 % for 2021 and 2022
    // gives the same two lines.
    std::string state = std::string(kase).replace(kase.find("ON"), 2, "true");
    WriteText(dir / "pa.json", state.replace(state.find("US  "), 4, "PA  "));
    const auto pa = RunCliCommand({"compute", "--json", (dir / "pa.json").string()});
    ASSERT_EQ(pa.status, 0) << pa.err;
    EXPECT_EQ(nlohmann::json::parse(pa.out)["estimatedTax"]["total"], "11.1000");
}

// Worked examples of Publication 505 through the command-line tool, on the tests' frozen
// federal table (the rates the publications print: 6 % and 5 % for 2002; 6 % and 7 % for 2005;
// 8 % and 7 % for 2007, April 2008 at March's 7 %). Their estimated tax inputs and the
// published total; compute --json carries the total and report prints it.
TEST(CliCompute, PublishedEstimatedTaxExamplesToTheCent)
{
    const std::tuple<const char*, const char*, const char*> examples[] = {
        // Publication 505 (2006), Figure 4-B, Regular Installment Method (Ben Brown), Form
        // 2210 (2005) line 31.
        {"Ben Brown 2005",
         R"("taxYear": 2005, "currentTax": "7031", "priorTax": "6116", "priorYearUsable": true,
            "withholding": "3228", "estimatedPayments": [{"date": "9/2/2005", "amount": "1000"},
            {"date": "1/12/2006", "amount": "1000"}])",
         "68.51"},
        // Publication 505 (2008), Figure 4-C, Annualized Income Method (Laura Maple), Form
        // 2210 (2007) line 31: the Schedule AI installments typed in.
        {"Laura Maple 2007",
         R"("taxYear": 2007, "currentTax": "3600", "withholding": "1500",
            "installments": ["0", "140", "1169", "1867"],
            "estimatedPayments": [{"date": "8/15/2007", "amount": "100"},
            {"date": "12/3/2007", "amount": "500"}])",
         "20.18"},
        // Publication 505, the annualized example on Form 2210 (2002), line 36.
        {"Annualized 2002",
         R"("taxYear": 2002, "currentTax": "7031", "priorTax": "6116", "priorYearUsable": true,
            "withholding": "3228", "installments": ["338", "1732", "1385", "2089"],
            "estimatedPayments": [{"date": "9/2/2002", "amount": "1000"},
            {"date": "1/12/2003", "amount": "1000"}])",
         "10.48"},
    };
    rwtest::TempDir dir;
    for (const auto& [name, inputs, total] : examples) {
        SCOPED_TRACE(name);
        const fs::path file = dir / "case.json";
        WriteText(file, R"({"init": {"sTaxAuth": "US  ", "dtDue": "04/15/2010",
            "dtExtended": "04/15/2010", "tlStart": {"dtDate": "04/15/2010", "cTax": "100.00"},
            "tlStop": {"dtDate": "06/30/2010"}}, "estTax": {"on": true, )"
                            + std::string(inputs) + "}}");
        const auto computed = RunCliCommand({"compute", "--json", file.string()});
        ASSERT_EQ(computed.status, 0) << computed.err;
        EXPECT_EQ(nlohmann::json::parse(computed.out)["estimatedTax"]["total"],
                  std::string(total) + "00");
        const auto report = RunCliCommand({"report", "--reports", "esttax", file.string()});
        ASSERT_EQ(report.status, 0) << report.err;
        EXPECT_NE(report.out.find("Total Estimated Tax Penalty"), std::string::npos);
        EXPECT_NE(report.out.find(" " + std::string(total) + "\n"), std::string::npos)
            << report.out;
    }
}

// "release": a release built from a copy of the tests' frozen sources with one
// more quarter (the first of 2027 announced at 7 %, the second estimated at
// 8 %) into the user's data folder is the one shown; a damaged one is reported
// and the installed release (Qrat2026Q4, copied into a folder of its own)
// shown instead. (The shell's tests take a user's release up at the start.)
class ReleaseCommand : public testing::Test {
protected:
    ReleaseCommand()
    {
        fs::copy(rwtest::FixtureReleaseFolder(), install.path(), fs::copy_options::recursive);
        rwtest::CopyRateSourcesWithNextQuarter(sources.path());
        setenv("XDG_DATA_HOME", dataHome.path().c_str(), 1);
        userRates = rw::Paths::FromEnvironment().userReleaseDir();
    }
    ~ReleaseCommand() override { setenv("XDG_DATA_HOME", oldDataHome_.c_str(), 1); }
    rwtest::CliRun Run(std::vector<std::string> args) const
    {
        return rwtest::RunCliCommand(std::move(args), install.path());
    }
    // The output's lines that are missing from what the command wrote.
    static std::string Missing(const rwtest::CliRun& r, std::initializer_list<const char*> lines)
    {
        std::string missing;
        for (const char* l : lines)
            missing += r.out.find(l) == std::string::npos ? std::string(l) + "\n" : "";
        return missing;
    }

    const std::string oldDataHome_ = std::getenv("XDG_DATA_HOME");
    rwtest::TempDir dataHome, install, sources;
    fs::path userRates;
};

TEST_F(ReleaseCommand, BuildsIntoTheUsersFolderShowsWhatIsInUseAndRefusesABadSource)
{
    const rwtest::CliRun built
        = Run({"release", "build", sources.path().string(), "-o", userRates.string()});
    ASSERT_EQ(built.status, 0) << built.err;
    EXPECT_NE(built.out.find("Built Qrat2027Q1 (2027, 1st Quarter)"), std::string::npos)
        << built.out;
    const rwtest::CliRun shown = Run({"release", "show"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(
        Missing(shown, {"Release:            Qrat2027Q1 (2027, 1st Quarter)",
                        "the user's data folder", "Verified through:   03/31/2027  March 31, 2027",
                        "Estimated through:  06/30/2027  June 30, 2027"}),
        "")
        << shown.out;

    // A release that fails its check (a file cut by `cut` bytes, or a bit of
    // the first rate changed) is told once, by name and reason, and the
    // installed release (copied into a folder of its own) is shown instead.
    const fs::path pristine = dataHome / "pristine";
    fs::copy(userRates, pristine, fs::copy_options::recursive);
    const std::string notUsed = "qratcalc-cli: The interest rates in " + userRates.string();
    for (const auto& [file, cut, said] : std::vector<std::tuple<std::string, int, std::string>>{
             {"ny_ind1.tbl", 7, " (Qrat2027Q1) are not used: % is damaged: Input past end of file"},
             {"pa1.tbl", 0,
              " (Qrat2027Q1) are not used: %: the table has changed since the release was written "
              "(its checksum differs from the release file's)"},
             {"qrat-release.txt", 200,
              " are not used: %: file_crc32 is not given: the file is cut short or was not written "
              "by the release build"}}) {
        SCOPED_TRACE(file);
        fs::remove_all(userRates);
        fs::copy(pristine, userRates, fs::copy_options::recursive);
        std::vector<char> bytes = rwtest::ReadBytes(userRates / file);
        cut ? bytes.resize(bytes.size() - static_cast<std::size_t>(cut)) : void(bytes[26] ^= 1);
        rwtest::WriteBytes(userRates / file, bytes);
        const rwtest::CliRun installed = Run({"release", "show"});
        EXPECT_EQ(installed.status, 0);
        std::string expected = notUsed + said + ".  The installed rates are used instead.\n";
        expected.replace(expected.find('%'), 1, (userRates / file).string());
        EXPECT_EQ(installed.err, expected);
        EXPECT_EQ(Missing(installed, {"Release:            Qrat2026Q4", "(installed with"}), "");
    }

    // A bad source builds nothing.
    std::ofstream(sources / "fed.csv", std::ios::app | std::ios::binary)
        << "07/01/2027,09/30/2027,0.75,0.07,C,ESTIMATE: a slipped decimal point\n";
    const rwtest::CliRun bad
        = Run({"release", "build", sources.path().string(), "-o", (dataHome / "bad").string()});
    EXPECT_EQ(bad.status, 2);
    EXPECT_NE(bad.err.find("above 50 %"), std::string::npos) << bad.err;
    EXPECT_NE(bad.err.find("nothing written"), std::string::npos);
    EXPECT_FALSE(fs::exists(dataHome / "bad"));
    EXPECT_EQ(Run({"release", "build", sources.path().string()}).status, 2);  // no -o
    EXPECT_EQ(Run({"release", "frobnicate"}).status, 2);
}

}  // namespace
