#include "casejson/casejson.h"

#include "casedata/casefile.h"

#include "../casedata/handcase.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <random>

using nlohmann::json;
using rw::Case;
using rw::Date;
using rw::Money;
using rwtest::HandBytes;

namespace {

Case Cleared()
{
    Case c;
    rw::ClearInputs(c);
    return c;
}

// JSON text -> case, failing the test on an error.
Case Import(const std::string& text)
{
    json doc;
    std::string error;
    EXPECT_TRUE(rw::ParseCaseJson(text, doc, error)) << error;
    std::optional<Case> c = rw::CaseFromJson(doc, error);
    EXPECT_TRUE(c.has_value()) << error;
    return c.value_or(Case{});
}

std::string ImportError(const std::string& text)
{
    json doc;
    std::string error;
    if (!rw::ParseCaseJson(text, doc, error))
        return error;
    if (rw::CaseFromJson(doc, error))
        return "(no error)";
    return error;
}

std::vector<char> ThroughJson(const Case& c)
{
    return rw::EncodeCase(Import(rw::CaseToJsonText(c)));
}

std::string Bytes(const std::vector<char>& v, std::size_t offset, std::size_t n)
{
    return std::string(v.data() + offset, n);
}

// ---- Export: one kind of value per row --------------------------------------------

struct ExportRow {
    const char* name;
    std::function<void(Case&)> set;
    std::vector<const char*> where;  // path in the JSON
    json expected;
};

class ExportValues : public testing::TestWithParam<ExportRow> {};

TEST_P(ExportValues, AreWrittenAsDocumented)
{
    Case c = Cleared();
    GetParam().set(c);
    const json j = rw::CaseToJson(c);
    const json* at = &j;
    for (const char* k : GetParam().where) {
        ASSERT_TRUE(at->contains(k)) << k;
        at = &(*at)[k];
    }
    EXPECT_EQ(*at, GetParam().expected) << at->dump();
}

const double kNaNWithPayload = std::bit_cast<double>(std::uint64_t{0x7ff8000000000001});

INSTANTIATE_TEST_SUITE_P(
    CaseJson, ExportValues,
    testing::Values(
        ExportRow{"TextKeepsItsPadding", [](Case& c) { c.init.sName = "Smith"; }, {"init", "sName"},
                  "Smith" + std::string(47, ' ')},
        ExportRow{"TextNeverAssignedIsNull", [](Case&) {}, {"init", "s2ndLine"}, nullptr},
        ExportRow{"TextAllBlanksIsNotNull", [](Case& c) { c.init.s2ndLine = ""; }, {"init", "s2ndLine"},
                  std::string(52, ' ')},
        ExportRow{"Latin1ByteIsItsCodePoint", [](Case& c) { c.init.sTaxAuth = "Jos\xE9"; },
                  {"init", "sTaxAuth"}, "Jos\xC3\xA9"},
        ExportRow{"NulInsideAText", [](Case& c) { c.init.sTaxAuth = std::string("A\0B", 3); },
                  {"init", "sTaxAuth"}, std::string("A\0B ", 4)},
        ExportRow{"DateInTheCalendar", [](Case& c) { c.init.dtDue = Date(42475.0); }, {"init", "dtDue"},
                  "04/15/2016"},
        ExportRow{"NoDateIsNull", [](Case&) {}, {"init", "tlStart", "dtDate"}, nullptr},
        ExportRow{"DayZero", [](Case& c) { c.init.dtDue = Date(0.0); }, {"init", "dtDue"}, "12/30/1899"},
        // 1/1/1800 is 36,522 days before day 0 (1800 to 1900 holds 24 leap days).
        ExportRow{"FirstDayShownAsADate", [](Case& c) { c.init.dtDue = Date(-36522.0); }, {"init", "dtDue"},
                  "01/01/1800"},
        ExportRow{"DayBeforeIsANumber", [](Case& c) { c.init.dtDue = Date(-36523.0); }, {"init", "dtDue"},
                  -36523},
        // 1/1/2201 is day 109,940: 301 years of which 73 are leap years, from 1/1/1900 (day 2).
        ExportRow{"LastDayShownAsADate", [](Case& c) { c.init.dtDue = Date(109939.0); }, {"init", "dtDue"},
                  "12/31/2200"},
        ExportRow{"DayAfterIsANumber", [](Case& c) { c.init.dtDue = Date(109940.0); }, {"init", "dtDue"},
                  109940},
        ExportRow{"PartOfADay", [](Case& c) { c.init.dtDue = Date(42475.5); }, {"init", "dtDue"}, 42475.5},
        ExportRow{"NotANumberDay", [](Case& c) { c.init.dtDue = Date(kNaNWithPayload); }, {"init", "dtDue"},
                  "0x7ff8000000000001"},
        ExportRow{"AmountTwoDecimals", [](Case& c) { c.init.tlStart.cTax = Money::fromRaw(100000000); },
                  {"init", "tlStart", "cTax"}, "10000.00"},
        ExportRow{"AmountFourDecimals", [](Case& c) { c.init.cAmtOnReturn = Money::fromRaw(123456); },
                  {"init", "cAmtOnReturn"}, "12.3456"},
        ExportRow{"NegativeAmount", [](Case& c) { c.init.cNegFlatAmt = Money::fromRaw(-5000); },
                  {"init", "cNegFlatAmt"}, "-0.50"},
        ExportRow{"SmallestAmount",
                  [](Case& c) { c.init.cSUPAmt = Money::fromRaw(std::numeric_limits<std::int64_t>::min()); },
                  {"init", "cSUPAmt"}, "-922337203685477.5808"},
        ExportRow{"RateShortest", [](Case&) {}, {"init", "fAccRelRate"}, 0.2},
        ExportRow{"RateWhole", [](Case& c) { c.init.fOValRate = 20.0f; }, {"init", "fOValRate"}, 20.0},
        ExportRow{"RateInfinite",
                  [](Case& c) { c.init.fSUPRate = std::numeric_limits<float>::infinity(); }, {"init", "fSUPRate"},
                  "0x7f800000"},
        ExportRow{"FlagYes", [](Case& c) { c.init.bPayroll = -1; }, {"init", "bPayroll"}, true},
        ExportRow{"FlagNo", [](Case&) {}, {"init", "bPayroll"}, false},
        ExportRow{"OddFlagKept", [](Case& c) { c.init.bFtoPay = 1; }, {"init", "bFtoPay"}, 1},
        ExportRow{"CountFollowsTheList",
                  [](Case& c) {
                      c.pmts.assign(2, rw::PaymentRec{});
                      c.init.nPmts = 2;
                  },
                  {"init", "nPmts"}, 2},
        ExportRow{"EmptyListIsAnEmptyArray", [](Case&) {}, {"deposits"}, json::array()}),
    [](const testing::TestParamInfo<ExportRow>& p) { return std::string(p.param.name); });

// ---- Import: values land in their bytes -------------------------------------------

TEST(CaseJson, ImportPutsEachValueAtItsOffset)
{
    const Case c = Import(R"({
      "init": {
        "sName": "Jos\u00e9 Example",
        "dtDue": "4/15/2016",
        "bPayroll": true,
        "bAutoArrange": 1,
        "tlStart": { "dtDate": "04/15/2016", "cTax": "10,000.5" },
        "tlStop": { "dtDate": 43465 },
        "nStopDays": 30,
        "cAmtOnReturn": 1234.5678,
        "fAccRelRate": 0.1,
        "fSUPRate": "10",
        "sTaxAuth": "CAB"
      },
      "payments": [ { "sDesc": "Check", "dtPmt": "6/15/2016", "cAmount": 3000, "sMethod": "I" } ]
    })");
    const std::vector<char> img = rw::EncodeCase(c);
    ASSERT_EQ(img.size(), 514u + 57u);
    constexpr std::size_t R = 26;  // the record starts after marker and tag
    EXPECT_EQ(Bytes(img, R + 0, 52), "Jos\xE9 Example" + std::string(40, ' '));
    EXPECT_EQ(Bytes(img, R + 52, 52), std::string(52, '\0'));  // never assigned
    EXPECT_EQ(Bytes(img, R + 104, 8), Bytes(HandBytes().f64(42475.0).bytes, 0, 8));
    EXPECT_EQ(Bytes(img, R + 112, 2), std::string("\xFF\xFF", 2));  // bPayroll -1
    EXPECT_EQ(Bytes(img, R + 114, 2), std::string("\x01\x00", 2));  // bAutoArrange 1, as given
    EXPECT_EQ(Bytes(img, R + 122, 2), std::string("\x01\x00", 2));  // nPmts from the list
    EXPECT_EQ(Bytes(img, R + 160, 8), Bytes(HandBytes().f64(42475.0).bytes, 0, 8));
    EXPECT_EQ(Bytes(img, R + 168, 8), Bytes(HandBytes().i64(100005000).bytes, 0, 8));
    EXPECT_EQ(Bytes(img, R + 224, 8), Bytes(HandBytes().f64(43465.0).bytes, 0, 8));
    EXPECT_EQ(Bytes(img, R + 306, 2), std::string("\x1E\x00", 2));
    EXPECT_EQ(Bytes(img, R + 332, 8), Bytes(HandBytes().i64(12345678).bytes, 0, 8));
    EXPECT_EQ(Bytes(img, R + 380, 4), Bytes(HandBytes().f32(10.0f).bytes, 0, 4));
    EXPECT_EQ(Bytes(img, R + 400, 4), Bytes(HandBytes().f32(0.1f).bytes, 0, 4));
    EXPECT_EQ(Bytes(img, R + 484, 4), "CAB ");
    EXPECT_EQ(Bytes(img, 514, 16), "Check           ");
    EXPECT_EQ(Bytes(img, 530, 8), Bytes(HandBytes().f64(42536.0).bytes, 0, 8));  // 6/15/2016
    EXPECT_EQ(Bytes(img, 538, 8), Bytes(HandBytes().i64(30000000).bytes, 0, 8));
    EXPECT_EQ(Bytes(img, 570, 1), "I");
    // Fields left out keep the cleared values: dates not given, rate 0.2 where given none.
    EXPECT_TRUE(c.init.dtExtended.isNoDate());
    EXPECT_TRUE(c.init.dtIntSuspend.isNoDate());
    EXPECT_EQ(c.pmts[0].cToTax, Money());
}

TEST(CaseJson, RatesGoFromTheirTextStraightToTheNearestSingle)
{
    // Two neighbouring singles, the lower with an even last bit, and a decimal
    // a hair above the midpoint between them. Read as a single it is nearest to
    // the upper one. Read as a double first, it becomes the midpoint itself
    // (which a double holds exactly), and the midpoint then rounds to the even
    // single, the lower one: the two ways differ, and only the first is right.
    float lo = 0.1f;
    if (std::bit_cast<std::uint32_t>(lo) & 1u)
        lo = std::nextafter(lo, 1.0f);
    const float hi = std::nextafter(lo, 1.0f);
    const double mid = (static_cast<double>(lo) + static_cast<double>(hi)) / 2.0;
    char buf[128];
    std::snprintf(buf, sizeof buf, "%.80f", mid);  // the exact decimal of the midpoint
    std::string text = buf;
    while (text.back() == '0')
        text.pop_back();
    text += "1";
    ASSERT_EQ(static_cast<float>(std::strtod(text.c_str(), nullptr)), lo);  // the double road
    const Case c = Import(R"({"init": {"fSUPRate": )" + text + R"(, "fOValRate": ")" + text + R"("}})");
    EXPECT_EQ(c.init.fSUPRate, hi);
    EXPECT_EQ(c.init.fOValRate, hi);
}

// ---- Round trips of odd values -------------------------------------------------------

struct OddRow {
    const char* name;
    std::function<void(Case&)> set;
};

class OddValues : public testing::TestWithParam<OddRow> {};

TEST_P(OddValues, ComeBackToTheSameBytes)
{
    Case c = Cleared();
    GetParam().set(c);
    const std::vector<char> before = rw::EncodeCase(c);
    EXPECT_EQ(ThroughJson(c), before);
    // The alphabetical form (CaseToJson) reads back alike.
    EXPECT_EQ(rw::EncodeCase(Import(rw::CaseToJson(c).dump())), before);
}

template <typename T>
T Bits(std::uint64_t b)
{
    if constexpr (sizeof(T) == 4)
        return std::bit_cast<T>(static_cast<std::uint32_t>(b));
    else
        return std::bit_cast<T>(b);
}

INSTANTIATE_TEST_SUITE_P(
    CaseJson, OddValues,
    testing::Values(
        OddRow{"DayZero", [](Case& c) { c.init.dtDue = Date(0.0); }},
        OddRow{"NegativeZeroDay", [](Case& c) { c.init.dtDue = Date(-0.0); }},
        OddRow{"NaNDayWithPayload", [](Case& c) { c.init.dtFiled = Date(Bits<double>(0xfff0000000000abcULL)); }},
        OddRow{"InfiniteDay", [](Case& c) { c.init.dtFiled = Date(-std::numeric_limits<double>::infinity()); }},
        OddRow{"HugeWholeDay", [](Case& c) { c.init.dtFiled = Date(1e300); }},
        OddRow{"TinyDay", [](Case& c) { c.init.dtFiled = Date(Bits<double>(1)); }},
        OddRow{"ThirdOfADay", [](Case& c) { c.init.dtFiled = Date(42475.0 + 1.0 / 3.0); }},
        OddRow{"LargestExactInteger", [](Case& c) { c.init.dtFiled = Date(-9007199254740992.0); }},
        OddRow{"OddFlags",
               [](Case& c) {
                   c.init.bPayroll = 1;
                   c.init.bSUP = -32768;
                   c.init.bCorporate = 32767;
               }},
        OddRow{"NegativeCountsElsewhere", [](Case& c) { c.init.nStopDays = -5; }},
        OddRow{"ExtremeAmounts",
               [](Case& c) {
                   c.init.cSUPAmt = Money::fromRaw(std::numeric_limits<std::int64_t>::min());
                   c.init.cOValAmt = Money::fromRaw(std::numeric_limits<std::int64_t>::max());
                   c.init.tlStart.cInt = Money::fromRaw(-1);
               }},
        OddRow{"OddRates",
               [](Case& c) {
                   c.init.fSUPRate = Bits<float>(0x7fc00123);  // NaN with a payload
                   c.init.fOValRate = -0.0f;
                   c.init.fAccRelRate = Bits<float>(1);  // the smallest subnormal
               }},
        OddRow{"LargestRate", [](Case& c) { c.init.fAccRelRate = std::numeric_limits<float>::max(); }},
        OddRow{"EveryLatin1Byte",
               [](Case& c) {
                   std::string a, b;
                   for (int i = 0; i < 52; ++i)
                       a += static_cast<char>(i * 5 % 256);
                   for (int i = 52; i < 104; ++i)
                       b += static_cast<char>(i * 5 % 256);
                   c.init.sName = a;
                   c.init.s2ndLine = b;
                   std::string rest;
                   for (int i = 0; i < 256; ++i)
                       rest += static_cast<char>(i);
                   c.init.tlStart.sDesc = rest.substr(200, 16);
                   c.init.tlStop.sDesc = rest.substr(240, 16);
               }},
        OddRow{"TextStartingWithNul", [](Case& c) { c.init.sTaxAuth = std::string("\0US ", 4); }},
        OddRow{"OneCharacterNul", [](Case& c) {
                   c.pmts.assign(1, rw::PaymentRec{});
                   c.pmts[0].sMethod = std::string("\0", 1);
                   c.pmts[0].sDesc = "x";
                   c.init.nPmts = 1;
               }}),
    [](const testing::TestParamInfo<OddRow>& p) { return std::string(p.param.name); });

// ---- Case files of every layout through JSON ---------------------------------------------

TEST(CaseJson, CaseFilesOfEveryLayoutComeBackAsTheProgramSavesThem)
{
    const rwtest::HandCounts counts{2, 1, 3};
    struct Row {
        const char* tag;
        rwtest::HandLayout layout;
    };
    for (const Row& row : {Row{"Qrat1999Q1.00", rwtest::HandLayout::L482},
                           Row{"Qrat2005Q3.10", rwtest::HandLayout::L484},
                           Row{"Qrat2018Q1.10", rwtest::HandLayout::L488}}) {
        SCOPED_TRACE(row.tag);
        std::vector<char> file = rwtest::HandCaseFile(row.tag, row.layout, 7, counts);
        const rw::CaseReadResult r = rw::DecodeCase(file);
        ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
        const std::string text = rw::CaseToJsonText(r.kase);
        const json j = json::parse(text);
        if (row.layout == rwtest::HandLayout::L482) {
            EXPECT_EQ(j["init"]["bAutoArrange"], false);
        }
        if (row.layout != rwtest::HandLayout::L488) {
            EXPECT_EQ(j["init"]["fAccRelRate"], 0.2);
        }
        const std::vector<char> again = rw::EncodeCase(Import(text));
        if (row.layout == rwtest::HandLayout::L488) {
            // The same file, but for the reserved field, which is always written as 0.
            file[26 + 480] = 0;
            file[26 + 481] = 0;
            EXPECT_EQ(again, file);
        } else {
            EXPECT_EQ(again, rw::EncodeCase(r.kase));
            EXPECT_EQ(again.size(), 514u + 2 * 57 + 56 + 3 * 42);
        }
    }
}

TEST(CaseJson, ExportOfAnImportIsTheSameCase)
{
    const std::string text = R"({
      "init": { "sName": "A", "dtDue": "4/15/16", "bFtoPay": true, "dtFiled": 1e2, "fSUPRate": 10,
                "tlStart": { "dtDate": "04/15/2016", "cTax": 10000.05 } },
      "charges": [ { "sDesc": "Charge", "dtLiab": "1/2/2017", "cTotal": "-12.3456" } ],
      "deposits": [ { "dtDepDue": null, "bSevere": -1 }, {} ]
    })";
    const Case first = Import(text);
    const std::string exported = rw::CaseToJsonText(first);
    const Case second = Import(exported);
    EXPECT_EQ(rw::CaseToJsonText(second), exported);
    EXPECT_EQ(rw::EncodeCase(second), rw::EncodeCase(first));
    EXPECT_EQ(first.init.dtFiled.dayNumber(), 100.0);
    EXPECT_EQ(first.init.tlStart.cTax.raw(), 100000500);
    EXPECT_EQ(first.init.nDeposits, 2);
    EXPECT_TRUE(first.deposits[0].dtDepDue.isNoDate());
    EXPECT_EQ(first.deposits[1].dtDepDue.dayNumber(), 0.0);  // an empty entry: day 0
    EXPECT_TRUE(first.countsConsistent());
}

TEST(CaseJson, RandomCaseImagesSurviveTheRoundTrip)
{
    std::mt19937_64 rng(20180331);
    for (int round = 0; round < 1500; ++round) {
        const std::int16_t np = static_cast<std::int16_t>(rng() % 3), nc = static_cast<std::int16_t>(rng() % 3),
                           nd = static_cast<std::int16_t>(rng() % 3);
        std::vector<char> img(514 + 57 * np + 56 * nc + 42 * nd);
        for (char& ch : img)
            ch = static_cast<char>(rng() & 0xFF);
        // Any bytes may stand in the fields; marker, tag and counts are set.
        const std::string head = std::string("NOTVB3") + "Qrat2018Q1.10       ";
        std::copy(head.begin(), head.end(), img.begin());
        const auto put16 = [&](std::size_t at, std::int16_t v) {
            img[at] = static_cast<char>(v & 0xFF);
            img[at + 1] = static_cast<char>((v >> 8) & 0xFF);
        };
        put16(26 + 122, np);
        put16(26 + 124, nc);
        put16(26 + 126, nd);
        const rw::CaseReadResult r = rw::DecodeCase(img);
        ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
        std::vector<char> expected = img;
        expected[26 + 480] = expected[26 + 481] = 0;  // reserved
        ASSERT_EQ(ThroughJson(r.kase), expected) << "round " << round;
    }
}

// ---- Errors -----------------------------------------------------------------------------------

struct ErrorRow {
    const char* name;
    std::string json;
    std::string error;
};

class ImportErrors : public testing::TestWithParam<ErrorRow> {};

TEST_P(ImportErrors, NameTheField)
{
    EXPECT_EQ(ImportError(GetParam().json), GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    CaseJson, ImportErrors,
    testing::Values(
        ErrorRow{"ImpossibleDate", R"({"payments": [{}, {"dtPmt": "13/45/2016"}]})",
                 R"(payments[1].dtPmt: not a date: "13/45/2016")"},
        ErrorRow{"February30", R"({"init": {"dtDue": "2/30/2017"}})", R"(init.dtDue: not a date: "2/30/2017")"},
        ErrorRow{"DateAsTrue", R"({"init": {"dtDue": true}})", R"(init.dtDue: not a date: true)"},
        ErrorRow{"DayBeyondExactIntegers", R"({"init": {"dtDue": 9007199254740993}})",
                 R"(init.dtDue: day number out of range: 9007199254740993)"},
        ErrorRow{"FiveDecimals", R"({"init": {"cAmtOnReturn": "1.00001"}})",
                 R"(init.cAmtOnReturn: not an amount of money (at most four decimals): "1.00001")"},
        ErrorRow{"FiveDecimalsAsANumber", R"({"charges": [{"cTotal": 0.00001}]})",
                 R"(charges[0].cTotal: not an amount of money (at most four decimals): 0.00001)"},
        ErrorRow{"AmountWithExponent", R"({"init": {"tlStart": {"cTax": 1e3}}})",
                 R"(init.tlStart.cTax: not an amount of money (at most four decimals): 1e3)"},
        ErrorRow{"AmountTooLarge", R"({"init": {"cSUPAmt": "922337203685477.5808"}})",
                 R"(init.cSUPAmt: not an amount of money (at most four decimals): "922337203685477.5808")"},
        ErrorRow{"NameOf53Characters", R"({"init": {"sName": ")" + std::string(53, 'x') + R"("}})",
                 "init.sName: longer than 52 characters (53)"},
        ErrorRow{"MethodOfTwoCharacters", R"({"payments": [{"sMethod": "IT"}]})",
                 "payments[0].sMethod: longer than 1 characters (2)"},
        ErrorRow{"BeyondLatin1", R"({"init": {"sName": "5 \u20ac"}})",
                 "init.sName: the text holds the character U+20AC, which case texts cannot hold (Latin-1 only)"},
        ErrorRow{"NumberForAText", R"({"init": {"sTaxAuth": 12}})",
                 "init.sTaxAuth: expected a text or null, found 12"},
        ErrorRow{"UnknownField", R"({"init": {"sNmae": "x"}})", "init.sNmae: unknown field"},
        ErrorRow{"UnknownFieldInAPoint", R"({"init": {"tlStop": {"dtDate": null, "cTaxx": 1}}})",
                 "init.tlStop.cTaxx: unknown field"},
        ErrorRow{"UnknownPart", R"({"init": {}, "payment": []})", "payment: unknown field"},
        ErrorRow{"UnknownFieldInAList", R"({"deposits": [{"bSevere": true, "extra": 0}]})",
                 "deposits[0].extra: unknown field"},
        ErrorRow{"CountDisagrees", R"({"init": {"nPmts": 3}, "payments": [{}, {}]})",
                 R"(init.nPmts: 3, but "payments" holds 2 entries)"},
        ErrorRow{"CountGivenWithoutList", R"({"init": {"nDeposits": 1}})",
                 R"(init.nDeposits: 1, but "deposits" holds 0 entries)"},
        ErrorRow{"FlagOfAFraction", R"({"init": {"bPayroll": 0.5}})",
                 "init.bPayroll: not a flag (true, false or a whole number from -32768 to 32767): 0.5"},
        ErrorRow{"FlagAsText", R"({"deposits": [{"bSevere": "yes"}]})",
                 R"(deposits[0].bSevere: not a flag (true, false or a whole number from -32768 to 32767): "yes")"},
        ErrorRow{"IntegerOutOfRange", R"({"init": {"nStopDays": 40000}})",
                 "init.nStopDays: not a whole number from -32768 to 32767: 40000"},
        ErrorRow{"RateNotANumber", R"({"init": {"fSUPRate": "ten"}})", R"(init.fSUPRate: not a rate: "ten")"},
        ErrorRow{"RateOutOfRange", R"({"init": {"fSUPRate": 1e39}})", "init.fSUPRate: not a rate: 1e39"},
        ErrorRow{"PointNotAnObject", R"({"init": {"tlStart": "4/15/2016"}})",
                 R"(init.tlStart: expected an object, found "4/15/2016")"},
        ErrorRow{"ListNotAnArray", R"({"payments": {}})", "payments: expected an array, found {}"},
        ErrorRow{"ListEntryNotAnObject", R"({"charges": [{}, 5]})", "charges[1]: expected an object, found 5"},
        ErrorRow{"NotAnObject", "[1]",
                 R"(a case is a JSON object with "init", "payments", "charges" and "deposits")"},
        ErrorRow{"KeyTwice", R"({"init": {"sName": "a", "sName": "b"}})",
                 R"(the key "sName" appears twice in one object)"},
        ErrorRow{"BrokenJson", R"({"init": )",
                 "not valid JSON: parse error at line 1, column 10: syntax error while parsing value - "
                 "unexpected end of input; expected '[', '{', or a literal"}),
    [](const testing::TestParamInfo<ErrorRow>& p) { return std::string(p.param.name); });

TEST(CaseJson, ListsAreLimitedToTheLargestCount)
{
    std::string text = R"({"deposits": [)";
    for (int i = 0; i < 32768; ++i)
        text += i ? ",{}" : "{}";
    text += "]}";
    EXPECT_EQ(ImportError(text), "deposits: more than 32767 entries");
}

// ---- LoadCaseFile ---------------------------------------------------------------------

void WriteFile(const std::filesystem::path& p, const std::vector<char>& bytes)
{
    std::ofstream(p, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

TEST(CaseJson, LoadCaseFileReadsBothFormsAndLeavesTheCaseAloneOnFailure)
{
    rwtest::TempDir dir;
    const std::vector<char> file = rwtest::HandCaseFile("Qrat2005Q3.10", rwtest::HandLayout::L484, 3, {1, 0, 0});
    WriteFile(dir / "old.INT", file);
    Case fromFile;
    std::string error;
    ASSERT_TRUE(rw::LoadCaseFile((dir / "old.INT").string(), fromFile, error)) << error;
    rwtest::ExpectInitMatches(fromFile.init, rwtest::HandLayout::L484, 3, {1, 0, 0});

    const std::string text = rw::CaseToJsonText(fromFile);
    WriteFile(dir / "case.json", std::vector<char>(text.begin(), text.end()));
    Case fromJson;
    ASSERT_TRUE(rw::LoadCaseFile((dir / "case.json").string(), fromJson, error)) << error;
    EXPECT_EQ(rw::EncodeCase(fromJson), rw::EncodeCase(fromFile));

    const Case untouched = fromJson;
    struct Bad {
        const char* file;
        std::vector<char> bytes;
        std::string error;  // after the path
    };
    const std::string badJson = R"({"init": {"dtDue": "13/45/2016"}})";
    std::vector<char> truncated(file.begin(), file.begin() + 300);
    for (const Bad& bad : {Bad{"short.INT", truncated, ": damaged case file: Input past end of file"},
                           Bad{"bad.json", {badJson.begin(), badJson.end()}, R"(: init.dtDue: not a date: "13/45/2016")"},
                           Bad{"junk.INT", {'h', 'e', 'l', 'l', 'o'},
                               ": neither a case file (no \"NOTVB3\" marker) nor a JSON case: not valid JSON: "
                               "parse error at line 1, column 1: syntax error while parsing value - invalid "
                               "literal; last read: 'h'"}}) {
        const std::string path = (dir / bad.file).string();
        WriteFile(path, bad.bytes);
        EXPECT_FALSE(rw::LoadCaseFile(path, fromJson, error));
        EXPECT_EQ(error, path + bad.error);
        EXPECT_EQ(rw::EncodeCase(fromJson), rw::EncodeCase(untouched));
    }
    const std::string missing = (dir / "missing.INT").string();
    EXPECT_FALSE(rw::LoadCaseFile(missing, fromJson, error));
    EXPECT_EQ(error, missing + ": no such file");
}

TEST(CaseJson, TheExampleCaseReads)
{
    const char* src = std::getenv("RW_SOURCE_DIR");
    ASSERT_NE(src, nullptr);
    Case c;
    std::string error;
    ASSERT_TRUE(rw::LoadCaseFile(std::string(src) + "/data/cases/example.json", c, error)) << error;
    EXPECT_TRUE(c.init.sTaxAuth.is("US  "));
    EXPECT_EQ(c.init.dtDue, Date(42475.0));
    EXPECT_EQ(c.init.tlStart.dtDate, Date(42475.0));
    EXPECT_EQ(c.init.tlStop.dtDate, Date(43100.0));  // 12/31/2017
    EXPECT_EQ(c.init.tlStart.cTax, Money::fromCents(1000000));
    ASSERT_EQ(c.init.nPmts, 2);
    for (const rw::PaymentRec& p : c.payments())
        EXPECT_EQ(p.cToTax + p.cToInt + p.cToPen, p.cAmount);
}

}  // namespace
