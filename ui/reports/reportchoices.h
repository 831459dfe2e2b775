#pragma once
// The "Report Choices" check list (dlgRptChoices) and the report chooser of
// the desktop, which shows it modally.

#include "reports/printmaster.h"
#include "ui/common/dialogkit.h"

class QLabel;
class QListWidget;

namespace rw::ui {

class PrintTarget;

// The check list of the six reports. With a print target it also offers
// "Setup" and "PDF File..." and names where the reports will go.
class ReportChoicesDialog : public GuardedDialog {
    Q_OBJECT
public:
    ReportChoicesDialog(ReportChoiceDialog& logic, PrintTarget* target, QWidget* parent = nullptr);

private:
    void readForm();
    void showTarget();

    ReportChoiceDialog& logic_;
    PrintTarget* target_;
    ReportChoiceForm form_;
    QListWidget* list_;
    QLabel* printTo_ = nullptr;
};

// Shows "Report Choices" modally: OK stores the choice, Cancel keeps the one
// made last time. "Setup" appears when asked for and a print target is given.
class QtReportChooser : public ReportChooser {
public:
    QtReportChooser(PrintTarget* target, QWidget* parent)
        : target_(target)
        , parent_(parent)
    {
    }
    bool chooseReports(ReportChoice& choice, bool withSetup) override;

private:
    PrintTarget* target_;
    QWidget* parent_;
};

}  // namespace rw::ui
