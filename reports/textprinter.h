#pragma once
// A printer that records every page as lines of text: print column c is
// character index c - 1 of its line. Lines keep no trailing blanks (they are
// invisible on paper). The page and line heights are set by the owner, so a
// test chooses the capacity of a page (600 and 10 give 60 lines in every
// font); a line height that depends on the font lets it mirror a real
// printer page by page.

#include "reports/printer.h"

#include <functional>
#include <string>
#include <vector>

namespace rw {

// Page and line heights in device units. lineHeight answers for a font name
// and size; a fixed line height answers the same for every font.
struct PageMetrics {
    std::int32_t pageHeight = 600;
    std::function<std::int32_t(std::string_view font, float size)> lineHeight;

    static PageMetrics Fixed(std::int32_t pageHeight, std::int32_t lineHeight);
    // Capacity in lines of every font.
    static PageMetrics Lines(std::int32_t lines) { return Fixed(lines * 10, 10); }
};

class TextPrinter : public Printer {
public:
    // 60 lines a page in every font.
    TextPrinter();
    explicit TextPrinter(PageMetrics metrics);

    std::string fontName() const override { return fontName_; }
    float fontSize() const override { return fontSize_; }
    void setFont(std::string_view name, float size) override;

    std::int32_t pageHeight() const override { return metrics_.pageHeight; }
    std::int32_t textHeight(std::string_view sample) const override;

    void printAt(int column, std::string_view text) override;
    void endLine() override;

    int page() const override { return pageNo_; }
    void newPage() override;
    void endDoc() override;

    // The pages printed so far (the last one may still be open).
    const std::vector<std::vector<std::string>>& pages() const { return pages_; }
    // The height each page's lines take, page by page (never more than the
    // page height: a line that does not fit goes on a new sheet).
    const std::vector<std::int32_t>& usedHeights() const { return usedHeights_; }
    // How many times a line did not fit below the lines of its page and the
    // printer fed a new sheet for it, a page the page manager did not end.
    int runOffs() const { return runOffs_; }
    // True once endDoc has been called (and nothing printed since).
    bool ended() const { return ended_; }
    int documents() const { return documents_; }

    // All pages as one text: every line ends with "\n", and pages are
    // separated by a line holding a single form feed ("\f").
    std::string text() const;

private:
    std::int32_t lineHeight() const;
    void beginLineIfNeeded();

    PageMetrics metrics_;
    std::string fontName_ = "Courier New";
    float fontSize_ = 12.0f;
    std::vector<std::vector<std::string>> pages_;
    std::vector<std::int32_t> usedHeights_;
    std::string open_;  // the line being composed
    bool lineOpen_ = false;
    bool pagePending_ = true;  // the next line begins a new page
    int pageNo_ = 1;
    int runOffs_ = 0;
    bool ended_ = false;
    int documents_ = 0;
};

// The pages of a text with form-feed separators (TextPrinter::text) split
// back into pages of lines.
std::vector<std::vector<std::string>> SplitPages(std::string_view text);

}  // namespace rw
