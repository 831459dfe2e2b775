#pragma once
// The file commands of the main window: New, Open, Save, Save As, the
// question asked when the window closes with unsaved changes, and the exit
// procedure. Each runs inside RunCommand (errorreporter.h), which hands an
// unexpected fault (a failed write, a damaged rate table) to the error
// reporter.
//
// A cancelled file dialog changes nothing: not the case, not its file, not
// the file name, the data folder or the menus.

#include "shell/services.h"
#include "shell/session.h"

#include <string>
#include <string_view>

namespace rw {

// New: an empty federal case named "UNTITLED.INT"; then the Initial Inputs
// dialog. Unsaved changes of the case before are not asked about.
void FileNew(ShellContext& ctx);

// Open: chooses a case file and reads it; then the Initial Inputs dialog.
// A rate table file (name ending in "TBL") is not opened: the user is told
// that rate tables follow the authority chosen in Initial Inputs, and nothing
// else changes. A missing file or one of another kind is told and leaves the
// session as it was; a damaged file is told, and the case in memory stays too.
void FileOpen(ShellContext& ctx);

// Save: writes the case to its own file (Save As while the case has none).
void FileSave(ShellContext& ctx);

// Save As: chooses a file, remembers its folder, writes the case. False when
// the dialog was cancelled.
bool FileSaveAs(ShellContext& ctx);

// The closing question: with unsaved changes, "File ... has not been saved.
// Do you want to save your data before exiting?" (Yes runs Save As). There
// is no Cancel.
void ExitPrompt(ShellContext& ctx);

// The exit procedure: stores the tool bar and tool tip choices in the
// settings file, hides the main window, runs Save As when saveFirst, and ends
// the program.
void ExitProgram(ShellContext& ctx, bool saveFirst);

// The main window closes (File - Exit or its close box): ExitPrompt, then
// ExitProgram without saving.
void CloseMainWindow(ShellContext& ctx);

// What the window layer calls when the user accepts the Initial Inputs
// dialog: the case is changed, Initial Inputs gets its mark, the output
// commands come on, the recovery copy is written and the title refreshed.
void InitialInputsAccepted(ShellContext& ctx);
// The user accepted the Initial Inputs dialog but chose, at the state-table
// check, to save and end: as InitialInputsAccepted, then Save As and the end.
void InitialInputsSaveAndExit(ShellContext& ctx);

// The message of an Open that chose a rate table file.
std::string_view RateTableNotACaseText();

}  // namespace rw
