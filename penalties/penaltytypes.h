#pragma once
// What the penalty calculators compute on the way, kept for the analyses of
// the same computation: the month rows of failure to file and to pay, and the
// payroll deposit penalty table.

#include "casedata/caserecord.h"

#include <cstdint>
#include <vector>

namespace rw {

// One month of the failure-to-file / failure-to-pay computation.
struct FtoRow {
    Date dtComp;  // first day of the month
    Money cNetTax;  // unpaid tax: cTax of every point dated before dtComp
    float fFtpRate = 0.0f;
    Money cFtp;  // failure-to-pay penalty of the month
    Money cGrossFtf;  // failure-to-file penalty before the reduction
    Money cNetFtf;  // after the reduction by cFtp

    friend bool operator==(const FtoRow&, const FtoRow&) = default;
};

// One piece of one payroll deposit: the part paid by one payment, or the part
// left unpaid at the stop date.
struct PRPenTblElement {
    Date dtDepDue;
    Money cBegBal;
    Money cPaid;
    Date dtPaid;
    std::int16_t nDaysLate = 0;
    Money cEndBal;
    float fRate = 0.0f;
    Money cBase;
    Money cPenalty;
    Flag bSevere = 0;

    friend bool operator==(const PRPenTblElement&, const PRPenTblElement&) = default;
};

}  // namespace rw
