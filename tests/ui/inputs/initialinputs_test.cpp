// "Initial Inputs": which widget shows and stores which field of the case,
// what each of its reactions sets off, OK, Cancel, a fault, Enter as Tab.
// What the reactions say is the core's (tests/casedata, tests/shell).

#include "tests/ui/support/windowkit.h"

#include "support/releases.h"
#include "ui/inputs/initialinputswindow.h"

#include <QApplication>
#include <QtTest>

using namespace rwtest;
using rw::ui::InitialInputsWindow;

namespace {

// One window over its own case, installation folder and doubles, run modally.
struct Rig {
    rw::Case kase = Cleared();
    rw::RateTable rates;
    InstallFolder folder;
    rw::Paths paths = folder.paths();
    FaultingMessages msgs;
    RecordingAlertWindow alerts;
    RecordingProgram program;
    InitialInputsWindow::Outcome outcome = InitialInputsWindow::Outcome::Cancelled;

    void run(const ModalDriver::Action& action)
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Initial Inputs"), action);
        InitialInputsWindow w(kase, rates, paths, msgs, {FixtureRelease(), alerts, program});
        w.run();
        outcome = w.outcome();
        RW_VERIFY_DRIVEN(drive);
    }
};

}  // namespace

class InitialInputsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bindings();
    void reactions();
    void enterMovesOnAsTab();
    void faultClosesTheDialogAndReachesTheCaller();
};

void InitialInputsTest::bindings()
{
    const Bindings rows = {
        {"txtName", "Jordan A. Example", [](rw::Case& c) { c.init.sName.assign("Jordan A. Example"); }},
        {"txt2ndLine", "Form 1120", [](rw::Case& c) { c.init.s2ndLine.assign("Form 1120"); }},
        {"lstTaxingAuthority", "CA - Corp: Large", [](rw::Case& c) { c.init.sTaxAuth.assign("CAB "); }},
        {"txtDueDate", "4/15/2016", [](rw::Case& c) { c.init.dtDue = D(2016, 4, 15); }},
        {"txtStart", "5/2/2016", [](rw::Case& c) { c.init.tlStart.dtDate = D(2016, 5, 2); }},
        {"txtStop", "12/30/2016", [](rw::Case& c) { c.init.tlStop.dtDate = D(2016, 12, 30); }},
        {"radStartOverpayment", "x", [](rw::Case& c) { c.init.bOverpayment = rw::kYes; }},
        {"radPRYes", "x", [](rw::Case& c) { c.init.bPayroll = rw::kYes; }},
        {"txtInitBal", "1,500.25", [](rw::Case& c) { c.init.tlStart.cTax = M("-1500.25"); }},
        {"txtStopDays", "10", [](rw::Case& c) { c.init.nStopDays = 10; }},
        {"chkCorpTaxpayer", "x", [](rw::Case& c) { c.init.bCorporate = rw::kYes; }},
    };
    Rig rig;
    CheckBindings(rig.kase, rows, [&rig](const ModalDriver::Action& a) { rig.run(a); }, QStringLiteral("dlgInit"));
    QVERIFY(!rig.rates.empty());  // OK loaded the authority's table
    QVERIFY(rig.msgs.shown.empty());
    QVERIFY(rig.alerts.alerts.empty());
}

// Each connection sets off its reaction: the starting situation shows the
// stop days, Payroll Tax runs its check, leaving End Calculation runs the
// rate currency check (here one that ends the program), OK refuses what is
// not an amount.
void InitialInputsTest::reactions()
{
    Rig rig;
    rig.run([&rig](QWidget* d) {
        QVERIFY(!Child(d, "txtStopDays")->isVisible());
        Click(d, "radStartOverpayment");
        QVERIFY(Child(d, "txtStopDays")->isVisible());
        Shoot(d, QStringLiteral("dlgInit-overpayment"));
        Type(d, "txtInitBal", QStringLiteral("5.00"));
        Click(d, "radPRYes");
        QCOMPARE(rig.msgs.shown.size(), std::size_t(1));
        Type(d, "txtInitBal", QStringLiteral("5x"));
        Click(d, "btnOK");
        QCOMPARE(rig.msgs.shown.size(), std::size_t(2));
        QVERIFY(d->isVisible());
        Type(d, "txtStop", QStringLiteral("4/1/2027"));
        Leave(d, "txtStop");
    });
    QCOMPARE(rig.alerts.alerts.size(), std::size_t(1));
    QCOMPARE(rig.program.ends, 1);
    QCOMPARE(rig.outcome, InitialInputsWindow::Outcome::ProgramEnded);
    QVERIFY(rig.kase.init.tlStop.dtDate.isNoDate());
}

// Enter and Return move on as Tab does, from a field and from a choice, and
// never press OK.
void InitialInputsTest::enterMovesOnAsTab()
{
    Rig rig;
    rig.run([](QWidget* d) {
        QTRY_COMPARE(QApplication::focusWidget(), Child(d, "txtName"));
        QTest::keyClick(Child(d, "txtName"), Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), Child(d, "txt2ndLine"));
        Child(d, "radPRNo")->setFocus(Qt::TabFocusReason);
        QTest::keyClick(Child(d, "radPRNo"), Qt::Key_Enter);
        QTRY_COMPARE(QApplication::focusWidget(), Child(d, "chkCorpTaxpayer"));
        QVERIFY(d->isVisible());
        Click(d, "btnCancel");
    });
    QCOMPARE(rig.outcome, InitialInputsWindow::Outcome::Cancelled);
}

void InitialInputsTest::faultClosesTheDialogAndReachesTheCaller()
{
    Rig rig;
    rig.msgs.failNext = true;
    QVERIFY_THROWS_EXCEPTION(rw::Fault, rig.run([](QWidget* d) {
        Type(d, "txtInitBal", QStringLiteral("5.00"));
        Click(d, "radPRYes");  // its check shows a box, which fails
    }));
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(rig.kase.init.tlStart.cTax.isZero());
}

QTEST_MAIN(InitialInputsTest)
#include "initialinputs_test.moc"
