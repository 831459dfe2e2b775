#include "enginetest.h"

#include "base/fault.h"
#include "engine/ratesel.h"

#include <gtest/gtest.h>

#include <limits>

#include <random>

using namespace enginetest;
using rw::ResultPeriod;

namespace {

// Revised rates: the single nearest to the double computed from the single.
float Rev(float rate, double change)
{
    return static_cast<float>(static_cast<double>(rate) + change);
}

const float r8 = 0.08f;

// ---- Federal revision ------------------------------------------------------------

struct USCase {
    const char* name;
    Date begin;
    const char* balance;    // cTaxPen
    const char* accrued;    // cAccruedInt
    const char* taxToDate;  // the time line's tax through the row's first day
    bool taxMotivated;
    Date corpUPStart;  // NoDate: option off
    Date corpOPStart;
    bool corporate;
    float rate;
    float want;
    const char* label;  // nullptr: left unset; "": blank
};

class FederalRevision : public ::testing::TestWithParam<USCase> {};

TEST_P(FederalRevision, RateAndLabel)
{
    const USCase& u = GetParam();
    rw::Case c = Federal(D(1980, 1, 1), D(2020, 1, 1), "0");
    c.init.bTaxMotivated = rw::ToFlag(u.taxMotivated);
    c.init.bCorpUPRate = rw::ToFlag(!u.corpUPStart.isNoDate());
    c.init.dtCorpUPRateStart = u.corpUPStart;
    c.init.bCorpOPRate = rw::ToFlag(!u.corpOPStart.isNoDate());
    c.init.dtCorpOPRateStart = u.corpOPStart;
    c.init.bCorporate = rw::ToFlag(u.corporate);
    rw::TLPoint p;
    p.dtDate = D(1980, 1, 1);
    p.cTax = M(u.taxToDate);
    rw::TLPoint later;  // after the row's first day: never counted
    later.dtDate = u.begin + 1;
    later.cTax = M("-999999");
    const rw::TimeLine tl = {p, later};

    ResultPeriod row;
    row.dtBegin = u.begin;
    row.dtEnd = u.begin + 30;
    row.fRate = u.rate;
    row.cTaxPen = M(u.balance);
    row.cAccruedInt = M(u.accrued);
    EXPECT_EQ(rw::GetRevisedUSRate(c.init, row, tl), u.want);
    if (u.label == nullptr)
        EXPECT_TRUE(row.sDesc.isUnset());
    else
        EXPECT_TRUE(row.sDesc.is(u.label)) << "'" << row.sDesc.str() << "'";
}

const Date kOff = rw::NoDate;
INSTANTIATE_TEST_SUITE_P(
    Rates, FederalRevision,
    ::testing::Values(
        // tax-motivated: 1.2 x 8 % = 9.6 % for rows beginning after 12/31/1984
        USCase{"taxMotivatedFrom1985", D(1985, 1, 1), "1000", "0", "1000", true, kOff, kOff, false, r8,
               static_cast<float>(double(r8) * 1.2), "Tax Motivated"},
        USCase{"taxMotivatedNotOn19841231", D(1984, 12, 31), "1000", "0", "1000", true, kOff, kOff, false, r8, r8, ""},
        USCase{"ordinaryUnderpaymentIsBlank", D(1990, 1, 1), "1000", "0", "1000", false, kOff, kOff, false, r8, r8, ""},
        // large corporate underpayment: more than 100,000.00 of tax to date, +2 %
        USCase{"largeCorpAtExactly100000", D(1992, 1, 1), "100000", "0", "100000", false, D(1991, 1, 1), kOff,
               true, r8, r8, ""},
        USCase{"largeCorpAt100000_01", D(1992, 1, 1), "100000.01", "0", "100000.01", false, D(1991, 1, 1), kOff,
               true, r8, Rev(r8, 0.02), "Corp Unrpmt Rate"},
        USCase{"largeCorpOnItsStartDate", D(1991, 1, 1), "200000", "0", "200000", false, D(1991, 1, 1), kOff, true,
               r8, Rev(r8, 0.02), "Corp Unrpmt Rate"},
        USCase{"largeCorpDayBeforeStart", D(1990, 12, 31), "200000", "0", "200000", false, D(1991, 1, 1), kOff,
               true, r8, r8, ""},
        // the test is the tax to date, not the row's balance
        USCase{"largeCorpNeedsTaxToDate", D(1992, 1, 1), "200000", "0", "100000", false, D(1991, 1, 1), kOff, true,
               r8, r8, ""},
        // both apply: the corporate rate wins, on the standard rate (10 %, not 11.6 %)
        USCase{"largeCorpWinsOverTaxMotivated", D(1992, 1, 1), "200000", "0", "200000", true, D(1991, 1, 1), kOff,
               true, r8, Rev(r8, 0.02), "Corp Unrpmt Rate"},
        // corporate overpayment: less than -10,000.00, -2.5 %
        USCase{"corpOverpaymentAtExactly10000", D(1996, 1, 1), "-10000", "0", "-10000", false, kOff, D(1995, 1, 1),
               true, r8, Rev(r8, -0.01), "Overpmt Rate"},
        USCase{"corpOverpaymentAt10000_01", D(1996, 1, 1), "-10000.01", "0", "-10000.01", false, kOff,
               D(1995, 1, 1), true, r8, Rev(r8, -0.025), "Corp Ovrpmt Rate"},
        // overpayment differential: -1 % from 1/1/1987 through 12/31/1998, later only for corporations
        USCase{"overpayment19861231", D(1986, 12, 31), "-500", "0", "-500", false, kOff, kOff, false, r8, r8,
               "Overpmt Rate"},
        USCase{"overpayment19870101", D(1987, 1, 1), "-500", "0", "-500", false, kOff, kOff, false, r8,
               Rev(r8, -0.01), "Overpmt Rate"},
        USCase{"overpayment19981231", D(1998, 12, 31), "-500", "0", "-500", false, kOff, kOff, false, r8,
               Rev(r8, -0.01), "Overpmt Rate"},
        USCase{"overpayment19990101", D(1999, 1, 1), "-500", "0", "-500", false, kOff, kOff, false, r8, r8,
               "Overpmt Rate"},
        USCase{"overpayment19990101Corporate", D(1999, 1, 1), "-500", "0", "-500", false, kOff, kOff, true, r8,
               Rev(r8, -0.01), "Overpmt Rate"},
        // a balance of exactly zero is an overpayment
        USCase{"zeroBalance", D(1990, 1, 1), "0", "0", "0", false, kOff, kOff, false, r8, Rev(r8, -0.01),
               "Overpmt Rate"},
        // the balance counts the accrued interest
        USCase{"balanceWithAccruedInterest", D(1990, 1, 1), "-100", "100.01", "-100", true, kOff, kOff, false, r8,
               static_cast<float>(double(r8) * 1.2), "Tax Motivated"},
        // rates of 0.01 % and below are taken as they stand, description untouched
        USCase{"negligibleRate", D(1990, 1, 1), "-500", "0", "-500", false, kOff, kOff, false, 0.0001f, 0.0001f,
               nullptr},
        // a differential below a low table rate stays negative: 0.5 % - 1 % = -0.5 %
        USCase{"revisedBelowZero", D(1990, 1, 1), "-500", "0", "-500", false, kOff, kOff, false, 0.005f,
               Rev(0.005f, -0.01), "Overpmt Rate"}),
    [](const auto& param) { return std::string(param.param.name); });

TEST(Rates, RevisionsAreSinglesOfTheDoubleComputation)
{
    // 8 % + 2 %: double(0.08f) = 0.07999999821186066, + 0.02 = 0.09999999821186066,
    // whose nearest single is 0.1f (0.100000001490116...).
    EXPECT_EQ(Rev(r8, 0.02), 0.1f);
    EXPECT_EQ(static_cast<float>(double(r8) * 1.2), 0.096f);
    EXPECT_LT(Rev(0.005f, -0.01), 0.0f);
}

// A description already set stays as it is.
TEST(Rates, DescriptionIsOnlyFilledWhenUnset)
{
    const rw::Case c = Federal(D(1980, 1, 1), D(2020, 1, 1), "0");
    ResultPeriod row;
    row.dtBegin = D(1990, 1, 1);
    row.dtEnd = D(1990, 1, 31);
    row.fRate = r8;
    row.sDesc = "Int Suspended";
    EXPECT_EQ(rw::GetRevisedUSRate(c.init, row, {}), Rev(r8, -0.01));
    EXPECT_TRUE(row.sDesc.is("Int Suspended"));
}

// ---- State revision ----------------------------------------------------------------

struct StateCase {
    const char* balance;
    float rate;
    float want;
    const char* label;
};
class StateRevision : public ::testing::TestWithParam<StateCase> {};

TEST_P(StateRevision, UnderpaymentRateOrTheTablesOverpaymentRate)
{
    const StateCase& s = GetParam();
    ResultPeriod row;
    row.fRate = s.rate;
    row.cTaxPen = M(s.balance);
    const rw::RateRow tableRow = Row(D(2017, 1, 1), D(2017, 12, 31), s.rate, 0.0625f);
    EXPECT_EQ(rw::GetRevisedStateRate(row, tableRow), s.want);
    if (s.label == nullptr)
        EXPECT_TRUE(row.sDesc.isUnset());
    else
        EXPECT_TRUE(row.sDesc.is(s.label));
}

INSTANTIATE_TEST_SUITE_P(Rates, StateRevision,
                         ::testing::Values(StateCase{"0.01", 0.09f, 0.09f, "Undrpmt Rate"},
                                           StateCase{"0", 0.09f, 0.0625f, "Overpmt Rate"},
                                           StateCase{"-10", 0.09f, 0.0625f, "Overpmt Rate"},
                                           StateCase{"-10", 0.0001f, 0.0001f, nullptr}));

TEST(Rates, AnOverpaymentInAPeriodWithoutAPublishedRefundRateIsRefused)
{
    // The row holds the underpayment rate; its refund rate was never published.
    const rw::RateRow tableRow = Row(D(2010, 1, 1), D(2010, 12, 31), 0.09f, std::numeric_limits<float>::quiet_NaN());
    ResultPeriod under;
    under.fRate = 0.09f;
    under.cTaxPen = M("100");
    EXPECT_EQ(rw::GetRevisedStateRate(under, tableRow), 0.09f);

    ResultPeriod over;
    over.fRate = 0.09f;
    over.cTaxPen = M("0");  // a zero balance takes the overpayment branch too
    try {
        rw::GetRevisedStateRate(over, tableRow);
        FAIL() << "no fault";
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), rw::kErrInvalidCall);
        EXPECT_EQ(f.procedure(), "GetRevisedStateRate");
        EXPECT_NE(f.detail().find("01/01/2010 to 12/31/2010"), std::string::npos);
    }
}

// ---- Table rows, method and the whole-row rate ---------------------------------------

const rw::RateTable kTwoRows = {Row(D(2017, 1, 1), D(2017, 6, 30), 0.04f, 0.03f, 'C'),
                                Row(D(2017, 7, 1), D(2017, 12, 31), 0.05f, 0.04f, 'S')};

TEST(Rates, StandardRateIsFromTheFirstRowEndingOnOrAfterTheDate)
{
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2016, 1, 1)), 0.04f);
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2017, 6, 30)), 0.04f);
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2017, 7, 1)), 0.05f);
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2017, 12, 31)), 0.05f);
    EXPECT_EQ(FaultOf([] { rw::GetStdPeriodRate(kTwoRows, D(2018, 1, 1)); }),
              "9 GetStdPeriodRate: the date 01/01/2018 lies beyond the rate table, which ends 12/31/2017");
}

TEST(Rates, RevisedRateTakesTheMethodOfTheRowCoveringTheEnd)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 12, 31), "0");
    ResultPeriod row;
    row.dtBegin = D(2017, 7, 1);
    row.dtEnd = D(2017, 7, 31);
    row.fRate = 0.05f;
    row.cTaxPen = M("100");
    bool compounds = true;
    EXPECT_EQ(rw::GetRevisedRate(c.init, row, kTwoRows, {}, compounds), 0.05f);
    EXPECT_FALSE(compounds);
    EXPECT_TRUE(row.sDesc.isBlank());  // federal underpayment: blank, for the factor step to name
    EXPECT_FALSE(rw::GetIntFactor(c.init, row, kTwoRows, {}));
    EXPECT_TRUE(row.sDesc.is("Simple Int."));

    // a state case overpaid in the first half: the table's overpayment rate
    c.init.sTaxAuth = "CAP ";
    ResultPeriod st;
    st.dtBegin = D(2017, 6, 1);
    st.dtEnd = D(2017, 6, 30);
    st.fRate = 0.04f;
    st.cTaxPen = M("-100");
    EXPECT_EQ(rw::GetRevisedRate(c.init, st, kTwoRows, {}, compounds), 0.03f);
    EXPECT_TRUE(compounds);
    EXPECT_TRUE(st.sDesc.is("Overpmt Rate"));

    // a row at rate 0 is labelled with the method
    ResultPeriod zero;
    zero.dtBegin = zero.dtEnd = D(2017, 8, 1);
    EXPECT_EQ(rw::GetRevisedRate(c.init, zero, kTwoRows, {}, compounds), 0.0f);
    EXPECT_TRUE(zero.sDesc.is("Simple"));

    zero.sDesc = rw::FixedText<16>();
    zero.dtEnd = D(2018, 1, 1);
    EXPECT_EQ(FaultOf([&] { rw::GetRevisedRate(c.init, zero, kTwoRows, {}, compounds); }),
              "9 GetRevisedRate: the date 01/01/2018 lies beyond the rate table, which ends 12/31/2017");
}

// A federal overpayment through the whole computation: -10,000.00 in 1990,
// 10 % less the 1 % differential = 9 %, 89 days at 365:
// -10,000 x ((1 + 0.09f/365)^89 - 1) = -221.8500... -> -221.85
TEST(Rates, OverpaymentThroughTheComputation)
{
    rw::Case c = Federal(D(1990, 1, 1), D(1990, 3, 31), "-10000");
    const rw::RateTable t = Quarterly(1990, 1990, 0.10f);
    std::vector<ResultPeriod> rows;
    rw::TimeLine tl;
    const Money total = rw::GetInterest(c, t, nullptr, rows, tl);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].fRate, Rev(0.10f, -0.01));
    EXPECT_TRUE(rows[1].sDesc.is("Overpmt Rate"));
    EXPECT_EQ(total, Compound(M("-10000"), Rev(0.10f, -0.01), 365, 89));
    EXPECT_EQ(total, M("-221.85"));
}

// ---- The cursors agree with the plain searches -----------------------------------------

TEST(Rates, RowFinderAgreesWithThePlainSearch)
{
    std::mt19937 rng(12345);
    for (int round = 0; round < 200; ++round) {
        rw::RateTable t;
        const int n = std::uniform_int_distribution<int>(0, 12)(rng);
        Date thru = D(2000, 1, 1);
        const bool ordered = round % 3 != 0;
        for (int i = 0; i < n; ++i) {
            thru = ordered ? thru + std::uniform_int_distribution<int>(0, 40)(rng)
                           : D(2000, 1, 1) + std::uniform_int_distribution<int>(0, 400)(rng);
            t.push_back(Row(thru, thru, static_cast<float>(i)));
        }
        rw::RateRowFinder finder(t);
        for (int q = 0; q < 30; ++q) {
            // mostly ascending dates, now and then an earlier one
            const Date d = D(1999, 12, 1) + std::uniform_int_distribution<int>(0, 500)(rng);
            std::ptrdiff_t plain = -1;
            for (std::size_t i = 0; i < t.size(); ++i)
                if (t[i].dtThru >= d) {
                    plain = static_cast<std::ptrdiff_t>(i);
                    break;
                }
            ASSERT_EQ(finder.find(d), plain);
        }
    }
}

TEST(TimeLineCursor, TaxToDateAgreesWithThePlainSum)
{
    std::mt19937 rng(54321);
    for (int round = 0; round < 200; ++round) {
        rw::TimeLine tl(std::uniform_int_distribution<std::size_t>(0, 30)(rng));
        for (rw::TLPoint& p : tl) {
            p.dtDate = D(2017, 1, 1) + std::uniform_int_distribution<int>(0, 60)(rng);
            p.cTax = Money::fromCents(std::uniform_int_distribution<int>(-100000, 100000)(rng));
            p.cPen = Money::fromCents(std::uniform_int_distribution<int>(-1000, 1000)(rng));
        }
        if (round % 2 == 0) {  // sorted, as a computation has it; unsorted otherwise
            rw::MakeSortCodes(tl);
            rw::SortPoints(tl);
        }
        rw::TaxToDateCursor cursor(tl);
        Date d = D(2016, 12, 20);
        for (int q = 0; q < 40; ++q) {
            d = q % 9 == 8 ? D(2016, 12, 20) + std::uniform_int_distribution<int>(0, 80)(rng)
                           : d + std::uniform_int_distribution<int>(0, 3)(rng);
            rw::TLPoint plainTotals;
            rw::TLPoint cursorTotals;
            cursorTotals.cInt = M("1");
            const Money plain = rw::GetTaxToDate(tl, plainTotals, d);
            ASSERT_EQ(cursor.taxToDate(d, cursorTotals), plain);
            ASSERT_EQ(cursorTotals, plainTotals);
        }
    }
}

}  // namespace
