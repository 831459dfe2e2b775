#include "penalties/payroll.h"

#include "base/fault.h"

#include <cmath>
#include <limits>

namespace rw {

namespace {

__extension__ typedef __int128 i128;

constexpr std::size_t kMaxTableElements = 32767;

}  // namespace

float PRPenRate(std::int16_t daysLate, bool severe)
{
    if (daysLate <= 0)
        return 0.0f;
    if (severe)
        return 0.15f;
    if (daysLate <= 5)
        return 0.02f;
    if (daysLate <= 15)
        return 0.05f;
    return 0.10f;
}

Money PRPiecePenalty(Money base, float rate)
{
    const std::int64_t r = Money::fromDouble(static_cast<double>(rate)).raw();
    // base.raw() * r counts units of 1e-8; keep four decimals, halves to even.
    const i128 p = static_cast<i128>(base.raw()) * r;
    const bool neg = p < 0;
    const i128 mag = neg ? -p : p;
    i128 q = mag / Money::kScale;
    const i128 rem = mag % Money::kScale;
    if (rem * 2 > Money::kScale || (rem * 2 == Money::kScale && (q & 1)))
        ++q;
    const i128 v = neg ? -q : q;
    if (v > std::numeric_limits<std::int64_t>::max()
        || v < std::numeric_limits<std::int64_t>::min())
        ThrowFault(kErrOverflow, "CalcUSPRPen", "penalty out of range");
    return RoundCurrency(Money::fromRaw(static_cast<std::int64_t>(v)), 2);
}

std::int16_t PRDaysLate(Date paid, Date due)
{
    // The day count is a 16-bit integer; the run-time rounds to the even day.
    const double d = std::nearbyint(paid - due);
    if (!(d >= std::numeric_limits<std::int16_t>::min()
          && d <= std::numeric_limits<std::int16_t>::max()))
        ThrowFault(kErrOverflow, "CalcUSPRPen", "days late out of range");
    return static_cast<std::int16_t>(d);
}

bool AddPRPenTblElement(const InitInputs& init, std::vector<PRPenTblElement>& table,
                        std::size_t& index, std::vector<PmtWorkItem>& work, Flag severe, Date due)
{
    return WithFaultName("AddPRPenTblElement", [&] {
        PmtWorkItem* p = nullptr;
        for (PmtWorkItem& w : work) {
            if (w.cLeft > Money()) {
                p = &w;
                break;
            }
        }
        PRPenTblElement& e = table[index];
        e.bSevere = severe;
        e.dtDepDue = due;
        if (!p) {
            // Nothing left to pay with: the rest is unpaid at the stop date.
            e.cBase = e.cBegBal;
            e.cEndBal = e.cBegBal;
            e.dtPaid = init.tlStop.dtDate;
            return false;
        }
        e.cPaid = p->cLeft < e.cBegBal ? p->cLeft : e.cBegBal;
        p->cLeft -= e.cPaid;
        e.cBase = e.cPaid;
        e.dtPaid = p->dtPmt;
        e.cEndBal = e.cBegBal - e.cPaid;
        if (e.cEndBal.isZero())
            return false;  // paid in full; the rest of the payment goes on to the next deposit
        if (table.size() >= kMaxTableElements)
            ThrowFault(kErrOverflow, "AddPRPenTblElement", "too many deposit pieces");
        PRPenTblElement nextPiece;
        nextPiece.cBegBal = e.cEndBal;
        table.push_back(nextPiece);
        ++index;
        return true;
    });
}

void CalcUSPRPen(const Case& c, std::span<const PaymentRec> pmts,
                 std::vector<PRPenTblElement>& table)
{
    WithFaultName("CalcUSPRPen", [&] {
        std::vector<PmtWorkItem> work;
        work.reserve(pmts.size());
        for (const PaymentRec& p : pmts)
            work.push_back({p.dtPmt, p.cToTax, p.cToTax});

        table.clear();
        for (const DepositRec& d : c.payrollDeposits()) {
            if (table.size() >= kMaxTableElements)
                ThrowFault(kErrOverflow, "CalcUSPRPen", "too many deposit pieces");
            PRPenTblElement first;
            first.cBegBal = d.cRequired;
            table.push_back(first);
            std::size_t e = table.size() - 1;
            while (AddPRPenTblElement(c.init, table, e, work, d.bSevere, d.dtDepDue)) { }
        }

        for (PRPenTblElement& e : table) {
            e.nDaysLate = PRDaysLate(e.dtPaid, e.dtDepDue);
            e.fRate = PRPenRate(e.nDaysLate, IsYes(e.bSevere));
            e.cPenalty = PRPiecePenalty(e.cBase, e.fRate);
        }
    });
}

Money TotalPRPenalty(const std::vector<PRPenTblElement>& table)
{
    Money total;
    for (const PRPenTblElement& e : table)
        total += e.cPenalty;
    return total;
}

void AddPRLiabPts(const Case& c, TimeLine& tl, std::span<const DepositRec> deposits,
                  std::int16_t& next)
{
    (void)c;
    WithFaultName("AddPRLiabPts", [&] {
        for (const DepositRec& d : deposits) {
            TLPoint p;
            p.sDesc = "PR Liability";
            p.sCode = code::kPayrollLiability;
            p.dtDate = d.dtDepDue;
            p.cTax = d.cRequired;
            MakeTLPoint(p, tl, next);
        }
    });
}

void AddPRPenPts(TimeLine& tl, std::span<const DepositRec> deposits,
                 const std::vector<PRPenTblElement>& table, std::int16_t& next)
{
    WithFaultName("AddPRPenPts", [&] {
        for (const PRPenTblElement& e : table) {
            TLPoint p;
            p.sDesc = "PR Penalty";
            p.sCode = code::kPayrollPenalty;
            p.cPen = e.cPenalty;
            // Deposits sharing a due date all take the first one's assessment date.
            for (const DepositRec& d : deposits) {
                if (d.dtDepDue == e.dtDepDue) {
                    p.dtDate = d.dtDepAssess;
                    break;
                }
            }
            MakeTLPoint(p, tl, next);
        }
    });
}

void AddUSPRPts(const Case& c, TimeLine& tl, std::int16_t& next,
                std::vector<PRPenTblElement>& table)
{
    WithFaultName("AddUSPRPts", [&] {
        const std::vector<DepositRec> deposits(c.payrollDeposits().begin(),
                                               c.payrollDeposits().end());
        AddPRLiabPts(c, tl, deposits, next);
        CalcUSPRPen(c, c.payments(), table);
        AddPRPenPts(tl, deposits, table, next);
    });
}

}  // namespace rw
