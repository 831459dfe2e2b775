#include "engine/ratesel.h"

#include "base/fault.h"

#include <cmath>

#include <algorithm>
#include <limits>

namespace rw {

namespace {

// Federal thresholds, compared with the first day of an interest row.
constexpr Date k19841231 = Date::fromCivil(1984, 12, 31);  // tax-motivated rate after it
constexpr Date k19861231 = Date::fromCivil(1986, 12, 31);  // overpayment differential after it
constexpr Date k19981231
    = Date::fromCivil(1998, 12, 31);  // ... through it; corporations only after it

const Money kLargeCorpUnderpayment = Money::fromCents(100'000'00);  // more than 100,000.00 owed
const Money kLargeCorpOverpayment = Money::fromCents(-10'000'00);  // more than 10,000.00 overpaid

// Rates at or below this are taken as they stand.
constexpr float kNegligibleRate = 0.0001f;

float revise(float rate, double change)
{
    return static_cast<float>(static_cast<double>(rate) + change);
}

// Why no table row covers d: the table ends before it. Told with the stop
// date when that is the date beyond the table, as it is in a computation.
[[noreturn]] void beyondTable(std::string_view procedure, const RateTable& wr, Date d,
                              const InitInputs* init)
{
    if (wr.empty())
        ThrowFault(kErrSubscript, procedure, "the rate table has no rows");
    Date end = wr.front().dtThru;
    for (const RateRow& r : wr)
        end = std::max(end, r.dtThru);
    const bool stopBeyond = init != nullptr && init->tlStop.dtDate > end;
    ThrowFault(kErrSubscript, procedure,
               (stopBeyond ? "the stop date " + FormatMMDDYYYY(init->tlStop.dtDate)
                           : "the date " + FormatMMDDYYYY(d))
                   + " lies beyond the rate table, which ends " + FormatMMDDYYYY(end));
}

void label(ResultPeriod& row, std::string_view text)
{
    if (row.sDesc.isUnset())
        row.sDesc = text;
}

float revisedUS(const InitInputs& init, ResultPeriod& row, Money taxToDate)
{
    const float fRate = row.fRate;
    float rate = fRate;
    std::string_view text;  // none: an ordinary underpayment
    if (rate <= kNegligibleRate)
        return rate;
    const Money balance = row.cTaxPen + row.cAccruedInt;
    const Date begin = row.dtBegin;
    if (balance > Money()) {
        if (begin > k19841231 && IsYes(init.bTaxMotivated)) {
            rate = static_cast<float>(static_cast<double>(fRate) * 1.2);
            text = "Tax Motivated";
        }
        // The large corporate rate builds on the standard rate and wins over
        // the tax-motivated one.
        if (IsYes(init.bCorpUPRate) && begin >= init.dtCorpUPRateStart
            && taxToDate > kLargeCorpUnderpayment) {
            rate = revise(fRate, 0.02);
            text = "Corp Unrpmt Rate";
        }
    } else if (IsYes(init.bCorpOPRate) && begin >= init.dtCorpOPRateStart
               && taxToDate < kLargeCorpOverpayment) {
        rate = revise(fRate, -0.025);
        text = "Corp Ovrpmt Rate";
    } else {
        text = "Overpmt Rate";
        // 1 % less for every overpaid taxpayer in 1987-1998, for
        // corporations only after 1998.
        const bool differential
            = begin > k19861231 && (begin <= k19981231 || IsYes(init.bCorporate));
        if (differential)
            rate = revise(fRate, -0.01);
    }
    label(row, text);
    return rate;
}

}  // namespace

std::ptrdiff_t RateRowFinder::find(Date d)
{
    if (!started_ || !(d >= last_)) {
        next_ = 0;
        started_ = true;
    }
    last_ = d;
    const RateTable& wr = *wr_;
    // Rows passed over do not qualify for this date, so none of them
    // qualifies for a later one.
    while (next_ < wr.size() && !(wr[next_].dtThru >= d))
        ++next_;
    return next_ < wr.size() ? static_cast<std::ptrdiff_t>(next_) : -1;
}

void GetWorkingRates(const RateTable& rates, RateTable& wr)
{
    WithFaultName("GetWorkingRates", [&] { wr = rates; });
}

float GetStdPeriodRate(const RateTable& wr, Date d)
{
    for (const RateRow& r : wr)
        if (r.dtThru >= d)
            return r.fUPRate;
    beyondTable("GetStdPeriodRate", wr, d, nullptr);
}

float GetRevisedUSRate(const InitInputs& init, ResultPeriod& row, const TimeLine& tl)
{
    return WithFaultName("GetRevisedUSRate", [&] {
        TLPoint totals;
        return revisedUS(init, row, GetTaxToDate(tl, totals, row.dtBegin));
    });
}

float GetRevisedStateRate(ResultPeriod& row, const RateRow& tableRow)
{
    return WithFaultName("GetRevisedStateRate", [&] {
        float rate = row.fRate;
        if (rate <= kNegligibleRate)
            return rate;
        if (row.cTaxPen + row.cAccruedInt > Money()) {
            label(row, "Undrpmt Rate");
        } else {
            // A state table keeps a period whose refund rate was never
            // published (stored as NaN); an overpayment in it cannot be
            // computed, and no rate is made up for it.
            if (std::isnan(tableRow.fOPRate))
                ThrowFault(
                    kErrInvalidCall, "GetRevisedStateRate",
                    "the state's rate table has no published overpayment rate for the period "
                        + FormatMMDDYYYY(tableRow.dtFrom) + " to " + FormatMMDDYYYY(tableRow.dtThru)
                        + ", so interest on an overpayment in that period cannot be computed");
            rate = tableRow.fOPRate;
            label(row, "Overpmt Rate");
        }
        return rate;
    });
}

float GetRevisedRate(const InitInputs& init, ResultPeriod& row, const RateTable& wr,
                     const TimeLine& tl, bool& compounds)
{
    RateSelector sel(init, wr, tl);
    return sel.revisedRate(row, compounds);
}

RateSelector::RateSelector(const InitInputs& init, const RateTable& wr, const TimeLine& tl)
    : init_(init)
    , wr_(wr)
    , stdRows_(wr)
    , revisedRows_(wr)
    , coverRows_(wr)
    , tax_(tl)
{
}

float RateSelector::stdPeriodRate(Date d)
{
    const std::ptrdiff_t i = stdRows_.find(d);
    if (i < 0)
        return std::numeric_limits<float>::quiet_NaN();
    return wr_[static_cast<std::size_t>(i)].fUPRate;
}

std::optional<MissingRate> RateSelector::missingRate(const ResultPeriod& row)
{
    using Kind = MissingRate::Kind;
    if (wr_.empty())
        return MissingRate{Kind::AfterTable, row.dtBegin, row.dtEnd};
    const Date first = wr_.front().dtFrom;
    if (row.dtBegin < first)
        return MissingRate{Kind::BeforeTable, row.dtBegin, std::min(row.dtEnd, first - 1)};
    const std::ptrdiff_t i = coverRows_.find(row.dtEnd);
    if (i < 0)
        return MissingRate{Kind::AfterTable, std::max(row.dtBegin, wr_.back().dtThru + 1),
                           row.dtEnd};

    // Federal rows revise the underpayment column in both directions; a
    // state's overpaid row takes the refund column.
    const bool refund = !init_.isFederal() && !(row.cTaxPen + row.cAccruedInt > Money());
    auto lacks = [&](std::size_t k) {
        return std::isnan(wr_[k].fUPRate) || (refund && std::isnan(wr_[k].fOPRate));
    };
    auto k = static_cast<std::size_t>(i);
    if (!lacks(k))
        return std::nullopt;
    // The whole stretch of its kind, however many rows the year ends cut it
    // into: a hole, or rows whose only lack is the refund rate.
    const Kind kind = std::isnan(wr_[k].fUPRate) ? Kind::Hole : Kind::Refund;
    auto same = [&](std::size_t n) {
        return lacks(n) && std::isnan(wr_[n].fUPRate) == (kind == Kind::Hole);
    };
    std::size_t a = k;
    std::size_t b = k;
    while (a > 0 && same(a - 1))
        --a;
    while (b + 1 < wr_.size() && same(b + 1))
        ++b;
    return MissingRate{kind, wr_[a].dtFrom, wr_[b].dtThru};
}

Refusal RefuseMissingRate(const InitInputs& init, const RateTable& wr, const MissingRate& missing)
{
    using Kind = MissingRate::Kind;
    const std::string stretch
        = FormatShortDate(missing.from) + " to " + FormatShortDate(missing.thru);
    std::string what;  // what the table lacks
    std::string change;  // the dates that would avoid it
    switch (missing.kind) {
    case Kind::Hole:
        what = "has no published interest rate for " + stretch
               + ", and the balance in that period is not zero";
        change = "the start or stop date so that the calculation leaves that period out";
        break;
    case Kind::Refund:
        what = "has no published overpayment (refund) rate for " + stretch
               + ", and the case is overpaid in that period";
        change = "the start or stop date so that the calculation leaves that period out";
        break;
    case Kind::BeforeTable:
        what = "begins on " + FormatShortDate(wr.front().dtFrom)
               + ", and this calculation needs a rate for " + stretch;
        change = "the start date so that the calculation lies within the table";
        break;
    case Kind::AfterTable:
        what = (wr.empty() ? std::string("has no rows")
                           : "ends on " + FormatShortDate(wr.back().dtThru))
               + ", and this calculation needs a rate for " + stretch;
        change = "the stop date so that the calculation lies within the table";
        break;
    }
    return Refusal(
        "Interest Cannot Be Computed",
        "The " + std::string(AuthorityForCode(init.sTaxAuth.view()).name) + " rate table " + what
            + ". Change " + change
            + ", or install a release of the rates that covers it (see \"Updating interest rates\" "
              "in "
              "the manual). Interest is never computed on a rate the table does not hold.");
}

float RateSelector::revisedUSRate(ResultPeriod& row)
{
    return WithFaultName("GetRevisedUSRate",
                         [&] { return revisedUS(init_, row, tax_.taxToDate(row.dtBegin)); });
}

float RateSelector::revisedRate(ResultPeriod& row, bool& compounds)
{
    return WithFaultName("GetRevisedRate", [&] {
        const std::ptrdiff_t i = revisedRows_.find(row.dtEnd);
        if (i < 0)
            beyondTable("GetRevisedRate", wr_, row.dtEnd, &init_);
        const RateRow& tableRow = wr_[static_cast<std::size_t>(i)];
        compounds = tableRow.compounds();
        const float rate
            = init_.isFederal() ? revisedUSRate(row) : GetRevisedStateRate(row, tableRow);
        label(row, compounds ? "Compound" : "Simple");
        return rate;
    });
}

}  // namespace rw
