#pragma once
// What the input dialogs of this folder share: a modal dialog whose event
// handlers may meet a fault of the logic, and the watch on a field that the
// user leaves after changing it.

#include <QDialog>
#include <QObject>
#include <QString>

#include <exception>
#include <utility>

class QLineEdit;

namespace rw::ui {

// A modal dialog whose event handlers run through guard(): a fault thrown by
// the logic closes the dialog and is thrown again by run() once exec() has
// returned, outside Qt's event loop, on its way to the command boundary.
class InputDialog : public QDialog {
    Q_OBJECT
public:
    explicit InputDialog(QWidget* parent = nullptr);

    // exec(); true when accepted. Throws the fault an event handler met.
    bool run();

    template <typename F>
    void guard(F&& body)
    {
        if (fault_)
            return;
        try {
            std::forward<F>(body)();
        } catch (...) {
            fault_ = std::current_exception();
            QDialog::done(QDialog::Rejected);
        }
    }

    bool faulted() const { return static_cast<bool>(fault_); }

protected:
    // Enter as Tab on every field, the size the layout asks for, centred on
    // the screen; called once the widgets exist.
    void finishSetup();

private:
    std::exception_ptr fault_;
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
