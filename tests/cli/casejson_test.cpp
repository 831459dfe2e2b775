// The JSON form of a case: how each kind of value is written, that reading it
// back gives the same case file byte for byte (old layouts come back in the
// current one), and the refusals that name the field.

#include "casejson/casejson.h"

#include "casedata/casefile.h"

#include "../casedata/handcase.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <bit>
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

// The error of reading a JSON text as a case; "" when it reads.
std::string ImportError(const std::string& text, Case* out = nullptr)
{
    json doc;
    std::string error;
    if (!rw::ParseCaseJson(text, doc, error))
        return error;
    const std::optional<Case> c = rw::CaseFromJson(doc, error);
    if (c && out)
        *out = *c;
    return c ? "" : error;
}

Case Import(const std::string& text)
{
    Case c;
    EXPECT_EQ(ImportError(text, &c), "");
    return c;
}

constexpr std::int64_t kMinRaw = std::numeric_limits<std::int64_t>::min();

// ---- Export: one kind of value per row --------------------------------------------

struct ExportRow {
    const char* name;
    std::function<void(Case&)> set;
    json::json_pointer where;
    json expected;
};

class ExportValues : public testing::TestWithParam<ExportRow> {};

TEST_P(ExportValues, AreWrittenAsDocumented)
{
    Case c = Cleared();
    GetParam().set(c);
    EXPECT_EQ(rw::CaseToJson(c).at(GetParam().where), GetParam().expected);
}

ExportRow Init(const char* name, std::function<void(Case&)> set, const std::string& field, json expected)
{
    return ExportRow{name, std::move(set), json::json_pointer("/init/" + field), std::move(expected)};
}

INSTANTIATE_TEST_SUITE_P(
    CaseJson, ExportValues,
    testing::Values(
        Init("TextKeepsItsPadding", [](Case& c) { c.init.sName = "Smith"; }, "sName", "Smith" + std::string(47, ' ')),
        Init("TextNeverAssignedIsNull", [](Case&) {}, "s2ndLine", nullptr),
        Init("TextAllBlanksIsNotNull", [](Case& c) { c.init.s2ndLine = ""; }, "s2ndLine", std::string(52, ' ')),
        Init("Latin1ByteIsItsCodePoint", [](Case& c) { c.init.sTaxAuth = "Jos\xE9"; }, "sTaxAuth", "Jos\xC3\xA9"),
        Init("NulInsideAText", [](Case& c) { c.init.sTaxAuth = std::string("A\0B", 3); }, "sTaxAuth",
             std::string("A\0B ", 4)),
        Init("DateInTheCalendar", [](Case& c) { c.init.dtDue = Date(42475.0); }, "dtDue", "04/15/2016"),
        Init("NoDateIsNull", [](Case&) {}, "tlStart/dtDate", nullptr),
        Init("DayZero", [](Case& c) { c.init.dtDue = Date(0.0); }, "dtDue", "12/30/1899"),
        // 1/1/1800 is 36,522 days before day 0 (1800 to 1900 holds 24 leap days).
        Init("FirstDayShownAsADate", [](Case& c) { c.init.dtDue = Date(-36522.0); }, "dtDue", "01/01/1800"),
        Init("DayBeforeIsANumber", [](Case& c) { c.init.dtDue = Date(-36523.0); }, "dtDue", -36523),
        // 1/1/2201 is day 109,940: 301 years of which 73 are leap years, from 1/1/1900 (day 2).
        Init("LastDayShownAsADate", [](Case& c) { c.init.dtDue = Date(109939.0); }, "dtDue", "12/31/2200"),
        Init("DayAfterIsANumber", [](Case& c) { c.init.dtDue = Date(109940.0); }, "dtDue", 109940),
        Init("PartOfADay", [](Case& c) { c.init.dtDue = Date(42475.5); }, "dtDue", 42475.5),
        Init("NotANumberDay", [](Case& c) { c.init.dtDue = Date(std::bit_cast<double>(0x7ff8000000000001ULL)); },
             "dtDue", "0x7ff8000000000001"),
        Init("AmountTwoDecimals", [](Case& c) { c.init.tlStart.cTax = Money::fromRaw(100000000); }, "tlStart/cTax",
             "10000.00"),
        Init("AmountFourDecimals", [](Case& c) { c.init.cAmtOnReturn = Money::fromRaw(123456); }, "cAmtOnReturn",
             "12.3456"),
        Init("SmallestAmount", [](Case& c) { c.init.cSUPAmt = Money::fromRaw(kMinRaw); }, "cSUPAmt",
             "-922337203685477.5808"),
        Init("RateShortest", [](Case&) {}, "fAccRelRate", 0.2),
        Init("RateInfinite", [](Case& c) { c.init.fSUPRate = std::numeric_limits<float>::infinity(); }, "fSUPRate",
             "0x7f800000"),
        Init("FlagYes", [](Case& c) { c.init.bPayroll = -1; }, "bPayroll", true),
        Init("FlagNo", [](Case&) {}, "bPayroll", false),
        Init("OddFlagKept", [](Case& c) { c.init.bFtoPay = 1; }, "bFtoPay", 1),
        Init("CountFollowsTheList", [](Case& c) { c.pmts.assign(2, rw::PaymentRec{}), c.init.nPmts = 2; }, "nPmts", 2),
        ExportRow{"EmptyListIsAnEmptyArray", [](Case&) {}, json::json_pointer("/deposits"), json::array()}),
    [](const testing::TestParamInfo<ExportRow>& p) { return std::string(p.param.name); });

// ---- Import: values land in their bytes -------------------------------------------

TEST(CaseJson, ImportPutsEachValueAtItsOffset)
{
    const Case c = Import(R"({
      "init": { "sName": "Jos\u00e9 Example", "dtDue": "4/15/2016", "bPayroll": true, "bAutoArrange": 1,
                "tlStart": { "dtDate": "04/15/2016", "cTax": "10,000.5" }, "tlStop": { "dtDate": 43465 },
                "nStopDays": 30, "cAmtOnReturn": 1234.5678, "fAccRelRate": 0.1, "fSUPRate": "10", "sTaxAuth": "CAB" },
      "payments": [ { "sDesc": "Check", "dtPmt": "6/15/2016", "cAmount": 3000, "sMethod": "I" } ]
    })");
    const std::vector<char> img = rw::EncodeCase(c);
    ASSERT_EQ(img.size(), 514u + 57u);
    const auto at = [&](std::size_t offset, const std::vector<char>& bytes) {
        return std::vector<char>(img.begin() + static_cast<long>(offset),
                                 img.begin() + static_cast<long>(offset + bytes.size())) == bytes;
    };
    constexpr std::size_t R = 26;  // the record starts after marker and tag
    EXPECT_TRUE(at(R + 0, HandBytes().text("Jos\xE9 Example", 52).bytes));
    EXPECT_TRUE(at(R + 52, HandBytes().text("", 52, '\0').bytes));  // never assigned
    EXPECT_TRUE(at(R + 104, HandBytes().f64(42475.0).i16(-1).i16(1).bytes));  // due date, payroll, auto-arrange
    EXPECT_TRUE(at(R + 122, HandBytes().i16(1).bytes));                      // nPmts from the list
    EXPECT_TRUE(at(R + 160, HandBytes().f64(42475.0).i64(100005000).bytes));
    EXPECT_TRUE(at(R + 224, HandBytes().f64(43465.0).bytes));
    EXPECT_TRUE(at(R + 306, HandBytes().i16(30).bytes));
    EXPECT_TRUE(at(R + 332, HandBytes().i64(12345678).bytes));
    EXPECT_TRUE(at(R + 380, HandBytes().f32(10.0f).bytes));
    EXPECT_TRUE(at(R + 400, HandBytes().f32(0.1f).bytes));
    EXPECT_TRUE(at(R + 484, HandBytes().raw("CAB ").bytes));
    // 6/15/2016 is 61 days after 4/15/2016; 3,000.00 paid; a field left out is cleared.
    EXPECT_TRUE(at(514, HandBytes().text("Check", 16).f64(42536.0).i64(30000000).i64(0).bytes));
    EXPECT_TRUE(at(570, HandBytes().raw("I").bytes));
    EXPECT_TRUE(c.init.dtExtended.isNoDate());
}

TEST(CaseJson, RatesGoFromTheirTextStraightToTheNearestSingle)
{
    // Just above the midpoint between 0.25 and the next single, 0.25 + 2^-25.
    // The nearest double is the midpoint itself, which would then round to
    // even, down to 0.25; read directly, the text rounds up.
    const std::string text = "0.250000014901161194";
    ASSERT_EQ(static_cast<float>(std::stod(text)), 0.25f);
    const Case c = Import(R"({"init": {"fSUPRate": )" + text + R"(, "fOValRate": ")" + text + R"("}})");
    EXPECT_EQ(c.init.fSUPRate, std::nextafter(0.25f, 1.0f));
    EXPECT_EQ(c.init.fOValRate, std::nextafter(0.25f, 1.0f));
}

// ---- Round trips ----------------------------------------------------------------------

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
    EXPECT_EQ(rw::EncodeCase(Import(rw::CaseToJsonText(c))), before);
    EXPECT_EQ(rw::EncodeCase(Import(rw::CaseToJson(c).dump())), before);  // the alphabetical form too
}

INSTANTIATE_TEST_SUITE_P(
    CaseJson, OddValues,
    testing::Values(
        OddRow{"NegativeZeroDay", [](Case& c) { c.init.dtDue = Date(-0.0); }},
        OddRow{"NaNDayWithPayload", [](Case& c) { c.init.dtFiled = Date(std::bit_cast<double>(0xfff0000000000abcULL)); }},
        OddRow{"InfiniteDay", [](Case& c) { c.init.dtFiled = Date(-std::numeric_limits<double>::infinity()); }},
        OddRow{"HugeWholeDay", [](Case& c) { c.init.dtFiled = Date(1e300); }},
        OddRow{"TinyDay", [](Case& c) { c.init.dtFiled = Date(std::bit_cast<double>(1ULL)); }},
        OddRow{"ThirdOfADay", [](Case& c) { c.init.dtFiled = Date(42475.0 + 1.0 / 3.0); }},
        OddRow{"LargestExactInteger", [](Case& c) { c.init.dtFiled = Date(-9007199254740992.0); }},
        OddRow{"OddFlagsAndCounts", [](Case& c) { c.init.bSUP = -32768, c.init.bCorporate = 32767, c.init.nStopDays = -5; }},
        OddRow{"ExtremeAmounts",
               [](Case& c) {
                   c.init.cSUPAmt = Money::fromRaw(kMinRaw);
                   c.init.cOValAmt = Money::fromRaw(std::numeric_limits<std::int64_t>::max());
               }},
        OddRow{"OddRates",
               [](Case& c) {
                   c.init.fSUPRate = std::bit_cast<float>(0x7fc00123U);  // NaN with a payload
                   c.init.fOValRate = -0.0f;
                   c.init.fAccRelRate = std::bit_cast<float>(1U);  // the smallest subnormal
               }},
        OddRow{"LargestRate", [](Case& c) { c.init.fAccRelRate = std::numeric_limits<float>::max(); }},
        OddRow{"TextStartingWithNul", [](Case& c) { c.init.sTaxAuth = std::string("\0US ", 4); }},
        OddRow{"OneCharacterNul",
               [](Case& c) {
                   c.pmts[0].sMethod = std::string("\0", 1);
                   c.init.nPmts = 1;
               }}),
    [](const testing::TestParamInfo<OddRow>& p) { return std::string(p.param.name); });

TEST(CaseJson, CaseFilesOfEveryLayoutComeBackAsTheProgramSavesThem)
{
    for (const auto& [tag, layout] : {std::pair{"Qrat1999Q1.00", rwtest::HandLayout::L482},
                                      std::pair{"Qrat2005Q3.10", rwtest::HandLayout::L484},
                                      std::pair{"Qrat2018Q1.10", rwtest::HandLayout::L488}}) {
        SCOPED_TRACE(tag);
        const std::vector<char> file = rwtest::HandCaseFile(tag, layout, 7, {2, 1, 3});
        const rw::CaseReadResult r = rw::DecodeCase(file);
        ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
        EXPECT_EQ(rw::EncodeCase(Import(rw::CaseToJsonText(r.kase))), rwtest::HandAsCurrent(file, layout));
    }
}

// Any bytes in the fields of a current file (marker, tag and counts set) come
// back through JSON as they were, but for the reserved field, written as 0.
TEST(CaseJson, RandomCaseImagesSurviveTheRoundTrip)
{
    std::mt19937_64 rng(20180331);
    for (int round = 0; round < 1500; ++round) {
        const rwtest::HandCounts n{static_cast<std::int16_t>(rng() % 3), static_cast<std::int16_t>(rng() % 3),
                                   static_cast<std::int16_t>(rng() % 3)};
        std::vector<char> img = rwtest::HandCaseFile("Qrat2018Q1.10", rwtest::HandLayout::L488, 0, n);
        for (std::size_t i = 26; i < img.size(); ++i)
            if (i < 26 + 122 || i >= 26 + 128)
                img[i] = static_cast<char>(rng() & 0xFF);
        const rw::CaseReadResult r = rw::DecodeCase(img);
        ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
        ASSERT_EQ(rw::EncodeCase(Import(rw::CaseToJsonText(r.kase))), rwtest::HandAsCurrent(img, rwtest::HandLayout::L488))
            << "round " << round;
    }
}

TEST(CaseJson, ExportOfAnImportIsTheSameCase)
{
    const Case first = Import(R"({
      "init": { "sName": "A", "dtDue": "4/15/16", "bFtoPay": true, "dtFiled": 1e2, "fSUPRate": 10,
                "tlStart": { "dtDate": "04/15/2016", "cTax": 10000.05 } },
      "charges": [ { "sDesc": "Charge", "dtLiab": "1/2/2017", "cTotal": "-12.3456" } ],
      "deposits": [ { "dtDepDue": null, "bSevere": -1 }, {} ]
    })");
    const std::string exported = rw::CaseToJsonText(first);
    EXPECT_EQ(rw::CaseToJsonText(Import(exported)), exported);
    EXPECT_EQ(first.init.dtFiled.dayNumber(), 100.0);
    EXPECT_EQ(first.init.tlStart.cTax.raw(), 100000500);
    ASSERT_EQ(first.init.nDeposits, 2);
    EXPECT_TRUE(first.deposits[0].dtDepDue.isNoDate());
    EXPECT_EQ(first.deposits[1].dtDepDue.dayNumber(), 0.0);  // an empty entry: day 0
}

// ---- Refusals -----------------------------------------------------------------------------------

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

std::string Deposits(int n)
{
    std::string s = R"({"deposits": [{})";
    for (int i = 1; i < n; ++i)
        s += ",{}";
    return s + "]}";
}

const std::string kNotAnAmount = "not an amount of money (at most four decimals): ";
const std::string kNotAFlag = "not a flag (true, false or a whole number from -32768 to 32767): ";

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
                 "init.cAmtOnReturn: " + kNotAnAmount + R"("1.00001")"},
        ErrorRow{"FiveDecimalsAsANumber", R"({"charges": [{"cTotal": 0.00001}]})",
                 "charges[0].cTotal: " + kNotAnAmount + "0.00001"},
        ErrorRow{"AmountWithExponent", R"({"init": {"tlStart": {"cTax": 1e3}}})",
                 "init.tlStart.cTax: " + kNotAnAmount + "1e3"},
        ErrorRow{"AmountOneBeyondTheLargest", R"({"init": {"cSUPAmt": "922337203685477.5808"}})",
                 "init.cSUPAmt: " + kNotAnAmount + R"("922337203685477.5808")"},
        ErrorRow{"NameOf53Characters", R"({"init": {"sName": ")" + std::string(53, 'x') + R"("}})",
                 "init.sName: longer than 52 characters (53)"},
        ErrorRow{"MethodOfTwoCharacters", R"({"payments": [{"sMethod": "IT"}]})",
                 "payments[0].sMethod: longer than 1 characters (2)"},
        ErrorRow{"BeyondLatin1", R"({"init": {"sName": "5 \u20ac"}})",
                 "init.sName: the text holds the character U+20AC, which case texts cannot hold (Latin-1 only)"},
        ErrorRow{"NumberForAText", R"({"init": {"sTaxAuth": 12}})", "init.sTaxAuth: expected a text or null, found 12"},
        ErrorRow{"UnknownField", R"({"init": {"sNmae": "x"}})", "init.sNmae: unknown field"},
        ErrorRow{"UnknownFieldInAPoint", R"({"init": {"tlStop": {"cTaxx": 1}}})", "init.tlStop.cTaxx: unknown field"},
        ErrorRow{"UnknownPart", R"({"init": {}, "payment": []})", "payment: unknown field"},
        ErrorRow{"UnknownFieldInAList", R"({"deposits": [{"extra": 0}]})", "deposits[0].extra: unknown field"},
        ErrorRow{"CountDisagrees", R"({"init": {"nPmts": 3}, "payments": [{}, {}]})",
                 R"(init.nPmts: 3, but "payments" holds 2 entries)"},
        ErrorRow{"CountGivenWithoutList", R"({"init": {"nDeposits": 1}})",
                 R"(init.nDeposits: 1, but "deposits" holds 0 entries)"},
        ErrorRow{"FlagOfAFraction", R"({"init": {"bPayroll": 0.5}})", "init.bPayroll: " + kNotAFlag + "0.5"},
        ErrorRow{"FlagAsText", R"({"deposits": [{"bSevere": "yes"}]})", "deposits[0].bSevere: " + kNotAFlag + R"("yes")"},
        ErrorRow{"IntegerOutOfRange", R"({"init": {"nStopDays": 40000}})",
                 "init.nStopDays: not a whole number from -32768 to 32767: 40000"},
        ErrorRow{"RateNotANumber", R"({"init": {"fSUPRate": "ten"}})", R"(init.fSUPRate: not a rate: "ten")"},
        ErrorRow{"RateBeyondASingle", R"({"init": {"fSUPRate": 1e39}})", "init.fSUPRate: not a rate: 1e39"},
        ErrorRow{"PointNotAnObject", R"({"init": {"tlStart": "4/15/2016"}})",
                 R"(init.tlStart: expected an object, found "4/15/2016")"},
        ErrorRow{"ListNotAnArray", R"({"payments": {}})", "payments: expected an array, found {}"},
        ErrorRow{"ListEntryNotAnObject", R"({"charges": [{}, 5]})", "charges[1]: expected an object, found 5"},
        ErrorRow{"NotAnObject", "[1]", R"(a case is a JSON object with "init", "payments", "charges" and "deposits")"},
        ErrorRow{"KeyTwice", R"({"init": {"sName": "a", "sName": "b"}})", R"(the key "sName" appears twice in one object)"},
        ErrorRow{"BrokenJson", R"({"init": )",
                 "not valid JSON: parse error at line 1, column 10: syntax error while parsing value - "
                 "unexpected end of input; expected '[', '{', or a literal"},
        ErrorRow{"OneEntryBeyondTheLargestCount", Deposits(32768), "deposits: more than 32767 entries"}),
    [](const testing::TestParamInfo<ErrorRow>& p) { return std::string(p.param.name); });

// ---- Reading a case from either form -----------------------------------------------------------

TEST(CaseJson, LoadCaseFileReadsBothFormsAndLeavesTheCaseAloneOnFailure)
{
    rwtest::TempDir dir;
    const std::vector<char> file = rwtest::HandCaseFile("Qrat2005Q3.10", rwtest::HandLayout::L484, 3, {1, 0, 0});
    rwtest::WriteBytes(dir / "old.INT", file);
    Case fromFile;
    std::string error;
    ASSERT_TRUE(rw::LoadCaseFile((dir / "old.INT").string(), fromFile, error)) << error;
    EXPECT_EQ(rw::EncodeCase(fromFile), rwtest::HandAsCurrent(file, rwtest::HandLayout::L484));
    const std::string text = rw::CaseToJsonText(fromFile);
    rwtest::WriteBytes(dir / "case.json", {text.begin(), text.end()});
    Case fromJson;
    ASSERT_TRUE(rw::LoadCaseFile((dir / "case.json").string(), fromJson, error)) << error;
    EXPECT_EQ(fromJson, fromFile);

    const std::string badJson = R"({"init": {"dtDue": "13/45/2016"}})";
    for (const auto& [name, bytes, said] :
         {std::tuple{"short.INT", std::vector<char>(file.begin(), file.begin() + 300), ": damaged case file: Input past end of file"},
          std::tuple{"bad.json", std::vector<char>(badJson.begin(), badJson.end()), R"(: init.dtDue: not a date: "13/45/2016")"},
          std::tuple{"junk.INT", std::vector<char>{'h', 'e', 'l', 'l', 'o'},
                     ": neither a case file (no \"NOTVB3\" marker) nor a JSON case: not valid JSON: parse error at line "
                     "1, column 1: syntax error while parsing value - invalid literal; last read: 'h'"}}) {
        const std::string path = (dir / name).string();
        rwtest::WriteBytes(path, bytes);
        EXPECT_FALSE(rw::LoadCaseFile(path, fromJson, error));
        EXPECT_EQ(error, path + said);
        EXPECT_EQ(fromJson, fromFile);
    }
    EXPECT_FALSE(rw::LoadCaseFile((dir / "none.INT").string(), fromJson, error));
    EXPECT_EQ(error, (dir / "none.INT").string() + ": no such file");
}

TEST(CaseJson, TheSampleCaseReads)
{
    Case c;
    std::string error;
    ASSERT_TRUE(rw::LoadCaseFile(std::string(std::getenv("RW_SOURCE_DIR")) + "/data/cases/example.json", c, error))
        << error;
    EXPECT_TRUE(c.init.sTaxAuth.is("US  "));
    EXPECT_EQ(c.init.tlStart.cTax, Money::fromCents(1000000));
    ASSERT_EQ(c.init.nPmts, 2);
    for (const rw::PaymentRec& p : c.payments())
        EXPECT_EQ(p.cToTax + p.cToInt + p.cToPen, p.cAmount);
}

}  // namespace
