// The deposit arrangement search: the table of orders, the cheapest order,
// the savings message, and the walk that must choose as the plain search does.

#include "penalties/arrange.h"

#include "base/fault.h"

#include "pentest.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

namespace {

using namespace pentest;

rw::Case payrollCase()
{
    rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    return c;
}

std::vector<std::string> descriptions(const rw::Case& c)
{
    std::vector<std::string> out;
    for (const auto& p : c.payments())
        out.push_back(p.sDesc.trimmed());
    return out;
}

class RecordingProgress : public rw::ArrangeProgress {
public:
    void setVariationsText(std::string_view t) override { variations = t; }
    void setPenaltiesRange(float, float maximum) override { penaltiesMax = maximum; }
    void setPenaltiesValue(std::int32_t v) override { penaltiesValue = v; }
    std::string variations;
    float penaltiesMax = 0.0f;
    std::int32_t penaltiesValue = -1;
};

TEST(Permutations, ThreePaymentsInLexicographicOrder)
{
    rw::PermutationTable t;
    rw::AllPermutations(t, 3);
    ASSERT_EQ(t.rows(), 6);
    const int expected[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (int r = 0; r < 6; ++r)
        for (int j = 0; j < 3; ++j)
            EXPECT_EQ(t.at(r, j), expected[r][j]) << r << "," << j;
}

TEST(Permutations, EveryRowOfSixIsTheNextLexicographicOrder)
{
    rw::PermutationTable t;
    rw::AllPermutations(t, 6);
    ASSERT_EQ(t.rows(), 720);
    std::vector<int> want(6);
    std::iota(want.begin(), want.end(), 0);
    for (int r = 0; r < 720; ++r) {
        for (int j = 0; j < 6; ++j)
            ASSERT_EQ(t.at(r, j), want[static_cast<std::size_t>(j)]) << "row " << r;
        std::next_permutation(want.begin(), want.end());
    }
}

TEST(Permutations, FactorialAndItsLimit)
{
    EXPECT_EQ(rw::GetFactorial(0), 1);
    EXPECT_EQ(rw::GetFactorial(1), 1);
    EXPECT_EQ(rw::GetFactorial(9), 362880);
    EXPECT_EQ(rw::GetFactorial(12), 479001600);
    try {
        rw::GetFactorial(13);  // 6,227,020,800 is beyond 32 bits
        FAIL();
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), rw::kErrOverflow);
        EXPECT_EQ(f.procedure(), "GetFactorial");
    }
}

TEST(Permutations, BestOrderCopiesOneRow)
{
    rw::PermutationTable t;
    rw::AllPermutations(t, 4);
    std::vector<std::int16_t> best;
    rw::FillPRAutoArrangeNdxArray(t, best, 23, 3);
    EXPECT_EQ(best, (std::vector<std::int16_t>{3, 2, 1, 0}));
}

// One deposit of `required` due 4/15/2016; "Late" paid 10 days late (5 %),
// "OnTime" on the due date. Entered late first, so arranging saves 5 %.
rw::Case twoPayments(const char* required)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), required, D(8, 1, 2016));
    AddPayment(c, D(4, 25, 2016), required, "Late");
    AddPayment(c, D(4, 15, 2016), required, "OnTime");
    return c;
}

TEST(Arrange, SavingsOfTenDollarsRearrangesWithoutAMessage)
{
    rw::Case c = twoPayments("200.00");  // 200.00 x 5 % = 10.00 saved
    rwtest::RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(msgs.beeps, 1);
    EXPECT_EQ(descriptions(c), (std::vector<std::string>{"OnTime", "Late"}));
}

TEST(Arrange, SavingsAboveTenDollarsAreReportedInWholeDollars)
{
    rw::Case c = twoPayments("200.20");  // 200.20 x 5 % = 10.01 saved
    rwtest::RecordingMessages msgs;
    RecordingProgress progress;
    rw::GetLowestPRPen(c, msgs, &progress);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "Savings To Employer");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
    EXPECT_EQ(msgs.shown[0].text,
              "The employer saved $10 by having the Brindlecote optimize the application of deposits to "
              "liabilities. The program calculated penalties for all 2 ways the payments could have been "
              "arranged. Please refer to Rev. Proc. 99-10 and IRC Section 6656(e) to properly report the "
              "application of deposits.");
    EXPECT_EQ(descriptions(c), (std::vector<std::string>{"OnTime", "Late"}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 2");
    EXPECT_FLOAT_EQ(progress.penaltiesMax, 2.2f);
    EXPECT_EQ(progress.penaltiesValue, 1);
}

TEST(Arrange, TenPaymentsAreNotArranged)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    for (int i = 0; i < 10; ++i)
        AddPayment(c, D(5, 1, 2016) - i, "100.00", std::to_string(i).c_str());
    const rw::Case before = c;
    rwtest::RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(c, before);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Exclamation);
    EXPECT_EQ(msgs.shown[0].text,
              "Due to time and memory that it takes to calculate penalties for all permutations of 10 or more "
              "payments, this program can not automatically match payments with payroll liabilities. Make sure "
              "you have entered payments in the order that you want them to be applied.\n\nIf you need payments "
              "matched automatically for larger cases, please write to Ratewright support and ask about "
              "extending this capability.");
    EXPECT_EQ(msgs.beeps, 0);
}

TEST(Arrange, NoPaymentsDoNothing)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    const rw::Case before = c;
    rwtest::RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(c, before);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(msgs.beeps, 0);
}

TEST(Arrange, EnteredOrderStaysWhenNothingIsCheaper)
{
    // Without deposits every order costs 0.
    rw::Case c = payrollCase();
    AddPayment(c, D(5, 1, 2016), "100.00", "A");
    AddPayment(c, D(4, 1, 2016), "100.00", "B");
    AddPayment(c, D(6, 1, 2016), "100.00", "C");
    rwtest::RecordingMessages msgs;
    RecordingProgress progress;
    rw::GetLowestPRPen(c, msgs, &progress);
    EXPECT_EQ(descriptions(c), (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 6");
}

TEST(Arrange, FirstOfTheCheapestOrdersInTableOrderWins)
{
    // Deposit 100.00 due 4/15. A is 20 days late (10 %), B and C both on time:
    // orders starting with B or C cost 0; the first of them in table order is
    // 1, 0, 2 (B, A, C).
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "100.00", D(8, 1, 2016));
    AddPayment(c, D(5, 5, 2016), "100.00", "A");
    AddPayment(c, D(4, 15, 2016), "100.00", "B");
    AddPayment(c, D(4, 14, 2016), "100.00", "C");
    rwtest::RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(descriptions(c), (std::vector<std::string>{"B", "A", "C"}));
    EXPECT_TRUE(msgs.shown.empty());  // 10.00 saved: no message
}

TEST(Arrange, DepositWithoutDueDateFaultsAndLeavesThePayments)
{
    rw::Case c = payrollCase();
    AddDeposit(c, rw::NoDate, "100.00", D(8, 1, 2016));
    AddPayment(c, D(5, 5, 2016), "100.00", "A");
    AddPayment(c, D(4, 15, 2016), "100.00", "B");
    const rw::Case before = c;
    rwtest::RecordingMessages msgs;
    EXPECT_THROW(rw::GetLowestPRPen(c, msgs), rw::Fault);
    EXPECT_EQ(c, before);
}

// The fast search against the plain search of the whole table: random cases
// of up to 7 payments, with ties (amounts and dates drawn from few values),
// payments without a tax part, deposits of 0 and (rarely) below 0, severe
// deposits, deposits left unpaid, payments left over.
TEST(Arrange, FastSearchChoosesTheOrderOfThePlainSearch)
{
    std::mt19937 rng(20160415);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    const char* amounts[] = {"0", "-50.00", "100.00", "150.00", "200.00", "250.00", "333.33", "0.70", "1,000.00"};
    int rearranged = 0;
    for (int trial = 0; trial < 1000; ++trial) {
        rw::Case c = payrollCase();
        const int deposits = pick(0, 6);
        Date due = D(4, 1, 2016);
        for (int k = 0; k < deposits; ++k) {
            due = due + pick(0, 12);  // sorted, some on one day
            const int a = pick(0, 40) == 0 ? pick(0, 1) : pick(2, 8);
            AddDeposit(c, due, amounts[a], D(8, 1, 2016), pick(0, 5) == 0);
        }
        const int n = pick(1, 7);
        for (int i = 0; i < n; ++i)
            AddPayment(c, D(4, 1, 2016) + pick(0, 60), amounts[pick(0, 8)], std::to_string(i).c_str());
        SCOPED_TRACE(trial);
        const rw::ArrangeOutcome fast = rw::FindLowestPRPenOrder(c);
        const rw::ArrangeOutcome plain = rw::FindLowestPRPenOrderByTable(c);
        ASSERT_EQ(fast.bestOrder, plain.bestOrder);
        ASSERT_EQ(fast.lowest, plain.lowest);
        ASSERT_EQ(fast.entered, plain.entered);
        ASSERT_EQ(fast.orders, plain.orders);
        rearranged += fast.lowest < fast.entered ? 1 : 0;
    }
    EXPECT_GT(rearranged, 100);  // the cases do exercise rearranging
}

TEST(Arrange, EightPaymentsAgainstFortyDepositsAgreeWithThePlainSearch)
{
    std::mt19937 rng(941);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    rw::Case c = payrollCase();
    c.init.tlStart.dtDate = D(1, 1, 2016);
    Date due = D(1, 6, 2016);
    for (int k = 0; k < 40; ++k) {
        AddDeposit(c, due, std::to_string(pick(500, 4000)).c_str(), D(9, 1, 2016), pick(0, 9) == 0);
        due = due + (k % 2 ? 4 : 3);
    }
    // About one payment every 17 days, entered in a shuffled order.
    std::vector<int> slots{0, 1, 2, 3, 4, 5, 6, 7};
    std::shuffle(slots.begin(), slots.end(), rng);
    for (int i = 0; i < 8; ++i)
        AddPayment(c, D(1, 10, 2016) + 17 * slots[static_cast<std::size_t>(i)] + pick(-3, 3),
                   std::to_string(pick(7000, 13000)).c_str(), std::to_string(i).c_str());
    const rw::ArrangeOutcome fast = rw::FindLowestPRPenOrder(c);
    const rw::ArrangeOutcome plain = rw::FindLowestPRPenOrderByTable(c);
    EXPECT_EQ(fast.bestOrder, plain.bestOrder);
    EXPECT_EQ(fast.lowest, plain.lowest);
    EXPECT_EQ(fast.entered, plain.entered);
    EXPECT_LT(fast.lowest, fast.entered);
}

}  // namespace
