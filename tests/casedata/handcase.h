#pragma once
// Case file images built byte by byte, without the program's own writer, each
// field appended in its place, little-endian, with a value of its own (from its
// position in the record and a seed), so that a field read or written in the
// wrong place shows. No test framework here.

#include "casedata/caserecord.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rwtest {

class HandBytes {
public:
    HandBytes& raw(std::string_view s) { return append({s.begin(), s.end()}); }
    // s padded with `pad` (or cut) to width.
    HandBytes& text(std::string_view s, std::size_t width, char pad = ' ')
    {
        for (std::size_t i = 0; i < width; ++i)
            bytes.push_back(i < s.size() ? s[i] : pad);
        return *this;
    }
    HandBytes& le(std::uint64_t v, int n)
    {
        for (int i = 0; i < n; ++i)
            bytes.push_back(static_cast<char>((v >> (8 * i)) & 0xFF));
        return *this;
    }
    HandBytes& i16(std::int16_t v) { return le(static_cast<std::uint16_t>(v), 2); }
    HandBytes& i32(std::int32_t v) { return le(static_cast<std::uint32_t>(v), 4); }
    HandBytes& i64(std::int64_t v) { return le(static_cast<std::uint64_t>(v), 8); }
    HandBytes& f32(float v) { return le(std::bit_cast<std::uint32_t>(v), 4); }
    HandBytes& f64(double v) { return le(std::bit_cast<std::uint64_t>(v), 8); }
    HandBytes& append(const std::vector<char>& more)
    {
        bytes.insert(bytes.end(), more.begin(), more.end());
        return *this;
    }
    std::vector<char> bytes;
};

// The three layouts of the record part, by the size they give it.
enum class HandLayout { L482, L484, L488 };

// The value of the field at position k (1-based in record order; the points'
// fields count from 100 for tlStart and 200 for tlStop, the list records' from
// 301, 401 and 501).
inline std::string HandText(int k, int seed, std::size_t n)
{
    std::string s;
    for (std::size_t i = 0; i < n; ++i)
        s += static_cast<char>('A' + (k + seed + static_cast<int>(i)) % 26);
    return s;
}
inline double HandDate(int k, int seed)
{
    return 40000.0 + k * 10 + seed;
}
inline std::int16_t HandInt(int k, int seed)
{
    return static_cast<std::int16_t>(k * 3 + seed);
}
inline std::int64_t HandMoney(int k, int seed)
{
    return k * 1000003LL + seed;
}
inline float HandSingle(int k, int seed)
{
    return static_cast<float>(k + seed) / 8.0f;
}

struct HandCounts {
    std::int16_t pmts = 0, charges = 0, deposits = 0;
};

inline void HandPoint(HandBytes& b, int base, int seed)
{
    b.text(HandText(base + 1, seed, 12), 12)
        .text(HandText(base + 2, seed, 16), 16)
        .text(HandText(base + 3, seed, 4), 4);
    b.f64(HandDate(base + 4, seed)).i64(HandMoney(base + 5, seed)).i64(HandMoney(base + 6, seed));
    b.i64(HandMoney(base + 7, seed));
}

// The record part of a case file of the given layout.
inline std::vector<char> HandInitRecord(HandLayout layout, int seed, HandCounts counts)
{
    HandBytes b;
    b.text(HandText(1, seed, 52), 52)
        .text(HandText(2, seed, 52), 52)
        .f64(HandDate(3, seed))
        .i16(HandInt(4, seed));
    if (layout != HandLayout::L482)
        b.i16(HandInt(5, seed));
    b.i16(HandInt(6, seed)).i16(HandInt(7, seed)).i16(HandInt(8, seed));
    b.i16(counts.pmts).i16(counts.charges).i16(counts.deposits);
    HandPoint(b, 100, seed);
    HandPoint(b, 200, seed);
    for (int k = 14; k <= 25; ++k)
        b.i16(HandInt(k, seed));
    b.f64(HandDate(26, seed))
        .i16(HandInt(27, seed))
        .f64(HandDate(28, seed))
        .f64(HandDate(29, seed));
    b.i16(HandInt(30, seed))
        .f64(HandDate(31, seed))
        .f64(HandDate(32, seed))
        .f64(HandDate(33, seed));
    b.i64(HandMoney(34, seed))
        .f64(HandDate(35, seed))
        .i64(HandMoney(36, seed))
        .i64(HandMoney(37, seed));
    b.f64(HandDate(38, seed))
        .i64(HandMoney(39, seed))
        .f32(HandSingle(40, seed))
        .f64(HandDate(41, seed));
    b.i64(HandMoney(42, seed));
    if (layout == HandLayout::L488)
        b.f32(HandSingle(43, seed));
    b.i64(HandMoney(44, seed))
        .f64(HandDate(45, seed))
        .f32(HandSingle(46, seed))
        .f64(HandDate(47, seed));
    b.i64(HandMoney(48, seed))
        .f64(HandDate(49, seed))
        .i64(HandMoney(50, seed))
        .f64(HandDate(51, seed));
    b.f64(HandDate(52, seed)).f64(HandDate(53, seed)).i16(HandInt(54, seed)).i16(HandInt(55, seed));
    b.text(HandText(56, seed, 4), 4);
    return b.bytes;
}

// List records: payment (57 bytes), other charge (56), payroll deposit (42).
inline std::vector<char> HandPayment(int seed)
{
    HandBytes b;
    b.text(HandText(301, seed, 16), 16).f64(HandDate(302, seed)).i64(HandMoney(303, seed));
    b.i64(HandMoney(304, seed))
        .i64(HandMoney(305, seed))
        .i64(HandMoney(306, seed))
        .text(seed % 2 ? "I" : "T", 1);
    return b.bytes;
}
inline std::vector<char> HandCharge(int seed)
{
    HandBytes b;
    b.text(HandText(401, seed, 16), 16).f64(HandDate(402, seed)).f64(HandDate(403, seed));
    return b.i64(HandMoney(404, seed)).i64(HandMoney(405, seed)).i64(HandMoney(406, seed)).bytes;
}
inline std::vector<char> HandDeposit(int seed)
{
    HandBytes b;
    b.f64(HandDate(501, seed))
        .f64(HandDate(502, seed))
        .i64(HandMoney(503, seed))
        .i16(HandInt(504, seed));
    return b.f64(HandDate(505, seed)).f64(HandDate(506, seed)).bytes;
}

// A whole case file: marker, tag (padded with blanks to 20), record, lists.
inline std::vector<char> HandCaseFile(std::string_view tag, HandLayout layout, int seed,
                                      HandCounts counts)
{
    HandBytes b;
    b.raw("NOTVB3").text(tag, 20).append(HandInitRecord(layout, seed, counts));
    for (int i = 0; i < counts.pmts; ++i)
        b.append(HandPayment(seed + i));
    for (int i = 0; i < counts.charges; ++i)
        b.append(HandCharge(seed + i));
    for (int i = 0; i < counts.deposits; ++i)
        b.append(HandDeposit(seed + i));
    return b.bytes;
}

// What the program writes for a hand-made file of any layout: the tag of this
// release, the fields an older record lacks put in their places (bAutoArrange
// 0 after bPayroll, fAccRelRate 0.2 after cAccRelAmt) and the reserved field
// written as 0.
inline std::vector<char> HandAsCurrent(std::vector<char> file, HandLayout layout)
{
    constexpr long R = 26;  // the record starts after the marker and the tag
    const std::vector<char> tag = HandBytes().text("Qrat2018Q1.10", 20).bytes;
    std::copy(tag.begin(), tag.end(), file.begin() + 6);
    if (layout == HandLayout::L482)
        file.insert(file.begin() + R + 114, 2, '\0');
    if (layout != HandLayout::L488) {
        const std::vector<char> rate = HandBytes().f32(0.2f).bytes;
        file.insert(file.begin() + R + 400, rate.begin(), rate.end());
    }
    file[R + 480] = file[R + 481] = 0;
    return file;
}

}  // namespace rwtest
