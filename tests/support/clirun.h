#pragma once
// Runs qratcalc-cli in the test's own process, as if from a shell, and keeps
// what it printed. For test programs that link the command-line tool.

#include "cli/cli.h"

#include <sstream>
#include <string>
#include <vector>

namespace rwtest {

struct CliRun {
    int status = 0;
    std::string out;
    std::string err;
};

// args without the program name: {"arrange", "IN.INT", "-o", "OUT.INT"}.
inline CliRun RunCliCommand(std::vector<std::string> args)
{
    args.insert(args.begin(), "qratcalc-cli");
    std::vector<char*> argv;
    for (std::string& a : args)
        argv.push_back(a.data());
    std::ostringstream out, err;
    CliRun r;
    r.status = rw::cli::RunCli(static_cast<int>(argv.size()), argv.data(), out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

}  // namespace rwtest
