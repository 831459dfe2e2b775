#include "base/dates.h"

#include <gtest/gtest.h>

using rw::Date;

namespace {

TEST(Dates, DayZeroAndNoDate)
{
    EXPECT_EQ(Date::fromCivil(1899, 12, 30).dayNumber(), 0.0);
    EXPECT_EQ(rw::NoDate.civil(), (rw::CivilDate{1810, 4, 14}));
    EXPECT_FALSE(rw::NoDate.isGiven());
    EXPECT_TRUE(Date(0.0).isGiven());
    // Well-known serial numbers of the desktop calendar.
    EXPECT_EQ(Date::fromCivil(2016, 4, 15).dayNumber(), 42475.0);
    EXPECT_EQ(Date::fromCivil(1900, 3, 1).dayNumber(), 61.0);
    EXPECT_EQ(Date::fromCivil(2018, 3, 31).dayNumber(), 43190.0);
}

TEST(Dates, EveryDayFrom1800To2200RoundTrips)
{
    const Date first = Date::fromCivil(1800, 1, 1);
    const Date last = Date::fromCivil(2200, 12, 31);
    rw::CivilDate prev = first.civil();
    EXPECT_EQ(prev, (rw::CivilDate{1800, 1, 1}));
    for (double n = first.dayNumber() + 1; n <= last.dayNumber(); ++n) {
        const rw::CivilDate c = Date(n).civil();
        // Each day is the day after the previous one on the calendar.
        const bool nextDay = c.year == prev.year && c.month == prev.month && c.day == prev.day + 1;
        const bool nextMonth = c.year == prev.year && c.month == prev.month + 1 && c.day == 1
            && prev.day == rw::DaysInMonth(prev.year, prev.month);
        const bool nextYear = c.year == prev.year + 1 && c.month == 1 && c.day == 1 && prev.month == 12
            && prev.day == 31;
        ASSERT_TRUE(nextDay || nextMonth || nextYear) << n;
        ASSERT_EQ(Date::fromCivil(c.year, c.month, c.day).dayNumber(), n);
        prev = c;
    }
    EXPECT_EQ(prev, (rw::CivilDate{2200, 12, 31}));
}

TEST(Dates, AddMonthsClampsToTheEndOfAShorterMonth)
{
    EXPECT_EQ(rw::AddMonths(Date::fromCivil(2017, 1, 31), 1), Date::fromCivil(2017, 2, 28));
    EXPECT_EQ(rw::AddMonths(Date::fromCivil(2016, 1, 31), 1), Date::fromCivil(2016, 2, 29));
    EXPECT_EQ(rw::AddMonths(Date::fromCivil(2016, 4, 16), 9), Date::fromCivil(2017, 1, 16));
    EXPECT_EQ(rw::AddMonths(Date::fromCivil(2016, 8, 31), 6), Date::fromCivil(2017, 2, 28));
    EXPECT_EQ(rw::AddMonths(Date::fromCivil(2016, 3, 31), -1), Date::fromCivil(2016, 2, 29));
    EXPECT_EQ(rw::AddMonths(Date::fromCivil(1999, 12, 15), 1), Date::fromCivil(2000, 1, 15));
}

TEST(Dates, TextForms)
{
    const Date d = Date::fromCivil(2016, 7, 4);
    EXPECT_EQ(rw::FormatMMDDYYYY(d), "07/04/2016");
    EXPECT_EQ(rw::FormatShortDate(d), "7/4/2016");
    EXPECT_EQ(rw::FormatMMDDYYYYDashed(Date::fromCivil(2018, 3, 31)), "03-31-2018");
    EXPECT_EQ(rw::FormatYYYYMMDD(d), "20160704");
    EXPECT_EQ(rw::FormatMMDDYYYY(rw::NoDate), "04/14/1810");
}

struct ParseCase {
    const char* text;
    int y, m, d;  // y == 0: not a date
};

class ParseUserDateTable : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ParseUserDateTable, ReadsWhatTheUserTypes)
{
    const ParseCase& c = GetParam();
    const auto got = rw::ParseUserDate(c.text);
    if (c.y == 0) {
        EXPECT_FALSE(got.has_value()) << c.text;
    } else {
        ASSERT_TRUE(got.has_value()) << c.text;
        EXPECT_EQ(*got, Date::fromCivil(c.y, c.m, c.d)) << c.text;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Dates, ParseUserDateTable,
    ::testing::Values(ParseCase{"4/15/2016", 2016, 4, 15}, ParseCase{"04/05/2016", 2016, 4, 5},
                      ParseCase{"12/31/1899", 1899, 12, 31}, ParseCase{" 1/1/2000 ", 2000, 1, 1},
                      ParseCase{"2/29/2016", 2016, 2, 29}, ParseCase{"3/31/18", 2018, 3, 31},
                      ParseCase{"1/1/29", 2029, 1, 1}, ParseCase{"1/1/30", 1930, 1, 1},
                      ParseCase{"1/1/00", 2000, 1, 1}, ParseCase{"1/1/99", 1999, 1, 1},
                      ParseCase{"13/45/2016", 0, 0, 0}, ParseCase{"2/30/2017", 0, 0, 0},
                      ParseCase{"2/29/2017", 0, 0, 0}, ParseCase{"0/1/2017", 0, 0, 0},
                      ParseCase{"", 0, 0, 0}, ParseCase{"  /  /    ", 0, 0, 0},
                      ParseCase{"4/15", 0, 0, 0}, ParseCase{"4/15/201", 0, 0, 0},
                      ParseCase{"4/15/2016/1", 0, 0, 0}, ParseCase{"a/b/cccc", 0, 0, 0},
                      ParseCase{"004/15/2016", 0, 0, 0}, ParseCase{"-4/15/2016", 0, 0, 0}));

// The strict form of the rate sources and the release file.
TEST(Dates, ParseMMDDYYYYOnlyOnTheCalendar)
{
    // 1/1/1982 is 29,952 days after 30 December 1899: 2 days to 1/1/1900, then
    // 82 years of 365 days and 20 leap days (1904-1980; 1900 was not a leap year).
    ASSERT_TRUE(rw::ParseMMDDYYYY("01/01/1982"));
    EXPECT_EQ(rw::ParseMMDDYYYY("01/01/1982")->dayNumber(), 29952.0);
    EXPECT_EQ(rw::ParseMMDDYYYY("02/29/2024"), Date::fromCivil(2024, 2, 29));
    EXPECT_FALSE(rw::ParseMMDDYYYY("02/29/2023"));
    EXPECT_FALSE(rw::ParseMMDDYYYY("1/1/1982"));
    EXPECT_FALSE(rw::ParseMMDDYYYY("01/01/82"));
    EXPECT_FALSE(rw::ParseMMDDYYYY("13/01/1982"));
    EXPECT_FALSE(rw::ParseMMDDYYYY("01-01-1982"));
    EXPECT_FALSE(rw::ParseMMDDYYYY(""));
}

}  // namespace
