// The report and print commands of the command-line tool, and the summary
// in the computation's JSON.

#include "reportcases.h"

#include "cli/cli.h"
#include "cli/cmd_compute.h"
#include "reports/textprinter.h"
#include "support/clirun.h"

#include <gtest/gtest.h>

namespace {

using namespace reporttest;
using rwtest::RunCliCommand;

const std::string kCase = std::string(RW_REPORTS_TESTDATA) + "/clicase/case.json";
// The day the reports name as prepared, so that their texts stay the same.
const std::vector<std::string> kPrepared = {"--prepared", "11/25/2026"};

std::vector<std::string> With(std::vector<std::string> args, const std::vector<std::string>& more)
{
    args.insert(args.end() - 1, more.begin(), more.end());
    return args;
}

TEST(ReportCommands, InputsAsWindowTextAndAsPrintedPages)
{
    const rwtest::CliRun shown
        = RunCliCommand(With({"report", "--reports", "inputs", kCase}, kPrepared));
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_EQ(shown.out, Expected("clicase/report-inputs.txt"));
    const rwtest::CliRun printed
        = RunCliCommand(With({"print", "--reports", "inputs", "--text", kCase}, kPrepared));
    EXPECT_EQ(printed.status, 0) << printed.err;
    EXPECT_EQ(printed.out, Expected("clicase/print-inputs.txt"));
    EXPECT_EQ(printed.err, "Printing Inputs...\nPrinting Done\n");
    // 40 lines a page: 34 up to the page number.
    const auto pages = rw::SplitPages(
        RunCliCommand({"print", "--text", "--lines", "40", "-r", "inputs", kCase}).out);
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(pages[0].size(), 34u);
}

TEST(ReportCommands, BadArgumentsAreRefused)
{
    for (const std::vector<std::string>& args :
         std::vector<std::vector<std::string>>{{"report", "--reports", "inputs,bogus", kCase},
                                               {"report", "--reports", "summary,", kCase},
                                               {"print", "--text", "--pdf", "x.pdf", kCase},
                                               {"print", kCase},
                                               {"print", "--text", "--lines", "0", kCase},
                                               {"report", "missing.json"}}) {
        SCOPED_TRACE(testing::PrintToString(args));
        EXPECT_EQ(RunCliCommand(args).status, rw::cli::kExitBadInput);
    }
}

TEST(ComputeJson, SummaryLinesEndingWithTheTotal)
{
    const auto s = nlohmann::json::parse(
        rw::cli::ComputationJson(Computation("everypenalty"))["summary"].dump());
    ASSERT_EQ(s.size(), 15u);  // every line of everypenalty
    EXPECT_EQ(s.front(), (nlohmann::json{{"label", "Unpaid tax"}, {"amount", "11900.0000"}}));
    EXPECT_EQ(s.back(), (nlohmann::json{{"label", "Total"}, {"amount", "18286.5700"}}));
}

}  // namespace
