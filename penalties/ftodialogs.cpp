#include "penalties/ftodialogs.h"

#include "casedata/datechecks.h"

namespace rw {

namespace {

// §6651(d)(1) applies to returns due after 1986.
constexpr Date kLastDueWithoutIncreasedRate = Date::fromCivil(1986, 12, 31);

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

void FtoFileDialog::assessLeft(const FtoFileForm& form) const
{
    ChkDateInPeriod(form.assessDate, "Assessment", case_.init, msgs_);
}

void FtoFileDialog::filedLeft(const FtoFileForm& form) const
{
    ChkDateInPeriod(form.filedDate, "Filing", case_.init, msgs_);
    if (openExtendedDueDate_)
        openExtendedDueDate_();
}

Accepted FtoFileDialog::accept(const FtoFileForm& form)
{
    InitInputs& in = case_.init;
    if (!form.calculate) {
        in.bFtoFile = kNo;
        return {true, MenuMark::Clear};
    }
    in.bFtoFile = kYes;
    in.bAnyPenalties = kYes;
    DateValid(form.assessDate, "Failure To File assessment", in.dtFtoFileAssess, msgs_);
    DateValid(form.filedDate, "Filing", in.dtFiled, msgs_);
    return {true, MenuMark::Set};
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

void FtoPayDialog::assessLeft(const FtoPayForm& form) const
{
    ChkDateInPeriod(form.assessDate, "Assessment", case_.init, msgs_);
}

void FtoPayDialog::increasedStartLeft(const FtoPayForm& form) const
{
    ChkDateInPeriod(form.increasedStartDate, "Increased failure to pay starting", case_.init,
                    msgs_);
}

Accepted FtoPayDialog::accept(const FtoPayForm& form)
{
    InitInputs& in = case_.init;
    if (!form.calculate) {
        in.bFtoPay = kNo;  // the increased-rate flag is left as it is
        return {true, MenuMark::Clear};
    }
    const auto amount = ReadMoneyField(form.amountOnReturn, "Amount Shown on Return", msgs_);
    if (!amount)
        return {false, MenuMark::Keep};
    in.bFtoPay = kYes;
    in.bAnyPenalties = kYes;
    DateValid(form.assessDate, "Failure To Pay Penalty assessment", in.dtFtoPayAssess, msgs_);
    in.cAmtOnReturn = *amount;
    if (form.increasedRate) {
        in.b6651d1 = kYes;
        DateValid(form.increasedStartDate, "6651(d)(1) start", in.dt6651d1Start, msgs_);
    } else {
        in.b6651d1 = kNo;
    }
    return {true, MenuMark::Set};
}

}  // namespace rw
