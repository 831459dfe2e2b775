#include "casejson/casejson.h"
#include "cli/cli.h"

#include "casedata/casefile.h"

#include <ostream>

namespace rw::cli {

// import CASE.json -o CASE.INT: writes the case file of a JSON case. A case
// file given as input is rewritten in the current layout. Nothing is written
// unless the whole input was read.
int CmdImport(CliEnv& env)
{
    bool missing = false;
    const std::optional<std::string> output = TakeOption(env.args, "--output", "-o", &missing);
    if (missing || !output) {
        env.err << "qratcalc-cli import: name the case file to write with -o CASE.INT\n";
        return kExitBadInput;
    }
    if (env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << "qratcalc-cli import: usage: import CASE.json -o CASE.INT\n";
        return kExitBadInput;
    }
    Case c;
    std::string error;
    if (!LoadCaseFile(env.args[0], c, error)) {
        env.err << "qratcalc-cli import: " << error << "\n";
        return kExitBadInput;
    }
    try {
        WriteCase(*output, c);
    } catch (const Fault& f) {
        return TellNotWritten(env, "import", *output, f);
    }
    return kExitOk;
}

}  // namespace rw::cli
