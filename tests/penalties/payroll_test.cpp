// The failure-to-deposit penalty of I.R.C. §6656: pieces of each deposit, the
// rate by days late, rounding, and the points on the time line.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/compute.h"
#include "penalties/payroll.h"

#include <gtest/gtest.h>

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
    EXPECT_EQ(Pieces(c), (Texts{"4/15/2016: 1,000.00 - 0.00 on 12/31/2016 = 1,000.00; 260, 100.00",
                                "5/16/2016: 2,000.00 - 0.00 on 12/31/2016 = 2,000.00; 229, 300.00"}));

    c = PayrollCase();
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1));
    AddDeposit(c, D(2016, 4, 30), "1,000.00", D(2016, 8, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = "1,500.00"});
    AddPayment(c, D(2016, 4, 16), {.tax = "0"});
    AddPayment(c, D(2016, 4, 17), {.tax = "-100.00"});
    AddPayment(c, D(2016, 5, 10), {.tax = "500.00"});
    EXPECT_EQ(Pieces(c), (Texts{"4/15/2016: 1,000.00 - 1,000.00 on 4/25/2016 = 0.00; 10, 50.00",  // 5 %
                                "4/30/2016: 1,000.00 - 500.00 on 4/25/2016 = 500.00; -5, 0.00",  // early
                                "4/30/2016: 500.00 - 500.00 on 5/10/2016 = 0.00; 10, 25.00"}));
}

TEST(PayrollPenalty, RateByDaysLate)
{
    for (const auto& [days, severe, rate, penalty] :  // on 1,000.00 paid in one piece
         {std::tuple{-3, false, 0.0f, "0"}, {0, false, 0.0f, "0"}, {0, true, 0.0f, "0"}, {1, false, 0.02f, "20"},
          {5, false, 0.02f, "20"}, {6, false, 0.05f, "50"}, {15, false, 0.05f, "50"}, {16, false, 0.10f, "100"},
          {1, true, 0.15f, "150"}, {200, true, 0.15f, "150"}}) {
        SCOPED_TRACE(testing::Message() << days << (severe ? " severe" : ""));
        EXPECT_EQ(rw::PRPenRate(static_cast<std::int16_t>(days), severe), rate);
        rw::Case c = PayrollCase();
        AddDeposit(c, D(2016, 5, 16), "1,000.00", D(2016, 8, 1), severe);
        AddPayment(c, D(2016, 5, 16) + days, {.tax = "1,000.00"});
        EXPECT_EQ(Pieces(c), Texts{"5/16/2016: 1,000.00 - 1,000.00 on " + rw::FormatShortDate(D(2016, 5, 16) + days)
                                   + " = 0.00; " + std::to_string(days) + ", " + rw::FormatMoney(M(penalty))});
    }
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
            points.push_back(rw::FormatShortDate(p.dtDate) + " " + p.sDesc.trimmed() + " " + rw::FormatMoney(p.cTax)
                             + " " + rw::FormatMoney(p.cPen));
    EXPECT_EQ(points, (Texts{"4/15/2016 PR Liability 1,000.00 0.00", "4/15/2016 PR Liability 500.00 0.00",
                             "5/16/2016 PR Liability 200.00 0.00", "9/1/2016 PR Penalty 0.00 50.00",
                             "9/1/2016 PR Penalty 0.00 10.00", "9/1/2016 PR Penalty 0.00 30.00",
                             "10/1/2016 PR Penalty 0.00 20.00"}));
}

}  // namespace
