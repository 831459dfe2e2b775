// The desktop program: the About box, start-up, then the main window until
// the user ends the program.

#include "base/paths.h"
#include "rates/release.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "ui/common/fields.h"
#include "ui/common/qtmessages.h"
#include "ui/main/aboutbox.h"
#include "ui/main/desktop.h"
#include "ui/main/mainwindow.h"

#include <QApplication>
#include <QStandardPaths>

#include <filesystem>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Ratewright"));
    QApplication::setOrganizationName(QStringLiteral("Brindlecote"));
    // The program ends through its exit procedure, never because its last
    // window was closed.
    QApplication::setQuitOnLastWindowClosed(false);

    rw::Paths paths = rw::Paths::FromEnvironment();
    // The user's own folders as the platform names them: the settings in the
    // configuration folder, the recovery copy and the error log in the
    // program's data folder.
    const auto userFolder = [](QStandardPaths::StandardLocation where) {
        return std::filesystem::path(QStandardPaths::writableLocation(where).toStdString());
    };
    paths.configDir = userFolder(QStandardPaths::AppConfigLocation);
    paths.appDataDir = userFolder(QStandardPaths::AppDataLocation);
    rw::ui::QtDesktop desktop;

    // The About box first, with the release of the rates the program will
    // use (start-up tells about a release it cannot use).
    {
        rw::ui::AboutBox about(rw::ChooseRelease(paths).info, desktop);
        about.exec();
    }

    rw::Session session;
    rw::ui::QtMessages msgs;
    rw::ui::QtFileDialogs files;
    rw::ui::DesktopProgramControl program;
    rw::ui::MainWindow window(session, rw::ui::MainWindowServices{msgs, files, program, desktop});
    msgs.setParent(&window);
    files.setParent(&window);
    program.setMainWindow(&window);

    if (!window.startUp(paths, rw::WindowsVersion()) || program.ended())
        return 0;
    window.show();
    rw::ui::Center(&window);
    if (program.ended())
        return 0;
    return QApplication::exec();
}
