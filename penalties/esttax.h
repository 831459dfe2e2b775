#pragma once
// The penalty for underpaying estimated tax, figured by the regular method of
// Form 2210 (individuals) and Form 2220 (corporations): the required
// installments, the payments credited to them in date order, and the penalty
// of each underpayment for each rate period it stayed unpaid.
//
// Rounding: the required annual payment and each required installment are
// rounded to cents, halves up, as the form's columns are filled in; each
// penalty line is the exact product underpayment x days x rate / days of the
// year, rounded to cents, halves up. Rates are read to millionths (the federal
// underpayment rate is a whole percent).

#include "base/dates.h"
#include "base/money.h"
#include "rates/ratetable.h"

#include <array>
#include <optional>
#include <vector>

namespace rw {

enum class EstTaxFiler { Individual, Corporation };

struct DatedAmount {
    Date date;
    Money amount;
    friend bool operator==(const DatedAmount&, const DatedAmount&) = default;
};

struct EstTaxInput {
    EstTaxFiler filer = EstTaxFiler::Individual;
    // The calendar year in which the tax year begins (2000 or later).
    int taxYear = 0;
    // Corporations: the month the tax year ends (12 for a calendar year).
    // Individuals always use the calendar year.
    int fiscalYearEndMonth = 12;

    Money currentTax{};  // Form 2210 line 4 / Form 2220 line 3
    Money priorTax{};
    // The prior year may set the required payment: for an individual, a
    // 12-month year with a return filed; for a corporation, a 12-month year
    // (one with no tax is never used).
    bool priorYearUsable = false;
    // Individuals: the prior year's adjusted gross income exceeded $150,000
    // ($75,000 married filing separately).
    bool highIncome = false;
    // Corporations: taxable income of $1 million or more in any of the three
    // prior years; the prior year then sets only the first installment.
    bool largeCorporation = false;

    // Tax withheld: counted in four equal parts on the installments' due
    // dates, or on the dates actually withheld when those are given (they must
    // add up to the total).
    Money withholding{};
    std::vector<DatedAmount> withholdingByDate{};
    std::vector<DatedAmount> estimatedPayments{};
    // The required installment of each period (annualized income or seasonal
    // installments) in place of a quarter of the required annual payment.
    std::optional<std::array<Money, 4>> installments{};
};

// One required installment, as the columns of Section A of the form.
struct EstTaxInstallment {
    Date nominalDue;  // the 15th: the penalty runs from this day
    Date actualDue;  // moved past a weekend or legal holiday: payments until this day are on time
    Money required;
    Money paidOnTime;  // payments and overpayment credited by the due date
    Money overpayment;  // carried to the next installment
    Money underpayment;
    std::vector<DatedAmount> paidLate;  // payments applied to the underpayment afterwards
};

// One line of the penalty worksheet: an amount of one installment's
// underpayment kept unpaid from `from` to `to` within one rate period.
struct EstTaxLine {
    int installment = 0;  // 0 to 3
    Date from;  // the due date or the day before the rate period begins
    Date to;  // the day paid or the last day of the rate period
    int days = 0;
    float rate = 0.0f;
    int yearDays = 365;
    Money base;
    Money penalty;
    friend bool operator==(const EstTaxLine&, const EstTaxLine&) = default;
};

enum class EstTaxExemption {
    None,
    SmallTax,  // individuals: tax less withholding under $1,000; corporations: tax under $500
};

struct EstTaxResult {
    EstTaxExemption exemption = EstTaxExemption::None;
    Money requiredAnnualPayment;
    Date returnDue;  // the return's due date without extensions: the penalty stops here
    std::array<EstTaxInstallment, 4> installments;  // empty when exempt
    std::vector<EstTaxLine> lines;
    Money total;
};

// Throws Refusal for input the penalty cannot be figured on (negative amounts,
// a tax year before 2000, a payment without a date, withholding dates that do
// not add up to the withholding) and for a day the rate table holds no
// underpayment rate for.
EstTaxResult ComputeEstTaxPenalty(const EstTaxInput& in, const RateTable& rates);

// ---- The pieces, for the dialog and the reports ----------------------------

// A Saturday, a Sunday, a federal legal holiday or its observed day, or
// Emancipation Day in the District of Columbia (16 April, kept by the filing
// deadlines since 2007).
bool IsNonBusinessDay(Date d);
// d, or the next day that is a business day.
Date NextBusinessDay(Date d);

// The share of the prior year's tax a high-income individual must pay, in
// tenths of a percent: 1086 for 2000, 1100 for 2001, 1120 for 2002, 1100 since.
int HighIncomePriorYearShare(int taxYear);

// The four nominal due dates and the return's due date of the input's tax year.
std::array<Date, 4> EstTaxDueDates(const EstTaxInput& in);
Date EstTaxReturnDue(const EstTaxInput& in);

}  // namespace rw
