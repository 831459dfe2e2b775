// Pieces of single reports: grid cells, rate and amount texts, the payroll
// row, the accuracy-related penalty.

#include "reportcases.h"

#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/ftoreport.h"
#include "reports/inputs.h"
#include "reports/payrollreport.h"
#include "reports/textprinter.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace reporttest;
using Cells = std::vector<std::string>;

TEST(FailFilePayGrid, HeadingsMonthsAndTotals)
{
    const CaseComputation comp = EveryPenaltyCase();
    const GridData g = FailFilePayGrid(comp.ftoRows);
    EXPECT_EQ(g.caption, "Failure To File & Pay Analysis");
    ASSERT_EQ(g.rows(), 11u);
    EXPECT_EQ(g.cells[0], (Cells{"DATE OF COMPUTATION", "NET UNPAID TAX", "GROSS FAILURE TO FILE",
                                 "FAILURE TO PAY RATE", "FAILURE TO PAY PENALTY", "NET FAILURE TO FILE PENALTY"}));
    EXPECT_EQ(g.cells[1], (Cells{"04/16/2016", "     10,000.00", "        500.00", "0.50", "         50.00",
                                 "        450.00"}));
    EXPECT_EQ(g.cells[9][3], "1.00");
    EXPECT_EQ(g.cells[10], (Cells{"TOTALS", "", "", "", "        500.00", "      2,250.00"}));
    for (CellAlign a : g.align)
        EXPECT_EQ(a, CellAlign::Right);
}

TEST(FtpRateText, PercentInSinglePrecision)
{
    EXPECT_EQ(FtpRateText(0.005f), "0.50");
    EXPECT_EQ(FtpRateText(0.01f), "1.00");
    EXPECT_EQ(FtpRateText(0.0f), "0.00");
}

TEST(DetailGrid, ThreeRowsMakeFiveGridRows)
{
    const CaseComputation comp = NewCase();
    std::vector<ResultPeriod> rows(comp.rows.begin() + 1, comp.rows.end());
    const GridData g = DetailGrid(rows);
    ASSERT_EQ(g.rows(), 5u);
    EXPECT_EQ(g.cells[0][4], "BEGINNING TAX & PENALTIES");
    EXPECT_EQ(g.cells[3][7], ".012345679");
    EXPECT_EQ(g.cells[4][0], "Ending");
    EXPECT_EQ(g.cells[4][1], "Interest");
    EXPECT_EQ(g.cells[4][8], "        288.24");
    EXPECT_EQ(g.align[2], CellAlign::Left);
    EXPECT_EQ(g.widthUnits[2], 2);
    EXPECT_EQ(g.widthUnits[0], 1);
}

TEST(PrintedDetail, DescriptionNeverSetKeepsItsSixteenCells)
{
    ResultPeriod r = Row("", D(2016, 1, 1), D(2016, 1, 31), 0.03f, "100.00", "0", 30, 0.5, "1.00");
    r.sDesc = FixedText<16>();  // never assigned: NULs
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm(printer, state, msgs);
    PrintDetail(pm, InitInputs{}, {r});
    const std::string& line = printer.pages().at(0).at(10);
    EXPECT_EQ(line.substr(0, 54), std::string(25, ' ') + "01/01/2016 01/31/2016  3.0000");
}

TEST(InputsGrids, ThreePaymentsMakeFourRows)
{
    const CaseComputation comp = EveryPenaltyCase();
    const GridData g = FillPmtGrd(comp.kase);
    EXPECT_EQ(g.caption, "Partial Payment Inputs");
    ASSERT_EQ(g.rows(), 4u);
    EXPECT_EQ(g.cells[0], (Cells{"DESC.", "PAYMENT DATE", "PAYMENT AMOUNT", "APPLIED TO TAX", "APPLIED TO PENALTIES",
                                 "APPLIED TO INTEREST", "METHOD"}));
    EXPECT_EQ(g.cells[1], (Cells{"Check 1001      ", "05/18/2016", "650.00", "600.00", "50.00", "0.00", "I"}));
    EXPECT_EQ(g.cells[3], (Cells{"Check 1003      ", "06/15/2016", "1,025.00", "1,000.00", "0.00", "25.00", "I"}));
}

TEST(InputsGrids, ChargesAndDeposits)
{
    const CaseComputation comp = EveryPenaltyCase();
    const GridData c = InputsGrid(comp.kase, InputGridKind::Charges);
    EXPECT_EQ(c.caption, "Other Charge Inputs");
    EXPECT_EQ(c.cells[0], (Cells{"DESC.", "LIABILITY DATE", "INTEREST START DATE", "AMOUNT"}));
    EXPECT_EQ(c.cells[2], (Cells{"Late charge     ", "08/01/2016", "08/01/2016", "100.00"}));
    const GridData d = InputsGrid(comp.kase, InputGridKind::Deposits);
    EXPECT_EQ(d.caption, "Payroll Deposit Inputs");
    ASSERT_EQ(d.rows(), 4u);
    EXPECT_EQ(d.cells[0], (Cells{"LIABILITY DATE", "PENALTY ASSESSMENT DATE", "AMOUNT"}));
    EXPECT_EQ(d.cells[2], (Cells{"06/15/2016", "06/30/2016", "2,000.00"}));
    EXPECT_EQ(SetupChrgGrd(0).rows(), 1u);
}

TEST(InputsWindow, ListButtonsEnabledByTheirLists)
{
    CaseComputation comp = EveryPenaltyCase();
    comp.kase.init.nCharges = 0;
    comp.kase.charges.resize(1);
    const InputsWindowData w = InputsWindow(comp.kase);
    EXPECT_TRUE(w.paymentsEnabled);
    EXPECT_TRUE(w.depositsEnabled);
    EXPECT_FALSE(w.chargesEnabled);
}

TEST(InputsText, AccuracyRelatedRateIsPlainOnScreenAndDotHashZeroOnPaper)
{
    CaseComputation comp = EveryPenaltyCase();
    comp.kase.init.fAccRelRate = 0.25f;
    const std::string text = DispInputs(comp.kase);
    EXPECT_NE(text.find("\r\nAccuracy Related Penalty Rate: 0.25\r\n"), std::string::npos);
    EXPECT_EQ(text.find("Initial Balance: "), std::string::npos);
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm(printer, state, msgs);
    PrintInputs(pm, comp.kase);
    const auto& page = printer.pages().at(0);
    EXPECT_NE(std::find(page.begin(), page.end(), "  Accuracy Related Penalty Rate: .25"), page.end());
    EXPECT_NE(std::find(page.begin(), page.end(), "  Initial Balance: 10,000.00"), page.end());
}

TEST(InputsText, SuspensionAndRestart)
{
    CaseComputation comp = NewCase();
    comp.kase.init.dtIntSuspend = D(2016, 8, 1);
    std::string text = DispInputs(comp.kase);
    EXPECT_NE(text.find("Date Interest Suspended: 8/1/2016\r\n"), std::string::npos);
    EXPECT_EQ(text.find("Date Interest Restarted: "), std::string::npos);
    comp.kase.init.dtRestart = D(2016, 9, 1);
    text = DispInputs(comp.kase);
    EXPECT_NE(text.find("Date Interest Suspended: 8/1/2016\r\nDate Interest Restarted: 9/1/2016\r\n"),
              std::string::npos);
    // A restart without a suspension shows nothing; day 0 counts as not set.
    comp.kase.init.dtIntSuspend = Date(0.0);
    text = DispInputs(comp.kase);
    EXPECT_EQ(text.find("Date Interest"), std::string::npos);
}

TEST(PayrollRow, ColumnsUnderTheHeadings)
{
    PRPenTblElement e;
    e.dtDepDue = D(2012, 1, 15);
    e.cBegBal = M("1234567.89");
    e.cPaid = M("0");
    e.dtPaid = D(2015, 5, 3);
    e.nDaysLate = 1204;
    e.fRate = 0.15f;
    e.cBase = M("1234567.89");
    e.cPenalty = M("185185.18");
    const std::string row = PRPenRow(e);
    EXPECT_EQ(row, "     1,234,567.89           0.00  05/03/2015 1,204 15.00   1,234,567.89     185,185.18");
    e.fRate = 0.02f;
    e.nDaysLate = -3;
    EXPECT_EQ(PRPenRow(e).substr(45, 11), "   -3  2.00");
}

TEST(AccuracyRelated, PenaltyComputedAfreshInDoubleFromTheSingleRate)
{
    InitInputs in;
    in.cAccRelAmt = M("10000.00");
    in.fAccRelRate = 0.4f;  // 0.4000000059604645
    EXPECT_EQ(AccRelReportPenalty(in), M("4000.0001"));
    EXPECT_NE(DispAccRelPen(in).find("Accuracy Related penalty            4,000.00\r\n"), std::string::npos);
    in.fAccRelRate = 0.2f;
    EXPECT_EQ(AccRelReportPenalty(in), M("2000.0000"));
    in.cAccRelAmt = M("1234.57");
    in.fAccRelRate = 0.25f;
    EXPECT_EQ(AccRelReportPenalty(in), M("308.6425"));
    EXPECT_NE(DispAccRelPen(in).find("Penalty Rate                            0.25\r\n"), std::string::npos);
}

TEST(GridAsText, ColumnsPaddedToTheWidestCell)
{
    GridData g = MakeGrid("Caption", {"A", "LONG HEADING"}, 3, CellAlign::Right);
    g.align[0] = CellAlign::Left;
    g.cells[1] = {"first", "1.00"};
    g.cells[2] = {"x", "1,000.00"};
    EXPECT_EQ(GridAsText(g), "A     LONG HEADING\nfirst         1.00\nx         1,000.00\n");
}

}  // namespace
