#include "casedata/datechecks.h"

#include "base/numtext.h"

namespace rw {

namespace {
constexpr const char* kDateExample = "as month/day/year, such as 4/15/2024.";
}

bool IsBlankDate(std::string_view text)
{
    const std::string_view t = TrimBlanks(text);
    return t.empty() || t == "__/__/____" || t == "/  /";
}

bool DateValid(std::string_view text, std::string_view name, Date& out, Messages& msgs)
{
    const std::optional<Date> d = ParseUserDate(text);
    if (d && IsReadableDate(*d)) {
        out = *d;
        return true;
    }
    if (d)
        // A date the case file could hold but no file could be read back with.
        Warn(msgs, "The " + std::string(name) + " date entered as " + std::string(TrimBlanks(text))
                       + " lies outside the years this program works with, 1800 to 2199.  Please "
                         "enter a date "
                       + kDateExample);
    else if (IsBlankDate(text))
        Warn(msgs, "Please enter the " + std::string(name) + " date " + kDateExample);
    else
        Warn(msgs, "The " + std::string(name) + " date entered as " + std::string(TrimBlanks(text))
                       + " is not a date.  Please enter a date " + kDateExample);
    return false;
}

bool ChkDateInPeriod(Date d, std::string_view name, const InitInputs& init, Messages& msgs)
{
    bool result = true;
    const Date start = init.tlStart.dtDate;
    const Date stop = init.tlStop.dtDate;
    if (d <= start) {
        result = false;
        Warn(msgs, std::string(name)
                       + " date is on or before the start date of the interest calculation.  "
                         "Unreliable results or an unplanned termination may occurr if this is "
                         "not corrected. You might want to use "
                       + FormatShortDate(start + 1) + " instead.");
    }
    if (d >= stop) {
        result = false;
        Warn(msgs, std::string(name)
                       + " date is on or after the stop date of the interest calculation.  "
                         "Unreliable results or an unplanned termination may occurr if this is "
                         "not corrected. You might want to use "
                       + FormatShortDate(stop - 1) + " instead.");
    }
    return result;
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
