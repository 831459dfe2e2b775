#include "cli/cmd_report.h"

#include "base/binio.h"
#include "base/numtext.h"
#include "cli/cmd_compute.h"
#include "reports/csvexport.h"
#include "reports/grid.h"
#include "reports/printmaster.h"
#include "reports/standardsources.h"

#include <nlohmann/json.hpp>

#include <ctime>
#include <filesystem>
#include <ostream>

namespace rw::cli {

namespace {

struct ReportName {
    std::string_view name;
    std::int32_t value;
};
constexpr ReportName kReportNames[] = {
    {"inputs", kRptInputs},    {"summary", kRptSummary}, {"detail", kRptDetail},
    {"ftfp", kRptFailFilePay}, {"accrel", kRptAccRel},   {"payroll", kRptPayroll},
    {"esttax", kRptEstTax},
};

// A window text on the terminal: CR LF becomes a newline, Latin-1 becomes UTF-8.
std::string terminalText(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        out += text[i];
    }
    return Latin1ToUtf8(out);
}

void writeGrid(std::ostream& os, const GridData& g)
{
    os << Latin1ToUtf8(GridAsText(g));
}

// The computer's local calendar date.
Date today()
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return Date::fromCivil(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday);
}

// report --csv DIR: the CSV file of every chosen report the case has, in
// DIR (made when missing), each path on its own line of the output.
int writeCsvFiles(CliEnv& env, const std::string& folder, const std::string& caseFile,
                  const std::vector<CsvTable>& tables)
{
    std::error_code ec;
    std::filesystem::create_directories(folder, ec);
    const std::string caseName = CsvCaseName(caseFile);
    for (const CsvTable& t : tables) {
        const std::string path
            = (std::filesystem::path(folder) / CsvFileName(caseName, t.report)).string();
        const std::string bytes = CsvFileBytes(t);
        try {
            WriteFileAtomically(path, std::vector<char>(bytes.begin(), bytes.end()),
                                "ExportReports");
        } catch (const Fault& f) {
            return TellNotWritten(env, "report", path, f);
        }
        env.out << path << "\n";
    }
    return kExitOk;
}

}  // namespace

std::optional<ReportProvenance> TakeProvenance(CliEnv& env, std::string_view command)
{
    bool missing = false;
    const std::optional<std::string> prepared = TakeOption(env.args, "--prepared", "", &missing);
    std::optional<Date> day = today();
    if (prepared)
        day = ParseUserDate(*prepared);
    if (missing || !day || !IsReadableDate(*day)) {
        env.err << "qratcalc-cli " << command << ": --prepared needs a date MM/DD/YYYY\n";
        return std::nullopt;
    }
    return ProvenanceOf(env.release.info, *day);
}

std::optional<std::int32_t> ParseReportList(std::string_view list, std::string& error)
{
    std::int32_t mask = 0;
    std::size_t pos = 0;
    while (pos <= list.size()) {
        std::size_t comma = list.find(',', pos);
        if (comma == std::string_view::npos)
            comma = list.size();
        const std::string_view name = list.substr(pos, comma - pos);
        bool known = false;
        if (name == "all") {
            for (const ReportName& r : kReportNames)
                mask |= r.value;
            known = true;
        }
        for (const ReportName& r : kReportNames) {
            if (name == r.name) {
                mask |= r.value;
                known = true;
            }
        }
        if (!known) {
            error = "unknown report '" + std::string(name)
                    + "' (use inputs, summary, detail, ftfp, accrel, payroll, esttax or all)";
            return std::nullopt;
        }
        pos = comma + 1;
    }
    return mask;
}

void StreamMessages::show(std::string_view title, std::string_view text, MsgIcon)
{
    os_ << Latin1ToUtf8(title) << ": " << Latin1ToUtf8(text) << "\n";
}

bool StreamMessages::ask(std::string_view title, std::string_view text, MsgIcon icon)
{
    show(title, text, icon);
    return true;
}

void WriteFault(CliEnv& env, const Fault& f)
{
    nlohmann::json j;
    j["fault"] = {{"procedure", Latin1ToUtf8(f.procedure())},
                  {"number", f.number()},
                  {"detail", Latin1ToUtf8(f.detail())}};
    env.out << j.dump() << "\n";
}

void WriteRefusal(CliEnv& env, const Refusal& r)
{
    nlohmann::json j;
    j["refused"]
        = {{"title", Latin1ToUtf8(r.title())}, {"message", Latin1ToUtf8(std::string(r.text()))}};
    env.out << j.dump() << "\n";
    env.err << Latin1ToUtf8(std::string(r.text())) << "\n";
}

// report --reports LIST CASE: the texts of the report windows in the order
// the report display command opens them. Text windows print their text; grid
// windows print their grid with columns aligned (one blank between columns)
// and, after an empty line, the note under it;
// the inputs window prints its text and then the grid of every list it can
// open. Each window begins with a line "=== caption ===".
// report --csv DIR CASE: instead, the CSV files of the chosen reports
// (reports/csvexport.h; the inputs give the lists), written into DIR and
// named on the output.
// --prepared MM/DD/YYYY: the day the reports name as prepared (today).
int CmdReport(CliEnv& env)
{
    bool missing = false;
    const std::optional<std::string> list = TakeOption(env.args, "--reports", "-r", &missing);
    const std::optional<std::string> csv = TakeOption(env.args, "--csv", "", &missing);
    const std::optional<ReportProvenance> provenance = TakeProvenance(env, "report");
    if (!provenance)
        return kExitBadInput;
    if (missing || env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << "qratcalc-cli report: usage: report [--reports LIST] [--csv DIR] "
                   "[--prepared MM/DD/YYYY] CASE\n";
        return kExitBadInput;
    }
    std::string error;
    const std::optional<std::int32_t> choice = ParseReportList(list ? *list : "all", error);
    if (!choice) {
        env.err << "qratcalc-cli report: " << error << "\n";
        return kExitBadInput;
    }
    Case c;
    RateTable rates;
    if (int status = LoadCaseAndTable(env, "report", env.args[0], c, rates); status != kExitOk)
        return status;
    std::vector<ReportWindow> windows;
    std::vector<CsvTable> tables;
    try {
        const ReportSources sources
            = StandardReportSources(rates, env.release.info.ftfMinimums, *provenance);
        if (csv)
            tables = CsvTables(*choice, c, sources);
        else
            windows = ReportWindows(*choice, c, sources);
    } catch (const Refusal& r) {
        WriteRefusal(env, r);
        return kExitBadInput;
    } catch (const Fault& f) {
        WriteFault(env, f);
        return kExitBadInput;
    }
    if (csv)
        return writeCsvFiles(env, *csv, env.args[0], tables);
    bool first = true;
    for (const ReportWindow& w : windows) {
        if (!first)
            env.out << "\n";
        first = false;
        env.out << "=== " << Latin1ToUtf8(w.caption) << " ===\n";
        if (w.grid) {
            writeGrid(env.out, *w.grid);
            // The note under the grid: provenance, estimate mark, minimum.
            if (!w.text.empty())
                env.out << "\n" << terminalText(w.text);
        } else {
            env.out << terminalText(w.text);
        }
        if (w.inputs) {
            const std::pair<bool, InputGridKind> lists[] = {
                {w.inputs->depositsEnabled, InputGridKind::Deposits},
                {w.inputs->chargesEnabled, InputGridKind::Charges},
                {w.inputs->paymentsEnabled, InputGridKind::Payments},
            };
            for (const auto& [enabled, kind] : lists) {
                if (!enabled)
                    continue;
                const GridData g = InputsGrid(c, kind);
                env.out << "\n--- " << Latin1ToUtf8(g.caption) << " ---\n";
                writeGrid(env.out, g);
            }
        }
    }
    return kExitOk;
}

}  // namespace rw::cli
