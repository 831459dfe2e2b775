// The penalty dialogs through their commands: bindings, each connection's
// effect, the recovery copy, the Extended Due Date they open, a fault.

#include "tests/ui/support/windowkit.h"

#include "ui/penalties/commands.h"

using namespace rwtest;
using rw::Case;

namespace {

struct Rig : CommandRig {
    ShowDialog ftoFile
        = Shows("Failure To File Penalty Inputs", [this] { rw::ui::RunFailureToFileCommand(ctx); });
    ShowDialog ftoPay
        = Shows("Failure To Pay Inputs", [this] { rw::ui::RunFailureToPayCommand(ctx); });
    ShowDialog accRel
        = Shows("Accuracy Related Penalty", [this] { rw::ui::RunAccuracyRelatedCommand(ctx); });
};

void PenaltiesOn(Case& c)
{
    c.init.bAnyPenalties = rw::kYes;
}

}  // namespace

class PenaltiesTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bindings()
    {
        const Bindings toFile = {
            {"radCalcPen", "Yes", [](Case& c) { c.init.bFtoFile = rw::kYes; }},
            {"txtAssess", "7/1/2016", [](Case& c) { c.init.dtFtoFileAssess = D(2016, 7, 1); }},
            {"txtFiled", "6/10/2016", [](Case& c) { c.init.dtFiled = D(2016, 6, 10); }},
            {nullptr, nullptr, PenaltiesOn},
        };
        const Bindings toPay = {
            {"radCalcPen", "Yes", [](Case& c) { c.init.bFtoPay = rw::kYes; }},
            {"txtAssess", "7/1/2016", [](Case& c) { c.init.dtFtoPayAssess = D(2016, 7, 1); }},
            {"txtAmtOnRet", "9,500.00", [](Case& c) { c.init.cAmtOnReturn = M("9500"); }},
            {"rad6651d1", "Yes", [](Case& c) { c.init.b6651d1 = rw::kYes; }},
            {"txt6651d1Start", "11/1/2016", [](Case& c) { c.init.dt6651d1Start = D(2016, 11, 1); }},
            {nullptr, nullptr, PenaltiesOn},
        };
        const Bindings accuracy = {
            {"CSOptAcc", "Yes", [](Case& c) { c.init.bAccRel = rw::kYes; }},
            {"CScurUnderPmt", "5,000.00", [](Case& c) { c.init.cAccRelAmt = M("5000"); }},
            {"optOtherRate", "x", nullptr},
            {"txtAccuracyRelatedPenaltyRate", ".30", [](Case& c) { c.init.fAccRelRate = 0.3f; }},
            {nullptr, nullptr, PenaltiesOn},
        };
        for (const auto& [rows, show, shot] : {std::tuple{&toFile, &Rig::ftoFile, "dlgInpFToF"},
                                               std::tuple{&toPay, &Rig::ftoPay, "dlgInpFToP"},
                                               std::tuple{&accuracy, &Rig::accRel, "dlgInpAcc"}}) {
            Rig rig;
            CheckBindings(rig.kase, *rows, rig.*show, shot);
            QVERIFY(rig.msgs.shown.empty());
        }
    }

    // Each connection's effect (leaving the filing date opens the Extended Due
    // Date); OK writes the recovery copy, Accuracy Related goes on to it too.
    void reactions()
    {
        Rig rig;
        rig.ftoFile([&rig](QWidget* d) {
            CheckReactions(d, rig.msgs,
                           {{"radCalcPen", "Yes", Effect::Opens, "txtAssess"},
                            {"txtAssess", "4/15/2016", Effect::Box},  // on the start date
                            {"txtFiled", "6/10/2016", Effect::None}});
            QCOMPARE(rig.extendedDueDateOpened, 1);
            Click(d, "btnCancel");
        });
        rig.ftoPay(
            Reacts(rig.msgs, {{"radCalcPen", "Yes", Effect::Opens, "txtAssess"},
                              {"rad6651d1", "Yes", Effect::Opens, "txt6651d1Start"},
                              {"txtAssess", "4/15/2016", Effect::Box},
                              {"txt6651d1Start", "1/1/2017", Effect::Box},  // after the stop date
                              {"txt6651d1Start", "", Effect::None},  // needed on OK
                              {"btnOK", "x", Effect::Box}}));
        QVERIFY(rig.recoveryCopies == 0 && !rw::IsYes(rig.kase.init.bFtoPay));
        rig.accRel([&rig](QWidget* d) {
            CheckReactions(d, rig.msgs,
                           {{"CSOptAcc", "Yes", Effect::Opens, "CScurUnderPmt"},
                            {"optOtherRate", "x", Effect::Opens, "txtAccuracyRelatedPenaltyRate"},
                            {"optEconomicSubstanceRate", "x", Effect::Changes, "txtAccNotes"},
                            {"CScurUnderPmt", "5x", Effect::Changes, "txtAccNotes"},
                            {"btnOK", "x", Effect::Box},
                            {"CScurUnderPmt", "5000", Effect::None},
                            {"btnOK", "x", Effect::None}});
        });
        QVERIFY(rig.recoveryCopies == 1 && rig.extendedDueDateOpened == 2);
    }

    void faultClosesTheDialogAndReachesTheCaller()
    {
        Rig rig;
        CheckFault(rig.kase, rig.ftoPay, [&rig](QWidget* d) {
            Put(d, "radCalcPen", "Yes");
            Type(d, "txtAmtOnRet", "9x");
            rig.msgs.failNext = true;
            Click(d, "btnOK");  // OK tells the amount is not one: that box fails
        });
        QCOMPARE(rig.recoveryCopies, 0);
    }
};

QTEST_MAIN(PenaltiesTest)
#include "penalties_test.moc"
