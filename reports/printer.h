#pragma once
// The printer as the reports see it: plain text printed line by line in one
// font at a time, placed at print columns. Page breaking belongs to the page
// manager (printmanager.h); a back end only measures and paints.
//
// Print columns count character cells of the current font from the left
// margin, the margin itself being column 1 (as on a line printer): a text at
// column 3 has two empty cells before it. Items of one line may be placed in
// any order; a later item overwrites the cells it covers.
//
// Texts are Latin-1 bytes; a NUL byte prints as a blank.
//
// Physical pages: every line takes the height of one line of the font in use
// when it is printed. A line that would reach below the printable area starts
// a new page first, as a printer does when it runs off the sheet; the page
// manager, which counts every line at its height in its font, never lets that
// happen.
//
// New pages are started lazily: after newPage() the next page begins with its
// first line, so ending the document right after newPage() adds no blank
// sheet. page() counts the page that newPage() opened all the same.

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace rw {

// One item of a printed line: a text placed at a print column.
struct PrintItem {
    int column = 1;
    std::string text;
};

class Printer {
public:
    virtual ~Printer() = default;

    virtual std::string fontName() const = 0;
    virtual float fontSize() const = 0;
    virtual void setFont(std::string_view name, float size) = 0;

    // Height of the printable area of a page, in the back end's device units.
    virtual std::int32_t pageHeight() const = 0;
    // Height of the sample text in the current font, in the same units (one
    // line of text per line of the sample).
    virtual std::int32_t textHeight(std::string_view sample) const = 0;

    // Places text on the open line at a print column and leaves the line open.
    virtual void printAt(int column, std::string_view text) = 0;
    // Ends the open line (an empty line when nothing was placed on it).
    virtual void endLine() = 0;

    // The number of the current page of the document, from 1.
    virtual int page() const = 0;
    // Ends the current page; the next line goes on a new one.
    virtual void newPage() = 0;
    // Ends the document: the job goes to the printer (or the file is closed).
    virtual void endDoc() = 0;

    // The printer set-up dialog; true when the user confirmed it. Back ends
    // without a dialog confirm at once.
    virtual bool setup() { return true; }

    // One whole line made of items.
    void printLine(std::initializer_list<PrintItem> items)
    {
        for (const PrintItem& it : items)
            printAt(it.column, it.text);
        endLine();
    }
    void printLine(int column, std::string_view text)
    {
        printAt(column, text);
        endLine();
    }
    void emptyLine() { endLine(); }
};

}  // namespace rw
