#include "ui/penalties/penaltywindows.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpacerItem>
#include <QVBoxLayout>

namespace rw::ui {

namespace {

QDialogButtonBox* okCancel(QWidget* parent, QPushButton*& ok, QPushButton*& cancel)
{
    auto* buttons = new QDialogButtonBox(parent);
    ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("btnOK"));
    cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("btnCancel"));
    return buttons;
}

QFormLayout* formLayout()
{
    auto* f = new QFormLayout;
    f->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    f->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    return f;
}

void enable(bool on, std::initializer_list<QWidget*> widgets)
{
    for (QWidget* w : widgets)
        w->setEnabled(on);
}

}  // namespace

// ---- Failure To File ----------------------------------------------------------------

FtoFileWindow::FtoFileWindow(FtoFileDialog& logic, QWidget* parent)
    : PenaltyDialog(logic, parent)
{
    setObjectName(QStringLiteral("dlgInpFToF"));
    setWindowTitle(QStringLiteral("Failure To File Penalty Inputs"));

    calculate_ = new YesNoChoice(QStringLiteral("Calculate Failure To File Penalty"), this);
    calculate_->setObjectName(QStringLiteral("radCalcPen"));
    assess_ = new DateField(this);
    assess_->setObjectName(QStringLiteral("txtAssess"));
    filed_ = new DateField(this);
    filed_->setObjectName(QStringLiteral("txtFiled"));
    assessLabel_ = new QLabel(QStringLiteral("Date Penalty Assessed:"), this);
    filedLabel_ = new QLabel(QStringLiteral("Date Return Filed:"), this);

    auto* fields = formLayout();
    fields->addRow(assessLabel_, assess_);
    fields->addRow(filedLabel_, filed_);
    QPushButton* ok = nullptr;
    QPushButton* cancel = nullptr;
    auto* buttons = okCancel(this, ok, cancel);

    auto* top = new QVBoxLayout(this);
    top->addWidget(calculate_);
    top->addLayout(fields);
    top->addSpacing(6);
    top->addWidget(buttons);

    setTabOrder(calculate_->yesButton(), calculate_->noButton());
    setTabOrder(calculate_->noButton(), assess_);
    setTabOrder(assess_, filed_);
    setTabOrder(filed_, ok);
    setTabOrder(ok, cancel);

    connect(calculate_, &YesNoChoice::changed, this, [this] {
        guard([this] {
            readForm();
            FtoFileDialog::choiceChanged(form_);
            showForm();
        });
    });
    react(assess_, &FtoFileDialog::assessLeft);
    react(filed_, &FtoFileDialog::filedLeft);
    connectOk(ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    guard([this] { form_ = logic_.open(); });
    showForm();
    finishSetup();
    (calculate_->isYes() ? calculate_->yesButton() : calculate_->noButton())
        ->setFocus(Qt::OtherFocusReason);
}

void FtoFileWindow::selectRefused()
{
    GuardedDialog::selectRefused(
        form_, {{&FtoFileForm::assessDate, assess_}, {&FtoFileForm::filedDate, filed_}});
}

void FtoFileWindow::readForm()
{
    form_.calculate = calculate_->isYes();
    form_.assessDate = FieldText(assess_);
    form_.filedDate = FieldText(filed_);
}

void FtoFileWindow::showForm()
{
    calculate_->setYes(form_.calculate);
    ShowText(assess_, form_.assessDate);
    ShowText(filed_, form_.filedDate);
    enable(form_.datesEnabled, {assess_, filed_, assessLabel_, filedLabel_});
}

// ---- Failure To Pay -------------------------------------------------------------------

FtoPayWindow::FtoPayWindow(FtoPayDialog& logic, QWidget* parent)
    : PenaltyDialog(logic, parent)
{
    setObjectName(QStringLiteral("dlgInpFToP"));
    setWindowTitle(QStringLiteral("Failure To Pay Inputs"));

    calculate_ = new YesNoChoice(QStringLiteral("Calculate Failure To Pay Penalty"), this);
    calculate_->setObjectName(QStringLiteral("radCalcPen"));
    assess_ = new DateField(this);
    assess_->setObjectName(QStringLiteral("txtAssess"));
    amount_ = new MoneyField(this);
    amount_->setObjectName(QStringLiteral("txtAmtOnRet"));
    increased_ = new YesNoChoice(
        QStringLiteral("Calculate \u00A76651(d)(1) Increased Failure To Pay Rate"), this);
    increased_->setObjectName(QStringLiteral("rad6651d1"));
    start_ = new DateField(this);
    start_->setObjectName(QStringLiteral("txt6651d1Start"));
    assessLabel_ = new QLabel(QStringLiteral("Assessment Date:"), this);
    amountLabel_ = new QLabel(QStringLiteral("Amount Shown on Return:"), this);
    startLabel_ = new QLabel(QStringLiteral("Date for Starting Increased Rate:"), this);
    startLabel_->setObjectName(QStringLiteral("lbl6651d1"));
    note_ = new QLabel(fromCore(kIncreasedRateNote), this);
    note_->setObjectName(QStringLiteral("lbl6651d1Note"));
    note_->setWordWrap(true);

    // One form, so that the fields of both choices line up.
    auto* fields = formLayout();
    fields->addRow(calculate_);
    fields->addRow(assessLabel_, assess_);
    fields->addRow(amountLabel_, amount_);
    fields->addItem(new QSpacerItem(0, 6));
    fields->addRow(increased_);
    fields->addRow(startLabel_, start_);
    fields->addRow(note_);
    QPushButton* ok = nullptr;
    QPushButton* cancel = nullptr;
    auto* buttons = okCancel(this, ok, cancel);

    auto* top = new QVBoxLayout(this);
    top->addLayout(fields);
    top->addSpacing(6);
    top->addWidget(buttons);

    setTabOrder(calculate_->yesButton(), calculate_->noButton());
    setTabOrder(calculate_->noButton(), assess_);
    setTabOrder(assess_, amount_);
    setTabOrder(amount_, increased_->yesButton());
    setTabOrder(increased_->yesButton(), increased_->noButton());
    setTabOrder(increased_->noButton(), start_);
    setTabOrder(start_, ok);
    setTabOrder(ok, cancel);

    connect(calculate_, &YesNoChoice::changed, this, [this] {
        guard([this] {
            readForm();
            FtoPayDialog::choiceChanged(form_);
            showForm();
        });
    });
    connect(increased_, &YesNoChoice::changed, this, [this] {
        guard([this] {
            readForm();
            FtoPayDialog::increasedChoiceChanged(form_);
            showForm();
        });
    });
    react(assess_, &FtoPayDialog::assessLeft);
    react(amount_, &FtoPayDialog::amountLeft);
    react(start_, &FtoPayDialog::increasedStartLeft);
    connectOk(ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    guard([this] { form_ = logic_.open(); });
    showForm();
    finishSetup();
    (calculate_->isYes() ? calculate_->yesButton() : calculate_->noButton())
        ->setFocus(Qt::OtherFocusReason);
}

void FtoPayWindow::selectRefused()
{
    GuardedDialog::selectRefused(form_, {{&FtoPayForm::assessDate, assess_},
                                         {&FtoPayForm::amountOnReturn, amount_},
                                         {&FtoPayForm::increasedStartDate, start_}});
}

void FtoPayWindow::readForm()
{
    form_.calculate = calculate_->isYes();
    form_.assessDate = FieldText(assess_);
    form_.amountOnReturn = FieldText(amount_);
    form_.increasedRate = increased_->isYes();
    form_.increasedStartDate = FieldText(start_);
}

void FtoPayWindow::showForm()
{
    calculate_->setYes(form_.calculate);
    ShowText(assess_, form_.assessDate);
    ShowText(amount_, form_.amountOnReturn);
    increased_->setYes(form_.increasedRate);
    ShowText(start_, form_.increasedStartDate);
    enable(form_.assessEnabled, {assess_, assessLabel_});
    enable(form_.amountEnabled, {amount_, amountLabel_});
    increased_->setEnabled(form_.increasedChoiceEnabled);
    increased_->setVisible(form_.increasedChoiceVisible);
    enable(form_.increasedStartEnabled, {start_, startLabel_});
    note_->setVisible(form_.noteVisible);
}

// ---- Accuracy Related -------------------------------------------------------------------

AccRelWindow::AccRelWindow(AccRelDialog& logic, QWidget* parent)
    : PenaltyDialog(logic, parent)
{
    setObjectName(QStringLiteral("dlgInpAcc"));
    setWindowTitle(QStringLiteral("Accuracy Related Penalty"));

    calculate_ = new YesNoChoice(QStringLiteral("Calculate Accuracy Related Penalty"), this);
    calculate_->setObjectName(QStringLiteral("CSOptAcc"));
    auto* section = new QLabel(QStringLiteral("\u00A76662"), this);
    QFont bold = section->font();
    bold.setBold(true);
    section->setFont(bold);
    underpaymentLabel_ = new QLabel(QStringLiteral("Accuracy Related Underpayment:"), this);
    underpayment_ = new MoneyField(this);
    underpayment_->setObjectName(QStringLiteral("CScurUnderPmt"));

    auto* frame = new QGroupBox(QStringLiteral("Penalty Rate"), this);
    frame->setObjectName(QStringLiteral("fraPenaltyRate"));
    normal_ = new QRadioButton(QStringLiteral("Normal Accuracy Related Penalty Rate"), frame);
    normal_->setObjectName(QStringLiteral("optNormalRate"));
    economic_ = new QRadioButton(QStringLiteral("Economic Substance Penalty Rate"), frame);
    economic_->setObjectName(QStringLiteral("optEconomicSubstanceRate"));
    other_ = new QRadioButton(QStringLiteral("Use a different penalty rate."), frame);
    other_->setObjectName(QStringLiteral("optOtherRate"));
    rateLabel_ = new QLabel(QStringLiteral("Accuracy Related Penalty Rate (20%=.2):"), frame);
    rateLabel_->setObjectName(QStringLiteral("lblAccuracyRelatedPenaltyRate"));
    rate_ = new QLineEdit(frame);
    rate_->setObjectName(QStringLiteral("txtAccuracyRelatedPenaltyRate"));
    rate_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    rate_->setMaximumWidth(rate_->fontMetrics().horizontalAdvance(QStringLiteral("0.000000")) + 16);
    auto* rateRow = formLayout();
    rateRow->addRow(rateLabel_, rate_);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->addWidget(normal_);
    frameLayout->addWidget(economic_);
    frameLayout->addWidget(other_);
    frameLayout->addLayout(rateRow);

    notes_ = new QPlainTextEdit(this);
    notes_->setObjectName(QStringLiteral("txtAccNotes"));
    notes_->setReadOnly(true);
    notes_->setFocusPolicy(Qt::NoFocus);
    notes_->setMinimumHeight(notes_->fontMetrics().lineSpacing() * 4 + 14);
    notes_->setMaximumHeight(notes_->fontMetrics().lineSpacing() * 5 + 14);

    auto* amountRow = formLayout();
    amountRow->addRow(section);
    amountRow->addRow(underpaymentLabel_, underpayment_);
    QPushButton* ok = nullptr;
    QPushButton* cancel = nullptr;
    auto* buttons = okCancel(this, ok, cancel);

    auto* top = new QVBoxLayout(this);
    top->addWidget(calculate_);
    top->addLayout(amountRow);
    top->addWidget(frame);
    top->addWidget(notes_);
    top->addWidget(buttons);

    setTabOrder(calculate_->yesButton(), calculate_->noButton());
    setTabOrder(calculate_->noButton(), underpayment_);
    setTabOrder(underpayment_, normal_);
    setTabOrder(normal_, economic_);
    setTabOrder(economic_, other_);
    setTabOrder(other_, rate_);
    setTabOrder(rate_, ok);
    setTabOrder(ok, cancel);
    setMinimumWidth(sizeHint().width());

    connect(calculate_, &YesNoChoice::changed, this, [this] {
        guard([this] {
            readForm();
            logic_.calculateChanged(form_);
            showForm();
        });
    });
    for (QRadioButton* r : {normal_, economic_, other_})
        connect(r, &QRadioButton::clicked, this, [this] {
            guard([this] {
                readForm();
                AccRelDialog::rateChoiceClicked(form_);
                showForm();
            });
        });
    hintOnFocus(underpayment_, AccRelField::Underpayment);
    hintOnFocus(normal_, AccRelField::NormalRate);
    hintOnFocus(economic_, AccRelField::EconomicSubstanceRate);
    hintOnFocus(other_, AccRelField::OtherRate);
    hintOnFocus(rate_, AccRelField::Rate);
    react(underpayment_, &AccRelDialog::underpaymentLeft);
    connectOk(ok);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    guard([this] { form_ = logic_.open(); });
    showForm();
    finishSetup();
    (calculate_->isYes() ? calculate_->yesButton() : calculate_->noButton())
        ->setFocus(Qt::OtherFocusReason);
}

void AccRelWindow::hintOnFocus(QWidget* w, AccRelField field)
{
    whenEntered(w, [this, field] {
        readForm();
        AccRelDialog::focusEntered(form_, field);
        showForm();
    });
}

void AccRelWindow::selectRefused()
{
    GuardedDialog::selectRefused(
        form_, {{&AccRelForm::underpayment, underpayment_}, {&AccRelForm::rate, rate_}});
}

void AccRelWindow::readForm()
{
    form_.calculate = calculate_->isYes();
    form_.underpayment = FieldText(underpayment_);
    form_.rateChoice = economic_->isChecked() ? AccRelRateChoice::EconomicSubstance
                       : other_->isChecked()  ? AccRelRateChoice::Other
                                              : AccRelRateChoice::Normal;
    form_.rate = FieldText(rate_);
}

void AccRelWindow::showForm()
{
    calculate_->setYes(form_.calculate);
    ShowText(underpayment_, form_.underpayment);
    enable(form_.underpaymentEnabled, {underpayment_, underpaymentLabel_});
    switch (form_.rateChoice) {
    case AccRelRateChoice::Normal:
        normal_->setChecked(true);
        break;
    case AccRelRateChoice::EconomicSubstance:
        economic_->setChecked(true);
        break;
    case AccRelRateChoice::Other:
        other_->setChecked(true);
        break;
    }
    ShowText(rate_, form_.rate);
    enable(form_.rateEnabled, {rate_, rateLabel_});
    const QString note = fromCore(form_.note);
    if (notes_->toPlainText() != note)
        notes_->setPlainText(note);
    if (form_.focusRate) {
        form_.focusRate = false;
        rate_->setFocus(Qt::OtherFocusReason);
    }
}

}  // namespace rw::ui
