#pragma once
// The releases of the rates the tests compute with: the release of early
// 2018 (a fixture under tests/fixtures, whose alerts and minimums are known to the
// letter) and the release the build ships (in the installation folder).

#include "casedata/release.h"

#include <filesystem>

namespace rwtest {

// The folder of the 2018 fixture's release file.
std::filesystem::path Release2018Folder();

// The releases, read once; a release that cannot be read fails the test
// that asked for it and gives the empty release.
const rw::ReleaseInfo& Release2018();
const rw::ReleaseInfo& ShippedRelease();

// The 2018 failure-to-file minimums: 100.00 up to 2008, 135.00 for 2009 to
// 2015, 205.00 from 2016.
inline const rw::FtfMinimumSchedule& Minimums2018()
{
    return Release2018().ftfMinimums;
}

}  // namespace rwtest
