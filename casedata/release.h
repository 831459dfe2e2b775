#pragma once
// What a release of the rate tables says about itself: the version shown in
// the About box and the window title, and the dates through which its rates
// are verified and estimated. It is delivered beside the tables (a small text
// file in the installation folder) so that tables and dates change together.

#include "casedata/dates.h"
#include "casedata/paths.h"

#include <string>

namespace rw {

struct ReleaseInfo {
    std::string versionTag = "Qrat2018Q1.10";
    std::string description = "2018, 1st Quarter";
    Date verifiedThrough = Date::fromCivil(2018, 3, 31);
    std::string verifiedThroughText = "March 31, 2018";
    Date estimatedThrough = Date::fromCivil(2018, 6, 30);
    std::string estimatedThroughText = "June 30, 2018";

    friend bool operator==(const ReleaseInfo&, const ReleaseInfo&) = default;
};

// Reads "key=value" lines (version_tag, description, verified_through,
// verified_through_text, estimated_through, estimated_through_text). A missing
// file gives the values of this release; a key that is missing or a date that
// does not parse keeps its default. Returns false (and fills `problem`) when
// the file exists but holds a line that cannot be read.
bool ReadReleaseInfo(const std::filesystem::path& file, ReleaseInfo& out, std::string* problem = nullptr);

std::string FormatReleaseInfo(const ReleaseInfo& info);

}  // namespace rw
