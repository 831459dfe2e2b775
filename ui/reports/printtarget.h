#pragma once
// Where the print command sends the reports: the system printer, with the
// set-up the user gave it during the run, or a PDF file.

#include "reports/printer.h"
#include "ui/reports/commands.h"

#include <QString>

#include <memory>

class QPrinter;
class QWidget;

namespace rw::ui {

// The system printer of the run: made once, kept as a child of the main
// window so that its set-up lasts from one print command to the next (a
// fresh one when there is no main window).
QPrinter& RunPrinter(QWidget* mainWindow, std::unique_ptr<QPrinter>& fallback);

class PrintTarget {
public:
    PrintTarget(QPrinter& printer, const ReportHooks& hooks, QWidget* parent);

    // "Printer: <name>", "PDF file: <name>", or the note that a PDF file will
    // be asked for when no printer is installed.
    QString describe() const;
    // "Setup": the printer set-up; once confirmed, the reports go to that
    // printer.
    bool setup();
    // "PDF File...": asks for the file; once given, the reports go there.
    bool choosePdfFile();
    // Before printing: true when there is somewhere to print. Without a
    // printer and a PDF file, asks for the file.
    bool resolve();
    // The printer back end of the job (after resolve()).
    std::unique_ptr<rw::Printer> makePrinter();
    // The PDF file the job goes to (the one chosen, or the printer's own
    // output file); empty for a printer.
    QString pdfFile() const;

private:
    bool printerAvailable() const;

    QPrinter& printer_;
    ReportHooks hooks_;
    QWidget* parent_;
    QString pdfFile_;
};

}  // namespace rw::ui
