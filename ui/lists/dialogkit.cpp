#include "ui/lists/dialogkit.h"

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

GuardedDialog::GuardedDialog(QWidget* parent) : QDialog(parent) {}

bool GuardedDialog::run()
{
    const bool accepted = exec() == QDialog::Accepted;
    if (fault_)
        std::rethrow_exception(std::exchange(fault_, nullptr));
    return accepted;
}

void GuardedDialog::finishSetup()
{
    EnterAsTab::installOn(this);
    EnterMovesOnFromChoices(this);
    adjustSize();
    Center(this);
}

// ---- Focus --------------------------------------------------------------------

FieldFocus::FieldFocus(QWidget* watched) : QObject(watched)
{
    watched->installEventFilter(this);
}

bool FieldFocus::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            if (event->type() == QEvent::FocusIn)
                Q_EMIT entered();
            else
                Q_EMIT left();
        }
    }
    return QObject::eventFilter(watched, event);
}

void FocusNextField(QWidget* from)
{
    QWidget* top = from->window();
    for (QWidget* next = from->nextInFocusChain(); next && next != from; next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) && next->isEnabled() && next->isVisibleTo(top)
            && top->isAncestorOf(next)) {
            // As with Tab, the focus leaves a group of option buttons for the
            // next field rather than going to another button of the group.
            auto* radio = qobject_cast<QRadioButton*>(next);
            auto* fromRadio = qobject_cast<QRadioButton*>(from);
            if (radio && fromRadio) {
                const bool sameGroup = radio->group()
                                           ? radio->group() == fromRadio->group()
                                           : (!fromRadio->group() && radio->autoExclusive()
                                              && fromRadio->autoExclusive()
                                              && radio->parentWidget() == fromRadio->parentWidget());
                if (sameGroup)
                    continue;
            }
            next->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

namespace {

class EnterOnChoice : public QObject {
public:
    explicit EnterOnChoice(QObject* parent) : QObject(parent) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            auto* key = static_cast<QKeyEvent*>(event);
            if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
                && key->modifiers() == Qt::NoModifier) {
                FocusNextField(static_cast<QWidget*>(watched));
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void EnterMovesOnFromChoices(QWidget* root)
{
    auto* filter = new EnterOnChoice(root);
    const auto boxes = root->findChildren<QCheckBox*>();
    for (QCheckBox* b : boxes)
        b->installEventFilter(filter);
    const auto radios = root->findChildren<QRadioButton*>();
    for (QRadioButton* r : radios)
        r->installEventFilter(filter);
}

// ---- Yes / No -------------------------------------------------------------------

YesNoChoice::YesNoChoice(const QString& caption, QWidget* parent)
    : QGroupBox(caption, parent),
      yes_(new QRadioButton(QStringLiteral("&Yes"), this)),
      no_(new QRadioButton(QStringLiteral("&No"), this))
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
