// The report and print commands of the command-line tool, and the summary
// in the computation's JSON.

#include "reportcases.h"

#include "cli/cli.h"
#include "cli/cmd_compute.h"
#include "cli/cmd_report.h"
#include "reports/textprinter.h"

#include "support/clirun.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using rwtest::CliRun;
using rwtest::RunCliCommand;

using namespace rw;
using namespace reporttest;

std::string caseFile(const char* name)
{
    return std::string(RW_REPORTS_TESTDATA) + "/" + name + "/case.json";
}

TEST(ComputeJson, SummaryLinesInDisplayOrderEndingWithTotal)
{
    const nlohmann::json j = nlohmann::json::parse(cli::ComputationJson(EveryPenaltyCase()).dump());
    const nlohmann::json want = nlohmann::json::parse(R"([
        {"label": "Unpaid tax", "amount": "11900.0000"},
        {"label": "Interest", "amount": "1234.5700"},
        {"label": "Failure to file penalty", "amount": "2250.0000"},
        {"label": "Failure to pay penalty", "amount": "500.0000"},
        {"label": "Accuracy related penalty", "amount": "2000.0000"},
        {"label": "5% Negligence penalty", "amount": "0.0000"},
        {"label": "Time dependent negligence pen", "amount": "0.0000"},
        {"label": "Overvaluation penalty", "amount": "0.0000"},
        {"label": "Substantial understmt penalty", "amount": "0.0000"},
        {"label": "6653(b)(1) or 6663 fraud pen.", "amount": "0.0000"},
        {"label": "Time dependent fraud pen", "amount": "0.0000"},
        {"label": "Payroll deposit penalties", "amount": "252.0000"},
        {"label": "Other penalties", "amount": "200.0000"},
        {"label": "Pmts allocated to penalties", "amount": "-50.0000"},
        {"label": "Total", "amount": "18286.5700"}])");
    EXPECT_EQ(j["summary"], want);
}

TEST(ReportCommand, InputsWindowWithTheGridsOfItsLists)
{
    const CliRun r = RunCliCommand({"report", "--reports", "inputs", caseFile("clicase")});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, Expected("clicase", "report-inputs.txt"));
}

TEST(PrintCommand, TextPagesOfTheInputsListing)
{
    const CliRun r = RunCliCommand({"print", "--reports", "inputs", "--text", caseFile("clicase")});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out, Expected("clicase", "print-inputs.txt"));
    EXPECT_EQ(r.err, "Printing Inputs...\nPrinting Done\n");
}

TEST(PrintCommand, LinesOptionSetsThePageCapacity)
{
    const CliRun r = RunCliCommand({"print", "--reports", "inputs", "--text", "--lines", "40", caseFile("clicase")});
    ASSERT_EQ(r.status, 0) << r.err;
    const auto pages = SplitPages(r.out);
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].size(), 34u);  // capacity - 6
    EXPECT_EQ(pages[0].back(), "  Page 1");
    EXPECT_EQ(pages[1].back(), "  Page 2");
}

TEST(ReportCommands, BadArgumentsAreRefused)
{
    EXPECT_EQ(RunCliCommand({"report", "--reports", "inputs,bogus", caseFile("clicase")}).status, cli::kExitBadInput);
    EXPECT_EQ(RunCliCommand({"print", "--text", "--pdf", "x.pdf", caseFile("clicase")}).status, cli::kExitBadInput);
    EXPECT_EQ(RunCliCommand({"print", caseFile("clicase")}).status, cli::kExitBadInput);
    EXPECT_EQ(RunCliCommand({"print", "--text", "--lines", "0", caseFile("clicase")}).status, cli::kExitBadInput);
    EXPECT_EQ(RunCliCommand({"report", "missing.json"}).status, cli::kExitBadInput);
}

TEST(ReportList, NamesAndAll)
{
    std::string error;
    EXPECT_EQ(cli::ParseReportList("inputs,summary,detail,ftfp,accrel,payroll", error), 63);
    EXPECT_EQ(cli::ParseReportList("all", error), 63);
    EXPECT_EQ(cli::ParseReportList("payroll,inputs", error), 33);
    EXPECT_FALSE(cli::ParseReportList("summary,", error).has_value());
    EXPECT_NE(error.find("unknown report ''"), std::string::npos);
}

}  // namespace
