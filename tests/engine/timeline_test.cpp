#include "enginetest.h"

#include "base/fault.h"
#include "engine/timeline.h"

#include <gtest/gtest.h>

using namespace enginetest;

namespace {

std::vector<std::string> Codes(const rw::TimeLine& tl)
{
    std::vector<std::string> out;
    for (const rw::TLPoint& p : tl)
        out.push_back(rw::FormatMMDDYYYY(p.dtDate) + " " + p.sCode.str() + " " + p.sDesc.trimmed());
    return out;
}

const rw::RateTable kHalves = {Row(D(2017, 1, 1), D(2017, 6, 30), 0.04f), Row(D(2017, 7, 1), D(2017, 12, 31), 0.04f)};

TEST(TimeLine, PlainCaseHasStartStopAndOnePointPerRateRow)
{
    rw::Case c = Federal(D(2017, 2, 1), D(2017, 9, 30), "100");
    EXPECT_EQ(rw::CountPoints(c, kHalves), 4);
    c.init.bPayroll = rw::kYes;
    EXPECT_EQ(rw::CountPoints(c, kHalves), 5);
    c.init.dtIntSuspend = D(2017, 3, 1);
    c.init.dtRestart = D(2017, 4, 1);
    EXPECT_EQ(rw::CountPoints(c, kHalves), 7);
    c.init.bCorpUPRate = c.init.bCorpOPRate = rw::kYes;
    EXPECT_EQ(rw::CountPoints(c, kHalves), 9);
    c.init.sTaxAuth = "CAP ";  // no corporate starts for a state
    EXPECT_EQ(rw::CountPoints(c, kHalves), 7);
    c.init.dtIntSuspend = rw::NoDate;
    EXPECT_EQ(rw::CountPoints(c, kHalves), 5);
}

// Points of one day: in code order, and in creation order among equal codes.
TEST(TimeLine, SortsByDateThenCodeKeepingCreationOrder)
{
    rw::Case c = Federal(D(2017, 2, 1), D(2017, 6, 30), "100");
    c.init.bPayroll = rw::kYes;
    c.init.dtDue = D(2017, 2, 1);
    c.init.dtIntSuspend = D(2017, 3, 1);
    c.init.dtRestart = D(2017, 3, 1);
    c.init.bCorpUPRate = rw::kYes;
    c.init.dtCorpUPRateStart = D(2017, 2, 1);
    AddPayment(c, D(2017, 6, 30), "1", "0", "0", "On stop");
    AddPayment(c, D(2017, 2, 1), "1", "0", "0", "On start B");
    AddPayment(c, D(2017, 2, 1), "1", "0", "0", "On start C");
    AddCharge(c, D(2017, 2, 1), "5", "0", "Charge");
    AddPayment(c, D(2016, 1, 1), "1", "0", "0", "Early");
    rw::TimeLine tl;
    rw::BuildTimeLine(c, kHalves, tl, nullptr);
    EXPECT_EQ(Codes(tl), (std::vector<std::string>{
                             "01/01/2016 PMT  Early",
                             "02/01/2017 0BT  Start Interest",
                             "02/01/2017 CUP  Corp Unrpmt Rate",
                             "02/01/2017 OTHC Charge",
                             "02/01/2017 PMT  On start B",
                             "02/01/2017 PMT  On start C",
                             "02/01/2017 PRD  T/R due next day",
                             "03/01/2017 ST0  Suspend Int.",
                             "03/01/2017 ST1  Restart Int",
                             "06/30/2017 PMT  On stop",
                             "06/30/2017 ZRT  End Rate Period",
                             "06/30/2017 ZZSD Stop Interest",
                             "12/31/2017 ZRT  End Rate Period",
                         }));
    EXPECT_EQ(tl[1].sSortCode.str(), "201702010BT ");
    EXPECT_EQ(tl[1].cTax, M("100"));
    EXPECT_EQ(tl[9].cTax, M("-1"));
    EXPECT_EQ(tl[3].cTax, M("5"));
    EXPECT_EQ(rw::FindPointByCode(tl, "ZZSD"), 11);
    EXPECT_EQ(rw::FindPointByCode(tl, "FFP "), -1);
}

TEST(TimeLine, TaxToDateSumsThroughTheDay)
{
    rw::Case c = Federal(D(2017, 2, 1), D(2017, 6, 30), "100");
    AddPayment(c, D(2017, 3, 1), "30", "5", "7");
    AddCharge(c, D(2017, 1, 15), "10", "20");
    rw::TimeLine tl;
    rw::BuildTimeLine(c, kHalves, tl, nullptr);
    rw::TLPoint totals;
    totals.cInt = M("9");
    EXPECT_EQ(rw::GetTaxToDate(tl, totals, D(2017, 1, 14)), Money());
    EXPECT_EQ(rw::GetTaxToDate(tl, totals, D(2017, 2, 28)), M("110"));
    EXPECT_EQ(totals.cPen, M("20"));
    EXPECT_EQ(totals.cInt, Money());
    EXPECT_EQ(rw::GetTaxToDate(tl, totals, D(2017, 3, 1)), M("80"));  // the payment's day counts
    EXPECT_EQ(totals.cPen, M("13"));
}

// The penalty calculators append through MakeTLPoint, only when the case has
// penalties on; their points are sorted in with the others.
class FakePenalties : public rw::PenaltyCalculators {
public:
    void AddUSPenaltyPts(const rw::Case& c, rw::TimeLine& tl, std::int16_t& next) override
    {
        ++calls;
        EXPECT_EQ(static_cast<std::size_t>(next), tl.size());
        rw::TLPoint p;
        p.dtDate = c.init.tlStart.dtDate + 10;
        p.sDesc = "Failure To File";
        p.sCode = "FFP ";
        p.cPen = M("50");
        rw::MakeTLPoint(p, tl, next);
    }
    int calls = 0;
};

TEST(TimeLine, PenaltyPointsComeThroughTheSeam)
{
    rw::Case c = Federal(D(2017, 2, 1), D(2017, 6, 30), "100");
    FakePenalties pen;
    rw::TimeLine tl;
    rw::BuildTimeLine(c, kHalves, tl, &pen);
    EXPECT_EQ(pen.calls, 0);
    c.init.bAnyPenalties = rw::kYes;
    rw::BuildTimeLine(c, kHalves, tl, &pen);
    c.init.sTaxAuth = "CAP ";
    rw::BuildTimeLine(c, kHalves, tl, &pen);
    EXPECT_EQ(pen.calls, 2);
    ASSERT_EQ(tl.size(), 5u);
    EXPECT_EQ(tl[1].sCode.str(), "FFP ");
    EXPECT_EQ(tl[1].sSortCode.str(), "20170211FFP ");
}

TEST(TimeLine, MoreThan32767PointsIsAnOverflow)
{
    rw::Case c = Federal(D(2017, 2, 1), D(2017, 6, 30), "100");
    rw::RateTable big(32765, Row(D(2017, 1, 1), D(2017, 12, 31), 0.04f));
    EXPECT_EQ(rw::CountPoints(c, big), 32767);
    rw::TimeLine tl;
    rw::BuildTimeLine(c, big, tl, nullptr);
    std::int16_t next = 32767;
    EXPECT_EQ(FaultOf([&] { rw::MakeTLPoint(rw::TLPoint{}, tl, next); }),
              "6 MakeTLPoint: more than 32,767 time line points");
    big.push_back(big.back());
    EXPECT_EQ(FaultOf([&] { rw::CountPoints(c, big); }), "6 CountPoints: more than 32,767 time line points");
}

}  // namespace
