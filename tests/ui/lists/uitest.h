#pragma once
// What the window tests of the lists, penalties and reports share: a case
// with the objects a command context refers to, a driver that acts on modal
// dialogs as they come up, and screenshots of the windows.

#include "support/releases.h"
#include "casedata/caserecord.h"
#include "base/paths.h"
#include "rates/ratetable.h"
#include "reports/printmaster.h"
#include "reports/printmanager.h"
#include "support/recordingmessages.h"
#include "support/tempdir.h"
#include "ui/common/commandcontext.h"
#include "ui/common/texts.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLineEdit>
#include <QPixmap>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// Readable failures of QCOMPARE on money and dates.
namespace rw {
inline char* toString(const Money& m)
{
    return qstrdup(ExactMoney(m).c_str());
}
inline char* toString(const Date& d)
{
    return qstrdup(FormatMMDDYYYY(d).c_str());
}
}  // namespace rw

// Readable failures of QCOMPARE on the texts of the message boxes.
namespace QTest {
template <>
inline char* toString(const std::vector<std::string>& texts)
{
    std::string all = "{";
    for (const std::string& t : texts)
        all += "\n  \"" + t + "\"";
    all += texts.empty() ? "}" : "\n}";
    return qstrdup(all.c_str());
}
}  // namespace QTest

namespace uitest {

using rw::Date;
using rw::Money;

constexpr Date D(int m, int d, int y)
{
    return Date::fromCivil(y, m, d);
}

inline Money M(const char* text)
{
    return Money::parse(text).value_or(Money());
}

// One simple-interest row from 1980 to 2030: interest is base x rate x days /
// 365, rounded to cents, so that figures can be worked out by hand.
inline rw::RateTable SimpleTable(float rate)
{
    rw::RateRow r;
    r.dtFrom = D(1, 1, 1980);
    r.dtThru = D(12, 31, 2030);
    r.fUPRate = rate;
    r.fOPRate = rate;
    r.sCalcMethod = 'S';
    return {r};
}

// A cleared federal case; the extended due date is the due date.
inline rw::Case FederalCase(Date due, Date start, Date stop, const char* balance)
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    c.init.sName = "Harbor Tool & Die, Inc.";
    c.init.s2ndLine = "EIN 12-3456789";
    c.init.dtDue = due;
    c.init.dtExtended = due;
    c.init.tlStart.dtDate = start;
    c.init.tlStop.dtDate = stop;
    c.init.tlStart.cTax = M(balance);
    return c;
}

// A case and everything a command context refers to, with counters of the
// main window's services.
struct Fixture {
    explicit Fixture(rw::Case c, rw::RateTable r = SimpleTable(0.0365f))
        : kase(std::move(c)),
          rates(std::move(r)),
          paths(rw::Paths::ForFolders(dir.path(), dir.path())),
          ctx{nullptr,
              kase,
              rates,
              rwtest::Minimums2018(),
              paths,
              msgs,
              choice,
              printState,
              [this](std::string_view n) { notes.emplace_back(n); },
              [this] { ++helpOpened; },
              [this] { ++recoveryCopies; },
              [this] {
                  ++extendedDueDateOpened;
                  if (onExtendedDueDate)
                      onExtendedDueDate();
              }}
    {
    }

    rwtest::TempDir dir;
    rw::Case kase;
    rw::RateTable rates;
    rw::Paths paths;
    rwtest::RecordingMessages msgs;
    rw::ReportChoice choice;
    rw::PrintState printState;
    std::vector<std::string> notes;
    int helpOpened = 0;
    int recoveryCopies = 0;
    int extendedDueDateOpened = 0;
    std::function<void()> onExtendedDueDate;
    rw::ui::CommandContext ctx;
};

// Acts on modal dialogs as they come up: each step waits for the modal
// dialog with its title to be shown and active, then runs its action (which may open the next modal
// dialog and so wait inside it). Every step polls with a timer of its own,
// so that a step can be taken inside the event loop of an earlier one.
class ModalDriver {
public:
    using Action = std::function<void(QWidget*)>;

    ModalDriver() = default;
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;
    ~ModalDriver()
    {
        for (QTimer* t : timers_)
            delete t;
    }

    void when(const QString& title, Action action)
    {
        steps_.push_back({title, std::move(action)});
        if (steps_.size() == 1 && !armed_)
            arm();
    }
    bool finished() const { return steps_.empty() && failures.isEmpty(); }
    QStringList failures;
    int timeoutMs = 8000;

private:
    struct Step {
        QString title;
        Action action;
    };

    void arm()
    {
        if (steps_.empty()) {
            armed_ = false;
            return;
        }
        armed_ = true;
        auto* timer = new QTimer;
        timers_.push_back(timer);
        auto started = std::make_shared<QElapsedTimer>();
        started->start();
        QObject::connect(timer, &QTimer::timeout, [this, timer, started] {
            if (steps_.empty()) {
                timer->stop();
                return;
            }
            QWidget* w = QApplication::activeModalWidget();
            if (w && w->isVisible() && w->windowTitle() == steps_.front().title && !w->isActiveWindow()) {
                // Keys go to the active window: a dialog uncovered by a
                // closed one is activated again.
                w->activateWindow();
                return;
            }
            if (w && w->isVisible() && w->isActiveWindow() && w->windowTitle() == steps_.front().title) {
                timer->stop();
                Step step = std::move(steps_.front());
                steps_.pop_front();
                arm();
                step.action(w);
                if (QTest::currentTestFailed()) {
                    // A check of the step failed: close whatever is open so
                    // that the test ends instead of waiting for the user.
                    steps_.clear();
                    closeModalDialogs();
                }
                return;
            }
            if (started->elapsed() > timeoutMs) {
                timer->stop();
                failures << QStringLiteral("no modal dialog \"%1\" came up (the active one: \"%2\")")
                                .arg(steps_.front().title, w ? w->windowTitle() : QStringLiteral("none"));
                steps_.clear();
                closeModalDialogs();
            }
        });
        timer->start(5);
    }

    // Closes every modal dialog so that the test does not hang.
    static void closeModalDialogs()
    {
        for (int guard = 0; guard < 20; ++guard) {
            QWidget* m = QApplication::activeModalWidget();
            if (!m)
                break;
            if (auto* d = qobject_cast<QDialog*>(m))
                d->done(QDialog::Rejected);
            else
                m->close();
            QCoreApplication::processEvents();
        }
    }

    std::deque<Step> steps_;
    std::vector<QTimer*> timers_;
    bool armed_ = false;
};

template <typename T>
T* child(QWidget* w, const char* name)
{
    T* c = w->findChild<T*>(QString::fromLatin1(name));
    if (!c)
        qWarning("no child %s in %s", name, qPrintable(w->objectName()));
    return c;
}

// Clears a field and types text into it, as a user does.
inline void retype(QLineEdit* field, const QString& text)
{
    field->setFocus(Qt::TabFocusReason);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Backspace);
    QTest::keyClicks(field, text);
}

// Saves what the window shows into the screenshot folder named by
// RW_UI_SHOTS (nothing when it is not set).
inline void shoot(QWidget* w, const QString& name)
{
    const QByteArray folder = qgetenv("RW_UI_SHOTS");
    if (folder.isEmpty())
        return;
    QDir().mkpath(QString::fromLocal8Bit(folder));
    QCoreApplication::processEvents();
    w->grab().save(QString::fromLocal8Bit(folder) + QStringLiteral("/") + name + QStringLiteral(".png"));
}

// Keeps a copy of a file (a printed PDF) in the screenshot folder.
inline void keepFile(const QString& path, const QString& name)
{
    const QByteArray folder = qgetenv("RW_UI_SHOTS");
    if (folder.isEmpty())
        return;
    QDir().mkpath(QString::fromLocal8Bit(folder));
    const QString target = QString::fromLocal8Bit(folder) + QStringLiteral("/") + name;
    QFile::remove(target);
    QFile::copy(path, target);
}

inline std::vector<std::string> messageTexts(const rwtest::RecordingMessages& m)
{
    return m.texts();
}

// The top-level window with this object name, if one is open.
inline QWidget* openWindow(const char* name)
{
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* w : all)
        if (w->objectName() == QString::fromLatin1(name) && w->isVisible())
            return w;
    return nullptr;
}

}  // namespace uitest
