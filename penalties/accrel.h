#pragma once
// The accuracy-related penalty of I.R.C. §6662: the penalty rate times the
// underpayment of §6664 the user enters. Interest runs on it from the
// extended due date of the return.

#include "engine/timeline.h"

#include <cstdint>

namespace rw {

// The penalty: cAccRelAmt x fAccRelRate formed in double (the single rate
// widened), rounded to money. 0.4 held in single precision is
// 0.4000000059604645, so 10,000.00 at the economic substance rate is
// 4,000.0001. Never stored: every user computes it afresh.
Money AccRelPenalty(const InitInputs& init);

// Appends the "PAR " point: the penalty, dated on the extended due date.
void CalcAccRelPen(const Case& c, TimeLine& tl, std::int16_t& next);

}  // namespace rw
