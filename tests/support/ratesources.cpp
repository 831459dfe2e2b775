#include "support/ratesources.h"

#include <stdexcept>

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace rwtest {

namespace fs = std::filesystem;

fs::path FixtureRateSources()
{
    return fs::path(RW_FIXTURE_SOURCES);
}

fs::path ShippedRateSources()
{
    const char* src = std::getenv("RW_SOURCE_DIR");
    return fs::path(src ? src : ".") / "data" / "rates";
}

void CopyRateSourcesWithNextQuarter(const fs::path& dest)
{
    fs::copy(FixtureRateSources(), dest, fs::copy_options::recursive);
    std::ifstream in(dest / "fed.csv", std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    in.close();
    std::string fed = text.str();
    const auto at = fed.find("01/01/2027,03/31/2027,0.07,0.07,C,ESTIMATE:");
    if (at == std::string::npos)
        throw std::runtime_error("the fixture's fed.csv has no estimated first quarter of 2027");
    fed.replace(at, fed.find('\n', at) - at, "01/01/2027,03/31/2027,0.07,0.07,C,Rev. Rul. 2027-3");
    fed += "04/01/2027,06/30/2027,0.08,0.08,C,ESTIMATE: a rise expected\n";
    std::ofstream(dest / "fed.csv", std::ios::binary) << fed;
}

}  // namespace rwtest
