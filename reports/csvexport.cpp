#include "reports/csvexport.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "engine/detail.h"
#include "engine/timeline.h"
#include "penalties/payroll.h"
#include "reports/accrelreport.h"
#include "reports/ftoreport.h"
#include "reports/inputs.h"
#include "reports/summary.h"

#include <algorithm>
#include <optional>

namespace rw {

namespace {

using Row = std::vector<std::string>;

std::string date(Date d)
{
    return d.isGiven() ? FormatMMDDYYYY(d) : std::string();
}

std::string text(const std::string& shown)
{
    return std::string(TrimBlanks(shown));
}

// A list's amount: every decimal the entry holds, at least two.
std::string heldAmount(Money amount)
{
    std::string s = FormatMoneyField(amount);
    std::erase(s, ',');
    return s;
}

// A rate held as a fraction, in percent with the decimals its report shows.
std::string percent(float rate, int decimals)
{
    return FormatFixed(static_cast<double>(rate) * 100.0, decimals, 1);
}

Row headings(const GridData& grid)
{
    return grid.cells.at(0);
}

CsvTable summary(const CaseComputation& comp)
{
    CsvTable t{std::string(kCsvSummary), {{"DESCRIPTION", "AMOUNT"}}};
    for (const SummaryLine& l : SummaryLines(comp.timeline, comp.kase.init, comp.interest))
        t.rows.push_back({l.label, CsvAmount(l.amount)});
    return t;
}

CsvTable detail(const CaseComputation& comp)
{
    const DetailLine& h = DetailHeadings();
    CsvTable t{std::string(kCsvDetail), {Row(h.begin(), h.end())}};
    Money total;
    for (const ResultPeriod& r : comp.rows) {
        const DetailLine cells = DetailRowCells(r);
        t.rows.push_back({date(r.dtBegin), date(r.dtEnd), text(cells[2]), percent(r.fRate, 4),
                          CsvAmount(r.cTaxPen), CsvAmount(r.cAccruedInt), std::to_string(r.nDays),
                          FormatFixed(r.dIntFactor, 9, 1), CsvAmount(r.cInterest)});
        total += r.cInterest;
    }
    const DetailLine foot = DetailTotalCells(total);
    t.rows.push_back({foot[0], foot[1], "", "", "", "", "", "", CsvAmount(total)});
    return t;
}

CsvTable failFilePay(const CaseComputation& comp)
{
    CsvTable t{std::string(kCsvFailFilePay), {headings(SetupFailFilePay(0))}};
    Money ftp, ftf;
    for (const FtoRow& r : comp.ftoRows) {
        t.rows.push_back({date(r.dtComp), CsvAmount(r.cNetTax), CsvAmount(r.cGrossFtf),
                          percent(r.fFtpRate, 2), CsvAmount(r.cFtp), CsvAmount(r.cNetFtf)});
        ftp += r.cFtp;
        ftf += r.cNetFtf;
    }
    t.rows.push_back({"TOTALS", "", "", "", CsvAmount(ftp), CsvAmount(ftf)});
    return t;
}

CsvTable accuracyRelated(const InitInputs& init)
{
    return {std::string(kCsvAccRel),
            {{"DESCRIPTION", "VALUE"},
             {"Understated Taxes", CsvAmount(init.cAccRelAmt)},
             {"Penalty Rate", FormatRateAsHeld(init.fAccRelRate, true)},
             {"Accuracy Related penalty", CsvAmount(AccRelReportPenalty(init))},
             {"Interest runs from", date(init.dtExtended)}}};
}

CsvTable payroll(const CaseComputation& comp)
{
    // As its window: the table built afresh from the deposits and the
    // payments in list order.
    std::vector<PRPenTblElement> table;
    CalcUSPRPen(comp.kase, comp.kase.payments(), table);
    CsvTable t{std::string(kCsvPayroll),
               {{"DEPOSIT DUE DATE", "BEG. BALANCE FOR DEPOSIT", "PAYMENT AMOUNT", "PAYMENT DATE",
                 "DAYS LATE", "PEN RATE (%)", "PENALTY BASE", "PENALTY"}}};
    Money total;
    for (const PRPenTblElement& e : table) {
        t.rows.push_back({date(e.dtDepDue), CsvAmount(e.cBegBal), CsvAmount(e.cPaid),
                          date(e.dtPaid), std::to_string(e.nDaysLate), percent(e.fRate, 2),
                          CsvAmount(e.cBase), CsvAmount(e.cPenalty)});
        total += e.cPenalty;
    }
    t.rows.push_back({"Total", "", "", "", "", "", "", CsvAmount(total)});
    return t;
}

CsvTable payments(const Case& c)
{
    CsvTable t{std::string(kCsvPayments), {headings(SetupPmtGrd(0))}};
    for (const PaymentRec& p : c.payments())
        t.rows.push_back({text(p.sDesc.shown()), date(p.dtPmt), heldAmount(p.cAmount),
                          heldAmount(p.cToTax), heldAmount(p.cToPen), heldAmount(p.cToInt),
                          text(p.sMethod.shown())});
    return t;
}

CsvTable charges(const Case& c)
{
    CsvTable t{std::string(kCsvCharges), {headings(SetupChrgGrd(0))}};
    for (const ChargeRec& ch : c.otherCharges())
        t.rows.push_back({text(ch.sDesc.shown()), date(ch.dtLiab), date(ChargeInterestDate(ch)),
                          heldAmount(ch.cTotal)});
    return t;
}

CsvTable deposits(const Case& c)
{
    CsvTable t{std::string(kCsvDeposits), {headings(SetupDepGrd(0))}};
    for (const DepositRec& d : c.payrollDeposits())
        t.rows.push_back({date(d.dtDepDue), date(d.dtDepAssess), heldAmount(d.cRequired)});
    return t;
}

CsvTable estTax(const EstTaxResult& r)
{
    CsvTable t{std::string(kCsvEstTax),
               {{"INSTALLMENT", "FROM", "TO", "DAYS", "DAYS IN YEAR", "RATE (%)", "UNDERPAYMENT",
                 "PENALTY"}}};
    for (const EstTaxLine& l : r.lines)
        t.rows.push_back({std::to_string(l.installment + 1), date(l.from), date(l.to),
                          std::to_string(l.days), std::to_string(l.yearDays), percent(l.rate, 2),
                          CsvAmount(l.base), CsvAmount(l.penalty)});
    t.rows.push_back({"Total", "", "", "", "", "", "", CsvAmount(r.total)});
    return t;
}

bool chosen(std::int32_t choice, std::int32_t value)
{
    return (choice & value) != 0;
}

std::string baseName(std::string_view path)
{
    const std::size_t slash = path.find_last_of("/\\");
    return std::string(slash == std::string_view::npos ? path : path.substr(slash + 1));
}

std::string fileList(const std::vector<std::string>& files)
{
    std::string out;
    for (const std::string& f : files)
        out += "\n" + Utf8ToLatin1(f);
    return out;
}

}  // namespace

std::vector<CsvTable> CsvTables(std::int32_t choice, const Case& c, const ReportSources& sources)
{
    return WithFaultName("CsvTables", [&] {
        std::vector<CsvTable> out;
        std::optional<CaseComputation> comp;
        if ((choice & ~kRptInputs) != 0) {
            if (!sources.compute)
                ThrowFault(kErrInvalidCall, "CsvTables", "no computation for the reports");
            comp = sources.compute(c);
        }
        if (chosen(choice, kRptSummary))
            out.push_back(summary(*comp));
        if (chosen(choice, kRptDetail))
            out.push_back(detail(*comp));
        if (chosen(choice, kRptFailFilePay)
            && (IsYes(comp->kase.init.bFtoFile) || IsYes(comp->kase.init.bFtoPay)))
            out.push_back(failFilePay(*comp));
        if (chosen(choice, kRptAccRel) && IsYes(comp->kase.init.bAccRel))
            out.push_back(accuracyRelated(comp->kase.init));
        if (chosen(choice, kRptPayroll) && comp->kase.init.nDeposits > 0)
            out.push_back(payroll(*comp));
        if (chosen(choice, kRptEstTax) && comp->estTax)
            out.push_back(estTax(*comp->estTax));
        if (chosen(choice, kRptInputs)) {
            if (c.init.nPmts > 0)
                out.push_back(payments(c));
            if (c.init.nCharges > 0)
                out.push_back(charges(c));
            if (c.init.nDeposits > 0)
                out.push_back(deposits(c));
        }
        return out;
    });
}

std::string CsvAmount(Money amount)
{
    std::string s = FormatMoney(amount);
    std::erase(s, ',');
    return s;
}

std::string CsvField(std::string_view text)
{
    if (text.find_first_of(",\"\r\n") == std::string_view::npos)
        return std::string(text);
    std::string out = "\"";
    for (char ch : text) {
        if (ch == '"')
            out += '"';
        out += ch;
    }
    out += '"';
    return out;
}

std::string CsvText(const CsvTable& table)
{
    std::string out;
    for (const auto& row : table.rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i != 0)
                out += ',';
            out += CsvField(row[i]);
        }
        out += "\r\n";
    }
    return out;
}

std::string CsvFileBytes(const CsvTable& table)
{
    return "\xEF\xBB\xBF" + Latin1ToUtf8(CsvText(table));
}

std::string CsvCaseName(std::string_view caseFile)
{
    std::string name = baseName(caseFile);
    const std::size_t dot = name.rfind('.');
    if (dot != std::string::npos && dot != 0)
        name.erase(dot);
    return name;
}

std::string CsvFileName(std::string_view caseName, std::string_view report)
{
    std::string name = (caseName.empty() ? std::string("UNTITLED") : std::string(caseName)) + " - "
                       + std::string(report) + ".csv";
    for (char& ch : name)
        if (std::string_view("/\\:*?\"<>|").find(ch) != std::string_view::npos
            || static_cast<unsigned char>(ch) < 0x20)
            ch = '_';
    return name;
}

std::string CsvWrittenText(std::string_view folder, const std::vector<std::string>& files)
{
    const std::string count = files.size() == 1 ? std::string("1 file was")
                                                : std::to_string(files.size()) + " files were";
    return count + " written to the folder " + Utf8ToLatin1(folder) + ":\n" + fileList(files);
}

std::string CsvReplaceQuestion(std::string_view folder, const std::vector<std::string>& files)
{
    return "The folder " + Utf8ToLatin1(folder) + " already holds:\n" + fileList(files)
           + "\n\nReplace these files?";
}

}  // namespace rw
