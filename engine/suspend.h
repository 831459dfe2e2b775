#pragma once
// The "Suspended Interest Inputs" dialog as logic: the day interest is
// suspended and the day it restarts. Only a valid pair, restart after
// suspension, is ever stored; nothing else changes the stored pair.

#include "base/messages.h"
#include "casedata/caserecord.h"

#include <string>

namespace rw {

// What the two date fields show ("m/d/yyyy", empty for no date).
struct SuspendForm {
    std::string suspendDate;  // "Date Interest Is Suspended:"
    std::string restartDate;  // "Date Suspended Interest Is Restarted:"
};

class SuspendDialog {
public:
    SuspendDialog(Case& c, Messages& msgs);

    // InitDlgSusp: the stored pair when a suspension date is given, else both
    // fields empty.
    SuspendForm open() const;

    // The suspension field changed: the date check ("Interest Suspension").
    void suspendChanged(const SuspendForm& form) const;

    // The restart field changed: the date check ("Interest Restart"), then a
    // warning when the restart is on or before a valid suspension date.
    void restartChanged(const SuspendForm& form) const;

    // OK (DlgSuspData): stores both dates when both are dates and the restart
    // comes after the suspension. Returns true when stored: "&Suspend
    // Interest..." then shows its check mark; false leaves case and mark as
    // they were.
    bool accept(const SuspendForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
