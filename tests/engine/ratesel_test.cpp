// Rate selection: the federal revisions at their thresholds, the state
// revision, the standard rate, and the cursors against the plain searches. A
// revised rate is the single nearest to the double computed from the single:
// 0.08f + 0.02 -> 0.1f, 0.08f x 1.2 -> 0.096f, 0.08f - 0.01 -> 0.07f,
// 0.08f - 0.025 -> 0.055f, 0.005f - 0.01 -> -0.005f.
#include "support/casebuilder.h"

#include "base/fault.h"
#include "engine/ratesel.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

using namespace rwtest;
using rw::ResultPeriod;

namespace {

// options: T tax-motivated, C corporate, U the large corporate underpayment
// rate from 1/1/1991, O the corporate overpayment rate from 1/1/1995.
struct USCase {
    const char* name;
    Date begin;  // the row's first day
    const char* balance;  // cTaxPen; also the tax to date unless given
    std::string_view options;
    float want;
    const char* label;  // nullptr: left unset
    float rate = 0.08f;
    const char* taxToDate = nullptr;
    const char* accrued = "0";
};

TEST(Rates, FederalRevisionAtItsThresholds)
{
    for (const USCase& u :
         {// tax-motivated: 1.2 x the rate for rows beginning after 12/31/1984
          USCase{"taxMotivatedFrom1985", D(1985, 1, 1), "1000", "T", 0.096f, "Tax Motivated"},
          USCase{"taxMotivatedNotOn19841231", D(1984, 12, 31), "1000", "T", 0.08f, ""},
          // large corporate underpayment: more than 100,000.00 of tax to date, +2 %
          USCase{"largeCorpAtExactly100000", D(1992, 1, 1), "100000", "CU", 0.08f, ""},
          USCase{"largeCorpAt100000_01", D(1992, 1, 1), "100000.01", "CU", 0.1f,
                 "Corp Unrpmt Rate"},
          USCase{"largeCorpOnItsStartDate", D(1991, 1, 1), "200000", "CU", 0.1f,
                 "Corp Unrpmt Rate"},
          USCase{"largeCorpDayBeforeStart", D(1990, 12, 31), "200000", "CU", 0.08f, ""},
          USCase{"largeCorpNeedsTaxToDate", D(1992, 1, 1), "200000", "CU", 0.08f, "", 0.08f,
                 "100000"},
          // both: the corporate rate on the standard rate (10 %, not 11.6 %)
          USCase{"largeCorpWinsOverTaxMotivated", D(1992, 1, 1), "200000", "TCU", 0.1f,
                 "Corp Unrpmt Rate"},
          // corporate overpayment: below -10,000.00, -2.5 %; at it, the ordinary -1 %
          USCase{"corpOverpaymentAtExactly10000", D(1996, 1, 1), "-10000", "CO", 0.07f,
                 "Overpmt Rate"},
          USCase{"corpOverpaymentAt10000_01", D(1996, 1, 1), "-10000.01", "CO", 0.055f,
                 "Corp Ovrpmt Rate"},
          // overpayment differential: -1 % from 1/1/1987 through 12/31/1998, later for corporations
          // only
          USCase{"overpayment19861231", D(1986, 12, 31), "-500", "", 0.08f, "Overpmt Rate"},
          USCase{"overpayment19870101", D(1987, 1, 1), "-500", "", 0.07f, "Overpmt Rate"},
          USCase{"overpayment19981231", D(1998, 12, 31), "-500", "", 0.07f, "Overpmt Rate"},
          USCase{"overpayment19990101", D(1999, 1, 1), "-500", "", 0.08f, "Overpmt Rate"},
          USCase{"overpayment19990101Corporate", D(1999, 1, 1), "-500", "C", 0.07f, "Overpmt Rate"},
          USCase{"zeroBalanceIsAnOverpayment", D(1990, 1, 1), "0", "", 0.07f, "Overpmt Rate"},
          USCase{"balanceCountsAccruedInterest", D(1990, 1, 1), "-100", "T", 0.096f,
                 "Tax Motivated", 0.08f, nullptr, "100.01"},
          // rates of 0.01 % and below stand as they are, description untouched
          USCase{"negligibleRate", D(1990, 1, 1), "-500", "", 0.0001f, nullptr, 0.0001f},
          // a differential below a low rate stays negative
          USCase{"revisedBelowZero", D(1990, 1, 1), "-500", "", -0.005f, "Overpmt Rate", 0.005f}}) {
        SCOPED_TRACE(u.name);
        rw::Case c = FederalCase(D(1980, 1, 1), D(2020, 1, 1), "0");
        c.init.bTaxMotivated = rw::ToFlag(u.options.find('T') != u.options.npos);
        c.init.bCorporate = rw::ToFlag(u.options.find('C') != u.options.npos);
        c.init.bCorpUPRate = rw::ToFlag(u.options.find('U') != u.options.npos);
        c.init.dtCorpUPRateStart = D(1991, 1, 1);
        c.init.bCorpOPRate = rw::ToFlag(u.options.find('O') != u.options.npos);
        c.init.dtCorpOPRateStart = D(1995, 1, 1);
        rw::TLPoint toDate, later;  // a point after the row's first day never counts
        toDate.dtDate = D(1980, 1, 1);
        toDate.cTax = M(u.taxToDate ? u.taxToDate : u.balance);
        later.dtDate = u.begin + 1;
        later.cTax = M("-999999");
        ResultPeriod row;
        row.dtBegin = u.begin;
        row.dtEnd = u.begin + 30;
        row.fRate = u.rate;
        row.cTaxPen = M(u.balance);
        row.cAccruedInt = M(u.accrued);
        EXPECT_EQ(rw::GetRevisedUSRate(c.init, row, {toDate, later}), u.want);
        EXPECT_TRUE(u.label ? row.sDesc.is(u.label) : row.sDesc.isUnset())
            << "'" << row.sDesc.str() << "'";
    }
}

TEST(Rates, ADescriptionAlreadySetStays)
{
    ResultPeriod row;
    row.dtBegin = D(1990, 1, 1);
    row.fRate = 0.08f;
    row.sDesc = "Int Suspended";
    EXPECT_EQ(rw::GetRevisedUSRate(FederalCase(D(1980, 1, 1), D(2020, 1, 1), "0").init, row, {}),
              0.07f);
    EXPECT_TRUE(row.sDesc.is("Int Suspended"));
}

TEST(Rates, StateUnderpaymentRateOrTheTablesOverpaymentRate)
{
    for (const auto& [balance, rate, want, label] :
         {std::tuple{"0.01", 0.09f, 0.09f, "Undrpmt Rate"},
          {"0", 0.09f, 0.0625f, "Overpmt Rate"},
          {"-10", 0.09f, 0.0625f, "Overpmt Rate"},
          {"-10", 0.0001f, 0.0001f, ""}}) {  // "": left unset
        ResultPeriod row;
        row.fRate = rate;
        row.cTaxPen = M(balance);
        EXPECT_EQ(rw::GetRevisedStateRate(row, Row(D(2017, 1, 1), D(2017, 12, 31), rate, 0.0625f)),
                  want)
            << balance;
        EXPECT_TRUE(*label ? row.sDesc.is(label) : row.sDesc.isUnset()) << balance;
    }
    // a refund rate never published: owed is computed, overpaid (zero too) is a fault
    const rw::RateRow noRefund
        = Row(D(2010, 1, 1), D(2010, 12, 31), 0.09f, std::numeric_limits<float>::quiet_NaN());
    ResultPeriod row;
    row.fRate = 0.09f;
    row.cTaxPen = M("100");
    EXPECT_EQ(rw::GetRevisedStateRate(row, noRefund), 0.09f);
    row.cTaxPen = Money();
    const std::string fault = FaultOf([&] { rw::GetRevisedStateRate(row, noRefund); });
    EXPECT_TRUE(fault.starts_with("5 GetRevisedStateRate: ")) << fault;
    EXPECT_NE(fault.find("01/01/2010 to 12/31/2010"), std::string::npos) << fault;
}

const rw::RateTable kTwoRows = {Row(D(2017, 1, 1), D(2017, 6, 30), 0.04f, 0.03f, 'C'),
                                Row(D(2017, 7, 1), D(2017, 12, 31), 0.05f, 0.04f, 'S')};

TEST(Rates, StandardRateIsFromTheFirstRowEndingOnOrAfterTheDate)
{
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2016, 1, 1)), 0.04f);
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2017, 6, 30)), 0.04f);
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2017, 7, 1)), 0.05f);
    EXPECT_EQ(rw::GetStdPeriodRate(kTwoRows, D(2017, 12, 31)), 0.05f);
    EXPECT_EQ(FaultOf([] { rw::GetStdPeriodRate(kTwoRows, D(2018, 1, 1)); }),
              "9 GetStdPeriodRate: the date 01/01/2018 lies beyond the rate table, which ends "
              "12/31/2017");
}

// A federal overpayment through the whole computation: -10,000.00 in 1990 at
// 10 % less the 1 % differential = 9 %, 89 days:
// (1 + 0.09/365)^89 - 1 = 0.0221850084; x -10,000 = -221.8501 -> -221.85.
TEST(Rates, OverpaymentThroughTheComputation)
{
    std::vector<ResultPeriod> rows;
    rw::TimeLine tl;
    const Money total = rw::GetInterest(FederalCase(D(1990, 1, 1), D(1990, 3, 31), "-10000"),
                                        Quarterly(1990, 1990, 0.10f), nullptr, rows, tl);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].fRate, 0.09f);
    EXPECT_TRUE(rows[1].sDesc.is("Overpmt Rate"));
    EXPECT_EQ(total, M("-221.85"));
}

// The cursors of the rate selection answer as the plain searches do, for
// dates mostly ascending, now and then earlier, on tables and time lines in
// order or not.
TEST(Rates, CursorsAgreeWithThePlainSearches)
{
    std::mt19937 rng(12345);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    for (int round = 0; round < 200; ++round) {
        rw::RateTable t;
        Date thru = D(2000, 1, 1);
        for (int i = 0, n = pick(0, 12); i < n; ++i) {  // every third table out of order
            thru = round % 3 ? thru + pick(0, 40) : D(2000, 1, 1) + pick(0, 400);
            t.push_back(Row(thru, thru, static_cast<float>(i)));
        }
        rw::TimeLine tl(static_cast<std::size_t>(pick(0, 30)));
        for (rw::TLPoint& p : tl) {
            p.dtDate = D(2000, 1, 1) + pick(0, 400);
            p.cTax = Money::fromCents(pick(-100000, 100000));
            p.cPen = Money::fromCents(pick(-1000, 1000));
        }
        if (round % 2 == 0) {
            rw::MakeSortCodes(tl);
            rw::SortPoints(tl);
        }
        rw::RateRowFinder finder(t);
        rw::TaxToDateCursor cursor(tl);
        Date d = D(1999, 12, 1);
        for (int q = 0; q < 40; ++q) {
            d = q % 9 == 8 ? D(1999, 12, 1) + pick(0, 500) : d + pick(0, 12);
            std::ptrdiff_t plain = -1;
            for (std::size_t i = 0; i < t.size() && plain < 0; ++i)
                if (t[i].dtThru >= d)
                    plain = static_cast<std::ptrdiff_t>(i);
            ASSERT_EQ(finder.find(d), plain);
            rw::TLPoint plainTotals, cursorTotals;
            cursorTotals.cInt = M("1");
            ASSERT_EQ(cursor.taxToDate(d, cursorTotals), rw::GetTaxToDate(tl, plainTotals, d));
            ASSERT_EQ(cursorTotals, plainTotals);
        }
    }
}

}  // namespace
