#pragma once
// What the input dialogs and report windows share: a dialog base that keeps a
// fault thrown by one of its event handlers for the command that opened it, a
// Yes/No choice, and the writing of form texts into fields.

#include <QDialog>
#include <QGroupBox>
#include <QObject>

#include <QLineEdit>

#include <exception>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class QAbstractButton;
class QDialogButtonBox;
class QPushButton;
class QLabel;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace rw::ui {

// A modal dialog whose event handlers run through guard(): a fault (any
// exception) thrown by the logic closes the dialog and is thrown again by
// run() once exec() has returned, so that it travels to the command boundary
// outside the event loop.
class GuardedDialog : public QDialog {
    Q_OBJECT
public:
    explicit GuardedDialog(QWidget* parent = nullptr);
    ~GuardedDialog() override;

    // exec(); true when accepted. Throws the fault an event handler met.
    bool run();

    template<typename F>
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

    // Runs reaction, guarded, each time the user leaves (or enters) field; a
    // window coming to the front is neither.
    void whenLeft(QWidget* field, std::function<void()> reaction);
    void whenEntered(QWidget* field, std::function<void()> reaction);

    // Runs check, guarded, when the user leaves field (with onlyChanged, only
    // when its text differs from the one it held on entering, or when it was
    // refused). Leaving it for Cancel runs nothing: Cancel closes without a
    // word. Leaving it by a click on OK runs the check when OK is clicked,
    // before OK's own work (a message box must not come up in the middle of
    // the click), or when the focus leaves OK for another field.
    void checkWhenLeft(QLineEdit* field, std::function<void()> check, bool onlyChanged = false);
    // OK: the check of the field just left for it first; unless that refused
    // the entry, body, guarded.
    void onOk(QAbstractButton* ok, std::function<void()> body);
    // A refused entry: the field gets the focus back with its text selected
    // (once the event in hand is done), and is checked again when left.
    void selectAgain(QLineEdit* field);
    // The field of form.refused (a member of the form bound to its line edit)
    // selected again; form.refused cleared.
    template<typename Form>
    void selectRefused(Form& form,
                       std::initializer_list<std::pair<std::string Form::*, QLineEdit*>> fields)
    {
        for (const auto& [member, edit] : fields)
            if (form.refused == member)
                selectAgain(edit);
        form.refused = nullptr;
    }

protected:
    // Installs Enter as Tab on every field (check boxes and option buttons
    // included), gives the dialog the size its layout asks for and centres it;
    // called once the widgets exist.
    void finishSetup();

private:
    struct FieldCheck;
    void fieldLeft(FieldCheck& c, Qt::FocusReason reason);
    void runCheck(FieldCheck& c);
    bool runPendingCheck();

    std::exception_ptr fault_;
    std::vector<std::unique_ptr<FieldCheck>> checks_;
    FieldCheck* pending_ = nullptr;  // left for OK, not yet checked
    bool selecting_ = false;  // the focus is being given back to a refused field
    bool refused_ = false;  // a check refused its entry
};

// A framed two-way choice "&Yes" / "&No" under a caption.
class YesNoChoice : public QGroupBox {
    Q_OBJECT
public:
    YesNoChoice(const QString& caption, QWidget* parent = nullptr);

    bool isYes() const;
    // Sets the choice without emitting changed().
    void setYes(bool yes);
    QRadioButton* yesButton() const { return yes_; }
    QRadioButton* noButton() const { return no_; }

Q_SIGNALS:
    // The user changed the choice.
    void changed(bool yes);

private:
    QRadioButton* yes_;
    QRadioButton* no_;
};

// Writes a core (Latin-1) text into a field unless it already shows it, so
// that the cursor of the field being typed in stays where it is.
void ShowText(QLineEdit* field, const std::string& latin1);
// The field's text as core text.
std::string FieldText(const QLineEdit* field);
// A label showing a core text, or its caption while the text is empty.
void ShowLabel(QLabel* label, const std::string& latin1, const QString& caption = {});
// Sets the text of a core fixed text with its NUL characters as blanks.
QString DisplayText(const std::string& latin1);

// A dialog's button box with "OK" (btnOK) and "Cancel" (btnCancel); Cancel
// rejects the dialog, OK is left to the caller.
struct OkCancel {
    QDialogButtonBox* box;
    QPushButton* ok;
    QPushButton* cancel;
};
OkCancel MakeOkCancel(QDialog* dialog);

}  // namespace rw::ui
