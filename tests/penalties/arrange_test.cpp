// The deposit arrangement search: the table of orders, the cheapest order,
// the savings message, and the fast search against the plain search of every
// order.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include "penalties/arrange.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>

using namespace rwtest;

namespace {

rw::Case PayrollCase()
{
    rw::Case c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = rw::kYes;
    return c;
}

std::vector<std::string> Descriptions(const rw::Case& c)
{
    std::vector<std::string> out;
    for (const auto& p : c.payments())
        out.push_back(p.sDesc.trimmed());
    return out;
}

void AddPayments(rw::Case& c, std::initializer_list<std::pair<Date, const char*>> paid)
{
    for (const auto& [date, desc] : paid)
        AddPayment(c, date, {.tax = "100.00", .desc = desc});
}

TEST(Permutations, EveryRowIsTheNextLexicographicOrder)
{
    rw::PermutationTable t;
    rw::AllPermutations(t, 6);
    ASSERT_EQ(t.rows(), 720);
    std::vector<int> want(6);
    std::iota(want.begin(), want.end(), 0);
    for (int r = 0; r < 720; ++r, std::next_permutation(want.begin(), want.end()))
        for (int j = 0; j < 6; ++j)
            ASSERT_EQ(t.at(r, j), want[static_cast<std::size_t>(j)]) << "row " << r;
    EXPECT_EQ(rw::GetFactorial(0), 1);
    EXPECT_EQ(rw::GetFactorial(12), 479001600);
    EXPECT_TRUE(FaultOf([] { rw::GetFactorial(13); }).starts_with("6 GetFactorial: "));  // 6,227,020,800
}

// One deposit due 4/15/2016; "Late" paid 10 days late (5 %), "OnTime" on the
// due date, entered late first: arranging saves 5 % of the deposit.
rw::Case TwoPayments(const char* required)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), required, D(2016, 8, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = required, .desc = "Late"});
    AddPayment(c, D(2016, 4, 15), {.tax = required, .desc = "OnTime"});
    return c;
}

struct RecordingProgress : rw::ArrangeProgress {
    void setVariationsText(std::string_view t) override { variations = t; }
    std::string variations;
};

TEST(Arrange, SavingsAboveTenDollarsAreReportedInWholeDollars)
{
    rw::Case c = TwoPayments("200.00");  // 200.00 x 5 % = 10.00 saved: rearranged with a beep only
    RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(msgs.beeps, 1);
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"OnTime", "Late"}));

    c = TwoPayments("200.20");  // 10.01 saved
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
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"OnTime", "Late"}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 2");
}

TEST(Arrange, TenPaymentsAreNotArranged)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    for (int i = 0; i < 10; ++i)
        AddPayment(c, D(2016, 5, 1) - i, {.tax = "100.00", .desc = std::to_string(i)});
    const rw::Case before = c;
    RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(c, before);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text,
              "Due to time and memory that it takes to calculate penalties for all permutations of 10 or more "
              "payments, this program can not automatically match payments with payroll liabilities. Make sure "
              "you have entered payments in the order that you want them to be applied.\n\nIf you need payments "
              "matched automatically for larger cases, please write to Ratewright support and ask about "
              "extending this capability.");
    EXPECT_EQ(msgs.beeps, 0);
}

TEST(Arrange, NoPaymentsOrNothingCheaperKeepTheOrderAsEntered)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    rw::Case before = c;
    RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(c, before);
    EXPECT_EQ(msgs.beeps, 0);

    c = PayrollCase();  // without deposits every order costs 0
    AddPayments(c, {{D(2016, 5, 1), "A"}, {D(2016, 4, 1), "B"}, {D(2016, 6, 1), "C"}});
    RecordingProgress progress;
    rw::GetLowestPRPen(c, msgs, &progress);
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 6");
    EXPECT_TRUE(msgs.shown.empty());
}

// Deposit 100.00 due 4/15: A is 20 days late (10 %), B and C on time; the
// orders beginning with B or C cost 0, the first of them in table order is
// 1, 0, 2 (B, A, C).
TEST(Arrange, FirstOfTheCheapestOrdersInTableOrderWins)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "100.00", D(2016, 8, 1));
    AddPayments(c, {{D(2016, 5, 5), "A"}, {D(2016, 4, 15), "B"}, {D(2016, 4, 14), "C"}});
    RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"B", "A", "C"}));

    c.deposits[0].dtDepDue = rw::NoDate;  // a fault, and the payments stay as they were
    const rw::Case before = c;
    EXPECT_THROW(rw::GetLowestPRPen(c, msgs), rw::Fault);
    EXPECT_EQ(c, before);
}

// The fast search against the plain search of every order: random cases of up
// to 7 payments with ties (amounts and dates of few values), payments without
// a tax part, deposits of 0 and (rarely) below 0, severe deposits, deposits
// left unpaid, payments left over.
TEST(Arrange, FastSearchChoosesTheOrderOfThePlainSearch)
{
    std::mt19937 rng(20160415);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    const char* amounts[] = {"0", "-50.00", "100.00", "150.00", "200.00", "250.00", "333.33", "0.70", "1,000.00"};
    int rearranged = 0;
    for (int trial = 0; trial < 1000; ++trial) {
        rw::Case c = PayrollCase();
        Date due = D(2016, 4, 1);
        for (int k = 0, deposits = pick(0, 6); k < deposits; ++k) {
            due = due + pick(0, 12);  // sorted, some on one day
            AddDeposit(c, due, amounts[pick(0, 40) == 0 ? pick(0, 1) : pick(2, 8)], D(2016, 8, 1), pick(0, 5) == 0);
        }
        for (int i = 0, n = pick(1, 7); i < n; ++i)
            AddPayment(c, D(2016, 4, 1) + pick(0, 60), {.tax = amounts[pick(0, 8)], .desc = std::to_string(i)});
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
    rw::Case c = PayrollCase();
    c.init.tlStart.dtDate = D(2016, 1, 1);
    Date due = D(2016, 1, 6);
    for (int k = 0; k < 40; ++k, due = due + (k % 2 ? 3 : 4))
        AddDeposit(c, due, std::to_string(pick(500, 4000)), D(2016, 9, 1), pick(0, 9) == 0);
    // about one payment every 17 days, entered in a shuffled order
    std::vector<int> slots{0, 1, 2, 3, 4, 5, 6, 7};
    std::shuffle(slots.begin(), slots.end(), rng);
    for (int i = 0; i < 8; ++i)
        AddPayment(c, D(2016, 1, 10) + 17 * slots[static_cast<std::size_t>(i)] + pick(-3, 3),
                   {.tax = std::to_string(pick(7000, 13000)), .desc = std::to_string(i)});
    const rw::ArrangeOutcome fast = rw::FindLowestPRPenOrder(c);
    const rw::ArrangeOutcome plain = rw::FindLowestPRPenOrderByTable(c);
    EXPECT_EQ(fast.bestOrder, plain.bestOrder);
    EXPECT_EQ(fast.lowest, plain.lowest);
    EXPECT_EQ(fast.entered, plain.entered);
    EXPECT_LT(fast.lowest, fast.entered);
}

}  // namespace
