#include "ui/lists/commands.h"

#include "ui/lists/chargewindows.h"
#include "ui/lists/depositwindows.h"
#include "ui/lists/paymentwindows.h"

namespace rw::ui {

namespace {

void writeRecoveryCopy(CommandContext& ctx)
{
    if (ctx.writeRecoveryCopy)
        ctx.writeRecoveryCopy();
}

}  // namespace

bool RunPaymentsCommand(CommandContext& ctx)
{
    {
        PaymentsWindow dlg(ctx);
        dlg.run();
    }
    writeRecoveryCopy(ctx);
    return ctx.kase.init.nPmts >= 1;
}

bool RunOtherChargesCommand(CommandContext& ctx)
{
    {
        ChargesWindow dlg(ctx);
        dlg.run();
    }
    writeRecoveryCopy(ctx);
    return ctx.kase.init.nCharges >= 1;
}

bool RunPayrollCommand(CommandContext& ctx)
{
    {
        DepositsWindow dlg(ctx);
        dlg.run();
    }
    writeRecoveryCopy(ctx);
    return ctx.kase.init.nDeposits >= 1;
}

}  // namespace rw::ui
