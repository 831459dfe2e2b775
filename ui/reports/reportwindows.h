#pragma once
// The report windows: the text reports (summary, accuracy-related and payroll
// deposit penalties), the grids (detailed interest analysis, failure to file
// and pay analysis), the inputs window and its list grids. They show what
// rw::ReportWindows produced; their "Print" buttons run the print command.

#include "reports/grid.h"
#include "reports/printmaster.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"
#include "ui/reports/commands.h"

class QLayout;
class QPlainTextEdit;
class QPushButton;
class QTableWidget;

namespace rw::ui {

// A read-only table of a report grid: row 0 of the grid gives the column
// headings (in a header of headingLines lines, wrapped), the other rows the
// cells; columns keep their relative widths and alignment.
QTableWidget* MakeReportTable(const GridData& grid, QWidget* parent, int headingLines);

// What every report window has: the context of the command that opened it,
// the "Print" and "Close" buttons, Enter moving on.
class ReportWindowBase : public GuardedDialog {
    Q_OBJECT
public:
    ReportWindowBase(const CommandContext& ctx, const ReportHooks& hooks,
                     const ReportWindow& report);

protected:
    // Print and Close (Print only when the report has one).
    QLayout* commandRow(bool withPrint);
    void printClicked();

    CommandContext ctx_;
    ReportHooks hooks_;
};

// Summary, Accuracy Related Penalty, Payroll Deposit Penalty.
class TextReportWindow : public ReportWindowBase {
    Q_OBJECT
public:
    TextReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                     const ReportWindow& report);

private:
    QPlainTextEdit* text_;
};

// Detailed Interest Analysis, Failure To File & Pay Analysis.
class GridReportWindow : public ReportWindowBase {
    Q_OBJECT
public:
    GridReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                     const ReportWindow& report);
    QTableWidget* table() const { return table_; }

private:
    QTableWidget* table_;
};

// "Inputs": the inputs text and the buttons of the three lists.
class InputsReportWindow : public ReportWindowBase {
    Q_OBJECT
public:
    InputsReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                       const ReportWindow& report);

private:
    void showGrid(InputGridKind kind);
};

// dlgIPGrid: one list of the inputs as a grid, modal.
class InputGridDialog : public GuardedDialog {
    Q_OBJECT
public:
    InputGridDialog(const GridData& grid, QWidget* parent);
};

// Opens the window of one report. A window beside the main window deletes
// itself when closed and is returned; a modal one is run and deleted here
// (null is returned).
QWidget* OpenReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                          const ReportWindow& data, int cascade);

// Runs the print command (the reports chosen in "Report Choices", one copy).
void PrintCommand(CommandContext& ctx, const ReportHooks& hooks);

}  // namespace rw::ui
