#include "penalties/esttax.h"

#include "base/fault.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <map>
#include <string>

namespace rw {

namespace {

const char kTitle[] = "Estimated Tax Penalty Cannot Be Computed";

[[noreturn]] void Refuse(const std::string& text)
{
    throw Refusal(kTitle, text);
}

int Weekday(Date d)  // 0 Sunday .. 6 Saturday; day 0 (30 December 1899) was a Saturday
{
    const auto n = static_cast<std::int64_t>(std::floor(d.dayNumber()));
    return static_cast<int>(((n + 6) % 7 + 7) % 7);
}

// The n-th given weekday of a month (n = -1: the last).
Date NthWeekday(int year, int month, int weekday, int n)
{
    if (n < 0) {
        Date d = Date::fromCivil(year, month, DaysInMonth(year, month));
        while (Weekday(d) != weekday)
            d = d - 1;
        return d;
    }
    Date d = Date::fromCivil(year, month, 1);
    while (Weekday(d) != weekday)
        d = d + 1;
    return d + 7 * (n - 1);
}

// A holiday on a fixed date falling on a Saturday is kept the Friday before,
// one on a Sunday the Monday after.
Date Observed(Date d)
{
    const int w = Weekday(d);
    return w == 6 ? d - 1 : w == 0 ? d + 1 : d;
}

bool IsHoliday(Date d)
{
    const int y = d.year();
    const Date fixed[] = {
        Observed(Date::fromCivil(y, 1, 1)),
        Observed(Date::fromCivil(y + 1, 1, 1)),  // kept on 31 December
        Observed(Date::fromCivil(y, 7, 4)),
        Observed(Date::fromCivil(y, 11, 11)),
        Observed(Date::fromCivil(y, 12, 25)),
    };
    for (Date h : fixed)
        if (h == d)
            return true;
    if (y >= 2021 && Observed(Date::fromCivil(y, 6, 19)) == d)
        return true;
    if (y >= 2007 && Observed(Date::fromCivil(y, 4, 16)) == d)
        return true;
    constexpr int kMonday = 1;
    constexpr int kThursday = 4;
    return (y >= 1986 && d == NthWeekday(y, 1, kMonday, 3)) || d == NthWeekday(y, 2, kMonday, 3)
           || d == NthWeekday(y, 5, kMonday, -1) || d == NthWeekday(y, 9, kMonday, 1)
           || d == NthWeekday(y, 10, kMonday, 2) || d == NthWeekday(y, 11, kThursday, 4);
}

__extension__ using Wide = __int128;

// a x num / den in ten-thousandths, rounded to cents, halves up (amounts here
// are never negative).
Money Share(Money a, std::int64_t num, std::int64_t den)
{
    const Wide x = static_cast<Wide>(a.raw()) * num;
    const Wide centDen = static_cast<Wide>(den) * 100;
    const Wide cents = (x + centDen / 2) / centDen;
    return Money::fromRaw(static_cast<std::int64_t>(cents * 100));
}

// The 15th of the month `months` months after the first month of the tax year.
Date FifteenthAfter(int startYear, int startMonth, int months)
{
    return AddMonths(Date::fromCivil(startYear, startMonth, 15), months);
}

int StartMonth(const EstTaxInput& in)
{
    return EstTaxYearBegins(in).civil().month;
}

void Check(const EstTaxInput& in)
{
    if (in.taxYear < 2000 || in.taxYear > 2199)
        Refuse("The estimated tax penalty is figured for tax years from 2000 on; the tax year "
               "given is "
               + std::to_string(in.taxYear) + ".");
    if (in.filer == EstTaxFiler::Corporation
        && (in.fiscalYearEndMonth < 1 || in.fiscalYearEndMonth > 12))
        Refuse("The month the tax year ends must be from 1 to 12.");
    const Money zero;
    if (in.currentTax < zero || in.priorTax < zero)
        Refuse("The tax of the year and of the prior year cannot be negative.");
    if (in.withholding < zero)
        Refuse("The tax withheld cannot be negative.");
    Money withheld;
    for (const auto* list : {&in.withholdingByDate, &in.estimatedPayments})
        for (const DatedAmount& p : *list) {
            if (!p.date.isGiven())
                Refuse("Every payment and every amount withheld needs its date.");
            if (p.amount < zero)
                Refuse("A payment of " + FormatMoney(p.amount) + " on " + FormatShortDate(p.date)
                       + " cannot be negative.");
        }
    for (const DatedAmount& p : in.withholdingByDate)
        withheld += p.amount;
    if (!in.withholdingByDate.empty() && withheld != in.withholding)
        Refuse("The amounts withheld on their dates add up to " + FormatMoney(withheld)
               + ", not to the tax withheld of " + FormatMoney(in.withholding) + ".");
    if (in.installments)
        for (Money m : *in.installments)
            if (m < zero)
                Refuse("A required installment cannot be negative.");
}

// The required installments by the regular method.
std::array<Money, 4> RequiredInstallments(const EstTaxInput& in, Money& annual)
{
    const bool individual = in.filer == EstTaxFiler::Individual;
    const bool usePrior = in.priorYearUsable && (individual || !in.priorTax.isZero());
    Money current = individual ? Share(in.currentTax, 90, 100) : in.currentTax;
    Money prior = in.priorTax;
    if (individual && in.highIncome)
        prior = Share(in.priorTax, HighIncomePriorYearShare(in.taxYear), 1000);
    annual = usePrior ? std::min(current, prior) : current;
    if (!individual && in.largeCorporation) {
        // The first installment may rest on the prior year; what that saves is
        // added to the second, and the rest rest on the current year.
        annual = current;
        const Money first = Share(usePrior ? std::min(current, prior) : current, 1, 4);
        return {first, Share(current, 1, 2) - first, Share(current, 1, 4), Share(current, 1, 4)};
    }
    const Money quarter = Share(annual, 1, 4);
    return {quarter, quarter, quarter, quarter};
}

// The payments of the year in date order, those of one day as one payment.
std::vector<DatedAmount> Payments(const EstTaxInput& in, const std::array<Date, 4>& due)
{
    std::map<double, Money> byDay;
    if (in.withholdingByDate.empty()) {
        // Three quarters rounded to cents, the rest on the last due date.
        const Money part = Share(in.withholding, 1, 4);
        for (int i = 0; i < 4; ++i)
            byDay[due[i].dayNumber()] += i < 3 ? part : in.withholding - part - part - part;
    } else {
        for (const DatedAmount& p : in.withholdingByDate)
            byDay[std::floor(p.date.dayNumber())] += p.amount;
    }
    for (const DatedAmount& p : in.estimatedPayments)
        byDay[std::floor(p.date.dayNumber())] += p.amount;
    std::vector<DatedAmount> out;
    for (const auto& [day, amount] : byDay)
        if (!amount.isZero())
            out.push_back({Date(day), amount});
    return out;
}

// A stretch of days charged at one rate and counted over one year's days.
struct RatePeriod {
    Date from;  // the day before the first day
    Date thru;
    float rate = 0.0f;
    int yearDays = 365;
};

// The rate periods of the days after `first` through `last`: one per stretch
// of one rate, cut where a year of 365 days meets one of 366. For an
// individual, 1 to 15 April of the year after the tax year take the rate of
// the March before, on the same line.
std::vector<RatePeriod> RatePeriods(const EstTaxInput& in, const RateTable& rates, Date first,
                                    Date last)
{
    const Date april1 = Date::fromCivil(in.taxYear + 1, 4, 1);
    const Date april15 = Date::fromCivil(in.taxYear + 1, 4, 15);
    std::vector<RatePeriod> out;
    int lastYearDays = 0;
    for (Date d = first + 1; d <= last; d = d + 1) {
        Date asOf = d;
        if (in.filer == EstTaxFiler::Individual && d >= april1 && d <= april15)
            asOf = april1 - 1;
        std::ptrdiff_t row = -1;
        for (std::size_t i = 0; i < rates.size(); ++i)
            if (rates[i].dtFrom <= asOf && asOf <= rates[i].dtThru) {
                row = static_cast<std::ptrdiff_t>(i);
                break;
            }
        if (row < 0 || std::isnan(rates[static_cast<std::size_t>(row)].fUPRate))
            Refuse("The rate table holds no underpayment rate for " + FormatShortDate(asOf)
                   + ", a day the estimated tax penalty runs. Install a release of the rates "
                     "that covers it.");
        const int yearDays = IsLeapYear(d.year()) ? 366 : 365;
        // A rate period runs while the rate stays the same: the table's
        // quarter and year-end rows of one rate make one line, as on the
        // worksheet.
        const float rate = rates[static_cast<std::size_t>(row)].fUPRate;
        if (out.empty() || rate != out.back().rate || yearDays != lastYearDays)
            out.push_back({d - 1, d, rate, yearDays});
        out.back().thru = d;
        lastYearDays = yearDays;
    }
    return out;
}

Money LinePenalty(Money base, int days, float rate, int yearDays)
{
    const auto millionths
        = static_cast<std::int64_t>(std::llround(static_cast<double>(rate) * 1e6));
    return Share(base, static_cast<std::int64_t>(days) * millionths,
                 static_cast<std::int64_t>(yearDays) * 1000000);
}

}  // namespace

bool IsNonBusinessDay(Date d)
{
    const int w = Weekday(d);
    return w == 0 || w == 6 || IsHoliday(d);
}

Date NextBusinessDay(Date d)
{
    while (IsNonBusinessDay(d))
        d = d + 1;
    return d;
}

int HighIncomePriorYearShare(int taxYear)
{
    switch (taxYear) {
    case 2000:
        return 1086;
    case 2002:
        return 1120;
    default:
        return 1100;
    }
}

Date EstTaxYearBegins(const EstTaxInput& in)
{
    return Date::fromCivil(
        in.taxYear, in.filer == EstTaxFiler::Individual ? 1 : in.fiscalYearEndMonth % 12 + 1, 1);
}

Date EstTaxYearEnds(const EstTaxInput& in)
{
    return AddMonths(EstTaxYearBegins(in), 12) - 1;
}

std::array<Date, 4> EstTaxDueDates(const EstTaxInput& in)
{
    const int m = StartMonth(in);
    if (in.filer == EstTaxFiler::Individual)
        return {FifteenthAfter(in.taxYear, 1, 3), FifteenthAfter(in.taxYear, 1, 5),
                FifteenthAfter(in.taxYear, 1, 8), FifteenthAfter(in.taxYear, 1, 12)};
    return {FifteenthAfter(in.taxYear, m, 3), FifteenthAfter(in.taxYear, m, 5),
            FifteenthAfter(in.taxYear, m, 8), FifteenthAfter(in.taxYear, m, 11)};
}

Date EstTaxReturnDue(const EstTaxInput& in)
{
    if (in.filer == EstTaxFiler::Individual)
        return Date::fromCivil(in.taxYear + 1, 4, 15);
    // A corporation's return is due the 15th of the 4th month after the year
    // ends for years beginning after 2015, the 3rd before; a year ending on
    // 30 June keeps the 3rd month for years beginning before 2026.
    const int m = StartMonth(in);
    const bool fourth = in.fiscalYearEndMonth == 6 ? in.taxYear >= 2026 : in.taxYear >= 2016;
    return FifteenthAfter(in.taxYear, m, 12 + (fourth ? 3 : 2));
}

EstTaxResult ComputeEstTaxPenalty(const EstTaxInput& in, const RateTable& rates)
{
    Check(in);
    EstTaxResult r;
    std::array<Money, 4> required = RequiredInstallments(in, r.requiredAnnualPayment);
    if (in.installments)
        required = *in.installments;
    r.returnDue = EstTaxReturnDue(in);

    const bool individual = in.filer == EstTaxFiler::Individual;
    if (individual ? in.currentTax - in.withholding < Money::fromCents(100000)
                   : in.currentTax < Money::fromCents(50000)) {
        r.exemption = EstTaxExemption::SmallTax;
        return r;
    }

    const std::array<Date, 4> due = EstTaxDueDates(in);
    const std::vector<DatedAmount> payments = Payments(in, due);

    // Payments go to the earliest underpayment still open; what is left is
    // credited to the next installment.
    std::deque<int> open;
    Money credit;
    std::size_t next = 0;
    auto pay = [&](const DatedAmount& p) {
        Money left = p.amount;
        while (!left.isZero() && !open.empty()) {
            EstTaxInstallment& inst = r.installments[static_cast<std::size_t>(open.front())];
            Money owed = inst.underpayment;
            for (const DatedAmount& a : inst.paidLate)
                owed -= a.amount;
            const Money applied = std::min(owed, left);
            inst.paidLate.push_back({p.date, applied});
            left -= applied;
            if (applied == owed)
                open.pop_front();
        }
        credit += left;
    };
    for (std::size_t k = 0; k < 4; ++k) {
        EstTaxInstallment& inst = r.installments[k];
        inst.nominalDue = due[k];
        inst.actualDue = NextBusinessDay(due[k]);
        inst.required = required[k];
        while (next < payments.size() && payments[next].date <= inst.actualDue)
            pay(payments[next++]);
        inst.paidOnTime = std::min(credit, inst.required);
        credit -= inst.paidOnTime;
        inst.overpayment = credit;
        inst.underpayment = inst.required - inst.paidOnTime;
        if (!inst.underpayment.isZero())
            open.push_back(static_cast<int>(k));
    }
    while (next < payments.size())
        pay(payments[next++]);

    // The days charged run from the first underpaid due date to the last day
    // an underpayment stayed open, at most the return's due date.
    Date first = r.returnDue;
    Date last = first;
    bool any = false;
    for (const EstTaxInstallment& inst : r.installments) {
        if (inst.underpayment.isZero())
            continue;
        Money paid;
        for (const DatedAmount& a : inst.paidLate)
            paid += a.amount;
        const Date end = paid == inst.underpayment
                             ? std::min(inst.paidLate.back().date, r.returnDue)
                             : r.returnDue;
        first = any ? first : inst.nominalDue;
        last = any ? std::max(last, end) : end;
        any = true;
    }
    if (!any)
        return r;
    const std::vector<RatePeriod> periods = RatePeriods(in, rates, first, last);

    for (std::size_t k = 0; k < 4; ++k) {
        const EstTaxInstallment& inst = r.installments[k];
        Money unpaid = inst.underpayment;
        std::size_t a = 0;
        for (const RatePeriod& p : periods) {
            if (unpaid.isZero() || p.thru <= inst.nominalDue)
                continue;
            const Date from = std::max(p.from, inst.nominalDue);
            auto add = [&](Money base, Date to) {
                const int days = static_cast<int>(to - from);
                if (days > 0)
                    r.lines.push_back({static_cast<int>(k), from, to, days, p.rate, p.yearDays,
                                       base, LinePenalty(base, days, p.rate, p.yearDays)});
            };
            for (; a < inst.paidLate.size() && inst.paidLate[a].date <= p.thru; ++a) {
                add(inst.paidLate[a].amount, inst.paidLate[a].date);
                unpaid -= inst.paidLate[a].amount;
            }
            if (!unpaid.isZero())
                add(unpaid, p.thru);
        }
    }
    for (const EstTaxLine& l : r.lines)
        r.total += l.penalty;
    return r;
}

}  // namespace rw
