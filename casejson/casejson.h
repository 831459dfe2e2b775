#pragma once
// The case as JSON: the readable, scriptable twin of the case file. A case
// written out as JSON and read back gives the same case, and the case file
// made from it is the same file byte for byte (old layouts come back in the
// current layout). docs/case-json.md describes the format.
//
// Amounts and rates are always taken from their decimal text: an amount
// through Money::parse, a rate straight to the nearest single
// (std::from_chars), never by way of a double.

#include "casedata/caserecord.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace rw {

// Parses JSON text for CaseFromJson. Unlike nlohmann::json::parse it keeps
// the exact text of every number that has a fraction or an exponent (such a
// number arrives as a tagged string that only CaseFromJson understands) and
// refuses an object that names a key twice. On failure fills `error` with one
// line and returns false.
bool ParseCaseJson(std::string_view text, nlohmann::json& out, std::string& error);

// The case a JSON object describes. A field left out keeps its cleared value
// (ClearInputs for the record, an empty entry for list records); the counts
// follow the lists. On the first problem returns nullopt and a one-line
// error naming the field, for example
//     payments[1].dtPmt: not a date: "13/45/2016"
std::optional<Case> CaseFromJson(const nlohmann::json& j, std::string& error);

// The JSON form of a case: every field of the record and of each list entry
// in use. Key order is alphabetical (nlohmann::json); CaseToJsonText keeps the
// record's own field order.
nlohmann::json CaseToJson(const Case& c);
// CaseToJson as indented text in field order, ending with a newline.
std::string CaseToJsonText(const Case& c);

// Reads a case from a case file (".INT", any layout) or a JSON case. Which
// one is told by the content: a file that begins with "NOTVB3" is a case
// file, anything else is read as JSON. On failure fills `error` with one line
// that starts with the path, leaves `out` unchanged and returns false.
bool LoadCaseFile(const std::string& path, Case& out, std::string& error);

}  // namespace rw
