#include "reports/inputs.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "engine/timeline.h"
#include "reports/reporttext.h"

#include <vector>

namespace rw {

namespace {

constexpr std::string_view kTitle = "Inputs";

// A date counts as set when it is neither day 0 nor NoDate.
bool isSet(Date d)
{
    return d.dayNumber() != 0.0 && !d.isNoDate();
}

// A date the user left empty (an assessment date an old return alone needs)
// prints blank.
std::string shortDate(Date d)
{
    return d.isNoDate() ? std::string() : FormatShortDate(d);
}

// The lines of the listing in groups, each group printed after one
// reservation of its size. The details of a question answered Yes are a
// group of their own that keeps with the question's group on paper.
struct Group {
    std::vector<std::string> lines;
    bool details = false;
};
constexpr bool kDetails = true;

std::vector<Group> inputGroups(const InitInputs& in, bool forDisplay)
{
    std::vector<Group> g;
    Group first;
    first.lines = {
        "Taxpayer: " + in.sName.trimmed(),
        "Optional Second Line: " + in.s2ndLine.trimmed(),
        "",
        "Date Due: " + shortDate(in.dtDue),
        // On screen the practitioner's word: the balance is owed to the taxpayer.
        (forDisplay ? "Initially An Overpayment: " : "Initially An Overstatement: ")
            + YesNo(in.bOverpayment),
        "Initial Balance: " + FormatMoney(in.tlStart.cTax),
    };
    for (std::string l : {
             "Use Tax Motivated Interest Rates: " + YesNo(in.bTaxMotivated),
             "Are There Any Penalties: " + YesNo(in.bAnyPenalties),
             "Are There Any Partial Payments: " + YesNo(in.nPmts != 0 ? kYes : kNo),
             "Calculation Start Date: " + shortDate(in.tlStart.dtDate),
             "Calculation Stop Date: " + shortDate(in.tlStop.dtDate),
             std::string(),
             "Calculate Failure To File Penalty: " + YesNo(in.bFtoFile),
         })
        first.lines.push_back(std::move(l));
    g.push_back(std::move(first));
    if (IsYes(in.bFtoFile))
        g.push_back({{"Date Failure To File Assessed: " + shortDate(in.dtFtoFileAssess),
                      "Date Filed: " + shortDate(in.dtFiled)},
                     kDetails});
    g.push_back({{"Calculate Failure To Pay Penalty: " + YesNo(in.bFtoPay)}});
    if (IsYes(in.bFtoPay)) {
        g.push_back({{"Date Failure To Pay Assessed: " + shortDate(in.dtFtoPayAssess),
                      "Unpaid Tax Shown On Return: " + FormatMoney(in.cAmtOnReturn),
                      "Calculate Failure To Pay 6651(d)(1) Penalty: " + YesNo(in.b6651d1)},
                     kDetails});
        if (IsYes(in.b6651d1))
            g.push_back({{"Date of Failure To Pay Switched to 1%: " + shortDate(in.dt6651d1Start)},
                         kDetails});
    }
    g.push_back({{"", "Calculate Other Penalty: " + YesNo(in.bOtherPen),
                  "Calculate Accuracy Related Penalty: " + YesNo(in.bAccRel)}});
    // The rate with every decimal it holds (.125 stays .125), never rounded
    // for show; the window shows it as a plain number.
    if (IsYes(in.bAccRel)) {
        const std::string rate
            = forDisplay ? PlainFloat(in.fAccRelRate) : FormatRateAsHeld(in.fAccRelRate);
        g.push_back({{"Accuracy Related Penalty Underpayment Amount: " + FormatMoney(in.cAccRelAmt),
                      "Accuracy Related Penalty Rate: " + rate},
                     kDetails});
    }
    g.push_back({{"", "Use Corporate Underpayment Rate: " + YesNo(in.bCorpUPRate)}});
    if (IsYes(in.bCorpUPRate))
        g.push_back(
            {{"Start Corporate Underpayment Rate: " + shortDate(in.dtCorpUPRateStart)}, kDetails});
    g.push_back({{"Use Corporate Overpayment Rate: " + YesNo(in.bCorpOPRate)}});
    if (IsYes(in.bCorpOPRate))
        g.push_back(
            {{"Start Corporate Overpayment Rate: " + shortDate(in.dtCorpOPRateStart)}, kDetails});
    g.push_back({{""}});
    if (isSet(in.dtExtended))
        g.push_back({{"Extended Due Date: " + shortDate(in.dtExtended)}});
    g.push_back(
        {{"Number of Days Before Chk Date Refund Interest Stops: " + std::to_string(in.nStopDays),
          ""}});
    if (isSet(in.dtIntSuspend)) {
        g.push_back({{"Date Interest Suspended: " + shortDate(in.dtIntSuspend)}});
        if (isSet(in.dtRestart))
            g.push_back({{"Date Interest Restarted: " + shortDate(in.dtRestart)}});
    }
    return g;
}

// The inputs of the estimated tax penalty, when the case holds any: the
// question, its details kept with it, then one line for each dated amount.
void appendEstTax(std::vector<Group>& g, const EstTaxCase& e)
{
    if (e.isEmpty())
        return;
    const EstTaxInput& in = e.input;
    const bool corporation = in.filer == EstTaxFiler::Corporation;
    Group question{{"Calculate Estimated Tax Penalty: " + YesNo(e.on ? kYes : kNo)}};
    if (!g.empty() && !g.back().lines.empty() && !g.back().lines.back().empty())
        question.lines.insert(question.lines.begin(), "");
    g.push_back(std::move(question));
    Group details{{}, kDetails};
    std::string year = "Tax Year: " + std::to_string(in.taxYear);
    if (corporation && in.fiscalYearEndMonth != 12)
        year += " (ending in month " + std::to_string(in.fiscalYearEndMonth) + ")";
    details.lines = {
        std::string("Filer: ")
            + (corporation ? "Corporation (Form 2220)" : "Individual (Form 2210)"),
        year,
        "Current Year Tax: " + FormatMoney(in.currentTax),
        "Prior Year Tax: " + FormatMoney(in.priorTax),
        "Prior Year May Set The Required Payment: " + YesNo(in.priorYearUsable ? kYes : kNo),
        corporation
            ? "Large Corporation: " + YesNo(in.largeCorporation ? kYes : kNo)
            : "Prior Year AGI Over $150,000 ($75,000 MFS): " + YesNo(in.highIncome ? kYes : kNo),
        "Tax Withheld: " + FormatMoney(in.withholding),
    };
    if (in.installments) {
        std::string typed = "Required Installments:";
        for (const Money m : *in.installments)
            typed += " " + FormatMoney(m);
        details.lines.push_back(std::move(typed));
    }
    details.lines.push_back("Date of Notice and Demand: " + shortDate(e.noticeDate));
    g.push_back(std::move(details));
    const std::pair<const char*, const std::vector<DatedAmount>*> lists[] = {
        {"Withheld On ", &in.withholdingByDate}, {"Estimated Payment On ", &in.estimatedPayments}};
    for (const auto& [label, list] : lists)
        for (const DatedAmount& a : *list)
            g.push_back({{label + shortDate(a.date) + ": " + FormatMoney(a.amount)}});
}

std::string h1(const InitInputs& in)
{
    return in.sName.shown();
}
std::string h2(const InitInputs& in)
{
    return in.s2ndLine.shown();
}

constexpr std::int16_t kListTitleLines = 3;
constexpr std::int16_t kColumnHeadingLines = 4;

// The title of a list, after a reservation of three lines.
void listTitle(PrintManager& pm, const InitInputs& in, std::string_view title)
{
    pm.PrnManager2(kListTitleLines, h1(in), h2(in), kTitle);
    pm.printer().emptyLine();
    pm.printer().printLine(kTextColumn, title);
    pm.printer().emptyLine();
}

void columnHeadings(PrintManager& pm, const InitInputs& in,
                    std::initializer_list<std::string_view> lines)
{
    pm.PrnManager2(kColumnHeadingLines, h1(in), h2(in), kTitle);
    pm.printer().emptyLine();
    for (std::string_view l : lines)
        pm.printer().printLine(kTextColumn, l);
}

// A list in the current font: its title and column headings begin a page
// only with the first row under them, and the headings are repeated on every
// page the rows run on to.
template<typename Rows, typename PrintRow>
void printList(PrintManager& pm, const InitInputs& in, std::string_view title,
               void (*headings)(PrintManager&, const InitInputs&), const Rows& rows,
               PrintRow printRow)
{
    pm.KeepTogether(kListTitleLines + kColumnHeadingLines + 1, h1(in), h2(in), kTitle);
    listTitle(pm, in, title);
    headings(pm, in);
    const RepeatedHeadings repeat(pm, [&] { headings(pm, in); });
    for (const auto& row : rows) {
        pm.PrnManager2(1, h1(in), h2(in), kTitle);
        printRow(row);
    }
}

}  // namespace

void PrnChrgHeadings(PrintManager& pm, const InitInputs& init)
{
    WithFaultName("PrnChrgHeadings", [&] {
        columnHeadings(pm, init,
                       {"                     DATE       DATE",
                        "                      OF      INTEREST      AMOUNT OF",
                        "DESCRIPTION        LIABILITY   STARTS         CHARGE"});
    });
}

void PrnPmtsHeadings(PrintManager& pm, const InitInputs& init)
{
    WithFaultName("PrnPmtsHeadings", [&] {
        columnHeadings(pm, init,
                       {"                   DATE",
                        "                    OF            PAYMENT     APPLIED TO     APPLIED TO   "
                        "  APPLIED TO",
                        "DESCRIPTION       PAYMENT          AMOUNT        TAX          PENALTIES   "
                        "   INTEREST   METHOD"});
    });
}

void PrnDepHeadings(PrintManager& pm, const InitInputs& init)
{
    WithFaultName("PrnDepHeadings", [&] {
        columnHeadings(pm, init,
                       {"      DATE      PENALTY        PAYROLL",
                        "       OF      ASSESSMENT      DEPOSIT",
                        "    LIABILITY    DATE         LIABILITY"});
    });
}

void PrnCharges(PrintManager& pm, const Case& c)
{
    WithFaultName("PrnCharges", [&] {
        Printer& p = pm.printer();
        SavedFont saved;
        SetNewFont(p, kReportFont, 8.0f, saved);
        printList(pm, c.init, "Other Additions To Tax or Penalties:", PrnChrgHeadings,
                  c.otherCharges(), [&](const ChargeRec& ch) {
                      p.printAt(3, ch.sDesc.shown());
                      p.printAt(22, FormatMMDDYYYY(ch.dtLiab));
                      p.printAt(33, FormatMMDDYYYY(ChargeInterestDate(ch)));
                      pm.PrnAmtAt(ch.cTotal, 44);
                      p.endLine();
                  });
        SetOldFont(p, saved);
    });
}

void PrnPmts(PrintManager& pm, const Case& c)
{
    WithFaultName("PrnPmts", [&] {
        Printer& p = pm.printer();
        SavedFont saved;
        SetNewFont(p, kReportFont, 8.0f, saved);
        printList(pm, c.init, "Payments:", PrnPmtsHeadings, c.payments(),
                  [&](const PaymentRec& pmt) {
                      p.printAt(3, pmt.sDesc.shown());
                      p.printAt(20, FormatMMDDYYYY(pmt.dtPmt));
                      pm.PrnAmtAt(pmt.cAmount, 31);
                      pm.PrnAmtAt(pmt.cToTax, 46);
                      pm.PrnAmtAt(pmt.cToPen, 61);
                      pm.PrnAmtAt(pmt.cToInt, 76);
                      p.printAt(94, pmt.sMethod.shown());
                      p.endLine();
                  });
        SetOldFont(p, saved);
    });
}

void PrnDeposits(PrintManager& pm, const Case& c)
{
    WithFaultName("PrnDeposits", [&] {
        Printer& p = pm.printer();
        printList(pm, c.init, "Payroll Deposit Liabilities:", PrnDepHeadings, c.payrollDeposits(),
                  [&](const DepositRec& d) {
                      p.printAt(7, FormatMMDDYYYY(d.dtDepDue));
                      p.printAt(19, FormatMMDDYYYY(d.dtDepAssess));
                      pm.PrnAmtAt(d.cRequired, 31);
                      p.endLine();
                  });
    });
}

void PrintInputs(PrintManager& pm, const Case& c, const ReportProvenance& prov)
{
    WithFaultName("PrintInputs", [&] {
        Printer& p = pm.printer();
        SavedFont saved;
        SetNewFont(p, kReportFont, 12.0f, saved);
        std::vector<Group> groups = inputGroups(c.init, false);
        appendEstTax(groups, c.estTax);
        for (std::size_t i = 0; i < groups.size(); ++i) {
            const Group& grp = groups[i];
            // A question answered Yes keeps with its details.
            std::size_t keep = grp.lines.size();
            for (std::size_t j = i + 1; j < groups.size() && groups[j].details; ++j)
                keep += groups[j].lines.size();
            pm.KeepTogether(static_cast<std::int16_t>(keep), h1(c.init), h2(c.init), kTitle);
            pm.PrnManager2(static_cast<std::int16_t>(grp.lines.size()), h1(c.init), h2(c.init),
                           kTitle);
            for (const std::string& l : grp.lines)
                p.printLine(kTextColumn, l);
        }
        // Where the figures come from closes the inputs, before the lists, as
        // in the inputs window.
        PrintProvenance(pm, c.init, kTitle, ProvenanceLines(prov, c.init));
        if (c.init.nCharges > 0)
            PrnCharges(pm, c);
        if (c.init.nPmts > 0)
            PrnPmts(pm, c);
        if (c.init.nDeposits > 0)
            PrnDeposits(pm, c);
        pm.PrnManager2(kEndReportPage, h1(c.init), h2(c.init), kTitle);
        SetOldFont(p, saved);
    });
}

std::string DispInputs(const Case& c, const ReportProvenance& prov)
{
    return WithFaultName("DispInputs", [&] {
        std::string text;
        std::vector<Group> groups = inputGroups(c.init, true);
        appendEstTax(groups, c.estTax);
        for (const Group& grp : groups)
            for (const std::string& l : grp.lines)
                AppendLine(text, l);
        AppendProvenance(text, ProvenanceLines(prov, c.init));
        return text;
    });
}

GridData SetupChrgGrd(std::size_t rows)
{
    return WithFaultName("SetupChrgGrd", [&] {
        GridData g = MakeGrid("Other Charge Inputs",
                              {"DESC.", "LIABILITY DATE", "INTEREST START DATE", "AMOUNT"},
                              rows + 1, CellAlign::Right);
        g.align[0] = CellAlign::Left;
        return g;
    });
}

GridData SetupDepGrd(std::size_t rows)
{
    return WithFaultName("SetupDepGrd", [&] {
        return MakeGrid("Payroll Deposit Inputs",
                        {"LIABILITY DATE", "PENALTY ASSESSMENT DATE", "AMOUNT"}, rows + 1,
                        CellAlign::Right);
    });
}

GridData SetupPmtGrd(std::size_t rows)
{
    return WithFaultName("SetupPmtGrd", [&] {
        GridData g = MakeGrid("Partial Payment Inputs",
                              {"DESC.", "PAYMENT DATE", "PAYMENT AMOUNT", "APPLIED TO TAX",
                               "APPLIED TO PENALTIES", "APPLIED TO INTEREST", "METHOD"},
                              rows + 1, CellAlign::Right);
        g.align[0] = CellAlign::Left;
        g.align[6] = CellAlign::Left;
        return g;
    });
}

GridData FillChrgGrd(const Case& c)
{
    return WithFaultName("FillChrgGrd", [&] {
        const auto list = c.otherCharges();
        GridData g = SetupChrgGrd(list.size());
        for (std::size_t i = 0; i < list.size(); ++i)
            g.cells[i + 1]
                = {list[i].sDesc.shown(), FormatMMDDYYYY(list[i].dtLiab),
                   FormatMMDDYYYY(ChargeInterestDate(list[i])), FormatMoney(list[i].cTotal)};
        return g;
    });
}

GridData FillDepGrd(const Case& c)
{
    return WithFaultName("FillDepGrd", [&] {
        const auto list = c.payrollDeposits();
        GridData g = SetupDepGrd(list.size());
        for (std::size_t i = 0; i < list.size(); ++i)
            g.cells[i + 1] = {FormatMMDDYYYY(list[i].dtDepDue), FormatMMDDYYYY(list[i].dtDepAssess),
                              FormatMoney(list[i].cRequired)};
        return g;
    });
}

GridData FillPmtGrd(const Case& c)
{
    return WithFaultName("FillPmtGrd", [&] {
        const auto list = c.payments();
        GridData g = SetupPmtGrd(list.size());
        for (std::size_t i = 0; i < list.size(); ++i) {
            const PaymentRec& p = list[i];
            g.cells[i + 1]
                = {p.sDesc.shown(),       FormatMMDDYYYY(p.dtPmt), FormatMoney(p.cAmount),
                   FormatMoney(p.cToTax), FormatMoney(p.cToPen),   FormatMoney(p.cToInt),
                   p.sMethod.shown()};
        }
        return g;
    });
}

GridData InputsGrid(const Case& c, InputGridKind kind)
{
    switch (kind) {
    case InputGridKind::Charges:
        return FillChrgGrd(c);
    case InputGridKind::Deposits:
        return FillDepGrd(c);
    case InputGridKind::Payments:
        break;
    }
    return FillPmtGrd(c);
}

InputsWindowData InputsWindow(const Case& c, const ReportProvenance& prov)
{
    InputsWindowData w;
    w.text = DispInputs(c, prov);
    w.depositsEnabled = c.init.nDeposits >= 1;
    w.chargesEnabled = c.init.nCharges >= 1;
    w.paymentsEnabled = c.init.nPmts >= 1;
    return w;
}

}  // namespace rw
