#include "rates/release.h"

#include "base/binio.h"
#include "base/numtext.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <set>

namespace rw {

namespace fs = std::filesystem;

std::optional<FtfMinimum> ReadFtfMinimum(std::string_view yearText, std::string_view amountText,
                                         std::string_view sourceText,
                                         const FtfMinimumSchedule& before, std::string& why)
{
    const std::string_view year = TrimBlanks(yearText);
    const std::string_view amount = TrimBlanks(amountText);
    FtfMinimum row;
    row.source = std::string(TrimBlanks(sourceText));
    if (year.size() != 4 || year.find_first_not_of("0123456789") != std::string_view::npos
        || std::stoi(std::string(year)) < kFirstReadableYear
        || std::stoi(std::string(year)) > kLastReadableYear) {
        why = "not a year from " + std::to_string(kFirstReadableYear) + " to "
              + std::to_string(kLastReadableYear) + ": " + std::string(year);
        return std::nullopt;
    }
    row.firstYear = std::stoi(std::string(year));
    const std::optional<Money> m = Money::parse(amount);
    if (!m || !(*m > Money()) || m->raw() % 100 != 0) {
        why = "not an amount in dollars and cents above 0: " + std::string(amount);
        return std::nullopt;
    }
    row.amount = *m;
    if (row.source.empty()) {
        why = "the row has no source";
        return std::nullopt;
    }
    if (!before.rows.empty() && row.firstYear <= before.rows.back().firstYear) {
        why = "the years must increase";
        return std::nullopt;
    }
    return row;
}

std::optional<Money> FtfMinimumSchedule::forDueYear(int dueYear) const
{
    std::optional<Money> amount;
    for (const FtfMinimum& row : rows) {
        if (row.firstYear > dueYear)
            break;
        amount = row.amount;
    }
    return amount;
}

namespace {

constexpr std::string_view kKeys[] = {"name",
                                      "description",
                                      "verified_through",
                                      "verified_through_text",
                                      "estimated_through",
                                      "estimated_through_text"};

// "YEAR,AMOUNT,SOURCE": the source is the rest of the line, commas and all.
std::optional<FtfMinimum> minimumRow(std::string_view value, const FtfMinimumSchedule& before,
                                     std::string& why)
{
    const auto c1 = value.find(',');
    const auto c2 = c1 == std::string_view::npos ? c1 : value.find(',', c1 + 1);
    if (c2 == std::string_view::npos) {
        why = "ftf_minimum must be YEAR,AMOUNT,SOURCE";
        return std::nullopt;
    }
    std::optional<FtfMinimum> row = ReadFtfMinimum(
        value.substr(0, c1), value.substr(c1 + 1, c2 - c1 - 1), value.substr(c2 + 1), before, why);
    if (!row)
        why = "ftf_minimum: " + why;
    return row;
}

// "485.00": the minimums are whole cents; never a thousands separator, which
// would read as a field separator.
std::string centsText(Money m)
{
    const std::string t = ExactMoney(m);
    return t.substr(0, t.size() - 2);
}

// A release file is small; anything larger is not one.
constexpr std::size_t kMaxReleaseFileSize = std::size_t{1} << 20;

std::string hex8(std::uint32_t v)
{
    char b[16];
    std::snprintf(b, sizeof b, "%08x", static_cast<unsigned>(v));
    return b;
}

bool readHex8(std::string_view s, std::uint32_t& v)
{
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v, 16);
    return s.size() == 8 && r.ec == std::errc() && r.ptr == s.data() + s.size();
}

// "FILE,ROWS,FIRST,LAST,CRC32" of an authority's table not recorded before.
std::optional<TableRecord> tableRecord(std::string_view value,
                                       const std::vector<TableRecord>& before, std::string& why)
{
    std::vector<std::string_view> f;
    for (std::size_t from = 0;;) {
        const auto comma = value.find(',', from);
        f.push_back(value.substr(from, comma == std::string_view::npos ? comma : comma - from));
        if (comma == std::string_view::npos)
            break;
        from = comma + 1;
    }
    TableRecord t;
    std::int64_t rows = 0;
    const auto r = f.size() == 5 ? std::from_chars(f[1].data(), f[1].data() + f[1].size(), rows)
                                 : std::from_chars_result{};
    const std::optional<Date> first = f.size() == 5 ? ParseMMDDYYYY(f[2]) : std::nullopt;
    const std::optional<Date> last = f.size() == 5 ? ParseMMDDYYYY(f[3]) : std::nullopt;
    if (f.size() != 5 || r.ec != std::errc() || r.ptr != f[1].data() + f[1].size() || rows < 1
        || rows > static_cast<std::int64_t>(kMaxRateRows) || !first || !last || *last < *first
        || !readHex8(f[4], t.crc32)) {
        why = "table must be FILE,ROWS,FIRST,LAST,CRC32 (rows from 1, dates mm/dd/yyyy, 8 hex "
              "digits)";
        return std::nullopt;
    }
    t.file = std::string(f[0]);
    t.rows = static_cast<std::int32_t>(rows);
    t.first = *first;
    t.last = *last;
    bool known = false;
    for (const Authority& a : Authorities())
        known = known || a.file == t.file;
    if (!known)
        why = "table: " + t.file + " is not the table of an authority";
    for (const TableRecord& b : before)
        if (b.file == t.file)
            why = "table: " + t.file + " is given twice";
    if (!why.empty())
        return std::nullopt;
    return t;
}

}  // namespace

TableRecord RecordTable(std::string_view file, std::span<const char> bytes, const RateTable& rows)
{
    TableRecord t;
    t.file = std::string(file);
    t.rows = static_cast<std::int32_t>(rows.size());
    if (!rows.empty()) {
        t.first = rows.front().dtFrom;
        t.last = rows.back().dtThru;
    }
    t.crc32 = Crc32(bytes);
    return t;
}

bool ParseReleaseInfo(std::string_view text, std::string_view fileName, ReleaseInfo& out,
                      std::string* problem)
{
    out = ReleaseInfo{};
    ReleaseInfo info;
    std::set<std::string, std::less<>> given;
    std::string why;
    int lineNo = 0;
    auto fail = [&](int line, const std::string& what) {
        if (problem)
            *problem = std::string(fileName)
                       + (line > 0 ? ":" + std::to_string(line) : std::string()) + ": " + what;
        return false;
    };

    // A file without its checksum line was cut short (or is no release's):
    // said so before any half line of it is taken for the problem.
    const std::string_view cutShort = "file_crc32 is not given: the file is cut short or was not "
                                      "written by the release build";
    if (!text.starts_with("file_crc32=") && text.find("\nfile_crc32=") == std::string_view::npos)
        return fail(0, std::string(cutShort));
    bool sealed = false;  // the checksum line has been read: nothing may follow
    for (std::size_t pos = 0; pos < text.size();) {
        const std::size_t start = pos;
        const std::size_t end = text.find('\n', pos);
        std::string_view line = text.substr(pos, end == std::string_view::npos ? end : end - pos);
        pos = end == std::string_view::npos ? text.size() : end + 1;
        ++lineNo;
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (sealed && !line.empty())
            return fail(lineNo, "text after file_crc32");
        if (line.empty() || line[0] == '#')
            continue;
        const auto eq = line.find('=');
        if (eq == std::string_view::npos)
            return fail(lineNo, "expected key=value");
        const std::string key(line.substr(0, eq));
        const std::string value(line.substr(eq + 1));
        if (key == "ftf_minimum") {
            std::optional<FtfMinimum> row = minimumRow(value, info.ftfMinimums, why);
            if (!row)
                return fail(lineNo, why);
            info.ftfMinimums.rows.push_back(std::move(*row));
            continue;
        }
        if (key == "table") {
            std::optional<TableRecord> t = tableRecord(value, info.tables, why);
            if (!t)
                return fail(lineNo, why);
            info.tables.push_back(std::move(*t));
            continue;
        }
        if (key == "file_crc32") {
            std::uint32_t crc = 0;
            if (!readHex8(value, crc))
                return fail(lineNo, "file_crc32 must be 8 hex digits");
            if (Crc32(text.substr(0, start)) != crc)
                return fail(lineNo, "the file has changed since it was written (its checksum "
                                    "differs from file_crc32)");
            sealed = true;
            continue;
        }
        if (given.count(key))
            return fail(lineNo, key + " is given twice");
        auto date = [&](Date& d) {
            const std::optional<Date> p = ParseMMDDYYYY(value);
            if (p)
                d = *p;
            return p.has_value();
        };
        if (key == "name")
            info.name = value;
        else if (key == "description")
            info.description = value;
        else if (key == "verified_through_text")
            info.verifiedThroughText = value;
        else if (key == "estimated_through_text")
            info.estimatedThroughText = value;
        else if (key == "verified_through" || key == "estimated_through") {
            if (!date(key == "verified_through" ? info.verifiedThrough : info.estimatedThrough))
                return fail(lineNo, key + " is not a date mm/dd/yyyy " + ReadableDatesText() + ": "
                                        + value);
        } else
            return fail(lineNo, "unknown key " + key);
        given.insert(key);
    }
    if (!sealed)
        return fail(0, std::string(cutShort));
    for (std::string_view key : kKeys)
        if (!given.count(key))
            return fail(0, std::string(key) + " is not given");
    if (info.ftfMinimums.rows.empty())
        return fail(0, "no ftf_minimum is given");
    if (info.estimatedThrough < info.verifiedThrough)
        return fail(0, "estimated_through is before verified_through");
    out = std::move(info);
    return true;
}

bool ReadReleaseInfo(const fs::path& file, ReleaseInfo& out, std::string* problem)
{
    out = ReleaseInfo{};
    const FileBytes read = ReadFileBounded(file.string(), kMaxReleaseFileSize);
    if (read.status != ReadStatus::Ok) {
        if (problem)
            *problem = file.string()
                       + (read.status == ReadStatus::TooLarge ? ": too large for a release file"
                                                              : ": cannot be read");
        return false;
    }
    return ParseReleaseInfo(std::string_view(read.bytes.data(), read.bytes.size()), file.string(),
                            out, problem);
}

std::string FormatReleaseInfo(const ReleaseInfo& info, std::string_view comment)
{
    std::string text;
    for (std::size_t from = 0; from < comment.size();) {
        const auto nl = comment.find('\n', from);
        const std::string_view line
            = comment.substr(from, nl == std::string_view::npos ? nl : nl - from);
        text += line.empty() ? "#\n" : "# " + std::string(line) + "\n";
        from = nl == std::string_view::npos ? comment.size() : nl + 1;
    }
    text += "name=" + info.name + "\n" + "description=" + info.description + "\n"
            + "verified_through=" + FormatMMDDYYYY(info.verifiedThrough) + "\n"
            + "verified_through_text=" + info.verifiedThroughText + "\n"
            + "estimated_through=" + FormatMMDDYYYY(info.estimatedThrough) + "\n"
            + "estimated_through_text=" + info.estimatedThroughText + "\n";
    for (const FtfMinimum& row : info.ftfMinimums.rows)
        text += "ftf_minimum=" + std::to_string(row.firstYear) + "," + centsText(row.amount) + ","
                + row.source + "\n";
    for (const TableRecord& t : info.tables)
        text += "table=" + t.file + "," + std::to_string(t.rows) + "," + FormatMMDDYYYY(t.first)
                + "," + FormatMMDDYYYY(t.last) + "," + hex8(t.crc32) + "\n";
    return text + "file_crc32=" + hex8(Crc32(text)) + "\n";
}

std::string CheckReleaseFolder(const fs::path& folder, ReleaseInfo& info)
{
    info = ReleaseInfo{};
    ReleaseInfo read;
    std::string problem;
    const fs::path releaseFile = folder / kReleaseFileName;
    if (!ReadReleaseInfo(releaseFile, read, &problem))
        return problem;
    for (const Authority& a : Authorities()) {
        const auto rec = std::find_if(read.tables.begin(), read.tables.end(),
                                      [&](const TableRecord& t) { return t.file == a.file; });
        if (rec == read.tables.end())
            return releaseFile.string() + ": no table line for " + std::string(a.file);
        const fs::path file = folder / a.file;
        const FileBytes bytes = ReadFileBounded(file.string(), kMaxRateTableSize);
        const RateTableReadResult r = bytes.status == ReadStatus::Ok ? DecodeRateTable(bytes.bytes)
                                                                     : ReadRateTableFile(file);
        if (r.status != RateTableReadResult::Status::Ok)
            return file.string() + " " + RateTableProblem(r);
        const TableRecord found = RecordTable(a.file, bytes.bytes, r.rows);
        if (found.rows != rec->rows || found.first != rec->first || found.last != rec->last)
            return file.string() + ": " + std::to_string(found.rows) + " rows from "
                   + FormatMMDDYYYY(found.first) + " to " + FormatMMDDYYYY(found.last)
                   + ", but the release file records " + std::to_string(rec->rows) + " from "
                   + FormatMMDDYYYY(rec->first) + " to " + FormatMMDDYYYY(rec->last);
        if (found.crc32 != rec->crc32)
            return file.string()
                   + ": the table has changed since the release was written (its checksum "
                     "differs from the release file's)";
        if (a.code == "US  " && r.rows.back().dtThru < read.estimatedThrough)
            return file.string() + ": the federal rates end on "
                   + FormatMMDDYYYY(r.rows.back().dtThru)
                   + ", before the release's estimated-through date "
                   + FormatMMDDYYYY(read.estimatedThrough);
    }
    info = std::move(read);
    return {};
}

ReleaseInUse ChooseRelease(const Paths& paths)
{
    ReleaseInUse use;
    use.folder = paths.installDir;
    ReleaseInfo installed;
    const std::string installedProblem = CheckReleaseFolder(paths.installDir, installed);

    const fs::path userFolder = paths.userReleaseDir();
    std::error_code ec;
    if (fs::is_directory(userFolder, ec) && !fs::is_empty(userFolder, ec)) {
        ReleaseInfo user;
        std::string userProblem;
        const bool readable = ReadReleaseInfo(userFolder / kReleaseFileName, user, &userProblem);
        const std::string name = readable ? " (" + user.name + ")" : std::string();
        if (readable && installedProblem.empty()
            && !(installed.verifiedThrough < user.verifiedThrough)) {
            use.notes.push_back("The rates in " + userFolder.string() + " (" + user.name
                                + ", verified through " + user.verifiedThroughText
                                + ") are not later than the installed ones; they are not used.");
        } else {
            if (readable)
                userProblem = CheckReleaseFolder(userFolder, user);
            if (userProblem.empty()) {
                use.info = std::move(user);
                use.folder = userFolder;
                return use;
            }
            use.warnings.push_back("The interest rates in " + userFolder.string() + name
                                   + " are not used: " + userProblem
                                   + ".  The installed rates are used instead.");
        }
    }
    if (!installedProblem.empty())
        use.warnings.push_back("The installed interest rates cannot be used: " + installedProblem
                               + ".  Please install Ratewright again.");
    else
        use.info = std::move(installed);
    return use;
}

}  // namespace rw
