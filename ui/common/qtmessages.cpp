#include "ui/common/qtmessages.h"

#include "ui/common/texts.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace rw::ui {

namespace {
QMessageBox::Icon toIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}
// A box belongs to the dialog the user is working in, so that it stands
// above it; with no dialog open, to the main window.
QWidget* owner(QWidget* fallback)
{
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return fallback;
}
}  // namespace

void QtMessages::show(std::string_view title, std::string_view text, MsgIcon icon)
{
    QMessageBox box(toIcon(icon), fromCore(title), fromCore(text), QMessageBox::Ok, owner(parent_));
    box.exec();
}

bool QtMessages::ask(std::string_view title, std::string_view text, MsgIcon icon)
{
    QMessageBox box(toIcon(icon), fromCore(title), fromCore(text),
                    QMessageBox::Yes | QMessageBox::No, owner(parent_));
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

SaveAnswer QtMessages::askSave(std::string_view title, std::string_view text)
{
    QMessageBox box(QMessageBox::Warning, fromCore(title), fromCore(text),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, owner(parent_));
    box.button(QMessageBox::Discard)->setText(QStringLiteral("Do&n't Save"));
    box.setDefaultButton(QMessageBox::Save);
    box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
    case QMessageBox::Save:
        return SaveAnswer::Save;
    case QMessageBox::Discard:
        return SaveAnswer::DontSave;
    default:
        return SaveAnswer::Cancel;
    }
}

void QtMessages::beep()
{
    QApplication::beep();
}

}  // namespace rw::ui
