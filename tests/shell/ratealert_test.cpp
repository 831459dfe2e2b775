// The rate currency alert at the dates of a release: none through the
// verified date, an estimate through the estimated date, the end after it.

#include "shell/ratealert.h"

#include "shellfixture.h"

namespace {

using Kind = rw::RateAlertKind;

TEST(RateAlert, FollowsTheDatesOfTheRelease)
{
    // The release of early 2018: verified through 3/31/2018, estimated through 6/30/2018.
    const std::string head = "This program has verified interest rates through March 31, 2018.  The program has "
                             "estimated interest rates through June 30, 2018.  Since your stop date of ";
    const std::string estimate = " is past March 31, 2018, but not past June 30, 2018, this calculation should be "
                                 "considered an ESTIMATE.  \n\n";
    const std::string end = " is past June 30, 2018, the program can not continue.  ";
    // As typed: a two-digit year stays two digits, blanks stay.
    for (const auto& [typed, kind] : std::vector<std::pair<std::string, Kind>>{
             {"3/31/2018", Kind::None}, {"4/1/2018", Kind::Estimate}, {"6/30/2018", Kind::Estimate},
             {"7/1/2018", Kind::End}, {"1/1/2000", Kind::None}, {"", Kind::None}, {"13/1/2018", Kind::None},
             {"4/14/1810", Kind::None}, {"07/01/18", Kind::End}, {" 5/5/2018 ", Kind::Estimate}}) {
        SCOPED_TRACE(typed);
        const rw::RateAlert a = rw::CheckRateCurrency(typed, rwtest::Release2018());
        EXPECT_EQ(a.kind, kind);
        // The maker's advice follows the text checked here.
        EXPECT_TRUE(kind == Kind::None ? a.message.empty()
                                       : a.message.starts_with(head + typed + (kind == Kind::End ? end : estimate)))
            << a.message;
        EXPECT_EQ(a.exitCaption, kind == Kind::End        ? "End Program"
                                 : kind == Kind::Estimate ? "Continue With Current Program"
                                                          : "");
    }
    // The dates are the release's: late 2026 is verified through 12/31/2026, estimated through 3/31/2027.
    const rw::ReleaseInfo& r = rwtest::FixtureRelease();
    EXPECT_EQ(rw::CheckRateCurrency("12/31/2026", r).kind, Kind::None);
    EXPECT_TRUE(rw::CheckRateCurrency("1/1/2027", r)
                    .message.starts_with("This program has verified interest rates through December 31, 2026.  The "
                                         "program has estimated interest rates through March 31, 2027.  Since your "
                                         "stop date of 1/1/2027 is past December 31, 2026, but not past March 31, "
                                         "2027, this calculation should be considered an ESTIMATE.  \n\n"));
    EXPECT_EQ(rw::CheckRateCurrency("3/31/2027", r).kind, Kind::Estimate);
    EXPECT_EQ(rw::CheckRateCurrency("4/1/2027", r).kind, Kind::End);
    EXPECT_EQ(rw::CheckRateCurrency("1/1/2000", rw::ReleaseInfo{}).kind, Kind::End);  // without a release
}

TEST(RateAlert, OnlyTheEndAlertEndsTheProgram)
{
    rwtest::RecordingAlertWindow window;
    rwtest::RecordingProgram program;
    const rw::ReleaseInfo& release = rwtest::Release2018();
    EXPECT_TRUE(rw::RunRateCurrencyCheck("3/31/2018", release, window, program));
    EXPECT_TRUE(rw::RunRateCurrencyCheck("4/1/2018", release, window, program));
    EXPECT_EQ(program.ends, 0);
    EXPECT_FALSE(rw::RunRateCurrencyCheck("7/1/2018", release, window, program));
    EXPECT_EQ(program.ends, 1);
    ASSERT_EQ(window.alerts.size(), 2u);
    EXPECT_EQ(window.alerts[1].kind, Kind::End);
}

}  // namespace
