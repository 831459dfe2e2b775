#include "reports/standardsources.h"

namespace rw {

ReportSources StandardReportSources(const RateTable& rates, const FtfMinimumSchedule& ftfMinimums,
                                    ReportProvenance provenance)
{
    ReportSources s;
    s.compute = [rates, ftfMinimums](const Case& c) { return ComputeCase(c, rates, ftfMinimums); };
    s.provenance = std::move(provenance);
    return s;
}

ReportProvenance ProvenanceOf(const ReleaseInfo& release, Date today)
{
    ReportProvenance p;
    if (release.loaded()) {
        p.release = release.name;
        p.verifiedThrough = release.verifiedThrough;
    }
    p.prepared = today;
    return p;
}

}  // namespace rw
