#pragma once
// PDF output for callers that do not include Qt themselves (the
// command-line tool): a printer that writes a PDF file, the page metrics it
// uses (so that the text back end can lay out the same pages), and the Qt
// application the painter needs.

#include "reports/printer.h"
#include "reports/textprinter.h"

#include <memory>
#include <string>

namespace rw {

// Makes sure a Qt GUI application exists: when there is none, creates one on
// the "offscreen" platform (no display needed). It lives to the end of the
// program.
void EnsureGuiApplication();

// A printer writing the PDF file at path: Letter, portrait, the report
// margins of QtPrinter::SetReportPageLayout, 1200 dots per inch. The pages
// are kept in memory; endDoc() writes the whole file through the safe writer
// (a fault 57, 70 or 75 when it cannot). A printer destroyed before endDoc(),
// a job that failed, writes nothing.
std::unique_ptr<Printer> MakePdfPrinter(const std::string& path);

// The page height and the line height of every font as the PDF printer
// measures them.
PageMetrics PdfPageMetrics();

}  // namespace rw
