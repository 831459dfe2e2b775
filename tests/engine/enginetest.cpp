#include "enginetest.h"

#include <gtest/gtest.h>

#include <cmath>

namespace enginetest {

Money M(const char* text)
{
    auto m = Money::parse(text);
    EXPECT_TRUE(m.has_value()) << text;
    return m.value_or(Money());
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
            t.push_back(Row(D(y, 3 * q + 1, 1), (q == 3 ? D(y + 1, 1, 1) : D(y, 3 * q + 4, 1)) - 1, up, op, method));
    return t;
}

rw::Case Federal(Date start, Date stop, const char* balance)
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    c.init.tlStart.dtDate = start;
    c.init.tlStart.cTax = M(balance);
    c.init.tlStop.dtDate = stop;
    c.init.dtDue = start;
    return c;
}

void AddPayment(rw::Case& c, Date d, const char* toTax, const char* toInt, const char* toPen, const char* desc)
{
    rw::PaymentRec p;
    if (desc != nullptr)
        p.sDesc = desc;
    p.dtPmt = d;
    p.cToTax = M(toTax);
    p.cToInt = M(toInt);
    p.cToPen = M(toPen);
    p.cAmount = p.cToTax + p.cToInt + p.cToPen;
    p.sMethod = "T";
    if (c.init.nPmts == 0)
        c.pmts.clear();
    c.pmts.push_back(p);
    ++c.init.nPmts;
}

void AddCharge(rw::Case& c, Date intStart, const char* toTax, const char* toPen, const char* desc)
{
    rw::ChargeRec ch;
    ch.sDesc = desc;
    ch.dtLiab = intStart;
    ch.dtIntStart = intStart;
    ch.cToTax = M(toTax);
    ch.cToPen = M(toPen);
    ch.cTotal = ch.cToTax + ch.cToPen;
    if (c.init.nCharges == 0)
        c.charges.clear();
    c.charges.push_back(ch);
    ++c.init.nCharges;
}

Money Compound(Money base, float rate, double basis, int days)
{
    const double factor = std::pow(1.0 + static_cast<double>(rate) / basis, days) - 1.0;
    return rw::RoundCurrency(Money::fromDouble(base.toDouble() * factor), 2);
}

Money Simple(Money base, float rate, int days)
{
    const double factor = (static_cast<double>(rate) * days) / 365.0;
    return rw::RoundCurrency(Money::fromDouble(base.toDouble() * factor), 2);
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

}  // namespace enginetest
