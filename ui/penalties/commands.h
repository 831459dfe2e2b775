#pragma once
// The penalty commands of the main window: Penalties - Failure to File,
// Failure to Pay, Accuracy Related and Estimated Tax. Each opens its dialog
// modally over ctx.parent; an accepted dialog stores into the case and writes
// the recovery copy. The check marks of the menu entries are the shell's
// (SetPenaltyChecks), drawn from the case afterwards. A fault met inside a
// dialog closes it and is thrown from here as rw::Fault. (Penalties - Payroll
// is RunPayrollCommand of ui/lists/commands.h, with the other list dialogs.)

#include "ui/common/commandcontext.h"

namespace rw::ui {

// "Failure To File Penalty Inputs". Leaving "Date Return Filed:" opens the
// Extended Due Date dialog through ctx.openExtendedDueDate.
void RunFailureToFileCommand(CommandContext& ctx);

// "Failure To Pay Inputs".
void RunFailureToPayCommand(CommandContext& ctx);

// "Accuracy Related Penalty". When the penalty is on once the dialog has
// closed (OK or Cancel), this command itself goes on to the Extended Due Date
// dialog through ctx.openExtendedDueDate, so that the day from which interest
// runs on the penalty is asked for: the caller must not open it again.
void RunAccuracyRelatedCommand(CommandContext& ctx);

// "Estimated Tax": the inputs of the penalty for underpaying estimated tax,
// kept in ctx.kase.estTax.
void RunEstimatedTaxCommand(CommandContext& ctx);

}  // namespace rw::ui
