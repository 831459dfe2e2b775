#pragma once
// What the report and print commands share: the report list of --reports,
// loading a case with its authority's rate table, message boxes written to
// the error stream, and faults written as JSON.

#include "casedata/caserecord.h"
#include "casedata/fault.h"
#include "casedata/messages.h"
#include "casedata/ratetable.h"
#include "cli/cli.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rw::cli {

// "inputs,summary,detail,ftfp,accrel,payroll" (any of them, any order, or
// "all") as a report choice; nullopt with error for an unknown name.
std::optional<std::int32_t> ParseReportList(std::string_view list, std::string& error);

// Message boxes as lines on a stream: "TITLE: text".
class StreamMessages : public Messages {
public:
    explicit StreamMessages(std::ostream& os) : os_(os) {}
    void show(std::string_view title, std::string_view text, MsgIcon icon) override;
    // Questions are answered Yes.
    bool ask(std::string_view title, std::string_view text, MsgIcon icon) override;

private:
    std::ostream& os_;
};

// Reads the case (case file or JSON) and loads its authority's table.
// Problems are written to env.err after "qratcalc-cli <command>: ";
// returns kExitOk, or the status to exit with.
int LoadCaseWithRates(CliEnv& env, std::string_view command, const std::string& path, Case& c,
                      RateTable& rates);

// {"fault": {"procedure": ..., "number": ..., "detail": ...}} on env.out.
void WriteFault(CliEnv& env, const Fault& f);

}  // namespace rw::cli
