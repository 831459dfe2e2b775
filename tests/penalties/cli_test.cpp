// The command-line tool's side of a computation: compute --json reads back
// exactly, penalty tables included; arrange runs the search on a case file.
#include "support/casebuilder.h"
#include "support/clirun.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include "casedata/casefile.h"
#include "cli/cmd_compute.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace rwtest;

namespace {

// Rates are the singles written with nine significant digits; a text never
// set keeps its NUL bytes; factors read back to the same double.
TEST(ComputeJson, ValuesReadBackExactly)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    c.init.bAnyPenalties = c.init.bFtoPay = rw::kYes;
    c.init.dtFtoPayAssess = D(2016, 10, 31);
    AddPayment(c, D(1700, 1, 1), {.tax = "1.5"});  // long before the start, its text never set
    c.pmts[0].sDesc = rw::FixedText<16>();
    const rw::CaseComputation k = rw::ComputeCase(c, SimpleTable(0.05f), Minimums2018());
    const auto j = rw::cli::ComputationJson(k);
    EXPECT_EQ(j["interest"], rw::ExactMoney(k.interest));
    EXPECT_EQ(j["rows"][1]["sDesc"], "Simple Int.     ");
    EXPECT_EQ(std::strtod(j["rows"][1]["dIntFactor"].dump().c_str(), nullptr),
              k.rows[1].dIntFactor);
    EXPECT_EQ(j["timeline"][0]["dtDate"], static_cast<std::int64_t>(D(1700, 1, 1).dayNumber()));
    EXPECT_EQ(j["timeline"][0]["sDesc"], std::string(16, '\0'));
    EXPECT_EQ(j["timeline"][0]["sSortCode"], "17000101PMT ");
    // 10,000.00 less the 1.50 paid in 1700 is unpaid: 9,998.50 x 0.5 % = 49.9925
    EXPECT_EQ(j["ftoRows"][0].dump(),
              R"({"dtComp":"04/16/2016","cNetTax":"9998.5000","fFtpRate":0.00499999989,)"
              R"("cFtp":"49.9925","cGrossFtf":"0.0000","cNetFtf":"0.0000"})");

    // 400.00 paid 5 days late and 600.00 unpaid at 12/31/2016, both at the severe 15 %
    c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = rw::kYes;
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1), true);
    AddPayment(c, D(2016, 4, 20), {.tax = "400.00"});
    const auto payroll
        = rw::cli::ComputationJson(rw::ComputeCase(c, SimpleTable(0.05f), Minimums2018()));
    EXPECT_EQ(
        payroll["payrollTable"][0].dump(),
        R"({"dtDepDue":"04/15/2016","cBegBal":"1000.0000","cPaid":"400.0000","dtPaid":"04/20/2016",)"
        R"("nDaysLate":5,"cEndBal":"600.0000","fRate":0.150000006,"cBase":"400.0000","cPenalty":"60.0000",)"
        R"("bSevere":-1})");
}

// One deposit of 300.00 due 4/15/2016; "Late" paid 10 days after (5 %: 15.00), "OnTime" on the due
// date.
TEST(ArrangeCommand, WritesThePaymentsInTheCheapestOrderOrNothing)
{
    TempDir dir;
    const std::string in = (dir / "PR.INT").string(), out = (dir / "OUT.INT").string();
    rw::Case c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = c.init.bAutoArrange = rw::kYes;
    AddDeposit(c, D(2016, 4, 15), "300.00", D(2016, 8, 1));
    AddPayment(c, D(2016, 4, 25), {.tax = "300.00", .desc = "Late"});
    AddPayment(c, D(2016, 4, 15), {.tax = "300.00", .desc = "OnTime"});
    const auto arrange = [&](const rw::Case& k) {
        rw::WriteCase(in, k);
        return RunCliCommand({"arrange", in, "-o", out});
    };
    CliRun r = arrange(c);
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.out.starts_with("Savings To Employer: The employer saved $15 by having"))
        << r.out;
    EXPECT_TRUE(r.out.ends_with(
        "\nPayroll deposit penalties: 15.00 as entered, 0.00 arranged; saved 15.00 over 2 "
        "orders\n"))
        << r.out;
    const rw::CaseReadResult back = rw::ReadCaseFile(out);
    ASSERT_EQ(back.status, rw::CaseReadResult::Status::Ok);
    EXPECT_EQ(back.kase.pmts[0].sDesc.trimmed(), "OnTime");
    EXPECT_EQ(back.kase.init.bAutoArrange, rw::kNo);
    std::filesystem::remove(out);

    EXPECT_EQ(RunCliCommand({"arrange", in}).status, 2);  // no -o
    c.init.bPayroll = rw::kNo;
    r = arrange(c);
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("is not a payroll case"), std::string::npos) << r.err;
    c.init.bPayroll = rw::kYes;
    c.deposits[0].dtDepDue = rw::NoDate;  // a fault, answered as JSON
    r = arrange(c);
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(
        r.out,
        R"({"fault":{"detail":"days late out of range","number":6,"procedure":"CalcUSPRPen"}})"
        "\n");
    c.deposits[0].dtDepDue = D(2016, 4, 15);  // ten payments: the warning
    for (int i = 0; i < 8; ++i)
        AddPayment(c, D(2016, 5, 1), {.tax = "10.00"});
    r = arrange(c);
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(
        r.err.starts_with("WARNING: Due to time and memory that it takes to calculate penalties"))
        << r.err;
    EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
