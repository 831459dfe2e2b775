#include "ui/main/aboutbox.h"

#include "ui/common/fields.h"
#include "ui/common/texts.h"
#include "ui/main/desktop.h"
#include "ui/main/maker.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace rw::ui {

namespace {

QLabel* line(const QString& text, const QString& name, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

AboutBox::AboutBox(const ReleaseInfo& release, Desktop& desktop, QWidget* parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("dlgAbout"));
    setWindowTitle(QStringLiteral("About Ratewright"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setModal(true);

    auto* product = line(QStringLiteral("Ratewright"), QStringLiteral("lblProduct"), this);
    QFont big = product->font();
    big.setPointSizeF(big.pointSizeF() * 1.8);
    big.setBold(true);
    product->setFont(big);
    auto* purpose = line(QStringLiteral("Interest and penalties on tax liabilities"),
                         QStringLiteral("lblPurpose"), this);

    auto* description = line(fromCore(release.description), QStringLiteral("lblDescription"), this);
    QFont bold = description->font();
    bold.setBold(true);
    description->setFont(bold);
    // The version names the layout of the case files; the release of the
    // rates, which changes every quarter, comes first.
    auto* version = line(QStringLiteral("Case file format: version ") + fromCore(kProgramVersion),
                         QStringLiteral("lblVersion"), this);
    auto* rates = line(
        release.loaded()
            ? QStringLiteral("Interest rates: release ") + fromCore(release.name)
                  + QStringLiteral(", verified through ") + fromCore(release.verifiedThroughText)
                  + QStringLiteral(", estimated through ") + fromCore(release.estimatedThroughText)
            : QStringLiteral("Interest rates: no usable release was found"),
        QStringLiteral("lblRelease"), this);

    auto* notice
        = line(QStringLiteral(
                   "STATE PENALTY NOTICE: This program will compute penalties using Federal law. "
                   "Only use penalty computations for state taxes where the penalty for the state "
                   "can be computed using the Federal law."),
               QStringLiteral("lblNotice"), this);
    notice->setWordWrap(true);
    notice->setFrameShape(QFrame::Box);
    notice->setMargin(6);
    notice->setMinimumWidth(fontMetrics().horizontalAdvance(QString(56, QLatin1Char('n'))));

    auto* maker = new QVBoxLayout;
    maker->setSpacing(1);
    maker->addWidget(line(QString::fromUtf8(kMakerName), QStringLiteral("lblMaker"), this));
    maker->addWidget(line(QString::fromUtf8(kMakerAddress1), QStringLiteral("lblAddress1"), this));
    maker->addWidget(line(QString::fromUtf8(kMakerAddress2), QStringLiteral("lblAddress2"), this));
    maker->addWidget(line(QString::fromUtf8(kMakerPhone), QStringLiteral("lblPhone"), this));
    maker->addWidget(line(QString::fromUtf8(kMakerEmail), QStringLiteral("lblEmail"), this));

    auto* homePage = new QPushButton(QStringLiteral("Go to program Home Page"), this);
    homePage->setObjectName(QStringLiteral("btnHomePage"));
    homePage->setAutoDefault(false);
    auto* run = new QPushButton(QStringLiteral("Run Program"), this);
    run->setObjectName(QStringLiteral("btnRunProgram"));
    run->setDefault(true);
    connect(homePage, &QPushButton::clicked, this,
            [&desktop] { desktop.openUrl(QUrl(QString::fromUtf8(kHomePage))); });
    connect(run, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(homePage);
    buttons->addStretch();
    buttons->addWidget(run);

    auto* top = new QVBoxLayout(this);
    top->addWidget(product);
    top->addWidget(purpose);
    top->addSpacing(8);
    top->addWidget(description);
    top->addWidget(rates);
    top->addWidget(version);
    top->addSpacing(8);
    top->addWidget(notice);
    top->addSpacing(8);
    top->addLayout(maker);
    top->addSpacing(8);
    top->addLayout(buttons);

    adjustSize();
    setFixedSize(sizeHint());
    Center(this);
    run->setFocus();
}

}  // namespace rw::ui
