#include "reports/standardsources.h"

namespace rw {

ReportSources StandardReportSources(const RateTable& rates)
{
    ReportSources s;
    s.compute = [rates](const Case& c) { return ComputeCase(c, rates); };
    return s;
}

}  // namespace rw
