#include "base/fault.h"
#include "base/money.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using rw::Money;

namespace {

Money M(const char* text)
{
    auto m = Money::parse(text);
    EXPECT_TRUE(m.has_value()) << text;
    return m.value_or(Money());
}

struct RoundCase {
    const char* in;
    int digits;
    const char* out;
};

class RoundCurrencyTable : public ::testing::TestWithParam<RoundCase> {};

TEST_P(RoundCurrencyTable, HalvesGoToTheEvenNeighbour)
{
    const RoundCase& c = GetParam();
    EXPECT_EQ(rw::RoundCurrency(M(c.in), c.digits), M(c.out)) << c.in << " to " << c.digits;
}

INSTANTIATE_TEST_SUITE_P(Money, RoundCurrencyTable,
                         ::testing::Values(RoundCase{"0.125", 2, "0.12"}, RoundCase{"0.135", 2, "0.14"},
                                           RoundCase{"-0.125", 2, "-0.12"}, RoundCase{"-0.135", 2, "-0.14"},
                                           RoundCase{"0.1251", 2, "0.13"}, RoundCase{"-0.1249", 2, "-0.12"},
                                           RoundCase{"12.345", 2, "12.34"}, RoundCase{"12.355", 2, "12.36"},
                                           RoundCase{"0.025", 2, "0.02"}, RoundCase{"0.035", 2, "0.04"},
                                           RoundCase{"2.5", 0, "2"}, RoundCase{"3.5", 0, "4"},
                                           RoundCase{"-2.5", 0, "-2"}, RoundCase{"0.0050", 2, "0.00"}));

TEST(Money, ParseAcceptsUpToFourDecimalsAndSeparators)
{
    EXPECT_EQ(Money::parse("1,234.56")->raw(), 12345600);
    EXPECT_EQ(Money::parse("-50")->raw(), -500000);
    EXPECT_EQ(Money::parse(" 0.0001 ")->raw(), 1);
    EXPECT_EQ(Money::parse("+7.5")->raw(), 75000);
    EXPECT_FALSE(Money::parse("1.23456"));
    EXPECT_FALSE(Money::parse(""));
    EXPECT_FALSE(Money::parse("abc"));
    EXPECT_FALSE(Money::parse("1.2.3"));
    EXPECT_FALSE(Money::parse(",100"));
    EXPECT_FALSE(Money::parse("100,"));
    EXPECT_FALSE(Money::parse("1e5"));
    EXPECT_FALSE(Money::parse("99999999999999999999"));
}

TEST(Money, FromDoubleRoundsTheExactBinaryValueHalvesToEven)
{
    // 0.00005 is just above 5e-5 in binary (5.0000000000000002396e-05) -> 0.0001.
    EXPECT_EQ(Money::fromDouble(0.00005).raw(), 1);
    // 0.00015 is 1.49999999999999993e-4 in binary -> 0.0001, not 0.0002.
    EXPECT_EQ(Money::fromDouble(0.00015).raw(), 1);
    // Exact binary halves: 2^-14 * 10000 = 0.6103515625 ten-thousandths -> 1;
    // 0.5 ten-thousandths needs 1/20000, not exact; use 0.03125 = 312.5 -> 312 (even).
    EXPECT_EQ(Money::fromDouble(0.03125).raw(), 312);
    EXPECT_EQ(Money::fromDouble(0.09375).raw(), 938);   // 937.5 -> 938
    EXPECT_EQ(Money::fromDouble(-0.03125).raw(), -312);
    EXPECT_EQ(Money::fromDouble(-0.09375).raw(), -938);
    EXPECT_EQ(Money::fromDouble(1234.5678).raw(), 12345678);
    EXPECT_EQ(Money::fromDouble(0.0).raw(), 0);
    EXPECT_EQ(Money::fromDouble(1e-300).raw(), 0);
    EXPECT_THROW(Money::fromDouble(std::numeric_limits<double>::infinity()), rw::Fault);
    EXPECT_THROW(Money::fromDouble(1e18), rw::Fault);
}

TEST(Money, ProductsAreFormedInDoubleFromTheSingleRate)
{
    // 0.4f is 0.4000000059604645: 10,000.00 x 0.4f = 4000.0000596... -> 4,000.0001.
    EXPECT_EQ(rw::MulDouble(M("10000"), static_cast<double>(0.4f)), M("4000.0001"));
    // 0.2f is 0.20000000298...: 10,000.00 x 0.2f = 2000.0000298 -> 2,000.0000.
    EXPECT_EQ(rw::MulDouble(M("10000"), static_cast<double>(0.2f)), M("2000"));
    // A typed rate of 0.25 on 1,234.57: 308.6425 exactly.
    EXPECT_EQ(rw::MulDouble(M("1234.57"), static_cast<double>(0.25f)), M("308.6425"));
}

TEST(Money, ArithmeticOverflowIsAFaultNotAWrap)
{
    const Money big = Money::fromRaw(std::numeric_limits<std::int64_t>::max());
    EXPECT_THROW(big + Money::fromRaw(1), rw::Fault);
    EXPECT_THROW(-Money::fromRaw(std::numeric_limits<std::int64_t>::min()), rw::Fault);
    try {
        (void)(big + big);
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), rw::kErrOverflow);
    }
}

TEST(Money, TwoDecimalDisplayRoundsHalfAwayFromZero)
{
    EXPECT_EQ(rw::FormatMoney(M("0.625")), "0.63");
    EXPECT_EQ(rw::FormatMoney(M("-0.625")), "-0.63");
    EXPECT_EQ(rw::FormatMoney(M("0.6249")), "0.62");
    EXPECT_EQ(rw::FormatMoney(M("4000.0001")), "4,000.00");
    EXPECT_EQ(rw::FormatMoney(M("1234567.891")), "1,234,567.89");
    EXPECT_EQ(rw::FormatMoney(M("-1234.56")), "-1,234.56");
    EXPECT_EQ(rw::FormatMoney(M("0")), "0.00");
    EXPECT_EQ(rw::FormatMoney(M("-0.004")), "0.00");
    EXPECT_EQ(rw::FormatMoney(M("999.995")), "1,000.00");
}

TEST(Money, FourteenCharacterColumnIsRightAlignedAndCut)
{
    EXPECT_EQ(rw::RtJustAmt(M("2250")), "      2,250.00");
    EXPECT_EQ(rw::RtJustAmt(M("-1234.56")), "     -1,234.56");
    // 1,234,567,890.12 is 16 characters: the first 14 are kept.
    EXPECT_EQ(rw::RtJustAmt(M("1234567890.12")), "1,234,567,890.");
}

TEST(Money, PlainAndExactTexts)
{
    EXPECT_EQ(rw::PlainMoney(M("1000")), "1000");
    EXPECT_EQ(rw::PlainMoney(M("1234.5")), "1234.5");
    EXPECT_EQ(rw::PlainMoney(M("0.25")), "0.25");
    EXPECT_EQ(rw::PlainMoney(M("-12.0001")), "-12.0001");
    EXPECT_EQ(rw::PlainMoney(M("0")), "0");
    EXPECT_EQ(rw::ExactMoney(M("1234.56")), "1234.5600");
    EXPECT_EQ(rw::ExactMoney(M("-50")), "-50.0000");
    EXPECT_EQ(rw::ExactMoney(M("-0.0001")), "-0.0001");
}

TEST(Money, WholeDollars)
{
    EXPECT_EQ(rw::FormatWholeDollars(M("10.01"), true), "$10");
    EXPECT_EQ(rw::FormatWholeDollars(M("10.50"), true), "$11");
    EXPECT_EQ(rw::FormatWholeDollars(M("1234567.49"), false), "1,234,567");
}

}  // namespace

namespace {

TEST(Faults, AProcedureNamesTheFaultsOfTheValuesItComputesWith)
{
    const auto numberAndName = [](auto body) {
        try {
            rw::WithFaultName("GetInterest", body);
        } catch (const rw::Fault& f) {
            return std::to_string(f.number()) + " " + f.procedure();
        }
        return std::string("no fault");
    };
    // Money arithmetic out of range is the computing procedure's overflow.
    EXPECT_EQ(numberAndName([] { (void)(Money::fromRaw(std::numeric_limits<std::int64_t>::max()) + Money::fromRaw(1)); }),
              "6 GetInterest");
    // A fault named by an inner procedure keeps its name.
    EXPECT_EQ(numberAndName([] { rw::ThrowFault(rw::kErrSubscript, "GetStdPeriodRate"); }), "9 GetStdPeriodRate");
    // Any other exception becomes a fault of the procedure.
    EXPECT_EQ(numberAndName([] { throw std::bad_alloc(); }), "7 GetInterest");
    EXPECT_EQ(numberAndName([] { throw std::runtime_error("x"); }), "5 GetInterest");
    EXPECT_EQ(numberAndName([] {}), "no fault");
}

}  // namespace
