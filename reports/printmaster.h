#pragma once
// The two report commands: the print command (PrintMaster), which prints the
// chosen reports one after another as one print job, and the report display
// command, which gives the windows to open instead. Both ask for the reports
// in the "Report Choices" check list and, unless only the inputs listing is
// chosen, compute on a copy of the case first.

#include "casedata/caserecord.h"
#include "penalties/compute.h"
#include "reports/grid.h"
#include "reports/inputs.h"
#include "reports/printmanager.h"
#include "reports/provenance.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace rw {

// ---- Report choice ---------------------------------------------------------

inline constexpr std::int32_t kRptInputs = 1;
inline constexpr std::int32_t kRptSummary = 2;
inline constexpr std::int32_t kRptDetail = 4;
inline constexpr std::int32_t kRptFailFilePay = 8;
inline constexpr std::int32_t kRptAccRel = 16;
inline constexpr std::int32_t kRptPayroll = 32;
inline constexpr std::int32_t kRptEstTax = 64;

struct ReportChoiceEntry {
    std::int32_t value;
    std::string_view caption;
};
// The entries of the check list, in order ("Inputs", "Summary of Results", ...).
std::span<const ReportChoiceEntry> ReportChoiceEntries();

// The report choice of the run: the sum of the chosen values, 0 at start.
struct ReportChoice {
    std::int32_t mask = 0;
};

// What the "Report Choices" dialog shows: one check per entry and whether the
// "Setup" button is there (only for the print command).
struct ReportChoiceForm {
    std::array<bool, 7> checked{};
    bool setupVisible = false;
    friend bool operator==(const ReportChoiceForm&, const ReportChoiceForm&) = default;
};

class ReportChoiceDialog {
public:
    ReportChoiceDialog(ReportChoice& choice, bool forPrinting)
        : choice_(choice)
        , forPrinting_(forPrinting)
    {
    }
    // The checks of the stored choice.
    ReportChoiceForm open() const;
    // "Setup": the printer set-up dialog titled "Print Reports"; true when confirmed.
    bool setup(Printer& printer) const { return printer.setup(); }
    // OK: stores the sum of the checked values. Cancel stores nothing, and the
    // command that asked ends there.
    void accept(const ReportChoiceForm& form);

    static constexpr std::string_view kCaption = "Report Choices";

private:
    ReportChoice& choice_;
    bool forPrinting_;
};

// The seam through which the commands show the dialog: the desktop opens the
// modal check list (OK stores into choice, Cancel leaves it), tests and the
// command-line tool set the choice directly. False when the user cancelled:
// nothing is shown or printed then.
class ReportChooser {
public:
    virtual ~ReportChooser() = default;
    virtual bool chooseReports(ReportChoice& choice, bool withSetup) = 0;
};

// ---- Where the reports' figures come from ------------------------------------

struct ReportSources {
    // Computes a copy of the case with every penalty it asks for.
    std::function<CaseComputation(const Case&)> compute;
    // The release of the rates and the day of preparing, for the
    // provenance lines of the summary, the detailed analysis and the inputs.
    ReportProvenance provenance;
};

// ---- Print command -------------------------------------------------------------

struct PrintJob {
    Printer& printer;
    PrintState& state;
    Messages& msgs;
    // The main window's status line.
    std::function<void(std::string_view)> status;
    // Repaints the main window (after the dialog and after every copy).
    std::function<void()> repaint;
};

// The progress texts of the status line.
inline constexpr std::string_view kPrintingInputs = "Printing Inputs...";
inline constexpr std::string_view kPrintingSummary = "Printing Summary...";
inline constexpr std::string_view kPrintingDetail = "Printing Detailed Analysis...";
inline constexpr std::string_view kPrintingFailFilePay
    = "Printing Failure To File and Pay Analysis...";
inline constexpr std::string_view kPrintingAccRel = "Printing Accuracy Related Penalty Analysis...";
inline constexpr std::string_view kPrintingPayroll = "Printing Payroll Penalty Analysis...";
inline constexpr std::string_view kPrintingEstTax = "Printing Estimated Tax Penalty Analysis...";
inline constexpr std::string_view kPrintingDone = "Printing Done";

// The print command: asks for the reports (with "Setup"), then PrintReports.
void PrintMaster(std::int16_t copies, const Case& c, ReportChoice& choice, ReportChooser& chooser,
                 PrintJob& job, const ReportSources& sources);

// Prints the reports of `choice` for the case, `copies` times, as one job:
// computes first when the choice is 2 or more; skips the failure to file and
// pay analysis when neither penalty is requested, the accuracy-related one
// when it is not requested, the payroll one when the case has no deposit and
// the estimated tax one when the case does not compute that penalty; ends the
// document and reports "Printing Done".
void PrintReports(std::int32_t choice, std::int16_t copies, const Case& c, PrintJob& job,
                  const ReportSources& sources);

// ---- Report display command ----------------------------------------------------

enum class ReportWindowKind {
    Summary,
    DetailedInterest,
    FailFilePay,
    AccuracyRelated,
    PayrollPenalty,
    EstimatedTax,
    Inputs
};

struct ReportWindow {
    ReportWindowKind kind = ReportWindowKind::Summary;
    std::string name;  // the window's name ("frmRptDetail", ...)
    std::string caption;  // its caption
    std::string
        text;  // text windows: the text, lines ended by CR LF; grid windows: a note under the grid
    std::optional<GridData> grid;  // grid windows
    std::optional<InputsWindowData> inputs;  // the inputs window (text and list buttons)
};

// The windows of `choice`, in the order they open, none of them modal: the
// summary, which comes to the front, then the detailed analysis, failure to
// file and pay (when either is requested), accuracy-related (when
// requested), payroll penalty analysis (with at least one deposit),
// estimated tax penalty analysis (when the computation has it), inputs.
// Computes first when the choice is 2 or more.
std::vector<ReportWindow> ReportWindows(std::int32_t choice, const Case& c,
                                        const ReportSources& sources);

// The report display command: asks for the reports (no "Setup"), then
// ReportWindows for the stored choice.
std::vector<ReportWindow> ReportDisplayCommand(const Case& c, ReportChoice& choice,
                                               ReportChooser& chooser,
                                               const ReportSources& sources);

}  // namespace rw
