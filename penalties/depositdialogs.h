#pragma once
// The "Payroll Tax Deposit Penalties" list and the "Payroll Deposit
// Information" dialog as logic over plain forms.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"

#include <functional>
#include <string>
#include <vector>

namespace rw {

struct DepositForm {
    std::string dueDate;  // "Due Date for Deposit:" (empty shows "__/__/____")
    std::string required;  // "Required Deposit:"
    std::string assessDate;  // "Assessment Date:"
    bool severe = false;  // "Does §6656(b)(1)(B) Apply:" "&Yes" / "&No"
    std::string delinquencyDate;  // "Date of Earliest Delinquency Notice:"
    std::string jeopardyDate;  // "Date of Demand for Immediate Payment (Jeopardy Assessment):"
    bool noticeDatesEnabled = false;
    std::string hint;  // CSlblNote
    FormField<DepositForm> refused = nullptr;  // the entry refused, to be selected again
};

enum class DepositField { DueDate, Required, AssessDate, Severe, DelinquencyDate, JeopardyDate };

// The reactions of "Payroll Deposit Information" while it is shown.
class DepositDialog {
public:
    DepositDialog(const Case& c, Messages& msgs);

    // The notice dates are open for entry only with Yes.
    static void severeChanged(DepositForm& form);
    // The hint line of the field that received the focus (empty for the
    // fields without one).
    static void focusEntered(DepositForm& form, DepositField field);
    // Leaving a field empties the hint line.
    static void focusLeft(DepositForm& form);
    // A field left: a date field holding a text that is not a date is
    // refused, the due date and the assessment date get the period check;
    // "Required Deposit:" holding a text that is not an amount is refused.
    void fieldLeft(DepositForm& form, DepositField field) const;
    // OK: false, the entry refused, while "Required Deposit:" is not an
    // amount or is 0, the due date or the assessment date is not given, or a
    // notice date of a severe penalty is not a date; the window then keeps
    // the dialog open.
    bool okAllowed(DepositForm& form) const;

private:
    const Case& case_;
    Messages& msgs_;
};

struct DepositListForm {
    std::vector<std::string> lines;  // lstDep: "mm/dd/yyyy", in list order
    bool editEnabled = false;
    bool deleteEnabled = false;
};

// Texts of the dialog.
inline constexpr const char* kSevereHint
    = "I.R.C. Sec. 6656(b)(1)(B) increases the penalty rate to 15% in situations after either "
      "delinquency notices "
      "(Sec. 6303) or jeopardy assessments (Sec. 6861, 6862 or 6331(a)).";
inline constexpr const char* kDelinquencyHint
    = "Enter date of the first deliquency notice under I.R.C. Sec. 6303.  If no deliquency notice "
      "was issued, "
      "leave input blank.";
inline constexpr const char* kJeopardyHint
    = "Enter date notice and demand for immediate payment was given under I.R.C. Sec. 6861, 6862 "
      "or 6331(a).  If "
      "no deliquency notice was issued, leave input blank.";

class DepositListDialog {
public:
    // Shows "Payroll Deposit Information" modally over the form (the window
    // binds it, runs DepositDialog's reactions and returns true for OK, false
    // for Cancel).
    using ShowDepositDialog = std::function<bool(DepositForm&)>;

    DepositListDialog(Case& c, Messages& msgs, ShowDepositDialog showDeposit,
                      std::function<void()> openManual = {});

    // InitDepPen.
    DepositListForm open();
    // FillDepositList: the lines of the deposits in use; with at least one, the
    // case's penalties are on.
    DepositListForm fillDepositList();
    // AddDepClick.
    void add(DepositListForm& form);
    // EditDepPen; nothing happens without a selection (-1).
    void edit(DepositListForm& form, int selected);
    // DelDeposit.
    void remove(DepositListForm& form, int selected);
    // "&Tutorial": the hint, then the manual.
    void tutorial();

    // AddDepPen: shows the dialog over form and, unless cancelled, writes
    // the form into deposit.
    bool addDepPen(DepositRec& deposit, DepositForm& form);
    // SortDeposits: the deposits in use by due date; deposits with the same due
    // date keep their order.
    void sortDeposits();

private:
    Case& case_;
    Messages& msgs_;
    ShowDepositDialog showDeposit_;
    std::function<void()> openManual_;
    DepositDialog deposit_;
};

}  // namespace rw
