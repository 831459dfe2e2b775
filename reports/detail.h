#pragma once
// The detailed interest analysis: one line per row of an interest
// computation with its dates, description, rate, base, accrued interest,
// days, factor and interest, and the interest total at the foot; as the
// grid of its window and as a printed report.

#include "engine/intcalc.h"
#include "reports/grid.h"
#include "reports/printmanager.h"

#include <string>
#include <vector>

namespace rw {

// The texts of one result row.
struct DetailRowText {
    std::string begin;     // "mm/dd/yyyy"
    std::string end;       // "mm/dd/yyyy"
    std::string desc;      // the 16 characters as stored
    std::string rate;      // percent "#0.0000", right-aligned in 7
    std::string taxPen;    // 14-character amount
    std::string accrued;   // 14-character amount
    std::string days;      // "##0"
    std::string factor;    // ".000000000"
    std::string interest;  // 14-character amount
};
DetailRowText DetailRow(const ResultPeriod& row);

// The grid of the "Detailed Interest Analysis" window: headings, one row per
// result row, and the total row ("Ending", "Interest", the total interest).
GridData DetailGrid(const std::vector<ResultPeriod>& rows);

// The printed analysis (Courier New 8, restored at the end).
void PrintDetail(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows);
void PrnResult(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows);
void PrnResultHead(PrintManager& pm, const InitInputs& init);

}  // namespace rw
