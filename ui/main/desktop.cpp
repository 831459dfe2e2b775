#include "ui/main/desktop.h"

#include "ui/common/texts.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QWidget>

namespace rw::ui {

bool QtDesktop::openUrl(const QUrl& url)
{
    return QDesktopServices::openUrl(url);
}

bool QtDesktop::openDocument(const std::filesystem::path& file,
                             const std::filesystem::path& workingFolder)
{
    // The viewer starts in the installation folder: it inherits the
    // program's working folder for the moment it is started.
    const QString before = QDir::currentPath();
    QDir::setCurrent(fromPath(workingFolder.string()));
    const bool opened = QDesktopServices::openUrl(QUrl::fromLocalFile(fromPath(file.string())));
    QDir::setCurrent(before);
    return opened;
}

namespace {

const QString kCaseFilter = QStringLiteral("Case files (*.INT *.int);;All files (*)");

std::optional<std::string> chosen(const QString& name)
{
    if (name.isEmpty())
        return std::nullopt;
    return toPath(QDir::toNativeSeparators(name));
}

}  // namespace

std::optional<std::string> QtFileDialogs::openCase(const std::string& initialFolder)
{
    QFileDialog dlg(parent_, QStringLiteral("Open"), fromPath(initialFolder), kCaseFilter);
    dlg.setAcceptMode(QFileDialog::AcceptOpen);
    dlg.setFileMode(QFileDialog::ExistingFile);
    dlg.setDefaultSuffix(QStringLiteral("int"));
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty())
        return std::nullopt;
    return chosen(dlg.selectedFiles().constFirst());
}

std::optional<std::string> QtFileDialogs::saveCase(const std::string& initialFolder)
{
    QFileDialog dlg(parent_, QStringLiteral("Save As"), fromPath(initialFolder), kCaseFilter);
    dlg.setAcceptMode(QFileDialog::AcceptSave);
    dlg.setFileMode(QFileDialog::AnyFile);
    dlg.setDefaultSuffix(QStringLiteral("int"));
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty())
        return std::nullopt;
    return chosen(dlg.selectedFiles().constFirst());
}

void DesktopProgramControl::hideMainWindow()
{
    if (mainWindow_)
        mainWindow_->hide();
}

void DesktopProgramControl::endProgram()
{
    ended_ = true;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* w : windows)
        w->hide();
    // Leaves every running event loop, the modal dialogs' included; a loop
    // started afterwards returns at once.
    QCoreApplication::exit(0);
}

QUrl WebAddress(const std::string& address)
{
    const QString text = fromCore(address);
    if (text.contains(QStringLiteral("://")))
        return QUrl(text);
    return QUrl(QStringLiteral("https://") + text);
}

}  // namespace rw::ui
