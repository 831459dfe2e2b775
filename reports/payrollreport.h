#pragma once
// The payroll penalty analysis: for every required deposit, each piece of it
// with the payment that paid it, the days late, the rate, the base and the
// penalty, and the total of all penalties; shown in its window or printed.

#include "casedata/caserecord.h"
#include "penalties/penaltytypes.h"
#include "reports/printmanager.h"

#include <cstdint>
#include <string>
#include <vector>

namespace rw {

// print 0: returns the text of the "Payroll Deposit Penalty" window (lines
// ended by CR LF). print 1: prints the analysis through pm (Courier New 8,
// restored) and returns an empty text. table is the payroll penalty table of
// the case's deposits and payments in their current order.
std::string ReportPRPen(const InitInputs& init, const std::vector<PRPenTblElement>& table,
                        std::int16_t print, PrintManager* pm);

// The body: headings, a "Deposit Due Date: " line for every new due date,
// one row per piece, and the total. When printing (pm given), lines are
// printed as soon as their reservation is made, and text is left alone.
void ShowPRPenCalc(const InitInputs& init, const std::vector<PRPenTblElement>& table,
                   std::string& text, PrintManager* pm);
void PRPenHeadings(const InitInputs& init, std::string& text, PrintManager* pm);

// One row of the body, without its line end.
std::string PRPenRow(const PRPenTblElement& e);

}  // namespace rw
