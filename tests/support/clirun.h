#pragma once
// Runs qratcalc-cli in the test's own process, as if from a shell, and keeps
// what it printed. For test programs that link the command-line tool.

#include "cli/cli.h"
#include "support/releases.h"

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace rwtest {

struct CliRun {
    int status = 0;
    std::string out;
    std::string err;
};

// args without the program name: {"arrange", "IN.INT", "-o", "OUT.INT"}. The
// tool runs with `installDir` as its installation folder (RW_INSTALL_DIR,
// put back afterwards): by default the tests' release of the rates, so that
// no run depends on the rates the program ships.
inline CliRun RunCliCommand(std::vector<std::string> args,
                            const std::filesystem::path& installDir = FixtureReleaseFolder())
{
    const char* old = std::getenv("RW_INSTALL_DIR");
    const std::optional<std::string> oldInstall
        = old ? std::optional<std::string>(old) : std::nullopt;
    setenv("RW_INSTALL_DIR", installDir.c_str(), 1);

    args.insert(args.begin(), "qratcalc-cli");
    std::vector<char*> argv;
    for (std::string& a : args)
        argv.push_back(a.data());
    std::ostringstream out, err;
    CliRun r;
    r.status = rw::cli::RunCli(static_cast<int>(argv.size()), argv.data(), out, err);
    r.out = out.str();
    r.err = err.str();

    if (oldInstall)
        setenv("RW_INSTALL_DIR", oldInstall->c_str(), 1);
    else
        unsetenv("RW_INSTALL_DIR");
    return r;
}

}  // namespace rwtest
