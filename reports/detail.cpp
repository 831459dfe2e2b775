#include "reports/detail.h"

#include "casedata/fault.h"
#include "casedata/numtext.h"
#include "reports/reporttext.h"

namespace rw {

namespace {

constexpr std::string_view kHeadTitle = "Detailed Interest Analysis";
constexpr std::string_view kRowTitle = "Period By Period Results";

}  // namespace

DetailRowText DetailRow(const ResultPeriod& r)
{
    DetailRowText t;
    t.begin = FormatMMDDYYYY(r.dtBegin);
    t.end = FormatMMDDYYYY(r.dtEnd);
    t.desc = StoredText(r.sDesc);
    // The single rate widened to double, then scaled to percent.
    t.rate = RightAlign(FormatFixed(static_cast<double>(r.fRate) * 100.0, 4, 1), 7);
    t.taxPen = RtJustAmt(r.cTaxPen);
    t.accrued = RtJustAmt(r.cAccruedInt);
    t.days = FormatFixed(static_cast<double>(r.nDays), 0, 1);
    t.factor = FormatFixed(r.dIntFactor, 9, 0);
    t.interest = RtJustAmt(r.cInterest);
    return t;
}

GridData DetailGrid(const std::vector<ResultPeriod>& rows)
{
    return WithFaultName("FillDetailIntDisp", [&] {
        GridData g = MakeGrid("Detailed Interest Analysis",
                              {"BEGINNING DATE", "ENDING DATE", "DESCRIPTION", "INTEREST RATE",
                               "BEGINNING TAX & PENALTIES", "ACCRUED INTEREST", "DAYS", "INTEREST FACTOR",
                               "INTEREST"},
                              rows.size() + 2, CellAlign::Right);
        g.align[2] = CellAlign::Left;
        g.widthUnits[2] = 2;
        Money total;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const DetailRowText t = DetailRow(rows[i]);
            g.cells[i + 1] = {t.begin, t.end, t.desc, t.rate, t.taxPen, t.accrued, t.days, t.factor, t.interest};
            total += rows[i].cInterest;
        }
        auto& last = g.cells.back();
        last[0] = "Ending";
        last[1] = "Interest";
        last[8] = RtJustAmt(total);
        return g;
    });
}

void PrnResultHead(PrintManager& pm, const InitInputs& init)
{
    WithFaultName("PrnResultHead", [&] {
        Printer& p = pm.printer();
        pm.PrnManager2(4, StoredText(init.sName), StoredText(init.s2ndLine), kHeadTitle);
        p.emptyLine();
        p.printLine(kTextColumn,
                    "                                                             BEGINNING      BEGINNING");
        p.printLine(kTextColumn,
                    "                           BEGINNING   ENDING               TAX &  BEG.      ACCRUED");
        p.printLine(kTextColumn, "         DESCRIPTION         DATE       DATE     RATE        PENALTIES       "
                                 "INTEREST DAYS   FACTOR        INTEREST");
    });
}

void PrnResult(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows)
{
    WithFaultName("PrnResult", [&] {
        Printer& p = pm.printer();
        const std::string h1 = StoredText(init.sName);
        const std::string h2 = StoredText(init.s2ndLine);
        PrnResultHead(pm, init);
        Money total;
        for (const ResultPeriod& r : rows) {
            if (pm.PrnManager2(1, h1, h2, kRowTitle) == 1)
                PrnResultHead(pm, init);
            const DetailRowText t = DetailRow(r);
            p.printAt(9, t.desc + " " + t.begin + " " + t.end + " " + t.rate + " ");
            p.printAt(57, t.taxPen);
            p.printAt(72, t.accrued);
            p.printAt(88, t.days);
            p.printAt(92, t.factor);
            p.printAt(103, t.interest);
            p.endLine();
            total += r.cInterest;
        }
        pm.PrnManager2(3, h1, h2, kRowTitle);
        p.printLine(103, "--------------");
        pm.PrnAmtAt(total, 103);
        p.endLine();
        p.printLine(103, "==============");
        pm.PrnManager2(kEndReportPage, h1, h2, kRowTitle);
    });
}

void PrintDetail(PrintManager& pm, const InitInputs& init, const std::vector<ResultPeriod>& rows)
{
    WithFaultName("PrintDetail", [&] {
        SavedFont saved;
        SetNewFont(pm.printer(), kReportFont, 8.0f, saved);
        PrnResult(pm, init, rows);
        SetOldFont(pm.printer(), saved);
    });
}

}  // namespace rw
