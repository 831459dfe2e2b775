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

// Interest on a refund stops the case's stop days before the check date (the
// stop date entered), in an overpayment case only. Overpaid 10,000.00 at 5 %
// simple from 4/15/2016: to 6/27 is 73 days, 10,000 x 5 % x 73 / 365 = 100.00;
// 30 days earlier, to 5/28, is 43 days: 10,000 x 5 % x 43 / 365 = 58.904... -> 58.90.
TEST(ComputeCase, RefundInterestStopsTheStopDaysBeforeTheCheckDate)
{
    struct Row {
        const char* name;
        bool overpayment;
        std::int16_t stopDays;
        Date lastDay;
        const char* interest;
    };
    for (const Row& r : {Row{"overpaymentWith30Days", true, 30, D(5, 28, 2016), "-58.90"},
                         Row{"overpaymentWithout", true, 0, D(6, 27, 2016), "-100.00"},
                         Row{"notAnOverpaymentCase", false, 30, D(6, 27, 2016), "-100.00"}}) {
        SCOPED_TRACE(r.name);
        rw::Case c = shortCase("-10,000.00");
        c.init.bOverpayment = r.overpayment ? rw::kYes : rw::kNo;
        c.init.nStopDays = r.stopDays;
        const rw::CaseComputation comp = rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018());
        EXPECT_EQ(comp.interest, M(r.interest));
        EXPECT_EQ(comp.rows.back().dtEnd, r.lastDay);
        EXPECT_EQ(comp.kase.init.tlStop.dtDate, r.lastDay);  // what the summary's period line shows
        EXPECT_EQ(c.init.tlStop.dtDate, D(6, 27, 2016));     // the case itself keeps the check date
    }
}

// Due 4/15/2024, tax 1,000.00, filed 90 days late: three months of 5 %,
// 150.00, under the minimum. The release of early 2018 lists amounts through
// 2016, so its 2016 amount applies and the analysis says so; the minimum of a
// listed year needs no note, nor does a return not that late.
TEST(ComputeCase, TheAnalysisSaysWhichYearsMinimumItApplied)
{
    rw::Case c = Federal(D(4, 15, 2024), D(4, 15, 2024), D(12, 31, 2024), "1,000.00");
    c.init.bAnyPenalties = c.init.bFtoFile = rw::kYes;
    c.init.dtFiled = D(7, 14, 2024);
    c.init.dtFtoFileAssess = D(9, 1, 2024);
    const rw::RateTable rates = SimpleTable(0.05f);
    EXPECT_EQ(rw::ComputeCase(c, rates, rwtest::Minimums2018()).ftfMinimumNote,
              "Minimum failure-to-file penalty: the release of the rates lists amounts through 2016; the 2016 amount, "
              "205.00, was applied to this return due in 2024.");
    const rw::FtfMinimumSchedule listed{{{2024, M("485.00"), "test"}}};
    EXPECT_EQ(rw::ComputeCase(c, rates, listed).ftfMinimumNote, "");
    c.init.dtFiled = D(5, 1, 2024);  // 16 days late: no minimum
    EXPECT_EQ(rw::ComputeCase(c, rates, rwtest::Minimums2018()).ftfMinimumNote, "");
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
