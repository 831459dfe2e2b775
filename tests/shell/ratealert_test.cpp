#include "shell/ratealert.h"

#include "shellfixture.h"
#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using rw::RateAlertKind;

struct AlertRow {
    const char* typed;
    RateAlertKind kind;
};

// The release of early 2018, whose alert texts are given word for word.
class RateAlerts : public testing::TestWithParam<AlertRow> {};

const std::string kVerified = "This program has verified interest rates through March 31, 2018.  The program has "
                              "estimated interest rates through June 30, 2018.  Since your stop date of ";

TEST_P(RateAlerts, FollowTheReleaseDates)
{
    const AlertRow& row = GetParam();
    const rw::RateAlert a = rw::CheckRateCurrency(row.typed, rwtest::Release2018());
    EXPECT_EQ(a.kind, row.kind);
    switch (row.kind) {
    case RateAlertKind::None:
        EXPECT_EQ(a.message, "");
        break;
    case RateAlertKind::Estimate: {
        const std::string head = kVerified + row.typed + " is past March 31, 2018, but not past June 30, 2018, this "
                                 "calculation should be considered an ESTIMATE.  \n\n";
        EXPECT_EQ(a.message.substr(0, head.size()), head);
        EXPECT_GT(a.message.size(), head.size());  // the maker's advice follows
        EXPECT_EQ(a.exitCaption, "Continue With Current Program");
        break;
    }
    case RateAlertKind::End: {
        const std::string head = kVerified + row.typed + " is past June 30, 2018, the program can not continue.  ";
        EXPECT_EQ(a.message.substr(0, head.size()), head);
        EXPECT_GT(a.message.size(), head.size());
        EXPECT_EQ(a.exitCaption, "End Program");
        break;
    }
    }
    if (row.kind != RateAlertKind::None) {
        EXPECT_EQ(a.updateCaption, "Check For More Current Version");
        EXPECT_FALSE(a.updatePage.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(RateAlert, RateAlerts,
                         testing::Values(AlertRow{"3/31/2018", RateAlertKind::None},
                                         AlertRow{"4/1/2018", RateAlertKind::Estimate},
                                         AlertRow{"6/30/2018", RateAlertKind::Estimate},
                                         AlertRow{"7/1/2018", RateAlertKind::End},
                                         AlertRow{"12/31/2030", RateAlertKind::End},
                                         AlertRow{"1/1/2000", RateAlertKind::None},
                                         AlertRow{"", RateAlertKind::None},
                                         AlertRow{"soon", RateAlertKind::None},
                                         AlertRow{"13/1/2018", RateAlertKind::None},
                                         AlertRow{"4/14/1810", RateAlertKind::None},  // the no-date value
                                         // As typed: a two-digit year stays two digits, blanks stay.
                                         AlertRow{"4/1/18", RateAlertKind::Estimate},
                                         AlertRow{"07/01/18", RateAlertKind::End},
                                         AlertRow{" 5/5/2018 ", RateAlertKind::Estimate}));

// The release of late 2026: verified through the last federal row not marked
// as an estimate (12/31/2026), estimated through the table's end (3/31/2027).
TEST(RateAlert, ReleaseOfLate2026EstimatesThroughMarch2027)
{
    const rw::ReleaseInfo& release = rwtest::FixtureRelease();
    EXPECT_EQ(rw::CheckRateCurrency("12/31/2026", release).kind, RateAlertKind::None);
    const rw::RateAlert estimate = rw::CheckRateCurrency("2/15/2027", release);
    EXPECT_EQ(estimate.kind, RateAlertKind::Estimate);
    EXPECT_EQ(estimate.message.rfind("This program has verified interest rates through December 31, 2026.  The "
                                     "program has estimated interest rates through March 31, 2027.  Since your stop "
                                     "date of 2/15/2027 is past December 31, 2026, but not past March 31, 2027, "
                                     "this calculation should be considered an ESTIMATE.  \n\n",
                                     0),
              0u);
    EXPECT_EQ(rw::CheckRateCurrency("3/31/2027", release).kind, RateAlertKind::Estimate);
    const rw::RateAlert end = rw::CheckRateCurrency("4/1/2027", release);
    EXPECT_EQ(end.kind, RateAlertKind::End);
    EXPECT_EQ(end.message.rfind("This program has verified interest rates through December 31, 2026.  The program "
                                "has estimated interest rates through March 31, 2027.  Since your stop date of "
                                "4/1/2027 is past March 31, 2027, the program can not continue.  ",
                                0),
              0u);
    EXPECT_EQ(end.exitCaption, "End Program");
}

TEST(RateAlert, WithoutAReleaseEveryStopDateEndsTheProgram)
{
    const rw::ReleaseInfo none;
    ASSERT_FALSE(none.loaded());
    EXPECT_EQ(rw::CheckRateCurrency("1/1/2000", none).kind, RateAlertKind::End);
    EXPECT_EQ(rw::CheckRateCurrency("", none).kind, RateAlertKind::None);
    EXPECT_EQ(rw::CheckRateCurrency("soon", none).kind, RateAlertKind::None);
}

TEST(RateAlert, TheDatesComeFromTheRelease)
{
    rw::ReleaseInfo next = rwtest::Release2018();
    next.verifiedThrough = rw::Date::fromCivil(2018, 6, 30);
    next.verifiedThroughText = "June 30, 2018";
    next.estimatedThrough = rw::Date::fromCivil(2018, 9, 30);
    next.estimatedThroughText = "September 30, 2018";
    EXPECT_EQ(rw::CheckRateCurrency("6/30/2018", next).kind, RateAlertKind::None);
    const rw::RateAlert a = rw::CheckRateCurrency("9/30/2018", next);
    EXPECT_EQ(a.kind, RateAlertKind::Estimate);
    EXPECT_EQ(a.message.rfind("This program has verified interest rates through June 30, 2018.  The program has "
                              "estimated interest rates through September 30, 2018.  Since your stop date of "
                              "9/30/2018 is past June 30, 2018, but not past September 30, 2018, ",
                              0),
              0u);
}

class RecordingAlertWindow : public rw::RateAlertWindow {
public:
    void showModal(const rw::RateAlert& a) override { shown.push_back(a.kind); }
    std::vector<RateAlertKind> shown;
};

TEST(RateAlert, OnlyTheEndAlertEndsTheProgram)
{
    RecordingAlertWindow window;
    rwtest::RecordingProgram program;
    const rw::ReleaseInfo& release = rwtest::Release2018();
    EXPECT_TRUE(rw::RunRateCurrencyCheck("3/31/2018", release, window, program));
    EXPECT_TRUE(rw::RunRateCurrencyCheck("4/1/2018", release, window, program));
    EXPECT_EQ(program.ends, 0);
    EXPECT_FALSE(rw::RunRateCurrencyCheck("7/1/2018", release, window, program));
    EXPECT_EQ(program.ends, 1);
    EXPECT_EQ(window.shown, (std::vector<RateAlertKind>{RateAlertKind::Estimate, RateAlertKind::End}));
}

}  // namespace
