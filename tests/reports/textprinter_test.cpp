// The text back end: columns, open lines, lazy page breaks, running off the
// sheet, and the text form of a job.

#include "reports/textprinter.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using Lines = std::vector<std::string>;

TEST(TextPrinter, ColumnOneIsTheLeftMargin)
{
    TextPrinter p;
    p.printLine({{1, "A"}, {3, "B"}, {10, "C"}});
    p.printLine(0, "D");  // columns before the margin print at the margin
    ASSERT_EQ(p.pages().size(), 1u);
    EXPECT_EQ(p.pages()[0], (Lines{"A B      C", "D"}));
}

TEST(TextPrinter, ItemsOfOneLineInAnyOrderAndTrailingBlanksDropped)
{
    TextPrinter p;
    p.printAt(20, "right   ");
    p.printAt(1, "left");
    p.printAt(5, std::string("x\0y", 3));  // a NUL prints as a blank
    p.endLine();
    p.emptyLine();
    EXPECT_EQ(p.pages()[0], (Lines{"leftx y" + std::string(12, ' ') + "right", ""}));
}

TEST(TextPrinter, NewPageIsLazyAndEndDocAfterItAddsNoSheet)
{
    TextPrinter p;
    p.printLine(1, "one");
    p.newPage();
    EXPECT_EQ(p.page(), 2);
    EXPECT_EQ(p.pages().size(), 1u);
    p.printLine(1, "two");
    EXPECT_EQ(p.pages().size(), 2u);
    p.newPage();
    p.endDoc();
    EXPECT_EQ(p.pages().size(), 2u);
    EXPECT_EQ(p.text(), "one\n\f\ntwo\n");
    EXPECT_EQ(p.page(), 1);  // the next document counts from 1 again
}

TEST(TextPrinter, TwoPageBreaksInARowLeaveABlankSheet)
{
    TextPrinter p;
    p.printLine(1, "one");
    p.newPage();
    p.newPage();
    p.printLine(1, "three");
    EXPECT_EQ(p.pages(), (std::vector<Lines>{{"one"}, {}, {"three"}}));
    EXPECT_EQ(p.page(), 3);
}

TEST(TextPrinter, ALineBelowTheSheetFeedsANewOne)
{
    TextPrinter p(PageMetrics::Lines(3));
    for (int i = 1; i <= 4; ++i)
        p.printLine(1, std::to_string(i));
    EXPECT_EQ(p.pages(), (std::vector<Lines>{{"1", "2", "3"}, {"4"}}));
    EXPECT_EQ(p.page(), 2);
}

TEST(TextPrinter, LineHeightFollowsTheFont)
{
    PageMetrics m;
    m.pageHeight = 100;
    m.lineHeight = [](std::string_view, float size) { return static_cast<std::int32_t>(size); };
    TextPrinter p(m);
    p.setFont("Courier New", 12.0f);
    EXPECT_EQ(p.textHeight("Sample"), 12);
    EXPECT_EQ(p.textHeight("two\nlines"), 24);
    EXPECT_EQ(p.pageHeight(), 100);
}

TEST(TextPrinter, SplitPagesReadsBackTheTextForm)
{
    EXPECT_EQ(SplitPages("a\n\nb\n\f\nc\n"), (std::vector<Lines>{{"a", "", "b"}, {"c"}}));
    EXPECT_TRUE(SplitPages("").empty());
}

}  // namespace
