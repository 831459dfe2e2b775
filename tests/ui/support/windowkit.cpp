#include "tests/ui/support/windowkit.h"

#include "base/fault.h"
#include "casejson/casejson.h"
#include "rates/release.h"
#include "support/releases.h"
#include "ui/common/dialogkit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPointer>
#include <QRadioButton>
#include <QTableWidget>
#include <QTimer>

#include <sstream>

namespace rwtest {

// ---- Modal dialogs -----------------------------------------------------------

ModalDriver::~ModalDriver() = default;

ModalDriver& ModalDriver::when(const QString& title, Action action)
{
    steps_.push_back({title, std::move(action)});
    if (!armed_)
        arm();
    return *this;
}

void ModalDriver::arm()
{
    armed_ = !steps_.empty();
    if (!armed_)
        return;
    QTimer* timer = timers_.emplace_back(std::make_unique<QTimer>()).get();
    const QPointer<QWidget> before = QApplication::activeModalWidget();
    auto started = std::make_shared<QElapsedTimer>();
    started->start();
    QObject::connect(timer, &QTimer::timeout, [this, timer, before, started] {
        if (steps_.empty()) {
            timer->stop();
            return;
        }
        QWidget* w = QApplication::activeModalWidget();
        const QString title = steps_.front().title;
        const bool match = w && w->isVisible() && (title.isEmpty() ? w != before.data() : w->windowTitle() == title);
        if (match && w->isActiveWindow()) {
            timer->stop();
            Step step = std::move(steps_.front());
            steps_.pop_front();
            arm();
            step.action(w);
            if (QTest::currentTestFailed()) {
                steps_.clear();
                CloseModalDialogs();
            }
        } else if (match) {
            w->activateWindow();  // keys go to the active window
        }
        if (timer->isActive() && started->elapsed() > 8000) {
            timer->stop();
            failures_ << QStringLiteral("no modal dialog \"%1\" came up (the active one: \"%2\")")
                             .arg(title, w ? w->windowTitle() : QStringLiteral("none"));
            steps_.clear();
            CloseModalDialogs();
        }
    });
    timer->start(5);
}

void CloseModalDialogs()
{
    for (int guard = 0; guard < 20 && QApplication::activeModalWidget(); ++guard) {
        QWidget* m = QApplication::activeModalWidget();
        if (auto* d = qobject_cast<QDialog*>(m))
            d->done(QDialog::Rejected);
        else
            m->close();
        QCoreApplication::processEvents();
    }
}

// ---- Fields and buttons ------------------------------------------------------

QWidget* Child(QWidget* w, const char* name)
{
    auto* c = w->findChild<QWidget*>(QString::fromLatin1(name));
    if (!c)
        qFatal("no %s in %s", name, qPrintable(w->objectName()));
    return c;
}

void Click(QWidget* w, const char* button)
{
    QTest::mouseClick(Child<QAbstractButton>(w, button), Qt::LeftButton);
}

void Type(QWidget* w, const char* field, const QString& text)
{
    auto* e = Child<QLineEdit>(w, field);
    e->setFocus(Qt::TabFocusReason);
    e->selectAll();
    QTest::keyClick(e, Qt::Key_Delete);
    QTest::keyClicks(e, text);
}

void Leave(QWidget* w, const char* field)
{
    QWidget* f = Child(w, field);
    if (!f->hasFocus())
        f->setFocus(Qt::TabFocusReason);
    QTest::keyClick(f, Qt::Key_Tab);
    QTRY_VERIFY(!f->hasFocus());
}

QString Shown(QWidget* w, const char* name)
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
    if (auto* l = qobject_cast<QListWidget*>(c))
        return l->currentItem() ? l->currentItem()->text() : QString();
    if (qobject_cast<QGroupBox*>(c)) {
        const auto choices = c->findChildren<QRadioButton*>();
        for (const QRadioButton* r : choices)
            if (r->isChecked())
                return QString(r->text()).remove(QLatin1Char('&'));
        return {};
    }
    if (auto* b = qobject_cast<QAbstractButton*>(c))
        return b->isChecked() ? QStringLiteral("x") : QString();
    qFatal("%s shows no text", name);
}

void Put(QWidget* w, const char* name, const QString& text)
{
    QWidget* c = Child(w, name);
    if (qobject_cast<QLineEdit*>(c)) {
        Type(w, name, text);
    } else if (auto* b = qobject_cast<QComboBox*>(c)) {
        b->setFocus(Qt::TabFocusReason);
        b->setCurrentIndex(b->findText(text));
    } else if (qobject_cast<QGroupBox*>(c)) {
        const auto choices = c->findChildren<QRadioButton*>();
        for (QRadioButton* r : choices)
            if (QString(r->text()).remove(QLatin1Char('&')) == text)
                QTest::mouseClick(r, Qt::LeftButton);
    } else if (auto* button = qobject_cast<QAbstractButton*>(c)) {
        if (button->isChecked() != (text == QStringLiteral("x")))
            QTest::mouseClick(button, Qt::LeftButton);
    } else {
        qFatal("nothing can be put into %s", name);
    }
}

void OneBoxAfter(RecordingMessages& msgs, const std::function<void()>& act)
{
    const std::size_t before = msgs.shown.size();
    act();
    QCOMPARE(msgs.shown.size(), before + 1);
}

// ---- Binding tables ----------------------------------------------------------

rw::Case Cleared()
{
    rw::Case c;
    rw::ClearInputs(c);
    return c;
}

rw::Case With(rw::Case c, const Bindings& rows)
{
    for (const Binding& row : rows)
        if (row.means)
            row.means(c);
    return c;
}

std::string CaseDifference(const rw::Case& got, const rw::Case& expected)
{
    std::istringstream a(rw::CaseToJsonText(got));
    std::istringstream b(rw::CaseToJsonText(expected));
    std::string la;
    std::string lb;
    while (true) {
        const bool moreA = static_cast<bool>(std::getline(a, la));
        const bool moreB = static_cast<bool>(std::getline(b, lb));
        if (!moreA && !moreB)
            return got == expected ? std::string() : "the cases differ outside their JSON form";
        if (!moreA || !moreB || la != lb)
            return "got " + (moreA ? la : "<end>") + ", expected " + (moreB ? lb : "<end>");
    }
}

void CheckBindings(rw::Case& kase, const Bindings& rows, const ShowDialog& show, const QString& shot)
{
    const auto enter = [&rows](QWidget* d) {
        for (const Binding& row : rows)
            if (row.field)
                Put(d, row.field, QString::fromLatin1(row.text));
    };
    const rw::Case base = kase;
    kase = With(base, rows);
    show([&rows](QWidget* d) {
        for (const Binding& row : rows)
            if (row.field) {
                const QString shown = Shown(d, row.field);
                QVERIFY2(shown == QString::fromLatin1(row.text), qPrintable(QStringLiteral("%1 shows \"%2\"").arg(QString::fromLatin1(row.field), shown)));
            }
        Click(d, "btnCancel");
    });
    kase = base;
    show([&](QWidget* d) {
        enter(d);
        Click(d, "btnCancel");
    });
    RW_COMPARE_CASE(kase, base);
    show([&](QWidget* d) {
        enter(d);
        Shoot(d, shot);
        Click(d, "btnOK");
    });
    RW_COMPARE_CASE(kase, With(base, rows));
}

// ---- Reports -------------------------------------------------------------------

QString ReportChoices()
{
    return QString::fromLatin1(rw::ReportChoiceDialog::kCaption);
}

void ChooseReports(QWidget* choices, std::int32_t mask)
{
    auto* list = Child<QListWidget>(choices, "chkReport");
    for (int i = 0; i < list->count(); ++i)
        list->item(i)->setCheckState((mask >> i) & 1 ? Qt::Checked : Qt::Unchecked);
}

QString AsShown(const std::string& crlfText)
{
    QString t = rw::ui::DisplayText(crlfText);
    t.remove(QLatin1Char('\r'));
    if (t.endsWith(QLatin1Char('\n')))
        t.chop(1);
    return t;
}

QWidget* OpenWindow(const std::string& name)
{
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* w : all)
        if (w->isVisible() && w->objectName() == QString::fromLatin1(name))
            return w;
    return nullptr;
}

void CompareGrid(QTableWidget* t, const rw::GridData& g)
{
    QCOMPARE(t->rowCount(), static_cast<int>(g.rows()) - 1);
    QCOMPARE(t->columnCount(), static_cast<int>(g.columns()));
    for (int c = 0; c < t->columnCount(); ++c) {
        const auto column = static_cast<std::size_t>(c);
        QCOMPARE(t->horizontalHeaderItem(c)->text(), rw::ui::DisplayText(g.cells[0][column]));
        for (int r = 0; r < t->rowCount(); ++r)
            QCOMPARE(t->item(r, c)->text(), rw::ui::DisplayText(g.cells[static_cast<std::size_t>(r) + 1][column]));
    }
}

void CompareReportWindow(QWidget* w, const rw::ReportWindow& r)
{
    QVERIFY2(w, r.name.c_str());
    QCOMPARE(w->windowTitle(), QString::fromLatin1(r.caption));
    QCOMPARE(w->isModal(), r.modal);
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

// ---- Screenshots -------------------------------------------------------------

namespace {

QString shotFolder()
{
    const QString folder = qEnvironmentVariable("RW_UI_SHOTS");
    if (!folder.isEmpty())
        QDir().mkpath(folder);
    return folder;
}

}  // namespace

void Shoot(QWidget* w, const QString& name)
{
    const QString folder = shotFolder();
    if (folder.isEmpty())
        return;
    for (int i = 0; i < 3; ++i)  // pending layout requests first
        QCoreApplication::processEvents();
    w->grab().save(folder + QLatin1Char('/') + name + QStringLiteral(".png"));
}

void KeepFile(const QString& path, const QString& name)
{
    const QString folder = shotFolder();
    if (folder.isEmpty())
        return;
    QFile::remove(folder + QLatin1Char('/') + name);
    QFile::copy(path, folder + QLatin1Char('/') + name);
}

// ---- Doubles -------------------------------------------------------------------

void FaultingMessages::show(std::string_view title, std::string_view text, rw::MsgIcon icon)
{
    if (failNext) {
        failNext = false;
        throw rw::Fault(rw::kErrInvalidCall, "FaultingMessages");
    }
    RecordingMessages::show(title, text, icon);
}

InstallFolder::InstallFolder()
{
    namespace fs = std::filesystem;
    fs::create_directories(tmp_ / "install");
    fs::create_directories(tmp_ / "data");
    for (const auto& entry : fs::directory_iterator(FixtureReleaseFolder()))
        if (entry.is_regular_file())
            fs::copy_file(entry.path(), tmp_ / "install" / entry.path().filename());
}

rw::Paths InstallFolder::paths() const
{
    return rw::Paths::ForFolders(tmp_ / "install", tmp_ / "data");
}

CommandRig::CommandRig(rw::Case c, rw::RateTable r)
    : kase(std::move(c)),
      rates(std::move(r)),
      paths(rw::Paths::ForFolders(dir.path(), dir.path())),
      ctx{nullptr,
          kase,
          rates,
          FixtureRelease().ftfMinimums,
          paths,
          msgs,
          choice,
          printState,
          [this](std::string_view n) { notes.emplace_back(n); },
          [this] { ++helpOpened; },
          [this] { ++recoveryCopies; },
          [this] { ++extendedDueDateOpened; }}
{
}

}  // namespace rwtest
