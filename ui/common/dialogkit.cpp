#include "ui/common/dialogkit.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>

namespace rw::ui {

GuardedDialog::GuardedDialog(QWidget* parent)
    : QDialog(parent)
{
    setModal(true);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

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

}  // namespace rw::ui
