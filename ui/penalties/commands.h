#pragma once
// The penalty commands of the main window: Penalties - Failure to File,
// Failure to Pay and Accuracy Related. Each opens its dialog modally over
// ctx.parent; an accepted dialog stores into the case and writes the recovery
// copy. Each returns the new check mark of its menu entry: the mark the
// accepted dialog asks for, or, after Cancel, the mark the case calls for. A
// fault met inside a dialog closes it and is thrown from here as rw::Fault.
// (Penalties - Payroll is RunPayrollCommand of ui/lists/commands.h, with the
// other list dialogs.)

#include "ui/common/commandcontext.h"

namespace rw::ui {

// "Failure To File Penalty Inputs". Leaving "Date Return Filed:" opens the
// Extended Due Date dialog through ctx.openExtendedDueDate. The mark after
// Cancel: bFtoFile.
bool RunFailureToFileCommand(CommandContext& ctx);

// "Failure To Pay Inputs". The mark after Cancel: bFtoPay or b6651d1.
bool RunFailureToPayCommand(CommandContext& ctx);

// "Accuracy Related Penalty". When the penalty is on once the dialog has
// closed (OK or Cancel), this command itself goes on to the Extended Due Date
// dialog through ctx.openExtendedDueDate, so that the day from which interest
// runs on the penalty is asked for: the caller must not open it again. The
// mark after Cancel: bAccRel (choosing No turns it off at once, even when the
// dialog is then cancelled).
bool RunAccuracyRelatedCommand(CommandContext& ctx);

}  // namespace rw::ui
