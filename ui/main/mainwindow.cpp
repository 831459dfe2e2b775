#include "ui/main/mainwindow.h"

#include "base/numtext.h"
#include "reports/overview.h"
#include "reports/standardsources.h"
#include "shell/errorreporter.h"
#include "shell/filecommands.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "ui/common/commandcontext.h"
#include "ui/common/fields.h"
#include "ui/common/texts.h"
#include "ui/inputs/initialinputswindow.h"
#include "ui/inputs/optionwindows.h"
#include "ui/main/aboutbox.h"
#include "ui/main/desktop.h"
#include "ui/main/overviewwidget.h"
#include "ui/main/updatealert.h"

#include "ui/lists/commands.h"
#include "ui/penalties/commands.h"
#include "ui/reports/commands.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStyle>
#include <QToolBar>
#include <QVBoxLayout>

#include <filesystem>

namespace rw::ui {

namespace {

// A report window's own "Print" button runs outside any command: its fault
// goes to the error reporter all the same.
ReportHooks reportHooksFor(MainWindow* w, Desktop& desktop)
{
    ReportHooks hooks;
    // A PDF file the reports were printed to opens with the desktop's viewer.
    hooks.openFile = [&desktop](const QUrl& file) { return desktop.openUrl(file); };
    hooks.reportFault = [w](const Fault& f) {
        if (w->programEnded())
            return;
        ShellContext ctx = w->shellContext();
        ReportError(ctx, f);
    };
    return hooks;
}

}  // namespace

MainWindow::MainWindow(Session& session, MainWindowServices services, QWidget* parent)
    : QMainWindow(parent)
    , session_(session)
    , services_(services)
{
    endWatch_.inner = &services_.program;
    if (!services_.clock)
        services_.clock = &systemClock_;

    setObjectName(QStringLiteral("frmMain"));
    setContextMenuPolicy(Qt::PreventContextMenu);

    auto* central = new QWidget(this);
    overview_ = new OverviewWidget(central);
    note_ = new QLabel(central);
    note_->setObjectName(QStringLiteral("lblNote"));
    note_->setWordWrap(true);
    QFont noteFont = note_->font();
    noteFont.setBold(true);
    note_->setFont(noteFont);
    note_->setMinimumHeight(note_->fontMetrics().height() * 2 + 4);
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(4, 4, 16, 12);
    layout->addWidget(overview_, 1);
    note_->setContentsMargins(12, 0, 0, 0);
    layout->addWidget(note_);
    setCentralWidget(central);

    buildMenus();
    buildToolBar();
    connectOverview();

    // Room for the case beside what it owes, and a few lines of each list.
    resize(fontMetrics().horizontalAdvance(QString(128, QLatin1Char('n'))),
           fontMetrics().height() * 40);
    refresh();
}

MainWindow::~MainWindow() = default;

ShellContext MainWindow::shellContext()
{
    return ShellContext{session_, services_.msgs, services_.files,
                        *this,    endWatch_,      *services_.clock};
}

// ---- Menus and tool bar ------------------------------------------------------

QAction* MainWindow::menuAction(QMenu* menu, const char* name, const QString& caption,
                                std::function<void()> command, bool checkable,
                                const QKeySequence& shortcut)
{
    auto* action = menu->addAction(caption);
    action->setObjectName(QString::fromLatin1(name));
    action->setCheckable(checkable);
    action->setShortcut(shortcut);
    // The check mark follows the case, not the click: the command's end
    // redraws it from the session.
    connect(action, &QAction::triggered, this, [this, command = std::move(command)] {
        if (!programEnded())
            command();
        refresh();
    });
    actions_.emplace(name, action);
    return action;
}

void MainWindow::buildMenus()
{
    QMenuBar* bar = menuBar();
    const auto topMenu = [&](const char* name, const QString& caption, bool clearsNote) {
        QMenu* menu = bar->addMenu(caption);
        menu->setObjectName(QString::fromLatin1(name));
        if (clearsNote)
            connect(menu, &QMenu::aboutToShow, this, [this] {
                TopMenuOpened(session_);
                refresh();
            });
        return menu;
    };

    QMenu* file = topMenu("mnuFile", QStringLiteral("&File"), true);
    const auto fileCommand = [this](const char* procedure, void (*command)(ShellContext&)) {
        return [this, procedure, command] {
            run(procedure, [this, command] {
                auto ctx = shellContext();
                command(ctx);
            });
        };
    };
    menuAction(file, "mnuFileNew", QStringLiteral("&New..."),
               fileCommand("mnuFileNew_Click", &FileNew), false, QKeySequence::New);
    menuAction(file, "mnuFileOpen", QStringLiteral("&Open..."),
               fileCommand("mnuFileOpen_Click", &FileOpen), false, QKeySequence::Open);
    recentMenu_ = file->addMenu(QStringLiteral("Open &Recent"));
    recentMenu_->setObjectName(QStringLiteral("mnuFileRecent"));
    menuAction(file, "mnuFileSave", QStringLiteral("&Save"),
               fileCommand("mnuFileSave_Click", [](ShellContext& ctx) { FileSave(ctx); }), false,
               QKeySequence::Save);
    menuAction(file, "mnuFileSaveAs", QStringLiteral("Save &As..."),
               fileCommand("mnuFileSaveAs_Click", [](ShellContext& ctx) { FileSaveAs(ctx); }),
               false, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    file->addSeparator();
    menuAction(
        file, "mnuFilePrint", QStringLiteral("&Print..."), [this] { printCommand(); }, false,
        QKeySequence::Print);
    // The reports as CSV files, for a spreadsheet.
    menuAction(file, "mnuFileExport", QStringLiteral("&Export..."), [this] {
        run("mnuFileExport_Click", [this] {
            CommandContext ctx = commandContext();
            RunExportCommand(ctx, session_.gsFileName, reportHooksFor(this, services_.desktop));
        });
    });
    file->addSeparator();
    menuAction(
        file, "mnuFileExit", QStringLiteral("E&xit"), [this] { close(); }, false,
        QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* view = topMenu("mnuView", QStringLiteral("&View"), true);
    menuAction(view, "mnuViewReports", QStringLiteral("&Reports..."), [this] { reportsCommand(); });

    QMenu* inputs = topMenu("mnuInputs", QStringLiteral("&Inputs"), true);
    menuAction(
        inputs, "mnuInputsInitial", QStringLiteral("&Initial Inputs..."),
        [this] { run("mnuInputsInitial_Click", [this] { showInitialInputs(session_); }); }, true);
    QMenu* penalties = inputs->addMenu(QStringLiteral("&Penalties..."));
    penalties->setObjectName(QStringLiteral("mnuInputsPenalties"));
    menuAction(
        penalties, "mnuPenFTPay", QStringLiteral("Failure to &Pay"),
        [this] {
            run("mnuPenFTPay_Click", [this] {
                CommandContext ctx = commandContext();
                RunFailureToPayCommand(ctx);
            });
        },
        true);
    menuAction(
        penalties, "mnuPenFTFile", QStringLiteral("&Failure to File"),
        [this] {
            run("mnuPenFTFile_Click", [this] {
                CommandContext ctx = commandContext();
                RunFailureToFileCommand(ctx);
            });
        },
        true);
    menuAction(
        penalties, "mnuPenAccuracy", QStringLiteral("&Accuracy Related"),
        [this] { accuracyRelatedCommand(); }, true);
    menuAction(
        penalties, "mnuPenEstTax", QStringLiteral("Es&timated Tax..."),
        [this] {
            run("mnuPenEstTax_Click", [this] {
                CommandContext ctx = commandContext();
                RunEstimatedTaxCommand(ctx);
            });
        },
        true);
    menuAction(
        penalties, "mnuPenPR", QStringLiteral("Payro&ll"), [this] { payrollCommand(); }, true);
    menuAction(penalties, "mnuPenExtended", QStringLiteral("&Extended Due Date"),
               [this] { extendedDueDateCommand(); });
    menuAction(
        inputs, "mnuInputsPayments", QStringLiteral("P&ayments..."), [this] { paymentsCommand(); },
        true);
    menuAction(
        inputs, "mnuInputsCharges", QStringLiteral("&Other Charges..."),
        [this] {
            run("mnuInputsCharges_Click", [this] {
                CommandContext ctx = commandContext();
                RunOtherChargesCommand(ctx);
            });
        },
        true);

    QMenu* options = topMenu("mnuOptions", QStringLiteral("&Options"), true);
    menuAction(
        options, "mnuOptionsInterest", QStringLiteral("&Interest Rates..."),
        [this] { optionalRatesCommand(); }, true);
    menuAction(
        options, "mnuOptionsSuspend", QStringLiteral("&Suspend Interest..."),
        [this] { suspendCommand(); }, true);
    options->addSeparator();
    menuAction(
        options, "mnuShowToolBar", QStringLiteral("Show Tool &Bar"),
        [this] { session_.menus.showToolBarChecked = !session_.menus.showToolBarChecked; }, true);
    menuAction(
        options, "mnuShowToolTips", QStringLiteral("Show Tool &Tips"),
        [this] { session_.menus.showToolTipsChecked = !session_.menus.showToolTipsChecked; }, true);

    QMenu* help = topMenu("mnuHelp", QStringLiteral("&Help"), false);
    menuAction(
        help, "mnuHelpContents", QStringLiteral("&Contents..."),
        [this] { run("mnuHelpContents_Click", [this] { helpContents(); }); }, false,
        QKeySequence::HelpContents);
    menuAction(help, "mnuHelpOnHelp", QStringLiteral("&Help on Help..."),
               [this] { run("mnuHelpOnHelp_Click", [this] { HelpOnHelp(services_.msgs); }); });
    // The sample cases installed with the program, opened as copies.
    QMenu* samples = help->addMenu(QStringLiteral("&Sample Cases"));
    samples->setObjectName(QStringLiteral("mnuHelpSamples"));
    static constexpr const char* kSampleActions[] = {"mnuSample1", "mnuSample2"};
    static_assert(std::size(kSampleActions) == std::size(kSampleCases));
    for (std::size_t i = 0; i < std::size(kSampleCases); ++i) {
        const std::string_view sample = kSampleCases[i];
        menuAction(samples, kSampleActions[i], fromCore(sample), [this, sample] {
            run("mnuHelpSamples_Click", [this, sample] {
                auto ctx = shellContext();
                OpenSampleCase(ctx, sample);
            });
        });
    }
    help->addSeparator();
    menuAction(help, "mnuHelpAbout", QStringLiteral("&About..."),
               [this] { run("mnuHelpAbout_Click", [this] { aboutCommand(); }); });
}

QAction* MainWindow::toolAction(const char* key, const QIcon& icon, const QString& tip)
{
    auto* action = toolBar_->addAction(icon, QString::fromLatin1(key));
    action->setObjectName(QStringLiteral("tlb") + QString::fromLatin1(key));
    action->setData(QString::fromLatin1(key));
    action->setToolTip(tip);
    const std::string k = key;
    connect(action, &QAction::triggered, this, [this, k] { toolbarKey(k); });
    keys_.emplace(key, action);
    return action;
}

void MainWindow::buildToolBar()
{
    toolBar_ = addToolBar(QStringLiteral("Tool Bar"));
    toolBar_->setObjectName(QStringLiteral("tlbMain"));
    toolBar_->setMovable(false);
    toolBar_->setFloatable(false);
    toolBar_->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolBar_->toggleViewAction()->setEnabled(false);
    toolBar_->installEventFilter(this);
    QStyle* st = style();
    toolAction("New", st->standardIcon(QStyle::SP_FileIcon), QStringLiteral("New case"));
    toolAction("Open", st->standardIcon(QStyle::SP_DialogOpenButton),
               QStringLiteral("Open a case"));
    toolAction("Save", st->standardIcon(QStyle::SP_DialogSaveButton),
               QStringLiteral("Save the case"));
    toolBar_->addSeparator();
    toolAction("View", st->standardIcon(QStyle::SP_FileDialogContentsView),
               QStringLiteral("View reports"));
    toolAction("Print",
               QIcon::fromTheme(QStringLiteral("document-print"),
                                st->standardIcon(QStyle::SP_FileDialogDetailedView)),
               QStringLiteral("Print reports"));
    toolBar_->addSeparator();
    toolAction("Help", st->standardIcon(QStyle::SP_MessageBoxQuestion),
               QStringLiteral("Help contents"));
    toolAction("Exit", st->standardIcon(QStyle::SP_DialogCloseButton),
               QStringLiteral("Exit the program"));
    // The tool bar's buttons are found by their key.
    const auto buttons = toolBar_->actions();
    for (QAction* a : buttons)
        if (QWidget* w = toolBar_->widgetForAction(a); w && a->data().isValid())
            w->setObjectName(QStringLiteral("btn") + a->data().toString());
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // "Show Tool Tips" off: the tool bar's buttons show no tips.
    if (event->type() == QEvent::ToolTip && !session_.menus.showToolTipsChecked
        && (watched == toolBar_
            || (watched->isWidgetType() && toolBar_->isAncestorOf(static_cast<QWidget*>(watched)))))
        return true;
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::toolbarKey(std::string_view key)
{
    if (programEnded())
        return;
    switch (ToolbarCommand(key, services_.msgs)) {
    case MainCommand::New:
        actions_.at("mnuFileNew")->trigger();
        return;
    case MainCommand::Open:
        actions_.at("mnuFileOpen")->trigger();
        return;
    case MainCommand::Save:
        actions_.at("mnuFileSave")->trigger();
        return;
    case MainCommand::Print:
        printCommand();
        break;
    case MainCommand::View:
        reportsCommand();
        break;
    case MainCommand::Help:
        run("tlbMain_ButtonClick", [this] { helpContents(); });
        break;
    case MainCommand::Exit:
        close();
        return;
    case MainCommand::Unknown:
        break;
    }
    refresh();
}

void MainWindow::refresh()
{
    const MenuState& m = session_.menus;
    const auto set = [this](const char* name, bool enabled, std::optional<bool> checked) {
        QAction* a = actions_.at(name);
        a->setEnabled(enabled);
        if (checked)
            a->setChecked(*checked);
    };
    set("mnuFileSave", m.saveEnabled, std::nullopt);
    set("mnuFileSaveAs", m.saveAsEnabled, std::nullopt);
    set("mnuFilePrint", m.printEnabled, std::nullopt);
    set("mnuFileExport", m.printEnabled, std::nullopt);
    set("mnuViewReports", m.reportsEnabled, std::nullopt);
    set("mnuInputsInitial", m.initialInputsEnabled, m.initialInputsChecked);
    set("mnuInputsPayments", true, m.paymentsChecked);
    set("mnuInputsCharges", true, m.chargesChecked);
    set("mnuPenFTPay", true, m.ftPayChecked);
    set("mnuPenFTFile", true, m.ftFileChecked);
    set("mnuPenAccuracy", true, m.accuracyChecked);
    set("mnuPenEstTax", true, m.estTaxChecked);
    set("mnuPenPR", true, m.payrollChecked);
    set("mnuOptionsInterest", true, m.interestRatesChecked);
    set("mnuOptionsSuspend", true, m.suspendChecked);
    set("mnuShowToolBar", true, m.showToolBarChecked);
    set("mnuShowToolTips", true, m.showToolTipsChecked);
    keys_.at("Save")->setVisible(m.saveButtonVisible);
    keys_.at("Print")->setVisible(m.printButtonVisible);
    keys_.at("View")->setVisible(m.viewButtonVisible);
    toolBar_->setVisible(m.showToolBarChecked);
    refreshRecentFiles();
    note_->setText(fromCore(m.note));
    setWindowTitle(fromCore(session_.title));
    // The case as it now stands, computed again when it changed (the overview
    // tells a computation it cannot make in its place instead of throwing).
    OverviewBasis basis{session_.kase, session_.gRates, session_.release};
    if (overviewBasis_ == basis)
        return;
    overview_->showOverview(MakeCaseOverview(
        basis.kase, StandardReportSources(basis.rates, basis.release.ftfMinimums,
                                          ProvenanceOf(basis.release, services_.clock->today()))));
    overviewBasis_ = std::move(basis);
}

void MainWindow::connectOverview()
{
    using T = OverviewTarget;
    const auto entry
        = [this](const char* action) { return [this, action] { actions_.at(action)->trigger(); }; };
    overview_->setOpeners({
        {T::InitialInputs, entry("mnuInputsInitial")},
        {T::FailureToFile, entry("mnuPenFTFile")},
        {T::FailureToPay, entry("mnuPenFTPay")},
        {T::AccuracyRelated, [this] { accuracyRelatedCommand(); }},
        {T::Payroll, [this] { payrollCommand(); }},
        {T::EstimatedTax, entry("mnuPenEstTax")},
        {T::InterestRates, [this] { optionalRatesCommand(); }},
        {T::Suspension, [this] { suspendCommand(); }},
        {T::ExtendedDueDate, [this] { extendedDueDateCommand(); }},
        {T::Payments, [this] { paymentsCommand(); }},
        {T::OtherCharges, entry("mnuInputsCharges")},
    });
}

void MainWindow::refreshRecentFiles()
{
    recentMenu_->clear();
    const std::vector<std::string>& recent = session_.recentFiles;
    recentMenu_->setEnabled(!recent.empty());
    for (std::size_t i = 0; i < recent.size(); ++i) {
        // "&1 name" with the folder shown as the entry's tip.
        const std::string& path = recent[i];
        const QString shown = QStringLiteral("&%1 %2").arg(i + 1).arg(
            fromCore(std::filesystem::path(path).filename().string()));
        QAction* a = recentMenu_->addAction(shown);
        a->setObjectName(QStringLiteral("mnuRecent%1").arg(i + 1));
        a->setToolTip(fromCore(path));
        a->setStatusTip(fromCore(path));
        connect(a, &QAction::triggered, this, [this, path] {
            run("mnuFileRecent_Click", [this, path] {
                auto ctx = shellContext();
                FileOpenRecent(ctx, path);
            });
        });
    }
}

// ---- Command boundary ----------------------------------------------------------

void MainWindow::run(std::string_view name, const std::function<void()>& command)
{
    if (programEnded())
        return;
    ShellContext ctx = shellContext();
    RunCommand(ctx, name, command);
    if (programEnded())
        return;
    // Whatever the command changed in the case shows at once: "*" in the
    // title, the menu marks, a fresh recovery copy.
    RunCommand(ctx, name, [this] { NoteCaseChanges(session_, services_.msgs); });
    if (!programEnded())
        refresh();
}

bool MainWindow::startUp(const Paths& paths, std::string_view platformVersion)
{
    session_.paths = paths;
    ShellContext ctx = shellContext();
    const std::string version(platformVersion);
    const bool ok
        = RunCommand(ctx, "Main", [&] { Startup(session_, paths, services_.msgs, version); });
    if (ok && !programEnded())
        refresh();
    return ok && !programEnded();
}

CommandContext MainWindow::commandContext()
{
    return CommandContext{
        this,
        session_.kase,
        session_.gRates,
        session_.release.ftfMinimums,
        session_.paths,
        services_.msgs,
        session_.reportChoice,
        session_.printState,
        [this](std::string_view note) {
            session_.menus.note = std::string(note);
            note_->setText(fromCore(note));
            note_->repaint();
        },
        [this] { helpContents(); },
        [this] { WriteRecoveryCopy(session_, services_.msgs); },
        [this] { openExtendedDueDate(); },
        ProvenanceOf(session_.release, services_.clock->today()),
    };
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (closing_ || programEnded()) {
        event->accept();
        return;
    }
    // The closing question may keep the program open (Cancel); the exit
    // procedure ends it.
    event->ignore();
    closing_ = true;
    run("Form_Unload", [this] {
        ShellContext ctx = shellContext();
        CloseMainWindow(ctx);
    });
    closing_ = programEnded();
}

// ---- Dialogs of the shell --------------------------------------------------------

bool MainWindow::showInitialInputs(Session& session)
{
    InitialInputsWindow dlg(session.kase, session.gRates, session.paths, services_.msgs,
                            RateCurrencyServices{session.release, *this, endWatch_}, this);
    dlg.run();
    ShellContext ctx = shellContext();
    switch (dlg.outcome()) {
    case InitialInputsWindow::Outcome::Stored:
        InitialInputsAccepted(ctx);
        return true;
    case InitialInputsWindow::Outcome::SaveAndExit:
        InitialInputsSaveAndExit(ctx);
        return true;
    case InitialInputsWindow::Outcome::Cancelled:
    case InitialInputsWindow::Outcome::ProgramEnded:
        break;
    }
    return false;
}

void MainWindow::showModal(const RateAlert& alert)
{
    QWidget* over = QApplication::activeModalWidget();
    UpdateAlertWindow dlg(alert, services_.desktop, over ? over : this);
    dlg.exec();
}

// ---- Commands ------------------------------------------------------------------------

void MainWindow::paymentsCommand()
{
    run("mnuInputsPayments_Click", [this] {
        BeforePayments(session_, services_.msgs);
        CommandContext ctx = commandContext();
        RunPaymentsCommand(ctx);
    });
}

void MainWindow::payrollCommand()
{
    run("mnuPenPR_Click", [this] {
        if (!BeforePayroll(session_, services_.msgs))
            return;
        CommandContext ctx = commandContext();
        RunPayrollCommand(ctx);
    });
}

void MainWindow::accuracyRelatedCommand()
{
    run("mnuPenAccuracy_Click", [this] {
        // The command goes on to the Extended Due Date dialog itself when the
        // penalty is on.
        CommandContext ctx = commandContext();
        RunAccuracyRelatedCommand(ctx);
    });
}

void MainWindow::optionalRatesCommand()
{
    run("mnuOptionsInterest_Click", [this] {
        OptRatesWindow dlg(session_.kase, services_.msgs, this);
        dlg.run();
    });
}

void MainWindow::suspendCommand()
{
    run("mnuOptionsSuspend_Click", [this] {
        SuspendWindow dlg(session_.kase, services_.msgs, this);
        dlg.run();
    });
}

void MainWindow::extendedDueDateCommand()
{
    run("mnuPenExtended_Click", [this] { openExtendedDueDate(); });
}

void MainWindow::openExtendedDueDate()
{
    ExtDueDateWindow dlg(session_.kase, services_.msgs,
                         QApplication::activeModalWidget() ? QApplication::activeModalWidget()
                                                           : this);
    dlg.run();
}

void MainWindow::helpContents()
{
    const std::filesystem::path file = session_.paths.helpFile();
    std::error_code ec;
    if (!std::filesystem::is_regular_file(file, ec)) {
        services_.msgs.show("Help",
                            "The help file " + Utf8ToLatin1(file.string()) + " was not found.",
                            MsgIcon::Exclamation);
        return;
    }
    if (!services_.desktop.openDocument(file, session_.paths.installDir))
        services_.msgs.show(
            "Help",
            "The help file " + Utf8ToLatin1(file.string())
                + " could not be opened.  A viewer for PDF files is needed to read it.",
            MsgIcon::Exclamation);
}

void MainWindow::aboutCommand()
{
    AboutBox about(session_.release, services_.desktop, this);
    about.exec();
}

void MainWindow::reportsCommand()
{
    run("mnuViewReports_Click", [this] {
        CommandContext ctx = commandContext();
        RunReportDisplayCommand(ctx, reportHooksFor(this, services_.desktop));
    });
}

void MainWindow::printCommand()
{
    run("mnuFilePrint_Click", [this] {
        CommandContext ctx = commandContext();
        RunPrintCommand(ctx, reportHooksFor(this, services_.desktop));
    });
}

}  // namespace rw::ui
