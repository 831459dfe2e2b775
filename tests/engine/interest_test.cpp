// The time line and the interest computation. A row's interest is base x
// factor kept to the ten-thousandth, then to the cent, halves to even; factor
// = (1 + rate / basis)^days - 1 compounding daily, rate x days / 365 simple.
// Rates are singles: 0.08f = 0.0799999982..., written "8 %" below.
#include "support/casebuilder.h"

#include "base/fault.h"
#include "engine/intcalc.h"

#include <gtest/gtest.h>

#include <limits>

using namespace rwtest;
using rw::ResultPeriod;

namespace {

struct Outcome {
    std::vector<ResultPeriod> rows;
    rw::TimeLine tl;
    Money total;
};

Outcome Compute(const rw::Case& c, const rw::RateTable& t)
{
    Outcome r;
    r.total = rw::GetInterest(c, t, nullptr, r.rows, r.tl);
    return r;
}

// The rows as "begin-end description days interest" (description "-": never set).
std::vector<std::string> Rows(const Outcome& run)
{
    std::vector<std::string> out;
    for (const ResultPeriod& r : run.rows)
        out.push_back(rw::FormatShortDate(r.dtBegin) + "-" + rw::FormatShortDate(r.dtEnd) + " "
                      + (r.sDesc.isUnset() ? "-" : r.sDesc.trimmed()) + " "
                      + std::to_string(r.nDays) + " " + rw::FormatMoney(r.cInterest));
    return out;
}
using Texts = std::vector<std::string>;

const rw::RateTable kOneRow8 = {Row(D(2015, 1, 1), D(2018, 12, 31), 0.08f)};

TEST(Interest, OnePeriodIsBaseTimesFactorToTheTenThousandthThenTheCent)
{
    for (const auto& [start, stop, rate, method, balance, interest] :
         {// (1 + 0.08/365)^31 - 1 = 0.0068169059; x 10,000 = 68.169059 -> 68.1691 -> 68.17,
          // with any method but S
          std::tuple{D(2017, 1, 1), D(2017, 2, 1), 0.08f, 'C', "10000", "68.17"},
          {D(2017, 1, 1), D(2017, 2, 1), 0.08f, 'X', "10000", "68.17"},
          // a row beginning in 2016 (divisible by 4) on 366 days: 0.0067982194 -> 67.9822 -> 67.98
          {D(2016, 1, 1), D(2016, 2, 1), 0.08f, 'C', "10000", "67.98"},
          // 12/2/2015-1/31/2016 takes 365 for all 61 days: 0.0134581543 -> 134.5815 -> 134.58
          {D(2015, 12, 1), D(2016, 1, 31), 0.08f, 'C', "10000", "134.58"},
          // simple counts 365 in every year: 0.08 x 31 / 365 = 0.0067945204 -> 67.9452 -> 67.95
          {D(2016, 1, 1), D(2016, 2, 1), 0.08f, 'S', "10000", "67.95"},
          // 0.25 x 73 / 365 = 0.05; 10,000.50 x 0.05 = 500.025 -> 500.0250 -> 500.02, the half to
          // even
          {D(2017, 1, 1), D(2017, 3, 15), 0.25f, 'S', "10000.50", "500.02"}}) {
        const Outcome run = Compute(FederalCase(start, stop, balance),
                                    {Row(D(2015, 1, 1), D(2018, 12, 31), rate, 0.0f, method)});
        ASSERT_EQ(run.rows.size(), 2u)
            << interest;  // the start row and one interest row, none for the stop point
        EXPECT_EQ(run.rows[1].dtBegin, start + 1);
        EXPECT_EQ(run.rows[1].fRate, rate);
        EXPECT_EQ(run.total, M(interest));
    }
}

// 8 % for 1/2-3/31/2017 (89 days), 7 % for 4/1-4/30 (30 days):
//   compound: (1 + 0.08/365)^89 - 1 = 0.0196961711 x 10,000 -> 196.96;
//             (1 + 0.07/365)^30 - 1 = 0.0057694526 x 10,196.96 = 58.8309 -> 58.83
//   simple:   0.08 x 89 / 365 x 10,000 = 195.0685 -> 195.07; 0.07 x 30 / 365 x 10,000 = 57.5342
//   -> 57.53
TEST(Interest, CompoundingRowsEarnOnAccruedInterestSimpleRowsDoNot)
{
    rw::RateTable t
        = {Row(D(2017, 1, 1), D(2017, 3, 31), 0.08f), Row(D(2017, 4, 1), D(2017, 6, 30), 0.07f)};
    const rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 4, 30), "10000");
    const Outcome run = Compute(c, t);
    EXPECT_EQ(Rows(run), (Texts{"1/1/2017-1/1/2017 Start Interest 0 0.00",
                                "1/2/2017-3/31/2017 Compound Int. 89 196.96",
                                "4/1/2017-4/30/2017 Compound Int. 30 58.83"}));
    EXPECT_EQ(run.rows[2].cAccruedInt, M("196.96"));
    EXPECT_EQ(run.total, M("255.79"));
    for (auto& row : t)
        row.sCalcMethod = 'S';
    const Outcome simple = Compute(c, t);
    EXPECT_EQ(Rows(simple)[2], "4/1/2017-4/30/2017 Simple Int. 30 57.53");
    EXPECT_EQ(simple.total, M("252.60"));
}

// 4,000.00 to tax and 10.00 to interest on 1/31/2017, 8 %:
//   1/2-1/31, 30 days: 0.0065962821 x 10,000 -> 65.96
//   2/1-3/1, 29 days on 6,000 + 65.96 - 10 = 6,055.96: 0.0063757066 x 6,055.96 = 38.6110 -> 38.61
// An event's own interest rounds to the cent, halves to even.
TEST(Interest, APaymentEndsTheRowOnItsDayAndLowersTheBalanceFromTheNext)
{
    rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(2017, 1, 31), {.tax = "4000", .interest = "10"});
    const Outcome run = Compute(c, kOneRow8);
    EXPECT_EQ(Rows(run), (Texts{"1/1/2017-1/1/2017 Start Interest 0 0.00",
                                "1/2/2017-1/31/2017 Compound Int. 30 65.96",
                                "1/31/2017-1/31/2017 Payment 0 -10.00",
                                "2/1/2017-3/1/2017 Compound Int. 29 38.61"}));
    EXPECT_EQ(run.rows[2].cTaxPen, M("6000"));
    EXPECT_EQ(run.rows[3].cTaxPen, M("6000"));
    EXPECT_EQ(run.total, M("94.57"));
    for (const auto& [paid, shown] :
         {std::pair{"12.345", "-12.34"}, {"12.355", "-12.36"}, {"12.3451", "-12.35"}}) {
        c.pmts[0].cToInt = M(paid);
        EXPECT_EQ(Compute(c, kOneRow8).rows[2].cInterest, M(shown)) << paid;
    }
}

// 4,000.00 paid on or outside the edges of 1/1-3/1/2017, 8 %, 59 days:
// (1 + 0.08/365)^59 - 1 = 0.0130140447; x 6,000 = 78.0843 -> 78.08; x 10,000 = 130.1404 -> 130.14.
TEST(Interest, APaymentCountsFromTheDayAfterItInsideTheCalculationOnly)
{
    for (const auto& [paid, total] : {std::pair{D(2017, 1, 1), "78.08"},
                                      {D(2016, 12, 1), "130.14"},
                                      {D(2017, 3, 2), "130.14"}}) {
        rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 3, 1), "10000");
        AddPayment(c, paid, {.tax = "4000"});
        const Outcome run = Compute(c, kOneRow8);
        EXPECT_EQ(run.rows.back().nDays, 59) << paid;
        EXPECT_EQ(run.total, M(total)) << paid;
    }
}

// Charges come before the payments of their day, payments in list order; an
// event without a description reads as the method of its period. A rate
// period's end closes the row and makes no event row: 8 % to 1/31, 9 % from
// 2/1: 65.96 (above), then 29 days at 9 %: (1 + 0.09/365)^29 - 1 = 0.0071754246;
// x (10,000 + 500 + 100 - 3,000 + 65.96) = 7,665.96: 55.0067 -> 55.01.
TEST(Interest, EventsOfOneDayAndTheEndOfARatePeriod)
{
    rw::RateTable t
        = {Row(D(2017, 1, 1), D(2017, 1, 31), 0.08f), Row(D(2017, 2, 1), D(2017, 12, 31), 0.09f)};
    rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(2017, 1, 31), {.tax = "1000", .desc = "First"});
    AddPayment(c, D(2017, 1, 31), {.tax = "2000"});
    c.pmts[1].sDesc = rw::FixedText<16>();
    AddCharge(c, D(2017, 1, 31), {.tax = "500", .penalties = "100", .desc = "Added"});
    const Outcome run = Compute(c, t);
    EXPECT_EQ(
        Rows(run),
        (Texts{"1/1/2017-1/1/2017 Start Interest 0 0.00",
               "1/2/2017-1/31/2017 Compound Int. 30 65.96", "1/31/2017-1/31/2017 Added 0 0.00",
               "1/31/2017-1/31/2017 First 0 0.00", "1/31/2017-1/31/2017 Compound 0 0.00",
               "2/1/2017-3/1/2017 Compound Int. 29 55.01"}));
    EXPECT_EQ(run.rows[2].cTaxPen, M("10600"));
    t[0].sCalcMethod = 'S';
    EXPECT_EQ(Compute(c, t).rows[4].sDesc.trimmed(), "Simple");
}

// Events on the stop date: the last row runs through the stop date on the
// balance before them; each follows as an event row whose interest counts.
// 1/2-2/1/2017, 31 days at 8 %: 68.17 (above).
TEST(Interest, EventsOnTheStopDateFollowTheLastRow)
{
    rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 2, 1), "10000");
    AddPayment(c, D(2017, 2, 1), {.tax = "10000", .interest = "68.17"});
    const Outcome run = Compute(c, kOneRow8);
    EXPECT_EQ(Rows(run), (Texts{"1/1/2017-1/1/2017 Start Interest 0 0.00",
                                "1/2/2017-2/1/2017 Compound Int. 31 68.17",
                                "2/1/2017-2/1/2017 Payment 0 -68.17"}));
    EXPECT_EQ(run.rows[1].cTaxPen, M("10000"));
    EXPECT_EQ(run.rows[2].cTaxPen, Money());
    EXPECT_EQ(run.total, Money());  // paid in full on the stop date, interest included

    c = FederalCase(D(2017, 1, 1), D(2017, 2, 1), "10000");
    AddCharge(c, D(2017, 2, 1),
              {.tax = "5000"});  // a charge on the stop date earns nothing that day
    EXPECT_EQ(Compute(c, kOneRow8).total, M("68.17"));
}

// A charge without an interest date runs from its date of liability, 1/31/2017:
// 1/2-1/31 on 10,000.00: 65.96; 2/1-3/1, 29 days on 11,065.96: 0.0063757066 x 11,065.96 = 70.5533
// -> 70.55.
TEST(Interest, AChargeWithoutInterestDateRunsFromItsLiability)
{
    for (const Date none : {Date(), rw::NoDate}) {
        rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 3, 1), "10000");
        AddCharge(c, D(2017, 1, 31), {.tax = "1000", .interestStart = none});
        EXPECT_EQ(Compute(c, kOneRow8).total, M("136.51"));
    }
}

// Interest runs through the suspension day, none accrues to the restart day,
// and it runs again from the day after, across quarters at 8 %:
//   1/2-3/15, 73 days: 0.0161269036 x 10,000 -> 161.27
//   5/11-6/30, 51 days: 0.0112395516 x 10,161.27 = 114.2081 -> 114.21
//   7/1-9/30, 92 days: 0.0203668032 x 10,275.48 = 209.2787 -> 209.28
//   10/1-12/31, 92 days: 0.0203668032 x 10,484.76 = 213.5410 -> 213.54
TEST(Interest, SuspensionAcrossRatePeriods)
{
    rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 12, 31), "10000");
    c.init.dtIntSuspend = D(2017, 3, 15);
    c.init.dtRestart = D(2017, 5, 10);
    const Outcome run = Compute(c, Quarterly(2017, 2017, 0.08f));
    EXPECT_EQ(Rows(run), (Texts{"1/1/2017-1/1/2017 Start Interest 0 0.00",
                                "1/2/2017-3/15/2017 Compound Int. 73 161.27",
                                "3/15/2017-3/15/2017 Int Suspended 0 0.00",
                                "3/16/2017-3/31/2017 Int Suspended 16 0.00",
                                "4/1/2017-5/10/2017 Int Suspended 40 0.00",
                                "5/10/2017-5/10/2017 Restart Int 0 0.00",
                                "5/11/2017-6/30/2017 Compound Int. 51 114.21",
                                "7/1/2017-9/30/2017 Compound Int. 92 209.28",
                                "10/1/2017-12/31/2017 Compound Int. 92 213.54"}));
}

// Rows before the due date earn nothing; a due date strictly inside the
// calculation closes its row, in a payroll case or not. 10,000.00 at 8 %:
// 2/16-3/31/2017, 44 days: (1 + 0.08/365)^44 - 1 = 0.0096894201 -> 96.8942 -> 96.89;
// 1/2-3/31, 89 days: 196.96 (above).
TEST(Interest, InterestRunsFromTheDayAfterTheDueDate)
{
    for (const auto& [due, payroll, total] : {std::tuple{D(2017, 2, 15), false, "96.89"},
                                              {D(2017, 2, 15), true, "96.89"},
                                              {D(2017, 1, 1), false, "196.96"},
                                              {D(2017, 3, 31), false, "0"},
                                              {D(2017, 4, 15), false, "0"}}) {
        rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 3, 31), "10000", due);
        c.init.bPayroll = rw::ToFlag(payroll);
        EXPECT_EQ(Compute(c, kOneRow8).total, M(total)) << due << payroll;
    }
    const Outcome run
        = Compute(FederalCase(D(2017, 1, 1), D(2017, 3, 31), "10000", D(2017, 2, 15)), kOneRow8);
    EXPECT_EQ(Rows(run),
              (Texts{"1/1/2017-1/1/2017 T/R Not Due 0 0.00", "1/2/2017-2/15/2017 - 45 0.00",
                     "2/15/2017-2/15/2017 T/R due next day 0 0.00",
                     "2/16/2017-3/31/2017 Compound Int. 44 96.89"}));
}

// No row crosses a year end: each takes the basis of the year it begins in.
// 100,000.00 at 8 % from 9/30/2023 to 12/31/2024:
//   10/1-12/31/2023, 92 days on 365: 0.0203668032 x 100,000 = 2,036.68;
//   2024, 366 days on 366: 0.0832775958 x 102,036.68 = 8,497.37; total 10,534.05.
// One row from 10/1/2023 to 12/31/2024 would take 365 for all 458 days:
//   0.1055827373 x 100,000 = 10,558.27.
TEST(Interest, RowsCutAtTheYearEndTakeEachYearsBasis)
{
    const rw::Case c = FederalCase(D(2023, 9, 30), D(2024, 12, 31), "100000");
    const rw::RateTable cut
        = {Row(D(2023, 10, 1), D(2023, 12, 31), 0.08f), Row(D(2024, 1, 1), D(2024, 12, 31), 0.08f)};
    EXPECT_EQ(Compute(c, cut).total, M("10534.05"));
    EXPECT_EQ(Compute(c, {Row(D(2023, 10, 1), D(2024, 12, 31), 0.08f)}).total, M("10558.27"));
}

// A state table with a hole in the second half of 2017 (no rate either way)
// and no refund rate published for 2018.
constexpr float kNoRate = std::numeric_limits<float>::quiet_NaN();
const rw::RateTable kHoleTable = {Row(D(2016, 1, 1), D(2016, 12, 31), 0.08f, 0.06f),
                                  Row(D(2017, 1, 1), D(2017, 6, 30), 0.08f, 0.06f),
                                  Row(D(2017, 7, 1), D(2017, 12, 31), kNoRate, kNoRate),
                                  Row(D(2018, 1, 1), D(2018, 12, 31), 0.08f, kNoRate)};

rw::Case Florida(Date start, Date stop, const char* balance, std::optional<Date> due = std::nullopt)
{
    rw::Case c = FederalCase(start, stop, balance, due);
    c.init.sTaxAuth = "FL  ";
    return c;
}

TEST(Interest, AMissingRateIsRefusedUnlessNothingIsOwed)
{
    struct Want {
        const char* name;
        rw::Case kase;
        std::vector<const char*> told;  // what the message says; empty: computed
    };
    for (const Want& w :
         {Want{"owedInAHole",
               Florida(D(2017, 1, 1), D(2017, 12, 31), "10000"),
               {"no published interest rate for 7/1/2017 to 12/31/2017",
                "balance in that period is not zero"}},
          Want{"overpaidInAHole",
               Florida(D(2017, 1, 1), D(2017, 8, 31), "-10000"),
               {"for 7/1/2017 to 12/31/2017"}},
          Want{"overpaidWithoutRefundRate",
               Florida(D(2018, 1, 1), D(2018, 3, 31), "-500"),
               {"no published overpayment (refund) rate for 1/1/2018 to 12/31/2018"}},
          Want{"owedWithoutRefundRate", Florida(D(2018, 1, 1), D(2018, 3, 31), "500"), {}},
          Want{"zeroWithoutRefundRate", Florida(D(2018, 1, 1), D(2018, 3, 31), "0"), {}},
          Want{"beforeTheTable",
               Florida(D(2015, 6, 30), D(2016, 6, 30), "10000"),
               {"begins on 1/1/2016", "needs a rate for 7/1/2015 to 12/31/2015",
                "Change the start date"}},
          Want{"afterTheTable",
               Florida(D(2018, 6, 30), D(2019, 2, 1), "10000"),
               {"ends on 12/31/2018", "needs a rate for 1/1/2019 to 2/1/2019",
                "Change the stop date"}},
          Want{"notYetDueBeforeTheTable",
               Florida(D(2015, 6, 30), D(2016, 6, 30), "10000", D(2016, 1, 1)),
               {}}}) {
        SCOPED_TRACE(w.name);
        std::string said = "no refusal";
        try {
            Compute(w.kase, kHoleTable);
        } catch (const rw::Refusal& r) {
            said = r.title() + ": " + std::string(r.text());
        }
        if (w.told.empty())
            EXPECT_EQ(said, "no refusal");
        else
            EXPECT_TRUE(said.starts_with("Interest Cannot Be Computed: The Florida rate table "))
                << said;
        for (const char* part : w.told)
            EXPECT_NE(said.find(part), std::string::npos) << said;
    }
}

// Paid in full, interest included, before the hole: the zero balance earns
// nothing there. 1/2-6/30/2017, 180 days at 8 %: 0.0402361254 x 10,000 -> 402.36.
TEST(Interest, AZeroBalanceEarnsNothingInAHole)
{
    rw::Case c = Florida(D(2017, 1, 1), D(2018, 3, 31), "10000");
    AddPayment(c, D(2017, 6, 30), {.tax = "10000", .interest = "402.36"});
    const Outcome run = Compute(c, kHoleTable);
    EXPECT_EQ(run.rows.at(1).cInterest, M("402.36"));
    EXPECT_EQ(run.total, Money());
    EXPECT_EQ(Rows(run).at(3), "7/1/2017-12/31/2017 Nothing Owed 0 0.00");
}

TEST(Interest, Limits)
{
    // a stop date beyond the table, not yet due: no rate asked for; due: a fault
    rw::Case c = FederalCase(D(2017, 1, 10), D(2017, 1, 10), "10000");
    const rw::RateTable t = {Row(D(2017, 1, 1), D(2017, 1, 5), 0.08f)};
    c.init.dtDue = D(2017, 4, 15);
    EXPECT_EQ(Compute(c, t).rows.size(), 2u);
    c.init.dtDue = D(2017, 1, 1);
    EXPECT_EQ(FaultOf([&] { Compute(c, t); }), "9 GetRevisedRate: the stop date 01/10/2017 lies "
                                               "beyond the rate table, which ends 01/05/2017");

    // 299 payments on distinct days and one rate-period end inside: start row,
    // 299 x (interest row + event row), two more interest rows = 601 rows
    c = FederalCase(D(2017, 1, 1), D(2018, 6, 30), "1000000");
    for (int i = 0; i < 299; ++i)
        AddPayment(c, D(2017, 1, 2) + i, {.tax = "1"});
    c.init.bAnyPenalties = rw::kYes;
    const rw::Case before = c;
    const rw::RateTable years
        = {Row(D(2017, 1, 1), D(2017, 12, 31), 0.08f), Row(D(2018, 1, 1), D(2018, 12, 31), 0.08f)};
    EXPECT_EQ(Compute(c, years).rows.size(), 601u);
    EXPECT_EQ(c, before);  // the case is never changed
    // one more payment, one more interest row and event row: the rows grow as needed
    AddPayment(c, D(2018, 3, 1), {.tax = "1"});
    EXPECT_EQ(Compute(c, years).rows.size(), 603u);
}

const rw::RateTable kHalves
    = {Row(D(2017, 1, 1), D(2017, 6, 30), 0.04f), Row(D(2017, 7, 1), D(2017, 12, 31), 0.04f)};

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
        shown.push_back(rw::FormatMMDDYYYY(p.dtDate) + " " + p.sCode.str() + " "
                        + p.sDesc.trimmed());
    EXPECT_EQ(shown, (std::vector<std::string>{
                         "01/01/2016 PMT  Early", "02/01/2017 0BT  Start Interest",
                         "02/01/2017 CUP  Corp Unrpmt Rate", "02/01/2017 OTHC Charge",
                         "02/01/2017 PMT  On start B", "02/01/2017 PMT  On start C",
                         "02/01/2017 PRD  T/R due next day", "03/01/2017 ST0  Suspend Int.",
                         "03/01/2017 ST1  Restart Int", "06/30/2017 PMT  On stop",
                         "06/30/2017 ZRT  End Rate Period", "06/30/2017 ZZSD Stop Interest",
                         "12/31/2017 ZRT  End Rate Period"}));
    EXPECT_EQ(tl[1].cTax, M("100"));
    EXPECT_EQ(tl[3].cTax, M("5"));
    EXPECT_EQ(tl[9].cTax, M("-1"));
    EXPECT_EQ(rw::FindPointByCode(tl, "ZZSD"), 11);
    EXPECT_EQ(rw::FindPointByCode(tl, "FFP "), -1);
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
    EXPECT_EQ(FaultOf([&] { rw::CountPoints(c, big); }),
              "6 CountPoints: more than 32,767 time line points");
}

}  // namespace
