#include "ui/lists/chargewindows.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpacerItem>
#include <QVBoxLayout>

namespace rw::ui {

// ---- Addition To Tax -------------------------------------------------------------

ChargeInfoWindow::ChargeInfoWindow(const ChargeDialog& logic, ChargeForm& form, QWidget* parent)
    : GuardedDialog(parent)
    , logic_(logic)
    , form_(form)
{
    setObjectName(QStringLiteral("dlgChrgInd"));
    setWindowTitle(QStringLiteral("Addition To Tax"));

    desc_ = new QLineEdit(this);
    desc_->setObjectName(QStringLiteral("CStxtDesc"));
    desc_->setMaxLength(16);
    desc_->setMinimumWidth(
        desc_->fontMetrics().horizontalAdvance(QStringLiteral("MMMMMMMMMMMMMMMM")) + 12);
    liability_ = new DateField(this);
    liability_->setObjectName(QStringLiteral("CSdtLiab"));
    interestStart_ = new DateField(this);
    interestStart_->setObjectName(QStringLiteral("CSdtIntStart"));
    total_ = new MoneyField(this);
    total_->setObjectName(QStringLiteral("CScurChrg"));
    tax_ = new MoneyField(this);
    tax_->setObjectName(QStringLiteral("CScurTax"));
    penalties_ = new MoneyField(this);
    penalties_->setObjectName(QStringLiteral("CScurPen"));
    balance_ = new QLabel(this);
    balance_->setObjectName(QStringLiteral("CSLblBalance"));

    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->addRow(QStringLiteral("Description of Charge:"), desc_);
    fields->addRow(QStringLiteral("Date of Liability:"), liability_);
    fields->addRow(QStringLiteral("Date Interest Runs on Charge:"), interestStart_);
    fields->addRow(QStringLiteral("Total Charge:"), total_);

    auto* heading = new QLabel(QStringLiteral("Indicate How Charge Was Allocated --"), this);
    fields->addItem(new QSpacerItem(0, 6));
    fields->addRow(heading);
    fields->addRow(QStringLiteral("Applied As Tax:"), tax_);
    fields->addRow(QStringLiteral("Applied As Penalties:"), penalties_);
    fields->addRow(QString(), balance_);

    const OkCancel okCancel = MakeOkCancel(this);
    QDialogButtonBox* buttons = okCancel.box;
    QPushButton* ok = okCancel.ok;
    QPushButton* cancel = okCancel.cancel;

    auto* top = new QVBoxLayout(this);
    top->addLayout(fields);
    top->addSpacing(6);
    top->addWidget(buttons);

    setTabOrder(desc_, liability_);
    setTabOrder(liability_, interestStart_);
    setTabOrder(interestStart_, total_);
    setTabOrder(total_, tax_);
    setTabOrder(tax_, penalties_);
    setTabOrder(penalties_, ok);
    setTabOrder(ok, cancel);

    for (QLineEdit* e : {static_cast<QLineEdit*>(total_), static_cast<QLineEdit*>(tax_),
                         static_cast<QLineEdit*>(penalties_)})
        connect(e, &QLineEdit::textEdited, this, [this] {
            guard([this] {
                readForm();
                ChargeDialog::calcUnallocCharge(form_);
                showForm();
            });
        });
    checkWhenLeft(liability_, [this] {
        readForm();
        logic_.liabilityLeft(form_);
        showForm();
    });
    using Bound = std::pair<FormField<ChargeForm>, QLineEdit*>;
    for (const auto& [field, edit] : {Bound{&ChargeForm::interestDate, interestStart_},
                                      {&ChargeForm::total, total_},
                                      {&ChargeForm::toTax, tax_},
                                      {&ChargeForm::toPenalties, penalties_}})
        checkWhenLeft(edit, [this, field] {
            readForm();
            logic_.fieldLeft(form_, field);
            showForm();
        });
    onOk(ok, [this] {
        readForm();
        if (logic_.okAllowed(form_))
            accept();
        else
            showForm();
    });

    showForm();
    finishSetup();
    desc_->setFocus(Qt::OtherFocusReason);
}

void ChargeInfoWindow::readForm()
{
    form_.description = FieldText(desc_);
    form_.liabilityDate = FieldText(liability_);
    form_.interestDate = FieldText(interestStart_);
    form_.total = FieldText(total_);
    form_.toTax = FieldText(tax_);
    form_.toPenalties = FieldText(penalties_);
}

void ChargeInfoWindow::showForm()
{
    ShowText(desc_, form_.description);
    ShowText(liability_, form_.liabilityDate);
    ShowText(interestStart_, form_.interestDate);
    ShowText(total_, form_.total);
    ShowText(tax_, form_.toTax);
    ShowText(penalties_, form_.toPenalties);
    ShowLabel(balance_, form_.unallocatedLabel, QStringLiteral("Unallocated:"));
    selectRefused(form_, {{&ChargeForm::liabilityDate, liability_},
                          {&ChargeForm::interestDate, interestStart_},
                          {&ChargeForm::total, total_},
                          {&ChargeForm::toTax, tax_},
                          {&ChargeForm::toPenalties, penalties_}});
}

// ---- Other Charges ------------------------------------------------------------------

ChargesWindow::ChargesWindow(CommandContext& ctx)
    : ListDialog(ctx.parent, QStringLiteral("lstChrg"),
                 QStringLiteral("Date of Liability  && Desc.:"),
                 QStringLiteral("00/00/0000 MMMMMMMMMMMMMMMM"))
    , chargeLogic_(ctx.kase, ctx.msgs)
{
    setObjectName(QStringLiteral("dlgChrgAll"));
    setWindowTitle(QStringLiteral("Other Charges"));

    logic_ = std::make_unique<ChargesDialog>(ctx.kase, ctx.msgs, [this](ChargeForm& f) {
        ChargeInfoWindow dlg(chargeLogic_, f, this);
        return dlg.run();
    });

    auto* top = new QVBoxLayout(this);
    top->addLayout(listArea());
    connectCommands(
        {[this] { logic_->add(form_); }, [this](int line) { logic_->edit(form_, line); },
         [this](int line) { logic_->remove(form_, line); }, nullptr, [this] { showList(); }});

    guard([this] { form_ = logic_->open(); });
    showList();
    finishSetup();
    list_->setFocus(Qt::OtherFocusReason);
}

ChargesWindow::~ChargesWindow() = default;

void ChargesWindow::showList()
{
    showLines(form_.lines, form_.editEnabled, form_.deleteEnabled);
}

}  // namespace rw::ui
