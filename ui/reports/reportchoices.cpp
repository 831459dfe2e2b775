#include "ui/reports/reportchoices.h"

#include "ui/common/texts.h"
#include "ui/reports/printtarget.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace rw::ui {

ReportChoicesDialog::ReportChoicesDialog(ReportChoiceDialog& logic, PrintTarget* target,
                                         QWidget* parent)
    : GuardedDialog(parent)
    , logic_(logic)
    , target_(target)
{
    setObjectName(QStringLiteral("dlgRptChoices"));
    setWindowTitle(fromCore(ReportChoiceDialog::kCaption));

    form_ = logic_.open();
    if (!target_)
        form_.setupVisible = false;

    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("chkReport"));
    const auto entries = ReportChoiceEntries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        auto* item = new QListWidgetItem(fromCore(entries[i].caption), list_);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(form_.checked[i] ? Qt::Checked : Qt::Unchecked);
    }
    list_->setCurrentRow(0);
    const int rowHeight = list_->sizeHintForRow(0) > 0 ? list_->sizeHintForRow(0)
                                                       : list_->fontMetrics().height() + 4;
    list_->setFixedHeight(rowHeight * static_cast<int>(entries.size()) + 2 * list_->frameWidth()
                          + 4);
    list_->setMinimumWidth(list_->sizeHintForColumn(0) + 48);

    const OkCancel okCancel = MakeOkCancel(this);
    QDialogButtonBox* buttons = okCancel.box;
    QPushButton* ok = okCancel.ok;

    auto* top = new QVBoxLayout(this);
    top->addWidget(list_);
    if (form_.setupVisible) {
        printTo_ = new QLabel(this);
        printTo_->setObjectName(QStringLiteral("lblPrintTo"));
        printTo_->setWordWrap(true);
        auto* setup = new QPushButton(QStringLiteral("Setup"), this);
        setup->setObjectName(QStringLiteral("btnPrnSetup"));
        setup->setAutoDefault(false);
        auto* pdf = new QPushButton(QStringLiteral("PDF File..."), this);
        pdf->setObjectName(QStringLiteral("btnPdfFile"));
        pdf->setAutoDefault(false);
        auto* targetRow = new QHBoxLayout;
        targetRow->addWidget(setup);
        targetRow->addWidget(pdf);
        targetRow->addStretch(1);
        top->addWidget(printTo_);
        top->addLayout(targetRow);
        connect(setup, &QPushButton::clicked, this, [this] {
            guard([this] {
                target_->setup();
                showTarget();
            });
        });
        connect(pdf, &QPushButton::clicked, this, [this] {
            guard([this] {
                target_->choosePdfFile();
                showTarget();
            });
        });
        showTarget();
    }
    top->addWidget(buttons);

    connect(ok, &QPushButton::clicked, this, [this] {
        guard([this] {
            readForm();
            logic_.accept(form_);
            accept();
        });
    });

    setMinimumWidth(320);
    finishSetup();
    list_->setFocus(Qt::OtherFocusReason);
}

void ReportChoicesDialog::readForm()
{
    for (int i = 0; i < list_->count() && i < static_cast<int>(form_.checked.size()); ++i)
        form_.checked[static_cast<std::size_t>(i)] = list_->item(i)->checkState() == Qt::Checked;
}

void ReportChoicesDialog::showTarget()
{
    if (printTo_ && target_)
        printTo_->setText(target_->describe());
}

bool QtReportChooser::chooseReports(ReportChoice& choice, bool withSetup)
{
    ReportChoiceDialog logic(choice, withSetup);
    ReportChoicesDialog dlg(logic, withSetup ? target_ : nullptr, parent_);
    return dlg.run();
}

}  // namespace rw::ui
