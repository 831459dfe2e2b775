#pragma once
// Hand-made cases and computations for the report tests: the reports are fed
// time lines, result rows, month rows and payroll tables written out here, so
// that their texts do not depend on the engine's figures. Expected texts live
// beside this file, one folder per case.

#include "casedata/caserecord.h"
#include "penalties/compute.h"
#include "reports/printmaster.h"

#include <string>
#include <vector>

namespace reporttest {

using rw::Date;
using rw::Money;

constexpr Date D(int y, int m, int d)
{
    return Date::fromCivil(y, m, d);
}
// A decimal text as money.
Money M(const char* text);

rw::TLPoint Point(const char* code, const char* desc, Date d, const char* tax = "0", const char* pen = "0",
                  const char* interest = "0");
rw::ResultPeriod Row(const char* desc, Date begin, Date end, float rate, const char* taxPen, const char* accrued,
                     int days, double factor, const char* interest);

// newcase: a federal individual case, 10,000.00 due 4/15/2016, computed to
// 12/31/2016; no payments, penalties or charges.
rw::CaseComputation NewCase();
// overpayment: an overpayment of 1,234.56 with refund interest stopping 5
// days before the check date.
rw::CaseComputation OverpaymentCase();
// everypenalty: a payroll case with every penalty, one charge, three
// payments, three deposits and a suspension without restart.
rw::CaseComputation EveryPenaltyCase();
// longpayments: newcase with 50 payments of 100.00, one a day from 5/2/2016.
rw::CaseComputation LongPaymentsCase();

// Report sources that hand out the given computation (whatever case asks).
rw::ReportSources SourcesFor(const rw::CaseComputation& comp);

// The expected text stored at tests/reports/<case>/<file>.
std::string Expected(const std::string& caseName, const std::string& file);
// A window text whose every line ends with CR LF, with LF line ends; a line
// without its CR LF fails the test.
std::string CrLfToLf(const std::string& text);

}  // namespace reporttest
