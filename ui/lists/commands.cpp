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

void RunPaymentsCommand(CommandContext& ctx)
{
    {
        PaymentsWindow dlg(ctx);
        dlg.run();
    }
    writeRecoveryCopy(ctx);
}

void RunOtherChargesCommand(CommandContext& ctx)
{
    {
        ChargesWindow dlg(ctx);
        dlg.run();
    }
    writeRecoveryCopy(ctx);
}

void RunPayrollCommand(CommandContext& ctx)
{
    {
        DepositsWindow dlg(ctx);
        dlg.run();
    }
    writeRecoveryCopy(ctx);
}

}  // namespace rw::ui
