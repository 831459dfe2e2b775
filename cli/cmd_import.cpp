#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdImport(CliEnv& env)
{
    env.err << "qratcalc-cli import: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
