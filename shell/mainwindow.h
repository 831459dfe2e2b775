#pragma once
// The main window's commands as logic: which command a tool bar key runs,
// the checks some menu commands make before their dialog opens, and the note
// line. The window layer opens the dialogs; these decide whether it may.

#include "base/messages.h"
#include "shell/session.h"

#include <string_view>

namespace rw {

enum class MainCommand { New, Open, Save, Print, View, Help, Exit, Unknown };

// The command of a tool bar key ("New", "Open", "Save", "View", "Print",
// "Help", "Exit"). An unknown key is answered with a warning and gives
// Unknown.
MainCommand ToolbarCommand(std::string_view key, Messages& msgs);

// Opening a top-level menu (File, View, Inputs, Options) clears the note.
void TopMenuOpened(Session& s);

// Inputs - Payments: a non-payroll case first gets the payment-order warning,
// every time. The payments dialog opens afterwards in either case.
void BeforePayments(const Session& s, Messages& msgs);

// Penalties - Payroll: true when the payroll deposit list may open; otherwise
// the warning that the case must be a payroll case.
bool BeforePayroll(const Session& s, Messages& msgs);

// Help - Help on Help.
void HelpOnHelp(Messages& msgs);

}  // namespace rw
