#pragma once
// Rate tables the benchmarks compute with: one row per calendar quarter,
// compounding daily, so a long case meets every quarter end of its years.

#include "rates/ratetable.h"
#include "rates/release.h"

#include <functional>

namespace benchcases {

// Failure-to-file minimums for the benchmarks' cases: 100.00 up to 2008,
// 135.00 from 2009, 205.00 from 2016.
inline const rw::FtfMinimumSchedule& BenchMinimums()
{
    static const rw::FtfMinimumSchedule schedule{{{1800, rw::Money::fromCents(100'00), "bench"},
                                                  {2009, rw::Money::fromCents(135'00), "bench"},
                                                  {2016, rw::Money::fromCents(205'00), "bench"}}};
    return schedule;
}

inline rw::Date D(int y, int m, int d)
{
    return rw::Date::fromCivil(y, m, d);
}

// Quarters firstYear-lastYear; rateOf(step) gives the underpayment rate of the
// step-th quarter, the overpayment rate one point lower.
inline rw::RateTable QuarterlyRates(int firstYear, int lastYear,
                                    const std::function<float(int)>& rateOf)
{
    rw::RateTable t;
    int step = 0;
    for (int y = firstYear; y <= lastYear; ++y) {
        for (int q = 0; q < 4; ++q, ++step) {
            rw::RateRow r;
            r.dtFrom = D(y, 3 * q + 1, 1);
            r.dtThru = (q == 3 ? D(y + 1, 1, 1) : D(y, 3 * q + 4, 1)) - 1;
            r.fUPRate = rateOf(step);
            r.fOPRate = r.fUPRate - 0.01f;
            r.sCalcMethod = 'C';
            t.push_back(r);
        }
    }
    return t;
}

}  // namespace benchcases
