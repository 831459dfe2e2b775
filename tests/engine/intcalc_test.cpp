#include "enginetest.h"

#include "base/fault.h"
#include "engine/intcalc.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using namespace enginetest;
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

// What a row must show: its days, its description (nullptr: never set) and
// its interest.
struct RowWant {
    Date begin;
    Date end;
    const char* desc;
    int days;
    Money interest;
};

void ExpectRows(const Outcome& run, const std::vector<RowWant>& want)
{
    ASSERT_EQ(run.rows.size(), want.size());
    Money total;
    for (std::size_t i = 0; i < want.size(); ++i) {
        const ResultPeriod& r = run.rows[i];
        SCOPED_TRACE("row " + std::to_string(i));
        EXPECT_EQ(r.dtBegin, want[i].begin);
        EXPECT_EQ(r.dtEnd, want[i].end);
        if (want[i].desc == nullptr)
            EXPECT_TRUE(r.sDesc.isUnset()) << r.sDesc.str();
        else
            EXPECT_TRUE(r.sDesc.is(want[i].desc)) << r.sDesc.str();
        EXPECT_EQ(r.nDays, want[i].days);
        EXPECT_EQ(r.cInterest, want[i].interest);
        EXPECT_EQ(r.cAccruedInt, total);
        total += want[i].interest;
    }
    EXPECT_EQ(run.total, total);
}

const rw::RateTable kOneRow8 = {Row(D(2015, 1, 1), D(2018, 12, 31), 0.08f)};

// ---- One interest period: compounding, leap-year basis, simple ---------------

struct PeriodCase {
    const char* name;
    Date start;
    Date stop;
    char method;
    const char* desc;
    int days;
    double factor;  // written out plainly from the rule
    const char* interest;
};

class OnePeriod : public ::testing::TestWithParam<PeriodCase> {};

TEST_P(OnePeriod, InterestIsBaseTimesFactorRoundedToTheTenThousandthThenTheCent)
{
    const PeriodCase& p = GetParam();
    rw::Case c = Federal(p.start, p.stop, "10000");
    const rw::RateTable t = {Row(D(2015, 1, 1), D(2018, 12, 31), 0.08f, 0.0f, p.method)};
    const Outcome run = Compute(c, t);
    ASSERT_EQ(run.rows.size(), 2u);  // the start row and one interest row; none for the stop point
    EXPECT_EQ(run.rows[1].fRate, 0.08f);
    EXPECT_EQ(run.rows[1].dIntFactor, p.factor);
    ExpectRows(run, {{p.start, p.start, "Start Interest", 0, Money()},
                     {p.start + 1, p.stop, p.desc, p.days, M(p.interest)}});
}

const float r8 = 0.08f;  // 0.0799999982118606567...
INSTANTIATE_TEST_SUITE_P(
    Interest, OnePeriod,
    ::testing::Values(
        // (1 + r8/365)^31 - 1 = 0.00681690594583384; 10,000 x that = 68.1691 -> 68.17
        PeriodCase{"compound2017", D(2017, 1, 1), D(2017, 2, 1), 'C', "Compound Int.", 31,
                   std::pow(1.0 + double(r8) / 365.0, 31) - 1.0, "68.17"},
        // a row beginning in 2016 (divisible by 4) uses 366 days:
        // 0.006798219395161453 -> 67.9822 -> 67.98
        PeriodCase{"compound2016", D(2016, 1, 1), D(2016, 2, 1), 'C', "Compound Int.", 31,
                   std::pow(1.0 + double(r8) / 366.0, 31) - 1.0, "67.98"},
        // simple interest uses 365 in every year: r8 x 31 / 365 = 0.006794520396075836 -> 67.9452 -> 67.95
        PeriodCase{"simple2016", D(2016, 1, 1), D(2016, 2, 1), 'S', "Simple Int.", 31,
                   (double(r8) * 31) / 365.0, "67.95"},
        // any method character other than "S" compounds
        PeriodCase{"otherMethodCompounds", D(2017, 1, 1), D(2017, 2, 1), 'X', "Compound Int.", 31,
                   std::pow(1.0 + double(r8) / 365.0, 31) - 1.0, "68.17"}),
    [](const auto& param) { return std::string(param.param.name); });

// The basis follows only divisibility by 4 of the row's first year: 2100 would
// count 366 days although it is no leap year. One row takes one basis even
// when it runs into the next year.
TEST(Interest, BasisIsTheYearOfTheRowsFirstDayDivisibleByFour)
{
    rw::Case c = Federal(D(2015, 12, 1), D(2016, 1, 31), "10000");
    const Outcome run = Compute(c, kOneRow8);
    ASSERT_EQ(run.rows.size(), 2u);
    // begins 12/2/2015: 365 days for all 61 days; 10,000 x 0.0134579... -> 134.58
    EXPECT_EQ(run.rows[1].cInterest, Compound(M("10000"), r8, 365.0, 61));
    EXPECT_EQ(run.rows[1].cInterest, M("134.58"));
}

// ---- Compounding carries accrued interest; simple interest does not ----------

TEST(Interest, CompoundingRowsEarnOnAccruedInterestSimpleRowsDoNot)
{
    rw::RateTable t = {Row(D(2017, 1, 1), D(2017, 3, 31), 0.08f), Row(D(2017, 4, 1), D(2017, 6, 30), 0.07f)};
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 4, 30), "10000");
    // 1/2-3/31, 89 days at 8 %: 196.96
    const Money i1 = Compound(M("10000"), 0.08f, 365, 89);
    // 4/1-4/30, 30 days at 7 % on 10,196.96: 58.83
    const Money i2 = Compound(M("10000") + i1, 0.07f, 365, 30);
    EXPECT_EQ(i1, M("196.96"));
    EXPECT_EQ(i2, M("58.83"));
    ExpectRows(Compute(c, t), {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                               {D(2017, 1, 2), D(2017, 3, 31), "Compound Int.", 89, i1},
                               {D(2017, 4, 1), D(2017, 4, 30), "Compound Int.", 30, i2}});

    for (auto& row : t)
        row.sCalcMethod = 'S';
    // simple: 10,000 x 0.08 x 89 / 365 = 195.07; 10,000 x 0.07 x 30 / 365 = 57.53
    const Outcome simple = Compute(c, t);
    ASSERT_EQ(simple.rows.size(), 3u);
    EXPECT_EQ(simple.rows[1].cInterest, Simple(M("10000"), 0.08f, 89));
    EXPECT_EQ(simple.rows[2].cInterest, Simple(M("10000"), 0.07f, 30));
    EXPECT_EQ(simple.rows[2].cInterest, M("57.53"));
    EXPECT_EQ(simple.rows[2].cAccruedInt, M("195.07"));
}

// ---- Payments and charges ----------------------------------------------------

TEST(Interest, PaymentInsideAPeriodEndsTheRowOnItsDayAndLowersTheBalanceFromTheNext)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(2017, 1, 31), "4000", "10");
    const Money i1 = Compound(M("10000"), r8, 365, 30);                     // 65.96
    const Money i3 = Compound(M("6000") + i1 - M("10"), r8, 365, 29);       // on 6,055.96: 38.61
    EXPECT_EQ(i1, M("65.96"));
    EXPECT_EQ(i3, M("38.61"));
    const Outcome run = Compute(c, kOneRow8);
    ExpectRows(run, {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                     {D(2017, 1, 2), D(2017, 1, 31), "Compound Int.", 30, i1},
                     {D(2017, 1, 31), D(2017, 1, 31), "Payment", 0, M("-10")},
                     {D(2017, 2, 1), D(2017, 3, 1), "Compound Int.", 29, i3}});
    EXPECT_EQ(run.rows[1].cTaxPen, M("10000"));
    EXPECT_EQ(run.rows[2].cTaxPen, M("6000"));
    EXPECT_EQ(run.rows[3].cTaxPen, M("6000"));
}

struct EventDayCase {
    const char* name;
    Date paid;
    std::size_t rows;
    const char* lastBase;  // cTaxPen of the last row
    int lastDays;
};

class PaymentDay : public ::testing::TestWithParam<EventDayCase> {};

TEST_P(PaymentDay, TheBalanceChangesFromTheDayAfterThePayment)
{
    const EventDayCase& e = GetParam();
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, e.paid, "4000");
    const Outcome run = Compute(c, kOneRow8);
    ASSERT_EQ(run.rows.size(), e.rows);
    EXPECT_EQ(run.rows.back().cTaxPen, M(e.lastBase));
    EXPECT_EQ(run.rows.back().nDays, e.lastDays);
    EXPECT_EQ(run.total, Compound(M(e.lastBase), r8, 365, e.lastDays));
}

INSTANTIATE_TEST_SUITE_P(
    Interest, PaymentDay,
    ::testing::Values(
        // on the start date: an event row right after the start row; 6,000 for 59 days
        EventDayCase{"onStartDate", D(2017, 1, 1), 3, "6000", 59},
        // before the start: no row, no change of the balance
        EventDayCase{"beforeStart", D(2016, 12, 1), 2, "10000", 59},
        // after the stop: never reached
        EventDayCase{"afterStop", D(2017, 3, 2), 2, "10000", 59}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(Interest, SeveralEventsOnOneDayMakeOneEventRowEachAndNoRowBetween)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(2017, 1, 31), "1000", "0", "0", "First");
    AddPayment(c, D(2017, 1, 31), "2000", "0", "0", "Second");
    AddCharge(c, D(2017, 1, 31), "500", "100", "Added");
    const Outcome run = Compute(c, kOneRow8);
    ASSERT_EQ(run.rows.size(), 6u);
    // charges sort before payments of their day; payments keep their list order
    EXPECT_TRUE(run.rows[2].sDesc.is("Added"));
    EXPECT_EQ(run.rows[2].cTaxPen, M("10600"));
    EXPECT_TRUE(run.rows[3].sDesc.is("First"));
    EXPECT_TRUE(run.rows[4].sDesc.is("Second"));
    EXPECT_EQ(run.rows[5].dtBegin, D(2017, 2, 1));
    EXPECT_EQ(run.rows[5].cTaxPen, M("7600"));
}

TEST(Interest, RatePeriodEndClosesTheRowAndMakesNoEventRow)
{
    const rw::RateTable t = {Row(D(2017, 1, 1), D(2017, 1, 31), 0.08f), Row(D(2017, 2, 1), D(2017, 12, 31), 0.09f)};
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    const Money i1 = Compound(M("10000"), 0.08f, 365, 30);
    const Money i2 = Compound(M("10000") + i1, 0.09f, 365, 29);
    ExpectRows(Compute(c, t), {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                               {D(2017, 1, 2), D(2017, 1, 31), "Compound Int.", 30, i1},
                               {D(2017, 2, 1), D(2017, 3, 1), "Compound Int.", 29, i2}});
    // a payment on the period's last day: its event row, then the new period
    AddPayment(c, D(2017, 1, 31), "4000");
    const Money j2 = Compound(M("6000") + i1, 0.09f, 365, 29);
    ExpectRows(Compute(c, t), {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                               {D(2017, 1, 2), D(2017, 1, 31), "Compound Int.", 30, i1},
                               {D(2017, 1, 31), D(2017, 1, 31), "Payment", 0, Money()},
                               {D(2017, 2, 1), D(2017, 3, 1), "Compound Int.", 29, j2}});
}

// An event's own interest change is rounded to the cent, halves to even.
struct HalfCase {
    const char* toInt;
    const char* shown;
};
class EventInterest : public ::testing::TestWithParam<HalfCase> {};
TEST_P(EventInterest, RoundsToTheCentHalvesToEven)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "0");
    AddPayment(c, D(2017, 1, 31), "0", GetParam().toInt);
    const Outcome run = Compute(c, kOneRow8);
    ASSERT_EQ(run.rows.size(), 4u);
    EXPECT_EQ(run.rows[2].cInterest, M(GetParam().shown));
}
INSTANTIATE_TEST_SUITE_P(Interest, EventInterest,
                         ::testing::Values(HalfCase{"12.345", "-12.34"}, HalfCase{"12.355", "-12.36"},
                                           HalfCase{"12.3451", "-12.35"}));

// A description never set (a payment entered without one) reads as the
// method of the period it falls in.
TEST(Interest, EventWithoutDescriptionShowsTheMethod)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(2017, 1, 31), "1000", "0", "0", nullptr);
    rw::RateTable t = kOneRow8;
    EXPECT_TRUE(Compute(c, t).rows[2].sDesc.is("Compound"));
    t[0].sCalcMethod = 'S';
    EXPECT_TRUE(Compute(c, t).rows[2].sDesc.is("Simple"));
}

TEST(Interest, PeriodAtRateZeroHasNoDaysAndNoInterest)
{
    const rw::RateTable t = {Row(D(2017, 1, 1), D(2017, 1, 31), 0.0f), Row(D(2017, 2, 1), D(2017, 12, 31), 0.08f)};
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    ExpectRows(Compute(c, t), {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                               {D(2017, 1, 2), D(2017, 1, 31), "Compound", 0, Money()},
                               {D(2017, 2, 1), D(2017, 3, 1), "Compound Int.", 29,
                                Compound(M("10000"), r8, 365, 29)}});
}

// ---- Suspension and the due date ---------------------------------------------

// Interest runs through the suspension day S, none accrues on S+1..R, and it
// runs again from R+1, across rate periods.
TEST(Interest, SuspensionAcrossRatePeriods)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 12, 31), "10000");
    c.init.dtIntSuspend = D(2017, 3, 15);
    c.init.dtRestart = D(2017, 5, 10);
    const rw::RateTable t = Quarterly(2017, 2017, r8);
    const Money i1 = Compound(M("10000"), r8, 365, 73);            // 1/2-3/15: 161.27
    const Money i6 = Compound(M("10000") + i1, r8, 365, 51);       // 5/11-6/30: 114.21
    const Money i7 = Compound(M("10000") + i1 + i6, r8, 365, 92);  // 7/1-9/30: 209.28
    const Money i8 = Compound(M("10000") + i1 + i6 + i7, r8, 365, 92);
    EXPECT_EQ(i1, M("161.27"));
    EXPECT_EQ(i6, M("114.21"));
    ExpectRows(Compute(c, t), {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                               {D(2017, 1, 2), D(2017, 3, 15), "Compound Int.", 73, i1},
                               {D(2017, 3, 15), D(2017, 3, 15), "Int Suspended", 0, Money()},
                               {D(2017, 3, 16), D(2017, 3, 31), "Int Suspended", 16, Money()},
                               {D(2017, 4, 1), D(2017, 5, 10), "Int Suspended", 40, Money()},
                               {D(2017, 5, 10), D(2017, 5, 10), "Restart Int", 0, Money()},
                               {D(2017, 5, 11), D(2017, 6, 30), "Compound Int.", 51, i6},
                               {D(2017, 7, 1), D(2017, 9, 30), "Compound Int.", 92, i7},
                               {D(2017, 10, 1), D(2017, 12, 31), "Compound Int.", 92, i8}});
}

// Rows that begin before the due date earn nothing; a due date strictly
// between the start and the stop date closes the row there, in a payroll case
// or not, so interest runs from the day after it.
struct DueCase {
    const char* name;
    Date due;
    bool payroll;
    bool duePoint;      // a "T/R due next day" row on the due date
    const char* total;  // the interest of the case
};

class DueDate : public ::testing::TestWithParam<DueCase> {};

TEST_P(DueDate, InterestRunsFromTheDayAfterTheDueDate)
{
    const DueCase& e = GetParam();
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 31), "10000");
    c.init.dtDue = e.due;
    c.init.bPayroll = e.payroll ? rw::kYes : rw::kNo;
    const Outcome run = Compute(c, kOneRow8);
    EXPECT_EQ(run.total, M(e.total));
    bool duePoint = false;
    for (const ResultPeriod& r : run.rows)
        duePoint = duePoint || r.sDesc.is("T/R due next day");
    EXPECT_EQ(duePoint, e.duePoint);
}

// 10,000.00 at 8 % (the single nearest), 2/16-3/31/2017, 44 days on 365:
// (1 + 0.08/365)^44 - 1 = 0.0096894201; x 10,000 = 96.894 -> 96.89.
// The whole quarter, 1/2-3/31, 89 days: 0.0196961711 x 10,000 = 196.9617 -> 196.96.
INSTANTIATE_TEST_SUITE_P(
    Interest, DueDate,
    ::testing::Values(DueCase{"dueInsideNotPayroll", D(2017, 2, 15), false, true, "96.89"},
                      DueCase{"dueInsidePayroll", D(2017, 2, 15), true, true, "96.89"},
                      DueCase{"dueOnTheStart", D(2017, 1, 1), false, false, "196.96"},
                      DueCase{"dueOnTheStopDate", D(2017, 3, 31), false, false, "0"},
                      DueCase{"dueAfterTheStop", D(2017, 4, 15), false, false, "0"}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(Interest, TheDueDateRowAndTheRowBeforeIt)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 31), "10000");
    c.init.dtDue = D(2017, 2, 15);
    ExpectRows(Compute(c, kOneRow8), {{D(2017, 1, 1), D(2017, 1, 1), "T/R Not Due", 0, Money()},
                                      {D(2017, 1, 2), D(2017, 2, 15), nullptr, 45, Money()},
                                      {D(2017, 2, 15), D(2017, 2, 15), "T/R due next day", 0, Money()},
                                      {D(2017, 2, 16), D(2017, 3, 31), "Compound Int.", 44, M("96.89")}});
}

// Events on the stop date: the last row runs through the stop date on the
// balance before them, and each follows as an event row whose interest part
// counts. 10,000.00 at 8 %, 1/2-2/1/2017, 31 days:
// (1 + 0.08/365)^31 - 1 = 0.0068169059; x 10,000 = 68.169 -> 68.17.
TEST(Interest, EventsOnTheStopDateFollowTheLastRow)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 2, 1), "10000");
    AddPayment(c, D(2017, 2, 1), "4000");
    Outcome run = Compute(c, kOneRow8);
    ExpectRows(run, {{D(2017, 1, 1), D(2017, 1, 1), "Start Interest", 0, Money()},
                     {D(2017, 1, 2), D(2017, 2, 1), "Compound Int.", 31, M("68.17")},
                     {D(2017, 2, 1), D(2017, 2, 1), "Payment", 0, Money()}});
    EXPECT_EQ(run.rows[1].cTaxPen, M("10000"));
    EXPECT_EQ(run.rows[2].cTaxPen, M("6000"));

    // Paid in full on the stop date, interest included: nothing is left.
    c.pmts[0].cToTax = M("10000");
    c.pmts[0].cToInt = M("68.17");
    run = Compute(c, kOneRow8);
    EXPECT_EQ(run.rows[1].cInterest, M("68.17"));
    EXPECT_EQ(run.total, Money());

    // A charge on the stop date earns nothing that day.
    c = Federal(D(2017, 1, 1), D(2017, 2, 1), "10000");
    AddCharge(c, D(2017, 2, 1), "5000");
    run = Compute(c, kOneRow8);
    EXPECT_EQ(run.total, M("68.17"));
    EXPECT_EQ(run.rows.back().cTaxPen, M("15000"));
}

// A charge without an interest date runs from its date of liability.
// 10,000.00 from 1/2 to 1/31/2017, 30 days: 0.0065962821 x 10,000 -> 65.96;
// then 11,065.96 for 2/1-3/1, 29 days: 0.0063757066 x 11,065.96 = 70.553 -> 70.55.
TEST(Interest, AChargeWithoutInterestDateRunsFromItsLiability)
{
    for (const Date none : {Date(), rw::NoDate}) {
        rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
        AddCharge(c, D(2017, 1, 31), "1000");
        c.charges[0].dtIntStart = none;
        const Outcome run = Compute(c, kOneRow8);
        EXPECT_EQ(run.total, M("136.51"));
    }
}

// ---- Rates the table does not hold ----------------------------------------------

std::string RefusalOf(const std::function<void()>& f)
{
    try {
        f();
    } catch (const rw::Refusal& r) {
        return r.title() + ": " + std::string(r.text());
    }
    return "no refusal";
}

bool Mentions(const std::string& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

constexpr float kNoRate = std::numeric_limits<float>::quiet_NaN();

// A state table with a hole in the second half of 2017 (no published rate in
// either direction) and no refund rate published for 2018.
const rw::RateTable kHoleTable = {Row(D(2016, 1, 1), D(2016, 12, 31), 0.08f, 0.06f),
                                  Row(D(2017, 1, 1), D(2017, 6, 30), 0.08f, 0.06f),
                                  Row(D(2017, 7, 1), D(2017, 12, 31), kNoRate, kNoRate),
                                  Row(D(2018, 1, 1), D(2018, 12, 31), 0.08f, kNoRate)};

rw::Case Florida(Date start, Date stop, const char* balance)
{
    rw::Case c = Federal(start, stop, balance);
    c.init.sTaxAuth = "FL  ";
    return c;
}

struct MissingCase {
    const char* name;
    std::function<rw::Case()> kase;
    std::vector<const char*> told;  // parts of the message; empty: computed
};

class MissingRate : public ::testing::TestWithParam<MissingCase> {};

TEST_P(MissingRate, RefusedUnlessNothingIsOwed)
{
    const MissingCase& e = GetParam();
    const std::string said = RefusalOf([&] { Compute(e.kase(), kHoleTable); });
    if (e.told.empty()) {
        EXPECT_EQ(said, "no refusal");
        return;
    }
    EXPECT_TRUE(Mentions(said, "Interest Cannot Be Computed: The Florida rate table ")) << said;
    for (const char* part : e.told)
        EXPECT_TRUE(Mentions(said, part)) << said;
}

INSTANTIATE_TEST_SUITE_P(
    Interest, MissingRate,
    ::testing::Values(
        MissingCase{"owedInAHole", [] { return Florida(D(2017, 1, 1), D(2017, 12, 31), "10000"); },
                    {"no published interest rate for 7/1/2017 to 12/31/2017", "balance in that period is not zero"}},
        MissingCase{"overpaidInAHole", [] { return Florida(D(2017, 1, 1), D(2017, 8, 31), "-10000"); },
                    {"no published interest rate for 7/1/2017 to 12/31/2017"}},
        MissingCase{"beforeTheHole", [] { return Florida(D(2016, 6, 1), D(2017, 6, 30), "10000"); }, {}},
        MissingCase{"overpaidWithoutRefundRate", [] { return Florida(D(2018, 1, 1), D(2018, 3, 31), "-500"); },
                    {"no published overpayment (refund) rate for 1/1/2018 to 12/31/2018"}},
        MissingCase{"owedWhereOnlyTheRefundRateIsMissing",
                    [] { return Florida(D(2018, 1, 1), D(2018, 3, 31), "500"); }, {}},
        MissingCase{"zeroBalanceWithoutRefundRate", [] { return Florida(D(2018, 1, 1), D(2018, 3, 31), "0"); }, {}},
        MissingCase{"beforeTheTable", [] { return Florida(D(2015, 6, 30), D(2016, 6, 30), "10000"); },
                    {"begins on 1/1/2016", "needs a rate for 7/1/2015 to 12/31/2015", "Change the start date"}},
        MissingCase{"afterTheTable", [] { return Florida(D(2018, 6, 30), D(2019, 2, 1), "10000"); },
                    {"ends on 12/31/2018", "needs a rate for 1/1/2019 to 2/1/2019", "Change the stop date"}},
        MissingCase{"notYetDueBeforeTheTable",
                    [] {
                        rw::Case c = Florida(D(2015, 6, 30), D(2016, 6, 30), "10000");
                        c.init.dtDue = D(2016, 1, 1);
                        return c;
                    },
                    {}}),
    [](const auto& param) { return std::string(param.param.name); });

// Paid in full, interest included, before the hole: the zero balance earns
// nothing there and nothing is refused. 10,000.00 at 8 % for 1/2-6/30/2017,
// 180 days: (1 + 0.08/365)^180 - 1 = 0.0402361254 -> 402.36.
TEST(Interest, AZeroBalanceEarnsNothingInAHole)
{
    rw::Case c = Florida(D(2017, 1, 1), D(2018, 3, 31), "10000");
    AddPayment(c, D(2017, 6, 30), "10000", "402.36");
    const Outcome run = Compute(c, kHoleTable);
    EXPECT_EQ(run.rows[1].cInterest, M("402.36"));
    EXPECT_EQ(run.total, Money());
    ASSERT_GE(run.rows.size(), 4u);
    EXPECT_EQ(run.rows[3].dtBegin, D(2017, 7, 1));
    EXPECT_TRUE(run.rows[3].sDesc.is("Nothing Owed")) << run.rows[3].sDesc.str();
    EXPECT_EQ(run.rows[3].fRate, 0.0f);
}

// ---- Limits and odd cases ----------------------------------------------------

TEST(Interest, StartAndStopOnOneDay)
{
    // A rate-period end follows: the stop point makes an event row and the
    // walk ends at the next point with a row of no days.
    rw::Case c = Federal(D(2017, 1, 10), D(2017, 1, 10), "10000");
    Outcome run = Compute(c, kOneRow8);
    ASSERT_EQ(run.rows.size(), 3u);
    EXPECT_TRUE(run.rows[1].sDesc.is("Stop Interest"));
    EXPECT_EQ(run.rows[2].nDays, 0);
    EXPECT_EQ(run.total, Money());

    // Nothing follows the stop point: the walk ends with the points. (Here
    // the return is not yet due, so no row asks the table for a rate.)
    const rw::RateTable t = {Row(D(2017, 1, 1), D(2017, 1, 5), 0.08f)};
    c.init.dtDue = D(2017, 4, 15);
    run = Compute(c, t);
    ASSERT_EQ(run.rows.size(), 2u);
    EXPECT_TRUE(run.rows[0].sDesc.is("T/R Not Due"));
    EXPECT_TRUE(run.rows[1].sDesc.is("T/R Not Due"));
    EXPECT_EQ(run.total, Money());
    // Due: the start row asks for the rate of a day beyond the table.
    c.init.dtDue = D(2017, 1, 1);
    EXPECT_EQ(FaultOf([&] { Compute(c, t); }),
              "9 GetRevisedRate: the stop date 01/10/2017 lies beyond the rate table, which ends 01/05/2017");
}

TEST(Interest, MoreThan601RowsIsAFault)
{
    // 299 payments on distinct days and one rate-period end inside: start row,
    // 299 x (interest row + event row), two more interest rows = 601 rows.
    rw::Case c = Federal(D(2017, 1, 1), D(2018, 6, 30), "1000000");
    for (int i = 0; i < 299; ++i)
        AddPayment(c, D(2017, 1, 2) + i, "1");
    const rw::RateTable t = {Row(D(2017, 1, 1), D(2017, 12, 31), 0.08f), Row(D(2018, 1, 1), D(2018, 12, 31), 0.08f)};
    EXPECT_EQ(Compute(c, t).rows.size(), 601u);

    AddPayment(c, D(2018, 3, 1), "1");
    EXPECT_EQ(FaultOf([&] { Compute(c, t); }), "9 GetInterest: the computation needs more than 601 result rows");
}

// No row crosses a year end: each row takes its basis from the year it begins
// in. 100,000.00 at 8 %, start 9/30/2023, stop 12/31/2024:
//   10/1-12/31/2023, 92 days on 365: 0.0203668032 x 100,000 = 2,036.68;
//   2024, 366 days on 366: 0.0832775958 x 102,036.68 = 8,497.37; total 10,534.05.
// One row from 10/1/2023 to 12/31/2024 would take 365 for all 458 days:
//   0.1055827373 x 100,000 = 10,558.27.
TEST(Interest, RowsCutAtTheYearEndTakeEachYearsBasis)
{
    const rw::Case c = Federal(D(2023, 9, 30), D(2024, 12, 31), "100000");
    const rw::RateTable cut = {Row(D(2023, 10, 1), D(2023, 12, 31), 0.08f), Row(D(2024, 1, 1), D(2024, 12, 31), 0.08f)};
    EXPECT_EQ(Compute(c, cut).total, M("10534.05"));
    const rw::RateTable merged = {Row(D(2023, 10, 1), D(2024, 12, 31), 0.08f)};
    EXPECT_EQ(Compute(c, merged).total, M("10558.27"));
}

TEST(Interest, TheCaseIsNotChanged)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(2017, 1, 31), "4000", "10");
    c.init.bAnyPenalties = rw::kYes;
    const rw::Case before = c;
    const Outcome first = Compute(c, kOneRow8);
    EXPECT_EQ(c, before);
    EXPECT_TRUE(c.init.tlStart.sDesc.isUnset());
    // the result arrays are replaced, not added to
    Outcome again = first;
    again.total = rw::GetInterest(c, kOneRow8, nullptr, again.rows, again.tl);
    EXPECT_EQ(again.rows, first.rows);
    EXPECT_EQ(again.tl, first.tl);
}

// ---- Interest to a date --------------------------------------------------------

TEST(IntToDate, CountsOnlyPaymentsBeforeTheDay)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 31), "10000");
    AddPayment(c, D(2017, 1, 31), "4000", "0", "100");
    AddPayment(c, D(2017, 2, 15), "3000");
    AddCharge(c, D(2017, 1, 20), "0", "500");
    rwtest::RecordingMessages msgs;
    rw::TLPoint totals;
    const Money interest = rw::IntToDate("2/15/2017", c, kOneRow8, nullptr, totals, msgs);
    // 1/2-1/20 on 10,000 (19 days); 1/21-1/31 on 10,500 with the penalty charge;
    // 2/1-2/15 on 6,400: the payment of 2/15 counts as zero.
    const Money i1 = Compound(M("10000"), r8, 365, 19);
    const Money i2 = Compound(M("10500") + i1, r8, 365, 11);
    const Money i3 = Compound(M("6400") + i1 + i2, r8, 365, 15);
    EXPECT_EQ(interest, i1 + i2 + i3);
    EXPECT_EQ(totals.cTax, M("6000"));
    EXPECT_EQ(totals.cPen, M("400"));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST(IntToDate, InvalidDateGivesZeroAndLeavesTotals)
{
    const rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 31), "10000");
    rwtest::RecordingMessages msgs;
    rw::TLPoint totals;
    totals.cTax = M("1");
    EXPECT_EQ(rw::IntToDate("13/45/2016", c, kOneRow8, nullptr, totals, msgs), Money());
    EXPECT_EQ(totals.cTax, M("1"));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].text, "The Payment date entered as 13/45/2016 is not valid.  Unless it is changed, "
                                  "somewhere at an inconvenient moment this program is likely to abort.");
}

}  // namespace
