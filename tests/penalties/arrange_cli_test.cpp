// qratcalc-cli arrange: the search run on a case file, the case written back.

#include "casedata/casefile.h"
#include "cli/cli.h"

#include "pentest.h"
#include "support/tempdir.h"

#include "support/clirun.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using rwtest::CliRun;
using rwtest::RunCliCommand;

using namespace pentest;

// One deposit of 300.00 due 4/15/2016; "Late" paid 10 days after (5 %: 15.00),
// "OnTime" on the due date.
rw::Case payrollCase()
{
    rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
    c.init.bPayroll = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    c.init.bAutoArrange = rw::kYes;
    AddDeposit(c, D(4, 15, 2016), "300.00", D(8, 1, 2016));
    AddPayment(c, D(4, 25, 2016), "300.00", "Late");
    AddPayment(c, D(4, 15, 2016), "300.00", "OnTime");
    return c;
}

TEST(ArrangeCommand, WritesThePaymentsInTheCheapestOrder)
{
    rwtest::TempDir dir;
    const std::string in = (dir / "PR.INT").string();
    const std::string outPath = (dir / "OUT.INT").string();
    rw::WriteCase(in, payrollCase());
    const CliRun r = RunCliCommand({"arrange", in, "-o", outPath});
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(r.out,
              "Savings To Employer: The employer saved $15 by having the Brindlecote optimize the application of "
              "deposits to liabilities. The program calculated penalties for all 2 ways the payments could have "
              "been arranged. Please refer to Rev. Proc. 99-10 and IRC Section 6656(e) to properly report the "
              "application of deposits.\n"
              "Payroll deposit penalties: 15.00 as entered, 0.00 arranged; saved 15.00 over 2 orders\n");
    const rw::CaseReadResult back = rw::ReadCaseFile(outPath);
    ASSERT_EQ(back.status, rw::CaseReadResult::Status::Ok);
    EXPECT_EQ(back.kase.pmts[0].sDesc.trimmed(), "OnTime");
    EXPECT_EQ(back.kase.pmts[1].sDesc.trimmed(), "Late");
    EXPECT_EQ(back.kase.init.bAutoArrange, rw::kNo);
}

TEST(ArrangeCommand, BadInputExitsWithTwo)
{
    rwtest::TempDir dir;
    const std::string in = (dir / "PR.INT").string();
    rw::Case notPayroll = payrollCase();
    notPayroll.init.bPayroll = rw::kNo;
    rw::WriteCase(in, notPayroll);
    EXPECT_EQ(RunCliCommand({"arrange", in}).status, 2);                                       // no -o
    EXPECT_EQ(RunCliCommand({"arrange", (dir / "missing.INT").string(), "-o", "x.INT"}).status, 2);
    const CliRun r = RunCliCommand({"arrange", in, "-o", (dir / "OUT.INT").string()});
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("is not a payroll case"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(dir / "OUT.INT"));
}

TEST(ArrangeCommand, TenPaymentsAreRefusedWithTheWarning)
{
    rwtest::TempDir dir;
    rw::Case c = payrollCase();
    for (int i = 0; i < 8; ++i)
        AddPayment(c, D(5, 1, 2016), "10.00");
    const std::string in = (dir / "PR.INT").string();
    rw::WriteCase(in, c);
    const CliRun r = RunCliCommand({"arrange", in, "-o", (dir / "OUT.INT").string()});
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.starts_with("WARNING: Due to time and memory that it takes to calculate penalties"));
    EXPECT_FALSE(std::filesystem::exists(dir / "OUT.INT"));
}

TEST(ArrangeCommand, DepositWithoutDueDateIsAFault)
{
    rwtest::TempDir dir;
    rw::Case c = payrollCase();
    c.deposits[0].dtDepDue = rw::NoDate;
    const std::string in = (dir / "PR.INT").string();
    rw::WriteCase(in, c);
    const CliRun r = RunCliCommand({"arrange", in, "-o", (dir / "OUT.INT").string()});
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "{\"fault\":{\"detail\":\"days late out of range\",\"number\":6,\"procedure\":\"CalcUSPRPen\"}}\n");
}

}  // namespace
