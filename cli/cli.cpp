#include "cli/cli.h"

#include <algorithm>
#include <filesystem>
#include <ostream>

namespace rw::cli {

namespace {

struct Command {
    const char* name;
    int (*run)(CliEnv&);
    const char* usage;
};

const Command kCommands[] = {
    {"import", CmdImport, "import CASE.json -o CASE.INT      convert a JSON case into a case file"},
    {"export", CmdExport, "export CASE.INT                   print a case file as JSON"},
    {"tables", CmdTables,
     "tables [CODE]                     list the rate tables, or one table's rows"},
    {"detail", CmdDetail, "detail CASE                       print the detailed interest analysis"},
    {"compute", CmdCompute, "compute --json CASE               print the computation as JSON"},
    {"arrange", CmdArrange,
     "arrange CASE.INT -o OUT.INT       reorder payments for the lowest payroll penalty"},
    {"report", CmdReport, "report --reports LIST CASE        print the display texts of reports"},
    {"report", CmdReport,
     "report --csv DIR CASE             write the reports as CSV files into DIR"},
    {"print", CmdPrint, "print --reports LIST (--pdf OUT.pdf | --text) CASE   print reports"},
    {"release", CmdRelease,
     "release show                      the release of the rates in use, its dates and tables"},
    {"release", CmdRelease,
     "release build SOURCES_DIR -o DIR  build a release of the rates from their sources"},
};

void usage(std::ostream& os)
{
    os << "usage: qratcalc-cli COMMAND [--tables DIR] ...\n";
    for (const Command& c : kCommands)
        os << "  qratcalc-cli " << c.usage << "\n";
    os << "report and print: --prepared MM/DD/YYYY names the day the reports were prepared "
          "(today)\n";
}

}  // namespace

std::optional<std::string> TakeOption(std::vector<std::string>& args, const std::string& name,
                                      const std::string& shortName, bool* missing)
{
    for (auto it = args.begin(); it != args.end(); ++it) {
        if (*it == name || (!shortName.empty() && *it == shortName)) {
            if (it + 1 == args.end()) {
                if (missing)
                    *missing = true;
                args.erase(it);
                return std::nullopt;
            }
            std::string value = *(it + 1);
            args.erase(it, it + 2);
            return value;
        }
    }
    return std::nullopt;
}

bool TakeSwitch(std::vector<std::string>& args, const std::string& name)
{
    auto it = std::find(args.begin(), args.end(), name);
    if (it == args.end())
        return false;
    args.erase(it);
    return true;
}

int TellNotWritten(CliEnv& env, std::string_view command, const std::string& path, const Fault& f)
{
    env.err << "qratcalc-cli " << command << ": ";
    if (IsWriteFault(f))
        env.err << f.detail() << "\n";
    else
        env.err << "cannot write " << path << ": " << f.what() << "\n";
    return kExitProblem;
}

int RunCli(int argc, char** argv, std::ostream& out, std::ostream& err)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty() || args[0] == "--help" || args[0] == "-h") {
        usage(args.empty() ? err : out);
        return args.empty() ? kExitBadInput : kExitOk;
    }
    const std::string name = args[0];
    args.erase(args.begin());
    CliEnv env{args, out, err, Paths::FromEnvironment(), {}};
    bool missing = false;
    const std::optional<std::string> tables = TakeOption(env.args, "--tables", "", &missing);
    if (missing) {
        err << "qratcalc-cli: --tables needs a folder\n";
        return kExitBadInput;
    }
    env.release = ChooseRelease(env.paths);
    env.paths.ratesDir = env.release.folder;
    if (tables) {
        env.paths.ratesDir = *tables;
        env.release.folder = *tables;
        // The folder's own release file, when it has one, is checked as any release is.
        ReleaseInfo own;
        std::error_code ec;
        if (std::filesystem::exists(env.paths.releaseFile(), ec)) {
            const std::string problem = CheckReleaseFolder(*tables, own);
            if (problem.empty())
                env.release.info = std::move(own);
            else
                err << "qratcalc-cli: the release in " << *tables << " is not used: " << problem
                    << "\n";
        }
    } else
        for (const std::string& warning : env.release.warnings)
            err << "qratcalc-cli: " << warning << "\n";
    for (const Command& c : kCommands)
        if (name == c.name)
            return c.run(env);
    err << "qratcalc-cli: unknown command '" << name << "'\n";
    usage(err);
    return kExitBadInput;
}

}  // namespace rw::cli
