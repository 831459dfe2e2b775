// The failure-to-deposit penalty of I.R.C. §6656: pieces of each deposit, the
// rate by days late, rounding, the points on the time line; and the search
// for the order of the payments that costs least, against the plain search of
// every order.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/releases.h"

#include "penalties/arrange.h"
#include "penalties/compute.h"
#include "penalties/payroll.h"

#include <gtest/gtest.h>

#include <random>

using namespace rwtest;
using Texts = std::vector<std::string>;

namespace {

// A payroll quarter from 4/1/2016 to 12/31/2016, return due 7/31/2016.
rw::Case PayrollCase()
{
    rw::Case c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = rw::kYes;
    return c;
}

// The pieces as "due: begin - paid on date = end; days late, penalty".
Texts Pieces(const rw::Case& c)
{
    std::vector<rw::PRPenTblElement> t;
    rw::CalcUSPRPen(c, c.payments(), t);
    Texts out;
    for (const rw::PRPenTblElement& e : t)
        out.push_back(rw::FormatShortDate(e.dtDepDue) + ": " + rw::FormatMoney(e.cBegBal) + " - "
                      + rw::FormatMoney(e.cPaid) + " on " + rw::FormatShortDate(e.dtPaid) + " = "
                      + rw::FormatMoney(e.cEndBal) + "; " + std::to_string(e.nDaysLate) + ", "
                      + rw::FormatMoney(e.cPenalty));
    return out;
}

// Unpaid pieces count as paid on the stop date, 260 days after 4/15: 10 %,
// or 15 % under §6656(b)(1)(B). A payment larger than a deposit pays the next
// with its rest; payments without a positive tax part pay nothing.
TEST(PayrollPenalty, PiecesOfEachDeposit)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    AddDeposit(c, D(2016, 5, 16), "2,000.00", D(2016, 8, 1), true);
    EXPECT_EQ(Pieces(c),
              (Texts{"4/15/2016: 1,000.00 - 0.00 on 12/31/2016 = 1,000.00; 260, 100.00",
                     "5/16/2016: 2,000.00 - 0.00 on 12/31/2016 = 2,000.00; 229, 300.00"}));

    c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    AddDeposit(c, D(2016, 4, 30), "1,000.00", D(2016, 8, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = "1,500.00"});
    AddPayment(c, D(2016, 4, 16), {.tax = "0"});
    AddPayment(c, D(2016, 4, 17), {.tax = "-100.00"});
    AddPayment(c, D(2016, 5, 10), {.tax = "500.00"});
    EXPECT_EQ(Pieces(c),
              (Texts{"4/15/2016: 1,000.00 - 1,000.00 on 4/25/2016 = 0.00; 10, 50.00",  // 5 %
                     "4/30/2016: 1,000.00 - 500.00 on 4/25/2016 = 500.00; -5, 0.00",  // early
                     "4/30/2016: 500.00 - 500.00 on 5/10/2016 = 0.00; 10, 25.00"}));
}

TEST(PayrollPenalty, RateByDaysLate)
{
    for (const auto& [days, severe, rate, penalty] :  // on 1,000.00 paid in one piece
         {std::tuple{-3, false, 0.0f, "0"},
          {0, false, 0.0f, "0"},
          {0, true, 0.0f, "0"},
          {1, false, 0.02f, "20"},
          {5, false, 0.02f, "20"},
          {6, false, 0.05f, "50"},
          {15, false, 0.05f, "50"},
          {16, false, 0.10f, "100"},
          {1, true, 0.15f, "150"},
          {200, true, 0.15f, "150"}}) {
        SCOPED_TRACE(testing::Message() << days << (severe ? " severe" : ""));
        EXPECT_EQ(rw::PRPenRate(static_cast<std::int16_t>(days), severe), rate);
        rw::Case c = PayrollCase();
        AddDeposit(c, D(2016, 5, 16), "1,000.00", D(2016, 8, 1), severe);
        AddPayment(c, D(2016, 5, 16) + days, {.tax = "1,000.00"});
        EXPECT_EQ(Pieces(c), Texts{"5/16/2016: 1,000.00 - 1,000.00 on "
                                   + rw::FormatShortDate(D(2016, 5, 16) + days) + " = 0.00; "
                                   + std::to_string(days) + ", " + rw::FormatMoney(M(penalty))});
    }
}

// A piece's penalty is kept to four decimals, then to the cent, halves to even both times.
TEST(PayrollPenalty, PieceRoundingHalvesGoToTheEvenCent)
{
    for (const auto& [base, rate, penalty] : {
             std::tuple{"0.50", 0.05f, "0.02"},  // 0.0250 -> 0.02
             std::tuple{"0.70", 0.05f, "0.04"},  // 0.0350 -> 0.04
             std::tuple{"0.1009", 0.05f, "0"},  // 0.005045 -> 0.0050 -> 0.00
             std::tuple{"0.1011", 0.05f, "0.01"},  // 0.005055 -> 0.0051 -> 0.01
             std::tuple{"0.1010", 0.05f, "0"},  // 0.00505, a half: the even 0.0050 -> 0.00
             std::tuple{"0.0025", 0.02f, "0"},  // 0.00005 -> 0.0000
             std::tuple{"1234.5678", 0.15f, "185.19"}  // 185.18517 -> 185.1852 -> 185.19
         })
        EXPECT_EQ(rw::PRPiecePenalty(M(base), rate), M(penalty)) << base;

    rw::Case c = PayrollCase();  // a deposit without a due date overflows the day count
    AddDeposit(c, rw::NoDate, "1,000.00", D(2016, 8, 1));
    EXPECT_TRUE(FaultOf([&] { Pieces(c); }).starts_with("6 CalcUSPRPen: "));
}

// Pieces: 1,000.00 paid 4/25 (10 days, 5 %: 50.00); 200.00 of the second paid
// 4/25 (10.00), its 300.00 unpaid at the stop date (10 %: 30.00); the third
// unpaid (20.00). Every piece of the two deposits due 4/15 takes the first
// one's assessment date.
TEST(PayrollPenalty, LiabilitiesAndPenaltiesOnTheTimeLine)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 9, 1));
    AddDeposit(c, D(2016, 4, 15), "500.00", D(2016, 10, 1));
    AddDeposit(c, D(2016, 5, 16), "200.00", D(2016, 10, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = "1,200.00"});
    rw::USPenalties pen(Minimums2018());
    rw::TimeLine tl;
    rw::BuildTimeLine(c, SimpleTable(0.05f), tl, &pen);
    EXPECT_EQ(pen.prTable.size(), 4u);
    Texts points;
    for (const char* code : {"DDD ", "PDP "})
        for (const rw::TLPoint& p : PointsWithCode(tl, code))
            points.push_back(rw::FormatShortDate(p.dtDate) + " " + p.sDesc.trimmed() + " "
                             + rw::FormatMoney(p.cTax) + " " + rw::FormatMoney(p.cPen));
    EXPECT_EQ(points,
              (Texts{"4/15/2016 PR Liability 1,000.00 0.00", "4/15/2016 PR Liability 500.00 0.00",
                     "5/16/2016 PR Liability 200.00 0.00", "9/1/2016 PR Penalty 0.00 50.00",
                     "9/1/2016 PR Penalty 0.00 10.00", "9/1/2016 PR Penalty 0.00 30.00",
                     "10/1/2016 PR Penalty 0.00 20.00"}));
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
    EXPECT_TRUE(msgs.shown.empty() && msgs.beeps == 1);
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"OnTime", "Late"}));
    c = TwoPayments("200.20");  // 10.01 saved
    RecordingProgress progress;
    rw::GetLowestPRPen(c, msgs, &progress);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_TRUE(msgs.shown[0].title == "Savings To Employer"
                && msgs.shown[0].icon == rw::MsgIcon::Information);
    EXPECT_EQ(
        msgs.shown[0].text,
        "The employer saved $10 by having the Brindlecote optimize the application of deposits to "
        "liabilities. The program calculated penalties for all 2 ways the payments could have been "
        "arranged. Please refer to Rev. Proc. 99-10 and IRC Section 6656(e) to properly report the "
        "application of deposits.");
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"OnTime", "Late"}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 2");
    EXPECT_EQ(rw::GetFactorial(12),
              479001600);  // the most orders; 13! = 6,227,020,800 is beyond 32 bits
    EXPECT_TRUE(FaultOf([] { rw::GetFactorial(13); }).starts_with("6 GetFactorial: "));
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
    EXPECT_EQ(
        msgs.shown[0].text,
        "Due to time and memory that it takes to calculate penalties for all permutations of 10 or "
        "more "
        "payments, this program can not automatically match payments with payroll liabilities. "
        "Make sure "
        "you have entered payments in the order that you want them to be applied.\n\nIf you need "
        "payments "
        "matched automatically for larger cases, please write to Ratewright support and ask about "
        "extending this capability.");
    EXPECT_EQ(msgs.beeps, 0);
}

// A required deposit below zero: no order can pay it, so nothing is searched
// (the plain search it would need takes minutes) and the list stays.
TEST(Arrange, ADepositBelowZeroIsNotArranged)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    AddDeposit(c, D(2016, 5, 15), "-50.00", D(2016, 8, 1));
    AddPayments(c, {{D(2016, 5, 5), "A"}, {D(2016, 4, 15), "B"}});
    const rw::Case before = c;
    RecordingMessages msgs;
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(c, before);
    ASSERT_EQ(msgs.texts(),
              std::vector<std::string>{
                  "The payments cannot be arranged: deposit 2 (due 5/15/2016) has a required "
                  "amount below zero, -50.00.  A required deposit is what the employer owed; "
                  "please correct it in the payroll deposit list."});
    EXPECT_EQ(msgs.beeps, 0);
}

// Deposit 100.00 due 4/15: A is 20 days late (10 %), B and C on time; the
// orders beginning with B or C cost 0, the first of them in table order is
// 1, 0, 2 (B, A, C). Without deposits every order costs 0: the order entered
// stays; without payments nothing is searched.
TEST(Arrange, FirstOfTheCheapestOrdersInTableOrderWins)
{
    rw::Case c = PayrollCase();
    AddPayments(c, {{D(2016, 5, 5), "A"}, {D(2016, 4, 15), "B"}, {D(2016, 4, 14), "C"}});
    RecordingMessages msgs;
    RecordingProgress progress;
    rw::GetLowestPRPen(c, msgs, &progress);
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 6");
    AddDeposit(c, D(2016, 4, 15), "100.00", D(2016, 8, 1));
    rw::GetLowestPRPen(c, msgs);
    EXPECT_EQ(Descriptions(c), (std::vector<std::string>{"B", "A", "C"}));
    EXPECT_TRUE(msgs.shown.empty());
    rw::Case none = PayrollCase();
    AddDeposit(none, D(2016, 4, 15), "100.00", D(2016, 8, 1));
    rw::GetLowestPRPen(none, msgs);
    EXPECT_EQ(msgs.beeps, 2);  // one for each search made, none without payments

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
    const char* amounts[]
        = {"0", "-50.00", "100.00", "150.00", "200.00", "250.00", "333.33", "0.70", "1,000.00"};
    int rearranged = 0;
    for (int trial = 0; trial < 1000; ++trial) {
        rw::Case c = PayrollCase();
        Date due = D(2016, 4, 1);
        for (int k = 0, deposits = pick(0, 6); k < deposits; ++k) {
            due = due + pick(0, 12);  // sorted, some on one day
            AddDeposit(c, due, amounts[pick(0, 40) == 0 ? pick(0, 1) : pick(2, 8)], D(2016, 8, 1),
                       pick(0, 5) == 0);
        }
        for (int i = 0, n = pick(1, 7); i < n; ++i)
            AddPayment(c, D(2016, 4, 1) + pick(0, 60),
                       {.tax = amounts[pick(0, 8)], .desc = std::to_string(i)});
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

}  // namespace
