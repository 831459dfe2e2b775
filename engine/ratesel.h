#pragma once
// Rate selection: the rate-table row that covers an interest row, its
// standard rate and method (simple or daily compounding), and the rate revised
// for the situation of the case on the row's first day, with the label that
// names the kind of rate used.
//
// Rates are single-precision fractions; a revision is computed in double from
// the single value and stored back in single precision, so 8 % + 2 % is the
// single nearest to double(0.08f) + 0.02.

#include "engine/intcalc.h"

#include <cstddef>
#include <optional>

namespace rw {

// Finds, for one date after another, the first row of a rate table (from the
// start of the table) whose period ends on or after the date. A row that
// qualifies for a date qualifies for every earlier date too, so for a later
// date the search carries on from the row found last; an earlier date starts
// again from the first row. Rows visited in date order cost one pass in all,
// and the answer is that of the plain search whatever the order of the table.
class RateRowFinder {
public:
    explicit RateRowFinder(const RateTable& wr)
        : wr_(&wr)
    {
    }
    // Index of the row, or -1 when every period ends before d.
    std::ptrdiff_t find(Date d);

private:
    const RateTable* wr_;
    std::size_t next_ = 0;  // rows before it end before the last date asked
    bool started_ = false;
    Date last_;
};

// The working rates: a copy of the authority's rate table.
void GetWorkingRates(const RateTable& rates, RateTable& wr);

// fUPRate of the first row whose dtThru is on or after d. A date beyond the
// table is a fault (9, "GetStdPeriodRate").
float GetStdPeriodRate(const RateTable& wr, Date d);

// The rate of one interest row after revision; compounds tells whether the
// table row covering the row's dtEnd compounds daily. Sets an unset
// description to the revision's label, or to "Compound" / "Simple". A dtEnd
// beyond the table is a fault (9, "GetRevisedRate").
float GetRevisedRate(const InitInputs& init, ResultPeriod& row, const RateTable& wr,
                     const TimeLine& tl, bool& compounds);

// The federal revision: tax-motivated, large corporate underpayment,
// corporate overpayment and the overpayment differentials.
float GetRevisedUSRate(const InitInputs& init, ResultPeriod& row, const TimeLine& tl);

// Any other authority: its own underpayment rate, or the table row's
// overpayment rate when nothing is owed.
float GetRevisedStateRate(ResultPeriod& row, const RateRow& tableRow);

// A stretch of the rate table without the rate an interest row needs: a hole
// in the table (no published rate at all), a refund rate never published for
// an overpaid row, or days before the table begins or after it ends.
struct MissingRate {
    enum class Kind { Hole, Refund, BeforeTable, AfterTable };
    Kind kind = Kind::Hole;
    Date from;  // the stretch the table lacks (for a hole, all of it)
    Date thru;
};

// The message that refuses a computation needing the rate the table lacks,
// naming the authority, the missing stretch and what the user can do.
Refusal RefuseMissingRate(const InitInputs& init, const RateTable& wr, const MissingRate& missing);

// The rate selection of one computation: the functions above for the rows of
// one case, rate table and time line, asked in date order. Results are those
// of the functions above; the table rows and the tax to date are found with
// cursors instead of a search from the start for every row.
class RateSelector {
public:
    RateSelector(const InitInputs& init, const RateTable& wr, const TimeLine& tl);

    // GetStdPeriodRate, except that a date beyond the table gives NaN (no
    // rate) instead of a fault: missingRate then tells what is lacking.
    float stdPeriodRate(Date d);
    // What the table lacks for an interest row (its days and its balance,
    // cTaxPen + cAccruedInt, set), or nothing when the rate is there.
    std::optional<MissingRate> missingRate(const ResultPeriod& row);
    float revisedRate(ResultPeriod& row, bool& compounds);  // GetRevisedRate
    float revisedUSRate(ResultPeriod& row);  // GetRevisedUSRate

private:
    const InitInputs& init_;
    const RateTable& wr_;
    RateRowFinder stdRows_;
    RateRowFinder revisedRows_;
    RateRowFinder coverRows_;
    TaxToDateCursor tax_;
};

}  // namespace rw
