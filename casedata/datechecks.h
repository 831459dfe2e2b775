#pragma once
// The field helpers every input dialog shares. A date field holds a date, or
// nothing when the case can do without one; anything else is refused where it
// is typed: when the field is left, and again on OK. The dialog then stays
// open and the user is sent back to the field. Dates outside the calculation
// period, or otherwise doubtful, are only advised about when the field is
// left. A money field that is not an amount is refused the same way.

#include "base/messages.h"
#include "casedata/caserecord.h"

#include <optional>
#include <string>
#include <string_view>

namespace rw {

// A text field of a dialog's form. A form that can refuse an entry has a
// member `FormField<Form> refused`: the field the window gives the focus back
// to, its text selected, after the user was told why (the window clears it).
template<typename Form>
using FormField = std::string Form::*;

// An empty date field (blanks, or the empty mask of the old date edit).
bool IsBlankDate(std::string_view text);

// Converts the text of a date field. A text that is not a date is answered
// with the example of the form month/day/year, naming the field ("The Payment
// date entered as 13/45/2022 is not a date.  ..."); an empty one asks for the
// date. Both return false and leave out as it was.
bool DateValid(std::string_view text, std::string_view name, Date& out, Messages& msgs);

// Warns when the date lies on or before the start or on or after the stop
// date of the calculation (both warnings when both apply). Returns false when
// it warned. Advice only.
bool ChkDateInPeriod(Date d, std::string_view name, const InitInputs& init, Messages& msgs);

// The text a date field shows for a stored date: empty for NoDate, otherwise
// "m/d/yyyy".
std::string InitCSDateCtrl(Date d);

// Warns when an extended due date is before the due date or on or after the
// stop date of the calculation. Changes nothing.
void ChkExtendedDate(Date d, const InitInputs& init, Messages& msgs);

// Reads a money field (empty is 0). When the text is not an amount, warns
// "The <label> entered as <text> is not an amount.  Please enter a number such
// as 1,234.56." and gives nothing.
std::optional<Money> ReadMoneyField(std::string_view text, std::string_view label, Messages& msgs);

// Reads a money field for a reaction while the dialog is being filled: a text
// that is not an amount counts as 0 until it is refused.
Money MoneyFieldOrZero(std::string_view text);

// ---- Refusing an entry of a form --------------------------------------------------

// Whether the case needs a date field filled in.
enum class DateNeed { Optional, Needed };

// A date field read on OK: its date, NoDate for an empty field the case can do
// without; nothing when refused (not a date, or empty and needed).
template<typename Form>
std::optional<Date> TakeDate(Form& form, FormField<Form> field, std::string_view name,
                             DateNeed need, Messages& msgs)
{
    if (need == DateNeed::Optional && IsBlankDate(form.*field))
        return NoDate;
    Date d;
    if (DateValid(form.*field, name, d, msgs))
        return d;
    form.refused = field;
    return std::nullopt;
}

// A date field being left: its date, or nothing for an empty field and for a
// text that is not a date, which is refused (told, and the field marked in
// form.refused).
template<typename Form>
std::optional<Date> DateLeft(Form& form, FormField<Form> field, std::string_view name,
                             Messages& msgs)
{
    if (IsBlankDate(form.*field))
        return std::nullopt;
    return TakeDate(form, field, name, DateNeed::Needed, msgs);
}

// A money field being left, or read on OK: its amount, or nothing when the
// text is not an amount (refused).
template<typename Form>
std::optional<Money> TakeMoney(Form& form, FormField<Form> field, std::string_view label,
                               Messages& msgs)
{
    auto m = ReadMoneyField(form.*field, label, msgs);
    if (!m)
        form.refused = field;
    return m;
}

// The amount of an entry (a payment, a charge, a deposit): a money field that
// must not be 0.
template<typename Form>
std::optional<Money> TakeAmount(Form& form, FormField<Form> field, std::string_view label,
                                std::string_view entry, Messages& msgs)
{
    auto m = TakeMoney(form, field, label, msgs);
    if (!m || !m->isZero())
        return m;
    Warn(msgs, "The " + std::string(label) + " is 0.  Please enter the amount of the "
                   + std::string(entry) + ".");
    form.refused = field;
    return std::nullopt;
}

// Refuses an entry with a message of its own.
template<typename Form>
void Refuse(Form& form, FormField<Form> field, const std::string& text, Messages& msgs)
{
    Warn(msgs, text);
    form.refused = field;
}

}  // namespace rw
