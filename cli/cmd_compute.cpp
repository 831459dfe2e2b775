#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdCompute(CliEnv& env)
{
    env.err << "qratcalc-cli compute: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
