#pragma once
// Small text helpers shared by the reports.

#include "casedata/fixedtext.h"

#include <string>
#include <string_view>

namespace rw {

// Line end of every report text shown in a window.
inline constexpr std::string_view kCrLf = "\r\n";

// A fixed text as stored, all N characters; a field never assigned (NUL
// characters) shows as blanks.
template <std::size_t N>
std::string StoredText(const FixedText<N>& t)
{
    std::string s = t.str();
    for (char& ch : s)
        if (ch == '\0')
            ch = ' ';
    return s;
}

inline std::string YesNo(Flag f)
{
    return IsYes(f) ? "Yes" : "No";
}

// Appends one line and its CR LF.
inline void AppendLine(std::string& text, std::string_view line)
{
    text += line;
    text += kCrLf;
}

}  // namespace rw
