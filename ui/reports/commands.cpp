#include "ui/reports/commands.h"

#include "base/binio.h"
#include "reports/csvexport.h"
#include "reports/standardsources.h"
#include "shell/session.h"
#include "ui/reports/reportchoices.h"
#include "ui/reports/reportwindows.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

#include <filesystem>

namespace rw::ui {

namespace {

// The chooser opens on the case file's folder, or the user's documents for a
// case not yet saved.
QString defaultExportFolder(QWidget* parent, const std::string& caseFile)
{
    QString start = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!caseFile.empty()) {
        const QFileInfo file(QString::fromStdString(caseFile));
        if (file.absoluteDir().exists())
            start = file.absolutePath();
    }
    return QFileDialog::getExistingDirectory(
        parent, QStringLiteral("Export the Reports to a Folder"), start);
}

}  // namespace

void RunReportDisplayCommand(CommandContext& ctx)
{
    RunReportDisplayCommand(ctx, ReportHooks{});
}

void RunReportDisplayCommand(CommandContext& ctx, const ReportHooks& hooks)
{
    QtReportChooser chooser(nullptr, ctx.parent);
    const std::vector<ReportWindow> windows
        = ReportDisplayCommand(ctx.kase, ctx.reportChoice, chooser,
                               StandardReportSources(ctx.rates, ctx.ftfMinimums, ctx.provenance));
    OpenReportWindows(ctx, hooks, windows);
}

void RunPrintCommand(CommandContext& ctx)
{
    RunPrintCommand(ctx, ReportHooks{});
}

void RunPrintCommand(CommandContext& ctx, const ReportHooks& hooks)
{
    PrintCommand(ctx, hooks);
}

void RunExportCommand(CommandContext& ctx, const std::string& caseFile, const ReportHooks& hooks)
{
    const QString chosen = hooks.chooseExportFolder ? hooks.chooseExportFolder(ctx.parent)
                                                    : defaultExportFolder(ctx.parent, caseFile);
    if (chosen.isEmpty())
        return;
    const std::filesystem::path folder(chosen.toStdString());
    const std::vector<CsvTable> tables
        = CsvTables(kRptInputs | kRptSummary | kRptDetail | kRptFailFilePay | kRptAccRel
                        | kRptPayroll | kRptEstTax,
                    ctx.kase, StandardReportSources(ctx.rates, ctx.ftfMinimums, ctx.provenance));
    const std::string caseName = CsvCaseName(caseFile);
    std::vector<std::string> names, existing;
    for (const CsvTable& t : tables) {
        names.push_back(CsvFileName(caseName, t.report));
        std::error_code ec;
        if (std::filesystem::exists(folder / names.back(), ec))
            existing.push_back(names.back());
    }
    if (!existing.empty()
        && !ctx.msgs.ask("Export", CsvReplaceQuestion(folder.string(), existing),
                         MsgIcon::Question))
        return;
    std::vector<std::string> written;
    for (std::size_t i = 0; i < tables.size(); ++i) {
        const std::filesystem::path file = folder / names[i];
        const std::string bytes = CsvFileBytes(tables[i]);
        if (!WriteOrTell(ctx.msgs, "Export", "The " + tables[i].report + " report", file, [&] {
                WriteFileAtomically(file.string(), std::vector<char>(bytes.begin(), bytes.end()),
                                    "ExportReports");
            }))
            break;
        written.push_back(names[i]);
    }
    if (!written.empty())
        ctx.msgs.show("Export", CsvWrittenText(folder.string(), written), MsgIcon::Information);
}

}  // namespace rw::ui
