// The report windows, "Report Choices" and printing through the report
// commands; the report texts themselves are tests/reports'.

#include "tests/ui/support/windowkit.h"

#include "reports/standardsources.h"
#include "ui/reports/commands.h"

#include <QFileInfo>
#include <QListWidget>
#include <QPrinter>
#include <QPrinterInfo>

#include <fstream>

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
    AddCharge(c, D(2016, 12, 17), {.tax = "400", .penalties = "100"});
    AddPayment(c, D(2016, 12, 20), {.tax = "900", .interest = "20", .penalties = "80"});
    AddDeposit(c, D(2016, 1, 15), "1000", D(2016, 6, 30));
    return c;
}

}  // namespace

class ReportsTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void cleanup()
    {
        for (QWidget* w : QApplication::topLevelWidgets())
            w->close();
    }

    // The choice shown and stored (Cancel keeps it and opens nothing); every
    // window and input list shows what the core produced.
    void choicesAndWindowsShowTheCore()
    {
        CommandRig rig(EveryReportCase());
        rig.choice.mask = rw::kRptSummary | rw::kRptPayroll;
        ModalDriver drive;
        drive.when("Report Choices", [&rig](QWidget* d) {
            auto* list = Child<QListWidget>(d, "chkReport");
            const auto entries = rw::ReportChoiceEntries();
            QCOMPARE(list->count(), static_cast<int>(entries.size()));
            for (int i = 0; i < list->count(); ++i) {
                const rw::ReportChoiceEntry& e = entries[static_cast<std::size_t>(i)];
                QCOMPARE(list->item(i)->text(), QString::fromLatin1(e.caption));
                QCOMPARE(list->item(i)->checkState() == Qt::Checked,
                         (rig.choice.mask & e.value) != 0);
            }
            Shoot(d, "dlgRptChoices");
            Click(d, "btnCancel");
        });
        rw::ui::RunReportDisplayCommand(rig.ctx);
        QVERIFY(rig.choice.mask == (rw::kRptSummary | rw::kRptPayroll)
                && !OpenWindow("frmRptPRDepPen"));
        cleanup();
        const auto expected = rw::ReportWindows(
            63, rig.kase, rw::StandardReportSources(rig.rates, rig.ctx.ftfMinimums));
        drive.when("Report Choices", Choose(63));
        for (const rw::ReportWindow& r : expected)
            if (r.modal)
                drive.when(r.caption.c_str(), [&r](QWidget* w) {
                    CompareReportWindow(w, r);
                    Shoot(w, r.name.c_str());
                    Click(w, "btnClose");
                });
        rw::ui::RunReportDisplayCommand(rig.ctx);
        QVERIFY(rig.choice.mask == 63 && expected.size() == 6);
        for (const rw::ReportWindow& r : expected)
            if (!r.modal) {
                CompareReportWindow(OpenWindow(r.name), r);
                Shoot(OpenWindow(r.name), r.name.c_str());
            }
        for (const auto& [button, kind] : {std::pair{"btnPmts", rw::InputGridKind::Payments},
                                           std::pair{"btnCharges", rw::InputGridKind::Charges},
                                           std::pair{"btnDep", rw::InputGridKind::Deposits}}) {
            const rw::GridData grid = rw::InputsGrid(rig.kase, kind);
            drive.when(grid.caption.c_str(), [&grid](QWidget* d) {
                CompareGrid(Child<QTableWidget>(d, "vsGrdDispIP"), grid);
                Click(d, "btnClose");
            });
            Click(OpenWindow("frmDispIP"), button);
        }
        RW_VERIFY_DRIVEN(drive);
    }

    // A printer set up to write a file takes the job, its progress in the
    // note line; without a printer OK asks for a file ("PDF File...": the walk).
    void printGoesWhereTheSetUpOrTheUserSays()
    {
        CommandRig rig;
        rig.choice.mask = rw::kRptSummary;
        const QString asked = QString::fromStdString((rig.dir / "asked.pdf").string());
        const QString printed = QString::fromStdString((rig.dir / "printed.pdf").string());
        rw::ui::ReportHooks hooks{[&asked](QWidget*) { return asked; },
                                  [&printed](QPrinter& printer, QWidget*) {
                                      printer.setOutputFormat(QPrinter::PdfFormat);
                                      printer.setOutputFileName(printed);
                                      return true;
                                  },
                                  {}};
        ModalDriver drive;
        drive.when("Report Choices", [](QWidget* d) {
            Click(d, "btnPrnSetup");
            Shoot(d, "dlgRptChoices-print");
            Click(d, "btnOK");
        });
        rw::ui::RunPrintCommand(rig.ctx, hooks);
        QVERIFY(QFileInfo(printed).size() > 0 && !QFileInfo::exists(asked));
        QVERIFY(rig.notes.size() == 2 && rig.notes.back() == rw::kPrintingDone);
        if (!QPrinterInfo::availablePrinters().isEmpty())
            QSKIP("a printer is installed here");
        drive.when("Report Choices", Choose(rw::kRptSummary));
        rw::ui::RunPrintCommand(rig.ctx, {hooks.choosePdfFile, {}, {}});
        RW_VERIFY_DRIVEN(drive);
        QVERIFY(QFileInfo(asked).size() > 0);
        // A file that cannot be written is told, not a fault.
        std::ofstream((rig.dir / "plain").string()) << "a file, not a folder";
        const QString blocked = QString::fromStdString((rig.dir / "plain" / "x.pdf").string());
        drive.when("Report Choices", Choose(rw::kRptSummary));
        OneBoxAfter(rig.msgs, [&rig, &blocked] {
            rw::ui::RunPrintCommand(rig.ctx, {[&blocked](QWidget*) { return blocked; }, {}, {}});
        });
        RW_VERIFY_DRIVEN(drive);
    }

    // A fault in the modal window closes it and reaches the caller; one in a
    // window beside the main window goes to the error reporter's hook.
    void faultsReachTheCallerOrTheReporter()
    {
        CommandRig rig(EveryReportCase());
        int reported = 0;
        const auto fails
            = [](QPrinter&, QWidget*) -> bool { throw rw::Fault(rw::kErrDeviceIO, "Setup"); };
        rw::ui::ReportHooks hooks{{}, fails, [&reported](const rw::Fault&) { ++reported; }};
        const auto setup = [](QWidget* d) { Click(d, "btnPrnSetup"); };
        ModalDriver drive;
        drive.when("Report Choices", Choose(rw::kRptFailFilePay | rw::kRptSummary));
        drive.when("Failure To File & Pay Analysis", [](QWidget* w) { Click(w, "btnPrn"); });
        drive.when("Report Choices", setup);
        QVERIFY_THROWS_EXCEPTION(rw::Fault, rw::ui::RunReportDisplayCommand(rig.ctx, hooks));
        QVERIFY(!QApplication::activeModalWidget() && !OpenWindow("frmSummary"));
        drive.when("Report Choices", Choose(rw::kRptSummary));
        rw::ui::RunReportDisplayCommand(rig.ctx, hooks);
        drive.when("Report Choices", setup);
        Click(OpenWindow("frmSummary"), "btnPrn");
        RW_VERIFY_DRIVEN(drive);
        QVERIFY(reported == 1 && OpenWindow("frmSummary"));
    }
};

QTEST_MAIN(ReportsTest)
#include "reports_test.moc"
