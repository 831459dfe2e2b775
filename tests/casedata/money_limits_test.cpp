#include "base/money.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

// Regression: the most negative amount a case file can hold could be written
// as text but not read back from it.
TEST(MoneyLimits, TheWholeRangeReadsBackFromItsText)
{
    struct Row {
        const char* text;
        std::int64_t raw;
    };
    for (const Row& row : {Row{"-922337203685477.5808", std::numeric_limits<std::int64_t>::min()},
                           Row{"922337203685477.5807", std::numeric_limits<std::int64_t>::max()},
                           Row{"-922337203685477.5807", -std::numeric_limits<std::int64_t>::max()},
                           Row{"-922,337,203,685,477.58", -9223372036854775800}}) {
        const std::optional<rw::Money> m = rw::Money::parse(row.text);
        ASSERT_TRUE(m) << row.text;
        EXPECT_EQ(m->raw(), row.raw) << row.text;
    }
    for (const char* beyond : {"922337203685477.5808", "-922337203685477.5809", "9223372036854775808"})
        EXPECT_FALSE(rw::Money::parse(beyond)) << beyond;
    EXPECT_EQ(rw::ExactMoney(rw::Money::fromRaw(std::numeric_limits<std::int64_t>::min())), "-922337203685477.5808");
}

}  // namespace
