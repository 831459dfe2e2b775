#pragma once
// The list commands of the main window: Inputs - Payments, Inputs - Other
// Charges and Penalties - Payroll. Each opens its list dialog modally over
// ctx.parent, changes the case as the user works in it and writes the
// recovery copy when the list is closed. The check marks of the menu entries
// are the shell's (EnableInputs, SetPenaltyChecks), drawn from the case
// afterwards. A fault met inside the dialogs closes them and is thrown from
// here as rw::Fault, for the main window's error reporter.

#include "ui/common/commandcontext.h"

namespace rw::ui {

// "Payments" and "Payment Information". Closing the list of a payroll case
// with "Auto Arrange Payments to Minimize Payroll Penalties" checked runs the
// arrangement search first (its progress shows in the dialog; the savings
// box goes through ctx.msgs). The payment-order warning that precedes the
// dialog for a case without payroll is the caller's.
void RunPaymentsCommand(CommandContext& ctx);

// "Other Charges" and "Addition To Tax".
void RunOtherChargesCommand(CommandContext& ctx);

// "Payroll Tax Deposit Penalties" and "Payroll Deposit Information". The
// caller shows the payroll warning instead when the case is not a payroll
// case.
void RunPayrollCommand(CommandContext& ctx);

}  // namespace rw::ui
