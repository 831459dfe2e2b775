#include "ui/main/overviewwidget.h"

#include "ui/common/texts.h"

#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace rw::ui {

namespace {

// Lists longer than this scroll inside their own table, so that the figures
// stay in view.
constexpr int kListRows = 10;
// Room a cell leaves around its text.
constexpr int kCellPadding = 18;

}  // namespace

// A section's table: read-only lines that open their dialog on a double-click
// or on Enter.
class OverviewTable : public QTableWidget {
public:
    explicit OverviewTable(QWidget* parent)
        : QTableWidget(parent)
    {
        setEditTriggers(NoEditTriggers);
        setSelectionBehavior(SelectRows);
        setSelectionMode(SingleSelection);
        setShowGrid(false);
        setAlternatingRowColors(true);
        setWordWrap(false);
        setTabKeyNavigation(false);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        verticalHeader()->hide();
        verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
        horizontalHeader()->setHighlightSections(false);
        horizontalHeader()->setSectionsClickable(false);
    }

    std::vector<OverviewTarget> rowTargets;  // by line; None: the table's own
    OverviewTarget opens = OverviewTarget::None;
    std::function<void(OverviewTarget)> onOpen;

    // Sizes the columns to their texts and the table to them and to its
    // lines: at most `rows`, scrolling beyond them.
    void fit(int rows)
    {
        QHeaderView* head = horizontalHeader();
        int width = 2 * frameWidth();
        for (int c = 0; c < columnCount(); ++c) {
            if (isColumnHidden(c))
                continue;
            const QTableWidgetItem* heading = horizontalHeaderItem(c);
            int w = !head->isHidden() && heading
                        ? head->fontMetrics().horizontalAdvance(heading->text())
                        : 0;
            for (int r = 0; r < rowCount(); ++r)
                if (const QTableWidgetItem* it = item(r, c))
                    w = std::max(w, QFontMetrics(it->font()).horizontalAdvance(it->text()));
            w += kCellPadding;
            head->setSectionResizeMode(c, QHeaderView::Fixed);
            head->resizeSection(c, w);
            width += w;
        }
        const bool scrolls = rowCount() > rows;
        setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
        if (scrolls)
            width += verticalScrollBar()->sizeHint().width();
        setFixedSize(width,
                     2 * frameWidth() + (head->isHidden() ? 0 : head->sizeHint().height())
                         + std::min(rowCount(), rows) * verticalHeader()->defaultSectionSize());
    }

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton)
            openRow(rowAt(event->position().toPoint().y()));
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentRow() >= 0)
            return openRow(currentRow());
        QTableWidget::keyPressEvent(event);
    }
    // A table that does not scroll leaves the wheel to the page.
    void wheelEvent(QWheelEvent* event) override
    {
        if (verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOff)
            return event->ignore();
        QTableWidget::wheelEvent(event);
    }

private:
    void openRow(int row)
    {
        OverviewTarget t = opens;
        if (row >= 0 && static_cast<std::size_t>(row) < rowTargets.size()
            && rowTargets[static_cast<std::size_t>(row)] != OverviewTarget::None)
            t = rowTargets[static_cast<std::size_t>(row)];
        // The dialog may redraw this table: nothing of it is used after.
        if (t != OverviewTarget::None && onOpen)
            onOpen(t);
    }
};

OverviewWidget::OverviewWidget(QWidget* parent)
    : QScrollArea(parent)
{
    setObjectName(QStringLiteral("overview"));
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    page_ = new QWidget(this);
    grid_ = new QGridLayout(page_);
    grid_->setContentsMargins(12, 8, 12, 8);
    grid_->setHorizontalSpacing(20);
    grid_->setVerticalSpacing(14);
    setWidget(page_);

    using T = OverviewTarget;
    sections_ = {
        makeSection("ovCase", QStringLiteral("Case"), T::InitialInputs,
                    QStringLiteral("Double-click to change the Initial Inputs")),
        makeSection("ovSettings", QStringLiteral("Penalties and options"), T::None,
                    QStringLiteral("Double-click a line to change it")),
        makeSection("ovFigures", QString(), T::None, QString()),
        makeSection("ovPayments", QStringLiteral("Payments"), T::Payments,
                    QStringLiteral("Double-click to open the payments")),
        makeSection("ovCharges", QStringLiteral("Other charges"), T::OtherCharges,
                    QStringLiteral("Double-click to open the other charges")),
        makeSection("ovDeposits", QStringLiteral("Payroll deposits"), T::Payroll,
                    QStringLiteral("Double-click to open the payroll deposits")),
    };
    sections_[SettingsPart].notes->setForegroundRole(QPalette::PlaceholderText);
}

OverviewWidget::~OverviewWidget() = default;

OverviewWidget::Section OverviewWidget::makeSection(const char* name, const QString& title,
                                                    OverviewTarget opens, const QString& tip)
{
    Section s;
    s.opens = opens;
    s.box = new QFrame(page_);
    s.box->setObjectName(QString::fromLatin1(name) + QStringLiteral("Box"));
    auto* column = new QVBoxLayout(s.box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(4);
    auto* head = new QHBoxLayout;
    s.title = new QLabel(title, s.box);
    s.title->setObjectName(QString::fromLatin1(name) + QStringLiteral("Title"));
    QFont bold = s.title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.1);
    s.title->setFont(bold);
    s.count = new QLabel(s.box);
    s.count->setObjectName(QString::fromLatin1(name) + QStringLiteral("Count"));
    s.count->setForegroundRole(QPalette::PlaceholderText);
    head->addWidget(s.title);
    head->addSpacing(8);
    head->addWidget(s.count);
    head->addStretch();
    column->addLayout(head);
    s.table = new OverviewTable(s.box);
    s.table->setObjectName(QString::fromLatin1(name));
    s.table->setToolTip(tip);
    s.table->opens = opens;
    s.table->onOpen = [this](OverviewTarget t) { open(t); };
    column->addWidget(s.table, 0, Qt::AlignLeft);
    s.notes = new QLabel(s.box);
    s.notes->setObjectName(QString::fromLatin1(name) + QStringLiteral("Notes"));
    s.notes->setWordWrap(true);
    s.notes->hide();
    // Notes wrap at the section's width, and at most about a table's.
    s.notes->setMaximumWidth(fontMetrics().averageCharWidth() * 80);
    column->addWidget(s.notes);
    for (QWidget* w : {static_cast<QWidget*>(s.box), static_cast<QWidget*>(s.title),
                       static_cast<QWidget*>(s.count), static_cast<QWidget*>(s.notes)})
        w->installEventFilter(this);
    return s;
}

void OverviewWidget::open(OverviewTarget target)
{
    const auto it = openers_.find(target);
    if (it != openers_.end() && it->second)
        it->second();
}

bool OverviewWidget::eventFilter(QObject* watched, QEvent* event)
{
    // A double-click on a section's title or around its table: the section's dialog.
    if (event->type() == QEvent::MouseButtonDblClick)
        for (const Section& s : sections_)
            if (watched == s.box || watched == s.title || watched == s.count
                || watched == s.notes) {
                open(s.opens);
                return true;
            }
    return QScrollArea::eventFilter(watched, event);
}

void OverviewWidget::showLines(Section& s, const std::vector<OverviewLine>& lines, bool lastIsTotal)
{
    OverviewTable* t = s.table;
    t->clearContents();
    t->setColumnCount(3);
    t->setRowCount(static_cast<int>(lines.size()));
    t->horizontalHeader()->hide();
    t->rowTargets.clear();
    bool anyText = false;
    bool anyAmount = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const OverviewLine& l = lines[i];
        const int row = static_cast<int>(i);
        const bool total = lastIsTotal && i + 1 == lines.size();
        const QString cells[] = {fromCore(l.label), fromCore(l.text), fromCore(l.amount)};
        for (int c = 0; c < 3; ++c) {
            auto* item = new QTableWidgetItem(cells[c]);
            item->setTextAlignment(Qt::AlignVCenter | (c == 2 ? Qt::AlignRight : Qt::AlignLeft));
            if (total) {
                QFont f = item->font();
                f.setBold(true);
                item->setFont(f);
            }
            t->setItem(row, c, item);
        }
        anyText = anyText || !l.text.empty();
        anyAmount = anyAmount || !l.amount.empty();
        t->rowTargets.push_back(l.opens);
    }
    t->setColumnHidden(1, !anyText);
    t->setColumnHidden(2, !anyAmount);
    t->fit(t->rowCount());
    t->setVisible(!lines.empty());
}

void OverviewWidget::showList(Section& s, const OverviewList& list)
{
    OverviewTable* t = s.table;
    s.box->setVisible(!list.hidden);
    s.title->setText(fromCore(list.title));
    s.count->setText(fromCore(list.count));
    t->clearContents();
    const int columns = static_cast<int>(list.headings.size());
    t->setColumnCount(columns);
    t->setRowCount(static_cast<int>(list.rows.size()));
    t->horizontalHeader()->show();
    const auto right = [&list](int c) {
        return static_cast<std::size_t>(c) < list.amountColumns.size()
               && list.amountColumns[static_cast<std::size_t>(c)];
    };
    for (int c = 0; c < columns; ++c) {
        auto* head = new QTableWidgetItem(fromCore(list.headings[static_cast<std::size_t>(c)]));
        head->setTextAlignment(Qt::AlignVCenter | (right(c) ? Qt::AlignRight : Qt::AlignLeft));
        t->setHorizontalHeaderItem(c, head);
    }
    for (std::size_t r = 0; r < list.rows.size(); ++r)
        for (int c = 0; c < columns && static_cast<std::size_t>(c) < list.rows[r].size(); ++c) {
            auto* item = new QTableWidgetItem(fromCore(list.rows[r][static_cast<std::size_t>(c)]));
            item->setTextAlignment(Qt::AlignVCenter | (right(c) ? Qt::AlignRight : Qt::AlignLeft));
            t->setItem(static_cast<int>(r), c, item);
        }
    t->rowTargets.clear();
    t->opens = list.opens;
    t->fit(kListRows);
    t->setVisible(!list.rows.empty());
}

void OverviewWidget::showOverview(const CaseOverview& overview)
{
    if (drawn_ && overview == shown_)
        return;
    shown_ = overview;
    drawn_ = true;
    showLines(sections_[CasePart], overview.caseLines, false);
    Section& settings = sections_[SettingsPart];
    showLines(settings, overview.settings, false);
    settings.notes->setText(fromCore(overview.unused));
    settings.notes->setVisible(!overview.unused.empty());
    Section& figures = sections_[FiguresPart];
    figures.title->setText(overview.figuresTitle.empty() ? QStringLiteral("Amount owed")
                                                         : fromCore(overview.figuresTitle));
    showLines(figures, overview.figures, true);
    QStringList notes;
    for (const std::string& n : overview.notes)
        notes << fromCore(n);
    figures.notes->setText(notes.join(QLatin1Char('\n')));
    figures.notes->setVisible(!notes.isEmpty());
    showList(sections_[PaymentsPart], overview.payments);
    showList(sections_[ChargesPart], overview.charges);
    showList(sections_[DepositsPart], overview.deposits);
    columns_ = 0;
    arrange();
}

void OverviewWidget::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    arrange();
}

void OverviewWidget::arrange()
{
    const auto width = [this](Part p) { return sections_[p].box->minimumSizeHint().width(); };
    const QMargins m = grid_->contentsMargins();
    const int needed = std::max(width(CasePart), width(SettingsPart)) + width(FiguresPart)
                       + grid_->horizontalSpacing() + m.left() + m.right();
    const int columns = viewport()->width() >= needed ? 2 : 1;
    if (columns == columns_)
        return;
    columns_ = columns;
    for (const Section& s : sections_)
        grid_->removeWidget(s.box);
    const auto put = [this](Part p, int row, int column, int rows = 1, int cols = 1,
                            Qt::Alignment align = {}) {
        grid_->addWidget(sections_[p].box, row, column, rows, cols, align);
    };
    // Two columns: the case and its settings beside what is owed, the lists
    // below across both. One column: what is owed right after the case.
    if (columns == 2) {
        put(CasePart, 0, 0);
        put(SettingsPart, 1, 0);
        put(FiguresPart, 0, 1, 2, 1, Qt::AlignTop);
        put(PaymentsPart, 2, 0, 1, 3);
        put(ChargesPart, 3, 0, 1, 3);
        put(DepositsPart, 4, 0, 1, 3);
    } else {
        put(CasePart, 0, 0);
        put(FiguresPart, 1, 0);
        put(SettingsPart, 2, 0);
        put(PaymentsPart, 3, 0);
        put(ChargesPart, 4, 0);
        put(DepositsPart, 5, 0);
    }
    const int spare = columns == 2 ? 5 : 6;  // the row under the last section
    for (int r = 0; r <= 6; ++r)
        grid_->setRowStretch(r, r == spare ? 1 : 0);
    // Sections keep their own width, to the left; the window's spare width
    // stays on the right.
    for (int c = 0; c <= 2; ++c)
        grid_->setColumnStretch(c, c == columns ? 1 : 0);
}

}  // namespace rw::ui
