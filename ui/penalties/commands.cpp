#include "ui/penalties/commands.h"

#include "rates/ratetable.h"

#include "ui/penalties/esttaxwindow.h"
#include "ui/penalties/penaltywindows.h"

namespace rw::ui {

namespace {

// Runs the dialog; an accepted one has stored into the case, and the
// recovery copy follows.
template<typename Window, typename Logic>
void runDialog(CommandContext& ctx, Logic& logic)
{
    bool accepted = false;
    {
        Window dlg(logic, ctx.parent);
        accepted = dlg.run();
    }
    if (accepted && ctx.writeRecoveryCopy)
        ctx.writeRecoveryCopy();
}

}  // namespace

void RunFailureToFileCommand(CommandContext& ctx)
{
    FtoFileDialog logic(ctx.kase, ctx.msgs, [&ctx] {
        if (ctx.openExtendedDueDate)
            ctx.openExtendedDueDate();
    });
    runDialog<FtoFileWindow>(ctx, logic);
}

void RunFailureToPayCommand(CommandContext& ctx)
{
    FtoPayDialog logic(ctx.kase, ctx.msgs);
    runDialog<FtoPayWindow>(ctx, logic);
}

void RunAccuracyRelatedCommand(CommandContext& ctx)
{
    AccRelDialog logic(ctx.kase, ctx.msgs);
    runDialog<AccRelWindow>(ctx, logic);
    if (logic.wantsExtendedDueDate() && ctx.openExtendedDueDate)
        ctx.openExtendedDueDate();
}

void RunEstimatedTaxCommand(CommandContext& ctx)
{
    EstTaxCase& est = ctx.kase.estTax;
    // A case whose authority is not yet chosen computes on the federal table.
    const bool federal = &AuthorityForCode(ctx.kase.init.sTaxAuth.view()) == &Authorities()[0];
    EstTaxDialog logic(est.input, est.on, est.noticeDate, ctx.msgs, federal);
    runDialog<EstTaxWindow>(ctx, logic);
}

}  // namespace rw::ui
