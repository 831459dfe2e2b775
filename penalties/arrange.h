#pragma once
// The deposit arrangement search: the order of the payments that gives the
// lowest payroll deposit penalty (I.R.C. §6656(e), Rev. Proc. 99-10 let the
// employer designate which liability a deposit is applied to). Every order of
// the payments is priced; the cheapest, the first of equals in lexicographic
// order, replaces the list, and the order as entered stays whenever nothing is
// cheaper.

#include "base/messages.h"
#include "penalties/payroll.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace rw {

// What the Payments dialog shows while the search runs: the variations label
// and two progress bars ("Determine all variations:", "Calculate penalties:").
// The window layer implements it; every call has a do-nothing default.
class ArrangeProgress {
public:
    virtual ~ArrangeProgress() = default;
    // Shows or hides the two labels, the two bars and the variations label.
    virtual void setVisible(bool visible) { (void)visible; }
    // lblVariations: "Variations to Consider: 362,880".
    virtual void setVariationsText(std::string_view text) { (void)text; }
    // gauPermutations: 0 to n - 1, one step per position filled.
    virtual void setPermutationsRange(int minimum, int maximum) { (void)minimum, (void)maximum; }
    virtual void setPermutationsValue(int value) { (void)value; }
    // gauPenalties: 0 to n! x 1.1 (so it never fills), the value the order
    // being priced.
    virtual void setPenaltiesRange(float minimum, float maximum) { (void)minimum, (void)maximum; }
    virtual void setPenaltiesValue(std::int32_t value) { (void)value; }
    // Let the screen repaint (after the label is set).
    virtual void repaint() { }
};

// n! as the product 1 x 2 x ... x n (0! = 1); beyond 32 bits an overflow
// fault of GetFactorial.
std::int32_t GetFactorial(std::int32_t n);

// All orders of n indexes, one row per order, in lexicographic order: row 0 is
// 0, 1, ..., n - 1, the last row n - 1, ..., 1, 0.
class PermutationTable {
public:
    std::int32_t rows() const { return rows_; }
    int columns() const { return cols_; }
    std::int16_t at(std::int32_t row, int column) const
    {
        return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(cols_)
                      + static_cast<std::size_t>(column)];
    }
    std::int16_t& at(std::int32_t row, int column)
    {
        return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(cols_)
                      + static_cast<std::size_t>(column)];
    }
    void resize(std::int32_t rows, int columns);

private:
    std::int32_t rows_ = 0;
    int cols_ = 0;
    std::vector<std::int16_t> cells_;
};

// Fills the table column by column: each block of rows sharing the earlier
// columns receives its free values in ascending order, (n - 1 - j)! rows
// apiece.
void AllPermutations(PermutationTable& table, std::int16_t n, ArrangeProgress* progress = nullptr);

// Copies columns 0 to lastPos of the table's row into best.
void FillPRAutoArrangeNdxArray(const PermutationTable& table, std::vector<std::int16_t>& best,
                               std::int32_t row, int lastPos);

// The orders are searched only for fewer than this many payments.
inline constexpr int kMaxArrangePayments = 10;

struct ArrangeOutcome {
    std::int32_t orders = 0;  // n!
    Money entered;  // total penalty of the order as entered
    Money lowest;  // lowest total found
    std::vector<std::int16_t> bestOrder;  // list index of the payment at each position
};

// The lowest-penalty order of the case's payments (1 to 9 of them), found
// without pricing every order: what the payments still to be placed can cost
// depends only on which payments were placed before them, so the cheapest
// completion is worked out once per set of placed payments. Gives exactly the
// order of FindLowestPRPenOrderByTable.
ArrangeOutcome FindLowestPRPenOrder(const Case& c, ArrangeProgress* progress = nullptr);

// The plain search: every row of the permutation table priced in full with
// CalcUSPRPen.
ArrangeOutcome FindLowestPRPenOrderByTable(const Case& c, ArrangeProgress* progress = nullptr);

// The search as the Payments dialog runs it: nothing for no payments; the
// warning for 10 or more; the warning of ArrangeRefusalText when the deposits
// cannot be arranged (nothing changes then); otherwise the search, the beep, the savings message
// when the employer saves more than $10, and the payments rewritten in the
// best order (whole records; nothing is recomputed).
void GetLowestPRPen(Case& c, Messages& msgs, ArrangeProgress* progress = nullptr);

std::string ArrangeSavingsText(Money savings, std::int32_t orders);
std::string ArrangeTooManyPaymentsText();
// Why the payments of the case cannot be arranged (a required deposit below
// zero, which no payment can pay in any order), or nothing.
std::optional<std::string> ArrangeRefusalText(const Case& c);

}  // namespace rw
