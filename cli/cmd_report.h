#pragma once
// What the report and print commands share: the report list of --reports,
// message boxes written to the error stream, and faults written as JSON.
// (Cases and their rate tables are loaded with LoadCaseAndTable.)

#include "base/fault.h"
#include "base/messages.h"
#include "cli/cli.h"
#include "reports/provenance.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace rw::cli {

// "inputs,summary,detail,ftfp,accrel,payroll" (any of them, any order, or
// "all") as a report choice; nullopt with error for an unknown name.
std::optional<std::int32_t> ParseReportList(std::string_view list, std::string& error);

// The provenance of the reports: the release in use and the day of
// "--prepared MM/DD/YYYY" (taken out of env.args), today without it. A date
// that is not one is told on env.err after "qratcalc-cli COMMAND: "; nullopt
// then.
std::optional<ReportProvenance> TakeProvenance(CliEnv& env, std::string_view command);

// Message boxes as lines on a stream: "TITLE: text".
class StreamMessages : public Messages {
public:
    explicit StreamMessages(std::ostream& os)
        : os_(os)
    {
    }
    void show(std::string_view title, std::string_view text, MsgIcon icon) override;
    // Questions are answered Yes.
    bool ask(std::string_view title, std::string_view text, MsgIcon icon) override;

private:
    std::ostream& os_;
};

// {"fault": {"procedure": ..., "number": ..., "detail": ...}} on env.out.
void WriteFault(CliEnv& env, const Fault& f);
// A computation the rates cannot support, as {"refused": {"title", "message"}}
// on the output and its message on the error stream.
void WriteRefusal(CliEnv& env, const Refusal& r);

}  // namespace rw::cli
