#pragma once
// The detailed interest analysis: one line per row of an interest
// computation with its dates, description, rate, base, accrued interest,
// days, factor and interest, and the interest total at the foot; as the
// grid of its window and as a printed report.

#include "engine/detail.h"
#include "engine/intcalc.h"
#include "reports/grid.h"
#include "reports/printmanager.h"
#include "reports/provenance.h"

#include <string>
#include <vector>

namespace rw {

// The grid of the "Detailed Interest Analysis" window: headings, one row per
// result row, and the total row ("Ending", "Interest", the total interest),
// with the engine's cells; the rate of a row at an estimated rate is marked
// with kEstimateMark.
GridData DetailGrid(const std::vector<ResultPeriod>& rows, const ReportProvenance& prov = {});

// The note under the grid: the provenance lines, and what the mark means
// when a row carries it. Lines ended by CR LF.
std::string DetailNote(const InitInputs& init, const std::vector<ResultPeriod>& rows,
                       const ReportProvenance& prov);

// The printed analysis (Courier New 8, restored at the end): estimated rates
// marked, the note under the total.
void PrintDetail(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows,
                 const ReportProvenance& prov = {});
void PrnResult(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows,
               const ReportProvenance& prov = {});
void PrnResultHead(PrintManager& pm, const InitInputs& init);

}  // namespace rw
