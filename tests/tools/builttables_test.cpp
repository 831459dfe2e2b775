// The tables and release file the release build makes from the frozen rate
// sources of the fourth quarter of 2026 (tests/fixtures/rates-2026q4, built
// into the build tree), checked against figures copied by hand from those
// sources. Row counts are worked out by hand from the schedules: a state
// table runs from its first to its last sourced row, and every row is cut at
// each 31 December it spans. Day numbers count from 30 December 1899; the ones
// written out were worked by hand from 1/1/2018 = day 43,101.

#include "rates/ratetable.h"
#include "rates/release.h"
#include "ratebuild/ratesource.h"

#include "support/releases.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>

using rw::Date;
using rw::RateRow;
using rw::RateTable;

namespace {

constexpr float kNone = std::numeric_limits<float>::quiet_NaN();  // not published

RateTable table(const std::string& file)
{
    const auto r = rw::ReadRateTableFile(rwtest::FixtureReleaseFolder() / file);
    EXPECT_EQ(r.status, rw::RateTableReadResult::Status::Ok) << file;
    return r.rows;
}

// A rate as the table should hold it: the same single, or both not published.
bool sameRate(float held, float expected)
{
    return std::isnan(expected) ? std::isnan(held) : held == expected;
}

TEST(FixtureTables, HandWorkedDayNumbers)
{
    // 1/1/2018 plus 9 years and 2 leap days (2020, 2024) is 1/1/2027, 46,388.
    EXPECT_EQ(Date::fromCivil(2026, 12, 31).dayNumber(), 46387.0);
    // 3/31/2027 is 31 + 28 + 31 = 90 days after 12/31/2026.
    EXPECT_EQ(Date::fromCivil(2027, 3, 31).dayNumber(), 46387.0 + 90.0);
    // 1/1/2018 less 36 years of 365 days and 9 leap days (1984-2016).
    EXPECT_EQ(Date::fromCivil(1982, 1, 1).dayNumber(), 29952.0);
    // 1/1/2018 less 43 years and 11 leap days (1976-2016) is 1/1/1975, 27,395;
    // July 1 is 181 days later.
    EXPECT_EQ(Date::fromCivil(1975, 7, 1).dayNumber(), 27576.0);
}

struct Coverage {
    const char* name;
    const char* file;
    Date first;
    Date last;
    std::size_t rows;
};

class FixtureCoverage : public testing::TestWithParam<Coverage> { };

TEST_P(FixtureCoverage, FirstAndLastDayAndRows)
{
    const Coverage& c = GetParam();
    const RateTable t = table(c.file);
    ASSERT_FALSE(t.empty());
    EXPECT_EQ(t.front().dtFrom, c.first);
    EXPECT_EQ(t.back().dtThru, c.last);
    EXPECT_EQ(t.size(), c.rows);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, FixtureCoverage,
    testing::Values(
        // 12 simple-interest rows before 1983 (cut at the rate changes of
        // 2/1/1976, 1978, 1980 and 1982 and at every year end), then one row
        // per quarter from 1/1/1983 to 3/31/2027: 44 x 4 + 1 = 177.
        Coverage{"Federal", "fed.tbl", Date(27576.0), Date(46387.0 + 90.0), 12 + 177},
        // Whole years 1982-2026, one row each: 45.
        Coverage{"Pennsylvania", "pa1.tbl", Date(29952.0), Date(46387.0), 45},
        // The schedule's 32 rows less the trailing GAP (7-12/2026) are 31;
        // cutting at year ends adds 9 (1990-1999), 4 (the GAP 2004-2008),
        // 2 (1/2011-6/2013), 1 (7/2013-6/2014), 3 (7/2014-6/2017),
        // 1 (7/2017-6/2018) and 1 (7/2021-6/2022): 52.
        Coverage{"Florida", "fl1.tbl", Date::fromCivil(1990, 1, 1), Date::fromCivil(2026, 6, 30), 52},
        // The leading GAP (1990-2007) is left out; whole years 2008-2026: 19.
        Coverage{"Arkansas", "ar1.tbl", Date::fromCivil(2008, 1, 1), Date(46387.0), 19},
        // 20 rows less the leading GAP (1990-2009) are 19; the cuts add
        // 5 (10/2011-3/2016), 2 (7/2016-3/2018), 1 (7/2019-6/2020),
        // 2 (7/2020-3/2022), 1 (10/2023-12/2024) and 1 (1/2025-3/2026): 31.
        Coverage{"South Carolina", "sc1.tbl", Date::fromCivil(2010, 1, 1), Date(46387.0), 31},
        // 13 rows less the leading and trailing GAPs are 11; the GAPs inside
        // add 3 (2003-2006), 8 (7/2007-2015) and 1 (2018-2019): 23.
        Coverage{"West Virginia", "wv1.tbl", Date::fromCivil(2002, 7, 1), Date::fromCivil(2023, 12, 31), 23},
        // The leading GAP (1990-1994) is left out; 32 rows, and the cuts add
        // 1 (1999-2000), 1 (2007-2008), 6 (2010-2016), 1 (2017-2018),
        // 1 (1/2019-3/2020) and 1 (7/2021-9/2022): 43.
        Coverage{"Missouri", "mo1.tbl", Date::fromCivil(1995, 1, 1), Date(46387.0), 43},
        // The quarter 7-9/2006 gives only a refund rate and lies before the
        // first sourced row: the fourth quarter of 2006 and 20 whole years: 21.
        Coverage{"Rhode Island", "Ri1.tbl", Date::fromCivil(2006, 10, 1), Date(46387.0), 21},
        // The leading GAP (1990-2006) and trailing GAP (2026) are left out;
        // whole years 2007-2025: 19.
        Coverage{"Maryland", "md1.tbl", Date::fromCivil(2007, 1, 1), Date::fromCivil(2025, 12, 31), 19}),
    [](const testing::TestParamInfo<Coverage>& i) {
        std::string n = i.param.name;
        std::erase(n, ' ');
        return n;
    });

struct Row {
    const char* name;
    const char* file;
    Date from;
    Date thru;
    float up;
    float op;
    char method;
};

class FixtureRows : public testing::TestWithParam<Row> { };

TEST_P(FixtureRows, HoldTheSourcesFigures)
{
    const Row& e = GetParam();
    const RateTable t = table(e.file);
    const RateRow* found = nullptr;
    for (const RateRow& r : t)
        if (r.dtFrom == e.from)
            found = &r;
    ASSERT_NE(found, nullptr) << "no row from " << e.from;
    EXPECT_EQ(found->dtThru, e.thru);
    EXPECT_TRUE(sameRate(found->fUPRate, e.up)) << found->fUPRate;
    EXPECT_TRUE(sameRate(found->fOPRate, e.op)) << found->fOPRate;
    EXPECT_EQ(found->sCalcMethod, e.method);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FixtureRows,
    testing::Values(
        // fed.csv: 07/01/1975,12/31/1975,0.09,0.09,S
        Row{"FederalFirst", "fed.tbl", Date(27576.0), Date::fromCivil(1975, 12, 31), 0.09f, 0.09f, 'S'},
        // 01/01/1983,03/31/1983,0.16,0.16,C: daily compounding begins
        Row{"FederalCompoundingBegins", "fed.tbl", Date::fromCivil(1983, 1, 1), Date::fromCivil(1983, 3, 31), 0.16f,
            0.16f, 'C'},
        // 01/01/2017,03/31/2017,0.04,0.04,C
        Row{"Federal2017", "fed.tbl", Date::fromCivil(2017, 1, 1), Date::fromCivil(2017, 3, 31), 0.04f, 0.04f, 'C'},
        // 01/01/2027,03/31/2027,0.07,0.07,C, an estimate, kept
        Row{"FederalEstimate", "fed.tbl", Date(46388.0), Date(46387.0 + 90.0), 0.07f, 0.07f, 'C'},
        // PA.csv: 01/01/1982,12/31/1982,20,20,S (per cent in the schedule)
        Row{"Pennsylvania1982", "pa1.tbl", Date(29952.0), Date::fromCivil(1982, 12, 31), 0.2f, 0.2f, 'S'},
        // 01/01/2011,12/31/2016,3,3,S: its 2013 piece
        Row{"PennsylvaniaPieceOf2011To2016", "pa1.tbl", Date::fromCivil(2013, 1, 1), Date::fromCivil(2013, 12, 31),
            0.03f, 0.03f, 'S'},
        // FL.csv: 01/01/1990,12/31/1999,12,,S: its 1995 piece, no refund rate
        Row{"Florida1995", "fl1.tbl", Date::fromCivil(1995, 1, 1), Date::fromCivil(1995, 12, 31), 0.12f, kNone, 'S'},
        // 01/01/2003,06/30/2003,,,,GAP: a hole both ways, method C
        Row{"FloridaHoleOf2003", "fl1.tbl", Date::fromCivil(2003, 1, 1), Date::fromCivil(2003, 6, 30), kNone, kNone,
            'C'},
        // 01/01/2004,12/31/2008,,,,GAP: its 2006 piece
        Row{"FloridaHoleOf2006", "fl1.tbl", Date::fromCivil(2006, 1, 1), Date::fromCivil(2006, 12, 31), kNone, kNone,
            'C'},
        // 07/01/2018,12/31/2018,,,,GAP
        Row{"FloridaHoleOf2018", "fl1.tbl", Date::fromCivil(2018, 7, 1), Date::fromCivil(2018, 12, 31), kNone, kNone,
            'C'},
        // 01/01/2026,06/30/2026,11,11,S: the last sourced row
        Row{"FloridaLast", "fl1.tbl", Date::fromCivil(2026, 1, 1), Date::fromCivil(2026, 6, 30), 0.11f, 0.11f, 'S'},
        // AR.csv: 01/01/2008,12/31/2024,10,10,S: its first piece
        Row{"Arkansas2008", "ar1.tbl", Date::fromCivil(2008, 1, 1), Date::fromCivil(2008, 12, 31), 0.1f, 0.1f, 'S'},
        // SC.csv: 01/01/2010,12/31/2010,4,,C
        Row{"SouthCarolina2010", "sc1.tbl", Date::fromCivil(2010, 1, 1), Date::fromCivil(2010, 12, 31), 0.04f, kNone,
            'C'},
        // 10/01/2011,03/31/2016,3,0,C: its first piece; a published refund rate of zero is a rate
        Row{"SouthCarolinaFirstPiece", "sc1.tbl", Date::fromCivil(2011, 10, 1), Date::fromCivil(2011, 12, 31), 0.03f,
            0.0f, 'C'},
        // the same row's last piece
        Row{"SouthCarolinaLastPiece", "sc1.tbl", Date::fromCivil(2016, 1, 1), Date::fromCivil(2016, 3, 31), 0.03f,
            0.0f, 'C'},
        // WV.csv: 07/01/2007,12/31/2015,,,,GAP: its 2010 piece
        Row{"WestVirginiaHoleOf2010", "wv1.tbl", Date::fromCivil(2010, 1, 1), Date::fromCivil(2010, 12, 31), kNone,
            kNone, 'C'},
        // 01/01/2023,12/31/2023,11.5,,S: the last sourced row
        Row{"WestVirginia2023", "wv1.tbl", Date::fromCivil(2023, 1, 1), Date::fromCivil(2023, 12, 31), 0.115f, kNone,
            'S'},
        // MD.csv: 01/01/2025,12/31/2025,11.4825,11.4825,S-monthly
        Row{"MarylandMonthlyIsTabledSimple", "md1.tbl", Date::fromCivil(2025, 1, 1), Date::fromCivil(2025, 12, 31),
            0.114825f, 0.114825f, 'S'},
        // HI.csv: 01/01/2010,12/31/2010,8,,S-monthly
        Row{"Hawaii2010", "hi1.tbl", Date::fromCivil(2010, 1, 1), Date::fromCivil(2010, 12, 31), 0.08f, kNone, 'S'},
        // MO.csv: 04/01/2020,06/30/2020,5,2,S
        Row{"MissouriFirstRefundRate", "mo1.tbl", Date::fromCivil(2020, 4, 1), Date::fromCivil(2020, 6, 30), 0.05f,
            0.02f, 'S'},
        // RI.csv: 10/01/2006,12/31/2006,18,6.75,S
        Row{"RhodeIslandFirst", "Ri1.tbl", Date::fromCivil(2006, 10, 1), Date::fromCivil(2006, 12, 31), 0.18f,
            0.0675f, 'S'}),
    [](const testing::TestParamInfo<Row>& i) { return std::string(i.param.name); });

// The release file the build derives from the fixture's fed.csv and
// ftf_minimum.csv: verified through the last row not marked ESTIMATE
// (12/31/2026), estimated through the table's end (3/31/2027).
TEST(FixtureTables, ReleaseFile)
{
    const auto file = rwtest::FixtureReleaseFolder() / rw::kReleaseFileName;
    std::ifstream in(file, std::ios::binary);
    ASSERT_TRUE(in) << file;
    std::ostringstream text;
    text << in.rdbuf();
    const std::string head = "name=Qrat2026Q4\n"
                             "description=2026, 4th Quarter\n"
                             "verified_through=12/31/2026\n"
                             "verified_through_text=December 31, 2026\n"
                             "estimated_through=03/31/2027\n"
                             "estimated_through_text=March 31, 2027\n"
                             "ftf_minimum=1800,100.00,IRC 6651(a)";
    EXPECT_EQ(text.str().substr(0, head.size()), head);

    const rw::ReleaseInfo& info = rwtest::FixtureRelease();
    EXPECT_EQ(info.verifiedThrough.dayNumber(), 46387.0);
    EXPECT_EQ(info.estimatedThrough.dayNumber(), 46387.0 + 90.0);
    ASSERT_EQ(info.ftfMinimums.rows.size(), 10u);
    EXPECT_EQ(info.ftfMinimums.rows[6].firstYear, 2024);
    EXPECT_EQ(info.ftfMinimums.rows[6].amount, rw::Money::fromCents(485'00));

    // Every table of the release reads, and the federal one reaches the
    // estimated-through date.
    rw::ReleaseInfo checked;
    EXPECT_EQ(rw::CheckReleaseFolder(rwtest::FixtureReleaseFolder(), checked), "");
    EXPECT_EQ(checked, info);
}

// The written table sources hold the holes as rows with both rates empty and
// the research note as their source.
TEST(FixtureTables, TableSourcesHoldTheHoles)
{
    const auto src = rw::ratesrc::ReadSourceFile(rwtest::FixtureReleaseFolder() / "rates-src" / "fl1.csv",
                                                 rw::ratesrc::kTableHeader);
    ASSERT_TRUE(src.problems.empty()) << src.problems.front().text();
    const rw::ratesrc::SourceRow* hole = nullptr;
    for (const auto& r : src.rows)
        if (r.from == "01/01/2003")
            hole = &r;
    ASSERT_NE(hole, nullptr);
    EXPECT_EQ(hole->thru, "06/30/2003");
    EXPECT_EQ(hole->underpayment, "");
    EXPECT_EQ(hole->overpayment, "");
    EXPECT_EQ(hole->method, "C");
    EXPECT_EQ(hole->source, "GAP: Florida floating rate for this half-year not found");
}

}  // namespace
