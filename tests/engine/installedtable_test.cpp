// The delivered federal table, when the test environment has built it.
#include "enginetest.h"

#include "engine/intcalc.h"
#include "engine/ratesel.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

using namespace enginetest;

namespace {

TEST(InstalledFederalTable, OneYearAtTheFourPerCentOf2017)
{
    const char* dir = std::getenv("RW_INSTALL_DIR");
    if (dir == nullptr || !std::filesystem::exists(std::filesystem::path(dir) / "fed.tbl"))
        GTEST_SKIP() << "no fed.tbl in RW_INSTALL_DIR";
    const rw::RateTableReadResult r = rw::ReadRateTableFile(std::filesystem::path(dir) / "fed.tbl");
    ASSERT_EQ(r.status, rw::RateTableReadResult::Status::Ok);
    // IRS underpayment rate for the quarters of 2017: 4 %
    for (int month : {1, 4, 7, 10})
        EXPECT_EQ(rw::GetStdPeriodRate(r.rows, D(2017, month, 15)), 0.04f);

    // 10,000.00 from 12/31/2016 through 12/31/2017: 365 days at 4 % from a row
    // beginning in 2017: (1 + 0.04f/365)^365 - 1 = 0.0408084922...; 408.0849 -> 408.08
    rw::Case c = Federal(D(2016, 12, 31), D(2017, 12, 31), "10000");
    std::vector<rw::ResultPeriod> rows;
    rw::TimeLine tl;
    const Money total = rw::GetInterest(c, r.rows, nullptr, rows, tl);
    EXPECT_EQ(total, M("408.08"));
}

}  // namespace
