// Where the printed reports break their pages, on the text back end: every
// report of the demonstration cases and of cases with many payments, on pages
// measured as the PDF back end measures a Letter page (12-point lines 227
// units high, 8-point lines 151, of 12,000) and on pages of one line height.
// Every page begins with the heading block and ends with its number, a list's
// rows never stand on a page without its column headings, no page ends with a
// heading or a title, no line runs off a sheet, and no row is lost.

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

// A list's row, and the last line of its column headings.
struct ListShape {
    const char* name;
    std::regex row;
    std::string headings;
};

const ListShape kLists[] = {
    {"payments", std::regex(R"(^  .{17}\d\d/\d\d/\d{4} )"), "  DESCRIPTION       PAYMENT"},
    {"charges", std::regex(R"(^  .{19}\d\d/\d\d/\d{4} \d\d/\d\d/\d{4})"),
     "  DESCRIPTION        LIABILITY"},
    {"deposits", std::regex(R"(^ {6}\d\d/\d\d/\d{4}  \d\d/\d\d/\d{4})"), "      LIABILITY"},
    {"detail", std::regex(R"(^ {8}.{16} \d\d/\d\d/\d{4} \d\d/\d\d/\d{4})"),
     "           DESCRIPTION"},
    {"failure to file and pay", std::regex(R"(^ {5}\d\d/\d\d/\d{4} )"), "    COMPUTATION"},
    {"payroll", std::regex(R"(^ {3}.{14} .{14}  \d\d/\d\d/\d{4})"), "       DEPOSIT"},
};

// Titles and section headings that must have lines of their own under them.
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
        EXPECT_EQ(page[5], "");
        EXPECT_EQ(page.back(), "  Page " + std::to_string(n + 1));
        // The last line above the page number: neither the heading block nor
        // a title or heading.
        auto last
            = std::find_if(page.rbegin() + 1, page.rend(), [](auto& l) { return !l.empty(); });
        EXPECT_GT(page.rend() - last, 6) << "only the heading block";
        EXPECT_FALSE(std::regex_match(*last, kHeading)) << *last;
        for (const ListShape& list : kLists) {
            EXPECT_FALSE(last->starts_with(list.headings)) << *last;
            auto row = std::find_if(page.begin(), page.end(),
                                    [&](auto& l) { return std::regex_search(l, list.row); });
            auto head = std::find_if(page.begin(), row,
                                     [&](auto& l) { return l.starts_with(list.headings); });
            EXPECT_TRUE(row == page.end() || head != row) << list.name << ": " << *row;
        }
        paymentRows += std::count_if(page.begin(), page.end(),
                                     [](auto& l) { return std::regex_search(l, kLists[0].row); });
    }
    EXPECT_EQ(paymentRows, payments);  // none lost
}

struct Layout {
    const char* name;
    PageMetrics metrics;
};

Layout letter()
{
    PageMetrics m;
    m.pageHeight = 12000;
    m.lineHeight = [](std::string_view, float size) { return size >= 12.0f ? 227 : 151; };
    return {"Letter", m};
}

struct Paged {
    std::string name, fixture;
    int payments;  // 0: the fixture's own
    friend void PrintTo(const Paged& p, std::ostream* os) { *os << p.name; }
};

class Pagination : public testing::TestWithParam<Paged> { };

TEST_P(Pagination, HeadingsOnEveryPageNoOrphanNothingCut)
{
    Case c;
    std::string error;
    ASSERT_TRUE(LoadCaseFile(
        std::string(RW_REPORTS_TESTDATA) + "/" + GetParam().fixture + "/case.json", c, error))
        << error;
    if (GetParam().payments > 0) {
        c.init.nPmts = 0;
        const int span = c.init.tlStop.dtDate.dayNumber() - c.init.tlStart.dtDate.dayNumber();
        for (int i = 0; i < GetParam().payments; ++i)
            rwtest::AddPayment(c, c.init.tlStart.dtDate + 1 + i * (span - 1) / GetParam().payments,
                               {.tax = "10.00", .desc = "Deposit " + std::to_string(i)});
    }
    const ReportSources sources
        = StandardReportSources(rwtest::Quarterly(2010, 2030, 0.05f), rwtest::Minimums2018());
    for (const Layout& layout : {letter(), Layout{"SixtyLines", PageMetrics::Lines(60)},
                                 Layout{"FortyLines", PageMetrics::Lines(40)}}) {
        SCOPED_TRACE(layout.name);
        TextPrinter printer(layout.metrics);
        PrintState state;
        rwtest::RecordingMessages msgs;
        PrintJob job{printer, state, msgs, {}, {}};
        PrintReports(63, 1, c, job, sources);  // every report
        EXPECT_TRUE(msgs.shown.empty());
        CheckPages(printer, layout.metrics.pageHeight, c.init, c.payments().size());
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
