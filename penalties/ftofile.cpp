#include "penalties/ftofile.h"

#include "base/fault.h"

namespace rw {

namespace {

TLPoint penaltyPoint(std::string_view desc, std::string_view code, Date d, Money pen)
{
    TLPoint p;
    p.sDesc = desc;
    p.sCode = code;
    p.dtDate = d;
    p.cPen = pen;
    return p;
}

// Interest on the failure-to-file penalty of a return extended to a date
// before 7/19/1984 runs from the assessment, but from 7/19/1984 at the latest.
constexpr Date kFtfInterestChange = Date::fromCivil(1984, 7, 19);

// 5 % of the base for each month late. The factor is the double 0.05.
constexpr double kFtfMonthlyRate = 0.05;

}  // namespace

Money FailToFileMinimum(const FtfMinimumSchedule& minimums, int dueYear, std::string* note)
{
    auto tell = [&](std::string text) {
        if (note != nullptr)
            *note = std::move(text);
    };
    tell({});
    if (minimums.rows.empty()) {
        tell(
            "The release of the rates lists no minimum failure-to-file penalty; none was applied.");
        return Money();
    }
    const FtfMinimum& first = minimums.rows.front();
    const FtfMinimum& last = minimums.rows.back();
    const std::string due = std::to_string(dueYear);
    if (dueYear < first.firstYear) {
        tell("Minimum failure-to-file penalty: the release of the rates lists amounts from "
             + std::to_string(first.firstYear) + "; its earliest, " + FormatMoney(first.amount)
             + ", was applied to this return due in " + due + ".");
        return first.amount;
    }
    if (dueYear > last.firstYear)
        tell("Minimum failure-to-file penalty: the release of the rates lists amounts through "
             + std::to_string(last.firstYear) + "; the " + std::to_string(last.firstYear)
             + " amount, " + FormatMoney(last.amount) + ", was applied to this return due in " + due
             + ".");
    return minimums.forDueYear(dueYear).value_or(last.amount);
}

float FailToPayRate(const Case& c, const FtoTable& table, Date date, int i)
{
    return WithFaultName("FailToPayRate", [&] {
        const InitInputs& in = c.init;
        if (!IsYes(in.b6651d1))
            return 0.005f;
        if (date < in.dt6651d1Start)
            return 0.005f;
        // §6651(d)(1): the total of all months, in single precision, may not
        // pass 25 %; no month is charged at a reduced remainder.
        float total = 0.0f;
        for (int k = 0; k <= i; ++k)
            total += table.rows[static_cast<std::size_t>(k)].fFtpRate;
        const Money withThisMonth = Money::fromDouble(static_cast<double>(total) + 0.01);
        return withThisMonth <= Money::fromCents(25) ? 0.01f : 0.0f;
    });
}

void GetFtoPayTaxBal(const Case& c, const TimeLine& tl, FtoTable& table, int i)
{
    WithFaultName("GetFtoPayTaxBal", [&] {
        FtoRow& row = table.rows[static_cast<std::size_t>(i)];
        Money net;
        for (const TLPoint& p : tl) {
            if (!(p.dtDate < row.dtComp))
                break;
            net += p.cTax;
        }
        row.cNetTax = net;
        if (!IsYes(c.init.bFtoPay)) {
            row.cFtp = Money();
            return;
        }
        if (row.cNetTax < Money())
            row.cNetTax = Money();
        row.fFtpRate = FailToPayRate(c, table, row.dtComp, i);
        row.cFtp = MulDouble(row.cNetTax, static_cast<double>(row.fFtpRate));
    });
}

Money GetFtoFBase(const Case& c, const TimeLine& tl)
{
    return WithFaultName("GetFtoFBase", [&] {
        const InitInputs& in = c.init;
        if (IsYes(in.bPayroll)) {
            Money base;
            for (const TLPoint& p : tl) {
                if (p.dtDate > in.dtDue)
                    break;
                base += p.cTax;
            }
            return base;
        }
        return in.tlStart.cTax > Money() ? in.tlStart.cTax : Money();
    });
}

Date GetFailToFileIntStart(const Case& c, Date assessDate)
{
    return WithFaultName("GetFailToFileIntStart", [&] {
        if (c.init.dtExtended >= kFtfInterestChange)
            return c.init.dtExtended;
        return assessDate < kFtfInterestChange ? assessDate : kFtfInterestChange;
    });
}

void FtoPtoTimeLine(const Case& c, TimeLine& tl, std::int16_t& next,
                    const std::vector<FtoRow>& ftoRows)
{
    WithFaultName("FtoPtoTimeLine", [&] {
        const Date assess = c.init.dtFtoPayAssess;
        TLPoint atAssessment = penaltyPoint("Failure To Pay", code::kFailureToPay, assess, Money());
        std::size_t k = 0;
        for (; k < ftoRows.size() && ftoRows[k].dtComp <= assess; ++k)
            atAssessment.cPen += ftoRows[k].cFtp;
        MakeTLPoint(atAssessment, tl, next);
        // Later months carry interest from their own first day.
        for (; k < ftoRows.size(); ++k)
            if (ftoRows[k].cFtp > Money())
                MakeTLPoint(penaltyPoint("Failure To Pay", code::kFailureToPay, ftoRows[k].dtComp,
                                         ftoRows[k].cFtp),
                            tl, next);
    });
}

void FtoFtoTimeLine(const Case& c, TimeLine& tl, std::int16_t& next, std::vector<FtoRow>& ftoRows,
                    const FtfMinimumSchedule& minimums, std::string* minimumNote)
{
    WithFaultName("FtoFtoTimeLine", [&] {
        const InitInputs& in = c.init;
        TLPoint point = penaltyPoint("Failure To File", code::kFailureToFile,
                                     GetFailToFileIntStart(c, in.dtFtoFileAssess), Money());
        for (const FtoRow& r : ftoRows)
            point.cPen += r.cNetFtf;

        // The minimum for a return filed more than 60 days late: the minimum
        // amount of the due date's year, or the whole base when that is less.
        // A payroll return has none; nor has a run that left no month rows.
        // The amounts come with the release of the rates.
        const bool minimumMayApply
            = !ftoRows.empty() && in.dtFiled - in.dtExtended > 60.0 && !IsYes(in.bPayroll);
        std::string note;
        const Money minimum
            = minimumMayApply ? FailToFileMinimum(minimums, in.dtDue.year(), &note) : Money();
        if (minimumNote != nullptr)
            minimumNote->clear();
        if (minimumMayApply && point.cPen < minimum) {
            const Money base = GetFtoFBase(c, tl);
            point.cPen = base < minimum ? base : minimum;
            if (minimumNote != nullptr && !(base < minimum))
                *minimumNote = note;
            // The rows keep adding up to the point: the first charged month
            // shows the whole amount, the later ones 0.
            const Money threshold = Money::fromRaw(10);  // 0.001
            bool first = true;
            for (FtoRow& r : ftoRows) {
                if (r.cNetFtf > threshold) {
                    r.cNetFtf = first ? point.cPen : Money();
                    first = false;
                }
            }
        }
        MakeTLPoint(point, tl, next);
    });
}

void CalcUSFtoFilePay(const Case& c, TimeLine& tl, std::int16_t& next, std::vector<FtoRow>& ftoRows,
                      const FtfMinimumSchedule& minimums, std::string* minimumNote)
{
    WithFaultName("CalcUSFtoFilePay", [&] {
        const InitInputs& in = c.init;
        // Every walk below needs the points in date order.
        MakeSortCodes(tl);
        SortPoints(tl);

        FtoTable table;
        table.rows[0].dtComp = in.dtDue + 1;
        GetFtoPayTaxBal(c, tl, table, 0);
        table.made = 1;
        for (int i = 1; i < kFtoMonths; ++i) {
            FtoRow& row = table.rows[static_cast<std::size_t>(i)];
            row.dtComp = AddMonths(table.rows[0].dtComp, i);
            table.made = i + 1;
            if (row.dtComp > in.tlStop.dtDate)
                break;  // no month lies past the stop date; this row keeps only its date
            GetFtoPayTaxBal(c, tl, table, i);
        }

        if (IsYes(in.bFtoFile)) {
            // Only rows that were made are months of the return.
            const Money base = GetFtoFBase(c, tl);
            float r = 0.0f;
            for (int i = 0; i < table.made; ++i) {
                FtoRow& row = table.rows[static_cast<std::size_t>(i)];
                const bool counts = row.dtComp >= in.dtExtended && row.dtComp <= in.tlStop.dtDate
                                    && row.dtComp <= in.dtFiled && base > Money();
                if (!counts)
                    continue;
                row.cGrossFtf = MulDouble(base, kFtfMonthlyRate);
                row.cNetFtf = row.cGrossFtf - row.cFtp;
                r = static_cast<float>(static_cast<double>(r) + 0.05);
                if (r >= 0.25f)
                    break;  // five months at most
            }
        }

        ftoRows.clear();
        for (int i = 0; i < kFtoMonths; ++i) {
            const FtoRow& row = table.rows[static_cast<std::size_t>(i)];
            if (row.cNetFtf > Money() || row.cFtp > Money())
                ftoRows.push_back(row);
        }

        if (IsYes(in.bFtoPay))
            FtoPtoTimeLine(c, tl, next, ftoRows);
        if (minimumNote != nullptr)
            minimumNote->clear();
        if (IsYes(in.bFtoFile))
            FtoFtoTimeLine(c, tl, next, ftoRows, minimums, minimumNote);
    });
}

}  // namespace rw
