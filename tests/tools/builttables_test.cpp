// The tables and release file the build delivers into the installation
// folder, checked against figures copied by hand from the rate sources
// (data/rates/*.csv). Day numbers count from 30 December 1899; the ones
// written out were worked by hand from 1/1/2018 = day 43,101 (3/31/2018 is
// 43,190) and are also checked against the calendar conversion.

#include "casedata/ratetable.h"
#include "casedata/release.h"
#include "tools/ratetables/ratesource.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

using rw::Date;
using rw::RateRow;
using rw::RateTable;

namespace {

std::filesystem::path installDir()
{
    const char* dir = std::getenv("RW_INSTALL_DIR");
    return dir ? std::filesystem::path(dir) : std::filesystem::path();
}

RateTable table(const char* file)
{
    const auto r = rw::ReadRateTableFile(installDir() / file);
    EXPECT_EQ(r.status, rw::RateTableReadResult::Status::Ok) << (installDir() / file);
    return r.rows;
}

const RateRow* rowFrom(const RateTable& t, Date from)
{
    for (const RateRow& r : t)
        if (r.dtFrom == from)
            return &r;
    return nullptr;
}

void expectRow(const RateRow* r, Date from, Date thru, float up, float op, char method)
{
    ASSERT_NE(r, nullptr) << "no row from " << from;
    EXPECT_EQ(r->dtFrom, from);
    EXPECT_EQ(r->dtThru, thru);
    EXPECT_EQ(r->fUPRate, up);
    EXPECT_EQ(r->fOPRate, op);
    EXPECT_EQ(r->sCalcMethod, method);
}

// A row whose refund rate was not published: the table holds a NaN.
void expectRowWithoutRefundRate(const RateRow* r, Date from, Date thru, float up, char method)
{
    ASSERT_NE(r, nullptr) << "no row from " << from;
    EXPECT_EQ(r->dtFrom, from);
    EXPECT_EQ(r->dtThru, thru);
    EXPECT_EQ(r->fUPRate, up);
    EXPECT_TRUE(std::isnan(r->fOPRate)) << "from " << from << ": " << r->fOPRate;
    EXPECT_EQ(r->sCalcMethod, method);
}

TEST(BuiltTables, HandWorkedDayNumbers)
{
    // 1/1/2018 less 36 years of 365 days and 9 leap days (1984-2016).
    EXPECT_EQ(Date::fromCivil(1982, 1, 1).dayNumber(), 29952.0);
    // 1/1/2018 less 43 years and 11 leap days (1976-2016) is 1/1/1975, 27,395;
    // July 1 is 181 days later.
    EXPECT_EQ(Date::fromCivil(1975, 7, 1).dayNumber(), 27576.0);
    // 1/1/1976 is 27,760; January 31 is 30 days later.
    EXPECT_EQ(Date::fromCivil(1976, 1, 31).dayNumber(), 27790.0);
    // 1/1/2018 less 23 years and 6 leap days (1996-2016) is 1/1/1995.
    EXPECT_EQ(Date::fromCivil(1995, 1, 1).dayNumber(), 34700.0);
    // 1/1/2018 plus 9 years and 2 leap days (2020, 2024) is 1/1/2027, 46,388.
    EXPECT_EQ(Date::fromCivil(2026, 12, 31).dayNumber(), 46387.0);
    EXPECT_EQ(Date::fromCivil(2025, 1, 1).dayNumber(), 45658.0);
    EXPECT_EQ(Date::fromCivil(2025, 12, 31).dayNumber(), 46022.0);
}

TEST(BuiltTables, EveryAuthorityHasItsTableAndSource)
{
    for (const rw::Authority& a : rw::Authorities()) {
        const auto r = rw::ReadRateTableFile(installDir() / a.file);
        EXPECT_EQ(r.status, rw::RateTableReadResult::Status::Ok) << a.file;
        EXPECT_TRUE(std::filesystem::is_regular_file(installDir() / "rates-src"
                                                     / rw::ratesrc::SourceFileName(a.file)))
            << a.file;
        // Rows follow each other day by day.
        for (std::size_t i = 1; i < r.rows.size(); ++i)
            EXPECT_EQ(r.rows[i].dtFrom, r.rows[i - 1].dtThru + 1) << a.file << " row " << i;
        // Every period has its underpayment rate; a refund rate is a rate
        // within 0-50 % or the mark of one that was not published.
        for (const RateRow& row : r.rows) {
            EXPECT_TRUE(row.fUPRate >= 0.0f && row.fUPRate <= 0.5f) << a.file << " " << row.dtFrom;
            EXPECT_TRUE(std::isnan(row.fOPRate) || (row.fOPRate >= 0.0f && row.fOPRate <= 0.5f))
                << a.file << " " << row.dtFrom;
        }
    }
}

TEST(BuiltTables, OnlyTheseTablesLackRefundRates)
{
    // From the sources: the state tables with empty overpayment fields.
    const std::vector<std::string> expected{"hi1.tbl", "mo1.tbl", "ny_ind1.tbl", "ny_crp1.tbl",
                                            "Ri1.tbl", "sc1.tbl", "wv1.tbl"};
    std::vector<std::string> found;
    for (const rw::Authority& a : rw::Authorities()) {
        const auto r = rw::ReadRateTableFile(installDir() / a.file);
        for (const RateRow& row : r.rows)
            if (std::isnan(row.fOPRate)) {
                found.emplace_back(a.file);
                break;
            }
    }
    EXPECT_EQ(found, expected);
}

TEST(BuiltTables, FederalFirstAndLastRows)
{
    const RateTable t = table("fed.tbl");
    ASSERT_EQ(t.size(), 66u);
    // 07/01/1975,01/31/1976,0.09,0.09,S
    expectRow(&t.front(), Date(27576.0), Date(27790.0), 0.09f, 0.09f, 'S');
    EXPECT_EQ(t.front().dtFrom, Date::fromCivil(1975, 7, 1));
    // 10/01/2026,12/31/2026,0.07,0.07,C (an estimate, kept)
    expectRow(&t.back(), Date::fromCivil(2026, 10, 1), Date(46387.0), 0.07f, 0.07f, 'C');
    // 01/01/1983,06/30/1983,0.16,0.16,C: daily compounding begins
    expectRow(rowFrom(t, Date::fromCivil(1983, 1, 1)), Date::fromCivil(1983, 1, 1),
              Date::fromCivil(1983, 6, 30), 0.16f, 0.16f, 'C');
}

TEST(BuiltTables, Pennsylvania)
{
    const RateTable t = table("pa1.tbl");
    ASSERT_EQ(t.size(), 31u);
    // 01/01/1982,12/31/1982,20,20,S (per cent in the schedule)
    expectRow(&t.front(), Date(29952.0), Date::fromCivil(1982, 12, 31), 0.2f, 0.2f, 'S');
    // 01/01/2011,12/31/2016,3,3,S
    expectRow(rowFrom(t, Date::fromCivil(2011, 1, 1)), Date::fromCivil(2011, 1, 1),
              Date::fromCivil(2016, 12, 31), 0.03f, 0.03f, 'S');
    // 01/01/2026,12/31/2026,7,7,S
    expectRow(&t.back(), Date::fromCivil(2026, 1, 1), Date(46387.0), 0.07f, 0.07f, 'S');
}

TEST(BuiltTables, MassachusettsUnderpayment)
{
    const RateTable t = table("Ma1-up.tbl");
    // 1990-1992 is a gap in the schedule; the table begins 1/1/1993.
    ASSERT_EQ(t.size(), 51u);
    // 01/01/1993,06/30/1994,8,8,C
    expectRow(&t.front(), Date::fromCivil(1993, 1, 1), Date::fromCivil(1994, 6, 30), 0.08f, 0.08f, 'C');
    // 07/01/2003,09/30/2003,6,4,C: refunds at the lower rate from 7/1/2003
    expectRow(rowFrom(t, Date::fromCivil(2003, 7, 1)), Date::fromCivil(2003, 7, 1),
              Date::fromCivil(2003, 9, 30), 0.06f, 0.04f, 'C');
    // 01/01/2025,03/31/2026,8,6,C
    expectRow(&t.back(), Date(45658.0), Date::fromCivil(2026, 3, 31), 0.08f, 0.06f, 'C');
}

TEST(BuiltTables, MassachusettsOverpaymentTurnsSimple)
{
    const RateTable t = table("Ma1-op.tbl");
    // 01/01/2003,06/30/2003,6,6,C then 07/01/2003,09/30/2003,6,4,S
    expectRow(rowFrom(t, Date::fromCivil(2003, 1, 1)), Date::fromCivil(2003, 1, 1),
              Date::fromCivil(2003, 6, 30), 0.06f, 0.06f, 'C');
    expectRow(rowFrom(t, Date::fromCivil(2003, 7, 1)), Date::fromCivil(2003, 7, 1),
              Date::fromCivil(2003, 9, 30), 0.06f, 0.04f, 'S');
}

TEST(BuiltTables, FloridaKeepsOnlyTheRunAfterItsLastGap)
{
    // The schedule has gaps up to 12/31/2024 and for 2026; only 2025 is kept.
    const RateTable t = table("fl1.tbl");
    ASSERT_EQ(t.size(), 2u);
    // 01/01/2025,06/30/2025,12,11,S and 07/01/2025,12/31/2025,12,11,S
    expectRow(&t[0], Date(45658.0), Date::fromCivil(2025, 6, 30), 0.12f, 0.11f, 'S');
    expectRow(&t[1], Date::fromCivil(2025, 7, 1), Date(46022.0), 0.12f, 0.11f, 'S');
}

TEST(BuiltTables, MarylandMonthlyRatesAreTabledAsSimple)
{
    const RateTable t = table("md1.tbl");
    ASSERT_EQ(t.size(), 11u);
    // 01/01/2025,12/31/2025,11.4825,11.4825,S-monthly
    expectRow(&t.back(), Date(45658.0), Date(46022.0), 0.114825f, 0.114825f, 'S');
    // 01/01/2024,12/31/2024,10.0075,10.0075,S-monthly
    expectRow(rowFrom(t, Date::fromCivil(2024, 1, 1)), Date::fromCivil(2024, 1, 1),
              Date::fromCivil(2024, 12, 31), 0.100075f, 0.100075f, 'S');
}

TEST(BuiltTables, MissouriKeepsTheYearsWithoutARefundRate)
{
    const RateTable t = table("mo1.tbl");
    // 1990-1994 is a gap, and so is 2026; every row from 1995 to 2025 gives
    // the underpayment rate.
    ASSERT_EQ(t.size(), 31u);
    // 01/01/1995,12/31/1995,0.12,,S
    expectRowWithoutRefundRate(&t.front(), Date(34700.0), Date::fromCivil(1995, 12, 31), 0.12f, 'S');
    // 01/01/2010,12/31/2016,0.03,,S
    expectRowWithoutRefundRate(rowFrom(t, Date::fromCivil(2010, 1, 1)), Date::fromCivil(2010, 1, 1),
                               Date::fromCivil(2016, 12, 31), 0.03f, 'S');
    // 04/01/2020,06/30/2020,0.05,0.02,S: the first quarter with a refund rate
    expectRow(rowFrom(t, Date::fromCivil(2020, 4, 1)), Date::fromCivil(2020, 4, 1),
              Date::fromCivil(2020, 6, 30), 0.05f, 0.02f, 'S');
    // 07/01/2021,09/30/2022,0.03,,S
    expectRowWithoutRefundRate(rowFrom(t, Date::fromCivil(2021, 7, 1)), Date::fromCivil(2021, 7, 1),
                               Date::fromCivil(2022, 9, 30), 0.03f, 'S');
    // 10/01/2024,12/31/2024,0.09,0.032,S
    expectRow(rowFrom(t, Date::fromCivil(2024, 10, 1)), Date::fromCivil(2024, 10, 1),
              Date::fromCivil(2024, 12, 31), 0.09f, 0.032f, 'S');
    // 01/01/2025,12/31/2025,0.08,,S
    expectRowWithoutRefundRate(&t.back(), Date(45658.0), Date(46022.0), 0.08f, 'S');
}

TEST(BuiltTables, HawaiiRunsFrom1990)
{
    const RateTable t = table("hi1.tbl");
    ASSERT_EQ(t.size(), 3u);
    // 01/01/1990,12/31/2009,0.08,0.08,S-monthly
    expectRow(&t[0], Date::fromCivil(1990, 1, 1), Date::fromCivil(2009, 12, 31), 0.08f, 0.08f, 'S');
    // 01/01/2010,12/31/2010,0.08,,S-monthly: the refund cut's effective date is unknown
    expectRowWithoutRefundRate(&t[1], Date::fromCivil(2010, 1, 1), Date::fromCivil(2010, 12, 31), 0.08f, 'S');
    // 01/01/2011,12/31/2026,0.08,0.04,S-monthly
    expectRow(&t[2], Date::fromCivil(2011, 1, 1), Date(46387.0), 0.08f, 0.04f, 'S');
}

TEST(BuiltTables, NewYorkIncomeTaxFrom2002)
{
    const RateTable t = table("ny_ind1.tbl");
    // 4/2000-2001 is a gap; 2002 to 3/31/2026 is kept.
    ASSERT_EQ(t.size(), 38u);
    // 01/01/2002,03/31/2004,0.06,,C
    expectRowWithoutRefundRate(&t.front(), Date::fromCivil(2002, 1, 1), Date::fromCivil(2004, 3, 31), 0.06f,
                               'C');
    // 01/01/2009,03/31/2009,0.06,,C then 04/01/2009,04/06/2009,0.06,0.03,C
    expectRowWithoutRefundRate(rowFrom(t, Date::fromCivil(2009, 1, 1)), Date::fromCivil(2009, 1, 1),
                               Date::fromCivil(2009, 3, 31), 0.06f, 'C');
    expectRow(rowFrom(t, Date::fromCivil(2009, 4, 1)), Date::fromCivil(2009, 4, 1),
              Date::fromCivil(2009, 4, 6), 0.06f, 0.03f, 'C');
    // 01/01/2025,03/31/2026,0.095,0.06,C
    expectRow(&t.back(), Date(45658.0), Date::fromCivil(2026, 3, 31), 0.095f, 0.06f, 'C');
}

TEST(BuiltTables, SouthCarolinaFrom2010)
{
    const RateTable t = table("sc1.tbl");
    ASSERT_EQ(t.size(), 17u);
    // 01/01/2010,12/31/2010,0.04,,C
    expectRowWithoutRefundRate(&t.front(), Date::fromCivil(2010, 1, 1), Date::fromCivil(2010, 12, 31), 0.04f,
                               'C');
    // 10/01/2011,03/31/2016,0.03,0,C: a published refund rate of zero is a rate
    expectRow(rowFrom(t, Date::fromCivil(2011, 10, 1)), Date::fromCivil(2011, 10, 1),
              Date::fromCivil(2016, 3, 31), 0.03f, 0.0f, 'C');
    // 01/01/2025,03/31/2026,0.07,,C
    expectRowWithoutRefundRate(&t.back(), Date(45658.0), Date::fromCivil(2026, 3, 31), 0.07f, 'C');
}

TEST(BuiltTables, RhodeIslandAndWestVirginia)
{
    const RateTable ri = table("Ri1.tbl");
    ASSERT_EQ(ri.size(), 13u);
    // 10/01/2006,12/31/2006,0.18,0.0675,S (the quarter before gives no delinquency rate)
    expectRow(&ri.front(), Date::fromCivil(2006, 10, 1), Date::fromCivil(2006, 12, 31), 0.18f, 0.0675f, 'S');
    // 01/01/2018,12/31/2019,0.18,,S
    expectRowWithoutRefundRate(rowFrom(ri, Date::fromCivil(2018, 1, 1)), Date::fromCivil(2018, 1, 1),
                               Date::fromCivil(2019, 12, 31), 0.18f, 'S');
    // 01/01/2024,12/31/2024,0.12,0.085,S
    expectRow(&ri.back(), Date::fromCivil(2024, 1, 1), Date::fromCivil(2024, 12, 31), 0.12f, 0.085f, 'S');

    const RateTable wv = table("wv1.tbl");
    ASSERT_EQ(wv.size(), 4u);
    // 01/01/2020,12/31/2020,0.0925,0.0775,S
    expectRow(&wv.front(), Date::fromCivil(2020, 1, 1), Date::fromCivil(2020, 12, 31), 0.0925f, 0.0775f, 'S');
    // 01/01/2023,12/31/2023,0.115,,S
    expectRowWithoutRefundRate(&wv.back(), Date::fromCivil(2023, 1, 1), Date::fromCivil(2023, 12, 31), 0.115f,
                               'S');
}

// The release file the build derives from fed.csv and ftf_minimum.csv:
// verified through the last row not marked ESTIMATE (6/30/2026), estimated
// through the table's end.
TEST(BuiltTables, ReleaseFile)
{
    const auto file = installDir() / "qrat-release.txt";
    std::ifstream in(file, std::ios::binary);
    ASSERT_TRUE(in) << file;
    std::ostringstream text;
    text << in.rdbuf();
    const std::string head = "name=Qrat2026Q2\n"
                             "description=2026, 2nd Quarter\n"
                             "verified_through=06/30/2026\n"
                             "verified_through_text=June 30, 2026\n"
                             "estimated_through=12/31/2026\n"
                             "estimated_through_text=December 31, 2026\n"
                             "ftf_minimum=1800,100.00,IRC 6651(a)";
    EXPECT_EQ(text.str().substr(0, head.size()), head);

    rw::ReleaseInfo info;
    std::string problem;
    ASSERT_TRUE(rw::ReadReleaseInfo(file, info, &problem)) << problem;
    // 1/1/2026 is day 46,023 (43,101 for 1/1/2018, plus 8 years of which 2020
    // and 2024 are leap: 2,922 days); 6/30/2026 is 180 days later.
    EXPECT_EQ(info.verifiedThrough.dayNumber(), 46023.0 + 180.0);
    EXPECT_EQ(info.estimatedThrough.dayNumber(), 46023.0 + 364.0);
    ASSERT_EQ(info.ftfMinimums.rows.size(), 10u);
    EXPECT_EQ(info.ftfMinimums.rows[6].firstYear, 2024);
    EXPECT_EQ(info.ftfMinimums.rows[6].amount, rw::Money::fromCents(485'00));

    // Every table of the release reads, and the federal one reaches the
    // estimated-through date.
    rw::ReleaseInfo checked;
    EXPECT_EQ(rw::CheckReleaseFolder(installDir(), checked), "");
    EXPECT_EQ(checked, info);
}

}  // namespace
