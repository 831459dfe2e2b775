#pragma once
// What every window test shares beside tests/support's doubles and cases:
// the modal driver, typing, binding and reaction tables, report windows,
// pictures, a command context, an installation folder with the release.

#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/releases.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include "base/fault.h"
#include "base/paths.h"
#include "reports/printmanager.h"
#include "reports/printmaster.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"
#include "ui/main/desktop.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include <deque>
#include <functional>
#include <memory>

namespace rwtest {

inline void CloseModalDialogs()
{
    for (int guard = 0; guard < 20 && QApplication::activeModalWidget(); ++guard) {
        if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            d->done(QDialog::Rejected);
        QCoreApplication::processEvents();
    }
}

// Acts on modal dialogs as they come up: a step waits for the next modal
// dialog titled so (any new one for an empty title), then runs its action
// inside that dialog's event loop, which may open the next. A dialog not up
// within eight seconds, or a failed check, closes every modal dialog.
class ModalDriver {
public:
    using Action = std::function<void(QWidget*)>;
    ModalDriver& when(const char* title, Action action)
    {
        steps_.emplace_back(QString::fromLatin1(title), std::move(action));
        if (steps_.size() == 1)
            arm();
        return *this;
    }
    bool finished() const { return steps_.empty() && failures_.isEmpty(); }
    QString failures() const { return failures_.join(QLatin1Char('\n')); }

private:
    void arm()
    {
        QTimer* timer = timers_.emplace_back(std::make_unique<QTimer>()).get();
        const QPointer<QWidget> before = QApplication::activeModalWidget();
        auto started = std::make_shared<QElapsedTimer>();
        started->start();
        QObject::connect(timer, &QTimer::timeout, [this, timer, before, started] {
            if (steps_.empty())
                return timer->stop();
            const QString title = steps_.front().first;
            QWidget* w = QApplication::activeModalWidget();
            const bool match
                = w && w->isVisible()
                  && (title.isEmpty() ? w != before.data() : w->windowTitle() == title);
            if (match && !w->isActiveWindow())
                w->activateWindow();  // keys go to the active window
            if (match && w->isActiveWindow()) {
                timer->stop();
                const Action action = std::move(steps_.front().second);
                steps_.pop_front();
                if (!steps_.empty())
                    arm();
                action(w);
            } else if (started->elapsed() > 8000) {
                failures_ << QStringLiteral("no modal dialog \"%1\" came up").arg(title);
            }
            if (QTest::currentTestFailed() || !failures_.isEmpty()) {
                timer->stop();
                steps_.clear();
                CloseModalDialogs();
            }
        });
        timer->start(5);
    }
    std::deque<std::pair<QString, Action>> steps_;
    std::vector<std::unique_ptr<QTimer>> timers_;
    QStringList failures_;
};
#define RW_VERIFY_DRIVEN(driver) QVERIFY2((driver).finished(), qPrintable((driver).failures()))

// Shows a dialog modally (and any list around it) with the action on it;
// Shows: `open` shows the dialog of that title.
using ShowDialog = std::function<void(const ModalDriver::Action&)>;
inline ShowDialog Shows(const char* title, std::function<void()> open)
{
    return [title, open = std::move(open)](const ModalDriver::Action& action) {
        ModalDriver drive;
        drive.when(title, action);
        open();
        RW_VERIFY_DRIVEN(drive);
    };
}

// The child of that object name; a missing one ends the run.
template<typename T = QWidget>
T* Child(QWidget* w, const char* name)
{
    T* c = w->findChild<T*>(QString::fromLatin1(name));
    if (!c)
        qFatal("no %s in %s", name, qPrintable(w->objectName()));
    return c;
}

inline void Click(QWidget* w, const char* button)
{
    QTest::mouseClick(Child<QAbstractButton>(w, button), Qt::LeftButton);
}

inline void Reject(QWidget* dialog)
{
    qobject_cast<QDialog*>(dialog)->reject();
}

// Clears the line edit and types the text key by key.
inline void Type(QWidget* w, const char* lineEdit, std::string_view text)
{
    auto* e = Child<QLineEdit>(w, lineEdit);
    e->setFocus(Qt::TabFocusReason);
    e->selectAll();
    QTest::keyClick(e, Qt::Key_Delete);
    QTest::keyClicks(e, QString::fromLatin1(text));
}

// Tab out of the field, until the focus has gone.
inline void Leave(QWidget* w, const char* field)
{
    QWidget* f = Child(w, field);
    f->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f, Qt::Key_Tab);
    QTRY_VERIFY(!f->hasFocus());
}

// The option of a group with that caption (the chosen one for none).
inline QRadioButton* Option(QWidget* group, const QString& caption)
{
    for (QRadioButton* r : group->findChildren<QRadioButton*>())
        if ((caption.isEmpty() && r->isChecked()) || QString(r->text()).remove(u'&') == caption)
            return r;
    return nullptr;
}

// What a widget shows: the text of a line edit, label, text box or drop-down
// list; "x" for a checked button, "" for one not checked; the caption of a
// group's chosen option ("Yes"). Put enters it.
inline QString Shown(QWidget* w, const char* name)
{
    QWidget* c = Child(w, name);
    if (auto* e = qobject_cast<QLineEdit*>(c))
        return e->text();
    if (auto* l = qobject_cast<QLabel*>(c))
        return l->text();
    if (auto* t = qobject_cast<QPlainTextEdit*>(c))
        return t->toPlainText();
    if (auto* b = qobject_cast<QComboBox*>(c))
        return b->currentText();
    if (auto* b = qobject_cast<QAbstractButton*>(c))
        return b->isChecked() ? QStringLiteral("x") : QString();
    const QRadioButton* chosen = Option(c, {});
    return chosen ? QString(chosen->text()).remove(u'&') : QString();
}

inline void Put(QWidget* w, const char* name, std::string_view text)
{
    QWidget* c = Child(w, name);
    if (qobject_cast<QLineEdit*>(c)) {
        Type(w, name, text);
    } else if (auto* b = qobject_cast<QComboBox*>(c)) {
        b->setFocus(Qt::TabFocusReason);
        b->setCurrentIndex(b->findText(QString::fromLatin1(text)));
    } else if (auto* button = qobject_cast<QAbstractButton*>(c)) {
        if (button->isChecked() != (text == "x"))
            QTest::mouseClick(button, Qt::LeftButton);
    } else if (QRadioButton* r = Option(c, QString::fromLatin1(text))) {
        QTest::mouseClick(r, Qt::LeftButton);
    }
}

// The action, then exactly one more message box (its text is the core's).
inline void OneBoxAfter(RecordingMessages& msgs, const std::function<void()>& act)
{
    const std::size_t before = msgs.shown.size();
    act();
    QCOMPARE(msgs.shown.size(), before + 1);
}

// A picture of the window in the folder RW_UI_SHOTS names (none unset).
inline void Shoot(QWidget* w, const char* name)
{
    const QString folder = qEnvironmentVariable("RW_UI_SHOTS");
    if (folder.isEmpty() || !QDir().mkpath(folder))
        return;
    for (int i = 0; i < 3; ++i)  // pending layout requests first
        QCoreApplication::processEvents();
    w->grab().save(folder + u'/' + QString::fromLatin1(name) + QStringLiteral(".png"));
}

// A row of a binding table: a field, the text put into it, what that text
// is in the case (a row without a field: a list entry, a flag OK sets).
struct Binding {
    const char* field;
    const char* text;
    std::function<void(rw::Case&)> means;
};
using Bindings = std::vector<Binding>;

inline rw::Case With(rw::Case c, const Bindings& rows)
{
    for (const Binding& row : rows)
        if (row.means)
            row.means(c);
    return c;
}

// Over the case with every meaning each field shows its text; the texts
// put and Cancel leave the case, put and OK give it every meaning.
inline void CheckBindings(rw::Case& kase, const Bindings& rows, const ShowDialog& show,
                          const char* shot)
{
    const auto put = [&rows](QWidget* d) {
        for (const Binding& row : rows)
            if (row.field)
                Put(d, row.field, row.text);
    };
    const rw::Case base = kase;
    kase = With(base, rows);
    show([&rows](QWidget* d) {
        for (const Binding& row : rows)
            if (row.field)
                QCOMPARE(Shown(d, row.field), QString::fromLatin1(row.text));
        Click(d, "btnCancel");
    });
    kase = base;
    show([&](QWidget* d) {
        put(d);
        Click(d, "btnCancel");
    });
    QVERIFY(kase == base);
    show([&](QWidget* d) {
        put(d);
        Shoot(d, shot);
        Click(d, "btnOK");
    });
    QVERIFY(kase == With(base, rows));
}

// A row of a reaction table: what is put into a field (a line edit is left
// after, unless the effect shows while typing) and its connection's effect:
// one more message box, the target opened (enabled and visible, which it was
// not), or the target showing something else.
enum class Effect { None, Box, Opens, Changes };
struct Reaction {
    const char* field;
    const char* text;
    Effect effect;
    const char* target = nullptr;
};

inline void CheckReactions(QWidget* d, RecordingMessages& msgs, const std::vector<Reaction>& rows)
{
    const auto open = [d](const char* name) {
        return Child(d, name)->isEnabled() && Child(d, name)->isVisible();
    };
    for (const Reaction& r : rows) {
        const std::size_t boxes = msgs.shown.size();
        const QString before = r.effect == Effect::Changes ? Shown(d, r.target) : QString();
        QVERIFY2(r.effect != Effect::Opens || !open(r.target), r.target);
        Put(d, r.field, r.text);
        if (r.effect != Effect::Changes && qobject_cast<QLineEdit*>(Child(d, r.field)))
            Leave(d, r.field);
        QVERIFY2(r.effect != Effect::Box || msgs.shown.size() == boxes + 1, r.field);
        QVERIFY2(r.effect != Effect::Opens || open(r.target), r.target);
        QVERIFY2(r.effect != Effect::Changes || Shown(d, r.target) != before, r.field);
    }
}

// The reaction table's checks, then Cancel.
inline ModalDriver::Action Reacts(RecordingMessages& msgs, std::vector<Reaction> rows)
{
    return [&msgs, rows = std::move(rows)](QWidget* d) {
        CheckReactions(d, msgs, rows);
        Click(d, "btnCancel");
    };
}

// A fault in a handler (the action has the next box fail) closes the dialog
// and reaches the caller; the case stays as it was.
inline void CheckFault(const rw::Case& kase, const ShowDialog& show, const ModalDriver::Action& act)
{
    const rw::Case before = kase;
    QVERIFY_THROWS_EXCEPTION(rw::Fault, show(act));
    QVERIFY(!QApplication::activeModalWidget() && kase == before);
}

// "Report Choices": checks the reports of the mask (rw::kRptInputs, ...).
inline void ChooseReports(QWidget* choices, std::int32_t mask)
{
    auto* list = Child<QListWidget>(choices, "chkReport");
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setCheckState((mask >> i) & 1 ? Qt::Checked : Qt::Unchecked);
}

// "Report Choices" with these reports, then OK.
inline ModalDriver::Action Choose(std::int32_t mask)
{
    return [mask](QWidget* d) {
        ChooseReports(d, mask);
        Click(d, "btnOK");
    };
}

// A report text as its window shows it: blanks for NULs, lines without CR.
inline QString AsShown(const std::string& crlfText)
{
    QString t = rw::ui::DisplayText(crlfText).remove(u'\r');
    return t.endsWith(u'\n') ? t.chopped(1) : t;
}

// The visible top-level window of that object name.
inline QWidget* OpenWindow(const std::string& name)
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible() && w->objectName() == QString::fromLatin1(name))
            return w;
    return nullptr;
}

inline void CompareGrid(QTableWidget* t, const rw::GridData& g)
{
    QCOMPARE(t->rowCount(), static_cast<int>(g.rows()) - 1);
    QCOMPARE(t->columnCount(), static_cast<int>(g.columns()));
    for (std::size_t c = 0; c < g.columns(); ++c) {
        const int column = static_cast<int>(c);
        QCOMPARE(t->horizontalHeaderItem(column)->text(), rw::ui::DisplayText(g.cells[0][c]));
        for (std::size_t r = 1; r < g.rows(); ++r)
            QCOMPARE(t->item(static_cast<int>(r) - 1, column)->text(),
                     rw::ui::DisplayText(g.cells[r][c]));
    }
}

// The window shows the report (text, grid, inputs and their list buttons) as
// the core produced it.
inline void CompareReportWindow(QWidget* w, const rw::ReportWindow& r)
{
    QVERIFY2(w, r.name.c_str());
    QCOMPARE(w->windowTitle(), QString::fromLatin1(r.caption));
    QVERIFY(!w->isModal());
    if (r.grid) {
        CompareGrid(w->findChild<QTableWidget*>(), *r.grid);
    } else if (r.inputs) {
        QCOMPARE(Shown(w, "txtIP"), AsShown(r.inputs->text));
        QCOMPARE(Child(w, "btnDep")->isEnabled(), r.inputs->depositsEnabled);
        QCOMPARE(Child(w, "btnCharges")->isEnabled(), r.inputs->chargesEnabled);
        QCOMPARE(Child(w, "btnPmts")->isEnabled(), r.inputs->paymentsEnabled);
    } else {
        QCOMPARE(w->findChild<QPlainTextEdit*>()->toPlainText(), AsShown(r.text));
    }
}

class RecordingDesktop : public rw::ui::Desktop {
public:
    using Path = std::filesystem::path;
    bool openUrl(const QUrl& url) override { return urls.push_back(url), true; }
    bool openDocument(const Path& file, const Path&) override
    {
        return documents.push_back(file), true;
    }
    std::vector<QUrl> urls;
    std::vector<Path> documents;
};

// Message boxes recorded; with failNext, the next throws a fault.
class FaultingMessages : public RecordingMessages {
public:
    void show(std::string_view title, std::string_view text, rw::MsgIcon icon) override
    {
        if (std::exchange(failNext, false))
            throw rw::Fault(rw::kErrInvalidCall, "FaultingMessages");
        RecordingMessages::show(title, text, icon);
    }
    bool failNext = false;
};

// A temporary installation folder with the tests' release, a data folder.
struct InstallFolder {
    TempDir tmp;
    InstallFolder()
    {
        std::filesystem::create_directories(tmp / "data");
        std::filesystem::create_directories(tmp / "install");
        for (const auto& entry : std::filesystem::directory_iterator(FixtureReleaseFolder()))
            if (entry.is_regular_file())
                std::filesystem::copy_file(entry.path(), tmp / "install" / entry.path().filename());
    }
    rw::Paths paths() const { return rw::Paths::ForFolders(tmp / "install", tmp / "data"); }
};

// A case and everything a command context refers to, with counters of the
// main window's services.
struct CommandRig {
    explicit CommandRig(rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000"),
                        rw::RateTable r = SimpleTable(0.0365f))
        : kase(std::move(c))
        , rates(std::move(r))
        , paths(rw::Paths::ForFolders(dir.path(), dir.path()))
    {
        ctx.setNote = [this](std::string_view n) { notes.emplace_back(n); };
        ctx.openHelp = [this] { ++helpOpened; };
        ctx.writeRecoveryCopy = [this] { ++recoveryCopies; };
        ctx.openExtendedDueDate = [this] { ++extendedDueDateOpened; };
    }
    TempDir dir;
    rw::Case kase;
    rw::RateTable rates;
    rw::Paths paths;
    FaultingMessages msgs;
    rw::ReportChoice choice;
    rw::PrintState printState;
    std::vector<std::string> notes;
    int helpOpened = 0, recoveryCopies = 0, extendedDueDateOpened = 0;
    rw::ui::CommandContext ctx{
        nullptr, kase, rates, FixtureRelease().ftfMinimums, paths, msgs, choice, printState, {}, {},
        {},      {},   {}};
};

}  // namespace rwtest
