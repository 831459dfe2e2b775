#include "penalties/accrel.h"

#include "base/fault.h"

namespace rw {

Money AccRelPenalty(const InitInputs& init)
{
    return MulDouble(init.cAccRelAmt, static_cast<double>(init.fAccRelRate));
}

void CalcAccRelPen(const Case& c, TimeLine& tl, std::int16_t& next)
{
    WithFaultName("CalcAccRelPen", [&] {
        TLPoint p;
        p.sDesc = "Accuracy Rel";
        p.sCode = code::kAccuracyRelated;
        p.dtDate = c.init.dtExtended;
        p.cPen = AccRelPenalty(c.init);
        MakeTLPoint(p, tl, next);
    });
}

}  // namespace rw
