#pragma once
// The "Failure To File Penalty Inputs" and "Failure To Pay Inputs" dialogs as
// logic over plain forms: what they show when opened, how they react, what OK
// stores and which check mark the menu entry then carries.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "penalties/formfields.h"

#include <functional>
#include <string>

namespace rw {

struct FtoFileForm {
    bool calculate = false;  // "Calculate Failure To File Penalty": "&Yes" / "&No"
    std::string assessDate;  // "Date Penalty Assessed:"
    std::string filedDate;  // "Date Return Filed:"
    bool datesEnabled = false;
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
    // Leaving "Date Penalty Assessed:": the period check, "Assessment".
    void assessLeft(const FtoFileForm& form) const;
    // Leaving "Date Return Filed:": the period check, "Filing", then the
    // Extended Due Date dialog.
    void filedLeft(const FtoFileForm& form) const;
    // OK (DlgFtoFileData). Always stored; a date that is not a date is warned
    // about and stored as day 0.
    Accepted accept(const FtoFileForm& form);

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
    // ("Increased failure to pay starting"): the period check.
    void assessLeft(const FtoPayForm& form) const;
    void increasedStartLeft(const FtoPayForm& form) const;
    // OK (DlgFtoPayData). Not stored when the amount is not a number.
    Accepted accept(const FtoPayForm& form);

private:
    Case& case_;
    Messages& msgs_;
};

}  // namespace rw
