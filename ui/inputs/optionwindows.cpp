#include "ui/inputs/optionwindows.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace rw::ui {

namespace {

struct YesNo {
    QGroupBox* group;
    QRadioButton* yes;
    QRadioButton* no;
    QVBoxLayout* body;
};

// A group captioned with its question, its Yes and No side by side.
YesNo yesNoGroup(const QString& caption, const QString& name, QWidget* parent)
{
    YesNo g{};
    g.group = new QGroupBox(caption, parent);
    g.group->setObjectName(name);
    g.yes = new QRadioButton(QStringLiteral("Yes"), g.group);
    g.yes->setObjectName(name + QStringLiteral("Yes"));
    g.no = new QRadioButton(QStringLiteral("No"), g.group);
    g.no->setObjectName(name + QStringLiteral("No"));
    g.body = new QVBoxLayout(g.group);
    auto* row = new QHBoxLayout;
    row->addWidget(g.yes);
    row->addWidget(g.no);
    row->addStretch();
    g.body->addLayout(row);
    return g;
}

// A legal caption in bold and, under it, one plain line saying what the
// provision does, so that "*OLD*" and "*NEW*" are not guessed at.
QWidget* legalCaption(const QString& text, const QString& explanation, const QString& name,
                      QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* label = new QLabel(text, box);
    label->setObjectName(name);
    QFont f = label->font();
    f.setBold(true);
    label->setFont(f);
    label->setAlignment(Qt::AlignCenter);
    auto* note = new QLabel(explanation, box);
    note->setObjectName(name + QStringLiteral("Note"));
    note->setWordWrap(true);
    note->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    note->setMinimumWidth(note->fontMetrics().horizontalAdvance(QString(30, QLatin1Char('n'))));
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->addStretch();
    column->addWidget(label);
    column->addWidget(note);
    column->addStretch();
    return box;
}

// OK and Cancel; OK is the default button.
QDialogButtonBox* okCancel(QDialog* dialog, QPushButton*& ok)
{
    const OkCancel buttons = MakeOkCancel(dialog);
    ok = buttons.ok;
    ok->setDefault(true);
    return buttons.box;
}

void setFieldText(QLineEdit* field, const std::string& text)
{
    const QString t = fromCore(text);
    if (field->text() != t)
        field->setText(t);
}

}  // namespace

// ---- Optional Rates ----------------------------------------------------------

OptRatesWindow::OptRatesWindow(Case& c, Messages& msgs, QWidget* parent)
    : InputDialog(parent)
    , logic_(c, msgs)
{
    setObjectName(QStringLiteral("dlgOptRates"));
    setWindowTitle(QStringLiteral("Optional Rates"));

    const YesNo taxMot
        = yesNoGroup(QStringLiteral("Tax Motivated Rates For Returns Due Before 1/1/90"),
                     QStringLiteral("radTaxMot"), this);
    taxMotYes_ = taxMot.yes;
    taxMotNo_ = taxMot.no;

    const YesNo corpUP
        = yesNoGroup(QStringLiteral("Use Large Corporation Underpayment Rate After 12/31/90"),
                     QStringLiteral("radCorpUPRate"), this);
    corpUPYes_ = corpUP.yes;
    corpUPNo_ = corpUP.no;
    corpUPStart_ = new DateField(corpUP.group);
    corpUPStart_->setObjectName(QStringLiteral("CSdtCorpUPRateStart"));
    corpUPLabel_
        = new QLabel(QStringLiteral("Start Date for Corporate Underpayment Rate:"), corpUP.group);
    corpUPLabel_->setBuddy(corpUPStart_);
    {
        auto* row = new QHBoxLayout;
        row->addWidget(corpUPLabel_);
        row->addWidget(corpUPStart_);
        row->addStretch();
        corpUP.body->addLayout(row);
    }

    const YesNo corpOP
        = yesNoGroup(QStringLiteral("Use Large Corporation Overpayment Rate After 12/31/94"),
                     QStringLiteral("radCorpOPRate"), this);
    corpOPYes_ = corpOP.yes;
    corpOPNo_ = corpOP.no;
    corpOPStart_ = new DateField(corpOP.group);
    corpOPStart_->setObjectName(QStringLiteral("CSdtCorpOPRateStart"));
    corpOPLabel_
        = new QLabel(QStringLiteral("Start Date for Corporate Overpayment Rate:"), corpOP.group);
    corpOPLabel_->setBuddy(corpOPStart_);
    {
        auto* row = new QHBoxLayout;
        row->addWidget(corpOPLabel_);
        row->addWidget(corpOPStart_);
        row->addStretch();
        corpOP.body->addLayout(row);
    }

    // The two start date fields line up.
    const int labelWidth
        = std::max(corpUPLabel_->sizeHint().width(), corpOPLabel_->sizeHint().width());
    corpUPLabel_->setMinimumWidth(labelWidth);
    corpOPLabel_->setMinimumWidth(labelWidth);

    QPushButton* ok = nullptr;
    QDialogButtonBox* buttons = okCancel(this, ok);

    // The legal captions stand beside the groups they name: the old 6621(c)
    // (tax-motivated transactions) and the new one (large corporations).
    auto* grid = new QGridLayout;
    grid->addWidget(taxMot.group, 0, 0);
    grid->addWidget(legalCaption(QStringLiteral("6621(c) *OLD*"),
                                 QStringLiteral("Tax-motivated transactions: 120% of the "
                                                "underpayment rate, for interest after 1984 on "
                                                "returns due before 1990."),
                                 QStringLiteral("lblOld6621c"), this),
                    0, 1);
    grid->addWidget(corpUP.group, 1, 0);
    grid->addWidget(corpOP.group, 2, 0);
    grid->addWidget(legalCaption(QStringLiteral("6621(c) *NEW*"),
                                 QStringLiteral("Large corporate underpayments (over $100,000): "
                                                "2 points above the underpayment rate, from "
                                                "1991. Corporate overpayments over $10,000: "
                                                "2.5 points below it, from 1995."),
                                 QStringLiteral("lblNew6621c"), this),
                    1, 1, 2, 1);

    auto* top = new QVBoxLayout(this);
    top->addLayout(grid);
    top->addWidget(buttons);

    setTabOrder(taxMotYes_, taxMotNo_);
    setTabOrder(taxMotNo_, corpUPYes_);
    setTabOrder(corpUPYes_, corpUPNo_);
    setTabOrder(corpUPNo_, corpUPStart_);
    setTabOrder(corpUPStart_, corpOPYes_);
    setTabOrder(corpOPYes_, corpOPNo_);
    setTabOrder(corpOPNo_, corpOPStart_);
    setTabOrder(corpOPStart_, ok);

    guard([&] { form_ = logic_.open(); });
    showForm();

    for (QRadioButton* b : {taxMotYes_, taxMotNo_})
        connect(b, &QRadioButton::clicked, this,
                [this] { guard([&] { logic_.ChkTaxMotDate(); }); });
    for (QRadioButton* b : {corpUPYes_, corpUPNo_})
        connect(b, &QRadioButton::clicked, this, [this] {
            readForm();
            guard([&] { logic_.radCorpUPRateClick(form_); });
            showForm();
        });
    for (QRadioButton* b : {corpOPYes_, corpOPNo_})
        connect(b, &QRadioButton::clicked, this, [this] {
            readForm();
            guard([&] { logic_.radCorpOPRateClick(form_); });
            showForm();
        });
    checkWhenLeft(
        corpUPStart_,
        [this] {
            readForm();
            logic_.ChkCorpUPDate(form_);
            selectRefused();
        },
        true);
    checkWhenLeft(
        corpOPStart_,
        [this] {
            readForm();
            logic_.ChkCorpOPDate(form_);
            selectRefused();
        },
        true);
    onOk(ok, [this] {
        readForm();
        if (logic_.accept(form_))
            accept();
        else
            selectRefused();
    });

    finishSetup();
    (form_.taxMotivated ? taxMotYes_ : taxMotNo_)->setFocus(Qt::OtherFocusReason);
}

void OptRatesWindow::selectRefused()
{
    GuardedDialog::selectRefused(form_, {{&OptRatesForm::corpUPStart, corpUPStart_},
                                         {&OptRatesForm::corpOPStart, corpOPStart_}});
}

void OptRatesWindow::readForm()
{
    form_.taxMotivated = taxMotYes_->isChecked();
    form_.corpUPRate = corpUPYes_->isChecked();
    form_.corpUPStart = toCore(corpUPStart_->text());
    form_.corpOPRate = corpOPYes_->isChecked();
    form_.corpOPStart = toCore(corpOPStart_->text());
}

void OptRatesWindow::showForm()
{
    (form_.taxMotivated ? taxMotYes_ : taxMotNo_)->setChecked(true);
    (form_.corpUPRate ? corpUPYes_ : corpUPNo_)->setChecked(true);
    setFieldText(corpUPStart_, form_.corpUPStart);
    corpUPStart_->setEnabled(form_.corpUPStartEnabled);
    corpUPLabel_->setEnabled(form_.corpUPStartEnabled);
    (form_.corpOPRate ? corpOPYes_ : corpOPNo_)->setChecked(true);
    setFieldText(corpOPStart_, form_.corpOPStart);
    corpOPStart_->setEnabled(form_.corpOPStartEnabled);
    corpOPLabel_->setEnabled(form_.corpOPStartEnabled);
}

// ---- Suspended Interest Inputs -------------------------------------------------

SuspendWindow::SuspendWindow(Case& c, Messages& msgs, QWidget* parent)
    : InputDialog(parent)
    , logic_(c, msgs)
{
    setObjectName(QStringLiteral("dlgSusp"));
    setWindowTitle(QStringLiteral("Suspended Interest Inputs"));

    suspend_ = new DateField(this);
    suspend_->setObjectName(QStringLiteral("CSdtIntSuspend"));
    restart_ = new DateField(this);
    restart_->setObjectName(QStringLiteral("CSdtRestart"));
    auto* suspendLabel = new QLabel(QStringLiteral("Date Interest Is Suspended:"), this);
    suspendLabel->setBuddy(suspend_);
    auto* restartLabel = new QLabel(QStringLiteral("Date Suspended Interest Is Restarted:"), this);
    restartLabel->setBuddy(restart_);

    QPushButton* ok = nullptr;
    QDialogButtonBox* buttons = okCancel(this, ok);

    auto* grid = new QGridLayout;
    grid->addWidget(suspendLabel, 0, 0);
    grid->addWidget(suspend_, 0, 1);
    grid->addWidget(restartLabel, 1, 0);
    grid->addWidget(restart_, 1, 1);
    auto* top = new QVBoxLayout(this);
    top->addLayout(grid);
    top->addSpacing(6);
    top->addWidget(buttons);
    setTabOrder(suspend_, restart_);
    setTabOrder(restart_, ok);

    guard([&] { form_ = logic_.open(); });
    setFieldText(suspend_, form_.suspendDate);
    setFieldText(restart_, form_.restartDate);

    const auto react = [this](void (SuspendDialog::*reaction)(SuspendForm&) const) {
        return [this, reaction] {
            readForm();
            (logic_.*reaction)(form_);
            selectRefused();
        };
    };
    checkWhenLeft(suspend_, react(&SuspendDialog::suspendChanged), true);
    checkWhenLeft(restart_, react(&SuspendDialog::restartChanged), true);
    onOk(ok, [this] {
        readForm();
        if (logic_.accept(form_))
            accept();
        else
            selectRefused();
    });

    finishSetup();
    suspend_->setFocus(Qt::OtherFocusReason);
}

void SuspendWindow::readForm()
{
    form_.suspendDate = toCore(suspend_->text());
    form_.restartDate = toCore(restart_->text());
}

void SuspendWindow::selectRefused()
{
    GuardedDialog::selectRefused(
        form_, {{&SuspendForm::suspendDate, suspend_}, {&SuspendForm::restartDate, restart_}});
}

// ---- Extended Due Date ------------------------------------------------------------

ExtDueDateWindow::ExtDueDateWindow(Case& c, Messages& msgs, QWidget* parent)
    : InputDialog(parent)
    , logic_(c, msgs)
{
    setObjectName(QStringLiteral("dlgExtIP"));
    setWindowTitle(QStringLiteral("Extended Due Date"));

    extended_ = new DateField(this);
    extended_->setObjectName(QStringLiteral("txtExtended"));
    auto* label = new QLabel(QStringLiteral("Date Return Extended To:"), this);
    label->setBuddy(extended_);
    auto* note = new QLabel(
        QStringLiteral(
            "The interest on this penalty runs from the extended due date of the return."),
        this);
    note->setObjectName(QStringLiteral("lblNote"));
    note->setWordWrap(true);
    note->setMinimumWidth(fontMetrics().horizontalAdvance(QString(44, QLatin1Char('n'))));

    QPushButton* ok = nullptr;
    QDialogButtonBox* buttons = okCancel(this, ok);

    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(extended_);
    row->addStretch();
    auto* top = new QVBoxLayout(this);
    top->addLayout(row);
    top->addWidget(note);
    top->addSpacing(6);
    top->addWidget(buttons);
    setTabOrder(extended_, ok);

    guard([&] { form_ = logic_.open(); });
    setFieldText(extended_, form_.extended);

    checkWhenLeft(extended_, [this] {
        if (!isVisible())
            return;
        form_.extended = toCore(extended_->text());
        logic_.extendedLeft(form_);
        selectRefused();
    });
    onOk(ok, [this] {
        form_.extended = toCore(extended_->text());
        if (logic_.accept(form_))
            accept();
        else
            selectRefused();
    });

    finishSetup();
    extended_->setFocus(Qt::OtherFocusReason);
}

void ExtDueDateWindow::selectRefused()
{
    GuardedDialog::selectRefused(form_, {{&ExtDueDateForm::extended, extended_}});
}

}  // namespace rw::ui
