// qratcalc-cli tables: every authority's table with its coverage and holes, and the rows of one
// table with their sources, read from the tests' release of the fourth quarter of 2026 (figures
// copied by hand from its frozen sources, tests/fixtures/rates-2026q4).

#include "cli/cli.h"
#include "rates/ratetable.h"
#include "support/releases.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

struct Listing {
    int status = 0;
    std::vector<std::string> lines;
    std::string err;
};

Listing Tables(std::vector<std::string> args,
               const std::filesystem::path& dir = rwtest::FixtureReleaseFolder())
{
    std::ostringstream out, err;
    rw::cli::CliEnv env{std::move(args), out, err, rw::Paths::ForFolders(dir, dir), {}};
    Listing r{rw::cli::CmdTables(env), {}, err.str()};
    std::istringstream in(out.str());
    for (std::string l; std::getline(in, l);)
        r.lines.push_back(l);
    return r;
}

// The holes in both directions: a GAP row between sourced rows is in both
// lists, an empty overpayment field only in the second; neighbours merge.
TEST(TablesCommand, ListsEveryAuthorityWithItsCoverageAndHoles)
{
    const Listing r = Tables({});
    ASSERT_EQ(r.status, rw::cli::kExitOk) << r.err;
    const auto& l = r.lines;
    // A heading and 30 tables; a blank line, a heading and the 10 tables with GAP rows inside; a
    // blank line, a heading and the 15 tables with periods without a refund rate.
    ASSERT_EQ(l.size(), 31u + 2u + 10u + 2u + 15u);
    // fed.csv: 189 rows from 07/01/1975 to 03/31/2027 (12 before 1983, then 177 quarters).
    EXPECT_TRUE(l[1].starts_with("US    Federal ") && l[1].find("fed.tbl") != std::string::npos)
        << l[1];
    EXPECT_NE(l[1].find("07/01/1975  03/31/2027    189"), std::string::npos) << l[1];
    // FL.csv: 32 rows less the trailing GAP, cut at year ends (holes included): 52.
    EXPECT_NE(l[6].find("01/01/1990  06/30/2026     52"), std::string::npos) << l[6];
    EXPECT_EQ(
        l[32],
        "Underpayment rate not published (no published rate); interest in these periods cannot be "
        "computed:");
    EXPECT_EQ(l[33],
              "FL    01/01/2003 to 06/30/2003, 01/01/2004 to 12/31/2008, 07/01/2018 to 12/31/2018");
    EXPECT_EQ(l[44], "Refund (overpayment) rate not published; an overpayment in these periods "
                     "cannot be computed:");
    // FL.csv: 1990-1999 gives no refund rate, and the three GAPs.
    EXPECT_EQ(l[47],
              "FL    01/01/1990 to 12/31/1999, 01/01/2003 to 06/30/2003, 01/01/2004 to 12/31/2008, "
              "07/01/2018 to 12/31/2018");
    EXPECT_EQ(l[57], "SC    01/01/2010 to 09/30/2011, 07/01/2023 to 12/31/2026");
}

TEST(TablesCommand, RowsOfOneTableWithTheirSourcesAndHoles)
{
    const Listing pa = Tables({"PA  "});  // a code may carry its blanks
    ASSERT_EQ(pa.lines.size(), 2u + 45u);  // title, heading, whole years 1982-2026
    EXPECT_EQ(pa.lines[0], "Pennsylvania (PA, pa1.tbl): 45 rows from 01/01/1982 to 12/31/2026");
    // 01/01/1982,12/31/1982,20,20,S (per cent): 0.2 is held as the single 0.200000003.
    EXPECT_TRUE(pa.lines[2].starts_with("01/01/1982  12/31/1982  0.200000003   0.200000003   S "))
        << pa.lines[2];
    EXPECT_NE(pa.lines[2].find("61 Pa. Code 4.2(b) certified rate (pacode.com); simple, annual"),
              std::string::npos);

    const Listing fl = Tables({"FL"});
    ASSERT_EQ(fl.lines.size(), 2u + 52u + 2u);  // and the two notes
    // 1990-1999 cut into ten years, 2000 in two halves, 2001, 2002 in two
    // halves: the 16th row is the GAP 01/01/2003-06/30/2003.
    EXPECT_EQ(fl.lines[2 + 15],
              "01/01/2003  06/30/2003  not published not published C               "
              "GAP: Florida floating rate for this half-year not found");
    EXPECT_EQ(fl.lines[fl.lines.size() - 2],
              "Underpayment rate not published for 01/01/2003 to 06/30/2003, 01/01/2004 to "
              "12/31/2008, 07/01/2018 "
              "to 12/31/2018 (no published rate): interest in these periods cannot be computed.");
    // A monthly method is shown beside the table's letter.
    EXPECT_NE(Tables({"GA"}).lines.at(2).find("S (S-monthly)"), std::string::npos);
}

// A table holding a refund rate where its source says none was published,
// and the reverse, is out of date.
TEST(TablesCommand, ATableThatDisagreesWithItsSourceIsOutOfDate)
{
    rwtest::TempDir dir;
    const auto D = rw::Date::fromCivil;
    rwtest::WriteBytes(
        dir / "pa1.tbl",
        rw::EncodeRateTable({{D(2020, 1, 1), D(2020, 12, 31), 0.05f, 0.02f, {}, 'S'},
                             {D(2021, 1, 1), D(2021, 12, 31), 0.05f, NAN, {}, 'S'}}));
    std::filesystem::create_directories(dir / "rates-src");
    const std::string src
        = "from,thru,underpayment,overpayment,method,source\n"
          "01/01/2020,12/31/2020,0.05,,S,a\n01/01/2021,12/31/2021,0.05,0.02,S,b\n";
    rwtest::WriteBytes(dir / "rates-src" / "pa1.csv", {src.begin(), src.end()});
    const Listing r = Tables({"PA"}, dir.path());
    ASSERT_EQ(r.lines.size(), 2u + 2u + 1u);
    EXPECT_NE(
        r.lines[2].find("a (the source row gives 0.05 / not published: the table is out of date)"),
        std::string::npos)
        << r.lines[2];
    EXPECT_TRUE(r.lines[3].starts_with("01/01/2021  12/31/2021  0.0500000007  not published S "))
        << r.lines[3];
    EXPECT_NE(r.lines[3].find("b (the source row gives 0.05 / 0.02: the table is out of date)"),
              std::string::npos);
}

TEST(TablesCommand, ExitStatuses)
{
    rwtest::TempDir empty;
    const Listing none = Tables({}, empty.path()), missing = Tables({"PA"}, empty.path()),
                  unknown = Tables({"XX"});
    EXPECT_EQ(none.status, rw::cli::kExitProblem);
    ASSERT_EQ(none.lines.size(), 31u);
    EXPECT_NE(none.lines[1].find("fed.tbl       no"), std::string::npos) << none.lines[1];
    EXPECT_EQ(missing.status, rw::cli::kExitProblem);
    EXPECT_NE(missing.err.find("pa1.tbl does not exist"), std::string::npos) << missing.err;
    EXPECT_EQ(unknown.status, rw::cli::kExitBadInput);
    EXPECT_NE(unknown.err.find("unknown authority code 'XX'"), std::string::npos);
    EXPECT_EQ(Tables({""}).status, rw::cli::kExitBadInput);
    EXPECT_EQ(Tables({"PA", "MA"}).status, rw::cli::kExitBadInput);
}

}  // namespace
