// The tables and release file the build makes from the frozen sources of the
// fourth quarter of 2026 (tests/fixtures/rates-2026q4), against figures copied
// by hand from those sources (the tables command's test checks the federal,
// Pennsylvania and Florida tables). A state table runs from its first to its
// last sourced row; every row is cut at each 31 December it spans. Day numbers
// count from 30 December 1899: 12/31/2026 is 46,387 (1/1/2018, 43,101, plus 9
// years and 2 leap days, less one), 3/31/2027 90 days later.

#include "rates/ratetable.h"
#include "rates/release.h"

#include "support/releases.h"
#include "support/shelldoubles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using rw::Date;

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();  // not published
const Date kEnd2026(46387.0);

Date D(int y, int m, int d)
{
    return Date::fromCivil(y, m, d);
}

TEST(FixtureTables, SpanRowsAndFiguresOfTheSources)
{
    struct Span {
        const char* file;
        Date first, last;
        std::size_t rows;
    };
    for (const Span& s : {
             // The leading GAP (1990-2007) is left out; whole years 2008-2026.
             Span{"ar1.tbl", D(2008, 1, 1), kEnd2026, 19},
             // 13 rows less the leading and trailing GAPs are 11; the GAPs inside add
             // 3 (2003-2006), 8 (7/2007-2015) and 1 (2018-2019).
             Span{"wv1.tbl", D(2002, 7, 1), D(2023, 12, 31), 23},
             // The quarter 7-9/2006 gives only a refund rate and lies before the first
             // sourced row: the fourth quarter of 2006 and 20 whole years.
             Span{"Ri1.tbl", D(2006, 10, 1), kEnd2026, 21}}) {
        const rw::RateTable t = rw::ReadRateTableFile(rwtest::FixtureReleaseFolder() / s.file).rows;
        ASSERT_EQ(t.size(), s.rows) << s.file;
        EXPECT_EQ(t.front().dtFrom, s.first) << s.file;
        EXPECT_EQ(t.back().dtThru, s.last) << s.file;
    }
    struct Row {
        const char* file;
        Date from, thru;
        float up, op;
        char method;
    };
    for (const Row& e : {
             // fed.csv: 01/01/1983,03/31/1983,0.16,0.16,C (compounding begins); the
             // estimate 01/01/2027,03/31/2027,0.07,0.07,C is kept.
             Row{"fed.tbl", D(1983, 1, 1), D(1983, 3, 31), 0.16f, 0.16f, 'C'},
             Row{"fed.tbl", Date(46388.0), Date(46387.0 + 90.0), 0.07f, 0.07f, 'C'},
             // PA.csv: 01/01/2011,12/31/2016,3,3,S (per cent): its 2013 piece.
             Row{"pa1.tbl", D(2013, 1, 1), D(2013, 12, 31), 0.03f, 0.03f, 'S'},
             // FL.csv: 01/01/1990,12/31/1999,12,,S: its 1995 piece, no refund rate;
             // 01/01/2004,12/31/2008,,,,GAP: its 2006 piece, a hole both ways.
             Row{"fl1.tbl", D(1995, 1, 1), D(1995, 12, 31), 0.12f, kNone, 'S'},
             Row{"fl1.tbl", D(2006, 1, 1), D(2006, 12, 31), kNone, kNone, 'C'},
             // SC.csv: 10/01/2011,03/31/2016,3,0,C: a published refund rate of zero is a rate.
             Row{"sc1.tbl", D(2016, 1, 1), D(2016, 3, 31), 0.03f, 0.0f, 'C'},
             // MD.csv: 01/01/2025,12/31/2025,11.4825,11.4825,S-monthly, tabled simple.
             Row{"md1.tbl", D(2025, 1, 1), D(2025, 12, 31), 0.114825f, 0.114825f, 'S'},
             // RI.csv: 10/01/2006,12/31/2006,18,6.75,S
             Row{"Ri1.tbl", D(2006, 10, 1), D(2006, 12, 31), 0.18f, 0.0675f, 'S'}}) {
        SCOPED_TRACE(std::string(e.file) + " " + rw::FormatMMDDYYYY(e.from));
        const rw::RateTable t = rw::ReadRateTableFile(rwtest::FixtureReleaseFolder() / e.file).rows;
        const auto found = std::ranges::find(t, e.from, &rw::RateRow::dtFrom);
        ASSERT_NE(found, t.end());
        EXPECT_EQ(found->dtThru, e.thru);
        EXPECT_TRUE(std::isnan(e.up) ? std::isnan(found->fUPRate) : found->fUPRate == e.up) << found->fUPRate;
        EXPECT_TRUE(std::isnan(e.op) ? std::isnan(found->fOPRate) : found->fOPRate == e.op) << found->fOPRate;
        EXPECT_EQ(found->sCalcMethod, e.method);
    }
}

// Verified through the last row of fed.csv not marked ESTIMATE, estimated
// through the table's end; the minimums of ftf_minimum.csv.
TEST(FixtureTables, TheReleaseFile)
{
    const std::string head = "name=Qrat2026Q4\ndescription=2026, 4th Quarter\nverified_through=12/31/2026\n"
                             "verified_through_text=December 31, 2026\nestimated_through=03/31/2027\n"
                             "estimated_through_text=March 31, 2027\nftf_minimum=1800,100.00,IRC 6651(a)";
    EXPECT_TRUE(rwtest::ReadText(rwtest::FixtureReleaseFolder() / rw::kReleaseFileName).starts_with(head));
    const rw::ReleaseInfo& info = rwtest::FixtureRelease();
    for (const auto& [year, cents] : {std::pair{2015, 135'00}, {2016, 205'00}, {2018, 210'00}, {2021, 435'00}, {2026, 525'00}})
        EXPECT_EQ(info.ftfMinimums.forDueYear(year), rw::Money::fromCents(cents)) << year;
    rw::ReleaseInfo checked;
    EXPECT_EQ(rw::CheckReleaseFolder(rwtest::FixtureReleaseFolder(), checked), "");
    EXPECT_EQ(checked, info);
}

}  // namespace
