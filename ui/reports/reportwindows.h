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

#include <QTableWidget>

class QKeyEvent;
class QLayout;
class QPlainTextEdit;
class QPushButton;

namespace rw::ui {

// The table of a report grid, read-only. Ctrl+C copies the selected cells
// (the whole grid after Ctrl+A) as tab-separated text under a heading line
// (GridBlockAsTsv), which a spreadsheet pastes into its columns.
class ReportTable : public QTableWidget {
    Q_OBJECT
public:
    ReportTable(GridData grid, QWidget* parent);
    // What Ctrl+C puts on the clipboard: the selected block, or the current
    // cell when nothing is selected; empty when there is neither.
    QString selectionText() const;
    void copySelection() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    GridData grid_;
};

// A report table: row 0 of the grid gives the column headings (in a header
// of headingLines lines, wrapped), the other rows the cells; columns keep
// their relative widths and alignment.
ReportTable* MakeReportTable(const GridData& grid, QWidget* parent, int headingLines);

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
    ReportTable* table_;
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

// dlgIPGrid: one list of the inputs as a grid, modal over the inputs window.
class InputGridDialog : public GuardedDialog {
    Q_OBJECT
public:
    InputGridDialog(const GridData& grid, QWidget* parent);
};

// Opens the windows of one command beside the main window, none modal, each
// deleted when closed, and returns them. The first (the summary, when
// chosen) goes to the top left of the screen and to the front; the others
// are laid like cards beside it, each a step lower and to the right of the
// one before (over it when the screen has no room beside it), and made no
// larger than the screen leaves them room for there.
std::vector<QWidget*> OpenReportWindows(const CommandContext& ctx, const ReportHooks& hooks,
                                        const std::vector<ReportWindow>& reports);

// Runs the print command (the reports chosen in "Report Choices", one copy);
// reports printed to a PDF file are followed by the offer to open it.
void PrintCommand(CommandContext& ctx, const ReportHooks& hooks);

}  // namespace rw::ui
