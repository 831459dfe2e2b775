// The main window: the dialog of each entry, the menu state drawn, the
// services of the file commands, the rate alert, help, faults, refusals; and
// one walk through a case, ending in the expected texts of tests/reports.

#include "tests/ui/main/mainwindowrig.h"

#include "casedata/casefile.h"
#include "reports/standardsources.h"
#include "shell/session.h"
#include "ui/main/mainwindow.h"

#include <QAction>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTableWidget>
#include <QToolBar>

#include <algorithm>

#include <fstream>
#include <limits>

using namespace rwtest;

namespace {

// One main window over its own session, installation folder and doubles.
struct Program : MainWindowRig {
    Program() { showActive(); }
    // Control and the key, in the main window made active again.
    void key(Qt::Key k)
    {
        window.activateWindow();
        if (!QTest::qWaitForWindowActive(&window))
            qFatal("the main window did not become active");
        QTest::keyClick(&window, k, Qt::ControlModifier);
    }
    // Triggers the entry; the steps act on the dialogs it opens.
    void trigger(const char* name, ModalDriver& steps)
    {
        action(name)->trigger();
        RW_VERIFY_DRIVEN(steps);
    }
    void trigger(const char* name, const char* title, const ModalDriver::Action& act)
    {
        ModalDriver steps;
        steps.when(title, act);
        trigger(name, steps);
    }
};

// A payroll case with an entry in every list and marks the menus do not show.
rw::Case MarkedCase()
{
    rw::Case c = FederalCase(D(2016, 1, 1), D(2016, 12, 31), "0", D(2016, 4, 30));
    c.init.bPayroll = c.init.bFtoFile = c.init.b6651d1 = c.init.bAccRel = rw::kYes;
    AddPayment(c, D(2016, 2, 10), {.tax = "1000", .method = "I"});
    AddCharge(c, D(2016, 3, 1), {.tax = "100"});
    AddDeposit(c, D(2016, 2, 15), "3000", D(2016, 6, 1));
    return c;
}

// A text's lines with blanks run together, without empty lines and page
// breaks: how a printed page is compared with the text its printer was given.
QStringList Normalised(const QString& text)
{
    QStringList lines;
    for (const QString& line : text.split(QRegularExpression(QStringLiteral("[\n\f]"))))
        if (!line.simplified().isEmpty())
            lines << line.simplified();
    return lines;
}

// Initial Inputs: a name and the dates of a 2016 case, then OK.
ModalDriver::Action EnterCase(const char* name)
{
    return [name](QWidget* d) {
        for (const auto& [field, text] : {std::pair{"txtName", name},
                                          {"txtDueDate", "4/15/2016"},
                                          {"txtStart", "4/15/2016"},
                                          {"txtStop", "12/31/2016"}})
            Put(d, field, text);
        Click(d, "btnOK");
    };
}

QString Expected(const char* file)
{
    QFile f(QStringLiteral(RW_REPORTS_EXPECTED "/") + QString::fromLatin1(file));
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll())
                                       : QStringLiteral("<missing>");
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // Each entry and key opens its dialog; after each command its check mark
    // is what the shell computes from the case, whatever the menu showed.
    void entriesOpenTheirDialogsAndTheMarksAreTheShells()
    {
        Program p;
        p.session.kase = MarkedCase();
        rw::MarkSaved(p.session);
        rw::EnableOutputs(p.session, true);
        rw::Session expected;
        expected.kase = p.session.kase;
        rw::EnableInputs(expected);
        rw::SetPenaltyChecks(expected);
        using M = rw::MenuState;
        const std::tuple<const char*, const char*, bool M::*> entries[]
            = {{"mnuInputsInitial", "Initial Inputs", nullptr},
               {"mnuPenFTPay", "Failure To Pay Inputs", &M::ftPayChecked},
               {"mnuPenFTFile", "Failure To File Penalty Inputs", &M::ftFileChecked},
               {"mnuPenAccuracy", "Accuracy Related Penalty", &M::accuracyChecked},
               {"mnuPenPR", "Payroll Tax Deposit Penalties", &M::payrollChecked},
               {"mnuPenExtended", "Extended Due Date", nullptr},
               {"mnuInputsPayments", "Payments", &M::paymentsChecked},
               {"mnuInputsCharges", "Other Charges", &M::chargesChecked},
               {"mnuOptionsInterest", "Optional Rates", nullptr},
               {"mnuOptionsSuspend", "Suspended Interest Inputs", nullptr},
               {"mnuViewReports", "Report Choices", nullptr},
               {"tlbView", "Report Choices", nullptr},
               {"mnuFilePrint", "Report Choices", nullptr},
               {"mnuHelpAbout", "About Ratewright", nullptr},
               {"mnuFileNew", "Initial Inputs", nullptr}};
        for (const auto& [entry, title, mark] : entries) {
            if (mark)
                p.session.menus.*mark = !(expected.menus.*mark);
            p.window.refresh();
            ModalDriver steps;
            steps.when(title, Reject);
            if (mark == &M::accuracyChecked)  // the penalty is on: the day interest runs from
                steps.when("Extended Due Date", Reject);
            p.msgs.answerSaveNext(rw::SaveAnswer::DontSave);  // New
            p.trigger(entry, steps);
            QVERIFY2(!mark || p.action(entry)->isChecked() == expected.menus.*mark, entry);
        }
        QCOMPARE(p.program.ends, 0);
    }

    void menusAndToolBarDrawTheMenuState()
    {
        Program p;
        using M = rw::MenuState;
        const auto enabled = &QAction::isEnabled, checked = &QAction::isChecked,
                   visible = &QAction::isVisible;
        const std::tuple<const char*, bool M::*, bool (QAction::*)() const> drawn[]
            = {{"mnuFileSave", &M::saveEnabled, enabled},
               {"mnuFileSaveAs", &M::saveAsEnabled, enabled},
               {"mnuFilePrint", &M::printEnabled, enabled},
               {"mnuFileExport", &M::printEnabled, enabled},
               {"mnuViewReports", &M::reportsEnabled, enabled},
               {"mnuInputsInitial", &M::initialInputsEnabled, enabled},
               {"mnuInputsInitial", &M::initialInputsChecked, checked},
               {"mnuOptionsInterest", &M::interestRatesChecked, checked},
               {"mnuOptionsSuspend", &M::suspendChecked, checked},
               {"mnuShowToolBar", &M::showToolBarChecked, checked},
               {"mnuShowToolTips", &M::showToolTipsChecked, checked},
               {"tlbSave", &M::saveButtonVisible, visible},
               {"tlbPrint", &M::printButtonVisible, visible},
               {"tlbView", &M::viewButtonVisible, visible}};
        for (const auto& [entry, flag, shows] : drawn)
            for (const bool on : {true, false}) {
                p.session.menus.*flag = on;
                p.window.refresh();
                QVERIFY2((p.action(entry)->*shows)() == on, entry);
            }
        auto* toolBar = p.window.findChild<QToolBar*>();
        QVERIFY(!toolBar->isVisible());  // showToolBarChecked was left off
        p.action("mnuShowToolBar")->trigger();
        QVERIFY(p.session.menus.showToolBarChecked && toolBar->isVisible());
        p.session.menus.note = "Next";
        p.window.refresh();
        Shoot(&p.window, "frmMain");
        Q_EMIT p.window.findChild<QMenu*>(QStringLiteral("mnuHelp"))->aboutToShow();
        QCOMPARE(Shown(&p.window, "lblNote"), QStringLiteral("Next"));  // Help keeps the note
        Q_EMIT p.window.findChild<QMenu*>(QStringLiteral("mnuFile"))->aboutToShow();
        QCOMPARE(Shown(&p.window, "lblNote"), QString());
    }

    // New runs Initial Inputs and keeps what OK stored; Save As and Open ask
    // the file dialogs; closing with unsaved changes asks once, then ends.
    void fileCommandsGoThroughTheServices()
    {
        Program p;
        p.trigger("mnuFileNew", "Initial Inputs", EnterCase("Lee Example"));
        QVERIFY(p.session.kase.init.sName.is("Lee Example")
                && exists(p.session.paths.recoveryCopy()));
        const std::string saved = (p.folder.tmp / "SAVED.INT").string(),
                          opened = (p.folder.tmp / "OTHER.INT").string();
        QVERIFY(p.window.windowTitle().endsWith(QStringLiteral(" - UNTITLED.INT*")));
        p.files.saves.push_back(saved);
        p.action("mnuFileSaveAs")->trigger();
        QVERIFY(std::filesystem::exists(saved)
                && p.window.windowTitle().endsWith(QStringLiteral(" - SAVED.INT")));
        rw::WriteCase(opened, MarkedCase());
        p.files.opens.push_back(opened);
        p.trigger("mnuFileOpen", "Initial Inputs", Reject);
        QVERIFY(p.session.kase == MarkedCase());
        // The recent files, newest first, reopen a case.
        auto* recent = p.window.findChild<QMenu*>(QStringLiteral("mnuFileRecent"));
        QCOMPARE(recent->actions().size(), 2);
        QCOMPARE(recent->actions().at(1)->text(), QStringLiteral("&2 SAVED.INT"));
        p.trigger("mnuRecent2", "Initial Inputs", Reject);
        QVERIFY(p.session.kase.init.sName.is("Lee Example"));
    }

    // With unsaved changes, New, Open, Exit and the close box ask first:
    // Cancel, or Save whose Save As is cancelled, leaves the case and the
    // program as they were; Don't Save goes on.
    void commandsThatWouldLoseTheCaseAskFirst()
    {
        Program p;
        p.session.kase = MarkedCase();
        rw::NoteCaseChanges(p.session, p.msgs);
        p.window.refresh();
        const auto closeBox = [&p] { p.window.close(); };
        const std::pair<const char*, std::function<void()>> commands[]
            = {{"close box", closeBox},
               {"mnuFileExit", [&p] { p.action("mnuFileExit")->trigger(); }},
               {"Ctrl+Q", [&p] { p.key(Qt::Key_Q); }},
               {"mnuFileNew", [&p] { p.action("mnuFileNew")->trigger(); }},
               {"tlbOpen", [&p] { p.action("tlbOpen")->trigger(); }}};
        for (const auto& [name, command] : commands)
            for (const rw::SaveAnswer answer : {rw::SaveAnswer::Cancel, rw::SaveAnswer::Save}) {
                p.msgs.clear();
                p.msgs.answerSaveNext(answer);  // Save: Save As is cancelled
                command();
                QVERIFY2(p.msgs.shown.size() == 1
                             && p.msgs.shown[0].text == "Save changes to UNTITLED.INT?",
                         name);
                QVERIFY2(p.window.isVisible() && !p.window.programEnded(), name);
                QVERIFY2(p.session.kase == MarkedCase() && p.session.gbSaved == rw::kNo, name);
            }
        p.msgs.answerSaveNext(rw::SaveAnswer::DontSave);
        closeBox();
        QVERIFY(p.program.ends == 1 && p.window.programEnded());
    }

    // Changes made outside Initial Inputs mark the case unsaved as well: an
    // option, a payment added to its list, a penalty; saving clears the mark.
    void everyAcceptedChangeMarksTheCaseUnsaved()
    {
        Program p;
        p.session.kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
        p.session.gsFileName = (p.folder.tmp / "S.INT").string();
        rw::MarkSaved(p.session);
        rw::EnableOutputs(p.session, true);
        rw::EnableSave(p.session, true);
        p.window.refresh();
        const auto unsaved = [&p] { return p.window.windowTitle().endsWith(QLatin1Char('*')); };
        const auto save = [&p] { p.key(Qt::Key_S); };

        p.trigger("mnuOptionsSuspend", "Suspended Interest Inputs", [](QWidget* d) {
            Type(d, "CSdtIntSuspend", "6/1/2016");
            Type(d, "CSdtRestart", "7/1/2016");
            Click(d, "btnOK");
        });
        QVERIFY(unsaved() && p.action("mnuOptionsSuspend")->isChecked());
        QVERIFY(rw::ReadCaseFile(p.session.paths.recoveryCopy().string()).kase == p.session.kase);
        save();
        QVERIFY(!unsaved() && rw::ReadCaseFile(p.session.gsFileName).kase == p.session.kase);

        ModalDriver payment;
        payment.when("Payments", [](QWidget* l) {
            Click(l, "btnAdd");
            Click(l, "btnClose");
        });
        payment.when("Payment Information", [](QWidget* d) {
            Type(d, "CSdtPmt", "8/1/2016");
            Leave(d, "CSdtPmt");
            Type(d, "CScurPmt", "500");
            Leave(d, "CScurPmt");
            Click(d, "btnOK");
        });
        p.trigger("mnuInputsPayments", payment);
        QVERIFY(unsaved() && p.session.kase.init.nPmts == 1);
        save();

        p.trigger("mnuPenFTPay", "Failure To Pay Inputs", [](QWidget* d) {
            Put(d, "radCalcPen", "Yes");
            Type(d, "txtAssess", "5/1/2016");
            Leave(d, "txtAssess");
            Click(d, "btnOK");
        });
        QVERIFY(unsaved() && p.action("mnuPenFTPay")->isChecked());
    }

    // A system-wide installation: the program starts, keeps its recovery
    // copy and saves without writing beside itself.
    void theInstallationFolderIsOnlyRead()
    {
        InstallFolder folder;
        const auto listing = [&folder] {
            std::vector<std::filesystem::path> names;
            for (const auto& e : std::filesystem::directory_iterator(folder.tmp / "install"))
                names.push_back(e.path());
            std::ranges::sort(names);
            return names;
        };
        const auto installed = listing();
        std::filesystem::permissions(folder.tmp / "install", std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::remove);
        Program p;
        p.trigger("mnuFileNew", "Initial Inputs", EnterCase("Lee Example"));
        p.files.saves.push_back((folder.tmp / "LEE.INT").string());
        p.action("mnuFileSaveAs")->trigger();
        std::filesystem::permissions(folder.tmp / "install", std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
        QVERIFY(p.msgs.shown.empty() && !p.program.ends);
        QVERIFY(std::filesystem::exists(folder.tmp / "LEE.INT")
                && std::filesystem::exists(p.session.paths.recoveryCopy()));
        QVERIFY(listing() == installed);
    }

    // The standard shortcuts stand in the menus.
    void standardShortcuts()
    {
        Program p;
        const std::pair<const char*, QKeySequence> keys[]
            = {{"mnuFileNew", QKeySequence(QKeySequence::New)},
               {"mnuFileOpen", QKeySequence(QKeySequence::Open)},
               {"mnuFileSave", QKeySequence(QKeySequence::Save)},
               {"mnuFileSaveAs", QKeySequence(QStringLiteral("Ctrl+Shift+S"))},
               {"mnuFilePrint", QKeySequence(QKeySequence::Print)},
               {"mnuFileExit", QKeySequence(QStringLiteral("Ctrl+Q"))},
               {"mnuHelpContents", QKeySequence(QStringLiteral("F1"))}};
        for (const auto& [entry, key] : keys)
            QVERIFY2(p.action(entry)->shortcut() == key, entry);
    }

    // Help, the About box and "Update Alert" (over Initial Inputs, for a stop
    // date past the rates) through the desktop; the alert ends the program.
    void helpAboutAndTheUpdateAlert()
    {
        Program p;
        OneBoxAfter(p.msgs, [&p] { p.action("mnuHelpContents")->trigger(); });
        std::ofstream(p.session.paths.helpFile()) << "%PDF-1.4\n";
        p.action("tlbHelp")->trigger();
        QVERIFY(p.desktop.documents == std::vector{p.session.paths.helpFile()});
        OneBoxAfter(p.msgs, [&p] { p.action("mnuHelpOnHelp")->trigger(); });
        p.trigger("mnuHelpAbout", "About Ratewright", [&p](QWidget* d) {
            QCOMPARE(Shown(d, "lblDescription"),
                     QString::fromLatin1(p.session.release.description));
            QVERIFY(Shown(d, "lblRelease").contains(QString::fromLatin1(p.session.release.name)));
            Shoot(d, "dlgAbout");
            Click(d, "btnHomePage");
            Click(d, "btnRunProgram");
        });
        ModalDriver steps;
        steps.when("Initial Inputs", [](QWidget* d) {
            Type(d, "txtStop", "4/1/2027");
            Leave(d, "txtStop");
        });
        steps.when("Update Alert", [](QWidget* a) {
            QVERIFY(!Shown(a, "lblUpdateMessage").isEmpty());
            Shoot(a, "frmGetUpdate");
            Click(a, "OKButton");
            Click(a, "btnExitDialog");
        });
        p.trigger("mnuFileNew", steps);
        QVERIFY(p.desktop.urls.size() == 2 && p.window.programEnded());
    }

    // A fault in a dialog's handler closes the dialog and reaches the command
    // boundary: the error reporter asks its question and ends the program.
    void faultInADialogGoesToTheErrorReporter()
    {
        Program p;
        p.trigger("mnuOptionsSuspend", "Suspended Interest Inputs", [&p](QWidget* d) {
            Type(d, "CSdtRestart", "13/45/2016");
            p.msgs.failNext = true;
            Leave(d, "CSdtRestart");  // its check shows a box, which fails
        });
        QVERIFY(p.msgs.shown.back().question && p.program.ends == 1
                && !QApplication::activeModalWidget());
    }

    // A computation the rates cannot support is refused with a message: no
    // report opens, the program runs on, the case stays.
    void refusedComputationsLeaveTheProgramAndTheCase()
    {
        const float none = std::numeric_limits<float>::quiet_NaN();
        const std::tuple<const char*, const char*, rw::RateTable> refused[]
            = {{"FL  ", "100", {Row(D(2018, 1, 1), D(2018, 12, 31), none, none)}},
               {"AR  ", "100", {Row(D(2018, 6, 1), D(2018, 12, 31), 0.10f)}},
               {"US  ", "100", {Row(D(2018, 1, 1), D(2018, 6, 30), 0.07f)}},
               {"MO  ", "-100", {Row(D(2018, 1, 1), D(2018, 12, 31), 0.05f, none)}}};
        for (const auto& [authority, balance, rates] : refused) {
            Program p;
            p.session.kase = FederalCase(D(2018, 1, 1), D(2018, 12, 31), balance);
            p.session.kase.init.sTaxAuth.assign(authority);
            p.session.gRates = rates;
            p.session.gbSaved = rw::kNo;
            rw::EnableOutputs(p.session, true);
            p.window.refresh();
            const rw::Case before = p.session.kase;
            p.trigger("mnuViewReports", "Report Choices", Choose(rw::kRptSummary));
            QCOMPARE(p.msgs.shown.back().title, std::string("Interest Cannot Be Computed"));
            QVERIFY(!p.program.ends && p.session.gbSaved == rw::kNo && !OpenWindow("frmSummary"));
            QVERIFY(p.session.kase == before);
        }
    }

    // The case of tests/reports/newcase entered, its inputs printed (to a file
    // chosen in the file dialog) and shown as the expected texts have them.
    void walkThroughACase()
    {
        Program p;
        p.trigger("mnuFileNew", "Initial Inputs", [](QWidget* d) {
            for (const auto& [field, text] : {std::pair{"txtName", "Jordan A. Example"},
                                              {"txt2ndLine", "Form 1040, tax year 2015"},
                                              {"txtDueDate", "4/15/2016"},
                                              {"txtStart", "4/15/2016"},
                                              {"txtStop", "12/31/2016"},
                                              {"txtInitBal", "10,000.00"}})
                Put(d, field, text);
            Click(d, "btnOK");
        });
        const QString pdf = QString::fromStdString((p.folder.tmp / "inputs.pdf").string());
        ModalDriver steps;
        steps.when("Report Choices", [](QWidget* d) {
            ChooseReports(d, rw::kRptInputs);
            Click(d, "btnPdfFile");
            Click(d, "btnOK");
        });
        steps.when("Print Reports to a PDF File", [&pdf](QWidget* d) {
            Type(d, "fileNameEdit", pdf.toStdString());
            qobject_cast<QDialog*>(d)->accept();
        });
        p.trigger("mnuFilePrint", steps);
        QCOMPARE(p.session.menus.note, std::string(rw::kPrintingDone));
        // The windows name the release in use and today as the day prepared.
        const auto summary = rw::ReportWindows(
            rw::kRptSummary, p.session.kase,
            rw::StandardReportSources(
                p.session.gRates, p.session.release.ftfMinimums,
                rw::ProvenanceOf(p.session.release, rw::SystemClock().today())));
        p.trigger("mnuViewReports", "Report Choices", Choose(rw::kRptInputs | rw::kRptSummary));
        const QString inputs = Shown(OpenWindow("frmDispIP"), "txtIP");
        QVERIFY(inputs.startsWith(AsShown(Expected("newcase/inputs-display.txt").toStdString())));
        QVERIFY(inputs.contains(QStringLiteral("\nRates: ")
                                + QString::fromStdString(p.session.release.name)));
        CompareReportWindow(OpenWindow("frmSummary"), summary.at(0));
        Shoot(OpenWindow("frmSummary"), "walk-summary");
        if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
            QSKIP("pdftotext is not installed: the printed inputs are not read back");
        QProcess pdftotext;
        pdftotext.start(QStringLiteral("pdftotext"),
                        {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
        QVERIFY(pdftotext.waitForFinished(20000));
        // The written-out pages were printed without a release or a day.
        QStringList printed = Normalised(QString::fromUtf8(pdftotext.readAllStandardOutput()));
        QCOMPARE(printed.removeIf([](const QString& l) {
            return l.startsWith(QStringLiteral("Rates: "))
                   || l.startsWith(QStringLiteral("Prepared: "));
        }),
                 2);
        QCOMPARE(printed, Normalised(Expected("newcase/inputs-print.txt")));
    }

    // Worked examples of Publication 505 typed into the program as a practitioner would; the
    // published penalty shows in the analysis window, the summary and the overview.
    // - (2006), Figure 4-B, Regular Installment Method (Ben Brown, 2005): tax 7,031, prior
    //   year 6,116, 3,228 withheld, 1,000 paid on 9/2/2005 and on 1/12/2006; Form 2210
    //   line 31: 68.51.
    // - (2008), Figure 4-C, Annualized Income Method (Laura Maple, 2007): the Schedule AI
    //   installments 0, 140, 1,169 and 1,867 typed in, 1,500 withheld, 100 paid 8/15/2007
    //   and 500 on 12/3/2007; Form 2210 line 31: 20.18.
    void thePublishedEstimatedTaxExamplesTypedIn()
    {
        using Entries = std::vector<std::pair<const char*, const char*>>;
        const struct {
            const char* name;
            const char* due;  // the return's: the case starts on it
            std::vector<const char*> checked;
            Entries fields;
            Entries payments;
            const char* installment2;  // its row: Form 2210 lines 18, 23, 26 and 25
            const char* total;
        } examples[] = {
            {"Ben Brown",
             "4/15/2006",
             {"chkPriorUsable"},
             {{"txtTaxYear", "2005"},
              {"txtCurrentTax", "7,031"},
              {"txtPriorTax", "6116"},
              {"txtWithholding", "3,228.00"}},
             {{"9/2/2005", "1000"}, {"1/12/2006", "1,000.00"}},
             "2 06/15/2005 1,529.00 85.00 0.00 1,444.00",
             "68.51"},
            {"Laura Maple",
             "4/15/2008",
             {"chkOwnInstallments"},
             {{"txtTaxYear", "2007"},
              {"txtCurrentTax", "3600"},
              {"txtWithholding", "1,500"},
              {"txtInstallment1", "0"},
              {"txtInstallment2", "140"},
              {"txtInstallment3", "1,169.00"},
              {"txtInstallment4", "1867"}},
             {{"8/15/2007", "100"}, {"12/3/2007", "500"}},
             "2 06/15/2007 140.00 750.00 610.00 0.00",
             "20.18"},
        };
        for (const auto& e : examples) {
            Program p;
            p.trigger("mnuFileNew", "Initial Inputs", [&e](QWidget* d) {
                for (const auto& [field, text] : {std::pair{"txtName", e.name},
                                                  {"txtDueDate", e.due},
                                                  {"txtStart", e.due},
                                                  {"txtStop", "12/31/2010"},
                                                  {"txtInitBal", "1,000.00"}})
                    Put(d, field, text);
                Click(d, "btnOK");
            });
            p.trigger("mnuPenEstTax", "Estimated Tax", [&e](QWidget* d) {
                Put(d, "radCalcPen", "Yes");
                for (const char* box : e.checked)
                    Put(d, box, "x");
                for (const auto& [field, text] : e.fields) {
                    Type(d, field, text);
                    Leave(d, field);
                }
                for (std::size_t i = 0; i < e.payments.size(); ++i) {
                    if (i > 0)
                        Click(d, "btnPayAdd");
                    const std::string row = "txtPay" + std::to_string(i);
                    Type(d, (row + "Date").c_str(), e.payments[i].first);
                    Type(d, (row + "Amt").c_str(), e.payments[i].second);
                }
                Click(d, "btnOK");
            });
            QVERIFY2(p.msgs.shown.empty() && p.session.kase.estTax.on, e.name);
            p.trigger("mnuViewReports", "Report Choices", Choose(rw::kRptEstTax | rw::kRptSummary));
            const QString total = QString::fromLatin1(e.total).replace(u'.', QStringLiteral("\\."));
            const QString analysis
                = OpenWindow("frmRptEstTax")->findChild<QPlainTextEdit*>()->toPlainText();
            QVERIFY2(analysis.contains(QRegularExpression(
                         QStringLiteral("Total Estimated Tax Penalty +") + total + u'\n')),
                     qPrintable(analysis));
            QVERIFY2(Normalised(analysis).contains(QString::fromLatin1(e.installment2)),
                     qPrintable(analysis));
            Shoot(OpenWindow("frmRptEstTax"), (std::string("esttax-") + e.name).c_str());
            const QString summary
                = OpenWindow("frmSummary")->findChild<QPlainTextEdit*>()->toPlainText();
            QVERIFY2(summary.contains(
                         QRegularExpression(QStringLiteral("Estimated tax penalty +") + total)),
                     qPrintable(summary));
            auto* figures = Child<QTableWidget>(&p.window, "ovFigures");
            QStringList shown;
            for (int row = 0; row < figures->rowCount(); ++row)
                shown << figures->item(row, 0)->text() + QLatin1Char('=')
                             + figures->item(row, 2)->text();
            QVERIFY2(shown.contains(QStringLiteral("Estimated tax penalty=")
                                    + QString::fromLatin1(e.total)),
                     qPrintable(shown.join(u',')));
            for (QWidget* w : QApplication::topLevelWidgets())
                if (w != &p.window && w->isVisible())
                    w->close();
        }
    }
};

QTEST_MAIN(MainWindowTest)
#include "mainwindow_test.moc"
