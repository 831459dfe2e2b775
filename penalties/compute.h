#pragma once
// A whole computation of a case with every penalty the case asks for: what the
// report and print commands, the summary and the command-line tool work from.

#include "engine/intcalc.h"
#include "penalties/penaltytypes.h"

#include <vector>

namespace rw {

// The federal penalty calculators behind the time line's penalty seam:
// payroll deposit penalties, failure to file and to pay, accuracy-related, in
// that order. Keeps the month rows and the payroll table of the last run.
class USPenalties : public PenaltyCalculators {
public:
    void AddUSPenaltyPts(const Case& c, TimeLine& tl, std::int16_t& next) override;

    std::vector<FtoRow> ftoRows;            // rows with a positive net failure to file or failure to pay
    std::vector<PRPenTblElement> prTable;   // payroll penalty table for the payments in list order
};

struct CaseComputation {
    Case kase;  // the copy the computation ran on
    TimeLine timeline;
    std::vector<ResultPeriod> rows;
    Money interest;
    std::vector<FtoRow> ftoRows;
    std::vector<PRPenTblElement> prTable;
};

// Copies the case and computes it (faults propagate as rw::Fault).
CaseComputation ComputeCase(const Case& c, const RateTable& rates);

}  // namespace rw
