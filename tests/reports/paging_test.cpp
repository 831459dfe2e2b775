// The page manager on the text back end: where a page breaks, its padding
// and number, refused reservations, the capacity of the current font, the
// amount column; and the text back end's page breaks.

#include "reports/printmanager.h"
#include "reports/textprinter.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using Lines = std::vector<std::string>;

struct Paper {
    explicit Paper(PageMetrics m = PageMetrics::Lines(60)) : printer(std::move(m)) {}
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm{printer, state, msgs};
    std::int16_t reserve(int n) { return pm.PrnManager2(static_cast<std::int16_t>(n), "Taxpayer", "Line 2", "Title"); }
};

TEST(PrnManager2, ANewPageWhenTheReservationWouldReachTheFoot)
{
    // The heading block counts 7 lines, the foot keeps 6 free: a 60-line page
    // breaks when a reservation would bring the counter to 54.
    struct Row {
        std::string name;
        std::vector<int> reservations;
        std::vector<std::int16_t> newPage;  // what each answers
        int counter;                        // after the last
    };
    for (const Row& r : {Row{"FirstLineBeginsThePage", {3, 1}, {1, 0}, 11}, Row{"SixFitAt47", {40, 6}, {1, 0}, 53},
                         Row{"OneMoreAt53Breaks", {40, 6, 1}, {1, 0, 1}, 8}, Row{"SevenAt47Break", {40, 7}, {1, 1}, 14}}) {
        SCOPED_TRACE(r.name);
        Paper p;
        std::vector<std::int16_t> got;
        for (int n : r.reservations)
            got.push_back(p.reserve(n));
        EXPECT_EQ(got, r.newPage);
        EXPECT_EQ(p.state.nLineCount, r.counter);
    }
}

TEST(PrnManager2, EndOfReportPadsNumbersThePageAndTheNextJobRunsOn)
{
    Paper p;
    EXPECT_EQ(p.reserve(1), 1);
    p.printer.printAt(3, "Total");
    p.pm.PrnAmtAt(Money::fromCents(123456789), 10);  // 14 characters, the line left open
    p.pm.PrnAmtAt(Money::fromCents(-5), 25);
    p.printer.endLine();
    EXPECT_EQ(p.reserve(kEndReportPage), 0);
    EXPECT_EQ(p.state.nLineCount, 0);
    Lines page = {"", "", "  Taxpayer", "  Line 2", "  Title", "", "  Total    1,234,567.89          -0.05"};
    page.resize(53, "");  // up to capacity - 6 on the counter
    page.push_back("  Page 1");
    EXPECT_EQ(p.printer.pages(), std::vector<Lines>{page});
    // Another job on the same state: a fresh page, numbers run on, and ending
    // the document right after the page break adds no sheet.
    PrintManager other(p.printer, p.state, p.msgs);
    EXPECT_EQ(other.PrnManager2(1, "a", "b", "c"), 1);
    other.PrnManager2(kEndReportPage, "a", "b", "c");
    p.printer.endDoc();
    ASSERT_EQ(p.printer.pages().size(), 2u);
    EXPECT_EQ(p.printer.pages()[1].back(), "  Page 2");
}

TEST(PrnManager2, OutsideOneToFortyIsRefusedWithTheErrorMessage)
{
    for (int n : {0, 41, -1}) {
        Paper p;
        EXPECT_EQ(p.reserve(n), 0);
        ASSERT_EQ(p.msgs.shown.size(), 1u);
        EXPECT_EQ(p.msgs.shown[0].title, "Error!");
        EXPECT_EQ(p.msgs.shown[0].icon, MsgIcon::Critical);
        EXPECT_EQ(p.msgs.shown[0].text, std::to_string(n) + " lines passed to PrnManager2(). Please use between 1 and 40");
        EXPECT_TRUE(p.printer.pages().empty());
        EXPECT_EQ(p.state.nLineCount, 0);
    }
}

TEST(PrnManager2, CapacityIsPageHeightOverTheCurrentFontsLineHeight)
{
    // 12-point lines 13 units high, 8-point lines 9, on a page 700 high: 53
    // and 77 whole lines.
    PageMetrics m;
    m.pageHeight = 700;
    m.lineHeight = [](std::string_view, float size) { return size >= 12.0f ? 13 : 9; };
    Paper p(m);
    EXPECT_EQ(p.pm.nLinesPerPage(), 53);
    p.printer.setFont("Courier New", 8.0f);
    EXPECT_EQ(p.pm.nLinesPerPage(), 77);
    p.reserve(40);                // 47
    EXPECT_EQ(p.reserve(20), 0);  // 67 < 71
    p.printer.setFont("Courier New", 12.0f);
    EXPECT_EQ(p.reserve(1), 1);  // 68 >= 47
}

TEST(TextPrinter, PageBreaksAreLazyAndALineBelowTheSheetFeedsANewOne)
{
    TextPrinter p(PageMetrics::Lines(3));
    p.printLine(1, "one");
    p.newPage();
    p.newPage();  // two breaks in a row leave a blank sheet
    for (const char* l : {"a", "b", "c", "d"})
        p.printLine(1, l);
    p.newPage();
    p.endDoc();  // no sheet after the last break
    EXPECT_EQ(p.pages(), (std::vector<Lines>{{"one"}, {}, {"a", "b", "c"}, {"d"}}));
    EXPECT_EQ(SplitPages(p.text()), p.pages());
    EXPECT_EQ(p.page(), 1);  // the next document counts from 1 again
}

}  // namespace
