#pragma once
// The accuracy-related penalty report: how the penalty was reached (the rate
// times the understated tax) and from when interest runs on it; as the text
// of its window and printed.

#include "casedata/caserecord.h"
#include "reports/printmanager.h"

#include <string>

namespace rw {

// cAccRelAmt x fAccRelRate (the single rate widened to double), rounded to
// money; computed afresh by every report.
Money AccRelReportPenalty(const InitInputs& init);

// The text of the "Accuracy Related Penalty" window, lines ended by CR LF.
std::string DispAccRelPen(const InitInputs& init);

// The printed report (Courier New 12, restored at the end). The taxpayer
// lines come from `taxpayer`, the amounts and dates from `init`.
void PrnAccRelPen(PrintManager& pm, const InitInputs& taxpayer, const InitInputs& init);

}  // namespace rw
