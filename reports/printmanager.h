#pragma once
// The page manager: counts the lines used on the current page, starts every
// page with the heading block (two empty lines, heading 1, heading 2, the
// title, an empty line) and ends it with its page number. A report reserves
// the lines it is about to print with PrnManager2 and then prints them; the
// reservation -200 ends the report's page.
//
// The heading block prints six lines and counts seven, and the last six lines
// of a page are kept free for the page number: with a capacity of 60 lines a
// page holds the heading block and at most 46 reserved lines.

#include "base/messages.h"
#include "base/money.h"
#include "reports/printer.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace rw {

// Lines used on the current page; 0 when no page has been started. One
// state serves every report and every print job of the run.
struct PrintState {
    std::int16_t nLineCount = 0;
};

// The font a report found before it switched to its own.
struct SavedFont {
    std::string name;
    float size = 0.0f;
};

inline constexpr std::int16_t kEndReportPage = -200;
inline constexpr std::int16_t kMaxReserve = 40;
inline constexpr std::int16_t kHeadingLines = 7;
inline constexpr std::int16_t kFooterLines = 6;
// Print column of the heading texts, the page number and most report lines.
inline constexpr int kTextColumn = 3;
inline constexpr std::string_view kReportFont = "Courier New";

class PrintManager {
public:
    PrintManager(Printer& printer, PrintState& state, Messages& msgs);

    // Reserves n lines (1 to 40) on the current page; 1 when a new page was
    // just begun (so that the caller repeats its column headings), else 0.
    // -200 ends the page of the report. Any other n is refused with the
    // "Error!" message and nothing is printed.
    std::int16_t PrnManager2(std::int16_t lines, std::string_view heading1,
                             std::string_view heading2, std::string_view title);
    void PrintHeadings(std::string_view heading1, std::string_view heading2,
                       std::string_view title);
    // Pads the page with empty lines to its foot, prints "Page n" and starts a
    // new page.
    void PrnPgNo(std::int16_t& lineCount);
    // Page height divided by the height of one line of the current font,
    // whole lines.
    std::int16_t nLinesPerPage();

    // The 14-character amount at a print column; the line stays open.
    void PrnAmtAt(Money amount, int column);

    Printer& printer() { return printer_; }
    PrintState& state() { return state_; }
    Messages& messages() { return msgs_; }

private:
    Printer& printer_;
    PrintState& state_;
    Messages& msgs_;
};

// Remembers the printer's font in saved and switches to name / size.
void SetNewFont(Printer& printer, std::string_view name, float size, SavedFont& saved);
// Restores the font remembered by SetNewFont.
void SetOldFont(Printer& printer, const SavedFont& saved);

}  // namespace rw
