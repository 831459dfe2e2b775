#include "reports/printmanager.h"

#include "base/fault.h"

#include <limits>
#include <utility>

namespace rw {

namespace {

std::int16_t toCount(std::int32_t v, std::string_view procedure)
{
    if (v > std::numeric_limits<std::int16_t>::max()
        || v < std::numeric_limits<std::int16_t>::min())
        ThrowFault(kErrOverflow, procedure, "line count out of range");
    return static_cast<std::int16_t>(v);
}

std::int32_t addHeight(std::int32_t used, std::int64_t more, std::string_view procedure)
{
    const std::int64_t sum = static_cast<std::int64_t>(used) + more;
    if (sum > std::numeric_limits<std::int32_t>::max())
        ThrowFault(kErrOverflow, procedure, "page height out of range");
    return static_cast<std::int32_t>(sum);
}

}  // namespace

PrintManager::PrintManager(Printer& printer, PrintState& state, Messages& msgs)
    : printer_(printer)
    , state_(state)
    , msgs_(msgs)
{
}

std::int32_t PrintManager::lineHeight()
{
    const std::int32_t h = printer_.textHeight("Sample");
    if (h <= 0)
        ThrowFault(kErrDivisionByZero, "nLinesPerPage", "the font has no height");
    return h;
}

std::int16_t PrintManager::nLinesPerPage()
{
    return WithFaultName("nLinesPerPage", [&] {
        return toCount(printer_.pageHeight() / lineHeight(), "nLinesPerPage");
    });
}

std::int32_t PrintManager::bodyLimit()
{
    return (static_cast<std::int32_t>(nLinesPerPage()) - kFooterLines - 1) * lineHeight();
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

void PrintManager::PrnPgNo()
{
    WithFaultName("PrnPgNo()", [&] {
        const std::int32_t h = lineHeight();
        const std::int32_t foot = (static_cast<std::int32_t>(nLinesPerPage()) - kFooterLines) * h;
        std::int32_t& used = state_.usedHeight;
        while (used + h <= foot) {
            printer_.emptyLine();
            used += h;
        }
        printer_.printLine(kTextColumn, "Page " + std::to_string(printer_.page()));
        printer_.newPage();
        used = 0;
        state_.bodyTop = 0;
    });
}

void PrintManager::beginPage(std::string_view heading1, std::string_view heading2,
                             std::string_view title)
{
    if (state_.usedHeight != 0)
        PrnPgNo();
    PrintHeadings(heading1, heading2, title);
    state_.usedHeight = kHeadingLines * lineHeight();
    state_.bodyTop = state_.usedHeight;
    if (listHeadings_ && !repeating_) {
        repeating_ = true;
        try {
            listHeadings_();
        } catch (...) {
            repeating_ = false;
            throw;
        }
        repeating_ = false;
    }
}

std::int16_t PrintManager::PrnManager2(std::int16_t lines, std::string_view heading1,
                                       std::string_view heading2, std::string_view title)
{
    return WithFaultName("PrnManager2()", [&]() -> std::int16_t {
        if (lines == kEndReportPage) {
            if (state_.usedHeight != 0)
                PrnPgNo();
            return 0;
        }
        if (lines < 1 || lines > kMaxReserve) {
            msgs_.show("Error!",
                       std::to_string(lines) + " lines passed to PrnManager2()."
                           + " Please use between 1 and " + std::to_string(kMaxReserve),
                       MsgIcon::Critical);
            return 0;
        }
        const std::int64_t height = static_cast<std::int64_t>(lines) * lineHeight();
        std::int16_t result = 0;
        if (state_.usedHeight == 0
            || (state_.usedHeight > state_.bodyTop && state_.usedHeight + height > bodyLimit())) {
            beginPage(heading1, heading2, title);
            result = 1;
        }
        state_.usedHeight = addHeight(state_.usedHeight, height, "PrnManager2()");
        return result;
    });
}

std::int16_t PrintManager::KeepTogether(std::int16_t lines, std::string_view heading1,
                                        std::string_view heading2, std::string_view title)
{
    return WithFaultName("KeepTogether", [&]() -> std::int16_t {
        if (lines < 1)
            return 0;
        const std::int64_t height = static_cast<std::int64_t>(lines) * lineHeight();
        if (state_.usedHeight == 0
            || (state_.usedHeight > state_.bodyTop && state_.usedHeight + height > bodyLimit())) {
            beginPage(heading1, heading2, title);
            return 1;
        }
        return 0;
    });
}

void PrintManager::PrnAmtAt(Money amount, int column)
{
    printer_.printAt(column, RtJustAmt(amount));
}

RepeatedHeadings::RepeatedHeadings(PrintManager& pm, std::function<void()> printHeadings)
    : pm_(pm)
    , previous_(std::exchange(pm.listHeadings_, std::move(printHeadings)))
{
}

RepeatedHeadings::~RepeatedHeadings()
{
    pm_.listHeadings_ = std::move(previous_);
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
