#include "penalties/arrange.h"

#include "base/fault.h"

#include "base/numtext.h"

#include <limits>
#include <optional>

namespace rw {

namespace {

// The penalties bar of the plain search is moved at most this often (in
// orders priced).
constexpr std::int32_t kProgressStep = 4096;

std::string variationsText(std::int32_t orders)
{
    return "Variations to Consider: " + FormatCount(orders, true);
}

// The search over the orders of the payments, without pricing every order.
//
// Pricing an order is a walk of the deposits in list order with the payments
// in the trial order; only the tax part of a payment pays, and a payment whose
// tax part is 0 or less is never applied. Each payment pays on from where the
// ones before it stopped, so where the walk stands after some payments (the
// deposit being paid and what is left of it) depends only on how much tax they
// brought together, that is on which payments were placed, not on their order.
// The penalty of what the rest of the payments pay, and of what stays unpaid
// at the stop date, therefore depends only on the set of payments already
// placed. So the cheapest completion is worked out once per set (2^n sets,
// each tried with each payment not yet placed), not once per order.
//
// Why the order found is the one of the plain search: the plain search keeps
// the first row, in the table's (lexicographic) order, whose total is the
// lowest of all, since a row replaces the best only when strictly cheaper and
// row 0 is the order as entered. Here, from the empty set on, each position
// takes the smallest payment index that still allows the lowest total; that is
// the lexicographically first cheapest order. Ties thus resolve as in the plain
// search, and the order as entered stays whenever nothing is cheaper.
//
// Cases outside these conditions (a negative required deposit, whose pieces
// would pay back into a payment, or a day count or a table that would
// overflow) go to the plain search, which then behaves, faults included, as it
// always does.
class OrderSearch {
public:
    OrderSearch(const Case& c, ArrangeProgress* progress)
        : c_(c)
        , progress_(progress)
    {
    }

    // False when the case needs the plain search.
    bool prepare()
    {
        const auto deps = c_.payrollDeposits();
        const auto pmts = c_.payments();
        n_ = static_cast<int>(pmts.size());
        if (deps.size() + pmts.size() > 32767 || n_ >= 31)
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
                unpaidRate_[k] = PRPenRate(PRDaysLate(c_.init.tlStop.dtDate, deposits_[k].due),
                                           deposits_[k].severe);
            for (std::size_t k = deps.size(); k-- > 0;)
                suffixUnpaid_[k]
                    = suffixUnpaid_[k + 1] + PRPiecePenalty(deposits_[k].required, unpaidRate_[k]);
            // The rate of every piece a payment could pay.
            taxPart_.resize(static_cast<std::size_t>(n_));
            rate_.assign(static_cast<std::size_t>(n_) * deps.size(), 0.0f);
            for (int v = 0; v < n_; ++v) {
                const PaymentRec& p = pmts[static_cast<std::size_t>(v)];
                taxPart_[static_cast<std::size_t>(v)] = p.cToTax;
                if (p.cToTax <= Money())
                    continue;
                for (std::size_t k = 0; k < deps.size(); ++k)
                    rate_[static_cast<std::size_t>(v) * deps.size() + k]
                        = PRPenRate(PRDaysLate(p.dtPmt, deposits_[k].due), deposits_[k].severe);
            }
        } catch (const Fault&) {
            return false;
        }
        return true;
    }

    ArrangeOutcome run()
    {
        const std::size_t sets = std::size_t{1} << n_;
        state_.assign(sets, Walk{});
        known_.assign(sets, false);
        rest_.assign(sets, Money());
        solved_.assign(sets, false);
        state_[0].rem = deposits_.empty() ? Money() : deposits_[0].required;
        known_[0] = true;

        ArrangeOutcome out;
        out.orders = GetFactorial(n_);
        // The order as entered.
        Walk w = state_[0];
        for (int v = 0; v < n_; ++v)
            w = apply(w, v);
        out.entered = w.penalty + unpaid(w);
        // The lowest total, and the lexicographically first order reaching it.
        out.lowest = cheapestRest(0);
        std::size_t set = 0;
        for (int pos = 0; pos < n_; ++pos) {
            for (int v = 0; v < n_; ++v) {
                const std::size_t bit = std::size_t{1} << v;
                if (set & bit)
                    continue;
                const Money pieces
                    = step(set, v);  // before the set's rest: it places the set's walk
                if (pieces + cheapestRest(set | bit) == cheapestRest(set)) {
                    out.bestOrder.push_back(static_cast<std::int16_t>(v));
                    set |= bit;
                    break;
                }
            }
        }
        if (progress_)
            progress_->setPenaltiesValue(out.orders - 1);
        return out;
    }

private:
    struct Deposit {
        Money required;
        Date due;
        bool severe;
    };
    // Where the walk of the deposits stands.
    struct Walk {
        std::size_t dep = 0;  // deposit being paid
        Money rem;  // what is left of it
        Money penalty;  // penalty of the pieces paid so far
    };

    Walk apply(Walk s, int v) const
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

    // The penalty of what is still unpaid when the payments are used up.
    Money unpaid(const Walk& s) const
    {
        if (s.dep >= deposits_.size())
            return Money();
        return PRPiecePenalty(s.rem, unpaidRate_[s.dep]) + suffixUnpaid_[s.dep + 1];
    }

    // The penalty of the pieces payment v pays when placed after the set.
    Money step(std::size_t set, int v)
    {
        const std::size_t next = set | (std::size_t{1} << v);
        Walk from = state_[set];
        from.penalty = Money();
        const Walk to = apply(from, v);
        if (!known_[next]) {
            state_[next] = {to.dep, to.rem, Money()};
            known_[next] = true;
        }
        return to.penalty;
    }

    // The lowest penalty of the payments not in the set plus the unpaid rest.
    Money cheapestRest(std::size_t set)
    {
        if (solved_[set])
            return rest_[set];
        const std::size_t all = (std::size_t{1} << n_) - 1;
        Money best;
        if (set == all) {
            best = unpaid(state_[set]);
        } else {
            bool first = true;
            for (int v = 0; v < n_; ++v) {
                const std::size_t bit = std::size_t{1} << v;
                if (set & bit)
                    continue;
                const Money pieces
                    = step(set, v);  // before the set's rest: it places the set's walk
                const Money total = pieces + cheapestRest(set | bit);
                if (first || total < best)
                    best = total;
                first = false;
            }
        }
        solved_[set] = true;
        rest_[set] = best;
        return best;
    }

    const Case& c_;
    ArrangeProgress* progress_;
    int n_ = 0;
    std::vector<Deposit> deposits_;
    std::vector<float> unpaidRate_;
    std::vector<Money> suffixUnpaid_;
    std::vector<Money> taxPart_;
    std::vector<float> rate_;
    std::vector<Walk> state_;  // per set of placed payments
    std::vector<bool> known_;
    std::vector<Money> rest_;  // cheapest completion per set
    std::vector<bool> solved_;
};

}  // namespace

std::int32_t GetFactorial(std::int32_t n)
{
    return WithFaultName("GetFactorial", [&] {
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
    WithFaultName("AllPermutations", [&] {
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

void FillPRAutoArrangeNdxArray(const PermutationTable& table, std::vector<std::int16_t>& best,
                               std::int32_t row, int lastPos)
{
    WithFaultName("FillPRAutoArrangeNdxArray", [&] {
        best.resize(static_cast<std::size_t>(lastPos) + 1);
        for (int j = 0; j <= lastPos; ++j)
            best[static_cast<std::size_t>(j)] = table.at(row, j);
    });
}

ArrangeOutcome FindLowestPRPenOrderByTable(const Case& c, ArrangeProgress* progress)
{
    return WithFaultName("GetLowestPRPen", [&] {
        const auto saved = c.payments();
        const auto n = static_cast<std::int16_t>(saved.size());
        PermutationTable table;
        AllPermutations(table, n, progress);
        ArrangeOutcome out;
        out.orders = table.rows();
        if (progress)
            progress->setPenaltiesRange(0.0f,
                                        static_cast<float>(static_cast<double>(out.orders) * 1.1));
        std::vector<PaymentRec> trial(saved.size());
        std::vector<PRPenTblElement> pen;
        for (std::int32_t r = 0; r < table.rows(); ++r) {
            for (int j = 0; j < n; ++j)
                trial[static_cast<std::size_t>(j)]
                    = saved[static_cast<std::size_t>(table.at(r, j))];
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
    return WithFaultName("GetLowestPRPen", [&] {
        OrderSearch search(c, progress);
        if (!search.prepare())
            return FindLowestPRPenOrderByTable(c, progress);
        const auto n = static_cast<int>(c.payments().size());
        if (progress) {
            // The orders are walked, not tabulated: the first bar fills at once.
            progress->setPermutationsRange(0, n - 1);
            progress->setPermutationsValue(n - 1);
            progress->setPenaltiesRange(
                0.0f, static_cast<float>(static_cast<double>(GetFactorial(n)) * 1.1));
        }
        return search.run();
    });
}

std::string ArrangeSavingsText(Money savings, std::int32_t orders)
{
    return "The employer saved " + FormatWholeDollars(savings, true) + " by "
           + "having the Brindlecote optimize the " + "application of deposits to liabilities. "
           + "The program calculated penalties for all " + FormatCount(orders, true)
           + " ways the payments could " + "have been arranged. Please refer "
           + "to Rev. Proc. 99-10 and IRC Section 6656(e) to "
           + "properly report the application of deposits.";
}

std::optional<std::string> ArrangeRefusalText(const Case& c)
{
    const auto deps = c.payrollDeposits();
    for (std::size_t k = 0; k < deps.size(); ++k)
        if (deps[k].cRequired < Money())
            return "The payments cannot be arranged: deposit " + std::to_string(k + 1) + " (due "
                   + FormatShortDate(deps[k].dtDepDue) + ") has a required amount below zero, "
                   + FormatMoney(deps[k].cRequired)
                   + ".  A required deposit is what the employer owed; please correct it in the "
                     "payroll deposit list.";
    return std::nullopt;
}

std::string ArrangeTooManyPaymentsText()
{
    return std::string("Due to time and memory that it takes to calculate ")
           + "penalties for all permutations " + "of " + std::to_string(kMaxArrangePayments)
           + " or more payments, this program can not automatically "
           + "match payments with payroll liabilities. "
           + "Make sure you have entered payments in the order "
           + "that you want them to be applied." + "\n\n"
           + "If you need payments matched automatically for larger cases, please write to "
             "Ratewright support "
             "and ask about extending this capability.";
}

void GetLowestPRPen(Case& c, Messages& msgs, ArrangeProgress* progress)
{
    WithFaultName("GetLowestPRPen", [&] {
        const int n = c.init.nPmts;
        if (n <= 0)
            return;  // nothing to arrange
        if (n >= kMaxArrangePayments) {
            Warn(msgs, ArrangeTooManyPaymentsText());
            return;
        }
        if (const std::optional<std::string> refused = ArrangeRefusalText(c)) {
            Warn(msgs, *refused);
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
            msgs.show("Savings To Employer", ArrangeSavingsText(savings, found.orders),
                      MsgIcon::Information);
        for (int i = 0; i < n; ++i)
            c.pmts[static_cast<std::size_t>(i)]
                = saved[static_cast<std::size_t>(found.bestOrder[static_cast<std::size_t>(i)])];
    });
}

}  // namespace rw
