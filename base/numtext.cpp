#include "base/numtext.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace rw {

std::string GroupThousands(std::uint64_t n)
{
    std::string digits = std::to_string(n);
    std::string out;
    out.reserve(digits.size() + digits.size() / 3);
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i != 0 && (digits.size() - i) % 3 == 0)
            out += ',';
        out += digits[i];
    }
    return out;
}

std::string RightAlign(std::string_view text, std::size_t width)
{
    if (text.size() >= width)
        return std::string(text.substr(0, width));
    return std::string(width - text.size(), ' ') + std::string(text);
}

std::string LeftAlign(std::string_view text, std::size_t width)
{
    if (text.size() >= width)
        return std::string(text.substr(0, width));
    return std::string(text) + std::string(width - text.size(), ' ');
}

std::string FormatFixed(double x, int decimals, int minIntDigits, bool thousands)
{
    if (!std::isfinite(x))
        return "0";
    // Decimal digits of x to 15 significant places: digits d1..d15, exponent e,
    // value = 0.d1d2...d15 x 10^e.
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.14e", std::fabs(x));
    // buf: "d.dddddddddddddde+XX"
    std::string mant;
    mant += buf[0];
    mant.append(buf + 2, 14);
    int e10 = std::atoi(std::strchr(buf, 'e') + 1) + 1;  // value = 0.mant * 10^e10
    const bool negative = std::signbit(x) && x != 0.0;

    // Integer digits and fraction digits as decimal strings.
    std::string intPart, fracPart;
    if (e10 > 0) {
        if (e10 >= static_cast<int>(mant.size())) {
            intPart = mant + std::string(static_cast<std::size_t>(e10) - mant.size(), '0');
        } else {
            intPart = mant.substr(0, static_cast<std::size_t>(e10));
            fracPart = mant.substr(static_cast<std::size_t>(e10));
        }
    } else {
        fracPart = std::string(static_cast<std::size_t>(-e10), '0') + mant;
    }
    if (intPart.empty())
        intPart = "0";
    // Round half away from zero at `decimals`.
    std::string keep = fracPart.substr(
        0, std::min<std::size_t>(fracPart.size(), static_cast<std::size_t>(decimals)));
    keep.resize(static_cast<std::size_t>(decimals), '0');
    bool roundUp = fracPart.size() > static_cast<std::size_t>(decimals)
                   && fracPart[static_cast<std::size_t>(decimals)] >= '5';
    std::string all = intPart + keep;
    if (roundUp) {
        int i = static_cast<int>(all.size()) - 1;
        for (; i >= 0; --i) {
            if (all[static_cast<std::size_t>(i)] == '9') {
                all[static_cast<std::size_t>(i)] = '0';
            } else {
                ++all[static_cast<std::size_t>(i)];
                break;
            }
        }
        if (i < 0)
            all.insert(all.begin(), '1');
    }
    std::string ip = all.substr(0, all.size() - static_cast<std::size_t>(decimals));
    std::string fp = all.substr(all.size() - static_cast<std::size_t>(decimals));
    // Strip leading zeros of the whole part down to minIntDigits.
    std::size_t firstNonZero = ip.find_first_not_of('0');
    if (firstNonZero == std::string::npos)
        ip.clear();
    else
        ip = ip.substr(firstNonZero);
    if (ip.size() < static_cast<std::size_t>(minIntDigits))
        ip = std::string(static_cast<std::size_t>(minIntDigits) - ip.size(), '0') + ip;
    if (thousands && !ip.empty())
        ip = GroupThousands(std::strtoull(ip.c_str(), nullptr, 10));
    bool allZero = (ip.find_first_not_of('0') == std::string::npos)
                   && (fp.find_first_not_of('0') == std::string::npos);
    std::string out = ip;
    if (decimals > 0)
        out += "." + fp;
    if (negative && !allZero)
        out.insert(out.begin(), '-');
    return out;
}

std::string FormatRateDotHash0(double x)
{
    return FormatFixed(x, 2, 0);
}

std::string FormatRateAsHeld(float rate, bool leadingZero)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, rate, std::chars_format::fixed);
    std::string s(buf, res.ptr);
    std::size_t point = s.find('.');
    if (point == std::string::npos) {
        point = s.size();
        s += '.';
    }
    while (s.size() - point - 1 < 2)
        s += '0';
    // No leading zero before the point: "0.125" -> ".125", "-0.5" -> "-.50".
    const std::size_t digits = s[0] == '-' ? 1 : 0;
    if (!leadingZero && point == digits + 1 && s[digits] == '0')
        s.erase(digits, 1);
    return s;
}

std::string PlainFloat(float f)
{
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, f);
    std::string s(buf, res.ptr);
    return s;
}

std::string FormatCount(std::int64_t n, bool emptyForZero)
{
    if (n == 0 && emptyForZero)
        return {};
    std::string s = GroupThousands(static_cast<std::uint64_t>(n < 0 ? -n : n));
    if (n < 0)
        s.insert(s.begin(), '-');
    return s;
}

std::string Latin1ToUtf8(std::string_view latin1)
{
    std::string out;
    out.reserve(latin1.size());
    for (char ch : latin1) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 0x80) {
            out += ch;
        } else {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::string Utf8ToLatin1(std::string_view utf8)
{
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c < 0x80) {
            out += static_cast<char>(c);
            ++i;
            continue;
        }
        int len = (c & 0xE0) == 0xC0 ? 2 : (c & 0xF0) == 0xE0 ? 3 : (c & 0xF8) == 0xF0 ? 4 : 0;
        if (len == 0 || i + static_cast<std::size_t>(len) > utf8.size()) {
            out += '?';
            ++i;
            continue;
        }
        unsigned cp = c & (0x7Fu >> len);
        bool ok = true;
        for (int k = 1; k < len; ++k) {
            const auto cc = static_cast<unsigned char>(utf8[i + static_cast<std::size_t>(k)]);
            if ((cc & 0xC0) != 0x80) {
                ok = false;
                break;
            }
            cp = (cp << 6) | (cc & 0x3F);
        }
        if (!ok) {
            out += '?';
            ++i;
            continue;
        }
        out += cp <= 0xFF ? static_cast<char>(cp) : '?';
        i += static_cast<std::size_t>(len);
    }
    return out;
}

std::string_view TrimBlanks(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

std::string TrimRight(std::string_view text)
{
    std::size_t n = text.size();
    while (n > 0 && (text[n - 1] == ' ' || text[n - 1] == '\0'))
        --n;
    return std::string(text.substr(0, n));
}

}  // namespace rw
