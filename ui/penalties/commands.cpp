#include "ui/penalties/commands.h"

#include "ui/penalties/penaltywindows.h"

namespace rw::ui {

namespace {

// The menu mark after the dialog: what an accepted dialog asked for, else
// the mark the case calls for.
bool markAfter(bool accepted, const Accepted& outcome, bool fromCase)
{
    if (accepted && outcome.mark == MenuMark::Set)
        return true;
    if (accepted && outcome.mark == MenuMark::Clear)
        return false;
    return fromCase;
}

void writeRecoveryCopy(CommandContext& ctx)
{
    if (ctx.writeRecoveryCopy)
        ctx.writeRecoveryCopy();
}

}  // namespace

bool RunFailureToFileCommand(CommandContext& ctx)
{
    FtoFileDialog logic(ctx.kase, ctx.msgs, [&ctx] {
        if (ctx.openExtendedDueDate)
            ctx.openExtendedDueDate();
    });
    bool accepted = false;
    Accepted outcome;
    {
        FtoFileWindow dlg(logic, ctx.parent);
        accepted = dlg.run();
        outcome = dlg.outcome();
    }
    if (accepted)
        writeRecoveryCopy(ctx);
    return markAfter(accepted, outcome, IsYes(ctx.kase.init.bFtoFile));
}

bool RunFailureToPayCommand(CommandContext& ctx)
{
    FtoPayDialog logic(ctx.kase, ctx.msgs);
    bool accepted = false;
    Accepted outcome;
    {
        FtoPayWindow dlg(logic, ctx.parent);
        accepted = dlg.run();
        outcome = dlg.outcome();
    }
    if (accepted)
        writeRecoveryCopy(ctx);
    const InitInputs& in = ctx.kase.init;
    return markAfter(accepted, outcome, IsYes(in.bFtoPay) || IsYes(in.b6651d1));
}

bool RunAccuracyRelatedCommand(CommandContext& ctx)
{
    AccRelDialog logic(ctx.kase, ctx.msgs);
    bool accepted = false;
    Accepted outcome;
    {
        AccRelWindow dlg(logic, ctx.parent);
        accepted = dlg.run();
        outcome = dlg.outcome();
    }
    if (accepted)
        writeRecoveryCopy(ctx);
    if (logic.wantsExtendedDueDate() && ctx.openExtendedDueDate)
        ctx.openExtendedDueDate();
    return markAfter(accepted, outcome, IsYes(ctx.kase.init.bAccRel));
}

}  // namespace rw::ui
