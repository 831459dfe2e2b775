// The estimated tax penalty in a whole computation: its "ESP " point on the
// time line and its line in the summary, with interest from the notice and
// demand date, none without one.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "base/fault.h"
#include "penalties/compute.h"
#include "reports/summary.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

using Lines = std::vector<rw::SummaryLine>;

// A 2022 individual owing 400,000 with no usable prior year and nothing paid:
// 90 % is 360,000, four installments of 90,000 unpaid to 4/15/2023, at 3 %:
//   90,000 x 3 % x 365/365 (from 4/15/2022) = 2,700.00
//   90,000 x 3 % x 304/365 (from 6/15/2022) = 2,248.767 -> 2,248.77
//   90,000 x 3 % x 212/365 (from 9/15/2022) = 1,568.219 -> 1,568.22
//   90,000 x 3 % x  90/365 (from 1/15/2023) =   665.753 ->   665.75
// total 7,182.74. The case owes nothing else, 4/15 to 12/31/2023 at 3 %
// compounded daily: on a notice of 6/1/2023 interest runs 6/2-12/31, 213
// days: 7,182.74 x ((1 + 0.03/365)^213 - 1) = 7,182.74 x 0.0176603 = 126.849
// -> 126.85. A notice of 1/15/2023, before the start, counts from the start:
// 4/16-12/31, 260 days: 7,182.74 x 0.0215989 = 155.140 -> 155.14.
TEST(EstTaxInTheComputation, PointOnTheNoticeDateOrAfterTheStopAndTheSummaryLine)
{
    const rw::RateTable rates{Row(D(2000, 1, 1), D(2030, 12, 31), 0.03f)};
    const struct {
        const char* name;
        bool on;
        Date notice;
        Date pointDate;  // NoDate: no point
        Lines summary;
    } cases[] = {
        {"notice given",
         true,
         D(2023, 6, 1),
         D(2023, 6, 1),
         {{"Unpaid tax", M("0")},
          {"Interest", M("126.85")},
          {"Estimated tax penalty", M("7182.74")},
          {"Total", M("7309.59")}}},
        {"notice before the start: on the start date",
         true,
         D(2023, 1, 15),
         D(2023, 4, 15),
         {{"Unpaid tax", M("0")},
          {"Interest", M("155.14")},
          {"Estimated tax penalty", M("7182.74")},
          {"Total", M("7337.88")}}},
        {"no notice: the day after the stop date",
         true,
         rw::NoDate,
         D(2024, 1, 1),
         {{"Unpaid tax", M("0")},
          {"Interest", M("0")},
          {"Estimated tax penalty", M("7182.74")},
          {"Total", M("7182.74")}}},
        {"penalty off",
         false,
         D(2023, 6, 1),
         rw::NoDate,
         {{"Unpaid tax", M("0")}, {"Interest", M("0")}, {"Total", M("0")}}},
    };
    for (const auto& t : cases) {
        rw::Case c = FederalCase(D(2023, 4, 15), D(2023, 12, 31), "0");
        c.estTax = {.on = t.on,
                    .input = {.taxYear = 2022, .currentTax = M("400000")},
                    .noticeDate = t.notice};
        const rw::CaseComputation k = rw::ComputeCase(c, rates, Minimums2018());
        const auto esp = PointsWithCode(k.timeline, "ESP ");
        ASSERT_EQ(esp.size(), t.pointDate.isGiven() ? 1u : 0u) << t.name;
        if (!esp.empty()) {
            EXPECT_EQ(esp[0].dtDate, t.pointDate) << t.name;
            EXPECT_EQ(esp[0].cPen, M("7182.74")) << t.name;
        }
        EXPECT_EQ(rw::SummaryLines(k.timeline, k.kase.init, k.interest), t.summary) << t.name;
        EXPECT_EQ(k.kase.init.bAnyPenalties, c.init.bAnyPenalties) << t.name;
    }
}

// After the notice of 6/1/2023 the penalty is owed like any other: a payment of 7,500.00 on
// 7/1/2023 by the IRS method pays it after the tax (none) and before the interest, 30 days on
// 7,182.74 at 3 % compounded daily: 7,182.74 x ((1 + 0.03/365)^30 - 1) = 7,182.74 x 0.0024687
// = 17.732 -> 17.73; the 299.53 left goes to tax. Without a notice nothing is owed on 7/1 but
// tax: the whole payment goes to it.
TEST(EstTaxInTheComputation, APaymentAfterTheNoticePaysThePenaltyByTheIrsMethod)
{
    const rw::RateTable rates{Row(D(2000, 1, 1), D(2030, 12, 31), 0.03f)};
    const struct {
        const char* name;
        Date notice;
        const char* tax;
        const char* penalties;
        const char* interest;
    } cases[] = {
        {"notice before the payment", D(2023, 6, 1), "299.53", "7182.74", "17.73"},
        {"no notice", rw::NoDate, "7500", "0", "0"},
    };
    for (const auto& t : cases) {
        rw::Case c = FederalCase(D(2023, 4, 15), D(2023, 12, 31), "0");
        c.estTax = {.on = true,
                    .input = {.taxYear = 2022, .currentTax = M("400000")},
                    .noticeDate = t.notice};
        AddPayment(c, D(2023, 7, 1), {.tax = "7500", .method = "I"});
        const rw::CaseComputation k = rw::ComputeCase(c, rates, Minimums2018());
        const rw::PaymentRec& p = k.kase.pmts[0];
        EXPECT_EQ((std::array{p.cToTax, p.cToPen, p.cToInt}),
                  (std::array{M(t.tax), M(t.penalties), M(t.interest)}))
            << t.name;
    }
}

// The penalty runs from 4/15/2022; a table that begins in 2023 holds no rate
// for it: refused like a day of the case's own interest without a rate.
TEST(EstTaxInTheComputation, ADayWithoutARateIsRefused)
{
    rw::Case c = FederalCase(D(2023, 4, 15), D(2023, 12, 31), "0");
    c.estTax = {.on = true, .input = {.taxYear = 2022, .currentTax = M("400000")}};
    const rw::RateTable rates{Row(D(2023, 1, 1), D(2030, 12, 31), 0.03f)};
    EXPECT_THROW(rw::ComputeCase(c, rates, Minimums2018()), rw::Refusal);
}

}  // namespace
