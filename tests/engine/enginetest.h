#pragma once
// Hand-built cases and rate tables for the engine's tests, and the interest of
// one row worked out plainly from the tax rule.

#include "casedata/caserecord.h"
#include "base/fault.h"
#include "rates/ratetable.h"

#include <functional>
#include <string>

namespace enginetest {

using rw::Date;
using rw::Money;

constexpr Date D(int y, int m, int d)
{
    return Date::fromCivil(y, m, d);
}

// A decimal text as money (the test fails on a text that is not one).
Money M(const char* text);

rw::RateRow Row(Date from, Date thru, float up, float op = 0.0f, char method = 'C');
// Quarter rows from 1/1/firstYear through 12/31/lastYear, all at one rate.
rw::RateTable Quarterly(int firstYear, int lastYear, float up, float op = 0.0f, char method = 'C');

// A federal case from start to stop on an initial balance, due on the start date.
rw::Case Federal(Date start, Date stop, const char* balance);
void AddPayment(rw::Case& c, Date d, const char* toTax, const char* toInt = "0", const char* toPen = "0",
                const char* desc = "Payment");
void AddCharge(rw::Case& c, Date intStart, const char* toTax, const char* toPen = "0", const char* desc = "Charge");

// One row's interest as the rule states it: base x factor kept to the
// ten-thousandth, then to the cent, halves to even both times, with
// factor = (1 + rate / basis)^days - 1 (daily compounding) or
// factor = rate x days / 365 (simple), the rate widened from its single.
Money Compound(Money base, float rate, double basis, int days);
Money Simple(Money base, float rate, int days);

// The fault that f throws: its number, procedure and detail as text
// "number procedure: detail"; "no fault" when it throws none.
std::string FaultOf(const std::function<void()>& f);

}  // namespace enginetest
