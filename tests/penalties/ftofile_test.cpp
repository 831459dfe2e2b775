// Failure to file and failure to pay, I.R.C. §6651: month rows, the minimum
// amount, the increased rate, and the points that carry interest.

#include "penalties/compute.h"
#include "penalties/ftofile.h"

#include "pentest.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;
using rw::FtoRow;
using rw::TimeLine;

struct FtoRun {
    TimeLine tl;
    std::vector<FtoRow> rows;
};

// Builds the time line with the penalty calculators, as every computation does.
FtoRun compute(const rw::Case& c, const rw::FtfMinimumSchedule& minimums = rwtest::Minimums2018())
{
    rw::USPenalties pen(minimums);
    FtoRun r;
    rw::BuildTimeLine(c, SimpleTable(0.05f), r.tl, &pen);
    r.rows = pen.ftoRows;
    return r;
}

Money sumPen(const std::vector<rw::TLPoint>& pts)
{
    Money s;
    for (const auto& p : pts)
        s += p.cPen;
    return s;
}

// Due 4/15/2016, no extension, 10,000.00 owed from the due date, stop 12/31/2016.
rw::Case return2016(bool file, bool pay)
{
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10,000.00");
    c.init.bAnyPenalties = rw::kYes;
    c.init.bFtoFile = rw::ToFlag(file);
    c.init.bFtoPay = rw::ToFlag(pay);
    c.init.dtFiled = D(9, 20, 2016);
    c.init.dtFtoPayAssess = D(10, 31, 2016);
    c.init.dtFtoFileAssess = D(10, 31, 2016);
    return c;
}

TEST(FailureToFileAndPay, WorkedExampleOfA2016Return)
{
    const FtoRun r = compute(return2016(true, true));
    // Months from the day after the due date; 1/16/2017 lies past the stop date.
    ASSERT_EQ(r.rows.size(), 9u);
    for (std::size_t i = 0; i < 9; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(r.rows[i].dtComp, rw::AddMonths(D(4, 16, 2016), static_cast<int>(i)));
        EXPECT_EQ(r.rows[i].cNetTax, M("10000"));
        EXPECT_EQ(r.rows[i].fFtpRate, 0.005f);
        EXPECT_EQ(r.rows[i].cFtp, M("50.00"));  // 10,000.00 x 0.5 %
        // Filed 9/20: 4/16 to 8/16 count (five months); 9/16 would be the sixth.
        EXPECT_EQ(r.rows[i].cGrossFtf, i < 5 ? M("500.00") : Money());  // 10,000.00 x 5 %
        EXPECT_EQ(r.rows[i].cNetFtf, i < 5 ? M("450.00") : Money());    // 500.00 - 50.00
    }
    EXPECT_EQ(r.rows[8].dtComp, D(12, 16, 2016));

    const auto ffp = PointsWithCode(r.tl, "FFP ");
    ASSERT_EQ(ffp.size(), 1u);
    EXPECT_EQ(ffp[0].cPen, M("2,250.00"));  // 5 x 450.00
    EXPECT_EQ(ffp[0].dtDate, D(4, 15, 2016));
    EXPECT_TRUE(ffp[0].sDesc.is("Failure To File"));

    // Seven months (4/16 to 10/16) at the assessment, then each later month on its first day.
    const auto fpp = PointsWithCode(r.tl, "FPP ");
    ASSERT_EQ(fpp.size(), 3u);
    EXPECT_EQ(fpp[0].dtDate, D(10, 31, 2016));
    EXPECT_EQ(fpp[0].cPen, M("350.00"));
    EXPECT_EQ(fpp[1].dtDate, D(11, 16, 2016));
    EXPECT_EQ(fpp[1].cPen, M("50.00"));
    EXPECT_EQ(fpp[2].dtDate, D(12, 16, 2016));
    EXPECT_EQ(fpp[2].cPen, M("50.00"));
    EXPECT_TRUE(fpp[0].sDesc.is("Failure To Pay"));
}

struct MinimumCase {
    const char* name;
    const char* tax;
    Date filed;
    const char* penalty;       // the "FFP " point
    int months;                // rows with a positive net failure to file before the minimum
    const char* firstRowNet;   // the first such row after the minimum
};

class FailureToFileMinimum : public ::testing::TestWithParam<MinimumCase> {};

TEST_P(FailureToFileMinimum, ReturnDue2017)
{
    const MinimumCase& m = GetParam();
    rw::Case c = Federal(D(4, 15, 2017), D(4, 15, 2017), D(12, 31, 2017), m.tax);
    c.init.bAnyPenalties = c.init.bFtoFile = c.init.bFtoPay = rw::kYes;
    c.init.dtFiled = m.filed;
    c.init.dtFtoPayAssess = D(12, 1, 2017);
    const FtoRun r = compute(c);
    const auto ffp = PointsWithCode(r.tl, "FFP ");
    ASSERT_EQ(ffp.size(), 1u);
    EXPECT_EQ(ffp[0].cPen, M(m.penalty));
    // The rows still add up to the point: the first month carries it all.
    Money rowsTotal;
    for (const FtoRow& row : r.rows)
        rowsTotal += row.cNetFtf;
    EXPECT_EQ(rowsTotal, M(m.penalty));
    EXPECT_EQ(r.rows[0].cNetFtf, M(m.firstRowNet));
    int charged = 0;
    for (const FtoRow& row : r.rows)
        charged += row.cGrossFtf > Money() ? 1 : 0;
    EXPECT_EQ(charged, m.months);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FailureToFileMinimum,
    ::testing::Values(
        // 300.00: 15.00 gross less 1.50 = 13.50 a month, 4 months (4/16 to 7/16) = 54.00;
        // filed 108 days late, so at least 205.00 (the base is more).
        MinimumCase{"Tax300", "300.00", D(8, 1, 2017), "205.00", 4, "205.00"},
        // 150.00: 6.75 a month, 27.00; the minimum is the base, 150.00.
        MinimumCase{"Tax150", "150.00", D(8, 1, 2017), "150.00", 4, "150.00"},
        // Filed 6/10/2017, 56 days late: no minimum; 4/16 and 5/16 are charged, 2 x 13.50.
        MinimumCase{"FiledWithin60Days", "300.00", D(6, 10, 2017), "27.00", 2, "13.50"}),
    [](const auto& p) { return std::string(p.param.name); });

TEST(FailureToFileAndPay, MinimumAmountByYearOfTheDueDate)
{
    const rw::FtfMinimumSchedule& early2018 = rwtest::Minimums2018();
    EXPECT_EQ(rw::FailToFileMinimum(early2018, 1990), M("100.00"));
    EXPECT_EQ(rw::FailToFileMinimum(early2018, 2008), M("100.00"));
    EXPECT_EQ(rw::FailToFileMinimum(early2018, 2009), M("135.00"));
    EXPECT_EQ(rw::FailToFileMinimum(early2018, 2015), M("135.00"));
    EXPECT_EQ(rw::FailToFileMinimum(early2018, 2016), M("205.00"));
    EXPECT_EQ(rw::FailToFileMinimum(early2018, 2025), M("205.00"));

    // The release of late 2026 follows the later statutes and inflation
    // adjustments (its ftf_minimum.csv).
    const rw::FtfMinimumSchedule& shipped = rwtest::FixtureRelease().ftfMinimums;
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2008), M("100.00"));
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2017), M("205.00"));
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2019), M("210.00"));
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2022), M("435.00"));
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2024), M("485.00"));
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2026), M("525.00"));
    EXPECT_EQ(rw::FailToFileMinimum(shipped, 2040), M("535.00"));

}

// A year the release does not list takes the nearest amount it lists, and
// the note (shown in the failure-to-file analysis) says which.
TEST(FailureToFileAndPay, MinimumForAYearTheReleaseDoesNotList)
{
    const rw::FtfMinimumSchedule listed{{{2020, M("435.00"), "test"}, {2022, M("450.00"), "test"}}};
    struct Want {
        const rw::FtfMinimumSchedule* schedule;
        int year;
        const char* amount;
        const char* note;
    };
    const rw::FtfMinimumSchedule none;
    for (const Want& w : {
             Want{&listed, 2021, "435.00", ""},
             Want{&listed, 2022, "450.00", ""},
             Want{&listed, 2025, "450.00",
                  "Minimum failure-to-file penalty: the release of the rates lists amounts through 2022; the 2022 "
                  "amount, 450.00, was applied to this return due in 2025."},
             Want{&listed, 2019, "435.00",
                  "Minimum failure-to-file penalty: the release of the rates lists amounts from 2020; its earliest, "
                  "435.00, was applied to this return due in 2019."},
             Want{&none, 2019, "0", "The release of the rates lists no minimum failure-to-file penalty; none was applied."},
         }) {
        SCOPED_TRACE(w.year);
        std::string note = "stale";
        EXPECT_EQ(rw::FailToFileMinimum(*w.schedule, w.year, &note), M(w.amount));
        EXPECT_EQ(note, w.note);
    }
}

// Due 4/15/2024, tax 1,000.00, no payments, filed 90 days late (7/14/2024).
// The months charged begin 4/16, 5/16 and 6/16 (7/16 is after the filing):
// 3 x 5 % x 1,000.00 = 150.00, under either minimum, and the tax is above
// both, so the point is the minimum of the release: 485.00 for a return due
// in 2024 by the release of late 2026, 205.00 (the 2016 amount) by the 2018 one.
TEST(FailureToFileAndPay, MinimumComesWithTheReleaseOfTheRates)
{
    rw::Case c = Federal(D(4, 15, 2024), D(4, 15, 2024), D(12, 31, 2024), "1,000.00");
    c.init.bAnyPenalties = c.init.bFtoFile = rw::kYes;
    c.init.dtFiled = D(4, 15, 2024) + 90;
    ASSERT_EQ(c.init.dtFiled, D(7, 14, 2024));
    c.init.dtFtoFileAssess = D(9, 1, 2024);

    for (const auto& [release, expected] :
         {std::pair{&rwtest::FixtureRelease(), "485.00"}, std::pair{&rwtest::Release2018(), "205.00"}}) {
        SCOPED_TRACE(release->name);
        const FtoRun r = compute(c, release->ftfMinimums);
        const auto ffp = PointsWithCode(r.tl, "FFP ");
        ASSERT_EQ(ffp.size(), 1u);
        EXPECT_EQ(ffp[0].cPen, M(expected));
        int charged = 0;
        for (const FtoRow& row : r.rows)
            charged += row.cGrossFtf == M("50.00") ? 1 : 0;
        EXPECT_EQ(charged, 3);
        EXPECT_EQ(r.rows[0].cNetFtf, M(expected));
    }
}

TEST(FailureToFileAndPay, FiledOneDayLateIsOneMonth)
{
    rw::Case c = return2016(true, false);
    c.init.dtFiled = D(4, 16, 2016);
    const FtoRun r = compute(c);
    ASSERT_EQ(r.rows.size(), 1u);
    EXPECT_EQ(r.rows[0].cGrossFtf, M("500.00"));
    EXPECT_EQ(r.rows[0].cNetFtf, M("500.00"));  // no failure to pay to take off
    EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].cPen, M("500.00"));
    EXPECT_TRUE(PointsWithCode(r.tl, "FPP ").empty());
}

TEST(FailureToFileAndPay, ExtendedReturnCountsFromTheExtendedDueDate)
{
    rw::Case c = return2016(true, true);
    c.init.dtExtended = D(10, 15, 2016);
    c.init.dtFiled = D(11, 20, 2016);
    const FtoRun r = compute(c);
    // Failure to pay still runs from 4/16; failure to file counts 10/16 and 11/16.
    ASSERT_EQ(r.rows.size(), 9u);
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_EQ(r.rows[i].cNetFtf, (i == 6 || i == 7) ? M("450.00") : Money()) << i;
    EXPECT_EQ(r.rows[6].dtComp, D(10, 16, 2016));
    const auto ffp = PointsWithCode(r.tl, "FFP ");
    EXPECT_EQ(ffp[0].cPen, M("900.00"));
    EXPECT_EQ(ffp[0].dtDate, D(10, 15, 2016));
}

TEST(FailureToFileAndPay, ReturnFiledWithinItsExtensionOwesNothing)
{
    rw::Case c = return2016(true, false);
    c.init.dtExtended = D(10, 15, 2016);
    c.init.dtFiled = D(10, 1, 2016);
    const FtoRun r = compute(c);
    EXPECT_TRUE(r.rows.empty());
    const auto ffp = PointsWithCode(r.tl, "FFP ");
    ASSERT_EQ(ffp.size(), 1u);
    EXPECT_EQ(ffp[0].cPen, Money());
}

TEST(FailureToFileAndPay, IncreasedRateUpToTwentyFourAndAHalfPercent)
{
    rw::Case c = return2016(false, true);
    c.init.tlStop.dtDate = D(12, 31, 2019);
    c.init.dtFtoPayAssess = D(12, 30, 2019);
    c.init.b6651d1 = rw::kYes;
    c.init.dt6651d1Start = D(1, 1, 2017);
    const FtoRun r = compute(c);
    // 4/16/2016 to 12/16/2016 at 0.5 % (9 months, 4.5 %); from 1/16/2017 1 % a month
    // while the total stays within 25 %: 20 months to 24.5 % (8/16/2018); then 0.
    ASSERT_EQ(r.rows.size(), 29u);
    for (std::size_t i = 0; i < 29; ++i) {
        EXPECT_EQ(r.rows[i].fFtpRate, i < 9 ? 0.005f : 0.01f) << i;
        EXPECT_EQ(r.rows[i].cFtp, i < 9 ? M("50.00") : M("100.00")) << i;
    }
    EXPECT_EQ(r.rows[28].dtComp, D(8, 16, 2018));
    // 10,000.00 x 24.5 %.
    EXPECT_EQ(sumPen(PointsWithCode(r.tl, "FPP ")), M("2,450.00"));
}

TEST(FailureToFileAndPay, IncreasedRateWithoutAStartDateChargesEveryMonthAtOnePercent)
{
    rw::Case c = return2016(false, true);
    c.init.tlStop.dtDate = D(12, 31, 2019);
    c.init.dtFtoPayAssess = D(12, 30, 2019);
    c.init.b6651d1 = rw::kYes;
    c.init.dt6651d1Start = rw::NoDate;
    const FtoRun r = compute(c);
    // 25 months at 1 % reach exactly 25 %.
    ASSERT_EQ(r.rows.size(), 25u);
    EXPECT_EQ(sumPen(PointsWithCode(r.tl, "FPP ")), M("2,500.00"));
}

TEST(FailureToFileAndPay, NetUnpaidTaxBelowZeroCountsAsZeroOnlyForFailureToPay)
{
    rw::Case c = return2016(false, true);
    c.init.tlStart.cTax = M("1,000.00");
    AddPayment(c, D(5, 1, 2016), "1,500.00");
    TimeLine tl;
    rw::BuildTimeLine(c, SimpleTable(0.05f), tl, nullptr);
    rw::FtoTable table;
    table.rows[0].dtComp = D(5, 16, 2016);
    rw::GetFtoPayTaxBal(c, tl, table, 0);
    EXPECT_EQ(table.rows[0].cNetTax, Money());  // 1,000.00 - 1,500.00 taken as 0
    EXPECT_EQ(table.rows[0].cFtp, Money());

    c.init.bFtoPay = rw::kNo;
    table = {};
    table.rows[0].dtComp = D(5, 16, 2016);
    rw::GetFtoPayTaxBal(c, tl, table, 0);
    EXPECT_EQ(table.rows[0].cNetTax, M("-500.00"));  // kept as summed
    EXPECT_EQ(table.rows[0].fFtpRate, 0.0f);
}

TEST(FailureToFileAndPay, OnlyMonthRowsThatWereMadeCountForFailureToFile)
{
    // No extended due date: every row counts from the first one. The stop date
    // makes rows 4/16, 5/16, 6/16 (and 7/16, past it); the never-made rows, dated
    // day 0, are no months of the return.
    rw::Case c = return2016(true, false);
    c.init.dtExtended = rw::NoDate;
    c.init.tlStop.dtDate = D(6, 20, 2016);
    c.init.dtFiled = D(12, 31, 2016);
    c.init.dtFtoFileAssess = D(8, 1, 2016);
    const FtoRun r = compute(c);
    ASSERT_EQ(r.rows.size(), 3u);
    const auto ffp = PointsWithCode(r.tl, "FFP ");
    EXPECT_EQ(ffp[0].cPen, M("1,500.00"));  // 3 x 500.00
    // Extended due date before 7/19/1984 and an assessment after it: 7/19/1984.
    EXPECT_EQ(ffp[0].dtDate, D(7, 19, 1984));
}

TEST(FailureToFileAndPay, NoMonthRowsMeansNoMinimum)
{
    // Stop date before the due date, failure to file only: row 0 lies past the
    // stop date and carries nothing. The return is 108 days late, but with no
    // month rows the point is 0.
    rw::Case c = return2016(true, false);
    c.init.tlStart.dtDate = D(1, 1, 2016);
    c.init.tlStop.dtDate = D(3, 31, 2016);
    c.init.dtFiled = D(8, 1, 2016);
    const FtoRun r = compute(c);
    EXPECT_TRUE(r.rows.empty());
    EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].cPen, Money());
}

TEST(FailureToFileAndPay, RowsWithoutFailureToFileStillTakeTheMinimum)
{
    // Both penalties: row 0 carries one month of failure to pay (50.00) although
    // the stop date is before the due date; no failure-to-file month counts, but
    // the return is 108 days late, so the minimum of 2016 applies.
    rw::Case c = return2016(true, true);
    c.init.tlStart.dtDate = D(1, 1, 2016);
    c.init.tlStop.dtDate = D(3, 31, 2016);
    c.init.dtFiled = D(8, 1, 2016);
    c.init.dtFtoPayAssess = D(3, 1, 2016);
    const FtoRun r = compute(c);
    ASSERT_EQ(r.rows.size(), 1u);
    EXPECT_EQ(r.rows[0].dtComp, D(4, 16, 2016));
    EXPECT_EQ(r.rows[0].cFtp, M("50.00"));
    EXPECT_EQ(r.rows[0].cNetFtf, Money());
    EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].cPen, M("205.00"));
    // The month begins after the assessment date: its own point.
    const auto fpp = PointsWithCode(r.tl, "FPP ");
    ASSERT_EQ(fpp.size(), 2u);
    EXPECT_EQ(fpp[0].cPen, Money());
    EXPECT_EQ(fpp[0].dtDate, D(3, 1, 2016));
    EXPECT_EQ(fpp[1].dtDate, D(4, 16, 2016));
}

TEST(FailureToFileAndPay, InterestStartOnTheFailureToFilePenalty)
{
    struct Row {
        Date extended, assess, expected;
    };
    const Row rows[] = {
        {D(4, 15, 1983), D(3, 1, 1984), D(3, 1, 1984)},    // assessed before 7/19/1984
        {D(4, 15, 1983), D(9, 1, 1985), D(7, 19, 1984)},   // assessed later: 7/19/1984
        {D(7, 19, 1984), D(9, 1, 1985), D(7, 19, 1984)},   // extended to 7/19/1984 itself
        {D(10, 15, 1990), D(1, 1, 1991), D(10, 15, 1990)}, // later returns: the extended due date
    };
    for (const Row& row : rows) {
        rw::Case c = return2016(true, false);
        c.init.dtExtended = row.extended;
        EXPECT_EQ(rw::GetFailToFileIntStart(c, row.assess), row.expected) << row.extended << " " << row.assess;
    }
}

TEST(FailureToFileAndPay, PayrollReturnBaseIsTheLiabilitiesDueByTheDueDateLessPayments)
{
    // Quarter ending 6/30/2016, return due 7/31/2016: deposits of 100.00 on 4/15,
    // 5/16 and 6/15 (and one of 1,000.00 due 8/15, after the due date), 250.00
    // paid on 5/1. Base 300.00 - 250.00 = 50.00; five percent is 2.50 a month.
    rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = c.init.bFtoFile = rw::kYes;
    c.init.dtFiled = D(10, 31, 2016);
    AddDeposit(c, D(4, 15, 2016), "100.00", D(11, 1, 2016));
    AddDeposit(c, D(5, 16, 2016), "100.00", D(11, 1, 2016));
    AddDeposit(c, D(6, 15, 2016), "100.00", D(11, 1, 2016));
    AddDeposit(c, D(8, 15, 2016), "1,000.00", D(11, 1, 2016));
    AddPayment(c, D(5, 1, 2016), "250.00");
    const FtoRun r = compute(c);
    EXPECT_EQ(rw::GetFtoFBase(c, r.tl), M("50.00"));
    // 8/1, 9/1 and 10/1 are charged: 7.50. Filed 92 days late, but a payroll
    // return has no minimum amount.
    EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].cPen, M("7.50"));
}

}  // namespace
