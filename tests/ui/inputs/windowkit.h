#pragma once
// What the window tests share: scripted stand-ins for the file dialogs, the
// program's end and the desktop; driving a modal dialog from inside its own
// event loop; typing into fields; a temporary installation folder with the
// federal table and the release file.

#include "support/releases.h"
#include "base/paths.h"
#include "shell/ratealert.h"
#include "shell/services.h"
#include "support/tempdir.h"
#include "ui/main/desktop.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace rwtest {

// File dialogs answering from queues; an empty queue is a cancel.
class ScriptedFileDialogs : public rw::FileDialogs {
public:
    std::optional<std::string> openCase(const std::string& folder) override
    {
        openFolders.push_back(folder);
        return next(opens);
    }
    std::optional<std::string> saveCase(const std::string& folder) override
    {
        saveFolders.push_back(folder);
        return next(saves);
    }
    std::deque<std::string> opens;
    std::deque<std::string> saves;
    std::vector<std::string> openFolders;
    std::vector<std::string> saveFolders;

private:
    static std::optional<std::string> next(std::deque<std::string>& q)
    {
        if (q.empty())
            return std::nullopt;
        std::string s = q.front();
        q.pop_front();
        return s;
    }
};

// Records the end of the program instead of ending the test.
class RecordingProgram : public rw::ProgramControl {
public:
    void hideMainWindow() override { ++hides; }
    void endProgram() override { ++ends; }
    int hides = 0;
    int ends = 0;
};

// Records what the program asked the desktop to open.
class RecordingDesktop : public rw::ui::Desktop {
public:
    bool openUrl(const QUrl& url) override
    {
        urls.push_back(url);
        return true;
    }
    bool openDocument(const std::filesystem::path& file, const std::filesystem::path& folder) override
    {
        documents.push_back(file);
        folders.push_back(folder);
        return true;
    }
    std::vector<QUrl> urls;
    std::vector<std::filesystem::path> documents;
    std::vector<std::filesystem::path> folders;
};

// Records the rate alerts the Initial Inputs dialog shows.
class RecordingAlertWindow : public rw::RateAlertWindow {
public:
    void showModal(const rw::RateAlert& alert) override { alerts.push_back(alert); }
    std::vector<rw::RateAlert> alerts;
};

// Runs `action` on the next modal dialog that opens (one other than the
// modal dialog active now), from inside that dialog's event loop. The watch
// stops when the returned object is destroyed or after `timeoutMs`.
class ModalWatch {
public:
    ModalWatch(std::function<void(QWidget*)> action, int timeoutMs = 10000)
        : before_(QApplication::activeModalWidget()), action_(std::move(action)), timer_(new QTimer)
    {
        timer_->setInterval(20);
        QObject::connect(timer_.get(), &QTimer::timeout, [this] {
            QWidget* modal = QApplication::activeModalWidget();
            elapsed_ += 20;
            if (modal && modal != before_ && modal->isVisible()) {
                timer_->stop();
                fired_ = true;
                action_(modal);
            } else if (elapsed_ > timeoutMs_) {
                timer_->stop();
            }
        });
        timeoutMs_ = timeoutMs;
        timer_->start();
    }
    bool fired() const { return fired_; }

private:
    QPointer<QWidget> before_;
    std::function<void(QWidget*)> action_;
    std::unique_ptr<QTimer> timer_;
    int elapsed_ = 0;
    int timeoutMs_ = 0;
    bool fired_ = false;
};

template <typename T = QWidget>
T* child(QWidget* parent, const char* name)
{
    return parent->findChild<T*>(QString::fromLatin1(name));
}

// Clicks the button of that object name.
inline void click(QWidget* parent, const char* name)
{
    auto* b = child<QAbstractButton>(parent, name);
    if (!b)
        qFatal("no button %s", name);
    QTest::mouseClick(b, Qt::LeftButton);
}

// Puts the focus into the field, clears it and types the text key by key.
inline void typeInto(QLineEdit* field, const QString& text)
{
    field->setFocus(Qt::TabFocusReason);
    field->selectAll();
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

// Shows a window and waits until it has the focus.
inline bool showActive(QWidget* w)
{
    w->show();
    w->activateWindow();
    return QTest::qWaitForWindowActive(w);
}

// A temporary installation folder holding the rate tables of the tests'
// release of late 2026 (built from the frozen sources under tests/fixtures)
// with the release file of early 2018 (whose alerts are known word for word)
// or that release's own, and a per-user data root beside it.
class InstallFolder {
public:
    enum class Release { Early2018, Late2026 };

    explicit InstallFolder(Release release = Release::Early2018)
    {
        namespace fs = std::filesystem;
        fs::create_directories(tmp_ / "install");
        fs::create_directories(tmp_ / "data");
        const fs::path built = FixtureReleaseFolder();
        for (const auto& entry : fs::directory_iterator(built))
            if (entry.path().extension() == ".tbl")
                fs::copy_file(entry.path(), tmp_ / "install" / entry.path().filename());
        const fs::path releaseFile = release == Release::Late2026 ? built / rw::kReleaseFileName
                                                                  : Release2018Folder() / rw::kReleaseFileName;
        fs::copy_file(releaseFile, tmp_ / "install" / rw::kReleaseFileName);
    }
    rw::Paths paths() const { return rw::Paths::ForFolders(tmp_ / "install", tmp_ / "data"); }
    std::filesystem::path operator/(const std::filesystem::path& p) const { return tmp_ / p; }

private:
    TempDir tmp_;
};

// The folder of the tests' release of late 2026 (every rate table), for
// dialogs that only read tables.
inline rw::Paths BuiltInstallation()
{
    const std::filesystem::path built = FixtureReleaseFolder();
    return rw::Paths::ForFolders(built, built);
}

// Saves a picture of the window into RW_SHOTS_DIR when that is set.
inline void SaveShot(QWidget* w, const char* name)
{
    const char* dir = std::getenv("RW_SHOTS_DIR");
    if (!dir || !*dir)
        return;
    std::filesystem::create_directories(dir);
    // Pending layout requests first (a tool bar's buttons shown a moment ago).
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
    w->grab().save(QString::fromLocal8Bit(dir) + QLatin1Char('/') + QString::fromLatin1(name) + QStringLiteral(".png"));
}

}  // namespace rwtest
