#include "support/casebuilder.h"

#include "base/fault.h"

#include <stdexcept>
#include <string>

namespace rwtest {

namespace {

template<typename List, typename Entry>
void append(List& list, std::int16_t& count, const Entry& e)
{
    if (count == 0)
        list.clear();
    list.push_back(e);
    ++count;
}

}  // namespace

Money M(std::string_view text)
{
    const std::optional<Money> m = Money::parse(text);
    if (!m)
        throw std::invalid_argument("not an amount: " + std::string(text));
    return *m;
}

rw::RateRow Row(Date from, Date thru, float up, float op, char method)
{
    rw::RateRow r;
    r.dtFrom = from;
    r.dtThru = thru;
    r.fUPRate = up;
    r.fOPRate = op;
    r.sCalcMethod = method;
    return r;
}

rw::RateTable Quarterly(int firstYear, int lastYear, float up, float op, char method)
{
    rw::RateTable t;
    for (int y = firstYear; y <= lastYear; ++y)
        for (int q = 0; q < 4; ++q)
            t.push_back(Row(D(y, 3 * q + 1, 1), (q == 3 ? D(y + 1, 1, 1) : D(y, 3 * q + 4, 1)) - 1,
                            up, op, method));
    return t;
}

rw::RateTable SimpleTable(float up, float op)
{
    return {Row(D(1980, 1, 1), D(2030, 12, 31), up, op, 'S')};
}

rw::Case FederalCase(Date start, Date stop, std::string_view balance, std::optional<Date> due)
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    c.init.tlStart.dtDate = start;
    c.init.tlStart.cTax = M(balance);
    c.init.tlStop.dtDate = stop;
    c.init.dtDue = due.value_or(start);
    c.init.dtExtended = c.init.dtDue;
    return c;
}

void AddPayment(rw::Case& c, Date paid, const PaymentParts& parts)
{
    rw::PaymentRec p;
    p.sDesc = parts.desc;
    p.dtPmt = paid;
    p.cToTax = M(parts.tax);
    p.cToInt = M(parts.interest);
    p.cToPen = M(parts.penalties);
    p.cAmount = parts.amount ? M(*parts.amount) : p.cToTax + p.cToInt + p.cToPen;
    p.sMethod = parts.method;
    append(c.pmts, c.init.nPmts, p);
}

void AddCharge(rw::Case& c, Date liability, const ChargeParts& parts)
{
    rw::ChargeRec ch;
    ch.sDesc = parts.desc;
    ch.dtLiab = liability;
    ch.dtIntStart = parts.interestStart.value_or(liability);
    ch.cToTax = M(parts.tax);
    ch.cToPen = M(parts.penalties);
    ch.cTotal = ch.cToTax + ch.cToPen;
    append(c.charges, c.init.nCharges, ch);
}

void AddDeposit(rw::Case& c, Date due, std::string_view required, Date assessed, bool severe)
{
    rw::DepositRec d;
    d.dtDepDue = due;
    d.dtDepAssess = assessed;
    d.cRequired = M(required);
    d.bSevere = severe ? rw::kYes : rw::kNo;
    append(c.deposits, c.init.nDeposits, d);
}

std::vector<rw::TLPoint> PointsWithCode(const std::vector<rw::TLPoint>& tl, std::string_view code)
{
    std::vector<rw::TLPoint> out;
    for (const rw::TLPoint& p : tl)
        if (p.sCode.is(code))
            out.push_back(p);
    return out;
}

std::string FaultOf(const std::function<void()>& f)
{
    try {
        f();
    } catch (const rw::Fault& fault) {
        return std::to_string(fault.number()) + " " + fault.procedure() + ": " + fault.detail();
    }
    return "no fault";
}

}  // namespace rwtest
