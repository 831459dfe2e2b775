#pragma once
// What the shell's commands need from the windows and the platform, as small
// interfaces: the file choosers, the modal dialogs a command opens, the
// program's end, and today's date. The desktop program implements them with
// real windows; tests script them.

#include "base/dates.h"
#include "base/messages.h"

#include <optional>
#include <string>

namespace rw {

struct Session;

// The platform's file dialogs for case files (default extension ".int", the
// read-only option hidden). nullopt when the user cancels.
class FileDialogs {
public:
    virtual ~FileDialogs() = default;
    virtual std::optional<std::string> openCase(const std::string& initialFolder) = 0;
    virtual std::optional<std::string> saveCase(const std::string& initialFolder) = 0;
};

// The dialogs the file commands open modally. The window layer runs the
// Initial Inputs dialog and, when the user accepts it, calls
// InitialInputsAccepted (filecommands.h); true then, false when the dialog
// was cancelled.
class ModalDialogs {
public:
    virtual ~ModalDialogs() = default;
    virtual bool showInitialInputs(Session& session) = 0;
};

// Ends the program. The desktop program quits at once; tests record the end.
// A routine that calls endProgram returns right after it and does nothing
// more.
class ProgramControl {
public:
    virtual ~ProgramControl() = default;
    virtual void hideMainWindow() { }
    virtual void endProgram() = 0;
};

// Today's date, for the error log.
class Clock {
public:
    virtual ~Clock() = default;
    virtual Date today() const = 0;
};

// The local calendar date of the computer.
class SystemClock : public Clock {
public:
    Date today() const override;
};

// Everything a shell command works with.
struct ShellContext {
    Session& session;
    Messages& msgs;
    FileDialogs& files;
    ModalDialogs& dialogs;
    ProgramControl& program;
    const Clock& clock;
};

}  // namespace rw
