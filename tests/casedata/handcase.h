#pragma once
// Case file images built byte by byte, without the program's own writer: each
// field is appended in its place by hand, little-endian, so that a test can
// compare what the program reads and writes with an image made independently.
// Every field gets a value of its own (derived from its position in the
// record and a seed), which makes a field read from the wrong place visible.

#include "casedata/caserecord.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rwtest {

class HandBytes {
public:
    HandBytes& raw(std::string_view s)
    {
        bytes.insert(bytes.end(), s.begin(), s.end());
        return *this;
    }
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
// fields count from 100 for tlStart and 200 for tlStop).
inline std::string HandText(int k, int seed, std::size_t n)
{
    std::string s;
    for (std::size_t i = 0; i < n; ++i)
        s += static_cast<char>('A' + (k + seed + static_cast<int>(i)) % 26);
    return s;
}
inline double HandDate(int k, int seed) { return 40000.0 + k * 10 + seed; }
inline std::int16_t HandInt(int k, int seed) { return static_cast<std::int16_t>(k * 3 + seed); }
inline std::int64_t HandMoney(int k, int seed) { return k * 1000003LL + seed; }
inline float HandSingle(int k, int seed) { return static_cast<float>(k + seed) / 8.0f; }

struct HandCounts {
    std::int16_t pmts = 0, charges = 0, deposits = 0;
};

inline void HandPoint(HandBytes& b, int base, int seed)
{
    b.text(HandText(base + 1, seed, 12), 12)
        .text(HandText(base + 2, seed, 16), 16)
        .text(HandText(base + 3, seed, 4), 4)
        .f64(HandDate(base + 4, seed))
        .i64(HandMoney(base + 5, seed))
        .i64(HandMoney(base + 6, seed))
        .i64(HandMoney(base + 7, seed));
}

// The record part of a case file of the given layout.
inline std::vector<char> HandInitRecord(HandLayout layout, int seed, HandCounts counts)
{
    HandBytes b;
    b.text(HandText(1, seed, 52), 52).text(HandText(2, seed, 52), 52).f64(HandDate(3, seed)).i16(HandInt(4, seed));
    if (layout != HandLayout::L482)
        b.i16(HandInt(5, seed));
    b.i16(HandInt(6, seed)).i16(HandInt(7, seed)).i16(HandInt(8, seed));
    b.i16(counts.pmts).i16(counts.charges).i16(counts.deposits);
    HandPoint(b, 100, seed);
    HandPoint(b, 200, seed);
    for (int k = 14; k <= 25; ++k)
        b.i16(HandInt(k, seed));
    b.f64(HandDate(26, seed)).i16(HandInt(27, seed)).f64(HandDate(28, seed)).f64(HandDate(29, seed));
    b.i16(HandInt(30, seed)).f64(HandDate(31, seed)).f64(HandDate(32, seed)).f64(HandDate(33, seed));
    b.i64(HandMoney(34, seed)).f64(HandDate(35, seed)).i64(HandMoney(36, seed)).i64(HandMoney(37, seed));
    b.f64(HandDate(38, seed)).i64(HandMoney(39, seed)).f32(HandSingle(40, seed)).f64(HandDate(41, seed));
    b.i64(HandMoney(42, seed));
    if (layout == HandLayout::L488)
        b.f32(HandSingle(43, seed));
    b.i64(HandMoney(44, seed)).f64(HandDate(45, seed)).f32(HandSingle(46, seed)).f64(HandDate(47, seed));
    b.i64(HandMoney(48, seed)).f64(HandDate(49, seed)).i64(HandMoney(50, seed)).f64(HandDate(51, seed));
    b.f64(HandDate(52, seed)).f64(HandDate(53, seed)).i16(HandInt(54, seed)).i16(HandInt(55, seed));
    b.text(HandText(56, seed, 4), 4);
    return b.bytes;
}

inline void ExpectPointMatches(const rw::TLPoint& p, int base, int seed)
{
    EXPECT_EQ(p.sSortCode.str(), HandText(base + 1, seed, 12));
    EXPECT_EQ(p.sDesc.str(), HandText(base + 2, seed, 16));
    EXPECT_EQ(p.sCode.str(), HandText(base + 3, seed, 4));
    EXPECT_EQ(p.dtDate.dayNumber(), HandDate(base + 4, seed));
    EXPECT_EQ(p.cTax.raw(), HandMoney(base + 5, seed));
    EXPECT_EQ(p.cPen.raw(), HandMoney(base + 6, seed));
    EXPECT_EQ(p.cInt.raw(), HandMoney(base + 7, seed));
}

// Checks every field read from HandInitRecord; the fields a layout lacks
// come back as the conversions set them (bAutoArrange 0, fAccRelRate 0.2),
// and the reserved field is ignored (0).
inline void ExpectInitMatches(const rw::InitInputs& r, HandLayout layout, int seed, HandCounts counts)
{
    EXPECT_EQ(r.sName.str(), HandText(1, seed, 52));
    EXPECT_EQ(r.s2ndLine.str(), HandText(2, seed, 52));
    EXPECT_EQ(r.dtDue.dayNumber(), HandDate(3, seed));
    EXPECT_EQ(r.bPayroll, HandInt(4, seed));
    EXPECT_EQ(r.bAutoArrange, layout == HandLayout::L482 ? 0 : HandInt(5, seed));
    EXPECT_EQ(r.bOverpayment, HandInt(6, seed));
    EXPECT_EQ(r.bTaxMotivated, HandInt(7, seed));
    EXPECT_EQ(r.bAnyPenalties, HandInt(8, seed));
    EXPECT_EQ(r.nPmts, counts.pmts);
    EXPECT_EQ(r.nCharges, counts.charges);
    EXPECT_EQ(r.nDeposits, counts.deposits);
    ExpectPointMatches(r.tlStart, 100, seed);
    ExpectPointMatches(r.tlStop, 200, seed);
    EXPECT_EQ(r.bFtoFile, HandInt(14, seed));
    EXPECT_EQ(r.bFtoPay, HandInt(15, seed));
    EXPECT_EQ(r.bNegFlat, HandInt(16, seed));
    EXPECT_EQ(r.bNegTime, HandInt(17, seed));
    EXPECT_EQ(r.bSUP, HandInt(18, seed));
    EXPECT_EQ(r.bOtherPen, HandInt(19, seed));
    EXPECT_EQ(r.bAccRel, HandInt(20, seed));
    EXPECT_EQ(r.bOVal, HandInt(21, seed));
    EXPECT_EQ(r.b6651d1, HandInt(22, seed));
    EXPECT_EQ(r.bFraudFlat, HandInt(23, seed));
    EXPECT_EQ(r.bFraudTime, HandInt(24, seed));
    EXPECT_EQ(r.bCorpUPRate, HandInt(25, seed));
    EXPECT_EQ(r.dtCorpUPRateStart.dayNumber(), HandDate(26, seed));
    EXPECT_EQ(r.bCorpOPRate, HandInt(27, seed));
    EXPECT_EQ(r.dtCorpOPRateStart.dayNumber(), HandDate(28, seed));
    EXPECT_EQ(r.dtExtended.dayNumber(), HandDate(29, seed));
    EXPECT_EQ(r.nStopDays, HandInt(30, seed));
    EXPECT_EQ(r.dtFtoFileAssess.dayNumber(), HandDate(31, seed));
    EXPECT_EQ(r.dtFiled.dayNumber(), HandDate(32, seed));
    EXPECT_EQ(r.dtFtoPayAssess.dayNumber(), HandDate(33, seed));
    EXPECT_EQ(r.cAmtOnReturn.raw(), HandMoney(34, seed));
    EXPECT_EQ(r.dtNegFlatAssess.dayNumber(), HandDate(35, seed));
    EXPECT_EQ(r.cNegFlatAmt.raw(), HandMoney(36, seed));
    EXPECT_EQ(r.cNegTimeAmt.raw(), HandMoney(37, seed));
    EXPECT_EQ(r.dtNegTimeAssess.dayNumber(), HandDate(38, seed));
    EXPECT_EQ(r.cSUPAmt.raw(), HandMoney(39, seed));
    EXPECT_EQ(r.fSUPRate, HandSingle(40, seed));
    EXPECT_EQ(r.dtAssessSUP.dayNumber(), HandDate(41, seed));
    EXPECT_EQ(r.cAccRelAmt.raw(), HandMoney(42, seed));
    EXPECT_EQ(r.fAccRelRate, layout == HandLayout::L488 ? HandSingle(43, seed) : 0.2f);
    EXPECT_EQ(r.cOValAmt.raw(), HandMoney(44, seed));
    EXPECT_EQ(r.dtOValAssess.dayNumber(), HandDate(45, seed));
    EXPECT_EQ(r.fOValRate, HandSingle(46, seed));
    EXPECT_EQ(r.dt6651d1Start.dayNumber(), HandDate(47, seed));
    EXPECT_EQ(r.cFraudFlatAmt.raw(), HandMoney(48, seed));
    EXPECT_EQ(r.dtFraudFlatAssess.dayNumber(), HandDate(49, seed));
    EXPECT_EQ(r.cFraudTimeAmt.raw(), HandMoney(50, seed));
    EXPECT_EQ(r.dtFraudTimeAssess.dayNumber(), HandDate(51, seed));
    EXPECT_EQ(r.dtIntSuspend.dayNumber(), HandDate(52, seed));
    EXPECT_EQ(r.dtRestart.dayNumber(), HandDate(53, seed));
    EXPECT_EQ(r.nReserved, 0);
    EXPECT_EQ(r.bCorporate, HandInt(55, seed));
    EXPECT_EQ(r.sTaxAuth.str(), HandText(56, seed, 4));
}

// List records: payment (57 bytes), other charge (56), payroll deposit (42).
inline std::vector<char> HandPayment(int seed)
{
    HandBytes b;
    b.text(HandText(301, seed, 16), 16).f64(HandDate(302, seed)).i64(HandMoney(303, seed));
    b.i64(HandMoney(304, seed)).i64(HandMoney(305, seed)).i64(HandMoney(306, seed));
    b.text(seed % 2 ? "I" : "T", 1);
    return b.bytes;
}
inline void ExpectPaymentMatches(const rw::PaymentRec& p, int seed)
{
    EXPECT_EQ(p.sDesc.str(), HandText(301, seed, 16));
    EXPECT_EQ(p.dtPmt.dayNumber(), HandDate(302, seed));
    EXPECT_EQ(p.cAmount.raw(), HandMoney(303, seed));
    EXPECT_EQ(p.cToTax.raw(), HandMoney(304, seed));
    EXPECT_EQ(p.cToInt.raw(), HandMoney(305, seed));
    EXPECT_EQ(p.cToPen.raw(), HandMoney(306, seed));
    EXPECT_EQ(p.sMethod.str(), seed % 2 ? "I" : "T");
}

inline std::vector<char> HandCharge(int seed)
{
    HandBytes b;
    b.text(HandText(401, seed, 16), 16).f64(HandDate(402, seed)).f64(HandDate(403, seed));
    b.i64(HandMoney(404, seed)).i64(HandMoney(405, seed)).i64(HandMoney(406, seed));
    return b.bytes;
}
inline void ExpectChargeMatches(const rw::ChargeRec& c, int seed)
{
    EXPECT_EQ(c.sDesc.str(), HandText(401, seed, 16));
    EXPECT_EQ(c.dtLiab.dayNumber(), HandDate(402, seed));
    EXPECT_EQ(c.dtIntStart.dayNumber(), HandDate(403, seed));
    EXPECT_EQ(c.cTotal.raw(), HandMoney(404, seed));
    EXPECT_EQ(c.cToTax.raw(), HandMoney(405, seed));
    EXPECT_EQ(c.cToPen.raw(), HandMoney(406, seed));
}

inline std::vector<char> HandDeposit(int seed)
{
    HandBytes b;
    b.f64(HandDate(501, seed)).f64(HandDate(502, seed)).i64(HandMoney(503, seed)).i16(HandInt(504, seed));
    b.f64(HandDate(505, seed)).f64(HandDate(506, seed));
    return b.bytes;
}
inline void ExpectDepositMatches(const rw::DepositRec& d, int seed)
{
    EXPECT_EQ(d.dtDepDue.dayNumber(), HandDate(501, seed));
    EXPECT_EQ(d.dtDepAssess.dayNumber(), HandDate(502, seed));
    EXPECT_EQ(d.cRequired.raw(), HandMoney(503, seed));
    EXPECT_EQ(d.bSevere, HandInt(504, seed));
    EXPECT_EQ(d.dtDelinqNotice.dayNumber(), HandDate(505, seed));
    EXPECT_EQ(d.dtJeopardy.dayNumber(), HandDate(506, seed));
}

// A whole case file: marker, tag (padded with blanks to 20), record, lists.
inline std::vector<char> HandCaseFile(std::string_view tag, HandLayout layout, int seed, HandCounts counts)
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

}  // namespace rwtest
