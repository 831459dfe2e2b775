#pragma once
// The one answer to an unexpected fault: secure the case in the recovery
// copy, tell the user where it happened and offer to save, log it, add a hint
// for the two errors that have one, and end the program. Nothing is retried.

#include "base/fault.h"
#include "shell/services.h"
#include "shell/session.h"

#include <functional>
#include <string>
#include <string_view>

namespace rw {

// "Error 9, Subscript out of range, encountered.  Location of error:
// GetInterest.  Do you want to save your data before the program ABORTS?"
// With the fault's explanation (detail) when it has one:
// "... Location of error: GetInterest (the computation needs more than 601
// result rows).  Do you want ..."
std::string ErrorReportText(int number, std::string_view procedure, std::string_view detail = {});

// The "Possible Solution:" hint of an error number; empty for numbers
// without one (all but 9 and 321).
std::string PossibleSolutionText(int number);

// Reports the fault and ends the program through ctx.program: recovery copy,
// the question (Yes runs Save As), a line in qraterr.log ("mm-dd-yyyy -> "
// and the question's text), the hint, the end.
void ReportError(ShellContext& ctx, const Fault& fault);
void ReportError(ShellContext& ctx, int number, std::string_view procedure,
                 std::string_view detail = {});

// The command boundary: runs fn and hands a fault to ReportError. A refusal
// of the computation (rw::Refusal) is shown as a warning and ends nothing. Any other
// exception becomes a fault named after the command (out of memory 7,
// anything else 5). True when fn finished without a fault.
bool RunCommand(ShellContext& ctx, std::string_view name, const std::function<void()>& fn);

}  // namespace rw
