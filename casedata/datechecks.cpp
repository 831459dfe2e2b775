#include "casedata/datechecks.h"

#include "base/fault.h"

namespace rw {

bool DateValid(std::string_view text, std::string_view name, Date& out, Messages& msgs)
{
    if (auto d = ParseUserDate(text)) {
        out = *d;
        return true;
    }
    out = Date(0.0);
    Warn(msgs,
         "The " + std::string(name) + " date entered as " + std::string(text)
             + " is not valid.  Unless it is changed, somewhere at an inconvenient moment this "
               "program is likely to abort.");
    return false;
}

bool ChkDateInPeriod(std::string_view text, std::string_view name, const InitInputs& init,
                     Messages& msgs)
{
    try {
        Date d;
        if (!DateValid(text, name, d, msgs))
            return true;
        bool result = true;
        const Date start = init.tlStart.dtDate;
        const Date stop = init.tlStop.dtDate;
        if (d <= start) {
            result = false;
            Warn(msgs, std::string(name)
                           + " date is on or before the start date of the interest calculation.  "
                             "Unreliable "
                             "results or an unplanned termination may occurr if this is not "
                             "corrected. You "
                             "might want to use "
                           + FormatShortDate(start + 1) + " instead.");
        }
        if (d >= stop) {
            result = false;
            Warn(
                msgs,
                std::string(name)
                    + " date is on or after the stop date of the interest calculation.  Unreliable "
                      "results or an unplanned termination may occurr if this is not corrected. "
                      "You "
                      "might want to use "
                    + FormatShortDate(stop - 1) + " instead.");
        }
        return result;
    } catch (const Fault& f) {
        DateChkError(f.number(), name, msgs);
        return false;
    }
}

void DateChkError(int errorNumber, std::string_view name, Messages& msgs)
{
    if (errorNumber == kErrTypeMismatch)
        Warn(msgs, std::string(name)
                       + " date blank!  Unreliable results or an unplanned termination may occurr "
                         "if this is "
                         "not corrected. ");
    else
        Warn(msgs, "Error: " + ErrorDescription(errorNumber));
}

std::string InitCSDateCtrl(Date d)
{
    if (d.isNoDate())
        return {};
    return FormatShortDate(d);
}

void ChkExtendedDate(Date d, const InitInputs& init, Messages& msgs)
{
    if (d.isNoDate())
        return;
    if (d < init.dtDue)
        Warn(msgs, "The extended due date, " + FormatShortDate(d)
                       + ", should NOT be earlier that the due date, " + FormatShortDate(init.dtDue)
                       + ".  Please change the extended due date to " + FormatShortDate(init.dtDue)
                       + " or later.");
    if (d >= init.tlStop.dtDate)
        Warn(msgs, "The extended due date, " + FormatShortDate(d)
                       + ", should be earlier that the interest stop date, "
                       + FormatShortDate(init.tlStop.dtDate)
                       + ".  Please change the extended due date to "
                       + FormatShortDate(init.tlStop.dtDate - 1) + " or earlier.");
}

std::optional<Money> ReadMoneyField(std::string_view text, std::string_view label, Messages& msgs)
{
    if (auto m = ParseMoneyField(text))
        return m;
    Warn(msgs, "The " + std::string(label) + " entered as " + std::string(text)
                   + " is not an amount.  Please enter a number such as 1,234.56.");
    return std::nullopt;
}

Money MoneyFieldOrZero(std::string_view text)
{
    return ParseMoneyField(text).value_or(Money());
}

}  // namespace rw
