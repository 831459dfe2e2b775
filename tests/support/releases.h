#pragma once
// The releases of the rates the tests compute with: the release of early
// 2018 (a fixture under tests/fixtures, whose alerts and minimums are known to
// the letter) and the release of the fourth quarter of 2026, built by the
// build from the frozen sources tests/fixtures/rates-2026q4 into the build
// tree. Neither changes when the shipped rates (data/rates) are updated.

#include "rates/release.h"

#include <filesystem>

namespace rwtest {

// The folder of the 2018 fixture's release file.
std::filesystem::path Release2018Folder();

// The folder of the tests' release of the fourth quarter of 2026: every
// authority's table, rates-src/ and the release file (Qrat2026Q4, verified
// through 12/31/2026, estimated through 3/31/2027).
std::filesystem::path FixtureReleaseFolder();

// The releases, read once; a release that cannot be read fails the test
// that asked for it and gives the empty release.
const rw::ReleaseInfo& Release2018();
const rw::ReleaseInfo& FixtureRelease();

// The 2018 failure-to-file minimums: 100.00 up to 2008, 135.00 for 2009 to
// 2015, 205.00 from 2016.
inline const rw::FtfMinimumSchedule& Minimums2018()
{
    return Release2018().ftfMinimums;
}

}  // namespace rwtest
