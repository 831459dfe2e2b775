#include "penalties/depositdialogs.h"

#include "base/fault.h"
#include "casedata/datechecks.h"

#include <algorithm>

namespace rw {

namespace {

bool blankDate(const std::string& text)
{
    const auto b = text.find_first_not_of(' ');
    return b == std::string::npos || text == "__/__/____";
}

// A notice date never entered holds day 0 (the all-zero record of Add); the
// field shows it empty rather than as 12/30/1899.
std::string noticeDateText(Date d)
{
    return d == Date() ? std::string() : InitCSDateCtrl(d);
}

}  // namespace

DepositDialog::DepositDialog(const Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

void DepositDialog::severeChanged(DepositForm& form)
{
    form.noticeDatesEnabled = form.severe;
}

void DepositDialog::focusEntered(DepositForm& form, DepositField field)
{
    switch (field) {
    case DepositField::Severe:
        form.hint = kSevereHint;
        break;
    case DepositField::DelinquencyDate:
        form.hint = kDelinquencyHint;
        break;
    case DepositField::JeopardyDate:
        form.hint = kJeopardyHint;
        break;
    default:
        break;
    }
}

void DepositDialog::focusLeft(DepositForm& form, DepositField field) const
{
    form.hint.clear();
    Date d;
    if (field == DepositField::DueDate) {
        if (DateValid(form.dueDate, "Deposit Due", d, msgs_) && !blankDate(form.dueDate))
            ChkDateInPeriod(form.dueDate, "The deposit due", case_.init, msgs_);
    } else if (field == DepositField::AssessDate) {
        if (DateValid(form.assessDate, "Deposit penalty assessement", d, msgs_))
            ChkDateInPeriod(form.assessDate, "The deposit assessment", case_.init, msgs_);
    }
}

bool DepositDialog::okAllowed(const DepositForm& form) const
{
    return ReadMoneyField(form.required, "Required Deposit", msgs_).has_value();
}

DepositListDialog::DepositListDialog(Case& c, Messages& msgs, ShowDepositDialog showDeposit,
                                     std::function<void()> openManual)
    : case_(c)
    , msgs_(msgs)
    , showDeposit_(std::move(showDeposit))
    , openManual_(std::move(openManual))
{
}

DepositListForm DepositListDialog::open()
{
    if (case_.init.nDeposits >= 1)
        return fillDepositList();
    return DepositListForm{};
}

DepositListForm DepositListDialog::fillDepositList()
{
    DepositListForm f;
    for (const DepositRec& d : case_.payrollDeposits())
        f.lines.push_back(FormatMMDDYYYY(d.dtDepDue));
    if (!f.lines.empty())
        case_.init.bAnyPenalties = kYes;
    f.editEnabled = f.deleteEnabled = case_.init.nDeposits >= 1;
    return f;
}

void DepositListDialog::sortDeposits()
{
    const auto n = static_cast<std::ptrdiff_t>(std::max<std::int16_t>(case_.init.nDeposits, 0));
    std::stable_sort(
        case_.deposits.begin(), case_.deposits.begin() + n,
        [](const DepositRec& a, const DepositRec& b) { return a.dtDepDue < b.dtDepDue; });
}

bool DepositListDialog::addDepPen(DepositRec& deposit, DepositForm& form)
{
    if (!showDeposit_ || !showDeposit_(form))
        form.required.clear();  // Cancel empties the amount before the dialog hides
    const auto required = ParseMoneyField(form.required);
    if (!required || required->isZero())
        return false;

    bool severe = form.severe;
    if (severe && blankDate(form.delinquencyDate) && blankDate(form.jeopardyDate)) {
        const bool again = msgs_.ask(
            "WARNING",
            "The IRC Sec. 6656(b)(1)(B) penalty can not be calculated without either the "
            "date of the first delinquency notice or the date of the jeopardy assessment.  "
            "Do you want to enter one of those dates now?",
            MsgIcon::Exclamation);
        if (!again) {
            severe = false;
        } else {
            // The second showing: Cancel there abandons the entry as a whole.
            if (!showDeposit_(form))
                return false;
            severe
                = form.severe && !(blankDate(form.delinquencyDate) && blankDate(form.jeopardyDate));
            const auto again2 = ParseMoneyField(form.required);
            if (!again2 || again2->isZero())
                return false;
        }
    }

    deposit.bSevere = ToFlag(severe);
    if (severe) {
        if (!blankDate(form.delinquencyDate))
            DateValid(form.delinquencyDate, "Earliest Delinquency Notice", deposit.dtDelinqNotice,
                      msgs_);
        if (!blankDate(form.jeopardyDate))
            DateValid(form.jeopardyDate, "Jepardy Assessement", deposit.dtJeopardy, msgs_);
    }
    DateValid(form.dueDate, "Deposit Due", deposit.dtDepDue, msgs_);
    DateValid(form.assessDate, "Deposit Penalty Assessement", deposit.dtDepAssess, msgs_);
    deposit.cRequired = ParseMoneyField(form.required).value_or(Money());
    return true;
}

void DepositListDialog::add(DepositListForm& form)
{
    DepositForm dlg;  // No, the amount empty, the four dates blank
    DepositRec rec;
    if (!addDepPen(rec, dlg)) {
        Warn(msgs_, "Deposit not added!");
        return;
    }
    const ListAppend a = AppendListEntry(case_.deposits, case_.init.nDeposits, rec, "AddDepClick");
    if (a.countDisagreed)
        Warn(msgs_, "AddDepClick error! nDeposits " + std::to_string(a.sizeFound)
                        + " and gInit.nDeposits " + std::to_string(a.countFound)
                        + " should be the same.  Please call Ratewright technical support and "
                          "report this message.");
    sortDeposits();
    form = fillDepositList();
}

void DepositListDialog::edit(DepositListForm& form, int selected)
{
    if (selected < 0 || selected >= case_.init.nDeposits)
        return;
    DepositRec copy = case_.deposits[static_cast<std::size_t>(selected)];
    DepositForm dlg;
    dlg.severe = IsYes(copy.bSevere);
    dlg.noticeDatesEnabled = dlg.severe;
    dlg.required = PlainMoney(copy.cRequired);
    dlg.dueDate = InitCSDateCtrl(copy.dtDepDue);
    dlg.assessDate = InitCSDateCtrl(copy.dtDepAssess);
    dlg.delinquencyDate = noticeDateText(copy.dtDelinqNotice);
    dlg.jeopardyDate = noticeDateText(copy.dtJeopardy);
    if (!addDepPen(copy, dlg))
        return;
    case_.deposits[static_cast<std::size_t>(selected)] = copy;
    sortDeposits();
    form = fillDepositList();
}

void DepositListDialog::remove(DepositListForm& form, int selected)
{
    InitInputs& in = case_.init;
    if (selected < 0 || selected >= in.nDeposits)
        return;
    const DepositRec& d = case_.deposits[static_cast<std::size_t>(selected)];
    if (!msgs_.ask("WARNING!",
                   "Do you want to delete deposit information for deposit due "
                       + FormatShortDate(d.dtDepDue) + "?",
                   MsgIcon::Exclamation))
        return;
    RemoveListEntry(case_.deposits, in.nDeposits, static_cast<std::size_t>(selected));
    form = fillDepositList();
}

void DepositListDialog::tutorial()
{
    msgs_.show("Ratewright", "When the help file comes up, search for EXAMPLES.",
               MsgIcon::Information);
    if (openManual_)
        openManual_();
}

}  // namespace rw
