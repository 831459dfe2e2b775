#pragma once
// The interest option dialogs: "Optional Rates" (dlgOptRates), "Suspended
// Interest Inputs" (dlgSusp) and "Extended Due Date" (dlgExtIP), widgets bound
// to the forms of rw::OptRatesDialog, rw::SuspendDialog and
// rw::ExtDueDateDialog.

#include "casedata/extduedate.h"
#include "engine/optrates.h"
#include "engine/suspend.h"
#include "ui/inputs/inputdialog.h"

class QLabel;
class QRadioButton;

namespace rw::ui {

class DateField;

// "Optional Rates": the tax-motivated rate and the two large corporate rates
// with their start dates.
class OptRatesWindow : public InputDialog {
    Q_OBJECT
public:
    OptRatesWindow(Case& c, Messages& msgs, QWidget* parent = nullptr);

private:
    void readForm();
    void showForm();
    void selectRefused();

    OptRatesDialog logic_;
    OptRatesForm form_;

    QRadioButton* taxMotYes_;
    QRadioButton* taxMotNo_;
    QRadioButton* corpUPYes_;
    QRadioButton* corpUPNo_;
    QLabel* corpUPLabel_;
    DateField* corpUPStart_;
    QRadioButton* corpOPYes_;
    QRadioButton* corpOPNo_;
    QLabel* corpOPLabel_;
    DateField* corpOPStart_;
};

// "Suspended Interest Inputs": the day interest is suspended and the day it
// restarts; both emptied, no suspension.
class SuspendWindow : public InputDialog {
    Q_OBJECT
public:
    SuspendWindow(Case& c, Messages& msgs, QWidget* parent = nullptr);

private:
    void readForm();
    void selectRefused();

    SuspendDialog logic_;
    SuspendForm form_;
    DateField* suspend_;
    DateField* restart_;
};

// "Extended Due Date": the date to which the return's due date was extended.
// Opening it gives a case without one the due date at once.
class ExtDueDateWindow : public InputDialog {
    Q_OBJECT
public:
    ExtDueDateWindow(Case& c, Messages& msgs, QWidget* parent = nullptr);

private:
    void selectRefused();

    ExtDueDateDialog logic_;
    ExtDueDateForm form_;
    DateField* extended_;
};

}  // namespace rw::ui
