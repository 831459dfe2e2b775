#include "cli/cli.h"

#include "base/money.h"
#include "ratebuild/releasebuild.h"

#include <ostream>

namespace rw::cli {

namespace {

// release show: which release is in use, where it comes from, its dates and
// minimums, then every table's range.
int showRelease(CliEnv& env)
{
    const ReleaseInUse& use = env.release;
    if (!use.info.loaded()) {
        env.err << "qratcalc-cli release: no usable release of the rates was found\n";
        for (const std::string& w : use.warnings)
            env.err << "  " << w << "\n";
        return kExitProblem;
    }
    const ReleaseInfo& info = use.info;
    env.out << "Release:            " << info.name << " (" << info.description << ")\n"
            << "Folder:             " << use.folder.string()
            << (use.folder == env.paths.userReleaseDir()
                    ? "  (the user's data folder; replaces the installed release)"
                : use.folder == env.paths.installDir ? "  (installed with the program)"
                                                     : "")
            << "\n"
            << "Verified through:   " << FormatMMDDYYYY(info.verifiedThrough) << "  "
            << info.verifiedThroughText << "\n"
            << "Estimated through:  " << FormatMMDDYYYY(info.estimatedThrough) << "  "
            << info.estimatedThroughText << "\n"
            << "User release folder: " << env.paths.userReleaseDir().string() << "\n";
    for (const std::string& note : use.notes)
        env.out << "Note: " << note << "\n";
    env.out << "\nFailure-to-file minimum by the calendar year of the due date:\n";
    for (const FtfMinimum& m : info.ftfMinimums.rows)
        env.out << "  from " << m.firstYear << "  " << RtJustAmt(m.amount) << "  " << m.source
                << "\n";
    env.out << "\n";
    env.args.clear();
    return CmdTables(env);
}

// release build SOURCES_DIR -o DIR: the same build as the program's own.
int buildRelease(CliEnv& env)
{
    bool missing = false;
    const std::optional<std::string> outDir = TakeOption(env.args, "--output", "-o", &missing);
    if (missing || !outDir || env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << "qratcalc-cli release: usage: release build SOURCES_DIR -o DIR\n";
        return kExitBadInput;
    }
    const ratesrc::ReleaseBuild build = ratesrc::BuildRelease(env.args[0]);
    for (const ratesrc::SourceProblem& p : build.problems)
        env.err << "qratcalc-cli release: " << p.text() << "\n";
    if (!build.ok()) {
        env.err << "qratcalc-cli release: nothing written\n";
        return kExitBadInput;
    }
    std::string why;
    if (!ratesrc::WriteRelease(build, *outDir, &why)) {
        env.err << "qratcalc-cli release: " << why << "\n";
        return kExitProblem;
    }
    const ReleaseInfo& info = build.info;
    env.out << "Built " << info.name << " (" << info.description << ") in " << *outDir
            << ": verified through " << info.verifiedThroughText << ", estimated through "
            << info.estimatedThroughText << ".\n"
            << ratesrc::ReleaseTablesSummary(build);
    const std::filesystem::path userFolder = env.paths.userReleaseDir();
    std::error_code ec;
    if (!std::filesystem::equivalent(*outDir, userFolder, ec))
        env.out << "The program uses a release in " << userFolder.string()
                << " when it is verified through a later date than the installed one.\n";
    return kExitOk;
}

}  // namespace

int CmdRelease(CliEnv& env)
{
    const std::string sub = env.args.empty() ? std::string() : env.args[0];
    if (!env.args.empty())
        env.args.erase(env.args.begin());
    if (sub == "show" && env.args.empty())
        return showRelease(env);
    if (sub == "build")
        return buildRelease(env);
    env.err << "qratcalc-cli release: usage: release show | release build SOURCES_DIR -o DIR\n";
    return kExitBadInput;
}

}  // namespace rw::cli
