#pragma once
// Taxing authorities and their rate tables. A rate table file (".tbl") holds
// the marker "NOTVB3", a 32-bit row count and that many 29-byte rows, oldest
// first, each one rate period with its underpayment and overpayment rates and
// its method (simple or daily compounding).

#include "base/dates.h"
#include "base/messages.h"
#include "base/paths.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace rw {

// A rate the authority did not publish for a row's period is a quiet NaN:
// fOPRate alone (no refund rate), or both rates (a hole in the table, a
// period without any published rate). A NaN is unequal to itself, so rows
// that may hold one are compared by their encoded bytes, not with ==.
struct RateRow {
    Date dtFrom;
    Date dtThru;
    float fUPRate = 0.0f;
    float fOPRate = 0.0f;
    std::array<char, 4> reserved{};
    char sCalcMethod = 'C';  // 'S' simple interest; anything else daily compounding

    bool compounds() const { return sCalcMethod != 'S'; }
    friend bool operator==(const RateRow&, const RateRow&) = default;
};
inline constexpr std::size_t kRateRowSize = 29;

using RateTable = std::vector<RateRow>;

enum class AuthorityNotice { None, Illinois, Massachusetts };

struct Authority {
    std::string_view name;  // as the Initial Inputs list shows it
    std::string_view code;  // four characters, blanks included
    std::string_view file;  // table file name, mixed case kept
    AuthorityNotice notice;
};

// The 30 authorities in list order; position 0 is "Federal".
std::span<const Authority> Authorities();
// List position of a code (compared exactly, blanks included), or -1.
int AuthorityPosition(std::string_view code);
// The authority of a code; any code not listed (an empty one too) is Federal.
const Authority& AuthorityForCode(std::string_view code);

std::string_view IllinoisNotice();
std::string_view MassachusettsNotice();

std::vector<char> EncodeRateTable(const RateTable& rows);

// The most rows a table can hold: one per day of the years 1800 to 2199.
inline constexpr std::size_t kMaxRateRows = 146097;
inline constexpr std::size_t kMaxRateTableSize = 10 + kMaxRateRows * kRateRowSize;

struct RateTableReadResult {
    enum class Status { Ok, NotFound, BadMarker, Damaged };
    Status status = Status::Ok;
    RateTable rows;
    std::string detail;
    std::int16_t errNumber = 0;  // Damaged: the error it amounts to
};
// A table is damaged when it is shorter than its row count says, holds no
// rows, or a row's dates are out of order or not days of the years 1800 to
// 2199 (the detail names the row and the field).
RateTableReadResult DecodeRateTable(const std::vector<char>& bytes);
// What is wrong with a table that did not read, to follow its file name:
// "does not exist", "is not a rate table (...)", "is damaged: ..."; empty for Ok.
std::string RateTableProblem(const RateTableReadResult& r);
RateTableReadResult ReadRateTableFile(const std::filesystem::path& path);

// Loads the table of the authority `code` into rates, with the authority's
// notice and the missing-file and marker messages; on those failures rates
// keeps its rows. A file shorter than its row count says is a fault
// (62, "OpenRates"). Returns true when rates was replaced.
bool OpenRates(std::string_view code, const Paths& paths, Messages& msgs, RateTable& rates);

}  // namespace rw
