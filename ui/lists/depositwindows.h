#pragma once
// The "Payroll Tax Deposit Penalties" list and the "Payroll Deposit
// Information" dialog: widgets bound to the deposit forms of
// rw::DepositListDialog and rw::DepositDialog.

#include "penalties/depositdialogs.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"
#include "ui/lists/listdialog.h"

#include <memory>

class QLabel;
class QListWidget;
class QPushButton;

namespace rw::ui {

class DateField;
class MoneyField;

// "Payroll Deposit Information" (dlgDep) over a DepositForm.
class DepositInfoWindow : public GuardedDialog {
    Q_OBJECT
public:
    DepositInfoWindow(const DepositDialog& logic, DepositForm& form, QWidget* parent = nullptr);

private:
    void readForm();
    void showForm();
    void watch(QWidget* field, DepositField which);

    const DepositDialog& logic_;
    DepositForm& form_;
    DateField* due_;
    MoneyField* required_;
    DateField* assess_;
    YesNoChoice* severe_;
    QLabel* delinquencyLabel_;
    DateField* delinquency_;
    QLabel* jeopardyLabel_;
    DateField* jeopardy_;
    QLabel* hint_;
};

// "Payroll Tax Deposit Penalties" (dlgInpDepPen).
class DepositsWindow : public ListDialog {
    Q_OBJECT
public:
    explicit DepositsWindow(CommandContext& ctx);
    ~DepositsWindow() override;

private:
    void showList();

    CommandContext& ctx_;
    DepositDialog depositLogic_;
    std::unique_ptr<DepositListDialog> logic_;
    DepositListForm form_;
};

}  // namespace rw::ui
