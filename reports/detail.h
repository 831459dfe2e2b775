#pragma once
// The detailed interest analysis: one line per row of an interest
// computation with its dates, description, rate, base, accrued interest,
// days, factor and interest, and the interest total at the foot; as the
// grid of its window and as a printed report.

#include "engine/detail.h"
#include "engine/intcalc.h"
#include "reports/grid.h"
#include "reports/printmanager.h"

#include <string>
#include <vector>

namespace rw {

// The grid of the "Detailed Interest Analysis" window: headings, one row per
// result row, and the total row ("Ending", "Interest", the total interest),
// with the engine's cells.
GridData DetailGrid(const std::vector<ResultPeriod>& rows);

// The printed analysis (Courier New 8, restored at the end).
void PrintDetail(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows);
void PrnResult(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows);
void PrnResultHead(PrintManager& pm, const InitInputs& init);

}  // namespace rw
