// The summary's sums, its lines and their conditions, and the amount texts.

#include "reportcases.h"

#include "reports/summary.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace reporttest;

std::vector<std::string> labels(const std::vector<SummaryLine>& lines)
{
    std::vector<std::string> out;
    for (const SummaryLine& l : lines)
        out.push_back(l.label);
    return out;
}

TEST(CalcSummary, SumsEveryPointsTaxAndEachPenaltyByItsCode)
{
    const TimeLine tl = {
        Point("0BT ", "Start Interest", D(2016, 4, 15), "1000.00"),
        Point("PMT ", "Check", D(2016, 5, 1), "-100.00", "-50.00", "-25.00"),
        Point("FPP ", "Failure To Pay", D(2016, 5, 1), "0", "10.00"),
        Point("FFP ", "Failure To File", D(2016, 5, 1), "0", "20.00"),
        Point("PAR ", "Accuracy Rel", D(2016, 5, 1), "0", "30.00"),
        Point("PDP ", "PR Penalty", D(2016, 5, 1), "0", "40.00"),
        Point("N5P ", "", D(2016, 5, 1), "0", "1.00"),
        Point("N50 ", "", D(2016, 5, 1), "0", "2.00"),
        Point("SUP ", "", D(2016, 5, 1), "0", "3.00"),
        Point("FR1 ", "", D(2016, 5, 1), "0", "4.00"),
        Point("FR2 ", "", D(2016, 5, 1), "0", "5.00"),
        Point("POV ", "", D(2016, 5, 1), "0", "6.00"),
        Point("OTHC", "Charge", D(2016, 5, 1), "70.00", "60.00"),
        Point("DDD ", "PR Liability", D(2016, 5, 1), "500.00"),
        // Any other code adds its tax only.
        Point("XYZ ", "", D(2016, 5, 1), "7.00", "99.00"),
        Point("ZZSD", "Stop Interest", D(2016, 12, 31)),
    };
    SummarySums s;
    const Money total = CalcSummary(tl, InitInputs{}, s);
    EXPECT_EQ(s.unpaidTax, M("1477.00"));
    EXPECT_EQ(s.pmtsToPenalties, M("-50.00"));
    EXPECT_EQ(s.failureToPay, M("10.00"));
    EXPECT_EQ(s.failureToFile, M("20.00"));
    EXPECT_EQ(s.accuracyRelated, M("30.00"));
    EXPECT_EQ(s.payrollDeposit, M("40.00"));
    EXPECT_EQ(s.negligenceFlat, M("1.00"));
    EXPECT_EQ(s.negligenceTime, M("2.00"));
    EXPECT_EQ(s.understatement, M("3.00"));
    EXPECT_EQ(s.fraudFlat, M("4.00"));
    EXPECT_EQ(s.fraudTime, M("5.00"));
    EXPECT_EQ(s.overvaluation, M("6.00"));
    EXPECT_EQ(s.otherPenalties, M("60.00"));
    // 1477 + 10 + 20 + 30 + 40 + 21 + 60 - 50
    EXPECT_EQ(total, M("1608.00"));
}

TEST(CalcSummary, WalksTheWholeTimeLineEvenPastTheStopDate)
{
    const TimeLine tl = {
        Point("0BT ", "Start Interest", D(2016, 4, 15), "1000.00"),
        Point("ZZSD", "Stop Interest", D(2016, 12, 31)),
        Point("PMT ", "Late check", D(2017, 1, 15), "-400.00", "-10.00"),
    };
    SummarySums s;
    CalcSummary(tl, InitInputs{}, s);
    EXPECT_EQ(s.unpaidTax, M("600.00"));
    EXPECT_EQ(s.pmtsToPenalties, M("-10.00"));
}

TEST(SummaryLines, CaseWithoutPenaltiesChargesOrPaymentsShowsTaxInterestAndTotal)
{
    const CaseComputation comp = NewCase();
    const auto lines = SummaryLines(comp.timeline, comp.kase.init, comp.interest);
    EXPECT_EQ(lines, (std::vector<SummaryLine>{
                         {"Unpaid tax", M("10000.00")}, {"Interest", M("288.24")}, {"Total", M("10288.24")}}));
}

TEST(SummaryLines, PenaltiesSwitchedOffHideEveryPenaltyLineButOtherPenaltiesAndPayments)
{
    CaseComputation comp = EveryPenaltyCase();
    comp.kase.init.bAnyPenalties = kNo;
    const auto lines = SummaryLines(comp.timeline, comp.kase.init, comp.interest);
    EXPECT_EQ(labels(lines), (std::vector<std::string>{"Unpaid tax", "Interest", "Other penalties",
                                                       "Pmts allocated to penalties", "Total"}));
    // The total still counts every sum, shown or not.
    EXPECT_EQ(lines.back().amount, M("18286.57"));
}

TEST(SummaryLines, EachLineFollowsItsOwnFlag)
{
    CaseComputation comp = EveryPenaltyCase();
    InitInputs& in = comp.kase.init;
    in.bFtoFile = kNo;
    in.bNegTime = kNo;
    in.bFraudFlat = kNo;
    in.nDeposits = 0;
    in.nCharges = 0;
    in.nPmts = 0;
    EXPECT_EQ(labels(SummaryLines(comp.timeline, in, comp.interest)),
              (std::vector<std::string>{"Unpaid tax", "Interest", "Failure to pay penalty",
                                        "Accuracy related penalty", "5% Negligence penalty", "Overvaluation penalty",
                                        "Substantial understmt penalty", "Time dependent fraud pen", "Total"}));
}

TEST(SummaryLines, PaymentPartAppliedToPenaltiesShowsNegative)
{
    CaseComputation comp = NewCase();
    comp.kase.init.nPmts = 1;
    comp.timeline.insert(comp.timeline.begin() + 1,
                         Point("PMT ", "Check", D(2016, 6, 1), "-100.00", "-50.00"));
    const auto lines = SummaryLines(comp.timeline, comp.kase.init, comp.interest);
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[2], (SummaryLine{"Pmts allocated to penalties", M("-50.00")}));
    EXPECT_EQ(sFormatSummLine(lines[2].label, lines[2].amount), "Pmts allocated to penalties           -50.00");
}

TEST(SummaryText, AmountsAreRightAlignedInFourteenAndCutWhenLonger)
{
    EXPECT_EQ(sFormatSumm(M("0")), "          0.00");
    EXPECT_EQ(sFormatSumm(M("-1234.56")), "     -1,234.56");
    EXPECT_EQ(sFormatSumm(M("12345678.905")), " 12,345,678.91");
    EXPECT_EQ(sFormatSumm(M("1234567890.12")), "1,234,567,890.");
    EXPECT_EQ(sFormatSummLine("Interest", M("1.5")), "Interest                                1.50");
    EXPECT_EQ(sFormatSummLine("Interest", M("1.5")).size(), 44u);
}

}  // namespace
