#include "reports/standardsources.h"

namespace rw {

ReportSources StandardReportSources(const RateTable& rates, const FtfMinimumSchedule& ftfMinimums)
{
    ReportSources s;
    s.compute = [rates, ftfMinimums](const Case& c) { return ComputeCase(c, rates, ftfMinimums); };
    return s;
}

}  // namespace rw
