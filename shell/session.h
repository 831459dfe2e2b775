#pragma once
// The program-wide state of one run: the case and its file, the loaded rate
// table, the data folder, the release, the report choice, and what the main
// window's menus and tool bar show. The window layer draws its menus from
// MenuState after every command; the routines below keep it in step with the
// case.

#include "base/messages.h"
#include "base/paths.h"
#include "casedata/caserecord.h"
#include "rates/ratetable.h"
#include "rates/release.h"
#include "reports/printmanager.h"
#include "reports/printmaster.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace rw {

// Check marks, enabled and visible states of the main window.
struct MenuState {
    // Inputs menu.
    bool initialInputsEnabled = true;
    bool initialInputsChecked = false;
    bool paymentsChecked = false;
    bool chargesChecked = false;
    // Inputs - Penalties submenu (Extended Due Date carries no mark).
    bool ftPayChecked = false;
    bool ftFileChecked = false;
    bool accuracyChecked = false;
    bool payrollChecked = false;
    bool estTaxChecked = false;
    // Options menu.
    bool interestRatesChecked = false;
    bool suspendChecked = false;
    bool showToolBarChecked = true;
    bool showToolTipsChecked = true;
    // Output commands: File - Print and View - Reports, tool bar "Print" and "View".
    bool printEnabled = false;
    bool reportsEnabled = false;
    bool printButtonVisible = false;
    bool viewButtonVisible = false;
    // File - Save and the tool bar's "Save"; File - Save As.
    bool saveEnabled = false;
    bool saveButtonVisible = false;
    bool saveAsEnabled = true;
    // The note line under the tool bar (lblNote).
    std::string note;

    friend bool operator==(const MenuState&, const MenuState&) = default;
};

inline constexpr std::string_view kUntitled = "UNTITLED.INT";
inline constexpr std::string_view kNextStepNote
    = "Next Step: Click on the Inputs menu to enter other information";

// The files the File menu lists for reopening, newest first.
inline constexpr std::size_t kRecentFiles = 8;

struct Session {
    Case kase;
    std::string gsFileName;
    Flag gbSaved = kYes;  // -1: nothing unsaved
    // The case as its file holds it (as last opened or saved; a new case as
    // it was created): the case is unsaved while it differs from this.
    Case savedCase;
    // The case as the recovery copy holds it.
    Case copiedCase;
    // A recovery copy that could not be written is told once a run.
    bool recoveryCopyFailureTold = false;
    // So is a settings file that cannot be written.
    bool settingsFailureTold = false;
    std::vector<std::string> recentFiles;  // newest first, at most kRecentFiles
    RateTable gRates;
    std::string gsDataPath;
    Paths paths;
    ReleaseInfo release;
    ReportChoice reportChoice;  // the reports chosen last, kept for the run
    PrintState printState;  // the page manager's line count, kept for the run
    MenuState menus;
    std::string title;  // the window title as last refreshed

    Session() { ClearInputs(kase); }
};

// Refreshes the input menus from the case: Initial Inputs enabled, Payments
// and Other Charges checked when their lists hold entries, Suspend Interest
// checked when a suspension date is given.
void EnableInputs(Session& s);
// The marks of the penalty items: Failure to Pay (either failure-to-pay flag),
// Failure to File, Accuracy Related, Payroll (deposits entered), Estimated
// Tax (the penalty asked for).
void SetPenaltyChecks(Session& s);
// The marks of Options - Interest Rates (tax-motivated or a corporate rate)
// and Options - Suspend Interest.
void SetOptionChecks(Session& s);
// Output commands on (menus enabled, buttons shown) or off.
void EnableOutputs(Session& s, bool on);
// File - Save and the "Save" button.
void EnableSave(Session& s, bool on);

// The window title: the release's description, " Ratewright - ", the file's
// name (without its folder), and "*" while the case holds unsaved changes.
// An empty file name becomes "Untitled.INT" first. Stores and returns the
// title.
std::string RefreshTitle(Session& s);

// The name of the case's file as the user knows it: without its folder.
std::string DisplayName(const Session& s);

// The case now is what its file holds: nothing unsaved.
void MarkSaved(Session& s);

// Every menu check mark drawn from the case: EnableInputs, SetPenaltyChecks
// and SetOptionChecks.
void DrawMenuMarks(Session& s);

// After every command: the case compared with its file ("*" in the title
// while they differ) and with the recovery copy (written again when the case
// changed), and every menu mark drawn again from the case.
void NoteCaseChanges(Session& s, Messages& msgs);

// Writes the case to the recovery copy (DEBUG.INT in the program's per-user
// data folder). The saved state does not change. A copy that cannot be
// written is told once a run, naming the file and the reason; it never stops
// the user's own work. True when written.
bool WriteRecoveryCopy(Session& s, Messages& msgs);

// Runs write, which writes `file`. A failure to write (a folder the user
// cannot write, a full disk) is told under title, saying what could not be
// written, the file and why; false then. Any other fault passes on.
bool WriteOrTell(Messages& msgs, std::string_view title, std::string_view what,
                 const std::filesystem::path& file, const std::function<void()>& write);
// WriteOrTell for a file the program keeps for itself (recovery copy,
// settings): told only while `told` is false, which a failure sets, so a
// folder that cannot be written is told once a run.
bool WriteOrTellOnce(Messages& msgs, bool& told, std::string_view title, std::string_view what,
                     const std::filesystem::path& file, const std::function<void()>& write);
// The message of WriteOrTell: what could not be written, the file, the reason.
void TellNotWritten(Messages& msgs, std::string_view title, std::string_view what,
                    const std::filesystem::path& file, std::string_view reason);

// True when path names the recovery copy.
bool IsRecoveryCopy(const Session& s, const std::string& path);

}  // namespace rw
