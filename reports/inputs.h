#pragma once
// The inputs listing: every input of the case, printed (with the lists of
// other charges, payments and payroll deposits) and shown in the inputs
// window (with the three lists as grids). It reads the case as it stands,
// never a computation's copy.

#include "casedata/caserecord.h"
#include "reports/grid.h"
#include "reports/printmanager.h"
#include "reports/provenance.h"

#include <string>

namespace rw {

// The printed listing (Courier New 12, restored at the end); the lists follow
// when they have entries.
void PrintInputs(PrintManager& pm, const Case& c, const ReportProvenance& prov = {});
// The three lists (charges and payments in Courier New 8, restored after;
// deposits in the listing's font) and their column headings.
void PrnCharges(PrintManager& pm, const Case& c);
void PrnChrgHeadings(PrintManager& pm, const InitInputs& init);
void PrnPmts(PrintManager& pm, const Case& c);
void PrnPmtsHeadings(PrintManager& pm, const InitInputs& init);
void PrnDeposits(PrintManager& pm, const Case& c);
void PrnDepHeadings(PrintManager& pm, const InitInputs& init);

// The text of the inputs window, lines ended by CR LF.
std::string DispInputs(const Case& c, const ReportProvenance& prov = {});

// The list grids of the inputs window: the heading row and `rows` empty rows
// after it (Setup...), or every entry of the list (Fill...).
GridData SetupChrgGrd(std::size_t rows);
GridData SetupDepGrd(std::size_t rows);
GridData SetupPmtGrd(std::size_t rows);
GridData FillChrgGrd(const Case& c);
GridData FillDepGrd(const Case& c);
GridData FillPmtGrd(const Case& c);

// The grid kinds of the list window, as its buttons choose them.
enum class InputGridKind { Charges = 1, Deposits = 2, Payments = 3 };
GridData InputsGrid(const Case& c, InputGridKind kind);

// The inputs window: its text and which list buttons are enabled.
struct InputsWindowData {
    std::string text;
    bool depositsEnabled = false;  // "Payroll Liabilities"
    bool chargesEnabled = false;  // "Other Charges"
    bool paymentsEnabled = false;  // "Payments"
    friend bool operator==(const InputsWindowData&, const InputsWindowData&) = default;
};
InputsWindowData InputsWindow(const Case& c, const ReportProvenance& prov = {});

}  // namespace rw
