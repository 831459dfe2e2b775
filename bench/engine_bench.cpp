// The interest computation of a long federal case: 1/1/1985 to 12/31/2017,
// 200 payments and 20 other charges; and of 2,000 payments over 50 years, over a table of quarterly
// rate rows 1983-2026 (and over the installed fed.tbl when RW_INSTALL_DIR holds one). The counter
// "allocs" is the number of heap allocations per computation: it depends on the case's size, never
// on the number of days.

#include "engine/intcalc.h"
#include "rates/ratetable.h"

#include "benchtables.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <new>

namespace {

std::atomic<long> gAllocations{0};

}  // namespace

void* operator new(std::size_t n)
{
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(n == 0 ? 1 : n))
        return p;
    throw std::bad_alloc();
}
// The pair of the counting operator new: the memory came from malloc.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void operator delete(void* p) noexcept
{
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}
#pragma GCC diagnostic pop

namespace {

using benchcases::D;
using rw::Date;
using rw::Money;

// Quarter rows 1983-2026 with rates between 3 % and 14 %, compounding daily.
rw::RateTable QuarterlyTable()
{
    return benchcases::QuarterlyRates(
        1983, 2026, [](int step) { return static_cast<float>(3 + (step * 7) % 12) / 100.0f; });
}

rw::Case LongFederalCase()
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    c.init.dtDue = D(1985, 1, 1);
    c.init.tlStart.dtDate = D(1985, 1, 1);
    c.init.tlStart.cTax = Money::fromCents(50'000'000);
    c.init.tlStop.dtDate = D(2017, 12, 31);
    c.init.bTaxMotivated = rw::kYes;
    c.init.bCorporate = rw::kYes;
    c.init.bCorpUPRate = rw::kYes;
    c.init.dtCorpUPRateStart = D(1991, 1, 1);
    c.pmts.clear();
    for (int i = 0; i < 200; ++i) {
        rw::PaymentRec p;
        p.sDesc = "Payment";
        p.dtPmt = D(1985, 1, 20) + i * 59;
        p.cToTax = Money::fromCents(200'000);
        p.cToInt = Money::fromCents(1'234);
        p.cAmount = p.cToTax + p.cToInt;
        p.sMethod = "T";
        c.pmts.push_back(p);
    }
    c.init.nPmts = 200;
    c.charges.clear();
    for (int i = 0; i < 20; ++i) {
        rw::ChargeRec ch;
        ch.sDesc = "Charge";
        ch.dtLiab = ch.dtIntStart = D(1985, 3, 3) + i * 587;
        ch.cToTax = Money::fromCents(1'000'000);
        ch.cToPen = Money::fromCents(50'000);
        ch.cTotal = ch.cToTax + ch.cToPen;
        c.charges.push_back(ch);
    }
    c.init.nCharges = 20;
    return c;
}

// A monthly installment agreement's worth and more: 2,000 payments of 100.00,
// one every 9 days, on 1,000,000.00 owed from 1/1/1976 to 12/31/2025.
rw::Case TwoThousandPayments()
{
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    c.init.dtDue = c.init.tlStart.dtDate = D(1976, 1, 1);
    c.init.tlStart.cTax = Money::fromCents(100'000'000);
    c.init.tlStop.dtDate = D(2025, 12, 31);
    c.pmts.clear();
    for (int i = 0; i < 2000; ++i) {
        rw::PaymentRec p;
        p.sDesc = "Installment";
        p.dtPmt = D(1976, 1, 10) + i * 9;
        p.cToTax = p.cAmount = Money::fromCents(10'000);
        p.sMethod = "T";
        c.pmts.push_back(p);
    }
    c.init.nPmts = 2000;
    return c;
}

void Run(benchmark::State& state, const rw::RateTable& rates, const rw::Case& c = LongFederalCase())
{
    std::vector<rw::ResultPeriod> rows;
    rw::TimeLine tl;
    Money total;
    const long before = gAllocations.load();
    for (auto _ : state) {
        total = rw::GetInterest(c, rates, nullptr, rows, tl);
        benchmark::DoNotOptimize(total);
    }
    state.counters["rows"] = static_cast<double>(rows.size());
    state.counters["points"] = static_cast<double>(tl.size());
    state.counters["allocs"] = static_cast<double>(gAllocations.load() - before)
                               / static_cast<double>(state.iterations());
}

void BM_GetInterest_QuarterlyTable(benchmark::State& state)
{
    Run(state, QuarterlyTable());
}
BENCHMARK(BM_GetInterest_QuarterlyTable)->Unit(benchmark::kMicrosecond);

void BM_GetInterest_2000Payments50Years(benchmark::State& state)
{
    Run(state,
        benchcases::QuarterlyRates(
            1975, 2026, [](int step) { return static_cast<float>(3 + (step * 5) % 12) / 100.0f; }),
        TwoThousandPayments());
}
BENCHMARK(BM_GetInterest_2000Payments50Years)->Unit(benchmark::kMicrosecond);

void BM_GetInterest_InstalledFedTable(benchmark::State& state)
{
    const char* dir = std::getenv("RW_INSTALL_DIR");
    const rw::RateTableReadResult r
        = dir != nullptr ? rw::ReadRateTableFile(std::filesystem::path(dir) / "fed.tbl")
                         : rw::RateTableReadResult{};
    if (dir == nullptr || r.status != rw::RateTableReadResult::Status::Ok || r.rows.empty()) {
        state.SkipWithError("no fed.tbl in RW_INSTALL_DIR");
        return;
    }
    Run(state, r.rows);
}
BENCHMARK(BM_GetInterest_InstalledFedTable)->Unit(benchmark::kMicrosecond);

}  // namespace
