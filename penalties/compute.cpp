#include "penalties/compute.h"

#include "base/fault.h"

#include "penalties/accrel.h"
#include "penalties/allocation.h"
#include "penalties/ftofile.h"
#include "penalties/payroll.h"

#include <algorithm>

namespace rw {

namespace {

void addEstTaxPt(const USPenalties::EstTaxPoint& e, TimeLine& tl, std::int16_t& next)
{
    WithFaultName("AddEstTaxPt", [&] {
        TLPoint p;
        p.sDesc = "Est. Tax Pen.";
        p.sCode = code::kEstimatedTaxPenalty;
        p.dtDate = e.dated;
        p.cPen = e.total;
        MakeTLPoint(p, tl, next);
    });
}

}  // namespace

void USPenalties::AddUSPenaltyPts(const Case& c, TimeLine& tl, std::int16_t& next)
{
    WithFaultName("AddUSPenaltyPts", [&] {
        ftoRows.clear();
        prTable.clear();
        ftfMinimumNote.clear();
        const InitInputs& in = c.init;
        // The estimated tax penalty does not wait for the other penalties'
        // switch.
        if (IsYes(in.bAnyPenalties)) {
            if (in.nDeposits >= 1)
                AddUSPRPts(c, tl, next, prTable);
            if (IsYes(in.bFtoFile) || IsYes(in.bFtoPay))
                CalcUSFtoFilePay(c, tl, next, ftoRows, ftfMinimums_, &ftfMinimumNote);
            if (IsYes(in.bAccRel))
                CalcAccRelPen(c, tl, next);
        }
        if (estTaxPoint)
            addEstTaxPt(*estTaxPoint, tl, next);
    });
}

void ApplyRefundStopDays(InitInputs& init)
{
    if (IsYes(init.bOverpayment) && init.nStopDays > 0)
        init.tlStop.dtDate = init.tlStop.dtDate - init.nStopDays;
}

std::optional<EstTaxResult> CaseEstTax(const Case& c, const RateTable& rates)
{
    if (!c.estTax.on)
        return std::nullopt;
    return ComputeEstTaxPenalty(c.estTax.input, rates);
}

USPenalties CaseCalculators(const Case& c, const std::optional<EstTaxResult>& estTax,
                            const FtfMinimumSchedule& ftfMinimums)
{
    USPenalties penalties(ftfMinimums);
    if (estTax && estTax->total > Money()) {
        // A notice before the calculation starts: the penalty is owed, with
        // interest, from the start.
        const InitInputs& in = c.init;
        const Date notice = c.estTax.noticeDate;
        penalties.estTaxPoint = USPenalties::EstTaxPoint{
            estTax->total,
            notice.isGiven() ? std::max(notice, in.tlStart.dtDate) : in.tlStop.dtDate + 1};
    }
    return penalties;
}

CaseComputation ComputeCase(const Case& c, const RateTable& rates,
                            const FtfMinimumSchedule& ftfMinimums)
{
    CaseComputation out;
    out.kase = c;
    // A payment allocated by the IRS method follows the case as it now stands.
    out.estTax = CaseEstTax(c, rates);
    AllocateIrsPayments(out.kase, rates, CaseCalculators(out.kase, out.estTax, ftfMinimums));
    ApplyRefundStopDays(out.kase.init);
    USPenalties penalties = CaseCalculators(out.kase, out.estTax, ftfMinimums);
    out.interest = GetInterest(out.kase, rates, &penalties, out.rows, out.timeline);
    out.ftoRows = penalties.ftoRows;
    out.ftfMinimumNote = penalties.ftfMinimumNote;
    // The payroll analysis lists the table of every case with deposits, also
    // when the penalty run did not make it.
    if (out.kase.init.nDeposits >= 1)
        CalcUSPRPen(out.kase, out.kase.payments(), out.prTable);
    return out;
}

}  // namespace rw
