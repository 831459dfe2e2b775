// qratcalc-cli tables: the listing of every authority's table and the rows of
// one table with their published sources, read from the installation folder
// the build fills.

#include "cli/cli.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct CmdRun {
    int status = 0;
    std::string out;
    std::string err;
};

CmdRun tables(std::vector<std::string> args, std::filesystem::path dir = {})
{
    if (dir.empty()) {
        const char* env = std::getenv("RW_INSTALL_DIR");
        dir = env ? env : "";
    }
    std::ostringstream out, err;
    rw::cli::CliEnv env{std::move(args), out, err, rw::Paths::ForFolders(dir, dir)};
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
    ASSERT_EQ(l.size(), 31u);  // a heading and 30 authorities
    EXPECT_TRUE(l[1].starts_with("US    Federal ")) << l[1];
    EXPECT_NE(l[1].find("fed.tbl"), std::string::npos);
    EXPECT_NE(l[1].find("yes"), std::string::npos);
    // fed.csv: 66 rows from 07/01/1975 to 12/31/2026.
    EXPECT_NE(l[1].find("07/01/1975  12/31/2026     66"), std::string::npos) << l[1];
    EXPECT_TRUE(l[4].starts_with("CAB   CA - Corp: Large")) << l[4];
    EXPECT_TRUE(l[5].starts_with("CARC  CA - Corp: Regular")) << l[5];
    EXPECT_NE(l[16].find("Ma1-up.tbl"), std::string::npos) << l[16];
    EXPECT_TRUE(l[30].starts_with("WV    West Virginia")) << l[30];
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
    ASSERT_EQ(l.size(), 2u + 31u);
    EXPECT_EQ(l[0], "Pennsylvania (PA, pa1.tbl): 31 rows from 01/01/1982 to 12/31/2026");
    // 01/01/1982,12/31/1982,0.2,0.2,S: 0.2 is held as the single 0.200000003.
    EXPECT_TRUE(l[2].starts_with("01/01/1982  12/31/1982  0.200000003   0.200000003   S ")) << l[2];
    EXPECT_NE(l[2].find("61 Pa. Code 4.2(b) certified rate (pacode.com); simple, annual"), std::string::npos);
    // 01/01/2026,12/31/2026,0.07,0.07,S: 0.07 is the single 0.0700000003.
    EXPECT_TRUE(l.back().starts_with("01/01/2026  12/31/2026  0.0700000003  0.0700000003  S ")) << l.back();
    EXPECT_NE(l.back().find("DERIVED: Fiscal Code 806/806.1"), std::string::npos);
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
