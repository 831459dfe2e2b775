// The federal table the release build makes, read from the tests' release
// of the rates (built from the frozen sources of late 2026).
#include "enginetest.h"

#include "engine/intcalc.h"
#include "engine/ratesel.h"

#include "support/releases.h"

#include <gtest/gtest.h>

using namespace enginetest;

namespace {

TEST(BuiltFederalTable, OneYearAtTheFourPerCentOf2017)
{
    const rw::RateTableReadResult r = rw::ReadRateTableFile(rwtest::FixtureReleaseFolder() / "fed.tbl");
    ASSERT_EQ(r.status, rw::RateTableReadResult::Status::Ok);
    // IRS underpayment rate for the quarters of 2017: 4 %
    for (int month : {1, 4, 7, 10})
        EXPECT_EQ(rw::GetStdPeriodRate(r.rows, D(2017, month, 15)), 0.04f);

    // 10,000.00 from 12/31/2016 through 12/31/2017: 365 days at 4 %,
    // compounded daily on a 365-day year: (1 + 0.04f/365)^365 - 1 =
    // 0.0408084922...; 408.0849 -> 408.08
    rw::Case c = Federal(D(2016, 12, 31), D(2017, 12, 31), "10000");
    std::vector<rw::ResultPeriod> rows;
    rw::TimeLine tl;
    const Money total = rw::GetInterest(c, r.rows, nullptr, rows, tl);
    EXPECT_EQ(total, M("408.08"));
}

}  // namespace
