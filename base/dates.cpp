#include "base/dates.h"

#include "base/numtext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <ostream>

namespace rw {

namespace {
// The run-time's date range: 1 January 100 to 31 December 9999.
const double kFirstValid = static_cast<double>(DaysFromCivil(100, 1, 1) - kDayZeroFromUnix);
const double kLastValid = static_cast<double>(DaysFromCivil(9999, 12, 31) - kDayZeroFromUnix);

std::string two(int n)
{
    char b[8];
    std::snprintf(b, sizeof b, "%02d", n);
    return b;
}

std::string four(int n)
{
    char b[16];
    std::snprintf(b, sizeof b, "%04d", n);
    return b;
}

bool parseInt(std::string_view s, int& out)
{
    if (s.empty())
        return false;
    for (char c : s)
        if (c < '0' || c > '9')
            return false;
    auto r = std::from_chars(s.data(), s.data() + s.size(), out);
    return r.ec == std::errc() && r.ptr == s.data() + s.size();
}

}  // namespace

CivilDate Date::civil() const
{
    return CivilFromDays(static_cast<std::int64_t>(std::floor(d_)) + kDayZeroFromUnix);
}

bool Date::isValid() const
{
    return std::isfinite(d_) && d_ >= kFirstValid && d_ < kLastValid + 1.0;
}

bool IsReadableDate(Date d)
{
    const double n = d.dayNumber();
    return d.isNoDate()
           || (n >= kFirstReadableDate.dayNumber() && n < kLastReadableDate.dayNumber() + 1.0);
}

std::string ReadableDatesText()
{
    return "from " + FormatMMDDYYYY(kFirstReadableDate) + " to "
           + FormatMMDDYYYY(kLastReadableDate);
}

bool IsLeapYear(int y)
{
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int DaysInMonth(int y, int m)
{
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (m == 2 && IsLeapYear(y))
        return 29;
    return kDays[m - 1];
}

Date AddMonths(Date d, int months)
{
    const CivilDate c = d.civil();
    const int total = c.year * 12 + (c.month - 1) + months;
    const int y = total >= 0 ? total / 12 : (total - 11) / 12;
    const int m = total - y * 12 + 1;
    const int day = std::min(c.day, DaysInMonth(y, m));
    const double frac = d.dayNumber() - std::floor(d.dayNumber());
    return Date(Date::fromCivil(y, m, day).dayNumber() + frac);
}

std::ostream& operator<<(std::ostream& os, Date d)
{
    return os << FormatMMDDYYYY(d) << " (day " << d.dayNumber() << ")";
}

std::string FormatMMDDYYYY(Date d)
{
    const CivilDate c = d.civil();
    return two(c.month) + "/" + two(c.day) + "/" + four(c.year);
}

std::string FormatShortDate(Date d)
{
    const CivilDate c = d.civil();
    return std::to_string(c.month) + "/" + std::to_string(c.day) + "/" + four(c.year);
}

std::string FormatMMDDYYYYDashed(Date d)
{
    const CivilDate c = d.civil();
    return two(c.month) + "-" + two(c.day) + "-" + four(c.year);
}

std::string FormatYYYYMMDD(Date d)
{
    const CivilDate c = d.civil();
    return four(c.year) + two(c.month) + two(c.day);
}

std::optional<Date> ParseUserDate(std::string_view text)
{
    text = TrimBlanks(text);
    const auto s1 = text.find('/');
    if (s1 == std::string_view::npos)
        return std::nullopt;
    const auto s2 = text.find('/', s1 + 1);
    if (s2 == std::string_view::npos || text.find('/', s2 + 1) != std::string_view::npos)
        return std::nullopt;
    const std::string_view ms = text.substr(0, s1);
    const std::string_view ds = text.substr(s1 + 1, s2 - s1 - 1);
    const std::string_view ys = text.substr(s2 + 1);
    if (ms.size() > 2 || ds.size() > 2 || !(ys.size() == 2 || ys.size() == 4))
        return std::nullopt;
    int m = 0, d = 0, y = 0;
    if (!parseInt(ms, m) || !parseInt(ds, d) || !parseInt(ys, y))
        return std::nullopt;
    if (ys.size() == 2)
        y += y < 30 ? 2000 : 1900;
    if (y < 100 || m < 1 || m > 12 || d < 1 || d > DaysInMonth(y, m))
        return std::nullopt;
    return Date::fromCivil(y, m, d);
}

std::optional<Date> ParseMMDDYYYY(std::string_view text)
{
    if (text.size() != 10 || text[2] != '/' || text[5] != '/')
        return std::nullopt;
    int m = 0, d = 0, y = 0;
    if (!parseInt(text.substr(0, 2), m) || !parseInt(text.substr(3, 2), d)
        || !parseInt(text.substr(6, 4), y))
        return std::nullopt;
    if (y < kFirstReadableYear || y > kLastReadableYear || m < 1 || m > 12 || d < 1
        || d > DaysInMonth(y, m))
        return std::nullopt;
    return Date::fromCivil(y, m, d);
}

}  // namespace rw
