// Reading and checking table sources: CSV records, rates read straight to
// single precision, per cent figures turned into fractions, the table check's
// refusals, refund rates and whole periods not published, rows cut at year ends.

#include "rates/ratetable.h"
#include "ratebuild/ratesource.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>

namespace rs = rw::ratesrc;
using rw::Date;

namespace {

TEST(CsvRecord, QuotesKeepCommasAndQuotesAndAreWrittenOnlyWhenNeeded)
{
    const auto f = rs::SplitCsvRecord(R"(01/01/2020,,S,"Rev. Rul. 2020-13, ""as announced""")");
    ASSERT_TRUE(f);
    EXPECT_EQ(*f, (std::vector<std::string>{"01/01/2020", "", "S", R"(Rev. Rul. 2020-13, "as announced")"}));
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"open)"));
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"closed"text)"));
    const std::vector<std::string> fields{"0.05", "TIR 18-1; simple", "a, b", "say \"x\""};
    EXPECT_EQ(rs::JoinCsvRecord(fields), R"(0.05,TIR 18-1; simple,"a, b","say ""x""")");
    EXPECT_EQ(rs::SplitCsvRecord(rs::JoinCsvRecord(fields)), fields);
}

TEST(RateText, NearestSingleOfAPlainDecimalNeverRoundedTwice)
{
    EXPECT_EQ(rs::ParseRateText("0.114825"), 0.114825f);
    EXPECT_EQ(rs::ParseRateText(".5"), 0.5f);
    EXPECT_EQ(rs::ParseRateText("-0.01"), -0.01f);
    // Just above the midpoint between 0.25 and the next single, 0.25 + 2^-25:
    // the nearest double is the midpoint, which would round to even (0.25).
    EXPECT_EQ(rs::ParseRateText("0.250000014901161194"), std::nextafter(0.25f, 1.0f));
    for (const char* bad : {"", "-", ".", "7%", "1e-2", "nan", "inf", "+0.05", "0.05 ", "0,05", "0.0.5"})
        EXPECT_FALSE(rs::ParseRateText(bad)) << bad;
    EXPECT_EQ(rs::TableMethod("S-monthly"), 'S');
    EXPECT_EQ(rs::TableMethod("C"), 'C');
    EXPECT_FALSE(rs::TableMethod("c"));
}

TEST(RateText, PerCentMovesThePointTwoPlaces)
{
    for (const auto& [percent, fraction] :
         {std::pair{"7.5", "0.075"}, {"11.4825", "0.114825"}, {"10.0075", "0.100075"}, {"0.5", "0.005"}, {".25", "0.0025"},
          {"10", "0.1"}, {"100", "1"}, {"150", "1.5"}, {"0", "0"}, {"8.", "0.08"}, {"007.50", "0.075"}, {"-1.5", "-0.015"}})
        EXPECT_EQ(rs::PercentToFraction(percent), std::string(fraction)) << percent;
    for (const char* bad : {"", ".", "7,5", "7.5%", "1e1", "seven", " 7"})
        EXPECT_FALSE(rs::PercentToFraction(bad)) << bad;
}

// ---- The table check --------------------------------------------------------------

rs::TableBuild Build(const std::string& body, const std::string& header = std::string(rs::kTableHeader))
{
    return rs::BuildTable(rs::ParseSource(header + "\n" + body, "t.csv", rs::kTableHeader));
}

bool IsHole(float rate)
{
    return std::bit_cast<std::uint32_t>(rate) == 0x7FC00000u;  // the quiet NaN, sign bit clear
}

TEST(TableCheck, BuildsEveryRowWithHolesAndUnpublishedRefundRates)
{
    const rs::TableBuild b = Build("01/01/2016,12/31/2016,0.04,,S,\"61 Pa. Code 4.2(b), certified\"\n"
                                   "01/01/2017,12/31/2017,,,C,GAP: not found\n"
                                   "01/01/2018,01/01/2018,0.05,0.5,S-monthly,one day at the 50 % limit\n");
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.rows.size(), 3u);
    EXPECT_EQ(b.rows[0].dtFrom, Date::fromCivil(2016, 1, 1));
    EXPECT_EQ(b.rows[0].dtThru, Date::fromCivil(2016, 12, 31));
    EXPECT_EQ(b.rows[0].fUPRate, 0.04f);
    EXPECT_TRUE(IsHole(b.rows[0].fOPRate));  // a refund rate not published
    EXPECT_TRUE(IsHole(b.rows[1].fUPRate) && IsHole(b.rows[1].fOPRate));  // a hole both ways
    EXPECT_EQ(b.rows[1].sCalcMethod, 'C');
    EXPECT_EQ(b.rows[2].fOPRate, 0.5f);
    EXPECT_EQ(b.rows[2].sCalcMethod, 'S');
    EXPECT_FALSE(rs::IsRateNotPublished(0.0f));
    // Written and read back, the holes are the same bytes.
    const std::vector<char> bytes = rw::EncodeRateTable(b.rows);
    EXPECT_EQ(rw::EncodeRateTable(rw::DecodeRateTable(bytes).rows), bytes);
}

struct Refused {
    const char* name;
    std::string body;
    int line;
    std::string problem;
};

class TableRefusals : public testing::TestWithParam<Refused> {};

TEST_P(TableRefusals, NameTheLineAndBuildNoRow)
{
    const rs::TableBuild b = Build(GetParam().body);
    EXPECT_TRUE(b.rows.empty());
    std::string all;
    bool named = false;
    for (const rs::SourceProblem& p : b.problems) {
        all += p.text() + "\n";
        named |= p.file == "t.csv" && p.line == GetParam().line && p.what.find(GetParam().problem) != std::string::npos;
    }
    EXPECT_TRUE(named) << all;
}

const std::string kA = "01/01/2016,12/31/2016,0.04,0.03,S,a\n";
const std::string kB = "01/01/2018,12/31/2018,0.05,0.04,S,b\n";

INSTANTIATE_TEST_SUITE_P(
    TableCheck, TableRefusals,
    testing::Values(
        Refused{"Hole", kA + "01/02/2017,12/31/2017,0.04,0.04,S,b\n", 3, "not contiguous: no rate from 01/01/2017 to 01/01/2017"},
        Refused{"Overlap", kA + "12/31/2016,12/31/2017,0.04,0.04,S,b\n", 3, "overlaps"},
        Refused{"FromAfterThru", "12/31/2017,01/01/2017,0.04,0.04,S,a\n", 2, "is after thru date"},
        Refused{"NegativeRefundRate", "01/01/2017,12/31/2017,0.04,-0.01,S,a\n", 2, "overpayment rate -0.01 is negative"},
        Refused{"NegativeZero", "01/01/2017,12/31/2017,-0,0.04,S,a\n", 2, "underpayment rate -0 is negative"},
        Refused{"PerCentForAFraction", "01/01/2017,12/31/2017,7.5,0.075,S,a\n", 2, "underpayment rate 7.5 is above 50 %"},
        Refused{"JustAboveTheLimit", "01/01/2017,12/31/2017,0.05,0.500001,S,a\n", 2, "overpayment rate 0.500001 is above 50 %"},
        Refused{"NoSource", kA + "01/01/2017,12/31/2017,0.04,0.04,S,\n", 3, "the row has no source"},
        Refused{"BlankSource", kA + "01/01/2017,12/31/2017,0.04,0.04,S,\"  \"\n", 3, "the row has no source"},
        Refused{"NoUnderpaymentRate", kA + "01/01/2017,12/31/2017,,0.04,S,a\n", 3, "underpayment rate is empty"},
        Refused{"NeitherRateWithoutGap", kA + "01/01/2017,12/31/2017,,,S,a\n", 3, "underpayment rate is empty"},
        Refused{"NotAPlainDecimal", "01/01/2017,12/31/2017,0.04,4%,S,a\n", 2, "overpayment rate '4%' is not a plain decimal"},
        Refused{"RateOnAGapRow", kA + "01/01/2017,12/31/2017,0.04,,S,GAP: not found\n" + kB, 3, "but gives a rate"},
        Refused{"LeadingGap", "01/01/2017,12/31/2017,,,C,GAP: x\n" + kB, 2, "a table begins and ends with a sourced row"},
        Refused{"TrailingGap", kA + "01/01/2017,12/31/2017,,,C,GAP: x\n", 3, "a table begins and ends with a sourced row"},
        Refused{"GapWithoutMethod", kA + "01/01/2017,12/31/2017,,,,GAP: x\n" + kB, 3, "method ''"},
        Refused{"UnknownMethod", "01/01/2017,12/31/2017,0.04,0.04,M,a\n", 2, "method 'M'"},
        Refused{"ShortDate", "1/1/2017,12/31/2017,0.04,0.04,S,a\n", 2, "from date '1/1/2017'"},
        Refused{"FiveFields", "01/01/2017,12/31/2017,0.04,0.04,S\n", 2, "expected 6 fields"},
        Refused{"Empty", "", 0, "no rate periods"}),
    [](const testing::TestParamInfo<Refused>& p) { return std::string(p.param.name); });

TEST(TableCheck, AWrongHeaderIsRefused)
{
    const rs::TableBuild b = Build(kA, "from,thru,up,op,method,source");
    ASSERT_FALSE(b.ok());
    EXPECT_NE(b.problems.front().text().find("t.csv:1: "), std::string::npos) << b.problems.front().text();
}

// ---- Cutting rows at year ends -----------------------------------------------------

TEST(YearEnds, EveryPieceLiesInOneYearAndKeepsTheRow)
{
    using Pieces = std::vector<std::pair<std::string, std::string>>;
    struct Row {
        const char* from;
        const char* thru;
        Pieces pieces;
    };
    for (const Row& r :
         {Row{"01/01/2023", "12/31/2023", {{"01/01/2023", "12/31/2023"}}},
          // 92 days of 2023 (31 + 30 + 31) and 91 of the leap year 2024 (31 + 29 + 31).
          Row{"10/01/2023", "03/31/2024", {{"10/01/2023", "12/31/2023"}, {"01/01/2024", "03/31/2024"}}},
          Row{"07/01/2019", "12/31/2021", {{"07/01/2019", "12/31/2019"}, {"01/01/2020", "12/31/2020"}, {"01/01/2021", "12/31/2021"}}},
          Row{"12/31/2023", "12/31/2023", {{"12/31/2023", "12/31/2023"}}},
          Row{"12/31/2023", "01/01/2024", {{"12/31/2023", "12/31/2023"}, {"01/01/2024", "01/01/2024"}}},
          // An unreadable date passes as written, for the table check to refuse.
          Row{"4/1/2024", "06/30/2025", {{"4/1/2024", "06/30/2025"}}}}) {
        SCOPED_TRACE(r.from);
        const rs::SourceRow row{7, r.from, r.thru, "0.08", "", "S-monthly", "Notice, as published"};
        Pieces got;
        for (const rs::SourceRow& piece : rs::SplitAtYearEnds({row, row})) {
            EXPECT_EQ(piece, (rs::SourceRow{7, piece.from, piece.thru, "0.08", "", "S-monthly", "Notice, as published"}));
            got.emplace_back(piece.from, piece.thru);
        }
        Pieces twice = r.pieces;
        twice.insert(twice.end(), r.pieces.begin(), r.pieces.end());
        EXPECT_EQ(got, twice);
    }
}

}  // namespace
