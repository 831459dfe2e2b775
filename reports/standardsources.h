#pragma once
// The figures of the reports as the program computes them: ComputeCase with
// the authority's rate table (its payroll penalty table included).

#include "rates/ratetable.h"
#include "rates/release.h"
#include "reports/printmaster.h"

namespace rw {

// The rate table and the failure-to-file minimums are copied; the sources
// stay valid on their own.
ReportSources StandardReportSources(const RateTable& rates, const FtfMinimumSchedule& ftfMinimums,
                                    ReportProvenance provenance = {});

// The provenance of reports prepared on `today` with the rates of `release`.
ReportProvenance ProvenanceOf(const ReleaseInfo& release, Date today);

}  // namespace rw
