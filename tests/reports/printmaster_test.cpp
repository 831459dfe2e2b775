// The report choice, the print command and the report display command, with
// hand-made computations.

#include "reportcases.h"

#include "support/recordingmessages.h"
#include "reports/accrelreport.h"
#include "reports/ftoreport.h"
#include "reports/payrollreport.h"
#include "reports/printmaster.h"
#include "reports/textprinter.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace reporttest;

// The dialog answered by the test: OK with a choice, or Cancel.
class ScriptedChooser : public ReportChooser {
public:
    std::optional<std::int32_t> next;  // nullopt: Cancel
    std::vector<bool> setupShown;
    void chooseReports(ReportChoice& choice, bool withSetup) override
    {
        setupShown.push_back(withSetup);
        if (next)
            choice.mask = *next;
    }
};

struct Job {
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    std::vector<std::string> status;
    int repaints = 0;
    PrintJob job{printer, state, msgs, [this](std::string_view s) { status.emplace_back(s); },
                 [this] { ++repaints; }};
};

ReportSources countingSources(const CaseComputation& comp, int& calls)
{
    ReportSources s;
    s.compute = [comp, &calls](const Case&) {
        ++calls;
        return comp;
    };
    return s;
}

TEST(ReportChoice, EntriesAndCaptionsInTheOrderOfTheCheckList)
{
    const auto e = ReportChoiceEntries();
    ASSERT_EQ(e.size(), 6u);
    const std::pair<std::int32_t, std::string_view> want[] = {
        {1, "Inputs"}, {2, "Summary of Results"}, {4, "Detailed Analysis"}, {8, "Failure To File or Pay"},
        {16, "Accuracy Related Pen"}, {32, "Payroll Deposit Pen"}};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(e[i].value, want[i].first);
        EXPECT_EQ(e[i].caption, want[i].second);
    }
}

TEST(ReportChoice, OkStoresTheSumAndTheNextOpeningShowsIt)
{
    ReportChoice choice;
    ReportChoiceDialog dlg(choice, true);
    ReportChoiceForm f = dlg.open();
    EXPECT_EQ(f.checked, (std::array<bool, 6>{}));
    EXPECT_TRUE(f.setupVisible);
    f.checked[1] = f.checked[4] = true;
    dlg.accept(f);
    EXPECT_EQ(choice.mask, 18);
    ReportChoiceDialog again(choice, false);
    EXPECT_EQ(again.open().checked, (std::array<bool, 6>{false, true, false, false, true, false}));
    EXPECT_FALSE(again.open().setupVisible);
}

TEST(PrintMaster, CancelRepeatsTheEarlierChoice)
{
    const CaseComputation comp = NewCase();
    ReportChoice choice{kRptSummary};
    ScriptedChooser chooser;  // Cancel
    Job j;
    PrintMaster(1, comp.kase, choice, chooser, j.job, SourcesFor(comp));
    EXPECT_EQ(chooser.setupShown, std::vector<bool>{true});
    EXPECT_EQ(j.status, (std::vector<std::string>{"Printing Summary...", "Printing Done"}));
    EXPECT_EQ(j.printer.pages().size(), 1u);
    EXPECT_EQ(j.repaints, 2);  // after the dialog and after the copy
}

TEST(PrintMaster, OnlyInputsPrintsWithoutComputing)
{
    const CaseComputation comp = NewCase();
    int calls = 0;
    Job j;
    PrintReports(kRptInputs, 1, comp.kase, j.job, countingSources(comp, calls));
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(j.status, (std::vector<std::string>{"Printing Inputs...", "Printing Done"}));
    EXPECT_EQ(j.printer.documents(), 1);
}

TEST(PrintMaster, ComputesOnceForAnyOtherChoice)
{
    const CaseComputation comp = NewCase();
    int calls = 0;
    Job j;
    PrintReports(kRptInputs | kRptDetail, 2, comp.kase, j.job, countingSources(comp, calls));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(j.status, (std::vector<std::string>{"Printing Inputs...", "Printing Detailed Analysis...",
                                                  "Printing Inputs...", "Printing Detailed Analysis...",
                                                  "Printing Done"}));
    // Two copies of two one-page reports, numbered on through the job.
    ASSERT_EQ(j.printer.pages().size(), 4u);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(j.printer.pages()[static_cast<std::size_t>(i)].back(), "  Page " + std::to_string(i + 1));
    EXPECT_EQ(j.printer.documents(), 1);
    EXPECT_EQ(j.repaints, 2);
}

TEST(PrintMaster, PenaltyAnalysesAreSkippedWhenNotRequestedOrWithoutDeposits)
{
    const CaseComputation comp = NewCase();  // no penalties, no deposits
    Job j;
    PrintReports(kRptFailFilePay | kRptAccRel | kRptPayroll, 1, comp.kase, j.job, SourcesFor(comp));
    EXPECT_EQ(j.status, std::vector<std::string>{"Printing Done"});
    EXPECT_TRUE(j.printer.pages().empty());
    EXPECT_EQ(j.printer.documents(), 1);
}

TEST(PrintMaster, EveryReportInItsOrder)
{
    const CaseComputation comp = EveryPenaltyCase();
    Job j;
    PrintReports(63, 1, comp.kase, j.job, SourcesFor(comp));
    EXPECT_EQ(j.status, (std::vector<std::string>{
                            "Printing Inputs...", "Printing Summary...", "Printing Detailed Analysis...",
                            "Printing Failure To File and Pay Analysis...",
                            "Printing Accuracy Related Penalty Analysis...", "Printing Payroll Penalty Analysis...",
                            "Printing Done"}));
    // Inputs take two pages, every other report one.
    EXPECT_EQ(j.printer.pages().size(), 7u);
    EXPECT_EQ(j.printer.pages()[6][4], "  Payroll Deposit Penalties");
    EXPECT_EQ(j.state.nLineCount, 0);
    EXPECT_TRUE(j.msgs.shown.empty());
}

TEST(PrintMaster, FailureToFileAndPayPrintsWhenEitherPenaltyIsRequested)
{
    CaseComputation comp = EveryPenaltyCase();
    comp.kase.init.bFtoFile = kNo;
    Job j;
    PrintReports(kRptFailFilePay, 1, comp.kase, j.job, SourcesFor(comp));
    ASSERT_EQ(j.printer.pages().size(), 1u);
    const auto& page = j.printer.pages()[0];
    EXPECT_EQ(std::count(page.begin(), page.end(), "FAILURE TO FILE:"), 0);
    EXPECT_EQ(std::count(page.begin(), page.end(), "FAILURE TO PAY:"), 1);
}

TEST(PrintMaster, FailureToPayBlockWithoutTheIncreasedRateLine)
{
    CaseComputation comp = EveryPenaltyCase();
    comp.kase.init.b6651d1 = kNo;
    comp.kase.init.bFtoPay = kYes;
    Job j;
    PrintReports(kRptFailFilePay, 1, comp.kase, j.job, SourcesFor(comp));
    const auto& page = j.printer.pages().at(0);
    EXPECT_EQ(std::count_if(page.begin(), page.end(),
                            [](const std::string& l) { return l.starts_with("Failure to pay rate increases: "); }),
              0);
}

TEST(ReportDisplay, PayrollAnalysisIsBuiltFromTheDepositsEvenWithPenaltiesOff)
{
    // Deposits entered but the penalty flag off: the time line took no payroll
    // points, so the computation holds no payroll table. The analysis builds
    // its own: 1,000.00 due 1/15/2016, paid 1/25/2016, 10 days late at 5 % = 50.00.
    CaseComputation comp;
    ClearInputs(comp.kase);
    comp.kase.init.bPayroll = kYes;
    comp.kase.init.bAnyPenalties = kNo;
    comp.kase.init.tlStop.dtDate = Date::fromCivil(2016, 12, 31);
    DepositRec d;
    d.dtDepDue = Date::fromCivil(2016, 1, 15);
    d.dtDepAssess = Date::fromCivil(2016, 6, 30);
    d.cRequired = Money::fromCents(100000);
    comp.kase.deposits = {d};
    comp.kase.init.nDeposits = 1;
    PaymentRec p;
    p.dtPmt = Date::fromCivil(2016, 1, 25);
    p.cAmount = p.cToTax = Money::fromCents(100000);
    comp.kase.pmts = {p};
    comp.kase.init.nPmts = 1;
    ASSERT_TRUE(comp.prTable.empty());

    const auto windows = ReportWindows(kRptPayroll, comp.kase, SourcesFor(comp));
    ASSERT_EQ(windows.size(), 1u);
    const std::string& text = windows[0].text;
    EXPECT_NE(text.find("         1,000.00       1,000.00  01/25/2016    10  5.00       1,000.00          50.00"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("Total          50.00"), std::string::npos) << text;
}

TEST(ReportDisplay, WindowsOpenPayrollAccuracyFailureDetailSummaryInputs)
{
    const CaseComputation comp = EveryPenaltyCase();
    const auto windows = ReportWindows(63, comp.kase, SourcesFor(comp));
    ASSERT_EQ(windows.size(), 6u);
    const ReportWindowKind order[] = {ReportWindowKind::PayrollPenalty, ReportWindowKind::AccuracyRelated,
                                      ReportWindowKind::FailFilePay,    ReportWindowKind::DetailedInterest,
                                      ReportWindowKind::Summary,        ReportWindowKind::Inputs};
    const char* captions[] = {"Payroll Deposit Penalty",        "Accuracy Related Penalty",
                              "Failure To File & Pay Analysis", "Detailed Interest Analysis",
                              "Summary",                        "Inputs"};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(windows[i].kind, order[i]);
        EXPECT_EQ(windows[i].caption, captions[i]);
    }
    EXPECT_EQ(windows[0].text, ReportPRPen(comp.kase.init, comp.prTable, 0, nullptr));
    EXPECT_EQ(windows[1].text, DispAccRelPen(comp.kase.init));
    ASSERT_TRUE(windows[2].grid);
    EXPECT_TRUE(windows[2].modal);
    EXPECT_EQ(*windows[2].grid, FailFilePayGrid(comp.ftoRows));
    ASSERT_TRUE(windows[3].grid);
    EXPECT_EQ(windows[3].grid->rows(), comp.rows.size() + 2);
    ASSERT_TRUE(windows[5].inputs);
    EXPECT_TRUE(windows[5].inputs->depositsEnabled);
    EXPECT_TRUE(windows[5].inputs->chargesEnabled);
    EXPECT_TRUE(windows[5].inputs->paymentsEnabled);
}

TEST(ReportDisplay, CommandAsksWithoutSetupAndSkipsWhatDoesNotApply)
{
    const CaseComputation comp = NewCase();
    ReportChoice choice;
    ScriptedChooser chooser;
    chooser.next = kRptPayroll | kRptAccRel | kRptFailFilePay | kRptInputs;
    int calls = 0;
    const auto windows = ReportDisplayCommand(comp.kase, choice, chooser, countingSources(comp, calls));
    EXPECT_EQ(chooser.setupShown, std::vector<bool>{false});
    EXPECT_EQ(choice.mask, 57);
    EXPECT_EQ(calls, 1);
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0].kind, ReportWindowKind::Inputs);
    EXPECT_FALSE(windows[0].inputs->paymentsEnabled);
    EXPECT_FALSE(windows[0].inputs->chargesEnabled);
    EXPECT_FALSE(windows[0].inputs->depositsEnabled);
}

}  // namespace
