#include "base/numtext.h"
#include "cli/cli.h"
#include "cli/cmd_compute.h"
#include "cli/cmd_report.h"
#include "engine/detail.h"

#include <ostream>

namespace rw::cli {

// detail CASE: the detailed interest analysis, one line per result row with
// its nine cells separated by one blank, then the total line.
int CmdDetail(CliEnv& env)
{
    if (env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << "qratcalc-cli detail: usage: detail CASE\n";
        return kExitBadInput;
    }
    Case c;
    RateTable rates;
    if (int status = LoadCaseAndTable(env, "detail", env.args[0], c, rates); status != kExitOk)
        return status;
    DetailAnalysis a;
    try {
        a = MakeDetailAnalysis(ComputeCase(c, rates, env.release.info.ftfMinimums).rows);
    } catch (const Refusal& r) {
        WriteRefusal(env, r);
        return kExitBadInput;
    } catch (const Fault& f) {
        WriteFault(env, f);
        return kExitBadInput;
    }
    for (const DetailLine& line : a.rows)
        env.out << Latin1ToUtf8(DetailText(line)) << "\n";
    env.out << Latin1ToUtf8(DetailText(a.total)) << "\n";
    return kExitOk;
}

}  // namespace rw::cli
