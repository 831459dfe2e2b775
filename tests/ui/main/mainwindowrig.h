#pragma once
// One main window started over its own session, installation folder and
// doubles, for the main window's tests.
#include "tests/ui/support/windowkit.h"

#include "shell/session.h"
#include "ui/main/mainwindow.h"

#include <QAction>

namespace rwtest {

struct MainWindowRig {
    InstallFolder folder;
    rw::Session session;
    FaultingMessages msgs;
    ScriptedFiles files;
    RecordingProgram program;
    RecordingDesktop desktop;
    rw::ui::MainWindow window{session, {msgs, files, program, desktop}};

    MainWindowRig()
    {
        if (!window.startUp(folder.paths(), "2.6.1"))
            qFatal("the program did not start");
    }
    // Shown and active, as the user finds it.
    void showActive()
    {
        window.show();
        (void)QTest::qWaitForWindowActive(&window);
    }
    QAction* action(const char* name)
    {
        return window.findChild<QAction*>(QString::fromLatin1(name));
    }
};

}  // namespace rwtest
