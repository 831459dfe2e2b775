#include "reports/provenance.h"

#include "rates/ratetable.h"
#include "reports/reporttext.h"

#include <algorithm>

namespace rw {

std::optional<DateSpan> EstimatedSpan(const ReportProvenance& prov, const InitInputs& init)
{
    if (prov.verifiedThrough.isNoDate())
        return std::nullopt;
    const Date stop = init.tlStop.dtDate;
    if (!stop.isGiven() || stop <= prov.verifiedThrough)
        return std::nullopt;
    const Date from = std::max(prov.verifiedThrough + 1, init.tlStart.dtDate + 1);
    if (from > stop)
        return std::nullopt;
    return DateSpan{from, stop};
}

bool IsEstimatedRow(const ReportProvenance& prov, const ResultPeriod& row)
{
    return !prov.verifiedThrough.isNoDate() && row.nDays > 0 && row.dtEnd > prov.verifiedThrough;
}

std::vector<std::string> ProvenanceLines(const ReportProvenance& prov, const InitInputs& init)
{
    std::vector<std::string> lines;
    lines.push_back("Rate table: " + std::string(AuthorityForCode(init.sTaxAuth.view()).name));
    if (!prov.release.empty()) {
        std::string release = "Rates: " + prov.release;
        if (!prov.verifiedThrough.isNoDate())
            release += ", verified through " + FormatMMDDYYYY(prov.verifiedThrough);
        lines.push_back(std::move(release));
    }
    if (!prov.prepared.isNoDate())
        lines.push_back("Prepared: " + FormatMMDDYYYY(prov.prepared));
    if (const auto span = EstimatedSpan(prov, init))
        lines.push_back("Estimated rates: " + FormatShortDate(span->from) + " to "
                        + FormatShortDate(span->thru));
    return lines;
}

void AppendProvenance(std::string& text, const std::vector<std::string>& lines)
{
    // One empty line between the report and its provenance.
    const std::string blankEnd = std::string(kCrLf) + std::string(kCrLf);
    if (!text.ends_with(blankEnd))
        AppendLine(text, "");
    for (const std::string& line : lines)
        AppendLine(text, line);
}

void PrintProvenance(PrintManager& pm, const InitInputs& init, std::string_view title,
                     const std::vector<std::string>& lines)
{
    Printer& p = pm.printer();
    pm.PrnManager2(static_cast<std::int16_t>(lines.size() + 1), init.sName.shown(),
                   init.s2ndLine.shown(), title);
    p.emptyLine();
    for (const std::string& line : lines)
        p.printLine(kTextColumn, line);
}

}  // namespace rw
