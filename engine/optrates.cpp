#include "engine/optrates.h"

#include "base/fault.h"

namespace rw {

namespace {

constexpr Date k19841231 = Date::fromCivil(1984, 12, 31);
constexpr Date k19891231 = Date::fromCivil(1989, 12, 31);

// One of the two large corporate rates: where the case and the form keep it,
// and the date after which the special rate applies (IRC 6621(c)).
struct CorpRate {
    Flag InitInputs::*flag;
    Date InitInputs::*start;
    bool OptRatesForm::*choice;
    std::string OptRatesForm::*field;
    bool OptRatesForm::*enabled;
    Date threshold;
    std::string_view thresholdText;
    std::string_view fieldName;  // in the date check's warning
    std::string_view kind;  // in the "too early" warning
};

const CorpRate kUnderpayment{&InitInputs::bCorpUPRate,
                             &InitInputs::dtCorpUPRateStart,
                             &OptRatesForm::corpUPRate,
                             &OptRatesForm::corpUPStart,
                             &OptRatesForm::corpUPStartEnabled,
                             Date::fromCivil(1990, 12, 31),
                             "12/31/1990",
                             "Special Corporate Underpayment Interest Starting",
                             "underpayments"};
const CorpRate kOverpayment{&InitInputs::bCorpOPRate,
                            &InitInputs::dtCorpOPRateStart,
                            &OptRatesForm::corpOPRate,
                            &OptRatesForm::corpOPStart,
                            &OptRatesForm::corpOPStartEnabled,
                            Date::fromCivil(1994, 12, 31),
                            "12/31/1994",
                            "Special Corporate Overpayment Interest Starting",
                            "overpayments"};

// The field's date when it holds one (no warning).
std::optional<Date> fieldDate(const std::string& text)
{
    return ParseUserDate(text);
}

void openRate(const InitInputs& in, const CorpRate& r, OptRatesForm& f)
{
    const bool on = IsYes(in.*r.flag);
    f.*r.choice = on;
    f.*r.enabled = on;
    f.*r.field = on ? InitCSDateCtrl(in.*r.start) : std::string();
}

void setDefault(const InitInputs& in, const CorpRate& r, OptRatesForm& f)
{
    if (fieldDate(f.*r.field))
        return;
    const Date proposed = in.dtDue <= r.threshold ? r.threshold + 1 : in.dtDue;
    f.*r.field = InitCSDateCtrl(proposed);
}

void clicked(const InitInputs& in, const CorpRate& r, OptRatesForm& f)
{
    if (!(f.*r.choice)) {
        (f.*r.field).clear();
        f.*r.enabled = false;
        return;
    }
    f.*r.enabled = true;
    if (IsYes(in.*r.flag) && (in.*r.start).isGiven())
        f.*r.field = InitCSDateCtrl(in.*r.start);
    else
        setDefault(in, r, f);
}

void checkDate(const CorpRate& r, OptRatesForm& f, Messages& msgs)
{
    const auto d = DateLeft(f, r.field, r.fieldName, msgs);
    if (d && *d <= r.threshold)
        Warn(msgs, "The special interest rate on large corporate " + std::string(r.kind)
                       + " is for periods after " + std::string(r.thresholdText)
                       + ".  You might want to double check the date you entered, which appears to "
                         "be too early.");
}

// The start date a Yes needs; nothing for a No.
std::optional<Date> startDate(const CorpRate& r, OptRatesForm& f, Messages& msgs)
{
    return f.*r.choice ? TakeDate(f, r.field, r.fieldName, DateNeed::Needed, msgs) : NoDate;
}

void store(InitInputs& in, const CorpRate& r, const OptRatesForm& f, Date start)
{
    if (!(f.*r.choice)) {
        in.*r.flag = kNo;  // the start date stays stored
        return;
    }
    in.*r.flag = kYes;
    in.*r.start = start;
}

}  // namespace

OptRatesDialog::OptRatesDialog(Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

OptRatesForm OptRatesDialog::open() const
{
    return WithFaultName("InitDlgOptRates", [&] {
        OptRatesForm f;
        f.taxMotivated = IsYes(case_.init.bTaxMotivated);
        openRate(case_.init, kUnderpayment, f);
        openRate(case_.init, kOverpayment, f);
        return f;
    });
}

void OptRatesDialog::ChkTaxMotDate() const
{
    WithFaultName("ChkTaxMotDate", [&] {
        const InitInputs& in = case_.init;
        if (in.dtDue > k19891231)
            Warn(msgs_, "The tax motivated rates are for returns due on or before 12/31/1989.  You "
                        "might want to "
                        "double check the date you entered, which appears to be too late.");
        if (in.tlStart.dtDate <= k19841231)
            Warn(msgs_, "The tax motivated rates will start after 12/31/1984.");
    });
}

void OptRatesDialog::radCorpUPRateClick(OptRatesForm& form) const
{
    WithFaultName("radCorpUPRateClick", [&] { clicked(case_.init, kUnderpayment, form); });
}

void OptRatesDialog::radCorpOPRateClick(OptRatesForm& form) const
{
    WithFaultName("radCorpOPRateClick", [&] { clicked(case_.init, kOverpayment, form); });
}

void OptRatesDialog::SetDefaultCorpUPRateDate(OptRatesForm& form) const
{
    WithFaultName("SetDefaultCorpUPRateDate", [&] { setDefault(case_.init, kUnderpayment, form); });
}

void OptRatesDialog::SetDefaultCorpOPRateDate(OptRatesForm& form) const
{
    WithFaultName("SetDefaultCorpOPRateDate", [&] { setDefault(case_.init, kOverpayment, form); });
}

void OptRatesDialog::ChkCorpUPDate(OptRatesForm& form) const
{
    WithFaultName("ChkCorpUPDate", [&] { checkDate(kUnderpayment, form, msgs_); });
}

void OptRatesDialog::ChkCorpOPDate(OptRatesForm& form) const
{
    WithFaultName("ChkCorpOPDate", [&] { checkDate(kOverpayment, form, msgs_); });
}

bool OptRatesDialog::accept(OptRatesForm& form)
{
    return WithFaultName("DlgOptRatesData", [&] {
        const auto upStart = startDate(kUnderpayment, form, msgs_);
        const auto opStart = upStart ? startDate(kOverpayment, form, msgs_) : std::nullopt;
        if (!opStart)
            return false;
        InitInputs& in = case_.init;
        if (form.taxMotivated) {
            in.bTaxMotivated = kYes;
            ChkTaxMotivated(kYes, in.dtDue, msgs_);
        } else {
            in.bTaxMotivated = kNo;
        }
        store(in, kUnderpayment, form, *upStart);
        store(in, kOverpayment, form, *opStart);
        return true;
    });
}

void ChkTaxMotivated(Flag flag, Date due, Messages& msgs)
{
    WithFaultName("ChkTaxMotivated", [&] {
        if (IsYes(flag) && (due > k19891231 || due <= k19841231))
            Warn(msgs, "The due date for using tax motivated rates should be between 1/1/85 and "
                       "12/31/89.");
    });
}

}  // namespace rw
