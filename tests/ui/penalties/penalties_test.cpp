// The penalty dialogs (Failure To File, Failure To Pay, Accuracy Related)
// reached through their commands: which widget shows and stores which field
// of the case, what each reaction is set off by, the recovery copy and the
// Extended Due Date dialog the commands go on to, a fault. What the logic
// says is the core's (tests/penalties).

#include "tests/ui/support/windowkit.h"

#include "ui/penalties/commands.h"

#include <QApplication>
#include <QtTest>

using namespace rwtest;

namespace {

using Command = void (*)(rw::ui::CommandContext&);

void RunCommand(CommandRig& rig, Command command, const char* title, const ModalDriver::Action& action)
{
    ModalDriver drive;
    drive.when(QString::fromLatin1(title), action);
    command(rig.ctx);
    RW_VERIFY_DRIVEN(drive);
}

ShowDialog Runner(CommandRig& rig, Command command, const char* title)
{
    return [&rig, command, title](const ModalDriver::Action& a) { RunCommand(rig, command, title, a); };
}

constexpr const char* kFtoFile = "Failure To File Penalty Inputs";
constexpr const char* kFtoPay = "Failure To Pay Inputs";
constexpr const char* kAccRel = "Accuracy Related Penalty";

void penaltiesOn(rw::Case& c)
{
    c.init.bAnyPenalties = rw::kYes;
}

}  // namespace

class PenaltiesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void failureToFileBindings();
    void failureToPayBindings();
    void accuracyRelatedBindings();
    void reactions();
    void okWritesTheRecoveryCopyAndAccuracyRelatedAsksForTheExtendedDueDate();
    void faultClosesTheDialogAndReachesTheCaller();
};

void PenaltiesTest::failureToFileBindings()
{
    const Bindings rows = {
        {"radCalcPen", "Yes", [](rw::Case& c) { c.init.bFtoFile = rw::kYes; }},
        {"txtAssess", "7/1/2016", [](rw::Case& c) { c.init.dtFtoFileAssess = D(2016, 7, 1); }},
        {"txtFiled", "6/10/2016", [](rw::Case& c) { c.init.dtFiled = D(2016, 6, 10); }},
        {nullptr, nullptr, penaltiesOn},
    };
    CommandRig rig;
    CheckBindings(rig.kase, rows, Runner(rig, rw::ui::RunFailureToFileCommand, kFtoFile),
                  QStringLiteral("dlgInpFToF"));
    QVERIFY(rig.msgs.shown.empty());
}

void PenaltiesTest::failureToPayBindings()
{
    const Bindings rows = {
        {"radCalcPen", "Yes", [](rw::Case& c) { c.init.bFtoPay = rw::kYes; }},
        {"txtAssess", "7/1/2016", [](rw::Case& c) { c.init.dtFtoPayAssess = D(2016, 7, 1); }},
        {"txtAmtOnRet", "9,500.00", [](rw::Case& c) { c.init.cAmtOnReturn = M("9500"); }},
        {"rad6651d1", "Yes", [](rw::Case& c) { c.init.b6651d1 = rw::kYes; }},
        {"txt6651d1Start", "11/1/2016", [](rw::Case& c) { c.init.dt6651d1Start = D(2016, 11, 1); }},
        {nullptr, nullptr, penaltiesOn},
    };
    CommandRig rig;
    CheckBindings(rig.kase, rows, Runner(rig, rw::ui::RunFailureToPayCommand, kFtoPay),
                  QStringLiteral("dlgInpFToP"));
    QVERIFY(rig.msgs.shown.empty());
}

void PenaltiesTest::accuracyRelatedBindings()
{
    const Bindings rows = {
        {"CSOptAcc", "Yes", [](rw::Case& c) { c.init.bAccRel = rw::kYes; }},
        {"CScurUnderPmt", "5,000.00", [](rw::Case& c) { c.init.cAccRelAmt = M("5000"); }},
        {"optOtherRate", "x", nullptr},
        {"txtAccuracyRelatedPenaltyRate", ".30", [](rw::Case& c) { c.init.fAccRelRate = 0.3f; }},
        {nullptr, nullptr, penaltiesOn},
    };
    CommandRig rig;
    CheckBindings(rig.kase, rows, Runner(rig, rw::ui::RunAccuracyRelatedCommand, kAccRel),
                  QStringLiteral("dlgInpAcc"));
    QVERIFY(rig.msgs.shown.empty());
}

// Each connection sets off its reaction: a choice opens its fields, leaving
// a date runs its check (one box; leaving the filing date also opens the
// Extended Due Date dialog), a field with the focus shows its note, OK
// refuses what is not an amount.
void PenaltiesTest::reactions()
{
    CommandRig rig;
    RunCommand(rig, rw::ui::RunFailureToFileCommand, kFtoFile, [&rig](QWidget* d) {
        QVERIFY(!Child(d, "txtAssess")->isEnabled());
        Put(d, "radCalcPen", QStringLiteral("Yes"));
        QVERIFY(Child(d, "txtAssess")->isEnabled());
        Type(d, "txtAssess", QStringLiteral("4/15/2016"));  // on the start date
        OneBoxAfter(rig.msgs, [d] { Leave(d, "txtAssess"); });
        Type(d, "txtFiled", QStringLiteral("6/10/2016"));
        Leave(d, "txtFiled");
        QCOMPARE(rig.extendedDueDateOpened, 1);
        Click(d, "btnCancel");
    });
    RunCommand(rig, rw::ui::RunFailureToPayCommand, kFtoPay, [&rig](QWidget* d) {
        Put(d, "radCalcPen", QStringLiteral("Yes"));
        QVERIFY(Child(d, "txtAssess")->isEnabled());
        QVERIFY(!Child(d, "txt6651d1Start")->isEnabled());
        Put(d, "rad6651d1", QStringLiteral("Yes"));
        QVERIFY(Child(d, "txt6651d1Start")->isEnabled());
        Type(d, "txtAssess", QStringLiteral("4/15/2016"));
        OneBoxAfter(rig.msgs, [d] { Leave(d, "txtAssess"); });
        Type(d, "txt6651d1Start", QStringLiteral("1/1/2017"));  // after the stop date
        OneBoxAfter(rig.msgs, [d] { Leave(d, "txt6651d1Start"); });
        Type(d, "txtAmtOnRet", QStringLiteral("9,5OO"));
        OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
        QVERIFY(d->isVisible());
        Click(d, "btnCancel");
    });
    RunCommand(rig, rw::ui::RunAccuracyRelatedCommand, kAccRel, [&rig](QWidget* d) {
        Put(d, "CSOptAcc", QStringLiteral("Yes"));
        QVERIFY(Child(d, "CScurUnderPmt")->isEnabled());
        QVERIFY(!Child(d, "txtAccuracyRelatedPenaltyRate")->isEnabled());
        Click(d, "optOtherRate");
        QVERIFY(Child(d, "txtAccuracyRelatedPenaltyRate")->isEnabled());
        QStringList notes;
        for (const char* field : {"CScurUnderPmt", "optNormalRate", "optEconomicSubstanceRate"}) {
            Child(d, field)->setFocus(Qt::TabFocusReason);
            notes << Shown(d, "txtAccNotes");
        }
        QVERIFY(notes[0] != notes[1] && notes[1] != notes[2]);
        Type(d, "CScurUnderPmt", QStringLiteral("5x"));
        OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
        QVERIFY(d->isVisible());
        Click(d, "btnCancel");
    });
    QCOMPARE(rig.recoveryCopies, 0);
}

void PenaltiesTest::okWritesTheRecoveryCopyAndAccuracyRelatedAsksForTheExtendedDueDate()
{
    CommandRig rig;
    RunCommand(rig, rw::ui::RunFailureToPayCommand, kFtoPay, [](QWidget* d) { Click(d, "btnOK"); });
    QCOMPARE(rig.recoveryCopies, 1);
    RunCommand(rig, rw::ui::RunAccuracyRelatedCommand, kAccRel, [](QWidget* d) {
        Put(d, "CSOptAcc", QStringLiteral("Yes"));
        Type(d, "CScurUnderPmt", QStringLiteral("5000"));
        Click(d, "btnOK");
    });
    QCOMPARE(rig.recoveryCopies, 2);
    QCOMPARE(rig.extendedDueDateOpened, 1);
}

void PenaltiesTest::faultClosesTheDialogAndReachesTheCaller()
{
    CommandRig rig;
    const rw::Case before = rig.kase;
    QVERIFY_THROWS_EXCEPTION(rw::Fault, RunCommand(rig, rw::ui::RunFailureToPayCommand, kFtoPay, [&rig](QWidget* d) {
        Put(d, "radCalcPen", QStringLiteral("Yes"));
        Type(d, "txtAmtOnRet", QStringLiteral("9x"));
        rig.msgs.failNext = true;
        Click(d, "btnOK");  // OK tells the amount is not one: that box fails
    }));
    QVERIFY(!QApplication::activeModalWidget());
    RW_COMPARE_CASE(rig.kase, before);
    QCOMPARE(rig.recoveryCopies, 0);
}

QTEST_MAIN(PenaltiesTest)
#include "penalties_test.moc"
