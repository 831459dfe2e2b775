#include "reports/detail.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "reports/reporttext.h"

#include <algorithm>
#include <optional>

namespace rw {

namespace {

constexpr std::string_view kHeadTitle = "Detailed Interest Analysis";
constexpr std::string_view kRowTitle = "Period By Period Results";
constexpr std::int16_t kResultHeadLines = 4;
constexpr std::int16_t kTotalLines = 3;

constexpr std::size_t kRateCell = 3;

bool anyEstimated(const ReportProvenance& prov, const std::vector<ResultPeriod>& rows)
{
    return std::any_of(rows.begin(), rows.end(),
                       [&](const ResultPeriod& r) { return IsEstimatedRow(prov, r); });
}

// The provenance lines, then what the mark means when a row carries it.
std::vector<std::string> noteLines(const InitInputs& init, const std::vector<ResultPeriod>& rows,
                                   const ReportProvenance& prov)
{
    std::vector<std::string> lines = ProvenanceLines(prov, init);
    if (anyEstimated(prov, rows))
        lines.emplace_back(kEstimateMarkNote);
    return lines;
}

}  // namespace

GridData DetailGrid(const std::vector<ResultPeriod>& rows, const ReportProvenance& prov)
{
    const DetailAnalysis a = MakeDetailAnalysis(rows);
    GridData g;
    g.caption = "Detailed Interest Analysis";
    for (const DetailLine& line : a.grid())
        g.cells.emplace_back(line.begin(), line.end());
    // Row 0 holds the headings; result row i is grid row i + 1.
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (IsEstimatedRow(prov, rows[i]))
            g.cells[i + 1][kRateCell] += kEstimateMark;
    for (std::size_t c = 0; c < kDetailColumns; ++c) {
        g.align.push_back(DetailColumnRightAligned(c) ? CellAlign::Right : CellAlign::Left);
        g.widthUnits.push_back(DetailColumnWidthUnits(c));
    }
    return g;
}

std::string DetailNote(const InitInputs& init, const std::vector<ResultPeriod>& rows,
                       const ReportProvenance& prov)
{
    std::string text;
    for (const std::string& line : noteLines(init, rows, prov))
        AppendLine(text, line);
    return text;
}

void PrnResultHead(PrintManager& pm, const InitInputs& init)
{
    WithFaultName("PrnResultHead", [&] {
        Printer& p = pm.printer();
        pm.PrnManager2(kResultHeadLines, init.sName.shown(), init.s2ndLine.shown(), kHeadTitle);
        p.emptyLine();
        p.printLine(kTextColumn, "                                                             "
                                 "BEGINNING      BEGINNING");
        p.printLine(
            kTextColumn,
            "                           BEGINNING   ENDING               TAX &  BEG.      ACCRUED");
        p.printLine(kTextColumn,
                    "         DESCRIPTION         DATE       DATE     RATE        PENALTIES       "
                    "INTEREST DAYS   FACTOR        INTEREST");
    });
}

void PrnResult(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows,
               const ReportProvenance& prov)
{
    WithFaultName("PrnResult", [&] {
        Printer& p = pm.printer();
        const std::string h1 = init.sName.shown();
        const std::string h2 = init.s2ndLine.shown();
        // The column headings begin a page with a row (or the totals) under them.
        pm.KeepTogether(kResultHeadLines + (rows.empty() ? kTotalLines : 1), h1, h2, kHeadTitle);
        PrnResultHead(pm, init);
        Money total;
        std::optional<RepeatedHeadings> repeat(std::in_place, pm, [&] { PrnResultHead(pm, init); });
        for (const ResultPeriod& r : rows) {
            // The totals never begin a page: the last row goes with them.
            if (&r == &rows.back())
                pm.KeepTogether(1 + kTotalLines, h1, h2, kRowTitle);
            pm.PrnManager2(1, h1, h2, kRowTitle);
            // The description keeps its 16 cells on paper, set or not.
            const DetailLine t = DetailRowCells(r);
            const std::string_view mark = IsEstimatedRow(prov, r) ? kEstimateMark : " ";
            p.printAt(9, LeftAlign(t[2], 16) + " " + t[0] + " " + t[1] + " " + t[3]
                             + std::string(mark));
            p.printAt(57, t[4]);
            p.printAt(72, t[5]);
            p.printAt(88, t[6]);
            p.printAt(92, t[7]);
            p.printAt(103, t[8]);
            p.endLine();
            total += r.cInterest;
        }
        pm.PrnManager2(kTotalLines, h1, h2, kRowTitle);
        repeat.reset();
        p.printLine(103, "--------------");
        pm.PrnAmtAt(total, 103);
        p.endLine();
        p.printLine(103, "==============");
        PrintProvenance(pm, init, kRowTitle, noteLines(init, rows, prov));
        pm.PrnManager2(kEndReportPage, h1, h2, kRowTitle);
    });
}

void PrintDetail(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows,
                 const ReportProvenance& prov)
{
    WithFaultName("PrintDetail", [&] {
        SavedFont saved;
        SetNewFont(pm.printer(), kReportFont, 8.0f, saved);
        PrnResult(pm, init, rows, prov);
        SetOldFont(pm.printer(), saved);
    });
}

}  // namespace rw
