#pragma once
// What the compute and detail commands share: the case with its authority's
// rate table, the whole computation, and the computation as JSON.

#include "casedata/caserecord.h"
#include "cli/cli.h"
#include "penalties/compute.h"
#include "rates/ratetable.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace rw::cli {

// Reads the case (case file or JSON case) and its authority's rate table
// file. A case or table that cannot be read is told on env.err after
// "qratcalc-cli <command>: "; returns kExitOk or kExitBadInput.
int LoadCaseAndTable(CliEnv& env, std::string_view command, const std::string& path, Case& c,
                     RateTable& rates);

// The computation as one JSON object: "interest" (the total), "summary"
// (the summary lines shown, {"label", "amount"}, the last one "Total"),
// "rows" (the result rows), "timeline" (the sorted points), "ftoRows" (the
// failure-to-file and -pay months that carry an amount), "payrollTable" (the
// payroll deposit penalty pieces). Money is exact
// text with four decimals; dates are "mm/dd/yyyy", or the day number outside
// 1800-2200; rates and factors are numbers that read back bit for bit; fixed
// texts keep their padding and NULs.
nlohmann::ordered_json ComputationJson(const CaseComputation& k);

}  // namespace rw::cli
