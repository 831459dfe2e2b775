#pragma once
// "Estimated Tax" (Penalties - Estimated Tax...): the widgets of
// rw::EstTaxDialog's form, the inputs of the penalty for underpaying
// estimated tax. Each field and each cell of the two dated lists is checked
// when left; OK stores through the logic and stays open on a refused entry,
// which is selected again.

#include "penalties/esttaxdialog.h"
#include "ui/common/dialogkit.h"

#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace rw::ui {

class EstTaxWindow : public GuardedDialog {
    Q_OBJECT
public:
    EstTaxWindow(EstTaxDialog& logic, QWidget* parent = nullptr);

private:
    // A dated list: a two-column table (date, amount) of entry fields.
    struct DatedList {
        EstTaxList list;
        const char* name;  // object names: "tbl<name>", "txt<name>Date<row>", ...
        QTableWidget* table = nullptr;
        QPushButton* add = nullptr;
        QPushButton* remove = nullptr;
        int current = -1;  // the row last entered
    };

    QWidget* makeList(DatedList& l, const QString& caption);
    void addRow(DatedList& l, const EstTaxRow& row);
    void removeRow(DatedList& l);
    void showRows(DatedList& l, const std::vector<EstTaxRow>& rows);
    std::vector<EstTaxRow> readRows(const DatedList& l) const;
    std::vector<EstTaxRow>& rowsOf(const DatedList& l);
    void checkField(QLineEdit* edit, FormField<EstTaxForm> field);
    void checkCell(DatedList& l, QLineEdit* edit);
    void selectCell(DatedList& l, int row, int column);

    void readForm();
    void showForm();
    void selectRefused();

    EstTaxDialog& logic_;
    EstTaxForm form_;

    YesNoChoice* calculate_;
    QRadioButton* individual_;
    QRadioButton* corporation_;
    QLineEdit* taxYear_;
    QLabel* monthLabel_;
    QLineEdit* month_;
    QLineEdit* currentTax_;
    QLineEdit* priorTax_;
    QCheckBox* priorUsable_;
    QCheckBox* highIncome_;
    QCheckBox* largeCorp_;
    QLineEdit* withholding_;
    QCheckBox* byDate_;
    QCheckBox* ownInstallments_;
    QLineEdit* installments_[4];
    QLineEdit* notice_;
    std::vector<QWidget*> body_;  // enabled while the penalty is calculated
    DatedList withheld_{EstTaxList::Withholding, "Withheld"};
    DatedList payments_{EstTaxList::Payments, "Pay"};
};

}  // namespace rw::ui
