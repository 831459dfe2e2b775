#include "cli/cli.h"

#include "base/numtext.h"
#include "ratebuild/ratesource.h"
#include "rates/ratetable.h"

#include <cstdio>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rw::cli {

namespace {

// Nine significant digits tell every single-precision rate apart, so the
// listing shows exactly what the table holds (0.075 reads 0.075000003). A
// rate the authority did not publish is held as a NaN.
std::string rateText(float f)
{
    if (ratesrc::IsRateNotPublished(f))
        return "not published";
    char b[32];
    std::snprintf(b, sizeof b, "%.9g", static_cast<double>(f));
    return b;
}

// The table sources are delivered beside the tables, in rates-src/.
std::filesystem::path sourcePath(const Paths& paths, const Authority& a)
{
    return paths.tableSources() / ratesrc::SourceFileName(a.file);
}

// A source rate as the table should hold it: an empty text is a rate that
// was not published.
bool sameRate(const std::string& sourceText, float tableRate)
{
    if (sourceText.empty())
        return ratesrc::IsRateNotPublished(tableRate);
    return ratesrc::ParseRateText(sourceText) == tableRate;
}

using Holes = std::vector<std::pair<const Authority*, std::vector<std::string>>>;

std::string joinedPeriods(const std::vector<std::string>& periods)
{
    std::string text;
    for (const std::string& p : periods)
        text += (text.empty() ? "" : ", ") + p;
    return text;
}

// After a blank line and the heading, one line per table with holes: the
// code and the periods.
void printHoles(CliEnv& env, std::string_view heading, const Holes& holes)
{
    if (holes.empty())
        return;
    env.out << "\n" << heading << "\n";
    for (const auto& [a, periods] : holes)
        env.out << LeftAlign(a->code, 6) << joinedPeriods(periods) << "\n";
}

// tables: every authority in list order with its table's coverage, then the
// holes of the tables: the periods without a published underpayment rate,
// and those without a published refund rate.
int listTables(CliEnv& env)
{
    bool allPresent = true;
    Holes noUnderpayment;
    Holes unpublished;
    env.out << LeftAlign("Code", 6) << LeftAlign("Authority", 34) << LeftAlign("Table", 14)
            << LeftAlign("Present", 9) << LeftAlign("First", 12) << LeftAlign("Last", 12)
            << RightAlign("Rows", 5) << "\n";
    for (const Authority& a : Authorities()) {
        const RateTableReadResult r = ReadRateTableFile(env.paths.table(a.file));
        const bool present = r.status != RateTableReadResult::Status::NotFound;
        env.out << LeftAlign(a.code, 6) << LeftAlign(a.name, 34) << LeftAlign(a.file, 14)
                << LeftAlign(present ? "yes" : "no", 9);
        if (r.status == RateTableReadResult::Status::Ok) {
            env.out << LeftAlign(FormatMMDDYYYY(r.rows.front().dtFrom), 12)
                    << LeftAlign(FormatMMDDYYYY(r.rows.back().dtThru), 12)
                    << RightAlign(std::to_string(r.rows.size()), 5) << "\n";
            if (auto periods = ratesrc::UnpublishedUnderpaymentPeriods(r.rows); !periods.empty())
                noUnderpayment.emplace_back(&a, std::move(periods));
            if (auto periods = ratesrc::UnpublishedRefundPeriods(r.rows); !periods.empty())
                unpublished.emplace_back(&a, std::move(periods));
        } else if (present)
            env.out << "unreadable\n";
        else
            env.out << LeftAlign("-", 12) << LeftAlign("-", 12) << RightAlign("-", 5) << "\n";
        if (r.status != RateTableReadResult::Status::Ok) {
            allPresent = false;
            if (present)
                env.err << "qratcalc-cli tables: " << env.paths.table(a.file).string() << " "
                        << RateTableProblem(r) << "\n";
        }
    }
    printHoles(
        env,
        "Underpayment rate not published (no published rate); interest in these periods cannot be "
        "computed:",
        noUnderpayment);
    printHoles(env,
               "Refund (overpayment) rate not published; an overpayment in these periods cannot be "
               "computed:",
               unpublished);
    return allPresent ? kExitOk : kExitProblem;
}

// tables CODE: the rows of one authority's table with their published sources.
int showTable(CliEnv& env, const Authority& a)
{
    const std::filesystem::path tablePath = env.paths.table(a.file);
    const RateTableReadResult r = ReadRateTableFile(tablePath);
    if (r.status != RateTableReadResult::Status::Ok) {
        env.err << "qratcalc-cli tables: " << tablePath.string() << " " << RateTableProblem(r)
                << "\n";
        return kExitProblem;
    }

    // Source rows by period; the table and its source have the same periods.
    const std::filesystem::path srcPath = sourcePath(env.paths, a);
    const ratesrc::SourceFile src = ratesrc::ReadSourceFile(srcPath, ratesrc::kTableHeader);
    if (!src.problems.empty())
        env.err << "qratcalc-cli tables: the sources of " << a.file
                << " cannot be shown: " << src.problems.front().text() << "\n";
    std::map<std::pair<std::string, std::string>, const ratesrc::SourceRow*> byPeriod;
    for (const ratesrc::SourceRow& s : src.rows)
        byPeriod[{s.from, s.thru}] = &s;

    env.out << a.name << " (" << TrimBlanks(a.code) << ", " << a.file << "): " << r.rows.size()
            << (r.rows.size() == 1 ? " row" : " rows") << " from "
            << FormatMMDDYYYY(r.rows.front().dtFrom) << " to "
            << FormatMMDDYYYY(r.rows.back().dtThru) << "\n";
    env.out << LeftAlign("From", 12) << LeftAlign("Thru", 12) << LeftAlign("Underpayment", 14)
            << LeftAlign("Overpayment", 14) << LeftAlign("Method", 16) << "Source\n";
    for (const RateRow& row : r.rows) {
        const std::string from = FormatMMDDYYYY(row.dtFrom);
        const std::string thru = FormatMMDDYYYY(row.dtThru);
        std::string method(1, row.sCalcMethod);
        std::string source;
        const auto it = byPeriod.find({from, thru});
        if (it == byPeriod.end()) {
            source = "(no source row for this period)";
        } else {
            const ratesrc::SourceRow& s = *it->second;
            if (s.method != method)
                method += " (" + s.method + ")";
            source = s.source;
            if (!sameRate(s.underpayment, row.fUPRate) || !sameRate(s.overpayment, row.fOPRate))
                source += " (the source row gives "
                          + (s.underpayment.empty() ? "not published" : s.underpayment) + " / "
                          + (s.overpayment.empty() ? "not published" : s.overpayment)
                          + ": the table is out of date)";
        }
        env.out << LeftAlign(from, 12) << LeftAlign(thru, 12)
                << LeftAlign(rateText(row.fUPRate), 14) << LeftAlign(rateText(row.fOPRate), 14)
                << LeftAlign(method, 16) << source << "\n";
    }
    const std::string noUnderpayment
        = joinedPeriods(ratesrc::UnpublishedUnderpaymentPeriods(r.rows));
    if (!noUnderpayment.empty())
        env.out << "Underpayment rate not published for " << noUnderpayment
                << " (no published rate): interest in these periods cannot be computed.\n";
    const std::string unpublished = joinedPeriods(ratesrc::UnpublishedRefundPeriods(r.rows));
    if (!unpublished.empty())
        env.out << "Refund (overpayment) rate not published for " << unpublished
                << ": an overpayment in these periods cannot be computed.\n";
    return kExitOk;
}

}  // namespace

// tables [CODE]: lists the authorities' rate tables, or one table's rows.
// CODE is an authority code with or without its trailing blanks ("PA" or
// "PA  ").
int CmdTables(CliEnv& env)
{
    if (env.args.size() > 1 || (!env.args.empty() && env.args[0].starts_with("-"))) {
        env.err << "qratcalc-cli tables: usage: tables [CODE]\n";
        return kExitBadInput;
    }
    if (env.args.empty())
        return listTables(env);

    const std::string_view wanted = TrimBlanks(env.args[0]);
    for (const Authority& a : Authorities())
        if (!wanted.empty() && TrimBlanks(a.code) == wanted)
            return showTable(env, a);

    std::string codes;
    for (const Authority& a : Authorities())
        codes += (codes.empty() ? "" : ", ") + std::string(TrimBlanks(a.code));
    env.err << "qratcalc-cli tables: unknown authority code '" << env.args[0] << "' (the codes are "
            << codes << ")\n";
    return kExitBadInput;
}

}  // namespace rw::cli
