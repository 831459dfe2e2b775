#pragma once
// The "Optional Rates" dialog as logic: the tax-motivated rate and the large
// corporate underpayment and overpayment rates with their start dates. Its
// date warnings only advise; a start date that is not a date is refused.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <string>

namespace rw {

// What the dialog's widgets show. Dates are texts as typed or shown
// ("m/d/yyyy", empty for no date).
struct OptRatesForm {
    bool taxMotivated = false;  // "Tax Motivated Rates For Returns Due Before 1/1/90": Yes / No
    bool corpUPRate = false;  // "Use Large Corporation Underpayment Rate After 12/31/90": Yes / No
    std::string corpUPStart;  // "Start Date for Corporate Underpayment Rate:"
    bool corpUPStartEnabled = false;
    bool corpOPRate = false;  // "Use Large Corporation Overpayment Rate After 12/31/94": Yes / No
    std::string corpOPStart;  // "Start Date for Corporate Overpayment Rate:"
    bool corpOPStartEnabled = false;
    FormField<OptRatesForm> refused = nullptr;  // the entry refused, to be selected again
};

class OptRatesDialog {
public:
    OptRatesDialog(Case& c, Messages& msgs);

    // InitDlgOptRates: the three choices from the case; a corporate rate that
    // is on shows its stored start date in an enabled field.
    OptRatesForm open() const;

    // The tax-motivated choice was clicked (either answer): warns when the
    // return is due after 12/31/1989 and when the calculation starts on or
    // before 12/31/1984.
    void ChkTaxMotDate() const;

    // A corporate rate choice was clicked; form holds the new choice. No
    // blanks and disables the date field; Yes enables it and shows the stored
    // start date when the case has the rate on, else proposes the default.
    void radCorpUPRateClick(OptRatesForm& form) const;
    void radCorpOPRateClick(OptRatesForm& form) const;

    // An empty field, or one that holds no date, gets the default start: the
    // day after the threshold (1/1/1991, 1/1/1995) when the return was due on
    // or before it, else the due date. A date in the field is kept.
    void SetDefaultCorpUPRateDate(OptRatesForm& form) const;
    void SetDefaultCorpOPRateDate(OptRatesForm& form) const;

    // A start date field changed and left: a text that is not a date is
    // refused; a date on or before the threshold (12/31/1990, 12/31/1994)
    // draws the "too early" warning.
    void ChkCorpUPDate(OptRatesForm& form) const;
    void ChkCorpOPDate(OptRatesForm& form) const;

    // OK (DlgOptRatesData): stores the three choices; a Yes stores the date
    // of its field, which it needs; a No keeps the stored date. False when a
    // start date was refused (nothing stored).
    bool accept(OptRatesForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

// Warns when the tax-motivated rates are on and the return's due date is not
// between 1/1/1985 and 12/31/1989.
void ChkTaxMotivated(Flag flag, Date due, Messages& msgs);

}  // namespace rw
