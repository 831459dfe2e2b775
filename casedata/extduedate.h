#pragma once
// The "Extended Due Date" dialog as logic: the date to which the return's due
// date was extended. The failure-to-file months count from it, and interest
// on the failure-to-file and accuracy-related penalties runs from it. Its
// warnings only advise.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <string>

namespace rw {

// What the one date field "Date Return Extended To:" shows ("m/d/yyyy").
struct ExtDueDateForm {
    std::string extended;
    FormField<ExtDueDateForm> refused = nullptr;  // the entry refused, to be selected again
};

class ExtDueDateDialog {
public:
    ExtDueDateDialog(Case& c, Messages& msgs);

    // Opening: a case with no extended due date (day 0 or no date) gets the
    // due date at once; that change stays even when the dialog is then
    // cancelled. The date is checked (ChkExtendedDate) and shown.
    ExtDueDateForm open();

    // The field was left: a date is checked with ChkExtendedDate, a text
    // that is not a date refused. The case is not changed.
    void extendedLeft(ExtDueDateForm& form) const;

    // OK: the field's date into the case's extended due date. False when it
    // was refused (not a date, or empty).
    bool accept(ExtDueDateForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
