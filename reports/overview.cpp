#include "reports/overview.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "engine/timeline.h"
#include "penalties/esttax.h"
#include "rates/ratetable.h"
#include "reports/provenance.h"
#include "reports/summary.h"

#include <cctype>

namespace rw {

namespace {

using Target = OverviewTarget;

std::string date(Date d)
{
    return d.isGiven() ? FormatShortDate(d) : std::string();
}

std::string listDate(Date d)
{
    return d.isGiven() ? FormatMMDDYYYY(d) : std::string();
}

template<std::size_t N>
std::string text(const FixedText<N>& t)
{
    return std::string(TrimBlanks(t.shown()));
}

// A rate as a percentage with at most two decimals: 0.2 -> "20%", 0.225 -> "22.5%".
std::string percent(float rate)
{
    std::string s = FormatFixed(static_cast<double>(rate) * 100.0, 2);
    while (s.back() == '0')
        s.pop_back();
    if (s.back() == '.')
        s.pop_back();
    return s + "%";
}

// "1 payment", "3 payments".
std::string counted(std::size_t n, std::string_view one)
{
    return std::to_string(n) + " " + std::string(one) + (n == 1 ? "" : "s");
}

std::string countLine(std::size_t n, std::string_view one, Money sum, std::string_view sumWord)
{
    if (n == 0)
        return "None";
    return counted(n, one) + ", " + FormatMoney(sum) + (n == 1 ? "" : std::string(sumWord));
}

OverviewLine line(std::string label, std::string text, std::string amount = {},
                  Target opens = Target::None)
{
    return OverviewLine{std::move(label), std::move(text), std::move(amount), opens};
}

// "Filed 10/20/2015, assessed 11/16/2015"; parts without a date left out.
std::string dated(std::initializer_list<std::pair<std::string_view, Date>> parts)
{
    std::string s;
    for (const auto& [word, d] : parts) {
        if (!d.isGiven())
            continue;
        if (s.empty())
            s = static_cast<char>(std::toupper(static_cast<unsigned char>(word[0])))
                + std::string(word.substr(1));
        else
            s += ", " + std::string(word);
        s += " " + FormatShortDate(d);
    }
    return s.empty() ? "On" : s;
}

std::vector<OverviewLine> caseLines(const InitInputs& in)
{
    std::vector<OverviewLine> l = {
        line("Taxpayer", text(in.sName)),
        line("Second line", text(in.s2ndLine)),
        line("Rate table", std::string(AuthorityForCode(in.sTaxAuth.view()).name)),
        line("Due date", date(in.dtDue)),
        line("Start date", date(in.tlStart.dtDate)),
        line("Stop date", date(in.tlStop.dtDate)),
        line("Initial balance", {}, FormatMoney(in.tlStart.cTax)),
    };
    if (IsYes(in.bOverpayment))
        l.push_back(line("Overpayment", in.nStopDays > 0 ? "Refund interest stops "
                                                               + std::to_string(in.nStopDays)
                                                               + " days before the check date"
                                                         : "Yes"));
    for (OverviewLine& line : l)
        line.opens = Target::InitialInputs;
    return l;
}

// "Individual, tax year 2005; notice and demand 5/1/2006".
std::string estTaxText(const Case& c)
{
    const EstTaxInput& in = c.estTax.input;
    std::string t = in.filer == EstTaxFiler::Corporation ? "Corporation" : "Individual";
    // A fiscal year is named by its first day, in the year it begins.
    if (in.taxYear != 0)
        t += in.filer == EstTaxFiler::Corporation && in.fiscalYearEndMonth != 12
                 ? ", tax year from " + date(EstTaxYearBegins(in))
                 : ", tax year " + std::to_string(in.taxYear);
    return t
           + (c.estTax.noticeDate.isGiven()
                  ? "; notice and demand " + date(c.estTax.noticeDate)
                  : std::string("; no notice and demand, so no interest on it"));
}

// The penalties and options that are on, each with what it rests on; the
// names of those that are not, in `unused`.
std::vector<OverviewLine> settings(const Case& c, std::string& unused)
{
    const InitInputs& in = c.init;
    std::vector<OverviewLine> l;
    std::vector<std::string_view> off;
    const auto add = [&](bool on, std::string_view label, std::string_view offName,
                         std::string text, Target opens, std::string amount = {}) {
        if (on)
            l.push_back(line(std::string(label), std::move(text), std::move(amount), opens));
        else if (!offName.empty())
            off.push_back(offName);
    };
    add(IsYes(in.bFtoFile), "Failure to file", "failure to file",
        dated({{"filed", in.dtFiled}, {"assessed", in.dtFtoFileAssess}}), Target::FailureToFile);
    add(IsYes(in.bFtoPay), "Failure to pay", "failure to pay",
        in.dtFtoPayAssess.isGiven()
            ? dated({{"assessed", in.dtFtoPayAssess}}) + "; tax on the return"
            : std::string("Tax on the return"),
        Target::FailureToPay, FormatMoney(in.cAmtOnReturn));
    // The 1% rate is a part of failure to pay: not named without it.
    add(IsYes(in.b6651d1), "Failure to pay at 1% (6651(d)(1))",
        IsYes(in.bFtoPay) ? "failure to pay at 1%" : "", dated({{"from", in.dt6651d1Start}}),
        Target::FailureToPay);
    add(IsYes(in.bAccRel), "Accuracy-related penalty", "accuracy-related penalty",
        percent(in.fAccRelRate) + " of the underpayment", Target::AccuracyRelated,
        FormatMoney(in.cAccRelAmt));
    const std::size_t deposits = c.payrollDeposits().size();
    add(deposits > 0, "Payroll deposit penalties", "payroll deposit penalties",
        counted(deposits, "deposit"), Target::Payroll);
    add(c.estTax.on, "Estimated tax penalty", "estimated tax penalty", estTaxText(c),
        Target::EstimatedTax);
    // Penalties only older case files hold; no dialog changes them.
    const std::pair<Flag, std::string_view> older[] = {
        {in.bNegFlat, "5% negligence penalty"}, {in.bNegTime, "Time-dependent negligence penalty"},
        {in.bOVal, "Overvaluation penalty"},    {in.bSUP, "Substantial understatement penalty"},
        {in.bFraudFlat, "Fraud penalty"},       {in.bFraudTime, "Time-dependent fraud penalty"},
    };
    for (const auto& [flag, label] : older)
        add(IsYes(flag), label, "", "On", Target::None);
    add(IsYes(in.bTaxMotivated), "Tax-motivated rates", "tax-motivated rates", "On",
        Target::InterestRates);
    add(IsYes(in.bCorpUPRate), "Corporate underpayment rate", "corporate underpayment rate",
        dated({{"from", in.dtCorpUPRateStart}}), Target::InterestRates);
    add(IsYes(in.bCorpOPRate), "Corporate overpayment rate", "corporate overpayment rate",
        dated({{"from", in.dtCorpOPRateStart}}), Target::InterestRates);
    add(in.dtIntSuspend.isGiven(), "Interest suspended", "suspension of interest",
        in.dtRestart.isGiven() ? date(in.dtIntSuspend) + " to " + date(in.dtRestart)
                               : "From " + date(in.dtIntSuspend) + ", not restarted",
        Target::Suspension);
    // The due date stands for the extended one until another is given.
    add(in.dtExtended.isGiven() && in.dtExtended != in.dtDue, "Extended due date",
        "extended due date", date(in.dtExtended), Target::ExtendedDueDate);
    unused.clear();
    for (std::string_view name : off)
        unused += (unused.empty() ? "Not used: " : ", ") + std::string(name);
    if (!unused.empty())
        unused += ".";
    return l;
}

OverviewList list(std::string title, std::vector<std::string> headings,
                  std::vector<bool> amountColumns, Target opens)
{
    OverviewList l;
    l.title = std::move(title);
    l.headings = std::move(headings);
    l.amountColumns = std::move(amountColumns);
    l.opens = opens;
    return l;
}

OverviewList paymentList(const Case& c)
{
    OverviewList l = list(
        "Payments",
        {"Date", "Description", "Amount", "To tax", "To penalties", "To interest", "Allocation"},
        {false, false, true, true, true, true, false}, Target::Payments);
    Money sum;
    for (const PaymentRec& p : c.payments()) {
        sum += p.cAmount;
        l.rows.push_back({listDate(p.dtPmt), text(p.sDesc), FormatMoney(p.cAmount),
                          FormatMoney(p.cToTax), FormatMoney(p.cToPen), FormatMoney(p.cToInt),
                          p.sMethod.is("I") ? "IRS method" : "As entered"});
    }
    l.count = countLine(l.rows.size(), "payment", sum, " in all");
    return l;
}

OverviewList chargeList(const Case& c)
{
    OverviewList l = list("Other charges", {"Date", "Description", "Interest from", "Amount"},
                          {false, false, false, true}, Target::OtherCharges);
    Money sum;
    for (const ChargeRec& ch : c.otherCharges()) {
        sum += ch.cTotal;
        l.rows.push_back({listDate(ch.dtLiab), text(ch.sDesc), listDate(ChargeInterestDate(ch)),
                          FormatMoney(ch.cTotal)});
    }
    l.count = countLine(l.rows.size(), "charge", sum, " in all");
    return l;
}

OverviewList depositList(const Case& c)
{
    OverviewList l = list("Payroll deposits", {"Liability date", "Assessment date", "Amount"},
                          {false, false, true}, Target::Payroll);
    Money sum;
    for (const DepositRec& d : c.payrollDeposits()) {
        sum += d.cRequired;
        l.rows.push_back({listDate(d.dtDepDue), listDate(d.dtDepAssess), FormatMoney(d.cRequired)});
    }
    l.count = countLine(l.rows.size(), "deposit", sum, " in all");
    l.hidden = l.rows.empty() && !IsYes(c.init.bPayroll);
    return l;
}

// "Interest Cannot Be Computed" and its text's first sentence, as one line:
// "Interest cannot be computed: the Federal rate table ends on ...".
std::string refusalLine(const Refusal& r)
{
    std::string title = r.title();
    for (std::size_t i = 1; i < title.size(); ++i)
        title[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(title[i])));
    std::string reason(r.text());
    if (const std::size_t end = reason.find(". "); end != std::string::npos)
        reason.resize(end + 1);
    if (reason.size() > 1 && std::isupper(static_cast<unsigned char>(reason[0]))
        && std::islower(static_cast<unsigned char>(reason[1])))
        reason[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(reason[0])));
    return title + ": " + reason;
}

// Why the case cannot be computed before computing it: its dates.
std::optional<std::string> missingDates(const InitInputs& in)
{
    const bool start = in.tlStart.dtDate.isGiven();
    const bool stop = in.tlStop.dtDate.isGiven();
    if (!start || !stop)
        return "No figures yet: the case needs its "
               + std::string(!start && !stop ? "start and stop dates"
                             : !start        ? "start date"
                                             : "stop date")
               + " (Inputs - Initial Inputs).";
    if (in.tlStop.dtDate < in.tlStart.dtDate)
        return "No figures: the stop date " + date(in.tlStop.dtDate) + " is before the start date "
               + date(in.tlStart.dtDate) + ".";
    return std::nullopt;
}

void addFigures(CaseOverview& o, const Case& c, const ReportSources& sources)
{
    if (o.empty) {
        o.notes.push_back("A new case. Enter the taxpayer, the dates and the balance in Inputs - "
                          "Initial Inputs; what is owed then shows here.");
        return;
    }
    if (const std::optional<std::string> why = missingDates(c.init)) {
        o.notes.push_back(*why);
        return;
    }
    std::optional<CaseComputation> comp;
    try {
        if (!sources.compute)
            ThrowFault(kErrInvalidCall, "CaseOverview", "no computation for the overview");
        comp = sources.compute(c);
    } catch (const Refusal& r) {
        o.notes.push_back(refusalLine(r));
        return;
    } catch (const Fault& f) {
        // Told in full by the error reporter when a report asks for it.
        o.notes.push_back("The figures could not be computed: " + ErrorDescription(f.number())
                          + " in " + f.procedure() + ".");
        return;
    }
    const InitInputs& in = comp->kase.init;
    o.payments = paymentList(comp->kase);
    o.figuresTitle = "Owed at " + date(in.tlStop.dtDate);
    for (const SummaryLine& s : SummaryLines(comp->timeline, in, comp->interest)) {
        o.figures.push_back(line(s.label, {}, FormatMoney(s.amount)));
        o.total = s.amount;  // the last line is the total
    }
    if (IsYes(in.bOverpayment) && in.nStopDays > 0)
        o.notes.push_back("Interest on the refund stops " + std::to_string(in.nStopDays)
                          + " days before the check date, " + date(c.init.tlStop.dtDate) + ".");
    if (const std::optional<DateSpan> est = EstimatedSpan(sources.provenance, in))
        o.notes.push_back("Estimated rates from " + date(est->from) + " to " + date(est->thru)
                          + ": no rate had been announced for them yet.");
    if (*o.total < Money())
        o.notes.push_back("A negative total is owed to the taxpayer.");
}

}  // namespace

bool IsEmptyCase(const Case& c)
{
    const InitInputs& in = c.init;
    return text(in.sName).empty() && text(in.s2ndLine).empty() && !in.dtDue.isGiven()
           && !in.tlStart.dtDate.isGiven() && !in.tlStop.dtDate.isGiven()
           && in.tlStart.cTax.isZero() && in.nPmts == 0 && in.nCharges == 0 && in.nDeposits == 0;
}

CaseOverview MakeCaseOverview(const Case& c, const ReportSources& sources)
{
    return WithFaultName("CaseOverview", [&] {
        CaseOverview o;
        o.empty = IsEmptyCase(c);
        o.caseLines = caseLines(c.init);
        o.settings = settings(c, o.unused);
        o.payments = paymentList(c);
        o.charges = chargeList(c);
        o.deposits = depositList(c);
        addFigures(o, c, sources);
        return o;
    });
}

}  // namespace rw
