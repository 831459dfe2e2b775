#include "penalties/allocation.h"

#include "base/fault.h"
#include "base/messages.h"
#include "casedata/datechecks.h"
#include "engine/intcalc.h"
#include "penalties/compute.h"

#include <algorithm>
#include <vector>

namespace rw {

namespace {

// A stored payment date is a valid date: its text draws no warning.
class NoWarnings : public Messages {
public:
    void show(std::string_view, std::string_view, MsgIcon) override { }
    bool ask(std::string_view, std::string_view, MsgIcon) override { return false; }
};

}  // namespace

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

namespace {

// What is owed on day d of the case, with its penalties: IntToDate with the
// case stopped on d, every payment dated on or after d counting as nothing.
OwedOnDate owedOn(const Case& c, Date d, const RateTable& rates, USPenalties penalties)
{
    TLPoint totals;
    NoWarnings quiet;
    const Money interest = IntToDate(InitCSDateCtrl(d), c, rates, &penalties, totals, quiet);
    return {totals.cTax, totals.cPen, interest};
}

}  // namespace

void AllocateIrsPayments(Case& c, const RateTable& rates, const USPenalties& calculators,
                         std::optional<Date> before)
{
    WithFaultName("AllocateIrsPayments", [&] {
        const std::size_t n = c.payments().size();
        std::vector<std::size_t> order;
        for (std::size_t i = 0; i < n; ++i) {
            const PaymentRec& p = c.pmts[i];
            if (p.sMethod.is("I") && p.dtPmt.isGiven() && (!before || p.dtPmt < *before))
                order.push_back(i);
        }
        std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return c.pmts[a].dtPmt < c.pmts[b].dtPmt;
        });
        for (const std::size_t i : order) {
            // What is owed counts only the payments dated before this one,
            // each of them as allocated a moment ago.
            const OwedOnDate owed = owedOn(c, c.pmts[i].dtPmt, rates, calculators);
            PaymentRec& p = c.pmts[i];
            const PaymentAllocation a = AllocateByIrsMethod(p.cAmount, owed);
            p.cToTax = a.tax;
            p.cToPen = a.penalties;
            p.cToInt = a.interest;
        }
    });
}

}  // namespace rw
