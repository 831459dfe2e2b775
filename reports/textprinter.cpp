#include "reports/textprinter.h"

#include <algorithm>

namespace rw {

PageMetrics PageMetrics::Fixed(std::int32_t pageHeight, std::int32_t lineHeight)
{
    PageMetrics m;
    m.pageHeight = pageHeight;
    m.lineHeight = [lineHeight](std::string_view, float) { return lineHeight; };
    return m;
}

TextPrinter::TextPrinter()
    : TextPrinter(PageMetrics::Lines(60))
{
}

TextPrinter::TextPrinter(PageMetrics metrics)
    : metrics_(std::move(metrics))
{
    if (!metrics_.lineHeight)
        metrics_.lineHeight = [](std::string_view, float) { return 10; };
}

void TextPrinter::setFont(std::string_view name, float size)
{
    fontName_ = std::string(name);
    fontSize_ = size;
}

std::int32_t TextPrinter::lineHeight() const
{
    return metrics_.lineHeight(fontName_, fontSize_);
}

std::int32_t TextPrinter::textHeight(std::string_view sample) const
{
    const auto lines = 1 + std::count(sample.begin(), sample.end(), '\n');
    return static_cast<std::int32_t>(lines) * lineHeight();
}

void TextPrinter::beginLineIfNeeded()
{
    if (lineOpen_)
        return;
    ended_ = false;
    const std::int32_t h = lineHeight();
    if (!pagePending_ && usedHeights_.back() + h > metrics_.pageHeight) {
        // Off the bottom of the sheet: the printer feeds a new one.
        ++pageNo_;
        ++runOffs_;
        pagePending_ = true;
    }
    if (pagePending_) {
        pages_.emplace_back();
        usedHeights_.push_back(0);
        pagePending_ = false;
    }
    lineOpen_ = true;
    open_.clear();
}

void TextPrinter::printAt(int column, std::string_view text)
{
    beginLineIfNeeded();
    const std::size_t at = column > 1 ? static_cast<std::size_t>(column - 1) : 0;
    if (open_.size() < at + text.size())
        open_.resize(at + text.size(), ' ');
    for (std::size_t i = 0; i < text.size(); ++i)
        open_[at + i] = text[i] == '\0' ? ' ' : text[i];
}

void TextPrinter::endLine()
{
    beginLineIfNeeded();
    while (!open_.empty() && open_.back() == ' ')
        open_.pop_back();
    pages_.back().push_back(open_);
    usedHeights_.back() += lineHeight();
    open_.clear();
    lineOpen_ = false;
}

void TextPrinter::newPage()
{
    if (lineOpen_)
        endLine();
    if (pagePending_) {
        pages_.emplace_back();  // a page break on an empty page leaves a blank sheet
        usedHeights_.push_back(0);
    }
    ++pageNo_;
    pagePending_ = true;
}

void TextPrinter::endDoc()
{
    if (lineOpen_)
        endLine();
    pagePending_ = true;
    pageNo_ = 1;
    ended_ = true;
    ++documents_;
}

std::string TextPrinter::text() const
{
    std::string out;
    for (std::size_t p = 0; p < pages_.size(); ++p) {
        if (p != 0)
            out += "\f\n";
        for (const std::string& line : pages_[p]) {
            out += line;
            out += '\n';
        }
    }
    return out;
}

std::vector<std::vector<std::string>> SplitPages(std::string_view text)
{
    std::vector<std::vector<std::string>> pages(1);
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t nl = text.find('\n', pos);
        if (nl == std::string_view::npos)
            nl = text.size();
        std::string_view line = text.substr(pos, nl - pos);
        if (line == "\f")
            pages.emplace_back();
        else
            pages.back().emplace_back(line);
        pos = nl + 1;
    }
    if (text.empty())
        pages.clear();
    return pages;
}

}  // namespace rw
