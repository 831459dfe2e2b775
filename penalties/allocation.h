#pragma once
// Allocating a payment between tax, penalties and interest. The IRS applies a
// payment to tax first, then to penalties, then to interest; a payment the
// user allocates may put on interest at most its share in proportion to the
// interest among everything owed on the payment date.
//
// The rules sit below the payments dialog, beside the whole computation of a
// case: a payment allocated by the IRS method is allocated again against the
// case as it stands every time the case is computed.

#include "base/money.h"
#include "casedata/caserecord.h"
#include "penalties/compute.h"
#include "rates/ratetable.h"
#include "rates/release.h"

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

// Allocates every payment of the IRS method ("I") again, one after another in
// date order (list order within a day): each against what is owed on its date
// with the payments before it already allocated again. A payment with the
// user's own allocation ("T") or without a date keeps its parts. With
// `before`, only the payments dated before that day (what is owed on that day
// depends on no other). What is owed comes from IntToDate with the case
// stopped on the payment's date and `calculators`, the case's own
// (CaseCalculators).
void AllocateIrsPayments(Case& c, const RateTable& rates, const USPenalties& calculators,
                         std::optional<Date> before = std::nullopt);

}  // namespace rw
