#include "payments/allocation.h"

namespace rw {

PaymentAllocation AllocateByIrsMethod(Money amount, const OwedOnDate& owed)
{
    PaymentAllocation a;
    if (owed.tax > amount) {
        a.tax = amount;
        return a;
    }
    a.tax = owed.tax;
    Money rest = amount - owed.tax;
    if (owed.penalties > rest) {
        a.penalties = rest;
        return a;
    }
    a.penalties = owed.penalties;
    rest -= owed.penalties;
    if (owed.interest <= rest) {
        a.interest = owed.interest;
        a.tax += rest - owed.interest;
    } else {
        a.interest = rest;
    }
    return a;
}

std::optional<Money> InterestCeiling(Money amount, const OwedOnDate& owed)
{
    const Money all = owed.tax + owed.penalties + owed.interest;
    if (all.isZero())
        return std::nullopt;
    const double share = owed.interest.toDouble() / all.toDouble();
    return MulDouble(amount, share);
}

bool InterestAboveCeiling(Money interestPart, Money ceiling)
{
    const Money withCent = ceiling + Money::fromCents(1);
    return interestPart > withCent && withCent > Money();
}

}  // namespace rw
