#include "support/releases.h"

#include <stdexcept>

namespace rwtest {

namespace {

rw::ReleaseInfo readOnce(const std::filesystem::path& file)
{
    rw::ReleaseInfo info;
    std::string problem;
    if (!rw::ReadReleaseInfo(file, info, &problem))
        throw std::runtime_error(problem);
    return info;
}

}  // namespace

std::filesystem::path Release2018Folder()
{
    return std::filesystem::path(RW_TEST_FIXTURES) / "release-2018";
}

std::filesystem::path FixtureReleaseFolder()
{
    return std::filesystem::path(RW_FIXTURE_RELEASE);
}

const rw::ReleaseInfo& Release2018()
{
    static const rw::ReleaseInfo info = readOnce(Release2018Folder() / rw::kReleaseFileName);
    return info;
}

const rw::ReleaseInfo& FixtureRelease()
{
    static const rw::ReleaseInfo info = readOnce(FixtureReleaseFolder() / rw::kReleaseFileName);
    return info;
}

}  // namespace rwtest
