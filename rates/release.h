#pragma once
// A release of the rates: a folder holding the rate tables, the sources they
// were built from (rates-src/), and one small release file that says what the
// release is: its name and description, the date through which its federal
// rates are verified and the later date through which they are estimated
// (each with its spelled-out form), and the failure-to-file minimum amounts
// by year. Tables, dates and amounts change together because they travel in
// one folder.
//
// The installed release lies in the installation folder. A later release
// can be dropped into the user's data folder (rates/ under the per-user
// folder) without reinstalling: it is used when its rates are verified
// through a later date than the installed one's and it is complete.

#include "base/dates.h"
#include "base/money.h"
#include "base/paths.h"
#include "rates/ratetable.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace rw {

// The program's version, shown in the About box. It is also the tag the case
// file carries: it names the file layout, not the rates, and stays as it is
// while releases of the rates come and go.
inline constexpr std::string_view kProgramVersion = "Qrat2018Q1.10";

// The minimum failure-to-file addition for a return filed more than 60 days
// late applies by the calendar year of the due date: each row from its first
// year until the next row's, the last one for every later year.
struct FtfMinimum {
    int firstYear = 0;
    Money amount;
    std::string source;  // where the amount was published

    friend bool operator==(const FtfMinimum&, const FtfMinimum&) = default;
};

struct FtfMinimumSchedule {
    std::vector<FtfMinimum> rows;  // first years strictly increasing

    // The amount for a return due in `dueYear`; nothing for a year before the
    // first row (or an empty schedule).
    std::optional<Money> forDueYear(int dueYear) const;

    friend bool operator==(const FtfMinimumSchedule&, const FtfMinimumSchedule&) = default;
};

// One minimum as its three fields are written, checked against the rows
// before it: a four-digit year after the last one's, an amount in dollars and
// cents above 0, a source (blanks around each field are dropped). Nothing,
// with the reason in `why`, when it cannot be taken.
std::optional<FtfMinimum> ReadFtfMinimum(std::string_view year, std::string_view amount,
                                         std::string_view source, const FtfMinimumSchedule& before,
                                         std::string& why);

// What a release file records of one of its tables, so that a table changed,
// cut short or swapped after the release was written is never used.
struct TableRecord {
    std::string file;  // "fed.tbl"
    std::int32_t rows = 0;
    Date first = NoDate;  // the first row's dtFrom
    Date last = NoDate;  // the last row's dtThru
    std::uint32_t crc32 = 0;  // of the whole table file

    friend bool operator==(const TableRecord&, const TableRecord&) = default;
};
// The record of a table file's bytes, decoded as `rows`.
TableRecord RecordTable(std::string_view file, std::span<const char> bytes, const RateTable& rows);

struct ReleaseInfo {
    std::string name;  // "Qrat2026Q2"
    std::string description;  // "2026, 2nd Quarter": the window title and the About box
    Date verifiedThrough = NoDate;
    std::string verifiedThroughText;  // "June 30, 2026"
    Date estimatedThrough = NoDate;
    std::string estimatedThroughText;  // "December 31, 2026"
    FtfMinimumSchedule ftfMinimums;
    std::vector<TableRecord> tables;  // in the authorities' list order

    // False for the empty value a release file that cannot be read leaves.
    bool loaded() const { return !verifiedThrough.isNoDate(); }

    friend bool operator==(const ReleaseInfo&, const ReleaseInfo&) = default;
};

// Reads a release file: "key=value" lines (name, description,
// verified_through, verified_through_text, estimated_through,
// estimated_through_text, one "ftf_minimum=YEAR,AMOUNT,SOURCE" line per
// row, oldest first, and one "table=FILE,ROWS,FIRST,LAST,CRC32" line per
// table), then last "file_crc32=CRC32", the checksum of every byte before
// that line; '#' lines are comments. Every key must be given, the dates must
// be mm/dd/yyyy of the years 1800 to 2199 with estimated_through not before
// verified_through, the minimum rows must begin in increasing years with
// positive amounts and a source, and the checksum must match: a file cut
// short or changed by hand is refused. On any problem `out` is left empty,
// the function returns false and `problem` says what is wrong, naming the
// file and the line.
bool ReadReleaseInfo(const std::filesystem::path& file, ReleaseInfo& out,
                     std::string* problem = nullptr);
bool ParseReleaseInfo(std::string_view text, std::string_view fileName, ReleaseInfo& out,
                      std::string* problem);

// The release file's text for info (the form ReadReleaseInfo reads back),
// after `comment` as '#' lines, and sealed with its checksum.
std::string FormatReleaseInfo(const ReleaseInfo& info, std::string_view comment = {});

// Checks a release folder: its release file reads, every authority's table is
// there, reads, and is the table the release file records (its rows, first
// and last date and checksum), and the federal table reaches the
// estimated-through date. Empty when the folder can be used (info filled);
// otherwise the problem, naming the file.
std::string CheckReleaseFolder(const std::filesystem::path& folder, ReleaseInfo& info);

// Which release the program uses.
struct ReleaseInUse {
    ReleaseInfo info;  // empty when no usable release was found
    std::filesystem::path folder;  // where its tables are: the installation folder or the user's
    // Said to the user once: a release in the user's folder that was refused,
    // or an installed release that cannot be read.
    std::vector<std::string> warnings;
    // Not said, but shown by "release show": a user release that is not later
    // than the installed one.
    std::vector<std::string> notes;
};

// The installed release, or the user's when it is verified through a later
// date and passes CheckReleaseFolder. A user's release that is not later is
// not checked further: it is not used either way.
ReleaseInUse ChooseRelease(const Paths& paths);

// The title of the message that carries ReleaseInUse::warnings.
inline constexpr std::string_view kReleaseWarningTitle = "Interest Rate Release";

}  // namespace rw
