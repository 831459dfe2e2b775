#include "reports/printmanager.h"

#include "base/fault.h"

#include <limits>

namespace rw {

namespace {

std::int16_t toCount(std::int32_t v, std::string_view procedure)
{
    if (v > std::numeric_limits<std::int16_t>::max()
        || v < std::numeric_limits<std::int16_t>::min())
        ThrowFault(kErrOverflow, procedure, "line count out of range");
    return static_cast<std::int16_t>(v);
}

}  // namespace

PrintManager::PrintManager(Printer& printer, PrintState& state, Messages& msgs)
    : printer_(printer)
    , state_(state)
    , msgs_(msgs)
{
}

std::int16_t PrintManager::nLinesPerPage()
{
    return WithFaultName("nLinesPerPage", [&] {
        const std::int32_t lineHeight = printer_.textHeight("Sample");
        if (lineHeight <= 0)
            ThrowFault(kErrDivisionByZero, "nLinesPerPage", "the font has no height");
        return toCount(printer_.pageHeight() / lineHeight, "nLinesPerPage");
    });
}

void PrintManager::PrintHeadings(std::string_view heading1, std::string_view heading2,
                                 std::string_view title)
{
    WithFaultName("PrintHeadings", [&] {
        printer_.emptyLine();
        printer_.emptyLine();
        printer_.printLine(kTextColumn, heading1);
        printer_.printLine(kTextColumn, heading2);
        printer_.printLine(kTextColumn, title);
        printer_.emptyLine();
    });
}

void PrintManager::PrnPgNo(std::int16_t& lineCount)
{
    WithFaultName("PrnPgNo()", [&] {
        const std::int32_t foot = nLinesPerPage() - kFooterLines;
        while (lineCount < foot) {
            printer_.emptyLine();
            lineCount = toCount(lineCount + 1, "PrnPgNo()");
        }
        printer_.printLine(kTextColumn, "Page " + std::to_string(printer_.page()));
        printer_.newPage();
    });
}

std::int16_t PrintManager::PrnManager2(std::int16_t lines, std::string_view heading1,
                                       std::string_view heading2, std::string_view title)
{
    return WithFaultName("PrnManager2()", [&]() -> std::int16_t {
        std::int16_t& count = state_.nLineCount;
        if (lines == kEndReportPage) {
            PrnPgNo(count);
            count = 0;
            return 0;
        }
        if (lines < 1 || lines > kMaxReserve) {
            msgs_.show("Error!",
                       std::to_string(lines) + " lines passed to PrnManager2()."
                           + " Please use between 1 and " + std::to_string(kMaxReserve),
                       MsgIcon::Critical);
            return 0;
        }
        std::int16_t result = 0;
        if (count == 0) {
            PrintHeadings(heading1, heading2, title);
            count = kHeadingLines;
            result = 1;
        }
        if (static_cast<std::int32_t>(count) + lines
            >= static_cast<std::int32_t>(nLinesPerPage()) - kFooterLines) {
            PrnPgNo(count);
            PrintHeadings(heading1, heading2, title);
            count = kHeadingLines;
            result = 1;
        }
        count = toCount(static_cast<std::int32_t>(count) + lines, "PrnManager2()");
        return result;
    });
}

void PrintManager::PrnAmtAt(Money amount, int column)
{
    printer_.printAt(column, RtJustAmt(amount));
}

void SetNewFont(Printer& printer, std::string_view name, float size, SavedFont& saved)
{
    WithFaultName("SetNewFont", [&] {
        saved.name = printer.fontName();
        saved.size = printer.fontSize();
        printer.setFont(name, size);
    });
}

void SetOldFont(Printer& printer, const SavedFont& saved)
{
    WithFaultName("SetOldFont", [&] { printer.setFont(saved.name, saved.size); });
}

}  // namespace rw
