#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdArrange(CliEnv& env)
{
    env.err << "qratcalc-cli arrange: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
