#include "penalties/arrange.h"

#include "casedata/numtext.h"
#include "penalties/faultname.h"

#include <limits>

namespace rw {

namespace {

// The penalties bar is moved at most this often (in orders priced).
constexpr std::int32_t kProgressStep = 4096;

std::string variationsText(std::int32_t orders)
{
    return "Variations to Consider: " + FormatCount(orders, true);
}

// Depth-first search over the orders of the payments in lexicographic order.
//
// Pricing an order is a walk of the deposits in list order with the payments
// in the trial order; only the tax part of a payment pays, and a payment whose
// tax part is 0 or less is never applied. After the first k payments the walk
// is fully described by the deposit being paid, what is left of it, and the
// penalty of the pieces paid so far; the unpaid rest is priced when all
// payments are placed. So the pieces of a shared prefix are priced once.
//
// Why the order found is the one of the plain search:
// - The leaves are visited in the table's order (lexicographic), and a leaf
//   replaces the best only when strictly cheaper, as in the plain search.
// - Every piece's penalty is non-negative when no required deposit is negative
//   (bases are then >= 0 and rates >= 0), and so is the unpaid rest: the total
//   of any completion of a prefix is at least the prefix's penalty. A prefix
//   whose penalty already reaches the best total can hold no strictly cheaper
//   order, and the plain search would change nothing inside it.
// - When no remaining payment can pay anything (all deposits are paid, or the
//   rest have no positive tax part), all completions cost the same; only the
//   first of them, the rest in ascending order, can matter.
// Cases outside these conditions (a negative required deposit, a day count or
// a table that would overflow) go to the plain search, which then behaves,
// faults included, as it always does.
class OrderSearch {
public:
    OrderSearch(const Case& c, ArrangeProgress* progress) : c_(c), progress_(progress) {}

    // False when the case needs the plain search.
    bool prepare()
    {
        const auto deps = c_.payrollDeposits();
        const auto pmts = c_.payments();
        n_ = static_cast<int>(pmts.size());
        if (deps.size() + pmts.size() > 32767)
            return false;
        for (const DepositRec& d : deps) {
            if (d.cRequired < Money())
                return false;
            deposits_.push_back({d.cRequired, d.dtDepDue, IsYes(d.bSevere)});
        }
        try {
            // The unpaid rest, priced at the stop date: per deposit, and for
            // all deposits from k on.
            unpaidRate_.resize(deps.size());
            suffixUnpaid_.assign(deps.size() + 1, Money());
            for (std::size_t k = 0; k < deps.size(); ++k)
                unpaidRate_[k] = PRPenRate(PRDaysLate(c_.init.tlStop.dtDate, deposits_[k].due), deposits_[k].severe);
            for (std::size_t k = deps.size(); k-- > 0;)
                suffixUnpaid_[k] = suffixUnpaid_[k + 1] + PRPiecePenalty(deposits_[k].required, unpaidRate_[k]);
            // The rate of every piece a payment could pay.
            taxPart_.resize(static_cast<std::size_t>(n_));
            rate_.assign(static_cast<std::size_t>(n_) * deps.size(), 0.0f);
            for (int v = 0; v < n_; ++v) {
                const PaymentRec& p = pmts[static_cast<std::size_t>(v)];
                taxPart_[static_cast<std::size_t>(v)] = p.cToTax;
                if (p.cToTax <= Money())
                    continue;
                for (std::size_t k = 0; k < deps.size(); ++k)
                    rate_[static_cast<std::size_t>(v) * deps.size() + k] =
                        PRPenRate(PRDaysLate(p.dtPmt, deposits_[k].due), deposits_[k].severe);
            }
        } catch (const Fault&) {
            return false;
        }
        factorial_.resize(static_cast<std::size_t>(n_) + 1);
        for (int k = 0; k <= n_; ++k)
            factorial_[static_cast<std::size_t>(k)] = GetFactorial(k);
        return true;
    }

    ArrangeOutcome run()
    {
        path_.assign(static_cast<std::size_t>(n_), 0);
        used_.assign(static_cast<std::size_t>(n_), false);
        State start;
        start.rem = deposits_.empty() ? Money() : deposits_[0].required;
        walk(0, start);
        if (progress_)
            progress_->setPenaltiesValue(row_ - 1);
        out_.orders = factorial_[static_cast<std::size_t>(n_)];
        return out_;
    }

private:
    struct Deposit {
        Money required;
        Date due;
        bool severe;
    };
    struct State {
        std::size_t dep = 0;  // deposit being paid
        Money rem;            // what is left of it
        Money penalty;        // penalty of the pieces paid so far
    };

    State apply(State s, int v) const
    {
        Money left = taxPart_[static_cast<std::size_t>(v)];
        if (left <= Money())
            return s;
        const std::size_t nd = deposits_.size();
        while (left > Money() && s.dep < nd) {
            const Money piece = left < s.rem ? left : s.rem;
            s.penalty += PRPiecePenalty(piece, rate_[static_cast<std::size_t>(v) * nd + s.dep]);
            left -= piece;
            s.rem -= piece;
            if (s.rem.isZero()) {
                ++s.dep;
                s.rem = s.dep < nd ? deposits_[s.dep].required : Money();
            }
        }
        return s;
    }

    Money total(const State& s) const
    {
        if (s.dep >= deposits_.size())
            return s.penalty;
        return s.penalty + PRPiecePenalty(s.rem, unpaidRate_[s.dep]) + suffixUnpaid_[s.dep + 1];
    }

    bool nothingLeftToPay(const State& s) const
    {
        if (s.dep >= deposits_.size())
            return true;
        for (int v = 0; v < n_; ++v)
            if (!used_[static_cast<std::size_t>(v)] && taxPart_[static_cast<std::size_t>(v)] > Money())
                return false;
        return true;
    }

    void leaf(Money t)
    {
        if (row_ == 0) {
            out_.entered = t;
            out_.lowest = t;
            out_.bestOrder = path_;
        } else if (t < out_.lowest) {
            out_.lowest = t;
            out_.bestOrder = path_;
        }
        advance(1);
    }

    void advance(std::int32_t rows)
    {
        const std::int32_t before = row_;
        row_ += rows;
        if (progress_ && before / kProgressStep != row_ / kProgressStep)
            progress_->setPenaltiesValue(row_ - 1);
    }

    void walk(int depth, const State& s)
    {
        const std::int32_t subtree = factorial_[static_cast<std::size_t>(n_ - depth)];
        if (row_ > 0 && s.penalty >= out_.lowest) {
            advance(subtree);
            return;
        }
        if (depth == n_) {
            leaf(total(s));
            return;
        }
        if (nothingLeftToPay(s)) {
            // Every completion costs the same: the first one, the rest in
            // ascending order, is the only one that can count.
            int j = depth;
            for (int v = 0; v < n_; ++v)
                if (!used_[static_cast<std::size_t>(v)])
                    path_[static_cast<std::size_t>(j++)] = static_cast<std::int16_t>(v);
            leaf(total(s));
            advance(subtree - 1);
            return;
        }
        for (int v = 0; v < n_; ++v) {
            if (used_[static_cast<std::size_t>(v)])
                continue;
            used_[static_cast<std::size_t>(v)] = true;
            path_[static_cast<std::size_t>(depth)] = static_cast<std::int16_t>(v);
            walk(depth + 1, apply(s, v));
            used_[static_cast<std::size_t>(v)] = false;
        }
    }

    const Case& c_;
    ArrangeProgress* progress_;
    int n_ = 0;
    std::vector<Deposit> deposits_;
    std::vector<float> unpaidRate_;
    std::vector<Money> suffixUnpaid_;
    std::vector<Money> taxPart_;
    std::vector<float> rate_;
    std::vector<std::int32_t> factorial_;
    std::vector<std::int16_t> path_;
    std::vector<bool> used_;
    std::int32_t row_ = 0;
    ArrangeOutcome out_;
};

}  // namespace

std::int32_t GetFactorial(std::int32_t n)
{
    return AsProcedure("GetFactorial", [&] {
        std::int64_t f = 1;
        for (std::int32_t k = 2; k <= n; ++k) {
            f *= k;
            if (f > std::numeric_limits<std::int32_t>::max())
                ThrowFault(kErrOverflow, "GetFactorial", "factorial beyond 32 bits");
        }
        return static_cast<std::int32_t>(f);
    });
}

void PermutationTable::resize(std::int32_t rows, int columns)
{
    rows_ = rows;
    cols_ = columns;
    cells_.assign(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns), 0);
}

void AllPermutations(PermutationTable& table, std::int16_t n, ArrangeProgress* progress)
{
    AsProcedure("AllPermutations", [&] {
        const std::int32_t total = GetFactorial(n);
        if (progress)
            progress->setPermutationsRange(0, n - 1);
        table.resize(total, n);
        for (int j = 0; j < n; ++j) {
            const std::int32_t block = GetFactorial(n - 1 - j);
            std::int32_t r = 0;
            while (r <= total - 1) {
                // One pass fills the block of rows that share columns 0 to
                // j - 1: its free values, ascending, block rows apiece. Free
                // means not in columns 0 to j - 1 of that block's first row.
                const std::int32_t first = r;
                for (int v = 0; v < n && r <= total - 1; ++v) {
                    bool free = true;
                    for (int k = 0; k < j; ++k)
                        if (table.at(first, k) == v) {
                            free = false;
                            break;
                        }
                    if (!free)
                        continue;
                    for (std::int32_t b = 0; b < block; ++b)
                        table.at(r + b, j) = static_cast<std::int16_t>(v);
                    r += block;
                }
            }
            if (progress)
                progress->setPermutationsValue(j);
        }
    });
}

void FillPRAutoArrangeNdxArray(const PermutationTable& table, std::vector<std::int16_t>& best, std::int32_t row,
                               int lastPos)
{
    AsProcedure("FillPRAutoArrangeNdxArray", [&] {
        best.resize(static_cast<std::size_t>(lastPos) + 1);
        for (int j = 0; j <= lastPos; ++j)
            best[static_cast<std::size_t>(j)] = table.at(row, j);
    });
}

ArrangeOutcome FindLowestPRPenOrderByTable(const Case& c, ArrangeProgress* progress)
{
    return AsProcedure("GetLowestPRPen", [&] {
        const auto saved = c.payments();
        const auto n = static_cast<std::int16_t>(saved.size());
        PermutationTable table;
        AllPermutations(table, n, progress);
        ArrangeOutcome out;
        out.orders = table.rows();
        if (progress)
            progress->setPenaltiesRange(0.0f, static_cast<float>(static_cast<double>(out.orders) * 1.1));
        std::vector<PaymentRec> trial(saved.size());
        std::vector<PRPenTblElement> pen;
        for (std::int32_t r = 0; r < table.rows(); ++r) {
            for (int j = 0; j < n; ++j)
                trial[static_cast<std::size_t>(j)] = saved[static_cast<std::size_t>(table.at(r, j))];
            CalcUSPRPen(c, trial, pen);
            const Money total = TotalPRPenalty(pen);
            if (r == 0) {
                out.entered = total;
                out.lowest = total;
                FillPRAutoArrangeNdxArray(table, out.bestOrder, r, n - 1);
            } else if (total < out.lowest) {
                out.lowest = total;
                FillPRAutoArrangeNdxArray(table, out.bestOrder, r, n - 1);
            }
            if (progress && (r % kProgressStep == 0 || r == table.rows() - 1))
                progress->setPenaltiesValue(r);
        }
        return out;
    });
}

ArrangeOutcome FindLowestPRPenOrder(const Case& c, ArrangeProgress* progress)
{
    return AsProcedure("GetLowestPRPen", [&] {
        OrderSearch search(c, progress);
        if (!search.prepare())
            return FindLowestPRPenOrderByTable(c, progress);
        const auto n = static_cast<int>(c.payments().size());
        if (progress) {
            // The orders are walked, not tabulated: the first bar fills at once.
            progress->setPermutationsRange(0, n - 1);
            progress->setPermutationsValue(n - 1);
            progress->setPenaltiesRange(0.0f, static_cast<float>(static_cast<double>(GetFactorial(n)) * 1.1));
        }
        return search.run();
    });
}

std::string ArrangeSavingsText(Money savings, std::int32_t orders)
{
    return "The employer saved " + FormatWholeDollars(savings, true) + " by " + "having the Brindlecote optimize the "
           + "application of deposits to liabilities. " + "The program calculated penalties for all "
           + FormatCount(orders, true) + " ways the payments could " + "have been arranged. Please refer "
           + "to Rev. Proc. 99-10 and IRC Section 6656(e) to " + "properly report the application of deposits.";
}

std::string ArrangeTooManyPaymentsText()
{
    return std::string("Due to time and memory that it takes to calculate ") + "penalties for all permutations "
           + "of " + std::to_string(kMaxArrangePayments) + " or more payments, this program can not automatically "
           + "match payments with payroll liabilities. " + "Make sure you have entered payments in the order "
           + "that you want them to be applied." + "\n\n"
           + "If you need payments matched automatically for larger cases, please write to Ratewright support "
             "and ask about extending this capability.";
}

void GetLowestPRPen(Case& c, Messages& msgs, ArrangeProgress* progress)
{
    AsProcedure("GetLowestPRPen", [&] {
        const int n = c.init.nPmts;
        if (n <= 0)
            return;  // nothing to arrange
        if (n >= kMaxArrangePayments) {
            Warn(msgs, ArrangeTooManyPaymentsText());
            return;
        }
        if (progress) {
            progress->setVariationsText(variationsText(GetFactorial(n)));
            progress->repaint();
        }
        const std::vector<PaymentRec> saved(c.payments().begin(), c.payments().end());
        const ArrangeOutcome found = FindLowestPRPenOrder(c, progress);
        msgs.beep();
        const Money savings = found.entered - found.lowest;
        if (savings > Money::fromCents(10'00))
            msgs.show("Savings To Employer", ArrangeSavingsText(savings, found.orders), MsgIcon::Information);
        for (int i = 0; i < n; ++i)
            c.pmts[static_cast<std::size_t>(i)] = saved[static_cast<std::size_t>(found.bestOrder[static_cast<std::size_t>(i)])];
    });
}

}  // namespace rw
