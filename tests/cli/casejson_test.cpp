// The JSON form of a case: how each kind of value is written, that reading it
// back gives the same case file byte for byte, and the refusals that name the
// field.

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
#include <tuple>

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

TEST(CaseJson, EachKindOfValueIsWrittenAsDocumented)
{
    struct Row {
        const char* where;  // below "init" unless it begins with '/'
        std::function<void(rw::InitInputs&)> set;
        json expected;
    };
    const auto none = [](rw::InitInputs&) {};
    for (const Row& r :
         {Row{"sName", [](auto& in) { in.sName = "Smith"; },
              "Smith" + std::string(47, ' ')},  // padding kept
          Row{"s2ndLine", none, nullptr},  // a text never assigned
          Row{"s2ndLine", [](auto& in) { in.s2ndLine = ""; }, std::string(52, ' ')},
          Row{"sTaxAuth", [](auto& in) { in.sTaxAuth = "Jos\xE9"; },
              "Jos\xC3\xA9"},  // a Latin-1 byte's code point
          Row{"sTaxAuth", [](auto& in) { in.sTaxAuth = std::string("A\0B", 3); },
              std::string("A\0B ", 4)},
          Row{"tlStart/dtDate", none, nullptr},  // NoDate
          Row{"tlStart/cTax", [](auto& in) { in.tlStart.cTax = Money::fromRaw(100000000); },
              "10000.00"},
          Row{"cAmtOnReturn", [](auto& in) { in.cAmtOnReturn = Money::fromRaw(123456); },
              "12.3456"},
          Row{"cSUPAmt", [](auto& in) { in.cSUPAmt = Money::fromRaw(kMinRaw); },
              "-922337203685477.5808"},
          Row{"fAccRelRate", none, 0.2},  // the shortest text of the single
          Row{"fSUPRate", [](auto& in) { in.fSUPRate = std::numeric_limits<float>::infinity(); },
              "0x7f800000"},
          Row{"bPayroll", [](auto& in) { in.bPayroll = -1; }, true},
          Row{"bFtoPay", [](auto& in) { in.bFtoPay = 1; }, 1},  // an odd flag kept
          Row{"/deposits", none, json::array()}}) {
        Case c = Cleared();
        r.set(c.init);
        const std::string where = r.where[0] == '/' ? r.where : std::string("/init/") + r.where;
        EXPECT_EQ(rw::CaseToJson(c).at(json::json_pointer(where)), r.expected) << where;
    }
    // 1/1/1800 is 36,522 days before day 0 (1800 to 1900 holds 24 leap days); 1/1/2201
    // is day 109,940: 301 years, 73 of them leap years, from 1/1/1900 (day 2).
    for (const auto& [day, shown] : std::vector<std::pair<double, json>>{
             {42475.0, "04/15/2016"},
             {-36522.0, "01/01/1800"},
             {-36523.0, -36523},
             {109939.0, "12/31/2200"},
             {109940.0, 109940},
             {42475.5, 42475.5},
             {std::bit_cast<double>(0x7ff8000000000001), "0x7ff8000000000001"}}) {
        Case c = Cleared();
        c.init.dtDue = Date(day);
        EXPECT_EQ(rw::CaseToJson(c)["init"]["dtDue"], shown) << day;
    }
}

TEST(CaseJson, ImportPutsEachValueAtItsOffset)
{
    const Case c = Import(R"({
      "init": { "sName": "Jos\u00e9 Example", "dtDue": "4/15/16", "bPayroll": true, "bAutoArrange": 1,
                "tlStart": { "dtDate": "04/15/2016", "cTax": "10,000.5" }, "tlStop": { "dtDate": 43465 },
                "nStopDays": 30, "dtFiled": 1e2, "cAmtOnReturn": 1234.5678, "fAccRelRate": 0.1, "fSUPRate": "10",
                "sTaxAuth": "CAB" },
      "payments": [ { "sDesc": "Check", "dtPmt": "6/15/2016", "cAmount": 3000, "sMethod": "I" } ],
      "deposits": [ { "dtDepDue": null, "bSevere": -1 }, {} ]
    })");
    const std::vector<char> img = rw::EncodeCase(c);
    ASSERT_EQ(img.size(), 514u + 57u + 2 * 42u);
    const auto at = [&](std::size_t offset, const HandBytes& b) {
        return std::equal(b.bytes.begin(), b.bytes.end(), img.begin() + static_cast<long>(offset));
    };
    constexpr std::size_t R = 26;  // the record starts after marker and tag
    EXPECT_TRUE(at(R + 0, HandBytes()
                              .text("Jos\xE9 Example", 52)
                              .text("", 52, '\0')));  // the 2nd line never assigned
    EXPECT_TRUE(
        at(R + 104, HandBytes().f64(42475.0).i16(-1).i16(1)));  // due date, payroll, auto-arrange
    EXPECT_TRUE(at(R + 122, HandBytes().i16(1).i16(0).i16(2)));  // the counts follow the lists
    EXPECT_TRUE(at(R + 160, HandBytes().f64(42475.0).i64(100005000)));
    EXPECT_TRUE(at(R + 224, HandBytes().f64(43465.0)));
    EXPECT_TRUE(
        at(R + 306, HandBytes().i16(30).f64(-32767.0).f64(100.0)));  // stop days, NoDate, day 100
    EXPECT_TRUE(at(R + 332, HandBytes().i64(12345678)));
    EXPECT_TRUE(at(R + 380, HandBytes().f32(10.0f)));
    EXPECT_TRUE(at(R + 400, HandBytes().f32(0.1f)));
    EXPECT_TRUE(at(R + 484, HandBytes().raw("CAB ")));
    // 6/15/2016 is 61 days after 4/15/2016; 3,000.00 paid; a field left out is cleared.
    EXPECT_TRUE(at(514, HandBytes().text("Check", 16).f64(42536.0).i64(30000000).i64(0)));
    EXPECT_TRUE(at(570, HandBytes().raw("I").f64(-32767.0)));  // the first deposit's date is null
    EXPECT_TRUE(at(571 + 42, HandBytes().f64(0.0)));  // an empty entry: day 0
    const std::string exported = rw::CaseToJsonText(c);
    EXPECT_EQ(rw::CaseToJsonText(Import(exported)), exported);
}

TEST(CaseJson, RatesGoFromTheirTextStraightToTheNearestSingle)
{
    // Just above the midpoint between 0.25 and the next single, 0.25 + 2^-25:
    // the nearest double is the midpoint itself, which would round to even
    // (0.25); read directly, the text rounds up.
    const std::string text = "0.250000014901161194";
    ASSERT_EQ(static_cast<float>(std::stod(text)), 0.25f);
    const Case c
        = Import(R"({"init": {"fSUPRate": )" + text + R"(, "fOValRate": ")" + text + R"("}})");
    EXPECT_EQ(c.init.fSUPRate, std::nextafter(0.25f, 1.0f));
    EXPECT_EQ(c.init.fOValRate, std::nextafter(0.25f, 1.0f));
}

// ---- Round trips ----------------------------------------------------------------------

// Every date of a current case file image made a day from 32,768 (9/16/1989)
// to 65,535 (6/4/2079): its sign and exponent bytes set, the rest random.
void PutReadableDates(std::vector<char>& img, const rwtest::HandCounts& n)
{
    std::vector<std::size_t> at;
    for (std::size_t k :
         {104, 160, 224, 280, 290, 298, 308, 316, 324, 340, 364, 384, 412, 424, 440, 456, 464, 472})
        at.push_back(26 + k);
    std::size_t pos = 514;  // the lists: each entry's size and the places of its dates
    for (const auto& [count, size, dates] : {std::tuple{n.pmts, 57, std::vector<std::size_t>{16}},
                                             {n.charges, 56, {16, 24}},
                                             {n.deposits, 42, {0, 8, 26, 34}}})
        for (int i = 0; i < count; ++i, pos += static_cast<std::size_t>(size))
            for (std::size_t d : dates)
                at.push_back(pos + d);
    for (std::size_t a : at)
        img[a + 7] = 0x40, img[a + 6] = static_cast<char>(0xE0 | (img[a + 6] & 0x0F));
}

// Any bytes in the fields of a current file (marker, tag and counts set, dates
// readable) come back through JSON, in field order or alphabetical, as they
// were, but for the reserved field, written as 0; and so do the extremes
// random bytes miss.
TEST(CaseJson, EveryValueSurvivesTheRoundTrip)
{
    const auto through = [](const Case& c) {
        EXPECT_EQ(rw::EncodeCase(Import(rw::CaseToJson(c).dump())), rw::EncodeCase(c));
        return rw::EncodeCase(Import(rw::CaseToJsonText(c)));
    };
    std::mt19937_64 rng(20180331);
    for (int round = 0; round < 1500; ++round) {
        const rwtest::HandCounts n{static_cast<std::int16_t>(rng() % 3),
                                   static_cast<std::int16_t>(rng() % 3),
                                   static_cast<std::int16_t>(rng() % 3)};
        std::vector<char> img
            = rwtest::HandCaseFile("Qrat2018Q1.10", rwtest::HandLayout::L488, 0, n);
        for (std::size_t i = 26; i < img.size(); ++i)
            img[i] = i < 26 + 122 || i >= 26 + 128 ? static_cast<char>(rng() & 0xFF) : img[i];
        PutReadableDates(img, n);
        const rw::CaseReadResult r = rw::DecodeCase(img);
        ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok) << r.detail;
        ASSERT_EQ(through(r.kase), rwtest::HandAsCurrent(img, rwtest::HandLayout::L488))
            << "round " << round;
    }
    for (const auto& set : std::vector<std::function<void(rw::InitInputs&)>>{
             [](auto& in) {
                 in.dtDue = Date(-0.0), in.dtFiled = Date(rw::kLastReadableDate.dayNumber() + 0.75);
             },
             [](auto& in) {
                 in.cSUPAmt = Money::fromRaw(kMinRaw), in.cOValAmt = Money::fromRaw(-(kMinRaw + 1));
             },
             [](auto& in) {
                 in.fSUPRate = std::bit_cast<float>(0x7fc00123U), in.fOValRate = -0.0f;
             },
             [](auto& in) { in.fAccRelRate = std::numeric_limits<float>::max(); }}) {
        Case c = Cleared();
        set(c.init);
        EXPECT_EQ(through(c), rw::EncodeCase(c));
    }
}

// ---- Refusals -----------------------------------------------------------------------------------

std::string Deposits(int n)
{
    std::string s = R"({"deposits": [{})";
    for (int i = 1; i < n; ++i)
        s += ",{}";
    return s + "]}";
}

TEST(CaseJson, RefusalsNameTheField)
{
    const std::string amount = "not an amount of money (at most four decimals): ";
    const std::string calendar = "not a date from 01/01/1800 to 12/31/2199: ";
    for (
        const auto& [text, error] : std::vector<std::pair<std::string, std::string>>{
            {R"({"payments": [{}, {"dtPmt": "13/45/2016"}]})",
             R"(payments[1].dtPmt: not a date: "13/45/2016")"},
            {R"({"init": {"dtDue": "2/30/2017"}})", R"(init.dtDue: not a date: "2/30/2017")"},
            {R"({"init": {"dtDue": 9007199254740993}})",
             "init.dtDue: " + calendar + "9007199254740993"},
            {R"({"init": {"dtFiled": "0xfff0000000000000"}})",  // minus infinity
             "init.dtFiled: " + calendar + R"("0xfff0000000000000")"},
            {R"({"payments": [{"dtPmt": "1/1/2200"}]})",
             "payments[0].dtPmt: " + calendar + R"("1/1/2200")"},
            {R"({"deposits": [{"dtJeopardy": -1e300}]})",
             "deposits[0].dtJeopardy: " + calendar + "-1e300"},
            {std::string("{\"init\": {}}\0{\"init\": 5}", 24),
             "not valid JSON: a NUL byte at line 1, column 13"},
            {std::string(30000, '[') + std::string(30000, ']'),  // 60 KB
             "not valid JSON: nested deeper than 256 levels at line 1, column 257"},
            {"{}\n\"x\"", "not valid JSON: parse error at line 2, column 3: syntax error while "
                          "parsing value - unexpected string literal; expected end of input"},
            {R"({"init": {"cAmtOnReturn": "1.00001"}})",
             "init.cAmtOnReturn: " + amount + R"("1.00001")"},
            {R"({"charges": [{"cTotal": 0.00001}]})", "charges[0].cTotal: " + amount + "0.00001"},
            {R"({"init": {"tlStart": {"cTax": 1e3}}})", "init.tlStart.cTax: " + amount + "1e3"},
            {R"({"init": {"cSUPAmt": "922337203685477.5808"}})",
             "init.cSUPAmt: " + amount + R"("922337203685477.5808")"},
            {R"({"init": {"sName": ")" + std::string(53, 'x') + R"("}})",
             "init.sName: longer than 52 characters (53)"},
            {R"({"payments": [{"sMethod": "IT"}]})",
             "payments[0].sMethod: longer than 1 characters (2)"},
            {R"({"init": {"sName": "5 \u20ac"}})",
             "init.sName: the text holds the character U+20AC, which case texts cannot hold "
             "(Latin-1 only)"},
            {R"({"init": {"sTaxAuth": 12}})", "init.sTaxAuth: expected a text or null, found 12"},
            {R"({"init": {"tlStop": {"cTaxx": 1}}})", "init.tlStop.cTaxx: unknown field"},
            {R"({"init": {}, "payment": []})", "payment: unknown field"},
            {R"({"deposits": [{"extra": 0}]})", "deposits[0].extra: unknown field"},
            {R"({"init": {"nPmts": 3}, "payments": [{}, {}]})",
             R"(init.nPmts: 3, but "payments" holds 2 entries)"},
            {Deposits(32768), "deposits: more than 32767 entries"},
            {R"({"init": {"bPayroll": 0.5}})",
             "init.bPayroll: not a flag (true, false or a whole number from -32768 to 32767): 0.5"},
            {R"({"init": {"nStopDays": 40000}})",
             "init.nStopDays: not a whole number from -32768 to 32767: 40000"},
            {R"({"init": {"fSUPRate": "ten"}})", R"(init.fSUPRate: not a rate: "ten")"},
            {R"({"init": {"fSUPRate": 1e39}})", "init.fSUPRate: not a rate: 1e39"},
            {R"({"init": {"tlStart": 5}})", "init.tlStart: expected an object, found 5"},
            {R"({"charges": [{}, 5]})", "charges[1]: expected an object, found 5"},
            {"[1]", R"(a case is a JSON object with "init", "payments", "charges" and "deposits")"},
            {R"({"init": {"sName": "a", "sName": "b"}})",
             R"(the key "sName" appears twice in one object)"},
            {R"({"init": )",
             "not valid JSON: parse error at line 1, column 10: syntax error while parsing value - "
             "unexpected end of input; expected '[', '{', or a literal"}})
        EXPECT_EQ(ImportError(text), error);
}

// ---- Reading a case from either form -----------------------------------------------------------

// The estimated tax penalty: an object of its own, absent while neither asked for nor filled in.
TEST(CaseJson, TheEstimatedTaxPenaltyTravelsInItsOwnObject)
{
    EXPECT_FALSE(rw::CaseToJson(Cleared()).contains("estTax"));
    const Case c = Import(R"({"estTax": {"on": true, "filer": "corporation", "taxYear": 2017,
        "fiscalYearEndMonth": 6, "currentTax": "25,000", "priorYearUsable": true,
        "withholdingByDate": [{"date": "9/15/2017", "amount": 1}],
        "estimatedPayments": [{"date": "10/16/2017", "amount": "5000.00"}],
        "installments": ["1", "2", "3", "4"], "noticeDate": "3/1/2019"}})");
    rw::EstTaxCase e;
    e.on = true;
    e.input.filer = rw::EstTaxFiler::Corporation;
    std::tie(e.input.taxYear, e.input.fiscalYearEndMonth, e.input.priorYearUsable)
        = std::tuple(2017, 6, true);
    e.input.currentTax = Money::fromRaw(250000000);
    e.input.withholdingByDate = {{Date::fromCivil(2017, 9, 15), Money::fromRaw(10000)}};
    e.input.estimatedPayments = {{Date::fromCivil(2017, 10, 16), Money::fromRaw(50000000)}};
    e.input.installments = {Money::fromRaw(10000), Money::fromRaw(20000), Money::fromRaw(30000),
                            Money::fromRaw(40000)};
    e.noticeDate = Date::fromCivil(2019, 3, 1);
    EXPECT_EQ(c.estTax, e);
    EXPECT_EQ(Import(rw::CaseToJsonText(c)), c);
    EXPECT_EQ(rw::DecodeCase(rw::EncodeCase(c)).kase, c);

    std::string entries = "{}";
    for (int i = 0; i < 1000; ++i)
        entries += ",{}";
    for (const auto& [text, error] : std::vector<std::pair<std::string, std::string>>{
             {"1", "estTax: expected an object, found 1"},
             {R"({"x": 1})", "estTax.x: unknown field"},
             {R"({"on": 1})", "estTax.on: expected true or false, found 1"},
             {R"({"filer": "trust"})",
              R"(estTax.filer: neither "individual" nor "corporation": "trust")"},
             {R"({"taxYear": 1799})", "estTax.taxYear: not 0 or a year from 1800 to 2199: 1799"},
             {R"({"fiscalYearEndMonth": 0})",
              "estTax.fiscalYearEndMonth: not a month from 1 to 12: 0"},
             {R"({"installments": ["1"]})",
              R"(estTax.installments: expected null or an array of four amounts, found ["1"])"},
             {R"({"estimatedPayments": [{"date": "13/45/2016"}]})",
              R"(estTax.estimatedPayments[0].date: not a date: "13/45/2016")"},
             {R"({"estimatedPayments": [{"when": 1}]})",
              "estTax.estimatedPayments[0].when: unknown field"},
             {R"({"withholdingByDate": [)" + entries + "]}",
              "estTax.withholdingByDate: more than 1000 entries"}}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(ImportError(R"({"estTax": )" + text + "}"), error);
    }
}

TEST(CaseJson, LoadCaseFileReadsBothFormsAndLeavesTheCaseAloneOnFailure)
{
    rwtest::TempDir dir;
    const std::vector<char> file
        = rwtest::HandCaseFile("Qrat2005Q3.10", rwtest::HandLayout::L484, 3, {1, 0, 0});
    rwtest::WriteBytes(dir / "old.INT", file);
    Case fromFile, fromJson;
    std::string error;
    ASSERT_TRUE(rw::LoadCaseFile((dir / "old.INT").string(), fromFile, error)) << error;
    EXPECT_EQ(rw::EncodeCase(fromFile), rwtest::HandAsCurrent(file, rwtest::HandLayout::L484));
    const std::string text = rw::CaseToJsonText(fromFile);
    rwtest::WriteBytes(dir / "case.json", {text.begin(), text.end()});
    ASSERT_TRUE(rw::LoadCaseFile((dir / "case.json").string(), fromJson, error)) << error;
    EXPECT_EQ(fromJson, fromFile);

    const std::string badJson = R"({"init": {"dtDue": "13/45/2016"}})";
    for (const auto& [name, bytes, said] :
         {std::tuple{"short.INT", std::vector<char>(file.begin(), file.begin() + 300),
                     ": damaged case file: Input past end of file"},
          std::tuple{"bad.json", std::vector<char>(badJson.begin(), badJson.end()),
                     R"(: init.dtDue: not a date: "13/45/2016")"},
          std::tuple{"junk.INT", std::vector<char>{'h', 'e', 'l', 'l', 'o'},
                     ": neither a case file (no \"NOTVB3\" marker) nor a JSON case: not valid "
                     "JSON: parse error at "
                     "line 1, column 1: syntax error while parsing value - invalid literal; last "
                     "read: 'h'"}}) {
        const std::string path = (dir / name).string();
        rwtest::WriteBytes(path, bytes);
        EXPECT_FALSE(rw::LoadCaseFile(path, fromJson, error));
        EXPECT_EQ(error, path + said);
        EXPECT_EQ(fromJson, fromFile);
    }
    // The sample case installed with the program reads, its payments split whole.
    const std::string sample
        = std::string(std::getenv("RW_SOURCE_DIR")) + "/data/cases/example.json";
    ASSERT_TRUE(rw::LoadCaseFile(sample, fromJson, error)) << error;
    ASSERT_EQ(fromJson.init.nPmts, 2);
    for (const rw::PaymentRec& p : fromJson.payments())
        EXPECT_EQ(p.cToTax + p.cToInt + p.cToPen, p.cAmount);
}

}  // namespace
