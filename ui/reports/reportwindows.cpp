#include "ui/reports/reportwindows.h"

#include "base/fault.h"
#include "base/numtext.h"
#include "qtprint/qtprinter.h"
#include "reports/standardsources.h"
#include "reports/tsv.h"
#include "ui/common/fields.h"
#include "ui/common/texts.h"
#include "ui/reports/printtarget.h"
#include "ui/reports/reportchoices.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTableWidget>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace rw::ui {

namespace {

// The text windows show the reports' fixed-pitch texts at screen size.
constexpr qreal kTextPoints = 10.0;

QString windowText(const std::string& crlfText)
{
    QString t = DisplayText(crlfText);
    t.remove(QChar(u'\r'));
    if (t.endsWith(QChar(u'\n')))
        t.chop(1);
    return t;
}

QRect availableArea(const QWidget* w)
{
    const QScreen* screen = w->screen() ? w->screen() : QApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
}

// The PDF file the reports went to, named, and opened when the user says Yes.
void offerToOpen(CommandContext& ctx, const ReportHooks& hooks, const QString& pdf)
{
    const std::string path = Utf8ToLatin1(pdf.toStdString());
    if (!ctx.msgs.ask("Print",
                      "The reports were written to the PDF file\n" + path + "\n\nOpen it now?",
                      MsgIcon::Question))
        return;
    const QUrl url = QUrl::fromLocalFile(pdf);
    const bool opened = hooks.openFile ? hooks.openFile(url) : QDesktopServices::openUrl(url);
    if (!opened)
        ctx.msgs.show("Print",
                      "The PDF file " + path
                          + " could not be opened.  A viewer for PDF files is needed to read it.",
                      MsgIcon::Exclamation);
}

void reportFaultByMessage(Messages& msgs, const Fault& f)
{
    msgs.show("Error!",
              "Error " + std::to_string(f.number()) + " in " + f.procedure() + ": "
                  + ErrorDescription(f.number()),
              MsgIcon::Critical);
}

// The sizes the windows take to show their reports whole are where they
// begin; the user, and the cascade on a small screen, may make them smaller.
void letShrink(QWidget* content)
{
    content->setMinimumSize(160, 80);
    if (QLayout* layout = content->parentWidget()->layout())
        layout->activate();
}

// The places of one command's windows: the first at the top left of the
// screen, the others from beside it (or from a step into it when the screen
// has no room beside it) a step lower and to the right each, starting again
// after half the screen; each made small enough to end within the screen (a
// title bar and frame allowed for).
void layWindows(const std::vector<QWidget*>& windows)
{
    constexpr int kStep = 32;
    constexpr int kMargin = 16;
    constexpr int kFrame = 40;
    if (windows.empty())
        return;
    const QRect area = availableArea(windows.front());
    const auto place = [&](QWidget* w, QPoint at) {
        const QSize room(area.right() + 1 - at.x() - kMargin,
                         area.bottom() + 1 - at.y() - kMargin - kFrame);
        w->resize(w->size().boundedTo(room));
        w->move(at);
    };
    const QPoint corner = area.topLeft() + QPoint(kMargin, kMargin);
    place(windows.front(), corner);
    const int beside = windows.front()->frameGeometry().right() + 1 + kMargin;
    const QPoint origin = area.right() + 1 - beside >= std::max(400, area.width() / 3)
                              ? QPoint(beside, corner.y())
                              : corner + QPoint(kStep, kStep);
    const int steps = std::max(1, std::min(area.width(), area.height()) / 2 / kStep);
    for (std::size_t i = 1; i < windows.size(); ++i) {
        const int offset = kStep * (static_cast<int>(i - 1) % steps);
        place(windows[i], origin + QPoint(offset, offset));
    }
}

}  // namespace

// ---- Tables ----------------------------------------------------------------------------

ReportTable::ReportTable(GridData grid, QWidget* parent)
    : QTableWidget(grid.rows() > 0 ? static_cast<int>(grid.rows()) - 1 : 0,
                   static_cast<int>(grid.columns()), parent)
    , grid_(std::move(grid))
{
}

QString ReportTable::selectionText() const
{
    const QList<QTableWidgetSelectionRange> ranges = selectedRanges();
    GridBlock block;
    if (!ranges.isEmpty()) {
        // One block holding every range (the table selects one block at a time).
        int top = rowCount(), bottom = -1, left = columnCount(), right = -1;
        for (const QTableWidgetSelectionRange& r : ranges) {
            top = std::min(top, r.topRow());
            bottom = std::max(bottom, r.bottomRow());
            left = std::min(left, r.leftColumn());
            right = std::max(right, r.rightColumn());
        }
        block = {static_cast<std::size_t>(top), static_cast<std::size_t>(bottom),
                 static_cast<std::size_t>(left), static_cast<std::size_t>(right)};
    } else if (currentRow() >= 0 && currentColumn() >= 0) {
        const auto row = static_cast<std::size_t>(currentRow());
        const auto column = static_cast<std::size_t>(currentColumn());
        block = {row, row, column, column};
    } else {
        return {};
    }
    return QString::fromLatin1(GridBlockAsTsv(grid_, block));
}

void ReportTable::copySelection() const
{
    const QString text = selectionText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

void ReportTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
        event->accept();
        return;
    }
    QTableWidget::keyPressEvent(event);
}

ReportTable* MakeReportTable(const GridData& grid, QWidget* parent, int headingLines)
{
    const int columns = static_cast<int>(grid.columns());
    const int rows = grid.rows() > 0 ? static_cast<int>(grid.rows()) - 1 : 0;
    auto* table = new ReportTable(grid, parent);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::ContiguousSelection);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(QFontMetrics(table->font()).height() + 8);
    table->setTabKeyNavigation(false);

    QHeaderView* header = table->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignCenter | Qt::Alignment(Qt::TextWordWrap));
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setHighlightSections(false);

    const QFontMetrics fm(table->font());
    const QFontMetrics hfm(header->font());
    const int pad = 2 * fm.horizontalAdvance(QLatin1Char('0')) + 8;
    // One width unit: wide enough for every cell and for the longest word of
    // every heading in its column.
    int unit = fm.horizontalAdvance(QStringLiteral("00/00/0000")) + pad;
    for (int c = 0; c < columns; ++c) {
        const int units = c < static_cast<int>(grid.widthUnits.size())
                              ? std::max(1, grid.widthUnits[static_cast<std::size_t>(c)])
                              : 1;
        int need = 0;
        for (std::size_t r = 0; r < grid.rows(); ++r) {
            const auto& row = grid.cells[r];
            if (static_cast<std::size_t>(c) >= row.size())
                continue;
            const QString text = DisplayText(row[static_cast<std::size_t>(c)]).trimmed();
            if (r == 0) {
                for (const QString& word : text.split(QChar(u' '), Qt::SkipEmptyParts))
                    need = std::max(need, hfm.horizontalAdvance(word) + pad);
            } else {
                need = std::max(need, fm.horizontalAdvance(text) + pad);
            }
        }
        unit = std::max(unit, (need + units - 1) / units);
    }

    QStringList headings;
    if (grid.rows() > 0)
        for (const std::string& h : grid.cells[0])
            headings << DisplayText(h);
    table->setHorizontalHeaderLabels(headings);
    for (int c = 0; c < columns; ++c) {
        const int units = c < static_cast<int>(grid.widthUnits.size())
                              ? std::max(1, grid.widthUnits[static_cast<std::size_t>(c)])
                              : 1;
        table->setColumnWidth(c, unit * units);
        if (QTableWidgetItem* h = table->horizontalHeaderItem(c))
            h->setTextAlignment(Qt::AlignCenter | Qt::Alignment(Qt::TextWordWrap));
    }
    // Tall enough for the longest heading as it wraps in its column.
    int headingHeight = hfm.lineSpacing() * headingLines;
    for (int c = 0; c < columns && c < headings.size(); ++c) {
        const QRect r = hfm.boundingRect(QRect(0, 0, table->columnWidth(c) - 10, 1000),
                                         Qt::AlignCenter | Qt::TextWordWrap, headings[c]);
        headingHeight = std::max(headingHeight, r.height());
    }
    header->setFixedHeight(headingHeight + 12);

    for (int r = 0; r < rows; ++r) {
        const auto& cells = grid.cells[static_cast<std::size_t>(r) + 1];
        for (int c = 0; c < columns && static_cast<std::size_t>(c) < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(DisplayText(cells[static_cast<std::size_t>(c)]));
            const bool right = grid.align[static_cast<std::size_t>(c)] == CellAlign::Right;
            item->setTextAlignment((right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
            table->setItem(r, c, item);
        }
    }
    int width = 2 * table->frameWidth() + table->verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < columns; ++c)
        width += table->columnWidth(c);
    table->setMinimumWidth(std::min(width, 1500));
    return table;
}

// ---- The windows -------------------------------------------------------------------------

ReportWindowBase::ReportWindowBase(const CommandContext& ctx, const ReportHooks& hooks,
                                   const ReportWindow& report)
    : GuardedDialog(ctx.parent)
    , ctx_(ctx)
    , hooks_(hooks)
{
    setObjectName(fromCore(report.name));
    setWindowTitle(fromCore(report.caption));
    // Beside the main window and the other reports, blocking none of them;
    // deleted when closed.
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    setSizeGripEnabled(true);
}

QLayout* ReportWindowBase::commandRow(bool withPrint)
{
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    if (withPrint) {
        auto* print = new QPushButton(QStringLiteral("Print"), this);
        print->setObjectName(QStringLiteral("btnPrn"));
        print->setAutoDefault(false);
        connect(print, &QPushButton::clicked, this, &ReportWindowBase::printClicked);
        row->addWidget(print);
    }
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("btnClose"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    row->addWidget(close);
    return row;
}

void ReportWindowBase::printClicked()
{
    try {
        WithFaultName("PrintMaster", [this] { PrintCommand(ctx_, hooks_); });
    } catch (const Fault& f) {
        if (hooks_.reportFault)
            hooks_.reportFault(f);
        else
            reportFaultByMessage(ctx_.msgs, f);
    }
}

TextReportWindow::TextReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                                   const ReportWindow& report)
    : ReportWindowBase(ctx, hooks, report)
{
    text_ = new QPlainTextEdit(this);
    text_->setObjectName(report.kind == ReportWindowKind::AccuracyRelated
                             ? QStringLiteral("txtAccRelPen")
                             : QStringLiteral("txtSumm"));
    text_->setReadOnly(true);
    text_->setFont(QtPrinter::ReportFont(QStringLiteral("Courier New"), kTextPoints));
    // The accuracy-related explanation is one long line that the box wraps;
    // the other reports are columns.
    const bool wraps = report.kind == ReportWindowKind::AccuracyRelated;
    text_->setLineWrapMode(wraps ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    const QString text = windowText(report.text);
    text_->setPlainText(text);

    const QFontMetrics fm(text_->font());
    const QStringList lines = text.split(QChar(u'\n'));
    int longest = 0;
    for (const QString& l : lines)
        longest = std::max(longest, static_cast<int>(l.size()));
    const int columns = wraps ? 80 : longest + 2;
    const int cell = fm.horizontalAdvance(QLatin1Char('0'));
    const QRect area = availableArea(this);
    const int w = std::min(cell * columns + 2 * text_->frameWidth()
                               + 2 * static_cast<int>(text_->document()->documentMargin())
                               + text_->verticalScrollBar()->sizeHint().width(),
                           area.width() - 80);
    const int shownLines = std::clamp(static_cast<int>(lines.size()) + (wraps ? 4 : 1), 8, 34);
    const int h = std::min(fm.lineSpacing() * shownLines + 2 * text_->frameWidth()
                               + 2 * static_cast<int>(text_->document()->documentMargin())
                               + text_->horizontalScrollBar()->sizeHint().height(),
                           area.height() - 160);
    text_->setMinimumSize(w, h);

    auto* top = new QVBoxLayout(this);
    top->addWidget(text_, 1);
    top->addLayout(commandRow(true));
    finishSetup();
    letShrink(text_);
}

GridReportWindow::GridReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                                   const ReportWindow& report)
    : ReportWindowBase(ctx, hooks, report)
{
    const GridData& grid = *report.grid;
    table_ = MakeReportTable(grid, this, 3);
    table_->setObjectName(report.kind == ReportWindowKind::DetailedInterest
                              ? QStringLiteral("vsGrdIntDetail")
                              : QStringLiteral("vsGrdDispFailFilePay"));
    // The total row stands out.
    const int last = table_->rowCount() - 1;
    if (last >= 0) {
        for (int c = 0; c < table_->columnCount(); ++c)
            if (QTableWidgetItem* item = table_->item(last, c)) {
                QFont f = item->font();
                f.setBold(true);
                item->setFont(f);
            }
    }
    const QRect area = availableArea(this);
    const int shownRows = std::clamp(table_->rowCount(), 6, 30);
    const int h = std::min(table_->horizontalHeader()->height()
                               + shownRows * table_->verticalHeader()->defaultSectionSize()
                               + 2 * table_->frameWidth()
                               + table_->horizontalScrollBar()->sizeHint().height(),
                           area.height() - 160);
    table_->setMinimumHeight(h);
    table_->setMinimumWidth(std::min(table_->minimumWidth(), area.width() - 60));

    auto* top = new QVBoxLayout(this);
    top->addWidget(table_, 1);
    if (!report.text.empty()) {
        auto* note = new QLabel(fromCore(report.text), this);
        note->setObjectName(QStringLiteral("lblNote"));
        note->setWordWrap(true);
        top->addWidget(note);
    }
    top->addLayout(commandRow(true));
    finishSetup();
    letShrink(table_);
}

InputsReportWindow::InputsReportWindow(const CommandContext& ctx, const ReportHooks& hooks,
                                       const ReportWindow& report)
    : ReportWindowBase(ctx, hooks, report)
{
    const InputsWindowData& in = *report.inputs;
    auto* text = new QPlainTextEdit(this);
    text->setObjectName(QStringLiteral("txtIP"));
    text->setReadOnly(true);
    text->setFont(QtPrinter::ReportFont(QStringLiteral("Courier New"), kTextPoints));
    text->setLineWrapMode(QPlainTextEdit::NoWrap);
    const QString shown = windowText(in.text);
    text->setPlainText(shown);
    const QFontMetrics fm(text->font());
    int longest = 0;
    const QStringList lines = shown.split(QChar(u'\n'));
    for (const QString& l : lines)
        longest = std::max(longest, static_cast<int>(l.size()));
    const QRect area = availableArea(this);
    text->setMinimumSize(
        std::min(fm.horizontalAdvance(QLatin1Char('0')) * (longest + 3)
                     + text->verticalScrollBar()->sizeHint().width() + 12,
                 area.width() - 80),
        std::min(fm.lineSpacing() * std::clamp(static_cast<int>(lines.size()) + 1, 10, 34) + 12,
                 area.height() - 160));

    auto* deposits = new QPushButton(QStringLiteral("Payroll Liabilities"), this);
    deposits->setObjectName(QStringLiteral("btnDep"));
    auto* charges = new QPushButton(QStringLiteral("Other Charges"), this);
    charges->setObjectName(QStringLiteral("btnCharges"));
    auto* payments = new QPushButton(QStringLiteral("Payments"), this);
    payments->setObjectName(QStringLiteral("btnPmts"));
    deposits->setEnabled(in.depositsEnabled);
    charges->setEnabled(in.chargesEnabled);
    payments->setEnabled(in.paymentsEnabled);
    auto* row = new QHBoxLayout;
    for (QPushButton* b : {deposits, charges, payments}) {
        b->setAutoDefault(false);
        row->addWidget(b);
    }
    connect(deposits, &QPushButton::clicked, this, [this] { showGrid(InputGridKind::Deposits); });
    connect(charges, &QPushButton::clicked, this, [this] { showGrid(InputGridKind::Charges); });
    connect(payments, &QPushButton::clicked, this, [this] { showGrid(InputGridKind::Payments); });
    auto* lower = new QHBoxLayout;
    lower->addLayout(row);
    lower->addLayout(commandRow(false), 1);

    auto* top = new QVBoxLayout(this);
    top->addWidget(text, 1);
    top->addLayout(lower);
    finishSetup();
    letShrink(text);
}

void InputsReportWindow::showGrid(InputGridKind kind)
{
    // The lists as they stand now: a later rearrangement of the payments shows.
    try {
        const GridData grid
            = WithFaultName("FillPmtGrd", [&] { return InputsGrid(ctx_.kase, kind); });
        InputGridDialog dlg(grid, this);
        dlg.run();
    } catch (const Fault& f) {
        if (hooks_.reportFault)
            hooks_.reportFault(f);
        else
            reportFaultByMessage(ctx_.msgs, f);
    }
}

InputGridDialog::InputGridDialog(const GridData& grid, QWidget* parent)
    : GuardedDialog(parent)
{
    setObjectName(QStringLiteral("dlgIPGrid"));
    setWindowTitle(fromCore(grid.caption));
    // It blocks only the inputs window that opened it: the other report
    // windows and the main window stay usable.
    setWindowModality(Qt::WindowModal);
    setSizeGripEnabled(true);
    ReportTable* table = MakeReportTable(grid, this, 2);
    table->setObjectName(QStringLiteral("vsGrdDispIP"));
    const QRect area = availableArea(this);
    table->setMinimumHeight(std::min(
        table->horizontalHeader()->height()
            + std::clamp(table->rowCount(), 4, 20) * table->verticalHeader()->defaultSectionSize()
            + 2 * table->frameWidth() + table->horizontalScrollBar()->sizeHint().height(),
        area.height() - 160));
    auto* close = new QPushButton(QStringLiteral("Close"), this);
    close->setObjectName(QStringLiteral("btnClose"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(close);
    auto* top = new QVBoxLayout(this);
    top->addWidget(table, 1);
    top->addLayout(row);
    finishSetup();
}

// ---- Opening and printing -----------------------------------------------------------------

std::vector<QWidget*> OpenReportWindows(const CommandContext& ctx, const ReportHooks& hooks,
                                        const std::vector<ReportWindow>& reports)
{
    std::vector<QWidget*> windows;
    try {
        for (const ReportWindow& report : reports) {
            switch (report.kind) {
            case ReportWindowKind::DetailedInterest:
            case ReportWindowKind::FailFilePay:
                windows.push_back(new GridReportWindow(ctx, hooks, report));
                break;
            case ReportWindowKind::Inputs:
                windows.push_back(new InputsReportWindow(ctx, hooks, report));
                break;
            default:
                windows.push_back(new TextReportWindow(ctx, hooks, report));
                break;
            }
        }
    } catch (...) {
        for (QWidget* w : windows)
            delete w;
        throw;
    }
    layWindows(windows);
    // Each card in front of the one before it, so that every title shows;
    // the first last, in front of them all, taking the keys.
    for (std::size_t i = 1; i < windows.size(); ++i)
        windows[i]->show();
    if (!windows.empty()) {
        windows.front()->show();
        windows.front()->raise();
        windows.front()->activateWindow();
    }
    return windows;
}

void PrintCommand(CommandContext& ctx, const ReportHooks& hooks)
{
    std::unique_ptr<QPrinter> ownPrinter;
    QPrinter& printer = RunPrinter(ctx.parent, ownPrinter);
    PrintTarget target(printer, hooks, ctx.parent);
    QtReportChooser chooser(&target, ctx.parent);
    const bool chosen = chooser.chooseReports(ctx.reportChoice, true);
    auto repaint = [&ctx] {
        if (ctx.parent)
            ctx.parent->repaint();
    };
    repaint();
    if (!chosen || ctx.reportChoice.mask == 0 || !target.resolve())
        return;  // cancelled, nothing chosen, or nowhere to print
    std::unique_ptr<rw::Printer> backEnd = target.makePrinter();
    PrintJob job{*backEnd, ctx.printState, ctx.msgs,
                 [&ctx](std::string_view note) {
                     if (ctx.setNote)
                         ctx.setNote(note);
                 },
                 repaint};
    try {
        PrintReports(ctx.reportChoice.mask, 1, ctx.kase, job,
                     StandardReportSources(ctx.rates, ctx.ftfMinimums, ctx.provenance));
        const QString pdf = target.pdfFile();
        if (!pdf.isEmpty())
            offerToOpen(ctx, hooks, pdf);
    } catch (const Fault& f) {
        // A PDF file that cannot be written (a folder the user may not write
        // to, a full disk) is told; the case and any earlier file stay.
        if (!IsWriteFault(f))
            throw;
        ctx.msgs.show("Print",
                      "The reports could not be written ("
                          + Utf8ToLatin1(target.describe().toStdString())
                          + ").\n\nReason: " + Utf8ToLatin1(f.detail()),
                      MsgIcon::Exclamation);
    }
}

}  // namespace rw::ui
