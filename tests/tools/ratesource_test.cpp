// Table sources: CSV records, rates read straight to single precision, per cent figures as
// fractions, the table check's refusals, rates not published, rows cut at year ends; a state's
// schedule (per cent figures, GAP rows for periods without a published rate) as a table source; the
// coverage page.

#include "ratebuild/ratesource.h"
#include "rates/ratetable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace rs = rw::ratesrc;

namespace {

TEST(SourceTexts, CsvRecordsRatesAndPerCentFigures)
{
    const std::vector<std::string> fields{"", "TIR 18-1; simple", "a, b",
                                          "say \"x\""};  // quoted only when needed
    EXPECT_EQ(rs::SplitCsvRecord(R"(,TIR 18-1; simple,"a, b","say ""x""")"), fields);
    EXPECT_EQ(rs::JoinCsvRecord(fields), R"(,TIR 18-1; simple,"a, b","say ""x""")");
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"open)"));
    EXPECT_FALSE(rs::SplitCsvRecord(R"(a,"closed"text)"));
    EXPECT_EQ(rs::ParseRateText("0.114825"), 0.114825f);
    EXPECT_EQ(rs::ParseRateText(".5"), 0.5f);
    // Just above the midpoint between 0.25 and the next single, 0.25 + 2^-25:
    // the nearest double is the midpoint, which would round to even (0.25).
    EXPECT_EQ(rs::ParseRateText("0.250000014901161194"), std::nextafter(0.25f, 1.0f));
    for (const char* bad :
         {"", "-", ".", "7%", "1e-2", "nan", "inf", "+0.05", "0.05 ", "0,05", "0.0.5"})
        EXPECT_FALSE(rs::ParseRateText(bad)) << bad;
    EXPECT_FALSE(rs::TableMethod("c"));
    for (const auto& [percent, fraction] : {std::pair{"10.0075", "0.100075"},
                                            {"10", "0.1"},
                                            {"150", "1.5"},
                                            {"0", "0"},
                                            {"8.", "0.08"},
                                            {"007.50", "0.075"},
                                            {"-1.5", "-0.015"}})
        EXPECT_EQ(rs::PercentToFraction(percent), std::string(fraction)) << percent;
    for (const char* bad : {"", ".", "7,5", "7.5%", "1e1", "seven", " 7"})
        EXPECT_FALSE(rs::PercentToFraction(bad)) << bad;
}

rs::TableBuild Build(const std::string& body, std::string_view header = rs::kTableHeader)
{
    return rs::BuildTable(
        rs::ParseSource(std::string(header) + "\n" + body, "t.csv", rs::kTableHeader));
}

TEST(TableCheck, BuildsEveryRowWithHolesAndUnpublishedRefundRates)
{
    const rs::TableBuild b
        = Build("01/01/2016,12/31/2016,0.04,,S,\"61 Pa. Code 4.2(b), certified\"\n"
                "01/01/2017,12/31/2017,,,C,GAP: not found\n"
                "01/01/2018,01/01/2018,0.05,0.5,S-monthly,one day at the 50 % limit\n"
                "01/02/2018,12/31/2018,0.03,0,C,a published refund rate of zero\n");
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.rows.size(), 4u);
    // Not published is the quiet NaN with the sign bit clear: a refund rate
    // alone, or both rates of a hole.
    const auto hole = [](float rate) { return std::bit_cast<std::uint32_t>(rate) == 0x7FC00000u; };
    EXPECT_EQ(b.rows[0].dtThru, rw::Date::fromCivil(2016, 12, 31));
    EXPECT_TRUE(b.rows[0].fUPRate == 0.04f && hole(b.rows[0].fOPRate));
    EXPECT_TRUE(hole(b.rows[1].fUPRate) && hole(b.rows[1].fOPRate) && b.rows[1].sCalcMethod == 'C');
    EXPECT_TRUE(b.rows[2].fOPRate == 0.5f && b.rows[2].sCalcMethod == 'S');
    EXPECT_TRUE(b.rows[3].fOPRate == 0.0f && b.rows[3].sCalcMethod == 'C');
    const std::vector<char> bytes = rw::EncodeRateTable(b.rows);  // the holes read back as written
    EXPECT_EQ(rw::EncodeRateTable(rw::DecodeRateTable(bytes).rows), bytes);
    EXPECT_FALSE(Build("01/01/2016,12/31/2016,0.04,,S,a\n", "from,thru,up,op,method,source")
                     .ok());  // header
}

TEST(TableCheck, RefusalsNameTheLineAndBuildNoRow)
{
    const std::string a = "01/01/2016,12/31/2016,0.04,0.03,S,a\n",
                      b = "01/01/2018,12/31/2018,0.05,0.04,S,b\n";
    struct Row {
        std::string body;
        int line;
        std::string problem;
    };
    for (const Row& r :
         {Row{a + "01/02/2017,12/31/2017,0.04,0.04,S,b\n", 3,
              "not contiguous: no rate from 01/01/2017 to 01/01/2017"},
          Row{a + "12/31/2016,12/31/2017,0.04,0.04,S,b\n", 3, "overlaps"},
          Row{"12/31/2017,01/01/2017,0.04,0.04,S,a\n", 2, "is after thru date"},
          Row{"01/01/2017,12/31/2017,0.04,-0.01,S,a\n", 2, "overpayment rate -0.01 is negative"},
          Row{"01/01/2017,12/31/2017,-0,0.04,S,a\n", 2, "underpayment rate -0 is negative"},
          Row{"01/01/2017,12/31/2017,7.5,0.075,S,per cent\n", 2,
              "underpayment rate 7.5 is above 50 %"},
          Row{"01/01/2017,12/31/2017,0.05,0.500001,S,a\n", 2,
              "overpayment rate 0.500001 is above 50 %"},
          Row{a + "01/01/2017,12/31/2017,0.04,0.04,S,\n", 3, "the row has no source"},
          Row{a + "01/01/2017,12/31/2017,0.04,0.04,S,\"  \"\n", 3, "the row has no source"},
          Row{a + "01/01/2017,12/31/2017,,0.04,S,a\n", 3, "underpayment rate is empty"},
          Row{a + "01/01/2017,12/31/2017,,,S,not marked GAP\n", 3, "underpayment rate is empty"},
          Row{"01/01/2017,12/31/2017,0.04,4%,S,a\n", 2,
              "overpayment rate '4%' is not a plain decimal"},
          Row{a + "01/01/2017,12/31/2017,0.04,,S,GAP: not found\n" + b, 3, "but gives a rate"},
          Row{"01/01/2017,12/31/2017,,,C,GAP: x\n" + b, 2,
              "a table begins and ends with a sourced row"},
          Row{a + "01/01/2017,12/31/2017,,,C,GAP: x\n", 3,
              "a table begins and ends with a sourced row"},
          Row{a + "01/01/2017,12/31/2017,,,,GAP: x\n" + b, 3, "method ''"},
          Row{"01/01/2017,12/31/2017,0.04,0.04,M,a\n", 2, "method 'M'"},
          Row{"1/1/2017,12/31/2017,0.04,0.04,S,a\n", 2, "from date '1/1/2017'"},
          Row{"01/01/2017,12/31/2017,0.04,0.04,S\n", 2, "expected 6 fields"},
          Row{"", 0, "no rate periods"}}) {
        SCOPED_TRACE(r.problem);
        const rs::TableBuild built = Build(r.body);
        EXPECT_TRUE(built.rows.empty());
        EXPECT_TRUE(std::ranges::any_of(built.problems, [&](const rs::SourceProblem& p) {
            return p.file == "t.csv" && p.line == r.line
                   && p.what.find(r.problem) != std::string::npos;
        })) << (built.problems.empty() ? "no problem" : built.problems.front().text());
    }
}

TEST(YearEnds, EveryPieceLiesInOneYearAndKeepsTheRow)
{
    std::vector<std::string> pieces;
    for (const rs::SourceRow& r :
         rs::SplitAtYearEnds({{7, "12/31/2021", "06/30/2024", "0.08", "", "S", "Notice"}})) {
        EXPECT_EQ(r, (rs::SourceRow{7, r.from, r.thru, "0.08", "", "S", "Notice"}));
        pieces.push_back(r.from + "-" + r.thru);
    }
    EXPECT_EQ(pieces, (std::vector<std::string>{"12/31/2021-12/31/2021", "01/01/2022-12/31/2022",
                                                "01/01/2023-12/31/2023", "01/01/2024-06/30/2024"}));
}

// ---- Schedules ---------------------------------------------------------------------------

rs::SourceFile Schedule(const std::string& body)
{
    return rs::ParseSource(std::string(rs::kScheduleHeader) + "\n" + body, "XX.csv",
                           rs::kScheduleHeader);
}

// A made-up schedule (rows counted from 0, row 0 on line 2): a leading gap, sourced rows 1-3, a gap
// (4), a sourced row (5), one without a published refund rate (6), rows 7-8, a trailing gap (9).
const std::string kMadeUp = "01/01/1985,12/31/1989,,,,GAP: nothing found before 1990\n"
                            "01/01/1990,12/31/1994,9,9,S,Statute A\n"
                            "01/01/1995,12/31/1999,8,8,S,Statute A\n"
                            "01/01/2000,12/31/2004,7.5,7,S,\"Bulletin 2000-1, table\"\n"
                            "01/01/2005,12/31/2007,,,S,GAP: not found\n"
                            "01/01/2008,12/31/2008,6,6,C,Notice 2008\n"
                            "01/01/2009,12/31/2009,5,,C,Notice 2009 (refund rate not found)\n"
                            "01/01/2010,06/30/2010,4,3,C,Notice 2010\n"
                            "07/01/2010,12/31/2011,11.4825,.25,S-monthly,Notice 2010-2\n"
                            "01/01/2012,12/31/2012,,,,GAP: not yet announced\n";

TEST(Schedules, TheTableRunsFromTheFirstSourcedRowToTheLast)
{
    for (const auto& [body, begin, end] :
         std::vector<std::tuple<std::string, std::size_t, std::size_t>>{
             {kMadeUp, 1, 9},  // gaps outside are left out, gaps inside stay
             {"01/01/2000,12/31/2000,,4,S,a refund rate alone begins no "
              "table\n01/01/2001,12/31/2001,6,,S,b\n",
              1, 2},
             {"01/01/2000,12/31/2000,5,5,S,GAP: recalled but "
              "unsourced\n01/01/2001,12/31/2001,6,,S,b\n",
              1, 2}}) {
        const rs::SourcedSpan span = rs::SourcedRows(Schedule(body).rows);
        EXPECT_EQ(span.begin, begin) << body;
        EXPECT_EQ(span.end, end) << body;
    }
}

TEST(Schedules, ConvertToFractionsWithTheGapInsideAsAHole)
{
    const rs::ScheduleConversion conv = rs::ConvertSchedule(Schedule(kMadeUp));
    ASSERT_TRUE(conv.ok()) << conv.problems.front().text();
    // The gap keeps the method it gives; the rows are not yet cut at year
    // ends: the release build does that.
    const std::string source = "from,thru,underpayment,overpayment,method,source\n"
                               "01/01/1990,12/31/1994,0.09,0.09,S,Statute A\n"
                               "01/01/1995,12/31/1999,0.08,0.08,S,Statute A\n"
                               "01/01/2000,12/31/2004,0.075,0.07,S,\"Bulletin 2000-1, table\"\n"
                               "01/01/2005,12/31/2007,,,S,GAP: not found\n"
                               "01/01/2008,12/31/2008,0.06,0.06,C,Notice 2008\n"
                               "01/01/2009,12/31/2009,0.05,,C,Notice 2009 (refund rate not found)\n"
                               "01/01/2010,06/30/2010,0.04,0.03,C,Notice 2010\n"
                               "07/01/2010,12/31/2011,0.114825,0.0025,S-monthly,Notice 2010-2\n";
    EXPECT_EQ(rs::FormatTableSource(conv.rows), source);
    const rs::TableBuild built
        = rs::BuildTable(rs::ParseSource(source, "xx1.csv", rs::kTableHeader));
    ASSERT_TRUE(built.ok()) << built.problems.front().text();
    EXPECT_EQ(rs::UnpublishedUnderpaymentPeriods(built.rows),
              (std::vector<std::string>{"01/01/2005 to 12/31/2007"}));
    EXPECT_EQ(rs::UnpublishedRefundPeriods(built.rows),
              (std::vector<std::string>{"01/01/2005 to 12/31/2007", "01/01/2009 to 12/31/2009"}));
}

TEST(Schedules, RefusedConversionsNameTheLine)
{
    const std::string a = "01/01/2000,12/31/2000,5,5,S,a\n", b = "01/01/2002,12/31/2002,6,6,S,b\n";
    for (const auto& [body, line, problem] : std::vector<std::tuple<std::string, int, std::string>>{
             {a + "01/01/2001,12/31/2001,,4,S,x\n" + b, 3,
              "gives no underpayment rate but is not marked GAP:"},
             {a + "01/01/2001,12/31/2001,4,,S,GAP: a guess\n" + b, 3, "but gives a rate"},
             {"01/01/2000,12/31/2000,,,,GAP: a\n01/02/2001,12/31/2001,6,6,S,b\n", 3,
              ""},  // a hole, even in gaps
             {"01/01/2000,12/31/2000,6%,6,S,b\n", 2, ""},  // not a per cent figure
             {"01/01/2000,12/31/2000,,,,GAP: a\n", 0, ""}}) {  // nothing sourced
        SCOPED_TRACE(body);
        const rs::ScheduleConversion conv = rs::ConvertSchedule(Schedule(body));
        EXPECT_FALSE(conv.ok());
        EXPECT_TRUE(conv.rows.empty());
        if (line > 0) {
            ASSERT_FALSE(conv.problems.empty());
            EXPECT_EQ(conv.problems.front().line, line);
            EXPECT_NE(conv.problems.front().what.find(problem), std::string::npos)
                << conv.problems.front().text();
        }
    }
    EXPECT_EQ(rs::SourceFileName("Ma1-up.tbl"), "Ma1-up.csv");
}

// ---- The coverage page ---------------------------------------------------------------

TEST(CoveragePage, ListsCoverageHolesAndEachSourceOnce)
{
    const std::string md = rs::CoverageMarkdown(
        {{&rw::AuthorityForCode("FL  "),
          {{2, "01/01/2002", "12/31/2002", "0.07", "0.07", "S", "TIP *02*"},
           {3, "01/01/2003", "06/30/2003", "", "", "C", "GAP: rate not found"},
           {4, "07/01/2003", "12/31/2003", "0.04", "", "S", "TIP *02*"}}}});
    // The hole's method letter is no method; a source's periods on either side of a hole are named
    // apart, once.
    for (const char* part :
         {"| Florida | FL | fl1.tbl | 01/01/2002 | 12/31/2003 | 3 | S | 01/01/2003 to 06/30/2003 | "
          "01/01/2003 to 12/31/2003 |\n",
          "- 01/01/2002 to 12/31/2002, 07/01/2003 to 12/31/2003 (2 rows): TIP \\*02\\*\n",
          "without a published rate:\n\n- 01/01/2003 to 06/30/2003 (1 row): GAP: rate not found\n"})
        EXPECT_NE(md.find(part), std::string::npos) << part << "\n" << md;
    EXPECT_EQ(md.find("TIP \\*02"), md.rfind("TIP \\*02"));
}

}  // namespace
