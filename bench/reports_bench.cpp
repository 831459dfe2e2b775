// Printing every report of a payroll case with every penalty and 500
// payments: the computation, the reports on the text back end, and the whole
// print job into a PDF file (the figure that matters: under 2 seconds); the
// main window's overview, rebuilt after every accepted change (well under the
// 100 ms a user notices), and the CSV export of every report.

#include "qtprint/pdfoutput.h"
#include "reports/csvexport.h"
#include "reports/overview.h"
#include "reports/printmaster.h"
#include "reports/standardsources.h"
#include "reports/textprinter.h"

#include "benchtables.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

namespace {

using benchcases::BenchMinimums;
using benchcases::D;
using rw::Date;
using rw::Money;

// Quarter rows 2010-2026 at 3 % to 8 %, compounding daily.
rw::RateTable QuarterlyTable()
{
    return benchcases::QuarterlyRates(
        2010, 2026, [](int step) { return static_cast<float>(3 + step % 6) / 100.0f; });
}

// 500 payments of 50.00 on 20 days of 2016 (25 a day), three payroll
// deposits, one charge, every penalty.
rw::Case BigCase()
{
    rw::Case c;
    rw::ClearInputs(c);
    rw::InitInputs& in = c.init;
    in.sName = "Benchmark Manufacturing Co.";
    in.s2ndLine = "Form 941, first quarter 2016";
    in.sTaxAuth = "US  ";
    in.dtDue = D(2016, 4, 30);
    in.tlStart.dtDate = D(2016, 4, 30);
    in.tlStart.cTax = Money::fromCents(3'000'000);
    in.tlStop.dtDate = D(2017, 12, 31);
    in.bPayroll = rw::kYes;
    in.bAnyPenalties = rw::kYes;
    in.bFtoFile = rw::kYes;
    in.bFtoPay = rw::kYes;
    in.b6651d1 = rw::kYes;
    in.bAccRel = rw::kYes;
    in.dtExtended = D(2016, 4, 30);
    in.dtFiled = D(2016, 9, 15);
    in.dtFtoFileAssess = D(2016, 10, 31);
    in.dtFtoPayAssess = D(2016, 10, 31);
    in.dt6651d1Start = D(2017, 3, 1);
    in.cAmtOnReturn = Money::fromCents(3'000'000);
    in.cAccRelAmt = Money::fromCents(500'000);
    c.pmts.clear();
    for (int i = 0; i < 500; ++i) {
        rw::PaymentRec p;
        p.sDesc = "Check " + std::to_string(10000 + i);
        p.dtPmt = D(2016, 5, 2) + 7 * (i / 25);
        p.cAmount = Money::fromCents(5000);
        p.cToTax = Money::fromCents(4000);
        p.cToPen = Money::fromCents(500);
        p.cToInt = Money::fromCents(500);
        p.sMethod = "T";
        c.pmts.push_back(p);
    }
    in.nPmts = 500;
    rw::ChargeRec ch;
    ch.sDesc = "Excise addition";
    ch.dtLiab = D(2016, 6, 20);
    ch.dtIntStart = D(2016, 7, 1);
    ch.cTotal = Money::fromCents(50'000);
    ch.cToTax = Money::fromCents(30'000);
    ch.cToPen = Money::fromCents(20'000);
    c.charges = {ch};
    in.nCharges = 1;
    c.deposits.clear();
    for (int m : {2, 3, 4}) {
        rw::DepositRec d;
        d.dtDepDue = D(2016, m, 15);
        d.dtDepAssess = D(2016, 6, 30);
        d.cRequired = Money::fromCents(40'000);
        d.dtDelinqNotice = rw::NoDate;
        d.dtJeopardy = rw::NoDate;
        c.deposits.push_back(d);
    }
    in.nDeposits = 3;
    return c;
}

class NoMessages : public rw::Messages {
public:
    void show(std::string_view, std::string_view, rw::MsgIcon) override { }
    bool ask(std::string_view, std::string_view, rw::MsgIcon) override { return true; }
};

void BM_ComputeForReports(benchmark::State& state)
{
    const rw::Case c = BigCase();
    const rw::ReportSources sources = rw::StandardReportSources(QuarterlyTable(), BenchMinimums());
    for (auto _ : state) {
        rw::CaseComputation comp = sources.compute(c);
        benchmark::DoNotOptimize(comp.interest);
        state.counters["rows"] = static_cast<double>(comp.rows.size());
    }
}
BENCHMARK(BM_ComputeForReports)->Unit(benchmark::kMillisecond);

void BM_PrintEveryReportToText(benchmark::State& state)
{
    const rw::Case c = BigCase();
    const rw::ReportSources sources = rw::StandardReportSources(QuarterlyTable(), BenchMinimums());
    NoMessages msgs;
    for (auto _ : state) {
        rw::TextPrinter printer;
        rw::PrintState ps;
        rw::PrintJob job{printer, ps, msgs, {}, {}};
        rw::PrintReports(63, 1, c, job, sources);
        state.counters["pages"] = static_cast<double>(printer.pages().size());
    }
}
BENCHMARK(BM_PrintEveryReportToText)->Unit(benchmark::kMillisecond);

void BM_PrintEveryReportToPdf(benchmark::State& state)
{
    const rw::Case c = BigCase();
    const rw::ReportSources sources = rw::StandardReportSources(QuarterlyTable(), BenchMinimums());
    const std::string path
        = (std::filesystem::temp_directory_path() / "rw-bench-reports.pdf").string();
    NoMessages msgs;
    for (auto _ : state) {
        auto printer = rw::MakePdfPrinter(path);
        rw::PrintState ps;
        rw::PrintJob job{*printer, ps, msgs, {}, {}};
        rw::PrintReports(63, 1, c, job, sources);
        printer.reset();  // the file is written
    }
    std::filesystem::remove(path);
}
BENCHMARK(BM_PrintEveryReportToPdf)->Unit(benchmark::kMillisecond);

void BM_OverviewAfterAChange(benchmark::State& state)
{
    const rw::Case c = BigCase();
    const rw::ReportSources sources = rw::StandardReportSources(QuarterlyTable(), BenchMinimums());
    for (auto _ : state) {
        rw::CaseOverview o = rw::MakeCaseOverview(c, sources);
        benchmark::DoNotOptimize(o.total);
    }
}
BENCHMARK(BM_OverviewAfterAChange)->Unit(benchmark::kMillisecond);

void BM_ExportEveryReportAsCsv(benchmark::State& state)
{
    const rw::Case c = BigCase();
    const rw::ReportSources sources = rw::StandardReportSources(QuarterlyTable(), BenchMinimums());
    for (auto _ : state) {
        std::vector<rw::CsvTable> tables = rw::CsvTables(63, c, sources);
        benchmark::DoNotOptimize(tables.data());
        state.counters["files"] = static_cast<double>(tables.size());
    }
}
BENCHMARK(BM_ExportEveryReportAsCsv)->Unit(benchmark::kMillisecond);

}  // namespace
