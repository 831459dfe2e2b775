// The soak: 10,000 random cases (from a fixed seed) computed with every
// penalty they ask for, saved to a case file, read back, compared field by
// field and computed again. Counters: the cases, those the rates refused (a
// case may ask for a rate the table does not hold), peak memory of the
// process in MB. A case that reads back different or computes different is an
// error of the run.

#include "casedata/casefile.h"
#include "penalties/compute.h"

#include "benchtables.h"

#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

namespace {

using benchcases::D;
using rw::Money;

class Generator {
public:
    explicit Generator(std::uint32_t seed)
        : rng_(seed)
    {
    }

    rw::Case next()
    {
        rw::Case c;
        rw::ClearInputs(c);
        rw::InitInputs& in = c.init;
        in.sTaxAuth = "US  ";
        in.sName = "Soak " + std::to_string(++count_);
        const rw::Date due = D(pick(1990, 2020), pick(1, 12), pick(1, 28));
        in.dtDue = in.dtExtended = due;
        in.tlStart.dtDate = due - pick(0, 1) * pick(1, 300);
        in.tlStop.dtDate = due + pick(30, 3650);
        const bool refund = pick(0, 9) == 0;
        in.tlStart.cTax = Money::fromCents((refund ? -1 : 1) * pick(1, 100'000'00));
        if (!refund && pick(0, 2) == 0) {
            in.bAnyPenalties = rw::kYes;
            in.bFtoFile = pick(0, 1) ? rw::kYes : rw::kNo;
            in.bFtoPay = pick(0, 1) ? rw::kYes : rw::kNo;
            in.dtFiled = due + pick(1, 400);
            in.bAccRel = pick(0, 3) == 0 ? rw::kYes : rw::kNo;
            in.cAccRelAmt = Money::fromCents(pick(0, 50'000'00));
            in.fAccRelRate = 0.2f;
        }
        const int span = static_cast<int>(in.tlStop.dtDate - in.tlStart.dtDate);
        for (int i = 0, n = pick(0, 40); i < n; ++i) {
            rw::PaymentRec p;
            p.sDesc = "Payment";
            p.dtPmt = in.tlStart.dtDate + pick(1, span - 1);
            p.cToTax = p.cAmount = Money::fromCents(pick(1, 5'000'00));
            p.sMethod = "T";
            c.pmts.push_back(p);
        }
        std::ranges::sort(c.pmts, {}, &rw::PaymentRec::dtPmt);
        in.nPmts = static_cast<std::int16_t>(c.pmts.size());
        for (int i = 0, n = pick(0, 5); i < n; ++i) {
            rw::ChargeRec ch;
            ch.sDesc = "Charge";
            ch.dtLiab = ch.dtIntStart = in.tlStart.dtDate + pick(1, span - 1);
            ch.cToTax = Money::fromCents(pick(1, 10'000'00));
            ch.cTotal = ch.cToTax;
            c.charges.push_back(ch);
        }
        in.nCharges = static_cast<std::int16_t>(c.charges.size());
        return c;
    }

private:
    int pick(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }

    std::mt19937 rng_;
    int count_ = 0;
};

double PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;  // kilobytes on Linux
}

void BM_Soak10000Cases(benchmark::State& state)
{
    const rw::RateTable rates = benchcases::QuarterlyRates(
        1983, 2031, [](int step) { return static_cast<float>(3 + (step * 7) % 9) / 100.0f; });
    const std::filesystem::path file = std::filesystem::temp_directory_path()
                                       / ("rw-soak-" + std::to_string(::getpid()) + ".INT");
    int refused = 0;
    for (auto _ : state) {
        Generator gen(20261125);
        refused = 0;
        for (int i = 0; i < 10'000; ++i) {
            const rw::Case c = gen.next();
            Money first;
            try {
                first = rw::ComputeCase(c, rates, benchcases::BenchMinimums()).interest;
            } catch (const rw::Refusal&) {
                ++refused;
                continue;
            }
            rw::WriteCase(file.string(), c);
            const rw::CaseReadResult back = rw::ReadCaseFile(file.string());
            if (back.status != rw::CaseReadResult::Status::Ok || !(back.kase == c)) {
                state.SkipWithError(("case " + std::to_string(i) + " read back different").c_str());
                return;
            }
            if (rw::ComputeCase(back.kase, rates, benchcases::BenchMinimums()).interest != first) {
                state.SkipWithError(("case " + std::to_string(i) + " computed different").c_str());
                return;
            }
        }
    }
    std::filesystem::remove(file);
    state.counters["cases"] = 10'000;
    state.counters["refused"] = refused;
    state.counters["peakMB"] = PeakMegabytes();
}
BENCHMARK(BM_Soak10000Cases)->Unit(benchmark::kMillisecond)->Iterations(1);

}  // namespace
