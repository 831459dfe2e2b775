#include "ui/common/dialogkit.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QAbstractButton>
#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTimer>

namespace rw::ui {

struct GuardedDialog::FieldCheck {
    QLineEdit* field;
    std::function<void()> check;
    bool onlyChanged;
    QString onEntry;
    bool recheck = false;  // refused: checked when left, changed or not
};

namespace {

// A button of the dialog's button box with that role (OK, Cancel).
bool IsDialogButton(QWidget* w, QDialogButtonBox::ButtonRole role)
{
    auto* button = qobject_cast<QAbstractButton*>(w);
    auto* box = button ? qobject_cast<QDialogButtonBox*>(button->parentWidget()) : nullptr;
    return box && box->buttonRole(button) == role;
}

}  // namespace

GuardedDialog::GuardedDialog(QWidget* parent)
    : QDialog(parent)
{
    setModal(true);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

GuardedDialog::~GuardedDialog() = default;

bool GuardedDialog::run()
{
    // A fault met while the dialog was being filled closes it before it shows.
    const bool accepted = !fault_ && exec() == QDialog::Accepted;
    if (fault_)
        std::rethrow_exception(std::exchange(fault_, nullptr));
    return accepted;
}

void GuardedDialog::whenLeft(QWidget* field, std::function<void()> reaction)
{
    auto* focus = new FocusWatcher(field);
    connect(focus, &FocusWatcher::focusLost, this,
            [this, reaction = std::move(reaction)] { guard(reaction); });
}

void GuardedDialog::whenEntered(QWidget* field, std::function<void()> reaction)
{
    auto* focus = new FocusWatcher(field);
    connect(focus, &FocusWatcher::focusGained, this,
            [this, reaction = std::move(reaction)] { guard(reaction); });
}

void GuardedDialog::checkWhenLeft(QLineEdit* field, std::function<void()> check, bool onlyChanged)
{
    FieldCheck& c = *checks_.emplace_back(std::make_unique<FieldCheck>(
        FieldCheck{field, std::move(check), onlyChanged, field->text()}));
    auto* focus = new FocusWatcher(field);
    connect(focus, &FocusWatcher::focusGained, this, [this, &c] {
        if (pending_ == &c) {
            pending_ = nullptr;  // back in the field from OK: checked when left again
            c.recheck = true;
        }
        c.onEntry = c.field->text();
    });
    connect(focus, &FocusWatcher::focusLost, this,
            [this, &c](Qt::FocusReason reason) { fieldLeft(c, reason); });
}

void GuardedDialog::fieldLeft(FieldCheck& c, Qt::FocusReason reason)
{
    if (selecting_ || faulted())
        return;
    if (c.onlyChanged && !c.recheck && c.field->text() == c.onEntry)
        return;
    // The focus has already moved on: where the user went decides.
    QWidget* to = QApplication::focusWidget();
    if (IsDialogButton(to, QDialogButtonBox::RejectRole))
        return;
    if (reason == Qt::MouseFocusReason && IsDialogButton(to, QDialogButtonBox::AcceptRole)) {
        pending_ = &c;
        return;
    }
    runCheck(c);
}

void GuardedDialog::runCheck(FieldCheck& c)
{
    pending_ = nullptr;
    c.recheck = false;
    c.onEntry = c.field->text();
    guard(c.check);
}

bool GuardedDialog::runPendingCheck()
{
    refused_ = false;
    if (pending_)
        runCheck(*pending_);
    return !refused_ && !faulted();
}

void GuardedDialog::onOk(QAbstractButton* ok, std::function<void()> body)
{
    connect(ok, &QAbstractButton::clicked, this, [this, body = std::move(body)] {
        if (runPendingCheck())
            guard(body);
    });
    // Leaving OK without clicking it: the field left for OK is checked now.
    connect(new FocusWatcher(ok), &FocusWatcher::focusLost, this, [this] {
        QWidget* to = QApplication::focusWidget();
        if (pending_ && to != pending_->field && !IsDialogButton(to, QDialogButtonBox::RejectRole))
            runCheck(*pending_);
    });
}

void GuardedDialog::selectAgain(QLineEdit* field)
{
    refused_ = true;
    for (const auto& c : checks_)
        if (c->field == field)
            c->recheck = true;
    // After the event in hand: a field losing the focus finishes losing it
    // first (and would otherwise lose its selection and cursor).
    QTimer::singleShot(0, field, [this, field] {
        if (!isVisible())
            return;
        selecting_ = true;
        field->setFocus(Qt::OtherFocusReason);
        selecting_ = false;
        field->selectAll();
    });
}

void GuardedDialog::finishSetup()
{
    EnterAsTab::installOn(this);
    adjustSize();
    Center(this);
}

// ---- Yes / No -------------------------------------------------------------------

YesNoChoice::YesNoChoice(const QString& caption, QWidget* parent)
    : QGroupBox(caption, parent)
    , yes_(new QRadioButton(QStringLiteral("&Yes"), this))
    , no_(new QRadioButton(QStringLiteral("&No"), this))
{
    auto* group = new QButtonGroup(this);
    group->addButton(yes_, 0);
    group->addButton(no_, 1);
    auto* row = new QHBoxLayout(this);
    row->addWidget(yes_);
    row->addSpacing(24);
    row->addWidget(no_);
    row->addStretch(1);
    if (caption.isEmpty()) {
        // Beside its label in a form: no frame of its own.
        setFlat(true);
        setStyleSheet(QStringLiteral("QGroupBox { border: none; margin: 0px; padding: 0px; }"));
        row->setContentsMargins(0, 0, 0, 0);
    }
    no_->setChecked(true);
    connect(yes_, &QRadioButton::toggled, this, [this](bool on) { Q_EMIT changed(on); });
}

bool YesNoChoice::isYes() const
{
    return yes_->isChecked();
}

void YesNoChoice::setYes(bool yes)
{
    const QSignalBlocker b1(yes_);
    const QSignalBlocker b2(no_);
    if (yes)
        yes_->setChecked(true);
    else
        no_->setChecked(true);
}

// ---- Texts ------------------------------------------------------------------------

QString DisplayText(const std::string& latin1)
{
    QString s = fromCore(latin1);
    s.replace(QChar(u'\0'), QChar(u' '));
    return s;
}

void ShowText(QLineEdit* field, const std::string& latin1)
{
    const QString text = fromCore(latin1);
    if (field->text() != text)
        field->setText(text);
}

std::string FieldText(const QLineEdit* field)
{
    return toCore(field->text());
}

void ShowLabel(QLabel* label, const std::string& latin1, const QString& caption)
{
    label->setText(latin1.empty() ? caption : fromCore(latin1));
}

OkCancel MakeOkCancel(QDialog* dialog)
{
    auto* box = new QDialogButtonBox(dialog);
    QPushButton* ok = box->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("btnOK"));
    QPushButton* cancel = box->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("btnCancel"));
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    return {box, ok, cancel};
}

}  // namespace rw::ui
