#include "ui/common/qtmessages.h"

#include "ui/common/texts.h"

#include <QApplication>
#include <QMessageBox>

namespace rw::ui {

namespace {
QMessageBox::Icon toIcon(MsgIcon icon)
{
    switch (icon) {
    case MsgIcon::Information: return QMessageBox::Information;
    case MsgIcon::Exclamation: return QMessageBox::Warning;
    case MsgIcon::Critical: return QMessageBox::Critical;
    case MsgIcon::Question: return QMessageBox::Question;
    case MsgIcon::None: break;
    }
    return QMessageBox::NoIcon;
}
}  // namespace

void QtMessages::show(std::string_view title, std::string_view text, MsgIcon icon)
{
    QMessageBox box(toIcon(icon), fromCore(title), fromCore(text), QMessageBox::Ok, parent_);
    box.exec();
}

bool QtMessages::ask(std::string_view title, std::string_view text, MsgIcon icon)
{
    QMessageBox box(toIcon(icon), fromCore(title), fromCore(text), QMessageBox::Yes | QMessageBox::No, parent_);
    box.setDefaultButton(QMessageBox::Yes);
    return box.exec() == QMessageBox::Yes;
}

void QtMessages::beep()
{
    QApplication::beep();
}

}  // namespace rw::ui
