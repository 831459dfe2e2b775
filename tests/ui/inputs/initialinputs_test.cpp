// The "Initial Inputs" window driven as a user would: typed fields, clicks,
// Enter, leaving the End Calculation field.

#include "casedata/caserecord.h"
#include "rates/ratetable.h"
#include "rates/release.h"
#include "support/recordingmessages.h"
#include "support/releases.h"
#include "ui/inputs/initialinputswindow.h"
#include "ui/inputs/windowkit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QtTest>

using namespace rwtest;
using rw::ui::InitialInputsWindow;

namespace {

const char* const kPayrollAdvice = "For payroll tax situations the Balance Due should be $0 and the Start Calculation "
                                   "Date should be the first day of the quarter.";

// One window over its own case, messages and alert window.
struct Rig {
    rw::Case kase;
    rw::RateTable rates;
    rw::Paths paths = BuiltInstallation();
    rw::ReleaseInfo release = rwtest::Release2018();
    RecordingMessages msgs;
    RecordingAlertWindow alerts;
    RecordingProgram program;
    std::unique_ptr<InitialInputsWindow> window;

    Rig() { rw::ClearInputs(kase); }
    InitialInputsWindow* open()
    {
        window = std::make_unique<InitialInputsWindow>(
            kase, rates, paths, msgs, rw::ui::RateCurrencyServices{release, alerts, program});
        showActive(window.get());
        return window.get();
    }
    QLineEdit* field(const char* name) { return child<QLineEdit>(window.get(), name); }
};

QStringList labelTexts(QWidget* w)
{
    QStringList out;
    const auto labels = w->findChildren<QLabel*>();
    for (const QLabel* l : labels)
        out << l->text();
    return out;
}

}  // namespace

class InitialInputsWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void showsEveryControlWithItsCaption();
    void listsTheThirtyAuthorities();
    void fillsFromTheCase();
    void stopDaysShowOnlyForAnOverpayment();
    void storesAnOverpaymentAndShowsItAgain();
    void underpaymentStoresNoStopDays();
    void storesTheChosenAuthority();
    void payrollWarningAboveOneDollar();
    void enterMovesToTheNextField();
    void rateAlertWhenEndCalculationIsLeft();
    void endAlertEndsTheProgramAndClosesTheDialog();
    void cancelStoresNothing();
    void balanceThatIsNotAnAmountKeepsTheDialogOpen();
};

void InitialInputsWindowTest::showsEveryControlWithItsCaption()
{
    Rig rig;
    QWidget* w = rig.open();
    QCOMPARE(w->windowTitle(), QStringLiteral("Initial Inputs"));
    const QStringList labels = labelTexts(w);
    for (const char* caption :
         {"Taxpayer:", "Optional 2nd Line:", "Rate Table:", "Due Date of Return:", "Start Calculation:",
          "End Calculation:", "Intitial Balance:",
          "Number of Days Before Check Date Interest Is To Stop on Refund(0-30):"})
        QVERIFY2(labels.contains(QString::fromLatin1(caption)), caption);
    QCOMPARE(child<QGroupBox>(w, "radStart")->title(), QStringLiteral("Starting Situation"));
    QCOMPARE(child<QRadioButton>(w, "radStartUnderpayment")->text(), QStringLiteral("&Underpayment"));
    QCOMPARE(child<QRadioButton>(w, "radStartOverpayment")->text(), QStringLiteral("O&verpayment"));
    QCOMPARE(child<QGroupBox>(w, "radPR")->title(), QStringLiteral("Payroll Tax"));
    QCOMPARE(child<QRadioButton>(w, "radPRYes")->text(), QStringLiteral("Yes"));
    QCOMPARE(child<QRadioButton>(w, "radPRNo")->text(), QStringLiteral("No"));
    QCOMPARE(child<QCheckBox>(w, "chkCorpTaxpayer")->text(), QStringLiteral("Corporate Taxpayer"));
    QCOMPARE(child<QAbstractButton>(w, "btnOK")->text(), QStringLiteral("&OK"));
    QCOMPARE(child<QAbstractButton>(w, "btnCancel")->text(), QStringLiteral("&Cancel"));
    SaveShot(w, "dlgInit");
}

void InitialInputsWindowTest::listsTheThirtyAuthorities()
{
    Rig rig;
    auto* list = child<QComboBox>(rig.open(), "lstTaxingAuthority");
    QCOMPARE(list->count(), 30);
    QCOMPARE(list->itemText(0), QStringLiteral("Federal"));
    QVERIFY(list->findText(QStringLiteral("CA - Corp: Large")) >= 0);
    QVERIFY(list->findText(QStringLiteral("Massachusetts - Overpayment")) >= 0);
    // A new case's authority is unset: the list shows Federal.
    QCOMPARE(list->currentIndex(), 0);
}

void InitialInputsWindowTest::fillsFromTheCase()
{
    Rig rig;
    rig.kase.init.sName.assign("Pat Q. Taxpayer");
    rig.kase.init.s2ndLine.assign("Form 1040, 2015");
    rig.kase.init.dtDue = rw::Date::fromCivil(2016, 4, 15);
    rig.kase.init.tlStart.dtDate = rw::Date::fromCivil(2016, 4, 15);
    rig.kase.init.tlStop.dtDate = rw::Date::fromCivil(2017, 12, 31);
    rig.kase.init.tlStart.cTax = rw::Money::fromCents(1234567);
    rig.kase.init.bCorporate = rw::kYes;
    rig.kase.init.sTaxAuth.assign("CAB ");
    QWidget* w = rig.open();
    QCOMPARE(rig.field("txtName")->text(), QStringLiteral("Pat Q. Taxpayer"));
    QCOMPARE(rig.field("txt2ndLine")->text(), QStringLiteral("Form 1040, 2015"));
    QCOMPARE(rig.field("txtDueDate")->text(), QStringLiteral("4/15/2016"));
    QCOMPARE(rig.field("txtStart")->text(), QStringLiteral("4/15/2016"));
    QCOMPARE(rig.field("txtStop")->text(), QStringLiteral("12/31/2017"));
    QCOMPARE(rig.field("txtInitBal")->text(), QStringLiteral("12,345.67"));
    QVERIFY(child<QRadioButton>(w, "radStartUnderpayment")->isChecked());
    QVERIFY(child<QRadioButton>(w, "radPRNo")->isChecked());
    QVERIFY(child<QCheckBox>(w, "chkCorpTaxpayer")->isChecked());
    QCOMPARE(child<QComboBox>(w, "lstTaxingAuthority")->currentText(), QStringLiteral("CA - Corp: Large"));
    // Dates not given show empty fields.
    Rig empty;
    empty.open();
    QCOMPARE(empty.field("txtDueDate")->text(), QString());
    QCOMPARE(empty.field("txtStop")->text(), QString());
}

void InitialInputsWindowTest::stopDaysShowOnlyForAnOverpayment()
{
    Rig rig;
    QWidget* w = rig.open();
    auto* label = child<QLabel>(w, "lblStopDays");
    auto* days = rig.field("txtStopDays");
    QVERIFY(!label->isVisible());
    QVERIFY(!days->isVisible());
    QTest::mouseClick(child<QRadioButton>(w, "radStartOverpayment"), Qt::LeftButton);
    QTRY_VERIFY(label->isVisible());
    QVERIFY(days->isVisible());
    SaveShot(w, "dlgInit-overpayment");
    QTest::mouseClick(child<QRadioButton>(w, "radStartUnderpayment"), Qt::LeftButton);
    QTRY_VERIFY(!label->isVisible());
    QVERIFY(!days->isVisible());
}

void InitialInputsWindowTest::storesAnOverpaymentAndShowsItAgain()
{
    Rig rig;
    QWidget* w = rig.open();
    typeInto(rig.field("txtDueDate"), QStringLiteral("4/15/2016"));
    typeInto(rig.field("txtStart"), QStringLiteral("4/15/2016"));
    typeInto(rig.field("txtStop"), QStringLiteral("12/31/2016"));
    QTest::mouseClick(child<QRadioButton>(w, "radStartOverpayment"), Qt::LeftButton);
    typeInto(rig.field("txtInitBal"), QStringLiteral("500.00"));
    typeInto(rig.field("txtStopDays"), QStringLiteral("10"));
    click(w, "btnOK");
    QCOMPARE(rig.window->result(), int(QDialog::Accepted));
    QCOMPARE(rig.window->outcome(), InitialInputsWindow::Outcome::Stored);
    QCOMPARE(rig.kase.init.tlStart.cTax, rw::Money::fromCents(-50000));
    QCOMPARE(rig.kase.init.bOverpayment, rw::kYes);
    QCOMPARE(rig.kase.init.nStopDays, std::int16_t(10));
    QCOMPARE(rig.kase.init.tlStop.dtDate, rw::Date::fromCivil(2016, 12, 31));
    QVERIFY(rig.msgs.shown.empty());

    QWidget* again = rig.open();
    QCOMPARE(rig.field("txtInitBal")->text(), QStringLiteral("500.00"));
    QVERIFY(child<QRadioButton>(again, "radStartOverpayment")->isChecked());
    QVERIFY(rig.field("txtStopDays")->isVisible());
    QCOMPARE(rig.field("txtStopDays")->text(), QStringLiteral("10"));
}

void InitialInputsWindowTest::underpaymentStoresNoStopDays()
{
    Rig rig;
    rig.kase.init.bOverpayment = rw::kYes;
    rig.kase.init.nStopDays = 12;
    rig.kase.init.tlStart.cTax = rw::Money::fromCents(-10000);
    for (rw::Date* d : {&rig.kase.init.dtDue, &rig.kase.init.tlStart.dtDate})
        *d = rw::Date::fromCivil(2016, 4, 15);
    rig.kase.init.tlStop.dtDate = rw::Date::fromCivil(2016, 12, 31);
    QWidget* w = rig.open();
    QCOMPARE(rig.field("txtStopDays")->text(), QStringLiteral("12"));
    QTest::mouseClick(child<QRadioButton>(w, "radStartUnderpayment"), Qt::LeftButton);
    click(w, "btnOK");
    QCOMPARE(rig.kase.init.bOverpayment, rw::kNo);
    QCOMPARE(rig.kase.init.nStopDays, std::int16_t(0));
    QCOMPARE(rig.kase.init.tlStart.cTax, rw::Money::fromCents(10000));
}

void InitialInputsWindowTest::storesTheChosenAuthority()
{
    Rig rig;
    QWidget* w = rig.open();
    typeInto(rig.field("txtDueDate"), QStringLiteral("4/15/2016"));
    typeInto(rig.field("txtStart"), QStringLiteral("4/15/2016"));
    typeInto(rig.field("txtStop"), QStringLiteral("12/31/2016"));
    auto* list = child<QComboBox>(w, "lstTaxingAuthority");
    list->setCurrentIndex(list->findText(QStringLiteral("CA - Corp: Large")));
    click(w, "btnOK");
    QCOMPARE(rig.window->outcome(), InitialInputsWindow::Outcome::Stored);
    QCOMPARE(std::string(rig.kase.init.sTaxAuth.view()), std::string("CAB "));
    QVERIFY(!rig.rates.empty());
}

void InitialInputsWindowTest::payrollWarningAboveOneDollar()
{
    Rig rig;
    QWidget* w = rig.open();
    auto* yes = child<QRadioButton>(w, "radPRYes");
    auto* no = child<QRadioButton>(w, "radPRNo");

    typeInto(rig.field("txtInitBal"), QStringLiteral("1.00"));
    QTest::mouseClick(yes, Qt::LeftButton);
    QVERIFY(yes->isChecked());
    QVERIFY(rig.msgs.shown.empty());

    QTest::mouseClick(no, Qt::LeftButton);
    typeInto(rig.field("txtInitBal"), QStringLiteral("1.01"));
    QTest::mouseClick(yes, Qt::LeftButton);
    QCOMPARE(rig.msgs.shown.size(), std::size_t(1));
    QCOMPARE(rig.msgs.shown[0].title, std::string("WARNING"));
    QCOMPARE(rig.msgs.shown[0].text, std::string(kPayrollAdvice));
    QCOMPARE(rig.msgs.shown[0].icon, rw::MsgIcon::Exclamation);
    // The choice stands.
    QVERIFY(yes->isChecked());
    click(w, "btnOK");
    QCOMPARE(rig.kase.init.bPayroll, rw::kYes);
}

void InitialInputsWindowTest::enterMovesToTheNextField()
{
    Rig rig;
    QWidget* w = rig.open();
    const char* const chain[] = {"txtName", "txt2ndLine", "lstTaxingAuthority", "txtDueDate", "txtStart", "txtStop"};
    child<QWidget>(w, chain[0])->setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(QApplication::focusWidget(), child<QWidget>(w, chain[0]));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Pat"));
    for (std::size_t i = 1; i < std::size(chain); ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), child<QWidget>(w, chain[i]));
    }
    // Enter is swallowed: the dialog is still open and nothing was stored.
    QVERIFY(w->isVisible());
    QCOMPARE(rig.field("txtName")->text(), QStringLiteral("Pat"));
    QVERIFY(!rig.kase.init.sName.is("Pat"));

    // From the option groups and the check box too, never pressing OK.
    auto* corporate = child<QCheckBox>(w, "chkCorpTaxpayer");
    auto* no = child<QRadioButton>(w, "radPRNo");
    no->setFocus(Qt::TabFocusReason);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(no));
    QTest::keyClick(no, Qt::Key_Enter);
    QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(corporate));
    QTest::keyClick(corporate, Qt::Key_Return);
    QTRY_COMPARE(QApplication::focusWidget(), child<QWidget>(w, "btnOK"));
    QVERIFY(w->isVisible());
}

void InitialInputsWindowTest::rateAlertWhenEndCalculationIsLeft()
{
    Rig rig;
    rig.open();
    auto* stop = rig.field("txtStop");
    auto* next = child<QWidget>(rig.window.get(), "radStartUnderpayment");
    const auto leaveWith = [&](const char* text) {
        typeInto(stop, QString::fromLatin1(text));
        QTest::keyClick(stop, Qt::Key_Tab);
        QTRY_VERIFY(!stop->hasFocus());
        QVERIFY(next->hasFocus());
    };

    leaveWith("3/31/2018");
    QVERIFY(rig.alerts.alerts.empty());
    leaveWith("");
    leaveWith("13/45/2018");
    QVERIFY(rig.alerts.alerts.empty());

    leaveWith("4/1/2018");
    QCOMPARE(rig.alerts.alerts.size(), std::size_t(1));
    QCOMPARE(rig.alerts.alerts[0].kind, rw::RateAlertKind::Estimate);
    QVERIFY(rig.alerts.alerts[0].message.starts_with(
        "This program has verified interest rates through March 31, 2018.  The program has estimated interest rates "
        "through June 30, 2018.  Since your stop date of 4/1/2018 is past March 31, 2018, but not past June 30, 2018, "
        "this calculation should be considered an ESTIMATE.  "));

    // The date appears as typed.
    leaveWith("6/30/18");
    QCOMPARE(rig.alerts.alerts.size(), std::size_t(2));
    QCOMPARE(rig.alerts.alerts[1].kind, rw::RateAlertKind::Estimate);
    QVERIFY(rig.alerts.alerts[1].message.find("stop date of 6/30/18 is past") != std::string::npos);
    QVERIFY(rig.window->isVisible());
    QCOMPARE(rig.program.ends, 0);
}

void InitialInputsWindowTest::endAlertEndsTheProgramAndClosesTheDialog()
{
    Rig rig;
    rig.open();
    auto* stop = rig.field("txtStop");
    typeInto(stop, QStringLiteral("7/1/2018"));
    QTest::keyClick(stop, Qt::Key_Tab);
    QTRY_COMPARE(rig.alerts.alerts.size(), std::size_t(1));
    QCOMPARE(rig.alerts.alerts[0].kind, rw::RateAlertKind::End);
    QCOMPARE(rig.alerts.alerts[0].exitCaption, std::string("End Program"));
    QCOMPARE(rig.program.ends, 1);
    QTRY_VERIFY(!rig.window->isVisible());
    QCOMPARE(rig.window->outcome(), InitialInputsWindow::Outcome::ProgramEnded);
    // Nothing was stored.
    QVERIFY(rig.kase.init.tlStop.dtDate.isNoDate());
}

void InitialInputsWindowTest::cancelStoresNothing()
{
    Rig rig;
    const rw::Case before = rig.kase;
    QWidget* w = rig.open();
    typeInto(rig.field("txtName"), QStringLiteral("Somebody"));
    typeInto(rig.field("txtInitBal"), QStringLiteral("99.00"));
    click(w, "btnCancel");
    QCOMPARE(rig.window->result(), int(QDialog::Rejected));
    QCOMPARE(rig.window->outcome(), InitialInputsWindow::Outcome::Cancelled);
    QVERIFY(rig.kase == before);
}

void InitialInputsWindowTest::balanceThatIsNotAnAmountKeepsTheDialogOpen()
{
    Rig rig;
    QWidget* w = rig.open();
    typeInto(rig.field("txtInitBal"), QStringLiteral("12x"));
    click(w, "btnOK");
    QVERIFY(w->isVisible());
    QCOMPARE(rig.msgs.shown.size(), std::size_t(1));
    QCOMPARE(rig.msgs.shown[0].title, std::string("WARNING"));
    QVERIFY(rig.kase.init.tlStart.dtDate.isNoDate());
}

QTEST_MAIN(InitialInputsWindowTest)
#include "initialinputs_test.moc"
