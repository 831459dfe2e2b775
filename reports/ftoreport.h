#pragma once
// The failure to file and pay analysis: the month rows of the last failure to
// file / failure to pay computation with the totals of both penalties, as the
// grid of its window and as a printed report with a few lines of explanation
// per penalty.

#include "penalties/penaltytypes.h"
#include "reports/grid.h"
#include "reports/printmanager.h"

#include <string>
#include <vector>

namespace rw {

// The failure-to-pay rate of a month in percent: the single rate times 100 in
// single precision, "0.00", right-aligned in 4 (0.005 -> "0.50").
std::string FtpRateText(float rate);

// The grid of "Failure To File & Pay Analysis": headings, one row per month,
// and the "TOTALS" row (failure to pay and net failure to file).
GridData FailFilePayGrid(const std::vector<FtoRow>& rows);
GridData SetupFailFilePay(std::size_t months);

// The printed analysis (Courier New 8, restored at the end).
// note: which year's minimum failure-to-file amount was applied, printed
// under the failure-to-file block when not empty.
void PrnFtoFilePay(PrintManager& pm, const InitInputs& init, const std::vector<FtoRow>& rows,
                   std::string_view note = {});
void PrnFtoFPHead(PrintManager& pm, const InitInputs& init);

}  // namespace rw
