#pragma once
// Rate table sources: the CSV files (data/rates/<table>.csv) from which every
// ".tbl" is built, the published state schedules they are converted from, and
// the checks that keep a table honest: periods without holes or overlaps,
// plausible rates, and a published source for every row.
//
// A table source has the columns
//     from,thru,underpayment,overpayment,method,source
// with dates mm/dd/yyyy (both inclusive), annual rates as fractions (0.075 is
// 7.5 %), method "S" (simple), "S-monthly" (simple, charged by the month) or
// "C" (daily compounding), and the published source of the row. An empty
// overpayment field means that the authority's refund rate for the period was
// not published (not found): the table marks it as such, never fills it in.
//
// A state schedule has the same columns with rates in per cent; a row whose
// source begins "GAP:" is a period for which no published figure was found.
// Such a period between two sourced rows stays in the table as a hole: a row
// whose underpayment and overpayment fields are both empty, held in the table
// as kRateNotPublished in both directions.

#include "base/dates.h"
#include "rates/ratetable.h"

#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rw::ratesrc {

inline constexpr std::string_view kTableHeader = "from,thru,underpayment,overpayment,method,source";
inline constexpr std::string_view kScheduleHeader
    = "from_mm/dd/yyyy,thru_mm/dd/yyyy,underpayment_pct,overpayment_pct,method,source";

// The highest annual rate a table may hold. The highest published rate in any
// table is 20 % (federal and Pennsylvania, 1982); a figure above 50 % is a
// slipped decimal point, a per cent figure written where a fraction belongs.
inline constexpr float kMaxRate = 0.5f;

// A rate the authority did not publish for a period: a quiet NaN in the
// table's fOPRate (the refund rate of a row whose overpayment field is empty)
// or in both fUPRate and fOPRate (a "GAP:" row, a period without any
// published rate). Any interest computed with it is NaN, so it can never pass
// for a figure; the engine refuses a period that needs it.
inline constexpr float kRateNotPublished = std::numeric_limits<float>::quiet_NaN();
inline bool IsRateNotPublished(float rate)
{
    return std::isnan(rate);
}

// The mark a schedule row without any published figure carries in its source.
inline constexpr std::string_view kGapMark = "GAP:";

// Something wrong with a source, located by file and 1-based line (0: the file
// as a whole).
struct SourceProblem {
    std::string file;
    int line = 0;
    std::string what;

    std::string text() const;  // "file:line: what"
};

// One row of a source as written (blanks around fields removed).
struct SourceRow {
    int line = 0;
    std::string from;
    std::string thru;
    std::string underpayment;
    std::string overpayment;
    std::string method;
    std::string source;

    friend bool operator==(const SourceRow&, const SourceRow&) = default;
};

struct SourceFile {
    std::string name;  // used in messages
    std::vector<SourceRow> rows;
    std::vector<SourceProblem> problems;  // lines that could not be read
};

// Splits one CSV record: fields separated by commas, a field in double quotes
// may hold commas and doubled quotes. Nothing when a quote is left open or
// text follows a closing quote.
std::optional<std::vector<std::string>> SplitCsvRecord(std::string_view line);
// One CSV record; a field holding a comma, a quote or outer blanks is quoted.
std::string JoinCsvRecord(const std::vector<std::string>& fields);

// Reads a source whose first line must be `header`. Empty lines are skipped.
SourceFile ParseSource(std::string_view text, std::string_view name, std::string_view header);
SourceFile ReadSourceFile(const std::filesystem::path& file, std::string_view header);

// Writes rows as a table source (header line first, "\n" line ends).
std::string FormatTableSource(const std::vector<SourceRow>& rows);

// A rate written as a plain decimal ("0.075", ".5", "12"; a leading minus
// allowed so that the check can refuse it), read straight from its text to
// the nearest single-precision value. No exponents, no "nan" or "inf".
std::optional<float> ParseRateText(std::string_view text);

// The table's method letter: 'S' for "S" and "S-monthly", 'C' for "C".
std::optional<char> TableMethod(std::string_view method);

// A per cent figure as the same number of hundredths, by moving the decimal
// point in the text: "7.5" -> "0.075", "11.4825" -> "0.114825", "12" -> "0.12",
// ".25" -> "0.0025". Leading zeros of the whole part and trailing zeros of the
// fraction are dropped ("10" -> "0.1"). Nothing for a text that is not a plain
// decimal.
std::optional<std::string> PercentToFraction(std::string_view percent);

struct TableBuild {
    RateTable rows;
    std::vector<SourceProblem> problems;
    bool ok() const { return problems.empty(); }
};

// Checks a table source and builds its rows. Refused: no rows; a date that is
// not mm/dd/yyyy; from after thru; a row that does not begin the day after the
// previous row ends; an empty underpayment rate on a row not marked "GAP:"; a
// rate that is not a plain decimal, negative or above kMaxRate; an unknown
// method; an empty source; a "GAP:" row that gives a rate, or one that begins
// or ends the table (a table runs from its first to its last sourced day). An
// empty overpayment rate is not published and becomes kRateNotPublished; a
// "GAP:" row holds kRateNotPublished in both directions. Every problem is
// reported, not only the first.
TableBuild BuildTable(const SourceFile& src);

// A row marked "GAP:": a period for which no published rate was found.
bool IsGapRow(const SourceRow& row);

// A schedule row that gives the table a published underpayment rate: not a
// "GAP:" row, and its underpayment rate given. Its overpayment (refund) rate
// may be missing: the table then marks it as not published.
bool IsSourcedScheduleRow(const SourceRow& row);

// The rows [begin, end) a table takes from a schedule: from the first sourced
// row to the last, every row between them included. "GAP:" rows before the
// first or after the last are left out; a "GAP:" row between them stays as a
// hole. Both 0 when no row is sourced.
struct SourcedSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
};
SourcedSpan SourcedRows(const std::vector<SourceRow>& rows);

struct ScheduleConversion {
    std::vector<SourceRow> rows;  // the rows taken, rates as fractions
    SourcedSpan kept;  // which schedule rows they are
    std::vector<SourceProblem> problems;
    bool ok() const { return problems.empty() && !rows.empty(); }
};

// Converts a state schedule into a table source: checks that the schedule's
// periods (gaps included) follow each other day by day, takes the rows from
// the first sourced row to the last and turns their per cent figures into
// fractions. An overpayment rate left empty stays empty (not published). A
// "GAP:" row between sourced rows is written with both rates empty, its
// method as the schedule gives it or "C", and its text kept; a "GAP:" row
// that gives a rate is refused, and so is a row between sourced rows that
// gives a refund rate without an underpayment rate and is not marked "GAP:".
// Methods and source texts are kept as written.
ScheduleConversion ConvertSchedule(const SourceFile& schedule);

// The rows cut at every 31 December they span: a row from 10/01/2023 to
// 03/31/2024 becomes 10/01/2023-12/31/2023 and 01/01/2024-03/31/2024. Each
// piece keeps the row's rates, method, source and line. The year's day count
// (365 or 366) that daily compounding uses is taken from the year a table row
// begins in, so no table row may reach into the next year. Rows whose dates
// do not read are passed on as they are (the table check names them).
std::vector<SourceRow> SplitAtYearEnds(const std::vector<SourceRow>& rows);

// The stretches of a table's rows (consecutive rows merged) whose overpayment
// rate, or underpayment rate, was not published, as "mm/dd/yyyy to
// mm/dd/yyyy" texts, oldest first. A "GAP:" row is in both.
std::vector<std::string> UnpublishedRefundPeriods(const std::vector<SourceRow>& rows);
std::vector<std::string> UnpublishedRefundPeriods(const RateTable& rows);
std::vector<std::string> UnpublishedUnderpaymentPeriods(const std::vector<SourceRow>& rows);
std::vector<std::string> UnpublishedUnderpaymentPeriods(const RateTable& rows);

// The Markdown page that lists every authority's table with its coverage,
// methods, its holes (the periods without a published underpayment rate, and
// those without a published refund rate), and published sources. `tables` holds one checked source
// per authority, in list order.
struct AuthorityTable {
    const Authority* authority = nullptr;
    std::vector<SourceRow> rows;
};
std::string CoverageMarkdown(const std::vector<AuthorityTable>& tables);

// The source file name of a table: "Il-st.tbl" -> "Il-st.csv".
std::string SourceFileName(std::string_view tableFile);

}  // namespace rw::ratesrc
