#include "engine/intcalc.h"

#include "base/fault.h"

#include "casedata/datechecks.h"
#include "engine/ratesel.h"

#include <cmath>
#include <optional>

namespace rw {

namespace {

bool mentionsInterest(const FixedText<16>& desc)
{
    std::string upper = desc.str();
    for (char& ch : upper)
        if (ch >= 'a' && ch <= 'z')
            ch = static_cast<char>(ch - 'a' + 'A');
    return upper.find("INT") != std::string::npos;
}

bool intFactor(RateSelector& sel, ResultPeriod& row)
{
    return WithFaultName("GetIntFactor", [&] {
        bool compounds = false;
        row.fRate = sel.revisedRate(row, compounds);
        const double rate = static_cast<double>(row.fRate);
        if (compounds) {
            if (row.sDesc.isBlank())
                row.sDesc = "Compound Int.";
            const double basis = row.dtBegin.year() % 4 == 0 ? 366.0 : 365.0;
            row.dIntFactor = std::pow(1.0 + rate / basis, row.nDays) - 1.0;
        } else {
            if (row.sDesc.isBlank())
                row.sDesc = "Simple Int.";
            row.dIntFactor = (rate * row.nDays) / 365.0;
        }
        return compounds;
    });
}

// A row that needs no rate (suspended, not yet due) shows none when the table
// has none for its days.
void noRateShown(ResultPeriod& r)
{
    if (std::isnan(r.fRate))
        r.fRate = 0.0f;
}

ResultPeriod& checkedRow(std::vector<ResultPeriod>& rows, std::size_t k, std::string_view procedure)
{
    if (k >= rows.size())
        ThrowFault(kErrSubscript, procedure,
                   "result row " + std::to_string(k) + " beyond the result");
    return rows[k];
}

}  // namespace

void Set1stPeriod(std::int32_t start, std::vector<ResultPeriod>& rows, const TimeLine& tl)
{
    if (start < 0 || static_cast<std::size_t>(start) >= tl.size())
        ThrowFault(kErrSubscript, "Set1stPeriod", "the time line has no start point");
    const TLPoint& p = tl[static_cast<std::size_t>(start)];
    ResultPeriod& r = checkedRow(rows, 0, "Set1stPeriod");
    r.dtBegin = p.dtDate;
    r.dtEnd = p.dtDate;
    r.sDesc = p.sDesc;
    r.fRate = 0.0f;
    r.cInterest = Money();
    r.cTaxPen = p.cTax;
}

void ResultAsPoint(const TLPoint& point, std::vector<ResultPeriod>& rows, std::size_t k)
{
    WithFaultName("ResultAsPoint", [&] {
        if (k == 0)
            ThrowFault(kErrSubscript, "ResultAsPoint", "an event row needs the row before it");
        ResultPeriod& r = checkedRow(rows, k, "ResultAsPoint");
        r.dtBegin = point.dtDate;
        r.dtEnd = point.dtDate;
        r.sDesc = point.sDesc;
        r.fRate = 0.0f;
        r.cTaxPen = rows[k - 1].cTaxPen + point.cTax + point.cPen;
        r.cInterest = point.cInt;
    });
}

bool GetIntFactor(const InitInputs& init, ResultPeriod& row, const RateTable& wr,
                  const TimeLine& tl)
{
    RateSelector sel(init, wr, tl);
    return intFactor(sel, row);
}

Money GetInterest(const Case& c, const RateTable& rates, PenaltyCalculators* penalties,
                  std::vector<ResultPeriod>& rows, TimeLine& tl)
{
    return WithFaultName("GetInterest", [&] {
        const InitInputs& in = c.init;
        RateTable wr;
        GetWorkingRates(rates, wr);
        BuildTimeLine(c, rates, tl, penalties);
        const std::int32_t start = FindPointByCode(tl, code::kStart);
        const std::int32_t stop = FindPointByCode(tl, code::kStop);
        const bool suspension = in.dtIntSuspend.isGiven();
        const Date stopDate = in.tlStop.dtDate;

        // The start row, then at most an interest row and an event row per
        // point: room for all of them, so no row moves while the walk runs.
        const std::size_t room = 1 + 2 * tl.size();
        rows.assign(room, ResultPeriod{});
        Set1stPeriod(start, rows, tl);
        RateSelector sel(in, wr, tl);
        std::size_t cur = 0;
        auto nextRow = [&]() -> ResultPeriod& {
            if (cur + 1 >= room)
                ThrowFault(kErrSubscript, "GetInterest",
                           "more result rows than the time line allows");
            return rows[++cur];
        };

        // The walk: an interest row for every gap between points (and after
        // a rate-period end), an event row for every point but a rate-period
        // end, until the row that reaches the stop date.
        bool reachedStop = false;
        std::size_t j = static_cast<std::size_t>(start) + 1;
        for (; j < tl.size(); ++j) {
            const TLPoint& p = tl[j];
            const TLPoint& prev = tl[j - 1];
            if (p.dtDate != prev.dtDate || prev.sCode.view() == code::kRatePeriodEnd) {
                ResultPeriod& r = nextRow();
                r.dtBegin = prev.dtDate + 1;
                r.dtEnd = p.dtDate;
                r.cTaxPen = rows[cur - 1].cTaxPen;
                r.fRate = sel.stdPeriodRate(r.dtEnd);
                if (stopDate <= r.dtEnd || static_cast<std::int32_t>(j) == stop) {
                    reachedStop = true;
                    break;
                }
            }
            if (p.sCode.view() != code::kRatePeriodEnd) {
                nextRow();
                ResultAsPoint(p, rows, cur);
            }
        }
        // The last interest row runs through the stop date on the balance
        // before that day's events; a payment, charge or penalty dated on the
        // stop date then follows as an event row of its own, as on any other
        // day, so its interest part counts. When the points ran out first
        // there is no such row to close.
        if (reachedStop) {
            ResultPeriod& last = rows[cur];
            last.dtEnd = stopDate;
            last.fRate = sel.stdPeriodRate(stopDate);
            last.cAccruedInt = rows[cur - 1].cAccruedInt;
            for (; j < tl.size() && tl[j].dtDate == stopDate; ++j) {
                const std::string_view kind = tl[j].sCode.view();
                if (kind != code::kRatePeriodEnd && kind != code::kStop) {
                    nextRow();
                    ResultAsPoint(tl[j], rows, cur);
                }
            }
        }
        rows.resize(cur + 1);

        Money total;
        for (std::size_t i = 0; i <= cur; ++i) {
            ResultPeriod& r = rows[i];
            r.nDays = static_cast<std::int32_t>(std::nearbyint(r.dtEnd - r.dtBegin + 1.0));
            if (r.fRate == 0.0f)
                r.nDays = 0;
            if (suspension && in.dtIntSuspend <= r.dtBegin && r.dtBegin < in.dtRestart) {
                // No interest accrues on a row that begins in the suspension.
                r.cInterest = Money();
                r.dIntFactor = 0.0;
                r.sDesc = "Int Suspended";
                noRateShown(r);
            } else if (r.dtBegin < in.dtDue) {
                // Nothing accrues on a row that begins before the return is due.
                r.cInterest = Money();
                r.dIntFactor = 0.0;
                if (mentionsInterest(r.sDesc))
                    r.sDesc = "T/R Not Due";
                noRateShown(r);
            } else if (const std::optional<MissingRate> missing
                       = r.nDays > 0 ? sel.missingRate(r) : std::nullopt) {
                // A rate the table does not hold: nothing is owed on a zero
                // balance at any rate; anything else cannot be computed.
                if (r.cTaxPen + r.cAccruedInt != Money())
                    throw RefuseMissingRate(in, wr, *missing);
                r.fRate = 0.0f;
                r.nDays = 0;
                r.dIntFactor = 0.0;
                r.cInterest = RoundCurrency(r.cInterest, 2);
                if (r.sDesc.isUnset())
                    r.sDesc = "Nothing Owed";
            } else {
                const bool compounds = intFactor(sel, r);
                const Money base = compounds ? r.cTaxPen + r.cAccruedInt : r.cTaxPen;
                // base x factor to the ten-thousandth, then with the event's
                // own interest change to the cent, halves to even both times.
                r.cInterest = RoundCurrency(MulDouble(base, r.dIntFactor) + r.cInterest, 2);
            }
            total += r.cInterest;
            if (i < cur)
                rows[i + 1].cAccruedInt = r.cAccruedInt + r.cInterest;
        }
        return total;
    });
}

Money IntToDate(std::string_view dateText, const Case& c, const RateTable& rates,
                PenaltyCalculators* penalties, TLPoint& totals, Messages& msgs)
{
    return WithFaultName("IntToDate", [&] {
        Date when;
        if (!DateValid(dateText, "Payment", when, msgs))
            return Money();
        Case copy = c;
        copy.init.tlStop.dtDate = when;
        // Only payments made before the day count.
        for (PaymentRec& p : copy.pmts) {
            if (p.dtPmt >= when) {
                p.cAmount = Money();
                p.cToTax = Money();
                p.cToInt = Money();
                p.cToPen = Money();
            }
        }
        std::vector<ResultPeriod> rows;
        TimeLine tl;
        const Money interest = GetInterest(copy, rates, penalties, rows, tl);
        GetTaxToDate(tl, totals, when);
        return interest;
    });
}

}  // namespace rw
