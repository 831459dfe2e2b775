#include "casedata/initialinputs.h"

#include "base/numtext.h"

#include <charconv>

namespace rw {

InitialInputsDialog::InitialInputsDialog(Case& c, RateTable& rates, const Paths& paths,
                                         Messages& msgs)
    : case_(c)
    , rates_(rates)
    , paths_(paths)
    , msgs_(msgs)
{
}

std::vector<std::string> InitialInputsDialog::AuthorityNames()
{
    std::vector<std::string> names;
    for (const Authority& a : Authorities())
        names.emplace_back(a.name);
    return names;
}

InitialInputsForm InitialInputsDialog::open() const
{
    const InitInputs& in = case_.init;
    InitialInputsForm f;
    f.name = in.sName.trimmed();
    f.secondLine = in.s2ndLine.trimmed();
    f.startDate = InitCSDateCtrl(in.tlStart.dtDate);
    f.stopDate = InitCSDateCtrl(in.tlStop.dtDate);
    f.dueDate = InitCSDateCtrl(in.dtDue);
    f.overpayment = IsYes(in.bOverpayment);
    if (f.overpayment) {
        f.initialBalance = FormatMoneyField(-in.tlStart.cTax);
        f.stopDaysVisible = true;
        f.stopDays = std::to_string(in.nStopDays);
    } else {
        f.initialBalance = FormatMoneyField(in.tlStart.cTax);
        f.stopDaysVisible = false;
        f.stopDays = std::to_string(in.nStopDays);
    }
    f.payroll = IsYes(in.bPayroll);
    f.corporate = IsYes(in.bCorporate);
    const int pos = AuthorityPosition(in.sTaxAuth.view());
    f.authority = pos < 0 ? 0 : pos;
    return f;
}

void InitialInputsDialog::startSituationChanged(InitialInputsForm& form)
{
    form.stopDaysVisible = form.overpayment;
}

void InitialInputsDialog::payrollClicked(const InitialInputsForm& form) const
{
    if (!form.payroll)
        return;
    const std::string text = std::string(TrimBlanks(form.initialBalance));
    if (text.empty())
        return;
    const auto amount = ParseMoneyField(text);
    if (amount && *amount > Money::fromCents(100))
        Warn(msgs_, "For payroll tax situations the Balance Due should be $0 and the Start "
                    "Calculation Date "
                    "should be the first day of the quarter.");
}

namespace {

const char* dateName(FormField<InitialInputsForm> field)
{
    if (field == &InitialInputsForm::startDate)
        return "Calculation Start";
    if (field == &InitialInputsForm::stopDate)
        return "Calculation Stop";
    return "Due";
}

// Interest is computed from the start forward: a stop before the start is
// refused, the stop field to be corrected.
bool stopAfterStart(InitialInputsForm& form, Date start, Date stop, Messages& msgs)
{
    if (!(stop < start))
        return true;
    Refuse(form, &InitialInputsForm::stopDate,
           "The calculation cannot end on " + FormatShortDate(stop) + ", before it starts on "
               + FormatShortDate(start) + ".  Please enter a stop date on or after the start date.",
           msgs);
    return false;
}

}  // namespace

void InitialInputsDialog::dateLeft(InitialInputsForm& form,
                                   FormField<InitialInputsForm> field) const
{
    const auto d = DateLeft(form, field, dateName(field), msgs_);
    if (!d || field != &InitialInputsForm::stopDate)
        return;
    if (const auto start = ParseUserDate(form.startDate))
        stopAfterStart(form, *start, *d, msgs_);
}

void InitialInputsDialog::balanceLeft(InitialInputsForm& form) const
{
    TakeMoney(form, &InitialInputsForm::initialBalance, "Intitial Balance", msgs_);
}

InitialInputsDialog::Result InitialInputsDialog::accept(InitialInputsForm& form)
{
    // Entries that cannot be stored are answered, in the order of the
    // fields, before anything changes.
    std::optional<Date> dates[3];
    const FormField<InitialInputsForm> fields[3] = {
        &InitialInputsForm::dueDate, &InitialInputsForm::startDate, &InitialInputsForm::stopDate};
    for (int i = 0; i < 3; ++i)
        if (!(dates[i] = TakeDate(form, fields[i], dateName(fields[i]), DateNeed::Needed, msgs_)))
            return Result::KeepOpen;
    if (!stopAfterStart(form, *dates[1], *dates[2], msgs_))
        return Result::KeepOpen;
    const auto balance
        = TakeMoney(form, &InitialInputsForm::initialBalance, "Intitial Balance", msgs_);
    if (!balance)
        return Result::KeepOpen;
    std::int16_t stopDays = 0;
    if (form.overpayment) {
        const std::string t = std::string(TrimBlanks(form.stopDays));
        int n = 0;
        const auto r = std::from_chars(t.data(), t.data() + t.size(), n);
        if (t.empty())
            n = 0;
        else if (r.ec != std::errc() || r.ptr != t.data() + t.size() || n < 0 || n > 30) {
            Refuse(form, &InitialInputsForm::stopDays,
                   "The number of days before the check date on which interest stops on the "
                   "refund must be a whole number from 0 to 30.",
                   msgs_);
            return Result::KeepOpen;
        }
        stopDays = static_cast<std::int16_t>(n);
    }

    InitInputs& in = case_.init;
    in.sName.assign(form.name);
    in.s2ndLine.assign(form.secondLine);
    in.dtDue = *dates[0];
    in.tlStart.dtDate = *dates[1];
    in.tlStop.dtDate = *dates[2];
    if (!form.overpayment) {
        in.tlStart.cTax = *balance;
        in.bOverpayment = kNo;
        in.nStopDays = 0;
    } else {
        in.tlStart.cTax = -*balance;
        in.bOverpayment = kYes;
        in.nStopDays = stopDays;
    }
    in.bPayroll = ToFlag(form.payroll);
    in.bCorporate = ToFlag(form.corporate);
    const auto auths = Authorities();
    const bool validPos = form.authority >= 0 && form.authority < static_cast<int>(auths.size());
    in.sTaxAuth.assign(validPos ? auths[static_cast<std::size_t>(form.authority)].code : "US  ");
    OpenRates(in.sTaxAuth.view(), paths_, msgs_, rates_);
    if (!in.isFederal() && !rates_.empty()
        && CheckStateTableDates(in, rates_, msgs_) == StateCheckAnswer::SaveAndExit)
        return Result::SaveAndExit;
    return Result::Stored;
}

namespace {
// Where the maker offers more current state rate tables.
const char* kTablesPage = "www.brindlecote.example/ratewright/tables";
}  // namespace

bool CalcDatesWithinTable(const InitInputs& init, const RateTable& rates)
{
    if (init.isFederal() || rates.empty())
        return true;
    const Date first = rates.front().dtFrom;
    const Date last = rates.back().dtThru;
    const auto inside = [&](Date d) { return first <= d && d <= last; };
    return inside(init.tlStart.dtDate) && inside(init.tlStop.dtDate);
}

StateCheckAnswer CheckStateTableDates(const InitInputs& init, const RateTable& rates,
                                      Messages& msgs)
{
    if (CalcDatesWithinTable(init, rates))
        return StateCheckAnswer::Continue;
    const Date first = rates.front().dtFrom;
    const Date last = rates.back().dtThru;
    const bool startOutside = !(first <= init.tlStart.dtDate && init.tlStart.dtDate <= last);
    const std::string which = startOutside ? "The start date, " : "The stop date, ";
    const Date shown = startOutside ? init.tlStart.dtDate : init.tlStop.dtDate;
    const std::string text
        = which + FormatMMDDYYYY(shown) + ", is not between the first date, "
          + FormatMMDDYYYY(first) + ", and the last date, " + FormatMMDDYYYY(last)
          + ", in the state's rate table file. You are welcome " + "to look at " + kTablesPage
          + " for a more " + "current state rate table. If you press the YES button, "
          + "the program will let you continue, but, if you don't "
          + "change that date, it will abort without warning later. "
          + "If you press the NO button, the program will save your "
          + "data and exit afterwards. Continue?";
    return msgs.ask("State Rate Table Problem", text, MsgIcon::Critical)
               ? StateCheckAnswer::Continue
               : StateCheckAnswer::SaveAndExit;
}

}  // namespace rw
