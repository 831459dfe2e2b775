// The list dialogs (Payments, Other Charges, Payroll Tax Deposit Penalties)
// and their entries' dialogs: which widget shows and stores which field of
// the case, what each reaction is set off by, the list commands, a fault.
// What the logic computes and says is the core's (tests/payments,
// tests/penalties).

#include "tests/ui/support/windowkit.h"

#include "payments/payments.h"
#include "ui/common/dialogkit.h"
#include "ui/lists/commands.h"

#include <QApplication>
#include <QListWidget>
#include <QtTest>

using namespace rwtest;

namespace {

struct ListKind {
    const char* list;   // the list dialog's title
    const char* entry;  // the entry dialog's title
    const char* lines;  // the list's object name
    void (*run)(rw::ui::CommandContext&);
    std::int16_t rw::InitInputs::*count;
};
const ListKind kPayments{"Payments", "Payment Information", "lstPmt", rw::ui::RunPaymentsCommand,
                         &rw::InitInputs::nPmts};
const ListKind kCharges{"Other Charges", "Addition To Tax", "lstChrg", rw::ui::RunOtherChargesCommand,
                        &rw::InitInputs::nCharges};
const ListKind kDeposits{"Payroll Tax Deposit Penalties", "Payroll Deposit Information", "lstDep",
                         rw::ui::RunPayrollCommand, &rw::InitInputs::nDeposits};

// Runs the list's command: Add, or Edit of the first line when there is one;
// the action on the entry's dialog; Close.
void RunEntry(CommandRig& rig, const ListKind& k, const ModalDriver::Action& onEntry)
{
    ModalDriver drive;
    drive.when(QString::fromLatin1(k.list), [&rig, k](QWidget* l) {
        if (rig.kase.init.*k.count > 0)
            Child<QListWidget>(l, k.lines)->setCurrentRow(0);
        Click(l, rig.kase.init.*k.count > 0 ? "btnEdit" : "btnAdd");
    });
    drive.when(QString::fromLatin1(k.entry), onEntry);
    drive.when(QString::fromLatin1(k.list), [](QWidget* l) { Click(l, "btnClose"); });
    k.run(rig.ctx);
    RW_VERIFY_DRIVEN(drive);
}

ShowDialog EntryRunner(CommandRig& rig, const ListKind& k)
{
    return [&rig, &k](const ModalDriver::Action& onEntry) { RunEntry(rig, k, onEntry); };
}

// Runs the list's command with the action on the list itself.
void RunList(CommandRig& rig, const ListKind& k, const ModalDriver::Action& onList)
{
    ModalDriver drive;
    drive.when(QString::fromLatin1(k.list), onList);
    k.run(rig.ctx);
    RW_VERIFY_DRIVEN(drive);
}

}  // namespace

class ListsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void paymentBindings();
    void chargeBindings();
    void depositBindings();
    void listCommands();
    void paymentReactions();
    void chargeAndDepositReactions();
    void editedIrsPaymentAllocatedOnItsNewDate();
    void aDateBeyondTheRatesIsToldAndTheDialogStays();
    void payrollPaymentsArrangedAtClose();
    void faultClosesTheDialogsAndReachesTheCaller();
};

// 10,000.00 due 4/15/2016 at 3.65 % simple interest: on 6/1/2016, 47 days
// of 1.00 are owed, so the user's 10.00 of a 2,500.00 payment stays under
// the interest it may take (2,500 x 47 / 10,047 = 11.69).
void ListsTest::paymentBindings()
{
    const Bindings rows = {
        {nullptr, nullptr, [](rw::Case& c) { c.init.nPmts = 1; }},
        {"CStxtDesc", "Check 1001", [](rw::Case& c) { c.pmts[0].sDesc = "Check 1001"; }},
        {"CSdtPmt", "6/1/2016", [](rw::Case& c) { c.pmts[0].dtPmt = D(2016, 6, 1); }},
        {"CScurPmt", "2,500.00", [](rw::Case& c) { c.pmts[0].cAmount = M("2500"); }},
        {"chkIRSMethod", "", [](rw::Case& c) { c.pmts[0].sMethod = "T"; }},
        {"CScurTax", "2,485.00", [](rw::Case& c) { c.pmts[0].cToTax = M("2485"); }},
        {"CScurInt", "10.00", [](rw::Case& c) { c.pmts[0].cToInt = M("10"); }},
        {"CScurPen", "5.00", [](rw::Case& c) { c.pmts[0].cToPen = M("5"); }},
    };
    CommandRig rig;
    CheckBindings(rig.kase, rows, EntryRunner(rig, kPayments), QStringLiteral("dlgPmtInd"));
}

void ListsTest::chargeBindings()
{
    const Bindings rows = {
        {nullptr, nullptr, [](rw::Case& c) { c.init.nCharges = 1; }},
        {"CStxtDesc", "Addl assessment", [](rw::Case& c) { c.charges[0].sDesc = "Addl assessment"; }},
        {"CSdtLiab", "6/1/2016", [](rw::Case& c) { c.charges[0].dtLiab = D(2016, 6, 1); }},
        {"CSdtIntStart", "7/1/2016", [](rw::Case& c) { c.charges[0].dtIntStart = D(2016, 7, 1); }},
        {"CScurChrg", "500.00", [](rw::Case& c) { c.charges[0].cTotal = M("500"); }},
        {"CScurTax", "400.00", [](rw::Case& c) { c.charges[0].cToTax = M("400"); }},
        {"CScurPen", "100.00", [](rw::Case& c) { c.charges[0].cToPen = M("100"); }},
    };
    CommandRig rig;
    CheckBindings(rig.kase, rows, EntryRunner(rig, kCharges), QStringLiteral("dlgChrgInd"));
    QVERIFY(rig.msgs.shown.size() <= 1);  // at most "not added" after Cancel
}

void ListsTest::depositBindings()
{
    const Bindings rows = {
        {nullptr, nullptr, [](rw::Case& c) { c.init.nDeposits = 1; }},
        {"CSdtDue", "3/15/2016", [](rw::Case& c) { c.deposits[0].dtDepDue = D(2016, 3, 15); }},
        {"CScurUndPmt", "2500", [](rw::Case& c) { c.deposits[0].cRequired = M("2500"); }},
        {"CSdtAssess", "6/30/2016", [](rw::Case& c) { c.deposits[0].dtDepAssess = D(2016, 6, 30); }},
        {"CSoptSevere", "Yes", [](rw::Case& c) { c.deposits[0].bSevere = rw::kYes; }},
        {"CSdtDelNot", "3/1/2016", [](rw::Case& c) { c.deposits[0].dtDelinqNotice = D(2016, 3, 1); }},
        {"CSdtJep", "3/2/2016", [](rw::Case& c) { c.deposits[0].dtJeopardy = D(2016, 3, 2); }},
        {nullptr, nullptr, [](rw::Case& c) { c.init.bAnyPenalties = rw::kYes; }},
    };
    rw::Case c = FederalCase(D(2016, 1, 1), D(2016, 12, 31), "0", D(2016, 1, 31));
    c.init.bPayroll = rw::kYes;
    CommandRig rig(c);
    CheckBindings(rig.kase, rows, EntryRunner(rig, kDeposits), QStringLiteral("dlgDep"));
}

// The list shows the logic's lines; Edit without a line tells so; Delete
// asks and takes the line away; Escape closes as Close does, and the
// recovery copy follows. The list frame is one for the three lists.
void ListsTest::listCommands()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
    AddPayment(c, D(2016, 6, 1), {.tax = "100", .desc = "Check 1001"});
    AddPayment(c, D(2016, 7, 1), {.tax = "200", .desc = "Check 1002"});
    CommandRig rig(c);
    rw::PaymentsDialog logic(rig.kase, rig.rates, rig.ctx.ftfMinimums, rig.msgs, {});
    const std::vector<std::string> lines = logic.open().lines;
    RunList(rig, kPayments, [&](QWidget* l) {
        auto* list = Child<QListWidget>(l, "lstPmt");
        QCOMPARE(list->count(), 2);
        for (int i = 0; i < 2; ++i)
            QCOMPARE(list->item(i)->text(), rw::ui::DisplayText(lines[static_cast<std::size_t>(i)]));
        list->clearSelection();
        OneBoxAfter(rig.msgs, [l] { Click(l, "btnEdit"); });
        list->setCurrentRow(1);
        rig.msgs.answerNext(true);
        Click(l, "btnDelete");
        QVERIFY(rig.msgs.shown.back().question);
        QCOMPARE(list->count(), 1);
        Shoot(l, QStringLiteral("dlgPmts"));
        QTest::keyClick(l, Qt::Key_Escape);
    });
    QCOMPARE(rig.kase.init.nPmts, std::int16_t(1));
    QCOMPARE(rig.recoveryCopies, 1);
}

// Typing the amount, the tax or the penalties shows what is left to
// allocate; the IRS method opens or closes the allocation; the interest runs
// its check; OK refuses what is not an amount.
void ListsTest::paymentReactions()
{
    CommandRig rig;
    RunEntry(rig, kPayments, [&rig](QWidget* d) {
        Type(d, "CSdtPmt", QStringLiteral("6/1/2016"));
        QVERIFY(!Child(d, "CScurTax")->isEnabled());
        Click(d, "chkIRSMethod");
        QVERIFY(Child(d, "CScurTax")->isEnabled());
        for (const char* field : {"CScurPmt", "CScurTax", "CScurPen"}) {
            const QString before = Shown(d, "CSLblBalance");
            Type(d, field, QStringLiteral("7"));
            QVERIFY2(Shown(d, "CSLblBalance") != before, field);
        }
        OneBoxAfter(rig.msgs, [d] { Type(d, "CScurInt", QStringLiteral("9")); });
        Type(d, "CScurPmt", QStringLiteral("1x"));
        OneBoxAfter(rig.msgs, [d] { Click(d, "btnOK"); });
        QVERIFY(d->isVisible());
        Click(d, "btnCancel");
    });
    QCOMPARE(rig.kase.init.nPmts, std::int16_t(0));
}

// Other charges: the amounts show what is left to allocate, leaving the date
// of liability runs its check. Payroll deposits: the choice opens the notice
// dates, a field shows its hint while it has the focus, leaving the due date
// runs its check.
void ListsTest::chargeAndDepositReactions()
{
    CommandRig rig;
    RunEntry(rig, kCharges, [&rig](QWidget* d) {
        for (const char* field : {"CScurChrg", "CScurTax", "CScurPen"}) {
            const QString before = Shown(d, "CSLblBalance");
            Type(d, field, QStringLiteral("7"));
            QVERIFY2(Shown(d, "CSLblBalance") != before, field);
        }
        Type(d, "CSdtLiab", QStringLiteral("13/45/2016"));
        OneBoxAfter(rig.msgs, [d] { Leave(d, "CSdtLiab"); });
        Click(d, "btnCancel");
    });
    RunEntry(rig, kDeposits, [&rig](QWidget* d) {
        QVERIFY(!Child(d, "CSdtDelNot")->isEnabled());
        Put(d, "CSoptSevere", QStringLiteral("Yes"));
        QVERIFY(Child(d, "CSdtDelNot")->isEnabled());
        Child(d, "CSdtJep")->setFocus(Qt::TabFocusReason);
        QVERIFY(!Shown(d, "CSlblNote").isEmpty());
        Type(d, "CSdtDue", QStringLiteral("13/45/2016"));
        QVERIFY(Shown(d, "CSlblNote").isEmpty());
        OneBoxAfter(rig.msgs, [d] { Leave(d, "CSdtDue"); });
        Click(d, "btnCancel");
    });
}

// 10,000.00 due 4/15/2016 with a 100.00 penalty charged that day, interest
// 0.01 % of the base a day. A payment of 10,200.00 on 5/1/2016 by the IRS
// method, typed before the penalty was entered: 10,184.00 tax, 16.00
// interest. Opened, it is allocated on the case as it stands: 10,000.00 tax,
// 100.00 penalty, 16 days on 10,100.00 = 16.16 interest, 83.84 left to tax.
// Moved to 6/1/2016, once the date field is left: 47 days on 10,100.00 =
// 47.47 interest, 52.53 left to tax (its old copy on 5/1 does not count).
void ListsTest::editedIrsPaymentAllocatedOnItsNewDate()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
    AddCharge(c, D(2016, 4, 15), {.penalties = "100", .desc = "Penalty"});
    AddPayment(c, D(2016, 5, 1), {.tax = "10184", .interest = "16", .desc = "Check 1001", .method = "I"});
    CommandRig rig(c);
    RunEntry(rig, kPayments, [](QWidget* d) {
        QCOMPARE(Shown(d, "CScurTax"), QStringLiteral("10,083.84"));
        QCOMPARE(Shown(d, "CScurInt"), QStringLiteral("16.16"));
        Type(d, "CSdtPmt", QStringLiteral("6/1/2016"));
        QCOMPARE(Shown(d, "CScurTax"), QStringLiteral("10,083.84"));  // not while the date is typed
        Leave(d, "CSdtPmt");
        QCOMPARE(Shown(d, "CScurTax"), QStringLiteral("10,052.53"));
        QCOMPARE(Shown(d, "CScurPen"), QStringLiteral("100.00"));
        QCOMPARE(Shown(d, "CScurInt"), QStringLiteral("47.47"));
        Click(d, "btnOK");
    });
    QVERIFY(rig.msgs.shown.empty());
    const rw::PaymentRec& moved = rig.kase.pmts[0];
    QCOMPARE(moved.dtPmt, D(2016, 6, 1));
    QVERIFY(moved.cToTax == M("10052.53") && moved.cToPen == M("100") && moved.cToInt == M("47.47"));
}

// What is owed on a date beyond the rate table cannot be computed: the user
// is told when the date field is left, and the dialog stays with what was
// typed.
void ListsTest::aDateBeyondTheRatesIsToldAndTheDialogStays()
{
    rw::RateTable table = SimpleTable(0.0365f);
    table[0].dtThru = D(2015, 12, 31);
    CommandRig rig(FederalCase(D(2015, 4, 15), D(2015, 12, 31), "10000"), table);
    RunEntry(rig, kPayments, [&rig](QWidget* d) {
        Type(d, "CScurPmt", QStringLiteral("5"));
        Type(d, "CSdtPmt", QStringLiteral("3/1/2016"));
        QVERIFY(rig.msgs.shown.empty());  // nothing while typing
        Leave(d, "CSdtPmt");  // the period check, then what is owed
        QCOMPARE(rig.msgs.shown.back().title, std::string("Interest Cannot Be Computed"));
        QVERIFY(d->isVisible());
        QCOMPARE(Shown(d, "CScurPmt"), QStringLiteral("5"));
        Click(d, "btnCancel");
    });
    QCOMPARE(rig.kase.init.nPmts, std::int16_t(0));
}

// A payroll case: the list offers the arrangement search and its hint; the
// box checked, Close runs the search (its savings are told) and clears it.
void ListsTest::payrollPaymentsArrangedAtClose()
{
    rw::Case c = FederalCase(D(2016, 1, 1), D(2016, 12, 31), "0", D(2016, 1, 31));
    c.init.bPayroll = rw::kYes;
    AddDeposit(c, D(2016, 1, 15), "10000", D(2016, 6, 30));
    AddDeposit(c, D(2016, 2, 15), "5000", D(2016, 6, 30));
    AddPayment(c, D(2016, 2, 15), {.tax = "5000", .desc = "Payment A", .method = "I"});
    AddPayment(c, D(2016, 1, 15), {.tax = "10000", .desc = "Payment B", .method = "I"});
    CommandRig rig(c);
    RunList(rig, kPayments, [&rig](QWidget* l) {
        OneBoxAfter(rig.msgs, [l] { Click(l, "btnPRhint"); });
        QCOMPARE(rig.helpOpened, 1);
        Click(l, "chkMinPRPenalty");
        Shoot(l, QStringLiteral("dlgPmts-payroll"));
        Click(l, "btnClose");
    });
    QCOMPARE(rig.msgs.shown.back().title, std::string("Savings To Employer"));
    QCOMPARE(rig.kase.pmts[0].sDesc.trimmed(), std::string("Payment B"));
    QVERIFY(!rw::IsYes(rig.kase.init.bAutoArrange));
    RunList(rig, kPayments, [](QWidget* l) {
        QCOMPARE(Shown(l, "chkMinPRPenalty"), QString());
        Click(l, "btnClose");
    });
}

// A fault in the entry's dialog closes it and the list, and reaches the
// command's caller; nothing is stored.
void ListsTest::faultClosesTheDialogsAndReachesTheCaller()
{
    CommandRig rig;
    const rw::Case before = rig.kase;
    QVERIFY_THROWS_EXCEPTION(rw::Fault, RunEntry(rig, kPayments, [&rig](QWidget* d) {
        Type(d, "CScurPmt", QStringLiteral("1x"));
        rig.msgs.failNext = true;
        Click(d, "btnOK");  // OK tells the amount is not one: that box fails
    }));
    QVERIFY(!QApplication::activeModalWidget());
    RW_COMPARE_CASE(rig.kase, before);
    QCOMPARE(rig.recoveryCopies, 0);
}

QTEST_MAIN(ListsTest)
#include "lists_test.moc"
