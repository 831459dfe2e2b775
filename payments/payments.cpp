#include "payments/payments.h"

#include "base/fault.h"
#include "engine/intcalc.h"
#include "penalties/compute.h"

#include <algorithm>

namespace rw {

namespace {

// A list line: the date, one blank, the 16 characters of the description.
std::string listLine(Date d, const FixedText<16>& desc)
{
    return FormatMMDDYYYY(d) + " " + desc.shown();
}

constexpr const char* kSupportRequest
    = "  Please call Ratewright technical support and report this message.";

// The caption of a money field in its messages.
const char* moneyLabel(FormField<PaymentForm> field)
{
    if (field == &PaymentForm::toTax)
        return "Allocate To Tax";
    if (field == &PaymentForm::toInterest)
        return "Allocate To Interest";
    if (field == &PaymentForm::toPenalties)
        return "Allocate To Penalties";
    return "Payment Amount";
}

}  // namespace

// ---- Payment Information ------------------------------------------------------

PaymentDialog::PaymentDialog(const Case& c, const RateTable& rates,
                             const FtfMinimumSchedule& ftfMinimums, Messages& msgs)
    : case_(c)
    , rates_(rates)
    , ftfMinimums_(ftfMinimums)
    , msgs_(msgs)
{
}

OwedOnDate PaymentDialog::owedOn(std::string_view dateText) const
{
    // The allocation follows every keystroke; a date not yet typed (or not a
    // date) owes nothing and is not warned about here: the date field warns
    // when it is left, and OK checks it again.
    if (!ParseUserDate(dateText))
        return {};
    if (owedOnLast_ && owedOnLast_->first == dateText)
        return owedOnLast_->second;
    refused_.reset();
    Case kase = case_;
    if (edited_ && *edited_ < kase.payments().size())
        RemoveListEntry(kase.pmts, kase.init.nPmts, *edited_);
    OwedOnDate owed;
    try {
        // One estimated tax penalty for the allocation and the day's figures.
        USPenalties penalties = CaseCalculators(kase, CaseEstTax(kase, rates_), ftfMinimums_);
        AllocateIrsPayments(kase, rates_, penalties, ParseUserDate(dateText));
        TLPoint totals;
        const Money interest = IntToDate(dateText, kase, rates_, &penalties, totals, msgs_);
        owed = OwedOnDate{totals.cTax, totals.cPen, interest};
    } catch (const Refusal& r) {
        // Told when the date field is left, not on every keystroke.
        refused_ = r;
    }
    owedOnLast_.emplace(std::string(dateText), owed);
    return owed;
}

Money PaymentDialog::calcIRSPmtInt(PaymentForm& form, PmtAllocMode mode) const
{
    const OwedOnDate owed = owedOn(form.date);
    const Money amount = MoneyFieldOrZero(form.amount);
    const Money userInterest = MoneyFieldOrZero(form.toInterest);
    if (mode == PmtAllocMode::Refresh) {
        if (form.irsMethod) {
            form.maxInterestLabel.clear();  // the IRS method sets the interest part itself
            const PaymentAllocation a = AllocateByIrsMethod(amount, owed);
            form.toInterest = FormatMoneyField(a.interest);
            form.toPenalties = FormatMoneyField(a.penalties);
            form.toTax = FormatMoneyField(a.tax);
        } else {
            // Nothing owed on the date: no share, so no ceiling to show.
            const auto ceiling = InterestCeiling(amount, owed);
            form.maxInterestLabel
                = ceiling ? "Max. Interest: " + FormatMoney(*ceiling) : std::string();
        }
    } else if (!form.irsMethod && ceilingAdvised_ != form.toInterest) {
        const auto ceiling = InterestCeiling(amount, owed);
        if (ceiling && InterestAboveCeiling(userInterest, *ceiling)) {
            ceilingAdvised_ = form.toInterest;
            Warn(msgs_,
                 "The allocation of the payment to interest may be too high since it exceeds $"
                     + FormatMoney(*ceiling) + "!");
        }
    }
    return owed.interest;
}

void PaymentDialog::showUnallocated(PaymentForm& form) const
{
    const Money rest = MoneyFieldOrZero(form.amount) - MoneyFieldOrZero(form.toTax)
                       - MoneyFieldOrZero(form.toPenalties) - MoneyFieldOrZero(form.toInterest);
    form.unallocatedLabel = "Unallocated: " + FormatMoney(rest);
}

void PaymentDialog::calcUnallocPmt(PaymentForm& form) const
{
    if (form.irsMethod)
        calcIRSPmtInt(form, PmtAllocMode::Refresh);
    showUnallocated(form);
}

void PaymentDialog::setAllocLbls(PaymentForm& form)
{
    form.allocationEnabled = !form.irsMethod;
}

void PaymentDialog::refreshPmtAlloc(PaymentForm& form) const
{
    calcIRSPmtInt(form, PmtAllocMode::Refresh);
    setAllocLbls(form);
    showUnallocated(form);
}

void PaymentDialog::moneyLeft(PaymentForm& form, FormField<PaymentForm> field) const
{
    if (!TakeMoney(form, field, moneyLabel(field), msgs_))
        return;
    if (field == &PaymentForm::toInterest)
        calcIRSPmtInt(form, PmtAllocMode::Check);
}

void PaymentDialog::dateChanged(PaymentForm& form) const
{
    if (const auto d = DateLeft(form, &PaymentForm::date, "Payment", msgs_))
        ChkDateInPeriod(*d, "Payment", case_.init, msgs_);
    refreshPmtAlloc(form);
    if (refused_)
        msgs_.show(refused_->title(), std::string(refused_->text()), MsgIcon::Exclamation);
}

std::optional<PaymentRec> PaymentDialog::take(PaymentForm& form) const
{
    const auto date = TakeDate(form, &PaymentForm::date, "Payment", DateNeed::Needed, msgs_);
    const auto amount = date ? TakeAmount(form, &PaymentForm::amount,
                                          moneyLabel(&PaymentForm::amount), "payment", msgs_)
                             : std::nullopt;
    std::optional<Money> parts[3];
    const FormField<PaymentForm> fields[3]
        = {&PaymentForm::toTax, &PaymentForm::toInterest, &PaymentForm::toPenalties};
    for (int i = 0; i < 3 && amount; ++i)
        if (!(parts[i] = TakeMoney(form, fields[i], moneyLabel(fields[i]), msgs_)))
            return std::nullopt;
    if (!amount)
        return std::nullopt;

    PaymentRec rec;
    rec.sDesc = form.description;
    rec.dtPmt = *date;
    rec.cAmount = *amount;
    rec.cToTax = *parts[0];
    rec.cToInt = *parts[1];
    rec.cToPen = *parts[2];
    rec.sMethod = form.irsMethod ? "I" : "T";
    const Money allocated = rec.cToTax + rec.cToInt + rec.cToPen;
    if (allocated != rec.cAmount) {
        // The parts are the user's to mend; with the IRS method, the amount.
        Refuse(form, form.allocationEnabled ? &PaymentForm::toTax : &PaymentForm::amount,
               "The payment of " + PlainMoney(rec.cAmount)
                   + " has not been completely allocated between tax, interest and penalty which "
                     "total "
                   + PlainMoney(allocated) + ".",
               msgs_);
        return std::nullopt;
    }
    return rec;
}

bool PaymentDialog::okAllowed(PaymentForm& form) const
{
    if (!take(form))
        return false;
    calcIRSPmtInt(form, PmtAllocMode::Check);
    return true;
}

// ---- Payments -------------------------------------------------------------------

PaymentsDialog::PaymentsDialog(Case& c, const RateTable& rates,
                               const FtfMinimumSchedule& ftfMinimums, Messages& msgs,
                               ShowPaymentDialog showPayment, std::function<void()> openManual)
    : case_(c)
    , msgs_(msgs)
    , showPayment_(std::move(showPayment))
    , openManual_(std::move(openManual))
    , payment_(c, rates, ftfMinimums, msgs)
{
}

PaymentsForm PaymentsDialog::open()
{
    PaymentsForm f;
    if (IsYes(case_.init.bPayroll)) {
        f.payrollControlsVisible = true;
        f.autoArrange = IsYes(case_.init.bAutoArrange);
    }
    fillPmtLst(f);
    return f;
}

void PaymentsDialog::fillPmtLst(PaymentsForm& form) const
{
    form.lines.clear();
    for (const PaymentRec& p : case_.payments())
        form.lines.push_back(listLine(p.dtPmt, p.sDesc));
    form.editEnabled = form.deleteEnabled = case_.init.nPmts >= 1;
    form.sortEnabled = case_.init.nPmts >= 2;
}

bool PaymentsDialog::addPmt(PaymentRec& pmt, PaymentForm& form,
                            std::optional<std::size_t> editedPayment)
{
    payment_.newShowing(editedPayment);
    if (editedPayment && form.irsMethod)
        payment_.calcUnallocPmt(form);
    if (!showPayment_ || !showPayment_(form))
        return false;  // Cancel
    const auto rec = payment_.take(form);
    if (rec)
        pmt = *rec;
    return rec.has_value();
}

void PaymentsDialog::add(PaymentsForm& form)
{
    PaymentForm dlg;  // everything empty, the IRS method chosen
    dlg.irsMethod = true;
    PaymentDialog::setAllocLbls(dlg);
    PaymentRec rec;
    if (!addPmt(rec, dlg))
        return;  // cancelled
    InitInputs& in = case_.init;
    const ListAppend a = AppendListEntry(case_.pmts, in.nPmts, rec, "AddPmtClick");
    if (a.countDisagreed)
        Warn(msgs_, "AddPmtClick error! nPmts " + std::to_string(a.sizeFound) + " and gInit.nPmts "
                        + std::to_string(a.countFound) + " should be the same." + kSupportRequest);
    fillPmtLst(form);
    if (!a.wasEmpty && !IsYes(in.bPayroll)) {
        const PaymentRec& previous = case_.pmts[case_.pmts.size() - 2];
        if (rec.dtPmt < previous.dtPmt)
            Warn(msgs_, "Payments have to be entered in chronological order for this program to be "
                        "accurate.  "
                        "This payment is not in chronological order! This payment date: "
                            + FormatShortDate(rec.dtPmt)
                            + ". Previous payment date entered: " + FormatShortDate(previous.dtPmt)
                            + ".  Sort by Date in the list of payments puts them in order.");
    }
}

void PaymentsDialog::edit(PaymentsForm& form, int selected)
{
    if (selected < 0 || selected >= case_.init.nPmts) {
        Warn(msgs_, kNoSelectionWarning);
        return;
    }
    PaymentRec copy = case_.pmts[static_cast<std::size_t>(selected)];
    PaymentForm dlg;
    dlg.description = copy.sDesc.trimmed();
    dlg.date = InitCSDateCtrl(copy.dtPmt);
    dlg.toInterest = FormatMoneyField(copy.cToInt);
    dlg.toPenalties = FormatMoneyField(copy.cToPen);
    dlg.toTax = FormatMoneyField(copy.cToTax);
    dlg.amount = FormatMoneyField(copy.cAmount);
    dlg.irsMethod = !copy.sMethod.is("T");
    PaymentDialog::setAllocLbls(dlg);
    if (!addPmt(copy, dlg, static_cast<std::size_t>(selected)))
        return;  // Cancel or a refused entry leaves the payment as it was
    case_.pmts[static_cast<std::size_t>(selected)] = copy;
    fillPmtLst(form);
}

void PaymentsDialog::remove(PaymentsForm& form, int selected)
{
    InitInputs& in = case_.init;
    if (selected < 0 || selected >= in.nPmts) {
        Warn(msgs_, kNoSelectionWarning);
        return;
    }
    const PaymentRec& p = case_.pmts[static_cast<std::size_t>(selected)];
    if (!msgs_.ask("WARNING!",
                   "Do you want to delete payment information for payment date "
                       + FormatShortDate(p.dtPmt) + "?",
                   MsgIcon::Exclamation))
        return;
    RemoveListEntry(case_.pmts, in.nPmts, static_cast<std::size_t>(selected));
    fillPmtLst(form);
}

void PaymentsDialog::sortByDate(PaymentsForm& form)
{
    const auto n = static_cast<std::ptrdiff_t>(std::max<std::int16_t>(case_.init.nPmts, 0));
    std::stable_sort(case_.pmts.begin(), case_.pmts.begin() + n,
                     [](const PaymentRec& a, const PaymentRec& b) { return a.dtPmt < b.dtPmt; });
    fillPmtLst(form);
}

void PaymentsDialog::payrollHint()
{
    msgs_.show("Ratewright", "When the help file comes up, search for MATCH PAYROLL.",
               MsgIcon::Information);
    if (openManual_)
        openManual_();
}

void PaymentsDialog::close(PaymentsForm& form, ArrangeProgress* progress)
{
    InitInputs& in = case_.init;
    in.bAutoArrange = ToFlag(form.autoArrange);
    if (form.autoArrange) {
        if (progress) {
            progress->setVisible(true);
            progress->repaint();
        }
        GetLowestPRPen(case_, msgs_, progress);
        if (progress)
            progress->setVisible(false);
        form.autoArrange = false;
        fillPmtLst(form);
    }
    in.bAutoArrange = kNo;
}

}  // namespace rw
