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

#include "casedata/dates.h"
#include "casedata/ratetable.h"

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

// The overpayment (refund) rate of a period for which the authority published
// none: a quiet NaN in the table's fOPRate. Any interest computed with it is
// NaN, so it can never pass for a figure; the engine refuses an overpayment
// period that needs it.
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
// previous row ends; an empty underpayment rate; a rate that is not a plain
// decimal, negative or above kMaxRate; an unknown method; an empty source or
// one marked "GAP:". An empty overpayment rate is not published and becomes
// kRateNotPublished. Every problem is reported, not only the first.
TableBuild BuildTable(const SourceFile& src);

// A schedule row the table can use: not a "GAP:" row, and its underpayment
// rate given. Its overpayment (refund) rate may be missing: the table then
// marks it as not published. A row without an underpayment rate cannot be
// used: every period of a table needs one.
bool IsUsableScheduleRow(const SourceRow& row);

// The rows [begin, end) a table keeps from a schedule: the run of usable rows
// that ends with the last usable row, reaching back to the nearest row that
// cannot be used (a "GAP:" row, or one without an underpayment rate). Rows
// before it are left out even when they are usable, so that the table never
// spans a period without a published underpayment rate. begin == end when no
// row is usable.
struct KeptRun {
    std::size_t begin = 0;
    std::size_t end = 0;
};
KeptRun LatestUsableRun(const std::vector<SourceRow>& rows);

struct ScheduleConversion {
    std::vector<SourceRow> rows;  // the kept rows, rates as fractions
    KeptRun kept;                 // which schedule rows they are
    std::vector<SourceProblem> problems;
    bool ok() const { return problems.empty() && !rows.empty(); }
};

// Converts a state schedule into a table source: checks that the schedule's
// periods (gaps included) follow each other day by day, keeps the latest
// usable run and turns its per cent figures into fractions. An overpayment
// rate left empty stays empty (not published). Methods and source texts are
// kept as written.
ScheduleConversion ConvertSchedule(const SourceFile& schedule);

// The stretches of a table's rows (consecutive rows merged) whose overpayment
// rate was not published, as "mm/dd/yyyy to mm/dd/yyyy" texts, oldest first.
std::vector<std::string> UnpublishedRefundPeriods(const std::vector<SourceRow>& rows);
std::vector<std::string> UnpublishedRefundPeriods(const RateTable& rows);

// The Markdown page that lists every authority's table with its coverage,
// methods, the periods without a published refund rate, and published
// sources. `tables` holds one checked source per authority, in list order.
struct AuthorityTable {
    const Authority* authority = nullptr;
    std::vector<SourceRow> rows;
};
std::string CoverageMarkdown(const std::vector<AuthorityTable>& tables);

// The source file name of a table: "Il-st.tbl" -> "Il-st.csv".
std::string SourceFileName(std::string_view tableFile);

}  // namespace rw::ratesrc
