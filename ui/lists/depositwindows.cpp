#include "ui/lists/depositwindows.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace rw::ui {

namespace {
// A blank date field of this dialog shows the mask of the date edit.
const QString kBlankDate = QStringLiteral("__/__/____");
}  // namespace

// ---- Payroll Deposit Information ---------------------------------------------------

DepositInfoWindow::DepositInfoWindow(const DepositDialog& logic, DepositForm& form, QWidget* parent)
    : GuardedDialog(parent)
    , logic_(logic)
    , form_(form)
{
    setObjectName(QStringLiteral("dlgDep"));
    setWindowTitle(QStringLiteral("Payroll Deposit Information"));

    due_ = new DateField(this, kBlankDate);
    due_->setObjectName(QStringLiteral("CSdtDue"));
    required_ = new MoneyField(this);
    required_->setObjectName(QStringLiteral("CScurUndPmt"));
    assess_ = new DateField(this, kBlankDate);
    assess_->setObjectName(QStringLiteral("CSdtAssess"));
    severe_ = new YesNoChoice(QString(), this);
    severe_->setObjectName(QStringLiteral("CSoptSevere"));
    delinquency_ = new DateField(this, kBlankDate);
    delinquency_->setObjectName(QStringLiteral("CSdtDelNot"));
    jeopardy_ = new DateField(this, kBlankDate);
    jeopardy_->setObjectName(QStringLiteral("CSdtJep"));
    hint_ = new QLabel(this);
    hint_->setObjectName(QStringLiteral("CSlblNote"));
    hint_->setWordWrap(true);
    hint_->setFrameShape(QFrame::StyledPanel);
    hint_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    hint_->setMargin(4);
    hint_->setMinimumHeight(hint_->fontMetrics().lineSpacing() * 3 + 10);

    auto* fields = new QFormLayout;
    fields->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fields->addRow(QStringLiteral("Due Date for Deposit:"), due_);
    fields->addRow(QStringLiteral("Required Deposit:"), required_);
    fields->addRow(QStringLiteral("Assessment Date:"), assess_);
    auto* severeLabel = new QLabel(QStringLiteral("Does \u00A76656(b)(1)(B) Apply:"), this);
    fields->addRow(severeLabel, severe_);
    delinquencyLabel_ = new QLabel(QStringLiteral("Date of Earliest Delinquency Notice:"), this);
    fields->addRow(delinquencyLabel_, delinquency_);
    jeopardyLabel_ = new QLabel(
        QStringLiteral("Date of Demand for Immediate Payment (Jeopardy Assessment):"), this);
    fields->addRow(jeopardyLabel_, jeopardy_);

    const OkCancel okCancel = MakeOkCancel(this);
    QDialogButtonBox* buttons = okCancel.box;
    QPushButton* ok = okCancel.ok;
    QPushButton* cancel = okCancel.cancel;

    auto* top = new QVBoxLayout(this);
    top->addLayout(fields);
    top->addSpacing(6);
    top->addWidget(hint_);
    top->addWidget(buttons);

    setTabOrder(due_, required_);
    setTabOrder(required_, assess_);
    setTabOrder(assess_, severe_->yesButton());
    setTabOrder(severe_->yesButton(), severe_->noButton());
    setTabOrder(severe_->noButton(), delinquency_);
    setTabOrder(delinquency_, jeopardy_);
    setTabOrder(jeopardy_, ok);
    setTabOrder(ok, cancel);

    connect(severe_, &YesNoChoice::changed, this, [this] {
        guard([this] {
            readForm();
            DepositDialog::severeChanged(form_);
            showForm();
        });
    });
    watch(due_, DepositField::DueDate);
    watch(required_, DepositField::Required);
    watch(assess_, DepositField::AssessDate);
    watch(severe_->yesButton(), DepositField::Severe);
    watch(severe_->noButton(), DepositField::Severe);
    watch(delinquency_, DepositField::DelinquencyDate);
    watch(jeopardy_, DepositField::JeopardyDate);
    onOk(ok, [this] {
        readForm();
        if (logic_.okAllowed(form_))
            accept();
        else
            showForm();
    });

    showForm();
    finishSetup();
    due_->setFocus(Qt::OtherFocusReason);
}

void DepositInfoWindow::watch(QWidget* field, DepositField which)
{
    whenEntered(field, [this, which] {
        readForm();
        DepositDialog::focusEntered(form_, which);
        showForm();
    });
    whenLeft(field, [this] {
        readForm();
        DepositDialog::focusLeft(form_);
        showForm();
    });
    if (auto* edit = qobject_cast<QLineEdit*>(field))
        checkWhenLeft(edit, [this, which] {
            readForm();
            logic_.fieldLeft(form_, which);
            showForm();
        });
}

void DepositInfoWindow::readForm()
{
    form_.dueDate = FieldText(due_);
    form_.required = FieldText(required_);
    form_.assessDate = FieldText(assess_);
    form_.severe = severe_->isYes();
    form_.delinquencyDate = FieldText(delinquency_);
    form_.jeopardyDate = FieldText(jeopardy_);
}

void DepositInfoWindow::showForm()
{
    ShowText(due_, form_.dueDate);
    ShowText(required_, form_.required);
    ShowText(assess_, form_.assessDate);
    severe_->setYes(form_.severe);
    ShowText(delinquency_, form_.delinquencyDate);
    ShowText(jeopardy_, form_.jeopardyDate);
    for (QWidget* w :
         {static_cast<QWidget*>(delinquency_), static_cast<QWidget*>(jeopardy_),
          static_cast<QWidget*>(delinquencyLabel_), static_cast<QWidget*>(jeopardyLabel_)})
        w->setEnabled(form_.noticeDatesEnabled);
    hint_->setText(fromCore(form_.hint));
    selectRefused(form_, {{&DepositForm::dueDate, due_},
                          {&DepositForm::required, required_},
                          {&DepositForm::assessDate, assess_},
                          {&DepositForm::delinquencyDate, delinquency_},
                          {&DepositForm::jeopardyDate, jeopardy_}});
}

// ---- Payroll Tax Deposit Penalties ------------------------------------------------------

DepositsWindow::DepositsWindow(CommandContext& ctx)
    : ListDialog(ctx.parent, QStringLiteral("lstDep"), QStringLiteral("Deposit Due Date:"),
                 QStringLiteral("00/00/00000000"))
    , ctx_(ctx)
    , depositLogic_(ctx.kase, ctx.msgs)
{
    setObjectName(QStringLiteral("dlgInpDepPen"));
    setWindowTitle(QStringLiteral("Payroll Tax Deposit Penalties"));

    logic_ = std::make_unique<DepositListDialog>(
        ctx.kase, ctx.msgs,
        [this](DepositForm& f) {
            DepositInfoWindow dlg(depositLogic_, f, this);
            return dlg.run();
        },
        [this] {
            if (ctx_.openHelp)
                ctx_.openHelp();
        });

    auto* tutorial = new QPushButton(QStringLiteral("&Tutorial"), this);
    tutorial->setObjectName(QStringLiteral("btnTutorial"));
    auto* top = new QVBoxLayout(this);
    top->addLayout(listArea({tutorial}));
    connect(tutorial, &QPushButton::clicked, this,
            [this] { guard([this] { logic_->tutorial(); }); });
    connectCommands(
        {[this] { logic_->add(form_); }, [this](int line) { logic_->edit(form_, line); },
         [this](int line) { logic_->remove(form_, line); }, nullptr, [this] { showList(); }});

    guard([this] { form_ = logic_->open(); });
    showList();
    finishSetup();
    list_->setFocus(Qt::OtherFocusReason);
}

DepositsWindow::~DepositsWindow() = default;

void DepositsWindow::showList()
{
    showLines(form_.lines, form_.editEnabled, form_.deleteEnabled);
}

}  // namespace rw::ui
