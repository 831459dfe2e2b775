#pragma once
// Cases and rate tables for every test, written the way a practitioner reads
// them: dates as year, month, day; amounts as decimal texts. No test
// framework here: a text that is not an amount throws.

#include "base/dates.h"
#include "base/money.h"
#include "casedata/caserecord.h"
#include "rates/ratetable.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rwtest {

using rw::Date;
using rw::Money;

constexpr Date D(int y, int m, int d)
{
    return Date::fromCivil(y, m, d);
}

// A decimal text as money ("10,000.00", "-12.3456"); std::invalid_argument
// when the text is not an amount.
Money M(std::string_view text);

// One rate period; method 'S' simple, anything else daily compounding.
rw::RateRow Row(Date from, Date thru, float up, float op = 0.0f, char method = 'C');
// Quarter rows from 1/1/firstYear through 12/31/lastYear, all at one rate.
rw::RateTable Quarterly(int firstYear, int lastYear, float up, float op = 0.0f, char method = 'C');
// One simple-interest row from 1/1/1980 to 12/31/2030.
rw::RateTable SimpleTable(float up, float op = 0.0f);

// A cleared federal case: the calculation from start to stop on the initial
// balance; due on the start date unless given; the extended due date is the
// due date.
rw::Case FederalCase(Date start, Date stop, std::string_view balance,
                     std::optional<Date> due = std::nullopt);

// A payment's parts, named where they are written:
//   AddPayment(c, D(2017, 1, 31), {.tax = "4000", .interest = "10"});
// The amount is the sum of the parts unless given; the method is the user's
// own split ("T") unless given.
struct PaymentParts {
    std::string_view tax = "0";
    std::string_view interest = "0";
    std::string_view penalties = "0";
    std::string_view desc = "Payment";
    std::string_view method = "T";
    std::optional<std::string_view> amount = std::nullopt;
};
void AddPayment(rw::Case& c, Date paid, const PaymentParts& parts);

// A charge, its interest running from its liability unless interestStart is
// given (rw::NoDate or Date() for a charge without one).
struct ChargeParts {
    std::string_view tax = "0";
    std::string_view penalties = "0";
    std::string_view desc = "Charge";
    std::optional<Date> interestStart = std::nullopt;
};
void AddCharge(rw::Case& c, Date liability, const ChargeParts& parts);

void AddDeposit(rw::Case& c, Date due, std::string_view required, Date assessed,
                bool severe = false);

// The points of a time line with the given code, in time line order.
std::vector<rw::TLPoint> PointsWithCode(const std::vector<rw::TLPoint>& tl, std::string_view code);

// The rw::Fault that f throws as "number procedure: detail"; "no fault" when
// it throws none.
std::string FaultOf(const std::function<void()>& f);

}  // namespace rwtest
