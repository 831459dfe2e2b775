// The reports as CSV files and as clipboard text, read back by a reader
// written here; the figures are the hand-made cases' own.

#include "reportcases.h"

#include "reports/csvexport.h"
#include "reports/standardsources.h"
#include "reports/tsv.h"
#include "support/clirun.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using namespace reporttest;
using namespace rw;
using Row = std::vector<std::string>;
using Table = std::vector<Row>;

// CSV as a spreadsheet reads it: a quoted field may hold commas, line ends
// and doubled quotes; rows end with CR LF.
Table ReadCsv(std::string_view text)
{
    Table t(1);
    std::string field;
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"')
            field += text[++i];
        else if (c == '"')
            quoted = !quoted;
        else if (!quoted && c == ',')
            t.back().push_back(std::exchange(field, {}));
        else if (!quoted && c == '\r' && text.substr(i, 2) == "\r\n") {
            t.back().push_back(std::exchange(field, {}));
            t.emplace_back();
            ++i;
        } else
            field += c;
    }
    t.pop_back();  // after the last line end
    return t;
}

// "1234.56" as cents; anything else (separators, padding) fails.
long Cents(const std::string& amount)
{
    const std::size_t dot = amount.find('.');
    EXPECT_TRUE(dot != std::string::npos && dot + 3 == amount.size()
                && amount.find_first_of(", ") == std::string::npos)
        << amount;
    return std::stol(amount.substr(0, dot) + amount.substr(dot + 1));
}

std::string ReadFile(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

TEST(CsvExport, DetailedAnalysisSumsToTheSummaryInterest)
{
    // newcase, by hand: 83.40 + 101.91 + 102.93 = 288.24.
    const CaseComputation comp = Computation("newcase");
    const auto tables = CsvTables(kRptSummary | kRptDetail, comp.kase, SourcesFor(comp));
    ASSERT_EQ(tables.size(), 2u);
    const Table summary = ReadCsv(CsvText(tables[0]));
    const Table detail = ReadCsv(CsvText(tables[1]));
    ASSERT_EQ(detail.size(), 6u);  // headings, four rows, the total
    long cents = 0;
    for (std::size_t r = 1; r + 1 < detail.size(); ++r) {
        ASSERT_EQ(detail[r].size(), 9u);
        cents += Cents(detail[r][8]);
    }
    EXPECT_EQ(cents, 28824);
    EXPECT_EQ(detail.back(), (Row{"Ending", "Interest", "", "", "", "", "", "", "288.24"}));
    EXPECT_EQ(detail[2], (Row{"04/16/2016", "06/30/2016", "Compound Int.", "4.0000", "10000.00",
                              "0.00", "76", "0.008340000", "83.40"}));
    EXPECT_EQ(summary[2], (Row{"Interest", "288.24"}));
}

// Publication 505 (2006), Figure 4-B (Ben Brown, 2005): Form 2210's lines 28 and 30 as rows,
// line 31 (68.51) as the total; 6 % to 9/30/2005, 7 % after.
TEST(CsvExport, EstimatedTaxPenaltyAsTheWorksheetLines)
{
    Case c = rwtest::FederalCase(D(2006, 4, 15), D(2006, 12, 31), "0");
    c.estTax = {.on = true,
                .input
                = {.taxYear = 2005,
                   .currentTax = M("7031"),
                   .priorTax = M("6116"),
                   .priorYearUsable = true,
                   .withholding = M("3228"),
                   .estimatedPayments = {{D(2005, 9, 2), M("1000")}, {D(2006, 1, 12), M("1000")}}}};
    const RateTable rates{rwtest::Row(D(2005, 1, 1), D(2005, 9, 30), 0.06f),
                          rwtest::Row(D(2005, 10, 1), D(2006, 12, 31), 0.07f)};
    const auto tables
        = CsvTables(kRptEstTax, c, StandardReportSources(rates, rwtest::Minimums2018()));
    ASSERT_EQ(tables.size(), 1u);
    EXPECT_EQ(tables[0].report, "Estimated Tax Penalty");
    const Table t = ReadCsv(CsvText(tables[0]));
    EXPECT_EQ(t, (Table{{"INSTALLMENT", "FROM", "TO", "DAYS", "DAYS IN YEAR", "RATE (%)",
                         "UNDERPAYMENT", "PENALTY"},
                        {"1", "04/15/2005", "06/15/2005", "61", "365", "6.00", "722.00", "7.24"},
                        {"2", "06/15/2005", "09/02/2005", "79", "365", "6.00", "1000.00", "12.99"},
                        {"2", "06/15/2005", "09/15/2005", "92", "365", "6.00", "444.00", "6.71"},
                        {"3", "09/15/2005", "09/30/2005", "15", "365", "6.00", "1166.00", "2.88"},
                        {"3", "09/30/2005", "01/12/2006", "104", "365", "7.00", "1000.00", "19.95"},
                        {"3", "09/30/2005", "01/15/2006", "107", "365", "7.00", "166.00", "3.41"},
                        {"4", "01/15/2006", "04/15/2006", "90", "365", "7.00", "888.00", "15.33"},
                        {"Total", "", "", "", "", "", "", "68.51"}}));
}

TEST(CsvExport, DescriptionsKeepTheirCommasAndQuotes)
{
    Case c = rwtest::FederalCase(D(2016, 4, 15), D(2016, 12, 31), "100");
    rwtest::AddPayment(c, D(2016, 5, 2), {.tax = "1234.5", .desc = "Smith, \"Jr\" chk"});
    const auto tables = CsvTables(kRptInputs, c, {});
    ASSERT_EQ(tables.size(), 1u);
    const std::string text = CsvText(tables[0]);
    EXPECT_NE(text.find("\"Smith, \"\"Jr\"\" chk\",05/02/2016,1234.50,"), std::string::npos)
        << text;
    EXPECT_EQ(ReadCsv(text).at(1).at(0), "Smith, \"Jr\" chk");
}

TEST(GridTsv, BlocksWithTheirHeadings)
{
    GridData g = MakeGrid("g", {"A", "TWO\r\nLINES", "C"}, 4, CellAlign::Right);
    g.cells[1] = {" 1", "  1,000.00", "x "};
    g.cells[2] = {" 2", "     -5.00", "y"};
    g.cells[3] = {"Tot", "  9\tZ", ""};
    const struct {
        const char* name;
        GridBlock block;
        const char* text;
    } cases[] = {
        {"one cell", {1, 1, 1, 1}, "TWO LINES\n-5.00\n"},
        {"middle block", {0, 1, 1, 2}, "TWO LINES\tC\n1,000.00\tx\n-5.00\ty\n"},
        {"whole grid", WholeGrid(g), "A\tTWO LINES\tC\n1\t1,000.00\tx\n2\t-5.00\ty\nTot\t9 Z\t\n"},
        {"cut to the grid", {2, 9, 2, 9}, "C\n\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GridBlockAsTsv(g, c.block), c.text) << c.name;
}

TEST(CsvExport, FileNames)
{
    const struct {
        const char* caseFile;
        const char* report;
        const char* name;
    } cases[] = {
        {"C:\\cases\\DEMO_INC.INT", "Summary", "DEMO_INC - Summary.csv"},
        {"/home/p/my case.v2.int", "Payments", "my case.v2 - Payments.csv"},
        {"", "Summary", "UNTITLED - Summary.csv"},
        {"a:b?.INT", "Summary", "a_b_ - Summary.csv"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(CsvFileName(CsvCaseName(c.caseFile), c.report), c.name) << c.caseFile;
}

TEST(CsvExport, CommandLineWritesTheFilesOfTheCase)
{
    rwtest::TempDir dir;
    const std::string kCase = std::string(RW_REPORTS_TESTDATA) + "/clicase/case.json";
    const auto run = rwtest::RunCliCommand(
        {"report", "--csv", (dir / "out").string(), "--prepared", "11/25/2026", kCase});
    ASSERT_EQ(run.status, 0) << run.err;
    // The case has a payment and a charge, no penalty and no deposit.
    std::string listed;
    for (const char* report :
         {"Summary", "Detailed Interest Analysis", "Payments", "Other Charges"})
        listed += (dir / "out" / ("case - " + std::string(report) + ".csv")).string() + "\n";
    EXPECT_EQ(run.out, listed);
    const auto read = [&](const char* report) {
        const std::string bytes
            = ReadFile(dir / "out" / ("case - " + std::string(report) + ".csv"));
        EXPECT_EQ(bytes.substr(0, 3), "\xEF\xBB\xBF");
        return ReadCsv(bytes.substr(3));
    };
    EXPECT_EQ(read("Payments").at(1),
              (Row{"Check 1041", "06/15/2016", "3000.00", "2900.00", "75.00", "25.00", "I"}));
    const Table detail = read("Detailed Interest Analysis");
    long cents = 0;
    for (std::size_t r = 1; r + 1 < detail.size(); ++r)
        cents += Cents(detail[r].at(8));
    const Row interest = read("Summary").at(2);
    EXPECT_EQ(interest.at(0), "Interest");
    EXPECT_EQ(Cents(interest.at(1)), cents);

    EXPECT_NE(rwtest::RunCliCommand({"report", "-r", "summary", "--prepared", "11/25/2026", kCase})
                  .out.find("11/25/2026"),
              std::string::npos);
    for (const char* bad : {"13/45/2016", "soon"})
        EXPECT_EQ(rwtest::RunCliCommand({"report", "--prepared", bad, kCase}).status,
                  cli::kExitBadInput)
            << bad;
}

}  // namespace
