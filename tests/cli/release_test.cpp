// "qratcalc-cli release": a release built from a copy of the tests' frozen
// sources with one more quarter (the first of 2027 announced at 7 %, the
// second estimated at 8 %), put into the user's data folder and taken up at
// the program's next start without reinstalling; a damaged one is reported
// and the installed release (Qrat2026Q4, copied into a folder of its own) used.

#include "shell/startup.h"

#include "support/clirun.h"
#include "support/ratesources.h"
#include "support/recordingmessages.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

namespace fs = std::filesystem;

class UpdatedRates : public testing::Test {
protected:
    UpdatedRates()
    {
        fs::copy(rwtest::FixtureReleaseFolder(), install.path(), fs::copy_options::recursive);
        rwtest::CopyRateSourcesWithNextQuarter(sources.path());
        setenv("XDG_DATA_HOME", dataHome.path().c_str(), 1);
        setenv("RW_INSTALL_DIR", install.path().c_str(), 1);
    }
    ~UpdatedRates() override
    {
        setenv("XDG_DATA_HOME", oldDataHome_.c_str(), 1);
        setenv("RW_INSTALL_DIR", oldInstall_.c_str(), 1);
    }
    fs::path userRates() const { return rw::Paths::FromEnvironment().userReleaseDir(); }
    rwtest::CliRun run(std::vector<std::string> args) const { return rwtest::RunCliCommand(std::move(args), install.path()); }
    rwtest::CliRun build() const { return run({"release", "build", sources.path().string(), "-o", userRates().string()}); }

    const std::string oldDataHome_ = std::getenv("XDG_DATA_HOME"), oldInstall_ = std::getenv("RW_INSTALL_DIR");
    rwtest::TempDir dataHome, install, sources;
};

TEST_F(UpdatedRates, ANewerReleaseIsUsedAtTheNextStart)
{
    const rwtest::CliRun built = build();
    ASSERT_EQ(built.status, 0) << built.err;
    EXPECT_NE(built.out.find("Built Qrat2027Q1 (2027, 1st Quarter)"), std::string::npos) << built.out;

    rw::Session s;
    rwtest::RecordingMessages msgs;
    rw::Startup(s, rw::Paths::FromEnvironment(), msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.title, "2027, 1st Quarter Ratewright - Untitled.INT");
    ASSERT_FALSE(s.gRates.empty());
    EXPECT_EQ(s.gRates.back().dtThru, rw::Date::fromCivil(2027, 6, 30));
    EXPECT_EQ(s.gRates.back().fUPRate, 0.08f);

    const rwtest::CliRun shown = run({"release", "show"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    for (const char* line : {"Release:            Qrat2027Q1 (2027, 1st Quarter)", "the user's data folder",
                             "Verified through:   03/31/2027  March 31, 2027",
                             "Estimated through:  06/30/2027  June 30, 2027"})
        EXPECT_NE(shown.out.find(line), std::string::npos) << line << "\n" << shown.out;
}

TEST_F(UpdatedRates, ADamagedReleaseIsReportedAndTheInstalledOneShown)
{
    ASSERT_EQ(build().status, 0);
    const fs::path damaged = userRates() / "ny_ind1.tbl";
    fs::resize_file(damaged, fs::file_size(damaged) - 7);
    const rwtest::CliRun shown = run({"release", "show"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_NE(shown.err.find(damaged.string()), std::string::npos) << shown.err;
    for (const char* line : {"Release:            Qrat2026Q4 (2026, 4th Quarter)", "(installed with the program)",
                             "Verified through:   12/31/2026  December 31, 2026", "  from 2024          485.00  ",
                             "PA    Pennsylvania"})
        EXPECT_NE(shown.out.find(line), std::string::npos) << line << "\n" << shown.out;
}

TEST_F(UpdatedRates, ABadSourceOrUsageBuildsNothing)
{
    std::ofstream(sources / "fed.csv", std::ios::app | std::ios::binary)
        << "07/01/2027,09/30/2027,0.75,0.07,C,ESTIMATE: a slipped decimal point\n";
    const rwtest::CliRun built = build();
    EXPECT_EQ(built.status, 2);
    EXPECT_NE(built.err.find("above 50 %"), std::string::npos) << built.err;
    EXPECT_NE(built.err.find("nothing written"), std::string::npos);
    EXPECT_FALSE(fs::exists(userRates() / "qrat-release.txt"));
    EXPECT_EQ(run({"release", "build", sources.path().string()}).status, 2);  // no -o
    EXPECT_EQ(run({"release", "frobnicate"}).status, 2);
}

}  // namespace
