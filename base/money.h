#pragma once
// Money: a signed 64-bit count of ten-thousandths of a dollar.
//
// Policy
// - Unit: 0.0001. Every amount the program stores, reads or writes carries
//   four decimals; displays and reports show two.
// - Addition, subtraction and negation are exact. A result outside the
//   64-bit range is an overflow fault (error 6), never a wrap.
// - double enters money only through Money::fromDouble, which rounds the exact
//   binary value of the double to the nearest ten-thousandth, halves to even.
//   A product "money x rate" is formed as fromDouble(m.toDouble() * rate):
//   the amount becomes c / 10000.0 (correctly rounded), is multiplied in
//   double and comes back through the one rounding conversion. The scaled
//   integer is never multiplied by a rate directly.
// - RoundCurrency(amount, digits) rounds to fewer decimals in exact decimal
//   arithmetic, halves to even on both signs:
//
//        amount     digits=2     amount     digits=2
//        0.1250  ->  0.12        -0.1250 -> -0.12
//        0.1350  ->  0.14        -0.1350 -> -0.14
//        0.1251  ->  0.13        -0.1249 -> -0.12
//
// - Showing an amount with two decimals rounds half away from zero, as desktop
//   number formatting does (0.6250 shows as 0.63, -0.6250 as -0.63); the stored
//   amount keeps its four decimals.
// - There is no implicit conversion out of money.

#include <compare>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace rw {

class Money {
public:
    static constexpr std::int64_t kScale = 10000;

    constexpr Money() = default;
    static constexpr Money fromRaw(std::int64_t tenThousandths) { return Money(tenThousandths); }
    // Whole cents; convenient for literals in tests and tables.
    static Money fromCents(std::int64_t cents);
    // The nearest ten-thousandth to the exact binary value of d, halves to even.
    // NaN, infinity or a value beyond the range is an overflow fault.
    static Money fromDouble(double d);
    // Parses a decimal text: optional sign, digits with optional thousands
    // separators, optional '.' and at most four decimals. Nothing else.
    static std::optional<Money> parse(std::string_view text);

    constexpr std::int64_t raw() const { return v_; }
    // c / 10000.0, correctly rounded.
    double toDouble() const { return static_cast<double>(v_) / 10000.0; }

    constexpr bool isZero() const { return v_ == 0; }

    Money operator-() const;
    Money& operator+=(Money o);
    Money& operator-=(Money o);
    friend Money operator+(Money a, Money b) { return a += b; }
    friend Money operator-(Money a, Money b) { return a -= b; }
    friend constexpr bool operator==(Money a, Money b) = default;
    friend constexpr auto operator<=>(Money a, Money b) = default;

private:
    constexpr explicit Money(std::int64_t v)
        : v_(v)
    {
    }
    std::int64_t v_ = 0;
};

// amount x factor formed in double and rounded back to money (halves to even).
Money MulDouble(Money amount, double factor);

// Rounds to `digits` decimals (0 to 4), halves to the even neighbour.
Money RoundCurrency(Money amount, int digits);

// ---- Text forms --------------------------------------------------------------

// "###,###,##0.00": thousands separators, two decimals rounded half away from
// zero, a leading minus for negative amounts. "##,###,##0.00" gives the same text.
std::string FormatMoney(Money amount);

// The money value as plain text: no thousands separators, no trailing zeros,
// at most four decimals ("1000", "1234.5", "0.25", "-12.0001").
std::string PlainMoney(Money amount);

// Money to exactly four decimals, no separators ("1234.5600", "-50.0000").
std::string ExactMoney(Money amount);

// The amount as whole dollars: "#,##0" and "$#,##0" (half away from zero).
std::string FormatWholeDollars(Money amount, bool withDollarSign);

// What a money entry field shows for a stored amount: "##,###,##0.00", with
// the third and fourth decimals kept when the amount has them, so that
// reading the field back never changes the stored amount.
std::string FormatMoneyField(Money amount);

// Reads a money entry field: an empty field is zero; otherwise Money::parse
// (a leading "$" is allowed). nullopt when the text is not an amount.
std::optional<Money> ParseMoneyField(std::string_view text);

// Exact four-decimal text, for diagnostics and test output.
std::ostream& operator<<(std::ostream& os, Money m);

// FormatMoney right-aligned in 14 characters; a longer text keeps its first 14.
std::string RtJustAmt(Money amount);

}  // namespace rw
