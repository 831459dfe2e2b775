#pragma once
// The penalty input dialogs: "Failure To File Penalty Inputs", "Failure To
// Pay Inputs" and "Accuracy Related Penalty", widgets bound to the forms of
// rw::FtoFileDialog, rw::FtoPayDialog and rw::AccRelDialog.

#include "penalties/accreldialog.h"
#include "penalties/ftodialogs.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"

class QAbstractButton;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

namespace rw::ui {

class DateField;
class MoneyField;

// What the penalty windows share: the logic, the form its widgets show, and
// the wiring of a field's check and of OK through them.
template<typename Logic, typename Form>
class PenaltyDialog : public GuardedDialog {
protected:
    PenaltyDialog(Logic& logic, QWidget* parent)
        : GuardedDialog(parent)
        , logic_(logic)
    {
    }
    virtual void readForm() = 0;
    virtual void selectRefused() = 0;

    // Leaving field runs the logic's check of it; a refused entry is
    // selected again.
    void react(QLineEdit* field, void (Logic::*check)(Form&) const)
    {
        checkWhenLeft(field, [this, check] {
            readForm();
            (logic_.*check)(form_);
            selectRefused();
        });
    }
    // OK: stored, the dialog closes; refused, the entry is selected again.
    void connectOk(QAbstractButton* ok)
    {
        onOk(ok, [this] {
            readForm();
            if (logic_.accept(form_))
                accept();
            else
                selectRefused();
        });
    }

    Logic& logic_;
    Form form_;
};

// "Failure To File Penalty Inputs" (dlgInpFToF). OK stores through the logic.
class FtoFileWindow : public PenaltyDialog<FtoFileDialog, FtoFileForm> {
    Q_OBJECT
public:
    FtoFileWindow(FtoFileDialog& logic, QWidget* parent = nullptr);

private:
    void readForm() override;
    void showForm();
    void selectRefused() override;

    YesNoChoice* calculate_;
    QLabel* assessLabel_;
    DateField* assess_;
    QLabel* filedLabel_;
    DateField* filed_;
};

// "Failure To Pay Inputs" (dlgInpFToP).
class FtoPayWindow : public PenaltyDialog<FtoPayDialog, FtoPayForm> {
    Q_OBJECT
public:
    FtoPayWindow(FtoPayDialog& logic, QWidget* parent = nullptr);

private:
    void readForm() override;
    void showForm();
    void selectRefused() override;

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
class AccRelWindow : public PenaltyDialog<AccRelDialog, AccRelForm> {
    Q_OBJECT
public:
    AccRelWindow(AccRelDialog& logic, QWidget* parent = nullptr);

private:
    void readForm() override;
    void showForm();
    void selectRefused() override;
    void hintOnFocus(QWidget* w, AccRelField field);

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
