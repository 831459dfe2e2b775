// Reading and checking table sources: CSV records, rates read straight to
// single precision, per cent figures turned into fractions, the table check's
// refusals, refund rates and whole periods not published, rows cut at year ends.

#include "rates/ratetable.h"
#include "ratebuild/ratesource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace rs = rw::ratesrc;

namespace {

TEST(SourceTexts, CsvRecordsRatesAndPerCentFigures)
{
    const std::vector<std::string> fields{"01/01/2020", "", "TIR 18-1; simple", "a, b", "say \"x\""};
    EXPECT_EQ(rs::JoinCsvRecord(fields), R"(01/01/2020,,TIR 18-1; simple,"a, b","say ""x""")");
    EXPECT_EQ(rs::SplitCsvRecord(rs::JoinCsvRecord(fields)), fields);
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"open)"));
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"closed"text)"));
    EXPECT_EQ(rs::ParseRateText("0.114825"), 0.114825f);
    EXPECT_EQ(rs::ParseRateText(".5"), 0.5f);
    // Just above the midpoint between 0.25 and the next single, 0.25 + 2^-25:
    // the nearest double is the midpoint, which would round to even (0.25).
    EXPECT_EQ(rs::ParseRateText("0.250000014901161194"), std::nextafter(0.25f, 1.0f));
    for (const char* bad : {"", "-", ".", "7%", "1e-2", "nan", "inf", "+0.05", "0.05 ", "0,05", "0.0.5"})
        EXPECT_FALSE(rs::ParseRateText(bad)) << bad;
    EXPECT_EQ(rs::TableMethod("S-monthly"), 'S');
    EXPECT_FALSE(rs::TableMethod("c"));
    for (const auto& [percent, fraction] : {std::pair{"7.5", "0.075"}, {"11.4825", "0.114825"}, {"10.0075", "0.100075"},
                                            {".25", "0.0025"}, {"10", "0.1"}, {"150", "1.5"}, {"0", "0"}, {"8.", "0.08"},
                                            {"007.50", "0.075"}, {"-1.5", "-0.015"}})
        EXPECT_EQ(rs::PercentToFraction(percent), std::string(fraction)) << percent;
    for (const char* bad : {"", ".", "7,5", "7.5%", "1e1", "seven", " 7"})
        EXPECT_FALSE(rs::PercentToFraction(bad)) << bad;
}

rs::TableBuild Build(const std::string& body, std::string_view header = rs::kTableHeader)
{
    return rs::BuildTable(rs::ParseSource(std::string(header) + "\n" + body, "t.csv", rs::kTableHeader));
}

TEST(TableCheck, BuildsEveryRowWithHolesAndUnpublishedRefundRates)
{
    const rs::TableBuild b = Build("01/01/2016,12/31/2016,0.04,,S,\"61 Pa. Code 4.2(b), certified\"\n"
                                   "01/01/2017,12/31/2017,,,C,GAP: not found\n"
                                   "01/01/2018,01/01/2018,0.05,0.5,S-monthly,one day at the 50 % limit\n");
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.rows.size(), 3u);
    // Not published is the quiet NaN with the sign bit clear: a refund rate
    // alone, or both rates of a hole.
    const auto hole = [](float rate) { return std::bit_cast<std::uint32_t>(rate) == 0x7FC00000u; };
    EXPECT_EQ(b.rows[0].dtThru, rw::Date::fromCivil(2016, 12, 31));
    EXPECT_TRUE(b.rows[0].fUPRate == 0.04f && hole(b.rows[0].fOPRate));
    EXPECT_TRUE(hole(b.rows[1].fUPRate) && hole(b.rows[1].fOPRate) && b.rows[1].sCalcMethod == 'C');
    EXPECT_TRUE(b.rows[2].fOPRate == 0.5f && b.rows[2].sCalcMethod == 'S');
    const std::vector<char> bytes = rw::EncodeRateTable(b.rows);  // the holes read back as written
    EXPECT_EQ(rw::EncodeRateTable(rw::DecodeRateTable(bytes).rows), bytes);
    EXPECT_FALSE(Build("01/01/2016,12/31/2016,0.04,,S,a\n", "from,thru,up,op,method,source").ok());  // header
}

TEST(TableCheck, RefusalsNameTheLineAndBuildNoRow)
{
    const std::string a = "01/01/2016,12/31/2016,0.04,0.03,S,a\n", b = "01/01/2018,12/31/2018,0.05,0.04,S,b\n";
    struct Row {
        std::string body;
        int line;
        std::string problem;
    };
    for (const Row& r :
         {Row{a + "01/02/2017,12/31/2017,0.04,0.04,S,b\n", 3, "not contiguous: no rate from 01/01/2017 to 01/01/2017"},
          Row{a + "12/31/2016,12/31/2017,0.04,0.04,S,b\n", 3, "overlaps"},
          Row{"12/31/2017,01/01/2017,0.04,0.04,S,a\n", 2, "is after thru date"},
          Row{"01/01/2017,12/31/2017,0.04,-0.01,S,a\n", 2, "overpayment rate -0.01 is negative"},
          Row{"01/01/2017,12/31/2017,-0,0.04,S,a\n", 2, "underpayment rate -0 is negative"},
          Row{"01/01/2017,12/31/2017,7.5,0.075,S,per cent\n", 2, "underpayment rate 7.5 is above 50 %"},
          Row{"01/01/2017,12/31/2017,0.05,0.500001,S,a\n", 2, "overpayment rate 0.500001 is above 50 %"},
          Row{a + "01/01/2017,12/31/2017,0.04,0.04,S,\n", 3, "the row has no source"},
          Row{a + "01/01/2017,12/31/2017,0.04,0.04,S,\"  \"\n", 3, "the row has no source"},
          Row{a + "01/01/2017,12/31/2017,,0.04,S,a\n", 3, "underpayment rate is empty"},
          Row{a + "01/01/2017,12/31/2017,,,S,not marked GAP\n", 3, "underpayment rate is empty"},
          Row{"01/01/2017,12/31/2017,0.04,4%,S,a\n", 2, "overpayment rate '4%' is not a plain decimal"},
          Row{a + "01/01/2017,12/31/2017,0.04,,S,GAP: not found\n" + b, 3, "but gives a rate"},
          Row{"01/01/2017,12/31/2017,,,C,GAP: x\n" + b, 2, "a table begins and ends with a sourced row"},
          Row{a + "01/01/2017,12/31/2017,,,C,GAP: x\n", 3, "a table begins and ends with a sourced row"},
          Row{a + "01/01/2017,12/31/2017,,,,GAP: x\n" + b, 3, "method ''"},
          Row{"01/01/2017,12/31/2017,0.04,0.04,M,a\n", 2, "method 'M'"},
          Row{"1/1/2017,12/31/2017,0.04,0.04,S,a\n", 2, "from date '1/1/2017'"},
          Row{"01/01/2017,12/31/2017,0.04,0.04,S\n", 2, "expected 6 fields"}, Row{"", 0, "no rate periods"}}) {
        SCOPED_TRACE(r.problem);
        const rs::TableBuild built = Build(r.body);
        EXPECT_TRUE(built.rows.empty());
        EXPECT_TRUE(std::ranges::any_of(built.problems, [&](const rs::SourceProblem& p) {
            return p.file == "t.csv" && p.line == r.line && p.what.find(r.problem) != std::string::npos;
        })) << (built.problems.empty() ? "no problem" : built.problems.front().text());
    }
}

TEST(YearEnds, EveryPieceLiesInOneYearAndKeepsTheRow)
{
    using Pieces = std::vector<std::pair<std::string, std::string>>;
    for (const auto& [from, thru, pieces] : std::vector<std::tuple<std::string, std::string, Pieces>>{
             {"01/01/2023", "12/31/2023", {{"01/01/2023", "12/31/2023"}}},
             // 92 days of 2023 (31 + 30 + 31) and 91 of the leap year 2024 (31 + 29 + 31).
             {"10/01/2023", "03/31/2024", {{"10/01/2023", "12/31/2023"}, {"01/01/2024", "03/31/2024"}}},
             {"07/01/2019", "12/31/2021",
              {{"07/01/2019", "12/31/2019"}, {"01/01/2020", "12/31/2020"}, {"01/01/2021", "12/31/2021"}}},
             {"12/31/2023", "01/01/2024", {{"12/31/2023", "12/31/2023"}, {"01/01/2024", "01/01/2024"}}},
             // An unreadable date passes as written, for the table check to refuse.
             {"4/1/2024", "06/30/2025", {{"4/1/2024", "06/30/2025"}}}}) {
        SCOPED_TRACE(from);
        const rs::SourceRow row{7, from, thru, "0.08", "", "S-monthly", "Notice, as published"};
        Pieces got;
        for (const rs::SourceRow& piece : rs::SplitAtYearEnds({row, row})) {
            EXPECT_EQ(piece, (rs::SourceRow{7, piece.from, piece.thru, "0.08", "", "S-monthly", "Notice, as published"}));
            got.emplace_back(piece.from, piece.thru);
        }
        Pieces twice = pieces;
        twice.insert(twice.end(), pieces.begin(), pieces.end());
        EXPECT_EQ(got, twice);
    }
}

}  // namespace
