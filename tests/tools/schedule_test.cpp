// A state's schedule (per cent figures, GAP rows for periods without a
// published rate) turned into a table source, and the coverage page.

#include "rates/ratetable.h"
#include "ratebuild/ratesource.h"

#include <gtest/gtest.h>

namespace rs = rw::ratesrc;

namespace {

rs::SourceFile Schedule(const std::string& body)
{
    return rs::ParseSource(std::string(rs::kScheduleHeader) + "\n" + body, "XX.csv", rs::kScheduleHeader);
}

// A made-up schedule (rows counted from 0, row 0 on line 2): a leading gap,
// sourced rows 1-3, a gap (4), a sourced row (5), a row without a published
// refund rate (6), sourced rows 7-8, and a trailing gap not yet announced (9).
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
    for (const auto& [body, begin, end] : std::vector<std::tuple<std::string, std::size_t, std::size_t>>{
             {kMadeUp, 1, 9},  // gaps outside are left out, gaps inside stay
             {"01/01/2000,12/31/2000,,4,S,a refund rate alone begins no table\n01/01/2001,12/31/2001,6,,S,b\n", 1, 2},
             {"01/01/2000,12/31/2000,5,5,S,GAP: a rate recalled is not sourced\n01/01/2001,12/31/2001,6,,S,b\n", 1, 2},
             {"01/01/2000,12/31/2000,,,,GAP: a\n01/01/2001,12/31/2001,,6,S,b\n", 0, 0}}) {
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
    const rs::TableBuild built = rs::BuildTable(rs::ParseSource(source, "xx1.csv", rs::kTableHeader));
    ASSERT_TRUE(built.ok()) << built.problems.front().text();
    EXPECT_EQ(rs::UnpublishedUnderpaymentPeriods(built.rows), (std::vector<std::string>{"01/01/2005 to 12/31/2007"}));
    EXPECT_EQ(rs::UnpublishedRefundPeriods(built.rows),
              (std::vector<std::string>{"01/01/2005 to 12/31/2007", "01/01/2009 to 12/31/2009"}));
    // Neighbouring periods without a refund rate are named as one.
    const auto merged = rs::ConvertSchedule(Schedule("01/01/2000,12/31/2000,5,,S,a\n01/01/2001,12/31/2001,6,,S,b\n"
                                                     "01/01/2002,12/31/2002,6,5,S,c\n01/01/2003,06/30/2003,7,,S,d\n"));
    EXPECT_EQ(rs::UnpublishedRefundPeriods(merged.rows),
              (std::vector<std::string>{"01/01/2000 to 12/31/2001", "01/01/2003 to 06/30/2003"}));
}

TEST(Schedules, RefusedConversionsNameTheLine)
{
    const std::string a = "01/01/2000,12/31/2000,5,5,S,a\n", b = "01/01/2002,12/31/2002,6,6,S,b\n";
    for (const auto& [body, line, problem] : std::vector<std::tuple<std::string, int, std::string>>{
             {a + "01/01/2001,12/31/2001,,4,S,refund only\n" + b, 3, "gives no underpayment rate but is not marked GAP:"},
             {a + "01/01/2001,12/31/2001,4,,S,GAP: a guess\n" + b, 3, "but gives a rate"},
             {"01/01/2000,12/31/2000,,,,GAP: a\n01/02/2001,12/31/2001,6,6,S,b\n", 3, ""},  // a hole, even in gaps
             {"01/01/2000,12/31/2000,6%,6,S,b\n", 2, ""},                                   // not a per cent figure
             {"01/01/2000,12/31/2000,,,,GAP: a\n", 0, ""}}) {                                // nothing sourced
        SCOPED_TRACE(body);
        const rs::ScheduleConversion conv = rs::ConvertSchedule(Schedule(body));
        EXPECT_FALSE(conv.ok());
        EXPECT_TRUE(conv.rows.empty());
        if (line > 0) {
            ASSERT_FALSE(conv.problems.empty());
            EXPECT_EQ(conv.problems.front().line, line);
            EXPECT_NE(conv.problems.front().what.find(problem), std::string::npos) << conv.problems.front().text();
        }
    }
    EXPECT_EQ(rs::SourceFileName("Ma1-up.tbl"), "Ma1-up.csv");
}

// ---- The coverage page ---------------------------------------------------------------

TEST(CoveragePage, ListsCoverageMethodsHolesAndEachSourceOnce)
{
    const std::vector<rs::SourceRow> pa{{2, "01/01/2017", "12/31/2018", "0.04", "0.04", "S", "61 Pa. Code 4.2(b)"},
                                        {3, "01/01/2019", "12/31/2019", "0.06", "0.06", "S", "61 Pa. Code 4.2(b)"},
                                        {4, "01/01/2020", "12/31/2020", "0.05", "0.05", "C", "Notice *2020*"}};
    const std::vector<rs::SourceRow> fl{{2, "01/01/2002", "12/31/2002", "0.07", "0.07", "S", "TIP 02"},
                                        {3, "01/01/2003", "06/30/2003", "", "", "C", "GAP: rate not found"},
                                        {4, "07/01/2003", "12/31/2003", "0.04", "", "S", "TIP 03"}};
    const std::string md = rs::CoverageMarkdown({{&rw::AuthorityForCode("PA  "), pa}, {&rw::AuthorityForCode("FL  "), fl}});
    for (const char* part :
         {"| Pennsylvania | PA | pa1.tbl | 01/01/2017 | 12/31/2020 | 3 | S, C | - | - |\n",
          "## Pennsylvania (PA, pa1.tbl)", "- 01/01/2017 to 12/31/2019: simple interest",
          "- 01/01/2020 to 12/31/2020: daily compounding", "- 01/01/2017 to 12/31/2019 (2 rows): 61 Pa. Code 4.2(b)\n",
          "(1 row): Notice \\*2020\\*",
          // The hole's method letter is no method: the column names only S.
          "| Florida | FL | fl1.tbl | 01/01/2002 | 12/31/2003 | 3 | S | 01/01/2003 to 06/30/2003 | "
          "01/01/2003 to 12/31/2003 |\n",
          "- 01/01/2003 to 06/30/2003: no published rate\n",
          "Underpayment rate not published (no published rate at all):\n\n- 01/01/2003 to 06/30/2003\n",
          "Refund (overpayment) rate not published:\n\n- 01/01/2003 to 12/31/2003\n",
          "Published sources:\n\n- 01/01/2002 to 12/31/2002 (1 row): TIP 02\n- 07/01/2003 to 12/31/2003 (1 row): TIP 03\n",
          "without a published rate:\n\n- 01/01/2003 to 06/30/2003 (1 row): GAP: rate not found\n"})
        EXPECT_NE(md.find(part), std::string::npos) << part << "\n" << md;
    EXPECT_EQ(md.find("61 Pa. Code 4.2(b)"), md.rfind("61 Pa. Code 4.2(b)"));
    EXPECT_EQ(md.find("Refund (overpayment) rate not published:"), md.rfind("Refund (overpayment) rate not published:"));
}

}  // namespace
