#include "casedata/caserecord.h"

#include "base/fault.h"

namespace rw {

namespace {
template<typename T>
std::span<const T> inUse(const std::vector<T>& v, std::int16_t count)
{
    const std::size_t n = count < 0 ? 0 : static_cast<std::size_t>(count);
    if (n > v.size())
        ThrowFault(kErrSubscript, "Case", "list count larger than the list");
    return std::span<const T>(v.data(), n);
}

template<typename T>
bool consistent(const std::vector<T>& v, std::int16_t count)
{
    if (count < 0)
        return false;
    return count == 0 ? v.size() == 1 : v.size() == static_cast<std::size_t>(count);
}
}  // namespace

std::span<const PaymentRec> Case::payments() const
{
    return inUse(pmts, init.nPmts);
}
std::span<const ChargeRec> Case::otherCharges() const
{
    return inUse(charges, init.nCharges);
}
std::span<const DepositRec> Case::payrollDeposits() const
{
    return inUse(deposits, init.nDeposits);
}

bool Case::countsConsistent() const
{
    return consistent(pmts, init.nPmts) && consistent(charges, init.nCharges)
           && consistent(deposits, init.nDeposits);
}

void ClearInputs(std::vector<PaymentRec>& pmts, std::vector<ChargeRec>& charges,
                 std::vector<DepositRec>& deposits, InitInputs& init)
{
    init = InitInputs{};
    for (Date* d :
         {&init.dtDue, &init.tlStart.dtDate, &init.tlStop.dtDate, &init.dtCorpUPRateStart,
          &init.dtCorpOPRateStart, &init.dtExtended, &init.dtFtoFileAssess, &init.dtFiled,
          &init.dtFtoPayAssess, &init.dtNegFlatAssess, &init.dtNegTimeAssess, &init.dtAssessSUP,
          &init.dtOValAssess, &init.dt6651d1Start, &init.dtFraudFlatAssess, &init.dtFraudTimeAssess,
          &init.dtIntSuspend, &init.dtRestart})
        *d = NoDate;
    pmts.assign(1, PaymentRec{});
    charges.assign(1, ChargeRec{});
    deposits.assign(1, DepositRec{});
    init.fAccRelRate = kNormalAccRelRate;
}

void ClearInputs(Case& c)
{
    ClearInputs(c.pmts, c.charges, c.deposits, c.init);
    c.estTax = EstTaxCase{};
}

}  // namespace rw
