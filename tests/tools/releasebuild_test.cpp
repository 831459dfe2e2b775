// Building a release of the rates: its name, dates and texts derived from the federal source, the
// failure-to-file minimums, the refusals that write nothing, the rows cut at year ends and the
// holes a state table keeps. (The release of the tests' frozen sources is shown by the commands'
// tests.)

#include "base/numtext.h"
#include "ratebuild/releasebuild.h"
#include "rates/ratetable.h"

#include "support/ratesources.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>

namespace {

namespace fs = std::filesystem;
namespace rs = rw::ratesrc;
using rw::Date;
using rw::Money;

const std::string kHeader = std::string(rs::kTableHeader) + "\n";

std::string Problems(const std::vector<rs::SourceProblem>& problems)
{
    std::string all;
    for (const rs::SourceProblem& p : problems)
        all += p.text() + "\n";
    return all;
}

rs::ReleaseDates Dates(const std::string& rows)
{
    return rs::DeriveReleaseDates(rs::ParseSource(kHeader + rows, "fed.csv", rs::kTableHeader));
}

TEST(ReleaseDates, VerifiedThroughTheLastRowNotMarkedAsAnEstimate)
{
    const rs::ReleaseDates d
        = Dates("01/01/2025,03/31/2026,0.07,0.07,C,Rev. Rul. 2025-22\n"
                "04/01/2026,06/30/2026,0.06,0.06,C,Rev. Rul. 2026-5\n"
                "07/01/2026,09/30/2026,0.07,0.07,C,ESTIMATE: another office's rate\n"
                "10/01/2026,12/31/2026,0.07,0.07,C,ESTIMATE: carried forward\n");
    ASSERT_TRUE(d.problems.empty()) << Problems(d.problems);
    EXPECT_EQ(d.info, (rw::ReleaseInfo{"Qrat2026Q2",
                                       "2026, 2nd Quarter",
                                       Date::fromCivil(2026, 6, 30),
                                       "June 30, 2026",
                                       Date::fromCivil(2026, 12, 31),
                                       "December 31, 2026",
                                       {},
                                       {}}));
    // Without estimates both dates are the table's end.
    const rs::ReleaseDates plain = Dates("01/01/2018,03/31/2018,0.04,0.04,C,Rev. Rul. 2017-25\n");
    EXPECT_EQ(plain.info.estimatedThrough, Date::fromCivil(2018, 3, 31));
    EXPECT_EQ(plain.info.description, "2018, 1st Quarter");
    EXPECT_EQ(rs::SpelledOutDate(Date::fromCivil(2018, 3, 1)), "March 1, 2018");
    EXPECT_EQ(rs::QuarterDescription(Date::fromCivil(2026, 9, 30)), "2026, 3rd Quarter");
    EXPECT_EQ(rs::QuarterDescription(Date::fromCivil(2026, 10, 1)), "2026, 4th Quarter");
    // Estimates may only end the table.
    EXPECT_NE(Problems(Dates("01/01/2026,03/31/2026,0.07,0.07,C,ESTIMATE: guessed\n"
                             "04/01/2026,06/30/2026,0.06,0.06,C,Rev. Rul. 2026-5\n")
                           .problems)
                  .find("fed.csv:3: a verified row follows the estimate"),
              std::string::npos);
    EXPECT_NE(Problems(Dates("01/01/2026,03/31/2026,0.07,0.07,C,ESTIMATE: x\n").problems)
                  .find("no row is verified"),
              std::string::npos);
}

// The rows are read as the release file reads them (and refused alike).
TEST(Minimums, ReadWithTheirSourcesOrRefused)
{
    const rs::MinimumsRead m
        = rs::ParseMinimums("first_year,amount,source\n1800,100.00,\"6651(a), flush\"\n", "m.csv");
    ASSERT_TRUE(m.problems.empty()) << Problems(m.problems);
    EXPECT_EQ(m.schedule.rows.at(0).source, "6651(a), flush");
    EXPECT_NE(
        Problems(rs::ParseMinimums("first_year,amount,source\n2020,1.00,a\n2019,1.00,b\n", "m.csv")
                     .problems)
            .find("m.csv:3: the years must increase"),
        std::string::npos);
    EXPECT_NE(Problems(rs::ParseMinimums("year,amount\n2020,1.00\n", "m.csv").problems)
                  .find("m.csv:1: the first line"),
              std::string::npos);
}

// The tests' frozen sources, with fed.csv damaged or a schedule missing: the
// build is refused and writes nothing.
TEST(ReleaseBuild, RefusedSourcesWriteNothing)
{
    rwtest::TempDir out;
    const std::string both = "the federal table needs both published rates on every row";
    for (const auto& [what, rows, problem] :
         {std::tuple{"a rate of 60 %", "04/01/2027,09/30/2027,0.6,0.07,C,ESTIMATE: x\n", "0.6"},
          {"a period without a published rate",
           "04/01/2027,06/30/2027,,,C,GAP: x\n07/01/2027,09/30/2027,0.08,0.08,C,ESTIMATE: x\n",
           both.c_str()},
          {"no refund rate", "04/01/2027,09/30/2027,0.08,,C,ESTIMATE: x\n", both.c_str()},
          {"no Pennsylvania schedule", "", "PA.csv"}}) {
        SCOPED_TRACE(what);
        rwtest::TempDir sources;
        fs::copy(rwtest::FixtureRateSources(), sources.path(), fs::copy_options::recursive);
        std::ofstream(sources / "fed.csv", std::ios::app | std::ios::binary) << rows;
        if (std::string(rows).empty())
            fs::remove(sources / "states" / "PA.csv");
        const rs::ReleaseBuild b = rs::BuildRelease(sources.path());
        EXPECT_NE(Problems(b.problems).find(problem), std::string::npos) << Problems(b.problems);
        std::string why;
        EXPECT_FALSE(rs::WriteRelease(b, out / "never", &why));
        EXPECT_FALSE(fs::exists(out / "never"));
    }
}

// A leading GAP, a sourced row over two and a half years, a GAP between
// sourced rows, a trailing GAP: the table runs from the first to the last
// sourced day, cut at each year end (daily compounding takes the year's day
// count from the year a row begins in), the hole a row without either rate.
TEST(ReleaseBuild, AStateTableKeepsItsHolesAndIsCutAtYearEnds)
{
    // One row for every authority, and Pennsylvania's schedule as described.
    rwtest::TempDir sources, out;
    const auto write = [&](const std::string& name, const std::string& text) {
        std::ofstream(sources / name, std::ios::binary) << text;
    };
    fs::create_directories(sources / "states");
    write("fed.csv", kHeader + "01/01/2024,03/31/2024,0.08,0.08,C,Rev. Rul. A\n");
    write("ftf_minimum.csv", "first_year,amount,source\n2024,485.00,Rev. Proc. 2023-34\n");
    for (const rw::Authority& a : rw::Authorities().subspan(1))  // the states
        write("states/" + rw::TrimRight(a.code) + ".csv",
              std::string(rs::kScheduleHeader) + "\n01/01/2024,03/31/2024,7,7,S,a\n");
    write("states/PA.csv", std::string(rs::kScheduleHeader)
                               + "\n01/01/2020,12/31/2020,,,,GAP: not found\n"
                                 "01/01/2021,06/30/2023,5,5,S,Statute A\n"
                                 "07/01/2023,12/31/2023,,,,GAP: not found either\n"
                                 "01/01/2024,03/31/2024,6,,S,Statute B\n"
                                 "04/01/2024,12/31/2024,,,,GAP: not yet announced\n");
    const rs::ReleaseBuild b = rs::BuildRelease(sources.path());
    ASSERT_TRUE(b.ok()) << Problems(b.problems);
    std::string why;
    ASSERT_TRUE(rs::WriteRelease(b, out.path(), &why)) << why;
    const rw::RateTable t = rw::ReadRateTableFile(out / "pa1.tbl").rows;
    ASSERT_EQ(t.size(), 5u);  // 2021, 2022, 1-6/2023, the hole 7-12/2023, 1-3/2024
    EXPECT_TRUE(std::isnan(t[3].fUPRate) && std::isnan(t[3].fOPRate) && t[3].sCalcMethod == 'C');
    EXPECT_TRUE(t[4].fUPRate == 0.06f && std::isnan(t[4].fOPRate));
    EXPECT_EQ(rwtest::ReadText(out / "rates-src" / "pa1.csv"),
              kHeader
                  + "01/01/2021,12/31/2021,0.05,0.05,S,Statute A\n"
                    "01/01/2022,12/31/2022,0.05,0.05,S,Statute A\n"
                    "01/01/2023,06/30/2023,0.05,0.05,S,Statute A\n"
                    "07/01/2023,12/31/2023,,,C,GAP: not found either\n"
                    "01/01/2024,03/31/2024,0.06,,S,Statute B\n");
}

}  // namespace
