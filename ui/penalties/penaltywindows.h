#pragma once
// The penalty input dialogs: "Failure To File Penalty Inputs", "Failure To
// Pay Inputs" and "Accuracy Related Penalty", widgets bound to the forms of
// rw::FtoFileDialog, rw::FtoPayDialog and rw::AccRelDialog.

#include "penalties/accreldialog.h"
#include "penalties/ftodialogs.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace rw::ui {

class DateField;
class MoneyField;

// "Failure To File Penalty Inputs" (dlgInpFToF). OK stores through the logic;
// accepted() then tells the menu mark.
class FtoFileWindow : public GuardedDialog {
    Q_OBJECT
public:
    FtoFileWindow(FtoFileDialog& logic, QWidget* parent = nullptr);
    const rw::Accepted& outcome() const { return outcome_; }

private:
    void readForm();
    void showForm();

    FtoFileDialog& logic_;
    FtoFileForm form_;
    rw::Accepted outcome_;
    YesNoChoice* calculate_;
    QLabel* assessLabel_;
    DateField* assess_;
    QLabel* filedLabel_;
    DateField* filed_;
};

// "Failure To Pay Inputs" (dlgInpFToP).
class FtoPayWindow : public GuardedDialog {
    Q_OBJECT
public:
    FtoPayWindow(FtoPayDialog& logic, QWidget* parent = nullptr);
    const rw::Accepted& outcome() const { return outcome_; }

private:
    void readForm();
    void showForm();

    FtoPayDialog& logic_;
    FtoPayForm form_;
    rw::Accepted outcome_;
    YesNoChoice* calculate_;
    QLabel* assessLabel_;
    DateField* assess_;
    QLabel* amountLabel_;
    MoneyField* amount_;
    YesNoChoice* increased_;
    QLabel* startLabel_;
    DateField* start_;
    QLabel* note_;
};

// "Accuracy Related Penalty" (dlgInpAcc).
class AccRelWindow : public GuardedDialog {
    Q_OBJECT
public:
    AccRelWindow(AccRelDialog& logic, QWidget* parent = nullptr);
    const rw::Accepted& outcome() const { return outcome_; }

private:
    void readForm();
    void showForm();
    void hintOnFocus(QWidget* w, AccRelField field);

    AccRelDialog& logic_;
    AccRelForm form_;
    rw::Accepted outcome_;
    YesNoChoice* calculate_;
    QLabel* underpaymentLabel_;
    MoneyField* underpayment_;
    QRadioButton* normal_;
    QRadioButton* economic_;
    QRadioButton* other_;
    QLabel* rateLabel_;
    QLineEdit* rate_;
    QPlainTextEdit* notes_;
};

}  // namespace rw::ui
