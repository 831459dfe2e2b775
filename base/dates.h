#pragma once
// Dates are day numbers: the count of days since 30 December 1899 (day 0),
// held in a double as the case and rate files store them. The whole part is
// the calendar day; the days between two dates are the difference of their
// numbers. NoDate (-32767, 14 April 1810) marks a date the user has not given.
//
// Civil conversion uses integer arithmetic on the proleptic Gregorian
// calendar, valid far beyond the years 1800-2200 the program meets.

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace rw {

struct CivilDate {
    int year = 0;
    int month = 0;  // 1-12
    int day = 0;  // 1-31
    friend constexpr bool operator==(const CivilDate&, const CivilDate&) = default;
};

// Days from 1970-01-01 to y-m-d (Hinnant's days_from_civil).
constexpr std::int64_t DaysFromCivil(int y, int m, int d)
{
    y -= m <= 2 ? 1 : 0;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yoe = y - era * 400;
    const std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

constexpr CivilDate CivilFromDays(std::int64_t z)
{
    z += 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const std::int64_t doe = z - era * 146097;
    const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const std::int64_t y = yoe + era * 400;
    const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const std::int64_t mp = (5 * doy + 2) / 153;
    const std::int64_t d = doy - (153 * mp + 2) / 5 + 1;
    const std::int64_t m = mp < 10 ? mp + 3 : mp - 9;
    return CivilDate{static_cast<int>(y + (m <= 2 ? 1 : 0)), static_cast<int>(m),
                     static_cast<int>(d)};
}

// Day 0 of the program's numbering, 30 December 1899, counted from 1970-01-01.
inline constexpr std::int64_t kDayZeroFromUnix = DaysFromCivil(1899, 12, 30);
static_assert(kDayZeroFromUnix == -25569);
static_assert(DaysFromCivil(2000, 3, 1) - DaysFromCivil(2000, 2, 28) == 2);

class Date {
public:
    constexpr Date() = default;  // day 0, 30 December 1899
    constexpr explicit Date(double dayNumber)
        : d_(dayNumber)
    {
    }

    static constexpr Date fromCivil(int year, int month, int day)
    {
        return Date(static_cast<double>(DaysFromCivil(year, month, day) - kDayZeroFromUnix));
    }

    constexpr double dayNumber() const { return d_; }
    // The calendar day of the whole part of the day number.
    CivilDate civil() const;
    int year() const { return civil().year; }

    constexpr bool isNoDate() const { return d_ == -32767.0; }
    // A date the desktop run-time accepts (years 100 to 9999).
    bool isValid() const;
    // Given: a valid date other than NoDate.
    bool isGiven() const { return isValid() && !isNoDate(); }

    friend constexpr Date operator+(Date a, int days) { return Date(a.d_ + days); }
    friend constexpr Date operator-(Date a, int days) { return Date(a.d_ - days); }
    // Days from b to a.
    friend constexpr double operator-(Date a, Date b) { return a.d_ - b.d_; }
    friend constexpr bool operator==(Date a, Date b) = default;
    friend constexpr auto operator<=>(Date a, Date b) = default;

private:
    double d_ = 0.0;
};

inline constexpr Date NoDate{-32767.0};
static_assert(Date::fromCivil(1810, 4, 14) == NoDate);
static_assert(Date::fromCivil(1899, 12, 30).dayNumber() == 0.0);

// The days a date read from outside the program may name: case files, JSON
// cases, rate tables and release files hold NoDate or a day of the years 1800
// to 2199 (a fraction of a day included). A day number beyond them (NaN, a
// year 10000, minus a billion) would only ever give nonsense, so the readers
// refuse it and name the field.
inline constexpr int kFirstReadableYear = 1800;
inline constexpr int kLastReadableYear = 2199;
inline constexpr Date kFirstReadableDate = Date::fromCivil(kFirstReadableYear, 1, 1);
inline constexpr Date kLastReadableDate = Date::fromCivil(kLastReadableYear, 12, 31);
bool IsReadableDate(Date d);
// "from 01/01/1800 to 12/31/2199", for the readers' refusals.
std::string ReadableDatesText();

// "mm/dd/yyyy (day n)", for diagnostics and test output.
std::ostream& operator<<(std::ostream& os, Date d);

// d plus n calendar months; the day of the month is kept, or clamped to the
// last day of a shorter target month (1/31 + 1 month = 2/28 or 2/29).
Date AddMonths(Date d, int months);

bool IsLeapYear(int year);
int DaysInMonth(int year, int month);

// "mm/dd/yyyy" (04/05/2016): lists, grids and report rows.
std::string FormatMMDDYYYY(Date d);
// "m/d/yyyy" (4/5/2016): the short date form used in sentences and date fields.
std::string FormatShortDate(Date d);
// "mm-dd-yyyy" (the error log).
std::string FormatMMDDYYYYDashed(Date d);
// "yyyymmdd" (time line sort keys).
std::string FormatYYYYMMDD(Date d);

// What the user types: month/day/year with 1- or 2-digit month and day and a
// 4-digit year, or a 2-digit year (00-29 -> 20xx, 30-99 -> 19xx). Blanks around
// the text are ignored. Impossible dates (13/45/2016, 2/30/2017) give nothing.
std::optional<Date> ParseUserDate(std::string_view text);

// Exactly "mm/dd/yyyy" (two-digit month and day, four-digit year from 1800
// to 2199) and on the calendar: the form of the rate sources and the release
// file.
std::optional<Date> ParseMMDDYYYY(std::string_view text);

}  // namespace rw
