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
#include "casedata/esttaxinputs.h"
#include "rates/ratetable.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace rw {

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

// A state case figures the penalty as it figures its other penalties: by the
// federal rules, at the underpayment rates of its own table. Its dialog says so.
inline constexpr std::string_view kEstTaxStateCase
    = "A state case figures this penalty by the federal rules at the state's underpayment rates: "
      "use it only where the state's penalty follows them.";

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

// The first and the last day of the input's tax year: a calendar year for an
// individual, the twelve months after the fiscal year end month for a
// corporation, named by the year in which it begins.
Date EstTaxYearBegins(const EstTaxInput& in);
Date EstTaxYearEnds(const EstTaxInput& in);

// The four nominal due dates and the return's due date of the input's tax year.
std::array<Date, 4> EstTaxDueDates(const EstTaxInput& in);
Date EstTaxReturnDue(const EstTaxInput& in);

}  // namespace rw
