// The penalty parts of compute --json: the month rows and the payroll table.

#include "cli/cmd_compute.h"

#include "pentest.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;

TEST(ComputeJson, MonthRowsOfFailureToFileAndPay)
{
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10,000.00");
    c.init.bAnyPenalties = c.init.bFtoFile = c.init.bFtoPay = rw::kYes;
    c.init.dtFiled = D(9, 20, 2016);
    c.init.dtFtoPayAssess = D(10, 31, 2016);
    const auto j = rw::cli::ComputationJson(rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018()));
    const auto& rows = j["ftoRows"];
    ASSERT_EQ(rows.size(), 9u);
    // Rates are the singles written with nine significant digits (0.005f, 0.15f).
    EXPECT_EQ(rows[0].dump(), R"({"dtComp":"04/16/2016","cNetTax":"10000.0000","fFtpRate":0.00499999989,"cFtp":"50.0000",)"
                              R"("cGrossFtf":"500.0000","cNetFtf":"450.0000"})");
    EXPECT_EQ(rows[8]["dtComp"], "12/16/2016");
    EXPECT_EQ(rows[8]["cNetFtf"], "0.0000");
    EXPECT_TRUE(j["payrollTable"].empty());
}

TEST(ComputeJson, PayrollTable)
{
    rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = c.init.bAnyPenalties = rw::kYes;
    AddDeposit(c, D(4, 15, 2016), "1,000.00", D(8, 1, 2016), true);
    AddPayment(c, D(4, 20, 2016), "400.00");
    const auto j = rw::cli::ComputationJson(rw::ComputeCase(c, SimpleTable(0.05f), rwtest::Minimums2018()));
    const auto& t = j["payrollTable"];
    ASSERT_EQ(t.size(), 2u);
    // 400.00 paid 5 days late and 600.00 unpaid at 12/31/2016, both at the severe 15 %.
    EXPECT_EQ(t[0].dump(), R"({"dtDepDue":"04/15/2016","cBegBal":"1000.0000","cPaid":"400.0000",)"
                           R"("dtPaid":"04/20/2016","nDaysLate":5,"cEndBal":"600.0000","fRate":0.150000006,)"
                           R"("cBase":"400.0000","cPenalty":"60.0000","bSevere":-1})");
    EXPECT_EQ(t[1]["dtPaid"], "12/31/2016");
    EXPECT_EQ(t[1]["nDaysLate"], 260);
    EXPECT_EQ(t[1]["cPenalty"], "90.0000");
    EXPECT_TRUE(j["ftoRows"].empty());
}

}  // namespace
