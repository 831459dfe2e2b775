#include "base/numtext.h"

#include <gtest/gtest.h>

namespace {

TEST(NumText, RatesAndFactorsAsTheReportsShowThem)
{
    // 0.08f x 100 in double is 7.999999821186066: "#0.0000" in 7 characters.
    EXPECT_EQ(rw::RightAlign(rw::FormatFixed(static_cast<double>(0.08f) * 100.0, 4), 7), " 8.0000");
    EXPECT_EQ(rw::RightAlign(rw::FormatFixed(0.0, 4), 7), " 0.0000");
    // ".000000000": nine decimals, no leading zero.
    EXPECT_EQ(rw::FormatFixed(0.012345678912, 9, 0), ".012345679");
    EXPECT_EQ(rw::FormatFixed(0.0, 9, 0), ".000000000");
    EXPECT_EQ(rw::FormatFixed(1.5, 9, 0), "1.500000000");
    // "0.00" of the failure-to-pay rate x 100 in single precision.
    EXPECT_EQ(rw::FormatFixed(static_cast<double>(0.005f * 100.0f), 2), "0.50");
    EXPECT_EQ(rw::FormatFixed(static_cast<double>(0.01f * 100.0f), 2), "1.00");
    // Half away from zero on the 15-digit decimal value.
    EXPECT_EQ(rw::FormatFixed(0.125, 2), "0.13");
    EXPECT_EQ(rw::FormatFixed(-0.125, 2), "-0.13");
    EXPECT_EQ(rw::FormatFixed(99.995, 2), "100.00");
    EXPECT_EQ(rw::FormatFixed(-0.001, 2), "0.00");
}

TEST(NumText, DotHashZeroAndPlainFloat)
{
    EXPECT_EQ(rw::FormatRateDotHash0(static_cast<double>(0.2f)), ".20");
    EXPECT_EQ(rw::FormatRateDotHash0(static_cast<double>(0.4f)), ".40");
    EXPECT_EQ(rw::FormatRateDotHash0(1.5), "1.50");
    EXPECT_EQ(rw::PlainFloat(0.2f), "0.2");
    EXPECT_EQ(rw::PlainFloat(0.25f), "0.25");
    EXPECT_EQ(rw::PlainFloat(0.3f), "0.3");
}

TEST(NumText, CountsAndAlignment)
{
    EXPECT_EQ(rw::FormatCount(362880), "362,880");
    EXPECT_EQ(rw::FormatCount(1234), "1,234");
    EXPECT_EQ(rw::FormatCount(-1234), "-1,234");
    EXPECT_EQ(rw::FormatCount(0), "0");
    EXPECT_EQ(rw::FormatCount(0, true), "");
    EXPECT_EQ(rw::RightAlign("abc", 5), "  abc");
    EXPECT_EQ(rw::LeftAlign("abc", 5), "abc  ");
    EXPECT_EQ(rw::RightAlign("abcdef", 4), "abcd");
    EXPECT_EQ(rw::TrimRight(std::string_view("ab  \0\0", 6)), "ab");
    // Blanks and tabs around an entry go; blanks inside it stay.
    EXPECT_EQ(rw::TrimBlanks(" \t4/15/2016 \t"), "4/15/2016");
    EXPECT_EQ(rw::TrimBlanks("PA  "), "PA");
    EXPECT_EQ(rw::TrimBlanks("a b"), "a b");
    EXPECT_EQ(rw::TrimBlanks(" \t "), "");
}

}  // namespace

namespace {

TEST(NumText, Latin1AndUtf8ConvertAtTheEdges)
{
    const std::string latin1 = "Jos\xE9 \xA7" "6656 caf\xE9";
    const std::string utf8 = "Jos\xC3\xA9 \xC2\xA7" "6656 caf\xC3\xA9";
    EXPECT_EQ(rw::Latin1ToUtf8(latin1), utf8);
    EXPECT_EQ(rw::Utf8ToLatin1(utf8), latin1);
    // Beyond Latin-1 (the euro sign, a CJK character) and broken sequences become '?'.
    EXPECT_EQ(rw::Utf8ToLatin1("\xE2\x82\xAC 5"), "? 5");
    EXPECT_EQ(rw::Utf8ToLatin1("\xE4\xB8\xAD"), "?");
    EXPECT_EQ(rw::Utf8ToLatin1("a\xC3"), "a?");
    EXPECT_EQ(rw::Utf8ToLatin1("\xC3(x"), "?(x");
    // Every Latin-1 byte survives the round trip.
    std::string all;
    for (int c = 1; c < 256; ++c)
        all += static_cast<char>(c);
    EXPECT_EQ(rw::Utf8ToLatin1(rw::Latin1ToUtf8(all)), all);
}

}  // namespace
