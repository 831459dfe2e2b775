#pragma once
// Who makes the program and how users reach the maker: the About box shows
// these lines, the Home Page button opens the web page.

namespace rw::ui {

inline constexpr const char* kMakerName = "Brindlecote Software";
inline constexpr const char* kMakerAddress1 = "41 Tanner's Row, Suite 200";
inline constexpr const char* kMakerAddress2 = "Ashby Falls, OR 97299";
inline constexpr const char* kMakerPhone = "Telephone (555) 014-2260";
inline constexpr const char* kMakerEmail = "support@brindlecote.example";
inline constexpr const char* kHomePage = "https://www.brindlecote.example/ratewright";

}  // namespace rw::ui
