#pragma once
// A whole computation of a case with every penalty the case asks for: what the
// report and print commands, the summary and the command-line tool work from.

#include "engine/intcalc.h"
#include "penalties/esttax.h"
#include "penalties/penaltytypes.h"
#include "rates/release.h"

#include <optional>
#include <vector>

namespace rw {

// The federal penalty calculators behind the time line's penalty seam:
// payroll deposit penalties, failure to file and to pay, accuracy-related, in
// that order. Keeps the month rows and the payroll table of the last run.
class USPenalties : public PenaltyCalculators {
public:
    // The failure-to-file minimums of the release of the rates; kept by
    // reference, so the schedule must outlive the calculators.
    explicit USPenalties(const FtfMinimumSchedule& ftfMinimums)
        : ftfMinimums_(ftfMinimums)
    {
    }

    void AddUSPenaltyPts(const Case& c, TimeLine& tl, std::int16_t& next) override;

    std::vector<FtoRow> ftoRows;  // rows with a positive net failure to file or failure to pay
    std::vector<PRPenTblElement> prTable;  // payroll penalty table for the payments in list order
    std::string ftfMinimumNote;  // which year's minimum was applied, when not the due year's own

    // The estimated tax penalty's "ESP " point, when the computation has one
    // to add: the penalty's total and the day it enters the balance.
    struct EstTaxPoint {
        Money total;
        Date dated;
    };
    std::optional<EstTaxPoint> estTaxPoint;

private:
    const FtfMinimumSchedule& ftfMinimums_;
};

struct CaseComputation {
    Case kase;  // the copy the computation ran on, its IRS-method payments allocated again
    TimeLine timeline;
    std::vector<ResultPeriod> rows;
    Money interest;
    std::vector<FtoRow> ftoRows;
    std::vector<PRPenTblElement> prTable;
    std::string ftfMinimumNote;  // FailToFileMinimum's note, when the minimum applied
    std::optional<EstTaxResult> estTax;  // when the case has the estimated tax penalty on
};

// Interest on a refund stops up to 30 days before the date of the refund
// check, which is the stop date the user enters: in an overpayment case the
// computation runs to the stop date less the case's stop days.
void ApplyRefundStopDays(InitInputs& init);

// The estimated tax penalty of `c` on its own table, when the case asks for
// it. It does not depend on the case's payments. Throws Refusal for a day of
// the penalty without a rate.
std::optional<EstTaxResult> CaseEstTax(const Case& c, const RateTable& rates);

// The penalty calculators of a computation of `c`, with the "ESP " point of
// its estimated tax penalty (CaseEstTax) when that is positive: on the notice
// and demand date (the start date when the notice came earlier), otherwise on
// the day after the stop date. What is owed on a payment's date counts the
// point from its date on, so a payment after the notice pays the penalty by
// the IRS method.
USPenalties CaseCalculators(const Case& c, const std::optional<EstTaxResult>& estTax,
                            const FtfMinimumSchedule& ftfMinimums);

// Copies the case and computes it with the rates and failure-to-file minimums
// of one release (faults propagate as rw::Fault). On the copy, every payment
// of the IRS method is first allocated again (AllocateIrsPayments).
// The estimated tax penalty is figured on the case's own table: the federal
// underpayment rates, or in a state case the state's, by the federal rules
// as the case's other penalties are. A day without a rate is refused
// (rw::Refusal).
// A positive penalty enters the time line as an "ESP " point (also when the
// case's other penalties are off; see CaseCalculators): with a notice date,
// interest runs from it; without one the summary counts the penalty but no
// interest accrues on it.
CaseComputation ComputeCase(const Case& c, const RateTable& rates,
                            const FtfMinimumSchedule& ftfMinimums);

}  // namespace rw
