// Converting a researched state schedule into a table source: which rows a
// table keeps when the schedule has gaps or refund rates that were not
// published, and the coverage page.

#include "casedata/ratetable.h"
#include "tools/ratetables/ratesource.h"

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

// A made-up schedule (rows counted from 0, row 0 on line 2): a long sourced
// run (rows 0-2), a gap (row 3), a sourced row (4), a row whose refund rate
// was not published (5), a short sourced run (6-7), and a gap at the end for
// the periods not yet announced (8).
const std::string kMadeUp
    = "01/01/1990,12/31/1994,9,9,S,Statute A\n"
      "01/01/1995,12/31/1999,8,8,S,Statute A\n"
      "01/01/2000,12/31/2004,7.5,7,S,\"Bulletin 2000-1, table\"\n"
      "01/01/2005,12/31/2007,,,,GAP: not found\n"
      "01/01/2008,12/31/2008,6,6,C,Notice 2008\n"
      "01/01/2009,12/31/2009,5,,C,Notice 2009 (refund rate not found)\n"
      "01/01/2010,06/30/2010,4,3,C,Notice 2010\n"
      "07/01/2010,12/31/2011,11.4825,.25,S-monthly,Notice 2010-2\n"
      "01/01/2012,12/31/2012,,,,GAP: not yet announced\n";

TEST(GapRule, KeepsTheRunReachingTheLatestUsableRow)
{
    const auto src = schedule(kMadeUp);
    ASSERT_TRUE(src.problems.empty());
    // The latest usable row is row 7; going back, row 5 has no refund rate but
    // its underpayment rate is published, so it does not break the run, which
    // reaches back to the gap of row 3: rows 4-7. The longer run of rows 0-2
    // lies beyond that gap and is left out.
    const rs::KeptRun run = rs::LatestUsableRun(src.rows);
    EXPECT_EQ(run.begin, 4u);
    EXPECT_EQ(run.end, 8u);
}

TEST(GapRule, ARowWithoutAnUnderpaymentRateBreaksTheRun)
{
    // Row 1 gives only a refund rate: the table needs an underpayment rate
    // for every period, so the run is rows 2-3.
    const auto src = schedule("01/01/2000,12/31/2000,5,5,S,a\n"
                              "01/01/2001,12/31/2001,,4,S,refund rate only\n"
                              "01/01/2002,12/31/2002,6,,S,b\n"
                              "01/01/2003,12/31/2003,6,5,S,c\n");
    const rs::KeptRun run = rs::LatestUsableRun(src.rows);
    EXPECT_EQ(run.begin, 2u);
    EXPECT_EQ(run.end, 4u);
}

TEST(GapRule, UsableRowsNeedTheUnderpaymentRateAndNoGapMark)
{
    rs::SourceRow r{2, "01/01/2000", "12/31/2000", "5", "5", "S", "Statute"};
    EXPECT_TRUE(rs::IsUsableScheduleRow(r));
    r.overpayment.clear();
    EXPECT_TRUE(rs::IsUsableScheduleRow(r));
    r.overpayment = "5";
    r.underpayment.clear();
    EXPECT_FALSE(rs::IsUsableScheduleRow(r));
    r.underpayment = "5";
    r.source = "GAP: recalled but not published";
    EXPECT_FALSE(rs::IsUsableScheduleRow(r));
}

TEST(GapRule, WithoutGapsEveryRowIsKept)
{
    const auto src = schedule("01/01/2000,12/31/2000,5,5,S,a\n01/01/2001,12/31/2001,6,6,S,b\n");
    const rs::KeptRun run = rs::LatestUsableRun(src.rows);
    EXPECT_EQ(run.begin, 0u);
    EXPECT_EQ(run.end, 2u);
}

TEST(GapRule, NothingUsableKeepsNothing)
{
    const auto src = schedule("01/01/2000,12/31/2000,,,,GAP: a\n01/01/2001,12/31/2001,,6,S,b\n");
    const rs::KeptRun run = rs::LatestUsableRun(src.rows);
    EXPECT_EQ(run.begin, run.end);
    const auto conv = rs::ConvertSchedule(src);
    EXPECT_FALSE(conv.ok());
    EXPECT_TRUE(conv.rows.empty());
}

TEST(ScheduleConversion, WritesTheKeptRowsAsFractions)
{
    const auto conv = rs::ConvertSchedule(schedule(kMadeUp));
    ASSERT_TRUE(conv.ok()) << (conv.problems.empty() ? "" : conv.problems.front().text());
    // The refund rate that was not published stays empty.
    EXPECT_EQ(rs::FormatTableSource(conv.rows),
              "from,thru,underpayment,overpayment,method,source\n"
              "01/01/2008,12/31/2008,0.06,0.06,C,Notice 2008\n"
              "01/01/2009,12/31/2009,0.05,,C,Notice 2009 (refund rate not found)\n"
              "01/01/2010,06/30/2010,0.04,0.03,C,Notice 2010\n"
              "07/01/2010,12/31/2011,0.114825,0.0025,S-monthly,Notice 2010-2\n");

    // The written source passes the table check.
    const auto built
        = rs::BuildTable(rs::ParseSource(rs::FormatTableSource(conv.rows), "xx1.csv", rs::kTableHeader));
    ASSERT_TRUE(built.ok());
    ASSERT_EQ(built.rows.size(), 4u);
    EXPECT_EQ(built.rows[1].fUPRate, 0.05f);
    EXPECT_TRUE(std::isnan(built.rows[1].fOPRate));
    EXPECT_EQ(built.rows[3].fUPRate, 0.114825f);
    EXPECT_EQ(built.rows[3].fOPRate, 0.0025f);
    EXPECT_EQ(built.rows[3].sCalcMethod, 'S');
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
    EXPECT_NE(md.find("| Pennsylvania | PA | pa1.tbl | 01/01/2017 | 12/31/2020 | 3 | S, C | - |"),
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
    EXPECT_NE(md.find("| Missouri | MO | mo1.tbl | 01/01/2019 | 09/30/2022 | 3 | S | "
                      "01/01/2019 to 03/31/2020, 07/01/2021 to 09/30/2022 |"),
              std::string::npos)
        << md;
    EXPECT_NE(md.find("Refund (overpayment) rate not published:\n\n"
                      "- 01/01/2019 to 03/31/2020\n"
                      "- 07/01/2021 to 09/30/2022\n"),
              std::string::npos)
        << md;
    EXPECT_NE(md.find("cannot be computed"), std::string::npos);
}

}  // namespace
