// Converting a researched state schedule into a table source: which rows a
// table takes when the schedule has gaps or refund rates that were not
// published, its holes, and the coverage page.

#include "rates/ratetable.h"
#include "ratebuild/ratesource.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace rs = rw::ratesrc;

namespace {

const std::string kScheduleHeader
    = "from_mm/dd/yyyy,thru_mm/dd/yyyy,underpayment_pct,overpayment_pct,method,source\n";

rs::SourceFile schedule(const std::string& body)
{
    return rs::ParseSource(kScheduleHeader + body, "XX.csv", rs::kScheduleHeader);
}

// A made-up schedule (rows counted from 0, row 0 on line 2): a gap at the
// start (row 0), a sourced run (rows 1-3), a gap (row 4), a sourced row (5), a
// row whose refund rate was not published (6), a sourced run (7-8), and a
// gap at the end for the periods not yet announced (9).
const std::string kMadeUp
    = "01/01/1985,12/31/1989,,,,GAP: nothing found before 1990\n"
      "01/01/1990,12/31/1994,9,9,S,Statute A\n"
      "01/01/1995,12/31/1999,8,8,S,Statute A\n"
      "01/01/2000,12/31/2004,7.5,7,S,\"Bulletin 2000-1, table\"\n"
      "01/01/2005,12/31/2007,,,,GAP: not found\n"
      "01/01/2008,12/31/2008,6,6,C,Notice 2008\n"
      "01/01/2009,12/31/2009,5,,C,Notice 2009 (refund rate not found)\n"
      "01/01/2010,06/30/2010,4,3,C,Notice 2010\n"
      "07/01/2010,12/31/2011,11.4825,.25,S-monthly,Notice 2010-2\n"
      "01/01/2012,12/31/2012,,,,GAP: not yet announced\n";

struct SpanCase {
    const char* name;
    std::string body;
    std::size_t begin;
    std::size_t end;
};

class SourcedSpan : public ::testing::TestWithParam<SpanCase> { };

TEST_P(SourcedSpan, RunsFromTheFirstSourcedRowToTheLast)
{
    const auto src = schedule(GetParam().body);
    ASSERT_TRUE(src.problems.empty());
    const rs::SourcedSpan span = rs::SourcedRows(src.rows);
    EXPECT_EQ(span.begin, GetParam().begin);
    EXPECT_EQ(span.end, GetParam().end);
}

INSTANTIATE_TEST_SUITE_P(
    Schedules, SourcedSpan,
    ::testing::Values(
        // Rows 1-8: the gap of row 4 stays inside; rows 0 and 9 are left out.
        SpanCase{"GapsOutsideAreLeftOutGapsInsideStay", kMadeUp, 1, 9},
        SpanCase{"WithoutGapsEveryRow", "01/01/2000,12/31/2000,5,5,S,a\n01/01/2001,12/31/2001,6,6,S,b\n", 0, 2},
        // Row 0 gives only a refund rate: the table begins where the
        // underpayment rates begin, at row 1.
        SpanCase{"ARefundRateAloneDoesNotBeginATable",
                 "01/01/2000,12/31/2000,,4,S,refund rate only\n01/01/2001,12/31/2001,6,,S,b\n", 1, 2},
        SpanCase{"NothingSourced", "01/01/2000,12/31/2000,,,,GAP: a\n01/01/2001,12/31/2001,,6,S,b\n", 0, 0}),
    [](const ::testing::TestParamInfo<SpanCase>& i) { return std::string(i.param.name); });

TEST(SourcedRow, NeedsTheUnderpaymentRateAndNoGapMark)
{
    rs::SourceRow r{2, "01/01/2000", "12/31/2000", "5", "5", "S", "Statute"};
    EXPECT_TRUE(rs::IsSourcedScheduleRow(r));
    EXPECT_FALSE(rs::IsGapRow(r));
    r.overpayment.clear();
    EXPECT_TRUE(rs::IsSourcedScheduleRow(r));
    r.overpayment = "5";
    r.underpayment.clear();
    EXPECT_FALSE(rs::IsSourcedScheduleRow(r));
    r.underpayment = "5";
    r.source = "GAP: recalled but not published";
    EXPECT_FALSE(rs::IsSourcedScheduleRow(r));
    EXPECT_TRUE(rs::IsGapRow(r));
}

TEST(ScheduleConversion, NothingSourcedIsRefused)
{
    const auto conv = rs::ConvertSchedule(schedule("01/01/2000,12/31/2000,,,,GAP: a\n01/01/2001,12/31/2001,,6,S,b\n"));
    EXPECT_FALSE(conv.ok());
    EXPECT_TRUE(conv.rows.empty());
}

TEST(ScheduleConversion, WritesTheRowsAsFractionsAndTheGapInsideAsAHole)
{
    const auto conv = rs::ConvertSchedule(schedule(kMadeUp));
    ASSERT_TRUE(conv.ok()) << (conv.problems.empty() ? "" : conv.problems.front().text());
    // The refund rate that was not published stays empty; the gap between
    // sourced rows has both rates empty, the method C and its note. The rows
    // are not yet cut at year ends: the release build does that.
    EXPECT_EQ(rs::FormatTableSource(conv.rows),
              "from,thru,underpayment,overpayment,method,source\n"
              "01/01/1990,12/31/1994,0.09,0.09,S,Statute A\n"
              "01/01/1995,12/31/1999,0.08,0.08,S,Statute A\n"
              "01/01/2000,12/31/2004,0.075,0.07,S,\"Bulletin 2000-1, table\"\n"
              "01/01/2005,12/31/2007,,,C,GAP: not found\n"
              "01/01/2008,12/31/2008,0.06,0.06,C,Notice 2008\n"
              "01/01/2009,12/31/2009,0.05,,C,Notice 2009 (refund rate not found)\n"
              "01/01/2010,06/30/2010,0.04,0.03,C,Notice 2010\n"
              "07/01/2010,12/31/2011,0.114825,0.0025,S-monthly,Notice 2010-2\n");

    // The written source passes the table check; the hole is a NaN both ways.
    const auto built
        = rs::BuildTable(rs::ParseSource(rs::FormatTableSource(conv.rows), "xx1.csv", rs::kTableHeader));
    ASSERT_TRUE(built.ok()) << built.problems.front().text();
    ASSERT_EQ(built.rows.size(), 8u);
    EXPECT_TRUE(std::isnan(built.rows[3].fUPRate));
    EXPECT_TRUE(std::isnan(built.rows[3].fOPRate));
    EXPECT_EQ(built.rows[3].sCalcMethod, 'C');
    EXPECT_EQ(built.rows[5].fUPRate, 0.05f);
    EXPECT_TRUE(std::isnan(built.rows[5].fOPRate));
    EXPECT_EQ(built.rows[7].fUPRate, 0.114825f);
    EXPECT_EQ(built.rows[7].fOPRate, 0.0025f);
    EXPECT_EQ(built.rows[7].sCalcMethod, 'S');
    EXPECT_EQ(rs::UnpublishedUnderpaymentPeriods(built.rows),
              (std::vector<std::string>{"01/01/2005 to 12/31/2007"}));
    EXPECT_EQ(rs::UnpublishedRefundPeriods(built.rows),
              (std::vector<std::string>{"01/01/2005 to 12/31/2007", "01/01/2009 to 12/31/2009"}));
}

TEST(ScheduleConversion, AGapKeepsTheMethodItGives)
{
    const auto conv = rs::ConvertSchedule(schedule("01/01/2000,12/31/2000,5,5,S,a\n"
                                                   "01/01/2001,12/31/2001,,,S,GAP: a year not found\n"
                                                   "01/01/2002,12/31/2002,6,6,S,b\n"));
    ASSERT_TRUE(conv.ok());
    ASSERT_EQ(conv.rows.size(), 3u);
    EXPECT_EQ(conv.rows[1].method, "S");
    EXPECT_EQ(conv.rows[1].underpayment, "");
    EXPECT_EQ(conv.rows[1].overpayment, "");
}

TEST(ScheduleConversion, RefusesRowsInsideTheTableThatAreNeitherSourcedNorGaps)
{
    struct Case {
        const char* what;
        const char* middle;
        const char* problem;
    };
    for (const Case& c : {Case{"a refund rate alone", "01/01/2001,12/31/2001,,4,S,refund rate only\n",
                               "gives no underpayment rate but is not marked GAP:"},
                          Case{"a GAP row with a rate", "01/01/2001,12/31/2001,4,,S,GAP: a guess\n",
                               "but gives a rate"}}) {
        SCOPED_TRACE(c.what);
        const auto conv = rs::ConvertSchedule(
            schedule(std::string("01/01/2000,12/31/2000,5,5,S,a\n") + c.middle + "01/01/2002,12/31/2002,6,6,S,b\n"));
        EXPECT_FALSE(conv.ok());
        EXPECT_TRUE(conv.rows.empty());
        ASSERT_FALSE(conv.problems.empty());
        EXPECT_EQ(conv.problems.front().line, 3);
        EXPECT_NE(conv.problems.front().what.find(c.problem), std::string::npos) << conv.problems.front().text();
    }
}

TEST(ScheduleConversion, UnpublishedRefundPeriodsMergeNeighbouringRows)
{
    const auto conv = rs::ConvertSchedule(schedule("01/01/2000,12/31/2000,5,,S,a\n"
                                                   "01/01/2001,12/31/2001,6,,S,b\n"
                                                   "01/01/2002,12/31/2002,6,5,S,c\n"
                                                   "01/01/2003,06/30/2003,7,,S,d\n"));
    ASSERT_TRUE(conv.ok());
    EXPECT_EQ(rs::UnpublishedRefundPeriods(conv.rows),
              (std::vector<std::string>{"01/01/2000 to 12/31/2001", "01/01/2003 to 06/30/2003"}));
    const auto built
        = rs::BuildTable(rs::ParseSource(rs::FormatTableSource(conv.rows), "xx1.csv", rs::kTableHeader));
    ASSERT_TRUE(built.ok());
    EXPECT_EQ(rs::UnpublishedRefundPeriods(built.rows),
              (std::vector<std::string>{"01/01/2000 to 12/31/2001", "01/01/2003 to 06/30/2003"}));
}

TEST(ScheduleConversion, SourceTextsWithCommasSurvive)
{
    const auto conv
        = rs::ConvertSchedule(schedule("01/01/2000,12/31/2004,7.5,7,S,\"Bulletin 2000-1, table\"\n"));
    ASSERT_TRUE(conv.ok());
    EXPECT_EQ(rs::FormatTableSource(conv.rows),
              "from,thru,underpayment,overpayment,method,source\n"
              "01/01/2000,12/31/2004,0.075,0.07,S,\"Bulletin 2000-1, table\"\n");
}

TEST(ScheduleConversion, RefusesAScheduleWithHolesEvenInGaps)
{
    const auto conv = rs::ConvertSchedule(schedule("01/01/2000,12/31/2000,,,,GAP: a\n"
                                                   "01/02/2001,12/31/2001,6,6,S,b\n"));
    EXPECT_FALSE(conv.ok());
    ASSERT_FALSE(conv.problems.empty());
    EXPECT_EQ(conv.problems.front().line, 3);
}

TEST(ScheduleConversion, RefusesRatesThatAreNotPerCentFigures)
{
    const auto conv = rs::ConvertSchedule(schedule("01/01/2000,12/31/2000,6%,6,S,b\n"));
    EXPECT_FALSE(conv.ok());
}

TEST(SourceFileName, ReplacesTheExtensionKeepingCase)
{
    EXPECT_EQ(rs::SourceFileName("Il-st.tbl"), "Il-st.csv");
    EXPECT_EQ(rs::SourceFileName("Ma1-up.tbl"), "Ma1-up.csv");
    EXPECT_EQ(rs::SourceFileName("fed.tbl"), "fed.csv");
}

TEST(CoveragePage, ListsCoverageMethodsAndEachSourceOnce)
{
    const rw::Authority& pa = rw::AuthorityForCode("PA  ");
    std::vector<rs::SourceRow> rows{
        {2, "01/01/2017", "12/31/2018", "0.04", "0.04", "S", "61 Pa. Code 4.2(b)"},
        {3, "01/01/2019", "12/31/2019", "0.06", "0.06", "S", "61 Pa. Code 4.2(b)"},
        {4, "01/01/2020", "12/31/2020", "0.05", "0.05", "C", "Notice *2020*"},
    };
    const std::string md = rs::CoverageMarkdown({{&pa, rows}});
    EXPECT_NE(md.find("| Pennsylvania | PA | pa1.tbl | 01/01/2017 | 12/31/2020 | 3 | S, C | - | - |\n"),
              std::string::npos)
        << md;
    EXPECT_EQ(md.find("Refund (overpayment) rate not published:"), std::string::npos);
    EXPECT_NE(md.find("## Pennsylvania (PA, pa1.tbl)"), std::string::npos);
    EXPECT_NE(md.find("- 01/01/2017 to 12/31/2019: simple interest"), std::string::npos);
    EXPECT_NE(md.find("- 01/01/2020 to 12/31/2020: daily compounding"), std::string::npos);
    EXPECT_NE(md.find("- 01/01/2017 to 12/31/2019 (2 rows): 61 Pa. Code 4.2(b)\n"), std::string::npos);
    EXPECT_NE(md.find("(1 row): Notice \\*2020\\*"), std::string::npos);
    // Each source text once.
    EXPECT_EQ(md.find("61 Pa. Code 4.2(b)"), md.rfind("61 Pa. Code 4.2(b)"));
}

TEST(CoveragePage, NamesThePeriodsWithoutAPublishedRefundRate)
{
    const rw::Authority& mo = rw::AuthorityForCode("MO  ");
    std::vector<rs::SourceRow> rows{
        {2, "01/01/2019", "03/31/2020", "0.05", "", "S", "12 CSR 10-41.010"},
        {3, "04/01/2020", "06/30/2020", "0.05", "0.02", "S", "12 CSR 10-41.010; refund notes"},
        {4, "07/01/2021", "09/30/2022", "0.03", "", "S", "12 CSR 10-41.010"},
    };
    const std::string md = rs::CoverageMarkdown({{&mo, rows}});
    EXPECT_NE(md.find("| Missouri | MO | mo1.tbl | 01/01/2019 | 09/30/2022 | 3 | S | - | "
                      "01/01/2019 to 03/31/2020, 07/01/2021 to 09/30/2022 |\n"),
              std::string::npos)
        << md;
    EXPECT_NE(md.find("Refund (overpayment) rate not published:\n\n"
                      "- 01/01/2019 to 03/31/2020\n"
                      "- 07/01/2021 to 09/30/2022\n"),
              std::string::npos)
        << md;
    EXPECT_NE(md.find("cannot be computed"), std::string::npos);
}

TEST(CoveragePage, NamesTheHolesWithTheirResearchNotes)
{
    const rw::Authority& fl = rw::AuthorityForCode("FL  ");
    std::vector<rs::SourceRow> rows{
        {2, "01/01/2002", "12/31/2002", "0.07", "0.07", "S", "TIP 02"},
        {3, "01/01/2003", "06/30/2003", "", "", "C", "GAP: rate for this half-year not found"},
        {4, "07/01/2003", "12/31/2003", "0.04", "", "S", "TIP 03"},
    };
    const std::string md = rs::CoverageMarkdown({{&fl, rows}});
    // The hole's method letter is no method: the column names only S.
    EXPECT_NE(md.find("| Florida | FL | fl1.tbl | 01/01/2002 | 12/31/2003 | 3 | S | 01/01/2003 to 06/30/2003 | "
                      "01/01/2003 to 12/31/2003 |\n"),
              std::string::npos)
        << md;
    EXPECT_NE(md.find("- 01/01/2003 to 06/30/2003: no published rate\n"), std::string::npos) << md;
    EXPECT_NE(md.find("Underpayment rate not published (no published rate at all):\n\n- 01/01/2003 to 06/30/2003\n"),
              std::string::npos)
        << md;
    // Published sources and the research notes of the holes apart.
    EXPECT_NE(md.find("Published sources:\n\n- 01/01/2002 to 12/31/2002 (1 row): TIP 02\n"
                      "- 07/01/2003 to 12/31/2003 (1 row): TIP 03\n"),
              std::string::npos)
        << md;
    EXPECT_NE(md.find("without a published rate:\n\n- 01/01/2003 to 06/30/2003 (1 row): GAP: rate for this "
                      "half-year not found\n"),
              std::string::npos)
        << md;
}

}  // namespace
