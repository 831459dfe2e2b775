// Allocating a payment: the IRS method, the ceiling on the user's own
// interest part, and a computation allocating the IRS-method payments again
// against the case as it stands.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/allocation.h"
#include "penalties/compute.h"

#include <gtest/gtest.h>

using namespace rwtest;
using rw::OwedOnDate;

namespace {

TEST(Allocation, IrsMethodTaxThenPenaltiesThenInterest)
{
    struct Want {
        const char* name;
        const char* amount;
        OwedOnDate owed;
        const char *tax, *penalties, *interest;
    };
    const OwedOnDate owed{M("600"), M("100"), M("250")};
    for (const Want& w : {Want{"overpaidRestToTax", "1,000.00", owed, "650.00", "100.00", "250.00"},
                          Want{"taxOnly", "500.00", owed, "500.00", "0", "0"},
                          Want{"partOfThePenalties", "650.00", owed, "600.00", "50.00", "0"},
                          Want{"partOfTheInterest", "800.00", owed, "600.00", "100.00", "100.00"},
                          Want{"nothingOwed", "80.00", {}, "80.00", "0", "0"}}) {
        SCOPED_TRACE(w.name);
        const rw::PaymentAllocation a = rw::AllocateByIrsMethod(M(w.amount), w.owed);
        EXPECT_EQ(a.tax, M(w.tax));
        EXPECT_EQ(a.penalties, M(w.penalties));
        EXPECT_EQ(a.interest, M(w.interest));
    }
}

TEST(Allocation, InterestCeilingIsTheShareOfInterestInAllThatIsOwed)
{
    // 500.00 x 300 / (600 + 100 + 300) = 150.00; one cent over is allowed
    const auto ceiling = rw::InterestCeiling(M("500.00"), {M("600"), M("100"), M("300")});
    ASSERT_TRUE(ceiling.has_value());
    EXPECT_EQ(*ceiling, M("150.00"));
    EXPECT_FALSE(rw::InterestAboveCeiling(M("150.01"), *ceiling));
    EXPECT_TRUE(rw::InterestAboveCeiling(M("150.02"), *ceiling));
    EXPECT_FALSE(rw::InterestCeiling(M("500.00"), OwedOnDate{}).has_value());
    // 100.00 x 1 / 3 = 33.333333... -> 33.3333
    EXPECT_EQ(*rw::InterestCeiling(M("100.00"), {M("1"), M("1"), M("1")}), M("33.3333"));
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
rw::Case FailureToPayCase()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 7, 31), "10,000.00");
    c.init.bAnyPenalties = c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(2016, 5, 20);
    return c;
}

struct Left {
    Money tax, penalties;
};

Left LeftOwed(const rw::TimeLine& tl)  // every point's tax and penalties added
{
    Left b;
    for (const rw::TLPoint& p : tl) {
        b.tax += p.cTax;
        b.penalties += p.cPen;
    }
    return b;
}

void ExpectParts(const rw::PaymentRec& p, const char* tax, const char* penalties, const char* interest)
{
    EXPECT_EQ(p.cToTax, M(tax));
    EXPECT_EQ(p.cToPen, M(penalties));
    EXPECT_EQ(p.cToInt, M(interest));
}

// 10,164.55 paid on 6/1/2016, allocated when typed with failure to pay still
// off: 10,000.00 tax, 64.38 interest and the 100.17 left to tax.
TEST(ComputeCase, AnIrsMethodPaymentFollowsTheCaseAndAnOwnAllocationStands)
{
    for (const char* method : {"I", "T"}) {
        SCOPED_TRACE(method);
        rw::Case c = FailureToPayCase();
        AddPayment(c, D(2016, 6, 1), {.tax = "10,100.17", .interest = "64.38", .method = method});
        const rw::Case typed = c;
        const rw::CaseComputation k = rw::ComputeCase(c, SimpleTable(0.05f), Minimums2018());
        const Left left = LeftOwed(k.timeline);
        if (method == std::string("I")) {
            // against 10,000.00 + 100.00 + 64.55: nothing left, and nothing runs from 6/2
            ExpectParts(k.kase.pmts[0], "10,000.00", "100.00", "64.55");
            EXPECT_EQ(left.tax, Money());
            EXPECT_EQ(left.penalties, Money());
            EXPECT_EQ(k.interest, Money());
        } else {
            // the user's parts are kept: -100.17 of tax beside the unpaid 100.00 penalty
            ExpectParts(k.kase.pmts[0], "10,100.17", "0", "64.38");
            EXPECT_EQ(left.tax, M("-100.17"));
            EXPECT_EQ(left.penalties, M("100.00"));
        }
        EXPECT_EQ(c, typed);  // the case itself keeps what was typed
    }
}

// A: 10,100.00 on 6/1/2016, typed with failure to pay off (10,035.62 tax,
// 64.38 interest). B: 64.55 on 7/1/2016. Allocated again in date order, in
// whatever order they are listed:
//   A against 10,000.00 + 100.00 + 64.55: 10,000.00 tax, 100.00 penalty, nothing for interest;
//   B on 7/1, after A as allocated again: no tax, no penalty (the month from
//     6/16 gives nothing on 0 of tax), interest 64.55 (nothing runs from 6/2): all of B.
//     (Against A as typed, B would find -35.62 of tax and the 100.00 penalty.)
// The computation's interest: 47.95 + 16.60 - 64.55 = 0.
TEST(ComputeCase, EachIrsMethodPaymentIsAllocatedAfterTheOnesBeforeIt)
{
    for (const bool listedInDateOrder : {true, false}) {
        SCOPED_TRACE(listedInDateOrder);
        rw::Case c = FailureToPayCase();
        const auto addA = [&] {
            AddPayment(c, D(2016, 6, 1), {.tax = "10,035.62", .interest = "64.38", .desc = "A", .method = "I"});
        };
        const auto addB = [&] { AddPayment(c, D(2016, 7, 1), {.tax = "64.55", .desc = "B", .method = "I"}); };
        listedInDateOrder ? (addA(), addB()) : (addB(), addA());
        const rw::CaseComputation k = rw::ComputeCase(c, SimpleTable(0.05f), Minimums2018());
        ExpectParts(k.kase.pmts[listedInDateOrder ? 0 : 1], "10,000.00", "100.00", "0");
        ExpectParts(k.kase.pmts[listedInDateOrder ? 1 : 0], "0", "0", "64.55");
        EXPECT_EQ(k.interest, Money());
        EXPECT_EQ(LeftOwed(k.timeline).tax, Money());
        EXPECT_EQ(LeftOwed(k.timeline).penalties, Money());
    }
}

}  // namespace
