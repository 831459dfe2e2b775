#pragma once
// Building a release of the rates from its sources. The sources are a folder
// in the layout the rate research is kept in:
//
//     fed.csv             the federal table source (rates as fractions)
//     states/<CODE>.csv   one schedule per state authority (rates in per cent)
//     ftf_minimum.csv     first_year,amount,source: the failure-to-file minimums
//
// The release is the folder the program reads: one ".tbl" per authority, the
// table sources they were built from (rates-src/<table>.csv, each row with
// its published source) and the release file. Its dates come from the
// federal source: the last rows whose source begins "ESTIMATE:" are estimated
// rates, so the release is verified through the last day of the last row not
// so marked and estimated through the last day of the table. Adding next
// quarter's row to fed.csv is therefore the whole update.
//
// The build step of the program and "qratcalc-cli release build" both run
// this code.

#include "ratebuild/ratesource.h"
#include "rates/release.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace rw::ratesrc {

inline constexpr std::string_view kMinimumHeader = "first_year,amount,source";
inline constexpr std::string_view kEstimateMark = "ESTIMATE:";

// "June 30, 2026".
std::string SpelledOutDate(Date d);
// The quarter a date lies in, as the window title shows a release: "2026, 2nd Quarter".
std::string QuarterDescription(Date d);
// The release's name after the quarter it is verified through: "Qrat2026Q2".
std::string ReleaseName(Date verifiedThrough);

// The release's dates and texts from the federal table source's rows (dates
// already checked). A row marked as an estimate followed by one that is not,
// or a table of estimates only, is a problem.
struct ReleaseDates {
    ReleaseInfo info;  // name, description, dates and their texts; no minimums
    std::vector<SourceProblem> problems;
};
ReleaseDates DeriveReleaseDates(const SourceFile& fed);

// Reads ftf_minimum.csv: years strictly increasing, amounts positive with at
// most two decimals, a source on every row.
struct MinimumsRead {
    FtfMinimumSchedule schedule;
    std::vector<SourceProblem> problems;
};
MinimumsRead ParseMinimums(std::string_view text, std::string_view name);

struct ReleaseTable {
    const Authority* authority = nullptr;
    std::string sourceText;  // the table source, as rates-src/ keeps it
    RateTable rows;
};

struct ReleaseBuild {
    std::vector<ReleaseTable> tables;  // one per authority, in list order
    ReleaseInfo info;
    std::vector<SourceProblem> problems;
    bool ok() const { return problems.empty(); }
};

// Reads and checks every source of the folder. Every problem is reported,
// not only the first; a build with problems must not be written. Each table
// is built from its rows cut at every year end (SplitAtYearEnds), so that no
// table row spans two years whatever the source file merged; a state table
// runs from its first to its last sourced row with its "GAP:" rows as holes
// (ConvertSchedule); the federal table must give both rates on every row.
ReleaseBuild BuildRelease(const std::filesystem::path& sourcesDir);

// Writes a checked build into outDir: the tables (each read back and compared
// byte by byte first), their sources, and last the release file, so that a
// folder left half-written by a failure has no release file and is never
// taken for a release. False (with `why`) on failure.
bool WriteRelease(const ReleaseBuild& build, const std::filesystem::path& outDir, std::string* why);

// One line per table: code, file, "first - last", rows.
std::string ReleaseTablesSummary(const ReleaseBuild& build);

}  // namespace rw::ratesrc
