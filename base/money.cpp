#include "base/money.h"

#include "base/fault.h"
#include "base/numtext.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>
#include <ostream>

namespace rw {

__extension__ typedef __int128 i128;
__extension__ typedef unsigned __int128 u128;

namespace {

constexpr const char* kProc = "Money";

std::int64_t checked(i128 v)
{
    if (v > std::numeric_limits<std::int64_t>::max()
        || v < std::numeric_limits<std::int64_t>::min())
        ThrowFault(kErrOverflow, kProc, "amount out of range");
    return static_cast<std::int64_t>(v);
}

// Rounds |num| / 2^shift to an integer, halves to even (shift >= 0).
u128 shiftRoundHalfEven(u128 num, int shift)
{
    if (shift == 0)
        return num;
    if (shift >= 127)
        return 0;
    const u128 one = 1;
    u128 q = num >> shift;
    u128 rem = num & ((one << shift) - 1);
    u128 half = one << (shift - 1);
    if (rem > half || (rem == half && (q & 1)))
        ++q;
    return q;
}

}  // namespace

Money Money::fromCents(std::int64_t cents)
{
    return Money(checked(static_cast<i128>(cents) * 100));
}

Money Money::fromDouble(double d)
{
    if (!std::isfinite(d))
        ThrowFault(kErrOverflow, kProc, "amount is not a finite number");
    if (d == 0.0)
        return Money();
    // d = mant * 2^exp exactly, with mant a 53-bit integer.
    int exp = 0;
    double frac = std::frexp(std::fabs(d), &exp);  // frac in [0.5, 1)
    auto mant = static_cast<std::uint64_t>(std::ldexp(frac, 53));  // exact
    exp -= 53;
    // value * 10000 = mant * 10000 * 2^exp, exact in 128 bits.
    u128 scaled = static_cast<u128>(mant) * 10000u;
    u128 mag;
    if (exp >= 0) {
        if (exp > 60)
            ThrowFault(kErrOverflow, kProc, "amount out of range");
        mag = scaled << exp;
    } else {
        mag = shiftRoundHalfEven(scaled, -exp);
    }
    if (mag > static_cast<u128>(std::numeric_limits<std::int64_t>::max()))
        ThrowFault(kErrOverflow, kProc, "amount out of range");
    auto v = static_cast<std::int64_t>(mag);
    return Money(d < 0 ? -v : v);
}

std::optional<Money> Money::parse(std::string_view text)
{
    text = TrimBlanks(text);
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    if (text.empty())
        return std::nullopt;
    // The most negative amount has one unit more than the most positive.
    const i128 limit
        = static_cast<i128>(std::numeric_limits<std::int64_t>::max()) + (negative ? 1 : 0);
    i128 units = 0;
    int decimals = 0;
    bool seenPoint = false;
    bool seenDigit = false;
    char prev = 0;
    for (char ch : text) {
        if (ch >= '0' && ch <= '9') {
            if (seenPoint) {
                if (++decimals > 4)
                    return std::nullopt;
            }
            units = units * 10 + (ch - '0');
            if (units > limit)
                return std::nullopt;
            seenDigit = true;
        } else if (ch == '.') {
            if (seenPoint)
                return std::nullopt;
            seenPoint = true;
        } else if (ch == ',') {
            // A separator sits between digits of the whole part.
            if (seenPoint || !(prev >= '0' && prev <= '9'))
                return std::nullopt;
        } else {
            return std::nullopt;
        }
        prev = ch;
    }
    if (!seenDigit || prev == ',')
        return std::nullopt;
    for (int i = decimals; i < 4; ++i)
        units *= 10;
    if (units > limit)
        return std::nullopt;
    return Money(static_cast<std::int64_t>(negative ? -units : units));
}

Money Money::operator-() const
{
    return Money(checked(-static_cast<i128>(v_)));
}

Money& Money::operator+=(Money o)
{
    v_ = checked(static_cast<i128>(v_) + o.v_);
    return *this;
}

Money& Money::operator-=(Money o)
{
    v_ = checked(static_cast<i128>(v_) - o.v_);
    return *this;
}

Money MulDouble(Money amount, double factor)
{
    return Money::fromDouble(amount.toDouble() * factor);
}

Money RoundCurrency(Money amount, int digits)
{
    if (digits < 0 || digits > 4)
        ThrowFault(kErrInvalidCall, "RoundCurrency", "digits must be 0 to 4");
    std::int64_t div = 1;
    for (int i = digits; i < 4; ++i)
        div *= 10;
    const std::int64_t v = amount.raw();
    const bool neg = v < 0;
    const u128 mag = neg ? static_cast<u128>(-static_cast<i128>(v)) : static_cast<u128>(v);
    u128 q = mag / div;
    const u128 r = mag % div;
    const u128 twice = r * 2;
    if (twice > static_cast<u128>(div) || (twice == static_cast<u128>(div) && (q & 1)))
        ++q;
    const i128 out = static_cast<i128>(q * div);
    return Money::fromRaw(checked(neg ? -out : out));
}

// ---- Text forms --------------------------------------------------------------

namespace {

// Magnitude of the amount in cents, rounded half away from zero.
u128 displayCents(Money m)
{
    const i128 v = m.raw();
    u128 mag = static_cast<u128>(v < 0 ? -v : v);
    return (mag + 50) / 100;
}

}  // namespace

std::string FormatMoney(Money amount)
{
    const u128 cents = displayCents(amount);
    std::string s = GroupThousands(static_cast<std::uint64_t>(cents / 100));
    const auto frac = static_cast<unsigned>(cents % 100);
    s += '.';
    s += static_cast<char>('0' + frac / 10);
    s += static_cast<char>('0' + frac % 10);
    if (amount.raw() < 0 && cents != 0)
        s.insert(s.begin(), '-');
    return s;
}

std::string PlainMoney(Money amount)
{
    std::string s = ExactMoney(amount);
    while (s.back() == '0')
        s.pop_back();
    if (s.back() == '.')
        s.pop_back();
    if (s == "-0")
        s = "0";
    return s;
}

std::string ExactMoney(Money amount)
{
    const i128 v = amount.raw();
    u128 mag = static_cast<u128>(v < 0 ? -v : v);
    std::string whole = std::to_string(static_cast<std::uint64_t>(mag / 10000));
    auto frac = static_cast<unsigned>(mag % 10000);
    char buf[6];
    std::snprintf(buf, sizeof buf, "%04u", frac);
    std::string s = (v < 0 ? "-" : "") + whole + "." + buf;
    return s;
}

std::string FormatWholeDollars(Money amount, bool withDollarSign)
{
    const i128 v = amount.raw();
    u128 mag = static_cast<u128>(v < 0 ? -v : v);
    const auto dollars = static_cast<std::uint64_t>((mag + 5000) / 10000);
    std::string s = GroupThousands(dollars);
    if (withDollarSign)
        s.insert(s.begin(), '$');
    if (v < 0 && dollars != 0)
        s.insert(s.begin(), '-');
    return s;
}

std::string FormatMoneyField(Money amount)
{
    if (amount.raw() % 100 == 0)
        return FormatMoney(amount);
    // Keep every decimal the amount has: whole part grouped, then 3 or 4 decimals.
    const i128 v = amount.raw();
    const u128 mag = static_cast<u128>(v < 0 ? -v : v);
    std::string s = GroupThousands(static_cast<std::uint64_t>(mag / 10000));
    char buf[6];
    std::snprintf(buf, sizeof buf, "%04u", static_cast<unsigned>(mag % 10000));
    std::string frac = buf;
    if (frac.back() == '0')
        frac.pop_back();
    s += "." + frac;
    if (v < 0)
        s.insert(s.begin(), '-');
    return s;
}

std::optional<Money> ParseMoneyField(std::string_view text)
{
    text = TrimBlanks(text);
    if (text.empty())
        return Money();
    std::string t(text);
    if (const auto dollar = t.find('$');
        dollar != std::string::npos && (dollar == 0 || (dollar == 1 && t[0] == '-')))
        t.erase(dollar, 1);
    return Money::parse(t);
}

std::ostream& operator<<(std::ostream& os, Money m)
{
    return os << ExactMoney(m);
}

std::string RtJustAmt(Money amount)
{
    return RightAlign(FormatMoney(amount), 14);
}

}  // namespace rw
