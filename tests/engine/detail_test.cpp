// The detailed interest analysis: the cells of a row and the grid.
#include "support/casebuilder.h"

#include "engine/detail.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

rw::ResultPeriod Period(const char* desc, float rate, const char* base, int days, double factor, const char* interest)
{
    rw::ResultPeriod r;
    if (desc != nullptr)
        r.sDesc = desc;
    r.dtBegin = D(2016, 4, 5);
    r.dtEnd = D(2016, 12, 31);
    r.fRate = rate;
    r.cTaxPen = M(base);
    r.cAccruedInt = M("1234.565");
    r.nDays = days;
    r.dIntFactor = factor;
    r.cInterest = M(interest);
    return r;
}

TEST(DetailAnalysis, CellsAndGrid)
{
    EXPECT_EQ(rw::DetailRowCells(Period("Compound Int.", 0.08f, "1234567.891", 271, 0.012345678912, "15241.58")),
              (rw::DetailLine{"04/05/2016", "12/31/2016", "Compound Int.   ", " 8.0000", "  1,234,567.89",
                              "      1,234.57", "271", ".012345679", "     15,241.58"}));
    // 0.075f x 100 in double = 7.4999998...: four decimals show 7.5000; a negative rate keeps its sign
    EXPECT_EQ(rw::DetailRowCells(Period("x", 0.075f, "0", 1, 0.0, "0"))[3], " 7.5000");
    EXPECT_EQ(rw::DetailRowCells(Period("x", -0.005f, "0", 1, -1e-5, "0"))[3], "-0.5000");

    const rw::DetailAnalysis a = rw::MakeDetailAnalysis({Period("Start Interest", 0.0f, "100", 0, 0.0, "0"),
                                                         Period("Payment", 0.0f, "50", 0, 0.0, "-1.25"),
                                                         Period(nullptr, 0.05f, "50", 30, 0.004, "10.01")});
    const auto grid = a.grid();
    ASSERT_EQ(grid.size(), 5u);
    EXPECT_EQ(grid[0][4], "BEGINNING TAX & PENALTIES");
    EXPECT_EQ(grid[4], (rw::DetailLine{"Ending", "Interest", "", "", "", "", "", "", "          8.76"}));
    EXPECT_EQ(a.totalInterest, M("8.76"));  // 0 - 1.25 + 10.01
    EXPECT_EQ(rw::DetailText(a.rows[1]),
              "04/05/2016 12/31/2016 Payment           0.0000          50.00       1,234.57 0 .000000000          -1.25");
    EXPECT_EQ(rw::DetailRowCells(Period(nullptr, 0.0f, "0", 0, 0.0, "0"))[2], "");  // a description never set
    EXPECT_TRUE(rw::DetailColumnRightAligned(7) && !rw::DetailColumnRightAligned(2));
    EXPECT_EQ(rw::DetailColumnWidthUnits(2), 2);
}

}  // namespace
