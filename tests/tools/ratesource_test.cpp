// Reading and checking table sources: CSV records, dates, rates read straight
// to single precision, per cent figures turned into fractions, refund rates
// that were not published, and the check's refusals.

#include "rates/ratetable.h"
#include "support/tempdir.h"
#include "ratebuild/ratesource.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

namespace rs = rw::ratesrc;
using rw::Date;

namespace {

void writeFile(const std::filesystem::path& p, const std::string& text)
{
    std::ofstream out(p, std::ios::binary);
    out << text;
}

// --- CSV records -----------------------------------------------------------

TEST(CsvRecord, QuotedFieldsKeepCommasAndQuotes)
{
    const auto f
        = rs::SplitCsvRecord(R"(01/01/2020,12/31/2020,0.05,,S,"Rev. Rul. 2020-13, ""as announced""")");
    ASSERT_TRUE(f);
    ASSERT_EQ(f->size(), 6u);
    EXPECT_EQ((*f)[3], "");
    EXPECT_EQ((*f)[5], R"(Rev. Rul. 2020-13, "as announced")");
}

TEST(CsvRecord, BrokenQuotesAreRefused)
{
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"open)"));
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"closed"text)"));
}

TEST(CsvRecord, JoinQuotesOnlyWhatNeedsIt)
{
    const std::vector<std::string> fields{"01/01/2020", "0.05", "TIR 18-1; simple", "a, b", "say \"x\""};
    const std::string line = rs::JoinCsvRecord(fields);
    EXPECT_EQ(line, R"(01/01/2020,0.05,TIR 18-1; simple,"a, b","say ""x""")");
    EXPECT_EQ(rs::SplitCsvRecord(line), fields);
}

// --- Rates -------------------------------------------------------------------

TEST(RateText, NearestSingleOfTheDecimalText)
{
    EXPECT_EQ(rs::ParseRateText("0.075"), 0.075f);
    EXPECT_EQ(rs::ParseRateText("0.114825"), 0.114825f);
    EXPECT_EQ(rs::ParseRateText("0.100075"), 0.100075f);
    EXPECT_EQ(rs::ParseRateText(".5"), 0.5f);
    EXPECT_EQ(rs::ParseRateText("0"), 0.0f);
    EXPECT_EQ(rs::ParseRateText("-0.01"), -0.01f);
}

TEST(RateText, NeverRoundedTwiceThroughADouble)
{
    // Just above the midpoint between 0.25 and the next single, 0.25 + 2^-25.
    // The nearest double is the midpoint itself, which would then round to
    // even, down to 0.25; read directly, the text rounds up.
    const auto f = rs::ParseRateText("0.250000014901161194");
    ASSERT_TRUE(f);
    EXPECT_EQ(*f, std::nextafter(0.25f, 1.0f));
    EXPECT_NE(*f, static_cast<float>(0.250000014901161194));
}

TEST(RateText, OnlyPlainDecimals)
{
    for (const char* bad : {"", "-", ".", "7%", "1e-2", "nan", "inf", "+0.05", "0.05 ", "0,05", "0.0.5"})
        EXPECT_FALSE(rs::ParseRateText(bad)) << bad;
}

TEST(RateMethod, MonthlySimpleIsTabledAsSimple)
{
    EXPECT_EQ(rs::TableMethod("S"), 'S');
    EXPECT_EQ(rs::TableMethod("S-monthly"), 'S');
    EXPECT_EQ(rs::TableMethod("C"), 'C');
    EXPECT_FALSE(rs::TableMethod("c"));
    EXPECT_FALSE(rs::TableMethod(""));
}

// --- Per cent to fraction ------------------------------------------------------

struct PercentCase {
    const char* percent;
    const char* fraction;
};

class PercentToFraction : public ::testing::TestWithParam<PercentCase> { };

TEST_P(PercentToFraction, MovesThePointTwoPlaces)
{
    EXPECT_EQ(rs::PercentToFraction(GetParam().percent), std::string(GetParam().fraction));
}

INSTANTIATE_TEST_SUITE_P(Texts, PercentToFraction,
                         ::testing::Values(PercentCase{"7.5", "0.075"}, PercentCase{"11.4825", "0.114825"},
                                           PercentCase{"10.0075", "0.100075"}, PercentCase{"0.5", "0.005"},
                                           PercentCase{"12", "0.12"}, PercentCase{".25", "0.0025"},
                                           PercentCase{"10", "0.1"}, PercentCase{"100", "1"},
                                           PercentCase{"150", "1.5"}, PercentCase{"0", "0"},
                                           PercentCase{"8.", "0.08"}, PercentCase{"007.50", "0.075"},
                                           PercentCase{"-1.5", "-0.015"}));

TEST(PercentToFractionRefused, NotAPlainDecimal)
{
    for (const char* bad : {"", ".", "7,5", "7.5%", "1e1", "seven", " 7"})
        EXPECT_FALSE(rs::PercentToFraction(bad)) << bad;
}

// --- The table check -------------------------------------------------------------

const std::string kHeader = "from,thru,underpayment,overpayment,method,source\n";

rs::TableBuild buildFromFile(const rwtest::TempDir& dir, const std::string& body)
{
    const auto file = dir / "t.csv";
    writeFile(file, kHeader + body);
    return rs::BuildTable(rs::ReadSourceFile(file, rs::kTableHeader));
}

bool mentions(const rs::TableBuild& b, int line, const std::string& words)
{
    for (const auto& p : b.problems)
        if (p.line == line && p.what.find(words) != std::string::npos && p.file.ends_with("t.csv"))
            return true;
    return false;
}

TEST(TableCheck, GoodSourceBuildsEveryRow)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2018,0.04,0.04,S,\"61 Pa. Code 4.2(b), certified\"\n"
                                 "01/01/2019,12/31/2019,0.06,0.05,C,Rev. Rul. 2018-30\n"
                                 "01/01/2020,01/01/2020,0.05,0.05,S-monthly,one day\n");
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.rows.size(), 3u);
    EXPECT_EQ(b.rows[0].dtFrom, Date::fromCivil(2017, 1, 1));
    EXPECT_EQ(b.rows[0].dtThru, Date::fromCivil(2018, 12, 31));
    EXPECT_EQ(b.rows[0].fUPRate, 0.04f);
    EXPECT_EQ(b.rows[1].fOPRate, 0.05f);
    EXPECT_EQ(b.rows[0].sCalcMethod, 'S');
    EXPECT_EQ(b.rows[1].sCalcMethod, 'C');
    EXPECT_EQ(b.rows[2].sCalcMethod, 'S');
    EXPECT_EQ(b.rows[2].dtFrom, b.rows[2].dtThru);
}

TEST(TableCheck, RefusesAHoleBetweenRows)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2017,0.04,0.04,S,a\n"
                                 "01/02/2018,12/31/2018,0.04,0.04,S,b\n");
    EXPECT_FALSE(b.ok());
    EXPECT_TRUE(b.rows.empty());
    EXPECT_TRUE(mentions(b, 3, "not contiguous: no rate from 01/01/2018 to 01/01/2018"));
}

TEST(TableCheck, RefusesOverlappingRows)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2017,0.04,0.04,S,a\n"
                                 "12/31/2017,12/31/2018,0.04,0.04,S,b\n");
    EXPECT_TRUE(mentions(b, 3, "overlaps"));
}

TEST(TableCheck, RefusesFromAfterThru)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir, "12/31/2017,01/01/2017,0.04,0.04,S,a\n");
    EXPECT_TRUE(mentions(b, 2, "is after thru date"));
}

TEST(TableCheck, RefusesNegativeRates)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2017,0.04,-0.01,S,a\n"
                                 "01/01/2018,12/31/2018,-0,0.04,S,b\n");
    EXPECT_TRUE(mentions(b, 2, "overpayment rate -0.01 is negative"));
    EXPECT_TRUE(mentions(b, 3, "underpayment rate -0 is negative"));
}

TEST(TableCheck, RefusesRatesAboveFiftyPerCent)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2017,7.5,0.075,S,per cent where a fraction belongs\n"
                                 "01/01/2018,12/31/2018,0.5,0.500001,S,the limit itself is allowed\n");
    EXPECT_TRUE(mentions(b, 2, "underpayment rate 7.5 is above 50 %"));
    EXPECT_TRUE(mentions(b, 3, "overpayment rate 0.500001 is above 50 %"));
    EXPECT_EQ(b.problems.size(), 2u);
}

TEST(TableCheck, RefusesARowWithoutSource)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2017,0.04,0.04,S,a\n"
                                 "01/01/2018,12/31/2018,0.04,0.04,S,\n"
                                 "01/01/2019,12/31/2019,0.04,0.04,S,\"  \"\n");
    EXPECT_TRUE(mentions(b, 3, "no source"));
    EXPECT_TRUE(mentions(b, 4, "no source"));
}

TEST(TableCheck, RefusesAnEmptyUnderpaymentAndMalformedRates)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2017,12/31/2017,0.04,,S,overpayment not published\n"
                                 "01/01/2018,12/31/2018,,0.04,S,underpayment not published\n"
                                 "01/01/2019,12/31/2019,4%,0.04,S,a\n"
                                 "01/01/2020,12/31/2020,0.04,4%,S,b\n"
                                 "01/01/2021,12/31/2021,,,S,neither published\n");
    EXPECT_FALSE(b.ok());
    EXPECT_TRUE(b.rows.empty());
    // An empty overpayment rate is allowed: it was not published.
    for (const auto& p : b.problems)
        EXPECT_NE(p.line, 2) << p.text();
    EXPECT_TRUE(mentions(b, 3, "underpayment rate is empty"));
    EXPECT_TRUE(mentions(b, 4, "underpayment rate '4%' is not a plain decimal"));
    EXPECT_TRUE(mentions(b, 5, "overpayment rate '4%' is not a plain decimal"));
    EXPECT_TRUE(mentions(b, 6, "underpayment rate is empty"));
    EXPECT_EQ(b.problems.size(), 4u);
}

TEST(TableCheck, AnEmptyOverpaymentRateIsHeldAsNotPublished)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/1995,12/31/1995,0.12,,S,\"12 CSR 10-41.010; refund rate not found\"\n"
                                 "01/01/1996,12/31/1996,0.09,0.02,S,both published\n");
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.rows.size(), 2u);
    EXPECT_EQ(b.rows[0].fUPRate, 0.12f);
    EXPECT_TRUE(std::isnan(b.rows[0].fOPRate));
    EXPECT_TRUE(rs::IsRateNotPublished(b.rows[0].fOPRate));
    EXPECT_EQ(b.rows[1].fUPRate, 0.09f);
    EXPECT_EQ(b.rows[1].fOPRate, 0.02f);
    EXPECT_FALSE(rs::IsRateNotPublished(b.rows[1].fOPRate));
    EXPECT_FALSE(rs::IsRateNotPublished(0.0f));
    // The mark is the quiet NaN, sign bit clear: 0x7FC00000.
    EXPECT_EQ(std::bit_cast<std::uint32_t>(b.rows[0].fOPRate), 0x7FC00000u);
}

TEST(TableCheck, AGapRowBetweenSourcedRowsIsAHoleBothWays)
{
    rwtest::TempDir dir;
    const auto b = buildFromFile(dir,
                                 "01/01/2016,12/31/2016,0.04,0.03,S,Bulletin 2016\n"
                                 "01/01/2017,12/31/2017,,,C,GAP: not found\n"
                                 "01/01/2018,12/31/2018,0.05,0.04,S,Bulletin 2018\n");
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.rows.size(), 3u);
    EXPECT_TRUE(rs::IsRateNotPublished(b.rows[1].fUPRate));
    EXPECT_TRUE(rs::IsRateNotPublished(b.rows[1].fOPRate));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(b.rows[1].fUPRate), 0x7FC00000u);
    EXPECT_EQ(b.rows[1].sCalcMethod, 'C');
    EXPECT_EQ(b.rows[2].fUPRate, 0.05f);
    // Encoded and read back, the hole is the same bytes (a NaN is unequal to
    // itself, so rows holding one are compared by their bytes).
    const std::vector<char> bytes = rw::EncodeRateTable(b.rows);
    const auto back = rw::DecodeRateTable(bytes);
    ASSERT_EQ(back.status, rw::RateTableReadResult::Status::Ok);
    EXPECT_TRUE(std::isnan(back.rows[1].fUPRate));
    EXPECT_TRUE(std::isnan(back.rows[1].fOPRate));
    EXPECT_EQ(rw::EncodeRateTable(back.rows), bytes);
}

TEST(TableCheck, RefusesGapRowsThatGiveARateOrBeginOrEndTheTable)
{
    rwtest::TempDir dir;
    struct Case {
        const char* what;
        const char* body;
        int line;
        const char* problem;
    };
    for (const Case& c :
         {Case{"a rate on a GAP row",
               "01/01/2016,12/31/2016,0.04,0.03,S,a\n01/01/2017,12/31/2017,0.04,,S,GAP: not found\n"
               "01/01/2018,12/31/2018,0.05,0.04,S,b\n",
               3, "but gives a rate"},
          Case{"a leading GAP row", "01/01/2017,12/31/2017,,,C,GAP: not found\n01/01/2018,12/31/2018,0.05,0.04,S,b\n",
               2, "a table begins and ends with a sourced row"},
          Case{"a trailing GAP row", "01/01/2017,12/31/2017,0.05,0.04,S,b\n01/01/2018,12/31/2018,,,C,GAP: not yet\n",
               3, "a table begins and ends with a sourced row"},
          Case{"a GAP row without a method",
               "01/01/2016,12/31/2016,0.04,0.03,S,a\n01/01/2017,12/31/2017,,,,GAP: not found\n"
               "01/01/2018,12/31/2018,0.05,0.04,S,b\n",
               3, "method ''"}}) {
        SCOPED_TRACE(c.what);
        const auto b = buildFromFile(dir, c.body);
        EXPECT_FALSE(b.ok());
        EXPECT_TRUE(b.rows.empty());
        EXPECT_TRUE(mentions(b, c.line, c.problem)) << (b.problems.empty() ? "" : b.problems.front().text());
    }
}

// --- Cutting rows at year ends -----------------------------------------------------

struct YearEndCase {
    const char* name;
    const char* from;
    const char* thru;
    std::vector<std::pair<std::string, std::string>> pieces;
};

class YearEnds : public ::testing::TestWithParam<YearEndCase> { };

TEST_P(YearEnds, EveryPieceLiesInOneYearAndKeepsTheRow)
{
    const YearEndCase& c = GetParam();
    const rs::SourceRow row{7, c.from, c.thru, "0.08", "", "S-monthly", "Notice, as published"};
    const std::vector<rs::SourceRow> out = rs::SplitAtYearEnds({row});
    ASSERT_EQ(out.size(), c.pieces.size());
    for (std::size_t i = 0; i < out.size(); ++i) {
        EXPECT_EQ(out[i].from, c.pieces[i].first) << i;
        EXPECT_EQ(out[i].thru, c.pieces[i].second) << i;
        EXPECT_EQ(out[i].line, 7);
        EXPECT_EQ(out[i].underpayment, "0.08");
        EXPECT_EQ(out[i].overpayment, "");
        EXPECT_EQ(out[i].method, "S-monthly");
        EXPECT_EQ(out[i].source, "Notice, as published");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Rows, YearEnds,
    ::testing::Values(
        YearEndCase{"WithinOneYear", "01/01/2023", "12/31/2023", {{"01/01/2023", "12/31/2023"}}},
        // 92 days of 2023 (31 + 30 + 31) and 91 of 2024 (31 + 29 + 31).
        YearEndCase{"AcrossOneYearEnd",
                    "10/01/2023",
                    "03/31/2024",
                    {{"10/01/2023", "12/31/2023"}, {"01/01/2024", "03/31/2024"}}},
        YearEndCase{"EndingOnAYearEnd",
                    "07/01/2019",
                    "12/31/2021",
                    {{"07/01/2019", "12/31/2019"}, {"01/01/2020", "12/31/2020"}, {"01/01/2021", "12/31/2021"}}},
        YearEndCase{"ThreeYearEnds",
                    "01/01/2010",
                    "06/30/2013",
                    {{"01/01/2010", "12/31/2010"},
                     {"01/01/2011", "12/31/2011"},
                     {"01/01/2012", "12/31/2012"},
                     {"01/01/2013", "06/30/2013"}}},
        YearEndCase{"OneDay", "12/31/2023", "12/31/2023", {{"12/31/2023", "12/31/2023"}}},
        YearEndCase{"NewYearsEveToNewYearsDay",
                    "12/31/2023",
                    "01/01/2024",
                    {{"12/31/2023", "12/31/2023"}, {"01/01/2024", "01/01/2024"}}}),
    [](const ::testing::TestParamInfo<YearEndCase>& i) { return std::string(i.param.name); });

TEST(YearEndsOfATable, RowsFollowEachOtherAndUnreadableDatesPassAsWritten)
{
    const std::vector<rs::SourceRow> rows{
        {2, "07/01/2023", "09/30/2023", "0.07", "0.07", "C", "a"},
        {3, "10/01/2023", "03/31/2024", "0.08", "0.08", "C", "b"},
        {4, "4/1/2024", "06/30/2024", "0.08", "0.08", "C", "c"},
    };
    const std::vector<rs::SourceRow> out = rs::SplitAtYearEnds(rows);
    ASSERT_EQ(out.size(), 4u);
    EXPECT_EQ(out[0], rows[0]);
    EXPECT_EQ(out[1].thru, "12/31/2023");
    EXPECT_EQ(out[2].from, "01/01/2024");
    EXPECT_EQ(out[2].line, 3);
    EXPECT_EQ(out[3], rows[2]);
}

TEST(TableCheck, RefusesUnknownMethodsDatesHeaderAndEmptySource)
{
    rwtest::TempDir dir;
    EXPECT_TRUE(mentions(buildFromFile(dir, "01/01/2017,12/31/2017,0.04,0.04,M,a\n"), 2, "method 'M'"));
    EXPECT_TRUE(
        mentions(buildFromFile(dir, "1/1/2017,12/31/2017,0.04,0.04,S,a\n"), 2, "from date '1/1/2017'"));
    EXPECT_TRUE(mentions(buildFromFile(dir, "01/01/2017,12/31/2017,0.04,0.04,S\n"), 2, "expected 6 fields"));
    EXPECT_TRUE(mentions(buildFromFile(dir, ""), 0, "no rate periods"));

    const auto file = dir / "t.csv";
    writeFile(file, "from,thru,up,op,method,source\n01/01/2017,12/31/2017,0.04,0.04,S,a\n");
    const auto b = rs::BuildTable(rs::ReadSourceFile(file, rs::kTableHeader));
    EXPECT_TRUE(mentions(b, 1, "header"));
}

TEST(TableCheck, ProblemTextNamesFileAndLine)
{
    const rs::SourceProblem p{"data/rates/pa1.csv", 7, "the row has no source"};
    EXPECT_EQ(p.text(), "data/rates/pa1.csv:7: the row has no source");
}

}  // namespace
