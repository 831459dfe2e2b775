#include "ui/main/updatealert.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"
#include "ui/main/desktop.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace rw::ui {

UpdateAlertWindow::UpdateAlertWindow(const RateAlert& alert, Desktop& desktop, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmGetUpdate"));
    setWindowTitle(fromCore(kUpdateAlertTitle));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);

    auto* message = new QLabel(fromCore(alert.message), this);
    message->setObjectName(QStringLiteral("lblUpdateMessage"));
    message->setWordWrap(true);
    message->setTextInteractionFlags(Qt::TextSelectableByMouse);
    message->setMinimumWidth(fontMetrics().horizontalAdvance(QString(60, QLatin1Char('n'))));

    auto* exit = new QPushButton(fromCore(alert.exitCaption), this);
    exit->setObjectName(QStringLiteral("btnExitDialog"));
    exit->setDefault(true);
    auto* update = new QPushButton(fromCore(alert.updateCaption), this);
    update->setObjectName(QStringLiteral("OKButton"));
    update->setAutoDefault(false);
    const std::string page = alert.updatePage;
    connect(update, &QPushButton::clicked, this,
            [&desktop, page] { desktop.openUrl(WebAddress(page)); });
    connect(exit, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(update);
    buttons->addStretch();
    buttons->addWidget(exit);
    auto* top = new QVBoxLayout(this);
    top->addWidget(message);
    top->addSpacing(8);
    top->addLayout(buttons);

    adjustSize();
    Center(this);
    exit->setFocus();
}

}  // namespace rw::ui
