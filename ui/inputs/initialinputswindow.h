#pragma once
// "Initial Inputs" (dlgInit): the taxpayer, the rate table, the dates, the
// initial balance and the payroll and corporate flags, widgets bound to
// rw::InitialInputsForm. A date or amount that cannot be read is refused when
// its field is left, and on OK; leaving "End Calculation:" with a date runs
// the rate currency alert; OK stores through rw::InitialInputsDialog.

#include "casedata/initialinputs.h"
#include "rates/release.h"
#include "shell/ratealert.h"
#include "shell/services.h"
#include "ui/inputs/inputdialog.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace rw::ui {

class DateField;
class MoneyField;

// The alert of a stop date past the rates of the release: the release's
// dates, the "Update Alert" window, and the end of the program after an alert
// that cannot be continued.
struct RateCurrencyServices {
    const ReleaseInfo& release;
    RateAlertWindow& window;
    ProgramControl& program;
};

class InitialInputsWindow : public InputDialog {
    Q_OBJECT
public:
    enum class Outcome {
        Cancelled,  // nothing stored
        Stored,  // the case holds the dialog's fields
        SaveAndExit,  // stored; the user chose to save and end at the state-table check
        ProgramEnded  // the rate currency alert ended the program
    };

    InitialInputsWindow(Case& c, RateTable& rates, const Paths& paths, Messages& msgs,
                        RateCurrencyServices currency, QWidget* parent = nullptr);

    Outcome outcome() const { return outcome_; }

private:
    void readForm();
    void showForm();
    void okClicked();
    void dateLeft(QLineEdit* field);
    void selectRefused();

    InitialInputsDialog logic_;
    RateCurrencyServices currency_;
    InitialInputsForm form_;
    Outcome outcome_ = Outcome::Cancelled;

    QLineEdit* name_;
    QLineEdit* secondLine_;
    QComboBox* authority_;
    DateField* due_;
    DateField* start_;
    DateField* stop_;
    QRadioButton* underpayment_;
    QRadioButton* overpayment_;
    MoneyField* balance_;
    QLabel* stopDaysLabel_;
    QLineEdit* stopDays_;
    QRadioButton* payrollYes_;
    QRadioButton* payrollNo_;
    QCheckBox* corporate_;
};

}  // namespace rw::ui
