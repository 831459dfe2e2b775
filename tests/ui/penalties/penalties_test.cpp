// The penalty input dialogs driven as a user drives them: failure to file
// (with the Extended Due Date dialog on leaving the filing date), failure to
// pay (with the increased rate only for returns due after 1986) and the
// accuracy-related penalty (rate choices, hints, the Extended Due Date dialog
// afterwards).

#include "tests/ui/lists/uitest.h"

#include "ui/penalties/commands.h"

#include <QGroupBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>

using namespace uitest;

namespace {

void click(QWidget* dlg, const char* button)
{
    if (auto* b = child<QPushButton>(dlg, button))
        b->click();
}

QRadioButton* choice(QWidget* dlg, const char* group, int which)
{
    auto* g = child<QGroupBox>(dlg, group);
    return g ? g->findChildren<QRadioButton*>().value(which) : nullptr;
}

QLineEdit* field(QWidget* dlg, const char* name)
{
    return child<QLineEdit>(dlg, name);
}

rw::Case Case2016()
{
    return FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000");
}

}  // namespace

class PenaltiesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void failureToFileAsksForExtendedDueDate();
    void failureToFileNoClearsTheMark();
    void failureToPayWithIncreasedRate();
    void failureToPayForOldReturnHidesIncreasedRate();
    void accuracyRelatedRatesHintsAndExtendedDueDate();
    void accuracyRelatedBefore1990();
};

void PenaltiesTest::failureToFileAsksForExtendedDueDate()
{
    Fixture f(Case2016());
    ModalDriver drive;
    drive.when(QStringLiteral("Failure To File Penalty Inputs"), [&f](QWidget* dlg) {
        QVERIFY(choice(dlg, "radCalcPen", 1)->isChecked());
        QVERIFY(!field(dlg, "txtAssess")->isEnabled());
        QVERIFY(!field(dlg, "txtFiled")->isEnabled());
        choice(dlg, "radCalcPen", 0)->click();
        QVERIFY(field(dlg, "txtAssess")->isEnabled());
        QVERIFY(field(dlg, "txtFiled")->isEnabled());
        // An assessment on the start date is warned about when the field is left.
        field(dlg, "txtAssess")->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(field(dlg, "txtAssess"), QStringLiteral("4/15/2016"));
        QTest::keyClick(field(dlg, "txtAssess"), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(field(dlg, "txtFiled")));
        QCOMPARE(f.msgs.texts(),
                 std::vector<std::string>{"Assessment date is on or before the start date of the interest "
                                          "calculation.  Unreliable results or an unplanned termination may occurr "
                                          "if this is not corrected. You might want to use 4/16/2016 instead."});
        f.msgs.clear();
        QCOMPARE(f.extendedDueDateOpened, 0);
        QTest::keyClicks(field(dlg, "txtFiled"), QStringLiteral("6/10/2016"));
        QTest::keyClick(field(dlg, "txtFiled"), Qt::Key_Return);
        // Leaving the filing date: the period check (silent) and the
        // Extended Due Date dialog.
        QTRY_COMPARE(f.extendedDueDateOpened, 1);
        QVERIFY(f.msgs.shown.empty());
        retype(field(dlg, "txtAssess"), QStringLiteral("7/1/2016"));
        shoot(dlg, QStringLiteral("failure-to-file"));
        click(dlg, "btnOK");
    });
    QVERIFY(rw::ui::RunFailureToFileCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QVERIFY(rw::IsYes(f.kase.init.bFtoFile));
    QVERIFY(rw::IsYes(f.kase.init.bAnyPenalties));
    QCOMPARE(f.kase.init.dtFiled, D(6, 10, 2016));
    QCOMPARE(f.kase.init.dtFtoFileAssess, D(7, 1, 2016));
    QCOMPARE(f.recoveryCopies, 1);
    QVERIFY(f.msgs.shown.empty());
}

void PenaltiesTest::failureToFileNoClearsTheMark()
{
    rw::Case c = Case2016();
    c.init.bFtoFile = rw::kYes;
    c.init.dtFiled = D(6, 10, 2016);
    c.init.dtFtoFileAssess = D(7, 1, 2016);
    Fixture f(std::move(c));
    ModalDriver drive;
    drive.when(QStringLiteral("Failure To File Penalty Inputs"), [](QWidget* dlg) {
        QVERIFY(choice(dlg, "radCalcPen", 0)->isChecked());
        QCOMPARE(field(dlg, "txtFiled")->text(), QStringLiteral("6/10/2016"));
        QCOMPARE(field(dlg, "txtAssess")->text(), QStringLiteral("7/1/2016"));
        click(dlg, "btnCancel");
    });
    QVERIFY(rw::ui::RunFailureToFileCommand(f.ctx));  // Cancel: the mark the case calls for
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QCOMPARE(f.recoveryCopies, 0);

    ModalDriver no;
    no.when(QStringLiteral("Failure To File Penalty Inputs"), [](QWidget* dlg) {
        choice(dlg, "radCalcPen", 1)->click();
        QVERIFY(!field(dlg, "txtFiled")->isEnabled());
        click(dlg, "btnOK");
    });
    QVERIFY(!rw::ui::RunFailureToFileCommand(f.ctx));
    QVERIFY2(no.finished(), qPrintable(no.failures.join(u'\n')));
    QVERIFY(!rw::IsYes(f.kase.init.bFtoFile));
    QCOMPARE(f.recoveryCopies, 1);
}

void PenaltiesTest::failureToPayWithIncreasedRate()
{
    Fixture f(Case2016());
    ModalDriver drive;
    drive.when(QStringLiteral("Failure To Pay Inputs"), [&f](QWidget* dlg) {
        auto* note = child<QLabel>(dlg, "lbl6651d1Note");
        auto* increased = child<QGroupBox>(dlg, "rad6651d1");
        QVERIFY(!note->isVisible());
        QVERIFY(increased->isVisible());
        QVERIFY(!increased->isEnabled());
        QVERIFY(!field(dlg, "txtAssess")->isEnabled());
        // While the amount on the return is 0 the initial balance shows.
        QCOMPARE(field(dlg, "txtAmtOnRet")->text(), QStringLiteral("10,000.00"));
        choice(dlg, "radCalcPen", 0)->click();
        QVERIFY(field(dlg, "txtAssess")->isEnabled());
        QVERIFY(field(dlg, "txtAmtOnRet")->isEnabled());
        QVERIFY(increased->isEnabled());
        QVERIFY(!field(dlg, "txt6651d1Start")->isEnabled());
        field(dlg, "txtAssess")->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(field(dlg, "txtAssess"), QStringLiteral("7/1/2016"));
        QTest::keyClick(field(dlg, "txtAssess"), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(field(dlg, "txtAmtOnRet")));
        choice(dlg, "rad6651d1", 0)->click();
        QVERIFY(field(dlg, "txt6651d1Start")->isEnabled());
        QVERIFY(child<QLabel>(dlg, "lbl6651d1")->isEnabled());
        field(dlg, "txt6651d1Start")->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(field(dlg, "txt6651d1Start"), QStringLiteral("1/1/2017"));
        // An amount that is not a number keeps the dialog open.
        retype(field(dlg, "txtAmtOnRet"), QStringLiteral("9,5OO"));
        click(dlg, "btnOK");
        QVERIFY(dlg->isVisible());
        // Leaving the start date, on or after the stop date, was warned
        // about first.
        QCOMPARE(f.msgs.texts(),
                 (std::vector<std::string>{
                     "Increased failure to pay starting date is on or after the stop date of the interest "
                     "calculation.  Unreliable results or an unplanned termination may occurr if this is not "
                     "corrected. You might want to use 12/30/2016 instead.",
                     "The Amount Shown on Return entered as 9,5OO is not an amount.  Please enter a number such as "
                     "1,234.56."}));
        f.msgs.clear();
        retype(field(dlg, "txtAmtOnRet"), QStringLiteral("9,500"));
        shoot(dlg, QStringLiteral("failure-to-pay"));
        click(dlg, "btnOK");
    });
    QVERIFY(rw::ui::RunFailureToPayCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QVERIFY(f.msgs.shown.empty());
    const rw::InitInputs& in = f.kase.init;
    QVERIFY(rw::IsYes(in.bFtoPay));
    QVERIFY(rw::IsYes(in.b6651d1));
    QCOMPARE(in.dtFtoPayAssess, D(7, 1, 2016));
    QCOMPARE(in.dt6651d1Start, D(1, 1, 2017));
    QCOMPARE(in.cAmtOnReturn, M("9500"));
    QCOMPARE(f.recoveryCopies, 1);
}

void PenaltiesTest::failureToPayForOldReturnHidesIncreasedRate()
{
    rw::Case c = FederalCase(D(12, 31, 1986), D(12, 31, 1986), D(12, 31, 1987), "5000");
    c.init.b6651d1 = rw::kYes;
    Fixture f(std::move(c));
    ModalDriver drive;
    drive.when(QStringLiteral("Failure To Pay Inputs"), [](QWidget* dlg) {
        auto* note = child<QLabel>(dlg, "lbl6651d1Note");
        QVERIFY(note->isVisible());
        QCOMPARE(note->text(), QStringLiteral("\u00A76651(d)(1) Penalty is only available for returns due after "
                                              "12/31/1986."));
        QVERIFY(!child<QGroupBox>(dlg, "rad6651d1")->isVisible());
        choice(dlg, "radCalcPen", 0)->click();
        QVERIFY(!child<QGroupBox>(dlg, "rad6651d1")->isVisible());
        QVERIFY(child<QLabel>(dlg, "lbl6651d1Note")->isVisible());
        shoot(dlg, QStringLiteral("failure-to-pay-1986"));
        click(dlg, "btnCancel");
    });
    // Opening already turned the increased rate off; Cancel keeps that.
    QVERIFY(!rw::ui::RunFailureToPayCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QVERIFY(!rw::IsYes(f.kase.init.b6651d1));
    QVERIFY(!rw::IsYes(f.kase.init.bFtoPay));
    QCOMPARE(f.recoveryCopies, 0);
}

void PenaltiesTest::accuracyRelatedRatesHintsAndExtendedDueDate()
{
    Fixture f(Case2016());
    ModalDriver drive;
    drive.when(QStringLiteral("Accuracy Related Penalty"), [&f](QWidget* dlg) {
        auto* notes = child<QPlainTextEdit>(dlg, "txtAccNotes");
        auto* underpayment = field(dlg, "CScurUnderPmt");
        auto* rate = field(dlg, "txtAccuracyRelatedPenaltyRate");
        QVERIFY(choice(dlg, "CSOptAcc", 1)->isChecked());
        QVERIFY(!underpayment->isEnabled());
        QCOMPARE(rate->text(), QStringLiteral(".20"));
        QVERIFY(!rate->isEnabled());
        choice(dlg, "CSOptAcc", 0)->click();
        QVERIFY(underpayment->isEnabled());
        underpayment->setFocus(Qt::TabFocusReason);
        QCOMPARE(notes->toPlainText(), QStringLiteral("The Accuracy Related underpayment is defined at I.R.C. "
                                                      "Section 6664.  DO NOT INCLUDE ANY AMOUNT RELATED TO FRAUD!"));
        QTest::keyClicks(underpayment, QStringLiteral("5000"));
        auto* economic = child<QRadioButton>(dlg, "optEconomicSubstanceRate");
        economic->setFocus(Qt::TabFocusReason);
        QCOMPARE(notes->toPlainText(),
                 QStringLiteral("Choose this for the Economic Substance Accuracy Related Penalty rate."));
        economic->click();
        QCOMPARE(rate->text(), QStringLiteral(".40"));
        QVERIFY(!rate->isEnabled());
        auto* other = child<QRadioButton>(dlg, "optOtherRate");
        other->setFocus(Qt::TabFocusReason);
        QCOMPARE(notes->toPlainText(),
                 QStringLiteral("Click on this if you want a penalty rate other than the normal or the Economic "
                                "Substance rate.  Specify the rate you want to use in the Accuracy Related Penalty "
                                "Rate input box."));
        other->click();
        // The rate field opens, keeps its text and takes the focus.
        QVERIFY(rate->isEnabled());
        QCOMPARE(rate->text(), QStringLiteral(".40"));
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(rate));
        QCOMPARE(notes->toPlainText(),
                 QStringLiteral("You can change the Accuracy Related Penalty rate here. Change this only in unusual "
                                "circumstances. Most of the you should use either the normal rate or the Economic "
                                "Substance rate."));
        auto* normal = child<QRadioButton>(dlg, "optNormalRate");
        normal->setFocus(Qt::TabFocusReason);
        QCOMPARE(notes->toPlainText(), QStringLiteral("Choose this for the normal Accuracy Related Penalty rate."));
        normal->click();
        QCOMPARE(rate->text(), QStringLiteral(".20"));
        QVERIFY(!rate->isEnabled());
        // Enter on the chosen rate moves on instead of pressing OK.
        QTest::keyClick(normal, Qt::Key_Return);
        QVERIFY(dlg->isVisible());
        QCOMPARE(f.extendedDueDateOpened, 0);
        shoot(dlg, QStringLiteral("accuracy-related"));
        click(dlg, "btnOK");
    });
    QVERIFY(rw::ui::RunAccuracyRelatedCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    // With the penalty on, the command goes on to the Extended Due Date dialog.
    QCOMPARE(f.extendedDueDateOpened, 1);
    QVERIFY(rw::IsYes(f.kase.init.bAccRel));
    QVERIFY(rw::IsYes(f.kase.init.bAnyPenalties));
    QCOMPARE(f.kase.init.cAccRelAmt, M("5000"));
    QCOMPARE(f.kase.init.fAccRelRate, 0.2f);
    QCOMPARE(f.recoveryCopies, 1);
    QVERIFY(f.msgs.shown.empty());

    // A stored rate of 0.3 reopens with the rate field open.
    f.kase.init.fAccRelRate = 0.3f;
    ModalDriver again;
    again.when(QStringLiteral("Accuracy Related Penalty"), [](QWidget* dlg) {
        QVERIFY(child<QRadioButton>(dlg, "optOtherRate")->isChecked());
        QVERIFY(field(dlg, "txtAccuracyRelatedPenaltyRate")->isEnabled());
        QCOMPARE(field(dlg, "txtAccuracyRelatedPenaltyRate")->text(), QStringLiteral(".30"));
        QCOMPARE(field(dlg, "CScurUnderPmt")->text(), QStringLiteral("5,000.00"));
        click(dlg, "btnCancel");
    });
    QVERIFY(rw::ui::RunAccuracyRelatedCommand(f.ctx));
    QVERIFY2(again.finished(), qPrintable(again.failures.join(u'\n')));
    QCOMPARE(f.extendedDueDateOpened, 2);  // still on: the day interest runs from is asked for again
}

void PenaltiesTest::accuracyRelatedBefore1990()
{
    rw::Case c = FederalCase(D(12, 31, 1989), D(12, 31, 1989), D(12, 31, 1990), "5000");
    c.init.bAccRel = rw::kYes;
    Fixture f(std::move(c));
    ModalDriver drive;
    drive.when(QStringLiteral("Accuracy Related Penalty"), [](QWidget* dlg) {
        QVERIFY(choice(dlg, "CSOptAcc", 1)->isChecked());
        QVERIFY(!field(dlg, "CScurUnderPmt")->isEnabled());
        QCOMPARE(child<QPlainTextEdit>(dlg, "txtAccNotes")->toPlainText(),
                 QStringLiteral("Since the due date of the return is before 1990.  The Accuracy Related penalty "
                                "should not be used."));
        shoot(dlg, QStringLiteral("accuracy-related-1989"));
        click(dlg, "btnCancel");
    });
    QVERIFY(!rw::ui::RunAccuracyRelatedCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QVERIFY(!rw::IsYes(f.kase.init.bAccRel));
    QCOMPARE(f.extendedDueDateOpened, 0);
}

QTEST_MAIN(PenaltiesTest)
#include "penalties_test.moc"
