// "Optional Rates", "Suspended Interest Inputs" and "Extended Due Date":
// which widget shows and stores which field of the case, what each reaction
// is set off by, a fault. What the checks say is the core's (tests/engine,
// tests/casedata).

#include "tests/ui/support/windowkit.h"

#include "ui/inputs/optionwindows.h"

#include <QApplication>
#include <QtTest>

using namespace rwtest;

namespace {

// Runs a window of this folder modally over the case, the action inside.
template <typename Window>
void RunModal(rw::Case& c, rw::Messages& msgs, const ModalDriver::Action& action)
{
    ModalDriver drive;
    drive.when({}, action);
    Window w(c, msgs);
    w.run();
    RW_VERIFY_DRIVEN(drive);
}

template <typename Window>
ShowDialog Runner(rw::Case& c, rw::Messages& msgs)
{
    return [&c, &msgs](const ModalDriver::Action& action) { RunModal<Window>(c, msgs, action); };
}

}  // namespace

class OptionWindowsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void optionalRatesBindings();
    void suspensionBindings();
    void extendedDueDateBindings();
    void reactions();
    void faultClosesTheDialogAndReachesTheCaller();
};

void OptionWindowsTest::optionalRatesBindings()
{
    const Bindings rows = {
        {"radTaxMotYes", "x", [](rw::Case& c) { c.init.bTaxMotivated = rw::kYes; }},
        {"radCorpUPRateYes", "x", [](rw::Case& c) { c.init.bCorpUPRate = rw::kYes; }},
        {"CSdtCorpUPRateStart", "2/3/1997", [](rw::Case& c) { c.init.dtCorpUPRateStart = D(1997, 2, 3); }},
        {"radCorpOPRateYes", "x", [](rw::Case& c) { c.init.bCorpOPRate = rw::kYes; }},
        {"CSdtCorpOPRateStart", "3/4/1997", [](rw::Case& c) { c.init.dtCorpOPRateStart = D(1997, 3, 4); }},
    };
    rw::Case c = FederalCase(D(1989, 4, 15), D(1998, 12, 31), "1000");
    RecordingMessages msgs;
    CheckBindings(c, rows, Runner<rw::ui::OptRatesWindow>(c, msgs), QStringLiteral("dlgOptRates"));
    QVERIFY(msgs.shown.empty());
}

void OptionWindowsTest::suspensionBindings()
{
    const Bindings rows = {
        {"CSdtIntSuspend", "6/1/2016", [](rw::Case& c) { c.init.dtIntSuspend = D(2016, 6, 1); }},
        {"CSdtRestart", "9/1/2016", [](rw::Case& c) { c.init.dtRestart = D(2016, 9, 1); }},
    };
    rw::Case c = FederalCase(D(2016, 4, 15), D(2017, 12, 31), "1000");
    RecordingMessages msgs;
    CheckBindings(c, rows, Runner<rw::ui::SuspendWindow>(c, msgs), QStringLiteral("dlgSusp"));
    QVERIFY(msgs.shown.empty());
}

void OptionWindowsTest::extendedDueDateBindings()
{
    const Bindings rows = {
        {"txtExtended", "10/17/2016", [](rw::Case& c) { c.init.dtExtended = D(2016, 10, 17); }},
    };
    rw::Case c = FederalCase(D(2016, 4, 15), D(2017, 12, 31), "1000");
    RecordingMessages msgs;
    CheckBindings(c, rows, Runner<rw::ui::ExtDueDateWindow>(c, msgs), QStringLiteral("dlgExtIP"));
    QVERIFY(msgs.shown.empty());
}

// Each connection sets off its reaction: a choice runs its check or opens
// its date, leaving a date runs its check (one box each).
void OptionWindowsTest::reactions()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2017, 12, 31), "1000");
    RecordingMessages msgs;
    const auto boxAfter = [&msgs](const std::function<void()>& act) {
        msgs.clear();
        act();
        QCOMPARE(msgs.shown.size(), std::size_t(1));
    };
    RunModal<rw::ui::OptRatesWindow>(c, msgs, [&](QWidget* d) {
        boxAfter([d] { Click(d, "radTaxMotYes"); });
        for (const auto& [yes, start] : {std::pair{"radCorpUPRateYes", "CSdtCorpUPRateStart"},
                                         std::pair{"radCorpOPRateYes", "CSdtCorpOPRateStart"}}) {
            QVERIFY(!Child(d, start)->isEnabled());
            Click(d, yes);
            QVERIFY(Child(d, start)->isEnabled());
            QVERIFY(!Shown(d, start).isEmpty());
            boxAfter([d, start] {
                Type(d, start, QStringLiteral("13/45/1996"));
                Leave(d, start);
            });
        }
        Click(d, "btnCancel");
    });
    RunModal<rw::ui::SuspendWindow>(c, msgs, [&](QWidget* d) {
        for (const char* date : {"CSdtIntSuspend", "CSdtRestart"})
            boxAfter([d, date] {
                Type(d, date, QStringLiteral("13/45/2016"));
                Leave(d, date);
            });
        Click(d, "btnCancel");
    });
    RunModal<rw::ui::ExtDueDateWindow>(c, msgs, [&](QWidget* d) {
        boxAfter([d] {
            Type(d, "txtExtended", QStringLiteral("4/14/2016"));  // before the due date
            Leave(d, "txtExtended");
        });
        Click(d, "btnCancel");
    });
}

void OptionWindowsTest::faultClosesTheDialogAndReachesTheCaller()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2017, 12, 31), "1000");
    const rw::Case before = c;
    FaultingMessages msgs;
    msgs.failNext = true;
    QVERIFY_THROWS_EXCEPTION(rw::Fault, RunModal<rw::ui::SuspendWindow>(c, msgs, [](QWidget* d) {
        Type(d, "CSdtRestart", QStringLiteral("13/45/2016"));
        Leave(d, "CSdtRestart");  // its check shows a box, which fails
    }));
    QVERIFY(!QApplication::activeModalWidget());
    RW_COMPARE_CASE(c, before);
}

QTEST_MAIN(OptionWindowsTest)
#include "optionwindows_test.moc"
