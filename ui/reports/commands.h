#pragma once
// The report commands of the main window: View - Reports and File - Print.
//
// View - Reports asks for the reports in "Report Choices" and opens the
// window of each chosen report, parented to ctx.parent and deleted when
// closed. None is modal: they stay open beside the main window and one
// another, laid in a cascade within the screen, the summary in front. Their
// "Print" buttons run the print command for the case as it then stands, so
// the objects ctx refers to (the case, the rate table, the report choice,
// the print state, the messages) must outlive them: the main window's own.
//
// File - Print asks for the reports in "Report Choices" with "Setup" (the
// printer set-up dialog "Print Reports") and "PDF File..." (where no printer
// is installed, printing to a PDF file is how reports reach paper; without a
// printer, OK asks for the file), then prints the chosen reports as one job,
// with the progress in the note line (ctx.setNote) and "Printing Done" at the
// end. The printer and its set-up are kept for the run as a child of
// ctx.parent. Reports printed to a PDF file are followed by a question that
// names the file and offers to open it.
//
// File - Export... asks for a folder and writes there a CSV file of every
// report the case has (reports/csvexport.h), each named after the case and
// the report ("DEMO_INC - Summary.csv"), through the safe writer; it asks
// before replacing files of the same names, tells a file it cannot write
// (and writes no more), and says which files it wrote.
//
// A fault of a computation is thrown from these functions as rw::Fault, for
// the main window's error reporter. A fault of a report window's own "Print"
// button, which runs outside any command, goes to hooks.reportFault.

#include "base/fault.h"
#include "ui/common/commandcontext.h"

#include <QString>
#include <QUrl>

#include <functional>
#include <string>

class QPrinter;
class QWidget;

namespace rw::ui {

// Seams of the report commands; every one has the desktop default.
struct ReportHooks {
    // The PDF file the reports go to; an empty name: none. Default: a
    // save-file dialog.
    std::function<QString(QWidget* parent)> choosePdfFile = {};
    // "Setup": the printer set-up; true when confirmed. Default: the system's
    // print dialog titled "Print Reports", print to file hidden, selection and
    // page ranges disabled.
    std::function<bool(QPrinter& printer, QWidget* parent)> printerSetup = {};
    // A fault of a report window's "Print" button. Default: a "Error!" box
    // naming the procedure and the error, through ctx.msgs.
    std::function<void(const rw::Fault&)> reportFault = {};
    // The folder File - Export writes to; an empty name: none. Default: a
    // folder dialog.
    std::function<QString(QWidget* parent)> chooseExportFolder = {};
    // Opens a file the reports were written to with the desktop's viewer;
    // false when it could not. Default: QDesktopServices::openUrl.
    std::function<bool(const QUrl& file)> openFile = {};
};

void RunReportDisplayCommand(CommandContext& ctx);
void RunReportDisplayCommand(CommandContext& ctx, const ReportHooks& hooks);

void RunPrintCommand(CommandContext& ctx);
void RunPrintCommand(CommandContext& ctx, const ReportHooks& hooks);

// caseFile: the case's file ("" for a new case), which names the files.
void RunExportCommand(CommandContext& ctx, const std::string& caseFile, const ReportHooks& hooks);

}  // namespace rw::ui
