// mkrelease: checks the release description delivered with the rate tables
// (data/rates/release.txt) and writes it into the installation folder in the
// form the program reads. Every key must be given: a missing one would
// silently fall back to the program's built-in values. With --fed, the
// federal table must reach the estimated-through date.

#include "casedata/release.h"
#include "tools/ratetables/outfile.h"
#include "tools/ratetables/ratesource.h"

#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

int usage()
{
    std::cerr << "usage: mkrelease RELEASE.txt OUT.txt [--fed FED.csv]\n";
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    std::string fed;
    if (args.size() == 4 && args[2] == "--fed") {
        fed = args[3];
        args.resize(2);
    }
    if (args.size() != 2)
        return usage();
    const std::filesystem::path source = args[0];
    const std::filesystem::path out = args[1];

    std::string text;
    if (!rw::ratesrc::ReadOutputFile(source, text)) {
        std::cerr << "mkrelease: " << source.string() << ": cannot be read\n";
        return 1;
    }
    rw::ReleaseInfo info;
    std::string problem;
    if (!rw::ReadReleaseInfo(source, info, &problem)) {
        std::cerr << "mkrelease: " << problem << "\n";
        return 1;
    }
    std::set<std::string> keys;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (!line.empty() && line[0] != '#' && line.find('=') != std::string::npos)
            keys.insert(line.substr(0, line.find('=')));
    bool ok = true;
    for (const char* key : {"version_tag", "description", "verified_through", "verified_through_text",
                            "estimated_through", "estimated_through_text"}) {
        if (!keys.count(key)) {
            std::cerr << "mkrelease: " << source.string() << ": " << key << " is not given\n";
            ok = false;
        }
    }
    if (info.estimatedThrough < info.verifiedThrough) {
        std::cerr << "mkrelease: " << source.string() << ": estimated_through is before verified_through\n";
        ok = false;
    }
    if (!fed.empty()) {
        const auto built
            = rw::ratesrc::BuildTable(rw::ratesrc::ReadSourceFile(fed, rw::ratesrc::kTableHeader));
        if (!built.ok() || built.rows.back().dtThru < info.estimatedThrough) {
            std::cerr << "mkrelease: " << fed << ": the federal table does not reach estimated_through "
                      << rw::FormatMMDDYYYY(info.estimatedThrough) << "\n";
            ok = false;
        }
    }
    if (!ok)
        return 1;
    std::string why;
    if (!rw::ratesrc::WriteOutputFile(out, rw::FormatReleaseInfo(info), false, &why)) {
        std::cerr << "mkrelease: " << why << "\n";
        return 1;
    }
    return 0;
}
