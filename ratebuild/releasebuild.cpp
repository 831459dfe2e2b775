#include "ratebuild/releasebuild.h"

#include "base/numtext.h"
#include "ratebuild/outfile.h"
#include "rates/ratetable.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace rw::ratesrc {

namespace fs = std::filesystem;

namespace {

constexpr std::array<std::string_view, 12> kMonthNames
    = {"January", "February", "March",     "April",   "May",      "June",
       "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 4> kOrdinals = {"1st", "2nd", "3rd", "4th"};

int quarterOf(Date d)
{
    return (d.civil().month - 1) / 3 + 1;
}

constexpr std::string_view kReleaseComment
    = "A release of the interest rates, written by the release build. The program uses\n"
      "it only when every table matches its table line (rows, first and last date,\n"
      "checksum) and this file matches its last line: edit the sources and build again.";

bool isEstimate(const SourceRow& row)
{
    return std::string_view(row.source).starts_with(kEstimateMark);
}

void addProblem(std::vector<SourceProblem>& problems, std::string_view file, int line,
                std::string what)
{
    problems.push_back(SourceProblem{std::string(file), line, std::move(what)});
}

}  // namespace

std::string SpelledOutDate(Date d)
{
    const auto c = d.civil();
    return std::string(kMonthNames[static_cast<std::size_t>(c.month - 1)]) + " "
           + std::to_string(c.day) + ", " + std::to_string(c.year);
}

std::string QuarterDescription(Date d)
{
    return std::to_string(d.year()) + ", "
           + std::string(kOrdinals[static_cast<std::size_t>(quarterOf(d) - 1)]) + " Quarter";
}

std::string ReleaseName(Date verifiedThrough)
{
    return "Qrat" + std::to_string(verifiedThrough.year()) + "Q"
           + std::to_string(quarterOf(verifiedThrough));
}

ReleaseDates DeriveReleaseDates(const SourceFile& fed)
{
    ReleaseDates out;
    const SourceRow* lastVerified = nullptr;
    const SourceRow* firstEstimate = nullptr;
    for (const SourceRow& row : fed.rows) {
        if (isEstimate(row)) {
            if (!firstEstimate)
                firstEstimate = &row;
            continue;
        }
        if (firstEstimate)
            addProblem(out.problems, fed.name, row.line,
                       "a verified row follows the estimate of line "
                           + std::to_string(firstEstimate->line)
                           + "; estimated rates may only end the table");
        lastVerified = &row;
    }
    if (!lastVerified) {
        addProblem(out.problems, fed.name, 0,
                   "no row is verified (every row is marked " + std::string(kEstimateMark) + ")");
        return out;
    }
    const std::optional<Date> verified = ParseMMDDYYYY(lastVerified->thru);
    const std::optional<Date> estimated = ParseMMDDYYYY(fed.rows.back().thru);
    if (!verified || !estimated) {
        addProblem(out.problems, fed.name, 0, "the table's last dates cannot be read");
        return out;
    }
    ReleaseInfo& info = out.info;
    info.name = ReleaseName(*verified);
    info.description = QuarterDescription(*verified);
    info.verifiedThrough = *verified;
    info.verifiedThroughText = SpelledOutDate(*verified);
    info.estimatedThrough = *estimated;
    info.estimatedThroughText = SpelledOutDate(*estimated);
    return out;
}

MinimumsRead ParseMinimums(std::string_view text, std::string_view name)
{
    MinimumsRead out;
    std::istringstream lines{std::string(text)};
    std::string line;
    int lineNo = 0;
    bool header = false;
    while (std::getline(lines, line)) {
        ++lineNo;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (TrimBlanks(line).empty())
            continue;
        if (!header) {
            if (line != kMinimumHeader) {
                addProblem(out.problems, name, lineNo,
                           "the first line must be " + std::string(kMinimumHeader));
                return out;
            }
            header = true;
            continue;
        }
        const auto fields = SplitCsvRecord(line);
        if (!fields || fields->size() != 3) {
            addProblem(out.problems, name, lineNo, "expected first_year,amount,source");
            continue;
        }
        std::string why;
        std::optional<FtfMinimum> row
            = ReadFtfMinimum((*fields)[0], (*fields)[1], (*fields)[2], out.schedule, why);
        if (!row) {
            addProblem(out.problems, name, lineNo, why);
            continue;
        }
        out.schedule.rows.push_back(std::move(*row));
    }
    if (out.schedule.rows.empty() && out.problems.empty())
        addProblem(out.problems, name, 0, "no minimum amounts");
    return out;
}

ReleaseBuild BuildRelease(const fs::path& sourcesDir)
{
    ReleaseBuild out;
    auto take = [&](const std::vector<SourceProblem>& problems) {
        out.problems.insert(out.problems.end(), problems.begin(), problems.end());
    };

    for (const Authority& a : Authorities()) {
        const std::string code = TrimRight(a.code);
        ReleaseTable table;
        table.authority = &a;
        // The table source as the release keeps it: the rows cut at every
        // year end (whatever the source file merged), checked again as written.
        std::string sourceName;
        std::vector<SourceRow> rows;
        if (code == "US") {
            const SourceFile fed = ReadSourceFile(sourcesDir / "fed.csv", kTableHeader);
            const TableBuild built = BuildTable(fed);
            take(built.problems);
            if (!built.ok())
                continue;
            // Federal rates are published for every period, both of them: the
            // federal table has no holes.
            bool holes = false;
            for (const SourceRow& r : fed.rows)
                if (IsGapRow(r) || r.overpayment.empty()) {
                    addProblem(out.problems, fed.name, r.line,
                               "the federal table needs both published rates on every row");
                    holes = true;
                }
            if (holes)
                continue;
            ReleaseDates dates = DeriveReleaseDates(fed);
            take(dates.problems);
            dates.info.tables = std::move(out.info.tables);
            out.info = std::move(dates.info);
            sourceName = fed.name;
            rows = fed.rows;
        } else {
            const SourceFile schedule
                = ReadSourceFile(sourcesDir / "states" / (code + ".csv"), kScheduleHeader);
            ScheduleConversion conv = ConvertSchedule(schedule);
            take(conv.problems);
            if (!conv.ok()) {
                if (conv.problems.empty())
                    addProblem(out.problems, schedule.name, 0, "no row can be used");
                continue;
            }
            sourceName = schedule.name;
            rows = std::move(conv.rows);
        }
        table.sourceText = FormatTableSource(SplitAtYearEnds(rows));
        TableBuild built
            = BuildTable(ParseSource(table.sourceText, sourceName + " (as tabled)", kTableHeader));
        take(built.problems);
        if (!built.ok())
            continue;
        table.rows = std::move(built.rows);
        out.info.tables.push_back(RecordTable(a.file, EncodeRateTable(table.rows), table.rows));
        out.tables.push_back(std::move(table));
    }

    const fs::path minimumsFile = sourcesDir / "ftf_minimum.csv";
    std::string text;
    if (!ReadOutputFile(minimumsFile, text)) {
        addProblem(out.problems, minimumsFile.string(), 0, "cannot be read");
    } else {
        MinimumsRead minimums = ParseMinimums(text, minimumsFile.string());
        take(minimums.problems);
        out.info.ftfMinimums = std::move(minimums.schedule);
    }
    return out;
}

bool WriteRelease(const ReleaseBuild& build, const fs::path& outDir, std::string* why)
{
    auto fail = [&](std::string what) {
        if (why)
            *why = std::move(what);
        return false;
    };
    if (!build.ok())
        return fail("the sources have problems; nothing is written");
    // The old release file goes first: until the new one is written, the
    // folder is not a release.
    std::error_code ec;
    fs::remove(outDir / kReleaseFileName, ec);
    if (ec)
        return fail((outDir / kReleaseFileName).string() + ": cannot be replaced: " + ec.message());

    for (const ReleaseTable& t : build.tables) {
        const std::vector<char> bytes = EncodeRateTable(t.rows);
        // Compared as bytes: a refund rate that was not published is a NaN,
        // which never compares equal to itself as a number.
        const RateTableReadResult back = DecodeRateTable(bytes);
        if (back.status != RateTableReadResult::Status::Ok || EncodeRateTable(back.rows) != bytes)
            return fail(std::string(t.authority->file)
                        + ": the encoded table does not read back as built");
        if (!WriteOutputFile(outDir / t.authority->file,
                             std::string_view(bytes.data(), bytes.size()), false, why))
            return false;
        if (!WriteOutputFile(outDir / "rates-src" / SourceFileName(t.authority->file), t.sourceText,
                             false, why))
            return false;
    }
    if (!WriteOutputFile(outDir / kReleaseFileName, FormatReleaseInfo(build.info, kReleaseComment),
                         false, why))
        return false;
    // Read back as the program will read it: a release that would be refused
    // is not left behind.
    ReleaseInfo back;
    if (std::string problem = CheckReleaseFolder(outDir, back); !problem.empty()) {
        fs::remove(outDir / kReleaseFileName, ec);
        return fail("the release written does not read back: " + problem);
    }
    return true;
}

std::string ReleaseTablesSummary(const ReleaseBuild& build)
{
    std::string text;
    for (const ReleaseTable& t : build.tables) {
        std::string file(t.authority->file);
        file.resize(std::max<std::size_t>(file.size(), 14), ' ');
        text += std::string(t.authority->code) + "  " + file + FormatMMDDYYYY(t.rows.front().dtFrom)
                + " - " + FormatMMDDYYYY(t.rows.back().dtThru) + "  "
                + std::to_string(t.rows.size()) + (t.rows.size() == 1 ? " row" : " rows") + "\n";
    }
    return text;
}

}  // namespace rw::ratesrc
