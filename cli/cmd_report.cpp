#include "cli/cli.h"

#include <ostream>

namespace rw::cli {

int CmdReport(CliEnv& env)
{
    env.err << "qratcalc-cli report: not available in this build yet\n";
    return kExitBadInput;
}

}  // namespace rw::cli
