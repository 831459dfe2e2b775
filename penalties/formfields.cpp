#include "penalties/formfields.h"

namespace rw {

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
