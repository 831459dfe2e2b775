#pragma once
// The interest time line: every event that changes a balance or a rate, keyed
// by date and kind and sorted, built afresh from a case for each computation.

#include "casedata/caserecord.h"
#include "rates/ratetable.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace rw {

using TimeLine = std::vector<TLPoint>;

// Kinds of point, in the order points of one day are processed.
namespace code {
inline constexpr std::string_view kStart = "0BT ";
inline constexpr std::string_view kCorpOverpayment = "COP ";
inline constexpr std::string_view kCorpUnderpayment = "CUP ";
inline constexpr std::string_view kPayrollLiability = "DDD ";
inline constexpr std::string_view kEstimatedTaxPenalty = "ESP ";
inline constexpr std::string_view kFailureToFile = "FFP ";
inline constexpr std::string_view kFailureToPay = "FPP ";
inline constexpr std::string_view kOtherCharge = "OTHC";
inline constexpr std::string_view kAccuracyRelated = "PAR ";
inline constexpr std::string_view kPayrollPenalty = "PDP ";
inline constexpr std::string_view kPayment = "PMT ";
inline constexpr std::string_view kPayrollDue = "PRD ";
inline constexpr std::string_view kSuspend = "ST0 ";
inline constexpr std::string_view kRestart = "ST1 ";
inline constexpr std::string_view kRatePeriodEnd = "ZRT ";
inline constexpr std::string_view kStop = "ZZSD";
}  // namespace code

// The seam through which the penalty calculators add their points while a
// time line is built. An implementation appends with MakeTLPoint and may keep
// what it computed on the way (month rows, the payroll penalty table) for the
// reports of the same computation.
class PenaltyCalculators {
public:
    virtual ~PenaltyCalculators() = default;
    // Called when the case asks for penalties (AsksForPenalties), after every
    // point the builder makes itself; next is the index the next point goes
    // to. The estimated tax penalty has a switch of its own: a calculator
    // adds the case's other penalties only while bAnyPenalties is on.
    virtual void AddUSPenaltyPts(const Case& c, TimeLine& tl, std::int16_t& next) = 0;
};

// Whether the time line has the "PRD " point on the due date: always in a
// payroll case, and whenever the return falls due strictly between the start
// and the stop date, so that interest runs from the day after it is due.
bool HasDueDatePoint(const InitInputs& init);

// Whether a charge has a day of its own for interest to start on: not 0 and
// not "no date", which older files and JSON cases can hold.
bool HasInterestDate(const ChargeRec& ch);
// The day interest starts on a charge: its own interest date, or its date of
// liability when it has none.
Date ChargeInterestDate(const ChargeRec& ch);

// Points the builder creates itself: start, stop, payments, charges, one per
// rate row, the payroll due date, the suspension pair, the corporate starts.
std::int16_t CountPoints(const Case& c, const RateTable& rates);
std::int16_t CountUSPts(const InitInputs& init, std::int16_t n);

// Builds, keys and sorts the whole time line of a case into tl. The case is
// not changed. penalties may be null (no penalty points are then added).
void BuildTimeLine(const Case& c, const RateTable& rates, TimeLine& tl,
                   PenaltyCalculators* penalties);

// The builder's steps. Each writes its points at next, next + 1, ... of a
// time line already sized by CountPoints and advances next; a point beyond
// the array is a fault (9), an index beyond 32,767 an overflow fault (6).
// One "OTHC" point per charge in use, dated by its interest start
// (ChargeInterestDate).
void AddChargePts(const Case& c, TimeLine& tl, std::int16_t& next);
// One "PMT " point per payment in use, with its three parts negated.
void AddPmtPts(const Case& c, TimeLine& tl, std::int16_t& next);
// One "ZRT " point per rate row, dated by the row's last day, all rows.
void AddRatePts(const RateTable& rates, TimeLine& tl, std::int16_t& next);
// "ST0 " and "ST1 " when a suspension date is given.
void AddSuspendPts(const InitInputs& init, TimeLine& tl, std::int16_t& next);
// Federal: the corporate rate starts that are on, then the penalty points.
void AddUSPts(const Case& c, TimeLine& tl, std::int16_t& next, PenaltyCalculators* penalties);
// Any other authority: the penalty points only.
void AddStatePts(const Case& c, TimeLine& tl, std::int16_t& next, PenaltyCalculators* penalties);
// The case asks for penalties: its penalties are switched on, or it asks for
// the estimated tax penalty, whose dialog has a switch of its own.
bool AsksForPenalties(const Case& c);
// Hands the time line to the penalty calculators when the case asks for
// penalties and calculators were given; otherwise adds nothing.
void AddUSPenaltyPts(const Case& c, TimeLine& tl, std::int16_t& next,
                     PenaltyCalculators* penalties);

// Grows the time line by one point at position next and advances next.
void MakeTLPoint(const TLPoint& point, TimeLine& tl, std::int16_t& next);
// Writes every point's sort key: "yyyymmdd" + the 4 characters of its code.
void MakeSortCodes(TimeLine& tl);
// Stable sort by sort key (ordinal): events of one day keep the order in which
// they were created.
void SortPoints(TimeLine& tl);

// Sums cTax and cPen of the points from the first while they are dated on or
// before d; totals receives both sums (cInt zero). Returns the tax sum.
Money GetTaxToDate(const TimeLine& tl, TLPoint& totals, Date d);

// GetTaxToDate for a run of dates on one time line that does not change
// meanwhile. The sums for a date are those of the longest run of points from
// the first that are all dated on or before it; for a later date that run can
// only grow, so the cursor carries on from where the previous date stopped
// and starts again from the first point only when a date is earlier than the
// one before. A computation asks in date order and pays one pass in all.
class TaxToDateCursor {
public:
    explicit TaxToDateCursor(const TimeLine& tl)
        : tl_(&tl)
    {
    }
    // Same result and totals as GetTaxToDate(tl, totals, d).
    Money taxToDate(Date d, TLPoint& totals);
    Money taxToDate(Date d);

private:
    const TimeLine* tl_;
    std::size_t next_ = 0;  // first point not yet summed
    bool started_ = false;
    Date last_;
    Money tax_;
    Money pen_;
};

// Index of the first point whose code is `code`, or -1.
std::int32_t FindPointByCode(const TimeLine& tl, std::string_view code);

}  // namespace rw
