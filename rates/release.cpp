#include "rates/release.h"

#include "base/numtext.h"
#include "rates/ratetable.h"

#include <fstream>
#include <set>
#include <sstream>

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
    if (year.size() != 4 || year.find_first_not_of("0123456789") != std::string_view::npos) {
        why = "not a year: " + std::string(year);
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

}  // namespace

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

    std::istringstream lines{std::string(text)};
    for (std::string line; std::getline(lines, line);) {
        ++lineNo;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == '#')
            continue;
        const auto eq = line.find('=');
        if (eq == std::string::npos)
            return fail(lineNo, "expected key=value");
        const std::string key = line.substr(0, eq);
        const std::string value = line.substr(eq + 1);
        if (key == "ftf_minimum") {
            std::optional<FtfMinimum> row = minimumRow(value, info.ftfMinimums, why);
            if (!row)
                return fail(lineNo, why);
            info.ftfMinimums.rows.push_back(std::move(*row));
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
            if (!date(key == "verified_through" ? info.verifiedThrough : info.estimatedThrough)) {
                std::string why = key;
                why += " is not a date mm/dd/yyyy: ";
                why += value;
                return fail(lineNo, why);
            }
        } else
            return fail(lineNo, "unknown key " + key);
        given.insert(key);
    }
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
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        if (problem)
            *problem = file.string() + ": cannot be read";
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return ParseReleaseInfo(text.str(), file.string(), out, problem);
}

std::string FormatReleaseInfo(const ReleaseInfo& info)
{
    std::string text = "name=" + info.name + "\n" + "description=" + info.description + "\n"
                       + "verified_through=" + FormatMMDDYYYY(info.verifiedThrough) + "\n"
                       + "verified_through_text=" + info.verifiedThroughText + "\n"
                       + "estimated_through=" + FormatMMDDYYYY(info.estimatedThrough) + "\n"
                       + "estimated_through_text=" + info.estimatedThroughText + "\n";
    for (const FtfMinimum& row : info.ftfMinimums.rows)
        text += "ftf_minimum=" + std::to_string(row.firstYear) + "," + centsText(row.amount) + ","
                + row.source + "\n";
    return text;
}

std::string CheckReleaseFolder(const fs::path& folder, ReleaseInfo& info)
{
    info = ReleaseInfo{};
    ReleaseInfo read;
    std::string problem;
    if (!ReadReleaseInfo(folder / kReleaseFileName, read, &problem))
        return problem;
    for (const Authority& a : Authorities()) {
        const fs::path file = folder / a.file;
        const RateTableReadResult r = ReadRateTableFile(file);
        if (r.status != RateTableReadResult::Status::Ok)
            return file.string() + " " + RateTableProblem(r);
        if (r.rows.empty())
            return file.string() + ": the rate table has no rows";
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
        const std::string userProblem = CheckReleaseFolder(userFolder, user);
        if (!userProblem.empty()) {
            use.warnings.push_back("The interest rates in " + userFolder.string()
                                   + " are not used: " + userProblem
                                   + ".  The installed rates are used instead.");
        } else if (!installedProblem.empty() || installed.verifiedThrough < user.verifiedThrough) {
            use.info = std::move(user);
            use.folder = userFolder;
            return use;
        } else {
            use.notes.push_back("The rates in " + userFolder.string() + " (" + user.name
                                + ", verified through " + user.verifiedThroughText
                                + ") are not later than the installed ones; they are not used.");
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
