#pragma once
// The analysis of the penalty for underpaying estimated tax, laid out like
// the worksheet of Forms 2210 and 2220: the required annual payment; for each
// installment its due date, the amount required, what was paid by then, the
// underpayment and the payments that later made it good; one line for each
// amount kept unpaid within one rate period; and the total. Shown in its
// window or printed.

#include "casedata/caserecord.h"
#include "penalties/esttax.h"
#include "reports/printmanager.h"

#include <string>

namespace rw {

// The text of the "Estimated Tax Penalty" window, lines ended by CR LF. The
// input names the filer and the tax year; r is its penalty.
std::string DispEstTax(const EstTaxInput& in, const EstTaxResult& r, const InitInputs& init);

// Prints the analysis through the page manager in Courier New 12 (the font
// in use before is restored): the columns' headings repeat on every page a
// list runs onto, and no heading is left alone at the foot of a page.
void PrnEstTax(PrintManager& pm, const InitInputs& init, const EstTaxInput& in,
               const EstTaxResult& r);

}  // namespace rw
