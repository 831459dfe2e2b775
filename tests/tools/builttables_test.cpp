// The tables and release file the build makes from the frozen sources of the
// fourth quarter of 2026 (tests/fixtures/rates-2026q4), against figures copied
// by hand from those sources. A state table runs from its first to its last
// sourced row and every row is cut at each 31 December it spans. Day numbers
// count from 30 December 1899: 12/31/2026 is 46,387 (1/1/2018, 43,101, plus
// 9 years and 2 leap days, less one), 3/31/2027 90 days later.

#include "rates/ratetable.h"
#include "rates/release.h"
#include "ratebuild/ratesource.h"

#include "support/releases.h"
#include "support/shelldoubles.h"

#include <gtest/gtest.h>

#include <cmath>

using rw::Date;

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();  // not published
const Date kEnd2026(46387.0);
const Date kEnd2027Q1(46387.0 + 90.0);

rw::RateTable Table(const std::string& file)
{
    const auto r = rw::ReadRateTableFile(rwtest::FixtureReleaseFolder() / file);
    EXPECT_EQ(r.status, rw::RateTableReadResult::Status::Ok) << file;
    return r.rows;
}

Date D(int y, int m, int d)
{
    return Date::fromCivil(y, m, d);
}

TEST(FixtureTables, FirstAndLastDayAndRows)
{
    struct Row {
        const char* file;
        Date first, last;
        std::size_t rows;
    };
    for (const Row& r : {
             // 12 simple-interest rows before 1983 (cut at the rate changes of 2/1/1976,
             // 1978, 1980 and 1982 and at every year end), then one per quarter from
             // 1/1/1983 to 3/31/2027: 44 x 4 + 1 = 177. 7/1/1975 is day 27,576.
             Row{"fed.tbl", Date(27576.0), kEnd2027Q1, 12 + 177},
             // Whole years 1982-2026, one row each.
             Row{"pa1.tbl", D(1982, 1, 1), kEnd2026, 45},
             // The schedule's 32 rows less the trailing GAP (7-12/2026) are 31; cutting at
             // year ends adds 9 (1990-1999), 4 (the GAP 2004-2008), 2 (1/2011-6/2013),
             // 1 (7/2013-6/2014), 3 (7/2014-6/2017), 1 (7/2017-6/2018) and 1 (7/2021-6/2022).
             Row{"fl1.tbl", D(1990, 1, 1), D(2026, 6, 30), 52},
             // The leading GAP (1990-2007) is left out; whole years 2008-2026.
             Row{"ar1.tbl", D(2008, 1, 1), kEnd2026, 19},
             // 13 rows less the leading and trailing GAPs are 11; the GAPs inside add
             // 3 (2003-2006), 8 (7/2007-2015) and 1 (2018-2019).
             Row{"wv1.tbl", D(2002, 7, 1), D(2023, 12, 31), 23},
             // The quarter 7-9/2006 gives only a refund rate and lies before the first
             // sourced row: the fourth quarter of 2006 and 20 whole years.
             Row{"Ri1.tbl", D(2006, 10, 1), kEnd2026, 21}}) {
        SCOPED_TRACE(r.file);
        const rw::RateTable t = Table(r.file);
        ASSERT_FALSE(t.empty());
        EXPECT_EQ(t.front().dtFrom, r.first);
        EXPECT_EQ(t.back().dtThru, r.last);
        EXPECT_EQ(t.size(), r.rows);
    }
}

TEST(FixtureTables, RowsHoldTheSourcesFigures)
{
    struct Row {
        const char* file;
        Date from, thru;
        float up, op;
        char method;
    };
    for (const Row& e : {
             // fed.csv: 07/01/1975,12/31/1975,0.09,0.09,S; 01/01/1983,03/31/1983,0.16,0.16,C
             // (compounding begins); the estimate 01/01/2027,03/31/2027,0.07,0.07,C is kept.
             Row{"fed.tbl", Date(27576.0), D(1975, 12, 31), 0.09f, 0.09f, 'S'},
             Row{"fed.tbl", D(1983, 1, 1), D(1983, 3, 31), 0.16f, 0.16f, 'C'},
             Row{"fed.tbl", Date(46388.0), kEnd2027Q1, 0.07f, 0.07f, 'C'},
             // PA.csv: 01/01/1982,12/31/1982,20,20,S (per cent); 01/01/2011,12/31/2016,3,3,S: its 2013 piece.
             Row{"pa1.tbl", D(1982, 1, 1), D(1982, 12, 31), 0.2f, 0.2f, 'S'},
             Row{"pa1.tbl", D(2013, 1, 1), D(2013, 12, 31), 0.03f, 0.03f, 'S'},
             // FL.csv: 01/01/1990,12/31/1999,12,,S: its 1995 piece, no refund rate;
             // 01/01/2003,06/30/2003,,,,GAP: a hole both ways, method C; 01/01/2004,12/31/2008
             // GAP: its 2006 piece; 01/01/2026,06/30/2026,11,11,S: the last sourced row.
             Row{"fl1.tbl", D(1995, 1, 1), D(1995, 12, 31), 0.12f, kNone, 'S'},
             Row{"fl1.tbl", D(2003, 1, 1), D(2003, 6, 30), kNone, kNone, 'C'},
             Row{"fl1.tbl", D(2006, 1, 1), D(2006, 12, 31), kNone, kNone, 'C'},
             Row{"fl1.tbl", D(2026, 1, 1), D(2026, 6, 30), 0.11f, 0.11f, 'S'},
             // SC.csv: 10/01/2011,03/31/2016,3,0,C: a published refund rate of zero is a rate.
             Row{"sc1.tbl", D(2016, 1, 1), D(2016, 3, 31), 0.03f, 0.0f, 'C'},
             // MD.csv: 01/01/2025,12/31/2025,11.4825,11.4825,S-monthly, tabled simple.
             Row{"md1.tbl", D(2025, 1, 1), D(2025, 12, 31), 0.114825f, 0.114825f, 'S'},
             // RI.csv: 10/01/2006,12/31/2006,18,6.75,S
             Row{"Ri1.tbl", D(2006, 10, 1), D(2006, 12, 31), 0.18f, 0.0675f, 'S'}}) {
        SCOPED_TRACE(std::string(e.file) + " " + rw::FormatMMDDYYYY(e.from));
        const rw::RateTable t = Table(e.file);
        const auto found = std::find_if(t.begin(), t.end(), [&](const rw::RateRow& r) { return r.dtFrom == e.from; });
        ASSERT_NE(found, t.end());
        EXPECT_EQ(found->dtThru, e.thru);
        EXPECT_TRUE(std::isnan(e.up) ? std::isnan(found->fUPRate) : found->fUPRate == e.up) << found->fUPRate;
        EXPECT_TRUE(std::isnan(e.op) ? std::isnan(found->fOPRate) : found->fOPRate == e.op) << found->fOPRate;
        EXPECT_EQ(found->sCalcMethod, e.method);
    }
}

// Verified through the last row of fed.csv not marked ESTIMATE, estimated
// through the table's end; the minimums of ftf_minimum.csv.
TEST(FixtureTables, ReleaseFileAndTheHolesInTheSources)
{
    const std::string head = "name=Qrat2026Q4\ndescription=2026, 4th Quarter\nverified_through=12/31/2026\n"
                             "verified_through_text=December 31, 2026\nestimated_through=03/31/2027\n"
                             "estimated_through_text=March 31, 2027\nftf_minimum=1800,100.00,IRC 6651(a)";
    EXPECT_TRUE(rwtest::ReadText(rwtest::FixtureReleaseFolder() / rw::kReleaseFileName).starts_with(head));
    const rw::ReleaseInfo& info = rwtest::FixtureRelease();
    EXPECT_EQ(info.verifiedThrough, kEnd2026);
    EXPECT_EQ(info.estimatedThrough, kEnd2027Q1);
    for (const auto& [year, cents] : {std::pair{2015, 135'00}, {2016, 205'00}, {2018, 210'00}, {2021, 435'00}, {2026, 525'00}})
        EXPECT_EQ(info.ftfMinimums.forDueYear(year), rw::Money::fromCents(cents)) << year;
    rw::ReleaseInfo checked;
    EXPECT_EQ(rw::CheckReleaseFolder(rwtest::FixtureReleaseFolder(), checked), "");
    EXPECT_EQ(checked, info);

    // The written table sources hold a hole as a row with both rates empty
    // and the research note as its source.
    const auto src = rw::ratesrc::ReadSourceFile(rwtest::FixtureReleaseFolder() / "rates-src" / "fl1.csv",
                                                 rw::ratesrc::kTableHeader);
    ASSERT_TRUE(src.problems.empty());
    const auto hole = std::find_if(src.rows.begin(), src.rows.end(), [](const auto& r) { return r.from == "01/01/2003"; });
    ASSERT_NE(hole, src.rows.end());
    EXPECT_EQ(*hole, (rw::ratesrc::SourceRow{hole->line, "01/01/2003", "06/30/2003", "", "", "C",
                                             "GAP: Florida floating rate for this half-year not found"}));
}

}  // namespace
