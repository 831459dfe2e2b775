#pragma once
// The desktop's side of the shell's seams: the file choosers for case files,
// the program's end, and the web pages and documents the program opens with
// the desktop's own programs. Tests put scripted versions in their place.

#include "shell/services.h"

#include <QString>
#include <QUrl>

#include <filesystem>

class QWidget;

namespace rw::ui {

// Opens web pages and documents with the programs the desktop chooses.
class Desktop {
public:
    virtual ~Desktop() = default;
    // A web page in the default browser. False when nothing could open it.
    virtual bool openUrl(const QUrl& url) = 0;
    // A document (the manual) with its default viewer, started in
    // workingFolder. False when nothing could open it.
    virtual bool openDocument(const std::filesystem::path& file,
                              const std::filesystem::path& workingFolder)
        = 0;
};

class QtDesktop : public Desktop {
public:
    bool openUrl(const QUrl& url) override;
    bool openDocument(const std::filesystem::path& file,
                      const std::filesystem::path& workingFolder) override;
};

// The platform's file dialogs: case files with the default extension ".int",
// starting in the data folder.
class QtFileDialogs : public FileDialogs {
public:
    explicit QtFileDialogs(QWidget* parent = nullptr)
        : parent_(parent)
    {
    }
    void setParent(QWidget* parent) { parent_ = parent; }

    std::optional<std::string> openCase(const std::string& initialFolder) override;
    std::optional<std::string> saveCase(const std::string& initialFolder) override;

private:
    QWidget* parent_;
};

// Ends the desktop program: every window hidden, every event loop (a modal
// dialog's too) left, and no further dialog will open. Before the main event
// loop has started, main() asks ended() and returns.
class DesktopProgramControl : public ProgramControl {
public:
    void setMainWindow(QWidget* w) { mainWindow_ = w; }
    void hideMainWindow() override;
    void endProgram() override;
    bool ended() const { return ended_; }

private:
    QWidget* mainWindow_ = nullptr;
    bool ended_ = false;
};

// The address of a web page as the shell gives it ("www.example.com/page"),
// as a URL (https when no scheme is given).
QUrl WebAddress(const std::string& address);

}  // namespace rw::ui
