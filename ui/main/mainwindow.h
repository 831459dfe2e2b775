#pragma once
// The main window (frmMain): the menus, the tool bar, the overview of the
// case, the note line and the title, drawn from the session after every
// command. Every command runs inside the shell's command boundary, so that a
// fault goes to the error reporter. The window opens the dialogs of the file
// commands (the shell's ModalDialogs) and the rate currency alert
// (RateAlertWindow).

#include "shell/ratealert.h"
#include "shell/services.h"
#include "shell/session.h"

#include <QKeySequence>
#include <QMainWindow>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

class QAction;
class QLabel;
class QMenu;
class QToolBar;

namespace rw::ui {

class Desktop;
class OverviewWidget;
struct CommandContext;

// What the main window works with besides the session. Tests put scripted
// versions of each in place.
struct MainWindowServices {
    Messages& msgs;
    FileDialogs& files;
    ProgramControl& program;
    Desktop& desktop;
    const Clock* clock = nullptr;  // the computer's calendar when not given
};

class MainWindow : public QMainWindow, private ModalDialogs, private RateAlertWindow {
    Q_OBJECT
public:
    MainWindow(Session& session, MainWindowServices services, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Start-up inside the command boundary: settings, data folder and
    // samples, release, federal table, empty case; then the menus. False when
    // start-up met a fault (the error reporter has ended the program).
    bool startUp(const Paths& paths, std::string_view platformVersion);

    // The tool bar key's command ("New", "Open", "Save", "View", "Print",
    // "Help", "Exit"; any other key is answered with a warning).
    void toolbarKey(std::string_view key);

    // Draws menus, tool bar, note line, title and the overview of the case
    // from the session.
    void refresh();

    // The shell's context for a command.
    ShellContext shellContext();

    // True once the program has been ended (the error reporter, the exit
    // procedure or the rate currency alert); no command runs after it.
    bool programEnded() const { return endWatch_.ended; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // ModalDialogs
    bool showInitialInputs(Session& session) override;
    // RateAlertWindow
    void showModal(const RateAlert& alert) override;

    void buildMenus();
    void buildToolBar();
    // What a double-click on each part of the overview opens: its command.
    void connectOverview();
    QAction* menuAction(QMenu* menu, const char* name, const QString& caption,
                        std::function<void()> command, bool checkable = false,
                        const QKeySequence& shortcut = {});
    // File - Open Recent, drawn from the session's recent files.
    void refreshRecentFiles();
    QAction* toolAction(const char* key, const QIcon& icon, const QString& tip);
    // Runs a command inside the command boundary, then redraws.
    void run(std::string_view name, const std::function<void()>& command);
    // The context handed to the dialogs of the lists, penalties and reports.
    CommandContext commandContext();

    void paymentsCommand();
    void payrollCommand();
    void accuracyRelatedCommand();
    void optionalRatesCommand();
    void suspendCommand();
    void extendedDueDateCommand();
    void openExtendedDueDate();
    void helpContents();
    void aboutCommand();
    void reportsCommand();
    void printCommand();

    // Passes the end of the program on and remembers it.
    struct EndWatch : ProgramControl {
        ProgramControl* inner = nullptr;
        bool ended = false;
        void hideMainWindow() override { inner->hideMainWindow(); }
        void endProgram() override
        {
            ended = true;
            inner->endProgram();
        }
    };

    Session& session_;
    MainWindowServices services_;
    SystemClock systemClock_;
    EndWatch endWatch_;
    bool closing_ = false;

    OverviewWidget* overview_ = nullptr;  // the case at a glance, drawn in refresh()
    // What the overview was computed from; it is computed again only when
    // the case, the rate table or the release differs.
    struct OverviewBasis {
        Case kase;
        RateTable rates;
        ReleaseInfo release;
        friend bool operator==(const OverviewBasis&, const OverviewBasis&) = default;
    };
    std::optional<OverviewBasis> overviewBasis_;
    QLabel* note_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    std::map<std::string, QAction*, std::less<>> actions_;  // by object name
    std::map<std::string, QAction*, std::less<>> keys_;  // tool bar, by key
};

}  // namespace rw::ui
