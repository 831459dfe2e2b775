// Failure to file and failure to pay, I.R.C. §6651: month rows, the minimum
// amount, the increased rate, and the points that carry interest.
#include "support/casebuilder.h"
#include "support/releases.h"

#include "penalties/compute.h"
#include "penalties/ftofile.h"

#include <gtest/gtest.h>

using namespace rwtest;
using Texts = std::vector<std::string>;

namespace {

struct FtoRun {
    rw::TimeLine tl;
    std::vector<rw::FtoRow> rows;
    // The month rows as "first day: unpaid tax, failure to pay, gross / net failure to file".
    Texts months() const
    {
        Texts out;
        for (const rw::FtoRow& r : rows)
            out.push_back(rw::FormatShortDate(r.dtComp) + ": " + rw::FormatMoney(r.cNetTax) + ", "
                          + rw::FormatMoney(r.cFtp) + ", " + rw::FormatMoney(r.cGrossFtf) + " / "
                          + rw::FormatMoney(r.cNetFtf));
        return out;
    }
    // The points of a code as "date amount".
    Texts points(std::string_view code) const
    {
        Texts out;
        for (const rw::TLPoint& p : PointsWithCode(tl, code))
            out.push_back(rw::FormatShortDate(p.dtDate) + " " + rw::FormatMoney(p.cPen));
        return out;
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

// Months from the day after the due date to the stop date (1/16/2017 lies
// past it): failure to pay 10,000.00 x 0.5 % = 50.00 a month; failure to file
// for 4/16 to 8/16 (filed 9/20), 10,000.00 x 5 % = 500.00 less 50.00. The
// failure-to-file point is 5 x 450.00 on the due date; failure to pay is
// seven months at the assessment, then each later month on its first day.
TEST(FailureToFileAndPay, WorkedExampleOfA2016Return)
{
    const FtoRun r = Fto(Return2016(true, true));
    Texts months;
    for (const char* day : {"4/16", "5/16", "6/16", "7/16", "8/16"})
        months.push_back(std::string(day) + "/2016: 10,000.00, 50.00, 500.00 / 450.00");
    for (const char* day : {"9/16", "10/16", "11/16", "12/16"})
        months.push_back(std::string(day) + "/2016: 10,000.00, 50.00, 0.00 / 0.00");
    EXPECT_EQ(r.months(), months);
    EXPECT_EQ(r.rows[0].fFtpRate, 0.005f);
    EXPECT_EQ(r.points("FFP "), Texts{"4/15/2016 2,250.00"});
    EXPECT_EQ(r.points("FPP "),
              (Texts{"10/31/2016 350.00", "11/16/2016 50.00", "12/16/2016 50.00"}));
    EXPECT_TRUE(PointsWithCode(r.tl, "FFP ")[0].sDesc.is("Failure To File"));
    EXPECT_TRUE(PointsWithCode(r.tl, "FPP ")[0].sDesc.is("Failure To Pay"));
}

// Returns due 4/15 with both penalties: at least the minimum when filed more
// than 60 days late, carried by the first month.
// A month's unpaid tax is what was owed before that day's payments; a month
// beginning on the assessment date goes into the assessment's point. Paid
// 4,000.00 on 5/16 and assessed that day: 4/16 and 5/16 on 10,000.00 (50.00
// each, together on 5/16), 6/16 on 6,000.00 (30.00).
TEST(FailureToFileAndPay, EventsOnAMonthsFirstDay)
{
    rw::Case c = Return2016(false, true);
    c.init.dtFtoPayAssess = D(2016, 5, 16);
    AddPayment(c, D(2016, 5, 16), {.tax = "4,000.00"});
    const FtoRun r = Fto(c);
    ASSERT_GE(r.months().size(), 3u);
    EXPECT_TRUE(r.months()[1].starts_with("5/16/2016: 10,000.00, 50.00")) << r.months()[1];
    EXPECT_TRUE(r.months()[2].starts_with("6/16/2016: 6,000.00, 30.00")) << r.months()[2];
    EXPECT_EQ(r.points("FPP ").at(0), "5/16/2016 100.00");
}

TEST(FailureToFileAndPay, MinimumOfAReturnFiledMoreThan60DaysLate)
{
    const rw::FtfMinimumSchedule* release2018 = &Minimums2018();
    for (const auto& [year, tax, filed, minimums, netFailureToFile] :
         {// 300.00: 15.00 gross less 1.50 = 13.50 a month for 4/16 to 7/16, 54.00;
          // filed 108 days late: the 205.00 of 2017 instead
          std::tuple{2017, "300.00", D(2017, 8, 1), release2018,
                     Texts{"205.00", "0.00", "0.00", "0.00"}},
          // 150.00: 6.75 a month, 27.00; the minimum is then the tax
          {2017, "150.00", D(2017, 8, 1), release2018, Texts{"150.00", "0.00", "0.00", "0.00"}},
          // filed 6/14, 60 days late: no minimum, 4/16 and 5/16 at 13.50; 6/15 is 61 days
          {2017, "300.00", D(2017, 6, 14), release2018, Texts{"13.50", "13.50"}},
          {2017, "300.00", D(2017, 6, 15), release2018, Texts{"205.00", "0.00"}},
          // due 2024, 1,000.00, 90 days late: 3 x (50.00 - 5.00) = 135.00; the release of
          // late 2026 gives 485.00 for 2024 (that of 2018 its 2016 amount, 205.00)
          {2024, "1,000.00", D(2024, 7, 14), &FixtureRelease().ftfMinimums,
           Texts{"485.00", "0.00", "0.00"}}}) {
        SCOPED_TRACE(filed);
        rw::Case c = FederalCase(D(year, 4, 15), D(year, 12, 31), tax);
        c.init.bAnyPenalties = c.init.bFtoFile = c.init.bFtoPay = rw::kYes;
        c.init.dtFiled = filed;
        c.init.dtFtoPayAssess = c.init.dtFtoFileAssess = D(year, 12, 1);
        const FtoRun r = Fto(c, *minimums);
        Texts net;
        Money total;  // the rows add up to the point
        for (const rw::FtoRow& row : r.rows) {
            total += row.cNetFtf;
            if (row.cGrossFtf > Money())
                net.push_back(rw::FormatMoney(row.cNetFtf));
        }
        EXPECT_EQ(net, netFailureToFile);
        EXPECT_EQ(r.points("FFP "),
                  Texts{"4/15/" + std::to_string(year) + " " + rw::FormatMoney(total)});
    }
}

TEST(FailureToFileAndPay, MinimumForAYearTheReleaseDoesNotList)
{
    // the latest amount listed up to the year; one the release does not list takes the nearest, and
    // says which
    const rw::FtfMinimumSchedule listed{{{2020, M("435.00"), "test"}, {2022, M("450.00"), "test"}}};
    const rw::FtfMinimumSchedule none;
    for (const auto& [schedule, year, amount, note] :
         {std::tuple{&listed, 2021, "435.00", ""},
          {&listed, 2022, "450.00", ""},
          {&listed, 2025, "450.00",
           "Minimum failure-to-file penalty: the release of the rates lists amounts through 2022; "
           "the 2022 amount, "
           "450.00, was applied to this return due in 2025."},
          {&listed, 2019, "435.00",
           "Minimum failure-to-file penalty: the release of the rates lists amounts from 2020; its "
           "earliest, "
           "435.00, was applied to this return due in 2019."},
          {&none, 2019, "0",
           "The release of the rates lists no minimum failure-to-file penalty; none was "
           "applied."}}) {
        std::string said = "stale";
        EXPECT_EQ(rw::FailToFileMinimum(*schedule, year, &said), M(amount)) << year;
        EXPECT_EQ(said, note);
    }
}

TEST(FailureToFileAndPay, MonthsOfFailureToFileCountFromTheExtendedDueDate)
{
    rw::Case c = Return2016(true, false);
    c.init.dtFiled = D(2016, 4, 16);  // one day late: one month, nothing to take off
    EXPECT_EQ(Fto(c).months(), Texts{"4/16/2016: 10,000.00, 0.00, 500.00 / 500.00"});
    EXPECT_EQ(Fto(c).points("FFP "), Texts{"4/15/2016 500.00"});
    EXPECT_TRUE(Fto(c).points("FPP ").empty());
    c.init.dtExtended = D(2016, 10, 15);  // filed within the extension: nothing
    c.init.dtFiled = D(2016, 10, 1);
    EXPECT_TRUE(Fto(c).rows.empty());
    EXPECT_EQ(Fto(c).points("FFP "), Texts{"10/15/2016 0.00"});

    // both penalties, filed 11/20: failure to pay still runs from 4/16;
    // failure to file counts 10/16 and 11/16, 2 x 450.00
    c.init.bFtoPay = rw::kYes;
    c.init.dtFiled = D(2016, 11, 20);
    const FtoRun r = Fto(c);
    EXPECT_EQ(r.months().at(0), "4/16/2016: 10,000.00, 50.00, 0.00 / 0.00");
    EXPECT_EQ(r.months().at(6), "10/16/2016: 10,000.00, 50.00, 500.00 / 450.00");
    EXPECT_EQ(r.months().at(7), "11/16/2016: 10,000.00, 50.00, 500.00 / 450.00");
    EXPECT_EQ(r.points("FFP "), Texts{"10/15/2016 900.00"});
}

// §6651(d)(1): 0.5 % a month to 12/16/2016 (9 months, 4.5 %), from 1/16/2017
// 1 % a month while the total stays within 25 %: 20 months to 8/16/2018
// (24.5 %), then nothing. Without a start date: 25 months at 1 %, 25 %.
TEST(FailureToFileAndPay, IncreasedRateWhileTheTotalStaysWithinTwentyFivePerCent)
{
    for (const auto& [start, halfPerCent, months, total] :
         {std::tuple{D(2017, 1, 1), 9u, 29u, "2,450.00"}, {rw::NoDate, 0u, 25u, "2,500.00"}}) {
        rw::Case c = Return2016(false, true);
        c.init.tlStop.dtDate = D(2019, 12, 31);
        c.init.dtFtoPayAssess = D(2019, 12, 30);
        c.init.b6651d1 = rw::kYes;
        c.init.dt6651d1Start = start;
        const FtoRun r = Fto(c);
        ASSERT_EQ(r.rows.size(), months);
        for (std::size_t i = 0; i < months; ++i)
            EXPECT_EQ(r.rows[i].cFtp, i < halfPerCent ? M("50.00") : M("100.00")) << i;
        EXPECT_EQ(r.points("FPP "), Texts{"12/30/2019 " + std::string(total)});
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
    EXPECT_EQ(Fto(c).rows.size(), 3u);
    EXPECT_EQ(Fto(c).points("FFP "), Texts{"7/19/1984 1,500.00"});

    // Stop before the due date, filed 108 days late: with failure to file only
    // no month row and no minimum; with failure to pay too, row 0 carries a
    // month of failure to pay and the minimum of 2016 applies, and that month,
    // beginning after the assessment date, has its own point.
    c = Return2016(true, false);
    c.init.tlStart.dtDate = D(2016, 1, 1);
    c.init.tlStop.dtDate = D(2016, 3, 31);
    c.init.dtFiled = D(2016, 8, 1);
    EXPECT_TRUE(Fto(c).rows.empty());
    EXPECT_EQ(Fto(c).points("FFP "), Texts{"4/15/2016 0.00"});
    c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(2016, 3, 1);
    const FtoRun r = Fto(c);
    EXPECT_EQ(r.months(), Texts{"4/16/2016: 10,000.00, 50.00, 0.00 / 0.00"});
    EXPECT_EQ(r.points("FFP "), Texts{"4/15/2016 205.00"});
    EXPECT_EQ(r.points("FPP "), (Texts{"3/1/2016 0.00", "4/16/2016 50.00"}));
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
    for (const auto& [due, amount] : {std::pair{D(2016, 4, 15), "100.00"},
                                      {D(2016, 5, 16), "100.00"},
                                      {D(2016, 6, 15), "100.00"},
                                      {D(2016, 8, 15), "1,000.00"}})
        AddDeposit(c, due, amount, D(2016, 11, 1));
    AddPayment(c, D(2016, 5, 1), {.tax = "250.00"});
    const FtoRun r = Fto(c);
    EXPECT_EQ(rw::GetFtoFBase(c, r.tl), M("50.00"));
    EXPECT_EQ(r.points("FFP ").at(0), "7/31/2016 7.50");
}

}  // namespace
