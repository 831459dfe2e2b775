// The report windows, "Report Choices" and printing through the report
// commands; the report texts themselves are tests/reports'.

#include "tests/ui/support/windowkit.h"

#include "reports/standardsources.h"
#include "ui/reports/commands.h"

#include <QClipboard>
#include <QFileInfo>
#include <QListWidget>
#include <QPrinter>
#include <QPrinterInfo>

#include <filesystem>
#include <fstream>
#include <set>

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

// Ctrl+C on the table after selecting the block (all of it: Ctrl+A): the
// clipboard, split at line ends and tabs, holds the headings of the block's
// columns on one line and the cells as the table shows them, unpadded.
void CheckCopy(QTableWidget* t, std::optional<QTableWidgetSelectionRange> block)
{
    t->setFocus();
    t->clearSelection();
    if (block)
        t->setRangeSelected(*block, true);
    else
        QTest::keyClick(t, Qt::Key_A, Qt::ControlModifier);
    const QTableWidgetSelectionRange b
        = block.value_or(QTableWidgetSelectionRange(0, 0, t->rowCount() - 1, t->columnCount() - 1));
    QTest::keyClick(t, Qt::Key_C, Qt::ControlModifier);
    QStringList lines = QApplication::clipboard()->text().split(u'\n');
    QCOMPARE(lines.size(), b.rowCount() + 2);  // headings, the rows, after the last line end
    QCOMPARE(lines.takeLast(), QString());
    for (int r = -1; r < b.rowCount(); ++r) {
        const QStringList cells = lines[r + 1].split(u'\t');
        QCOMPARE(cells.size(), b.columnCount());
        for (int c = 0; c < b.columnCount(); ++c) {
            const int column = b.leftColumn() + c;
            const QString shown = r < 0 ? t->horizontalHeaderItem(column)->text().simplified()
                                        : t->item(b.topRow() + r, column)->text().trimmed();
            QCOMPARE(cells[c], shown);
        }
    }
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
        rw::ui::RunReportDisplayCommand(rig.ctx);
        QVERIFY(rig.choice.mask == 63 && expected.size() == 6);
        // Every window open at once, none modal (CompareReportWindow), each
        // in a place of its own within the screen, the summary in front.
        QVERIFY(!QApplication::activeModalWidget());
        std::set<std::pair<int, int>> places;
        for (const rw::ReportWindow& r : expected) {
            QWidget* w = OpenWindow(r.name);
            CompareReportWindow(w, r);
            places.emplace(w->x(), w->y());
            QVERIFY2(w->screen()->availableGeometry().contains(w->geometry()),
                     qPrintable(w->objectName()));
            Shoot(w, r.name.c_str());
        }
        QCOMPARE(places.size(), expected.size());
        QTRY_COMPARE(QApplication::activeWindow(), OpenWindow("frmSummary"));
        for (const auto& [button, kind] : {std::pair{"btnPmts", rw::InputGridKind::Payments},
                                           std::pair{"btnCharges", rw::InputGridKind::Charges},
                                           std::pair{"btnDep", rw::InputGridKind::Deposits}}) {
            const rw::GridData grid = rw::InputsGrid(rig.kase, kind);
            drive.when(grid.caption.c_str(), [&grid](QWidget* d) {
                CompareGrid(Child<QTableWidget>(d, "vsGrdDispIP"), grid);
                CheckCopy(Child<QTableWidget>(d, "vsGrdDispIP"), std::nullopt);
                // It holds only the inputs window, not the other reports.
                QCOMPARE(d->windowModality(), Qt::WindowModal);
                Click(d, "btnClose");
            });
            Click(OpenWindow("frmDispIP"), button);
        }
        RW_VERIFY_DRIVEN(drive);
        for (const char* grid : {"vsGrdIntDetail", "vsGrdDispFailFilePay"}) {
            auto* t = Child<QTableWidget>(OpenWindow(expected[grid[5] == 'I' ? 1 : 2].name), grid);
            CheckCopy(t, std::nullopt);
            CheckCopy(t, QTableWidgetSelectionRange(1, 2, 3, 4));
        }
    }

    // A printer set up to write a file takes the job, its progress in the
    // note line; without a printer OK asks for a file ("PDF File...": the walk).
    // A PDF file written is named, and opened when the user says so.
    void printGoesWhereTheSetUpOrTheUserSays()
    {
        CommandRig rig;
        rig.choice.mask = rw::kRptSummary;
        const QString asked = QString::fromStdString((rig.dir / "asked.pdf").string());
        const QString printed = QString::fromStdString((rig.dir / "printed.pdf").string());
        std::vector<QUrl> opened;
        rw::ui::ReportHooks hooks{.choosePdfFile = [&asked](QWidget*) { return asked; },
                                  .printerSetup =
                                      [&printed](QPrinter& printer, QWidget*) {
                                          printer.setOutputFormat(QPrinter::PdfFormat);
                                          printer.setOutputFileName(printed);
                                          return true;
                                      },
                                  .openFile =
                                      [&opened](const QUrl& url) {
                                          opened.push_back(url);
                                          return true;
                                      }};
        ModalDriver drive;
        drive.when("Report Choices", [](QWidget* d) {
            Click(d, "btnPrnSetup");
            Shoot(d, "dlgRptChoices-print");
            Click(d, "btnOK");
        });
        rig.msgs.answerNext(true);
        rw::ui::RunPrintCommand(rig.ctx, hooks);
        QVERIFY(QFileInfo(printed).size() > 0 && !QFileInfo::exists(asked));
        QVERIFY(rig.notes.size() == 2 && rig.notes.back() == rw::kPrintingDone);
        QCOMPARE(rig.msgs.shown.back().text, "The reports were written to the PDF file\n"
                                                 + printed.toStdString() + "\n\nOpen it now?");
        QVERIFY(opened == std::vector{QUrl::fromLocalFile(printed)});
        if (!QPrinterInfo::availablePrinters().isEmpty())
            QSKIP("a printer is installed here");
        drive.when("Report Choices", Choose(rw::kRptSummary));
        rig.msgs.answerNext(false);
        rw::ui::RunPrintCommand(rig.ctx,
                                {.choosePdfFile = hooks.choosePdfFile, .openFile = hooks.openFile});
        RW_VERIFY_DRIVEN(drive);
        QVERIFY(QFileInfo(asked).size() > 0 && rig.msgs.shown.back().question
                && opened.size() == 1);
        // A file that cannot be written is told, not a fault.
        std::ofstream((rig.dir / "plain").string()) << "a file, not a folder";
        const QString blocked = QString::fromStdString((rig.dir / "plain" / "x.pdf").string());
        drive.when("Report Choices", Choose(rw::kRptSummary));
        OneBoxAfter(rig.msgs, [&rig, &blocked] {
            rw::ui::RunPrintCommand(rig.ctx,
                                    {.choosePdfFile = [&blocked](QWidget*) { return blocked; }});
        });
        RW_VERIFY_DRIVEN(drive);
    }

    // A fault of a report window's "Print", which runs outside any command,
    // goes to the error reporter's hook; the window stays.
    void faultsReachTheReporter()
    {
        CommandRig rig(EveryReportCase());
        int reported = 0;
        const auto fails
            = [](QPrinter&, QWidget*) -> bool { throw rw::Fault(rw::kErrDeviceIO, "Setup"); };
        rw::ui::ReportHooks hooks{.printerSetup = fails,
                                  .reportFault = [&reported](const rw::Fault&) { ++reported; }};
        const auto setup = [](QWidget* d) { Click(d, "btnPrnSetup"); };
        ModalDriver drive;
        drive.when("Report Choices", Choose(rw::kRptSummary));
        rw::ui::RunReportDisplayCommand(rig.ctx, hooks);
        drive.when("Report Choices", setup);
        Click(OpenWindow("frmSummary"), "btnPrn");
        RW_VERIFY_DRIVEN(drive);
        QVERIFY(reported == 1 && OpenWindow("frmSummary"));
    }

    // File - Export: a CSV file for every report the case has, named after
    // the case, in the folder chosen, and a word on what was written; files
    // already there are replaced only when the user agrees; a folder that
    // cannot be written is told.
    void exportWritesAFilePerReport()
    {
        CommandRig rig(EveryReportCase());
        const std::filesystem::path folder = rig.dir / "export";
        std::filesystem::create_directory(folder);
        const auto exportTo = [&rig](const std::filesystem::path& f) {
            rw::ui::RunExportCommand(
                rig.ctx, "/cases/DEMO_INC.INT",
                {.chooseExportFolder = [f](QWidget*) { return QString::fromStdString(f); }});
        };
        OneBoxAfter(rig.msgs, [&] { exportTo(folder); });
        std::set<std::string> names;
        for (const auto& e : std::filesystem::directory_iterator(folder))
            names.insert(e.path().filename().string());
        QCOMPARE(names.size(), 8u);  // summary, four analyses, three lists
        QVERIFY(names.contains("DEMO_INC - Summary.csv")
                && names.contains("DEMO_INC - Payroll Deposits.csv"));
        std::ofstream(folder / "DEMO_INC - Summary.csv") << "kept";
        rig.msgs.answerNext(false);
        OneBoxAfter(rig.msgs, [&] { exportTo(folder); });
        QVERIFY(rig.msgs.shown.back().question
                && QFileInfo(QString::fromStdString(folder / "DEMO_INC - Summary.csv")).size()
                       == 4);
        std::ofstream((rig.dir / "plain").string()) << "a file, not a folder";
        OneBoxAfter(rig.msgs, [&] { exportTo(rig.dir / "plain"); });
    }
};

QTEST_MAIN(ReportsTest)
#include "reports_test.moc"
