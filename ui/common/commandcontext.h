#pragma once
// What the main window hands to a command that opens a dialog or a report
// window: the pieces of the program's state the command may read or change,
// and the main window's services. A command changes the case only when its
// dialog is accepted; the main window then refreshes its menus from the case.

#include "base/messages.h"
#include "base/paths.h"
#include "casedata/caserecord.h"
#include "rates/ratetable.h"
#include "rates/release.h"
#include "reports/provenance.h"

#include <functional>
#include <string_view>

class QWidget;

namespace rw {
struct ReportChoice;
struct PrintState;
}  // namespace rw

namespace rw::ui {

struct CommandContext {
    QWidget* parent = nullptr;
    Case& kase;
    RateTable& rates;  // the loaded authority's table
    const FtfMinimumSchedule& ftfMinimums;  // of the release of the rates in use
    const Paths& paths;
    Messages& msgs;
    ReportChoice& reportChoice;  // kept for the whole run
    PrintState& printState;  // the page manager's line counter, kept for the run
    // The main window's note line (lblNote).
    std::function<void(std::string_view)> setNote;
    // Opens the user manual with the desktop's viewer.
    std::function<void()> openHelp;
    // Writes the recovery copy of the case (after an accepted dialog or a
    // closed list).
    std::function<void()> writeRecoveryCopy;
    // Opens the Extended Due Date dialog modally (the failure-to-file dialog
    // opens it when the filing date is left; the accuracy-related command
    // after its dialog when the penalty is on).
    std::function<void()> openExtendedDueDate;
    // The release of the rates in use and today, for the reports' provenance.
    ReportProvenance provenance;
};

}  // namespace rw::ui
