#include "reports/esttaxreport.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "rates/ratetable.h"
#include "reports/reportsink.h"
#include "reports/reporttext.h"
#include "reports/summary.h"

#include <cctype>
#include <optional>

namespace rw {

namespace {

constexpr std::string_view kTitle = "Estimated Tax Penalty";
// A section: an empty line, its name and two lines of column headings.
constexpr std::int16_t kSectionLines = 4;
constexpr std::int16_t kTopLines = 5;
constexpr std::int16_t kTotalLines = 3;
// The penalty column of the rate-period lines ends at this character.
constexpr std::size_t kPenaltyEnd = 74;

std::string Pct(float rate)
{
    return FormatFixed(static_cast<double>(rate) * 100.0, 2);
}

// Installments as the columns of the form: number, due date, required, what
// was paid by the due date (with the overpayment carried in, less earlier
// underpayments), the overpayment carried on, the underpayment.
std::string InstallmentRow(std::string_view no, std::string_view due, std::string_view required,
                           std::string_view paid, std::string_view over, std::string_view under)
{
    return TrimRight("   " + RightAlign(no, 2) + "  " + LeftAlign(due, 10) + " "
                     + RightAlign(required, 13) + " " + RightAlign(paid, 13) + " "
                     + RightAlign(over, 13) + " " + RightAlign(under, 13));
}

// Rate periods: installment, from, to, days, days of the year, rate,
// underpayment, penalty.
std::string PeriodRow(std::string_view no, std::string_view from, std::string_view to,
                      std::string_view days, std::string_view year, std::string_view rate,
                      std::string_view base, std::string_view penalty)
{
    return TrimRight("   " + RightAlign(no, 2) + "  " + LeftAlign(from, 10) + " "
                     + LeftAlign(to, 10) + " " + RightAlign(days, 4) + " " + RightAlign(year, 4)
                     + " " + RightAlign(rate, 5) + " " + RightAlign(base, 14) + " "
                     + RightAlign(penalty, 14));
}

void InstallmentHeadings(const ReportSink& out)
{
    out.reserve(2);
    out.put(InstallmentRow("", "DUE", "REQUIRED", "PAID BY", "", ""));
    out.put(InstallmentRow("NO", "DATE", "INSTALLMENT", "DUE DATE", "OVERPAYMENT", "UNDERPAYMENT"));
}

void PeriodHeadings(const ReportSink& out)
{
    out.reserve(2);
    out.put(PeriodRow("", "", "", "", "DAYS", "RATE", "", ""));
    out.put(PeriodRow("NO", "FROM", "TO", "DAYS", "YEAR", "%", "UNDERPAYMENT", "PENALTY"));
}

// The lines of one installment: its row, the day payments stayed on time
// when the due date fell on a weekend or holiday, and the later payments.
std::vector<std::string> InstallmentLines(std::size_t k, const EstTaxInstallment& inst)
{
    std::vector<std::string> lines{
        InstallmentRow(std::to_string(k + 1), FormatMMDDYYYY(inst.nominalDue),
                       FormatMoney(inst.required), FormatMoney(inst.paidOnTime + inst.overpayment),
                       FormatMoney(inst.overpayment), FormatMoney(inst.underpayment))};
    if (inst.actualDue != inst.nominalDue)
        lines.push_back("       payments on time until " + FormatMMDDYYYY(inst.actualDue));
    for (const DatedAmount& p : inst.paidLate)
        lines.push_back("       paid late " + FormatMMDDYYYY(p.date)
                        + RightAlign(FormatMoney(p.amount), 18));
    return lines;
}

std::string Upper(std::string_view text)
{
    std::string out(text);
    for (char& ch : out)
        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    return out;
}

std::string FilerLine(const EstTaxInput& in)
{
    if (in.filer == EstTaxFiler::Individual)
        return "   INDIVIDUAL (FORM 2210), TAX YEAR " + std::to_string(in.taxYear);
    std::string line = "   CORPORATION (FORM 2220), TAX YEAR " + std::to_string(in.taxYear);
    if (in.fiscalYearEndMonth != 12) {
        line += " ENDING " + FormatMMDDYYYY(EstTaxYearEnds(in));
    }
    return line;
}

void Body(const EstTaxInput& in, const EstTaxResult& r, const ReportSink& out)
{
    const bool exempt = r.exemption != EstTaxExemption::None;
    const std::vector<std::string> first = InstallmentLines(0, r.installments[0]);
    // A state case figures the penalty at its own table's rates.
    std::vector<std::string> heading{"   ESTIMATED TAX PENALTY", FilerLine(in)};
    if (const Authority& a = AuthorityForCode(out.init.sTaxAuth.view()); &a != &Authorities()[0])
        heading.push_back("   AT THE UNDERPAYMENT RATES OF THE " + Upper(a.name) + " TABLE");
    const int top = kTopLines - 2 + static_cast<int>(heading.size());
    out.keep(top + (exempt ? 2 : kSectionLines + static_cast<int>(first.size())));
    out.reserve(top);
    for (const std::string& line : heading)
        out.put(line);
    out.put("");
    out.put("   " + sFormatSummLine("Required Annual Payment", r.requiredAnnualPayment));
    out.put("   " + LeftAlign("Return Due Date", 30) + RightAlign(FormatMMDDYYYY(r.returnDue), 14));
    if (exempt) {
        out.reserve(2);
        out.put("");
        out.put(in.filer == EstTaxFiler::Individual
                    ? "   No penalty: the tax less the tax withheld is under 1,000.00."
                    : "   No penalty: the tax is under 500.00.");
        return;
    }

    // On a page too short for the heading and the section together, the
    // section's heading still goes with its first installment.
    out.keep(kSectionLines + static_cast<int>(first.size()));
    out.reserve(2);
    out.put("");
    out.put("   REQUIRED INSTALLMENTS");
    InstallmentHeadings(out);
    {
        std::optional<RepeatedHeadings> repeat;
        if (out.pm)
            repeat.emplace(*out.pm, [&] { InstallmentHeadings(out); });
        for (std::size_t k = 0; k < r.installments.size(); ++k) {
            const std::vector<std::string> lines = InstallmentLines(k, r.installments[k]);
            out.keep(static_cast<int>(lines.size()));
            out.reserve(static_cast<int>(lines.size()));
            for (const std::string& l : lines)
                out.put(l);
        }
    }

    if (r.lines.empty()) {
        out.keep(2 + kTotalLines);
        out.reserve(2);
        out.put("");
        out.put("   No installment was underpaid.");
    } else {
        out.keep(kSectionLines + 1 + (r.lines.size() == 1 ? kTotalLines : 0));
        out.reserve(2);
        out.put("");
        out.put("   PENALTY FOR EACH RATE PERIOD");
        PeriodHeadings(out);
        std::optional<RepeatedHeadings> repeat;
        if (out.pm)
            repeat.emplace(*out.pm, [&] { PeriodHeadings(out); });
        for (std::size_t i = 0; i < r.lines.size(); ++i) {
            const EstTaxLine& l = r.lines[i];
            // The last line never leaves the total alone on the next page.
            out.keep(1 + (i + 1 == r.lines.size() ? kTotalLines : 0));
            out.reserve(1);
            out.put(PeriodRow(std::to_string(l.installment + 1), FormatMMDDYYYY(l.from),
                              FormatMMDDYYYY(l.to), FormatCount(l.days), std::to_string(l.yearDays),
                              Pct(l.rate), sFormatSumm(l.base), sFormatSumm(l.penalty)));
        }
    }
    out.reserve(kTotalLines);
    out.put(std::string(kPenaltyEnd - 14, ' ') + std::string(14, '-'));
    out.put(RightAlign("Total Estimated Tax Penalty", kPenaltyEnd - 15) + " "
            + sFormatSumm(r.total));
    out.put(std::string(kPenaltyEnd - 14, ' ') + std::string(14, '='));
}

}  // namespace

std::string DispEstTax(const EstTaxInput& in, const EstTaxResult& r, const InitInputs& init)
{
    return WithFaultName("DispEstTax", [&] {
        std::string text;
        AppendLine(text, TrimRight("   " + init.sName.trimmed()));
        AppendLine(text, TrimRight("   " + init.s2ndLine.trimmed()));
        AppendLine(text, "   " + std::string(kTitle));
        AppendLine(text, "");
        Body(in, r, ReportSink{text, nullptr, init, kTitle});
        return text;
    });
}

void PrnEstTax(PrintManager& pm, const InitInputs& init, const EstTaxInput& in,
               const EstTaxResult& r)
{
    WithFaultName("PrnEstTax", [&] {
        std::string unused;
        SavedFont saved;
        SetNewFont(pm.printer(), kReportFont, 12.0f, saved);
        Body(in, r, ReportSink{unused, &pm, init, kTitle});
        pm.PrnManager2(kEndReportPage, init.sName.shown(), init.s2ndLine.shown(), kTitle);
        SetOldFont(pm.printer(), saved);
    });
}

}  // namespace rw
