#include "reports/payrollreport.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "reports/reporttext.h"
#include "reports/summary.h"

namespace rw {

namespace {

constexpr std::string_view kTitle = "Payroll Deposit Penalties";

// Appends to the window text, or prints at the left margin (the lines carry
// their own three-blank margin).
void put(std::string& text, PrintManager* pm, std::string_view line)
{
    if (pm)
        pm->printer().printLine(1, line);
    else
        AppendLine(text, line);
}

// Reserves lines when printing; true when that began a new page.
bool reserve(PrintManager* pm, const InitInputs& init, std::int16_t lines)
{
    if (!pm)
        return false;
    return pm->PrnManager2(lines, init.sName.shown(), init.s2ndLine.shown(), kTitle) == 1;
}

}  // namespace

std::string PRPenRow(const PRPenTblElement& e)
{
    return "   " + sFormatSumm(e.cBegBal) + " " + sFormatSumm(e.cPaid) + "  "
           + FormatMMDDYYYY(e.dtPaid) + " " + RightAlign(FormatCount(e.nDaysLate), 5) + " "
           + RightAlign(FormatFixed(static_cast<double>(e.fRate) * 100.0, 2, 1), 5) + " "
           + sFormatSumm(e.cBase) + " " + sFormatSumm(e.cPenalty);
}

void PRPenHeadings(const InitInputs& init, std::string& text, PrintManager* pm)
{
    WithFaultName("PRPenHeadings", [&] {
        reserve(pm, init, 4);
        put(text, pm, "");
        const std::string_view lines[] = {
            "  BEG. BALANCE                                   PEN",
            "      FOR             PAYMENT    PAYMENT   DAYS  RATE        PENALTY",
            "    DEPOSIT           AMOUNT       DATE    LATE  (%)          BASE          PENALTY",
        };
        for (std::string_view l : lines)
            put(text, pm, "   " + std::string(l));
    });
}

void ShowPRPenCalc(const InitInputs& init, const std::vector<PRPenTblElement>& table,
                   std::string& text, PrintManager* pm)
{
    WithFaultName("ShowPRPenCalc", [&] {
        Date previous(0.0);
        Money total;
        PRPenHeadings(init, text, pm);
        for (std::size_t i = 0; i < table.size(); ++i) {
            const PRPenTblElement& e = table[i];
            if (i == 0 || e.dtDepDue != previous) {
                if (reserve(pm, init, 2))
                    PRPenHeadings(init, text, pm);
                put(text, pm, "");
                put(text, pm, "   Deposit Due Date: " + FormatShortDate(e.dtDepDue));
            }
            previous = e.dtDepDue;
            if (reserve(pm, init, 1))
                PRPenHeadings(init, text, pm);
            put(text, pm, PRPenRow(e));
            total += e.cPenalty;
        }
        if (reserve(pm, init, 3))
            PRPenHeadings(init, text, pm);
        put(text, pm, std::string(72, ' ') + "--------------");
        put(text, pm, std::string(66, ' ') + "Total " + sFormatSumm(total));
        put(text, pm, std::string(72, ' ') + "==============");
    });
}

std::string ReportPRPen(const InitInputs& init, const std::vector<PRPenTblElement>& table,
                        std::int16_t print, PrintManager* pm)
{
    return WithFaultName("ReportPRPen", [&] {
        std::string text;
        PrintManager* printing = print != 0 ? pm : nullptr;
        if (print != 0 && !pm)
            ThrowFault(kErrInvalidCall, "ReportPRPen", "printing without a printer");
        SavedFont saved;
        if (printing) {
            SetNewFont(printing->printer(), kReportFont, 8.0f, saved);
        } else {
            AppendLine(text, "   " + init.sName.shown());
            AppendLine(text, "   " + init.s2ndLine.shown());
            AppendLine(text, std::string("   ") + std::string(kTitle));
        }
        ShowPRPenCalc(init, table, text, printing);
        if (printing) {
            printing->PrnManager2(kEndReportPage, init.sName.shown(), init.s2ndLine.shown(),
                                  kTitle);
            SetOldFont(printing->printer(), saved);
        }
        return text;
    });
}

}  // namespace rw
