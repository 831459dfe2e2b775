#include "ui/common/fields.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QWidget>

namespace rw::ui {

void FocusNextField(QWidget* from)
{
    QWidget* top = from->window();
    for (QWidget* next = from->nextInFocusChain(); next && next != from;
         next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) && next->isEnabled() && next->isVisibleTo(top)
            && top->isAncestorOf(next)) {
            // As with Tab, the focus leaves a group of option buttons for the
            // next field rather than going to another button of the group.
            auto* radio = qobject_cast<QRadioButton*>(next);
            auto* fromRadio = qobject_cast<QRadioButton*>(from);
            if (radio && fromRadio) {
                const bool sameGroup
                    = radio->group() ? radio->group() == fromRadio->group()
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

void EnterAsTab::installOn(QWidget* root)
{
    auto* filter = new EnterAsTab(root);
    root->installEventFilter(filter);
    const auto children = root->findChildren<QWidget*>();
    for (QWidget* w : children)
        w->installEventFilter(filter);
}

bool EnterAsTab::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if ((key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)
            && key->modifiers() == Qt::NoModifier && !qobject_cast<QPushButton*>(watched)) {
            if (auto* w = qobject_cast<QWidget*>(watched)) {
                QWidget* top = w->window();
                QWidget* focus = QApplication::focusWidget();
                if (focus && (focus == top || top->isAncestorOf(focus)))
                    FocusNextField(focus);
            }
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void Center(QWidget* w)
{
    const QScreen* screen = w->screen() ? w->screen() : QApplication::primaryScreen();
    if (!screen)
        return;
    const QRect area = screen->availableGeometry();
    w->move(area.left() + (area.width() - w->width()) / 2,
            area.top() + (area.height() - w->height()) / 2);
}

DateField::DateField(QWidget* parent, const QString& emptyMask)
    : QLineEdit(parent)
{
    setPlaceholderText(emptyMask);
    setMaxLength(10);
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("00/00/00000")) + 12);
}

MoneyField::MoneyField(QWidget* parent)
    : QLineEdit(parent)
{
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("000,000,000.0000")) + 12);
}

FocusWatcher::FocusWatcher(QWidget* watched)
    : QObject(watched)
{
    watched->installEventFilter(this);
}

bool FocusWatcher::eventFilter(QObject* watched, QEvent* event)
{
    // Another window coming to the front (a message box, the user switching
    // programs) or a popup opening does not mean the user left the field.
    if (event->type() == QEvent::FocusOut || event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason) {
            if (event->type() == QEvent::FocusOut)
                Q_EMIT focusLost(reason);
            else
                Q_EMIT focusGained();
        }
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace rw::ui
