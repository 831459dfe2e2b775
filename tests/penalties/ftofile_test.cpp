// Failure to file and failure to pay, I.R.C. §6651: month rows, the minimum
// amount, the increased rate, and the points that carry interest.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/compute.h"
#include "penalties/ftofile.h"

#include <gtest/gtest.h>

using namespace rwtest;
using rw::FtoRow;

namespace {

struct FtoRun {
    rw::TimeLine tl;
    std::vector<FtoRow> rows;
    Money filePoint() const  // the one "FFP " point
    {
        const auto ffp = PointsWithCode(tl, "FFP ");
        EXPECT_EQ(ffp.size(), 1u);
        return ffp.empty() ? M("-1") : ffp[0].cPen;
    }
};

FtoRun Fto(const rw::Case& c, const rw::FtfMinimumSchedule& minimums = Minimums2018())
{
    rw::USPenalties pen(minimums);
    FtoRun r;
    rw::BuildTimeLine(c, SimpleTable(0.05f), r.tl, &pen);
    r.rows = pen.ftoRows;
    return r;
}

// Due 4/15/2016, no extension, 10,000.00 owed from the due date to 12/31/2016;
// filed 9/20/2016, both penalties assessed 10/31/2016.
rw::Case Return2016(bool file, bool pay)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    c.init.bAnyPenalties = rw::kYes;
    c.init.bFtoFile = rw::ToFlag(file);
    c.init.bFtoPay = rw::ToFlag(pay);
    c.init.dtFiled = D(2016, 9, 20);
    c.init.dtFtoPayAssess = c.init.dtFtoFileAssess = D(2016, 10, 31);
    return c;
}

TEST(FailureToFileAndPay, WorkedExampleOfA2016Return)
{
    const FtoRun r = Fto(Return2016(true, true));
    // months from the day after the due date; 1/16/2017 lies past the stop date
    ASSERT_EQ(r.rows.size(), 9u);
    for (std::size_t i = 0; i < 9; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(r.rows[i].dtComp, rw::AddMonths(D(2016, 4, 16), static_cast<int>(i)));
        EXPECT_EQ(r.rows[i].cNetTax, M("10000"));
        EXPECT_EQ(r.rows[i].fFtpRate, 0.005f);
        EXPECT_EQ(r.rows[i].cFtp, M("50.00"));  // 10,000.00 x 0.5 %
        // filed 9/20: 4/16 to 8/16 count, five months of 10,000.00 x 5 %, less 50.00
        EXPECT_EQ(r.rows[i].cGrossFtf, i < 5 ? M("500.00") : Money());
        EXPECT_EQ(r.rows[i].cNetFtf, i < 5 ? M("450.00") : Money());
    }
    const auto ffp = PointsWithCode(r.tl, "FFP ");
    ASSERT_EQ(ffp.size(), 1u);
    EXPECT_EQ(ffp[0].cPen, M("2,250.00"));  // 5 x 450.00
    EXPECT_EQ(ffp[0].dtDate, D(2016, 4, 15));
    EXPECT_TRUE(ffp[0].sDesc.is("Failure To File"));
    // seven months (4/16 to 10/16) at the assessment, then each later month on its first day
    const auto fpp = PointsWithCode(r.tl, "FPP ");
    ASSERT_EQ(fpp.size(), 3u);
    EXPECT_EQ(fpp[0].dtDate, D(2016, 10, 31));
    EXPECT_EQ(fpp[0].cPen, M("350.00"));
    EXPECT_TRUE(fpp[0].sDesc.is("Failure To Pay"));
    EXPECT_EQ(fpp[1].dtDate, D(2016, 11, 16));
    EXPECT_EQ(fpp[2].dtDate, D(2016, 12, 16));
    EXPECT_EQ(fpp[2].cPen, M("50.00"));
}

// Returns due 4/15 with both penalties, at least the minimum when filed more
// than 60 days late. rows: months charged; first: the first month's net
// failure to file, which carries the whole minimum.
TEST(FailureToFileAndPay, MinimumOfAReturnFiledMoreThan60DaysLate)
{
    struct Want {
        const char* name;
        int year;
        const char* tax;
        Date filed;
        bool release2026;
        const char* penalty;
        int months;
        const char* first;
    };
    const Want wants[] = {
        // 300.00: 15.00 gross less 1.50 = 13.50 a month, 4 months (4/16 to 7/16) = 54.00;
        // filed 108 days late: at least the 205.00 of 2017
        {"tax300", 2017, "300.00", D(2017, 8, 1), false, "205.00", 4, "205.00"},
        // 150.00: 6.75 a month, 27.00; the minimum is the tax, 150.00
        {"tax150", 2017, "150.00", D(2017, 8, 1), false, "150.00", 4, "150.00"},
        // filed 6/14/2017, 60 days late: no minimum; 4/16 and 5/16 are charged, 2 x 13.50
        {"filed60DaysLate", 2017, "300.00", D(2017, 6, 14), false, "27.00", 2, "13.50"},
        {"filed61DaysLate", 2017, "300.00", D(2017, 6, 15), false, "205.00", 2, "205.00"},
        // due 2024, 1,000.00, filed 7/14/2024 (90 days): 3 x (50.00 - 5.00) = 135.00; the
        // release of late 2026 gives 485.00 for 2024 (the 2018 release would give 205.00)
        {"minimumOfTheRelease", 2024, "1,000.00", D(2024, 7, 14), true, "485.00", 3, "485.00"},
    };
    for (const Want& w : wants) {
        SCOPED_TRACE(w.name);
        rw::Case c = FederalCase(D(w.year, 4, 15), D(w.year, 12, 31), w.tax);
        c.init.bAnyPenalties = c.init.bFtoFile = c.init.bFtoPay = rw::kYes;
        c.init.dtFiled = w.filed;
        c.init.dtFtoPayAssess = c.init.dtFtoFileAssess = D(w.year, 12, 1);
        const FtoRun r = Fto(c, w.release2026 ? FixtureRelease().ftfMinimums : Minimums2018());
        EXPECT_EQ(r.filePoint(), M(w.penalty));
        Money total;
        int charged = 0;
        for (const FtoRow& row : r.rows) {
            total += row.cNetFtf;
            charged += row.cGrossFtf > Money() ? 1 : 0;
        }
        EXPECT_EQ(total, M(w.penalty));
        EXPECT_EQ(charged, w.months);
        EXPECT_EQ(r.rows[0].cNetFtf, M(w.first));
    }
}

TEST(FailureToFileAndPay, MinimumAmountByYearOfTheDueDate)
{
    // early 2018: 100.00 to 2008, 135.00 for 2009-2015, 205.00 from 2016
    for (const auto& [year, amount] : {std::pair{1990, "100.00"}, {2008, "100.00"}, {2009, "135.00"},
                                       {2015, "135.00"}, {2016, "205.00"}, {2025, "205.00"}})
        EXPECT_EQ(rw::FailToFileMinimum(Minimums2018(), year), M(amount)) << year;
    // late 2026 (its ftf_minimum.csv)
    for (const auto& [year, amount] : {std::pair{2008, "100.00"}, {2017, "205.00"}, {2019, "210.00"},
                                       {2022, "435.00"}, {2026, "525.00"}, {2040, "535.00"}})
        EXPECT_EQ(rw::FailToFileMinimum(FixtureRelease().ftfMinimums, year), M(amount)) << year;

    // a year the release does not list takes the nearest amount it lists, and says which
    const rw::FtfMinimumSchedule listed{{{2020, M("435.00"), "test"}, {2022, M("450.00"), "test"}}};
    const rw::FtfMinimumSchedule none;
    struct Want {
        const rw::FtfMinimumSchedule* schedule;
        int year;
        const char* amount;
        const char* note;
    };
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

TEST(FailureToFileAndPay, MonthsOfFailureToFileCountFromTheExtendedDueDate)
{
    struct Want {
        const char* name;
        Date extended, filed;
        std::size_t rows;
        const char* point;
        Date pointDate;
    };
    for (const Want& w : {
             // filed one day late: one month, 500.00, nothing to take off
             Want{"oneDayLate", D(2016, 4, 15), D(2016, 4, 16), 1, "500.00", D(2016, 4, 15)},
             // filed within the extension: nothing
             Want{"withinTheExtension", D(2016, 10, 15), D(2016, 10, 1), 0, "0", D(2016, 10, 15)},
         }) {
        SCOPED_TRACE(w.name);
        rw::Case c = Return2016(true, false);
        c.init.dtExtended = w.extended;
        c.init.dtFiled = w.filed;
        const FtoRun r = Fto(c);
        EXPECT_EQ(r.rows.size(), w.rows);
        EXPECT_EQ(r.filePoint(), M(w.point));
        EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].dtDate, w.pointDate);
        EXPECT_TRUE(PointsWithCode(r.tl, "FPP ").empty());
    }
    // both penalties, extended to 10/15, filed 11/20: failure to pay still runs
    // from 4/16; failure to file counts 10/16 and 11/16, 2 x 450.00
    rw::Case c = Return2016(true, true);
    c.init.dtExtended = D(2016, 10, 15);
    c.init.dtFiled = D(2016, 11, 20);
    const FtoRun r = Fto(c);
    ASSERT_EQ(r.rows.size(), 9u);
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_EQ(r.rows[i].cNetFtf, (i == 6 || i == 7) ? M("450.00") : Money()) << i;
    EXPECT_EQ(r.rows[6].dtComp, D(2016, 10, 16));
    EXPECT_EQ(r.filePoint(), M("900.00"));
    EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].dtDate, D(2016, 10, 15));
}

// §6651(d)(1): 0.5 % a month to 12/16/2016 (9 months, 4.5 %), from 1/16/2017
// 1 % a month while the total stays within 25 %: 20 months to 8/16/2018
// (24.5 %), then nothing. Without a start date: 25 months at 1 %, 25 %.
TEST(FailureToFileAndPay, IncreasedRateWhileTheTotalStaysWithinTwentyFivePerCent)
{
    for (const auto& [start, months, total] : {std::tuple{D(2017, 1, 1), 29u, "2,450.00"},
                                               std::tuple{rw::NoDate, 25u, "2,500.00"}}) {
        SCOPED_TRACE(months);
        rw::Case c = Return2016(false, true);
        c.init.tlStop.dtDate = D(2019, 12, 31);
        c.init.dtFtoPayAssess = D(2019, 12, 30);
        c.init.b6651d1 = rw::kYes;
        c.init.dt6651d1Start = start;
        const FtoRun r = Fto(c);
        ASSERT_EQ(r.rows.size(), months);
        const std::size_t halfPerCent = start.isNoDate() ? 0 : 9;
        for (std::size_t i = 0; i < months; ++i)
            EXPECT_EQ(r.rows[i].cFtp, i < halfPerCent ? M("50.00") : M("100.00")) << i;
        Money sum;
        for (const rw::TLPoint& p : PointsWithCode(r.tl, "FPP "))
            sum += p.cPen;
        EXPECT_EQ(sum, M(total));
    }
}

TEST(FailureToFileAndPay, NetUnpaidTaxBelowZeroCountsAsZeroOnlyForFailureToPay)
{
    rw::Case c = Return2016(false, true);
    c.init.tlStart.cTax = M("1,000.00");
    AddPayment(c, D(2016, 5, 1), {.tax = "1,500.00"});
    rw::TimeLine tl;
    rw::BuildTimeLine(c, SimpleTable(0.05f), tl, nullptr);
    for (const auto& [pay, netTax] : {std::pair{rw::kYes, "0"}, {rw::kNo, "-500.00"}}) {
        c.init.bFtoPay = pay;
        rw::FtoTable table;
        table.rows[0].dtComp = D(2016, 5, 16);
        rw::GetFtoPayTaxBal(c, tl, table, 0);
        EXPECT_EQ(table.rows[0].cNetTax, M(netTax));
        EXPECT_EQ(table.rows[0].cFtp, Money());
    }
}

TEST(FailureToFileAndPay, OnlyMonthRowsThatWereMadeCount)
{
    // Stop 6/20/2016, no extended due date: rows 4/16, 5/16, 6/16 (and 7/16,
    // past it); the rows never made are no months: 3 x 500.00. An extended due
    // date before 7/19/1984 with a later assessment dates the point 7/19/1984.
    rw::Case c = Return2016(true, false);
    c.init.dtExtended = rw::NoDate;
    c.init.tlStop.dtDate = D(2016, 6, 20);
    c.init.dtFiled = D(2016, 12, 31);
    c.init.dtFtoFileAssess = D(2016, 8, 1);
    FtoRun r = Fto(c);
    EXPECT_EQ(r.rows.size(), 3u);
    EXPECT_EQ(r.filePoint(), M("1,500.00"));
    EXPECT_EQ(PointsWithCode(r.tl, "FFP ")[0].dtDate, D(1984, 7, 19));

    // Stop before the due date, filed 108 days late: with failure to file only,
    // no month row and no minimum.
    c = Return2016(true, false);
    c.init.tlStart.dtDate = D(2016, 1, 1);
    c.init.tlStop.dtDate = D(2016, 3, 31);
    c.init.dtFiled = D(2016, 8, 1);
    EXPECT_TRUE(Fto(c).rows.empty());
    EXPECT_EQ(Fto(c).filePoint(), Money());

    // With failure to pay too, row 0 carries a month of failure to pay (50.00):
    // no failure-to-file month counts, yet the minimum of 2016 applies; the
    // month begins after the assessment date, so it has its own point.
    c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(2016, 3, 1);
    r = Fto(c);
    ASSERT_EQ(r.rows.size(), 1u);
    EXPECT_EQ(r.rows[0].cFtp, M("50.00"));
    EXPECT_EQ(r.filePoint(), M("205.00"));
    const auto fpp = PointsWithCode(r.tl, "FPP ");
    ASSERT_EQ(fpp.size(), 2u);
    EXPECT_EQ(fpp[0].dtDate, D(2016, 3, 1));
    EXPECT_EQ(fpp[0].cPen, Money());
    EXPECT_EQ(fpp[1].dtDate, D(2016, 4, 16));
}

TEST(FailureToFileAndPay, InterestOnTheFailureToFilePenaltyStarts)
{
    struct Want {
        Date extended, assess, start;
    };
    for (const Want& w : {Want{D(1983, 4, 15), D(1984, 3, 1), D(1984, 3, 1)},    // assessed before 7/19/1984
                          Want{D(1983, 4, 15), D(1985, 9, 1), D(1984, 7, 19)},   // assessed later: 7/19/1984
                          Want{D(1984, 7, 19), D(1985, 9, 1), D(1984, 7, 19)},   // extended to 7/19/1984 itself
                          Want{D(1990, 10, 15), D(1991, 1, 1), D(1990, 10, 15)}}) {  // later: the extended due date
        rw::Case c = Return2016(true, false);
        c.init.dtExtended = w.extended;
        EXPECT_EQ(rw::GetFailToFileIntStart(c, w.assess), w.start) << w.extended << " " << w.assess;
    }
}

// Quarter ending 6/30/2016, return due 7/31/2016: liabilities of 100.00 due
// 4/15, 5/16 and 6/15 (1,000.00 due 8/15 comes after), 250.00 paid 5/1: base
// 50.00, 2.50 a month for 8/1, 9/1 and 10/1: 7.50. Filed 92 days late, but a
// payroll return has no minimum.
TEST(FailureToFileAndPay, PayrollReturnBaseIsTheLiabilitiesDueByTheDueDateLessPayments)
{
    rw::Case c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = c.init.bFtoFile = rw::kYes;
    c.init.dtFiled = D(2016, 10, 31);
    for (const auto& [due, amount] : {std::pair{D(2016, 4, 15), "100.00"}, {D(2016, 5, 16), "100.00"},
                                      {D(2016, 6, 15), "100.00"}, {D(2016, 8, 15), "1,000.00"}})
        AddDeposit(c, due, amount, D(2016, 11, 1));
    AddPayment(c, D(2016, 5, 1), {.tax = "250.00"});
    const FtoRun r = Fto(c);
    EXPECT_EQ(rw::GetFtoFBase(c, r.tl), M("50.00"));
    EXPECT_EQ(r.filePoint(), M("7.50"));
}

}  // namespace
