// A release of the rates built with "qratcalc-cli release build" from a copy
// of the sources with one more quarter, put into the user's data folder, and
// taken up at the program's next start without reinstalling; a damaged one is
// refused with a message and the installed release is used.

#include "cli/cli.h"

#include "casedata/ratetable.h"
#include "shell/startup.h"

#include "support/ratesources.h"
#include "support/recordingmessages.h"
#include "support/tempdir.h"

#include "support/clirun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

using rwtest::CliRun;
using rwtest::RunCliCommand;

namespace fs = std::filesystem;

// The user's data root of these tests is a folder of their own; the program
// and the tool find it through XDG_DATA_HOME, as they do on a desktop.
class UpdatedRates : public testing::Test {
protected:
    UpdatedRates()
    {
        const char* old = std::getenv("XDG_DATA_HOME");
        oldDataHome_ = old ? old : "";
        setenv("XDG_DATA_HOME", dataHome.path().c_str(), 1);

        rwtest::CopyRateSourcesWithNextQuarter(sources.path());
    }
    ~UpdatedRates() override
    {
        if (oldDataHome_.empty())
            unsetenv("XDG_DATA_HOME");
        else
            setenv("XDG_DATA_HOME", oldDataHome_.c_str(), 1);
    }

    rw::Paths paths() const { return rw::Paths::FromEnvironment(); }
    fs::path userRates() const { return paths().userReleaseDir(); }

    rwtest::TempDir dataHome;
    rwtest::TempDir sources;
    rwtest::RecordingMessages msgs;

private:
    std::string oldDataHome_;
};

TEST_F(UpdatedRates, ANewerReleaseIsUsedAtTheNextStart)
{
    const CliRun built
        = RunCliCommand({"release", "build", sources.path().string(), "-o", userRates().string()});
    ASSERT_EQ(built.status, 0) << built.err;
    EXPECT_NE(built.out.find("Built Qrat2026Q3 (2026, 3rd Quarter)"), std::string::npos) << built.out;

    rw::Session s;
    rw::Startup(s, paths(), msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.release.name, "Qrat2026Q3");
    EXPECT_EQ(s.release.verifiedThroughText, "September 30, 2026");
    EXPECT_EQ(s.release.estimatedThroughText, "March 31, 2027");
    EXPECT_EQ(s.title, "2026, 3rd Quarter Ratewright - Untitled.INT");
    ASSERT_FALSE(s.gRates.empty());
    EXPECT_EQ(s.gRates.back().dtThru, rw::Date::fromCivil(2027, 3, 31));
    EXPECT_EQ(s.gRates.back().fUPRate, 0.08f);

    const CliRun shown = RunCliCommand({"release", "show"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_NE(shown.out.find("Release:            Qrat2026Q3 (2026, 3rd Quarter)"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("the user's data folder"), std::string::npos);
    EXPECT_NE(shown.out.find("Estimated through:  03/31/2027  March 31, 2027"), std::string::npos);
}

TEST_F(UpdatedRates, ATruncatedTableIsRefusedAndTheInstalledReleaseUsed)
{
    ASSERT_EQ(RunCliCommand({"release", "build", sources.path().string(), "-o", userRates().string()}).status, 0);
    const fs::path damaged = userRates() / "ny_ind1.tbl";
    fs::resize_file(damaged, fs::file_size(damaged) - 7);

    rw::Session s;
    rw::Startup(s, paths(), msgs);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_NE(msgs.shown[0].text.find(damaged.string()), std::string::npos) << msgs.shown[0].text;
    EXPECT_EQ(s.release.name, "Qrat2026Q2");
    EXPECT_EQ(s.paths.ratesFolder(), paths().installDir);
    EXPECT_EQ(s.gRates.back().dtThru, rw::Date::fromCivil(2026, 12, 31));

    // The tool says the same and goes on with the installed release.
    const CliRun shown = RunCliCommand({"release", "show"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_NE(shown.err.find(damaged.string()), std::string::npos) << shown.err;
    EXPECT_NE(shown.out.find("Release:            Qrat2026Q2 (2026, 2nd Quarter)"), std::string::npos) << shown.out;
}

TEST_F(UpdatedRates, ShowsTheInstalledReleaseWithItsMinimumsAndTables)
{
    const CliRun shown = RunCliCommand({"release", "show"});
    ASSERT_EQ(shown.status, 0) << shown.err;
    EXPECT_NE(shown.out.find("Verified through:   06/30/2026  June 30, 2026"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("(installed with the program)"), std::string::npos);
    EXPECT_NE(shown.out.find("  from 2024          485.00  "), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("PA    Pennsylvania"), std::string::npos);
}

TEST_F(UpdatedRates, ABadSourceBuildsNothing)
{
    std::ofstream(sources / "fed.csv", std::ios::app | std::ios::binary)
        << "04/01/2027,06/30/2027,0.75,0.07,C,ESTIMATE: a slipped decimal point\n";
    const CliRun built
        = RunCliCommand({"release", "build", sources.path().string(), "-o", userRates().string()});
    EXPECT_EQ(built.status, 2);
    EXPECT_NE(built.err.find("above 50 %"), std::string::npos) << built.err;
    EXPECT_NE(built.err.find("nothing written"), std::string::npos);
    EXPECT_FALSE(fs::exists(userRates() / "qrat-release.txt"));

    EXPECT_EQ(RunCliCommand({"release", "build", sources.path().string()}).status, 2);  // no -o
    EXPECT_EQ(RunCliCommand({"release", "frobnicate"}).status, 2);
}

}  // namespace
