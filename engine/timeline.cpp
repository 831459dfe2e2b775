#include "engine/timeline.h"

#include "base/fault.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace rw {

namespace {

constexpr std::int32_t kMaxIndex = std::numeric_limits<std::int16_t>::max();

// Writes p at position next of an array sized in advance and advances next.
void putPoint(const TLPoint& p, TimeLine& tl, std::int16_t& next, std::string_view procedure)
{
    if (next < 0 || static_cast<std::size_t>(next) >= tl.size())
        ThrowFault(kErrSubscript, procedure,
                   "time line point " + std::to_string(next) + " beyond the array");
    tl[static_cast<std::size_t>(next)] = p;
    if (next == kMaxIndex)
        ThrowFault(kErrOverflow, procedure, "more than 32,767 time line points");
    ++next;
}

TLPoint makePoint(Date d, std::string_view desc, std::string_view code)
{
    TLPoint p;
    p.dtDate = d;
    p.sDesc = desc;
    p.sCode = code;
    return p;
}

// "yyyymmdd" + the code into the 12 characters of the sort key.
void writeSortCode(TLPoint& p)
{
    const CivilDate c = p.dtDate.civil();
    if (c.year < 0 || c.year > 9999) {
        p.sSortCode = FormatYYYYMMDD(p.dtDate) + p.sCode.str();
        return;
    }
    char* k = p.sSortCode.data();
    const int digits[8] = {c.year / 1000, c.year / 100 % 10, c.year / 10 % 10, c.year % 10,
                           c.month / 10,  c.month % 10,      c.day / 10,       c.day % 10};
    for (int i = 0; i < 8; ++i)
        k[i] = static_cast<char>('0' + digits[i]);
    std::memcpy(k + 8, p.sCode.data(), 4);
}

}  // namespace

bool HasDueDatePoint(const InitInputs& init)
{
    if (IsYes(init.bPayroll))
        return true;
    const Date due = init.dtDue;
    return due.isGiven() && init.tlStart.dtDate < due && due < init.tlStop.dtDate;
}

bool HasInterestDate(const ChargeRec& ch)
{
    return ch.dtIntStart.isGiven() && ch.dtIntStart != Date();
}

Date ChargeInterestDate(const ChargeRec& ch)
{
    return HasInterestDate(ch) ? ch.dtIntStart : ch.dtLiab;
}

std::int16_t CountUSPts(const InitInputs& init, std::int16_t n)
{
    std::int32_t count = n;
    if (IsYes(init.bCorpUPRate))
        ++count;
    if (IsYes(init.bCorpOPRate))
        ++count;
    if (count > kMaxIndex)
        ThrowFault(kErrOverflow, "CountUSPts", "more than 32,767 time line points");
    return static_cast<std::int16_t>(count);
}

std::int16_t CountPoints(const Case& c, const RateTable& rates)
{
    const InitInputs& in = c.init;
    std::int64_t count
        = std::int64_t{in.nPmts} + 2 + in.nCharges + static_cast<std::int64_t>(rates.size());
    if (HasDueDatePoint(in))
        count += 1;
    if (in.dtIntSuspend.isGiven())
        count += 2;
    if (count > kMaxIndex)
        ThrowFault(kErrOverflow, "CountPoints", "more than 32,767 time line points");
    auto n = static_cast<std::int16_t>(count);
    if (in.isFederal())
        n = CountUSPts(in, n);
    return n;
}

void AddChargePts(const Case& c, TimeLine& tl, std::int16_t& next)
{
    WithFaultName("AddChargePts", [&] {
        for (const ChargeRec& ch : c.otherCharges()) {
            TLPoint p = makePoint(ChargeInterestDate(ch), {}, code::kOtherCharge);
            p.sDesc = ch.sDesc;  // as stored, a never-set text included
            p.cTax = ch.cToTax;
            p.cPen = ch.cToPen;
            putPoint(p, tl, next, "AddChargePts");
        }
    });
}

void AddPmtPts(const Case& c, TimeLine& tl, std::int16_t& next)
{
    WithFaultName("AddPmtPts", [&] {
        for (const PaymentRec& pm : c.payments()) {
            TLPoint p = makePoint(pm.dtPmt, {}, code::kPayment);
            p.sDesc = pm.sDesc;
            p.cTax = -pm.cToTax;
            p.cPen = -pm.cToPen;
            p.cInt = -pm.cToInt;
            putPoint(p, tl, next, "AddPmtPts");
        }
    });
}

void AddRatePts(const RateTable& rates, TimeLine& tl, std::int16_t& next)
{
    for (const RateRow& r : rates)
        putPoint(makePoint(r.dtThru, "End Rate Period", code::kRatePeriodEnd), tl, next,
                 "AddRatePts");
}

void AddSuspendPts(const InitInputs& init, TimeLine& tl, std::int16_t& next)
{
    if (!init.dtIntSuspend.isGiven())
        return;
    putPoint(makePoint(init.dtIntSuspend, "Suspend Int.", code::kSuspend), tl, next,
             "AddSuspendPts");
    putPoint(makePoint(init.dtRestart, "Restart Int", code::kRestart), tl, next, "AddSuspendPts");
}

bool AsksForPenalties(const Case& c)
{
    return IsYes(c.init.bAnyPenalties) || c.estTax.on;
}

void AddUSPenaltyPts(const Case& c, TimeLine& tl, std::int16_t& next, PenaltyCalculators* penalties)
{
    if (penalties == nullptr || !AsksForPenalties(c))
        return;
    WithFaultName("AddUSPenaltyPts", [&] { penalties->AddUSPenaltyPts(c, tl, next); });
}

void AddUSPts(const Case& c, TimeLine& tl, std::int16_t& next, PenaltyCalculators* penalties)
{
    const InitInputs& in = c.init;
    if (IsYes(in.bCorpUPRate))
        putPoint(makePoint(in.dtCorpUPRateStart, "Corp Unrpmt Rate", code::kCorpUnderpayment), tl,
                 next, "AddUSPts");
    if (IsYes(in.bCorpOPRate))
        putPoint(makePoint(in.dtCorpOPRateStart, "Corp Ovrpmt Rate", code::kCorpOverpayment), tl,
                 next, "AddUSPts");
    AddUSPenaltyPts(c, tl, next, penalties);
}

void AddStatePts(const Case& c, TimeLine& tl, std::int16_t& next, PenaltyCalculators* penalties)
{
    AddUSPenaltyPts(c, tl, next, penalties);
}

void BuildTimeLine(const Case& c, const RateTable& rates, TimeLine& tl,
                   PenaltyCalculators* penalties)
{
    WithFaultName("BuildTimeLine", [&] {
        const InitInputs& in = c.init;
        tl.assign(static_cast<std::size_t>(CountPoints(c, rates)), TLPoint{});
        std::int16_t next = 0;

        // The case keeps its own start and stop points; the time line gets
        // copies with their description and code.
        TLPoint start = in.tlStart;
        start.sDesc = "Start Interest";
        start.sCode = code::kStart;
        putPoint(start, tl, next, "BuildTimeLine");

        // A return falling due after the calculation starts closes the row
        // on its due date, so that interest runs from the day after it.
        if (HasDueDatePoint(in))
            putPoint(makePoint(in.dtDue, "T/R due next day", code::kPayrollDue), tl, next,
                     "BuildTimeLine");

        TLPoint stop = in.tlStop;
        stop.sDesc = "Stop Interest";
        stop.sCode = code::kStop;
        putPoint(stop, tl, next, "BuildTimeLine");

        AddChargePts(c, tl, next);
        AddPmtPts(c, tl, next);
        AddRatePts(rates, tl, next);
        AddSuspendPts(in, tl, next);
        if (in.isFederal())
            AddUSPts(c, tl, next, penalties);
        else
            AddStatePts(c, tl, next, penalties);

        MakeSortCodes(tl);
        SortPoints(tl);
    });
}

void MakeTLPoint(const TLPoint& point, TimeLine& tl, std::int16_t& next)
{
    WithFaultName("MakeTLPoint", [&] {
        if (tl.size() >= static_cast<std::size_t>(kMaxIndex))
            ThrowFault(kErrOverflow, "MakeTLPoint", "more than 32,767 time line points");
        tl.emplace_back();
        putPoint(point, tl, next, "MakeTLPoint");
    });
}

void MakeSortCodes(TimeLine& tl)
{
    for (TLPoint& p : tl)
        writeSortCode(p);
}

void SortPoints(TimeLine& tl)
{
    WithFaultName("SortPoints", [&] {
        std::stable_sort(tl.begin(), tl.end(), [](const TLPoint& a, const TLPoint& b) {
            return std::memcmp(a.sSortCode.data(), b.sSortCode.data(), 12) < 0;
        });
    });
}

Money GetTaxToDate(const TimeLine& tl, TLPoint& totals, Date d)
{
    return WithFaultName("GetTaxToDate", [&] {
        Money tax;
        Money pen;
        for (const TLPoint& p : tl) {
            if (p.dtDate > d)
                break;
            tax += p.cTax;
            pen += p.cPen;
        }
        totals.cTax = tax;
        totals.cPen = pen;
        totals.cInt = Money();
        return tax;
    });
}

Money TaxToDateCursor::taxToDate(Date d, TLPoint& totals)
{
    return WithFaultName("GetTaxToDate", [&] {
        if (!started_ || !(d >= last_)) {
            next_ = 0;
            tax_ = Money();
            pen_ = Money();
            started_ = true;
        }
        last_ = d;
        const TimeLine& tl = *tl_;
        while (next_ < tl.size() && !(tl[next_].dtDate > d)) {
            tax_ += tl[next_].cTax;
            pen_ += tl[next_].cPen;
            ++next_;
        }
        totals.cTax = tax_;
        totals.cPen = pen_;
        totals.cInt = Money();
        return tax_;
    });
}

Money TaxToDateCursor::taxToDate(Date d)
{
    TLPoint totals;
    return taxToDate(d, totals);
}

std::int32_t FindPointByCode(const TimeLine& tl, std::string_view code)
{
    for (std::size_t i = 0; i < tl.size(); ++i)
        if (tl[i].sCode.view() == code)
            return static_cast<std::int32_t>(i);
    return -1;
}

}  // namespace rw
