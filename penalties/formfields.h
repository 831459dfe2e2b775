#pragma once
// What the input dialogs of penalties and payments share: the menu check mark
// an accepted dialog asks the window to set, and the reading of money fields.

#include "casedata/messages.h"
#include "casedata/money.h"

#include <optional>
#include <string>
#include <string_view>

namespace rw {

// The check mark of the dialog's menu entry after it closes.
enum class MenuMark { Keep, Set, Clear };

// Reads a money field (empty is 0). When the text is not an amount, warns
// "The <label> entered as <text> is not an amount.  Please enter a number such
// as 1,234.56." and gives nothing; the dialog then stays open.
std::optional<Money> ReadMoneyField(std::string_view text, std::string_view label, Messages& msgs);

// Reads a money field for a reaction while the dialog is being filled: a text
// that is not an amount counts as 0 until OK answers it.
Money MoneyFieldOrZero(std::string_view text);

}  // namespace rw

namespace rw {

// What OK did: stored (the dialog closes) or not (the user was told why and
// the dialog stays open), and the menu check mark to set or clear.
struct Accepted {
    bool stored = false;
    MenuMark mark = MenuMark::Keep;
};

}  // namespace rw
