// The input dialogs: bindings, each connection's effect, a fault, Enter as
// Tab (what the checks say is the core's: tests/casedata, tests/engine).

#include "tests/ui/support/windowkit.h"

#include "ui/inputs/initialinputswindow.h"
#include "ui/inputs/optionwindows.h"

using namespace rwtest;
using rw::Case;
using rw::ui::InitialInputsWindow;

namespace {

struct Rig {
    Case kase = FederalCase(rw::NoDate, rw::NoDate, "0", rw::NoDate);
    rw::RateTable rates;
    InstallFolder folder;
    rw::Paths paths = folder.paths();
    FaultingMessages msgs;
    RecordingAlertWindow alerts;
    RecordingProgram program;
    InitialInputsWindow::Outcome outcome{};
    ShowDialog show = Shows("Initial Inputs", [this] {
        InitialInputsWindow w(kase, rates, paths, msgs, {FixtureRelease(), alerts, program});
        w.run();
        outcome = w.outcome();
    });
};

// The three option dialogs over one case.
struct Options {
    Case c = FederalCase(D(1989, 4, 15), D(1998, 12, 31), "1000");
    RecordingMessages msgs;
    ShowDialog optRates
        = Shows("Optional Rates", [this] { rw::ui::OptRatesWindow(c, msgs).run(); });
    ShowDialog suspend
        = Shows("Suspended Interest Inputs", [this] { rw::ui::SuspendWindow(c, msgs).run(); });
    ShowDialog extended
        = Shows("Extended Due Date", [this] { rw::ui::ExtDueDateWindow(c, msgs).run(); });
};

}  // namespace

class InputsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void initialInputsBindings()
    {
        const Bindings rows = {
            {"txtName", "Jordan A. Example", [](Case& c) { c.init.sName = "Jordan A. Example"; }},
            {"txt2ndLine", "Form 1120", [](Case& c) { c.init.s2ndLine = "Form 1120"; }},
            {"lstTaxingAuthority", "CA - Corp: Large", [](Case& c) { c.init.sTaxAuth = "CAB "; }},
            {"txtDueDate", "4/15/2016", [](Case& c) { c.init.dtDue = D(2016, 4, 15); }},
            {"txtStart", "5/2/2016", [](Case& c) { c.init.tlStart.dtDate = D(2016, 5, 2); }},
            {"txtStop", "12/30/2016", [](Case& c) { c.init.tlStop.dtDate = D(2016, 12, 30); }},
            {"radStartOverpayment", "x", [](Case& c) { c.init.bOverpayment = rw::kYes; }},
            {"radPRYes", "x", [](Case& c) { c.init.bPayroll = rw::kYes; }},
            {"txtInitBal", "1,500.25", [](Case& c) { c.init.tlStart.cTax = M("-1500.25"); }},
            {"txtStopDays", "10", [](Case& c) { c.init.nStopDays = 10; }},
            {"chkCorpTaxpayer", "x", [](Case& c) { c.init.bCorporate = rw::kYes; }},
        };
        Rig rig;
        CheckBindings(rig.kase, rows, rig.show, "dlgInit");
        QVERIFY(!rig.rates.empty() && rig.msgs.shown.empty() && rig.alerts.alerts.empty());
    }

    // Enter moves on as Tab does (every dialog has the filter); each
    // connection's effect, the rate check here ending program and dialog.
    void initialInputsReactionsAndEnterAsTab()
    {
        Rig rig;
        rig.show([&rig](QWidget* d) {
            QTRY_COMPARE(QApplication::focusWidget(), Child(d, "txtName"));
            QTest::keyClick(Child(d, "txtName"), Qt::Key_Return);
            QTRY_COMPARE(QApplication::focusWidget(), Child(d, "txt2ndLine"));
            Child(d, "radPRNo")->setFocus(Qt::TabFocusReason);
            QTest::keyClick(Child(d, "radPRNo"), Qt::Key_Enter);
            QTRY_COMPARE(QApplication::focusWidget(), Child(d, "chkCorpTaxpayer"));
            CheckReactions(d, rig.msgs,
                           {{"radStartOverpayment", "x", Effect::Opens, "txtStopDays"},
                            {"txtInitBal", "5.00", Effect::None},
                            {"radPRYes", "x", Effect::Box},
                            {"btnOK", "x", Effect::Box}});
            Type(d, "txtStop", "4/1/2027");
            Leave(d, "txtStop");
        });
        QVERIFY(rig.alerts.alerts.size() == 1 && rig.program.ends == 1);
        QCOMPARE(rig.outcome, InitialInputsWindow::Outcome::ProgramEnded);
        QVERIFY(rig.kase.init.tlStop.dtDate.isNoDate());
    }

    // The option dialogs' bindings; then each connection's effect: a choice
    // runs its check or opens its date, leaving a date runs its check.
    void optionDialogs()
    {
        Options o;
        CheckBindings(o.c,
                      {{"radTaxMotYes", "x", [](Case& c) { c.init.bTaxMotivated = rw::kYes; }},
                       {"radCorpUPRateYes", "x", [](Case& c) { c.init.bCorpUPRate = rw::kYes; }},
                       {"CSdtCorpUPRateStart", "2/3/1997",
                        [](Case& c) { c.init.dtCorpUPRateStart = D(1997, 2, 3); }},
                       {"radCorpOPRateYes", "x", [](Case& c) { c.init.bCorpOPRate = rw::kYes; }},
                       {"CSdtCorpOPRateStart", "3/4/1997",
                        [](Case& c) { c.init.dtCorpOPRateStart = D(1997, 3, 4); }}},
                      o.optRates, "dlgOptRates");
        o.c = FederalCase(D(2016, 4, 15), D(2017, 12, 31), "1000");
        CheckBindings(
            o.c,
            {{"CSdtIntSuspend", "6/1/2016", [](Case& c) { c.init.dtIntSuspend = D(2016, 6, 1); }},
             {"CSdtRestart", "9/1/2016", [](Case& c) { c.init.dtRestart = D(2016, 9, 1); }}},
            o.suspend, "dlgSusp");
        CheckBindings(
            o.c,
            {{"txtExtended", "10/17/2016", [](Case& c) { c.init.dtExtended = D(2016, 10, 17); }}},
            o.extended, "dlgExtIP");
        QVERIFY(o.msgs.shown.empty());
        o.optRates(Reacts(o.msgs, {{"radTaxMotYes", "x", Effect::Box},
                                   {"radCorpUPRateYes", "x", Effect::Opens, "CSdtCorpUPRateStart"},
                                   {"CSdtCorpUPRateStart", "12/31/1990", Effect::Box},
                                   {"radCorpOPRateYes", "x", Effect::Opens, "CSdtCorpOPRateStart"},
                                   {"CSdtCorpOPRateStart", "12/31/1994", Effect::Box}}));
        o.suspend(Reacts(o.msgs, {{"CSdtIntSuspend", "6/1/2016", Effect::None},
                                  {"CSdtRestart", "5/1/2016", Effect::Box}}));
        o.extended(
            Reacts(o.msgs, {{"txtExtended", "4/14/2016", Effect::Box}}));  // before the due date
        o.suspend([](QWidget* d) {  // both dates emptied: the suspension removed
            Type(d, "CSdtIntSuspend", "");
            Type(d, "CSdtRestart", "");
            Click(d, "btnOK");
        });
        QVERIFY(o.c.init.dtIntSuspend.isNoDate() && o.c.init.dtRestart.isNoDate());
    }

    // A date that is not one is refused when left: one box, the field has
    // the focus again with its text selected; so is a stop before the start,
    // again on OK, and the dialog stays open.
    void refusedDatesAreSelectedAgain()
    {
        Rig rig;
        const auto leaveRefused = [&rig](QWidget* d, const char* name) {
            auto* field = Child<QLineEdit>(d, name);
            OneBoxAfter(rig.msgs, [field] { QTest::keyClick(field, Qt::Key_Tab); });
            QTRY_COMPARE(QApplication::focusWidget(), field);
            QCOMPARE(field->selectedText(), field->text());
        };
        rig.show([&](QWidget* d) {
            Type(d, "txtStart", "13/45/2022");
            leaveRefused(d, "txtStart");
            Shoot(d, "dlgInitRefusedDate");
            Type(d, "txtStart", "4/15/2016");
            Type(d, "txtStop", "4/1/2016");
            leaveRefused(d, "txtStop");
            OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
            QTRY_VERIFY(d->isVisible() && Child(d, "txtStop")->hasFocus());
            Click(d, "btnCancel");
        });
        QVERIFY(rig.outcome == InitialInputsWindow::Outcome::Cancelled
                && rig.kase.init.tlStart.dtDate.isNoDate());
    }

    void faultClosesTheDialogAndReachesTheCaller()
    {
        Rig rig;
        CheckFault(rig.kase, rig.show, [&rig](QWidget* d) {
            Type(d, "txtInitBal", "5.00");
            rig.msgs.failNext = true;
            Click(d, "radPRYes");  // its check shows a box, which fails
        });
    }
};

QTEST_MAIN(InputsTest)
#include "inputs_test.moc"
