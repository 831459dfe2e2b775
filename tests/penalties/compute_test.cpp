// Whole computations: the penalty points enter the balance on their dates and
// carry interest from there; the accuracy-related penalty of I.R.C. §6662;
// refund stop days; what the computation keeps for the analyses.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/accrel.h"
#include "penalties/compute.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

// Due and start 4/15/2016, stop 6/27/2016 (73 days of interest), simple
// interest at 5 % on a 365-day year.
rw::Case ShortCase(const char* balance)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 6, 27), balance);
    c.init.bAnyPenalties = rw::kYes;
    return c;
}

rw::CaseComputation Computed(const rw::Case& c, const rw::FtfMinimumSchedule& minimums = Minimums2018())
{
    return rw::ComputeCase(c, SimpleTable(0.05f), minimums);
}

// The penalty is the underpayment times the single rate, widened to double,
// kept to the ten-thousandth.
TEST(AccuracyRelated, PenaltyIsTheUnderpaymentTimesTheSingleRate)
{
    for (const auto& [underpayment, rate, raw] :  // in ten-thousandths
         {std::tuple{"10,000.00", 0.2f, 20'000'000},  // 0.2f = 0.20000000298: 2,000.0000298 -> 2,000.0000
          {"10,000.00", 0.4f, 40'000'001},            // 0.4f = 0.4000000059604645 -> 4,000.0001
          {"1,234.57", 0.25f, 3'086'425}}) {          // 0.25 is exact: 308.6425
        rw::InitInputs init;
        init.cAccRelAmt = M(underpayment);
        init.fAccRelRate = rate;
        EXPECT_EQ(rw::AccRelPenalty(init), Money::fromRaw(raw)) << rate;
    }
}

// A point on the extended due date; 2,000.00 from 4/15 for 4/16-6/27, 73
// days: 2,000 x 0.05 x 73 / 365 = 20.00.
TEST(AccuracyRelated, PointOnTheExtendedDueDateCarriesInterest)
{
    rw::Case c = ShortCase("0");
    c.init.bAccRel = rw::kYes;
    c.init.cAccRelAmt = M("10,000.00");
    c.init.fAccRelRate = 0.2f;
    const rw::CaseComputation k = Computed(c);
    const auto par = PointsWithCode(k.timeline, "PAR ");
    ASSERT_EQ(par.size(), 1u);
    EXPECT_EQ(par[0].dtDate, D(2016, 4, 15));
    EXPECT_EQ(par[0].cPen, M("2,000.00"));
    EXPECT_TRUE(par[0].sDesc.is("Accuracy Rel"));
    EXPECT_EQ(k.interest, M("20.00"));
    EXPECT_EQ(k.rows.back().nDays, 73);
    EXPECT_EQ(k.kase, c);
    c.init.dtExtended = D(2016, 5, 15);
    EXPECT_EQ(PointsWithCode(Computed(c).timeline, "PAR ").at(0).dtDate, D(2016, 5, 15));
}

// Months 4/16, 5/16 and 6/16 at 50.00: 100.00 assessed 5/20, 50.00 on 6/16.
//   4/16-5/20, 35 days on 10,000.00: 10,000 x 0.05 x 35 / 365 = 47.9452 -> 47.95
//   5/21-6/16, 27 days on 10,100.00: 37.3562 -> 37.36
//   6/17-6/27, 11 days on 10,150.00: 15.2945 -> 15.29; together 100.60
TEST(ComputeCase, FailureToPayPointsCarryInterestFromTheirDates)
{
    rw::Case c = ShortCase("10,000.00");
    c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(2016, 5, 20);
    const rw::CaseComputation k = Computed(c);
    EXPECT_EQ(k.ftoRows.size(), 3u);
    EXPECT_EQ(k.interest, M("100.60"));
    EXPECT_TRUE(k.prTable.empty());
}

// Interest on a refund stops the case's stop days before the check date (the
// stop date entered), in an overpayment case only. Overpaid 10,000.00: to
// 6/27 is 73 days, 10,000 x 0.05 x 73 / 365 = 100.00; 30 days earlier, to
// 5/28, 43 days: 58.9041 -> 58.90.
TEST(ComputeCase, RefundInterestStopsTheStopDaysBeforeTheCheckDate)
{
    struct Want {
        const char* name;
        bool overpayment;
        std::int16_t stopDays;
        Date lastDay;
        const char* interest;
    };
    for (const Want& w : {Want{"overpaymentWith30Days", true, 30, D(2016, 5, 28), "-58.90"},
                          Want{"overpaymentWithout", true, 0, D(2016, 6, 27), "-100.00"},
                          Want{"notAnOverpaymentCase", false, 30, D(2016, 6, 27), "-100.00"}}) {
        SCOPED_TRACE(w.name);
        rw::Case c = ShortCase("-10,000.00");
        c.init.bOverpayment = rw::ToFlag(w.overpayment);
        c.init.nStopDays = w.stopDays;
        const rw::CaseComputation k = Computed(c);
        EXPECT_EQ(k.interest, M(w.interest));
        EXPECT_EQ(k.rows.back().dtEnd, w.lastDay);
        EXPECT_EQ(k.kase.init.tlStop.dtDate, w.lastDay);  // what the summary's period line shows
        EXPECT_EQ(c.init.tlStop.dtDate, D(2016, 6, 27));  // the case keeps the check date
    }
}

// Due 4/15/2024, 1,000.00, filed 90 days late: three months of 5 %, under the
// minimum. The release of early 2018 lists amounts through 2016, so its 2016
// amount applies and the analysis says so; a listed year needs no note, nor
// does a return not that late.
TEST(ComputeCase, TheAnalysisSaysWhichYearsMinimumItApplied)
{
    rw::Case c = FederalCase(D(2024, 4, 15), D(2024, 12, 31), "1,000.00");
    c.init.bAnyPenalties = c.init.bFtoFile = rw::kYes;
    c.init.dtFiled = D(2024, 7, 14);
    c.init.dtFtoFileAssess = D(2024, 9, 1);
    EXPECT_EQ(Computed(c).ftfMinimumNote,
              "Minimum failure-to-file penalty: the release of the rates lists amounts through 2016; the 2016 amount, "
              "205.00, was applied to this return due in 2024.");
    EXPECT_EQ(Computed(c, rw::FtfMinimumSchedule{{{2024, M("485.00"), "test"}}}).ftfMinimumNote, "");
    c.init.dtFiled = D(2024, 5, 1);  // 16 days late: no minimum
    EXPECT_EQ(Computed(c).ftfMinimumNote, "");
}

}  // namespace
