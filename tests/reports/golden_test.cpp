// Whole report texts and whole printed pages of the hand-made cases against
// the texts written out beside this file.

#include "reportcases.h"

#include "support/recordingmessages.h"
#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/ftoreport.h"
#include "reports/inputs.h"
#include "reports/payrollreport.h"
#include "reports/printmaster.h"
#include "reports/summary.h"
#include "reports/textprinter.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace reporttest;

// A page manager over a text printer of 60 lines a page in every font.
struct Paper {
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm{printer, state, msgs};

    std::string text()
    {
        EXPECT_TRUE(msgs.shown.empty());
        return printer.text();
    }
};

TEST(GoldenNewCase, SummaryWindow)
{
    const CaseComputation comp = NewCase();
    EXPECT_EQ(CrLfToLf(DispSummary(comp.timeline, comp.kase.init, comp.interest)),
              Expected("newcase", "summary-display.txt"));
}

TEST(GoldenNewCase, PrintedSummary)
{
    const CaseComputation comp = NewCase();
    Paper paper;
    PrnSummary(paper.pm, comp.timeline, comp.kase.init, comp.interest);
    EXPECT_EQ(paper.text(), Expected("newcase", "summary-print.txt"));
    EXPECT_EQ(paper.state.nLineCount, 0);
    EXPECT_EQ(paper.printer.fontSize(), 12.0f);  // the font found at the start
}

TEST(GoldenNewCase, InputsWindow)
{
    const CaseComputation comp = NewCase();
    EXPECT_EQ(CrLfToLf(DispInputs(comp.kase)), Expected("newcase", "inputs-display.txt"));
}

TEST(GoldenNewCase, PrintedInputs)
{
    const CaseComputation comp = NewCase();
    Paper paper;
    PrintInputs(paper.pm, comp.kase);
    EXPECT_EQ(paper.text(), Expected("newcase", "inputs-print.txt"));
}

TEST(GoldenNewCase, PrintedDetailedAnalysis)
{
    const CaseComputation comp = NewCase();
    Paper paper;
    paper.printer.setFont("Arial", 10.0f);
    PrintDetail(paper.pm, comp.kase.init, comp.rows);
    EXPECT_EQ(paper.text(), Expected("newcase", "detail-print.txt"));
    EXPECT_EQ(paper.printer.fontName(), "Arial");
    EXPECT_EQ(paper.printer.fontSize(), 10.0f);
}

TEST(GoldenOverpayment, SummaryWindow)
{
    const CaseComputation comp = OverpaymentCase();
    EXPECT_EQ(CrLfToLf(DispSummary(comp.timeline, comp.kase.init, comp.interest)),
              Expected("overpayment", "summary-display.txt"));
}

TEST(GoldenOverpayment, InputsWindow)
{
    const CaseComputation comp = OverpaymentCase();
    EXPECT_EQ(CrLfToLf(DispInputs(comp.kase)), Expected("overpayment", "inputs-display.txt"));
}

TEST(GoldenEveryPenalty, SummaryWindow)
{
    const CaseComputation comp = EveryPenaltyCase();
    EXPECT_EQ(CrLfToLf(DispSummary(comp.timeline, comp.kase.init, comp.interest)),
              Expected("everypenalty", "summary-display.txt"));
}

TEST(GoldenEveryPenalty, AccuracyRelatedWindow)
{
    const CaseComputation comp = EveryPenaltyCase();
    EXPECT_EQ(CrLfToLf(DispAccRelPen(comp.kase.init)), Expected("everypenalty", "accrel-display.txt"));
}

TEST(GoldenEveryPenalty, PrintedFailureToFileAndPay)
{
    const CaseComputation comp = EveryPenaltyCase();
    Paper paper;
    PrnFtoFilePay(paper.pm, comp.kase.init, comp.ftoRows);
    EXPECT_EQ(paper.text(), Expected("everypenalty", "fto-print.txt"));
}

TEST(GoldenEveryPenalty, PayrollWindow)
{
    const CaseComputation comp = EveryPenaltyCase();
    EXPECT_EQ(CrLfToLf(ReportPRPen(comp.kase.init, comp.prTable, 0, nullptr)),
              Expected("everypenalty", "payroll-display.txt"));
}

TEST(GoldenEveryPenalty, PrintedPayroll)
{
    const CaseComputation comp = EveryPenaltyCase();
    Paper paper;
    EXPECT_EQ(ReportPRPen(comp.kase.init, comp.prTable, 1, &paper.pm), "");
    EXPECT_EQ(paper.text(), Expected("everypenalty", "payroll-print.txt"));
}

TEST(GoldenEveryPenalty, PrintedInputsWithTheThreeLists)
{
    // The payments' title ends page 1: their column headings do not fit
    // below it and begin page 2.
    const CaseComputation comp = EveryPenaltyCase();
    Paper paper;
    PrintInputs(paper.pm, comp.kase);
    EXPECT_EQ(paper.text(), Expected("everypenalty", "inputs-print.txt"));
}

TEST(GoldenEveryPenalty, TwoReportsInOneJob)
{
    // Each report begins its own page; page numbers run on through the job.
    const CaseComputation comp = EveryPenaltyCase();
    Paper paper;
    std::vector<std::string> status;
    PrintJob job{paper.printer, paper.state, paper.msgs, [&](std::string_view s) { status.emplace_back(s); }, {}};
    PrintReports(kRptSummary | kRptAccRel, 1, comp.kase, job, SourcesFor(comp));
    EXPECT_EQ(paper.text(), Expected("everypenalty", "job-summary-accrel.txt"));
    EXPECT_EQ(status, (std::vector<std::string>{"Printing Summary...", "Printing Accuracy Related Penalty Analysis...",
                                                "Printing Done"}));
    EXPECT_EQ(paper.printer.documents(), 1);
}

TEST(GoldenLongPayments, PaymentListCrossesAPageWithItsHeadingsRepeated)
{
    const CaseComputation comp = LongPaymentsCase();
    Paper paper;
    PrintInputs(paper.pm, comp.kase);
    EXPECT_EQ(paper.text(), Expected("longpayments", "inputs-print.txt"));
}

}  // namespace
