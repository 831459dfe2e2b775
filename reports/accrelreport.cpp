#include "reports/accrelreport.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "reports/reporttext.h"
#include "reports/summary.h"

namespace rw {

namespace {

constexpr std::string_view kTitle = "Accuracy Related Penalty Calculation";

std::string interestRunsLine(const InitInputs& init)
{
    return "Interest runs from the due date, including extensions, of "
           + FormatMMDDYYYY(init.dtExtended) + ".";
}

}  // namespace

Money AccRelReportPenalty(const InitInputs& init)
{
    return MulDouble(init.cAccRelAmt, static_cast<double>(init.fAccRelRate));
}

std::string DispAccRelPen(const InitInputs& init)
{
    return WithFaultName("DispAccRelPen", [&] {
        std::string text;
        AppendLine(text, init.sName.shown());
        AppendLine(text, init.s2ndLine.shown());
        AppendLine(text, kTitle);
        AppendLine(text, "");
        AppendLine(text, "ACCURACY RELATED PENALTY:");
        AppendLine(text, "");
        std::string para;
        for (std::string_view part :
             {"The Accuracy Related penalty, I.R.C. ", "Sec. ", "6662, is calculated ",
              "by taking the product of the penalty rate and the amount of understatement.  ",
              "The amount of understatement is defined in I.R.C. ", "Sec. ", "6664  .",
              "This penalty was part of the Revenue Reconciliation Act of 1989 and may be ",
              "assessed for returns due after 1989. Interest runs on this penalty from ",
              "the extended due date of the return."})
            para += part;
        AppendLine(text, para);
        AppendLine(text, "");
        AppendLine(text, sFormatSummLine("Understated Taxes", init.cAccRelAmt));
        // The rate with every decimal it holds, under the amounts' last digits.
        AppendLine(text, LeftAlign("Penalty Rate", 30)
                             + RightAlign(FormatRateAsHeld(init.fAccRelRate, true), 14));
        AppendLine(text, std::string(30, ' ') + "--------------");
        AppendLine(text, "");
        AppendLine(text, sFormatSummLine("Accuracy Related penalty", AccRelReportPenalty(init)));
        AppendLine(text, std::string(30, ' ') + "==============");
        AppendLine(text, "");
        AppendLine(text, interestRunsLine(init));
        return text;
    });
}

void PrnAccRelPen(PrintManager& pm, const InitInputs& taxpayer, const InitInputs& init)
{
    WithFaultName("PrnAccRelPen", [&] {
        Printer& p = pm.printer();
        SavedFont saved;
        SetNewFont(p, kReportFont, 12.0f, saved);
        const std::string h1 = taxpayer.sName.shown();
        const std::string h2 = taxpayer.s2ndLine.shown();
        pm.PrnManager2(20, h1, h2, kTitle);
        const int c = kTextColumn;
        p.emptyLine();
        p.printLine(c, "ACCURACY RELATED PENALTY:");
        p.emptyLine();
        p.printLine(c, std::string("The Accuracy Related penalty, I.R.C. ") + "Sec. "
                           + "6662, is calculated");
        p.printLine(c,
                    "by taking the product of the penalty rate and the amount of understatement.");
        p.printLine(c, std::string("The amount of understatement is defined in I.R.C. ") + "Sec. "
                           + "6664.");
        p.printLine(c,
                    "This penalty was part of the Revenue Reconciliation Act of 1989 and may be");
        p.printLine(c, "assessed for returns due after 1989. Interest runs on this penalty from");
        p.printLine(c, "the extended due date of the return.");
        p.emptyLine();
        p.emptyLine();
        p.printAt(c, "Understated Taxes");
        pm.PrnAmtAt(init.cAccRelAmt, 27);
        p.endLine();
        p.printAt(c, "Penalty Rate");
        // Right-aligned with the amounts, which end in column 40.
        const std::string rate = FormatRateAsHeld(init.fAccRelRate, true);
        p.printAt(41 - static_cast<int>(rate.size()), rate);
        p.endLine();
        p.printLine(27, "--------------");
        p.emptyLine();
        p.printAt(c, "Accuracy Related penalty");
        pm.PrnAmtAt(AccRelReportPenalty(init), 27);
        p.endLine();
        p.printLine(27, "==============");
        p.emptyLine();
        p.emptyLine();
        p.printLine(c, interestRunsLine(init));
        pm.PrnManager2(kEndReportPage, h1, h2, kTitle);
        SetOldFont(p, saved);
    });
}

}  // namespace rw
