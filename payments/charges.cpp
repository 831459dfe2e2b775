#include "payments/charges.h"

#include "base/fault.h"
#include "casedata/datechecks.h"
#include "engine/timeline.h"
#include "payments/payments.h"

#include <algorithm>

namespace rw {

namespace {

std::string listLine(Date d, const FixedText<16>& desc)
{
    return FormatMMDDYYYY(d) + " " + desc.shown();
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

void ChargeDialog::liabilityLeft(const ChargeForm& form) const
{
    // A text that is not a date gets the one DateValid warning.
    Date d;
    if (DateValid(form.liabilityDate, "Charge", d, msgs_))
        ChkDateInPeriod(form.liabilityDate, "Addition to Tax liability", case_.init, msgs_);
}

bool ChargeDialog::okAllowed(const ChargeForm& form) const
{
    return ReadMoneyField(form.total, "Total Charge", msgs_)
           && ReadMoneyField(form.toTax, "Applied As Tax", msgs_)
           && ReadMoneyField(form.toPenalties, "Applied As Penalties", msgs_);
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
    if (!showCharge_ || !showCharge_(form))
        return false;
    const auto total = ReadMoneyField(form.total, "Total Charge", msgs_);
    if (!total || total->isZero())
        return false;
    const auto tax = ReadMoneyField(form.toTax, "Applied As Tax", msgs_);
    const auto penalties
        = tax ? ReadMoneyField(form.toPenalties, "Applied As Penalties", msgs_) : std::nullopt;
    if (!penalties)
        return false;

    ChargeRec rec = charge;
    rec.sDesc = form.description;
    const bool liabilityIsDate = DateValid(form.liabilityDate, "Charge", rec.dtLiab, msgs_);
    if (liabilityIsDate)
        ChkDateInPeriod(form.liabilityDate, "Addition to Tax liability", case_.init, msgs_);

    const auto interestDate = ParseUserDate(form.interestDate);
    if (interestDate && !interestDate->isNoDate()) {
        rec.dtIntStart = *interestDate;
    } else if (!HasInterestDate(rec)) {
        // No day for interest on a charge that has none yet: interest runs
        // from the date of liability rather than from day 0, which lies before
        // every calculation.
        if (liabilityIsDate) {
            rec.dtIntStart = rec.dtLiab;
            form.interestDate = FormatShortDate(rec.dtLiab);
            Warn(msgs_,
                 "No date was given for interest to run on the charge; the date of liability, "
                     + FormatShortDate(rec.dtLiab) + ", is used.");
        }
    }

    rec.cTotal = *total;
    rec.cToTax = *tax;
    rec.cToPen = *penalties;
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
    if (!addChrgPen(rec, dlg)) {
        Warn(msgs_, "Charge not added!");
        return;
    }
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
