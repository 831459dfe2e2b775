#pragma once
// The "Failure To File Penalty Inputs" and "Failure To Pay Inputs" dialogs as
// logic over plain forms: what they show when opened, how they react, what OK
// stores and which entries it refuses.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <functional>
#include <string>

namespace rw {

struct FtoFileForm {
    bool calculate = false;  // "Calculate Failure To File Penalty": "&Yes" / "&No"
    std::string assessDate;  // "Date Penalty Assessed:"
    std::string filedDate;  // "Date Return Filed:"
    bool datesEnabled = false;
    FormField<FtoFileForm> refused = nullptr;  // the entry refused, to be selected again
};

class FtoFileDialog {
public:
    // openExtendedDueDate: the window's modal "Extended Due Date" dialog,
    // opened each time the user leaves "Date Return Filed:".
    FtoFileDialog(Case& c, Messages& msgs, std::function<void()> openExtendedDueDate = {});

    // InitDlgFtoFile.
    FtoFileForm open() const;
    // EnableFtoFileInputs: the dates are open for entry only with Yes.
    static void choiceChanged(FtoFileForm& form);
    // Leaving "Date Penalty Assessed:": a text that is not a date is
    // refused; a date gets the period check, "Assessment".
    void assessLeft(FtoFileForm& form) const;
    // Leaving "Date Return Filed:": a text that is not a date is refused;
    // otherwise the period check of a date, "Filing", then the Extended Due
    // Date dialog.
    void filedLeft(FtoFileForm& form) const;
    // OK (DlgFtoFileData). With Yes the filing date is needed; the assessment
    // date only for a return whose extended due date is before 7/19/1984, the
    // only returns whose penalty bears interest from the assessment. False
    // when an entry was refused (nothing stored).
    bool accept(FtoFileForm& form);
    // Whether interest on the penalty runs from the assessment date, not from
    // the extended due date.
    bool assessmentUsed() const;

private:
    Case& case_;
    Messages& msgs_;
    std::function<void()> openExtendedDueDate_;
};

// "\xA7" is the section sign (texts inside the program are Latin-1).
inline constexpr const char* kIncreasedRateNote
    = "\xA7"
      "6651(d)(1) Penalty is only available for returns due after 12/31/1986.";

struct FtoPayForm {
    bool calculate = false;  // "Calculate Failure To Pay Penalty": "&Yes" / "&No"
    std::string assessDate;  // "Assessment Date:"
    std::string amountOnReturn;  // "Amount Shown on Return:"
    bool increasedRate = false;  // "Calculate §6651(d)(1) Increased Failure To Pay Rate"
    std::string increasedStartDate;  // "Date for Starting Increased Rate:"
    bool assessEnabled = false;
    bool amountEnabled = false;
    bool increasedChoiceEnabled = false;
    bool increasedChoiceVisible = true;
    bool increasedStartEnabled = false;  // the start-date label and field
    bool noteVisible = false;  // kIncreasedRateNote
    FormField<FtoPayForm> refused = nullptr;  // the entry refused, to be selected again
};

class FtoPayDialog {
public:
    FtoPayDialog(Case& c, Messages& msgs);

    // InitDlgFtoPay. For a return due on or before 12/31/1986 this already
    // turns the increased rate off in the case.
    FtoPayForm open();
    // EnableFtoPayInputs, run whenever "Calculate Failure To Pay Penalty" changes.
    static void choiceChanged(FtoPayForm& form);
    // The increased-rate choice opens or closes the start date.
    static void increasedChoiceChanged(FtoPayForm& form);
    // ShowAmtOnReturn: the amount on the return, or the initial balance while
    // that amount is 0.
    void showAmtOnReturn(FtoPayForm& form) const;
    // Leaving "Assessment Date:" ("Assessment") or the start date
    // ("Increased failure to pay starting"): a text that is not a date is
    // refused, a date gets the period check.
    void assessLeft(FtoPayForm& form) const;
    void increasedStartLeft(FtoPayForm& form) const;
    // Leaving "Amount Shown on Return:": a text that is not an amount is refused.
    void amountLeft(FtoPayForm& form) const;
    // OK (DlgFtoPayData). With Yes the assessment date is needed (interest on
    // the penalty runs from it), and the start date of the increased rate
    // when that is chosen. False when an entry was refused (nothing stored).
    bool accept(FtoPayForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
