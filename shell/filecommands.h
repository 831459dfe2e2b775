#pragma once
// The file commands of the main window: New, Open (from the file dialog or
// the recent files), Save, Save As, the question asked before unsaved changes
// would be lost, and the exit procedure. Each runs inside RunCommand
// (errorreporter.h), which hands an unexpected fault (a damaged rate table)
// to the error reporter. A file that cannot be written is not a fault: it is
// told, naming the file and the reason, and the case stays as it was.
//
// A cancelled file dialog changes nothing: not the case, not its file, not
// the file name, the data folder or the menus.

#include "shell/services.h"
#include "shell/session.h"

#include <string>
#include <string_view>

namespace rw {

// Before the case in memory is replaced or the program ends: with unsaved
// changes, "Save changes to NAME?" with Save, Don't Save and Cancel. Save
// runs Save (Save As for a case without a file). True when the command may go
// on: nothing unsaved, Don't Save, or a save that was done; false for Cancel,
// for a cancelled Save As and for a save that failed.
bool ConfirmDiscard(ShellContext& ctx);

// New: after ConfirmDiscard, an empty federal case named "UNTITLED.INT";
// then the Initial Inputs dialog. When that dialog is cancelled, the previous
// case, its file and its state come back as they were.
void FileNew(ShellContext& ctx);

// Open: after ConfirmDiscard, chooses a case file and opens it (OpenCaseFile).
void FileOpen(ShellContext& ctx);

// Open of one of the recent files: after ConfirmDiscard, OpenCaseFile. A
// recent file that can no longer be read leaves the list.
void FileOpenRecent(ShellContext& ctx, const std::string& path);

// Reads the case file and makes it the case; then the Initial Inputs dialog.
// A rate table file (name ending in "TBL") is not opened: the user is told
// that rate tables follow the authority chosen in Initial Inputs, and nothing
// else changes. A missing file or one of another kind is told and leaves the
// session as it was; a damaged file is told, and the case in memory stays too.
// asCopy opens the file as a case without a file of its own, named as the file
// is (Save asks where to keep it). False when the case was not opened.
bool OpenCaseFile(ShellContext& ctx, const std::string& name, bool asCopy = false);

// Help - Sample Cases: after ConfirmDiscard, opens the sample installed with
// the program as a copy that has no file yet (Save asks where to keep it), so
// the installed sample is never written.
void OpenSampleCase(ShellContext& ctx, std::string_view sample);

// Save: writes the case to its own file (Save As while the case has none).
// True when the case was written.
bool FileSave(ShellContext& ctx);

// Save As: chooses a file, writes the case, remembers its folder. False when
// the dialog was cancelled or the file could not be written.
bool FileSaveAs(ShellContext& ctx);

// The exit procedure: stores the tool bar and tool tip choices in the
// settings file, hides the main window, runs Save As when saveFirst, and ends
// the program.
void ExitProgram(ShellContext& ctx, bool saveFirst);

// The main window closes (File - Exit or its close box): ConfirmDiscard, then
// ExitProgram without saving. False when the user cancelled: the program and
// the case stay as they were.
bool CloseMainWindow(ShellContext& ctx);

// What the window layer calls when the user accepts the Initial Inputs
// dialog: Initial Inputs gets its mark, the output commands come on, and the
// case's changes are noted (NoteCaseChanges).
void InitialInputsAccepted(ShellContext& ctx);
// The user accepted the Initial Inputs dialog but chose, at the state-table
// check, to save and end: as InitialInputsAccepted, then Save As and the end.
void InitialInputsSaveAndExit(ShellContext& ctx);

// The recent files as the settings file keeps them ("Recent Files", File1 to
// File8), newest first.
void LoadRecentFiles(Session& s);

// The message of an Open that chose a rate table file.
std::string_view RateTableNotACaseText();

// The question of ConfirmDiscard for the case's file.
std::string SaveChangesText(const Session& s);

}  // namespace rw
