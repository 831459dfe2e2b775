#include "penalties/depositdialogs.h"

#include "base/fault.h"
#include "casedata/datechecks.h"

#include <algorithm>

namespace rw {

namespace {

// Names of the fields in their messages.
constexpr const char* kDueName = "Deposit Due";
constexpr const char* kAssessName = "Deposit Penalty Assessement";
constexpr const char* kDelinquencyName = "Earliest Delinquency Notice";
constexpr const char* kJeopardyName = "Jepardy Assessement";
constexpr const char* kRequiredLabel = "Required Deposit";

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

void DepositDialog::focusLeft(DepositForm& form)
{
    form.hint.clear();
}

void DepositDialog::fieldLeft(DepositForm& form, DepositField field) const
{
    switch (field) {
    case DepositField::DueDate:
        if (const auto d = DateLeft(form, &DepositForm::dueDate, kDueName, msgs_))
            ChkDateInPeriod(*d, "The deposit due", case_.init, msgs_);
        break;
    case DepositField::AssessDate:
        if (const auto d = DateLeft(form, &DepositForm::assessDate, kAssessName, msgs_))
            ChkDateInPeriod(*d, "The deposit assessment", case_.init, msgs_);
        break;
    case DepositField::DelinquencyDate:
        DateLeft(form, &DepositForm::delinquencyDate, kDelinquencyName, msgs_);
        break;
    case DepositField::JeopardyDate:
        DateLeft(form, &DepositForm::jeopardyDate, kJeopardyName, msgs_);
        break;
    case DepositField::Required:
        TakeMoney(form, &DepositForm::required, kRequiredLabel, msgs_);
        break;
    case DepositField::Severe:
        break;
    }
}

bool DepositDialog::okAllowed(DepositForm& form) const
{
    const auto ok = [&](FormField<DepositForm> field, const char* name, DateNeed need) {
        return TakeDate(form, field, name, need, msgs_).has_value();
    };
    return ok(&DepositForm::dueDate, kDueName, DateNeed::Needed)
           && TakeAmount(form, &DepositForm::required, kRequiredLabel, "deposit", msgs_)
           && ok(&DepositForm::assessDate, kAssessName, DateNeed::Needed)
           && (!form.severe
               || (ok(&DepositForm::delinquencyDate, kDelinquencyName, DateNeed::Optional)
                   && ok(&DepositForm::jeopardyDate, kJeopardyName, DateNeed::Optional)));
}

DepositListDialog::DepositListDialog(Case& c, Messages& msgs, ShowDepositDialog showDeposit,
                                     std::function<void()> openManual)
    : case_(c)
    , msgs_(msgs)
    , showDeposit_(std::move(showDeposit))
    , openManual_(std::move(openManual))
    , deposit_(c, msgs)
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
    // A showing is left with OK only when its entries were accepted.
    const auto shown
        = [&] { return showDeposit_ && showDeposit_(form) && deposit_.okAllowed(form); };
    if (!shown())
        return false;

    bool severe = form.severe;
    if (severe && IsBlankDate(form.delinquencyDate) && IsBlankDate(form.jeopardyDate)) {
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
            if (!shown())
                return false;
            severe = form.severe
                     && !(IsBlankDate(form.delinquencyDate) && IsBlankDate(form.jeopardyDate));
        }
    }

    // The entries were accepted: every date given is a date.
    const auto date = [](const std::string& text, Date& out) {
        if (const auto d = ParseUserDate(text))
            out = *d;
    };
    deposit.bSevere = ToFlag(severe);
    if (severe) {
        date(form.delinquencyDate, deposit.dtDelinqNotice);
        date(form.jeopardyDate, deposit.dtJeopardy);
    }
    date(form.dueDate, deposit.dtDepDue);
    date(form.assessDate, deposit.dtDepAssess);
    deposit.cRequired = ParseMoneyField(form.required).value_or(Money());
    return true;
}

void DepositListDialog::add(DepositListForm& form)
{
    DepositForm dlg;  // No, the amount empty, the four dates blank
    DepositRec rec;
    if (!addDepPen(rec, dlg))
        return;  // cancelled
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
