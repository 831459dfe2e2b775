// The failure-to-deposit penalty of I.R.C. §6656: pieces of each deposit, the
// rate by days late, rounding, and the points on the time line.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/compute.h"
#include "penalties/payroll.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

// A payroll quarter from 4/1/2016 to 12/31/2016, return due 7/31/2016.
rw::Case PayrollCase()
{
    rw::Case c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = rw::kYes;
    return c;
}

std::vector<rw::PRPenTblElement> Table(const rw::Case& c)
{
    std::vector<rw::PRPenTblElement> t;
    rw::CalcUSPRPen(c, c.payments(), t);
    return t;
}

TEST(PayrollPenalty, UnpaidDepositsCountAsPaidOnTheStopDate)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    AddDeposit(c, D(2016, 5, 16), "2,000.00", D(2016, 8, 1), true);
    const auto t = Table(c);
    ASSERT_EQ(t.size(), 2u);
    EXPECT_EQ(t[0].cPaid, Money());
    EXPECT_EQ(t[0].dtPaid, D(2016, 12, 31));
    EXPECT_EQ(t[0].nDaysLate, 260);  // 4/15 to 12/31/2016
    EXPECT_EQ(t[0].cBase, M("1,000.00"));
    EXPECT_EQ(t[0].cEndBal, M("1,000.00"));
    EXPECT_EQ(t[0].cPenalty, M("100.00"));  // 10 %
    EXPECT_EQ(t[1].fRate, 0.15f);           // §6656(b)(1)(B)
    EXPECT_EQ(t[1].cPenalty, M("300.00"));  // 2,000.00 x 15 %
    EXPECT_EQ(rw::TotalPRPenalty(t), M("400.00"));
}

TEST(PayrollPenalty, RateByDaysLate)
{
    struct Want {
        int days;
        bool severe;
        float rate;
        const char* penalty;  // on 1,000.00
    };
    for (const Want& w : {Want{-3, false, 0.0f, "0"}, Want{0, false, 0.0f, "0"}, Want{0, true, 0.0f, "0"},
                          Want{1, false, 0.02f, "20"}, Want{5, false, 0.02f, "20"}, Want{6, false, 0.05f, "50"},
                          Want{15, false, 0.05f, "50"}, Want{16, false, 0.10f, "100"}, Want{1, true, 0.15f, "150"},
                          Want{200, true, 0.15f, "150"}}) {
        SCOPED_TRACE(testing::Message() << w.days << (w.severe ? " severe" : ""));
        EXPECT_EQ(rw::PRPenRate(static_cast<std::int16_t>(w.days), w.severe), w.rate);
        rw::Case c = PayrollCase();
        AddDeposit(c, D(2016, 5, 16), "1,000.00", D(2016, 8, 1), w.severe);
        AddPayment(c, D(2016, 5, 16) + w.days, {.tax = "1,000.00"});
        const auto t = Table(c);
        ASSERT_EQ(t.size(), 1u);  // paid in one piece
        EXPECT_EQ(t[0].cPaid, M("1,000.00"));
        EXPECT_EQ(t[0].cEndBal, Money());
        EXPECT_EQ(t[0].nDaysLate, w.days);
        EXPECT_EQ(t[0].cPenalty, M(w.penalty));
    }
}

TEST(PayrollPenalty, TheRestOfALargerPaymentPaysTheNextDeposit)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    AddDeposit(c, D(2016, 4, 30), "1,000.00", D(2016, 8, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = "1,500.00"});
    AddPayment(c, D(2016, 4, 16), {.tax = "0"});  // no positive tax part: pays nothing
    AddPayment(c, D(2016, 4, 17), {.tax = "-100.00"});
    AddPayment(c, D(2016, 5, 10), {.tax = "500.00"});
    const auto t = Table(c);
    ASSERT_EQ(t.size(), 3u);
    EXPECT_EQ(t[0].cPaid, M("1,000.00"));  // 10 days late, 5 %
    EXPECT_EQ(t[0].cPenalty, M("50.00"));
    EXPECT_EQ(t[1].cBegBal, M("1,000.00"));  // the rest, 500.00, 5 days early: 0
    EXPECT_EQ(t[1].cPaid, M("500.00"));
    EXPECT_EQ(t[1].nDaysLate, -5);
    EXPECT_EQ(t[1].cEndBal, M("500.00"));
    EXPECT_EQ(t[1].cPenalty, Money());
    EXPECT_EQ(t[2].cBegBal, M("500.00"));  // its last 500.00 paid 10 days late: 25.00
    EXPECT_EQ(t[2].dtPaid, D(2016, 5, 10));
    EXPECT_EQ(t[2].cPenalty, M("25.00"));
}

// A piece's penalty is kept to four decimals, then to the cent, halves to even both times.
TEST(PayrollPenalty, PieceRoundingHalvesGoToTheEvenCent)
{
    for (const auto& [base, rate, penalty] : {
             std::tuple{"0.50", 0.05f, "0.02"},        // 0.0250 -> 0.02
             std::tuple{"0.70", 0.05f, "0.04"},        // 0.0350 -> 0.04
             std::tuple{"0.1009", 0.05f, "0"},         // 0.005045 -> 0.0050 -> 0.00
             std::tuple{"0.1011", 0.05f, "0.01"},      // 0.005055 -> 0.0051 -> 0.01
             std::tuple{"0.0025", 0.02f, "0"},         // 0.00005 -> 0.0000
             std::tuple{"1234.5678", 0.15f, "185.19"}  // 185.18517 -> 185.1852 -> 185.19
         })
        EXPECT_EQ(rw::PRPiecePenalty(M(base), rate), M(penalty)) << base;
}

TEST(PayrollPenalty, DepositWithoutDueDateOverflowsTheDayCount)
{
    rw::Case c = PayrollCase();
    AddDeposit(c, rw::NoDate, "1,000.00", D(2016, 8, 1));
    EXPECT_TRUE(FaultOf([&] { Table(c); }).starts_with("6 CalcUSPRPen: "));
}

TEST(PayrollPenalty, LiabilitiesAndPenaltiesOnTheTimeLine)
{
    rw::Case c = PayrollCase();
    // two deposits due 4/15 assessed on different days: every piece of both takes the first one's
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 9, 1));
    AddDeposit(c, D(2016, 4, 15), "500.00", D(2016, 10, 1));
    AddDeposit(c, D(2016, 5, 16), "200.00", D(2016, 10, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = "1,200.00"});
    rw::USPenalties pen(Minimums2018());
    rw::TimeLine tl;
    rw::BuildTimeLine(c, SimpleTable(0.05f), tl, &pen);

    const auto ddd = PointsWithCode(tl, "DDD ");
    ASSERT_EQ(ddd.size(), 3u);
    EXPECT_EQ(ddd[0].cTax, M("1,000.00"));
    EXPECT_EQ(ddd[1].cTax, M("500.00"));
    EXPECT_EQ(ddd[2].dtDate, D(2016, 5, 16));
    EXPECT_TRUE(ddd[0].sDesc.is("PR Liability"));

    // pieces: 1,000.00 paid 4/25 (10 days, 5 %: 50.00); 200.00 of the second
    // paid 4/25 (10.00), its 300.00 unpaid at the stop date (10 %: 30.00); the
    // third unpaid (20.00)
    ASSERT_EQ(pen.prTable.size(), 4u);
    const auto pdp = PointsWithCode(tl, "PDP ");
    ASSERT_EQ(pdp.size(), 4u);
    Money total;
    for (const auto& p : pdp) {
        total += p.cPen;
        EXPECT_TRUE(p.sDesc.is("PR Penalty"));
    }
    EXPECT_EQ(total, M("110.00"));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(pdp[i].dtDate, D(2016, 9, 1)) << i;
    EXPECT_EQ(pdp[3].dtDate, D(2016, 10, 1));
    EXPECT_EQ(pdp[3].cPen, M("20.00"));
}

}  // namespace
