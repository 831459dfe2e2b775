#include "cli/cli.h"

#include "base/numtext.h"
#include "casedata/casefile.h"
#include "casejson/casejson.h"
#include "cli/cmd_report.h"
#include "penalties/arrange.h"

#include <algorithm>
#include <ostream>

namespace rw::cli {

namespace {

Money payrollPenalty(const Case& c)
{
    std::vector<PRPenTblElement> table;
    CalcUSPRPen(c, c.payments(), table);
    return TotalPRPenalty(table);
}

bool endsWithJson(std::string path)
{
    std::transform(path.begin(), path.end(), path.begin(),
                   [](unsigned char ch) { return std::tolower(ch); });
    return path.ends_with(".json");
}

}  // namespace

// arrange CASE -o OUT: the deposit arrangement search on a payroll case, as
// closing the Payments dialog with auto-arrange checked runs it; the case is
// written with its payments in the cheapest order (a case file, or a JSON
// case when OUT ends in ".json"). The message boxes of the search go to the
// output, then one line with the penalties before and after.
int CmdArrange(CliEnv& env)
{
    const char* usage = "qratcalc-cli arrange: usage: arrange CASE -o OUT.INT\n";
    bool missing = false;
    const auto out = TakeOption(env.args, "--output", "-o", &missing);
    if (missing || !out || env.args.size() != 1 || env.args[0].starts_with("-")) {
        env.err << usage;
        return kExitBadInput;
    }
    Case c;
    std::string error;
    if (!LoadCaseFile(env.args[0], c, error)) {
        env.err << "qratcalc-cli arrange: " << error << "\n";
        return kExitBadInput;
    }
    if (!IsYes(c.init.bPayroll)) {
        env.err << "qratcalc-cli arrange: " << env.args[0]
                << " is not a payroll case; payments are arranged only against payroll deposits\n";
        return kExitBadInput;
    }
    const int n = c.init.nPmts;
    if (n >= kMaxArrangePayments) {
        StreamMessages(env.err).show("WARNING", ArrangeTooManyPaymentsText(), MsgIcon::Exclamation);
        env.err << "qratcalc-cli arrange: " << n
                << " payments; nothing was arranged and nothing written\n";
        return kExitProblem;
    }
    try {
        const Money before = payrollPenalty(c);
        StreamMessages msgs(env.out);
        GetLowestPRPen(c, msgs);
        // The Payments dialog leaves the flag off once the search has run.
        c.init.bAutoArrange = kNo;
        const Money after = payrollPenalty(c);
        env.out << "Payroll deposit penalties: " << FormatMoney(before) << " as entered, "
                << FormatMoney(after) << " arranged; saved " << FormatMoney(before - after)
                << " over " << FormatCount(n == 0 ? 0 : GetFactorial(n)) << " orders\n";
    } catch (const Refusal& r) {
        WriteRefusal(env, r);
        return kExitBadInput;
    } catch (const Fault& f) {
        WriteFault(env, f);
        return kExitBadInput;
    }
    try {
        if (endsWithJson(*out)) {
            const std::string text = CaseToJsonText(c);
            WriteFileAtomically(*out, std::vector<char>(text.begin(), text.end()), "WriteCaseJson");
        } else {
            WriteCase(*out, c);
        }
    } catch (const Fault& f) {
        return TellNotWritten(env, "arrange", *out, f);
    }
    return kExitOk;
}

}  // namespace rw::cli
