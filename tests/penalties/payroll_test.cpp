// The failure-to-deposit penalty of I.R.C. §6656: pieces of each deposit, the
// rate by days late, rounding, and the points on the time line.

#include "penalties/compute.h"
#include "penalties/payroll.h"

#include "base/fault.h"

#include "pentest.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;
using rw::PRPenTblElement;

// A payroll quarter 4/1/2016 to 12/31/2016, return due 7/31/2016.
rw::Case payrollCase()
{
    rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    return c;
}

std::vector<PRPenTblElement> table(const rw::Case& c)
{
    std::vector<PRPenTblElement> t;
    rw::CalcUSPRPen(c, c.payments(), t);
    return t;
}

TEST(PayrollPenalty, NoPaymentsLeaveEachDepositUnpaidAtTheStopDate)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    AddDeposit(c, D(5, 16, 2016), "2,000.00", D(8, 1, 2016), true);
    const auto t = table(c);
    ASSERT_EQ(t.size(), 2u);
    EXPECT_EQ(t[0].cPaid, Money());
    EXPECT_EQ(t[0].dtPaid, D(12, 31, 2016));
    EXPECT_EQ(t[0].nDaysLate, 260);  // 4/15 to 12/31/2016
    EXPECT_EQ(t[0].cBase, M("1,000.00"));
    EXPECT_EQ(t[0].cEndBal, M("1,000.00"));
    EXPECT_EQ(t[0].fRate, 0.10f);
    EXPECT_EQ(t[0].cPenalty, M("100.00"));  // 1,000.00 x 10 %
    EXPECT_EQ(t[1].fRate, 0.15f);           // §6656(b)(1)(B)
    EXPECT_EQ(t[1].cPenalty, M("300.00"));  // 2,000.00 x 15 %
    EXPECT_EQ(rw::TotalPRPenalty(t), M("400.00"));
}

TEST(PayrollPenalty, PaymentEqualToTheDepositClosesItInOnePiece)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    AddDeposit(c, D(5, 16, 2016), "2,000.00", D(8, 1, 2016));
    AddPayment(c, D(4, 18, 2016), "1,000.00");
    AddPayment(c, D(5, 20, 2016), "2,000.00");
    const auto t = table(c);
    ASSERT_EQ(t.size(), 2u);
    EXPECT_EQ(t[0].cPaid, M("1,000.00"));
    EXPECT_EQ(t[0].cEndBal, Money());
    EXPECT_EQ(t[0].nDaysLate, 3);
    EXPECT_EQ(t[0].cPenalty, M("20.00"));  // 2 %
    EXPECT_EQ(t[1].dtPaid, D(5, 20, 2016));
    EXPECT_EQ(t[1].nDaysLate, 4);
    EXPECT_EQ(t[1].cPenalty, M("40.00"));  // 2,000.00 x 2 %
}

TEST(PayrollPenalty, RestOfALargerPaymentPaysTheNextDeposit)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    AddDeposit(c, D(4, 30, 2016), "1,000.00", D(8, 1, 2016));
    AddPayment(c, D(4, 25, 2016), "1,500.00");
    AddPayment(c, D(5, 10, 2016), "500.00");
    const auto t = table(c);
    ASSERT_EQ(t.size(), 3u);
    // 1,000.00 paid 10 days late at 5 %.
    EXPECT_EQ(t[0].cPaid, M("1,000.00"));
    EXPECT_EQ(t[0].cPenalty, M("50.00"));
    // The rest, 500.00, reaches the second deposit 5 days early: 0.
    EXPECT_EQ(t[1].cBegBal, M("1,000.00"));
    EXPECT_EQ(t[1].cPaid, M("500.00"));
    EXPECT_EQ(t[1].nDaysLate, -5);
    EXPECT_EQ(t[1].fRate, 0.0f);
    EXPECT_EQ(t[1].cEndBal, M("500.00"));
    // Its last 500.00 paid 10 days late: 25.00.
    EXPECT_EQ(t[2].cBegBal, M("500.00"));
    EXPECT_EQ(t[2].dtPaid, D(5, 10, 2016));
    EXPECT_EQ(t[2].cPenalty, M("25.00"));
}

TEST(PayrollPenalty, RateByDaysLate)
{
    struct Row {
        int days;
        bool severe;
        float rate;
        const char* penalty;  // on 1,000.00
    };
    const Row rows[] = {
        {-3, false, 0.0f, "0"},     {0, false, 0.0f, "0"},      {0, true, 0.0f, "0"},
        {1, false, 0.02f, "20"},    {5, false, 0.02f, "20"},    {6, false, 0.05f, "50"},
        {15, false, 0.05f, "50"},   {16, false, 0.10f, "100"},  {1, true, 0.15f, "150"},
        {200, true, 0.15f, "150"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(testing::Message() << r.days << (r.severe ? " severe" : ""));
        EXPECT_EQ(rw::PRPenRate(static_cast<std::int16_t>(r.days), r.severe), r.rate);
        rw::Case c = payrollCase();
        AddDeposit(c, D(5, 16, 2016), "1,000.00", D(8, 1, 2016), r.severe);
        AddPayment(c, D(5, 16, 2016) + r.days, "1,000.00");
        const auto t = table(c);
        ASSERT_EQ(t.size(), 1u);
        EXPECT_EQ(t[0].nDaysLate, r.days);
        EXPECT_EQ(t[0].cPenalty, M(r.penalty));
    }
}

TEST(PayrollPenalty, PieceRoundingHalvesGoToTheEvenCent)
{
    // 0.50 x 5 % = 0.0250 -> 0.02; 0.70 x 5 % = 0.0350 -> 0.04;
    // 0.1009 x 5 % = 0.005045 -> 0.0050 (four decimals) -> 0.00;
    // 0.1011 x 5 % = 0.005055 -> 0.0051 -> 0.01; 0.0025 x 2 % = 0.00005 -> 0.0000.
    EXPECT_EQ(rw::PRPiecePenalty(M("0.50"), 0.05f), M("0.02"));
    EXPECT_EQ(rw::PRPiecePenalty(M("0.70"), 0.05f), M("0.04"));
    EXPECT_EQ(rw::PRPiecePenalty(M("0.1009"), 0.05f), Money());
    EXPECT_EQ(rw::PRPiecePenalty(M("0.1011"), 0.05f), M("0.01"));
    EXPECT_EQ(rw::PRPiecePenalty(M("0.0025"), 0.02f), Money());
    EXPECT_EQ(rw::PRPiecePenalty(M("1234.5678"), 0.15f), M("185.19"));  // 185.185170 -> 185.1852 -> 185.19
}

TEST(PayrollPenalty, PaymentsWithoutAPositiveTaxPartNeverPay)
{
    rw::Case c = payrollCase();
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016));
    AddPayment(c, D(4, 16, 2016), "0");
    AddPayment(c, D(4, 17, 2016), "-100.00");
    AddPayment(c, D(4, 20, 2016), "1,000.00");
    const auto t = table(c);
    ASSERT_EQ(t.size(), 1u);
    EXPECT_EQ(t[0].dtPaid, D(4, 20, 2016));
    EXPECT_EQ(t[0].cPenalty, M("20.00"));  // 5 days late, 2 %
}

TEST(PayrollPenalty, DepositWithoutDueDateOverflowsTheDayCount)
{
    rw::Case c = payrollCase();
    AddDeposit(c, rw::NoDate, "1,000.00", D(8, 1, 2016));
    try {
        table(c);
        FAIL() << "no fault";
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), rw::kErrOverflow);
        EXPECT_EQ(f.procedure(), "CalcUSPRPen");
    }
}

TEST(PayrollPoints, LiabilitiesAndPenaltiesOnTheTimeLine)
{
    rw::Case c = payrollCase();
    // Two deposits due 4/15 with different assessment dates: every piece of both
    // takes the first one's.
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(9, 1, 2016));
    AddDeposit(c, D(4, 15, 2016), "500.00", D(10, 1, 2016));
    AddDeposit(c, D(5, 16, 2016), "200.00", D(10, 1, 2016));
    AddPayment(c, D(4, 25, 2016), "1,200.00");
    rw::USPenalties pen(rwtest::Minimums2018());
    rw::TimeLine tl;
    rw::BuildTimeLine(c, SimpleTable(0.05f), tl, &pen);

    const auto ddd = PointsWithCode(tl, "DDD ");
    ASSERT_EQ(ddd.size(), 3u);
    EXPECT_EQ(ddd[0].cTax, M("1,000.00"));
    EXPECT_EQ(ddd[1].cTax, M("500.00"));
    EXPECT_EQ(ddd[2].dtDate, D(5, 16, 2016));
    EXPECT_TRUE(ddd[0].sDesc.is("PR Liability"));

    // Pieces: 1,000.00 paid 4/25 (10 days, 5 %: 50.00); 200.00 of the second paid
    // 4/25 (10.00), its 300.00 unpaid at the stop date (10 %: 30.00); the third
    // unpaid (20.00).
    ASSERT_EQ(pen.prTable.size(), 4u);
    const auto pdp = PointsWithCode(tl, "PDP ");
    ASSERT_EQ(pdp.size(), 4u);
    Money total;
    for (const auto& p : pdp) {
        total += p.cPen;
        EXPECT_TRUE(p.sDesc.is("PR Penalty"));
    }
    EXPECT_EQ(total, M("110.00"));
    // Sorted by date: the three pieces of the 4/15 deposits on 9/1, the last on 10/1.
    EXPECT_EQ(pdp[0].dtDate, D(9, 1, 2016));
    EXPECT_EQ(pdp[1].dtDate, D(9, 1, 2016));
    EXPECT_EQ(pdp[2].dtDate, D(9, 1, 2016));
    EXPECT_EQ(pdp[3].dtDate, D(10, 1, 2016));
    EXPECT_EQ(pdp[3].cPen, M("20.00"));
}

}  // namespace
