#pragma once
// The "Payments" list and the "Payment Information" dialog: widgets bound to
// the payment forms; what they show and how they react is rw::PaymentsDialog
// and rw::PaymentDialog.

#include "payments/payments.h"
#include "penalties/arrange.h"
#include "ui/common/commandcontext.h"
#include "ui/common/dialogkit.h"
#include "ui/lists/listdialog.h"

#include <memory>

class QCheckBox;
class QElapsedTimer;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;

namespace rw::ui {

class DateField;
class MoneyField;

// "Payment Information" (dlgPmtInd) over a PaymentForm. The form is read
// before and written back after every reaction of the logic; on OK it holds
// what the user entered.
class PaymentInfoWindow : public GuardedDialog {
    Q_OBJECT
public:
    PaymentInfoWindow(const PaymentDialog& logic, PaymentForm& form, QWidget* parent = nullptr);

private:
    void readForm();
    void showForm();
    template<typename F>
    void react(F&& reaction);
    void okClicked();

    const PaymentDialog& logic_;
    PaymentForm& form_;
    QLineEdit* desc_;
    DateField* date_;
    MoneyField* amount_;
    QCheckBox* irs_;
    QLabel* taxLabel_;
    QLabel* intLabel_;
    QLabel* penLabel_;
    MoneyField* tax_;
    MoneyField* interest_;
    MoneyField* penalties_;
    QLabel* balance_;
    QLabel* maxInt_;
};

// "Payments" (dlgPmts): the list, its commands ("&Sort by Date" among them),
// and for a payroll case the auto-arrange check box with the progress of the
// arrangement search.
// The search's labels and bars in the Payments dialog, shown only while the
// search runs. Repaints at most every few hundredths of a second, so that
// pricing hundreds of thousands of orders is not slowed by the screen.
class ArrangeProgressPanel : public ArrangeProgress {
public:
    ArrangeProgressPanel(QWidget* panel, QLabel* variations, QProgressBar* permutations,
                         QProgressBar* penalties);
    ~ArrangeProgressPanel() override;

    void setVisible(bool visible) override;
    void setVariationsText(std::string_view text) override;
    void setPermutationsRange(int minimum, int maximum) override;
    void setPermutationsValue(int value) override;
    void setPenaltiesRange(float minimum, float maximum) override;
    void setPenaltiesValue(std::int32_t value) override;
    void repaint() override;

private:
    void catchUp(bool force);

    QWidget* panel_;
    QLabel* variations_;
    QProgressBar* permutations_;
    QProgressBar* penalties_;
    double penaltiesScale_ = 1.0;  // the bar counts in steps of this many orders
    std::unique_ptr<QElapsedTimer> sinceRepaint_;
};

class PaymentsWindow : public ListDialog {
    Q_OBJECT
public:
    explicit PaymentsWindow(CommandContext& ctx);
    ~PaymentsWindow() override;

private:
    void showList();

    CommandContext& ctx_;
    std::unique_ptr<PaymentsDialog> logic_;
    PaymentsForm form_;
    QCheckBox* autoArrange_;
    QPushButton* hint_;
    QPushButton* sort_;
    QWidget* progressPanel_;
    QLabel* variations_;
    QProgressBar* permutations_;
    QProgressBar* penalties_;
    std::unique_ptr<ArrangeProgressPanel> progress_;
};

}  // namespace rw::ui
