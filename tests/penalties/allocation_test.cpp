// Allocating a payment: the rules of the IRS method and of the user's own
// allocation, and a computation allocating the IRS-method payments again
// against the case as it stands.

#include "penalties/allocation.h"
#include "penalties/compute.h"

#include "pentest.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;
using rw::OwedOnDate;

// ---- The allocation rules ------------------------------------------------------

TEST(Allocation, IrsMethodTaxThenPenaltiesThenInterest)
{
    struct Row {
        const char* name;
        const char* amount;
        OwedOnDate owed;
        const char *tax, *penalties, *interest;
    };
    const Row rows[] = {
        // 600 + 100 + 250 owed of 1,000.00: the 50.00 left goes to tax.
        {"Overpaid", "1,000.00", {M("600"), M("100"), M("250")}, "650.00", "100.00", "250.00"},
        {"TaxOnly", "500.00", {M("600"), M("100"), M("250")}, "500.00", "0", "0"},
        {"PartOfThePenalties", "650.00", {M("600"), M("100"), M("250")}, "600.00", "50.00", "0"},
        {"PartOfTheInterest", "800.00", {M("600"), M("100"), M("250")}, "600.00", "100.00", "100.00"},
        {"NothingOwed", "80.00", {}, "80.00", "0", "0"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        const rw::PaymentAllocation a = rw::AllocateByIrsMethod(M(r.amount), r.owed);
        EXPECT_EQ(a.tax, M(r.tax));
        EXPECT_EQ(a.penalties, M(r.penalties));
        EXPECT_EQ(a.interest, M(r.interest));
        EXPECT_EQ(a.tax + a.penalties + a.interest, M(r.amount));
    }
}

TEST(Allocation, InterestCeilingIsTheShareOfInterestInAllThatIsOwed)
{
    // 500.00 x 300 / (600 + 100 + 300) = 150.00.
    const OwedOnDate owed{M("600"), M("100"), M("300")};
    const auto ceiling = rw::InterestCeiling(M("500.00"), owed);
    ASSERT_TRUE(ceiling.has_value());
    EXPECT_EQ(*ceiling, M("150.00"));
    EXPECT_FALSE(rw::InterestAboveCeiling(M("150.01"), *ceiling));  // one cent over is allowed
    EXPECT_TRUE(rw::InterestAboveCeiling(M("150.02"), *ceiling));
    EXPECT_FALSE(rw::InterestCeiling(M("500.00"), OwedOnDate{}).has_value());
    // 100.00 x 1 / 3 = 33.333333... -> 33.3333 (four decimals).
    EXPECT_EQ(*rw::InterestCeiling(M("100.00"), {M("1"), M("1"), M("1")}), M("33.3333"));
}

// ---- A computation allocates the IRS-method payments again ---------------------

// 10,000.00 of tax due and computed from 4/15/2016 to 7/31/2016 at 5 % simple
// interest (base x 5 % x days / 365), failure to pay on and assessed 5/20/2016.
//
// Failure to pay is 0.5 % of the tax unpaid before the first day of each month
// from 4/16: 4/16 and 5/16 on 10,000.00 give 50.00 each, together 100.00 on
// the assessment date 5/20; once the tax is paid on 6/1 the months from 6/16
// give nothing.
//
// Owed on 6/1/2016, before any payment of that day:
//   tax        10,000.00
//   penalties     100.00 (failure to pay, 5/20)
//   interest       64.55:
//     4/16 - 5/20, 35 days on 10,000.00: 47.945205... -> 47.95
//     5/21 - 6/1,  12 days on 10,100.00: 16.602739... -> 16.60
// The same day with failure to pay off owes no penalty and interest of
//     4/16 - 6/1,  47 days on 10,000.00: 64.383561... -> 64.38.
rw::Case failureToPayCase()
{
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(7, 31, 2016), "10,000.00");
    c.init.bAnyPenalties = rw::kYes;
    c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(5, 20, 2016);
    return c;
}

rw::PaymentRec payment(const char* desc, Date d, const char* amount, const char* tax, const char* penalties,
                       const char* interest, const char* method)
{
    rw::PaymentRec p;
    p.sDesc = desc;
    p.dtPmt = d;
    p.cAmount = M(amount);
    p.cToTax = M(tax);
    p.cToPen = M(penalties);
    p.cToInt = M(interest);
    p.sMethod = method;
    return p;
}

void setPayments(rw::Case& c, std::vector<rw::PaymentRec> pmts)
{
    c.init.nPmts = static_cast<std::int16_t>(pmts.size());
    c.pmts = std::move(pmts);
}

struct Balance {
    Money tax;
    Money penalties;
};

// What the time line leaves owed: every point's tax and penalties added.
Balance balanceOf(const rw::TimeLine& tl)
{
    Balance b;
    for (const rw::TLPoint& p : tl) {
        b.tax += p.cTax;
        b.penalties += p.cPen;
    }
    return b;
}

void expectParts(const rw::PaymentRec& p, const char* tax, const char* penalties, const char* interest)
{
    EXPECT_EQ(p.cToTax, M(tax));
    EXPECT_EQ(p.cToPen, M(penalties));
    EXPECT_EQ(p.cToInt, M(interest));
}

// 10,164.55 paid on 6/1/2016, allocated when typed with failure to pay still
// off: 10,000.00 tax, 64.38 interest, and the 100.17 left over to tax, so
// 10,100.17 tax, 0 penalties, 64.38 interest. Failure to pay is then switched on.
TEST(ComputeCase, AnIrsMethodPaymentFollowsTheCaseAndAnOwnAllocationStands)
{
    struct Row {
        const char* name;
        const char* method;
        const char *toTax, *toPenalties, *toInterest;  // the payment's parts in the computation
        const char *taxLeft, *penaltiesLeft;           // owed at the end
        const char* interest;                          // the computation's (nullptr: not looked at)
    };
    const Row rows[] = {
        // Against 10,000.00 + 100.00 + 64.55: tax, then the penalty, then the
        // interest, nothing left. Interest: 47.95 + 16.60 - 64.55 = 0, and
        // nothing runs on the balance of 0 from 6/2.
        {"IrsMethod", "I", "10,000.00", "100.00", "64.55", "0", "0", "0.00"},
        // The user's own parts are kept: 10,000.00 - 10,100.17 = -100.17 of
        // tax next to the 100.00 penalty nothing was applied to.
        {"OwnAllocation", "T", "10,100.17", "0", "64.38", "-100.17", "100.00", nullptr},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        rw::Case c = failureToPayCase();
        setPayments(c, {payment("Check", D(6, 1, 2016), "10,164.55", "10,100.17", "0", "64.38", r.method)});
        const rw::Case typed = c;
        const rw::CaseComputation comp = rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018());
        ASSERT_EQ(comp.kase.init.nPmts, 1);
        expectParts(comp.kase.pmts[0], r.toTax, r.toPenalties, r.toInterest);
        const Balance left = balanceOf(comp.timeline);
        EXPECT_EQ(left.tax, M(r.taxLeft));
        EXPECT_EQ(left.penalties, M(r.penaltiesLeft));
        if (r.interest) {
            EXPECT_EQ(comp.interest, M(r.interest));
        }
        EXPECT_EQ(c, typed);  // the case itself keeps what was typed
    }
}

// A: 10,100.00 on 6/1/2016, typed with failure to pay off (10,035.62 tax,
// 64.38 interest). B: 64.55 on 7/1/2016. Allocated again in date order:
//   A against 10,000.00 + 100.00 + 64.55: 10,000.00 tax, 100.00 penalty,
//     nothing left for interest.
//   B on 7/1, after A as allocated again: no tax and no penalty owed (the
//     month from 6/16 gives no failure to pay on 0 of tax), interest 47.95 +
//     16.60 = 64.55 (nothing runs from 6/2 on the balance of 0): all of B is
//     interest. (Against A as typed, B would find -35.62 of tax and the
//     100.00 penalty unpaid.)
// The computation's interest: 47.95 + 16.60 - 64.55 = 0.
TEST(ComputeCase, EachIrsMethodPaymentIsAllocatedAfterTheOnesBeforeIt)
{
    const rw::PaymentRec a = payment("A", D(6, 1, 2016), "10,100.00", "10,035.62", "0", "64.38", "I");
    const rw::PaymentRec b = payment("B", D(7, 1, 2016), "64.55", "64.55", "0", "0", "I");
    struct Row {
        const char* name;
        std::vector<rw::PaymentRec> listed;
        std::size_t indexOfA, indexOfB;
    };
    const Row rows[] = {
        {"InDateOrder", {a, b}, 0, 1},
        {"ListedOutOfDateOrder", {b, a}, 1, 0},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.name);
        rw::Case c = failureToPayCase();
        setPayments(c, r.listed);
        const rw::CaseComputation comp = rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018());
        expectParts(comp.kase.pmts[r.indexOfA], "10,000.00", "100.00", "0");
        expectParts(comp.kase.pmts[r.indexOfB], "0", "0", "64.55");
        EXPECT_EQ(comp.interest, M("0.00"));
        const Balance left = balanceOf(comp.timeline);
        EXPECT_EQ(left.tax, Money());
        EXPECT_EQ(left.penalties, Money());
    }
}

}  // namespace
