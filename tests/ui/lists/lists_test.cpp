// The lists and their entries' dialogs: bindings, each connection's effect,
// the list commands, a fault (the logic's figures and texts: tests/payments).

#include "tests/ui/support/windowkit.h"

#include "payments/payments.h"
#include "ui/common/dialogkit.h"
#include "ui/lists/commands.h"

#include <QListWidget>

using namespace rwtest;
using rw::Case;

namespace {

struct ListKind {
    const char* list;  // the list's title
    const char* entry;  // the entry dialog's title
    const char* lines;  // the list's object name
    void (*run)(rw::ui::CommandContext&);
    std::int16_t rw::InitInputs::*count;
};
const ListKind kPayments{"Payments", "Payment Information", "lstPmt", rw::ui::RunPaymentsCommand,
                         &rw::InitInputs::nPmts};
const ListKind kCharges{"Other Charges", "Addition To Tax", "lstChrg",
                        rw::ui::RunOtherChargesCommand, &rw::InitInputs::nCharges};
const ListKind kDeposits{"Payroll Tax Deposit Penalties", "Payroll Deposit Information", "lstDep",
                         rw::ui::RunPayrollCommand, &rw::InitInputs::nDeposits};

// The list's command: Add (or Edit of the first line when there is one), the
// action on the entry's dialog, Close.
ShowDialog Entry(CommandRig& rig, const ListKind& k)
{
    return [&rig, &k](const ModalDriver::Action& onEntry) {
        ModalDriver drive;
        drive.when(k.list, [&rig, &k](QWidget* l) {
            Child<QListWidget>(l, k.lines)->setCurrentRow(0);
            Click(l, rig.kase.init.*k.count > 0 ? "btnEdit" : "btnAdd");
            Click(l, "btnClose");
        });
        drive.when(k.entry, onEntry);
        k.run(rig.ctx);
        RW_VERIFY_DRIVEN(drive);
    };
}

}  // namespace

class ListsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // 10,000.00 due 4/15/2016 at 3.65 % simple interest: on 6/1/2016 47.00
    // interest is owed, so 10.00 of 2,500.00 stays under the interest the
    // payment may take (2,500 x 47 / 10,047 = 11.69).
    void bindings()
    {
        const Bindings payment = {
            {nullptr, nullptr, [](Case& c) { c.init.nPmts = 1; }},
            {"CStxtDesc", "Check 1001", [](Case& c) { c.pmts[0].sDesc = "Check 1001"; }},
            {"CSdtPmt", "6/1/2016", [](Case& c) { c.pmts[0].dtPmt = D(2016, 6, 1); }},
            {"CScurPmt", "2,500.00", [](Case& c) { c.pmts[0].cAmount = M("2500"); }},
            {"chkIRSMethod", "", [](Case& c) { c.pmts[0].sMethod = "T"; }},
            {"CScurTax", "2,485.00", [](Case& c) { c.pmts[0].cToTax = M("2485"); }},
            {"CScurInt", "10.00", [](Case& c) { c.pmts[0].cToInt = M("10"); }},
            {"CScurPen", "5.00", [](Case& c) { c.pmts[0].cToPen = M("5"); }},
        };
        const Bindings charge = {
            {nullptr, nullptr, [](Case& c) { c.init.nCharges = 1; }},
            {"CStxtDesc", "Addition", [](Case& c) { c.charges[0].sDesc = "Addition"; }},
            {"CSdtLiab", "6/1/2016", [](Case& c) { c.charges[0].dtLiab = D(2016, 6, 1); }},
            {"CSdtIntStart", "7/1/2016", [](Case& c) { c.charges[0].dtIntStart = D(2016, 7, 1); }},
            {"CScurChrg", "500.00", [](Case& c) { c.charges[0].cTotal = M("500"); }},
            {"CScurTax", "400.00", [](Case& c) { c.charges[0].cToTax = M("400"); }},
            {"CScurPen", "100.00", [](Case& c) { c.charges[0].cToPen = M("100"); }},
        };
        const Bindings deposit = {
            {nullptr, nullptr,
             [](Case& c) { c.init.nDeposits = 1, c.init.bAnyPenalties = rw::kYes; }},
            {"CSdtDue", "3/15/2016", [](Case& c) { c.deposits[0].dtDepDue = D(2016, 3, 15); }},
            {"CScurUndPmt", "2500", [](Case& c) { c.deposits[0].cRequired = M("2500"); }},
            {"CSdtAssess", "6/30/2016",
             [](Case& c) { c.deposits[0].dtDepAssess = D(2016, 6, 30); }},
            {"CSoptSevere", "Yes", [](Case& c) { c.deposits[0].bSevere = rw::kYes; }},
            {"CSdtDelNot", "3/1/2016",
             [](Case& c) { c.deposits[0].dtDelinqNotice = D(2016, 3, 1); }},
            {"CSdtJep", "3/2/2016", [](Case& c) { c.deposits[0].dtJeopardy = D(2016, 3, 2); }},
        };
        CommandRig rig;
        for (const auto& [rows, kind, shot] : {std::tuple{&payment, &kPayments, "dlgPmtInd"},
                                               std::tuple{&charge, &kCharges, "dlgChrgInd"},
                                               std::tuple{&deposit, &kDeposits, "dlgDep"}}) {
            rig.kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
            CheckBindings(rig.kase, *rows, Entry(rig, *kind), shot);
        }
    }

    // Each connection's effect: the IRS method and the severe penalty open
    // their fields, amounts show what is left, hints follow the focus, checks.
    void reactions()
    {
        CommandRig rig;
        Entry(rig, kPayments)(Reacts(rig.msgs, {{"CSdtPmt", "6/1/2016", Effect::None},
                                                {"chkIRSMethod", "", Effect::Opens, "CScurTax"},
                                                {"CScurPmt", "7", Effect::Changes, "CSLblBalance"},
                                                {"CScurTax", "7", Effect::Changes, "CSLblBalance"},
                                                {"CScurPen", "7", Effect::Changes, "CSLblBalance"},
                                                {"CScurInt", "9", Effect::Box},
                                                {"btnOK", "x", Effect::Box}}));
        Entry(rig, kCharges)(Reacts(rig.msgs, {{"CScurChrg", "7", Effect::Changes, "CSLblBalance"},
                                               {"CScurTax", "7", Effect::Changes, "CSLblBalance"},
                                               {"CScurPen", "7", Effect::Changes, "CSLblBalance"},
                                               {"CSdtLiab", "4/1/2016", Effect::Box}}));
        Entry(rig,
              kDeposits)(Reacts(rig.msgs, {{"CSoptSevere", "Yes", Effect::Opens, "CSdtDelNot"},
                                           {"CSdtJep", "3/2/2016", Effect::Changes, "CSlblNote"},
                                           {"CSdtDue", "4/1/2016", Effect::Box}}));
        const rw::InitInputs& in = rig.kase.init;
        QVERIFY(in.nPmts == 0 && in.nCharges == 0 && in.nDeposits == 0);
    }

    // 10,000.00 due 4/15/2016 with a 100.00 penalty that day, interest 0.01 %
    // of the base a day. A payment of 10,200.00 on 5/1/2016 by the IRS method,
    // typed before the penalty was: 10,184.00 tax, 16.00 interest. Opened, it
    // is allocated on the case as it stands: 100.00 penalty, 16 days on
    // 10,100.00 = 16.16 interest, 10,083.84 tax. Moved to 6/1/2016, once the
    // date is left: 47 days = 47.47 interest, 10,052.53 tax (its old copy on
    // 5/1 does not count).
    void editedIrsPaymentAllocatedOnItsNewDate()
    {
        Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
        AddCharge(c, D(2016, 4, 15), {.penalties = "100"});
        AddPayment(c, D(2016, 5, 1), {.tax = "10184", .interest = "16", .method = "I"});
        CommandRig rig(c);
        Entry(rig, kPayments)([](QWidget* d) {
            QCOMPARE(Shown(d, "CScurInt"), QStringLiteral("16.16"));
            Type(d, "CSdtPmt", "6/1/2016");
            QCOMPARE(Shown(d, "CScurTax"), QStringLiteral("10,083.84"));  // not while typed
            Leave(d, "CSdtPmt");
            QCOMPARE(Shown(d, "CScurTax"), QStringLiteral("10,052.53"));
            QCOMPARE(Shown(d, "CScurPen"), QStringLiteral("100.00"));
            QCOMPARE(Shown(d, "CScurInt"), QStringLiteral("47.47"));
            Click(d, "btnOK");
        });
        const rw::PaymentRec& p = rig.kase.pmts[0];
        QVERIFY(rig.msgs.shown.empty() && p.dtPmt == D(2016, 6, 1) && p.cToInt == M("47.47"));
    }

    // What is owed on a date beyond the rate table cannot be computed: the
    // user is told when the date is left, and the dialog stays as typed.
    void aDateBeyondTheRatesIsToldAndTheDialogStays()
    {
        rw::RateTable table = SimpleTable(0.0365f);
        table[0].dtThru = D(2015, 12, 31);
        CommandRig rig(FederalCase(D(2015, 4, 15), D(2015, 12, 31), "10000"), table);
        Entry(rig, kPayments)([&rig](QWidget* d) {
            Type(d, "CScurPmt", "5");
            Type(d, "CSdtPmt", "3/1/2016");
            QVERIFY(rig.msgs.shown.empty());  // nothing while typing
            Leave(d, "CSdtPmt");  // the period check, then what is owed
            QCOMPARE(rig.msgs.shown.back().title, std::string("Interest Cannot Be Computed"));
            QVERIFY(d->isVisible() && Shown(d, "CScurPmt") == QStringLiteral("5"));
            Click(d, "btnCancel");
        });
        QCOMPARE(rig.kase.init.nPmts, std::int16_t(0));
    }

    // The logic's lines; Delete asks, the hint opens the manual; Escape closes
    // as Close does, running the arrangement search; the recovery copy.
    void listCommands()
    {
        Case c = FederalCase(D(2016, 1, 1), D(2016, 12, 31), "0", D(2016, 1, 31));
        c.init.bPayroll = rw::kYes;
        AddDeposit(c, D(2016, 1, 15), "10000", D(2016, 6, 30));
        AddDeposit(c, D(2016, 2, 15), "5000", D(2016, 6, 30));
        AddPayment(c, D(2016, 2, 15), {.tax = "5000", .desc = "Payment A", .method = "I"});
        AddPayment(c, D(2016, 1, 15), {.tax = "10000", .desc = "Payment B", .method = "I"});
        AddPayment(c, D(2016, 3, 1), {.tax = "1", .desc = "Payment C", .method = "I"});
        CommandRig rig(c);
        const auto lines
            = rw::PaymentsDialog(rig.kase, rig.rates, rig.ctx.ftfMinimums, rig.msgs, {})
                  .open()
                  .lines;
        Shows("Payments", [&rig] { rw::ui::RunPaymentsCommand(rig.ctx); })([&](QWidget* l) {
            auto* list = Child<QListWidget>(l, "lstPmt");
            QVERIFY(list->count() == 3 && list->item(2)->text() == rw::ui::DisplayText(lines[2]));
            list->setCurrentRow(2);
            CheckReactions(l, rig.msgs,
                           {{"btnDelete", "x", Effect::Box},
                            {"btnPRhint", "x", Effect::Box},
                            {"chkMinPRPenalty", "x", Effect::None}});
            QVERIFY(list->count() == 2 && rig.helpOpened == 1);
            Shoot(l, "dlgPmts");
            OneBoxAfter(rig.msgs, [l] { QTest::keyClick(l, Qt::Key_Escape); });
        });
        QCOMPARE(rig.msgs.shown.back().title, std::string("Savings To Employer"));
        QVERIFY(rig.kase.init.nPmts == 2 && rig.recoveryCopies == 1);
    }

    // The interest part is typed whole and advised about once left (above
    // the 2,500 x 47 / 10,047 = 11.69 it may take); parts that do not add up
    // to the payment: one box, the dialog stays as typed, the tax part
    // selected; Escape then closes it without a word.
    void paymentTypingKeptAndEscapeSilent()
    {
        CommandRig rig;
        Entry(rig, kPayments)([&rig](QWidget* d) {
            for (const auto& [field, text] : {std::pair{"CSdtPmt", "6/1/2016"},
                                              {"CScurPmt", "2500"},
                                              {"chkIRSMethod", ""},
                                              {"CScurTax", "300"}})
                Put(d, field, text);
            Type(d, "CScurInt", "300.00");
            QVERIFY(rig.msgs.shown.empty() && Shown(d, "CScurInt") == QStringLiteral("300.00"));
            OneBoxAfter(rig.msgs, [d] { Leave(d, "CScurInt"); });
            OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
            auto* tax = Child<QLineEdit>(d, "CScurTax");
            QTRY_VERIFY(d->isVisible() && tax->hasFocus()
                        && tax->selectedText() == QStringLiteral("300"));
            QCOMPARE(Shown(d, "CScurPmt"), QStringLiteral("2500"));
            QTest::keyClick(d, Qt::Key_Escape);
        });
        QVERIFY(rig.msgs.shown.size() == 2 && rig.kase.init.nPmts == 0);
    }

    // Sort by Date puts the payments in date order; a double-click on a line
    // edits that payment.
    void sortByDateAndDoubleClickToEdit()
    {
        Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
        AddPayment(c, D(2016, 5, 1), {.tax = "100", .desc = "May"});
        AddPayment(c, D(2016, 4, 20), {.tax = "100", .desc = "April"});
        CommandRig rig(c);
        ModalDriver drive;
        drive.when("Payments", [](QWidget* l) {
            auto* list = Child<QListWidget>(l, "lstPmt");
            Click(l, "btnSortDate");
            QCOMPARE(list->item(0)->text().mid(11, 5), QStringLiteral("April"));
            const QPoint line2 = list->visualItemRect(list->item(1)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, line2);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, line2);
            Click(l, "btnClose");
        });
        drive.when("Payment Information", [](QWidget* d) {
            QCOMPARE(Shown(d, "CStxtDesc"), QStringLiteral("May"));
            Click(d, "btnCancel");
        });
        rw::ui::RunPaymentsCommand(rig.ctx);
        RW_VERIFY_DRIVEN(drive);
        QVERIFY(rig.kase.pmts[0].sDesc.trimmed() == "April" && rig.msgs.shown.empty());
    }

    void faultClosesTheDialogsAndReachesTheCaller()
    {
        CommandRig rig;
        CheckFault(rig.kase, Entry(rig, kPayments), [&rig](QWidget* d) {
            Type(d, "CScurPmt", "1x");
            rig.msgs.failNext = true;
            Click(d, "btnOK");  // OK tells the amount is not one: that box fails
        });
        QCOMPARE(rig.recoveryCopies, 0);
    }
};

QTEST_MAIN(ListsTest)
#include "lists_test.moc"
