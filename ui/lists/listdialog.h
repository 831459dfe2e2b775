#pragma once
// The frame of the three list dialogs (payments, other charges, payroll
// deposits): the list's lines with its label on the left, the commands on the
// right (any leading ones, then "&Add", "&Edit", "&Delete", any others, and
// "&Close" at the foot). Each command runs guarded and shows the lines again
// afterwards; a double-click on a line is Edit of that line; closing by the
// close box or Escape is Close.

#include "ui/common/dialogkit.h"

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

class QBoxLayout;
class QLabel;
class QListWidget;
class QPushButton;

namespace rw::ui {

class ListDialog : public GuardedDialog {
    Q_OBJECT
public:
    void reject() override;

protected:
    // listName: the list's object name; caption: its label ("&&" shows "&");
    // sample: a line as wide as the widest the list shows.
    ListDialog(QWidget* parent, const QString& listName, const QString& caption,
               const QString& sample);

    // The list and its commands as one layout; leading buttons go above
    // "&Add", trailing ones below "&Delete".
    QBoxLayout* listArea(std::initializer_list<QPushButton*> leading = {},
                         std::initializer_list<QPushButton*> trailing = {});

    struct Commands {
        std::function<void()> add;
        std::function<void(int line)> edit;
        std::function<void(int line)> remove;
        std::function<void()> close;  // Close (and the close box); the window accepts afterwards
        std::function<void()> refresh;  // shows the form again after a command
    };
    void connectCommands(Commands commands);

    // Shows the lines and whether Edit and Delete can be used.
    void showLines(const std::vector<std::string>& lines, bool editEnabled, bool deleteEnabled);
    // The selected line, or -1.
    int selectedLine() const;

    QListWidget* list_;
    QPushButton* add_;
    QPushButton* edit_;
    QPushButton* delete_;
    QPushButton* close_;

private:
    void runClose();

    QLabel* caption_;
    Commands commands_;
    bool closing_ = false;
};

}  // namespace rw::ui
