#include "reports/summary.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "reports/reporttext.h"

namespace rw {

namespace {

constexpr std::string_view kRule = "--------------";
constexpr std::string_view kDoubleRule = "==============";
constexpr std::string_view kNote = "Note: Negative amounts are owed to the taxpayer";
// Printed lines: the note between empty lines; the rules around the total.
constexpr std::int16_t kNoteLines = 3;
constexpr std::int16_t kTotalLines = 4;

std::string ruleLine(std::string_view rule)
{
    return std::string(30, ' ') + std::string(rule);
}

std::string dateRange(const InitInputs& init)
{
    return FormatShortDate(init.tlStart.dtDate) + " to " + FormatShortDate(init.tlStop.dtDate);
}

// In an overpayment case with stop days the computation already stops that
// many days before the date the user gave (the refund check's date); the
// summary says so under its period line.
std::string refundStopNote(const InitInputs& init)
{
    if (!IsYes(init.bOverpayment) || init.nStopDays <= 0)
        return {};
    return "Interest on the refund stops " + std::to_string(init.nStopDays)
           + " days before the check date, " + FormatShortDate(init.tlStop.dtDate + init.nStopDays)
           + ".";
}

// The lines without the total, and the total itself.
std::vector<SummaryLine> shownLines(const TimeLine& tl, const InitInputs& init, Money interest,
                                    Money& total)
{
    SummarySums s;
    total = CalcSummary(tl, init, s) + interest;
    const bool pen = IsYes(init.bAnyPenalties);
    std::vector<SummaryLine> lines;
    lines.push_back({"Unpaid tax", s.unpaidTax});
    lines.push_back({"Interest", interest});
    auto add = [&](bool shown, std::string_view label, Money m) {
        if (shown)
            lines.push_back({std::string(label), m});
    };
    add(pen && IsYes(init.bFtoFile), "Failure to file penalty", s.failureToFile);
    add(pen && IsYes(init.bFtoPay), "Failure to pay penalty", s.failureToPay);
    add(pen && IsYes(init.bAccRel), "Accuracy related penalty", s.accuracyRelated);
    add(pen && IsYes(init.bNegFlat), "5% Negligence penalty", s.negligenceFlat);
    add(pen && IsYes(init.bNegTime), "Time dependent negligence pen", s.negligenceTime);
    add(pen && IsYes(init.bOVal), "Overvaluation penalty", s.overvaluation);
    add(pen && IsYes(init.bSUP), "Substantial understmt penalty", s.understatement);
    add(pen && IsYes(init.bFraudFlat), "6653(b)(1) or 6663 fraud pen.", s.fraudFlat);
    add(pen && IsYes(init.bFraudTime), "Time dependent fraud pen", s.fraudTime);
    add(pen && init.nDeposits > 0, "Payroll deposit penalties", s.payrollDeposit);
    add(FindPointByCode(tl, code::kEstimatedTaxPenalty) >= 0, "Estimated tax penalty",
        s.estimatedTax);
    add(init.nCharges > 0, "Other penalties", s.otherPenalties);
    add(init.nPmts > 0, "Pmts allocated to penalties", s.pmtsToPenalties);
    return lines;
}

}  // namespace

Money CalcSummary(const TimeLine& tl, const InitInputs& /*init*/, SummarySums& sums)
{
    return WithFaultName("CalcSummary", [&] {
        sums = SummarySums{};
        // First matching code wins; any other code adds only to the tax.
        const std::pair<std::string_view, Money SummarySums::*> byCode[] = {
            {code::kPayment, &SummarySums::pmtsToPenalties},
            {code::kFailureToPay, &SummarySums::failureToPay},
            {code::kFailureToFile, &SummarySums::failureToFile},
            {code::kAccuracyRelated, &SummarySums::accuracyRelated},
            {code::kPayrollPenalty, &SummarySums::payrollDeposit},
            {code::kEstimatedTaxPenalty, &SummarySums::estimatedTax},
            {"N5P ", &SummarySums::negligenceFlat},
            {"N50 ", &SummarySums::negligenceTime},
            {"SUP ", &SummarySums::understatement},
            {"FR1 ", &SummarySums::fraudFlat},
            {"FR2 ", &SummarySums::fraudTime},
            {"POV ", &SummarySums::overvaluation},
            {code::kOtherCharge, &SummarySums::otherPenalties},
        };
        for (const TLPoint& p : tl) {
            sums.unpaidTax += p.cTax;
            for (const auto& [c, member] : byCode) {
                if (p.sCode.is(c)) {
                    sums.*member += p.cPen;
                    break;
                }
            }
        }
        return sums.unpaidTax + sums.failureToFile + sums.failureToPay + sums.accuracyRelated
               + sums.negligenceFlat + sums.negligenceTime + sums.overvaluation
               + sums.understatement + sums.fraudFlat + sums.fraudTime + sums.payrollDeposit
               + sums.estimatedTax + sums.otherPenalties + sums.pmtsToPenalties;
    });
}

std::vector<SummaryLine> SummaryLines(const TimeLine& tl, const InitInputs& init, Money interest)
{
    Money total;
    std::vector<SummaryLine> lines = shownLines(tl, init, interest, total);
    lines.push_back({"Total", total});
    return lines;
}

std::string sFormatSumm(Money amount)
{
    return WithFaultName("sFormatSumm", [&] { return RightAlign(FormatMoney(amount), 14); });
}

std::string sFormatSummLine(std::string_view label, Money amount)
{
    return WithFaultName("sFormatSumm", [&] { return LeftAlign(label, 30) + sFormatSumm(amount); });
}

std::string DispSummary(const TimeLine& tl, const InitInputs& init, Money interest,
                        const ReportProvenance& prov)
{
    return WithFaultName("DispSummary", [&] {
        std::string text;
        AppendLine(text, init.sName.trimmed());
        AppendLine(text, init.s2ndLine.trimmed());
        AppendLine(text, "From " + dateRange(init));
        if (const std::string note = refundStopNote(init); !note.empty())
            AppendLine(text, note);
        AppendLine(text, "");
        AppendLine(text, kNote);
        AppendLine(text, "");
        Money total;
        for (const SummaryLine& l : shownLines(tl, init, interest, total))
            AppendLine(text, sFormatSummLine(l.label, l.amount));
        AppendLine(text, ruleLine(kRule));
        AppendLine(text, "");
        AppendLine(text, sFormatSummLine("Total", total));
        AppendLine(text, ruleLine(kDoubleRule));
        AppendProvenance(text, ProvenanceLines(prov, init));
        return text;
    });
}

void PrnSummary(PrintManager& pm, const TimeLine& tl, const InitInputs& init, Money interest,
                const ReportProvenance& prov)
{
    WithFaultName("PrnSummary", [&] {
        Printer& p = pm.printer();
        SavedFont saved;
        SetNewFont(p, kReportFont, 12.0f, saved);
        const std::string h1 = init.sName.shown();
        const std::string h2 = init.s2ndLine.shown();
        const std::string note = refundStopNote(init);
        Money total;
        const std::vector<SummaryLine> lines = shownLines(tl, init, interest, total);
        // The note about negative amounts begins a page with the first line
        // under it, and the last line ends one with the total.
        pm.KeepTogether(static_cast<std::int16_t>(kNoteLines + (note.empty() ? 0 : 1) + 1), h1, h2,
                        "Summary From " + dateRange(init));
        pm.PrnManager2(kNoteLines, h1, h2, "Summary From " + dateRange(init));
        if (!note.empty()) {
            pm.PrnManager2(1, h1, h2, "Summary");
            p.printLine(kTextColumn, note);
        }
        p.emptyLine();
        p.printLine(kTextColumn, kNote);
        p.emptyLine();
        for (const SummaryLine& l : lines) {
            if (&l == &lines.back())
                pm.KeepTogether(1 + kTotalLines, h1, h2, "Summary");
            pm.PrnManager2(1, h1, h2, "Summary");
            p.printLine(kTextColumn, sFormatSummLine(l.label, l.amount));
        }
        pm.PrnManager2(kTotalLines, h1, h2, "Summary");
        p.printLine(kTextColumn, ruleLine(kRule));
        p.emptyLine();
        p.printLine(kTextColumn, sFormatSummLine("Total", total));
        p.printLine(kTextColumn, ruleLine(kDoubleRule));
        PrintProvenance(pm, init, "Summary", ProvenanceLines(prov, init));
        pm.PrnManager2(kEndReportPage, h1, h2, "Summary");
        SetOldFont(p, saved);
    });
}

}  // namespace rw
