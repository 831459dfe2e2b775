#pragma once
// Failure to file and failure to pay, I.R.C. §6651: the month rows of a run
// and the penalty points they put on the interest time line.
//
// §6651(a)(2)/(a)(3): 0.5 % of the unpaid tax for every month or part of a
// month, at most 50 months; with §6651(d)(1) 1 % a month from the day the
// user gives, while the running total stays within 25 %.
// §6651(a)(1): 5 % of the tax for every month the return is late, at most five
// months, less the failure-to-pay penalty of the same month; a return filed
// more than 60 days late owes at least the minimum amount of its year (or the
// tax, when that is less).

#include "engine/timeline.h"
#include "penalties/penaltytypes.h"
#include "rates/release.h"

#include <array>
#include <cstdint>
#include <vector>

namespace rw {

// The working table of one run: 51 zeroed rows, of which rows 0 to 49 are
// used.
inline constexpr int kFtoTableRows = 51;
inline constexpr int kFtoMonths = 50;

struct FtoTable {
    std::array<FtoRow, kFtoTableRows> rows{};
    // Rows made by the run (row 0 always; then every row up to the one that
    // lies past the stop date, which keeps its date and no amounts).
    int made = 0;
};

// The whole calculation: month rows, failure to file when it is on, the rows
// carrying an amount copied into ftoRows (replacing what it held), then the
// "FPP " points when failure to pay is on and the "FFP " point when failure
// to file is on. The minimum amounts are those of the release of the rates.
// minimumNote, when given, receives the note of FailToFileMinimum when the
// minimum was applied, and is emptied otherwise.
void CalcUSFtoFilePay(const Case& c, TimeLine& tl, std::int16_t& next, std::vector<FtoRow>& ftoRows,
                      const FtfMinimumSchedule& minimums, std::string* minimumNote = nullptr);

// One month's failure to pay: cNetTax, fFtpRate and cFtp of row i.
void GetFtoPayTaxBal(const Case& c, const TimeLine& tl, FtoTable& table, int i);

// The failure-to-pay rate of row i, whose first day is date: 0.005; with
// §6651(d)(1) from its start date 0.01 while the total stays within 25 %, then 0.
float FailToPayRate(const Case& c, const FtoTable& table, Date date, int i);

// The failure-to-file base: for a payroll return the liabilities dated by the
// due date less what was paid by then; otherwise the initial balance when it
// is above 0.
Money GetFtoFBase(const Case& c, const TimeLine& tl);

// The day from which interest runs on the failure-to-file penalty: the
// extended due date from 7/19/1984 on; before that the assessment date, but
// not later than 7/19/1984.
Date GetFailToFileIntStart(const Case& c, Date assessDate);

// The minimum failure-to-file amount for a return due in the given year. A
// year after the last one the release of the rates lists takes the latest
// amount it lists (one before the first, the earliest); note then tells which
// year's amount was taken. A release without minimums gives 0 and says so.
Money FailToFileMinimum(const FtfMinimumSchedule& minimums, int dueYear,
                        std::string* note = nullptr);

// Appends the "FPP " points: the months up to the assessment date in one point
// on that date (also when 0), every later month on its own first day.
void FtoPtoTimeLine(const Case& c, TimeLine& tl, std::int16_t& next,
                    const std::vector<FtoRow>& ftoRows);

// Applies the minimum amount to ftoRows and appends the "FFP " point.
void FtoFtoTimeLine(const Case& c, TimeLine& tl, std::int16_t& next, std::vector<FtoRow>& ftoRows,
                    const FtfMinimumSchedule& minimums, std::string* minimumNote = nullptr);

}  // namespace rw
