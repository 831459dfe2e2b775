// The release file: what it holds, how it is refused (naming the file and the
// line), and the failure-to-file minimum it gives for a due year.

#include "rates/release.h"

#include <gtest/gtest.h>

namespace {

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

TEST(ReleaseFile, ReadsEveryKeyAndWritesTheSameBack)
{
    rw::ReleaseInfo info;
    std::string problem;
    ASSERT_TRUE(rw::ParseReleaseInfo(kGood, "rel.txt", info, &problem)) << problem;
    EXPECT_EQ(info.name, "Qrat2026Q2");
    EXPECT_EQ(info.description, "2026, 2nd Quarter");
    EXPECT_EQ(info.verifiedThrough, rw::Date::fromCivil(2026, 6, 30));
    EXPECT_EQ(info.estimatedThroughText, "December 31, 2026");
    ASSERT_EQ(info.ftfMinimums.rows.size(), 3u);
    EXPECT_EQ(info.ftfMinimums.rows[0].source, "IRC 6651(a), flush language");  // the rest of the line
    EXPECT_EQ(rw::FormatReleaseInfo(info), kGood.substr(kGood.find('\n') + 1));

    // The minimum of the last listed year at or before the due year.
    const rw::FtfMinimumSchedule m = info.ftfMinimums;
    EXPECT_EQ(m.forDueYear(2019), Money::fromCents(100'00));
    EXPECT_EQ(m.forDueYear(2020), Money::fromCents(435'00));
    EXPECT_EQ(m.forDueYear(2099), Money::fromCents(485'00));
    EXPECT_EQ(m.forDueYear(1799), std::nullopt);
    EXPECT_EQ(rw::FtfMinimumSchedule{}.forDueYear(2024), std::nullopt);
    EXPECT_FALSE(rw::ReadReleaseInfo("/no/such/folder/qrat-release.txt", info, &problem));
    EXPECT_EQ(problem, "/no/such/folder/qrat-release.txt: cannot be read");
}

struct Refusal {
    const char* name;
    std::string text;
    std::string problem;
};

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    return text.replace(text.find(from), from.size(), to);
}

class ReleaseRefusals : public testing::TestWithParam<Refusal> {};

TEST_P(ReleaseRefusals, NameTheFileAndLineAndKeepNothing)
{
    rw::ReleaseInfo info;
    info.name = "left over";
    std::string problem;
    EXPECT_FALSE(rw::ParseReleaseInfo(GetParam().text, "rel.txt", info, &problem));
    EXPECT_EQ(problem, GetParam().problem);
    EXPECT_EQ(info, rw::ReleaseInfo{});
}

INSTANTIATE_TEST_SUITE_P(
    ReleaseFile, ReleaseRefusals,
    testing::Values(
        Refusal{"NoName", Replaced(kGood, "name=Qrat2026Q2\n", ""), "rel.txt: name is not given"},
        Refusal{"TwoDigitYear", Replaced(kGood, "=06/30/2026", "=6/30/26"),
                "rel.txt:4: verified_through is not a date mm/dd/yyyy: 6/30/26"},
        Refusal{"February30", Replaced(kGood, "=12/31/2026", "=02/30/2026"),
                "rel.txt:6: estimated_through is not a date mm/dd/yyyy: 02/30/2026"},
        Refusal{"EstimatedBeforeVerified", Replaced(kGood, "=12/31/2026", "=03/31/2026"),
                "rel.txt: estimated_through is before verified_through"},
        Refusal{"KeyTwice", kGood + "name=again\n", "rel.txt:11: name is given twice"},
        Refusal{"UnknownKey", kGood + "colour=blue\n", "rel.txt:11: unknown key colour"},
        Refusal{"NoEqualsSign", kGood + "just words\n", "rel.txt:11: expected key=value"},
        Refusal{"YearsNotIncreasing", kGood + "ftf_minimum=2023,450.00,x\n",
                "rel.txt:11: ftf_minimum: the years must increase"},
        Refusal{"ZeroAmount", kGood + "ftf_minimum=2025,0,x\n",
                "rel.txt:11: ftf_minimum: not an amount in dollars and cents above 0: 0"},
        Refusal{"TwoFields", kGood + "ftf_minimum=2025,510.00\n", "rel.txt:11: ftf_minimum must be YEAR,AMOUNT,SOURCE"},
        Refusal{"BlankSource", kGood + "ftf_minimum=2025,510.00, \n", "rel.txt:11: ftf_minimum: the row has no source"},
        Refusal{"NotAYear", kGood + "ftf_minimum=MMXXV,510.00,x\n", "rel.txt:11: ftf_minimum: not a year: MMXXV"},
        Refusal{"NoMinimums", kGood.substr(0, kGood.find("ftf_minimum")), "rel.txt: no ftf_minimum is given"}),
    [](const testing::TestParamInfo<Refusal>& p) { return std::string(p.param.name); });

}  // namespace
