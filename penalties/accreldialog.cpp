#include "penalties/accreldialog.h"

#include "base/numtext.h"

#include <charconv>

namespace rw {

namespace {

// §6662 applies to returns due after 1989.
constexpr Date kLastDueBeforeAccRel = Date::fromCivil(1989, 12, 31);
// The economic substance rate, §6662(i).
constexpr float kEconomicSubstanceRate = 0.4f;
constexpr const char* kUnderpaymentLabel = "Accuracy Related Underpayment";

// The rate with every decimal it holds, so that OK on an unchanged form
// stores the same rate again (12.5 % stays .125).
std::string rateText(float rate)
{
    return FormatRateAsHeld(rate);
}

// The decimal text straight to the nearest single.
std::optional<float> parseRate(const std::string& text)
{
    const std::string t = std::string(TrimBlanks(text));
    float f = 0.0f;
    const auto r = std::from_chars(t.data(), t.data() + t.size(), f);
    if (t.empty() || r.ec != std::errc() || r.ptr != t.data() + t.size())
        return std::nullopt;
    return f;
}

}  // namespace

AccRelDialog::AccRelDialog(Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

AccRelForm AccRelDialog::open()
{
    InitInputs& in = case_.init;
    AccRelForm f;
    f.rateChoice = AccRelRateChoice::Normal;
    f.rate = rateText(kNormalAccRelRate);
    if (in.dtDue <= kLastDueBeforeAccRel) {
        f.calculate = false;
        in.bAccRel = kNo;
        f.underpaymentEnabled = false;
        f.note = kAccRelPre1990Note;
        return f;
    }
    if (!IsYes(in.bAccRel))
        return f;
    f.calculate = true;
    f.underpaymentEnabled = true;
    f.underpayment = FormatMoneyField(in.cAccRelAmt);
    if (in.fAccRelRate == kNormalAccRelRate) {
        f.rateChoice = AccRelRateChoice::Normal;
        f.rate = rateText(kNormalAccRelRate);
        f.rateEnabled = false;
    } else if (in.fAccRelRate == kEconomicSubstanceRate) {
        f.rateChoice = AccRelRateChoice::EconomicSubstance;
        f.rate = rateText(kEconomicSubstanceRate);
        f.rateEnabled = false;
    } else {
        f.rateChoice = AccRelRateChoice::Other;
        f.rate = rateText(in.fAccRelRate);
        f.rateEnabled = true;
    }
    return f;
}

void AccRelDialog::calculateChanged(AccRelForm& form)
{
    form.underpaymentEnabled = form.calculate;
    if (!form.calculate)
        case_.init.bAccRel = kNo;
}

void AccRelDialog::rateChoiceClicked(AccRelForm& form)
{
    switch (form.rateChoice) {
    case AccRelRateChoice::Normal:
        form.rate = rateText(kNormalAccRelRate);
        form.rateEnabled = false;
        break;
    case AccRelRateChoice::EconomicSubstance:
        form.rate = rateText(kEconomicSubstanceRate);
        form.rateEnabled = false;
        break;
    case AccRelRateChoice::Other:
        form.rateEnabled = true;
        form.focusRate = true;
        break;
    }
}

void AccRelDialog::focusEntered(AccRelForm& form, AccRelField field)
{
    switch (field) {
    case AccRelField::Underpayment:
        form.note = "The Accuracy Related underpayment is defined at I.R.C. Section 6664.  DO NOT "
                    "INCLUDE ANY "
                    "AMOUNT RELATED TO FRAUD!";
        break;
    case AccRelField::NormalRate:
        form.note = "Choose this for the normal Accuracy Related Penalty rate.";
        break;
    case AccRelField::EconomicSubstanceRate:
        form.note = "Choose this for the Economic Substance Accuracy Related Penalty rate.";
        break;
    case AccRelField::OtherRate:
        form.note = "Click on this if you want a penalty rate other than the normal or the "
                    "Economic Substance "
                    "rate.  Specify the rate you want to use in the Accuracy Related Penalty Rate "
                    "input box.";
        break;
    case AccRelField::Rate:
        form.note
            = "You can change the Accuracy Related Penalty rate here. Change this only in unusual "
              "circumstances. Most of the you should use either the normal rate or the Economic "
              "Substance rate.";
        break;
    }
}

void AccRelDialog::underpaymentLeft(AccRelForm& form) const
{
    TakeMoney(form, &AccRelForm::underpayment, kUnderpaymentLabel, msgs_);
}

bool AccRelDialog::accept(AccRelForm& form)
{
    InitInputs& in = case_.init;
    if (!form.calculate) {
        in.bAccRel = kNo;
        return true;
    }
    const auto amount = TakeMoney(form, &AccRelForm::underpayment, kUnderpaymentLabel, msgs_);
    if (!amount)
        return false;
    const auto rate = parseRate(form.rate);
    if (!rate) {
        Refuse(form, &AccRelForm::rate,
               "The Accuracy Related Penalty Rate entered as " + form.rate
                   + " is not a number.  Please enter the rate as a fraction (20% is .2).",
               msgs_);
        return false;
    }
    in.bAccRel = kYes;
    in.bAnyPenalties = kYes;
    in.cAccRelAmt = *amount;
    in.fAccRelRate = *rate;
    return true;
}

bool AccRelDialog::wantsExtendedDueDate() const
{
    return IsYes(case_.init.bAccRel);
}

}  // namespace rw
