#include "penalties/ftodialogs.h"

namespace rw {

namespace {

// §6651(d)(1) applies to returns due after 1986.
constexpr Date kLastDueWithoutIncreasedRate = Date::fromCivil(1986, 12, 31);
// Interest on the failure-to-file addition runs from the (extended) due date
// for returns due after 7/18/1984, from its assessment before (§6601(e)(2)(B)).
constexpr Date kFtfInterestFromDueDate = Date::fromCivil(1984, 7, 19);

// Leaving a date field: refused when it is not a date, the period check for a date.
template<typename Form>
bool checkLeft(Form& form, FormField<Form> field, std::string_view name, const InitInputs& init,
               Messages& msgs)
{
    if (const auto d = DateLeft(form, field, name, msgs))
        ChkDateInPeriod(*d, name, init, msgs);
    return form.refused == nullptr;
}

constexpr const char* kAmountLabel = "Amount Shown on Return";

}  // namespace

FtoFileDialog::FtoFileDialog(Case& c, Messages& msgs, std::function<void()> openExtendedDueDate)
    : case_(c)
    , msgs_(msgs)
    , openExtendedDueDate_(std::move(openExtendedDueDate))
{
}

FtoFileForm FtoFileDialog::open() const
{
    FtoFileForm f;
    if (IsYes(case_.init.bFtoFile)) {
        f.calculate = true;
        f.filedDate = InitCSDateCtrl(case_.init.dtFiled);
        f.assessDate = InitCSDateCtrl(case_.init.dtFtoFileAssess);
    }
    choiceChanged(f);
    return f;
}

void FtoFileDialog::choiceChanged(FtoFileForm& form)
{
    form.datesEnabled = form.calculate;
}

void FtoFileDialog::assessLeft(FtoFileForm& form) const
{
    checkLeft(form, &FtoFileForm::assessDate, "Assessment", case_.init, msgs_);
}

void FtoFileDialog::filedLeft(FtoFileForm& form) const
{
    if (checkLeft(form, &FtoFileForm::filedDate, "Filing", case_.init, msgs_)
        && openExtendedDueDate_)
        openExtendedDueDate_();
}

bool FtoFileDialog::assessmentUsed() const
{
    // A case never given an extended due date holds none (or day 0): the
    // computation then takes the assessment date.
    return !(case_.init.dtExtended >= kFtfInterestFromDueDate);
}

bool FtoFileDialog::accept(FtoFileForm& form)
{
    InitInputs& in = case_.init;
    if (!form.calculate) {
        in.bFtoFile = kNo;
        return true;
    }
    const DateNeed assessNeed = assessmentUsed() ? DateNeed::Needed : DateNeed::Optional;
    const auto assessed
        = TakeDate(form, &FtoFileForm::assessDate, "Failure To File assessment", assessNeed, msgs_);
    const auto filed
        = assessed ? TakeDate(form, &FtoFileForm::filedDate, "Filing", DateNeed::Needed, msgs_)
                   : std::nullopt;
    if (!filed)
        return false;
    in.bFtoFile = kYes;
    in.bAnyPenalties = kYes;
    in.dtFtoFileAssess = *assessed;
    in.dtFiled = *filed;
    return true;
}

FtoPayDialog::FtoPayDialog(Case& c, Messages& msgs)
    : case_(c)
    , msgs_(msgs)
{
}

FtoPayForm FtoPayDialog::open()
{
    InitInputs& in = case_.init;
    FtoPayForm f;
    if (in.dtDue <= kLastDueWithoutIncreasedRate) {
        in.b6651d1 = kNo;
        f.increasedRate = false;
        f.increasedChoiceVisible = false;
        f.noteVisible = true;
    } else {
        f.noteVisible = false;
    }
    if (IsYes(in.bFtoPay)) {
        f.calculate = true;
        choiceChanged(f);
        f.assessDate = InitCSDateCtrl(in.dtFtoPayAssess);
        showAmtOnReturn(f);
        if (IsYes(in.b6651d1)) {
            f.increasedStartEnabled = true;
            f.increasedStartDate = InitCSDateCtrl(in.dt6651d1Start);
            f.increasedRate = true;
        } else {
            f.increasedRate = false;
        }
    } else {
        f.calculate = false;
        choiceChanged(f);
        f.increasedRate = false;
        showAmtOnReturn(f);
    }
    return f;
}

void FtoPayDialog::choiceChanged(FtoPayForm& form)
{
    form.assessEnabled = form.calculate;
    form.amountEnabled = form.calculate;
    form.increasedChoiceEnabled = form.calculate;
    if (!form.calculate) {
        form.increasedStartEnabled = false;
        form.increasedRate = false;
        form.increasedStartDate.clear();
    }
}

void FtoPayDialog::increasedChoiceChanged(FtoPayForm& form)
{
    form.increasedStartEnabled = form.increasedRate;
}

void FtoPayDialog::showAmtOnReturn(FtoPayForm& form) const
{
    const InitInputs& in = case_.init;
    Money shown = in.cAmtOnReturn;
    if (shown.isZero() && in.tlStart.cTax > Money())
        shown = in.tlStart.cTax;
    form.amountOnReturn = FormatMoneyField(shown);
}

void FtoPayDialog::assessLeft(FtoPayForm& form) const
{
    checkLeft(form, &FtoPayForm::assessDate, "Assessment", case_.init, msgs_);
}

void FtoPayDialog::increasedStartLeft(FtoPayForm& form) const
{
    checkLeft(form, &FtoPayForm::increasedStartDate, "Increased failure to pay starting",
              case_.init, msgs_);
}

void FtoPayDialog::amountLeft(FtoPayForm& form) const
{
    TakeMoney(form, &FtoPayForm::amountOnReturn, kAmountLabel, msgs_);
}

bool FtoPayDialog::accept(FtoPayForm& form)
{
    InitInputs& in = case_.init;
    if (!form.calculate) {
        in.bFtoPay = kNo;  // the increased-rate flag is left as it is
        return true;
    }
    const auto assessed = TakeDate(form, &FtoPayForm::assessDate,
                                   "Failure To Pay Penalty assessment", DateNeed::Needed, msgs_);
    const auto amount = assessed ? TakeMoney(form, &FtoPayForm::amountOnReturn, kAmountLabel, msgs_)
                                 : std::nullopt;
    if (!amount)
        return false;
    std::optional<Date> start = in.dt6651d1Start;
    if (form.increasedRate
        && !(start = TakeDate(form, &FtoPayForm::increasedStartDate, "6651(d)(1) start",
                              DateNeed::Needed, msgs_)))
        return false;
    in.bFtoPay = kYes;
    in.bAnyPenalties = kYes;
    in.dtFtoPayAssess = *assessed;
    in.cAmtOnReturn = *amount;
    in.b6651d1 = ToFlag(form.increasedRate);
    in.dt6651d1Start = *start;
    return true;
}

}  // namespace rw
