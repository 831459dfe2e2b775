// The command-line tool's side of a computation: compute --json reads back
// exactly, with the penalty tables; arrange runs the search on a case file.
#include "support/casebuilder.h"
#include "support/clirun.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include "casedata/casefile.h"
#include "cli/cmd_compute.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>

using namespace rwtest;

namespace {

auto Json(const rw::Case& c, const rw::RateTable& rates)
{
    return rw::cli::ComputationJson(rw::ComputeCase(c, rates, Minimums2018()));
}

TEST(ComputeJson, ValuesReadBackExactly)
{
    rw::Case c = FederalCase(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(1700, 1, 1), {.tax = "1.5"});  // long before the start, its text never set
    c.pmts[0].sDesc = rw::FixedText<16>();
    const rw::RateTable rates = {Row(D(2015, 1, 1), D(2018, 12, 31), 0.0725f)};
    const rw::CaseComputation k = rw::ComputeCase(c, rates, Minimums2018());
    const nlohmann::json j = nlohmann::json::parse(rw::cli::ComputationJson(k).dump());
    EXPECT_EQ(j["interest"], rw::ExactMoney(k.interest));
    ASSERT_EQ(j["rows"].size(), k.rows.size());
    const auto& row = j["rows"][1];
    EXPECT_EQ(row["dtBegin"], "01/02/2017");
    EXPECT_EQ(row["cTaxPen"], "10000.0000");
    EXPECT_EQ(row["sDesc"], "Compound Int.   ");
    const std::string rateText = row["fRate"].dump();
    float rate = 0.0f;
    std::from_chars(rateText.data(), rateText.data() + rateText.size(), rate);
    EXPECT_EQ(rate, 0.0725f);
    EXPECT_EQ(std::strtod(row["dIntFactor"].dump().c_str(), nullptr), k.rows[1].dIntFactor);
    const auto& early = j["timeline"][0];
    EXPECT_EQ(early["dtDate"], static_cast<std::int64_t>(D(1700, 1, 1).dayNumber()));
    EXPECT_EQ(early["sDesc"], std::string(16, '\0'));
    EXPECT_EQ(early["sSortCode"], "17000101PMT ");
    EXPECT_EQ(early["cTax"], "-1.5000");
}

// The month rows of a 2016 return (see ftofile_test.cpp) and a payroll table;
// rates are singles written with nine significant digits (0.005f, 0.15f).
TEST(ComputeJson, PenaltyTables)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    c.init.bAnyPenalties = c.init.bFtoFile = c.init.bFtoPay = rw::kYes;
    c.init.dtFiled = D(2016, 9, 20);
    c.init.dtFtoPayAssess = D(2016, 10, 31);
    auto j = Json(c, SimpleTable(0.05f));
    ASSERT_EQ(j["ftoRows"].size(), 9u);
    EXPECT_EQ(j["ftoRows"][0].dump(), R"({"dtComp":"04/16/2016","cNetTax":"10000.0000","fFtpRate":0.00499999989,)"
                                      R"("cFtp":"50.0000","cGrossFtf":"500.0000","cNetFtf":"450.0000"})");
    EXPECT_TRUE(j["payrollTable"].empty());

    // 400.00 paid 5 days late and 600.00 unpaid at 12/31/2016, both at the severe 15 %
    c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
    c.init.bPayroll = c.init.bAnyPenalties = rw::kYes;
    AddDeposit(c, D(2016, 4, 15), "1,000.00", D(2016, 8, 1), true);
    AddPayment(c, D(2016, 4, 20), {.tax = "400.00"});
    j = Json(c, SimpleTable(0.05f));
    const auto& t = j["payrollTable"];
    ASSERT_EQ(t.size(), 2u);
    EXPECT_EQ(t[0].dump(), R"({"dtDepDue":"04/15/2016","cBegBal":"1000.0000","cPaid":"400.0000",)"
                           R"("dtPaid":"04/20/2016","nDaysLate":5,"cEndBal":"600.0000","fRate":0.150000006,)"
                           R"("cBase":"400.0000","cPenalty":"60.0000","bSevere":-1})");
    EXPECT_EQ(t[1]["nDaysLate"], 260);
    EXPECT_EQ(t[1]["cPenalty"], "90.0000");
    EXPECT_TRUE(j["ftoRows"].empty());
}

// One deposit of 300.00 due 4/15/2016; "Late" paid 10 days after (5 %: 15.00),
// "OnTime" on the due date.
struct ArrangeCommand : ::testing::Test {
    TempDir dir;
    std::string in = (dir / "PR.INT").string();
    std::string out = (dir / "OUT.INT").string();
    rw::Case kase = [] {
        rw::Case c = FederalCase(D(2016, 4, 1), D(2016, 12, 31), "0", D(2016, 7, 31));
        c.init.bPayroll = c.init.bAnyPenalties = c.init.bAutoArrange = rw::kYes;
        AddDeposit(c, D(2016, 4, 15), "300.00", D(2016, 8, 1));
        AddPayment(c, D(2016, 4, 25), {.tax = "300.00", .desc = "Late"});
        AddPayment(c, D(2016, 4, 15), {.tax = "300.00", .desc = "OnTime"});
        return c;
    }();

    CliRun arrange()
    {
        rw::WriteCase(in, kase);
        return RunCliCommand({"arrange", in, "-o", out});
    }
};

TEST_F(ArrangeCommand, WritesThePaymentsInTheCheapestOrder)
{
    const CliRun r = arrange();
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_TRUE(r.out.starts_with("Savings To Employer: The employer saved $15 by having")) << r.out;
    EXPECT_TRUE(r.out.ends_with("\nPayroll deposit penalties: 15.00 as entered, 0.00 arranged; saved 15.00 over 2 orders\n"))
        << r.out;
    const rw::CaseReadResult back = rw::ReadCaseFile(out);
    ASSERT_EQ(back.status, rw::CaseReadResult::Status::Ok);
    EXPECT_EQ(back.kase.pmts[0].sDesc.trimmed(), "OnTime");
    EXPECT_EQ(back.kase.pmts[1].sDesc.trimmed(), "Late");
    EXPECT_EQ(back.kase.init.bAutoArrange, rw::kNo);
}

TEST_F(ArrangeCommand, RefusalsWriteNothing)
{
    kase.init.bPayroll = rw::kNo;
    CliRun r = arrange();
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("is not a payroll case"), std::string::npos);
    EXPECT_EQ(RunCliCommand({"arrange", in}).status, 2);  // no -o
    EXPECT_EQ(RunCliCommand({"arrange", (dir / "missing.INT").string(), "-o", out}).status, 2);

    kase.init.bPayroll = rw::kYes;  // ten payments: the warning
    for (int i = 0; i < 8; ++i)
        AddPayment(kase, D(2016, 5, 1), {.tax = "10.00"});
    r = arrange();
    EXPECT_EQ(r.status, 1);
    EXPECT_TRUE(r.err.starts_with("WARNING: Due to time and memory that it takes to calculate penalties"));
    EXPECT_FALSE(std::filesystem::exists(out));

    kase.deposits[0].dtDepDue = rw::NoDate;  // a fault, answered as JSON
    kase.init.nPmts = 2;
    kase.pmts.resize(2);
    r = arrange();
    EXPECT_EQ(r.status, 2);
    EXPECT_EQ(r.out, "{\"fault\":{\"detail\":\"days late out of range\",\"number\":6,\"procedure\":\"CalcUSPRPen\"}}\n");
    EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
