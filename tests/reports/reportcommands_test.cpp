// The print and report display commands over the hand-made cases, and the
// pieces of single reports the expected texts do not hold.

#include "reportcases.h"

#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/ftoreport.h"
#include "reports/payrollreport.h"
#include "reports/textprinter.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace reporttest;
using Lines = std::vector<std::string>;

struct Job {
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    Lines status;
    int repaints = 0, computations = 0;
    PrintJob job{printer, state, msgs, [this](std::string_view s) { status.emplace_back(s); }, [this] { ++repaints; }};
    ReportSources sources(const CaseComputation& comp)
    {
        return {[this, comp](const Case&) { return ++computations, comp; }};
    }
};

// The Report Choices dialog answered by the test: OK with a choice, or Cancel.
struct ScriptedChooser : ReportChooser {
    std::optional<std::int32_t> next;
    std::vector<bool> setupShown;
    void chooseReports(ReportChoice& choice, bool withSetup) override
    {
        setupShown.push_back(withSetup);
        choice.mask = next.value_or(choice.mask);
    }
};

TEST(PrintMaster, ComputesOnceSkipsWhatDoesNotApplyAndNumbersThePagesOnThroughTheJob)
{
    const std::string in = "Printing Inputs...", detail = "Printing Detailed Analysis...", done = "Printing Done";
    struct Row {
        std::string caseName;
        std::int32_t choice;
        std::int16_t copies;
        int computations;
        Lines status;
        std::size_t pages;
    };
    for (const Row& r :
         {Row{"newcase", kRptInputs, 1, 0, {in, done}, 1},  // the inputs alone need no computation
          Row{"newcase", kRptInputs | kRptDetail, 2, 1, {in, detail, in, detail, done}, 4},
          Row{"newcase", kRptFailFilePay | kRptAccRel | kRptPayroll, 1, 1, {done}, 0},  // no penalty, no deposit
          Row{"everypenalty", 63, 1, 1,  // the inputs take two pages
              {in, "Printing Summary...", detail, "Printing Failure To File and Pay Analysis...",
               "Printing Accuracy Related Penalty Analysis...", "Printing Payroll Penalty Analysis...", done},
              7}}) {
        SCOPED_TRACE(r.status.front());
        Job j;
        PrintReports(r.choice, r.copies, Computation(r.caseName).kase, j.job, j.sources(Computation(r.caseName)));
        EXPECT_EQ(j.computations, r.computations);
        EXPECT_EQ(j.status, r.status);
        ASSERT_EQ(j.printer.pages().size(), r.pages);
        for (std::size_t i = 0; i < r.pages; ++i)
            EXPECT_EQ(j.printer.pages()[i].back(), "  Page " + std::to_string(i + 1));
        EXPECT_EQ(j.printer.documents(), 1);
        EXPECT_TRUE(j.msgs.shown.empty());
    }
}

TEST(PrintMaster, CancelPrintsTheEarlierChoiceAndFailureToPayAlonePrintsItsBlock)
{
    CaseComputation comp = Computation("everypenalty");
    comp.kase.init.bFtoFile = comp.kase.init.b6651d1 = kNo;
    ReportChoice choice{kRptFailFilePay};
    ScriptedChooser chooser;  // Cancel
    Job j;
    PrintMaster(1, comp.kase, choice, chooser, j.job, j.sources(comp));
    EXPECT_EQ(chooser.setupShown, std::vector<bool>{true});
    EXPECT_EQ(j.repaints, 2);  // after the dialog and after the copy
    ASSERT_EQ(j.printer.pages().size(), 1u);
    const Lines& page = j.printer.pages()[0];
    EXPECT_EQ(std::count(page.begin(), page.end(), "FAILURE TO FILE:"), 0);
    EXPECT_EQ(std::count(page.begin(), page.end(), "FAILURE TO PAY:"), 1);
    EXPECT_TRUE(std::none_of(page.begin(), page.end(), [](auto& l) { return l.starts_with("Failure to pay rate"); }));
}

TEST(ReportDisplay, WindowsOpenPayrollAccuracyFailureDetailSummaryInputs)
{
    const CaseComputation comp = Computation("everypenalty");
    const auto windows = ReportWindows(63, comp.kase, SourcesFor(comp));
    const ReportWindowKind order[] = {ReportWindowKind::PayrollPenalty, ReportWindowKind::AccuracyRelated,
                                      ReportWindowKind::FailFilePay,    ReportWindowKind::DetailedInterest,
                                      ReportWindowKind::Summary,        ReportWindowKind::Inputs};
    ASSERT_EQ(windows.size(), 6u);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(windows[i].kind, order[i]);
    EXPECT_TRUE(windows[2].modal);
    EXPECT_TRUE(windows[5].inputs->paymentsEnabled && windows[5].inputs->depositsEnabled);
    // The failure to file and pay grid's last row: 8 x 50.00 + 100.00; 5 x 450.00.
    EXPECT_EQ(windows[2].grid->cells.back(), (Lines{"TOTALS", "", "", "", "        500.00", "      2,250.00"}));

    // The command asks without Setup; newcase's lists hold one empty entry each, none counted.
    ReportChoice choice;
    ScriptedChooser chooser;
    chooser.next = kRptPayroll | kRptAccRel | kRptFailFilePay | kRptInputs;
    const CaseComputation plain = Computation("newcase");
    const auto shown = ReportDisplayCommand(plain.kase, choice, chooser, SourcesFor(plain));
    EXPECT_EQ(chooser.setupShown, std::vector<bool>{false});
    EXPECT_EQ(choice.mask, 57);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_FALSE(shown[0].inputs->paymentsEnabled || shown[0].inputs->chargesEnabled
                 || shown[0].inputs->depositsEnabled);
}

TEST(ReportDisplay, PayrollAnalysisIsBuiltFromTheDepositsEvenWithPenaltiesOff)
{
    // The computation holds no payroll table; the analysis builds its own:
    // 1,000.00 due 1/15/2016, paid 1/25/2016, 10 days late at 5 % = 50.00.
    CaseComputation comp;
    comp.kase = rwtest::FederalCase(D(2016, 1, 15), D(2016, 12, 31), "0");
    comp.kase.init.bPayroll = kYes;
    comp.kase.init.bAnyPenalties = kNo;
    rwtest::AddDeposit(comp.kase, D(2016, 1, 15), "1000.00", D(2016, 6, 30));
    rwtest::AddPayment(comp.kase, D(2016, 1, 25), {.tax = "1000.00"});
    const std::string text = ReportWindows(kRptPayroll, comp.kase, SourcesFor(comp)).at(0).text;
    EXPECT_NE(text.find("     1,000.00       1,000.00  01/25/2016    10  5.00       1,000.00          50.00"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("Total          50.00"), std::string::npos) << text;
}

TEST(ReportParts, PayrollRowAtItsWidest)
{
    PRPenTblElement e{D(2012, 1, 15), M("1234567.89"), M("0"), D(2015, 5, 3), 1204, M("0"), 0.15f, M("1234567.89"),
                      M("185185.18"), kNo};
    EXPECT_EQ(PRPenRow(e), "     1,234,567.89           0.00  05/03/2015 1,204 15.00   1,234,567.89     185,185.18");
    e.fRate = 0.02f;
    e.nDaysLate = -3;
    EXPECT_EQ(PRPenRow(e).substr(45, 11), "   -3  2.00");
}

TEST(ReportParts, DetailDescriptionNeverSetKeepsItsSixteenCells)
{
    const ResultPeriod r{{}, D(2016, 1, 1), D(2016, 1, 31), 0.03f, M("100.00"), M("0"), 30, 0.5, M("1.00")};  // NULs
    Job j;
    PrintManager pm(j.printer, j.state, j.msgs);
    PrintDetail(pm, InitInputs{}, {r});
    EXPECT_EQ(j.printer.pages().at(0).at(10).substr(0, 54), std::string(25, ' ') + "01/01/2016 01/31/2016  3.0000");
}

TEST(ReportParts, AccuracyRelatedPenaltyComputedAfreshInDoubleFromTheSingleRate)
{
    InitInputs in;
    in.cAccRelAmt = M("10000.00");
    in.fAccRelRate = 0.4f;  // 0.4000000059604645 as a double
    EXPECT_EQ(AccRelReportPenalty(in), M("4000.0001"));
    EXPECT_NE(DispAccRelPen(in).find("Accuracy Related penalty            4,000.00\r\n"), std::string::npos);
}

}  // namespace
