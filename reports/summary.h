#pragma once
// The summary: what the taxpayer owes at the stop date, split into unpaid
// tax, interest and each kind of penalty, with a grand total. It is read off
// the whole time line of a computation (every point counts, also one dated
// after the stop date) and the computation's interest total.

#include "casedata/caserecord.h"
#include "engine/timeline.h"
#include "reports/printmanager.h"
#include "reports/provenance.h"

#include <string>
#include <string_view>
#include <vector>

namespace rw {

// The fourteen sums, in the order of the summary's lines.
struct SummarySums {
    Money unpaidTax;  // cTax of every point
    Money failureToFile;  // "FFP "
    Money failureToPay;  // "FPP "
    Money accuracyRelated;  // "PAR "
    Money negligenceFlat;  // "N5P "
    Money negligenceTime;  // "N50 "
    Money overvaluation;  // "POV "
    Money understatement;  // "SUP "
    Money fraudFlat;  // "FR1 "
    Money fraudTime;  // "FR2 "
    Money payrollDeposit;  // "PDP "
    Money estimatedTax;  // "ESP "
    Money otherPenalties;  // "OTHC"
    Money pmtsToPenalties;  // "PMT " (negative)
};

// Fills the sums from the time line; returns their total (without interest).
Money CalcSummary(const TimeLine& tl, const InitInputs& init, SummarySums& sums);

struct SummaryLine {
    std::string label;
    Money amount;
    friend bool operator==(const SummaryLine&, const SummaryLine&) = default;
};

// The lines the summary shows, in order: "Unpaid tax", "Interest", then each
// penalty line whose condition holds ("Estimated tax penalty" when the time
// line holds an "ESP " point); the last line is "Total" (every sum plus the
// interest, shown or not).
std::vector<SummaryLine> SummaryLines(const TimeLine& tl, const InitInputs& init, Money interest);

// The amount formatted "###,###,##0.00" and right-aligned in 14 characters
// (a longer text keeps its first 14).
std::string sFormatSumm(Money amount);
// The label left-aligned in 30 characters, then sFormatSumm: 44 characters.
std::string sFormatSummLine(std::string_view label, Money amount);

// The text of the summary window, lines ended by CR LF. init is the case
// as computed (ComputeCase): in an overpayment case with stop days its stop
// date is already the day interest stops, and a line under the period says
// so with the check date. The provenance lines close the text.
std::string DispSummary(const TimeLine& tl, const InitInputs& init, Money interest,
                        const ReportProvenance& prov = {});

// Prints the summary through the page manager (Courier New 12, restored),
// the provenance lines under the total.
void PrnSummary(PrintManager& pm, const TimeLine& tl, const InitInputs& init, Money interest,
                const ReportProvenance& prov = {});

}  // namespace rw
