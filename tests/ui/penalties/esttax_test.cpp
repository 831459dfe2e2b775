// "Estimated Tax" through its command: what OK stores and a reopening shows,
// a refused entry keeping the dialog open, Cancel and Escape, its pictures.

#include "tests/ui/support/windowkit.h"

#include "ui/penalties/commands.h"

#include <QLabel>

using namespace rwtest;

namespace {

struct Rig : CommandRig {
    ShowDialog estTax = Shows("Estimated Tax", [this] { rw::ui::RunEstimatedTaxCommand(ctx); });
};

bool Focused(QWidget* d, const char* field)
{
    return Child(d, field)->hasFocus();
}

}  // namespace

class EstTaxTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // A 2021 individual: tax $12,000 after credits, $10,000 the year before,
    // $2,000 withheld, two payments of $2,500 in April and June.
    void okStoresAndReopeningShowsIt()
    {
        Rig rig;
        rig.estTax([](QWidget* d) {
            Put(d, "radCalcPen", "Yes");
            Put(d, "optIndividual", "x");
            Type(d, "txtTaxYear", "2021");
            Type(d, "txtCurrentTax", "12000");
            Type(d, "txtPriorTax", "10,000.00");
            Put(d, "chkPriorUsable", "x");
            Type(d, "txtWithholding", "2000");
            Type(d, "txtPay0Date", "4/15/2021");
            Type(d, "txtPay0Amt", "2500");
            Click(d, "btnPayAdd");
            Type(d, "txtPay1Date", "6/15/2021");
            Type(d, "txtPay1Amt", "2,500.00");
            Shoot(d, "esttax-individual");
            Click(d, "btnOK");
        });
        rw::EstTaxCase expected;
        expected.on = true;
        expected.input.taxYear = 2021;
        expected.input.currentTax = M("12000");
        expected.input.priorTax = M("10000");
        expected.input.priorYearUsable = true;
        expected.input.withholding = M("2000");
        expected.input.estimatedPayments
            = {{D(2021, 4, 15), M("2500")}, {D(2021, 6, 15), M("2500")}};
        QVERIFY(rig.kase.estTax == expected);
        QVERIFY(rig.msgs.shown.empty() && rig.recoveryCopies == 1);

        rig.estTax([](QWidget* d) {
            for (const auto& [field, text] : {std::pair{"radCalcPen", "Yes"},
                                              {"txtTaxYear", "2021"},
                                              {"txtCurrentTax", "12,000.00"},
                                              {"chkPriorUsable", "x"},
                                              {"txtWithholding", "2,000.00"},
                                              {"txtPay1Date", "6/15/2021"},
                                              {"txtPay1Amt", "2,500.00"},
                                              {"txtPay2Date", ""},
                                              {"txtNotice", ""}})
                QCOMPARE(Shown(d, field), QString::fromLatin1(text));
            QVERIFY(!Child(d, "txtFYEMonth")->isEnabled() && !Child(d, "tblWithheld")->isEnabled());
            Click(d, "btnCancel");
        });
    }

    // The entry refused is focused again and the dialog stays open: a field,
    // a cell left, a cell found empty by OK.
    void aRefusedEntryKeepsTheDialogOpenOnIt()
    {
        Rig rig;
        const rw::Case before = rig.kase;
        rig.estTax([&rig](QWidget* d) {
            Put(d, "radCalcPen", "Yes");
            Type(d, "txtTaxYear", "2021");
            Type(d, "txtCurrentTax", "12x");
            OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
            QTRY_VERIFY(Focused(d, "txtCurrentTax"));
            Type(d, "txtCurrentTax", "12000");
            Type(d, "txtPay0Date", "1/15/2021");  // in the year: taken
            Type(d, "txtPay0Amt", "100");
            Click(d, "btnPayAdd");
            Type(d, "txtPay1Date", "1/15/2020");  // the year before
            OneBoxAfter(rig.msgs, [d] { Leave(d, "txtPay1Date"); });
            QTRY_VERIFY(Focused(d, "txtPay1Date"));
            Type(d, "txtPay1Date", "");
            Type(d, "txtPay1Amt", "50");
            OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
            QTRY_VERIFY(Focused(d, "txtPay1Date"));
            QVERIFY(d->isVisible());
            Click(d, "btnCancel");
        });
        QVERIFY(rig.kase == before && rig.recoveryCopies == 0);
    }

    // A state case's dialog says how the penalty is figured there; a federal case's shows no
    // note.
    void aStateCaseIsToldHowItFiguresThePenalty()
    {
        for (const char* authority : {"US  ", "PA  "}) {
            Rig rig;
            rig.kase.init.sTaxAuth = authority;
            const bool state = authority[0] == 'P';
            rig.estTax([state](QWidget* d) {
                auto* note = Child<QLabel>(d, "lblNote");
                QCOMPARE(note->isVisible(), state);
                if (state) {
                    QCOMPARE(note->text(), QString::fromLatin1(rw::kEstTaxStateCase));
                    Shoot(d, "esttax-state-case");
                }
                Click(d, "btnCancel");
            });
        }
    }

    // Cancel and Escape close without a word and change nothing; a
    // corporation's picture.
    void cancelAndEscapeChangeNothing()
    {
        Rig rig;
        const rw::Case before = rig.kase;
        rig.estTax([](QWidget* d) {
            Put(d, "radCalcPen", "Yes");
            Put(d, "optCorporation", "x");
            QVERIFY(Child(d, "txtFYEMonth")->isEnabled()
                    && !Child(d, "chkHighIncome")->isEnabled());
            Type(d, "txtFYEMonth", "6");
            Type(d, "txtTaxYear", "20x");
            Shoot(d, "esttax-corporation");
            Click(d, "btnCancel");
        });
        rig.estTax([](QWidget* d) {
            Put(d, "radCalcPen", "Yes");
            Type(d, "txtTaxYear", "20x");
            QTest::keyClick(Child(d, "txtTaxYear"), Qt::Key_Escape);
        });
        QVERIFY(rig.kase == before && rig.msgs.shown.empty() && rig.recoveryCopies == 0);
    }
};

QTEST_MAIN(EstTaxTest)
#include "esttax_test.moc"
