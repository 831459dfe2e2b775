#include "casejson/casejson.h"
#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

// export CASE: prints a case (case file of any layout, or JSON) as JSON.
int CmdExport(CliEnv& env)
{
    if (env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << "qratcalc-cli export: usage: export CASE.INT\n";
        return kExitBadInput;
    }
    Case c;
    std::string error;
    if (!LoadCaseFile(env.args[0], c, error)) {
        env.err << "qratcalc-cli export: " << error << "\n";
        return kExitBadInput;
    }
    env.out << CaseToJsonText(c);
    return kExitOk;
}

}  // namespace rw::cli
