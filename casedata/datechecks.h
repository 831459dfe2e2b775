#pragma once
// The field helpers every input dialog shares. The date warnings advise and
// never refuse: the value entered is kept, and a text that is not a date is
// stored as day 0 (30 December 1899). A money field that is not an amount is
// answered and keeps its dialog open.

#include "base/messages.h"
#include "casedata/caserecord.h"

#include <optional>
#include <string>
#include <string_view>

namespace rw {

// Converts the text of a date field. Not a date (an empty text too): stores
// day 0, warns naming the field, returns false.
bool DateValid(std::string_view text, std::string_view name, Date& out, Messages& msgs);

// Converts with DateValid and warns when the date lies on or before the start
// or on or after the stop date of the calculation (both warnings when both
// apply). Returns false when a period warning was given; a text that is not a
// date gets only the DateValid warning and returns true.
bool ChkDateInPeriod(std::string_view text, std::string_view name, const InitInputs& init,
                     Messages& msgs);

// The error answer of ChkDateInPeriod: 13 (a blank field) names the field,
// any other number gives the run-time's description.
void DateChkError(int errorNumber, std::string_view name, Messages& msgs);

// The text a date field shows for a stored date: empty for NoDate, otherwise
// "m/d/yyyy".
std::string InitCSDateCtrl(Date d);

// Warns when an extended due date is before the due date or on or after the
// stop date of the calculation. Changes nothing.
void ChkExtendedDate(Date d, const InitInputs& init, Messages& msgs);

// Reads a money field (empty is 0). When the text is not an amount, warns
// "The <label> entered as <text> is not an amount.  Please enter a number such
// as 1,234.56." and gives nothing; the dialog then stays open.
std::optional<Money> ReadMoneyField(std::string_view text, std::string_view label, Messages& msgs);

// Reads a money field for a reaction while the dialog is being filled: a text
// that is not an amount counts as 0 until OK answers it.
Money MoneyFieldOrZero(std::string_view text);

}  // namespace rw
