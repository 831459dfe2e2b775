#include "cli/cmd_compute.h"

#include "base/numtext.h"
#include "casejson/casejson.h"
#include "cli/cmd_report.h"
#include "penalties/esttax.h"
#include "reports/summary.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <ostream>

namespace rw::cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr Date kFirstShown = Date::fromCivil(1800, 1, 1);
constexpr Date kLastShown = Date::fromCivil(2200, 12, 31);

Json dateJson(Date d)
{
    if (d >= kFirstShown && d <= kLastShown)
        return FormatMMDDYYYY(d);
    const double n = d.dayNumber();
    if (std::isfinite(n) && n == std::floor(n) && std::fabs(n) < 1e15)
        return static_cast<std::int64_t>(n);
    return n;
}

Json moneyJson(Money m)
{
    return ExactMoney(m);
}

template<std::size_t N>
Json textJson(const FixedText<N>& t)
{
    return Latin1ToUtf8(t.view());  // padding and NULs as stored
}

// A single as the shortest number of at most 9 significant digits that
// reads back as the same single.
Json rateJson(float f)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.9g", static_cast<double>(f));
    return std::strtod(buf, nullptr);
}

Json rowsJson(const CaseComputation& k)
{
    Json rows = Json::array();
    for (const ResultPeriod& r : k.rows)
        rows.push_back(
            Json{{"sDesc", textJson(r.sDesc)},
                 {"dtBegin", dateJson(r.dtBegin)},
                 {"dtEnd", dateJson(r.dtEnd)},
                 {"fRate", rateJson(r.fRate)},
                 {"cTaxPen", moneyJson(r.cTaxPen)},
                 {"cAccruedInt", moneyJson(r.cAccruedInt)},
                 {"nDays", r.nDays},
                 {"dIntFactor", r.dIntFactor},  // shortest text that reads back as the same double
                 {"cInterest", moneyJson(r.cInterest)}});
    return rows;
}

Json timelineJson(const CaseComputation& k)
{
    Json points = Json::array();
    for (const TLPoint& p : k.timeline)
        points.push_back(Json{{"sSortCode", textJson(p.sSortCode)},
                              {"sDesc", textJson(p.sDesc)},
                              {"sCode", textJson(p.sCode)},
                              {"dtDate", dateJson(p.dtDate)},
                              {"cTax", moneyJson(p.cTax)},
                              {"cPen", moneyJson(p.cPen)},
                              {"cInt", moneyJson(p.cInt)}});
    return points;
}

// The summary lines shown, in order, the last one "Total".
Json summaryJson(const CaseComputation& k)
{
    Json lines = Json::array();
    for (const SummaryLine& l : SummaryLines(k.timeline, k.kase.init, k.interest))
        lines.push_back(Json{{"label", Latin1ToUtf8(l.label)}, {"amount", moneyJson(l.amount)}});
    return lines;
}

// The failure-to-file and -pay month rows that carry an amount.
Json ftoRowsJson(const CaseComputation& k)
{
    Json rows = Json::array();
    for (const FtoRow& r : k.ftoRows)
        rows.push_back(Json{{"dtComp", dateJson(r.dtComp)},
                            {"cNetTax", moneyJson(r.cNetTax)},
                            {"fFtpRate", rateJson(r.fFtpRate)},
                            {"cFtp", moneyJson(r.cFtp)},
                            {"cGrossFtf", moneyJson(r.cGrossFtf)},
                            {"cNetFtf", moneyJson(r.cNetFtf)}});
    return rows;
}

// The payroll deposit penalty table, one piece of a deposit per element.
Json payrollTableJson(const CaseComputation& k)
{
    Json rows = Json::array();
    for (const PRPenTblElement& e : k.prTable)
        rows.push_back(Json{{"dtDepDue", dateJson(e.dtDepDue)},
                            {"cBegBal", moneyJson(e.cBegBal)},
                            {"cPaid", moneyJson(e.cPaid)},
                            {"dtPaid", dateJson(e.dtPaid)},
                            {"nDaysLate", e.nDaysLate},
                            {"cEndBal", moneyJson(e.cEndBal)},
                            {"fRate", rateJson(e.fRate)},
                            {"cBase", moneyJson(e.cBase)},
                            {"cPenalty", moneyJson(e.cPenalty)},
                            {"bSevere", e.bSevere}});
    return rows;
}

// The keys of the object, in output order; a further part of the
// computation is one more line here.
struct Section {
    const char* key;
    std::function<Json(const CaseComputation&)> value;
};
const Section kSections[] = {
    {"interest", [](const CaseComputation& k) { return moneyJson(k.interest); }},
    {"summary", summaryJson},
    {"rows", rowsJson},
    {"timeline", timelineJson},
    {"ftoRows", ftoRowsJson},
    {"payrollTable", payrollTableJson},
};

Json datedAmountsJson(const std::vector<DatedAmount>& list)
{
    Json out = Json::array();
    for (const DatedAmount& a : list)
        out.push_back(Json{{"date", dateJson(a.date)}, {"amount", moneyJson(a.amount)}});
    return out;
}

// The estimated tax penalty: the required installments (none when exempt),
// the worksheet's lines, one per amount and rate period, and the total.
Json estTaxJson(const EstTaxResult& r)
{
    Json installments = Json::array();
    if (r.exemption == EstTaxExemption::None)
        for (const EstTaxInstallment& i : r.installments)
            installments.push_back(Json{{"nominalDue", dateJson(i.nominalDue)},
                                        {"actualDue", dateJson(i.actualDue)},
                                        {"required", moneyJson(i.required)},
                                        {"paidOnTime", moneyJson(i.paidOnTime)},
                                        {"overpayment", moneyJson(i.overpayment)},
                                        {"underpayment", moneyJson(i.underpayment)},
                                        {"paidLate", datedAmountsJson(i.paidLate)}});
    Json periods = Json::array();
    for (const EstTaxLine& l : r.lines)
        periods.push_back(Json{{"installment", l.installment + 1},
                               {"from", dateJson(l.from)},
                               {"to", dateJson(l.to)},
                               {"days", l.days},
                               {"rate", rateJson(l.rate)},
                               {"yearDays", l.yearDays},
                               {"base", moneyJson(l.base)},
                               {"penalty", moneyJson(l.penalty)}});
    return Json{
        {"exemption", r.exemption == EstTaxExemption::SmallTax ? "smallTax" : "none"},
        {"requiredAnnualPayment", moneyJson(r.requiredAnnualPayment)},
        {"returnDue", dateJson(r.returnDue)},
        {"installments", std::move(installments)},
        {"periods", std::move(periods)},
        {"total", moneyJson(r.total)},
    };
}

// Reads an authority's rate table file, telling a failure on env.err after
// prefix.
int loadTable(CliEnv& env, const std::string& prefix, const Authority& auth, RateTable& rates)
{
    const std::filesystem::path table = env.paths.table(auth.file);
    RateTableReadResult r = ReadRateTableFile(table);
    switch (r.status) {
    case RateTableReadResult::Status::Ok:
        rates = std::move(r.rows);
        return kExitOk;
    case RateTableReadResult::Status::NotFound:
        env.err << prefix << "the rate table of " << auth.name << ", " << table.string()
                << ", does not exist\n";
        break;
    case RateTableReadResult::Status::BadMarker:
        env.err << prefix << table.string()
                << " is not a rate table (it does not begin with NOTVB3)\n";
        break;
    case RateTableReadResult::Status::Damaged:
        env.err << prefix << "the rate table " << table.string() << " is damaged: " << r.detail
                << "\n";
        break;
    }
    return kExitBadInput;
}

}  // namespace

int LoadCaseAndTable(CliEnv& env, std::string_view command, const std::string& path, Case& c,
                     RateTable& rates)
{
    const std::string prefix = "qratcalc-cli " + std::string(command) + ": ";
    std::string error;
    if (!LoadCaseFile(path, c, error)) {
        env.err << prefix << error << "\n";
        return kExitBadInput;
    }
    return loadTable(env, prefix, AuthorityForCode(c.init.sTaxAuth.view()), rates);
}

nlohmann::ordered_json ComputationJson(const CaseComputation& k)
{
    Json j = Json::object();
    for (const Section& s : kSections)
        j[s.key] = s.value(k);
    return j;
}

// compute --json CASE: the whole computation as one JSON object, and
// "estimatedTax" when the case asks for the estimated tax penalty.
int CmdCompute(CliEnv& env)
{
    const bool json = TakeSwitch(env.args, "--json");
    if (!json || env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << "qratcalc-cli compute: usage: compute --json CASE\n";
        return kExitBadInput;
    }
    Case c;
    RateTable rates;
    if (int status = LoadCaseAndTable(env, "compute", env.args[0], c, rates); status != kExitOk)
        return status;
    try {
        const CaseComputation k = ComputeCase(c, rates, env.release.info.ftfMinimums);
        Json j = ComputationJson(k);
        if (k.estTax)
            j["estimatedTax"] = estTaxJson(*k.estTax);
        env.out << j.dump(2) << "\n";
    } catch (const Refusal& r) {
        WriteRefusal(env, r);
        return kExitBadInput;
    } catch (const Fault& f) {
        WriteFault(env, f);
        return kExitBadInput;
    }
    return kExitOk;
}

}  // namespace rw::cli
