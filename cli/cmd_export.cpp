#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdExport(CliEnv& env)
{
    env.err << "qratcalc-cli export: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
