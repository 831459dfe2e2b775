#pragma once
// The failure-to-deposit penalty on payroll taxes, I.R.C. §6656. Payments, in
// list order, pay the required deposits, in list order (the deposit list is
// kept sorted by due date); each deposit is cut into one piece per payment
// that pays part of it, plus an unpaid piece when the payments run out. Each
// piece is charged by how late it was paid:
//
//     days late            rate
//     0 or fewer           0
//     any, §6656(b)(1)(B)  15 %   (after a delinquency notice or a jeopardy demand)
//     1 to 5               2 %
//     6 to 15              5 %
//     16 or more           10 %
//
// An unpaid piece counts as paid on the stop date of the calculation. Only
// the tax part of a payment pays deposits.

#include "engine/timeline.h"
#include "penalties/penaltytypes.h"

#include <cstdint>
#include <span>
#include <vector>

namespace rw {

// One payment while deposits are being paid: its date, its tax part and what
// of that is not yet applied.
struct PmtWorkItem {
    Date dtPmt;
    Money cToTax;
    Money cLeft;
};

// The rate of a piece paid daysLate days after its due date.
float PRPenRate(std::int16_t daysLate, bool severe);

// base x rate: the rate as money (0.0200, 0.0500, 0.1000, 0.1500), the exact
// product kept to four decimals (halves to even), then rounded to cents
// (halves to even): 0.50 at 5 % is 0.0250 -> 0.02, 0.70 is 0.0350 -> 0.04.
Money PRPiecePenalty(Money base, float rate);

// paid - due in days as a 16-bit count; beyond that range (a deposit without
// a due date) it is an overflow fault of CalcUSPRPen.
std::int16_t PRDaysLate(Date paid, Date due);

// Completes element `index` of the table with the next payment whose tax part
// is not used up. Returns true when it has appended a further element for the
// same deposit and moved index to it.
bool AddPRPenTblElement(const InitInputs& init, std::vector<PRPenTblElement>& table,
                        std::size_t& index, std::vector<PmtWorkItem>& work, Flag severe, Date due);

// The payroll penalty table of the case's deposits paid by the given payments
// in the given order (the case's own list, or a rearranged copy).
void CalcUSPRPen(const Case& c, std::span<const PaymentRec> pmts,
                 std::vector<PRPenTblElement>& table);

// Sum of the table's penalties.
Money TotalPRPenalty(const std::vector<PRPenTblElement>& table);

// The payroll points: every deposit as tax owed from its due date ("DDD "),
// then every piece's penalty ("PDP "), dated on the assessment date of the
// first deposit with the piece's due date. table receives the penalty table
// for the case's payments in list order.
void AddUSPRPts(const Case& c, TimeLine& tl, std::int16_t& next,
                std::vector<PRPenTblElement>& table);
void AddPRLiabPts(const Case& c, TimeLine& tl, std::span<const DepositRec> deposits,
                  std::int16_t& next);
void AddPRPenPts(TimeLine& tl, std::span<const DepositRec> deposits,
                 const std::vector<PRPenTblElement>& table, std::int16_t& next);

}  // namespace rw
