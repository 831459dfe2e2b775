#pragma once
// What the input dialogs of this folder share: the fault-carrying dialog of
// every window, at a fixed size, and the watch on a field that the user leaves
// after changing it.

#include "ui/common/dialogkit.h"

#include <QObject>
#include <QString>

class QLineEdit;

namespace rw::ui {

// The input dialogs of this folder keep the size their layout asks for.
class InputDialog : public GuardedDialog {
    Q_OBJECT
public:
    using GuardedDialog::GuardedDialog;

protected:
    void finishSetup()
    {
        GuardedDialog::finishSetup();
        setFixedSize(sizeHint());
    }
};

// Emits changedAndLeft() when the user leaves the field after changing its
// text since entering it. Another window coming to the front is not a leaving.
class ChangeWatcher : public QObject {
    Q_OBJECT
public:
    explicit ChangeWatcher(QLineEdit* field);

Q_SIGNALS:
    void changedAndLeft();

private:
    QLineEdit* field_;
    QString onEntry_;
};

}  // namespace rw::ui
