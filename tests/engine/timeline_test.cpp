// The time line: its points, their order, the tax to a date, the penalty seam
// and its size limit.
#include "support/casebuilder.h"

#include "engine/timeline.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

const rw::RateTable kHalves = {Row(D(2017, 1, 1), D(2017, 6, 30), 0.04f), Row(D(2017, 7, 1), D(2017, 12, 31), 0.04f)};

// Points of one day in code order, equal codes in the order they were made.
TEST(TimeLine, SortsByDateThenCodeKeepingCreationOrder)
{
    rw::Case c = FederalCase(D(2017, 2, 1), D(2017, 6, 30), "100");
    c.init.bPayroll = rw::kYes;
    c.init.dtIntSuspend = c.init.dtRestart = D(2017, 3, 1);
    c.init.bCorpUPRate = rw::kYes;
    c.init.dtCorpUPRateStart = D(2017, 2, 1);
    AddPayment(c, D(2017, 6, 30), {.tax = "1", .desc = "On stop"});
    AddPayment(c, D(2017, 2, 1), {.tax = "1", .desc = "On start B"});
    AddPayment(c, D(2017, 2, 1), {.tax = "1", .desc = "On start C"});
    AddCharge(c, D(2017, 2, 1), {.tax = "5"});
    AddPayment(c, D(2016, 1, 1), {.tax = "1", .desc = "Early"});
    rw::TimeLine tl;
    rw::BuildTimeLine(c, kHalves, tl, nullptr);
    std::vector<std::string> shown;
    for (const rw::TLPoint& p : tl)
        shown.push_back(rw::FormatMMDDYYYY(p.dtDate) + " " + p.sCode.str() + " " + p.sDesc.trimmed());
    EXPECT_EQ(shown, (std::vector<std::string>{"01/01/2016 PMT  Early", "02/01/2017 0BT  Start Interest",
                                               "02/01/2017 CUP  Corp Unrpmt Rate", "02/01/2017 OTHC Charge",
                                               "02/01/2017 PMT  On start B", "02/01/2017 PMT  On start C",
                                               "02/01/2017 PRD  T/R due next day", "03/01/2017 ST0  Suspend Int.",
                                               "03/01/2017 ST1  Restart Int", "06/30/2017 PMT  On stop",
                                               "06/30/2017 ZRT  End Rate Period", "06/30/2017 ZZSD Stop Interest",
                                               "12/31/2017 ZRT  End Rate Period"}));
    EXPECT_EQ(tl[1].sSortCode.str(), "201702010BT ");
    EXPECT_EQ(tl[1].cTax, M("100"));
    EXPECT_EQ(tl[3].cTax, M("5"));
    EXPECT_EQ(tl[9].cTax, M("-1"));
    EXPECT_EQ(rw::FindPointByCode(tl, "ZZSD"), 11);
    EXPECT_EQ(rw::FindPointByCode(tl, "FFP "), -1);
}

TEST(TimeLine, TaxToDateSumsThroughTheDay)
{
    rw::Case c = FederalCase(D(2017, 2, 1), D(2017, 6, 30), "100");
    AddPayment(c, D(2017, 3, 1), {.tax = "30", .interest = "5", .penalties = "7"});
    AddCharge(c, D(2017, 1, 15), {.tax = "10", .penalties = "20"});
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

// The penalty calculators append through MakeTLPoint, for a case with
// penalties on only; their points are sorted in with the others.
class FakePenalties : public rw::PenaltyCalculators {
public:
    void AddUSPenaltyPts(const rw::Case& c, rw::TimeLine& tl, std::int16_t& next) override
    {
        ++calls;
        EXPECT_EQ(static_cast<std::size_t>(next), tl.size());
        rw::TLPoint p;
        p.dtDate = c.init.tlStart.dtDate + 10;
        p.sCode = "FFP ";
        rw::MakeTLPoint(p, tl, next);
    }
    int calls = 0;
};

TEST(TimeLine, PenaltyPointsComeThroughTheSeam)
{
    rw::Case c = FederalCase(D(2017, 2, 1), D(2017, 6, 30), "100");
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
    EXPECT_EQ(tl[1].sSortCode.str(), "20170211FFP ");
}

TEST(TimeLine, MoreThan32767PointsIsAnOverflow)
{
    const rw::Case c = FederalCase(D(2017, 2, 1), D(2017, 6, 30), "100");
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
