// The main window: which menu entry or key opens which dialog, the menus and
// tool bar drawn from the session's menu state (the check marks being the
// shell's, from the case), the file commands through the shell's services,
// the rate alert, help and the About box, faults and refusals; and one walk
// through a case entered in the real dialogs, shown and printed, ending in
// the expected report texts of tests/reports and in what the core produces.

#include "tests/ui/support/windowkit.h"

#include "casedata/casefile.h"
#include "reports/standardsources.h"
#include "shell/session.h"
#include "ui/main/mainwindow.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QToolBar>
#include <QtTest>

#include <fstream>
#include <limits>

using namespace rwtest;

namespace {

// One main window over its own session, installation folder and doubles,
// started as the program starts.
struct Program {
    InstallFolder folder;
    rw::Session session;
    FaultingMessages msgs;
    ScriptedFiles files;
    RecordingProgram program;
    RecordingDesktop desktop;
    std::unique_ptr<rw::ui::MainWindow> window;

    Program()
    {
        window = std::make_unique<rw::ui::MainWindow>(session, rw::ui::MainWindowServices{msgs, files, program, desktop});
        if (!window->startUp(folder.paths(), "2.6.1"))
            qFatal("the program did not start");
        window->show();
        (void)QTest::qWaitForWindowActive(window.get());
    }
    QAction* action(const char* name)
    {
        auto* a = window->findChild<QAction*>(QString::fromLatin1(name));
        if (!a)
            qFatal("no action %s", name);
        return a;
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
        steps.when(QString::fromLatin1(title), act);
        trigger(name, steps);
    }
};

void Reject(QWidget* d)
{
    qobject_cast<QDialog*>(d)->reject();
}

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

// Lines of a text with blanks run together, empty lines and page breaks left
// out: how a printed page is compared with the text its printer was given.
QStringList Normalised(const QString& text)
{
    QStringList lines;
    for (const QString& line : text.split(QRegularExpression(QStringLiteral("[\n\f]"))))
        if (const QString l = line.simplified(); !l.isEmpty())
            lines << l;
    return lines;
}

QString Expected(const char* file)
{
    QFile f(QStringLiteral(RW_REPORTS_EXPECTED "/") + QString::fromLatin1(file));
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QStringLiteral("<missing>");
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void entriesAndKeysOpenTheirDialogs();
    void marksAfterACommandAreTheShells();
    void menusAndToolBarDrawTheMenuState();
    void fileCommandsGoThroughTheServices();
    void rateAlertsOpenTheUpdateAlert();
    void helpAboutAndUnknownKeys();
    void faultInADialogGoesToTheErrorReporter();
    void refusedComputationsLeaveTheProgramAndTheCase();
    void walkThroughACase();
};

void MainWindowTest::entriesAndKeysOpenTheirDialogs()
{
    Program p;
    p.session.kase = MarkedCase();
    p.session.kase.init.bAccRel = rw::kNo;  // no Extended Due Date after Accuracy Related
    rw::EnableOutputs(p.session, true);
    p.window->refresh();
    const std::pair<const char*, const char*> opens[] = {
        {"mnuInputsInitial", "Initial Inputs"}, {"mnuPenFTPay", "Failure To Pay Inputs"},
        {"mnuPenFTFile", "Failure To File Penalty Inputs"}, {"mnuPenAccuracy", "Accuracy Related Penalty"},
        {"mnuPenPR", "Payroll Tax Deposit Penalties"}, {"mnuPenExtended", "Extended Due Date"},
        {"mnuInputsPayments", "Payments"}, {"mnuInputsCharges", "Other Charges"},
        {"mnuOptionsInterest", "Optional Rates"}, {"mnuOptionsSuspend", "Suspended Interest Inputs"},
        {"mnuViewReports", "Report Choices"}, {"tlbView", "Report Choices"}, {"mnuFilePrint", "Report Choices"},
        {"tlbPrint", "Report Choices"}, {"mnuHelpAbout", "About Ratewright"}, {"mnuFileNew", "Initial Inputs"},
        {"tlbNew", "Initial Inputs"}};
    for (const auto& [entry, title] : opens) {
        p.trigger(entry, title, Reject);
        QVERIFY2(!p.program.ends, entry);
    }
}

// After each command the marks are what the shell computes from the case,
// whatever the menus showed before.
void MainWindowTest::marksAfterACommandAreTheShells()
{
    Program p;
    p.session.kase = MarkedCase();
    rw::Session expected;
    expected.kase = p.session.kase;
    rw::EnableInputs(expected);
    rw::SetPenaltyChecks(expected);
    struct Mark {
        const char* entry;
        const char* title;
        bool rw::MenuState::*mark;
    };
    const Mark marks[] = {{"mnuInputsPayments", "Payments", &rw::MenuState::paymentsChecked},
                          {"mnuInputsCharges", "Other Charges", &rw::MenuState::chargesChecked},
                          {"mnuPenFTPay", "Failure To Pay Inputs", &rw::MenuState::ftPayChecked},
                          {"mnuPenFTFile", "Failure To File Penalty Inputs", &rw::MenuState::ftFileChecked},
                          {"mnuPenAccuracy", "Accuracy Related Penalty", &rw::MenuState::accuracyChecked},
                          {"mnuPenPR", "Payroll Tax Deposit Penalties", &rw::MenuState::payrollChecked}};
    for (const Mark& m : marks) {
        QVERIFY(expected.menus.*m.mark);
        p.session.menus.*m.mark = false;
        p.window->refresh();
        ModalDriver steps;
        steps.when(QString::fromLatin1(m.title), Reject);
        if (m.mark == &rw::MenuState::accuracyChecked)
            steps.when(QStringLiteral("Extended Due Date"), Reject);
        p.trigger(m.entry, steps);
        QVERIFY2(p.action(m.entry)->isChecked(), m.entry);
    }
}

void MainWindowTest::menusAndToolBarDrawTheMenuState()
{
    Program p;
    using M = rw::MenuState;
    struct Drawn {
        const char* action;
        bool M::*flag;
        bool (QAction::*shows)() const;
    };
    const Drawn drawn[] = {
        {"mnuFileSave", &M::saveEnabled, &QAction::isEnabled}, {"mnuFileSaveAs", &M::saveAsEnabled, &QAction::isEnabled},
        {"mnuFilePrint", &M::printEnabled, &QAction::isEnabled}, {"mnuViewReports", &M::reportsEnabled, &QAction::isEnabled},
        {"mnuInputsInitial", &M::initialInputsEnabled, &QAction::isEnabled},
        {"mnuInputsInitial", &M::initialInputsChecked, &QAction::isChecked},
        {"mnuInputsPayments", &M::paymentsChecked, &QAction::isChecked},
        {"mnuInputsCharges", &M::chargesChecked, &QAction::isChecked}, {"mnuPenFTPay", &M::ftPayChecked, &QAction::isChecked},
        {"mnuPenFTFile", &M::ftFileChecked, &QAction::isChecked}, {"mnuPenAccuracy", &M::accuracyChecked, &QAction::isChecked},
        {"mnuPenPR", &M::payrollChecked, &QAction::isChecked},
        {"mnuOptionsInterest", &M::interestRatesChecked, &QAction::isChecked},
        {"mnuOptionsSuspend", &M::suspendChecked, &QAction::isChecked},
        {"mnuShowToolBar", &M::showToolBarChecked, &QAction::isChecked},
        {"mnuShowToolTips", &M::showToolTipsChecked, &QAction::isChecked},
        {"tlbSave", &M::saveButtonVisible, &QAction::isVisible}, {"tlbPrint", &M::printButtonVisible, &QAction::isVisible},
        {"tlbView", &M::viewButtonVisible, &QAction::isVisible}};
    for (const Drawn& d : drawn)
        for (const bool on : {true, false}) {
            p.session.menus.*d.flag = on;
            p.window->refresh();
            QVERIFY2((p.action(d.action)->*d.shows)() == on, d.action);
        }
    QVERIFY(!p.window->findChild<QToolBar*>()->isVisible());  // showToolBarChecked left off
    p.action("mnuShowToolBar")->trigger();
    QVERIFY(p.session.menus.showToolBarChecked && p.window->findChild<QToolBar*>()->isVisible());
    p.session.menus.note = "Next";
    p.session.title = "Case";
    p.window->refresh();
    QCOMPARE(Shown(p.window.get(), "lblNote"), QStringLiteral("Next"));
    QCOMPARE(p.window->windowTitle(), QStringLiteral("Case"));
    Q_EMIT p.window->findChild<QMenu*>(QStringLiteral("mnuHelp"))->aboutToShow();
    QCOMPARE(Shown(p.window.get(), "lblNote"), QStringLiteral("Next"));
    Q_EMIT p.window->findChild<QMenu*>(QStringLiteral("mnuFile"))->aboutToShow();
    QCOMPARE(Shown(p.window.get(), "lblNote"), QString());
    Shoot(p.window.get(), QStringLiteral("frmMain"));
}

// New runs Initial Inputs and stores what OK stored; Save As and Open ask
// the file dialogs; closing with unsaved changes asks once, then ends.
void MainWindowTest::fileCommandsGoThroughTheServices()
{
    Program p;
    p.trigger("mnuFileNew", "Initial Inputs", [](QWidget* d) {
        Type(d, "txtName", QStringLiteral("Lee Example"));
        Click(d, "btnOK");
    });
    QVERIFY(p.session.kase.init.sName.is("Lee Example"));
    QVERIFY(std::filesystem::exists(p.session.paths.recoveryCopy()));
    const std::string saved = (p.folder / "SAVED.INT").string();
    p.files.saves.push_back(saved);
    p.action("mnuFileSaveAs")->trigger();
    QVERIFY(std::filesystem::exists(saved) && p.window->windowTitle().contains(QString::fromStdString(saved)));

    rw::Case other = MarkedCase();
    const std::string opened = (p.folder / "OTHER.INT").string();
    rw::WriteCase(opened, other);
    p.files.opens.push_back(opened);
    p.trigger("mnuFileOpen", "Initial Inputs", Reject);
    RW_COMPARE_CASE(p.session.kase, other);
    p.session.gbSaved = rw::kNo;
    p.msgs.answerNext(false);
    OneBoxAfter(p.msgs, [&p] { p.window->close(); });
    QVERIFY(p.msgs.shown.back().question && p.program.ends == 1 && p.window->programEnded());
}

// The alert of a stop date past the verified rates opens "Update Alert" over
// Initial Inputs: its first button asks the desktop for the update page, the
// other closes it; past the estimated rates, closing it ends the program.
void MainWindowTest::rateAlertsOpenTheUpdateAlert()
{
    Program p;
    ModalDriver steps;
    steps.when(QStringLiteral("Initial Inputs"), [](QWidget* d) {
        Type(d, "txtStop", QStringLiteral("2/15/2027"));
        Leave(d, "txtStop");
        Click(d, "btnCancel");
    });
    steps.when(QStringLiteral("Update Alert"), [](QWidget* a) {
        QVERIFY(!Shown(a, "lblUpdateMessage").isEmpty());
        Shoot(a, QStringLiteral("frmGetUpdate"));
        Click(a, "OKButton");
        Click(a, "btnExitDialog");
    });
    p.trigger("mnuFileNew", steps);
    QVERIFY(p.desktop.urls.size() == 1 && p.program.ends == 0);

    steps.when(QStringLiteral("Initial Inputs"), [](QWidget* d) {
        Type(d, "txtStop", QStringLiteral("4/1/2027"));
        Leave(d, "txtStop");
    });
    steps.when(QStringLiteral("Update Alert"), [](QWidget* a) { Click(a, "btnExitDialog"); });
    p.trigger("mnuFileNew", steps);
    QVERIFY(p.program.ends == 1 && p.window->programEnded() && !QApplication::activeModalWidget());
}

void MainWindowTest::helpAboutAndUnknownKeys()
{
    Program p;
    OneBoxAfter(p.msgs, [&p] { p.action("mnuHelpContents")->trigger(); });  // no manual installed
    std::ofstream(p.session.paths.helpFile()) << "%PDF-1.4\n";
    p.action("tlbHelp")->trigger();
    QCOMPARE(p.desktop.documents, std::vector<std::filesystem::path>{p.session.paths.helpFile()});
    OneBoxAfter(p.msgs, [&p] { p.action("mnuHelpOnHelp")->trigger(); });
    OneBoxAfter(p.msgs, [&p] { p.window->toolbarKey("Tutorial"); });
    p.trigger("mnuHelpAbout", "About Ratewright", [&p](QWidget* d) {
        QCOMPARE(Shown(d, "lblDescription"), QString::fromLatin1(p.session.release.description));
        QVERIFY(Shown(d, "lblRelease").contains(QString::fromLatin1(p.session.release.name)));
        Shoot(d, QStringLiteral("dlgAbout"));
        Click(d, "btnHomePage");
        Click(d, "btnRunProgram");
    });
    QCOMPARE(p.desktop.urls.size(), std::size_t(1));
}

// A fault in a dialog's handler closes the dialog and reaches the command
// boundary: the error reporter asks its question and ends the program.
void MainWindowTest::faultInADialogGoesToTheErrorReporter()
{
    Program p;
    p.trigger("mnuOptionsSuspend", "Suspended Interest Inputs", [&p](QWidget* d) {
        Type(d, "CSdtRestart", QStringLiteral("13/45/2016"));
        p.msgs.failNext = true;
        Leave(d, "CSdtRestart");  // its check shows a box, which fails
    });
    QVERIFY(p.msgs.shown.back().question && p.program.ends == 1 && !QApplication::activeModalWidget());
}

// A computation the rate table cannot support is refused with a message: no
// report opens, the program keeps running, the case and its state stay.
void MainWindowTest::refusedComputationsLeaveTheProgramAndTheCase()
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    struct Refused {
        const char* authority;
        const char* balance;
        rw::RateTable rates;
    };
    const Refused kinds[] = {
        {"FL  ", "10000", {Row(D(2018, 1, 1), D(2018, 6, 30), 0.07f), Row(D(2018, 7, 1), D(2018, 12, 31), none, none)}},
        {"AR  ", "10000", {Row(D(2018, 6, 1), D(2018, 12, 31), 0.10f)}},
        {"US  ", "10000", {Row(D(2018, 1, 1), D(2018, 6, 30), 0.07f)}},
        {"MO  ", "-10000", {Row(D(2018, 1, 1), D(2018, 12, 31), 0.05f, none)}},
    };
    for (const Refused& k : kinds) {
        Program p;
        p.session.kase = FederalCase(D(2018, 1, 1), D(2018, 12, 31), k.balance);
        p.session.kase.init.sTaxAuth.assign(k.authority);
        p.session.gRates = k.rates;
        p.session.gbSaved = rw::kNo;
        rw::EnableOutputs(p.session, true);
        p.window->refresh();
        const rw::Case before = p.session.kase;
        p.trigger("mnuViewReports", "Report Choices", [](QWidget* d) {
            ChooseReports(d, rw::kRptSummary);
            Click(d, "btnOK");
        });
        QCOMPARE(p.msgs.shown.back().title, std::string("Interest Cannot Be Computed"));
        QVERIFY(p.program.ends == 0 && p.session.gbSaved == rw::kNo && !OpenWindow("frmSummary"));
        RW_COMPARE_CASE(p.session.kase, before);
        QVERIFY(p.action("mnuViewReports")->isEnabled());
    }
}

// The case of tests/reports/newcase entered in Initial Inputs and its inputs
// printed to a PDF file and shown, as the expected texts have them; then a
// failure to file penalty (with the Extended Due Date dialog it opens) and a
// payment entered, and every report shown as the core produces it.
void MainWindowTest::walkThroughACase()
{
    Program p;
    p.trigger("mnuFileNew", "Initial Inputs", [](QWidget* d) {
        const std::pair<const char*, const char*> fields[] = {
            {"txtName", "Jordan A. Example"}, {"txt2ndLine", "Form 1040, tax year 2015"}, {"txtDueDate", "4/15/2016"},
            {"txtStart", "4/15/2016"}, {"txtStop", "12/31/2016"}, {"txtInitBal", "10,000.00"}};
        for (const auto& [field, text] : fields)
            Put(d, field, QString::fromLatin1(text));
        Click(d, "btnOK");
    });
    const QString pdf = QString::fromStdString((p.folder / "inputs.pdf").string());
    ModalDriver print;
    print.when(ReportChoices(), [](QWidget* d) {
        ChooseReports(d, rw::kRptInputs);
        Click(d, "btnPdfFile");
    });
    print.when(QStringLiteral("Print Reports to a PDF File"), [&pdf](QWidget* d) {
        Type(d, "fileNameEdit", pdf);
        qobject_cast<QDialog*>(d)->accept();
    });
    print.when(ReportChoices(), [](QWidget* d) { Click(d, "btnOK"); });
    p.trigger("mnuFilePrint", print);
    KeepFile(pdf, QStringLiteral("walk-inputs.pdf"));
    p.trigger("mnuViewReports", "Report Choices", [](QWidget* d) {
        ChooseReports(d, rw::kRptInputs);
        Click(d, "btnOK");
    });
    QCOMPARE(Shown(OpenWindow("frmDispIP"), "txtIP"), AsShown(Expected("newcase/inputs-display.txt").toStdString()));
    OpenWindow("frmDispIP")->close();

    ModalDriver enter;
    enter.when(QStringLiteral("Failure To File Penalty Inputs"), [](QWidget* d) {
        Put(d, "radCalcPen", QStringLiteral("Yes"));
        Put(d, "txtAssess", QStringLiteral("7/1/2016"));
        Put(d, "txtFiled", QStringLiteral("6/10/2016"));
        Leave(d, "txtFiled");
    });
    enter.when(QStringLiteral("Extended Due Date"), [](QWidget* d) { Click(d, "btnOK"); });
    enter.when(QStringLiteral("Failure To File Penalty Inputs"), [](QWidget* d) { Click(d, "btnOK"); });
    p.trigger("mnuPenFTFile", enter);
    enter.when(QStringLiteral("Payments"), [](QWidget* d) { Click(d, "btnAdd"); });
    enter.when(QStringLiteral("Payment Information"), [](QWidget* d) {
        Put(d, "CStxtDesc", QStringLiteral("First payment"));
        Put(d, "CSdtPmt", QStringLiteral("12/20/2016"));
        Put(d, "CScurPmt", QStringLiteral("1,000.00"));
        Click(d, "btnOK");
    });
    enter.when(QStringLiteral("Payments"), [](QWidget* d) { Click(d, "btnClose"); });
    p.trigger("mnuInputsPayments", enter);
    QVERIFY(p.action("mnuPenFTFile")->isChecked() && p.action("mnuInputsPayments")->isChecked());

    const auto expected = rw::ReportWindows(63, p.session.kase,
                                            rw::StandardReportSources(p.session.gRates, p.session.release.ftfMinimums));
    ModalDriver show;
    show.when(ReportChoices(), [](QWidget* d) {
        ChooseReports(d, 63);
        Click(d, "btnOK");
    });
    for (const rw::ReportWindow& r : expected)
        if (r.modal)
            show.when(QString::fromLatin1(r.caption), [&r](QWidget* w) {
                CompareReportWindow(w, r);
                Click(w, "btnClose");
            });
    p.trigger("mnuViewReports", show);
    for (const rw::ReportWindow& r : expected)
        if (!r.modal)
            CompareReportWindow(OpenWindow(r.name), r);
    Shoot(OpenWindow("frmSummary"), QStringLiteral("walk-summary"));

    if (QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdftotext is not installed: the printed inputs are not read back");
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    QVERIFY(pdftotext.waitForFinished(20000));
    QCOMPARE(Normalised(QString::fromUtf8(pdftotext.readAllStandardOutput())),
             Normalised(Expected("newcase/inputs-print.txt")));
}

QTEST_MAIN(MainWindowTest)
#include "mainwindow_test.moc"
