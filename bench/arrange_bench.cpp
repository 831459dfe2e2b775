// The deposit arrangement search on the largest case it takes: 9 payments
// against 40 deposits (362,880 orders).

#include "penalties/arrange.h"

#include <benchmark/benchmark.h>

#include <random>
#include <string>

namespace {

// mode 0: scattered payment dates; 1: entered latest first; 2: every payment
// months late, so that every order costs about the same and little is pruned.
rw::Case payrollCase(unsigned seed, int mode)
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    c.init.dtDue = rw::Date::fromCivil(2016, 7, 31);
    c.init.tlStart.dtDate = rw::Date::fromCivil(2016, 1, 1);
    c.init.tlStop.dtDate = rw::Date::fromCivil(2016, 12, 31);
    std::mt19937 rng(seed);
    auto pick = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };

    // Semi-weekly deposits from January on.
    c.deposits.clear();
    rw::Date due = rw::Date::fromCivil(2016, 1, 6);
    std::int64_t required = 0;
    for (int k = 0; k < 40; ++k) {
        rw::DepositRec d;
        d.dtDepDue = due;
        d.dtDepAssess = rw::Date::fromCivil(2016, 9, 1);
        d.cRequired = rw::Money::fromCents(pick(50'000, 400'000));
        d.bSevere = rw::ToFlag(pick(0, 9) == 0);
        required += d.cRequired.raw();
        c.deposits.push_back(d);
        due = due + (k % 2 ? 4 : 3);
    }
    c.init.nDeposits = 40;

    // Nine payments covering most of it, at scattered dates.
    c.pmts.clear();
    for (int i = 0; i < 9; ++i) {
        rw::PaymentRec p;
        p.sDesc = "Payment " + std::to_string(i);
        p.dtPmt = rw::Date::fromCivil(2016, 1, 10)
                  + (mode == 1   ? (8 - i) * 16
                     : mode == 2 ? 300 + pick(0, 20)
                                 : pick(0, 140));
        p.cToTax = rw::Money::fromRaw(required / 10 + pick(-5'000'000, 5'000'000));
        p.cAmount = p.cToTax;
        p.sMethod = "T";
        c.pmts.push_back(p);
    }
    c.init.nPmts = 9;
    return c;
}

void BM_ArrangeNinePaymentsFortyDeposits(benchmark::State& state)
{
    const rw::Case c
        = payrollCase(static_cast<unsigned>(state.range(0)), static_cast<int>(state.range(1)));
    for (auto _ : state) {
        const rw::ArrangeOutcome out = rw::FindLowestPRPenOrder(c);
        benchmark::DoNotOptimize(out.lowest);
    }
}
BENCHMARK(BM_ArrangeNinePaymentsFortyDeposits)
    ->ArgsProduct({{1, 2, 3, 4, 5}, {0, 1, 2}})
    ->Unit(benchmark::kMillisecond);

// The plain search over the whole table, for comparison (one run).
void BM_ArrangePlainTableNinePayments(benchmark::State& state)
{
    const rw::Case c = payrollCase(1, 0);
    for (auto _ : state) {
        const rw::ArrangeOutcome out = rw::FindLowestPRPenOrderByTable(c);
        benchmark::DoNotOptimize(out.lowest);
    }
}
BENCHMARK(BM_ArrangePlainTableNinePayments)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace
