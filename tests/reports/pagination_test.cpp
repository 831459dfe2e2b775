// Where the printed reports break their pages, on the text back end: every
// report of the demonstration cases and of cases with many payments, on pages
// measured as the PDF back end measures Letter (12,000 units; 12-point lines
// 227 high, 8-point 151) and on pages of 60 and 40 lines. Every page begins
// with the heading block and ends with its number, a list's rows never stand
// on a page without its column headings, no page ends with a title or a
// heading, no line runs off a sheet, and every payment is printed.

#include "reportcases.h"

#include "casejson/casejson.h"
#include "reports/standardsources.h"
#include "reports/textprinter.h"
#include "support/recordingmessages.h"
#include "support/releases.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

using namespace rw;
using Page = std::vector<std::string>;

// A list's row, and the start of the last line of its column headings.
const std::pair<std::regex, std::string> kLists[] = {
    {std::regex(R"(^  .{17}\d\d/\d\d/\d{4} )"), "  DESCRIPTION       PAYMENT"},
    {std::regex(R"(^  .{19}\d\d/\d\d/\d{4} \d\d/\d\d/\d{4})"), "  DESCRIPTION        LIABILITY"},
    {std::regex(R"(^ {6}\d\d/\d\d/\d{4}  \d\d/\d\d/\d{4})"), "      LIABILITY"},
    {std::regex(R"(^ {8}.{16} \d\d/\d\d/\d{4} \d\d/\d\d/\d{4})"), "           DESCRIPTION"},
    {std::regex(R"(^ {5}\d\d/\d\d/\d{4} )"), "    COMPUTATION"},  // failure to file and pay
    {std::regex(R"(^ {3}.{14} .{14}  \d\d/\d\d/\d{4})"), "       DEPOSIT"},  // payroll
};
const std::regex kHeading("  (Payments|Other Additions To Tax or Penalties|Payroll Deposit "
                          "Liabilities|Note: .*)|FAILURE TO (FILE|PAY):|   Deposit Due Date: .*");

void CheckPages(const TextPrinter& tp, std::int32_t pageHeight, const InitInputs& in,
                std::size_t payments)
{
    EXPECT_EQ(tp.runOffs(), 0);
    std::size_t paymentRows = 0;
    for (std::size_t n = 0; n < tp.pages().size(); ++n) {
        SCOPED_TRACE("page " + std::to_string(n + 1));
        const Page& page = tp.pages()[n];
        EXPECT_LE(tp.usedHeights()[n], pageHeight);
        ASSERT_GT(page.size(), 7u);
        EXPECT_EQ(Page(page.begin(), page.begin() + 4),
                  (Page{"", "", "  " + in.sName.trimmed(), "  " + in.s2ndLine.trimmed()}));
        EXPECT_EQ(page.back(), "  Page " + std::to_string(n + 1));
        // The last line above the page number: no heading, not the heading block.
        auto last
            = std::find_if(page.rbegin() + 1, page.rend(), [](auto& l) { return !l.empty(); });
        EXPECT_GT(page.rend() - last, 6) << "only the heading block";
        EXPECT_FALSE(std::regex_match(*last, kHeading)) << *last;
        for (const auto& [rowShape, headings] : kLists) {
            EXPECT_FALSE(last->starts_with(headings)) << *last;
            auto row = std::find_if(page.begin(), page.end(),
                                    [&](auto& l) { return std::regex_search(l, rowShape); });
            EXPECT_TRUE(
                row == page.end()
                || std::any_of(page.begin(), row, [&](auto& l) { return l.starts_with(headings); }))
                << *row;
        }
        paymentRows += std::count_if(page.begin(), page.end(),
                                     [](auto& l) { return std::regex_search(l, kLists[0].first); });
    }
    EXPECT_EQ(paymentRows, payments);
}

struct Paged {
    std::string name, fixture;  // a copy of a sample case under tests/reports
    int payments;  // 0: the sample's own; else that many, spread over the period
    friend void PrintTo(const Paged& p, std::ostream* os) { *os << p.name; }
};

class Pagination : public testing::TestWithParam<Paged> { };

TEST_P(Pagination, HeadingsOnEveryPageNoOrphanNothingCut)
{
    Case c;
    std::string error;
    const std::string path = RW_REPORTS_TESTDATA "/" + GetParam().fixture + "/case.json";
    ASSERT_TRUE(LoadCaseFile(path, c, error)) << error;
    const int n = GetParam().payments;
    const int span
        = static_cast<int>(c.init.tlStop.dtDate.dayNumber() - c.init.tlStart.dtDate.dayNumber())
          - 1;
    if (n > 0)
        c.init.nPmts = 0;
    for (int i = 0; i < n; ++i)
        rwtest::AddPayment(c, c.init.tlStart.dtDate + 1 + i * span / n,
                           {.tax = "10.00", .desc = "Deposit " + std::to_string(i)});
    PageMetrics letter{12000, [](std::string_view, float pt) { return pt >= 12 ? 227 : 151; }};
    for (const PageMetrics& m : {letter, PageMetrics::Lines(60), PageMetrics::Lines(40)}) {
        SCOPED_TRACE(m.pageHeight);
        TextPrinter printer(m);
        PrintState state;
        rwtest::RecordingMessages msgs;
        PrintJob job{printer, state, msgs, {}, {}};
        PrintReports(
            63, 1, c, job,  // every report
            StandardReportSources(rwtest::Quarterly(2010, 2030, 0.05f), rwtest::Minimums2018()));
        EXPECT_TRUE(msgs.shown.empty());
        CheckPages(printer, m.pageHeight, c.init, c.payments().size());
    }
}

const Paged kPaged[] = {
    {"Demo941", "demo941", 0},
    {"Demo941With28Payments", "demo941", 28},
    {"Demo941With61Payments", "demo941", 61},
    {"Demo941With500Payments", "demo941", 500},
    {"DemoInc", "demoinc", 0},
    {"DemoIncWith500Payments", "demoinc", 500},
};

INSTANTIATE_TEST_SUITE_P(Reports, Pagination, testing::ValuesIn(kPaged),
                         [](const auto& p) { return p.param.name; });

}  // namespace
