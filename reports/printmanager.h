#pragma once
// The page manager: keeps account of the height used on the current page,
// starts every page with the heading block (two empty lines, heading 1,
// heading 2, the title, an empty line) and ends it with its page number. A
// report reserves the lines it is about to print with PrnManager2 and then
// prints them; the reservation -200 ends the report's page.
//
// Heights, not line counts: every reservation is worth its lines' real height
// in the font in use when it is made (Printer::textHeight), so 12-point and
// 8-point lines share a page without overflowing it or ending it early. The
// limits are those of the current font, in its whole lines: the heading block
// prints six lines and counts seven, the reserved lines must end seven lines
// above the end of the page's last whole line, and "Page n" is printed with
// six lines free below it (or under the last line printed, when a smaller
// font filled the page further down). With one font of 60 lines a page a page holds
// the heading block and at most 46 reserved lines.
//
// Blocks and lists: KeepTogether starts a new page unless a whole block (a
// list's title, its column headings and its first row; a section heading with
// its first lines) fits on this one, so that no heading is left at the foot of
// a page. While a RepeatedHeadings lives, every page the manager begins
// repeats the list's column headings under the heading block.

#include "base/messages.h"
#include "base/money.h"
#include "reports/printer.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace rw {

// The height used on the current page, in the printer's device units, the
// heading block included; 0 when no page has been started. One state serves
// every report and every print job of the run.
struct PrintState {
    std::int32_t usedHeight = 0;
    // The height used once the heading block was printed: a page holding no
    // more than that is never ended to make room.
    std::int32_t bodyTop = 0;
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

    // Reserves n lines (1 to 40) of the current font on the current page; 1
    // when a new page was just begun, else 0. -200 ends the page of the
    // report. Any other n is refused with the "Error!" message and nothing is
    // printed.
    std::int16_t PrnManager2(std::int16_t lines, std::string_view heading1,
                             std::string_view heading2, std::string_view title);
    // Keeps a block of n lines of the current font together: begins a new
    // page (the first page of a report too) unless the block fits below what
    // this page holds. Reserves nothing; the block's lines are reserved as
    // they are printed. A block taller than a page only begins a page. 1 when
    // a new page was begun, else 0.
    std::int16_t KeepTogether(std::int16_t lines, std::string_view heading1,
                              std::string_view heading2, std::string_view title);
    void PrintHeadings(std::string_view heading1, std::string_view heading2,
                       std::string_view title);
    // Pads the page with empty lines down to the foot, prints "Page n" and
    // starts a new page.
    void PrnPgNo();
    // Page height divided by the height of one line of the current font,
    // whole lines.
    std::int16_t nLinesPerPage();

    // The 14-character amount at a print column; the line stays open.
    void PrnAmtAt(Money amount, int column);

    Printer& printer() { return printer_; }
    PrintState& state() { return state_; }
    Messages& messages() { return msgs_; }

private:
    friend class RepeatedHeadings;

    std::int32_t lineHeight();
    // How far down the page the reserved lines of the current font may reach.
    std::int32_t bodyLimit();
    // Ends the page in use, if any, and begins the next with its headings.
    void beginPage(std::string_view heading1, std::string_view heading2, std::string_view title);

    Printer& printer_;
    PrintState& state_;
    Messages& msgs_;
    std::function<void()> listHeadings_;
    bool repeating_ = false;
};

// The column headings of a list, printed (with their own reservation) under
// the heading block of every page the page manager begins while this lives.
// The list prints them itself on its first page.
class RepeatedHeadings {
public:
    RepeatedHeadings(PrintManager& pm, std::function<void()> printHeadings);
    ~RepeatedHeadings();
    RepeatedHeadings(const RepeatedHeadings&) = delete;
    RepeatedHeadings& operator=(const RepeatedHeadings&) = delete;

private:
    PrintManager& pm_;
    std::function<void()> previous_;
};

// Remembers the printer's font in saved and switches to name / size.
void SetNewFont(Printer& printer, std::string_view name, float size, SavedFont& saved);
// Restores the font remembered by SetNewFont.
void SetOldFont(Printer& printer, const SavedFont& saved);

}  // namespace rw
