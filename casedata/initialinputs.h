#pragma once
// The Initial Inputs dialog as logic: where every case begins (taxpayer,
// authority, due date, calculation dates, initial balance, payroll and
// corporate flags, refund stop-days). The window binds its widgets to
// InitialInputsForm; this class fills the form, reacts, and stores it on OK.

#include "base/messages.h"
#include "base/paths.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"
#include "rates/ratetable.h"

#include <string>
#include <vector>

namespace rw {

struct InitialInputsForm {
    std::string name;  // "Taxpayer:"
    std::string secondLine;  // "Optional 2nd Line:"
    int authority = 0;  // list position in "Rate Table:" (-1: nothing selected)
    std::string dueDate;  // "Due Date of Return:"
    std::string startDate;  // "Start Calculation:"
    std::string stopDate;  // "End Calculation:"
    bool overpayment = false;  // "Starting Situation": "&Underpayment" / "O&verpayment"
    std::string initialBalance;  // "Intitial Balance:"
    std::string stopDays;  // refund stop-days
    bool stopDaysVisible = false;
    bool payroll = false;  // "Payroll Tax": "Yes" / "No"
    bool corporate = false;  // "Corporate Taxpayer"
    FormField<InitialInputsForm> refused = nullptr;  // the entry refused, to be selected again
};

class InitialInputsDialog {
public:
    InitialInputsDialog(Case& c, RateTable& rates, const Paths& paths, Messages& msgs);

    // The 30 authority names in list order.
    static std::vector<std::string> AuthorityNames();

    // Fills the form from the case (InitDialog).
    InitialInputsForm open() const;

    // The starting situation changed: the stop-days field shows only for an
    // overpayment.
    static void startSituationChanged(InitialInputsForm& form);

    // "Payroll Tax" clicked: with Yes and a numeric balance above 1.00, the
    // advice that a payroll case starts at $0 on the first day of the quarter.
    void payrollClicked(const InitialInputsForm& form) const;

    // A date field left (dueDate, startDate or stopDate): a text that is not
    // a date is refused; a stop date before a start date too, so that the
    // calculation never runs backwards.
    void dateLeft(InitialInputsForm& form, FormField<InitialInputsForm> field) const;
    // "Intitial Balance:" left: a text that is not an amount is refused.
    void balanceLeft(InitialInputsForm& form) const;

    enum class Result {
        Stored,  // the case holds the form; the authority's table is loaded
        KeepOpen,  // an entry was refused (form.refused); the user was told; nothing stored
        SaveAndExit,  // stored, but the user chose to save and end at the state-table check
    };
    // OK (StoreDialog): stores the fields, loads the authority's rate table
    // and checks a state table's range. The three dates are needed.
    Result accept(InitialInputsForm& form);

private:
    Case& case_;
    RateTable& rates_;
    const Paths& paths_;
    Messages& msgs_;
};

// The state-table date check: true when both calculation dates lie within the
// table (bounds inclusive). Federal cases are never checked.
bool CalcDatesWithinTable(const InitInputs& init, const RateTable& rates);

enum class StateCheckAnswer { Continue, SaveAndExit };
// Asks the user, when a date lies outside the state's table, whether to go on
// (Yes) or to save and end (No).
StateCheckAnswer CheckStateTableDates(const InitInputs& init, const RateTable& rates,
                                      Messages& msgs);

}  // namespace rw
