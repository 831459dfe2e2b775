#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdTables(CliEnv& env)
{
    env.err << "qratcalc-cli tables: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
