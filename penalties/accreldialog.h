#pragma once
// The "Accuracy Related Penalty" dialog as logic over a plain form.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <string>

namespace rw {

enum class AccRelRateChoice { Normal, EconomicSubstance, Other };

// The controls that show a hint in the note box when they receive the focus.
enum class AccRelField { Underpayment, NormalRate, EconomicSubstanceRate, OtherRate, Rate };

struct AccRelForm {
    bool calculate = false;  // "Calculate Accuracy Related Penalty": "&Yes" / "&No"
    std::string underpayment;  // "Accuracy Related Underpayment:"
    bool underpaymentEnabled = false;
    AccRelRateChoice rateChoice = AccRelRateChoice::Normal;
    std::string rate;  // "Accuracy Related Penalty Rate (20%=.2):", pattern ".#0"
    bool rateEnabled = false;
    bool focusRate = false;  // the window moves the focus to the rate field and clears this
    std::string note;  // txtAccNotes
    FormField<AccRelForm> refused = nullptr;  // the entry refused, to be selected again
};

inline constexpr const char* kAccRelPre1990Note
    = "Since the due date of the return is before 1990.  The Accuracy Related penalty should not "
      "be used.";

class AccRelDialog {
public:
    AccRelDialog(Case& c, Messages& msgs);

    // InitDlgAccRel. A return due on or before 12/31/1989 opens with No, the
    // penalty turned off in the case and the note shown. A case whose penalty
    // is off opens with No, the normal rate chosen and .20 in the closed rate
    // field, so that choosing Yes needs nothing more than the underpayment.
    AccRelForm open();
    // Yes / No: the underpayment field follows; No turns the penalty off in
    // the case at once, even if the dialog is then cancelled.
    void calculateChanged(AccRelForm& form);
    // SetAccRelRateInput: a click on one of the three rate choices.
    static void rateChoiceClicked(AccRelForm& form);
    // The hint of the control that received the focus.
    static void focusEntered(AccRelForm& form, AccRelField field);
    // Leaving "Accuracy Related Underpayment:": a text that is not an amount
    // is refused.
    void underpaymentLeft(AccRelForm& form) const;
    // OK (DlgAccRelData). With Yes, an underpayment or a rate that is not a
    // number is refused and nothing is stored (false).
    bool accept(AccRelForm& form);
    // After the dialog closes, OK or Cancel: while the penalty is on, the menu
    // command goes on to the Extended Due Date dialog.
    bool wantsExtendedDueDate() const;

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
