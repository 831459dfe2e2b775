// A case walked through the commands of the main window as a practitioner
// enters it (failure to file and pay, the accuracy-related penalty, one other
// charge, two payments), then every report shown in its window and printed
// to a PDF file; and the payroll deposit penalty window of a payroll case.

#include "tests/ui/lists/uitest.h"

#include "ui/lists/commands.h"
#include "ui/penalties/commands.h"
#include "ui/reports/commands.h"

#include <QCheckBox>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTableWidget>
#include <QtTest>

using namespace uitest;

namespace {

void click(QWidget* dlg, const char* button)
{
    if (auto* b = child<QPushButton>(dlg, button))
        b->click();
}

QLineEdit* field(QWidget* dlg, const char* name)
{
    return child<QLineEdit>(dlg, name);
}

void chooseYes(QWidget* dlg, const char* group)
{
    if (auto* g = child<QGroupBox>(dlg, group))
        g->findChildren<QRadioButton*>().value(0)->click();
}

// A summary line: the label in 30 characters, the amount right-aligned in 14.
QString line(const char* label, const char* amount)
{
    return QString::fromLatin1(label).leftJustified(30) + QString::fromLatin1(amount).rightJustified(14);
}

QString cell(QTableWidget* t, int row, int column)
{
    const QTableWidgetItem* item = t->item(row, column);
    return item ? item->text().trimmed() : QString();
}

bool alignedRight(QTableWidget* t, int column)
{
    const QTableWidgetItem* item = t->item(0, column);
    return item && (item->textAlignment() & Qt::AlignRight);
}

QString heading(QTableWidget* t, int column)
{
    const QTableWidgetItem* item = t->horizontalHeaderItem(column);
    return item ? item->text() : QString();
}

// Ticks the reports in the "Report Choices" list with the keyboard.
void tickAll(QWidget* dlg)
{
    auto* list = child<QListWidget>(dlg, "chkReport");
    for (int i = 0; i < list->count(); ++i) {
        list->setCurrentRow(i);
        if (list->item(i)->checkState() != Qt::Checked)
            QTest::keyClick(list, Qt::Key_Space);
    }
}

QStringList lines(QPlainTextEdit* box)
{
    return box->toPlainText().split(QChar(u'\n'));
}

QString pdfText(const QString& file)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    if (!p.waitForFinished(20000))
        return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

}  // namespace

class WalkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void enterCaseThenShowAndPrintEveryReport();
    void payrollDepositPenaltyWindow();
    void printWithoutPrinterAsksForPdfFile();
    void printThroughThePrinterSetUp();
};

void WalkTest::cleanup()
{
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* w : all)
        if (w->isVisible())
            w->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// 10,000.00 due 4/15/2016, computed from the due date to 12/31/2016 at 3.65 %
// simple interest (0.01 % of the base a day).
//
// Failure to file: filed 6/10/2016, 56 days late: two months (4/16, 5/16) of
// 5 % (500.00) less the month's failure to pay (50.00): 900.00, interest from
// the due date. Failure to pay, assessed 7/1/2016: 0.5 % of 10,000.00 in each
// of the nine months 4/16 to 12/16 = 450.00 (150.00 at the assessment, then
// 50.00 a month). Accuracy-related: 20 % of 5,000.00 = 1,000.00 from the due
// date. A charge of 500.00 (400.00 tax, 100.00 penalty) on 12/17/2016.
// Payments: 1,000.00 on 12/20/2016 allocated by the user (900.00 tax, 80.00
// penalties, 20.00 interest), 12,000.00 on 12/28/2016 by the IRS method
// (9,500.00 tax, 2,370.00 penalties, 130.00 interest).
//
// Interest, period by period (base x days / 10,000, rounded to cents):
//   4/15-7/1   11,900 x 77  91.63     7/1-7/16    12,050 x 15  18.08
//   7/16-8/16  12,100 x 31  37.51     8/16-9/16   12,150 x 31  37.66
//   9/16-10/16 12,200 x 30  36.60     10/16-11/16 12,250 x 31  37.98
//   11/16-12/16 12,300 x 30 36.90     12/16-12/17 12,350 x 1    1.24
//   12/17-12/20 12,850 x 3   3.86     12/20-12/28 11,870 x 8    9.50
//   12/28-12/31 nothing owed            0.00
// = 310.96, less the 150.00 the payments put on interest: 160.96.
// Unpaid tax: 10,000 + 400 - 900 - 9,500 = 0.00; the penalties paid, 2,450.00,
// equal those charged (900 + 450 + 1,000 + 100): the total is the interest.
void WalkTest::enterCaseThenShowAndPrintEveryReport()
{
    Fixture f(FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000"));

    // ---- Penalties -------------------------------------------------------------
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Failure To File Penalty Inputs"), [](QWidget* dlg) {
            chooseYes(dlg, "radCalcPen");
            QTest::keyClicks(field(dlg, "txtAssess"), QStringLiteral("7/1/2016"));
            field(dlg, "txtFiled")->setFocus(Qt::TabFocusReason);
            QTest::keyClicks(field(dlg, "txtFiled"), QStringLiteral("6/10/2016"));
            QTest::keyClick(field(dlg, "txtFiled"), Qt::Key_Return);
            click(dlg, "btnOK");
        });
        QVERIFY(rw::ui::RunFailureToFileCommand(f.ctx));
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
        QCOMPARE(f.extendedDueDateOpened, 1);
    }
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Failure To Pay Inputs"), [](QWidget* dlg) {
            chooseYes(dlg, "radCalcPen");
            QTest::keyClicks(field(dlg, "txtAssess"), QStringLiteral("7/1/2016"));
            QCOMPARE(field(dlg, "txtAmtOnRet")->text(), QStringLiteral("10,000.00"));
            click(dlg, "btnOK");
        });
        QVERIFY(rw::ui::RunFailureToPayCommand(f.ctx));
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Accuracy Related Penalty"), [](QWidget* dlg) {
            chooseYes(dlg, "CSOptAcc");
            QTest::keyClicks(field(dlg, "CScurUnderPmt"), QStringLiteral("5,000.00"));
            click(dlg, "btnOK");
        });
        QVERIFY(rw::ui::RunAccuracyRelatedCommand(f.ctx));
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
        QCOMPARE(f.extendedDueDateOpened, 2);
    }

    // ---- Other charge and payments ----------------------------------------------
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Other Charges"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
        drive.when(QStringLiteral("Addition To Tax"), [](QWidget* dlg) {
            QTest::keyClicks(field(dlg, "CStxtDesc"), QStringLiteral("Addl assessment"));
            QTest::keyClicks(field(dlg, "CSdtLiab"), QStringLiteral("12/17/2016"));
            QTest::keyClicks(field(dlg, "CSdtIntStart"), QStringLiteral("12/17/2016"));
            QTest::keyClicks(field(dlg, "CScurChrg"), QStringLiteral("500"));
            QTest::keyClicks(field(dlg, "CScurTax"), QStringLiteral("400"));
            QTest::keyClicks(field(dlg, "CScurPen"), QStringLiteral("100"));
            QCOMPARE(child<QLabel>(dlg, "CSLblBalance")->text(), QStringLiteral("Unallocated: 0.00"));
            click(dlg, "btnOK");
        });
        drive.when(QStringLiteral("Other Charges"), [](QWidget* dlg) { click(dlg, "btnClose"); });
        QVERIFY(rw::ui::RunOtherChargesCommand(f.ctx));
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
        drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
            QTest::keyClicks(field(dlg, "CStxtDesc"), QStringLiteral("First payment"));
            QTest::keyClicks(field(dlg, "CSdtPmt"), QStringLiteral("12/20/2016"));
            QTest::keyClicks(field(dlg, "CScurPmt"), QStringLiteral("1000"));
            child<QCheckBox>(dlg, "chkIRSMethod")->click();
            QCOMPARE(child<QLabel>(dlg, "CSlblMaxInt")->text(), QStringLiteral("Max. Interest: 22.92"));
            retype(field(dlg, "CScurTax"), QStringLiteral("900"));
            retype(field(dlg, "CScurInt"), QStringLiteral("20"));
            retype(field(dlg, "CScurPen"), QStringLiteral("80"));
            click(dlg, "btnOK");
        });
        drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnAdd"); });
        drive.when(QStringLiteral("Payment Information"), [](QWidget* dlg) {
            QTest::keyClicks(field(dlg, "CStxtDesc"), QStringLiteral("Second payment"));
            QTest::keyClicks(field(dlg, "CSdtPmt"), QStringLiteral("12/28/2016"));
            QTest::keyClicks(field(dlg, "CScurPmt"), QStringLiteral("12000"));
            QCOMPARE(field(dlg, "CScurTax")->text(), QStringLiteral("9,500.00"));
            QCOMPARE(field(dlg, "CScurPen")->text(), QStringLiteral("2,370.00"));
            QCOMPARE(field(dlg, "CScurInt")->text(), QStringLiteral("130.00"));
            click(dlg, "btnOK");
        });
        drive.when(QStringLiteral("Payments"), [](QWidget* dlg) { click(dlg, "btnClose"); });
        QVERIFY(rw::ui::RunPaymentsCommand(f.ctx));
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }
    QVERIFY2(f.msgs.shown.empty(), f.msgs.shown.empty() ? "" : f.msgs.shown.front().text.c_str());
    QCOMPARE(f.recoveryCopies, 5);

    // ---- View - Reports ------------------------------------------------------------
    const QString pdfFromWindow = QString::fromStdString((f.dir / "from-window.pdf").string());
    rw::ui::ReportHooks hooks;
    hooks.choosePdfFile = [pdfFromWindow](QWidget*) { return pdfFromWindow; };
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Report Choices"), [](QWidget* dlg) {
            QVERIFY(!dlg->findChild<QPushButton*>(QStringLiteral("btnPrnSetup")));
            auto* list = child<QListWidget>(dlg, "chkReport");
            QCOMPARE(list->count(), 6);
            const QStringList captions{QStringLiteral("Inputs"),
                                       QStringLiteral("Summary of Results"),
                                       QStringLiteral("Detailed Analysis"),
                                       QStringLiteral("Failure To File or Pay"),
                                       QStringLiteral("Accuracy Related Pen"),
                                       QStringLiteral("Payroll Deposit Pen")};
            for (int i = 0; i < 6; ++i) {
                QCOMPARE(list->item(i)->text(), captions[i]);
                QCOMPARE(list->item(i)->checkState(), Qt::Unchecked);
            }
            tickAll(dlg);
            shoot(dlg, QStringLiteral("report-choices"));
            click(dlg, "btnOK");
        });
        // The failure to file and pay analysis is modal: checked and closed
        // before the later windows open.
        drive.when(QStringLiteral("Failure To File & Pay Analysis"), [](QWidget* dlg) {
            QCOMPARE(dlg->objectName(), QStringLiteral("frmRptFailFilePay"));
            QVERIFY(openWindow("frmRptAccRelPen"));
            QVERIFY(!openWindow("frmRptDetail"));
            auto* t = child<QTableWidget>(dlg, "vsGrdDispFailFilePay");
            QCOMPARE(t->columnCount(), 6);
            QCOMPARE(t->rowCount(), 10);  // nine months and the totals
            const QStringList headings{QStringLiteral("DATE OF COMPUTATION"), QStringLiteral("NET UNPAID TAX"),
                                       QStringLiteral("GROSS FAILURE TO FILE"), QStringLiteral("FAILURE TO PAY RATE"),
                                       QStringLiteral("FAILURE TO PAY PENALTY"),
                                       QStringLiteral("NET FAILURE TO FILE PENALTY")};
            for (int c = 0; c < 6; ++c) {
                QCOMPARE(heading(t, c), headings[c]);
                QVERIFY(t->item(0, c)->textAlignment() & Qt::AlignRight);
            }
            const QStringList first{QStringLiteral("04/16/2016"), QStringLiteral("10,000.00"),
                                    QStringLiteral("500.00"),     QStringLiteral("0.50"),
                                    QStringLiteral("50.00"),      QStringLiteral("450.00")};
            const QStringList third{QStringLiteral("06/16/2016"), QStringLiteral("10,000.00"),
                                    QStringLiteral("0.00"),       QStringLiteral("0.50"),
                                    QStringLiteral("50.00"),      QStringLiteral("0.00")};
            const QStringList totals{QStringLiteral("TOTALS"), QString(), QString(), QString(),
                                     QStringLiteral("450.00"), QStringLiteral("900.00")};
            for (int c = 0; c < 6; ++c) {
                QCOMPARE(cell(t, 0, c), first[c]);
                QCOMPARE(cell(t, 2, c), third[c]);
                QCOMPARE(cell(t, 9, c), totals[c]);
            }
            QCOMPARE(cell(t, 8, 0), QStringLiteral("12/16/2016"));
            shoot(dlg, QStringLiteral("failure-to-file-and-pay-analysis"));
            QTest::keyClick(t, Qt::Key_Return);  // Enter moves on
            QVERIFY(QApplication::focusWidget() != t);
            click(dlg, "btnClose");
        });
        rw::ui::RunReportDisplayCommand(f.ctx, hooks);
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }
    QCOMPARE(f.choice.mask, 63);
    QVERIFY(!QApplication::activeModalWidget());  // the other windows do not block
    QVERIFY(!openWindow("frmRptPRDepPen"));       // no deposits, no payroll analysis

    QWidget* accRel = openWindow("frmRptAccRelPen");
    QWidget* detail = openWindow("frmRptDetail");
    QWidget* summary = openWindow("frmSummary");
    QWidget* inputs = openWindow("frmDispIP");
    QVERIFY(accRel && detail && summary && inputs);
    QCOMPARE(accRel->windowTitle(), QStringLiteral("Accuracy Related Penalty"));
    QCOMPARE(detail->windowTitle(), QStringLiteral("Detailed Interest Analysis"));
    QCOMPARE(summary->windowTitle(), QStringLiteral("Summary"));
    QCOMPARE(inputs->windowTitle(), QStringLiteral("Inputs"));
    for (QWidget* w : {accRel, detail, summary, inputs})
        QVERIFY(!w->isModal());

    // Summary.
    const QStringList summaryLines = lines(child<QPlainTextEdit>(summary, "txtSumm"));
    const QStringList expectedSummary{QStringLiteral("Harbor Tool & Die, Inc."),
                                      QStringLiteral("EIN 12-3456789"),
                                      QStringLiteral("From 4/15/2016 to 12/31/2016"),
                                      QString(),
                                      QStringLiteral("Note: Negative amounts are owed to the taxpayer"),
                                      QString(),
                                      line("Unpaid tax", "0.00"),
                                      line("Interest", "160.96"),
                                      line("Failure to file penalty", "900.00"),
                                      line("Failure to pay penalty", "450.00"),
                                      line("Accuracy related penalty", "1,000.00"),
                                      line("Other penalties", "100.00"),
                                      line("Pmts allocated to penalties", "-2,450.00"),
                                      QString(30, QChar(u' ')) + QStringLiteral("--------------"),
                                      QString(),
                                      line("Total", "160.96"),
                                      QString(30, QChar(u' ')) + QStringLiteral("==============")};
    QCOMPARE(summaryLines, expectedSummary);
    QVERIFY(child<QPlainTextEdit>(summary, "txtSumm")->isReadOnly());
    QVERIFY(child<QPlainTextEdit>(summary, "txtSumm")->font().fixedPitch());
    shoot(summary, QStringLiteral("summary"));

    // Accuracy-related penalty.
    const QStringList accLines = lines(child<QPlainTextEdit>(accRel, "txtAccRelPen"));
    QVERIFY(accLines.size() >= 16);
    QCOMPARE(accLines[2], QStringLiteral("Accuracy Related Penalty Calculation"));
    QCOMPARE(accLines[4], QStringLiteral("ACCURACY RELATED PENALTY:"));
    QVERIFY(accLines[6].startsWith(QStringLiteral("The Accuracy Related penalty, I.R.C. Sec. 6662, is calculated by")));
    QCOMPARE(accLines[8], line("Understated Taxes", "5,000.00"));
    QCOMPARE(accLines[9], line("Penalty Rate", "0.20"));
    QCOMPARE(accLines[12], line("Accuracy Related penalty", "1,000.00"));
    QCOMPARE(accLines[15], QStringLiteral("Interest runs from the due date, including extensions, of 04/15/2016."));
    shoot(accRel, QStringLiteral("accuracy-related-report"));

    // Detailed interest analysis.
    auto* grid = child<QTableWidget>(detail, "vsGrdIntDetail");
    QCOMPARE(grid->columnCount(), 9);
    const QStringList detailHeadings{QStringLiteral("BEGINNING DATE"),   QStringLiteral("ENDING DATE"),
                                     QStringLiteral("DESCRIPTION"),      QStringLiteral("INTEREST RATE"),
                                     QStringLiteral("BEGINNING TAX & PENALTIES"), QStringLiteral("ACCRUED INTEREST"),
                                     QStringLiteral("DAYS"),             QStringLiteral("INTEREST FACTOR"),
                                     QStringLiteral("INTEREST")};
    for (int c = 0; c < 9; ++c) {
        QCOMPARE(heading(grid, c), detailHeadings[c]);
        const bool right = alignedRight(grid, c);
        QCOMPARE(right, c != 2);
        if (c != 2)
            QCOMPARE(grid->columnWidth(c), grid->columnWidth(0));
    }
    QCOMPARE(grid->columnWidth(2), 2 * grid->columnWidth(0));
    const int last = grid->rowCount() - 1;
    QCOMPARE(cell(grid, last, 0), QStringLiteral("Ending"));
    QCOMPARE(cell(grid, last, 1), QStringLiteral("Interest"));
    QCOMPARE(cell(grid, last, 8), QStringLiteral("160.96"));
    // The first period (from the day after the due date): 11,900.00 for 77
    // days at 3.65 %, a factor of 0.0365 x 77 / 365 = 0.0077.
    bool found = false;
    for (int r = 0; r < last; ++r) {
        if (cell(grid, r, 0) == QStringLiteral("04/16/2016") && cell(grid, r, 1) == QStringLiteral("07/01/2016")) {
            found = true;
            QCOMPARE(cell(grid, r, 3), QStringLiteral("3.6500"));
            QCOMPARE(cell(grid, r, 4), QStringLiteral("11,900.00"));
            QCOMPARE(cell(grid, r, 6), QStringLiteral("77"));
            QCOMPARE(cell(grid, r, 7), QStringLiteral(".007700000"));
            QCOMPARE(cell(grid, r, 8), QStringLiteral("91.63"));
        }
    }
    QVERIFY(found);
    shoot(detail, QStringLiteral("detailed-interest-analysis"));

    // Inputs, with the payments grid.
    QVERIFY(!child<QPushButton>(inputs, "btnDep")->isEnabled());
    QVERIFY(child<QPushButton>(inputs, "btnCharges")->isEnabled());
    QVERIFY(child<QPushButton>(inputs, "btnPmts")->isEnabled());
    QVERIFY(lines(child<QPlainTextEdit>(inputs, "txtIP")).first().startsWith(QStringLiteral("Taxpayer: Harbor Tool & Die, Inc.")));
    shoot(inputs, QStringLiteral("inputs"));
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Partial Payment Inputs"), [](QWidget* dlg) {
            auto* t = child<QTableWidget>(dlg, "vsGrdDispIP");
            QCOMPARE(t->rowCount(), 2);
            const QStringList headings{QStringLiteral("DESC."), QStringLiteral("PAYMENT DATE"),
                                       QStringLiteral("PAYMENT AMOUNT"), QStringLiteral("APPLIED TO TAX"),
                                       QStringLiteral("APPLIED TO PENALTIES"), QStringLiteral("APPLIED TO INTEREST"),
                                       QStringLiteral("METHOD")};
            const QStringList first{QStringLiteral("First payment"), QStringLiteral("12/20/2016"),
                                    QStringLiteral("1,000.00"),      QStringLiteral("900.00"),
                                    QStringLiteral("80.00"),         QStringLiteral("20.00"),
                                    QStringLiteral("T")};
            for (int c = 0; c < 7; ++c) {
                QCOMPARE(heading(t, c), headings[c]);
                QCOMPARE(cell(t, 0, c), first[c]);
            }
            QCOMPARE(cell(t, 1, 6), QStringLiteral("I"));
            shoot(dlg, QStringLiteral("partial-payment-inputs"));
            click(dlg, "btnClose");
        });
        drive.when(QStringLiteral("Other Charge Inputs"), [](QWidget* dlg) {
            auto* t = child<QTableWidget>(dlg, "vsGrdDispIP");
            QCOMPARE(t->rowCount(), 1);
            QCOMPARE(cell(t, 0, 0), QStringLiteral("Addl assessment"));
            QCOMPARE(cell(t, 0, 3), QStringLiteral("500.00"));
            shoot(dlg, QStringLiteral("other-charge-inputs"));
            click(dlg, "btnClose");
        });
        child<QPushButton>(inputs, "btnPmts")->click();
        child<QPushButton>(inputs, "btnCharges")->click();
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }

    // "Print" in the summary window: the report choice with "Setup", then
    // the chosen reports (kept from the display command) to a PDF file.
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Report Choices"), [](QWidget* dlg) {
            QVERIFY(child<QPushButton>(dlg, "btnPrnSetup")->isVisible());
            auto* list = child<QListWidget>(dlg, "chkReport");
            for (int i = 0; i < 6; ++i)
                QCOMPARE(list->item(i)->checkState(), Qt::Checked);
            click(dlg, "btnPdfFile");
            QCOMPARE(child<QLabel>(dlg, "lblPrintTo")->text(), QStringLiteral("PDF file: from-window.pdf"));
            shoot(dlg, QStringLiteral("report-choices-print"));
            click(dlg, "btnOK");
        });
        child<QPushButton>(summary, "btnPrn")->click();
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }
    QVERIFY(QFileInfo(pdfFromWindow).size() > 0);
    const std::vector<std::string> progress{"Printing Inputs...",
                                            "Printing Summary...",
                                            "Printing Detailed Analysis...",
                                            "Printing Failure To File and Pay Analysis...",
                                            "Printing Accuracy Related Penalty Analysis...",
                                            "Printing Done"};
    QCOMPARE(f.notes, progress);
    f.notes.clear();

    // ---- File - Print ----------------------------------------------------------------
    const QString pdf = QString::fromStdString((f.dir / "walk.pdf").string());
    rw::ui::ReportHooks printHooks;
    printHooks.choosePdfFile = [pdf](QWidget*) { return pdf; };
    int setups = 0;
    printHooks.printerSetup = [&setups](QPrinter&, QWidget*) {
        ++setups;
        return false;
    };
    {
        ModalDriver drive;
        drive.when(QStringLiteral("Report Choices"), [](QWidget* dlg) {
            click(dlg, "btnPrnSetup");
            auto* list = child<QListWidget>(dlg, "chkReport");
            list->setCurrentRow(0);
            QTest::keyClick(list, Qt::Key_Space);  // no inputs listing this time
            QCOMPARE(list->item(0)->checkState(), Qt::Unchecked);
            click(dlg, "btnPdfFile");
            click(dlg, "btnOK");
        });
        rw::ui::RunPrintCommand(f.ctx, printHooks);
        QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    }
    QCOMPARE(setups, 1);
    QCOMPARE(f.choice.mask, 62);
    QCOMPARE(f.notes, std::vector<std::string>(progress.begin() + 1, progress.end()));
    QVERIFY(QFileInfo::exists(pdf));
    keepFile(pdf, QStringLiteral("walk.pdf"));
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext is not installed: the printed text is not read back");
    const QString printed = pdfText(pdf);
    QVERIFY(printed.contains(QStringLiteral("Note: Negative amounts are owed to the taxpayer")));
    QVERIFY(printed.contains(QRegularExpression(QStringLiteral("Summary From 4/15/2016 to 12/31/2016"))));
    QVERIFY(printed.contains(QRegularExpression(QStringLiteral("Interest +160\\.96"))));
    QVERIFY(printed.contains(QRegularExpression(QStringLiteral("Accuracy related penalty +1,000\\.00"))));
    QVERIFY(printed.contains(QRegularExpression(QStringLiteral("Pmts allocated to penalties +-2,450\\.00"))));
    QVERIFY(printed.contains(QStringLiteral("Failure To File and/or Pay Analysis")));
    QVERIFY(!printed.contains(QStringLiteral("Optional Second Line: ")));  // the inputs listing was left out
    QVERIFY(printed.contains(QStringLiteral("Page 1")));
}

// A payroll case as entered (payments in the order A, B, C): A pays half of
// the deposit of 1/15/2016 on 2/15/2016, 31 days late, at 10 %: 500.00.
void WalkTest::payrollDepositPenaltyWindow()
{
    rw::Case c = FederalCase(D(1, 31, 2016), D(1, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    c.deposits.clear();
    for (const auto& [due, amount] : {std::pair{D(1, 15, 2016), "10000"}, std::pair{D(2, 15, 2016), "5000"}}) {
        rw::DepositRec d;
        d.dtDepDue = due;
        d.dtDepAssess = D(6, 30, 2016);
        d.cRequired = M(amount);
        c.deposits.push_back(d);
    }
    c.init.nDeposits = 2;
    c.pmts.clear();
    for (const auto& [desc, date, amount] : {std::tuple{"Payment A", D(2, 15, 2016), "5000"},
                                            std::tuple{"Payment B", D(1, 15, 2016), "10000"},
                                            std::tuple{"Payment C", D(3, 20, 2016), "1000"}}) {
        rw::PaymentRec p;
        p.sDesc = desc;
        p.dtPmt = date;
        p.cAmount = M(amount);
        p.cToTax = M(amount);
        p.sMethod = "I";
        c.pmts.push_back(p);
    }
    c.init.nPmts = 3;
    Fixture f(std::move(c));
    f.choice.mask = 33;  // payroll deposit penalties and inputs

    ModalDriver drive;
    drive.when(QStringLiteral("Report Choices"), [](QWidget* dlg) {
        QCOMPARE(child<QListWidget>(dlg, "chkReport")->item(0)->checkState(), Qt::Checked);
        QCOMPARE(child<QListWidget>(dlg, "chkReport")->item(5)->checkState(), Qt::Checked);
        click(dlg, "btnCancel");  // Cancel keeps the choice made before
    });
    rw::ui::RunReportDisplayCommand(f.ctx);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QWidget* w = openWindow("frmRptPRDepPen");
    QVERIFY(w);
    QCOMPARE(w->windowTitle(), QStringLiteral("Payroll Deposit Penalty"));
    QVERIFY(!openWindow("frmSummary"));
    const QStringList text = lines(child<QPlainTextEdit>(w, "txtSumm"));
    auto amt = [](const char* a) { return QString::fromLatin1(a).rightJustified(14); };
    auto row = [&amt](const char* beg, const char* paid, const char* date, const char* days, const char* rate,
                      const char* base, const char* pen) {
        return QStringLiteral("   ") + amt(beg) + QStringLiteral(" ") + amt(paid) + QStringLiteral("  ")
               + QString::fromLatin1(date) + QStringLiteral(" ") + QString::fromLatin1(days).rightJustified(5)
               + QStringLiteral(" ") + QString::fromLatin1(rate).rightJustified(5) + QStringLiteral(" ") + amt(base)
               + QStringLiteral(" ") + amt(pen);
    };
    QVERIFY(text.size() >= 16);
    QCOMPARE(text[2], QStringLiteral("   Payroll Deposit Penalties"));
    QCOMPARE(text[4], QStringLiteral("     BEG. BALANCE                                   PEN"));
    QCOMPARE(text[8], QStringLiteral("   Deposit Due Date: 1/15/2016"));
    QCOMPARE(text[9], row("10,000.00", "5,000.00", "02/15/2016", "31", "10.00", "5,000.00", "500.00"));
    QCOMPARE(text[10], row("5,000.00", "5,000.00", "01/15/2016", "0", "0.00", "5,000.00", "0.00"));
    QCOMPARE(text[12], QStringLiteral("   Deposit Due Date: 2/15/2016"));
    QCOMPARE(text[13], row("5,000.00", "5,000.00", "01/15/2016", "-31", "0.00", "5,000.00", "0.00"));
    QCOMPARE(text[15], QString(66, QChar(u' ')) + QStringLiteral("Total ") + amt("500.00"));
    shoot(w, QStringLiteral("payroll-deposit-penalty"));
    w->close();

    QWidget* inputs = openWindow("frmDispIP");
    QVERIFY(inputs);
    QVERIFY(child<QPushButton>(inputs, "btnDep")->isEnabled());
    QVERIFY(!child<QPushButton>(inputs, "btnCharges")->isEnabled());
    ModalDriver grid;
    grid.when(QStringLiteral("Payroll Deposit Inputs"), [](QWidget* dlg) {
        auto* t = child<QTableWidget>(dlg, "vsGrdDispIP");
        QCOMPARE(t->rowCount(), 2);
        QCOMPARE(heading(t, 0), QStringLiteral("LIABILITY DATE"));
        QCOMPARE(heading(t, 1), QStringLiteral("PENALTY ASSESSMENT DATE"));
        QCOMPARE(heading(t, 2), QStringLiteral("AMOUNT"));
        QCOMPARE(cell(t, 0, 0), QStringLiteral("01/15/2016"));
        QCOMPARE(cell(t, 0, 1), QStringLiteral("06/30/2016"));
        QCOMPARE(cell(t, 0, 2), QStringLiteral("10,000.00"));
        QCOMPARE(cell(t, 1, 2), QStringLiteral("5,000.00"));
        shoot(dlg, QStringLiteral("payroll-deposit-inputs"));
        click(dlg, "btnClose");
    });
    child<QPushButton>(inputs, "btnDep")->click();
    QVERIFY2(grid.finished(), qPrintable(grid.failures.join(u'\n')));
}

// With no printer installed, printing goes to a PDF file, asked for at OK.
void WalkTest::printWithoutPrinterAsksForPdfFile()
{
    if (!QPrinterInfo::availablePrinters().isEmpty())
        QSKIP("a printer is installed here");
    Fixture f(FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000"));
    f.choice.mask = 2;
    const QString pdf = QString::fromStdString((f.dir / "asked.pdf").string());
    int asked = 0;
    rw::ui::ReportHooks hooks;
    hooks.choosePdfFile = [&asked, pdf](QWidget*) {
        ++asked;
        return pdf;
    };
    ModalDriver drive;
    drive.when(QStringLiteral("Report Choices"), [](QWidget* dlg) {
        QCOMPARE(child<QLabel>(dlg, "lblPrintTo")->text(),
                 QStringLiteral("No printer installed: the reports go to a PDF file."));
        click(dlg, "btnOK");
    });
    rw::ui::RunPrintCommand(f.ctx, hooks);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QCOMPARE(asked, 1);
    QVERIFY(QFileInfo(pdf).size() > 0);
    QCOMPARE(f.notes, (std::vector<std::string>{"Printing Summary...", "Printing Done"}));
}

// The printer's own set-up decides where the job goes: here the printer is
// set to write its output to a file, and the reports are painted on that
// printer rather than on a PDF writer of the program's own.
void WalkTest::printThroughThePrinterSetUp()
{
    Fixture f(FederalCase(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10000"));
    f.choice.mask = 3;  // inputs and summary
    const QString out = QString::fromStdString((f.dir / "printer.pdf").string());
    rw::ui::ReportHooks hooks;
    hooks.printerSetup = [out](QPrinter& printer, QWidget*) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(out);
        return true;
    };
    hooks.choosePdfFile = [](QWidget*) {
        QTest::qFail("no PDF file should be asked for", __FILE__, __LINE__);
        return QString();
    };
    ModalDriver drive;
    drive.when(QStringLiteral("Report Choices"), [](QWidget* dlg) {
        click(dlg, "btnPrnSetup");
        QCOMPARE(child<QLabel>(dlg, "lblPrintTo")->text(), QStringLiteral("PDF file: printer.pdf"));
        click(dlg, "btnOK");
    });
    rw::ui::RunPrintCommand(f.ctx, hooks);
    QVERIFY2(drive.finished(), qPrintable(drive.failures.join(u'\n')));
    QVERIFY(QFileInfo(out).size() > 0);
    QCOMPARE(f.notes, (std::vector<std::string>{"Printing Inputs...", "Printing Summary...", "Printing Done"}));
    keepFile(out, QStringLiteral("printer.pdf"));
    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext is not installed: the printed text is not read back");
    const QString printed = pdfText(out);
    QVERIFY(printed.contains(QStringLiteral("Taxpayer: Harbor Tool & Die, Inc.")));
    QVERIFY(printed.contains(QRegularExpression(QStringLiteral("Unpaid tax +10,000\\.00"))));
    QVERIFY(printed.contains(QStringLiteral("Page 2")));
}

QTEST_MAIN(WalkTest)
#include "walk_test.moc"
