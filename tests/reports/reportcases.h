#pragma once
// The hand-made cases of the report tests, one folder each beside this file
// with case.json (the JSON case form), computation.json (the time line, rows,
// months and payroll pieces the reports are fed, written by hand so that the
// texts do not depend on the engine) and the expected texts:
//   newcase       10,000.00 due 4/15/2016, computed to 12/31/2016; nothing else
//   overpayment   an overpayment of 1,234.56, refund interest stopping 5 days early
//   everypenalty  a payroll case with every penalty, two charges, three
//                 payments, three deposits, a suspension without restart
//   longpayments  newcase with 50 payments of 100.00, one a day from 5/2/2016

#include "penalties/compute.h"
#include "reports/printmaster.h"
#include "support/casebuilder.h"

#include <string>

namespace reporttest {

using rwtest::D;
using rwtest::M;

rw::CaseComputation Computation(const std::string& caseName);
rw::TLPoint Point(std::string_view code, rw::Date d, std::string_view tax = "0",
                  std::string_view pen = "0", std::string_view interest = "0");
// Report sources handing out the given computation, whatever case asks.
rw::ReportSources SourcesFor(const rw::CaseComputation& comp);
// The expected text stored at tests/reports/<case>/<file>.
std::string Expected(const std::string& caseAndFile);
// A window text with LF line ends; a line not ended by CR LF fails the test.
std::string CrLfToLf(const std::string& text);

}  // namespace reporttest
