#pragma once
// Small text helpers shared by the reports.

#include "base/fixedtext.h"

#include <string>
#include <string_view>

namespace rw {

// Line end of every report text shown in a window.
inline constexpr std::string_view kCrLf = "\r\n";

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
