#pragma once
// The interest computation: the time line cut into rows (one per event and one
// per interest period between events), each period with its rate and factor,
// and the total interest.

#include "base/messages.h"
#include "engine/timeline.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace rw {

struct ResultPeriod {
    FixedText<16> sDesc;
    Date dtBegin;
    Date dtEnd;
    float fRate = 0.0f;
    Money cTaxPen;
    Money cAccruedInt;
    std::int32_t nDays = 0;
    double dIntFactor = 0.0;
    Money cInterest;

    friend bool operator==(const ResultPeriod&, const ResultPeriod&) = default;
};

// Computes the interest of the case from its start to its stop date with the
// given rate table (the authority's table). Fills rows and tl; returns the
// total interest. The case is never changed. Faults (a stop date beyond the
// rate table: error 9) are thrown as rw::Fault.
Money GetInterest(const Case& c, const RateTable& rates, PenaltyCalculators* penalties,
                  std::vector<ResultPeriod>& rows, TimeLine& tl);

// Row 0 from the start point at index start: one day, no rate, the start
// point's tax (its penalties are not used) as the balance, no interest.
void Set1stPeriod(std::int32_t start, std::vector<ResultPeriod>& rows, const TimeLine& tl);

// Row k as the event row of point: its day, its description, no rate, row
// k-1's balance plus the point's tax and penalties, the point's interest
// change as the row's interest.
void ResultAsPoint(const TLPoint& point, std::vector<ResultPeriod>& rows, std::size_t k);

// Gives one row its revised rate (fRate), its interest factor and, when its
// description is blank, "Compound Int." or "Simple Int."; nDays must be set.
// Daily compounding: (1 + rate / basis)^nDays - 1 with a basis of 366 days
// when the year of dtBegin is divisible by 4 (no other leap-year rule) and
// 365 otherwise; simple interest: rate x nDays / 365 in every year. Returns
// true when the row compounds.
bool GetIntFactor(const InitInputs& init, ResultPeriod& row, const RateTable& wr,
                  const TimeLine& tl);

// The interest owed on the day given as text, for the allocation of a payment:
// the case stopped on that day, with every payment dated on or after it
// counting as zero. totals receives the tax and penalties owed on that day.
// An invalid date (DateValid warns, naming the field "Payment") gives 0 and
// leaves totals unchanged.
Money IntToDate(std::string_view dateText, const Case& c, const RateTable& rates,
                PenaltyCalculators* penalties, TLPoint& totals, Messages& msgs);

}  // namespace rw
