#pragma once
// The "Extended Due Date" dialog as logic: the date to which the return's due
// date was extended. The failure-to-file months count from it, and interest
// on the failure-to-file and accuracy-related penalties runs from it. Its
// warnings only advise.

#include "base/messages.h"
#include "casedata/caserecord.h"

#include <string>

namespace rw {

// What the one date field "Date Return Extended To:" shows ("m/d/yyyy").
struct ExtDueDateForm {
    std::string extended;
};

class ExtDueDateDialog {
public:
    ExtDueDateDialog(Case& c, Messages& msgs);

    // Opening: a case with no extended due date (day 0 or no date) gets the
    // due date at once; that change stays even when the dialog is then
    // cancelled. The date is checked (ChkExtendedDate) and shown.
    ExtDueDateForm open();

    // The field was left: its date (day 0 when it holds none, after the
    // warning) is checked with ChkExtendedDate. The case is not changed.
    void extendedLeft(const ExtDueDateForm& form) const;

    // OK: the field's date into the case's extended due date (day 0 when it
    // holds none, after the warning). True when the field held a date.
    bool accept(const ExtDueDateForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
