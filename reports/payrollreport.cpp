#include "reports/payrollreport.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "reports/reportsink.h"
#include "reports/reporttext.h"
#include "reports/summary.h"

#include <optional>

namespace rw {

namespace {

constexpr std::string_view kTitle = "Payroll Deposit Penalties";
// Printed lines: the column headings, a deposit's due date line (after an
// empty one), the total.
constexpr std::int16_t kHeadLines = 4;
constexpr std::int16_t kDepositLines = 2;
constexpr std::int16_t kTotalLines = 3;

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
        const ReportSink sink{text, pm, init, kTitle};
        sink.reserve(kHeadLines);
        sink.put("");
        const std::string_view lines[] = {
            "  BEG. BALANCE                                   PEN",
            "      FOR             PAYMENT    PAYMENT   DAYS  RATE        PENALTY",
            "    DEPOSIT           AMOUNT       DATE    LATE  (%)          BASE          PENALTY",
        };
        for (std::string_view l : lines)
            sink.put("   " + std::string(l));
    });
}

void ShowPRPenCalc(const InitInputs& init, const std::vector<PRPenTblElement>& table,
                   std::string& text, PrintManager* pm)
{
    WithFaultName("ShowPRPenCalc", [&] {
        const ReportSink sink{text, pm, init, kTitle};
        Date previous(0.0);
        Money total;
        // The headings begin a page with the first deposit and its first row
        // under them; a deposit's line never ends a page without a row; the
        // total never begins one.
        sink.keep(kHeadLines + (table.empty() ? kTotalLines : kDepositLines + 1));
        PRPenHeadings(init, text, pm);
        std::optional<RepeatedHeadings> repeat;
        if (pm)
            repeat.emplace(*pm, [&] { PRPenHeadings(init, text, pm); });
        for (std::size_t i = 0; i < table.size(); ++i) {
            const PRPenTblElement& e = table[i];
            const bool newDeposit = i == 0 || e.dtDepDue != previous;
            sink.keep((newDeposit ? kDepositLines : 0) + 1
                      + (i + 1 == table.size() ? kTotalLines : 0));
            if (newDeposit) {
                sink.reserve(kDepositLines);
                sink.put("");
                sink.put("   Deposit Due Date: " + FormatShortDate(e.dtDepDue));
            }
            previous = e.dtDepDue;
            sink.reserve(1);
            sink.put(PRPenRow(e));
            total += e.cPenalty;
        }
        sink.reserve(kTotalLines);
        repeat.reset();
        sink.put(std::string(72, ' ') + "--------------");
        sink.put(std::string(66, ' ') + "Total " + sFormatSumm(total));
        sink.put(std::string(72, ' ') + "==============");
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
