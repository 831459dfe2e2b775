// The release file: what it must hold, how it is refused, and the minimum
// amounts it carries.

#include "rates/release.h"

#include <gtest/gtest.h>

namespace {

using rw::Date;
using rw::Money;

const std::string kGood = "# a comment\n"
                          "name=Qrat2026Q2\n"
                          "description=2026, 2nd Quarter\n"
                          "verified_through=06/30/2026\n"
                          "verified_through_text=June 30, 2026\n"
                          "estimated_through=12/31/2026\n"
                          "estimated_through_text=December 31, 2026\n"
                          "ftf_minimum=1800,100.00,IRC 6651(a), flush language\n"
                          "ftf_minimum=2020,435.00,P.L. 116-94\n"
                          "ftf_minimum=2024,485.00,Rev. Proc. 2023-34\n";

std::string problemOf(const std::string& text)
{
    rw::ReleaseInfo info;
    info.name = "left over";
    std::string problem;
    EXPECT_FALSE(rw::ParseReleaseInfo(text, "rel.txt", info, &problem));
    EXPECT_EQ(info, rw::ReleaseInfo{});  // nothing half read is kept
    return problem;
}

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    text.replace(text.find(from), from.size(), to);
    return text;
}

TEST(ReleaseFile, ReadsEveryKeyAndWritesTheSameBack)
{
    rw::ReleaseInfo info;
    std::string problem;
    ASSERT_TRUE(rw::ParseReleaseInfo(kGood, "rel.txt", info, &problem)) << problem;
    EXPECT_TRUE(info.loaded());
    EXPECT_EQ(info.name, "Qrat2026Q2");
    EXPECT_EQ(info.description, "2026, 2nd Quarter");
    EXPECT_EQ(info.verifiedThrough, Date::fromCivil(2026, 6, 30));
    EXPECT_EQ(info.estimatedThroughText, "December 31, 2026");
    ASSERT_EQ(info.ftfMinimums.rows.size(), 3u);
    // The source is the rest of the line, commas and all.
    EXPECT_EQ(info.ftfMinimums.rows[0].source, "IRC 6651(a), flush language");

    const std::string written = rw::FormatReleaseInfo(info);
    EXPECT_EQ(written, kGood.substr(kGood.find('\n') + 1));
    rw::ReleaseInfo again;
    ASSERT_TRUE(rw::ParseReleaseInfo(written, "rel.txt", again, &problem));
    EXPECT_EQ(again, info);
}

TEST(ReleaseFile, MinimumByTheYearOfTheDueDate)
{
    rw::ReleaseInfo info;
    ASSERT_TRUE(rw::ParseReleaseInfo(kGood, "rel.txt", info, nullptr));
    const rw::FtfMinimumSchedule& m = info.ftfMinimums;
    EXPECT_EQ(m.forDueYear(1975), Money::fromCents(100'00));
    EXPECT_EQ(m.forDueYear(2019), Money::fromCents(100'00));
    EXPECT_EQ(m.forDueYear(2020), Money::fromCents(435'00));
    EXPECT_EQ(m.forDueYear(2023), Money::fromCents(435'00));
    EXPECT_EQ(m.forDueYear(2024), Money::fromCents(485'00));
    EXPECT_EQ(m.forDueYear(2099), Money::fromCents(485'00));
    EXPECT_EQ(m.forDueYear(1799), std::nullopt);
    EXPECT_EQ(rw::FtfMinimumSchedule{}.forDueYear(2024), std::nullopt);
}

TEST(ReleaseFile, RefusedWithTheFileAndLine)
{
    EXPECT_EQ(problemOf(replaced(kGood, "name=Qrat2026Q2\n", "")), "rel.txt: name is not given");
    EXPECT_EQ(problemOf(replaced(kGood, "verified_through=06/30/2026", "verified_through=6/30/26")),
              "rel.txt:4: verified_through is not a date mm/dd/yyyy: 6/30/26");
    EXPECT_EQ(problemOf(replaced(kGood, "estimated_through=12/31/2026", "estimated_through=02/30/2026")),
              "rel.txt:6: estimated_through is not a date mm/dd/yyyy: 02/30/2026");
    EXPECT_EQ(problemOf(replaced(kGood, "estimated_through=12/31/2026", "estimated_through=03/31/2026")),
              "rel.txt: estimated_through is before verified_through");
    EXPECT_EQ(problemOf(kGood + "name=again\n"), "rel.txt:11: name is given twice");
    EXPECT_EQ(problemOf(kGood + "colour=blue\n"), "rel.txt:11: unknown key colour");
    EXPECT_EQ(problemOf(kGood + "just words\n"), "rel.txt:11: expected key=value");
    EXPECT_EQ(problemOf(kGood + "ftf_minimum=2023,450.00,Rev. Proc. 2022-38\n"),
              "rel.txt:11: ftf_minimum: the years must increase");
    EXPECT_EQ(problemOf(kGood + "ftf_minimum=2025,0,x\n"), "rel.txt:11: ftf_minimum: not an amount in dollars and cents above 0: 0");
    EXPECT_EQ(problemOf(kGood + "ftf_minimum=2025,510.00\n"), "rel.txt:11: ftf_minimum must be YEAR,AMOUNT,SOURCE");
    EXPECT_EQ(problemOf(kGood + "ftf_minimum=2025,510.00, \n"), "rel.txt:11: ftf_minimum: the row has no source");
    EXPECT_EQ(problemOf(kGood + "ftf_minimum=MMXXV,510.00,x\n"), "rel.txt:11: ftf_minimum: not a year: MMXXV");
    std::string noMinimums = kGood.substr(0, kGood.find("ftf_minimum"));
    EXPECT_EQ(problemOf(noMinimums), "rel.txt: no ftf_minimum is given");
}

TEST(ReleaseFile, AMissingFileIsNamed)
{
    rw::ReleaseInfo info;
    std::string problem;
    EXPECT_FALSE(rw::ReadReleaseInfo("/no/such/folder/qrat-release.txt", info, &problem));
    EXPECT_EQ(problem, "/no/such/folder/qrat-release.txt: cannot be read");
    EXPECT_FALSE(info.loaded());
}

}  // namespace
