// Whole computations: the penalty points enter the balance on their dates and
// carry interest from there.

#include "penalties/compute.h"

#include "pentest.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;

// Due and start 4/15/2016, stop 6/27/2016 (73 days of interest), simple
// interest at 5 % (365-day year).
rw::Case shortCase(const char* balance)
{
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(6, 27, 2016), balance);
    c.init.bAnyPenalties = rw::kYes;
    return c;
}

TEST(ComputeCase, InterestRunsOnTheAccuracyRelatedPenaltyFromTheExtendedDueDate)
{
    rw::Case c = shortCase("0");
    c.init.bAccRel = rw::kYes;
    c.init.cAccRelAmt = M("10,000.00");
    c.init.fAccRelRate = 0.2f;
    const rw::CaseComputation comp = rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018());
    // Penalty 2,000.00 from 4/15; 4/16 to 6/27 is 73 days:
    // 2,000.00 x 5 % x 73 / 365 = 20.00.
    EXPECT_EQ(comp.interest, M("20.00"));
    ASSERT_GE(comp.rows.size(), 3u);
    EXPECT_EQ(comp.rows[1].cTaxPen, M("2,000.00"));  // the "Accuracy Rel" event row
    EXPECT_EQ(comp.rows.back().nDays, 73);
    EXPECT_EQ(comp.kase, c);
}

TEST(ComputeCase, FailureToPayPointsCarryInterestFromTheirDates)
{
    rw::Case c = shortCase("10,000.00");
    c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(5, 20, 2016);
    const rw::CaseComputation comp = rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018());
    // Months 4/16, 5/16, 6/16 at 50.00: 100.00 assessed 5/20, 50.00 on 6/16.
    ASSERT_EQ(comp.ftoRows.size(), 3u);
    // 4/16 - 5/20, 35 days on 10,000.00: 47.945205... -> 47.9452 -> 47.95
    // 5/21 - 6/16, 27 days on 10,100.00: 37.356164... -> 37.3562 -> 37.36
    // 6/17 - 6/27, 11 days on 10,150.00: 15.294520... -> 15.2945 -> 15.29
    EXPECT_EQ(comp.interest, M("100.60"));
    EXPECT_TRUE(comp.prTable.empty());
}

TEST(ComputeCase, PayrollTableIsKeptForTheAnalysis)
{
    rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    AddPayment(c, D(4, 20, 2016), "1,000.00");
    const rw::CaseComputation comp = rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018());
    ASSERT_EQ(comp.prTable.size(), 1u);
    EXPECT_EQ(comp.prTable[0].cPenalty, M("20.00"));  // 5 days late, 2 %
}

}  // namespace
