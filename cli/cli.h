#pragma once
// qratcalc-cli: the command-line tool through which cases are scripted, tested
// and batch-processed. Each command lives in its own file.

#include "base/fault.h"
#include "base/paths.h"
#include "rates/release.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace rw::cli {

// What a command gets: its own arguments (after the command name), the
// streams, the folders, and the release of the rates in use: the installed
// one or a later one in the user's data folder, as the program chooses;
// "--tables DIR" takes the tables from DIR instead, with DIR's release file
// when it has one.
struct CliEnv {
    std::vector<std::string> args;
    std::ostream& out;
    std::ostream& err;
    Paths paths;
    ReleaseInUse release;
};

// Exit statuses: 0 done, 1 the command ran but found a problem, 2 bad input
// (unknown option, damaged or invalid case, fault of the computation).
inline constexpr int kExitOk = 0;
inline constexpr int kExitProblem = 1;
inline constexpr int kExitBadInput = 2;

int RunCli(int argc, char** argv, std::ostream& out, std::ostream& err);

// Pulls "--name VALUE" (or "-n VALUE") out of args; nullopt when absent.
// A flag given without its value is reported through `missing`.
std::optional<std::string> TakeOption(std::vector<std::string>& args, const std::string& name,
                                      const std::string& shortName, bool* missing);
// Pulls a "--name" switch out of args.
bool TakeSwitch(std::vector<std::string>& args, const std::string& name);

// A file the command could not write, told on the error stream: the safe
// writer's fault (57, 70 or 75) as "qratcalc-cli COMMAND: DETAIL" (the
// detail names the file and the system's reason), another fault as
// "qratcalc-cli COMMAND: cannot write PATH: FAULT". The command's status: 1.
int TellNotWritten(CliEnv& env, std::string_view command, const std::string& path, const Fault& f);

// The commands.
int CmdImport(CliEnv& env);
int CmdExport(CliEnv& env);
int CmdTables(CliEnv& env);
int CmdDetail(CliEnv& env);
int CmdCompute(CliEnv& env);
int CmdArrange(CliEnv& env);
int CmdReport(CliEnv& env);
int CmdPrint(CliEnv& env);
int CmdRelease(CliEnv& env);

}  // namespace rw::cli
