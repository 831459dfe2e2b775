// Whole report texts (windows) and whole printed pages of the hand-made
// cases against the texts written out beside this file.

#include "reportcases.h"

#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/ftoreport.h"
#include "reports/inputs.h"
#include "reports/payrollreport.h"
#include "reports/summary.h"
#include "reports/textprinter.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace reporttest;

enum Report { SummaryWindow, SummaryPrint, InputsWindow, InputsPrint, DetailPrint, AccRelWindow, FtoPrint,
              PayrollWindow, PayrollPrint, SummaryAndAccRelJob };

struct Golden {
    std::string name, caseName, file;
    Report report;
    friend void PrintTo(const Golden& g, std::ostream* os) { *os << g.caseName << "/" << g.file; }
};

// Each report begins its own page; page numbers run on through a job. In
// everypenalty the payments' title ends page 1 of the inputs: their column
// headings do not fit below it and begin page 2. The 50 payments of
// longpayments cross a page with their headings repeated.
const Golden kGolden[] = {
    {"NewCaseSummaryWindow", "newcase", "summary-display.txt", SummaryWindow},
    {"NewCasePrintedSummary", "newcase", "summary-print.txt", SummaryPrint},
    {"NewCaseInputsWindow", "newcase", "inputs-display.txt", InputsWindow},
    {"NewCasePrintedInputs", "newcase", "inputs-print.txt", InputsPrint},
    {"NewCasePrintedDetail", "newcase", "detail-print.txt", DetailPrint},
    {"OverpaymentSummaryWindow", "overpayment", "summary-display.txt", SummaryWindow},
    {"OverpaymentInputsWindow", "overpayment", "inputs-display.txt", InputsWindow},
    {"EveryPenaltySummaryWindow", "everypenalty", "summary-display.txt", SummaryWindow},
    {"EveryPenaltyAccuracyRelatedWindow", "everypenalty", "accrel-display.txt", AccRelWindow},
    {"EveryPenaltyPrintedFailureToFileAndPay", "everypenalty", "fto-print.txt", FtoPrint},
    {"EveryPenaltyPayrollWindow", "everypenalty", "payroll-display.txt", PayrollWindow},
    {"EveryPenaltyPrintedPayroll", "everypenalty", "payroll-print.txt", PayrollPrint},
    {"EveryPenaltyPrintedInputs", "everypenalty", "inputs-print.txt", InputsPrint},
    {"EveryPenaltySummaryAndAccuracyInOneJob", "everypenalty", "job-summary-accrel.txt",
     SummaryAndAccRelJob},
    {"LongPaymentsPrintedInputs", "longpayments", "inputs-print.txt", InputsPrint},
};

class GoldenText : public testing::TestWithParam<Golden> {};

TEST_P(GoldenText, MatchesTheTextWrittenOut)
{
    const CaseComputation c = Computation(GetParam().caseName);
    TextPrinter printer;  // 60 lines a page in every font
    printer.setFont("Arial", 10.0f);
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm{printer, state, msgs};
    std::vector<std::string> status;
    PrintJob job{printer, state, msgs, [&](std::string_view s) { status.emplace_back(s); }, {}};
    std::string window;
    switch (GetParam().report) {
    case SummaryWindow: window = DispSummary(c.timeline, c.kase.init, c.interest); break;
    case InputsWindow: window = DispInputs(c.kase); break;
    case AccRelWindow: window = DispAccRelPen(c.kase.init); break;
    case PayrollWindow: window = ReportPRPen(c.kase.init, c.prTable, 0, nullptr); break;
    case SummaryPrint: PrnSummary(pm, c.timeline, c.kase.init, c.interest); break;
    case InputsPrint: PrintInputs(pm, c.kase); break;
    case DetailPrint: PrintDetail(pm, c.kase.init, c.rows); break;
    case FtoPrint: PrnFtoFilePay(pm, c.kase.init, c.ftoRows); break;
    case PayrollPrint: EXPECT_EQ(ReportPRPen(c.kase.init, c.prTable, 1, &pm), ""); break;
    case SummaryAndAccRelJob:
        PrintReports(kRptSummary | kRptAccRel, 1, c.kase, job, SourcesFor(c));
        EXPECT_EQ(status, (std::vector<std::string>{"Printing Summary...",
                                                    "Printing Accuracy Related Penalty Analysis...", "Printing Done"}));
        EXPECT_EQ(printer.documents(), 1);
        break;
    }
    EXPECT_EQ(window.empty() ? printer.text() : CrLfToLf(window), Expected(GetParam().caseName + "/" + GetParam().file));
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(state.nLineCount, 0);  // a printed report ends its page
    // A report that prints in a font of its own gives back the one it found.
    EXPECT_TRUE(printer.fontName() == "Arial" && printer.fontSize() == 10.0f);
}

INSTANTIATE_TEST_SUITE_P(Reports, GoldenText, testing::ValuesIn(kGolden), [](const auto& p) { return p.param.name; });

}  // namespace
