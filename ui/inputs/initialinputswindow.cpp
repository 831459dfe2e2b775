#include "ui/inputs/initialinputswindow.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace rw::ui {

namespace {

QLabel* fieldLabel(const QString& text, QWidget* buddy, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setBuddy(buddy);
    return label;
}

void keepPlaceWhenHidden(QWidget* w)
{
    QSizePolicy p = w->sizePolicy();
    p.setRetainSizeWhenHidden(true);
    w->setSizePolicy(p);
}

}  // namespace

InitialInputsWindow::InitialInputsWindow(Case& c, RateTable& rates, const Paths& paths,
                                         Messages& msgs, RateCurrencyServices currency,
                                         QWidget* parent)
    : InputDialog(parent)
    , logic_(c, rates, paths, msgs)
    , currency_(currency)
{
    setObjectName(QStringLiteral("dlgInit"));
    setWindowTitle(QStringLiteral("Initial Inputs"));

    name_ = new QLineEdit(this);
    name_->setObjectName(QStringLiteral("txtName"));
    name_->setMaxLength(52);
    name_->setMinimumWidth(name_->fontMetrics().horizontalAdvance(QString(40, QLatin1Char('M'))));
    secondLine_ = new QLineEdit(this);
    secondLine_->setObjectName(QStringLiteral("txt2ndLine"));
    secondLine_->setMaxLength(52);

    authority_ = new QComboBox(this);
    authority_->setObjectName(QStringLiteral("lstTaxingAuthority"));
    for (const std::string& n : InitialInputsDialog::AuthorityNames())
        authority_->addItem(fromCore(n));
    authority_->setMaxVisibleItems(15);

    due_ = new DateField(this);
    due_->setObjectName(QStringLiteral("txtDueDate"));
    start_ = new DateField(this);
    start_->setObjectName(QStringLiteral("txtStart"));
    stop_ = new DateField(this);
    stop_->setObjectName(QStringLiteral("txtStop"));

    auto* startGroup = new QGroupBox(QStringLiteral("Starting Situation"), this);
    startGroup->setObjectName(QStringLiteral("radStart"));
    underpayment_ = new QRadioButton(QStringLiteral("&Underpayment"), startGroup);
    underpayment_->setObjectName(QStringLiteral("radStartUnderpayment"));
    overpayment_ = new QRadioButton(QStringLiteral("O&verpayment"), startGroup);
    overpayment_->setObjectName(QStringLiteral("radStartOverpayment"));
    auto* startBox = new QVBoxLayout(startGroup);
    startBox->addWidget(underpayment_);
    startBox->addWidget(overpayment_);

    balance_ = new MoneyField(this);
    balance_->setObjectName(QStringLiteral("txtInitBal"));

    stopDays_ = new QLineEdit(this);
    stopDays_->setObjectName(QStringLiteral("txtStopDays"));
    stopDays_->setMaxLength(2);
    stopDays_->setValidator(new QIntValidator(0, 99, stopDays_));
    stopDays_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    stopDays_->setFixedWidth(stopDays_->fontMetrics().horizontalAdvance(QStringLiteral("0000"))
                             + 12);
    stopDaysLabel_ = fieldLabel(
        QStringLiteral("Number of Days Before Check Date Interest Is To Stop on Refund(0-30):"),
        stopDays_, this);
    stopDaysLabel_->setObjectName(QStringLiteral("lblStopDays"));
    stopDaysLabel_->setWordWrap(true);
    keepPlaceWhenHidden(stopDaysLabel_);
    keepPlaceWhenHidden(stopDays_);

    auto* payrollGroup = new QGroupBox(QStringLiteral("Payroll Tax"), this);
    payrollGroup->setObjectName(QStringLiteral("radPR"));
    payrollYes_ = new QRadioButton(QStringLiteral("Yes"), payrollGroup);
    payrollYes_->setObjectName(QStringLiteral("radPRYes"));
    payrollNo_ = new QRadioButton(QStringLiteral("No"), payrollGroup);
    payrollNo_->setObjectName(QStringLiteral("radPRNo"));
    auto* payrollBox = new QHBoxLayout(payrollGroup);
    payrollBox->addWidget(payrollYes_);
    payrollBox->addWidget(payrollNo_);
    payrollBox->addStretch();

    corporate_ = new QCheckBox(QStringLiteral("Corporate Taxpayer"), this);
    corporate_->setObjectName(QStringLiteral("chkCorpTaxpayer"));

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton(QStringLiteral("&OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("btnOK"));
    ok->setDefault(true);
    auto* cancel = buttons->addButton(QStringLiteral("&Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("btnCancel"));

    // Taxpayer block and dates above, the balance block below.
    auto* grid = new QGridLayout;
    int row = 0;
    grid->addWidget(fieldLabel(QStringLiteral("Taxpayer:"), name_, this), row, 0);
    grid->addWidget(name_, row++, 1, 1, 3);
    grid->addWidget(fieldLabel(QStringLiteral("Optional 2nd Line:"), secondLine_, this), row, 0);
    grid->addWidget(secondLine_, row++, 1, 1, 3);
    grid->addWidget(fieldLabel(QStringLiteral("Rate Table:"), authority_, this), row, 0);
    grid->addWidget(authority_, row++, 1, 1, 2);
    grid->addWidget(fieldLabel(QStringLiteral("Due Date of Return:"), due_, this), row, 0);
    grid->addWidget(due_, row++, 1, Qt::AlignLeft);
    grid->addWidget(fieldLabel(QStringLiteral("Start Calculation:"), start_, this), row, 0);
    grid->addWidget(start_, row++, 1, Qt::AlignLeft);
    grid->addWidget(fieldLabel(QStringLiteral("End Calculation:"), stop_, this), row, 0);
    grid->addWidget(stop_, row++, 1, Qt::AlignLeft);
    grid->setColumnStretch(3, 1);

    auto* balanceGrid = new QGridLayout;
    balanceGrid->addWidget(startGroup, 0, 0, 2, 1);
    balanceGrid->addWidget(fieldLabel(QStringLiteral("Intitial Balance:"), balance_, this), 0, 1);
    balanceGrid->addWidget(balance_, 0, 2);
    balanceGrid->addWidget(stopDaysLabel_, 1, 1);
    balanceGrid->addWidget(stopDays_, 1, 2, Qt::AlignLeft | Qt::AlignVCenter);
    balanceGrid->addWidget(payrollGroup, 2, 0);
    balanceGrid->addWidget(corporate_, 2, 1, 1, 2, Qt::AlignLeft | Qt::AlignVCenter);
    balanceGrid->setColumnStretch(1, 1);
    stopDaysLabel_->setMinimumWidth(
        stopDaysLabel_->fontMetrics().horizontalAdvance(QString(34, QLatin1Char('n'))));

    auto* top = new QVBoxLayout(this);
    top->addLayout(grid);
    top->addSpacing(6);
    top->addLayout(balanceGrid);
    top->addSpacing(6);
    top->addWidget(buttons);

    // The tab order is the order of the fields above.
    setTabOrder(name_, secondLine_);
    setTabOrder(secondLine_, authority_);
    setTabOrder(authority_, due_);
    setTabOrder(due_, start_);
    setTabOrder(start_, stop_);
    setTabOrder(stop_, underpayment_);
    setTabOrder(underpayment_, overpayment_);
    setTabOrder(overpayment_, balance_);
    setTabOrder(balance_, stopDays_);
    setTabOrder(stopDays_, payrollYes_);
    setTabOrder(payrollYes_, payrollNo_);
    setTabOrder(payrollNo_, corporate_);
    setTabOrder(corporate_, ok);
    setTabOrder(ok, cancel);

    guard([&] { form_ = logic_.open(); });
    showForm();

    connect(overpayment_, &QRadioButton::toggled, this, [this] {
        readForm();
        InitialInputsDialog::startSituationChanged(form_);
        showForm();
    });
    connect(payrollYes_, &QRadioButton::clicked, this, [this] {
        readForm();
        guard([&] { logic_.payrollClicked(form_); });
    });
    connect(payrollNo_, &QRadioButton::clicked, this, [this] {
        readForm();
        guard([&] { logic_.payrollClicked(form_); });
    });
    for (DateField* field : {due_, start_, stop_})
        checkWhenLeft(field, [this, field] { dateLeft(field); });
    checkWhenLeft(balance_, [this] {
        readForm();
        logic_.balanceLeft(form_);
        selectRefused();
    });
    onOk(ok, [this] { okClicked(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    finishSetup();
    name_->setFocus(Qt::OtherFocusReason);
}

void InitialInputsWindow::readForm()
{
    form_.name = toCore(name_->text());
    form_.secondLine = toCore(secondLine_->text());
    form_.authority = authority_->currentIndex();
    form_.dueDate = toCore(due_->text());
    form_.startDate = toCore(start_->text());
    form_.stopDate = toCore(stop_->text());
    form_.overpayment = overpayment_->isChecked();
    form_.initialBalance = toCore(balance_->text());
    form_.stopDays = toCore(stopDays_->text());
    form_.payroll = payrollYes_->isChecked();
    form_.corporate = corporate_->isChecked();
}

void InitialInputsWindow::showForm()
{
    const auto setText = [](QLineEdit* field, const std::string& text) {
        const QString t = fromCore(text);
        if (field->text() != t)
            field->setText(t);
    };
    setText(name_, form_.name);
    setText(secondLine_, form_.secondLine);
    authority_->setCurrentIndex(form_.authority);
    setText(due_, form_.dueDate);
    setText(start_, form_.startDate);
    setText(stop_, form_.stopDate);
    {
        const QSignalBlocker block(overpayment_);
        (form_.overpayment ? overpayment_ : underpayment_)->setChecked(true);
    }
    setText(balance_, form_.initialBalance);
    setText(stopDays_, form_.stopDays);
    stopDaysLabel_->setVisible(form_.stopDaysVisible);
    stopDays_->setVisible(form_.stopDaysVisible);
    (form_.payroll ? payrollYes_ : payrollNo_)->setChecked(true);
    corporate_->setChecked(form_.corporate);
}

void InitialInputsWindow::selectRefused()
{
    GuardedDialog::selectRefused(form_, {{&InitialInputsForm::dueDate, due_},
                                         {&InitialInputsForm::startDate, start_},
                                         {&InitialInputsForm::stopDate, stop_},
                                         {&InitialInputsForm::initialBalance, balance_},
                                         {&InitialInputsForm::stopDays, stopDays_}});
}

void InitialInputsWindow::dateLeft(QLineEdit* field)
{
    if (!isVisible() || outcome_ == Outcome::ProgramEnded)
        return;
    readForm();
    const auto member = field == due_     ? &InitialInputsForm::dueDate
                        : field == start_ ? &InitialInputsForm::startDate
                                          : &InitialInputsForm::stopDate;
    logic_.dateLeft(form_, member);
    if (form_.refused) {
        selectRefused();
        return;
    }
    // A stop date past the rates of the release is met by the rate currency alert.
    if (field == stop_
        && !RunRateCurrencyCheck(form_.stopDate, currency_.release, currency_.window,
                                 currency_.program)) {
        // The program is ending: nothing more is done here.
        outcome_ = Outcome::ProgramEnded;
        reject();
    }
}

void InitialInputsWindow::okClicked()
{
    if (outcome_ == Outcome::ProgramEnded)
        return;
    readForm();
    guard([&] {
        switch (logic_.accept(form_)) {
        case InitialInputsDialog::Result::KeepOpen:
            selectRefused();
            return;
        case InitialInputsDialog::Result::Stored:
            outcome_ = Outcome::Stored;
            break;
        case InitialInputsDialog::Result::SaveAndExit:
            outcome_ = Outcome::SaveAndExit;
            break;
        }
        accept();
    });
}

}  // namespace rw::ui
