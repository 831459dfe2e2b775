#pragma once
// The "Other Charges" list and the "Addition To Tax" dialog: widgets bound to
// the charge forms of rw::ChargesDialog and rw::ChargeDialog.

#include "payments/charges.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"
#include "ui/lists/listdialog.h"

#include <memory>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace rw::ui {

class DateField;
class MoneyField;

// "Addition To Tax" (dlgChrgInd) over a ChargeForm.
class ChargeInfoWindow : public GuardedDialog {
    Q_OBJECT
public:
    ChargeInfoWindow(const ChargeDialog& logic, ChargeForm& form, QWidget* parent = nullptr);

private:
    void readForm();
    void showForm();

    const ChargeDialog& logic_;
    ChargeForm& form_;
    QLineEdit* desc_;
    DateField* liability_;
    DateField* interestStart_;
    MoneyField* total_;
    MoneyField* tax_;
    MoneyField* penalties_;
    QLabel* balance_;
};

// "Other Charges" (dlgChrgAll).
class ChargesWindow : public ListDialog {
    Q_OBJECT
public:
    explicit ChargesWindow(CommandContext& ctx);
    ~ChargesWindow() override;

private:
    void showList();

    ChargeDialog chargeLogic_;
    std::unique_ptr<ChargesDialog> logic_;
    ChargesForm form_;
};

}  // namespace rw::ui
