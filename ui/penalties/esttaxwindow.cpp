#include "ui/penalties/esttaxwindow.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace rw::ui {

namespace {

QFormLayout* formLayout()
{
    auto* f = new QFormLayout;
    f->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    f->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    return f;
}

// A field wide enough for the text it is meant to hold.
template<typename Field>
Field* sized(QWidget* parent, const char* name, const QString& widest)
{
    auto* f = new Field(parent);
    f->setObjectName(QString::fromLatin1(name));
    f->setFixedWidth(f->fontMetrics().horizontalAdvance(widest) + 16);
    return f;
}

const QString kWidestAmount = QStringLiteral("999,999,999,999.99");
const QString kWidestDate = QStringLiteral("00/00/00000");

}  // namespace

EstTaxWindow::EstTaxWindow(EstTaxDialog& logic, QWidget* parent)
    : GuardedDialog(parent)
    , logic_(logic)
{
    setObjectName(QStringLiteral("dlgInpEstTax"));
    setWindowTitle(QStringLiteral("Estimated Tax"));

    calculate_ = new YesNoChoice(QStringLiteral("Calculate Estimated Tax Penalty"), this);
    calculate_->setObjectName(QStringLiteral("radCalcPen"));

    // The year and the taxes that set the required annual payment.
    auto* year = new QGroupBox(QStringLiteral("Tax Year and Taxes"), this);
    auto* filer = new QWidget(year);
    individual_ = new QRadioButton(QStringLiteral("&Individual"), filer);
    individual_->setObjectName(QStringLiteral("optIndividual"));
    corporation_ = new QRadioButton(QStringLiteral("C&orporation"), filer);
    corporation_->setObjectName(QStringLiteral("optCorporation"));
    auto* filerRow = new QHBoxLayout(filer);
    filerRow->setContentsMargins(0, 0, 0, 0);
    filerRow->addWidget(individual_);
    filerRow->addSpacing(16);
    filerRow->addWidget(corporation_);
    filerRow->addStretch(1);
    taxYear_ = sized<QLineEdit>(year, "txtTaxYear", QStringLiteral("00000"));
    month_ = sized<QLineEdit>(year, "txtFYEMonth", QStringLiteral("000"));
    monthLabel_ = new QLabel(QStringLiteral("Tax Year Ends in Month (1-12):"), year);
    currentTax_ = sized<MoneyField>(year, "txtCurrentTax", kWidestAmount);
    priorTax_ = sized<MoneyField>(year, "txtPriorTax", kWidestAmount);
    priorUsable_ = new QCheckBox(QStringLiteral("Prior year may set the required payment"), year);
    priorUsable_->setObjectName(QStringLiteral("chkPriorUsable"));
    highIncome_ = new QCheckBox(
        QStringLiteral("Individual: prior-year AGI over $150,000 ($75,000 if MFS)"), year);
    highIncome_->setObjectName(QStringLiteral("chkHighIncome"));
    largeCorp_ = new QCheckBox(
        QStringLiteral("Corporation: $1 million of taxable income in one of 3 prior years"), year);
    largeCorp_->setObjectName(QStringLiteral("chkLargeCorp"));
    auto* yearForm = formLayout();
    yearForm->addRow(QStringLiteral("Filer:"), filer);
    yearForm->addRow(QStringLiteral("Tax Year (year it begins):"), taxYear_);
    yearForm->addRow(monthLabel_, month_);
    yearForm->addRow(QStringLiteral("Current Year Tax after Credits:"), currentTax_);
    yearForm->addRow(QStringLiteral("Prior Year Tax:"), priorTax_);
    auto* yearBox = new QVBoxLayout(year);
    yearBox->addLayout(yearForm);
    yearBox->addWidget(priorUsable_);
    yearBox->addWidget(highIncome_);
    yearBox->addWidget(largeCorp_);

    // Own required installments (annualized income or seasonal).
    auto* own = new QGroupBox(QStringLiteral("Required Installments"), this);
    ownInstallments_
        = new QCheckBox(QStringLiteral("Enter each installment (annualized or seasonal)"), own);
    ownInstallments_->setObjectName(QStringLiteral("chkOwnInstallments"));
    auto* ownGrid = new QGridLayout;
    for (int i = 0; i < 4; ++i) {
        const QByteArray name = "txtInstallment" + QByteArray::number(i + 1);
        installments_[i] = sized<MoneyField>(own, name.constData(), kWidestAmount);
        static const char* const kOrdinal[] = {"1st:", "2nd:", "3rd:", "4th:"};
        auto* label = new QLabel(QString::fromLatin1(kOrdinal[i]), own);
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        ownGrid->addWidget(label, i / 2, (i % 2) * 2);
        ownGrid->addWidget(installments_[i], i / 2, (i % 2) * 2 + 1);
    }
    ownGrid->setColumnStretch(4, 1);
    auto* ownBox = new QVBoxLayout(own);
    ownBox->addWidget(ownInstallments_);
    ownBox->addLayout(ownGrid);

    notice_ = sized<DateField>(this, "txtNotice", kWidestDate);
    auto* noticeForm = formLayout();
    noticeForm->addRow(QStringLiteral("Notice and Demand Date (if any):"), notice_);

    // What was paid: withholding and the estimated payments.
    auto* paid = new QGroupBox(QStringLiteral("Payments"), this);
    withholding_ = sized<MoneyField>(paid, "txtWithholding", kWidestAmount);
    byDate_ = new QCheckBox(
        QStringLiteral("Withheld on these dates (otherwise in four equal parts):"), paid);
    byDate_->setObjectName(QStringLiteral("chkWithheldByDate"));
    auto* withForm = formLayout();
    withForm->addRow(QStringLiteral("Tax Withheld (total):"), withholding_);
    auto* paidBox = new QVBoxLayout(paid);
    paidBox->addLayout(withForm);
    paidBox->addWidget(byDate_);
    paidBox->addWidget(makeList(withheld_, {}));
    paidBox->addWidget(makeList(payments_, QStringLiteral("Estimated Tax Payments:")));

    const OkCancel okCancel = MakeOkCancel(this);
    QDialogButtonBox* buttons = okCancel.box;
    QPushButton* ok = okCancel.ok;
    QPushButton* cancel = okCancel.cancel;

    auto* left = new QVBoxLayout;
    left->addWidget(year);
    left->addWidget(own);
    left->addLayout(noticeForm);
    left->addStretch(1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(left);
    columns->addWidget(paid, 1);
    auto* note = new QLabel(this);
    note->setObjectName(QStringLiteral("lblNote"));
    note->setWordWrap(true);
    auto* top = new QVBoxLayout(this);
    top->addWidget(calculate_);
    top->addWidget(note);
    top->addLayout(columns);
    top->addWidget(buttons);
    body_ = {year, own, paid, notice_};

    // Down the left column, then the payments; the rows of a list go in after
    // the field before it as they are added.
    const std::vector<QWidget*> chain = {calculate_->yesButton(),
                                         calculate_->noButton(),
                                         individual_,
                                         corporation_,
                                         taxYear_,
                                         month_,
                                         currentTax_,
                                         priorTax_,
                                         priorUsable_,
                                         highIncome_,
                                         largeCorp_,
                                         ownInstallments_,
                                         installments_[0],
                                         installments_[1],
                                         installments_[2],
                                         installments_[3],
                                         notice_,
                                         withholding_,
                                         byDate_,
                                         withheld_.add,
                                         withheld_.remove,
                                         payments_.add,
                                         payments_.remove,
                                         ok,
                                         cancel};
    for (std::size_t i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);

    connect(calculate_, &YesNoChoice::changed, this, [this] {
        guard([this] {
            readForm();
            showForm();
        });
    });
    for (QAbstractButton* b : std::initializer_list<QAbstractButton*>{individual_, corporation_,
                                                                      byDate_, ownInstallments_})
        connect(b, &QAbstractButton::toggled, this, [this] {
            guard([this] {
                readForm();
                showForm();
            });
        });
    const std::pair<QLineEdit*, FormField<EstTaxForm>> checked[] = {
        {taxYear_, &EstTaxForm::taxYear},
        {month_, &EstTaxForm::fiscalYearEndMonth},
        {currentTax_, &EstTaxForm::currentTax},
        {priorTax_, &EstTaxForm::priorTax},
        {withholding_, &EstTaxForm::withholding},
        {installments_[0], &EstTaxForm::installment1},
        {installments_[1], &EstTaxForm::installment2},
        {installments_[2], &EstTaxForm::installment3},
        {installments_[3], &EstTaxForm::installment4},
        {notice_, &EstTaxForm::noticeAndDemand},
    };
    for (const auto& [edit, field] : checked)
        checkField(edit, field);
    onOk(ok, [this] {
        readForm();
        if (logic_.accept(form_))
            accept();
        else
            selectRefused();
    });

    guard([this] { form_ = logic_.open(); });
    note->setText(fromCore(form_.note));
    note->setVisible(!form_.note.empty());
    showRows(withheld_, form_.withholdingRows);
    showRows(payments_, form_.payments);
    showForm();
    finishSetup();
    (calculate_->isYes() ? calculate_->yesButton() : calculate_->noButton())
        ->setFocus(Qt::OtherFocusReason);
}

QWidget* EstTaxWindow::makeList(DatedList& l, const QString& caption)
{
    auto* box = new QWidget(this);
    const QString name = QString::fromLatin1(l.name);
    l.table = new QTableWidget(0, 2, box);
    l.table->setObjectName(QStringLiteral("tbl") + name);
    l.table->setHorizontalHeaderLabels({QStringLiteral("Date"), QStringLiteral("Amount")});
    l.table->setFocusPolicy(Qt::NoFocus);  // the fields of its cells take the focus
    l.table->setTabKeyNavigation(false);  // Tab goes on along the dialog's chain
    // The row Remove Row takes out shows as chosen.
    l.table->setSelectionBehavior(QAbstractItemView::SelectRows);
    l.table->setSelectionMode(QAbstractItemView::SingleSelection);
    l.table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    const QFontMetrics fm = l.table->fontMetrics();
    l.table->setColumnWidth(0, fm.horizontalAdvance(kWidestDate) + 20);
    l.table->horizontalHeader()->setStretchLastSection(true);
    l.table->verticalHeader()->setDefaultSectionSize(fm.height() + 10);
    const int rowsShown = l.list == EstTaxList::Payments ? 6 : 4;
    l.table->setMinimumWidth(fm.horizontalAdvance(kWidestDate + kWidestAmount) + 90);
    l.table->setFixedHeight(l.table->horizontalHeader()->sizeHint().height()
                            + rowsShown * (fm.height() + 10) + 4);
    l.add = new QPushButton(QStringLiteral("Add Row"), box);
    l.add->setObjectName(QStringLiteral("btn") + name + QStringLiteral("Add"));
    l.add->setAutoDefault(false);
    l.remove = new QPushButton(QStringLiteral("Remove Row"), box);
    l.remove->setObjectName(QStringLiteral("btn") + name + QStringLiteral("Remove"));
    l.remove->setAutoDefault(false);
    connect(l.add, &QPushButton::clicked, this, [this, &l] {
        guard([this, &l] {
            addRow(l, {});
            l.table->cellWidget(l.table->rowCount() - 1, 0)->setFocus(Qt::OtherFocusReason);
        });
    });
    connect(l.remove, &QPushButton::clicked, this,
            [this, &l] { guard([this, &l] { removeRow(l); }); });

    auto* buttonRow = new QHBoxLayout;
    buttonRow->addWidget(l.add);
    buttonRow->addWidget(l.remove);
    buttonRow->addStretch(1);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    if (!caption.isEmpty())
        layout->addWidget(new QLabel(caption, box));
    layout->addWidget(l.table);
    layout->addLayout(buttonRow);
    return box;
}

void EstTaxWindow::addRow(DatedList& l, const EstTaxRow& row)
{
    const int r = l.table->rowCount();
    l.table->insertRow(r);
    const QByteArray n = QByteArray(l.name) + QByteArray::number(r);
    auto* date = new DateField;
    date->setObjectName(QString::fromLatin1("txt" + n + "Date"));
    auto* amount = new MoneyField;
    amount->setObjectName(QString::fromLatin1("txt" + n + "Amt"));
    for (QLineEdit* e : {static_cast<QLineEdit*>(date), static_cast<QLineEdit*>(amount)})
        e->setFrame(false);
    ShowText(date, row.date);
    ShowText(amount, row.amount);
    l.table->setCellWidget(r, 0, date);
    l.table->setCellWidget(r, 1, amount);
    // In the tab chain after the row before it (or the field before the list).
    QWidget* before = r > 0                               ? l.table->cellWidget(r - 1, 1)
                      : l.list == EstTaxList::Withholding ? static_cast<QWidget*>(byDate_)
                                                          : withheld_.remove;
    setTabOrder(before, date);
    setTabOrder(date, amount);
    for (QLineEdit* e : {static_cast<QLineEdit*>(date), static_cast<QLineEdit*>(amount)}) {
        checkWhenLeft(e, [this, &l, e] { checkCell(l, e); });
        whenEntered(e, [this, &l, e] {
            for (int i = 0; i < l.table->rowCount(); ++i)
                if (l.table->cellWidget(i, 0) == e || l.table->cellWidget(i, 1) == e) {
                    l.current = i;
                    l.table->selectRow(i);
                }
        });
        EnterAsTab::installOn(e);
    }
}

void EstTaxWindow::removeRow(DatedList& l)
{
    const int n = l.table->rowCount();
    if (n == 0)
        return;
    const int r = l.current >= 0 && l.current < n ? l.current : n - 1;
    QWidget* fields[] = {l.table->cellWidget(r, 0), l.table->cellWidget(r, 1)};
    l.table->removeRow(r);
    for (QWidget* f : fields)
        delete f;  // now, not later: their names pass to the rows below
    l.current = -1;
    // The fields keep their names by row.
    for (int i = r; i < l.table->rowCount(); ++i) {
        const QByteArray name = "txt" + QByteArray(l.name) + QByteArray::number(i);
        l.table->cellWidget(i, 0)->setObjectName(QString::fromLatin1(name + "Date"));
        l.table->cellWidget(i, 1)->setObjectName(QString::fromLatin1(name + "Amt"));
    }
}

void EstTaxWindow::showRows(DatedList& l, const std::vector<EstTaxRow>& rows)
{
    l.table->setRowCount(0);
    for (const EstTaxRow& row : rows)
        addRow(l, row);
    addRow(l, {});  // the next entry
}

std::vector<EstTaxRow> EstTaxWindow::readRows(const DatedList& l) const
{
    std::vector<EstTaxRow> rows;
    for (int r = 0; r < l.table->rowCount(); ++r)
        rows.push_back({FieldText(static_cast<QLineEdit*>(l.table->cellWidget(r, 0))),
                        FieldText(static_cast<QLineEdit*>(l.table->cellWidget(r, 1)))});
    return rows;
}

std::vector<EstTaxRow>& EstTaxWindow::rowsOf(const DatedList& l)
{
    return l.list == EstTaxList::Payments ? form_.payments : form_.withholdingRows;
}

void EstTaxWindow::checkField(QLineEdit* edit, FormField<EstTaxForm> field)
{
    checkWhenLeft(edit, [this, field] {
        readForm();
        logic_.fieldLeft(form_, field);
        selectRefused();
    });
}

void EstTaxWindow::checkCell(DatedList& l, QLineEdit* edit)
{
    readForm();
    std::vector<EstTaxRow>& rows = rowsOf(l);
    for (int r = 0; r < l.table->rowCount(); ++r)
        for (int c = 0; c < 2; ++c)
            if (l.table->cellWidget(r, c) == edit) {
                logic_.rowLeft(form_, rows[r], l.list,
                               c == 0 ? &EstTaxRow::date : &EstTaxRow::amount);
                if (rows[r].refused)
                    selectCell(l, r, c);
                rows[r].refused = nullptr;
            }
}

void EstTaxWindow::selectCell(DatedList& l, int row, int column)
{
    l.table->scrollTo(l.table->model()->index(row, column));
    selectAgain(static_cast<QLineEdit*>(l.table->cellWidget(row, column)));
}

void EstTaxWindow::selectRefused()
{
    GuardedDialog::selectRefused(form_, {{&EstTaxForm::taxYear, taxYear_},
                                         {&EstTaxForm::fiscalYearEndMonth, month_},
                                         {&EstTaxForm::currentTax, currentTax_},
                                         {&EstTaxForm::priorTax, priorTax_},
                                         {&EstTaxForm::withholding, withholding_},
                                         {&EstTaxForm::installment1, installments_[0]},
                                         {&EstTaxForm::installment2, installments_[1]},
                                         {&EstTaxForm::installment3, installments_[2]},
                                         {&EstTaxForm::installment4, installments_[3]},
                                         {&EstTaxForm::noticeAndDemand, notice_}});
    for (DatedList* l : {&withheld_, &payments_}) {
        std::vector<EstTaxRow>& rows = rowsOf(*l);
        for (std::size_t r = 0; r < rows.size(); ++r) {
            if (rows[r].refused)
                selectCell(*l, static_cast<int>(r), rows[r].refused == &EstTaxRow::date ? 0 : 1);
            rows[r].refused = nullptr;
        }
    }
}

void EstTaxWindow::readForm()
{
    form_.calculate = calculate_->isYes();
    form_.corporation = corporation_->isChecked();
    form_.taxYear = FieldText(taxYear_);
    form_.fiscalYearEndMonth = FieldText(month_);
    form_.currentTax = FieldText(currentTax_);
    form_.priorTax = FieldText(priorTax_);
    form_.priorYearUsable = priorUsable_->isChecked();
    form_.highIncome = highIncome_->isChecked();
    form_.largeCorporation = largeCorp_->isChecked();
    form_.withholding = FieldText(withholding_);
    form_.withholdingByDate = byDate_->isChecked();
    form_.withholdingRows = readRows(withheld_);
    form_.payments = readRows(payments_);
    form_.ownInstallments = ownInstallments_->isChecked();
    form_.installment1 = FieldText(installments_[0]);
    form_.installment2 = FieldText(installments_[1]);
    form_.installment3 = FieldText(installments_[2]);
    form_.installment4 = FieldText(installments_[3]);
    form_.noticeAndDemand = FieldText(notice_);
}

void EstTaxWindow::showForm()
{
    const QSignalBlocker b1(individual_), b2(corporation_), b3(byDate_), b4(ownInstallments_);
    calculate_->setYes(form_.calculate);
    (form_.corporation ? corporation_ : individual_)->setChecked(true);
    ShowText(taxYear_, form_.taxYear);
    ShowText(month_, form_.fiscalYearEndMonth);
    ShowText(currentTax_, form_.currentTax);
    ShowText(priorTax_, form_.priorTax);
    priorUsable_->setChecked(form_.priorYearUsable);
    highIncome_->setChecked(form_.highIncome);
    largeCorp_->setChecked(form_.largeCorporation);
    ShowText(withholding_, form_.withholding);
    byDate_->setChecked(form_.withholdingByDate);
    ownInstallments_->setChecked(form_.ownInstallments);
    ShowText(installments_[0], form_.installment1);
    ShowText(installments_[1], form_.installment2);
    ShowText(installments_[2], form_.installment3);
    ShowText(installments_[3], form_.installment4);
    ShowText(notice_, form_.noticeAndDemand);

    for (QWidget* w : body_)
        w->setEnabled(form_.calculate);
    monthLabel_->setEnabled(form_.corporation);
    month_->setEnabled(form_.corporation);
    highIncome_->setEnabled(!form_.corporation);
    largeCorp_->setEnabled(form_.corporation);
    for (QWidget* w : {static_cast<QWidget*>(withheld_.table), static_cast<QWidget*>(withheld_.add),
                       static_cast<QWidget*>(withheld_.remove)})
        w->setEnabled(form_.withholdingByDate);
    for (QLineEdit* e : installments_)
        e->setEnabled(form_.ownInstallments);
}

}  // namespace rw::ui
