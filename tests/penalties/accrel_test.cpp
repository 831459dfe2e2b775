// The accuracy-related penalty of I.R.C. §6662.

#include "penalties/accrel.h"
#include "penalties/compute.h"

#include "pentest.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;

struct AccRelCase {
    const char* name;
    const char* underpayment;
    float rate;
    std::int64_t expectedRaw;  // ten-thousandths
};

class AccuracyRelated : public ::testing::TestWithParam<AccRelCase> {};

TEST_P(AccuracyRelated, PenaltyIsUnderpaymentTimesTheSingleRate)
{
    const AccRelCase& a = GetParam();
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "0");
    c.init.cAccRelAmt = M(a.underpayment);
    c.init.fAccRelRate = a.rate;
    EXPECT_EQ(rw::AccRelPenalty(c.init), Money::fromRaw(a.expectedRaw));
}

INSTANTIATE_TEST_SUITE_P(
    Rates, AccuracyRelated,
    ::testing::Values(
        // 0.2f is 0.20000000298...: 10,000 x that = 2,000.0000298 -> 2,000.0000.
        AccRelCase{"Normal", "10,000.00", 0.2f, 20'000'000},
        // 0.4f is 0.4000000059604645: 4,000.000059604645 -> 4,000.0001.
        AccRelCase{"EconomicSubstance", "10,000.00", 0.4f, 40'000'001},
        // 0.25 is exact: 1,234.57 x 0.25 = 308.6425.
        AccRelCase{"TypedRate", "1,234.57", 0.25f, 3'086'425}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(AccuracyRelatedPoint, DatedOnTheExtendedDueDate)
{
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "0");
    c.init.dtExtended = D(10, 15, 2016);
    c.init.bAnyPenalties = c.init.bAccRel = rw::kYes;
    c.init.cAccRelAmt = M("10,000.00");
    c.init.fAccRelRate = 0.4f;
    rw::USPenalties pen(rwtest::Minimums2018());
    rw::TimeLine tl;
    rw::BuildTimeLine(c, SimpleTable(0.05f), tl, &pen);
    const auto par = PointsWithCode(tl, "PAR ");
    ASSERT_EQ(par.size(), 1u);
    EXPECT_EQ(par[0].dtDate, D(10, 15, 2016));
    EXPECT_EQ(par[0].cPen, Money::fromRaw(40'000'001));
    EXPECT_EQ(par[0].cTax, Money());
    EXPECT_TRUE(par[0].sDesc.is("Accuracy Rel"));
}

}  // namespace
