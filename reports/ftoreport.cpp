#include "reports/ftoreport.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "reports/reporttext.h"

#include <optional>

namespace rw {

namespace {

constexpr std::string_view kTitle = "Failure To File and/or Pay Analysis";
// Reserved lines: the column headings (one more than they print), the totals
// and the two closing sections.
constexpr std::int16_t kHeadLines = 5;
constexpr std::int16_t kTotalLines = 3;
constexpr std::int16_t kFileSectionLines = 7;
constexpr std::int16_t kPaySectionLines = 8;

}  // namespace

std::string FtpRateText(float rate)
{
    const float percent = rate * 100.0f;
    return RightAlign(FormatFixed(static_cast<double>(percent), 2, 1), 4);
}

GridData SetupFailFilePay(std::size_t months)
{
    return WithFaultName("SetupFailFilePay", [&] {
        return MakeGrid("Failure To File & Pay Analysis",
                        {"DATE OF COMPUTATION", "NET UNPAID TAX", "GROSS FAILURE TO FILE",
                         "FAILURE TO PAY RATE", "FAILURE TO PAY PENALTY",
                         "NET FAILURE TO FILE PENALTY"},
                        months + 2, CellAlign::Right);
    });
}

GridData FailFilePayGrid(const std::vector<FtoRow>& rows)
{
    GridData g = SetupFailFilePay(rows.size());
    return WithFaultName("FillFailFilePay", [&] {
        Money ftp, ftf;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const FtoRow& r = rows[i];
            g.cells[i + 1]
                = {FormatMMDDYYYY(r.dtComp), RtJustAmt(r.cNetTax), RtJustAmt(r.cGrossFtf),
                   FtpRateText(r.fFtpRate),  RtJustAmt(r.cFtp),    RtJustAmt(r.cNetFtf)};
            ftp += r.cFtp;
            ftf += r.cNetFtf;
        }
        auto& last = g.cells.back();
        last[0] = "TOTALS";
        last[4] = RtJustAmt(ftp);
        last[5] = RtJustAmt(ftf);
        return g;
    });
}

void PrnFtoFPHead(PrintManager& pm, const InitInputs& init)
{
    WithFaultName("PrnFtoFPHead", [&] {
        Printer& p = pm.printer();
        pm.PrnManager2(kHeadLines, init.sName.shown(), init.s2ndLine.shown(), kTitle);
        p.emptyLine();
        p.printLine(
            1, "       DATE                NET        GROSS     FAIL        FAILURE        NET");
        p.printLine(
            1, "        OF               UNPAID      FAILURE   TO PAY        TO PAY    FAILURE TO");
        p.printLine(
            1,
            "    COMPUTATION            TAX       TO FILE   RATE %       PENALTY   FILE PENALTY");
    });
}

void PrnFtoFilePay(PrintManager& pm, const InitInputs& init, const std::vector<FtoRow>& rows,
                   std::string_view note)
{
    WithFaultName("PrnFtoFilePay", [&] {
        Printer& p = pm.printer();
        const std::string h1 = init.sName.shown();
        const std::string h2 = init.s2ndLine.shown();
        SavedFont saved;
        SetNewFont(p, kReportFont, 8.0f, saved);
        const std::int16_t fileLines
            = IsYes(init.bFtoFile)
                  ? static_cast<std::int16_t>(kFileSectionLines + (note.empty() ? 0 : 1))
                  : 0;
        const std::int16_t payLines = IsYes(init.bFtoPay) ? kPaySectionLines : 0;
        // What closes the analysis: the totals and the sections that explain
        // it, which never stand on a page without a row of the table.
        const auto closing = static_cast<std::int16_t>(kTotalLines + fileLines + payLines);
        pm.KeepTogether(static_cast<std::int16_t>(kHeadLines + (rows.empty() ? closing : 1)), h1,
                        h2, kTitle);
        PrnFtoFPHead(pm, init);
        Money ftp, ftf;
        std::optional<RepeatedHeadings> repeat(std::in_place, pm, [&] { PrnFtoFPHead(pm, init); });
        for (const FtoRow& r : rows) {
            if (&r == &rows.back())
                pm.KeepTogether(static_cast<std::int16_t>(1 + closing), h1, h2, kTitle);
            pm.PrnManager2(1, h1, h2, kTitle);
            p.printAt(6, FormatMMDDYYYY(r.dtComp));
            pm.PrnAmtAt(r.cNetTax, 18);
            pm.PrnAmtAt(r.cGrossFtf, 33);
            p.printAt(49, FtpRateText(r.fFtpRate));
            pm.PrnAmtAt(r.cFtp, 54);
            pm.PrnAmtAt(r.cNetFtf, 69);
            p.endLine();
            ftp += r.cFtp;
            ftf += r.cNetFtf;
        }
        pm.PrnManager2(kTotalLines, h1, h2, kTitle);
        repeat.reset();
        p.printLine(54, "-------------- --------------");
        pm.PrnAmtAt(ftp, 54);
        pm.PrnAmtAt(ftf, 69);
        p.endLine();
        p.printLine(54, "============== ==============");
        if (IsYes(init.bFtoFile)) {
            pm.PrnManager2(fileLines, h1, h2, kTitle);
            p.emptyLine();
            p.emptyLine();
            p.printLine(1, "FAILURE TO FILE:");
            p.emptyLine();
            p.printLine(1, "Penalty starts to run after extended due date of return: "
                               + FormatMMDDYYYY(init.dtExtended));
            p.printLine(1,
                        "Penalty stops on filing date of return: " + FormatMMDDYYYY(init.dtFiled));
            p.printLine(1, "If after 1984, interest runs on penalty from extended due date: "
                               + FormatMMDDYYYY(init.dtExtended));
            if (!note.empty())
                p.printLine(1, std::string(note));
        }
        if (IsYes(init.bFtoPay)) {
            pm.PrnManager2(kPaySectionLines, h1, h2, kTitle);
            p.emptyLine();
            p.emptyLine();
            p.printLine(1, "FAILURE TO PAY:");
            p.emptyLine();
            p.printLine(1, "Original due date of return: " + FormatMMDDYYYY(init.dtDue));
            p.printLine(1, "First date of penalty: " + FormatMMDDYYYY(init.dtDue + 1));
            p.printLine(1, "Interest accrues on penalty starting: "
                               + FormatMMDDYYYY(init.dtFtoPayAssess));
            if (IsYes(init.b6651d1))
                p.printLine(1,
                            "Failure to pay rate increases: " + FormatMMDDYYYY(init.dt6651d1Start));
            p.emptyLine();
        }
        pm.PrnManager2(kEndReportPage, h1, h2, kTitle);
        SetOldFont(p, saved);
    });
}

}  // namespace rw
