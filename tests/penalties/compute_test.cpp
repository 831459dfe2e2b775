// Whole computations: the penalty points enter the balance on their dates and
// carry interest from there; the accuracy-related penalty of I.R.C. §6662;
// refund stop days; the allocation of payments, the IRS-method ones allocated
// again at every computation against the case as it stands.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/accrel.h"
#include "penalties/allocation.h"
#include "penalties/compute.h"

#include <gtest/gtest.h>

using namespace rwtest;
using rw::OwedOnDate;

namespace {

// Due and start 4/15/2016, stop 6/27/2016 (73 days of interest), simple
// interest at 5 % on a 365-day year.
rw::Case ShortCase(const char* balance)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 6, 27), balance);
    c.init.bAnyPenalties = rw::kYes;
    return c;
}

rw::CaseComputation Computed(const rw::Case& c,
                             const rw::FtfMinimumSchedule& minimums = Minimums2018())
{
    return rw::ComputeCase(c, SimpleTable(0.05f), minimums);
}

// The penalty is the underpayment times the single rate, widened to double,
// kept to the ten-thousandth.
TEST(AccuracyRelated, PenaltyIsTheUnderpaymentTimesTheSingleRate)
{
    for (const auto& [underpayment, rate, raw] :  // in ten-thousandths
         {std::tuple{"10,000.00", 0.2f,
                     20'000'000},  // 0.2f = 0.20000000298: 2,000.0000298 -> 2,000.0000
          {"10,000.00", 0.4f, 40'000'001},  // 0.4f = 0.4000000059604645 -> 4,000.0001
          {"1,234.57", 0.25f, 3'086'425}}) {  // 0.25 is exact: 308.6425
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
    c.init.dtExtended = D(2016, 5, 15);
    EXPECT_EQ(PointsWithCode(Computed(c).timeline, "PAR ").at(0).dtDate, D(2016, 5, 15));
}

// Interest on a refund stops the case's stop days before the check date (the
// stop date entered), in an overpayment case only. Overpaid 10,000.00: to
// 6/27 is 73 days, 10,000 x 0.05 x 73 / 365 = 100.00; 30 days earlier, to
// 5/28, 43 days: 58.9041 -> 58.90.
TEST(ComputeCase, RefundInterestStopsTheStopDaysBeforeTheCheckDate)
{
    for (const auto& [overpayment, stopDays, lastDay, interest] :
         {std::tuple{true, 30, D(2016, 5, 28), "-58.90"},
          {true, 0, D(2016, 6, 27), "-100.00"},
          {false, 30, D(2016, 6, 27), "-100.00"}}) {
        rw::Case c = ShortCase("-10,000.00");
        c.init.bOverpayment = rw::ToFlag(overpayment);
        c.init.nStopDays = static_cast<std::int16_t>(stopDays);
        const rw::CaseComputation k = Computed(c);
        EXPECT_EQ(k.interest, M(interest)) << overpayment << stopDays;
        EXPECT_EQ(k.rows.back().dtEnd, lastDay);
        EXPECT_EQ(k.kase.init.tlStop.dtDate, lastDay);  // what the summary's period line shows
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
    EXPECT_TRUE(Computed(c).ftfMinimumNote.starts_with(
        "Minimum failure-to-file penalty: the release of the rates "
        "lists amounts through 2016; the 2016 amount, 205.00,"));
    EXPECT_EQ(Computed(c, rw::FtfMinimumSchedule{{{2024, M("485.00"), "test"}}}).ftfMinimumNote,
              "");
    c.init.dtFiled = D(2024, 5, 1);  // 16 days late: no minimum
    EXPECT_EQ(Computed(c).ftfMinimumNote, "");
}

std::string Split(Money tax, Money penalties, Money interest)
{
    return rw::FormatMoney(tax) + " / " + rw::FormatMoney(penalties) + " / "
           + rw::FormatMoney(interest);
}

TEST(Allocation, IrsMethodTaxThenPenaltiesThenInterestAndTheCeiling)
{
    const OwedOnDate owed{M("600"), M("100"), M("250")};
    for (const auto& [amount, owes, split] :
         {std::tuple{"1,000.00", owed, "650.00 / 100.00 / 250.00"},
          {"500.00", owed, "500.00 / 0.00 / 0.00"},
          {"650.00", owed, "600.00 / 50.00 / 0.00"},
          {"800.00", owed, "600.00 / 100.00 / 100.00"},
          {"80.00", OwedOnDate{}, "80.00 / 0.00 / 0.00"}}) {
        const rw::PaymentAllocation a = rw::AllocateByIrsMethod(M(amount), owes);
        EXPECT_EQ(Split(a.tax, a.penalties, a.interest), split) << amount;
    }
    // the user's own interest part: 500.00 x 300 / (600 + 100 + 300) = 150.00, one cent over
    // allowed
    const auto ceiling = rw::InterestCeiling(M("500.00"), {M("600"), M("100"), M("300")});
    EXPECT_EQ(ceiling, M("150.00"));
    EXPECT_FALSE(rw::InterestAboveCeiling(M("150.01"), ceiling.value()));
    EXPECT_TRUE(rw::InterestAboveCeiling(M("150.02"), ceiling.value()));
    EXPECT_FALSE(rw::InterestCeiling(M("500.00"), OwedOnDate{}).has_value());
    EXPECT_EQ(rw::InterestCeiling(M("100.00"), {M("1"), M("1"), M("1")}),
              M("33.3333"));  // 33.333333...
}

// 10,000.00 due and computed from 4/15/2016 to 7/31/2016 at 5 % simple
// interest, failure to pay assessed 5/20/2016: 0.5 % of the tax unpaid before
// each month from 4/16, so 4/16 and 5/16 give 50.00 each, 100.00 on 5/20;
// once the tax is paid on 6/1 the months from 6/16 give nothing.
// Owed on 6/1/2016, before any payment of that day: 10,000.00 tax, 100.00
// penalties and interest of
//   4/16-5/20, 35 days on 10,000.00: 10,000 x 0.05 x 35 / 365 = 47.9452 -> 47.95
//   5/21-6/1, 12 days on 10,100.00: 16.6027 -> 16.60; together 64.55.
// With failure to pay off: no penalty, 4/16-6/1, 47 days on 10,000.00: 64.3836 -> 64.38.
struct Allocated {
    rw::CaseComputation k;
    explicit Allocated(const rw::Case& c)
        : k(rw::ComputeCase(c, SimpleTable(0.05f), Minimums2018()))
    {
    }
    std::string split(std::size_t i) const
    {
        return Split(k.kase.pmts[i].cToTax, k.kase.pmts[i].cToPen, k.kase.pmts[i].cToInt);
    }
    std::string left() const  // the tax and penalties the time line leaves owed
    {
        Money tax, penalties;
        for (const rw::TLPoint& p : k.timeline) {
            tax += p.cTax;
            penalties += p.cPen;
        }
        return rw::FormatMoney(tax) + " / " + rw::FormatMoney(penalties);
    }
};

rw::Case FailureToPayCase()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 7, 31), "10,000.00");
    c.init.bAnyPenalties = c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(2016, 5, 20);
    return c;
}

// 10,164.55 paid on 6/1/2016, allocated when typed with failure to pay still
// off: 10,000.00 tax, 64.38 interest and the 100.17 left to tax. By the IRS
// method it is allocated again against 10,000.00 + 100.00 + 64.55: nothing is
// left and nothing runs from 6/2. The user's own split stands: -100.17 of tax
// beside the unpaid 100.00 penalty. The case keeps what was typed.
TEST(ComputeCase, AnIrsMethodPaymentFollowsTheCaseAndAnOwnAllocationStands)
{
    for (const auto& [method, split, left] :
         {std::tuple{"I", "10,000.00 / 100.00 / 64.55", "0.00 / 0.00"},
          {"T", "10,100.17 / 0.00 / 64.38", "-100.17 / 100.00"}}) {
        rw::Case c = FailureToPayCase();
        AddPayment(c, D(2016, 6, 1), {.tax = "10,100.17", .interest = "64.38", .method = method});
        const rw::Case typed = c;
        const Allocated run(c);
        EXPECT_EQ(run.split(0), split) << method;
        EXPECT_EQ(run.left(), left) << method;
        EXPECT_EQ(c, typed);
    }
}

// A: 10,100.00 on 6/1/2016, typed with failure to pay off (10,035.62 tax,
// 64.38 interest). B: 64.55 on 7/1/2016. Allocated again in date order,
// whatever their order in the list:
//   A against 10,000.00 + 100.00 + 64.55: 10,000.00 tax, 100.00 penalty, nothing for interest;
//   B on 7/1, after A as allocated again: no tax, no penalty (the month from
//     6/16 gives nothing on 0 of tax), interest 64.55 (nothing runs from 6/2): all of B.
//     (Against A as typed, B would find -35.62 of tax and the 100.00 penalty.)
// The computation's interest: 47.95 + 16.60 - 64.55 = 0.
TEST(ComputeCase, EachIrsMethodPaymentIsAllocatedAfterTheOnesBeforeIt)
{
    for (const bool dateOrder : {true, false}) {
        rw::Case c = FailureToPayCase();
        const auto a = [&] {
            AddPayment(c, D(2016, 6, 1), {.tax = "10,035.62", .interest = "64.38", .method = "I"});
        };
        const auto b = [&] { AddPayment(c, D(2016, 7, 1), {.tax = "64.55", .method = "I"}); };
        dateOrder ? (a(), b()) : (b(), a());
        const Allocated run(c);
        EXPECT_EQ(run.split(dateOrder ? 0 : 1), "10,000.00 / 100.00 / 0.00") << dateOrder;
        EXPECT_EQ(run.split(dateOrder ? 1 : 0), "0.00 / 0.00 / 64.55") << dateOrder;
        EXPECT_EQ(run.k.interest, Money());
        EXPECT_EQ(run.left(), "0.00 / 0.00");
    }
}

}  // namespace
