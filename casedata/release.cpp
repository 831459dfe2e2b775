#include "casedata/release.h"

#include <fstream>

namespace rw {

bool ReadReleaseInfo(const std::filesystem::path& file, ReleaseInfo& out, std::string* problem)
{
    out = ReleaseInfo{};
    std::ifstream in(file);
    if (!in)
        return true;
    std::string line;
    int lineNo = 0;
    bool ok = true;
    auto fail = [&](const std::string& why) {
        ok = false;
        if (problem && problem->empty())
            *problem = file.string() + ":" + std::to_string(lineNo) + ": " + why;
    };
    while (std::getline(in, line)) {
        ++lineNo;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (line.empty() || line[0] == '#')
            continue;
        const auto eq = line.find('=');
        if (eq == std::string::npos) {
            fail("expected key=value");
            continue;
        }
        const std::string key = line.substr(0, eq);
        const std::string value = line.substr(eq + 1);
        auto date = [&](Date& d) {
            if (auto p = ParseUserDate(value))
                d = *p;
            else
                fail("not a date: " + value);
        };
        if (key == "version_tag")
            out.versionTag = value;
        else if (key == "description")
            out.description = value;
        else if (key == "verified_through")
            date(out.verifiedThrough);
        else if (key == "verified_through_text")
            out.verifiedThroughText = value;
        else if (key == "estimated_through")
            date(out.estimatedThrough);
        else if (key == "estimated_through_text")
            out.estimatedThroughText = value;
        else
            fail("unknown key " + key);
    }
    return ok;
}

std::string FormatReleaseInfo(const ReleaseInfo& info)
{
    return "version_tag=" + info.versionTag + "\n" + "description=" + info.description + "\n"
        + "verified_through=" + FormatMMDDYYYY(info.verifiedThrough) + "\n"
        + "verified_through_text=" + info.verifiedThroughText + "\n"
        + "estimated_through=" + FormatMMDDYYYY(info.estimatedThrough) + "\n"
        + "estimated_through_text=" + info.estimatedThroughText + "\n";
}

}  // namespace rw
