#pragma once
// The "Estimated Tax" dialog (Penalties menu, "Estimated Tax...") as logic
// over a plain form: the inputs of the penalty for underpaying estimated tax.

#include "base/messages.h"
#include "casedata/datechecks.h"
#include "penalties/esttax.h"

#include <string>
#include <vector>

namespace rw {

// One row of a dated list (an estimated payment, or an amount withheld on
// its day). A row refuses its own entries: the window selects the field in
// `refused` of the row that holds one.
struct EstTaxRow {
    std::string date;
    std::string amount;
    FormField<EstTaxRow> refused = nullptr;
    friend bool operator==(const EstTaxRow&, const EstTaxRow&) = default;
};

struct EstTaxForm {
    bool calculate = false;  // "Calculate Estimated Tax Penalty": Yes / No
    bool corporation = false;  // "Individual" / "Corporation"
    std::string taxYear;  // the calendar year in which the tax year begins
    std::string fiscalYearEndMonth = "12";  // corporations only: 1 to 12
    std::string currentTax;  // tax after credits of the year
    std::string priorTax;
    bool priorYearUsable = false;
    bool highIncome = false;  // individuals: prior-year AGI over $150,000
    bool largeCorporation = false;  // corporations: $1 million of taxable income
    std::string withholding;  // the total
    bool withholdingByDate = false;  // No: the total counted in four equal parts
    std::vector<EstTaxRow> withholdingRows;
    std::vector<EstTaxRow> payments;
    bool ownInstallments = false;  // annualized or seasonal installments typed in
    std::string installment1;
    std::string installment2;
    std::string installment3;
    std::string installment4;
    std::string noticeAndDemand;  // optional
    std::string note;  // shown above the inputs: how a state case figures the penalty
    FormField<EstTaxForm> refused = nullptr;  // the entry refused, to be selected again
    friend bool operator==(const EstTaxForm&, const EstTaxForm&) = default;
};

// The rows' lists, for their reactions.
enum class EstTaxList { Withholding, Payments };

class EstTaxDialog {
public:
    // The dialog keeps the case's inputs of the penalty, whether it is
    // figured, and the day notice and demand for it was made (NoDate when
    // none) where the case holds them. In a state case (federalCase false) the
    // form's note says how the penalty is figured there.
    EstTaxDialog(EstTaxInput& input, bool& on, Date& noticeAndDemand, Messages& msgs,
                 bool federalCase = true);

    // Fills the form from the case. A tax year never given opens empty.
    EstTaxForm open() const;
    // Leaving a field of the form: a tax year that is not a year or is before
    // 2000, a month that is not 1 to 12, a text that is not an amount or a
    // negative amount, a notice date that is not a date or comes before the
    // tax year ends are refused (told, and the field marked in form.refused).
    void fieldLeft(EstTaxForm& form, FormField<EstTaxForm> field) const;
    // Leaving a field of a list's row: a date outside the tax year's reach
    // (its first day to the return's due date) is refused as well.
    void rowLeft(const EstTaxForm& form, EstTaxRow& row, EstTaxList list,
                 FormField<EstTaxRow> field) const;
    // OK. With Yes, every entry is read again; the first refused one leaves
    // the case as it was (false). The amounts withheld by date must add up
    // to the total, and a list holds at most the 1,000 entries the case file
    // keeps. No turns the penalty off and keeps its inputs.
    bool accept(EstTaxForm& form);

private:
    Messages& msgs_;
    EstTaxInput& input_;
    bool& on_;
    Date& notice_;
    bool federalCase_;
};

}  // namespace rw
