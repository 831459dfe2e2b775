#pragma once
// Text forms of plain numbers (rates, factors, day counts) as the reports show
// them. A double is first taken to 15 significant digits, as desktop number
// formatting does, and then rounded half away from zero to the decimals shown.

#include <cstdint>
#include <string>
#include <string_view>

namespace rw {

// 1234567 -> "1,234,567".
std::string GroupThousands(std::uint64_t n);

// Pads on the left to `width`; a longer text keeps its first `width` characters.
std::string RightAlign(std::string_view text, std::size_t width);
// Pads on the right to `width`; a longer text keeps its first `width` characters.
std::string LeftAlign(std::string_view text, std::size_t width);

// Fixed decimals. minIntDigits is the number of '0' placeholders before the
// point: 1 for "0.00" / "#0.0000", 0 for ".000000000" (no leading zero).
// thousands adds separators ("#,##0").
std::string FormatFixed(double x, int decimals, int minIntDigits = 1, bool thousands = false);

// ".#0": two decimals, no leading zero (0.2 -> ".20", 1.5 -> "1.50").
std::string FormatRateDotHash0(double x);

// A rate as the user gave it, in the ".#0" form but with every decimal the
// single holds (its shortest text that reads back the same): 0.2f -> ".20",
// 0.125f -> ".125", 1.5f -> "1.50". Showing it again and reading it back
// never changes the rate. With leadingZero: "0.20", "0.125".
std::string FormatRateAsHeld(float rate, bool leadingZero = false);

// A float as plain text with the fewest digits that read back as the same
// single (0.2f -> "0.2", 0.25f -> "0.25").
std::string PlainFloat(float f);

// An integer with thousands separators ("#,##0"); "#,###" differs only for 0,
// which it shows as an empty text.
std::string FormatCount(std::int64_t n, bool emptyForZero = false);

// Texts inside the program are Latin-1, one byte per character, as the case
// file stores them, so that fixed widths and report columns count bytes.
// These convert at the edges: the windows, the terminal, JSON, file names.
std::string Latin1ToUtf8(std::string_view latin1);
// Characters beyond Latin-1 (and malformed sequences) become '?'.
std::string Utf8ToLatin1(std::string_view utf8);

// The text without the blanks and tabs around it.
std::string_view TrimBlanks(std::string_view text);

// Removes trailing blanks (and NULs) from a fixed-width text.
std::string TrimRight(std::string_view text);

}  // namespace rw
