#pragma once
// Where a report's figures come from, for the reader who was not at the
// desk: the rate table of the case's authority, the release of the rates and
// the date through which its rates were published (verified), the day the
// report was prepared, and which part of the calculation, if any, runs on
// estimated rates (after the verified date the release carries the last
// published rate forward until an announcement is seen).
#include "casedata/caserecord.h"
#include "engine/intcalc.h"
#include "reports/printmanager.h"

#include <optional>
#include <string>
#include <vector>

namespace rw {

struct ReportProvenance {
    std::string release;  // "Qrat2026Q4"; empty when no release was read
    Date verifiedThrough = NoDate;  // rates after this day are estimates
    Date prepared = NoDate;  // the day the report is made; NoDate: not said
};

struct DateSpan {
    Date from;
    Date thru;
    friend bool operator==(const DateSpan&, const DateSpan&) = default;
};

// The days of the calculation (from the day after its start to its stop
// date) that lie after the verified date; nothing when there are none or the
// verified date is not known.
std::optional<DateSpan> EstimatedSpan(const ReportProvenance& prov, const InitInputs& init);

// True for a result row that accrues interest at an estimated rate. Rows
// never cross a rate period, so a row ending after the verified date lies
// wholly after it.
bool IsEstimatedRow(const ReportProvenance& prov, const ResultPeriod& row);

// The provenance lines of a report, in this order:
//   "Rate table: Pennsylvania"
//   "Rates: Qrat2026Q4, verified through 12/31/2026"  (when a release is known)
//   "Prepared: 11/25/2026"                              (when the day is given)
//   "Estimated rates: 1/1/2027 to 2/15/2027"            (when any)
std::vector<std::string> ProvenanceLines(const ReportProvenance& prov, const InitInputs& init);

// The lines after an empty line, at the end of a report's window text (lines
// ended by CR LF).
void AppendProvenance(std::string& text, const std::vector<std::string>& lines);

// The lines after an empty line, at print column 3, kept together on one page
// under the report's page headings and title.
void PrintProvenance(PrintManager& pm, const InitInputs& init, std::string_view title,
                     const std::vector<std::string>& lines);

// The mark after the rate of an estimated row of the detailed analysis, and
// the line that explains it.
inline constexpr std::string_view kEstimateMark = "*";
inline constexpr std::string_view kEstimateMarkNote
    = "* Estimated rate: no rate had been announced for this period.";

}  // namespace rw
