#pragma once
// What every window test shares: a driver of modal dialogs, typing and
// clicking, binding tables, screenshots, a command context over a case, a
// temporary installation folder with the tests' release of the rates, and
// the desktop double. The framework-free doubles and case builders come from
// tests/support.

#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include "base/paths.h"
#include "reports/printmanager.h"
#include "reports/printmaster.h"
#include "ui/common/commandcontext.h"
#include "ui/main/desktop.h"

#include <QString>
#include <QTest>
#include <QUrl>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

class QTableWidget;
class QTimer;

namespace rwtest {

// ---- Modal dialogs -----------------------------------------------------------

// Acts on modal dialogs as they come up, in order: each step waits for the
// next modal dialog (the one titled so, or any other than the one active when
// the step began) to be shown and active, then runs its action from inside
// that dialog's event loop; the action may open the next dialog. A step whose
// dialog does not come up, or a failed check inside an action, closes every
// modal dialog so that the test ends.
class ModalDriver {
public:
    using Action = std::function<void(QWidget*)>;
    ModalDriver() = default;
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;
    ~ModalDriver();

    ModalDriver& when(const QString& title, Action action);
    bool finished() const { return steps_.empty() && failures_.isEmpty(); }
    QString failures() const { return failures_.join(QLatin1Char('\n')); }

private:
    struct Step {
        QString title;
        Action action;
    };
    void arm();

    std::deque<Step> steps_;
    std::vector<std::unique_ptr<QTimer>> timers_;
    QStringList failures_;
    bool armed_ = false;
};

#define RW_VERIFY_DRIVEN(driver) QVERIFY2((driver).finished(), qPrintable((driver).failures()))

// Closes every modal dialog (a test that failed inside one).
void CloseModalDialogs();

// ---- Fields and buttons ------------------------------------------------------

// The child of that object name; a missing one ends the test run.
QWidget* Child(QWidget* w, const char* name);
template <typename T>
T* Child(QWidget* w, const char* name)
{
    auto* c = qobject_cast<T*>(Child(w, name));
    if (!c)
        qFatal("%s is not of the type asked for", name);
    return c;
}

// A mouse click on the button.
void Click(QWidget* w, const char* button);
// Clears the line edit and types the text key by key, as a user does.
void Type(QWidget* w, const char* field, const QString& text);
// Tab out of the field; returns once the focus has gone.
void Leave(QWidget* w, const char* field);
// What a widget shows: the text of a line edit, label, text box or list
// (its current line); "x" for a checked button, "" for one not checked; the
// caption of the chosen option of a group ("Yes").
QString Shown(QWidget* w, const char* name);
// Enters what Shown reads: types into a line edit, chooses the list's line,
// clicks a button into the state "x" (checked) or "" (not checked), clicks
// the option of a group with that caption.
void Put(QWidget* w, const char* name, const QString& text);

// The action, then exactly one more message box shown (what it says is the
// core's to check).
void OneBoxAfter(RecordingMessages& msgs, const std::function<void()>& act);

// ---- Binding tables ----------------------------------------------------------

// One row of a dialog's binding table: the field, the text entered into it
// (Put/Shown), and what that text is in the case. A row without a field only
// carries a meaning (the list entry a record's fields go into, a flag OK sets).
struct Binding {
    const char* field;
    const char* text;
    std::function<void(rw::Case&)> means;
};
using Bindings = std::vector<Binding>;

// A cleared case, as File - New starts it.
rw::Case Cleared();
// The case with every row's meaning.
rw::Case With(rw::Case c, const Bindings& rows);
// The first line where the two cases' JSON texts differ, empty when equal.
std::string CaseDifference(const rw::Case& got, const rw::Case& expected);
#define RW_COMPARE_CASE(got, expected)                                                                                 \
    QVERIFY2((got) == (expected), rwtest::CaseDifference((got), (expected)).c_str())

// Shows the dialog under test modally and runs the action on it from inside
// its event loop (a runner opens and closes any list around it itself).
using ShowDialog = std::function<void(const ModalDriver::Action& onDialog)>;
// The three checks of a binding table, kase being the case the dialog works
// on: opened over the case with every meaning, each field shows its text;
// over the case as it was, the texts entered and Cancel leave it so; entered
// and OK, it holds every meaning. A screenshot of the filled dialog is taken.
void CheckBindings(rw::Case& kase, const Bindings& rows, const ShowDialog& show, const QString& shot);

// ---- Reports -------------------------------------------------------------------

// "Report Choices", the check list of the report commands.
QString ReportChoices();
// Checks the reports of the mask (rw::kRptInputs, ...) in "Report Choices".
void ChooseReports(QWidget* choices, std::int32_t mask);
// A report text as its window shows it: blanks for NULs, lines without CR.
QString AsShown(const std::string& crlfText);
// The visible top-level window of that object name, if one is open.
QWidget* OpenWindow(const std::string& name);
// The grid shows the core's cells; the window shows the report (text,
// grid, inputs and their list buttons) as the core produced it.
void CompareGrid(QTableWidget* t, const rw::GridData& g);
void CompareReportWindow(QWidget* w, const rw::ReportWindow& r);

// ---- Screenshots -------------------------------------------------------------

// Saves a picture of the window into the folder named by RW_UI_SHOTS, or
// copies a file (a printed PDF) there; nothing when it is not set.
void Shoot(QWidget* w, const QString& name);
void KeepFile(const QString& path, const QString& name);

// ---- Doubles -------------------------------------------------------------------

// Records what the program asked the desktop to open.
class RecordingDesktop : public rw::ui::Desktop {
public:
    bool openUrl(const QUrl& url) override
    {
        urls.push_back(url);
        return true;
    }
    bool openDocument(const std::filesystem::path& file, const std::filesystem::path&) override
    {
        documents.push_back(file);
        return true;
    }
    std::vector<QUrl> urls;
    std::vector<std::filesystem::path> documents;
};

// Recorded message boxes, the next of which can be made to fail: with
// failNext set, showing it throws a fault, as a handler that meets one would.
class FaultingMessages : public RecordingMessages {
public:
    void show(std::string_view title, std::string_view text, rw::MsgIcon icon) override;
    bool failNext = false;
};

// A temporary installation folder holding the tests' release of the rates
// (every table and the release file, built from the frozen sources), and a
// per-user data folder beside it.
class InstallFolder {
public:
    InstallFolder();
    rw::Paths paths() const;
    std::filesystem::path operator/(const std::filesystem::path& p) const { return tmp_ / p; }

private:
    TempDir tmp_;
};

// A case and everything a command context refers to, with counters of the
// main window's services.
struct CommandRig {
    explicit CommandRig(rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000"),
                        rw::RateTable r = SimpleTable(0.0365f));
    TempDir dir;
    rw::Case kase;
    rw::RateTable rates;
    rw::Paths paths;
    FaultingMessages msgs;
    rw::ReportChoice choice;
    rw::PrintState printState;
    std::vector<std::string> notes;
    int helpOpened = 0;
    int recoveryCopies = 0;
    int extendedDueDateOpened = 0;
    rw::ui::CommandContext ctx;
};

}  // namespace rwtest
