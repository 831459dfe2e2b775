// Building a release of the rates: the dates and texts derived from the
// federal source, the failure-to-file minimums, the refusals, the release
// folder written from the frozen sources of the tests, rows cut at year ends
// and state tables with their holes.

#include "base/numtext.h"
#include "rates/ratetable.h"
#include "ratebuild/releasebuild.h"

#include "support/ratesources.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

namespace {

namespace fs = std::filesystem;
namespace rs = rw::ratesrc;
using rw::Date;
using rw::Money;

const std::string kHeader = std::string(rs::kTableHeader) + "\n";

std::string readFile(const fs::path& p)
{
    std::ifstream in(p, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

bool mentions(const std::vector<rs::SourceProblem>& problems, const std::string& what)
{
    for (const auto& p : problems)
        if (p.text().find(what) != std::string::npos)
            return true;
    return false;
}

TEST(ReleaseTexts, DatesQuartersAndNames)
{
    EXPECT_EQ(rs::SpelledOutDate(Date::fromCivil(2026, 6, 30)), "June 30, 2026");
    EXPECT_EQ(rs::SpelledOutDate(Date::fromCivil(2026, 12, 31)), "December 31, 2026");
    EXPECT_EQ(rs::SpelledOutDate(Date::fromCivil(2018, 3, 1)), "March 1, 2018");
    EXPECT_EQ(rs::QuarterDescription(Date::fromCivil(2018, 3, 31)), "2018, 1st Quarter");
    EXPECT_EQ(rs::QuarterDescription(Date::fromCivil(2026, 4, 1)), "2026, 2nd Quarter");
    EXPECT_EQ(rs::QuarterDescription(Date::fromCivil(2026, 9, 30)), "2026, 3rd Quarter");
    EXPECT_EQ(rs::QuarterDescription(Date::fromCivil(2026, 10, 1)), "2026, 4th Quarter");
    EXPECT_EQ(rs::ReleaseName(Date::fromCivil(2026, 6, 30)), "Qrat2026Q2");
}

TEST(ReleaseDates, VerifiedThroughTheLastRowNotMarkedAsAnEstimate)
{
    const auto fed = rs::ParseSource(kHeader
                                         + "01/01/2025,03/31/2026,0.07,0.07,C,Rev. Rul. 2025-22\n"
                                           "04/01/2026,06/30/2026,0.06,0.06,C,Rev. Rul. 2026-5\n"
                                           "07/01/2026,09/30/2026,0.07,0.07,C,ESTIMATE: another office's rate\n"
                                           "10/01/2026,12/31/2026,0.07,0.07,C,ESTIMATE: carried forward\n",
                                     "fed.csv", rs::kTableHeader);
    const rs::ReleaseDates d = rs::DeriveReleaseDates(fed);
    ASSERT_TRUE(d.problems.empty()) << d.problems.front().text();
    EXPECT_EQ(d.info.name, "Qrat2026Q2");
    EXPECT_EQ(d.info.description, "2026, 2nd Quarter");
    EXPECT_EQ(d.info.verifiedThrough, Date::fromCivil(2026, 6, 30));
    EXPECT_EQ(d.info.verifiedThroughText, "June 30, 2026");
    EXPECT_EQ(d.info.estimatedThrough, Date::fromCivil(2026, 12, 31));
    EXPECT_EQ(d.info.estimatedThroughText, "December 31, 2026");

    // Without estimates both dates are the table's end.
    const auto plain = rs::ParseSource(kHeader + "01/01/2018,03/31/2018,0.04,0.04,C,Rev. Rul. 2017-25\n", "fed.csv",
                                       rs::kTableHeader);
    const rs::ReleaseDates p = rs::DeriveReleaseDates(plain);
    EXPECT_EQ(p.info.verifiedThrough, Date::fromCivil(2018, 3, 31));
    EXPECT_EQ(p.info.estimatedThrough, Date::fromCivil(2018, 3, 31));
    EXPECT_EQ(p.info.description, "2018, 1st Quarter");
}

TEST(ReleaseDates, EstimatesMayOnlyEndTheTable)
{
    const auto middle = rs::ParseSource(kHeader
                                            + "01/01/2026,03/31/2026,0.07,0.07,C,ESTIMATE: guessed\n"
                                              "04/01/2026,06/30/2026,0.06,0.06,C,Rev. Rul. 2026-5\n",
                                        "fed.csv", rs::kTableHeader);
    EXPECT_TRUE(mentions(rs::DeriveReleaseDates(middle).problems, "fed.csv:3: a verified row follows the estimate"));

    const auto onlyEstimates = rs::ParseSource(kHeader + "01/01/2026,03/31/2026,0.07,0.07,C,ESTIMATE: guessed\n",
                                               "fed.csv", rs::kTableHeader);
    EXPECT_TRUE(mentions(rs::DeriveReleaseDates(onlyEstimates).problems, "no row is verified"));
}

TEST(Minimums, ReadWithTheirSources)
{
    const rs::MinimumsRead m = rs::ParseMinimums("first_year,amount,source\n"
                                                 "1800,100.00,\"IRC 6651(a), flush language\"\n"
                                                 "2024,485.00,Rev. Proc. 2023-34\n",
                                                 "ftf_minimum.csv");
    ASSERT_TRUE(m.problems.empty()) << m.problems.front().text();
    ASSERT_EQ(m.schedule.rows.size(), 2u);
    EXPECT_EQ(m.schedule.rows[0].source, "IRC 6651(a), flush language");
    EXPECT_EQ(m.schedule.forDueYear(2023), Money::fromCents(100'00));
    EXPECT_EQ(m.schedule.forDueYear(2024), Money::fromCents(485'00));
    EXPECT_EQ(m.schedule.forDueYear(1799), std::nullopt);
}

TEST(Minimums, Refusals)
{
    auto problems = [](const std::string& rows) {
        return rs::ParseMinimums("first_year,amount,source\n" + rows, "m.csv").problems;
    };
    EXPECT_TRUE(mentions(problems("2020,435.00,a\n2019,210.00,b\n"), "m.csv:3: the years must increase"));
    EXPECT_TRUE(mentions(problems("2020,435.00,\n"), "m.csv:2: the row has no source"));
    EXPECT_TRUE(mentions(problems("2020,-5.00,a\n"), "not an amount"));
    EXPECT_TRUE(mentions(problems("2020,4.355,a\n"), "not an amount"));
    EXPECT_TRUE(mentions(problems("20,435.00,a\n"), "not a year"));
    EXPECT_TRUE(mentions(problems(""), "no minimum amounts"));
    EXPECT_TRUE(mentions(rs::ParseMinimums("year,amount\n2020,1.00\n", "m.csv").problems, "m.csv:1: the first line"));
}

// The frozen sources of the fourth quarter of 2026 give its release:
// fed.csv's last verified row ends 12/31/2026, its ESTIMATE row runs to
// 3/31/2027.
TEST(FixtureSources, BuildTheReleaseOf2026FourthQuarter)
{
    const rs::ReleaseBuild b = rs::BuildRelease(rwtest::FixtureRateSources());
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    ASSERT_EQ(b.tables.size(), rw::Authorities().size());
    EXPECT_EQ(b.info.name, "Qrat2026Q4");
    EXPECT_EQ(b.info.description, "2026, 4th Quarter");
    EXPECT_EQ(b.info.verifiedThrough, Date::fromCivil(2026, 12, 31));
    EXPECT_EQ(b.info.verifiedThroughText, "December 31, 2026");
    EXPECT_EQ(b.info.estimatedThrough, Date::fromCivil(2027, 3, 31));
    EXPECT_EQ(b.info.estimatedThroughText, "March 31, 2027");
    EXPECT_EQ(b.info.ftfMinimums.forDueYear(2016), Money::fromCents(205'00));
    EXPECT_EQ(b.info.ftfMinimums.forDueYear(2018), Money::fromCents(210'00));
    EXPECT_EQ(b.info.ftfMinimums.forDueYear(2021), Money::fromCents(435'00));
    EXPECT_EQ(b.info.ftfMinimums.forDueYear(2026), Money::fromCents(525'00));
    EXPECT_NE(b.info.ftfMinimums.rows.back().source.find("Rev. Proc. 2025-32"), std::string::npos);
}

// A copy of the sources with one more quarter (Q1 2027 announced, Q2 2027
// estimated).
class OneMoreQuarter : public testing::Test {
protected:
    OneMoreQuarter() { rwtest::CopyRateSourcesWithNextQuarter(sources.path()); }
    rwtest::TempDir sources;
    rwtest::TempDir out;
};

TEST_F(OneMoreQuarter, IsTheWholeUpdate)
{
    const rs::ReleaseBuild b = rs::BuildRelease(sources.path());
    ASSERT_TRUE(b.ok()) << b.problems.front().text();
    EXPECT_EQ(b.info.name, "Qrat2027Q1");
    EXPECT_EQ(b.info.description, "2027, 1st Quarter");
    EXPECT_EQ(b.info.verifiedThroughText, "March 31, 2027");
    EXPECT_EQ(b.info.estimatedThroughText, "June 30, 2027");

    std::string why;
    ASSERT_TRUE(rs::WriteRelease(b, out.path(), &why)) << why;
    rw::ReleaseInfo read;
    EXPECT_EQ(rw::CheckReleaseFolder(out.path(), read), "");
    EXPECT_EQ(read, b.info);
    const auto fed = rw::ReadRateTableFile(out / "fed.tbl");
    ASSERT_EQ(fed.status, rw::RateTableReadResult::Status::Ok);
    EXPECT_EQ(fed.rows.back().dtFrom, Date::fromCivil(2027, 4, 1));
    EXPECT_EQ(fed.rows.back().dtThru, Date::fromCivil(2027, 6, 30));
    // Each table's source travels with it.
    EXPECT_NE(readFile(out / "rates-src" / "fed.csv").find("Rev. Rul. 2027-3"), std::string::npos);
    EXPECT_TRUE(fs::is_regular_file(out / "rates-src" / "Il-st.csv"));
}

TEST_F(OneMoreQuarter, RefusedSourcesWriteNothing)
{
    struct Damage {
        const char* what;
        const char* rows;  // appended to fed.csv
        const char* problem;
    };
    for (const Damage& d :
         {Damage{"a hole", "07/02/2027,09/30/2027,0.07,0.07,C,ESTIMATE: x\n", "not contiguous"},
          Damage{"a rate of 60 %", "07/01/2027,09/30/2027,0.6,0.07,C,ESTIMATE: x\n", "0.6"},
          Damage{"a negative rate", "07/01/2027,09/30/2027,-0.01,0.07,C,ESTIMATE: x\n", "-0.01"},
          Damage{"no source", "07/01/2027,09/30/2027,0.07,0.07,C,\n", "the row has no source"},
          Damage{"a period without a published rate",
                 "07/01/2027,09/30/2027,,,C,GAP: not found\n10/01/2027,12/31/2027,0.08,0.08,C,ESTIMATE: x\n",
                 "the federal table needs both published rates on every row"},
          Damage{"no refund rate", "07/01/2027,09/30/2027,0.08,,C,ESTIMATE: x\n",
                 "the federal table needs both published rates on every row"}}) {
        SCOPED_TRACE(d.what);
        rwtest::TempDir copy;
        fs::copy(sources.path(), copy.path(), fs::copy_options::recursive);
        std::ofstream(copy / "fed.csv", std::ios::app | std::ios::binary) << d.rows;
        const rs::ReleaseBuild b = rs::BuildRelease(copy.path());
        EXPECT_FALSE(b.ok());
        EXPECT_TRUE(mentions(b.problems, d.problem)) << (b.problems.empty() ? "" : b.problems.front().text());
        std::string why;
        EXPECT_FALSE(rs::WriteRelease(b, out / "never", &why));
        EXPECT_FALSE(fs::exists(out / "never"));
    }
}

TEST_F(OneMoreQuarter, AMissingStateScheduleIsNamed)
{
    fs::remove(sources / "states" / "PA.csv");
    const rs::ReleaseBuild b = rs::BuildRelease(sources.path());
    EXPECT_FALSE(b.ok());
    EXPECT_TRUE(mentions(b.problems, "PA.csv")) << b.problems.front().text();
}

// A small folder of sources, every authority with one row, in which single
// files are then replaced: the release build on made-up rates.
class SmallSources : public testing::Test {
protected:
    SmallSources()
    {
        fs::create_directories(sources / "states");
        write("fed.csv", kHeader + "01/01/2024,03/31/2024,0.08,0.08,C,Rev. Rul. A\n");
        for (const rw::Authority& a : rw::Authorities()) {
            const std::string code = rw::TrimRight(a.code);
            if (code != "US")
                write("states/" + code + ".csv",
                      std::string(rs::kScheduleHeader) + "\n01/01/2024,03/31/2024,7,7,S,Statute\n");
        }
        write("ftf_minimum.csv", "first_year,amount,source\n2024,485.00,Rev. Proc. 2023-34\n");
    }
    void write(const std::string& name, const std::string& text)
    {
        std::ofstream(sources / name, std::ios::binary) << text;
    }
    // The written release's table of `file`, and its source.
    rw::RateTable built(const char* file)
    {
        const rs::ReleaseBuild b = rs::BuildRelease(sources.path());
        EXPECT_TRUE(b.ok()) << (b.problems.empty() ? "" : b.problems.front().text());
        std::string why;
        EXPECT_TRUE(rs::WriteRelease(b, out.path(), &why)) << why;
        const auto t = rw::ReadRateTableFile(out / file);
        EXPECT_EQ(t.status, rw::RateTableReadResult::Status::Ok);
        return t.rows;
    }
    rwtest::TempDir sources;
    rwtest::TempDir out;
};

// Daily compounding takes the year's day count (365 or 366) from the year an
// interest row begins in, so a table row reaching across 31 December would
// compound the days of the second year on the first year's basis. The source
// row 10/01/2023-03/31/2024 (183 days: 31 + 30 + 31 in 2023, 31 + 29 + 31 in
// the leap year 2024) becomes 10/01/2023-12/31/2023 (92 days, a 365-day year)
// and 01/01/2024-03/31/2024 (91 days, a 366-day year), each with the row's
// rates, method and source.
TEST_F(SmallSources, AFederalRowAcrossAYearEndIsCut)
{
    write("fed.csv", kHeader
                         + "07/01/2023,09/30/2023,0.07,0.07,C,Rev. Rul. B\n"
                           "10/01/2023,03/31/2024,0.08,0.08,C,\"Rev. Rul. C, merged\"\n");
    const rw::RateTable t = built("fed.tbl");
    ASSERT_EQ(t.size(), 3u);
    EXPECT_EQ(t[1].dtFrom, Date::fromCivil(2023, 10, 1));
    EXPECT_EQ(t[1].dtThru, Date::fromCivil(2023, 12, 31));
    EXPECT_EQ(t[2].dtFrom, Date::fromCivil(2024, 1, 1));
    EXPECT_EQ(t[2].dtThru, Date::fromCivil(2024, 3, 31));
    EXPECT_EQ(t[1].dtThru.dayNumber() - t[1].dtFrom.dayNumber() + 1, 92.0);
    EXPECT_EQ(t[2].dtThru.dayNumber() - t[2].dtFrom.dayNumber() + 1, 91.0);
    for (const rw::RateRow* r : {&t[1], &t[2]}) {
        EXPECT_EQ(r->fUPRate, 0.08f);
        EXPECT_EQ(r->fOPRate, 0.08f);
        EXPECT_EQ(r->sCalcMethod, 'C');
    }
    // The table's source says the same, each piece with the row's source.
    EXPECT_EQ(readFile(out / "rates-src" / "fed.csv"),
              kHeader
                  + "07/01/2023,09/30/2023,0.07,0.07,C,Rev. Rul. B\n"
                    "10/01/2023,12/31/2023,0.08,0.08,C,\"Rev. Rul. C, merged\"\n"
                    "01/01/2024,03/31/2024,0.08,0.08,C,\"Rev. Rul. C, merged\"\n");
}

// A state schedule with a leading GAP, a sourced row over two and a half
// years, a GAP between sourced rows, a trailing GAP: the table runs from the
// first to the last sourced day, cut at each year end, the hole in the middle
// held as a row without either rate.
TEST_F(SmallSources, AStateTableKeepsItsHolesAndIsCutAtYearEnds)
{
    write("states/PA.csv", std::string(rs::kScheduleHeader)
                               + "\n01/01/2020,12/31/2020,,,,GAP: not found\n"
                                 "01/01/2021,06/30/2023,5,5,S,Statute A\n"
                                 "07/01/2023,12/31/2023,,,,GAP: not found either\n"
                                 "01/01/2024,03/31/2024,6,,S,Statute B\n"
                                 "04/01/2024,12/31/2024,,,,GAP: not yet announced\n");
    const rw::RateTable t = built("pa1.tbl");
    // 2021, 2022, 1-6/2023, the hole 7-12/2023, 1-3/2024.
    ASSERT_EQ(t.size(), 5u);
    EXPECT_EQ(t.front().dtFrom, Date::fromCivil(2021, 1, 1));
    EXPECT_EQ(t[2].dtFrom, Date::fromCivil(2023, 1, 1));
    EXPECT_EQ(t[2].dtThru, Date::fromCivil(2023, 6, 30));
    EXPECT_EQ(t[2].fUPRate, 0.05f);
    EXPECT_TRUE(std::isnan(t[3].fUPRate));
    EXPECT_TRUE(std::isnan(t[3].fOPRate));
    EXPECT_EQ(t[3].sCalcMethod, 'C');
    EXPECT_EQ(t.back().dtThru, Date::fromCivil(2024, 3, 31));
    EXPECT_EQ(t.back().fUPRate, 0.06f);
    EXPECT_TRUE(std::isnan(t.back().fOPRate));
    EXPECT_EQ(readFile(out / "rates-src" / "pa1.csv"),
              kHeader
                  + "01/01/2021,12/31/2021,0.05,0.05,S,Statute A\n"
                    "01/01/2022,12/31/2022,0.05,0.05,S,Statute A\n"
                    "01/01/2023,06/30/2023,0.05,0.05,S,Statute A\n"
                    "07/01/2023,12/31/2023,,,C,GAP: not found either\n"
                    "01/01/2024,03/31/2024,0.06,,S,Statute B\n");
}

}  // namespace
