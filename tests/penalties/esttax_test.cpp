// The estimated tax penalty by the regular method: installments, payments
// credited earliest underpayment first, and one worksheet line per amount and
// rate period. Every rate table here is made by hand for its case.
#include "support/casebuilder.h"

#include "base/fault.h"
#include "penalties/esttax.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace rwtest;
using Texts = std::vector<std::string>;

namespace {

// An individual owing 10,000 of tax with no usable prior year: 90 % is 9,000,
// installments of 2,250.
rw::EstTaxInput Individual(int year, std::vector<rw::DatedAmount> payments)
{
    return {.taxYear = year, .currentTax = M("10000"), .estimatedPayments = std::move(payments)};
}

// Lines as "installment from to days rate base penalty".
Texts Lines(const rw::EstTaxResult& r)
{
    Texts out;
    for (const rw::EstTaxLine& l : r.lines)
        out.push_back(std::to_string(l.installment + 1) + " " + rw::FormatShortDate(l.from) + " "
                      + rw::FormatShortDate(l.to) + " " + std::to_string(l.days) + " "
                      + std::to_string(std::lround(l.rate * 100)) + "%/"
                      + std::to_string(l.yearDays) + " " + rw::FormatMoney(l.base) + " "
                      + rw::FormatMoney(l.penalty));
    return out;
}

struct Case {
    const char* name;
    rw::EstTaxInput in;
    rw::RateTable rates;
    Texts lines;
    const char* total;
};

const rw::RateTable k2021
    = {Row(D(2021, 4, 1), D(2021, 6, 30), 0.04f), Row(D(2021, 7, 1), D(2021, 9, 30), 0.04f),
       Row(D(2021, 10, 1), D(2021, 12, 31), 0.05f), Row(D(2022, 1, 1), D(2022, 3, 31), 0.05f),
       Row(D(2022, 4, 1), D(2022, 6, 30), 0.06f)};

// The rates of the 2005 Form 2210: its two rate periods as two rows.
// One row a quarter, none crossing a year end, as the program's federal
// table is kept: rows of one rate still make one worksheet line.
const rw::RateTable k2005
    = {Row(D(2005, 4, 1), D(2005, 6, 30), 0.06f), Row(D(2005, 7, 1), D(2005, 9, 30), 0.06f),
       Row(D(2005, 10, 1), D(2005, 12, 31), 0.07f), Row(D(2006, 1, 1), D(2006, 3, 31), 0.07f),
       Row(D(2006, 4, 1), D(2006, 6, 30), 0.07f)};

TEST(EstTaxPenalty, WorksheetLines)
{
    const Case cases[] = {
        // Due 4/15, 6/15, 9/15/2021 and 1/15/2022, a Saturday before Martin Luther King Day:
        // paid 1/18/2022 is on time.
        {"PaidOnEachDueDate",
         Individual(2021, {{D(2021, 4, 15), M("2250")},
                           {D(2021, 6, 15), M("2250")},
                           {D(2021, 9, 15), M("2250")},
                           {D(2022, 1, 18), M("2250")}}),
         k2021,
         {},
         "0.00"},
        // The 4 % of two quarter rows is one rate period: 2,250 x 4 % x 168/365 = 41.4247;
        // x 4 % x 107/365 = 26.3836; x 4 % x 15/365 = 3.6986; x 5 % x 1/365 = 0.3082.
        // 41.42 + 0.31 + 26.38 + 0.31 + 3.70 + 0.31.
        {"OnePaymentCoversThree",
         Individual(2021, {{D(2021, 10, 1), M("6750")}, {D(2022, 1, 18), M("2250")}}),
         k2021,
         {"1 4/15/2021 9/30/2021 168 4%/365 2,250.00 41.42",
          "1 9/30/2021 10/1/2021 1 5%/365 2,250.00 0.31",
          "2 6/15/2021 9/30/2021 107 4%/365 2,250.00 26.38",
          "2 9/30/2021 10/1/2021 1 5%/365 2,250.00 0.31",
          "3 9/15/2021 9/30/2021 15 4%/365 2,250.00 3.70",
          "3 9/30/2021 10/1/2021 1 5%/365 2,250.00 0.31"},
         "72.43"},
        // 750 over the first installment pays the second in part: 1,500 x 4 % x 30/365 = 4.9315
        // (one line across the quarter rows of one rate).
        {"OverpaymentCarriedForward",
         Individual(2021, {{D(2021, 4, 15), M("3000")},
                           {D(2021, 7, 15), M("1500")},
                           {D(2021, 9, 15), M("2250")},
                           {D(2022, 1, 18), M("2250")}}),
         k2021,
         {"2 6/15/2021 7/15/2021 30 4%/365 1,500.00 4.93"},
         "4.93"},
        // The third installment paid 1,000 on 11/14 and 1,250 on 1/18, across the change
        // to 5 %: 2,250 x 4 % x 15/365 = 3.6986; 1,000 x 5 % x 45/365 = 6.1644; the 1,250
        // unpaid from the change: x 5 % x 110/365 = 18.8356 (a year end inside one rate is no
        // new line).
        {"RateChangesWhileUnpaid",
         Individual(2021, {{D(2021, 4, 15), M("2250")},
                           {D(2021, 6, 15), M("2250")},
                           {D(2021, 11, 14), M("1000")},
                           {D(2022, 1, 18), M("3500")}}),
         k2021,
         {"3 9/15/2021 9/30/2021 15 4%/365 2,250.00 3.70",
          "3 9/30/2021 11/14/2021 45 5%/365 1,000.00 6.16",
          "3 9/30/2021 1/18/2022 110 5%/365 1,250.00 18.84"},
         "28.70"},
        // 2024 counts 366 days; 1 to 15 April keeps March's 8 %, not April's 9 %, on one
        // line. 1,000 x 7 % x 15/365 = 2.8767; x 8 % x 92/365 = 20.1644; x 8 % x 10/366 =
        // 2.1858; 2,250 x 8 % x 91/366 = 44.7541. The first, due 4/15/2023 (a Saturday
        // before Emancipation Day kept on Monday), is on time on 4/18.
        {"LeapYear",
         Individual(2023, {{D(2023, 4, 18), M("2250")},
                           {D(2023, 6, 15), M("2250")},
                           {D(2023, 9, 15), M("1250")},
                           {D(2024, 1, 10), M("1000")}}),
         {Row(D(2023, 7, 1), D(2023, 9, 30), 0.07f), Row(D(2023, 10, 1), D(2023, 12, 31), 0.08f),
          Row(D(2024, 1, 1), D(2024, 3, 31), 0.08f), Row(D(2024, 4, 1), D(2024, 6, 30), 0.09f)},
         {"3 9/15/2023 9/30/2023 15 7%/365 1,000.00 2.88",
          "3 9/30/2023 12/31/2023 92 8%/365 1,000.00 20.16",
          "3 12/31/2023 1/10/2024 10 8%/366 1,000.00 2.19",
          "4 1/15/2024 4/15/2024 91 8%/366 2,250.00 44.75"},
         "69.98"},
        // 6/15/2019 a Saturday, 9/15/2019 a Sunday: paid on Monday 6/17 is on time, paid on
        // Tuesday 9/17 is late from the 15th: 2,250 x 5 % x 2/365 = 0.6164.
        {"DueOnAWeekend",
         Individual(2019, {{D(2019, 4, 15), M("2250")},
                           {D(2019, 6, 17), M("2250")},
                           {D(2019, 9, 17), M("2250")},
                           {D(2020, 1, 15), M("2250")}}),
         {Row(D(2019, 7, 1), D(2019, 9, 30), 0.05f)},
         {"3 9/15/2019 9/17/2019 2 5%/365 2,250.00 0.62"},
         "0.62"},
        // A year from 7/1/2022: due 10/15/2022 (a Saturday: on time on 10/17), 12/15/2022,
        // 3/15 and 6/15/2023. 40,000 of tax, under the 100,000 of the prior year: 10,000 each.
        // 5,000 x 6 % x 16/365 = 13.1507; x 7 % x 74/365 = 70.9589; x 7 % x 92/365 = 88.2192.
        {"CorporationFiscalYear",
         {.filer = rw::EstTaxFiler::Corporation,
          .taxYear = 2022,
          .fiscalYearEndMonth = 6,
          .currentTax = M("40000"),
          .priorTax = M("100000"),
          .priorYearUsable = true,
          .estimatedPayments = {{D(2022, 10, 17), M("10000")},
                                {D(2022, 12, 15), M("5000")},
                                {D(2023, 3, 15), M("10000")},
                                {D(2023, 6, 15), M("15000")}}},
         {Row(D(2022, 10, 1), D(2022, 12, 31), 0.06f), Row(D(2023, 1, 1), D(2023, 3, 31), 0.07f),
          Row(D(2023, 4, 1), D(2023, 6, 30), 0.07f)},
         {"2 12/15/2022 12/31/2022 16 6%/365 5,000.00 13.15",
          "2 12/31/2022 3/15/2023 74 7%/365 5,000.00 70.96",
          "3 3/15/2023 6/15/2023 92 7%/365 5,000.00 88.22"},
         "172.33"},
        // Publication 505 (2006), Figure 4-B, Regular Installment Method (Ben Brown), tax year
        // 2005: tax 7,031, prior year 6,116, withheld 3,228 (807 on each due date), 1,000
        // paid 9/2/2005 and 1/12/2006; 6 % to 9/30/2005, 7 % to 4/15/2006. Installments of
        // 1,529. Form 2210 lines 28 and 30: 7.24, 12.99, 6.71, 2.88, 19.95, 3.41, 15.33;
        // line 31: 68.51.
        {"Publication505Of2006BenBrown",
         {.taxYear = 2005,
          .currentTax = M("7031"),
          .priorTax = M("6116"),
          .priorYearUsable = true,
          .withholding = M("3228"),
          .estimatedPayments = {{D(2005, 9, 2), M("1000")}, {D(2006, 1, 12), M("1000")}}},
         k2005,
         {"1 4/15/2005 6/15/2005 61 6%/365 722.00 7.24",
          "2 6/15/2005 9/2/2005 79 6%/365 1,000.00 12.99",
          "2 6/15/2005 9/15/2005 92 6%/365 444.00 6.71",
          "3 9/15/2005 9/30/2005 15 6%/365 1,166.00 2.88",
          "3 9/30/2005 1/12/2006 104 7%/365 1,000.00 19.95",
          "3 9/30/2005 1/15/2006 107 7%/365 166.00 3.41",
          "4 1/15/2006 4/15/2006 90 7%/365 888.00 15.33"},
         "68.51"},
        // Publication 505 (2008), Figure 4-C, Annualized Income Method (Laura Maple), tax year
        // 2007: Schedule AI installments of 0, 140, 1,169 and 1,867 typed in; 375 withheld each
        // quarter; 100 paid 8/15/2007 and 500 on 12/3/2007; 8 % to 12/31/2007, 7 % to 4/15/2008
        // (April at March's rate). Form 2210 lines 28 and 30: 1.45 and 18.73 (a leap year's
        // 366 days); total 20.18. Part I is not shown there: any tax whose required annual
        // payment covers the installments (here 90 % of 3,600) gives the same lines.
        {"Publication505Of2008LauraMaple",
         {.taxYear = 2007,
          .currentTax = M("3600"),
          .withholding = M("1500"),
          .estimatedPayments = {{D(2007, 8, 15), M("100")}, {D(2007, 12, 3), M("500")}},
          .installments = {{M("0"), M("140"), M("1169"), M("1867")}}},
         {Row(D(2007, 4, 1), D(2007, 12, 31), 0.08f), Row(D(2008, 1, 1), D(2008, 3, 31), 0.07f),
          Row(D(2008, 4, 1), D(2008, 6, 30), 0.06f)},
         {"3 9/15/2007 12/3/2007 79 8%/365 84.00 1.45",
          "4 1/15/2008 4/15/2008 91 7%/366 1,076.00 18.73"},
         "20.18"},
        // Publication 505, the annualized example on Form 2210 (2002) (Examples 4.7 and 4.9):
        // installments of 338, 1,732, 1,385 and 2,089; 807 withheld each quarter; 1,000 paid
        // 9/2/2002 and 1/12/2003; 6 % through 2002, 5 % after. The 34 left of the third
        // installment crosses the change: .60 and .06. Line 36: 10.48. Part I as Ben Brown's.
        {"Publication505AnnualizedOf2002",
         {.taxYear = 2002,
          .currentTax = M("7031"),
          .priorTax = M("6116"),
          .priorYearUsable = true,
          .withholding = M("3228"),
          .estimatedPayments = {{D(2002, 9, 2), M("1000")}, {D(2003, 1, 12), M("1000")}},
          .installments = {{M("338"), M("1732"), M("1385"), M("2089")}}},
         {Row(D(2002, 4, 1), D(2002, 12, 31), 0.06f), Row(D(2003, 1, 1), D(2003, 6, 30), 0.05f)},
         {"2 6/15/2002 9/2/2002 79 6%/365 456.00 5.92",
          "3 9/15/2002 12/31/2002 107 6%/365 34.00 0.60",
          "3 12/31/2002 1/12/2003 12 5%/365 34.00 0.06",
          "4 1/15/2003 4/15/2003 90 5%/365 316.00 3.90"},
         "10.48"},
        // 10,000 less 9,001 withheld is under 1,000: no penalty, whatever was paid.
        {"UnderTheThreshold",
         [] {
             rw::EstTaxInput in = Individual(2021, {});
             in.withholding = M("9001");
             in.withholdingByDate = {{D(2022, 1, 18), M("9001")}};
             return in;
         }(),
         {},
         {},
         "0.00"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const rw::EstTaxResult r = rw::ComputeEstTaxPenalty(c.in, c.rates);
        EXPECT_EQ(Lines(r), c.lines);
        EXPECT_EQ(r.total, M(c.total));
    }
}

rw::EstTaxInput Corporation(int year, int endMonth, const char* tax, const char* prior)
{
    return {.filer = rw::EstTaxFiler::Corporation,
            .taxYear = year,
            .fiscalYearEndMonth = endMonth,
            .currentTax = M(tax),
            .priorTax = M(prior),
            .priorYearUsable = true};
}

TEST(EstTaxPenalty, InstallmentsAndDates)
{
    // The last installment of 2005, due 1/15/2006, a Sunday before Martin Luther King Day.
    rw::EstTaxInput in = Individual(2005, {});
    in.currentTax = M("7031");
    in.withholding = M("3228");
    EXPECT_EQ(rw::ComputeEstTaxPenalty(in, k2005).installments[3].actualDue, D(2006, 1, 17));

    // A high-income individual of 2000: 108.6 % of 10,000 is under 90 % of 20,000.
    in = {.taxYear = 2000,
          .currentTax = M("20000"),
          .priorTax = M("10000"),
          .priorYearUsable = true,
          .highIncome = true,
          .withholding = M("19000")};
    EXPECT_EQ(rw::ComputeEstTaxPenalty(in, {}).requiredAnnualPayment, M("10860"));

    // A large corporation: the first installment on the prior year's 200,000, the second
    // makes up 50 % of 400,000.
    in = Corporation(2020, 12, "400000", "200000");
    in.largeCorporation = true;
    in.estimatedPayments = {{D(2020, 4, 15), M("400000")}};
    const auto& inst = rw::ComputeEstTaxPenalty(in, {}).installments;
    EXPECT_EQ((std::array{inst[0].required, inst[1].required, inst[3].required}),
              (std::array{M("50000"), M("150000"), M("100000")}));
    in.currentTax = M("499.99");
    EXPECT_EQ(rw::ComputeEstTaxPenalty(in, {}).exemption, rw::EstTaxExemption::SmallTax);

    // A corporation's return: the 3rd month after the year for years begun before 2016, the
    // 4th after; a year ending 30 June keeps the 3rd for years begun before 2026.
    EXPECT_EQ(rw::EstTaxReturnDue(Corporation(2015, 12, "0", "0")), D(2016, 3, 15));
    EXPECT_EQ(rw::EstTaxReturnDue(Corporation(2016, 12, "0", "0")), D(2017, 4, 15));
    EXPECT_EQ(rw::EstTaxReturnDue(Corporation(2025, 6, "0", "0")), D(2026, 9, 15));
    EXPECT_EQ(rw::EstTaxReturnDue(Corporation(2026, 6, "0", "0")), D(2027, 10, 15));
}

TEST(EstTaxPenalty, Refusals)
{
    EXPECT_THROW(rw::ComputeEstTaxPenalty(Individual(1999, {}), {}), rw::Refusal);
    rw::EstTaxInput in = Individual(2021, {});
    in.priorTax = M("-1");
    EXPECT_THROW(rw::ComputeEstTaxPenalty(in, {}), rw::Refusal);
    // Unpaid from 4/15/2021 but the table ends on 6/30/2021.
    try {
        rw::ComputeEstTaxPenalty(Individual(2021, {}), {k2021[0]});
        ADD_FAILURE() << "not refused";
    } catch (const rw::Refusal& r) {
        EXPECT_EQ(r.text(), "The rate table holds no underpayment rate for 7/1/2021, a day the "
                            "estimated tax penalty runs. Install a release of the rates that "
                            "covers it.");
    }
}

}  // namespace
