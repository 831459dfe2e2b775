#include "ui/lists/paymentwindows.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QElapsedTimer>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace rw::ui {

// ---- Payment Information -----------------------------------------------------

PaymentInfoWindow::PaymentInfoWindow(const PaymentDialog& logic, PaymentForm& form, QWidget* parent)
    : GuardedDialog(parent)
    , logic_(logic)
    , form_(form)
{
    setObjectName(QStringLiteral("dlgPmtInd"));
    setWindowTitle(QStringLiteral("Payment Information"));

    desc_ = new QLineEdit(this);
    desc_->setObjectName(QStringLiteral("CStxtDesc"));
    desc_->setMaxLength(16);
    desc_->setMinimumWidth(
        desc_->fontMetrics().horizontalAdvance(QStringLiteral("MMMMMMMMMMMMMMMM")) + 12);
    date_ = new DateField(this);
    date_->setObjectName(QStringLiteral("CSdtPmt"));
    amount_ = new MoneyField(this);
    amount_->setObjectName(QStringLiteral("CScurPmt"));
    irs_ = new QCheckBox(QStringLiteral("Use IRS Allocation Method"), this);
    irs_->setObjectName(QStringLiteral("chkIRSMethod"));
    tax_ = new MoneyField(this);
    tax_->setObjectName(QStringLiteral("CScurTax"));
    interest_ = new MoneyField(this);
    interest_->setObjectName(QStringLiteral("CScurInt"));
    penalties_ = new MoneyField(this);
    penalties_->setObjectName(QStringLiteral("CScurPen"));
    taxLabel_ = new QLabel(QStringLiteral("Allocate To Tax:"), this);
    taxLabel_->setObjectName(QStringLiteral("CSlblTax"));
    intLabel_ = new QLabel(QStringLiteral("Allocate To Interest:"), this);
    intLabel_->setObjectName(QStringLiteral("CSlblInt"));
    penLabel_ = new QLabel(QStringLiteral("Allocate To Penalties:"), this);
    penLabel_->setObjectName(QStringLiteral("CSlblPen"));
    balance_ = new QLabel(this);
    balance_->setObjectName(QStringLiteral("CSLblBalance"));
    maxInt_ = new QLabel(this);
    maxInt_->setObjectName(QStringLiteral("CSlblMaxInt"));

    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->addRow(QStringLiteral("Description of Payment:"), desc_);
    fields->addRow(QStringLiteral("Payment Date"), date_);
    fields->addRow(QStringLiteral("Payment Amount:"), amount_);
    fields->addRow(QString(), irs_);
    fields->addRow(taxLabel_, tax_);
    fields->addRow(intLabel_, interest_);
    fields->addRow(penLabel_, penalties_);

    auto* figures = new QHBoxLayout;
    figures->addWidget(balance_);
    figures->addSpacing(24);
    figures->addWidget(maxInt_);
    figures->addStretch(1);

    const OkCancel okCancel = MakeOkCancel(this);
    QDialogButtonBox* buttons = okCancel.box;
    QPushButton* ok = okCancel.ok;
    QPushButton* cancel = okCancel.cancel;

    auto* top = new QVBoxLayout(this);
    top->addLayout(fields);
    top->addSpacing(6);
    top->addLayout(figures);
    top->addSpacing(6);
    top->addWidget(buttons);

    setTabOrder(desc_, date_);
    setTabOrder(date_, amount_);
    setTabOrder(amount_, irs_);
    setTabOrder(irs_, tax_);
    setTabOrder(tax_, interest_);
    setTabOrder(interest_, penalties_);
    setTabOrder(penalties_, ok);
    setTabOrder(ok, cancel);

    // The IRS method: a click, or the focus entering or leaving the check box.
    connect(irs_, &QCheckBox::clicked, this,
            [this] { react([this] { logic_.irsMethodClicked(form_); }); });
    auto* irsFocus = new FocusWatcher(irs_);
    connect(irsFocus, &FocusWatcher::focusGained, this,
            [this] { react([this] { logic_.irsMethodClicked(form_); }); });
    connect(irsFocus, &FocusWatcher::focusLost, this,
            [this] { react([this] { logic_.irsMethodClicked(form_); }); });
    // Amounts as they are typed; the interest part's ceiling when it is left.
    for (QLineEdit* e : {static_cast<QLineEdit*>(amount_), static_cast<QLineEdit*>(tax_),
                         static_cast<QLineEdit*>(interest_), static_cast<QLineEdit*>(penalties_)})
        connect(e, &QLineEdit::textEdited, this,
                [this] { react([this] { logic_.amountChanged(form_); }); });
    for (const auto& [field, edit] : {std::pair{&PaymentForm::amount, amount_},
                                      {&PaymentForm::toTax, tax_},
                                      {&PaymentForm::toInterest, interest_},
                                      {&PaymentForm::toPenalties, penalties_}})
        checkWhenLeft(edit, [this, field] { react([&] { logic_.moneyLeft(form_, field); }); });
    // A new payment date is checked against the calculation period once the
    // user leaves the field with a text different from the one it held; the
    // payment is then allocated on the new date.
    checkWhenLeft(
        date_, [this] { react([this] { logic_.dateChanged(form_); }); }, true);
    onOk(ok, [this] { okClicked(); });

    showForm();
    finishSetup();
    desc_->setFocus(Qt::OtherFocusReason);
}

void PaymentInfoWindow::readForm()
{
    form_.description = FieldText(desc_);
    form_.date = FieldText(date_);
    form_.amount = FieldText(amount_);
    form_.irsMethod = irs_->isChecked();
    form_.toTax = FieldText(tax_);
    form_.toInterest = FieldText(interest_);
    form_.toPenalties = FieldText(penalties_);
}

void PaymentInfoWindow::showForm()
{
    ShowText(desc_, form_.description);
    ShowText(date_, form_.date);
    ShowText(amount_, form_.amount);
    irs_->setChecked(form_.irsMethod);
    ShowText(tax_, form_.toTax);
    ShowText(interest_, form_.toInterest);
    ShowText(penalties_, form_.toPenalties);
    for (QWidget* w : {static_cast<QWidget*>(tax_), static_cast<QWidget*>(interest_),
                       static_cast<QWidget*>(penalties_), static_cast<QWidget*>(taxLabel_),
                       static_cast<QWidget*>(intLabel_), static_cast<QWidget*>(penLabel_)})
        w->setEnabled(form_.allocationEnabled);
    ShowLabel(balance_, form_.unallocatedLabel, QStringLiteral("Unallocated: "));
    ShowLabel(maxInt_, form_.maxInterestLabel);
    selectRefused(form_, {{&PaymentForm::date, date_},
                          {&PaymentForm::amount, amount_},
                          {&PaymentForm::toTax, tax_},
                          {&PaymentForm::toInterest, interest_},
                          {&PaymentForm::toPenalties, penalties_}});
}

template<typename F>
void PaymentInfoWindow::react(F&& reaction)
{
    guard([&] {
        readForm();
        reaction();
        showForm();
    });
}

void PaymentInfoWindow::okClicked()
{
    readForm();
    if (logic_.okAllowed(form_))
        accept();
    else
        showForm();
}

// ---- Progress of the arrangement search ------------------------------------------

ArrangeProgressPanel::ArrangeProgressPanel(QWidget* panel, QLabel* variations,
                                           QProgressBar* permutations, QProgressBar* penalties)
    : panel_(panel)
    , variations_(variations)
    , permutations_(permutations)
    , penalties_(penalties)
    , sinceRepaint_(std::make_unique<QElapsedTimer>())
{
}

ArrangeProgressPanel::~ArrangeProgressPanel() = default;

void ArrangeProgressPanel::setVisible(bool visible)
{
    if (visible) {
        variations_->clear();
        permutations_->setRange(0, 1);
        permutations_->setValue(0);
        penalties_->setRange(0, 1);
        penalties_->setValue(0);
    }
    panel_->setVisible(visible);
    catchUp(true);
}

void ArrangeProgressPanel::setVariationsText(std::string_view text)
{
    variations_->setText(fromCore(text));
}

void ArrangeProgressPanel::setPermutationsRange(int minimum, int maximum)
{
    permutations_->setRange(minimum, maximum);
}

void ArrangeProgressPanel::setPermutationsValue(int value)
{
    permutations_->setValue(value);
    catchUp(false);
}

void ArrangeProgressPanel::setPenaltiesRange(float minimum, float maximum)
{
    // n! x 1.1 fits an int for the at most 9 payments searched.
    penalties_->setRange(static_cast<int>(minimum), static_cast<int>(std::floor(maximum)));
}

void ArrangeProgressPanel::setPenaltiesValue(std::int32_t value)
{
    if (!sinceRepaint_->isValid() || sinceRepaint_->elapsed() >= 40) {
        penalties_->setValue(value);
        catchUp(false);
    }
}

void ArrangeProgressPanel::repaint()
{
    catchUp(true);
}

void ArrangeProgressPanel::catchUp(bool force)
{
    if (!force && sinceRepaint_->isValid() && sinceRepaint_->elapsed() < 40)
        return;
    sinceRepaint_->start();
    // Only painting: the user cannot act while the search runs.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

// ---- Payments ------------------------------------------------------------------------

PaymentsWindow::PaymentsWindow(CommandContext& ctx)
    : ListDialog(ctx.parent, QStringLiteral("lstPmt"), QStringLiteral("Date of Payment  && Desc.:"),
                 QStringLiteral("00/00/0000 MMMMMMMMMMMMMMMM"))
    , ctx_(ctx)
{
    setObjectName(QStringLiteral("dlgPmts"));
    setWindowTitle(QStringLiteral("Payments"));

    logic_ = std::make_unique<PaymentsDialog>(
        ctx.kase, ctx.rates, ctx.ftfMinimums, ctx.msgs,
        [this](PaymentForm& f) {
            PaymentInfoWindow dlg(logic_->paymentDialog(), f, this);
            return dlg.run();
        },
        [this] {
            if (ctx_.openHelp)
                ctx_.openHelp();
        });

    autoArrange_ = new QCheckBox(
        QStringLiteral("Auto Arrange Payments to Minimize Payroll Penalties"), this);
    autoArrange_->setObjectName(QStringLiteral("chkMinPRPenalty"));
    hint_ = new QPushButton(QStringLiteral("&Hint to Minimize Payroll Penalties"), this);
    hint_->setObjectName(QStringLiteral("btnPRhint"));
    hint_->setAutoDefault(false);
    sort_ = new QPushButton(QStringLiteral("&Sort by Date"), this);
    sort_->setObjectName(QStringLiteral("btnSortDate"));

    progressPanel_ = new QWidget(this);
    progressPanel_->setObjectName(QStringLiteral("pnlArrange"));
    auto* permLabel = new QLabel(QStringLiteral("Determine all variations:"), progressPanel_);
    permLabel->setObjectName(QStringLiteral("lblPermutations"));
    auto* penLabel = new QLabel(QStringLiteral("Calculate penalties:"), progressPanel_);
    penLabel->setObjectName(QStringLiteral("lblLowPenalty"));
    permutations_ = new QProgressBar(progressPanel_);
    permutations_->setObjectName(QStringLiteral("gauPermutations"));
    penalties_ = new QProgressBar(progressPanel_);
    penalties_->setObjectName(QStringLiteral("gauPenalties"));
    variations_ = new QLabel(progressPanel_);
    variations_->setObjectName(QStringLiteral("lblVariations"));
    auto* progressGrid = new QGridLayout(progressPanel_);
    progressGrid->setContentsMargins(0, 0, 0, 0);
    progressGrid->addWidget(variations_, 0, 0, 1, 2);
    progressGrid->addWidget(permLabel, 1, 0);
    progressGrid->addWidget(permutations_, 1, 1);
    progressGrid->addWidget(penLabel, 2, 0);
    progressGrid->addWidget(penalties_, 2, 1);
    progressGrid->setColumnStretch(1, 1);
    progressPanel_->hide();
    progress_ = std::make_unique<ArrangeProgressPanel>(progressPanel_, variations_, permutations_,
                                                       penalties_);

    auto* top = new QVBoxLayout(this);
    top->addLayout(listArea({}, {sort_}), 1);
    top->addWidget(autoArrange_);
    auto* hintRow = new QHBoxLayout;
    hintRow->addWidget(hint_);
    hintRow->addStretch(1);
    top->addLayout(hintRow);
    top->addWidget(progressPanel_);

    connectCommands(
        {[this] { logic_->add(form_); }, [this](int line) { logic_->edit(form_, line); },
         [this](int line) { logic_->remove(form_, line); },
         [this] {
             form_.autoArrange = form_.payrollControlsVisible && autoArrange_->isChecked();
             logic_->close(form_, progress_.get());
         },
         [this] { showList(); }});
    connect(hint_, &QPushButton::clicked, this,
            [this] { guard([this] { logic_->payrollHint(); }); });
    connect(sort_, &QPushButton::clicked, this, [this] {
        guard([this] {
            logic_->sortByDate(form_);
            showList();
        });
    });

    guard([this] { form_ = logic_->open(); });
    showList();
    finishSetup();
    list_->setFocus(Qt::OtherFocusReason);
}

PaymentsWindow::~PaymentsWindow() = default;

void PaymentsWindow::showList()
{
    showLines(form_.lines, form_.editEnabled, form_.deleteEnabled);
    sort_->setEnabled(form_.sortEnabled);
    autoArrange_->setVisible(form_.payrollControlsVisible);
    hint_->setVisible(form_.payrollControlsVisible);
    autoArrange_->setChecked(form_.autoArrange);
}

}  // namespace rw::ui
