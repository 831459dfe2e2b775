// qratcalc-cli tables: the listing of every authority's table with its
// coverage and holes, and the rows of one table with their published sources,
// read from the tests' release of the fourth quarter of 2026 (built from the
// frozen sources tests/fixtures/rates-2026q4; the figures below are copied by
// hand from those sources).

#include "rates/ratetable.h"
#include "cli/cli.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct CmdRun {
    int status = 0;
    std::string out;
    std::string err;
};

CmdRun tables(std::vector<std::string> args, std::filesystem::path dir = rwtest::FixtureReleaseFolder())
{
    std::ostringstream out, err;
    rw::cli::CliEnv env{std::move(args), out, err, rw::Paths::ForFolders(dir, dir), {}};
    CmdRun r;
    r.status = rw::cli::CmdTables(env);
    r.out = out.str();
    r.err = err.str();
    return r;
}

std::vector<std::string> lines(const std::string& text)
{
    std::vector<std::string> v;
    std::istringstream in(text);
    for (std::string l; std::getline(in, l);)
        v.push_back(l);
    return v;
}

TEST(TablesCommand, ListsEveryAuthorityInListOrder)
{
    const CmdRun r = tables({});
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto l = lines(r.out);
    ASSERT_GE(l.size(), 31u);
    // A heading and 30 authorities.
    EXPECT_TRUE(l[1].starts_with("US    Federal ")) << l[1];
    EXPECT_NE(l[1].find("fed.tbl"), std::string::npos);
    EXPECT_NE(l[1].find("yes"), std::string::npos);
    // fed.csv: 189 rows from 07/01/1975 to 03/31/2027.
    EXPECT_NE(l[1].find("07/01/1975  03/31/2027    189"), std::string::npos) << l[1];
    EXPECT_TRUE(l[4].starts_with("CAB   CA - Corp: Large")) << l[4];
    EXPECT_TRUE(l[5].starts_with("CARC  CA - Corp: Regular")) << l[5];
    // FL.csv from 01/01/1990 to the last sourced day, 06/30/2026: 52 rows
    // once cut at year ends, holes included.
    EXPECT_TRUE(l[6].starts_with("FL    Florida ")) << l[6];
    EXPECT_NE(l[6].find("01/01/1990  06/30/2026     52"), std::string::npos) << l[6];
    EXPECT_NE(l[16].find("Ma1-up.tbl"), std::string::npos) << l[16];
    // MO.csv after its leading GAP: 43 rows from 01/01/1995 to 12/31/2026.
    EXPECT_TRUE(l[20].starts_with("MO    Missouri ")) << l[20];
    EXPECT_NE(l[20].find("01/01/1995  12/31/2026     43"), std::string::npos) << l[20];
    EXPECT_TRUE(l[30].starts_with("WV    West Virginia")) << l[30];
}

// The holes of the tables, in both directions: a GAP row of a schedule
// between sourced rows is in both lists, an empty overpayment field only in
// the second. Neighbouring rows are merged.
TEST(TablesCommand, ListNamesTheHolesOfEveryTable)
{
    const CmdRun r = tables({});
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto l = lines(r.out);
    // 31 lines of tables; a blank line, the heading and the 10 tables with
    // GAP rows inside; a blank line, the heading and the 15 tables with
    // periods without a refund rate.
    ASSERT_EQ(l.size(), 31u + 2u + 10u + 2u + 15u);
    EXPECT_EQ(l[31], "");
    EXPECT_EQ(l[32], "Underpayment rate not published (no published rate); interest in these periods cannot be "
                     "computed:");
    // FL.csv: GAP 01/01/2003-06/30/2003, 01/01/2004-12/31/2008, 07/01/2018-12/31/2018.
    EXPECT_EQ(l[33], "FL    01/01/2003 to 06/30/2003, 01/01/2004 to 12/31/2008, 07/01/2018 to 12/31/2018");
    // WV.csv: GAP 2003-2006, 7/2007-2015, 2018-2019 (1990-6/2002 and 2024-2026 lie outside).
    EXPECT_EQ(l[42], "WV    01/01/2003 to 12/31/2006, 07/01/2007 to 12/31/2015, 01/01/2018 to 12/31/2019");
    EXPECT_EQ(l[43], "");
    EXPECT_EQ(l[44],
              "Refund (overpayment) rate not published; an overpayment in these periods cannot be computed:");
    EXPECT_EQ(l[45], "CAB   07/01/2018 to 12/31/2018, 07/01/2020 to 12/31/2020, 07/01/2021 to 12/31/2021");
    // FL.csv: 1990-1999 gives no refund rate, and the three GAPs.
    EXPECT_EQ(l[47], "FL    01/01/1990 to 12/31/1999, 01/01/2003 to 06/30/2003, 01/01/2004 to 12/31/2008, "
                     "07/01/2018 to 12/31/2018");
    EXPECT_EQ(l[48], "HI    01/01/2010 to 12/31/2010");
    EXPECT_EQ(l[54], "MO    01/01/1995 to 03/31/2020, 07/01/2021 to 09/30/2022, 04/01/2023 to 09/30/2023, "
                     "01/01/2025 to 12/31/2026");
    EXPECT_EQ(l[57], "SC    01/01/2010 to 09/30/2011, 07/01/2023 to 12/31/2026");
    EXPECT_EQ(l[59], "WV    01/01/2003 to 12/31/2006, 07/01/2007 to 12/31/2015, 01/01/2018 to 12/31/2019, "
                     "01/01/2022 to 12/31/2023");
}

TEST(TablesCommand, MissingTablesAreListedAsAbsent)
{
    rwtest::TempDir empty;
    const CmdRun r = tables({}, empty.path());
    EXPECT_EQ(r.status, rw::cli::kExitProblem);
    const auto l = lines(r.out);
    ASSERT_EQ(l.size(), 31u);
    EXPECT_NE(l[1].find("fed.tbl       no"), std::string::npos) << l[1];
}

TEST(TablesCommand, RowsOfOneTableWithTheirSources)
{
    const CmdRun r = tables({"PA"});
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto l = lines(r.out);
    // Whole years 1982-2026: 45 rows.
    ASSERT_EQ(l.size(), 2u + 45u);
    EXPECT_EQ(l[0], "Pennsylvania (PA, pa1.tbl): 45 rows from 01/01/1982 to 12/31/2026");
    // 01/01/1982,12/31/1982,0.2,0.2,S: 0.2 is held as the single 0.200000003.
    EXPECT_TRUE(l[2].starts_with("01/01/1982  12/31/1982  0.200000003   0.200000003   S ")) << l[2];
    EXPECT_NE(l[2].find("61 Pa. Code 4.2(b) certified rate (pacode.com); simple, annual"), std::string::npos);
    // 01/01/2026,12/31/2026,0.07,0.07,S: 0.07 is the single 0.0700000003.
    EXPECT_TRUE(l.back().starts_with("01/01/2026  12/31/2026  0.0700000003  0.0700000003  S ")) << l.back();
    EXPECT_NE(l.back().find("DERIVED: Fiscal Code 806/806.1"), std::string::npos);
}

TEST(TablesCommand, RefundRateNotPublishedIsShownAsSuch)
{
    const CmdRun r = tables({"MO"});
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto l = lines(r.out);
    // Title, column heading, 43 rows and the note.
    ASSERT_EQ(l.size(), 2u + 43u + 1u);
    EXPECT_EQ(l[0], "Missouri (MO, mo1.tbl): 43 rows from 01/01/1995 to 12/31/2026");
    // 01/01/1995,12/31/1995,0.12,,S: 0.12 is held as the single 0.119999997.
    EXPECT_TRUE(l[2].starts_with("01/01/1995  12/31/1995  0.119999997   not published S ")) << l[2];
    EXPECT_NE(l[2].find("12 CSR 10-41.010"), std::string::npos) << l[2];
    EXPECT_EQ(l[2].find("out of date"), std::string::npos) << l[2];
    // The 27th row (1995-2018 one per year, 24 rows; 01/01/2019-03/31/2020
    // cut in two; then this one): 04/01/2020,06/30/2020,0.05,0.02,S.
    EXPECT_TRUE(l[2 + 26].starts_with("04/01/2020  06/30/2020  0.0500000007  0.0199999996  S ")) << l[2 + 26];
    EXPECT_EQ(l.back(),
              "Refund (overpayment) rate not published for 01/01/1995 to 03/31/2020, "
              "07/01/2021 to 09/30/2022, 04/01/2023 to 09/30/2023, 01/01/2025 to 12/31/2026: "
              "an overpayment in these periods cannot be computed.");
}

TEST(TablesCommand, AHoleIsShownWithItsResearchNote)
{
    const CmdRun r = tables({"FL"});
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto l = lines(r.out);
    // Title, column heading, 52 rows and the two notes.
    ASSERT_EQ(l.size(), 2u + 52u + 2u);
    // 1990-1999 cut into ten years, then 2000 in two halves, 2001, 2002 in
    // two halves: the 16th row is the GAP 01/01/2003-06/30/2003.
    EXPECT_EQ(l[2 + 15], "01/01/2003  06/30/2003  not published not published C               "
                         "GAP: Florida floating rate for this half-year not found");
    EXPECT_EQ(l[l.size() - 2], "Underpayment rate not published for 01/01/2003 to 06/30/2003, 01/01/2004 to "
                               "12/31/2008, 07/01/2018 to 12/31/2018 (no published rate): interest in these "
                               "periods cannot be computed.");
    EXPECT_TRUE(l.back().starts_with("Refund (overpayment) rate not published for 01/01/1990 to 12/31/1999, "))
        << l.back();
}

TEST(TablesCommand, ATableThatDisagreesWithItsSourceAboutARefundRate)
{
    // A table holding a refund rate where its source says none was published,
    // and the reverse, is out of date.
    rwtest::TempDir dir;
    rw::RateTable rows(2);
    rows[0].dtFrom = rw::Date::fromCivil(2020, 1, 1);
    rows[0].dtThru = rw::Date::fromCivil(2020, 12, 31);
    rows[0].fUPRate = 0.05f;
    rows[0].fOPRate = 0.02f;
    rows[0].sCalcMethod = 'S';
    rows[1] = rows[0];
    rows[1].dtFrom = rw::Date::fromCivil(2021, 1, 1);
    rows[1].dtThru = rw::Date::fromCivil(2021, 12, 31);
    rows[1].fOPRate = std::numeric_limits<float>::quiet_NaN();
    const std::vector<char> bytes = rw::EncodeRateTable(rows);
    std::ofstream(dir / "pa1.tbl", std::ios::binary)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    std::filesystem::create_directories(dir / "rates-src");
    std::ofstream(dir / "rates-src" / "pa1.csv", std::ios::binary)
        << "from,thru,underpayment,overpayment,method,source\n"
           "01/01/2020,12/31/2020,0.05,,S,a\n"
           "01/01/2021,12/31/2021,0.05,0.02,S,b\n";
    const CmdRun r = tables({"PA"}, dir.path());
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto l = lines(r.out);
    ASSERT_EQ(l.size(), 2u + 2u + 1u);
    EXPECT_NE(l[2].find("a (the source row gives 0.05 / not published: the table is out of date)"),
              std::string::npos)
        << l[2];
    EXPECT_TRUE(l[3].starts_with("01/01/2021  12/31/2021  0.0500000007  not published S ")) << l[3];
    EXPECT_NE(l[3].find("b (the source row gives 0.05 / 0.02: the table is out of date)"), std::string::npos)
        << l[3];
    EXPECT_EQ(l[4], "Refund (overpayment) rate not published for 01/01/2021 to 12/31/2021: an overpayment in "
                    "these periods cannot be computed.");
}

TEST(TablesCommand, CodeMayCarryItsBlanks)
{
    EXPECT_EQ(tables({"PA  "}).out, tables({"PA"}).out);
    const CmdRun r = tables({"CAP "});
    EXPECT_EQ(r.status, rw::cli::kExitOk);
    EXPECT_TRUE(r.out.starts_with("CA - Personal (CAP, ca_pers.tbl)")) << r.out;
}

TEST(TablesCommand, MonthlyMethodIsShownBesideTheTableLetter)
{
    const CmdRun r = tables({"GA"});
    ASSERT_EQ(r.status, rw::cli::kExitOk);
    EXPECT_NE(r.out.find("S (S-monthly)"), std::string::npos);
}

TEST(TablesCommand, UnknownCodeIsBadInput)
{
    const CmdRun r = tables({"XX"});
    EXPECT_EQ(r.status, rw::cli::kExitBadInput);
    EXPECT_NE(r.err.find("unknown authority code 'XX'"), std::string::npos);
    EXPECT_EQ(tables({""}).status, rw::cli::kExitBadInput);
    EXPECT_EQ(tables({"PA", "MA"}).status, rw::cli::kExitBadInput);
}

TEST(TablesCommand, MissingTableOfAKnownCodeIsAProblem)
{
    rwtest::TempDir empty;
    const CmdRun r = tables({"PA"}, empty.path());
    EXPECT_EQ(r.status, rw::cli::kExitProblem);
    EXPECT_NE(r.err.find("pa1.tbl does not exist"), std::string::npos) << r.err;
}

}  // namespace
