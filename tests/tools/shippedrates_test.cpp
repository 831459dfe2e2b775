// The rate sources the program ships (data/rates), which change with every quarterly update. The
// one test that reads them: it checks what must hold of any release built from them, and pins no
// figure.

#include "ratebuild/releasebuild.h"
#include "rates/ratetable.h"
#include "rates/release.h"

#include "support/ratesources.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

namespace rs = rw::ratesrc;

const rs::ReleaseBuild& Shipped()
{
    static const rs::ReleaseBuild b = rs::BuildRelease(rwtest::ShippedRateSources());
    return b;
}

TEST(ShippedRates, BuildForEveryAuthorityWithEveryRowSourced)
{
    const rs::ReleaseBuild& b = Shipped();
    for (const rs::SourceProblem& p : b.problems)
        ADD_FAILURE() << p.text();
    ASSERT_EQ(b.tables.size(), rw::Authorities().size());
    for (std::size_t i = 0; i < b.tables.size(); ++i) {
        const rs::ReleaseTable& t = b.tables[i];
        EXPECT_EQ(t.authority, &rw::Authorities()[i]);
        const rs::SourceFile src
            = rs::ParseSource(t.sourceText, t.authority->file, rs::kTableHeader);
        EXPECT_TRUE(src.problems.empty()) << t.authority->file;
        ASSERT_FALSE(t.rows.empty()) << t.authority->file;
        ASSERT_EQ(src.rows.size(), t.rows.size()) << t.authority->file;
        for (const rs::SourceRow& r : src.rows)
            EXPECT_FALSE(r.source.empty()) << t.authority->file << " " << r.from;
    }
}

TEST(ShippedRates, RowsFollowEachOtherWithinOneYearAtPlausibleRates)
{
    for (const rs::ReleaseTable& t : Shipped().tables) {
        const bool federal = t.authority == &rw::Authorities()[0];
        for (std::size_t i = 0; i < t.rows.size(); ++i) {
            const rw::RateRow& r = t.rows[i];
            SCOPED_TRACE(std::string(t.authority->file) + " " + rw::FormatMMDDYYYY(r.dtFrom));
            EXPECT_TRUE(r.dtFrom <= r.dtThru
                        && r.dtFrom.year() == r.dtThru.year());  // within one year
            EXPECT_TRUE(i == 0 || r.dtFrom == t.rows[i - 1].dtThru + 1);
            if (std::isnan(r.fUPRate)) {  // a hole is a hole both ways, and never federal
                EXPECT_TRUE(!federal && std::isnan(r.fOPRate));
                continue;
            }
            EXPECT_TRUE(r.fUPRate >= 0.0f && r.fUPRate <= rs::kMaxRate);
            EXPECT_TRUE(std::isnan(r.fOPRate) || (r.fOPRate >= 0.0f && r.fOPRate <= rs::kMaxRate));
            // Federal rates have never been below 3 % or above 20 %, and both are published.
            EXPECT_TRUE(!federal
                        || (r.fUPRate >= 0.03f && r.fUPRate <= 0.2f && !std::isnan(r.fOPRate)))
                << r.fUPRate;
        }
        EXPECT_FALSE(std::isnan(t.rows.front().fUPRate) || std::isnan(t.rows.back().fUPRate))
            << t.authority->file;
    }
}

TEST(ShippedRates, DatesOfTheReleaseAndTheInstalledOne)
{
    const rw::ReleaseInfo& info = Shipped().info;
    ASSERT_TRUE(info.loaded() && !Shipped().tables.empty());
    EXPECT_LE(info.verifiedThrough, info.estimatedThrough);
    EXPECT_EQ(Shipped().tables.front().rows.back().dtThru,
              info.estimatedThrough);  // the federal table's end
    EXPECT_FALSE(info.ftfMinimums.rows.empty());
    // The installed release is the one built from these sources.
    rw::ReleaseInfo installed;
    EXPECT_EQ(rw::CheckReleaseFolder(std::getenv("RW_INSTALL_DIR"), installed), "");
    EXPECT_EQ(installed, info);
}

}  // namespace
