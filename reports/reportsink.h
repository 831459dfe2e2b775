#pragma once
// Where a report that is both a window text and a printed report sends its
// lines: to the window's text (each ended by CR LF) or, when printing, to the
// page manager, which reserves and keeps lines under the case's page headings
// and the report's title. Reserving and keeping do nothing for the window.
#include "casedata/caserecord.h"
#include "reports/printmanager.h"
#include "reports/reporttext.h"

#include <string>
#include <string_view>

namespace rw {

struct ReportSink {
    std::string& text;
    PrintManager* pm;  // null: the window's text
    const InitInputs& init;
    std::string_view title;

    // One line, printed from the left margin (the lines carry their own).
    void put(std::string_view line) const
    {
        if (pm)
            pm->printer().printLine(1, line);
        else
            AppendLine(text, line);
    }
    void reserve(int lines) const
    {
        if (pm)
            pm->PrnManager2(static_cast<std::int16_t>(lines), init.sName.shown(),
                            init.s2ndLine.shown(), title);
    }
    void keep(int lines) const
    {
        if (pm)
            pm->KeepTogether(static_cast<std::int16_t>(lines), init.sName.shown(),
                             init.s2ndLine.shown(), title);
    }
};

}  // namespace rw
