#pragma once
// The "Suspended Interest Inputs" dialog as logic: the day interest is
// suspended and the day it restarts. A pair, restart after suspension, is
// stored; both fields emptied remove the suspension; anything else is refused.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <string>

namespace rw {

// What the two date fields show ("m/d/yyyy", empty for no date).
struct SuspendForm {
    std::string suspendDate;  // "Date Interest Is Suspended:"
    std::string restartDate;  // "Date Suspended Interest Is Restarted:"
    FormField<SuspendForm> refused = nullptr;  // the entry refused, to be selected again
};

class SuspendDialog {
public:
    SuspendDialog(Case& c, Messages& msgs);

    // InitDlgSusp: the stored pair when a suspension date is given, else both
    // fields empty.
    SuspendForm open() const;

    // The suspension field changed and left: a text that is not a date is
    // refused ("Interest Suspension").
    void suspendChanged(SuspendForm& form) const;

    // The restart field changed and left: a text that is not a date is
    // refused ("Interest Restart"); a restart on or before the suspension date
    // is warned about.
    void restartChanged(SuspendForm& form) const;

    // OK (DlgSuspData): stores both dates, or with both fields empty removes
    // the suspension (both NoDate). False, nothing changed, when refused: one
    // date without the other, a text that is not a date, or a restart on or
    // before the suspension.
    bool accept(SuspendForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
