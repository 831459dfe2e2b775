// The rate sources the program ships (data/rates), which change with every
// quarterly update. This is the one test that reads them, and it checks only
// what must hold of any release built from them: every authority present,
// every row sourced, rows following each other day by day, no row across a
// year end, the verified date not after the estimated one, and plausible
// rates. No figure of the live data is pinned here: those are tested on the
// frozen sources of tests/fixtures.

#include "rates/ratetable.h"
#include "rates/release.h"
#include "ratebuild/releasebuild.h"

#include "support/ratesources.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace {

namespace rs = rw::ratesrc;
using rw::RateRow;

const rs::ReleaseBuild& shipped()
{
    static const rs::ReleaseBuild b = rs::BuildRelease(rwtest::ShippedRateSources());
    return b;
}

TEST(ShippedRates, BuildWithoutProblemsForEveryAuthority)
{
    const rs::ReleaseBuild& b = shipped();
    for (const rs::SourceProblem& p : b.problems)
        ADD_FAILURE() << p.text();
    ASSERT_EQ(b.tables.size(), rw::Authorities().size());
    for (std::size_t i = 0; i < b.tables.size(); ++i) {
        EXPECT_EQ(b.tables[i].authority, &rw::Authorities()[i]);
        EXPECT_FALSE(b.tables[i].rows.empty()) << b.tables[i].authority->file;
    }
}

TEST(ShippedRates, EveryRowIsSourced)
{
    for (const rs::ReleaseTable& t : shipped().tables) {
        const rs::SourceFile src = rs::ParseSource(t.sourceText, t.authority->file, rs::kTableHeader);
        EXPECT_TRUE(src.problems.empty()) << t.authority->file;
        ASSERT_EQ(src.rows.size(), t.rows.size()) << t.authority->file;
        for (const rs::SourceRow& r : src.rows)
            EXPECT_FALSE(r.source.empty()) << t.authority->file << " " << r.from;
    }
}

TEST(ShippedRates, RowsAreContiguousAndWithinOneYear)
{
    for (const rs::ReleaseTable& t : shipped().tables) {
        for (std::size_t i = 0; i < t.rows.size(); ++i) {
            const RateRow& r = t.rows[i];
            EXPECT_LE(r.dtFrom, r.dtThru) << t.authority->file << " " << r.dtFrom;
            EXPECT_EQ(r.dtFrom.year(), r.dtThru.year()) << t.authority->file << " " << r.dtFrom;
            if (i > 0) {
                EXPECT_EQ(r.dtFrom, t.rows[i - 1].dtThru + 1) << t.authority->file << " row " << i;
            }
        }
    }
}

TEST(ShippedRates, RatesArePlausible)
{
    for (const rs::ReleaseTable& t : shipped().tables) {
        const bool federal = t.authority == &rw::Authorities()[0];
        for (const RateRow& r : t.rows) {
            // A hole (no published underpayment rate) is a hole both ways.
            if (std::isnan(r.fUPRate)) {
                EXPECT_FALSE(federal) << "a hole in the federal table at " << r.dtFrom;
                EXPECT_TRUE(std::isnan(r.fOPRate)) << t.authority->file << " " << r.dtFrom;
                continue;
            }
            EXPECT_TRUE(r.fUPRate >= 0.0f && r.fUPRate <= rs::kMaxRate) << t.authority->file << " " << r.dtFrom;
            EXPECT_TRUE(std::isnan(r.fOPRate) || (r.fOPRate >= 0.0f && r.fOPRate <= rs::kMaxRate))
                << t.authority->file << " " << r.dtFrom;
            if (federal) {
                // Federal rates have never been below 3 % or above 20 %, and
                // both are published for every period.
                EXPECT_TRUE(r.fUPRate >= 0.03f && r.fUPRate <= 0.2f) << r.dtFrom << " " << r.fUPRate;
                EXPECT_FALSE(std::isnan(r.fOPRate)) << r.dtFrom;
            }
        }
        // A table begins and ends with a period that has its underpayment rate.
        EXPECT_FALSE(std::isnan(t.rows.front().fUPRate)) << t.authority->file;
        EXPECT_FALSE(std::isnan(t.rows.back().fUPRate)) << t.authority->file;
    }
}

TEST(ShippedRates, VerifiedNotAfterEstimated)
{
    const rw::ReleaseInfo& info = shipped().info;
    ASSERT_TRUE(info.loaded());
    EXPECT_LE(info.verifiedThrough, info.estimatedThrough);
    // The federal table reaches the estimated-through date, and no further.
    ASSERT_FALSE(shipped().tables.empty());
    EXPECT_EQ(shipped().tables.front().rows.back().dtThru, info.estimatedThrough);
    EXPECT_FALSE(info.ftfMinimums.rows.empty());
}

// The installed release is the one built from these sources.
TEST(ShippedRates, InstalledReleaseIsBuiltFromThem)
{
    const char* dir = std::getenv("RW_INSTALL_DIR");
    ASSERT_NE(dir, nullptr);
    rw::ReleaseInfo installed;
    EXPECT_EQ(rw::CheckReleaseFolder(dir, installed), "");
    EXPECT_EQ(installed, shipped().info);
}

}  // namespace
