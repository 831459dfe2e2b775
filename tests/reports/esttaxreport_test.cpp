// The estimated tax penalty's analysis: the window text of a hand-made case
// against tests/reports/esttax/individual2021.txt (its figures worked out in
// the comment below), and the same lines printed on pages of several heights.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include "reports/esttaxreport.h"
#include "reports/inputs.h"
#include "reports/printmaster.h"
#include "reports/textprinter.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>

using namespace rwtest;

namespace {

using Lines = std::vector<std::string>;

// A 2021 individual owing 10,000 with no usable prior year: 90 % is 9,000,
// four installments of 2,250. Paid 2,250 on 4/15; 4,500 on 10/1/2021 makes
// good the 2nd and the 3rd; 2,250 on 1/18/2022 is on time for the 4th (1/15
// a Saturday, 1/17 Martin Luther King Day). The 2nd: 2,250 x 4 % x 107/365 =
// 26.38 (two quarter rows of one rate, one line), x 5 % x 1/365 = 0.31; the
// 3rd: x 4 % x 15/365 = 3.70, x 5 % x 1/365 = 0.31; total 30.70.
struct Fixture {
    rw::EstTaxInput in{
        .taxYear = 2021,
        .currentTax = M("10000"),
        .estimatedPayments
        = {{D(2021, 4, 15), M("2250")}, {D(2021, 10, 1), M("4500")}, {D(2022, 1, 18), M("2250")}}};
    rw::RateTable rates{
        Row(D(2021, 4, 1), D(2021, 6, 30), 0.04f), Row(D(2021, 7, 1), D(2021, 9, 30), 0.04f),
        Row(D(2021, 10, 1), D(2021, 12, 31), 0.05f), Row(D(2022, 1, 1), D(2022, 3, 31), 0.05f)};
    rw::EstTaxResult r = rw::ComputeEstTaxPenalty(in, rates);
    rw::InitInputs init;
    Fixture()
    {
        init.sName = "Ann Example";
        init.s2ndLine = "Form 2210 worksheet";
    }
};

Lines Expected()
{
    std::ifstream f(std::string(std::getenv("RW_SOURCE_DIR"))
                    + "/tests/reports/esttax/individual2021.txt");
    Lines out;
    for (std::string l; std::getline(f, l);)
        out.push_back(l);
    return out;
}

TEST(EstTaxReport, WindowText)
{
    const Fixture fx;
    std::istringstream text(rw::DispEstTax(fx.in, fx.r, fx.init));
    Lines got;
    for (std::string l; std::getline(text, l);) {
        EXPECT_TRUE(l.ends_with('\r')) << l;
        got.push_back(l.substr(0, l.size() - 1));
    }
    EXPECT_EQ(got, Expected());

    // A state case names the table whose rates it used under the filer.
    rw::InitInputs pa = fx.init;
    pa.sTaxAuth = "PA  ";
    EXPECT_NE(rw::DispEstTax(fx.in, fx.r, pa)
                  .find("   INDIVIDUAL (FORM 2210), TAX YEAR 2021\r\n"
                        "   AT THE UNDERPAYMENT RATES OF THE PENNSYLVANIA TABLE\r\n\r\n"),
              std::string::npos);
}

// On one page of 60 lines the printed body is the window's; on short pages
// every page begins with the heading block and ends with its number, rows
// stand under their column headings, no page ends with a heading, and the
// total keeps the last rate-period line.
TEST(EstTaxReport, PrintedPages)
{
    const Fixture fx;
    const Lines want = Expected();
    const std::regex installment(R"(^    \d  \d\d/\d\d/\d{4}  )");
    const std::regex period(R"(^    \d  \d\d/\d\d/\d{4} \d\d/)");
    const std::regex heading(
        R"(^( +(ESTIMATED|REQUIRED|PENALTY FOR|NO|DUE|DAYS) .*| +DAYS  RATE)$)");
    for (int height : {60, 24, 21}) {
        SCOPED_TRACE(height);
        rw::TextPrinter tp(rw::PageMetrics::Lines(height));
        tp.setFont("Arial", 10.0f);
        rw::PrintState state;
        RecordingMessages msgs;
        rw::PrintManager pm(tp, state, msgs);
        rw::PrnEstTax(pm, fx.init, fx.in, fx.r);
        EXPECT_TRUE(tp.fontName() == "Arial" && tp.fontSize() == 10.0f);
        EXPECT_EQ(tp.runOffs(), 0);
        if (height == 60) {
            ASSERT_EQ(tp.pages().size(), 1u);
            const Lines& p = tp.pages()[0];
            ASSERT_GE(p.size(), 6 + want.size() - 4);
            EXPECT_EQ(Lines(p.begin() + 6, p.begin() + 6 + static_cast<long>(want.size()) - 4),
                      Lines(want.begin() + 4, want.end()));
        }
        int installments = 0, periods = 0;
        for (std::size_t n = 0; n < tp.pages().size(); ++n) {
            const Lines& p = tp.pages()[n];
            ASSERT_GT(p.size(), 7u);
            EXPECT_EQ(p[2], "  Ann Example");
            EXPECT_EQ(p.back(), "  Page " + std::to_string(n + 1));
            auto last = std::find_if(p.rbegin() + 1, p.rend(), [](auto& l) { return !l.empty(); });
            EXPECT_FALSE(std::regex_match(*last, heading)) << "page " << n + 1 << ": " << *last;
            bool instHeads = false, periodHeads = false;
            for (const std::string& l : p) {
                instHeads = instHeads || l.starts_with("   NO  DATE");
                periodHeads = periodHeads || l.starts_with("   NO  FROM");
                if (std::regex_search(l, installment)) {
                    EXPECT_TRUE(instHeads && ++installments) << l;
                }
                if (std::regex_search(l, period)) {
                    EXPECT_TRUE(periodHeads && ++periods) << l;
                }
            }
        }
        EXPECT_EQ(installments, 4);
        EXPECT_EQ(periods, 4);
    }
}

// The report commands offer the analysis when the computation has the
// penalty: "Estimated Tax Pen" in Report Choices, its window, its place in a
// print job; a case without the penalty gets neither.
TEST(EstTaxReport, ChosenLikeTheOtherAnalyses)
{
    const Fixture fx;
    rw::CaseComputation with;
    with.kase.init = fx.init;
    with.kase.estTax.on = true;
    with.kase.estTax.input = fx.in;
    with.estTax = fx.r;
    for (const bool on : {true, false}) {
        rw::CaseComputation comp = with;
        if (!on)
            comp.estTax.reset();
        const rw::ReportSources sources{[comp](const rw::Case&) { return comp; }, {}};
        const auto windows = rw::ReportWindows(rw::kRptEstTax, comp.kase, sources);
        ASSERT_EQ(windows.size(), on ? 1u : 0u);
        rw::TextPrinter printer;
        rw::PrintState state;
        RecordingMessages msgs;
        std::vector<std::string> status;
        rw::PrintJob job{
            printer, state, msgs, [&](std::string_view s) { status.emplace_back(s); }, {}};
        rw::PrintReports(rw::kRptEstTax, 1, comp.kase, job, sources);
        EXPECT_EQ(status.size(), on ? 2u : 1u);
        if (!on)
            continue;
        EXPECT_EQ(windows[0].caption, "Estimated Tax Penalty");
        EXPECT_EQ(status[0], "Printing Estimated Tax Penalty Analysis...");
        EXPECT_NE(printer.text().find("Total Estimated Tax Penalty          30.70"),
                  std::string::npos);
    }
    EXPECT_EQ(rw::ReportChoiceEntries().back().caption, "Estimated Tax Pen");
}

// The inputs listing shows the dialog's inputs after the case's own, and a
// case without them shows nothing of them.
TEST(EstTaxReport, InputsListingShowsTheDialogsInputs)
{
    rw::Case c = FederalCase(D(2023, 9, 15), D(2023, 12, 31), "0");
    const std::string without = rw::DispInputs(c);
    c.estTax.on = true;
    c.estTax.noticeDate = D(2023, 11, 1);
    c.estTax.input = {.filer = rw::EstTaxFiler::Corporation,
                      .taxYear = 2022,
                      .fiscalYearEndMonth = 6,
                      .currentTax = M("40000"),
                      .priorTax = M("100000"),
                      .priorYearUsable = true,
                      .withholding = M("1000"),
                      .withholdingByDate = {{D(2022, 12, 15), M("1000")}},
                      .estimatedPayments = {{D(2022, 10, 17), M("10000")}},
                      .installments = std::array{M("10000"), M("10000"), M("10000"), M("10000")}};
    const std::string with = rw::DispInputs(c);
    EXPECT_EQ(without.find("Estimated Tax"), std::string::npos);
    const std::string part = "Calculate Estimated Tax Penalty: Yes\r\n"
                             "Filer: Corporation (Form 2220)\r\n"
                             "Tax Year: 2022 (ending in month 6)\r\n"
                             "Current Year Tax: 40,000.00\r\n"
                             "Prior Year Tax: 100,000.00\r\n"
                             "Prior Year May Set The Required Payment: Yes\r\n"
                             "Large Corporation: No\r\n"
                             "Tax Withheld: 1,000.00\r\n"
                             "Required Installments: 10,000.00 10,000.00 10,000.00 10,000.00\r\n"
                             "Date of Notice and Demand: 11/1/2023\r\n"
                             "Withheld On 12/15/2022: 1,000.00\r\n"
                             "Estimated Payment On 10/17/2022: 10,000.00\r\n";
    EXPECT_NE(with.find(part), std::string::npos) << with;
}

}  // namespace
