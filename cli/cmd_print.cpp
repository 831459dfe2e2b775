#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdPrint(CliEnv& env)
{
    env.err << "qratcalc-cli print: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
