// The report windows, "Report Choices" and printing, reached through the
// report commands: each window shows what the reports produce through the
// core (rw::ReportWindows, rw::InputsGrid); the check list shows and stores
// the report choice; the reports are printed where the set-up or the user
// says; a fault reaches the caller. The report texts themselves are checked
// against the expected files in tests/reports.

#include "tests/ui/support/windowkit.h"

#include "reports/standardsources.h"
#include "ui/common/dialogkit.h"
#include "ui/reports/commands.h"

#include <QApplication>
#include <QFileInfo>
#include <QHeaderView>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPrinterInfo>
#include <QTableWidget>
#include <QtTest>

using namespace rwtest;

namespace {

// A case that asks for every report: failure to file and pay, the
// accuracy-related penalty, a charge, a payment and a payroll deposit.
rw::Case EveryReportCase()
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
    rw::InitInputs& in = c.init;
    in.bAnyPenalties = in.bFtoFile = in.bFtoPay = in.bAccRel = in.bPayroll = rw::kYes;
    in.dtFiled = D(2016, 6, 10);
    in.dtFtoFileAssess = in.dtFtoPayAssess = D(2016, 7, 1);
    in.cAccRelAmt = M("5000");
    AddCharge(c, D(2016, 12, 17), {.tax = "400", .penalties = "100", .desc = "Addl assessment"});
    AddPayment(c, D(2016, 12, 20), {.tax = "900", .interest = "20", .penalties = "80", .desc = "First payment"});
    AddDeposit(c, D(2016, 1, 15), "1000", D(2016, 6, 30));
    return c;
}


}  // namespace

class ReportsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void reportChoicesShowAndStoreTheChoice();
    void everyWindowShowsItsReport();
    void inputsListButtonsShowTheirGrids();
    void printGoesWhereTheSetUpOrTheUserSays();
    void faultsReachTheCallerOrTheReporter();
};

void ReportsTest::cleanup()
{
    const auto all = QApplication::topLevelWidgets();
    for (QWidget* w : all)
        if (w->isVisible())
            w->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Each line of the check list is one report of the core's list, checked as
// the stored choice has it; OK stores the checked ones, Cancel keeps the
// choice and the command goes on with it.
void ReportsTest::reportChoicesShowAndStoreTheChoice()
{
    CommandRig rig(EveryReportCase());
    rig.choice.mask = rw::kRptSummary | rw::kRptPayroll;
    ModalDriver drive;
    drive.when(ReportChoices(), [](QWidget* d) {
        const auto entries = rw::ReportChoiceEntries();
        auto* list = Child<QListWidget>(d, "chkReport");
        QCOMPARE(list->count(), static_cast<int>(entries.size()));
        for (int i = 0; i < list->count(); ++i) {
            const rw::ReportChoiceEntry& e = entries[static_cast<std::size_t>(i)];
            QCOMPARE(list->item(i)->text(), QString::fromLatin1(e.caption));
            const bool chosen = e.value == rw::kRptSummary || e.value == rw::kRptPayroll;
            QCOMPARE(list->item(i)->checkState(), chosen ? Qt::Checked : Qt::Unchecked);
        }
        Shoot(d, QStringLiteral("dlgRptChoices"));
        ChooseReports(d, rw::kRptInputs);
        Click(d, "btnCancel");
    });
    rw::ui::RunReportDisplayCommand(rig.ctx);
    RW_VERIFY_DRIVEN(drive);
    QCOMPARE(rig.choice.mask, rw::kRptSummary | rw::kRptPayroll);
    QVERIFY(OpenWindow("frmSummary") && OpenWindow("frmRptPRDepPen") && !OpenWindow("frmDispIP"));
    cleanup();

    drive.when(ReportChoices(), [](QWidget* d) {
        ChooseReports(d, rw::kRptInputs);
        Click(d, "btnOK");
    });
    rw::ui::RunReportDisplayCommand(rig.ctx);
    RW_VERIFY_DRIVEN(drive);
    QCOMPARE(rig.choice.mask, rw::kRptInputs);
    QVERIFY(OpenWindow("frmDispIP") && !OpenWindow("frmSummary"));
}

void ReportsTest::everyWindowShowsItsReport()
{
    CommandRig rig(EveryReportCase());
    const std::vector<rw::ReportWindow> expected =
        rw::ReportWindows(63, rig.kase, rw::StandardReportSources(rig.rates, rig.ctx.ftfMinimums));
    QCOMPARE(expected.size(), std::size_t(6));
    ModalDriver drive;
    drive.when(ReportChoices(), [](QWidget* d) {
        ChooseReports(d, 63);
        Click(d, "btnOK");
    });
    for (const rw::ReportWindow& r : expected)
        if (r.modal)
            drive.when(QString::fromLatin1(r.caption), [&r](QWidget* w) {
                CompareReportWindow(w, r);
                Shoot(w, QString::fromLatin1(r.name));
                Click(w, "btnClose");
            });
    rw::ui::RunReportDisplayCommand(rig.ctx);
    RW_VERIFY_DRIVEN(drive);
    for (const rw::ReportWindow& r : expected) {
        if (r.modal)
            continue;
        QWidget* w = OpenWindow(r.name);
        QVERIFY2(w, r.name.c_str());
        CompareReportWindow(w, r);
        Shoot(w, QString::fromLatin1(r.name));
    }
}

void ReportsTest::inputsListButtonsShowTheirGrids()
{
    CommandRig rig(EveryReportCase());
    rig.choice.mask = rw::kRptInputs;
    ModalDriver drive;
    drive.when(ReportChoices(), [](QWidget* d) { Click(d, "btnOK"); });
    rw::ui::RunReportDisplayCommand(rig.ctx);
    QWidget* inputs = OpenWindow("frmDispIP");
    QVERIFY(inputs);
    const std::pair<const char*, rw::InputGridKind> buttons[] = {{"btnPmts", rw::InputGridKind::Payments},
                                                                 {"btnCharges", rw::InputGridKind::Charges},
                                                                 {"btnDep", rw::InputGridKind::Deposits}};
    for (const auto& [button, kind] : buttons) {
        const rw::GridData grid = rw::InputsGrid(rig.kase, kind);
        drive.when(QString::fromLatin1(grid.caption), [&grid](QWidget* d) {
            CompareGrid(Child<QTableWidget>(d, "vsGrdDispIP"), grid);
            Shoot(d, QStringLiteral("dlgIPGrid"));
            Click(d, "btnClose");
        });
        Click(inputs, button);
    }
    RW_VERIFY_DRIVEN(drive);
}

// "Setup" gives the printer its set-up, "PDF File..." a file; the chosen
// reports are printed there as one job with their progress in the note line.
// A printer set up to write a file takes the job itself; without any printer
// OK asks for the file.
void ReportsTest::printGoesWhereTheSetUpOrTheUserSays()
{
    CommandRig rig;
    rig.choice.mask = rw::kRptInputs | rw::kRptSummary;
    const QString chosen = QString::fromStdString((rig.dir / "chosen.pdf").string());
    const QString printerFile = QString::fromStdString((rig.dir / "printer.pdf").string());
    int asked = 0;
    int setups = 0;
    rw::ui::ReportHooks hooks;
    hooks.choosePdfFile = [&](QWidget*) {
        ++asked;
        return chosen;
    };
    hooks.printerSetup = [&setups](QPrinter&, QWidget*) {
        ++setups;
        return false;
    };
    ModalDriver drive;
    drive.when(ReportChoices(), [](QWidget* d) {
        Click(d, "btnPrnSetup");
        Click(d, "btnPdfFile");
        QVERIFY(Shown(d, "lblPrintTo").contains(QStringLiteral("chosen.pdf")));
        Shoot(d, QStringLiteral("dlgRptChoices-print"));
        Click(d, "btnOK");
    });
    rw::ui::RunPrintCommand(rig.ctx, hooks);
    RW_VERIFY_DRIVEN(drive);
    QVERIFY(setups == 1 && asked == 1 && QFileInfo(chosen).size() > 0);
    const std::vector<std::string> progress{std::string(rw::kPrintingInputs), std::string(rw::kPrintingSummary),
                                            std::string(rw::kPrintingDone)};
    QCOMPARE(rig.notes, progress);

    hooks.printerSetup = [&](QPrinter& printer, QWidget*) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(printerFile);
        return true;
    };
    drive.when(ReportChoices(), [](QWidget* d) {
        Click(d, "btnPrnSetup");
        Click(d, "btnOK");
    });
    rw::ui::RunPrintCommand(rig.ctx, hooks);
    RW_VERIFY_DRIVEN(drive);
    QVERIFY(asked == 1 && QFileInfo(printerFile).size() > 0);

    if (!QPrinterInfo::availablePrinters().isEmpty())
        QSKIP("a printer is installed here");
    QFile::remove(chosen);
    drive.when(ReportChoices(), [](QWidget* d) { Click(d, "btnOK"); });
    rw::ui::RunPrintCommand(rig.ctx, {hooks.choosePdfFile, {}, {}});
    RW_VERIFY_DRIVEN(drive);
    QVERIFY(asked == 2 && QFileInfo(chosen).size() > 0);
}

// A fault met while the modal analysis window prints closes it and reaches
// the display command's caller; one met by a window beside the main window
// goes to the error reporter's hook.
void ReportsTest::faultsReachTheCallerOrTheReporter()
{
    CommandRig rig(EveryReportCase());
    rig.choice.mask = rw::kRptFailFilePay | rw::kRptSummary;
    int reported = 0;
    rw::ui::ReportHooks hooks;
    hooks.printerSetup = [](QPrinter&, QWidget*) -> bool { throw rw::Fault(rw::kErrDeviceIO, "PrinterSetup"); };
    hooks.reportFault = [&reported](const rw::Fault&) { ++reported; };
    const auto setupFails = [](QWidget* d) { Click(d, "btnPrnSetup"); };
    ModalDriver drive;
    drive.when(ReportChoices(), [](QWidget* d) { Click(d, "btnOK"); });
    drive.when(QStringLiteral("Failure To File & Pay Analysis"), [](QWidget* w) { Click(w, "btnPrn"); });
    drive.when(ReportChoices(), setupFails);
    QVERIFY_THROWS_EXCEPTION(rw::Fault, rw::ui::RunReportDisplayCommand(rig.ctx, hooks));
    RW_VERIFY_DRIVEN(drive);
    QVERIFY(!QApplication::activeModalWidget());

    rig.choice.mask = rw::kRptSummary;
    drive.when(ReportChoices(), [](QWidget* d) { Click(d, "btnOK"); });
    rw::ui::RunReportDisplayCommand(rig.ctx, hooks);
    QWidget* summary = OpenWindow("frmSummary");
    QVERIFY(summary);
    drive.when(ReportChoices(), setupFails);
    Click(summary, "btnPrn");
    RW_VERIFY_DRIVEN(drive);
    QCOMPARE(reported, 1);
    QVERIFY(summary->isVisible());
}

QTEST_MAIN(ReportsTest)
#include "reports_test.moc"
