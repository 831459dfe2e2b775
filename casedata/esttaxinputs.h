#pragma once
// What the case holds for the penalty for underpaying estimated tax (Form 2210
// for individuals, Form 2220 for corporations): the filer, the year, the taxes
// that set the required payment, the withholding and the estimated payments.
// penalties/esttax.h figures the penalty from it.

#include "base/dates.h"
#include "base/money.h"

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

    friend bool operator==(const EstTaxInput&, const EstTaxInput&) = default;
};

// The estimated tax penalty of a case: whether it is asked for, its inputs,
// and the date of the notice and demand (NoDate when none was sent).
struct EstTaxCase {
    bool on = false;
    EstTaxInput input{};
    Date noticeDate = NoDate;

    // Neither asked for nor filled in: a case file without it keeps its
    // older form.
    bool isEmpty() const { return *this == EstTaxCase{}; }

    friend bool operator==(const EstTaxCase&, const EstTaxCase&) = default;
};

}  // namespace rw
