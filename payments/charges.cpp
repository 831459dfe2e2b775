#include "payments/charges.h"

#include "base/fault.h"
#include "engine/timeline.h"
#include "payments/payments.h"

#include <algorithm>

namespace rw {

namespace {

std::string listLine(Date d, const FixedText<16>& desc)
{
    return FormatMMDDYYYY(d) + " " + desc.shown();
}

constexpr const char* kLiabilityName = "Charge";
constexpr const char* kInterestName = "Charge Interest";

// The caption of a money field in its messages.
const char* moneyLabel(FormField<ChargeForm> field)
{
    if (field == &ChargeForm::toTax)
        return "Applied As Tax";
    if (field == &ChargeForm::toPenalties)
        return "Applied As Penalties";
    return "Total Charge";
}

}  // namespace

ChargeDialog::ChargeDialog(const Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

void ChargeDialog::calcUnallocCharge(ChargeForm& form)
{
    const Money rest = MoneyFieldOrZero(form.total) - MoneyFieldOrZero(form.toTax)
                       - MoneyFieldOrZero(form.toPenalties);
    form.unallocatedLabel = "Unallocated: " + FormatMoney(rest);
}

void ChargeDialog::liabilityLeft(ChargeForm& form) const
{
    if (const auto d = DateLeft(form, &ChargeForm::liabilityDate, kLiabilityName, msgs_))
        ChkDateInPeriod(*d, "Addition to Tax liability", case_.init, msgs_);
}

void ChargeDialog::fieldLeft(ChargeForm& form, FormField<ChargeForm> field) const
{
    if (field == &ChargeForm::interestDate)
        DateLeft(form, field, kInterestName, msgs_);
    else
        TakeMoney(form, field, moneyLabel(field), msgs_);
}

bool ChargeDialog::okAllowed(ChargeForm& form) const
{
    const FormField<ChargeForm> parts[2] = {&ChargeForm::toTax, &ChargeForm::toPenalties};
    return TakeDate(form, &ChargeForm::liabilityDate, kLiabilityName, DateNeed::Needed, msgs_)
           && TakeDate(form, &ChargeForm::interestDate, kInterestName, DateNeed::Optional, msgs_)
           && TakeAmount(form, &ChargeForm::total, moneyLabel(&ChargeForm::total), "charge", msgs_)
           && std::all_of(std::begin(parts), std::end(parts), [&](FormField<ChargeForm> f) {
                  return TakeMoney(form, f, moneyLabel(f), msgs_).has_value();
              });
}

ChargesDialog::ChargesDialog(Case& c, Messages& msgs, ShowChargeDialog showCharge)
    : case_(c)
    , msgs_(msgs)
    , showCharge_(std::move(showCharge))
    , charge_(c, msgs)
{
}

ChargesForm ChargesDialog::open()
{
    ChargesForm f;
    if (case_.init.nCharges >= 1)
        fillChrgLst(f);
    return f;
}

void ChargesDialog::sortChrg()
{
    const auto n = static_cast<std::ptrdiff_t>(std::max<std::int16_t>(case_.init.nCharges, 0));
    std::stable_sort(case_.charges.begin(), case_.charges.begin() + n,
                     [](const ChargeRec& a, const ChargeRec& b) { return a.dtLiab < b.dtLiab; });
}

void ChargesDialog::fillChrgLst(ChargesForm& form)
{
    sortChrg();
    form.lines.clear();
    for (const ChargeRec& ch : case_.otherCharges())
        form.lines.push_back(listLine(ch.dtLiab, ch.sDesc));
    form.editEnabled = form.deleteEnabled = case_.init.nCharges >= 1;
}

bool ChargesDialog::addChrgPen(ChargeRec& charge, ChargeForm& form)
{
    if (!showCharge_ || !showCharge_(form) || !charge_.okAllowed(form))
        return false;  // Cancel
    // The entries were accepted: the amounts are amounts, the liability a date.
    const auto amount
        = [](const std::string& text) { return ParseMoneyField(text).value_or(Money()); };
    ChargeRec rec = charge;
    rec.sDesc = form.description;
    rec.dtLiab = ParseUserDate(form.liabilityDate).value_or(rec.dtLiab);

    const auto interestDate = ParseUserDate(form.interestDate);
    if (interestDate && !interestDate->isNoDate()) {
        rec.dtIntStart = *interestDate;
    } else if (!HasInterestDate(rec)) {
        // No day for interest on a charge that has none yet: interest runs
        // from the date of liability rather than from day 0, which lies before
        // every calculation.
        rec.dtIntStart = rec.dtLiab;
        form.interestDate = FormatShortDate(rec.dtLiab);
        Warn(msgs_, "No date was given for interest to run on the charge; the date of liability, "
                        + FormatShortDate(rec.dtLiab) + ", is used.");
    }

    rec.cTotal = amount(form.total);
    rec.cToTax = amount(form.toTax);
    rec.cToPen = amount(form.toPenalties);
    if (rec.cTotal != rec.cToTax + rec.cToPen)
        Warn(msgs_, "The additional charge of " + FormatMoney(rec.cTotal)
                        + " has not been completely allocated between tax, and penalty which total "
                        + FormatMoney(rec.cToTax + rec.cToPen) + ".");
    charge = rec;
    return true;
}

void ChargesDialog::add(ChargesForm& form)
{
    ChargeForm dlg;  // both dates empty, texts and amounts empty
    ChargeRec rec;  // all zero
    if (!addChrgPen(rec, dlg))
        return;  // cancelled
    const ListAppend a = AppendListEntry(case_.charges, case_.init.nCharges, rec, "AddChrgClick");
    if (a.countDisagreed)
        Warn(msgs_, "AddChrgClick error! nChrgs " + std::to_string(a.sizeFound)
                        + " and gInit.nCharges " + std::to_string(a.countFound)
                        + " should be the same.  Please call Ratewright technical support and "
                          "report this message.");
    fillChrgLst(form);
}

void ChargesDialog::edit(ChargesForm& form, int selected)
{
    if (selected < 0 || selected >= case_.init.nCharges) {
        Warn(msgs_, kNoSelectionWarning);
        return;
    }
    ChargeRec copy = case_.charges[static_cast<std::size_t>(selected)];
    ChargeForm dlg;
    dlg.description = copy.sDesc.trimmed();
    dlg.liabilityDate = InitCSDateCtrl(copy.dtLiab);
    dlg.interestDate = copy.dtIntStart == Date() ? std::string() : InitCSDateCtrl(copy.dtIntStart);
    dlg.total = FormatMoneyField(copy.cTotal);
    dlg.toTax = FormatMoneyField(copy.cToTax);
    dlg.toPenalties = FormatMoneyField(copy.cToPen);
    ChargeDialog::calcUnallocCharge(dlg);
    if (!addChrgPen(copy, dlg))
        return;
    case_.charges[static_cast<std::size_t>(selected)] = copy;
    fillChrgLst(form);
}

void ChargesDialog::remove(ChargesForm& form, int selected)
{
    InitInputs& in = case_.init;
    if (selected < 0 || selected >= in.nCharges) {
        Warn(msgs_, kNoSelectionWarning);
        return;
    }
    const ChargeRec& ch = case_.charges[static_cast<std::size_t>(selected)];
    if (!msgs_.ask("WARNING!",
                   "Do you want to delete charge information for charge liability date "
                       + FormatShortDate(ch.dtLiab) + "?",
                   MsgIcon::Exclamation))
        return;
    RemoveListEntry(case_.charges, in.nCharges, static_cast<std::size_t>(selected));
    fillChrgLst(form);
}

}  // namespace rw
