#pragma once
// Allocating a payment between tax, penalties and interest. The IRS applies a
// payment to tax first, then to penalties, then to interest; a payment the
// user allocates may put on interest at most its share in proportion to the
// interest among everything owed on the payment date.

#include "casedata/money.h"

#include <optional>

namespace rw {

// What is owed on a payment date: the tax and penalty sums of the time line
// through that day and the interest to that day.
struct OwedOnDate {
    Money tax;
    Money penalties;
    Money interest;
};

struct PaymentAllocation {
    Money tax;
    Money penalties;
    Money interest;
};

// The IRS method. The three parts always add up to the amount; what is left
// after interest goes to tax (an overpayment lowers tax below what was owed).
PaymentAllocation AllocateByIrsMethod(Money amount, const OwedOnDate& owed);

// The interest ceiling of a user allocation: amount x interest / (tax +
// penalties + interest), the owed amounts added in money and the share formed
// once in double, the product rounded to money. Nothing when nothing is owed
// (the share cannot be formed): there is then no ceiling.
std::optional<Money> InterestCeiling(Money amount, const OwedOnDate& owed);

// The ceiling is exceeded when the interest part is above it by more than one
// cent (and the ceiling plus a cent is above 0).
bool InterestAboveCeiling(Money interestPart, Money ceiling);

}  // namespace rw
