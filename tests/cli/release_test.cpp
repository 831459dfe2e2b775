// A release of the rates built with "qratcalc-cli release build" from a copy
// of the sources with one more quarter, put into the user's data folder, and
// taken up at the program's next start without reinstalling; a damaged one is
// refused with a message and the installed release is used. The installed
// release of these tests is the tests' release of the fourth quarter of 2026
// (Qrat2026Q4), copied into an installation folder of their own; the sources
// are its frozen sources with the first quarter of 2027 announced.

#include "cli/cli.h"

#include "rates/ratetable.h"
#include "shell/startup.h"

#include "support/ratesources.h"
#include "support/recordingmessages.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include "support/clirun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

using rwtest::CliRun;

namespace fs = std::filesystem;

// An environment variable set for the life of a test, then put back.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::string& value) : name_(name)
    {
        const char* old = std::getenv(name);
        had_ = old != nullptr;
        old_ = old ? old : "";
        setenv(name, value.c_str(), 1);
    }
    ~ScopedVariable()
    {
        if (had_)
            setenv(name_, old_.c_str(), 1);
        else
            unsetenv(name_);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    const char* name_;
    bool had_ = false;
    std::string old_;
};

// The user's data root and the installation folder of these tests are
// folders of their own; the program and the tool find them through
// XDG_DATA_HOME and RW_INSTALL_DIR, as they do on a desktop.
class UpdatedRates : public testing::Test {
protected:
    UpdatedRates()
    {
        fs::copy(rwtest::FixtureReleaseFolder(), install.path(), fs::copy_options::recursive);
        rwtest::CopyRateSourcesWithNextQuarter(sources.path());
    }

    rw::Paths paths() const { return rw::Paths::FromEnvironment(); }
    fs::path userRates() const { return paths().userReleaseDir(); }
    rwtest::CliRun run(std::vector<std::string> args) const
    {
        return rwtest::RunCliCommand(std::move(args), install.path());
    }

    rwtest::TempDir dataHome;
    rwtest::TempDir install;
    rwtest::TempDir sources;
    rwtest::RecordingMessages msgs;

private:
    ScopedVariable dataHome_{"XDG_DATA_HOME", dataHome.path().string()};
    ScopedVariable install_{"RW_INSTALL_DIR", install.path().string()};
};

TEST_F(UpdatedRates, ANewerReleaseIsUsedAtTheNextStart)
{
    const CliRun built
        = run({"release", "build", sources.path().string(), "-o", userRates().string()});
    ASSERT_EQ(built.status, 0) << built.err;
    EXPECT_NE(built.out.find("Built Qrat2027Q1 (2027, 1st Quarter)"), std::string::npos) << built.out;

    rw::Session s;
    rw::Startup(s, paths(), msgs);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(s.release.name, "Qrat2027Q1");
    EXPECT_EQ(s.release.verifiedThroughText, "March 31, 2027");
    EXPECT_EQ(s.release.estimatedThroughText, "June 30, 2027");
    EXPECT_EQ(s.title, "2027, 1st Quarter Ratewright - Untitled.INT");
    ASSERT_FALSE(s.gRates.empty());
    EXPECT_EQ(s.gRates.back().dtThru, rw::Date::fromCivil(2027, 6, 30));
    EXPECT_EQ(s.gRates.back().fUPRate, 0.08f);

    const CliRun shown = run({"release", "show"});
    EXPECT_EQ(shown.status, 0) << shown.err;
    EXPECT_NE(shown.out.find("Release:            Qrat2027Q1 (2027, 1st Quarter)"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("the user's data folder"), std::string::npos);
    EXPECT_NE(shown.out.find("Estimated through:  06/30/2027  June 30, 2027"), std::string::npos);
}

TEST_F(UpdatedRates, ATruncatedTableIsRefusedAndTheInstalledReleaseUsed)
{
    ASSERT_EQ(run({"release", "build", sources.path().string(), "-o", userRates().string()}).status, 0);
    const fs::path damaged = userRates() / "ny_ind1.tbl";
    fs::resize_file(damaged, fs::file_size(damaged) - 7);

    rw::Session s;
    rw::Startup(s, paths(), msgs);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, rw::kReleaseWarningTitle);
    EXPECT_NE(msgs.shown[0].text.find(damaged.string()), std::string::npos) << msgs.shown[0].text;
    EXPECT_EQ(s.release.name, "Qrat2026Q4");
    EXPECT_EQ(s.paths.ratesFolder(), paths().installDir);
    EXPECT_EQ(s.gRates.back().dtThru, rw::Date::fromCivil(2027, 3, 31));

    // The tool says the same and goes on with the installed release.
    const CliRun shown = run({"release", "show"});
    EXPECT_EQ(shown.status, 0);
    EXPECT_NE(shown.err.find(damaged.string()), std::string::npos) << shown.err;
    EXPECT_NE(shown.out.find("Release:            Qrat2026Q4 (2026, 4th Quarter)"), std::string::npos) << shown.out;
}

TEST_F(UpdatedRates, ShowsTheInstalledReleaseWithItsMinimumsAndTables)
{
    const CliRun shown = run({"release", "show"});
    ASSERT_EQ(shown.status, 0) << shown.err;
    EXPECT_NE(shown.out.find("Verified through:   12/31/2026  December 31, 2026"), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("(installed with the program)"), std::string::npos);
    EXPECT_NE(shown.out.find("  from 2024          485.00  "), std::string::npos) << shown.out;
    EXPECT_NE(shown.out.find("PA    Pennsylvania"), std::string::npos);
}

TEST_F(UpdatedRates, ABadSourceBuildsNothing)
{
    std::ofstream(sources / "fed.csv", std::ios::app | std::ios::binary)
        << "07/01/2027,09/30/2027,0.75,0.07,C,ESTIMATE: a slipped decimal point\n";
    const CliRun built
        = run({"release", "build", sources.path().string(), "-o", userRates().string()});
    EXPECT_EQ(built.status, 2);
    EXPECT_NE(built.err.find("above 50 %"), std::string::npos) << built.err;
    EXPECT_NE(built.err.find("nothing written"), std::string::npos);
    EXPECT_FALSE(fs::exists(userRates() / "qrat-release.txt"));

    EXPECT_EQ(run({"release", "build", sources.path().string()}).status, 2);  // no -o
    EXPECT_EQ(run({"release", "frobnicate"}).status, 2);
}

}  // namespace
