#pragma once
// The "Payments" list and the "Payment Information" dialog as logic over
// plain forms, with the allocation of a payment on its date.

#include "base/messages.h"
#include "casedata/caserecord.h"
#include "casedata/datechecks.h"
#include "penalties/allocation.h"
#include "penalties/arrange.h"
#include "rates/ratetable.h"
#include "rates/release.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rw {

struct PaymentForm {
    std::string description;  // "Description of Payment:"
    std::string date;  // "Payment Date" ("m/d/yyyy", empty when none)
    std::string amount;  // "Payment Amount:"
    bool irsMethod = true;  // "Use IRS Allocation Method"
    std::string toTax;  // "Allocate To Tax:"
    std::string toInterest;  // "Allocate To Interest:"
    std::string toPenalties;  // "Allocate To Penalties:"
    bool allocationEnabled = false;  // the three allocation fields and their labels
    std::string unallocatedLabel;  // CSLblBalance: "Unallocated: 0.00"
    std::string
        maxInterestLabel;  // CSlblMaxInt: "Max. Interest: 150.00"; empty while there is no ceiling
    FormField<PaymentForm> refused = nullptr;  // the entry refused, to be selected again
};

enum class PmtAllocMode {
    Check = 5,  // advise when the user's interest part is above the ceiling (once for a text)
    Refresh = 6,  // allocate by the IRS method, or show the ceiling
};

// The reactions of "Payment Information": what is owed on the payment date
// comes from the interest computation stopped on that date (IntToDate), with
// the case's penalties computed on the way. The case is taken as a computation
// takes it: the IRS-method payments before the date allocated again, and the
// payment being edited left out (its old copy is not a payment before itself).
class PaymentDialog {
public:
    PaymentDialog(const Case& c, const RateTable& rates, const FtfMinimumSchedule& ftfMinimums,
                  Messages& msgs);

    // Tax, penalties and interest owed on the date (all 0 for a text that is
    // not a date). What is owed depends on the date alone while the dialog is
    // open, so each date is computed once per showing.
    OwedOnDate owedOn(std::string_view dateText) const;

    // The dialog is about to be shown (for another payment, or after the case
    // changed): what was owed before is computed afresh. editedPayment is the
    // index of the payment being edited, nothing for a new one.
    void newShowing(std::optional<std::size_t> editedPayment = std::nullopt)
    {
        owedOnLast_.reset();
        refused_.reset();
        ceilingAdvised_.reset();
        edited_ = editedPayment;
    }

    // CalcIRSPmtInt: returns the interest owed on the date.
    Money calcIRSPmtInt(PaymentForm& form, PmtAllocMode mode) const;
    // CalcUnallocPmt: the IRS allocation refreshed when chosen, then the
    // unallocated amount.
    void calcUnallocPmt(PaymentForm& form) const;
    // SetAllocLbls: the allocation fields are the user's only without the
    // IRS method.
    static void setAllocLbls(PaymentForm& form);
    // RefreshPmtAlloc: CalcIRSPmtInt (refresh), SetAllocLbls, the unallocated
    // amount (from the allocation just made; the date is not computed twice).
    void refreshPmtAlloc(PaymentForm& form) const;

    // Events.
    void irsMethodClicked(PaymentForm& form) const
    {
        refreshPmtAlloc(form);
    }  // also focus in / out
    // An amount typed (any of the four money fields): what is left to allocate.
    void amountChanged(PaymentForm& form) const { calcUnallocPmt(form); }
    // A money field left: a text that is not an amount is refused. Leaving
    // "Allocate To Interest:" above the ceiling of interest the payment may
    // take gives the advice (never while the amount is typed).
    void moneyLeft(PaymentForm& form, FormField<PaymentForm> field) const;
    // The date field holds a new text: one that is not a date is refused, a
    // date gets the period check, "Payment"; then the allocation on the new
    // date (RefreshPmtAlloc). When the rates cannot give what is owed on that
    // date (it lies beyond the rate table, say), the user is told here, once,
    // and nothing is taken as owed.
    void dateChanged(PaymentForm& form) const;
    // OK: false, the entry refused and the dialog kept open, when the date is
    // not given, the amount is 0, a money field is not an amount, or the
    // parts do not add up to the payment; the ceiling advice when it was not
    // given for this interest part.
    bool okAllowed(PaymentForm& form) const;
    // The entries as a payment; nothing when one is refused.
    std::optional<PaymentRec> take(PaymentForm& form) const;

private:
    void showUnallocated(PaymentForm& form) const;

    const Case& case_;
    const RateTable& rates_;
    const FtfMinimumSchedule& ftfMinimums_;
    Messages& msgs_;
    std::optional<std::size_t> edited_;
    mutable std::optional<std::pair<std::string, OwedOnDate>> owedOnLast_;
    // Why what is owed on the date of owedOnLast_ could not be computed.
    mutable std::optional<Refusal> refused_;
    // The interest part last advised about being above the ceiling.
    mutable std::optional<std::string> ceilingAdvised_;
};

struct PaymentsForm {
    std::vector<std::string>
        lines;  // lstPmt: "mm/dd/yyyy" + " " + the 16 characters of the description
    bool editEnabled = false;
    bool deleteEnabled = false;
    bool sortEnabled = false;  // "Sort by &Date": two payments or more
    bool payrollControlsVisible = false;  // chkMinPRPenalty and btnPRhint
    bool autoArrange = false;  // chkMinPRPenalty
};

inline constexpr const char* kNoSelectionWarning
    = "No item selected!  Please click on the item you want to select.";

class PaymentsDialog {
public:
    // Shows "Payment Information" modally over the form (the window binds it,
    // runs paymentDialog()'s reactions and returns true for OK, false for
    // Cancel).
    using ShowPaymentDialog = std::function<bool(PaymentForm&)>;

    PaymentsDialog(Case& c, const RateTable& rates, const FtfMinimumSchedule& ftfMinimums,
                   Messages& msgs, ShowPaymentDialog showPayment,
                   std::function<void()> openManual = {});

    // InitPmtIP.
    PaymentsForm open();
    // FillPmtLst: the list lines (and the Edit / Delete state) from the case.
    void fillPmtLst(PaymentsForm& form) const;
    // AddPmtClick.
    void add(PaymentsForm& form);
    // EditPmt; the selected line is the payment's index (-1: none).
    void edit(PaymentsForm& form, int selected);
    // DelPmt.
    void remove(PaymentsForm& form, int selected);
    // "Sort by &Date": the payments in date order, those of one day as they
    // were (the order the computation takes them in).
    void sortByDate(PaymentsForm& form);
    // "&Hint to Minimize Payroll Penalties": the hint, then the manual.
    void payrollHint();
    // Close: the auto-arrange check box runs the deposit arrangement search
    // (with the progress shown), then the case's flag is left 0. The window
    // then closes the dialog and writes the recovery copy.
    void close(PaymentsForm& form, ArrangeProgress* progress = nullptr);

    // AddPmt: shows the dialog over form and, unless cancelled, writes it
    // into pmt (the window lets OK through only for accepted entries).
    // editedPayment: the index of the payment being edited (an IRS-method
    // payment then opens allocated on the case as it stands).
    bool addPmt(PaymentRec& pmt, PaymentForm& form,
                std::optional<std::size_t> editedPayment = std::nullopt);

    const PaymentDialog& paymentDialog() const { return payment_; }

private:
    Case& case_;
    Messages& msgs_;
    ShowPaymentDialog showPayment_;
    std::function<void()> openManual_;
    PaymentDialog payment_;
};

}  // namespace rw
