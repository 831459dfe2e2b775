// The page manager alone, on the text back end: what a page holds, where
// the page number goes, refused reservations, fonts.

#include "support/recordingmessages.h"
#include "reports/printmanager.h"
#include "reports/textprinter.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;

struct Paper {
    explicit Paper(PageMetrics m = PageMetrics::Lines(60)) : printer(std::move(m)) {}
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm{printer, state, msgs};

    std::int16_t reserve(std::int16_t n) { return pm.PrnManager2(n, "Taxpayer", "Second line", "Title"); }
    // Reserves n lines and prints "line k" on each.
    std::int16_t reserveAndPrint(std::int16_t n, int& k)
    {
        const std::int16_t r = reserve(n);
        for (int i = 0; i < n; ++i)
            printer.printLine(3, "line " + std::to_string(++k));
        return r;
    }
};

const std::vector<std::string> kHeadingBlock = {"", "", "  Taxpayer", "  Second line", "  Title", ""};

TEST(PrnManager2, FirstReservationBeginsThePageWithTheHeadingBlock)
{
    Paper p;
    EXPECT_EQ(p.reserve(3), 1);
    EXPECT_EQ(p.state.nLineCount, 10);  // the block counts 7
    ASSERT_EQ(p.printer.pages().size(), 1u);
    EXPECT_EQ(p.printer.pages()[0], kHeadingBlock);  // and prints 6
    EXPECT_EQ(p.reserve(1), 0);
    EXPECT_EQ(p.state.nLineCount, 11);
}

TEST(PrnManager2, SixtyLinePageHoldsTheHeadingBlockAnd46ReservedLines)
{
    Paper p;
    int k = 0;
    EXPECT_EQ(p.reserveAndPrint(1, k), 1);
    for (int i = 2; i <= 46; ++i)
        EXPECT_EQ(p.reserveAndPrint(1, k), 0) << i;
    EXPECT_EQ(p.state.nLineCount, 53);
    ASSERT_EQ(p.printer.pages().size(), 1u);
    // The 47th would bring the counter to 54: the page is finished first.
    EXPECT_EQ(p.reserveAndPrint(1, k), 1);
    EXPECT_EQ(p.state.nLineCount, 8);
    ASSERT_EQ(p.printer.pages().size(), 2u);

    std::vector<std::string> page1 = kHeadingBlock;
    for (int i = 1; i <= 46; ++i)
        page1.push_back("  line " + std::to_string(i));
    page1.push_back("");  // padding up to capacity - 6
    page1.push_back("  Page 1");
    EXPECT_EQ(p.printer.pages()[0], page1);
    std::vector<std::string> page2 = kHeadingBlock;
    page2.push_back("  line 47");
    EXPECT_EQ(p.printer.pages()[1], page2);
}

TEST(PrnManager2, LargerReservationThatDoesNotFitMovesToTheNextPage)
{
    Paper p;
    int k = 0;
    p.reserveAndPrint(40, k);  // counter 47
    EXPECT_EQ(p.reserveAndPrint(6, k), 0);  // 53
    EXPECT_EQ(p.reserveAndPrint(1, k), 1);
    EXPECT_EQ(p.printer.pages()[0].size(), 54u);
    EXPECT_EQ(p.printer.pages()[0].back(), "  Page 1");
    EXPECT_EQ(p.printer.pages()[1].back(), "  line 47");
}

TEST(PrnManager2, EndOfReportPadsToTheFootPrintsThePageNumberAndResetsTheCounter)
{
    Paper p;
    int k = 0;
    p.reserveAndPrint(3, k);
    EXPECT_EQ(p.reserve(kEndReportPage), 0);
    EXPECT_EQ(p.state.nLineCount, 0);
    std::vector<std::string> page = kHeadingBlock;
    page.insert(page.end(), {"  line 1", "  line 2", "  line 3"});
    page.resize(53, "");
    page.push_back("  Page 1");
    ASSERT_EQ(p.printer.pages().size(), 1u);
    EXPECT_EQ(p.printer.pages()[0], page);
    // The next report begins a fresh page with its own headings; numbers run on.
    EXPECT_EQ(p.reserveAndPrint(1, k), 1);
    EXPECT_EQ(p.printer.page(), 2);
    p.reserve(kEndReportPage);
    ASSERT_EQ(p.printer.pages().size(), 2u);
    EXPECT_EQ(p.printer.pages()[1].back(), "  Page 2");
    // Ending the document right after the last page break adds no sheet.
    p.printer.endDoc();
    EXPECT_EQ(p.printer.pages().size(), 2u);
}

TEST(PrnManager2, ZeroOrFortyOneLinesAreRefusedWithTheErrorMessage)
{
    for (std::int16_t n : {std::int16_t(0), std::int16_t(41), std::int16_t(-1)}) {
        Paper p;
        EXPECT_EQ(p.reserve(n), 0);
        ASSERT_EQ(p.msgs.shown.size(), 1u);
        EXPECT_EQ(p.msgs.shown[0].title, "Error!");
        EXPECT_EQ(p.msgs.shown[0].icon, MsgIcon::Critical);
        EXPECT_EQ(p.msgs.shown[0].text,
                  std::to_string(n) + " lines passed to PrnManager2(). Please use between 1 and 40");
        EXPECT_TRUE(p.printer.pages().empty());
        EXPECT_EQ(p.state.nLineCount, 0);
    }
    Paper p;
    EXPECT_EQ(p.reserve(40), 1);
    EXPECT_TRUE(p.msgs.shown.empty());
}

TEST(PrnManager2, CapacityIsPageHeightOverLineHeightOfTheCurrentFontEveryCall)
{
    // 12-point lines are 13 units, 8-point lines 9, on a page 700 high:
    // 53 and 77 lines (whole lines, remainder dropped).
    PageMetrics m;
    m.pageHeight = 700;
    m.lineHeight = [](std::string_view, float size) { return size >= 12.0f ? 13 : 9; };
    Paper p(m);
    p.printer.setFont("Courier New", 12.0f);
    EXPECT_EQ(p.pm.nLinesPerPage(), 53);
    p.printer.setFont("Courier New", 8.0f);
    EXPECT_EQ(p.pm.nLinesPerPage(), 77);
    // At 8 points the counter may reach 70; back at 12 points a page ends at 47.
    p.reserve(40);  // 47
    EXPECT_EQ(p.reserve(20), 0);  // 67 < 71
    p.printer.setFont("Courier New", 12.0f);
    EXPECT_EQ(p.reserve(1), 1);  // 68 >= 47: new page
    EXPECT_EQ(p.printer.pages()[0].back(), "  Page 1");
}

TEST(PrnManager2, CounterIsSharedByAllReportsAndJobs)
{
    Paper p;
    p.reserve(5);
    p.printer.endDoc();  // a job that ended without finishing its page
    PrintManager other(p.printer, p.state, p.msgs);
    EXPECT_EQ(other.PrnManager2(1, "a", "b", "c"), 0);
    EXPECT_EQ(p.state.nLineCount, 13);
}

TEST(PrnAmtAt, PrintsTheFourteenCharacterAmountAndLeavesTheLineOpen)
{
    Paper p;
    p.printer.printAt(3, "Total");
    p.pm.PrnAmtAt(Money::fromCents(123456789), 10);
    p.pm.PrnAmtAt(Money::fromCents(-5), 25);
    p.printer.endLine();
    ASSERT_EQ(p.printer.pages().size(), 1u);
    EXPECT_EQ(p.printer.pages()[0], (std::vector<std::string>{"  Total    1,234,567.89          -0.05"}));
}

TEST(Fonts, SetNewFontRemembersAndSetOldFontRestores)
{
    TextPrinter printer;
    printer.setFont("Arial", 10.0f);
    SavedFont saved;
    SetNewFont(printer, "Courier New", 8.0f, saved);
    EXPECT_EQ(printer.fontName(), "Courier New");
    EXPECT_EQ(printer.fontSize(), 8.0f);
    EXPECT_EQ(saved.name, "Arial");
    EXPECT_EQ(saved.size, 10.0f);
    SetOldFont(printer, saved);
    EXPECT_EQ(printer.fontName(), "Arial");
    EXPECT_EQ(printer.fontSize(), 10.0f);
}

}  // namespace
