#include "ui/reports/commands.h"

#include "reports/standardsources.h"
#include "ui/reports/reportchoices.h"
#include "ui/reports/reportwindows.h"

namespace rw::ui {

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
    int cascade = 0;
    for (const ReportWindow& w : windows)
        OpenReportWindow(ctx, hooks, w, cascade++);
}

void RunPrintCommand(CommandContext& ctx)
{
    RunPrintCommand(ctx, ReportHooks{});
}

void RunPrintCommand(CommandContext& ctx, const ReportHooks& hooks)
{
    PrintCommand(ctx, hooks);
}

}  // namespace rw::ui
