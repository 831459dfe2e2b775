#include "ratebuild/ratesource.h"

#include "base/numtext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <sstream>

namespace rw::ratesrc {

namespace {

bool allDigits(std::string_view s)
{
    for (char c : s)
        if (c < '0' || c > '9')
            return false;
    return true;
}

// A plain decimal: an optional minus, digits, an optional point and digits,
// at least one digit in all.
struct Decimal {
    bool negative = false;
    std::string_view whole;
    std::string_view fraction;
};

std::optional<Decimal> splitDecimal(std::string_view text)
{
    Decimal d;
    if (!text.empty() && text.front() == '-') {
        d.negative = true;
        text.remove_prefix(1);
    }
    const auto point = text.find('.');
    d.whole = text.substr(0, point);
    if (point != std::string_view::npos)
        d.fraction = text.substr(point + 1);
    if (!allDigits(d.whole) || !allDigits(d.fraction) || d.whole.size() + d.fraction.size() == 0)
        return std::nullopt;
    return d;
}

std::string inQuotes(std::string_view s)
{
    return "'" + std::string(s) + "'";
}

std::string escapeMarkdown(std::string_view s)
{
    std::string out;
    for (char c : s) {
        if (c == '\\' || c == '*' || c == '`' || c == '<' || c == '|' || c == '[' || c == ']')
            out += '\\';
        out += c;
    }
    return out;
}

std::string methodName(std::string_view method)
{
    if (method == "S")
        return "simple interest";
    if (method == "S-monthly")
        return "simple interest charged by the month, tabled as daily simple interest";
    if (method == "C")
        return "daily compounding";
    return std::string(method);
}

std::string span(const SourceRow& first, const SourceRow& last)
{
    return first.from + " to " + last.thru;
}

}  // namespace

std::string SourceProblem::text() const
{
    return file + ":" + std::to_string(line) + ": " + what;
}

std::optional<std::vector<std::string>> SplitCsvRecord(std::string_view line)
{
    std::vector<std::string> fields;
    std::string field;
    std::size_t i = 0;
    for (;;) {
        field.clear();
        if (i < line.size() && line[i] == '"') {
            ++i;
            for (;;) {
                if (i >= line.size())
                    return std::nullopt;  // quote left open
                if (line[i] == '"') {
                    if (i + 1 < line.size() && line[i + 1] == '"') {
                        field += '"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    break;
                }
                field += line[i++];
            }
            if (i < line.size() && line[i] != ',')
                return std::nullopt;  // text after the closing quote
        } else {
            while (i < line.size() && line[i] != ',')
                field += line[i++];
        }
        fields.push_back(field);
        if (i >= line.size())
            break;
        ++i;  // the comma
    }
    return fields;
}

std::string JoinCsvRecord(const std::vector<std::string>& fields)
{
    std::string out;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i > 0)
            out += ',';
        const std::string& f = fields[i];
        const bool quote = f.find_first_of(",\"\n\r") != std::string::npos
                           || (!f.empty() && (f.front() == ' ' || f.back() == ' '));
        if (!quote) {
            out += f;
            continue;
        }
        out += '"';
        for (char c : f) {
            if (c == '"')
                out += '"';
            out += c;
        }
        out += '"';
    }
    return out;
}

SourceFile ParseSource(std::string_view text, std::string_view name, std::string_view header)
{
    SourceFile src;
    src.name = std::string(name);
    bool headerSeen = false;
    int lineNo = 0;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find('\n', pos);
        if (end == std::string_view::npos)
            end = text.size();
        std::string_view line = text.substr(pos, end - pos);
        pos = end + 1;
        ++lineNo;
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        if (TrimBlanks(line).empty())
            continue;
        if (!headerSeen) {
            headerSeen = true;
            if (line != header)
                src.problems.push_back(
                    {src.name, lineNo, "expected the header line " + std::string(header)});
            continue;
        }
        const auto fields = SplitCsvRecord(line);
        if (!fields) {
            src.problems.push_back({src.name, lineNo, "a quoted field is not closed properly"});
            continue;
        }
        if (fields->size() != 6) {
            src.problems.push_back(
                {src.name, lineNo, "expected 6 fields, found " + std::to_string(fields->size())});
            continue;
        }
        const auto& f = *fields;
        src.rows.push_back(SourceRow{lineNo, std::string(TrimBlanks(f[0])),
                                     std::string(TrimBlanks(f[1])), std::string(TrimBlanks(f[2])),
                                     std::string(TrimBlanks(f[3])), std::string(TrimBlanks(f[4])),
                                     std::string(TrimBlanks(f[5]))});
    }
    if (!headerSeen)
        src.problems.push_back({src.name, 0, "the file is empty"});
    return src;
}

SourceFile ReadSourceFile(const std::filesystem::path& file, std::string_view header)
{
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        SourceFile src;
        src.name = file.string();
        src.problems.push_back({src.name, 0, "cannot be read"});
        return src;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return ParseSource(text.str(), file.string(), header);
}

std::string FormatTableSource(const std::vector<SourceRow>& rows)
{
    std::string out(kTableHeader);
    out += '\n';
    for (const SourceRow& r : rows) {
        out += JoinCsvRecord({r.from, r.thru, r.underpayment, r.overpayment, r.method, r.source});
        out += '\n';
    }
    return out;
}

std::optional<float> ParseRateText(std::string_view text)
{
    if (!splitDecimal(text))
        return std::nullopt;
    // The decimal text goes straight to the nearest float: reading it as a
    // double first and narrowing could round twice and land one step off.
    float f = 0.0f;
    const auto r
        = std::from_chars(text.data(), text.data() + text.size(), f, std::chars_format::fixed);
    if (r.ec != std::errc() || r.ptr != text.data() + text.size() || !std::isfinite(f))
        return std::nullopt;
    return f;
}

std::optional<char> TableMethod(std::string_view method)
{
    if (method == "S" || method == "S-monthly")
        return 'S';
    if (method == "C")
        return 'C';
    return std::nullopt;
}

std::optional<std::string> PercentToFraction(std::string_view percent)
{
    const auto d = splitDecimal(percent);
    if (!d)
        return std::nullopt;
    // Per cent to fraction moves the point two places to the left.
    std::string digits = std::string(d->whole) + std::string(d->fraction);
    std::ptrdiff_t point = static_cast<std::ptrdiff_t>(d->whole.size()) - 2;
    if (point < 0) {
        digits.insert(0, static_cast<std::size_t>(-point), '0');
        point = 0;
    }
    std::string whole = digits.substr(0, static_cast<std::size_t>(point));
    std::string fraction = digits.substr(static_cast<std::size_t>(point));
    whole.erase(0, whole.find_first_not_of('0'));
    if (whole.empty())
        whole = "0";
    fraction.erase(fraction.find_last_not_of('0') + 1);
    std::string out = d->negative ? "-" : "";
    out += whole;
    if (!fraction.empty())
        out += "." + fraction;
    return out;
}

TableBuild BuildTable(const SourceFile& src)
{
    TableBuild b;
    b.problems = src.problems;
    auto problem = [&](const SourceRow& r, std::string what) {
        b.problems.push_back({src.name, r.line, std::move(what)});
    };
    if (src.rows.empty() && src.problems.empty())
        b.problems.push_back({src.name, 0, "the source holds no rate periods"});

    std::optional<Date> prevThru;
    for (const SourceRow& r : src.rows) {
        RateRow row;
        const auto from = ParseMMDDYYYY(r.from);
        const auto thru = ParseMMDDYYYY(r.thru);
        if (!from)
            problem(r, "from date " + inQuotes(r.from) + " is not a date written mm/dd/yyyy");
        if (!thru)
            problem(r, "thru date " + inQuotes(r.thru) + " is not a date written mm/dd/yyyy");
        if (from && thru && *thru < *from)
            problem(r, "from date " + r.from + " is after thru date " + r.thru);
        if (from && prevThru && *from != *prevThru + 1) {
            if (*from <= *prevThru)
                problem(r, "row starting " + r.from + " overlaps the previous row, which ends "
                               + FormatMMDDYYYY(*prevThru));
            else
                problem(r, "rows are not contiguous: no rate from " + FormatMMDDYYYY(*prevThru + 1)
                               + " to " + FormatMMDDYYYY(*from - 1));
        }
        prevThru = thru;
        if (from)
            row.dtFrom = *from;
        if (thru)
            row.dtThru = *thru;

        // A rate given in the source: a plain decimal within 0-50 %.
        auto checkedRate = [&](const std::string& text, const char* what, float& out) {
            const auto f = ParseRateText(text);
            if (!f) {
                problem(r, std::string(what) + " rate " + inQuotes(text)
                               + " is not a plain decimal fraction");
                return;
            }
            if (std::signbit(*f))
                problem(r, std::string(what) + " rate " + text + " is negative");
            else if (*f > kMaxRate)
                problem(r, std::string(what) + " rate " + text
                               + " is above 50 % (rates are fractions: 0.075 is 7.5 %)");
            out = *f;
        };
        if (IsGapRow(r)) {
            // A period without any published rate: a hole in both directions,
            // never a guess. It lies between sourced rows; the table's first
            // and last days are sourced ones.
            if (!r.underpayment.empty() || !r.overpayment.empty())
                problem(r, "the row is marked " + std::string(kGapMark)
                               + " (no published rate) but gives a rate");
            if (&r == &src.rows.front() || &r == &src.rows.back())
                problem(r,
                        "the row is marked " + std::string(kGapMark)
                            + " (no published rate): a table begins and ends with a sourced row");
            row.fUPRate = kRateNotPublished;
            row.fOPRate = kRateNotPublished;
        } else {
            // Every sourced period needs its underpayment rate; a refund rate
            // the authority did not publish is marked, not filled.
            if (r.underpayment.empty())
                problem(r, "underpayment rate is empty");
            else
                checkedRate(r.underpayment, "underpayment", row.fUPRate);
            if (r.overpayment.empty())
                row.fOPRate = kRateNotPublished;
            else
                checkedRate(r.overpayment, "overpayment", row.fOPRate);
        }

        if (const auto m = TableMethod(r.method))
            row.sCalcMethod = *m;
        else
            problem(r, "method " + inQuotes(r.method) + " is not S, S-monthly or C");
        if (r.source.empty())
            problem(r, "the row has no source");
        b.rows.push_back(row);
    }
    if (!b.ok())
        b.rows.clear();
    return b;
}

bool IsGapRow(const SourceRow& row)
{
    return row.source.starts_with(kGapMark);
}

bool IsSourcedScheduleRow(const SourceRow& row)
{
    return !IsGapRow(row) && !row.underpayment.empty();
}

SourcedSpan SourcedRows(const std::vector<SourceRow>& rows)
{
    std::size_t begin = 0;
    while (begin < rows.size() && !IsSourcedScheduleRow(rows[begin]))
        ++begin;
    if (begin == rows.size())
        return SourcedSpan{};
    std::size_t end = rows.size();
    while (end > begin && !IsSourcedScheduleRow(rows[end - 1]))
        --end;
    return SourcedSpan{begin, end};
}

ScheduleConversion ConvertSchedule(const SourceFile& schedule)
{
    ScheduleConversion c;
    c.problems = schedule.problems;
    auto problem = [&](const SourceRow& r, std::string what) {
        c.problems.push_back({schedule.name, r.line, std::move(what)});
    };
    // The schedule itself must account for every day, gaps included: a hole
    // between rows would hide a period nobody looked at.
    std::optional<Date> prevThru;
    for (const SourceRow& r : schedule.rows) {
        const auto from = ParseMMDDYYYY(r.from);
        const auto thru = ParseMMDDYYYY(r.thru);
        if (!from || !thru) {
            problem(r, "dates " + inQuotes(r.from) + ", " + inQuotes(r.thru)
                           + " are not written mm/dd/yyyy");
        } else {
            if (*thru < *from)
                problem(r, "from date " + r.from + " is after thru date " + r.thru);
            if (prevThru && *from != *prevThru + 1)
                problem(r, "does not begin the day after the previous row ends ("
                               + FormatMMDDYYYY(*prevThru) + ")");
        }
        prevThru = thru;
    }

    c.kept = SourcedRows(schedule.rows);
    if (c.kept.begin == c.kept.end)
        c.problems.push_back({schedule.name, 0, "no sourced row gives an underpayment rate"});
    for (std::size_t i = c.kept.begin; i < c.kept.end; ++i) {
        const SourceRow& r = schedule.rows[i];
        SourceRow out = r;
        if (IsGapRow(r)) {
            // A hole between sourced periods: no rate in either direction.
            if (!r.underpayment.empty() || !r.overpayment.empty())
                problem(r, "the row is marked " + std::string(kGapMark)
                               + " (no published figure) but gives a rate");
            if (out.method.empty())
                out.method = "C";
            c.rows.push_back(std::move(out));
            continue;
        }
        if (r.underpayment.empty()) {
            problem(r, "gives no underpayment rate but is not marked " + std::string(kGapMark)
                           + ": every period of a table needs its underpayment rate, or the mark "
                             "that none was "
                             "published");
            continue;
        }
        const auto up = PercentToFraction(r.underpayment);
        if (!up)
            problem(r, "underpayment " + inQuotes(r.underpayment) + " is not a per cent figure");
        out.underpayment = up.value_or("");
        // An empty refund rate was not published and stays empty.
        if (!r.overpayment.empty()) {
            const auto op = PercentToFraction(r.overpayment);
            if (!op)
                problem(r, "overpayment " + inQuotes(r.overpayment) + " is not a per cent figure");
            out.overpayment = op.value_or("");
        }
        c.rows.push_back(std::move(out));
    }
    if (!c.problems.empty())
        c.rows.clear();
    return c;
}

namespace {

// Stretches of consecutive rows that satisfy `pick`, as "first to last".
template<typename Rows, typename Pick, typename FromOf, typename ThruOf>
std::vector<std::string> stretches(const Rows& rows, Pick pick, FromOf fromOf, ThruOf thruOf)
{
    std::vector<std::string> out;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!pick(rows[i]))
            continue;
        std::size_t j = i;
        while (j + 1 < rows.size() && pick(rows[j + 1]))
            ++j;
        out.push_back(fromOf(rows[i]) + " to " + thruOf(rows[j]));
        i = j;
    }
    return out;
}

std::string joined(const std::vector<std::string>& parts, std::string_view none)
{
    if (parts.empty())
        return std::string(none);
    std::string out;
    for (const std::string& p : parts)
        out += (out.empty() ? "" : ", ") + p;
    return out;
}

}  // namespace

std::vector<SourceRow> SplitAtYearEnds(const std::vector<SourceRow>& rows)
{
    std::vector<SourceRow> out;
    out.reserve(rows.size());
    for (const SourceRow& r : rows) {
        const auto from = ParseMMDDYYYY(r.from);
        const auto thru = ParseMMDDYYYY(r.thru);
        if (!from || !thru || *thru < *from) {
            out.push_back(r);
            continue;
        }
        Date begin = *from;
        for (;;) {
            const Date yearEnd = Date::fromCivil(begin.year(), 12, 31);
            SourceRow piece = r;
            piece.from = FormatMMDDYYYY(begin);
            if (*thru <= yearEnd) {
                piece.thru = r.thru;
                out.push_back(std::move(piece));
                break;
            }
            piece.thru = FormatMMDDYYYY(yearEnd);
            out.push_back(std::move(piece));
            begin = yearEnd + 1;
        }
    }
    return out;
}

std::vector<std::string> UnpublishedRefundPeriods(const std::vector<SourceRow>& rows)
{
    return stretches(
        rows, [](const SourceRow& r) { return r.overpayment.empty(); },
        [](const SourceRow& r) { return r.from; }, [](const SourceRow& r) { return r.thru; });
}

std::vector<std::string> UnpublishedRefundPeriods(const RateTable& rows)
{
    return stretches(
        rows, [](const RateRow& r) { return IsRateNotPublished(r.fOPRate); },
        [](const RateRow& r) { return FormatMMDDYYYY(r.dtFrom); },
        [](const RateRow& r) { return FormatMMDDYYYY(r.dtThru); });
}

std::vector<std::string> UnpublishedUnderpaymentPeriods(const std::vector<SourceRow>& rows)
{
    return stretches(
        rows, [](const SourceRow& r) { return r.underpayment.empty(); },
        [](const SourceRow& r) { return r.from; }, [](const SourceRow& r) { return r.thru; });
}

std::vector<std::string> UnpublishedUnderpaymentPeriods(const RateTable& rows)
{
    return stretches(
        rows, [](const RateRow& r) { return IsRateNotPublished(r.fUPRate); },
        [](const RateRow& r) { return FormatMMDDYYYY(r.dtFrom); },
        [](const RateRow& r) { return FormatMMDDYYYY(r.dtThru); });
}

std::string CoverageMarkdown(const std::vector<AuthorityTable>& tables)
{
    std::ostringstream md;
    md << "# Rate table coverage\n\n"
          "Each rate table delivered with the program: the first and last day it covers, its "
          "number of\n"
          "rate periods, how interest is computed, its holes, and where its rates were published. "
          "A\n"
          "calculation whose start or stop date lies outside a state's table is warned about when "
          "the\n"
          "Initial Inputs are accepted. Methods: S simple interest; S-monthly simple interest that "
          "the\n"
          "authority charges by the month (the table charges it daily); C daily compounding.\n"
          "\"Underpayment rate not published\" lists the periods inside a table for which no "
          "published\n"
          "rate was found at all: a calculation cannot compute interest on an amount owed in "
          "them.\n"
          "\"Refund rate not published\" lists the periods for which the authority's overpayment\n"
          "(refund) rate was not found: a calculation cannot compute interest on an overpayment "
          "in\n"
          "them. No rate is ever put in the place of one that was not published.\n\n"
          "| Authority | Code | Table file | First date | Last date | Rows | Method "
          "| Underpayment rate not published | Refund rate not published |\n"
          "|---|---|---|---|---|---:|---|---|---|\n";
    auto methodsOf = [](const std::vector<SourceRow>& rows) {
        std::vector<std::string> seen;
        for (const SourceRow& r : rows)
            if (!IsGapRow(r) && std::find(seen.begin(), seen.end(), r.method) == seen.end())
                seen.push_back(r.method);
        std::string out;
        for (const std::string& m : seen)
            out += (out.empty() ? "" : ", ") + m;
        return out;
    };
    auto codeOf = [](const Authority& a) { return std::string(TrimBlanks(a.code)); };
    for (const AuthorityTable& t : tables) {
        const Authority& a = *t.authority;
        md << "| " << escapeMarkdown(a.name) << " | " << codeOf(a) << " | " << a.file << " | ";
        if (t.rows.empty())
            md << "- | - | 0 | - | - | - |\n";
        else
            md << t.rows.front().from << " | " << t.rows.back().thru << " | " << t.rows.size()
               << " | " << methodsOf(t.rows) << " | "
               << joined(UnpublishedUnderpaymentPeriods(t.rows), "-") << " | "
               << joined(UnpublishedRefundPeriods(t.rows), "-") << " |\n";
    }

    // Each distinct text of the rows that satisfy `pick` once, in the order
    // first used, with the periods and number of rows it stands for.
    auto textsOf = [](const std::vector<SourceRow>& rows, auto pick) {
        std::string out;
        std::vector<std::string> texts;
        for (const SourceRow& r : rows)
            if (pick(r) && std::find(texts.begin(), texts.end(), r.source) == texts.end())
                texts.push_back(r.source);
        for (const std::string& text : texts) {
            std::string spans;
            std::size_t count = 0;
            for (std::size_t i = 0; i < rows.size(); ++i) {
                if (rows[i].source != text)
                    continue;
                std::size_t j = i;
                while (j + 1 < rows.size() && rows[j + 1].source == text)
                    ++j;
                spans += (spans.empty() ? "" : ", ") + span(rows[i], rows[j]);
                count += j - i + 1;
                i = j;
            }
            out += "- " + spans + " (" + std::to_string(count) + (count == 1 ? " row" : " rows")
                   + "): " + escapeMarkdown(text) + "\n";
        }
        return out;
    };

    for (const AuthorityTable& t : tables) {
        const Authority& a = *t.authority;
        md << "\n## " << escapeMarkdown(a.name) << " (" << codeOf(a) << ", " << a.file << ")\n\n";
        if (t.rows.empty()) {
            md << "No rate periods.\n";
            continue;
        }
        md << t.rows.size() << (t.rows.size() == 1 ? " rate period" : " rate periods") << " from "
           << t.rows.front().from << " to " << t.rows.back().thru << ".\n\n";

        md << "Method:\n\n";
        auto methodLabel = [](const SourceRow& r) {
            return IsGapRow(r) ? std::string("no published rate") : methodName(r.method);
        };
        for (std::size_t i = 0; i < t.rows.size();) {
            std::size_t j = i;
            while (j + 1 < t.rows.size() && methodLabel(t.rows[j + 1]) == methodLabel(t.rows[i]))
                ++j;
            md << "- " << span(t.rows[i], t.rows[j]) << ": " << methodLabel(t.rows[i]) << "\n";
            i = j + 1;
        }

        const std::vector<std::string> noUnderpayment = UnpublishedUnderpaymentPeriods(t.rows);
        if (!noUnderpayment.empty()) {
            md << "\nUnderpayment rate not published (no published rate at all):\n\n";
            for (const std::string& p : noUnderpayment)
                md << "- " << p << "\n";
            md << "\nInterest on an amount owed in these periods, or on an overpayment, cannot be "
                  "computed\n"
                  "with this table.\n";
        }
        const std::vector<std::string> noRefund = UnpublishedRefundPeriods(t.rows);
        if (!noRefund.empty()) {
            md << "\nRefund (overpayment) rate not published:\n\n";
            for (const std::string& p : noRefund)
                md << "- " << p << "\n";
            md << "\nInterest on an overpayment in these periods cannot be computed with this "
                  "table.\n";
        }

        md << "\nPublished sources:\n\n"
           << textsOf(t.rows, [](const SourceRow& r) { return !IsGapRow(r); });
        const std::string notes = textsOf(t.rows, [](const SourceRow& r) { return IsGapRow(r); });
        if (!notes.empty())
            md << "\nWhat the research found for the periods without a published rate:\n\n"
               << notes;
    }
    return md.str();
}

std::string SourceFileName(std::string_view tableFile)
{
    const auto dot = tableFile.rfind('.');
    return std::string(tableFile.substr(0, dot)) + ".csv";
}

}  // namespace rw::ratesrc
