// The main window driven as a user would: start-up state, the file commands
// with scripted file dialogs, the modal dialogs they open, the exit prompt,
// the rate currency alert, help and the About box.

#include "casedata/casefile.h"
#include "casedata/caserecord.h"
#include "shell/session.h"
#include "shell/settings.h"
#include "support/recordingmessages.h"
#include "ui/inputs/windowkit.h"
#include "ui/main/mainwindow.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QListWidget>
#include <QRadioButton>
#include <QToolBar>
#include <QtTest>

#include <fstream>
#include <limits>

using namespace rwtest;
using rw::Date;

namespace {

const QString kTitleStart = QStringLiteral("2018, 1st Quarter Ratewright - ");
const std::string kNextStep = "Next Step: Click on the Inputs menu to enter other information";
const std::string kPaymentOrder =
    "Since a payment's allocation between tax, penalty and interest is dependent upon prior penalties, other "
    "additions to tax and previous payments, it is critical that you enter all penalties and other charges before "
    "you enter payments.  Payments must be entered in chronological order.  If these guidelines are not followed, "
    "results will probably be inaccurate.";

// One main window over its own session, installation folder and scripted
// services, started as the program starts.
struct Program {
    InstallFolder folder;
    rw::Session session;
    RecordingMessages msgs;
    ScriptedFileDialogs files;
    RecordingProgram program;
    RecordingDesktop desktop;
    std::unique_ptr<rw::ui::MainWindow> window;

    explicit Program(InstallFolder::Release release = InstallFolder::Release::Early2018) : folder(release)
    {
        window = std::make_unique<rw::ui::MainWindow>(
            session, rw::ui::MainWindowServices{msgs, files, program, desktop});
        started = window->startUp(folder.paths(), "2.6.1");
        showActive(window.get());
    }
    QAction* action(const char* name) { return child<QAction>(window.get(), name); }
    QAction* key(const char* k)
    {
        const QByteArray name = QByteArray("tlb") + k;
        return child<QAction>(window.get(), name.constData());
    }
    QString title() const { return window->windowTitle(); }
    bool started = false;
};

// Fills the Initial Inputs dialog of a federal case and presses OK.
void FillInitialInputs(QWidget* dlg, const char* stop = "12/31/2017")
{
    QCOMPARE(dlg->objectName(), QStringLiteral("dlgInit"));
    typeInto(child<QLineEdit>(dlg, "txtName"), QStringLiteral("Lee Example"));
    typeInto(child<QLineEdit>(dlg, "txtDueDate"), QStringLiteral("4/15/2016"));
    typeInto(child<QLineEdit>(dlg, "txtStart"), QStringLiteral("4/15/2016"));
    typeInto(child<QLineEdit>(dlg, "txtStop"), QString::fromLatin1(stop));
    typeInto(child<QLineEdit>(dlg, "txtInitBal"), QStringLiteral("10,000.00"));
    click(dlg, "btnOK");
}

// A payroll case with three payments and one deposit, written as a case file.
std::string WritePayrollCase(const std::filesystem::path& file)
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sName.assign("Deposit Co.");
    c.init.sTaxAuth.assign("US  ");
    c.init.bPayroll = rw::kYes;
    c.init.dtDue = Date::fromCivil(2016, 4, 30);
    c.init.tlStart.dtDate = Date::fromCivil(2016, 1, 1);
    c.init.tlStop.dtDate = Date::fromCivil(2016, 12, 31);
    c.pmts.clear();
    for (int i = 0; i < 3; ++i) {
        rw::PaymentRec p;
        p.sDesc.assign("Payment");
        p.dtPmt = Date::fromCivil(2016, 2 + i, 10);
        p.cAmount = rw::Money::fromCents(100000);
        p.cToTax = p.cAmount;
        p.sMethod.assign("I");
        c.pmts.push_back(p);
    }
    c.init.nPmts = 3;
    c.deposits[0].dtDepDue = Date::fromCivil(2016, 2, 15);
    c.deposits[0].cRequired = rw::Money::fromCents(300000);
    c.deposits[0].dtDepAssess = Date::fromCivil(2016, 6, 1);
    c.init.nDeposits = 1;
    rw::WriteCase(file.string(), c);
    return file.string();
}

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void menusCarryTheirCaptions();
    void startUpState();
    void newThenInitialInputsAccepted();
    void newThenCancelKeepsOutputsOff();
    void openCaseWithPaymentsAndDeposit();
    void saveAsNamesTheCaseAndEnablesSave();
    void exitPromptYesSavesAs();
    void exitPromptNoCloses();
    void closingSavedCaseAsksNothing();
    void toolBarAndTipsAreStoredAtExit();
    void noteClearedWhenAMenuOpens();
    void paymentOrderWarningEveryTimeForNonPayroll();
    void payrollWarningWithoutPayrollTax();
    void rateAlertNoneAtEndOfMarch();
    void rateAlertEstimateInApril();
    void rateAlertEndProgramInJuly();
    void releaseOfLate2026TakesAStopDateIn2027AsAnEstimate();
    void optionalRatesSetsTheCheckMark();
    void suspendSetsTheCheckMark();
    void extendedDueDateFromThePenaltiesMenu();
    void helpOnHelpAndContents();
    void aboutBox();
    void unknownToolbarKeyWarns();
    void refusedComputationsLeaveTheProgramAndTheCase();
};

void MainWindowTest::menusCarryTheirCaptions()
{
    Program p;
    const std::pair<const char*, const char*> captions[] = {
        {"mnuFile", "&File"},
        {"mnuView", "&View"},
        {"mnuInputs", "&Inputs"},
        {"mnuOptions", "&Options"},
        {"mnuHelp", "&Help"},
        {"mnuInputsPenalties", "&Penalties..."},
    };
    for (const auto& [name, caption] : captions)
        QCOMPARE(child<QMenu>(p.window.get(), name)->title(), QString::fromLatin1(caption));
    const std::pair<const char*, const char*> items[] = {
        {"mnuFileNew", "&New..."},
        {"mnuFileOpen", "&Open..."},
        {"mnuFileSave", "&Save"},
        {"mnuFileSaveAs", "Save &As..."},
        {"mnuFilePrint", "&Print..."},
        {"mnuFileExit", "E&xit"},
        {"mnuViewReports", "&Reports..."},
        {"mnuInputsInitial", "&Initial Inputs..."},
        {"mnuPenFTPay", "Failure to &Pay"},
        {"mnuPenFTFile", "&Failure to File"},
        {"mnuPenAccuracy", "&Accuracy Related"},
        {"mnuPenPR", "Payro&ll"},
        {"mnuPenExtended", "&Extended Due Date"},
        {"mnuInputsPayments", "P&ayments..."},
        {"mnuInputsCharges", "&Other Charges..."},
        {"mnuOptionsInterest", "&Interest Rates..."},
        {"mnuOptionsSuspend", "&Suspend Interest..."},
        {"mnuShowToolBar", "Show Tool &Bar"},
        {"mnuShowToolTips", "Show Tool &Tips"},
        {"mnuHelpContents", "&Contents..."},
        {"mnuHelpOnHelp", "&Help on Help..."},
        {"mnuHelpAbout", "&About..."},
    };
    for (const auto& [name, caption] : items) {
        QAction* a = p.action(name);
        QVERIFY2(a, name);
        QCOMPARE(a->text(), QString::fromLatin1(caption));
    }
    // The menus in order, the Penalties submenu inside Inputs.
    QStringList order;
    const auto top = p.window->menuBar()->actions();
    for (const QAction* a : top)
        order << a->text();
    QCOMPARE(order, (QStringList{QStringLiteral("&File"), QStringLiteral("&View"), QStringLiteral("&Inputs"),
                                 QStringLiteral("&Options"), QStringLiteral("&Help")}));
    QStringList inputs;
    const auto inputActions = child<QMenu>(p.window.get(), "mnuInputs")->actions();
    for (const QAction* a : inputActions)
        inputs << a->text();
    QCOMPARE(inputs, (QStringList{QStringLiteral("&Initial Inputs..."), QStringLiteral("&Penalties..."),
                                  QStringLiteral("P&ayments..."), QStringLiteral("&Other Charges...")}));
    // The tool bar's keys.
    auto* bar = child<QToolBar>(p.window.get(), "tlbMain");
    QStringList keys;
    const auto barActions = bar->actions();
    for (const QAction* a : barActions)
        if (a->data().isValid())
            keys << a->data().toString();
    QCOMPARE(keys, (QStringList{QStringLiteral("New"), QStringLiteral("Open"), QStringLiteral("Save"),
                                QStringLiteral("View"), QStringLiteral("Print"), QStringLiteral("Help"),
                                QStringLiteral("Exit")}));
    for (const QAction* a : barActions)
        if (a->data().isValid())
            QVERIFY(!a->toolTip().isEmpty());
}

void MainWindowTest::startUpState()
{
    Program p;
    QVERIFY(p.started);
    QCOMPARE(p.title(), kTitleStart + QStringLiteral("Untitled.INT"));
    QCOMPARE(p.session.gsFileName, std::string("UNTITLED.INT"));
    QVERIFY(!p.key("Save")->isVisible());
    QVERIFY(!p.key("Print")->isVisible());
    QVERIFY(!p.key("View")->isVisible());
    QVERIFY(p.key("New")->isVisible());
    QVERIFY(p.key("Exit")->isVisible());
    QVERIFY(!p.action("mnuFileSave")->isEnabled());
    QVERIFY(p.action("mnuFileSaveAs")->isEnabled());
    QVERIFY(!p.action("mnuFilePrint")->isEnabled());
    QVERIFY(!p.action("mnuViewReports")->isEnabled());
    QVERIFY(!p.action("mnuInputsInitial")->isChecked());
    QVERIFY(p.action("mnuShowToolBar")->isChecked());
    QVERIFY(p.action("mnuShowToolTips")->isChecked());
    // An empty case, its authority unset, with the federal table loaded.
    rw::Case empty;
    rw::ClearInputs(empty);
    QVERIFY(p.session.kase == empty);
    QVERIFY(!p.session.gRates.empty());
    QVERIFY(p.msgs.shown.empty());
    QCOMPARE(child<QLabel>(p.window.get(), "lblNote")->text(), QString());
    SaveShot(p.window.get(), "frmMain-startup");
}

void MainWindowTest::newThenInitialInputsAccepted()
{
    Program p;
    ModalWatch fill([](QWidget* dlg) { FillInitialInputs(dlg); });
    p.action("mnuFileNew")->trigger();
    QVERIFY(fill.fired());
    QVERIFY(p.title().endsWith(QStringLiteral("UNTITLED.INT*")));
    QCOMPARE(p.title(), kTitleStart + QStringLiteral("UNTITLED.INT*"));
    QVERIFY(p.action("mnuInputsInitial")->isChecked());
    QVERIFY(p.action("mnuFilePrint")->isEnabled());
    QVERIFY(p.action("mnuViewReports")->isEnabled());
    QVERIFY(p.key("Print")->isVisible());
    QVERIFY(p.key("View")->isVisible());
    QVERIFY(!p.action("mnuFileSave")->isEnabled());
    QVERIFY(!p.key("Save")->isVisible());
    QCOMPARE(child<QLabel>(p.window.get(), "lblNote")->text(), QString::fromStdString(kNextStep));
    QCOMPARE(p.session.kase.init.tlStart.cTax, rw::Money::fromCents(1000000));
    QCOMPARE(std::string(p.session.kase.init.sTaxAuth.view()), std::string("US  "));
    // The recovery copy was written.
    QVERIFY(std::filesystem::exists(p.session.paths.recoveryCopy()));
    SaveShot(p.window.get(), "frmMain-newcase");
}

void MainWindowTest::newThenCancelKeepsOutputsOff()
{
    Program p;
    ModalWatch cancel([](QWidget* dlg) { click(dlg, "btnCancel"); });
    p.action("mnuFileNew")->trigger();
    QVERIFY(cancel.fired());
    QCOMPARE(p.title(), kTitleStart + QStringLiteral("UNTITLED.INT"));
    QVERIFY(!p.action("mnuFilePrint")->isEnabled());
    QVERIFY(!p.key("View")->isVisible());
    QVERIFY(!p.action("mnuInputsInitial")->isChecked());
}

void MainWindowTest::openCaseWithPaymentsAndDeposit()
{
    Program p;
    const std::string file = WritePayrollCase(p.folder / "PAYROLL.INT");
    p.files.opens.push_back(file);
    ModalWatch cancel([](QWidget* dlg) {
        // The Initial Inputs dialog shows the case that was read.
        QCOMPARE(child<QLineEdit>(dlg, "txtName")->text(), QStringLiteral("Deposit Co."));
        QVERIFY(child<QRadioButton>(dlg, "radPRYes")->isChecked());
        click(dlg, "btnCancel");
    });
    p.action("mnuFileOpen")->trigger();
    QVERIFY(cancel.fired());
    QCOMPARE(p.session.kase.init.nPmts, std::int16_t(3));
    QVERIFY(p.action("mnuInputsInitial")->isChecked());
    QVERIFY(p.action("mnuInputsPayments")->isChecked());
    QVERIFY(p.action("mnuPenPR")->isChecked());
    QVERIFY(!p.action("mnuInputsCharges")->isChecked());
    QVERIFY(!p.action("mnuPenFTPay")->isChecked());
    QVERIFY(p.action("mnuFilePrint")->isEnabled());
    QVERIFY(p.action("mnuViewReports")->isEnabled());
    QVERIFY(p.key("Print")->isVisible());
    QVERIFY(p.key("View")->isVisible());
    QVERIFY(p.action("mnuFileSave")->isEnabled());
    QVERIFY(p.key("Save")->isVisible());
    QCOMPARE(p.title(), kTitleStart + QString::fromStdString(file));
    QCOMPARE(child<QLabel>(p.window.get(), "lblNote")->text(), QString::fromStdString(kNextStep));
    // The data folder follows the file, in the settings file too.
    QCOMPARE(p.session.gsDataPath, (p.folder / "").parent_path().string());
    QCOMPARE(rw::SettingsFile(p.session.paths.iniFile()).read("Data Files", "Data File Path", ""),
             p.session.gsDataPath);
    SaveShot(p.window.get(), "frmMain-opened");
}

void MainWindowTest::saveAsNamesTheCaseAndEnablesSave()
{
    Program p;
    ModalWatch fill([](QWidget* dlg) { FillInitialInputs(dlg); });
    p.action("mnuFileNew")->trigger();
    const std::string file = (p.folder / "SAVED.INT").string();
    p.files.saves.push_back(file);
    p.action("mnuFileSaveAs")->trigger();
    QVERIFY(std::filesystem::exists(file));
    QCOMPARE(p.title(), kTitleStart + QString::fromStdString(file));
    QVERIFY(p.action("mnuFileSave")->isEnabled());
    QVERIFY(p.key("Save")->isVisible());
    rw::Case read;
    QVERIFY(rw::ReadCase(file, read, p.msgs));
    QVERIFY(read == p.session.kase);

    // Save writes to the same file without asking.
    p.session.kase.init.sName.assign("Changed");
    p.key("Save")->trigger();
    QCOMPARE(p.files.saveFolders.size(), std::size_t(1));
    QVERIFY(rw::ReadCase(file, read, p.msgs));
    QVERIFY(read.init.sName.trimmed() == "Changed");
}

void MainWindowTest::exitPromptYesSavesAs()
{
    Program p;
    ModalWatch fill([](QWidget* dlg) { FillInitialInputs(dlg); });
    p.action("mnuFileNew")->trigger();
    const std::string file = (p.folder / "ATEXIT.INT").string();
    p.files.saves.push_back(file);
    p.msgs.answerNext(true);
    p.action("mnuFileExit")->trigger();
    QCOMPARE(p.msgs.shown.size(), std::size_t(1));
    QCOMPARE(p.msgs.shown[0].title, std::string("Warning"));
    QCOMPARE(p.msgs.shown[0].text,
             std::string("File UNTITLED.INT has not been saved.  Do you want to save your data before exiting?"));
    QVERIFY(p.msgs.shown[0].question);
    QVERIFY(std::filesystem::exists(file));
    QCOMPARE(p.program.hides, 1);
    QCOMPARE(p.program.ends, 1);
    QVERIFY(p.window->programEnded());
}

void MainWindowTest::exitPromptNoCloses()
{
    Program p;
    ModalWatch fill([](QWidget* dlg) { FillInitialInputs(dlg); });
    p.action("mnuFileNew")->trigger();
    p.msgs.answerNext(false);
    // The window's close box.
    p.window->close();
    QCOMPARE(p.msgs.shown.size(), std::size_t(1));
    QVERIFY(p.files.saveFolders.empty());
    QCOMPARE(p.program.ends, 1);
    QCOMPARE(p.program.hides, 1);
    // Once ended, no command runs.
    p.action("mnuFileNew")->trigger();
    QCOMPARE(p.program.ends, 1);
}

void MainWindowTest::closingSavedCaseAsksNothing()
{
    Program p;
    p.key("Exit")->trigger();
    QVERIFY(p.msgs.shown.empty());
    QCOMPARE(p.program.ends, 1);
}

void MainWindowTest::toolBarAndTipsAreStoredAtExit()
{
    Program p;
    auto* bar = child<QToolBar>(p.window.get(), "tlbMain");
    QVERIFY(bar->isVisible());
    p.action("mnuShowToolBar")->trigger();
    QVERIFY(!p.action("mnuShowToolBar")->isChecked());
    QVERIFY(!bar->isVisible());
    p.action("mnuShowToolTips")->trigger();
    QVERIFY(!p.action("mnuShowToolTips")->isChecked());
    p.action("mnuShowToolBar")->trigger();
    QVERIFY(bar->isVisible());
    p.action("mnuShowToolBar")->trigger();
    p.action("mnuFileExit")->trigger();
    const rw::SettingsFile ini(p.session.paths.iniFile());
    QCOMPARE(ini.read("Options", "ToolBar", ""), std::string("False"));
    QCOMPARE(ini.read("Options", "ToolTips", ""), std::string("False"));
}

void MainWindowTest::noteClearedWhenAMenuOpens()
{
    Program p;
    ModalWatch cancel([](QWidget* dlg) { click(dlg, "btnCancel"); });
    p.action("mnuFileNew")->trigger();
    auto* note = child<QLabel>(p.window.get(), "lblNote");
    for (const char* menu : {"mnuFile", "mnuView", "mnuInputs", "mnuOptions"}) {
        p.session.menus.note = kNextStep;
        p.window->refresh();
        QCOMPARE(note->text(), QString::fromStdString(kNextStep));
        Q_EMIT child<QMenu>(p.window.get(), menu)->aboutToShow();
        QCOMPARE(note->text(), QString());
    }
    // The Help menu leaves the note.
    p.session.menus.note = kNextStep;
    p.window->refresh();
    Q_EMIT child<QMenu>(p.window.get(), "mnuHelp")->aboutToShow();
    QCOMPARE(note->text(), QString::fromStdString(kNextStep));
}

void MainWindowTest::paymentOrderWarningEveryTimeForNonPayroll()
{
    Program p;
    for (int i = 1; i <= 2; ++i) {
        ModalWatch close([](QWidget* dlg) { dlg->close(); }, 2000);
        p.msgs.clear();
        p.action("mnuInputsPayments")->trigger();
        QVERIFY(!p.msgs.shown.empty());
        QCOMPARE(p.msgs.shown[0].title, std::string("WARNING"));
        QCOMPARE(p.msgs.shown[0].icon, rw::MsgIcon::Exclamation);
        QCOMPARE(p.msgs.shown[0].text, kPaymentOrder);
    }
    // A payroll case gets no warning.
    p.session.kase.init.bPayroll = rw::kYes;
    p.msgs.clear();
    ModalWatch close([](QWidget* dlg) { dlg->close(); }, 2000);
    p.action("mnuInputsPayments")->trigger();
    for (const auto& m : p.msgs.shown)
        QVERIFY(m.text != kPaymentOrder);
}

void MainWindowTest::payrollWarningWithoutPayrollTax()
{
    Program p;
    ModalWatch anyDialog([](QWidget* dlg) { dlg->close(); }, 1000);
    p.action("mnuPenPR")->trigger();
    QVERIFY(!anyDialog.fired());
    QCOMPARE(p.msgs.shown.size(), std::size_t(1));
    QCOMPARE(p.msgs.shown[0].title, std::string("WARNING"));
    QCOMPARE(p.msgs.shown[0].text, std::string("To run payroll penalties, the Initial Inputs window must have Payroll "
                                               "Tax indicated Yes."));
    QVERIFY(!p.action("mnuPenPR")->isChecked());
}

void MainWindowTest::rateAlertNoneAtEndOfMarch()
{
    Program p;
    bool alerted = false;
    ModalWatch fill([&](QWidget* dlg) {
        ModalWatch alert([&](QWidget*) { alerted = true; }, 500);
        auto* stop = child<QLineEdit>(dlg, "txtStop");
        typeInto(stop, QStringLiteral("3/31/2018"));
        QTest::keyClick(stop, Qt::Key_Tab);
        QTest::qWait(600);
        click(dlg, "btnCancel");
    });
    p.action("mnuFileNew")->trigger();
    QVERIFY(fill.fired());
    QVERIFY(!alerted);
    QCOMPARE(p.program.ends, 0);
}

void MainWindowTest::rateAlertEstimateInApril()
{
    Program p;
    QString message;
    QString exitCaption;
    bool stayedOpen = false;
    ModalWatch fill([&](QWidget* dlg) {
        ModalWatch alert([&](QWidget* a) {
            QCOMPARE(a->objectName(), QStringLiteral("frmGetUpdate"));
            QCOMPARE(a->windowTitle(), QStringLiteral("Update Alert"));
            SaveShot(a, "frmGetUpdate-estimate");
            message = child<QLabel>(a, "lblUpdateMessage")->text();
            exitCaption = child<QAbstractButton>(a, "btnExitDialog")->text();
            QCOMPARE(child<QAbstractButton>(a, "OKButton")->text(), QStringLiteral("Check For More Current Version"));
            click(a, "OKButton");
            stayedOpen = a->isVisible();
            click(a, "btnExitDialog");
        });
        auto* stop = child<QLineEdit>(dlg, "txtStop");
        typeInto(stop, QStringLiteral("4/1/2018"));
        QTest::keyClick(stop, Qt::Key_Tab);
        QTRY_VERIFY(alert.fired());
        // The dialog goes on and the case is stored; leaving the field again
        // shows the alert again.
        ModalWatch again([](QWidget* a) { click(a, "btnExitDialog"); });
        dlg->activateWindow();
        QTRY_VERIFY(dlg->isActiveWindow());
        FillInitialInputs(dlg, "4/1/2018");
        QVERIFY(again.fired());
    });
    p.action("mnuFileNew")->trigger();
    QVERIFY(fill.fired());
    QVERIFY(message.startsWith(QStringLiteral(
        "This program has verified interest rates through March 31, 2018.  The program has estimated interest rates "
        "through June 30, 2018.  Since your stop date of 4/1/2018 is past March 31, 2018, but not past June 30, 2018, "
        "this calculation should be considered an ESTIMATE.  ")));
    QCOMPARE(exitCaption, QStringLiteral("Continue With Current Program"));
    QVERIFY(stayedOpen);
    QCOMPARE(p.desktop.urls.size(), std::size_t(1));
    QCOMPARE(p.desktop.urls[0].host(), QStringLiteral("www.brindlecote.example"));
    QCOMPARE(p.program.ends, 0);
    QCOMPARE(p.session.kase.init.tlStop.dtDate, Date::fromCivil(2018, 4, 1));
}

// The release of late 2026 (the tests' release, built from frozen sources):
// rates verified through 12/31/2026 and estimated through 3/31/2027, so a stop
// date in February 2027 is an estimate, not the end of the program.
void MainWindowTest::releaseOfLate2026TakesAStopDateIn2027AsAnEstimate()
{
    Program p(InstallFolder::Release::Late2026);
    QVERIFY(p.started);
    QVERIFY(p.title().startsWith(QStringLiteral("2026, 4th Quarter Ratewright - ")));
    QVERIFY(p.msgs.shown.empty());
    QString exitCaption;
    QString message;
    ModalWatch fill([&](QWidget* dlg) {
        ModalWatch alert([&](QWidget* a) {
            SaveShot(a, "frmGetUpdate-2026");
            exitCaption = child<QAbstractButton>(a, "btnExitDialog")->text();
            message = child<QLabel>(a, "lblUpdateMessage")->text();
            click(a, "btnExitDialog");
        });
        auto* stop = child<QLineEdit>(dlg, "txtStop");
        typeInto(stop, QStringLiteral("2/15/2027"));
        QTest::keyClick(stop, Qt::Key_Tab);
        QTRY_VERIFY(alert.fired());
        ModalWatch again([](QWidget* a) { click(a, "btnExitDialog"); });
        dlg->activateWindow();
        QTRY_VERIFY(dlg->isActiveWindow());
        FillInitialInputs(dlg, "2/15/2027");
    });
    p.action("mnuFileNew")->trigger();
    QVERIFY(fill.fired());
    QCOMPARE(exitCaption, QStringLiteral("Continue With Current Program"));
    QVERIFY(message.startsWith(QStringLiteral(
        "This program has verified interest rates through December 31, 2026.  The program has estimated interest "
        "rates through March 31, 2027.  Since your stop date of 2/15/2027 is past December 31, 2026, but not past "
        "March 31, 2027, this calculation should be considered an ESTIMATE.  ")));
    QCOMPARE(p.program.ends, 0);
    QCOMPARE(p.session.kase.init.tlStop.dtDate, Date::fromCivil(2027, 2, 15));

    QString description, release;
    ModalWatch about([&](QWidget* dlg) {
        SaveShot(dlg, "dlgAbout-2026");
        description = child<QLabel>(dlg, "lblDescription")->text();
        release = child<QLabel>(dlg, "lblRelease")->text();
        click(dlg, "btnRunProgram");
    });
    p.action("mnuHelpAbout")->trigger();
    QVERIFY(about.fired());
    QCOMPARE(description, QStringLiteral("2026, 4th Quarter"));
    QCOMPARE(release, QStringLiteral("Interest rates: release Qrat2026Q4, verified through December 31, 2026, "
                                     "estimated through March 31, 2027"));
}

void MainWindowTest::rateAlertEndProgramInJuly()
{
    Program p;
    QString exitCaption;
    QString message;
    ModalWatch fill([&](QWidget* dlg) {
        ModalWatch alert([&](QWidget* a) {
            SaveShot(a, "frmGetUpdate-end");
            exitCaption = child<QAbstractButton>(a, "btnExitDialog")->text();
            message = child<QLabel>(a, "lblUpdateMessage")->text();
            click(a, "btnExitDialog");
        });
        typeInto(child<QLineEdit>(dlg, "txtName"), QStringLiteral("Late Case"));
        auto* stop = child<QLineEdit>(dlg, "txtStop");
        typeInto(stop, QStringLiteral("7/1/2018"));
        QTest::keyClick(stop, Qt::Key_Tab);
    });
    p.action("mnuFileNew")->trigger();
    QVERIFY(fill.fired());
    QCOMPARE(exitCaption, QStringLiteral("End Program"));
    QVERIFY(message.contains(QStringLiteral("Since your stop date of 7/1/2018 is past June 30, 2018, the program can "
                                            "not continue.  ")));
    QCOMPARE(p.program.ends, 1);
    QVERIFY(p.window->programEnded());
    // Ended at once: nothing was stored, nothing saved.
    QVERIFY(!p.session.kase.init.sName.is("Late Case"));
    QVERIFY(p.files.saveFolders.empty());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
}

void MainWindowTest::optionalRatesSetsTheCheckMark()
{
    Program p;
    p.session.kase.init.dtDue = Date::fromCivil(1992, 4, 15);
    ModalWatch yes([](QWidget* dlg) {
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Optional Rates"));
        QTest::mouseClick(child<QRadioButton>(dlg, "radCorpUPRateYes"), Qt::LeftButton);
        click(dlg, "btnOK");
    });
    p.action("mnuOptionsInterest")->trigger();
    QVERIFY(yes.fired());
    QVERIFY(p.action("mnuOptionsInterest")->isChecked());
    QCOMPARE(p.session.kase.init.bCorpUPRate, rw::kYes);
    QCOMPARE(p.session.kase.init.dtCorpUPRateStart, Date::fromCivil(1992, 4, 15));
    QVERIFY(std::filesystem::exists(p.session.paths.recoveryCopy()));

    // Cancel leaves the mark as the case has it.
    ModalWatch cancel([](QWidget* dlg) { click(dlg, "btnCancel"); });
    p.action("mnuOptionsInterest")->trigger();
    QVERIFY(p.action("mnuOptionsInterest")->isChecked());
}

void MainWindowTest::suspendSetsTheCheckMark()
{
    Program p;
    p.session.kase.init.tlStart.dtDate = Date::fromCivil(2016, 4, 15);
    p.session.kase.init.tlStop.dtDate = Date::fromCivil(2017, 12, 31);
    ModalWatch fill([](QWidget* dlg) {
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Suspended Interest Inputs"));
        typeInto(child<QLineEdit>(dlg, "CSdtIntSuspend"), QStringLiteral("6/1/2016"));
        typeInto(child<QLineEdit>(dlg, "CSdtRestart"), QStringLiteral("9/1/2016"));
        click(dlg, "btnOK");
    });
    p.action("mnuOptionsSuspend")->trigger();
    QVERIFY(fill.fired());
    QVERIFY(p.action("mnuOptionsSuspend")->isChecked());
    QCOMPARE(p.session.kase.init.dtIntSuspend, Date::fromCivil(2016, 6, 1));
    QCOMPARE(p.session.kase.init.dtRestart, Date::fromCivil(2016, 9, 1));
}

void MainWindowTest::extendedDueDateFromThePenaltiesMenu()
{
    Program p;
    p.session.kase.init.dtDue = Date::fromCivil(2016, 4, 15);
    p.session.kase.init.tlStop.dtDate = Date::fromCivil(2017, 12, 31);
    QString shown;
    ModalWatch fill([&](QWidget* dlg) {
        shown = child<QLineEdit>(dlg, "txtExtended")->text();
        typeInto(child<QLineEdit>(dlg, "txtExtended"), QStringLiteral("10/17/2016"));
        click(dlg, "btnOK");
    });
    p.action("mnuPenExtended")->trigger();
    QVERIFY(fill.fired());
    QCOMPARE(shown, QStringLiteral("4/15/2016"));
    QCOMPARE(p.session.kase.init.dtExtended, Date::fromCivil(2016, 10, 17));
    QVERIFY(!p.action("mnuPenExtended")->isCheckable());
}

void MainWindowTest::helpOnHelpAndContents()
{
    Program p;
    p.action("mnuHelpOnHelp")->trigger();
    QCOMPARE(p.msgs.shown.size(), std::size_t(1));
    QCOMPARE(p.msgs.shown[0].text,
             std::string("The help file is a searchable PDF file. Menu choice Help - Contents."));
    QCOMPARE(p.msgs.shown[0].icon, rw::MsgIcon::Information);

    // No manual installed: the user is told.
    p.msgs.clear();
    p.action("mnuHelpContents")->trigger();
    QCOMPARE(p.msgs.shown.size(), std::size_t(1));
    QVERIFY(p.desktop.documents.empty());

    std::ofstream(p.session.paths.helpFile()) << "%PDF-1.4\n";
    p.msgs.clear();
    p.key("Help")->trigger();
    QVERIFY(p.msgs.shown.empty());
    QCOMPARE(p.desktop.documents.size(), std::size_t(1));
    QCOMPARE(p.desktop.documents[0], p.session.paths.helpFile());
    QCOMPARE(p.desktop.folders[0], p.session.paths.installDir);
}

void MainWindowTest::aboutBox()
{
    Program p;
    QString version;
    QString notice;
    QString contact;
    ModalWatch about([&](QWidget* dlg) {
        QCOMPARE(dlg->objectName(), QStringLiteral("dlgAbout"));
        SaveShot(dlg, "dlgAbout");
        version = child<QLabel>(dlg, "lblVersion")->text();
        QCOMPARE(child<QLabel>(dlg, "lblDescription")->text(), QStringLiteral("2018, 1st Quarter"));
        notice = child<QLabel>(dlg, "lblNotice")->text();
        contact = child<QLabel>(dlg, "lblEmail")->text();
        QCOMPARE(child<QAbstractButton>(dlg, "btnHomePage")->text(), QStringLiteral("Go to program Home Page"));
        QCOMPARE(child<QAbstractButton>(dlg, "btnRunProgram")->text(), QStringLiteral("Run Program"));
        click(dlg, "btnHomePage");
        QVERIFY(dlg->isVisible());
        click(dlg, "btnRunProgram");
    });
    p.action("mnuHelpAbout")->trigger();
    QVERIFY(about.fired());
    QCOMPARE(version, QStringLiteral("Version Qrat2018Q1.10"));
    QCOMPARE(notice, QStringLiteral("STATE PENALTY NOTICE: This program will compute penalties using Federal law. Only "
                                    "use penalty computations for state taxes where the penalty for the state can be "
                                    "computed using the Federal law."));
    QCOMPARE(contact, QStringLiteral("support@brindlecote.example"));
    QCOMPARE(p.desktop.urls.size(), std::size_t(1));
    QCOMPARE(p.desktop.urls[0], QUrl(QStringLiteral("https://www.brindlecote.example/ratewright")));
}

void MainWindowTest::unknownToolbarKeyWarns()
{
    Program p;
    p.window->toolbarKey("Tutorial");
    QCOMPARE(p.msgs.shown.size(), std::size_t(1));
    QCOMPARE(p.msgs.shown[0].title, std::string("WARNING"));
    QVERIFY(p.msgs.shown[0].text.starts_with("The program does not understand the toolbar choice. Please let "));
}

// A computation the rate table cannot support is refused with a message: no
// report opens, the program keeps running, the case and its state stay.
void MainWindowTest::refusedComputationsLeaveTheProgramAndTheCase()
{
    const float none = std::numeric_limits<float>::quiet_NaN();
    auto row = [](Date from, Date thru, float up, float op) {
        rw::RateRow r;
        r.dtFrom = from;
        r.dtThru = thru;
        r.fUPRate = up;
        r.fOPRate = op;
        return r;
    };
    auto D = [](int y, int m, int d) { return Date::fromCivil(y, m, d); };
    struct Refused {
        const char* name;
        const char* authority;
        Date start;
        Date stop;
        std::int64_t balanceCents;
        rw::RateTable rates;
        const char* told;
    };
    const std::vector<Refused> cases = {
        {"hole", "FL  ", D(2018, 1, 1), D(2018, 12, 31), 1000000,
         {row(D(2018, 1, 1), D(2018, 6, 30), 0.07f, 0.07f), row(D(2018, 7, 1), D(2018, 12, 31), none, none)},
         "The Florida rate table has no published interest rate for 7/1/2018 to 12/31/2018"},
        {"beforeTheTable", "AR  ", D(2005, 1, 1), D(2010, 6, 30), 1000000,
         {row(D(2010, 1, 1), D(2010, 12, 31), 0.10f, 0.10f)},
         "The Arkansas rate table begins on 1/1/2010, and this calculation needs a rate for 1/2/2005 to 12/31/2009"},
        {"afterTheTable", "US  ", D(2026, 12, 31), D(2027, 6, 30), 1000000,
         {row(D(2026, 1, 1), D(2026, 12, 31), 0.07f, 0.07f), row(D(2027, 1, 1), D(2027, 3, 31), 0.07f, 0.07f)},
         "The Federal rate table ends on 3/31/2027, and this calculation needs a rate for 4/1/2027 to 6/30/2027"},
        {"refundRateNeverPublished", "MO  ", D(2018, 1, 1), D(2018, 12, 31), -1000000,
         {row(D(2018, 1, 1), D(2018, 12, 31), 0.05f, none)},
         "The Missouri rate table has no published overpayment (refund) rate for 1/1/2018 to 12/31/2018"},
    };
    for (const Refused& e : cases) {
        Program p;
        QVERIFY(p.started);
        rw::Case& c = p.session.kase;
        c.init.sName.assign(e.name);
        c.init.sTaxAuth.assign(e.authority);
        c.init.dtDue = e.start;
        c.init.tlStart.dtDate = e.start;
        c.init.tlStart.cTax = rw::Money::fromCents(e.balanceCents);
        c.init.tlStop.dtDate = e.stop;
        p.session.gRates = e.rates;
        p.session.gbSaved = rw::kNo;
        p.session.menus.reportsEnabled = true;
        p.window->refresh();
        const rw::Case before = c;
        p.msgs.clear();
        ModalWatch choose([](QWidget* dlg) {
            auto* list = child<QListWidget>(dlg, "chkReport");
            list->item(1)->setCheckState(Qt::Checked);  // Summary of Results
            click(dlg, "btnOK");
        });
        p.action("mnuViewReports")->trigger();
        QVERIFY2(choose.fired(), e.name);
        QCOMPARE(p.msgs.shown.size(), std::size_t(1));
        QCOMPARE(p.msgs.shown[0].title, std::string("Interest Cannot Be Computed"));
        QVERIFY2(p.msgs.shown[0].text.find(e.told) != std::string::npos, p.msgs.shown[0].text.c_str());
        QCOMPARE(p.program.ends, 0);
        QVERIFY2(p.session.kase == before, e.name);
        QCOMPARE(p.session.gbSaved, rw::kNo);
        for (QWidget* w : QApplication::topLevelWidgets())
            QVERIFY2(!(w->isVisible() && w->objectName().startsWith(QStringLiteral("frmRpt"))), e.name);
        // Still running: the next command works.
        QVERIFY(p.action("mnuViewReports")->isEnabled());
    }
}

QTEST_MAIN(MainWindowTest)
#include "mainwindow_test.moc"
