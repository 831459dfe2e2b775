// The values every record is made of: amounts (ten-thousandths of a dollar in
// 64 bits), day numbers from 30 December 1899, and their texts.

#include "base/dates.h"
#include "base/fault.h"
#include "base/money.h"
#include "base/numtext.h"

#include "support/casebuilder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using rw::Date;
using rw::Money;
using rwtest::D;
using rwtest::M;

namespace {

constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();

TEST(Money, ParseTakesUpToFourDecimalsOverTheWholeRange)
{
    for (const auto& [text, raw] : std::vector<std::pair<const char*, std::optional<std::int64_t>>>{
             {"1,234.56", 12345600},
             {"-50", -500000},
             {" 0.0001 ", 1},
             {"+7.5", 75000},
             {"1.23456", {}},
             {"", {}},
             {"-922337203685477.5808", kMin},
             {"922337203685477.5807", kMax},
             {"922337203685477.5808", {}},
             {"-922337203685477.5809", {}},
             {"-922,337,203,685,477.58", -9223372036854775800},
             {"1.2.3", {}},
             {",100", {}},
             {"100,", {}},
             {"1e5", {}}}) {
        const std::optional<Money> m = Money::parse(text);
        EXPECT_EQ(m ? std::optional(m->raw()) : std::nullopt, raw) << text;
    }
    EXPECT_EQ(rw::ExactMoney(Money::fromRaw(kMin)), "-922337203685477.5808");
}

TEST(Money, RoundingModes)
{
    // RoundCurrency sends halves to the even neighbour.
    for (const auto& [in, digits, out] : {std::tuple{"0.125", 2, "0.12"},
                                          {"0.135", 2, "0.14"},
                                          {"-0.125", 2, "-0.12"},
                                          {"0.1251", 2, "0.13"},
                                          {"-0.1249", 2, "-0.12"},
                                          {"2.5", 0, "2"},
                                          {"3.5", 0, "4"},
                                          {"-2.5", 0, "-2"},
                                          {"0.0050", 2, "0.00"}})
        EXPECT_EQ(rw::RoundCurrency(M(in), digits), M(out)) << in << " to " << digits;
    // From a double, the exact binary value: 0.00015 is 1.49999999999999993e-4,
    // so 1 ten-thousandth; 0.03125 and 0.09375 are exact halves: 312.5 -> 312, 937.5 -> 938.
    EXPECT_EQ(Money::fromDouble(0.00015).raw(), 1);
    EXPECT_EQ(Money::fromDouble(0.03125).raw(), 312);
    EXPECT_EQ(Money::fromDouble(-0.09375).raw(), -938);
    EXPECT_THROW(Money::fromDouble(std::numeric_limits<double>::infinity()), rw::Fault);
    // Products with a single rate are formed in double: 0.4f is 0.4000000059604645,
    // so 10,000.00 x 0.4f = 4,000.0000596 -> 4,000.0001; 0.2f gives 2,000.0000298 -> 2,000.
    EXPECT_EQ(rw::MulDouble(M("10000"), static_cast<double>(0.4f)), M("4000.0001"));
    EXPECT_EQ(rw::MulDouble(M("10000"), static_cast<double>(0.2f)), M("2000"));
    // The two-decimal display rounds half away from zero.
    EXPECT_EQ(rw::FormatMoney(M("-0.625")), "-0.63");
    EXPECT_EQ(rw::FormatMoney(M("999.995")), "1,000.00");
    EXPECT_EQ(rw::FormatMoney(M("-0.004")), "0.00");
    EXPECT_EQ(rw::FormatFixed(-0.125, 2) + " " + rw::FormatWholeDollars(M("10.50"), true),
              "-0.13 $11");
}

TEST(Money, OverflowIsAFaultOfTheComputingProcedureNotAWrap)
{
    const auto fault = [](auto body) {
        try {
            rw::WithFaultName("GetInterest", body);
        } catch (const rw::Fault& f) {
            return std::to_string(f.number()) + " " + f.procedure();
        }
        return std::string("no fault");
    };
    EXPECT_EQ(fault([] { (void)(Money::fromRaw(kMax) + Money::fromRaw(1)); }), "6 GetInterest");
    EXPECT_EQ(fault([] { (void)(-Money::fromRaw(kMin)); }), "6 GetInterest");
    EXPECT_EQ(fault([] { rw::ThrowFault(rw::kErrSubscript, "GetStdPeriodRate"); }),
              "9 GetStdPeriodRate");
}

TEST(NumText, ColumnsAndLatin1)
{
    // A 14-character column; 1,234,567,890.12 (16 characters) keeps its first 14.
    EXPECT_EQ(rw::RtJustAmt(M("1234567890.12")), "1,234,567,890.");
    // 0.08f x 100 in double is 7.999999821186066: "#0.0000" in 7 characters; ".000000000" has no
    // leading zero.
    EXPECT_EQ(rw::RightAlign(rw::FormatFixed(static_cast<double>(0.08f) * 100.0, 4), 7), " 8.0000");
    EXPECT_EQ(rw::FormatFixed(0.012345678912, 9, 0), ".012345679");
    // Beyond Latin-1 (the euro sign) and broken sequences become '?'.
    EXPECT_EQ(rw::Utf8ToLatin1("\xE2\x82\xAC 5 a\xC3"), "? 5 a?");
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    EXPECT_EQ(rw::Utf8ToLatin1(rw::Latin1ToUtf8(all)), all);
}

TEST(Dates, DayNumbersOfTheDesktopCalendar)
{
    // 1/1/1982 is 29,952 days after 30 December 1899: 2 days to 1/1/1900, then
    // 82 years of 365 days and 20 leap days (1904-1980; 1900 was not a leap year).
    EXPECT_EQ(D(1982, 1, 1).dayNumber(), 29952.0);
    EXPECT_EQ(D(1900, 3, 1).dayNumber(), 61.0);
    EXPECT_EQ(rw::NoDate.civil(), (rw::CivilDate{1810, 4, 14}));
    EXPECT_TRUE(Date(0.0).isGiven() && !rw::NoDate.isGiven());
    // Every day from 1800 to 2200 is the calendar day after the one before.
    rw::CivilDate prev{1799, 12, 31};
    for (double n = D(1800, 1, 1).dayNumber(); n <= D(2200, 12, 31).dayNumber(); ++n) {
        const rw::CivilDate c = Date(n).civil();
        const bool monthEnd = prev.day == rw::DaysInMonth(prev.year, prev.month) && c.day == 1
                              && ((c.year == prev.year && c.month == prev.month + 1)
                                  || (c.year == prev.year + 1 && c.month == 1));
        ASSERT_TRUE(monthEnd
                    || (c.year == prev.year && c.month == prev.month && c.day == prev.day + 1))
            << n;
        ASSERT_EQ(D(c.year, c.month, c.day).dayNumber(), n);
        prev = c;
    }
    EXPECT_EQ(prev, (rw::CivilDate{2200, 12, 31}));
    // Adding months keeps the day, or the end of a shorter month.
    EXPECT_EQ(rw::AddMonths(D(2017, 1, 31), 1), D(2017, 2, 28));
    EXPECT_EQ(rw::AddMonths(D(2016, 3, 31), -1), D(2016, 2, 29));
    EXPECT_EQ(rw::AddMonths(D(1999, 12, 15), 1), D(2000, 1, 15));
    EXPECT_EQ(rw::FormatShortDate(D(2016, 7, 4)) + " " + rw::FormatMMDDYYYYDashed(D(2018, 3, 1)),
              "7/4/2016 03-01-2018");
}

TEST(Dates, WhatTheUserTypesAndTheStrictFormOfTheSources)
{
    struct Row {
        const char* text;
        std::optional<Date> user, strict;  // ParseUserDate, ParseMMDDYYYY
    };
    for (const Row& r :
         {Row{"04/05/2016", D(2016, 4, 5), D(2016, 4, 5)}, Row{" 4/15/2016 ", D(2016, 4, 15), {}},
          Row{"02/29/2016", D(2016, 2, 29), D(2016, 2, 29)}, Row{"3/31/18", D(2018, 3, 31), {}},
          Row{"1/1/29", D(2029, 1, 1), {}}, Row{"1/1/30", D(1930, 1, 1), {}},
          Row{"02/29/2017", {}, {}}, Row{"13/01/2016", {}, {}}, Row{"0/1/2017", {}, {}},
          Row{"", {}, {}}, Row{"4/15", {}, {}}, Row{"4/15/201", {}, {}}, Row{"004/15/2016", {}, {}},
          Row{"01-01-1982", {}, {}},
          // Files hold the years 1800 to 2199 only.
          Row{"12/31/2199", D(2199, 12, 31), D(2199, 12, 31)}, Row{"01/01/2200", D(2200, 1, 1), {}},
          Row{"12/31/1799", D(1799, 12, 31), {}}}) {
        EXPECT_EQ(rw::ParseUserDate(r.text), r.user) << r.text;
        EXPECT_EQ(rw::ParseMMDDYYYY(r.text), r.strict) << r.text;
    }
    // What a file may hold: NoDate, or a day from 1/1/1800 (day -36,522) to
    // 12/31/2199 (day 109,574), fractions of a day included.
    std::string readable;
    for (double n : {-32767.0, -36522.0, -36522.5, 109574.99, 109575.0, std::nan(""), 1e300})
        readable += rw::IsReadableDate(Date(n)) ? "y" : "n";
    EXPECT_EQ(readable, "yynynnn");
}

}  // namespace
