#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdDetail(CliEnv& env)
{
    env.err << "qratcalc-cli detail: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
