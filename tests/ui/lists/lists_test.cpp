// The list dialogs driven as a user drives them: Payments with the allocation
// of each payment as it is typed, Other Charges, the payroll deposits and the
// arrangement search that reorders the payments of a payroll case.

#include "uitest.h"

#include "base/fault.h"
#include "engine/intcalc.h"
#include "penalties/compute.h"
#include "ui/common/fields.h"
#include "ui/lists/commands.h"

#include <QCheckBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include "support/releases.h"

#include <QtTest>

using namespace uitest;

namespace {

QString lineOf(QWidget* dlg, const char* list, int row)
{
    auto* l = child<QListWidget>(dlg, list);
    return l && row < l->count() ? l->item(row)->text() : QString();
}

void click(QWidget* dlg, const char* button)
{
    if (auto* b = child<QPushButton>(dlg, button))
        b->click();
}

void selectLine(QWidget* dlg, const char* list, int row)
{
    if (auto* l = child<QListWidget>(dlg, list))
        l->setCurrentRow(row);
}

void dumpMessages(const Fixture& f)
{
    for (const auto& m : f.msgs.shown)
        qInfo("message: %s | %s", m.title.c_str(), m.text.c_str());
}

QString text(QWidget* dlg, const char* field)
{
    if (auto* e = dlg->findChild<QLineEdit*>(QString::fromLatin1(field)))
        return e->text();
    if (auto* l = dlg->findChild<QLabel*>(QString::fromLatin1(field)))
        return l->text();
    return QStringLiteral("<no %1>").arg(QString::fromLatin1(field));
}

// The case of the walk-through: 10,000.00 due 4/15/2016, computed from the
// due date to 12/31/2016 at 3.65 % simple interest (0.01 % of the base a
// day), filed 6/10/2016 (two months late), failure to pay assessed 7/1/2016,
// an accuracy-related underpayment of 5,000.00 at 20 %, and a charge of
// 500.00 (400.00 tax, 100.00 penalty) on 12/17/2016.
rw::Case WalkCase()
{
    rw::Case c = FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000");
    rw::InitInputs& in = c.init;
    in.bAnyPenalties = rw::kYes;
    in.bFtoFile = rw::kYes;
    in.dtFiled = D(6, 10, 2016);
    in.dtFtoFileAssess = D(7, 1, 2016);
    in.bFtoPay = rw::kYes;
    in.dtFtoPayAssess = D(7, 1, 2016);
    in.bAccRel = rw::kYes;
    in.cAccRelAmt = M("5000");
    in.fAccRelRate = 0.2f;
    rw::ChargeRec ch;
    ch.sDesc = "Addl assessment";
    ch.dtLiab = D(12, 17, 2016);
    ch.dtIntStart = D(12, 17, 2016);
    ch.cTotal = M("500");
    ch.cToTax = M("400");
    ch.cToPen = M("100");
    c.charges.assign(1, ch);
    in.nCharges = 1;
    return c;
}

}  // namespace

class ListsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void paymentsAllocatedAsTyped();
    void paymentsEditCancelAndDelete();
    void editedPaymentAllocatedOnItsNewDate();
    void chargesListedByLiabilityDate();
    void depositNoticeDatesHintsAndSevereQuestion();
    void payrollPaymentsArrangedForLowestPenalty();
    void oneComputationToPaymentDateIsQuick();
    void aDateBeyondTheRatesIsToldAndTheDialogStays();
    void faultInsideTheDialogsReachesTheCaller();
};

// Owed on 12/20/2016 (worked out period by period, each period's interest
// being base x days / 10,000 rounded to cents): tax 10,400.00 (balance and
// charge), penalties 2,450.00 (failure to file 900.00, accuracy-related
// 1,000.00, failure to pay 9 x 50.00, charge 100.00), interest 301.46:
//   4/15-7/1   11,900 x 77 -> 91.63     7/1-7/16   12,050 x 15 -> 18.08
//   7/16-8/16  12,100 x 31 -> 37.51     8/16-9/16  12,150 x 31 -> 37.66
//   9/16-10/16 12,200 x 30 -> 36.60     10/16-11/16 12,250 x 31 -> 37.98
//   11/16-12/16 12,300 x 30 -> 36.90    12/16-12/17 12,350 x 1 -> 1.24
//   12/17-12/20 12,850 x 3 -> 3.86
// A user allocation of 1,000.00 may put on interest at most
// 1,000 x 301.46 / (10,400 + 2,450 + 301.46) = 22.9222 -> 22.92.
// On 12/28/2016, after the first payment (900.00 tax, 80.00 penalties, 20.00
// interest), 9,500.00 tax and 2,370.00 penalties are owed, and interest of
// 301.46 - 20.00 + 11,870 x 8 / 10,000 (9.50) = 290.96: 12,000.00 by the IRS
// method is 9,500.00 tax, 2,370.00 penalties and 130.00 interest.
void ListsTest::paymentsAllocatedAsTyped()
{
    Fixture f(WalkCase());
    ModalDriver drive;
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) {
        QVERIFY(!child<QCheckBox>(dlg, "chkMinPRPenalty")->isVisible());
        QVERIFY(!child<QPushButton>(dlg, "btnEdit")->isEnabled());
        shoot(dlg, QStringLiteral("payments-empty"));
        click(dlg, "btnAdd");
    });
    drive.when(QStringLiteral("Payment Information"), [&f](QWidget* dlg) {
        auto* desc = child<QLineEdit>(dlg, "CStxtDesc");
        auto* date = child<QLineEdit>(dlg, "CSdtPmt");
        auto* amount = child<QLineEdit>(dlg, "CScurPmt");
        auto* irs = child<QCheckBox>(dlg, "chkIRSMethod");
        QVERIFY(irs->isChecked());
        QVERIFY(!child<QLineEdit>(dlg, "CScurTax")->isEnabled());
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(desc));
        QTest::keyClicks(desc, QStringLiteral("First payment"));
        QTest::keyClick(desc, Qt::Key_Return);  // Enter moves on as Tab does
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(date));
        QTest::keyClicks(date, QStringLiteral("12/20/2016"));
        QTest::keyClick(date, Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(amount));
        // The IRS method: 1,000.00 is all tax, 10,400.00 being owed.
        QTest::keyClicks(amount, QStringLiteral("1000"));
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("1,000.00"));
        QCOMPARE(text(dlg, "CScurPen"), QStringLiteral("0.00"));
        QCOMPARE(text(dlg, "CScurInt"), QStringLiteral("0.00"));
        QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 0.00"));
        QTest::keyClick(amount, Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(irs));
        QTest::keyClick(irs, Qt::Key_Space);  // the user's own allocation
        QVERIFY(!irs->isChecked());
        QVERIFY(child<QLineEdit>(dlg, "CScurTax")->isEnabled());
        QCOMPARE(text(dlg, "CSlblMaxInt"), QStringLiteral("Max. Interest: 22.92"));
        retype(child<QLineEdit>(dlg, "CScurTax"), QStringLiteral("900"));
        QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 100.00"));
        QVERIFY(f.msgs.shown.empty());
        retype(child<QLineEdit>(dlg, "CScurInt"), QStringLiteral("30"));
        QCOMPARE(f.msgs.texts(), std::vector<std::string>{
            "The allocation of the payment to interest may be too high since it exceeds $22.92!"});
        QCOMPARE(f.msgs.shown.back().title, std::string("WARNING"));
        retype(child<QLineEdit>(dlg, "CScurInt"), QStringLiteral("20"));
        QCOMPARE(f.msgs.shown.size(), std::size_t(1));
        retype(child<QLineEdit>(dlg, "CScurPen"), QStringLiteral("80"));
        QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 0.00"));
        shoot(dlg, QStringLiteral("payment-information-own-allocation"));
        click(dlg, "btnOK");
    });
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) {
        QCOMPARE(lineOf(dlg, "lstPmt", 0), QStringLiteral("12/20/2016 First payment   "));
        QVERIFY(child<QPushButton>(dlg, "btnEdit")->isEnabled());
        click(dlg, "btnAdd");
    });
    drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
        QTest::keyClicks(child<QLineEdit>(dlg, "CStxtDesc"), QStringLiteral("Second payment"));
        QTest::keyClicks(child<QLineEdit>(dlg, "CSdtPmt"), QStringLiteral("12/28/2016"));
        auto* amount = child<QLineEdit>(dlg, "CScurPmt");
        amount->setFocus(Qt::TabFocusReason);
        // Each keystroke allocates the amount typed so far.
        QTest::keyClick(amount, Qt::Key_1);
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("1.00"));
        QTest::keyClicks(amount, QStringLiteral("2000"));
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("9,500.00"));
        QCOMPARE(text(dlg, "CScurPen"), QStringLiteral("2,370.00"));
        QCOMPARE(text(dlg, "CScurInt"), QStringLiteral("130.00"));
        QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 0.00"));
        shoot(dlg, QStringLiteral("payment-information-irs-method"));
        click(dlg, "btnOK");
    });
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) {
        QCOMPARE(lineOf(dlg, "lstPmt", 1), QStringLiteral("12/28/2016 Second payment  "));
        shoot(dlg, QStringLiteral("payments-two"));
        click(dlg, "btnClose");
    });

    QVERIFY(rw::ui::RunPaymentsCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QCOMPARE(f.kase.init.nPmts, std::int16_t(2));
    const rw::PaymentRec& p1 = f.kase.pmts[0];
    QCOMPARE(p1.dtPmt, D(12, 20, 2016));
    QCOMPARE(p1.cAmount, M("1000"));
    QCOMPARE(p1.cToTax, M("900"));
    QCOMPARE(p1.cToInt, M("20"));
    QCOMPARE(p1.cToPen, M("80"));
    QVERIFY(p1.sMethod.is("T"));
    const rw::PaymentRec& p2 = f.kase.pmts[1];
    QCOMPARE(p2.cAmount, M("12000"));
    QCOMPARE(p2.cToTax, M("9500"));
    QCOMPARE(p2.cToPen, M("2370"));
    QCOMPARE(p2.cToInt, M("130"));
    QVERIFY(p2.sMethod.is("I"));
    QCOMPARE(f.msgs.shown.size(), std::size_t(1));
    QCOMPARE(f.recoveryCopies, 1);
}

void ListsTest::paymentsEditCancelAndDelete()
{
    rw::Case c = FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000");
    Fixture f(std::move(c));
    ModalDriver drive;
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
    drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
        // Cancel on Add: nothing is added.
        click(dlg, "btnCancel");
    });
    drive.when(QStringLiteral("Payments"), [&f](QWidget* dlg) {
        QCOMPARE(f.msgs.texts(), std::vector<std::string>{"Payment not added!"});
        f.msgs.clear();
        click(dlg, "btnAdd");
    });
    drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
        QTest::keyClicks(child<QLineEdit>(dlg, "CStxtDesc"), QStringLiteral("Check 1001"));
        QTest::keyClicks(child<QLineEdit>(dlg, "CSdtPmt"), QStringLiteral("6/1/2016"));
        QTest::keyClicks(child<QLineEdit>(dlg, "CScurPmt"), QStringLiteral("2,500"));
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("2,500.00"));
        click(dlg, "btnOK");
    });
    drive.when(QStringLiteral("Payments"), [&f](QWidget* dlg) {
        QVERIFY(f.msgs.shown.empty());
        // Edit and Delete without a line selected.
        child<QListWidget>(dlg, "lstPmt")->clearSelection();
        click(dlg, "btnEdit");
        click(dlg, "btnDelete");
        QCOMPARE(f.msgs.texts(),
                 (std::vector<std::string>{"No item selected!  Please click on the item you want to select.",
                                           "No item selected!  Please click on the item you want to select."}));
        f.msgs.clear();
        selectLine(dlg, "lstPmt", 0);
        click(dlg, "btnEdit");
    });
    drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
        QCOMPARE(text(dlg, "CStxtDesc"), QStringLiteral("Check 1001"));
        QCOMPARE(text(dlg, "CSdtPmt"), QStringLiteral("6/1/2016"));
        QCOMPARE(text(dlg, "CScurPmt"), QStringLiteral("2,500.00"));
        QVERIFY(child<QCheckBox>(dlg, "chkIRSMethod")->isChecked());
        retype(child<QLineEdit>(dlg, "CScurPmt"), QStringLiteral("3000"));
        click(dlg, "btnCancel");  // Cancel on Edit: unchanged, no message
    });
    drive.when(QStringLiteral("Payments"), [&f](QWidget* dlg) {
        QVERIFY(f.msgs.shown.empty());
        selectLine(dlg, "lstPmt", 0);
        f.msgs.answerNext(false);
        click(dlg, "btnDelete");
        QCOMPARE(child<QListWidget>(dlg, "lstPmt")->count(), 1);
        selectLine(dlg, "lstPmt", 0);
        f.msgs.answerNext(true);
        click(dlg, "btnDelete");
        QCOMPARE(child<QListWidget>(dlg, "lstPmt")->count(), 0);
        QVERIFY(!child<QPushButton>(dlg, "btnDelete")->isEnabled());
        QTest::keyClick(dlg, Qt::Key_Escape);  // Escape closes the list as Close does
    });

    QVERIFY(!rw::ui::RunPaymentsCommand(f.ctx));
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QCOMPARE(f.msgs.shown.size(), std::size_t(2));
    QCOMPARE(f.msgs.shown[0].text,
             std::string("Do you want to delete payment information for payment date 6/1/2016?"));
    QCOMPARE(f.msgs.shown[0].title, std::string("WARNING!"));
    QVERIFY(f.msgs.shown[0].question);
    QCOMPARE(f.kase.init.nPmts, std::int16_t(0));
    QCOMPARE(f.recoveryCopies, 1);
}

// 10,000.00 due 4/15/2016 with a 100.00 penalty charged that day, interest
// 0.01 % of the base a day. A payment of 10,200.00 on 5/1/2016 by the IRS
// method, typed before the penalty was entered (10,000.00 tax and 16 days on
// 10,000.00 = 16.00 interest owed then): 10,184.00 tax, 16.00 interest.
// Opened, it is allocated on the case as it stands: 10,000.00 tax, 100.00
// penalty, 16 days on 10,100.00 = 16.16 interest, 83.84 left to tax. Moved to
// 6/1/2016, once the date field is left: 47 days on 10,100.00 = 47.47
// interest, 52.53 left to tax (its old copy on 5/1 does not count).
void ListsTest::editedPaymentAllocatedOnItsNewDate()
{
    rw::Case c = FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000");
    rw::ChargeRec ch;
    ch.sDesc = "Penalty";
    ch.dtLiab = ch.dtIntStart = D(4, 15, 2016);
    ch.cTotal = ch.cToPen = M("100");
    c.charges.assign(1, ch);
    c.init.nCharges = 1;
    rw::PaymentRec p;
    p.sDesc = "Check 1001";
    p.dtPmt = D(5, 1, 2016);
    p.cAmount = M("10200");
    p.cToTax = M("10184");
    p.cToInt = M("16");
    p.sMethod = "I";
    c.pmts.assign(1, p);
    c.init.nPmts = 1;
    Fixture f(std::move(c));
    ModalDriver drive;
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) {
        selectLine(dlg, "lstPmt", 0);
        click(dlg, "btnEdit");
    });
    drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("10,083.84"));
        QCOMPARE(text(dlg, "CScurPen"), QStringLiteral("100.00"));
        QCOMPARE(text(dlg, "CScurInt"), QStringLiteral("16.16"));
        auto* date = child<QLineEdit>(dlg, "CSdtPmt");
        retype(date, QStringLiteral("6/1/2016"));
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("10,083.84"));  // not while the date is typed
        QTest::keyClick(date, Qt::Key_Return);
        QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(child<QLineEdit>(dlg, "CScurPmt")));
        QCOMPARE(text(dlg, "CScurTax"), QStringLiteral("10,052.53"));
        QCOMPARE(text(dlg, "CScurPen"), QStringLiteral("100.00"));
        QCOMPARE(text(dlg, "CScurInt"), QStringLiteral("47.47"));
        QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 0.00"));
        click(dlg, "btnOK");
    });
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) {
        QCOMPARE(lineOf(dlg, "lstPmt", 0), QStringLiteral("06/01/2016 Check 1001      "));
        click(dlg, "btnClose");
    });

    rw::ui::RunPaymentsCommand(f.ctx);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    dumpMessages(f);
    QVERIFY(f.msgs.shown.empty());
    const rw::PaymentRec& moved = f.kase.pmts[0];
    QCOMPARE(moved.dtPmt, D(6, 1, 2016));
    QCOMPARE(moved.cToTax, M("10052.53"));
    QCOMPARE(moved.cToPen, M("100"));
    QCOMPARE(moved.cToInt, M("47.47"));
}

void ListsTest::chargesListedByLiabilityDate()
{
    Fixture f(FederalCase(D(12, 31, 2015), D(1, 1, 2016), D(12, 31, 2016), "1000"));
    struct Entry {
        const char* desc;
        const char* date;
    };
    const Entry entries[] = {{"May charge", "5/1/2016"}, {"March charge", "3/1/2016"}, {"April charge", "4/1/2016"}};
    ModalDriver drive;
    for (const Entry& e : entries) {
        drive.when(QStringLiteral("Other Charges"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
        drive.when(QStringLiteral("Addition To Tax"), [e](QWidget* dlg) {
            auto* desc = child<QLineEdit>(dlg, "CStxtDesc");
            QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(desc));
            QTest::keyClicks(desc, QString::fromLatin1(e.desc));
            QTest::keyClick(desc, Qt::Key_Return);
            auto* liab = child<QLineEdit>(dlg, "CSdtLiab");
            QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(liab));
            QTest::keyClicks(liab, QString::fromLatin1(e.date));
            QTest::keyClick(liab, Qt::Key_Return);
            auto* interest = child<QLineEdit>(dlg, "CSdtIntStart");
            QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(interest));
            QTest::keyClicks(interest, QString::fromLatin1(e.date));
            QTest::keyClick(interest, Qt::Key_Return);
            auto* total = child<QLineEdit>(dlg, "CScurChrg");
            QTRY_COMPARE(QApplication::focusWidget(), static_cast<QWidget*>(total));
            QTest::keyClicks(total, QStringLiteral("100"));
            QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 100.00"));
            QTest::keyClicks(child<QLineEdit>(dlg, "CScurTax"), QStringLiteral("60"));
            QTest::keyClicks(child<QLineEdit>(dlg, "CScurPen"), QStringLiteral("30"));
            QCOMPARE(text(dlg, "CSLblBalance"), QStringLiteral("Unallocated: 10.00"));
            if (std::string(e.desc) == "March charge")
                shoot(dlg, QStringLiteral("addition-to-tax"));
            click(dlg, "btnOK");
        });
    }
    drive.when(QStringLiteral("Other Charges"), [](QWidget* dlg) {
        QCOMPARE(lineOf(dlg, "lstChrg", 0), QStringLiteral("03/01/2016 March charge    "));
        QCOMPARE(lineOf(dlg, "lstChrg", 1), QStringLiteral("04/01/2016 April charge    "));
        QCOMPARE(lineOf(dlg, "lstChrg", 2), QStringLiteral("05/01/2016 May charge      "));
        shoot(dlg, QStringLiteral("other-charges"));
        click(dlg, "btnClose");
    });
    QVERIFY(rw::ui::RunOtherChargesCommand(f.ctx));
    dumpMessages(f);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    // Each charge of 100.00 split 60.00 / 30.00 is stored with the warning.
    const std::string unallocated =
        "The additional charge of 100.00 has not been completely allocated between tax, and penalty which total 90.00.";
    QCOMPARE(f.msgs.texts(), (std::vector<std::string>{unallocated, unallocated, unallocated}));
    QCOMPARE(f.kase.init.nCharges, std::int16_t(3));
    QCOMPARE(f.kase.charges[0].dtLiab, D(3, 1, 2016));
    QCOMPARE(f.kase.charges[0].dtIntStart, D(3, 1, 2016));
    QCOMPARE(f.kase.charges[0].cToTax, M("60"));
    QCOMPARE(f.recoveryCopies, 1);
}

void ListsTest::depositNoticeDatesHintsAndSevereQuestion()
{
    rw::Case c = FederalCase(D(1, 31, 2016), D(1, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    Fixture f(std::move(c));
    ModalDriver drive;
    drive.when(QStringLiteral("Payroll Tax Deposit Penalties"), [&f](QWidget* dlg) {
        click(dlg, "btnTutorial");
        QCOMPARE(f.msgs.texts(), std::vector<std::string>{"When the help file comes up, search for EXAMPLES."});
        QCOMPARE(f.helpOpened, 1);
        f.msgs.clear();
        shoot(dlg, QStringLiteral("payroll-deposits-empty"));
        click(dlg, "btnAdd");
    });
    drive.when(QStringLiteral("Payroll Deposit Information"), [&f](QWidget* dlg) {
        auto* severe = child<QGroupBox>(dlg, "CSoptSevere");
        auto* yes = severe->findChildren<QRadioButton*>().at(0);
        auto* no = severe->findChildren<QRadioButton*>().at(1);
        auto* notice = child<QLineEdit>(dlg, "CSdtDelNot");
        auto* jeopardy = child<QLineEdit>(dlg, "CSdtJep");
        auto* hint = child<QLabel>(dlg, "CSlblNote");
        QVERIFY(no->isChecked());
        QVERIFY(!notice->isEnabled());
        QVERIFY(!jeopardy->isEnabled());
        QCOMPARE(child<QLineEdit>(dlg, "CSdtDue")->placeholderText(), QStringLiteral("__/__/____"));
        QTest::keyClicks(child<QLineEdit>(dlg, "CSdtDue"), QStringLiteral("3/15/2016"));
        QTest::keyClick(child<QLineEdit>(dlg, "CSdtDue"), Qt::Key_Return);
        QTest::keyClicks(child<QLineEdit>(dlg, "CScurUndPmt"), QStringLiteral("2500"));
        QTest::keyClick(child<QLineEdit>(dlg, "CScurUndPmt"), Qt::Key_Return);
        QTest::keyClicks(child<QLineEdit>(dlg, "CSdtAssess"), QStringLiteral("6/30/2016"));
        QTest::keyClick(child<QLineEdit>(dlg, "CSdtAssess"), Qt::Key_Return);
        // Enter moved on to the choice, as Tab does: its hint shows.
        QTRY_VERIFY(QApplication::focusWidget() == yes || QApplication::focusWidget() == no);
        QCOMPARE(hint->text(), QStringLiteral("I.R.C. Sec. 6656(b)(1)(B) increases the penalty rate to 15% in situations "
                                              "after either delinquency notices (Sec. 6303) or jeopardy assessments "
                                              "(Sec. 6861, 6862 or 6331(a))."));
        yes->click();
        QVERIFY(notice->isEnabled());
        QVERIFY(jeopardy->isEnabled());
        notice->setFocus(Qt::TabFocusReason);
        QCOMPARE(hint->text(), QStringLiteral("Enter date of the first deliquency notice under I.R.C. Sec. 6303.  If no "
                                              "deliquency notice was issued, leave input blank."));
        jeopardy->setFocus(Qt::TabFocusReason);
        QCOMPARE(hint->text(), QStringLiteral("Enter date notice and demand for immediate payment was given under I.R.C. "
                                              "Sec. 6861, 6862 or 6331(a).  If no deliquency notice was issued, leave "
                                              "input blank."));
        shoot(dlg, QStringLiteral("payroll-deposit-information"));
        child<QLineEdit>(dlg, "CSdtDue")->setFocus(Qt::TabFocusReason);
        QCOMPARE(hint->text(), QString());
        QVERIFY(f.msgs.shown.empty());
        // Yes without either notice date: the question, then the dialog again.
        f.msgs.answerNext(true);
        click(dlg, "btnOK");
    });
    drive.when(QStringLiteral("Payroll Deposit Information"), [&f](QWidget* dlg) {
        QCOMPARE(f.msgs.shown.size(), std::size_t(1));
        QVERIFY(f.msgs.shown[0].question);
        QCOMPARE(f.msgs.shown[0].text,
                 std::string("The IRC Sec. 6656(b)(1)(B) penalty can not be calculated without either the date of the "
                             "first delinquency notice or the date of the jeopardy assessment.  Do you want to enter "
                             "one of those dates now?"));
        // The second showing keeps what was entered.
        QCOMPARE(text(dlg, "CSdtDue"), QStringLiteral("3/15/2016"));
        QCOMPARE(text(dlg, "CScurUndPmt"), QStringLiteral("2500"));
        QTest::keyClicks(child<QLineEdit>(dlg, "CSdtDelNot"), QStringLiteral("3/1/2016"));
        click(dlg, "btnOK");
    });
    drive.when(QStringLiteral("Payroll Tax Deposit Penalties"), [](QWidget* dlg) {
        QCOMPARE(lineOf(dlg, "lstDep", 0), QStringLiteral("03/15/2016"));
        click(dlg, "btnClose");
    });
    QVERIFY(rw::ui::RunPayrollCommand(f.ctx));
    dumpMessages(f);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QCOMPARE(f.kase.init.nDeposits, std::int16_t(1));
    const rw::DepositRec& d = f.kase.deposits[0];
    QCOMPARE(d.dtDepDue, D(3, 15, 2016));
    QCOMPARE(d.cRequired, M("2500"));
    QCOMPARE(d.dtDepAssess, D(6, 30, 2016));
    QVERIFY(rw::IsYes(d.bSevere));
    QCOMPARE(d.dtDelinqNotice, D(3, 1, 2016));
    QVERIFY(rw::IsYes(f.kase.init.bAnyPenalties));
    QCOMPARE(f.msgs.shown.size(), std::size_t(1));
    QCOMPARE(f.recoveryCopies, 1);
}

// Deposits of 10,000.00 due 1/15/2016 and 5,000.00 due 2/15/2016; payments
// entered out of order: A 5,000.00 on 2/15, B 10,000.00 on 1/15, C 1,000.00
// on 3/20 (all tax by the IRS method: nothing else is owed by then).
// As entered, A pays half of the first deposit 31 days late: 10 % of 5,000.00
// = 500.00. Orders in table order: A B C 500.00, A C B 600.00 (C also pays
// 1,000.00 of it 65 days late), B A C 0.00: the first order without a penalty.
// The employer saves 500.00.
void ListsTest::payrollPaymentsArrangedForLowestPenalty()
{
    rw::Case c = FederalCase(D(1, 31, 2016), D(1, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    Fixture f(std::move(c));

    struct Dep {
        const char* due;
        const char* amount;
    };
    ModalDriver deposits;
    for (const Dep& d : {Dep{"2/15/2016", "5000"}, Dep{"1/15/2016", "10000"}}) {
        deposits.when(QStringLiteral("Payroll Tax Deposit Penalties"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
        deposits.when(QStringLiteral("Payroll Deposit Information"), [d](QWidget* dlg) {
            QTest::keyClicks(child<QLineEdit>(dlg, "CSdtDue"), QString::fromLatin1(d.due));
            QTest::keyClicks(child<QLineEdit>(dlg, "CScurUndPmt"), QString::fromLatin1(d.amount));
            QTest::keyClicks(child<QLineEdit>(dlg, "CSdtAssess"), QStringLiteral("6/30/2016"));
            click(dlg, "btnOK");
        });
    }
    deposits.when(QStringLiteral("Payroll Tax Deposit Penalties"), [](QWidget* dlg) {
        // Kept in due-date order.
        QCOMPARE(lineOf(dlg, "lstDep", 0), QStringLiteral("01/15/2016"));
        QCOMPARE(lineOf(dlg, "lstDep", 1), QStringLiteral("02/15/2016"));
        shoot(dlg, QStringLiteral("payroll-deposits"));
        click(dlg, "btnClose");
    });
    QVERIFY(rw::ui::RunPayrollCommand(f.ctx));
    QVERIFY2(deposits.finished(), qPrintable(deposits.failures.join(u'\n')));
    QVERIFY(f.msgs.shown.empty());

    struct Pmt {
        const char* desc;
        const char* date;
        const char* amount;
        const char* tax;
    };
    ModalDriver payments;
    for (const Pmt& p : {Pmt{"Payment A", "2/15/2016", "5000", "5,000.00"},
                         Pmt{"Payment B", "1/15/2016", "10000", "10,000.00"},
                         Pmt{"Payment C", "3/20/2016", "1000", "1,000.00"}}) {
        payments.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
        payments.when(QStringLiteral("Payment Information"), [p](QWidget* dlg) {
            QTest::keyClicks(child<QLineEdit>(dlg, "CStxtDesc"), QString::fromLatin1(p.desc));
            QTest::keyClicks(child<QLineEdit>(dlg, "CSdtPmt"), QString::fromLatin1(p.date));
            QTest::keyClicks(child<QLineEdit>(dlg, "CScurPmt"), QString::fromLatin1(p.amount));
            QCOMPARE(text(dlg, "CScurTax"), QString::fromLatin1(p.tax));
            QCOMPARE(text(dlg, "CScurPen"), QStringLiteral("0.00"));
            QCOMPARE(text(dlg, "CScurInt"), QStringLiteral("0.00"));
            click(dlg, "btnOK");
        });
    }
    payments.when(QStringLiteral("Payments"), [&f](QWidget* dlg) {
        auto* arrange = child<QCheckBox>(dlg, "chkMinPRPenalty");
        QVERIFY(arrange->isVisible());
        QVERIFY(!arrange->isChecked());
        QVERIFY(!child<QWidget>(dlg, "pnlArrange")->isVisible());
        click(dlg, "btnPRhint");
        QCOMPARE(f.msgs.texts(), std::vector<std::string>{"When the help file comes up, search for MATCH PAYROLL."});
        QCOMPARE(f.helpOpened, 1);
        f.msgs.clear();
        QCOMPARE(lineOf(dlg, "lstPmt", 0), QStringLiteral("02/15/2016 Payment A       "));
        QCOMPARE(lineOf(dlg, "lstPmt", 1), QStringLiteral("01/15/2016 Payment B       "));
        arrange->click();
        shoot(dlg, QStringLiteral("payments-payroll"));
        // A look at the search's labels and bars while they show.
        QTimer watch;
        bool seen = false;
        QObject::connect(&watch, &QTimer::timeout, [dlg, &seen] {
            if (!seen && child<QWidget>(dlg, "pnlArrange")->isVisible()
                && !child<QLabel>(dlg, "lblVariations")->text().isEmpty()) {
                seen = true;
                shoot(dlg, QStringLiteral("payments-arranging"));
            }
        });
        watch.start(0);
        click(dlg, "btnClose");
        watch.stop();
        QCOMPARE(child<QLabel>(dlg, "lblVariations")->text(), QStringLiteral("Variations to Consider: 6"));
        QVERIFY(!child<QWidget>(dlg, "pnlArrange")->isVisible());
    });
    QVERIFY(rw::ui::RunPaymentsCommand(f.ctx));
    dumpMessages(f);
    QVERIFY2(payments.finished(), qPrintable(payments.failures.join(u'\n')));
    // Payroll cases take payments in any order: no order warning. The search
    // beeps, tells the savings and rewrites the list.
    QCOMPARE(f.msgs.texts(),
             std::vector<std::string>{
                 "The employer saved $500 by having the Brindlecote optimize the application of deposits to "
                 "liabilities. The program calculated penalties for all 6 ways the payments could have been "
                 "arranged. Please refer to Rev. Proc. 99-10 and IRC Section 6656(e) to properly report the "
                 "application of deposits."});
    QCOMPARE(f.msgs.shown[0].title, std::string("Savings To Employer"));
    QCOMPARE(f.msgs.beeps, 1);
    QCOMPARE(f.kase.pmts[0].sDesc.trimmed(), std::string("Payment B"));
    QCOMPARE(f.kase.pmts[1].sDesc.trimmed(), std::string("Payment A"));
    QCOMPARE(f.kase.pmts[2].sDesc.trimmed(), std::string("Payment C"));
    QVERIFY(!rw::IsYes(f.kase.init.bAutoArrange));

    // The list shows the new order and the check box opens cleared.
    ModalDriver again;
    again.when(QStringLiteral("Payments"), [](QWidget* dlg) {
        QCOMPARE(lineOf(dlg, "lstPmt", 0), QStringLiteral("01/15/2016 Payment B       "));
        QCOMPARE(lineOf(dlg, "lstPmt", 1), QStringLiteral("02/15/2016 Payment A       "));
        QCOMPARE(lineOf(dlg, "lstPmt", 2), QStringLiteral("03/20/2016 Payment C       "));
        QVERIFY(!child<QCheckBox>(dlg, "chkMinPRPenalty")->isChecked());
        click(dlg, "btnClose");
    });
    QVERIFY(rw::ui::RunPaymentsCommand(f.ctx));
    QVERIFY2(again.finished(), qPrintable(again.failures.join(u'\n')));
    QCOMPARE(f.recoveryCopies, 3);
}

// Typing an amount by the IRS method computes the case up to the payment
// date once per keystroke; with 200 payments before it, one computation must
// stay well under the time between two keystrokes.
void ListsTest::oneComputationToPaymentDateIsQuick()
{
    rw::Case c = FederalCase(D(4, 15, 2015), D(4, 15, 2015), D(12, 31, 2016), "250000");
    c.init.bAnyPenalties = rw::kYes;
    c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(6, 1, 2016);
    c.pmts.clear();
    for (int i = 0; i < 200; ++i) {
        rw::PaymentRec p;
        p.sDesc = "Installment";
        p.dtPmt = D(5, 1, 2015) + 2 * i;
        p.cAmount = M("1000");
        p.cToTax = M("1000");
        p.sMethod = "T";
        c.pmts.push_back(p);
    }
    c.init.nPmts = 200;
    const rw::RateTable rates = SimpleTable(0.0365f);
    rwtest::RecordingMessages msgs;
    QElapsedTimer timer;
    double slowest = 0;
    for (int round = 0; round < 5; ++round) {
        rw::USPenalties penalties(rwtest::Minimums2018());
        rw::TLPoint totals;
        timer.start();
        const Money interest = rw::IntToDate("12/1/2016", c, rates, &penalties, totals, msgs);
        QVERIFY(interest > Money());
        QCOMPARE(totals.cTax, M("50000"));  // 250,000.00 less 200 payments of 1,000.00
        slowest = std::max(slowest, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    qInfo("one computation to the payment date with 200 payments: %.2f ms at most", slowest);
    QVERIFY2(slowest < 50.0, "a computation to the payment date is too slow for typing");
    QVERIFY(msgs.shown.empty());
}

// A payment dated beyond the rate table: what is owed on that day cannot be
// computed. The user is told when the date field is left, and the dialog
// stays open with what was typed.
void ListsTest::aDateBeyondTheRatesIsToldAndTheDialogStays()
{
    rw::RateTable table = SimpleTable(0.0365f);
    table[0].dtThru = D(12, 31, 2015);
    Fixture f(FederalCase(D(4, 15, 2015), D(4, 15, 2015), D(12, 31, 2015), "10000"), table);
    ModalDriver drive;
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
    drive.when(QStringLiteral("Payment Information"), [&f](QWidget* dlg) {
        auto* date = child<QLineEdit>(dlg, "CSdtPmt");
        auto* amount = child<QLineEdit>(dlg, "CScurPmt");
        date->setFocus();
        QTest::keyClicks(date, QStringLiteral("3/1/2016"));
        QTest::keyClicks(amount, QStringLiteral("5"));
        QVERIFY(f.msgs.shown.empty());  // nothing while typing
        amount->setFocus();
        QTest::keyClick(date, Qt::Key_Tab);
        QTRY_VERIFY(!f.msgs.shown.empty());
        QVERIFY(dlg->isVisible());
        QCOMPARE(amount->text(), QStringLiteral("5"));
        click(dlg, "btnCancel");
    });
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnClose"); });
    rw::ui::RunPaymentsCommand(f.ctx);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    bool told = false;
    for (const auto& m : f.msgs.shown)
        told = told || (m.title == "Interest Cannot Be Computed" && m.text.find("ends on 12/31/2015") != std::string::npos);
    QVERIFY(told);
    QCOMPARE(f.kase.init.nPmts, std::int16_t(0));
}

// A fault inside the computation to the payment date (a payroll deposit with
// no due date overflows its days-late count) closes the dialogs and leaves
// the command for the main window's error reporter.
void ListsTest::faultInsideTheDialogsReachesTheCaller()
{
    rw::Case c = FederalCase(D(4, 15, 2015), D(4, 15, 2015), D(12, 31, 2015), "10000");
    c.init.bAnyPenalties = rw::kYes;
    c.init.nDeposits = 1;
    c.deposits[0].dtDepDue = rw::NoDate;
    c.deposits[0].cRequired = M("1000");
    Fixture f(c);
    ModalDriver drive;
    drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
    drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
        QTest::keyClicks(child<QLineEdit>(dlg, "CSdtPmt"), QStringLiteral("6/1/2015"));
        QTest::keyClicks(child<QLineEdit>(dlg, "CScurPmt"), QStringLiteral("5"));
    });
    bool thrown = false;
    try {
        rw::ui::RunPaymentsCommand(f.ctx);
    } catch (const rw::Fault& fault) {
        thrown = true;
        QCOMPARE(fault.number(), rw::kErrOverflow);
    }
    QVERIFY(thrown);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(f.kase.init.nPmts, std::int16_t(0));
    QCOMPARE(f.recoveryCopies, 0);
}

QTEST_MAIN(ListsTest)
#include "lists_test.moc"
