#pragma once
// Small pieces every dialog shares: Enter moving on as Tab does, centring a
// window on the screen, and the date and money entry fields.

#include <QLineEdit>
#include <QObject>

class QWidget;

namespace rw::ui {

// Installed on a dialog (and, through installOn, on all its children): the
// Enter and Return keys move the focus to the next field, as Tab does, and are
// swallowed. Push buttons keep Enter as a click; option buttons and check
// boxes move on like any other field.
class EnterAsTab : public QObject {
    Q_OBJECT
public:
    explicit EnterAsTab(QObject* parent = nullptr)
        : QObject(parent)
    {
    }
    static void installOn(QWidget* root);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

// Moves the focus along the window's tab chain to the next field that takes
// it, as Tab does (leaving a group of option buttons as a whole).
void FocusNextField(QWidget* from);

// Places a window in the middle of the screen.
void Center(QWidget* w);

// A date field: typed as "m/d/yyyy"; empty stands for a date not given. The
// placeholder shows the empty mask.
class DateField : public QLineEdit {
    Q_OBJECT
public:
    explicit DateField(QWidget* parent = nullptr,
                       const QString& emptyMask = QStringLiteral("  /  /    "));
};

// A money field: an amount typed with or without thousands separators,
// right-aligned.
class MoneyField : public QLineEdit {
    Q_OBJECT
public:
    explicit MoneyField(QWidget* parent = nullptr);
};

// Emits focusLost() when the user leaves the watched widget (the date checks
// run when the user leaves a field), with how (a click, Tab). Focus that goes
// to another window or to a popup and comes back is not a leaving.
class FocusWatcher : public QObject {
    Q_OBJECT
public:
    explicit FocusWatcher(QWidget* watched);

Q_SIGNALS:
    void focusLost(Qt::FocusReason reason);
    void focusGained();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace rw::ui
