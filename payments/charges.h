#pragma once
// The "Other Charges" list and the "Addition To Tax" dialog as logic over
// plain forms. An other charge is an addition to tax assessed after the start
// of the calculation: its tax and penalty parts enter the balances on the day
// interest starts to run on it.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <functional>
#include <string>
#include <vector>

namespace rw {

struct ChargeForm {
    std::string description;  // "Description of Charge:"
    std::string liabilityDate;  // "Date of Liability:"
    std::string interestDate;  // "Date Interest Runs on Charge:"
    std::string total;  // "Total Charge:"
    std::string toTax;  // "Applied As Tax:"
    std::string toPenalties;  // "Applied As Penalties:"
    std::string unallocatedLabel;  // CSLblBalance: "Unallocated: 0.00"
    FormField<ChargeForm> refused = nullptr;  // the entry refused, to be selected again
};

// The reactions of "Addition To Tax" while it is shown.
class ChargeDialog {
public:
    ChargeDialog(const Case& c, Messages& msgs);

    // CalcUnallocCharge, after Total, Tax or Penalties changed.
    static void calcUnallocCharge(ChargeForm& form);
    // Leaving "Date of Liability:": a text that is not a date is refused
    // ("Charge"); a date gets the period check ("Addition to Tax liability").
    void liabilityLeft(ChargeForm& form) const;
    // Leaving "Date Interest Runs on Charge:" or a money field: a text that
    // is not a date, or not an amount, is refused.
    void fieldLeft(ChargeForm& form, FormField<ChargeForm> field) const;
    // OK: false, the entry refused and the dialog kept open, when the date
    // of liability is not given, a date field holds no date, a money field
    // is not an amount or the total is 0.
    bool okAllowed(ChargeForm& form) const;

private:
    const Case& case_;
    Messages& msgs_;
};

struct ChargesForm {
    std::vector<std::string>
        lines;  // lstChrg: "mm/dd/yyyy" + " " + the 16 characters of the description
    bool editEnabled = false;
    bool deleteEnabled = false;
};

class ChargesDialog {
public:
    // Shows "Addition To Tax" modally over the form; true for OK, false for
    // Cancel.
    using ShowChargeDialog = std::function<bool(ChargeForm&)>;

    ChargesDialog(Case& c, Messages& msgs, ShowChargeDialog showCharge);

    // InitChrgIP.
    ChargesForm open();
    // FillChrgLst: sorts the charges, then the lines.
    void fillChrgLst(ChargesForm& form);
    // SortChrg: by date of liability; charges of one day keep their order.
    void sortChrg();
    // AddChrgClick.
    void add(ChargesForm& form);
    // EditChrg (-1: no selection).
    void edit(ChargesForm& form, int selected);
    // DelChrg.
    void remove(ChargesForm& form, int selected);

    // AddChrgPen: shows the dialog over form and, unless cancelled, writes
    // the form into charge (the window lets OK through only for accepted
    // entries). A charge without a date for
    // its interest, which has none yet, takes its date of liability (the field
    // shows it and the user is told).
    bool addChrgPen(ChargeRec& charge, ChargeForm& form);

private:
    Case& case_;
    Messages& msgs_;
    ShowChargeDialog showCharge_;
    ChargeDialog charge_;
};

}  // namespace rw
