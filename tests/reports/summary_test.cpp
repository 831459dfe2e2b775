// The summary's sums by code, which lines it shows, and its amount column.

#include "reportcases.h"

#include "reports/summary.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace rw;
using namespace reporttest;

TEST(CalcSummary, SumsEveryPointsTaxAndEachPenaltyByItsCode)
{
    const Date d = D(2016, 5, 1);
    const TimeLine tl = {
        Point("0BT ", D(2016, 4, 15), "1000.00"), Point("PMT ", d, "-100.00", "-50.00", "-25.00"),
        Point("FPP ", d, "0", "10.00"),           Point("FFP ", d, "0", "20.00"),
        Point("PAR ", d, "0", "30.00"),           Point("PDP ", d, "0", "40.00"),
        Point("N5P ", d, "0", "1.00"),            Point("N50 ", d, "0", "2.00"),
        Point("SUP ", d, "0", "3.00"),            Point("FR1 ", d, "0", "4.00"),
        Point("FR2 ", d, "0", "5.00"),            Point("POV ", d, "0", "6.00"),
        Point("OTHC", d, "70.00", "60.00"),       Point("DDD ", d, "500.00"),
        Point("XYZ ", d, "7.00", "99.00"),  // any other code adds its tax only
        Point("ZZSD", D(2016, 12, 31)),
        Point("PMT ", D(2017, 1, 15), "-400.00", "-10.00"),  // past the stop date: counted
    };
    SummarySums s;
    const Money total = CalcSummary(tl, InitInputs{}, s);
    const std::pair<Money SummarySums::*, const char*> sums[] = {
        {&SummarySums::unpaidTax, "1077.00"},  // 1000 - 100 + 70 + 500 + 7 - 400
        {&SummarySums::pmtsToPenalties, "-60.00"}, {&SummarySums::failureToPay, "10.00"},
        {&SummarySums::failureToFile, "20.00"},    {&SummarySums::accuracyRelated, "30.00"},
        {&SummarySums::payrollDeposit, "40.00"},   {&SummarySums::negligenceFlat, "1.00"},
        {&SummarySums::negligenceTime, "2.00"},    {&SummarySums::understatement, "3.00"},
        {&SummarySums::fraudFlat, "4.00"},         {&SummarySums::fraudTime, "5.00"},
        {&SummarySums::overvaluation, "6.00"},     {&SummarySums::otherPenalties, "60.00"}};
    for (const auto& [sum, want] : sums)
        EXPECT_EQ(s.*sum, M(want)) << want;
    EXPECT_EQ(total, M("1198.00"));  // 1077 + 181 of penalties - 60
}

TEST(SummaryLines, FollowTheFlagsAndTheTotalCountsEverySum)
{
    const std::pair<std::function<void(InitInputs&)>, std::vector<std::string>> rows[] = {
        {[](InitInputs& in) { in.bAnyPenalties = kNo; },
         {"Unpaid tax", "Interest", "Other penalties", "Pmts allocated to penalties", "Total"}},
        {[](InitInputs& in) {
             in.bFtoFile = in.bNegTime = in.bFraudFlat = kNo;
             in.nDeposits = in.nCharges = in.nPmts = 0;
         },
         {"Unpaid tax", "Interest", "Failure to pay penalty", "Accuracy related penalty", "5% Negligence penalty",
          "Overvaluation penalty", "Substantial understmt penalty", "Time dependent fraud pen", "Total"}}};
    for (const auto& [change, labels] : rows) {
        CaseComputation comp = Computation("everypenalty");
        change(comp.kase.init);
        const auto lines = SummaryLines(comp.timeline, comp.kase.init, comp.interest);
        std::vector<std::string> shown;
        for (const SummaryLine& l : lines)
            shown.push_back(l.label);
        EXPECT_EQ(shown, labels);
        // 11,900.00 tax + 1,234.57 interest + 2,250 + 500 + 2,000 + 252 + 200 - 50
        EXPECT_EQ(lines.back().amount, M("18286.57"));
    }
}

TEST(SummaryText, AmountsRightAlignedInFourteenAndCutWhenLonger)
{
    EXPECT_EQ(sFormatSumm(M("0")), "          0.00");
    EXPECT_EQ(sFormatSumm(M("-1234.56")), "     -1,234.56");
    EXPECT_EQ(sFormatSumm(M("12345678.905")), " 12,345,678.91");
    EXPECT_EQ(sFormatSumm(M("1234567890.12")), "1,234,567,890.");
    EXPECT_EQ(sFormatSummLine("Interest", M("1.5")), "Interest" + std::string(22, ' ') + "          1.50");
}

}  // namespace
