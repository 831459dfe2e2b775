#pragma once
// Rate sources for the tests: the frozen sources of the fourth quarter of 2026
// (tests/fixtures/rates-2026q4), a copy of them with one more quarter, as a
// user preparing an update would make it, and the sources the program ships
// (data/rates), which only the invariant checks of the shipped data read.

#include <filesystem>

namespace rwtest {

// tests/fixtures/rates-2026q4: fed.csv, states/<CODE>.csv, ftf_minimum.csv.
std::filesystem::path FixtureRateSources();

// data/rates, which changes with every quarterly update.
std::filesystem::path ShippedRateSources();

// Copies the fixture's sources into dest (an existing, empty folder) and adds
// a quarter: the first quarter of 2027 is announced (its row loses the
// ESTIMATE mark and takes the made-up source "Rev. Rul. 2027-3", 7 %) and the
// second quarter of 2027 is added as an estimate of 8 %. The release built
// from it is verified through 3/31/2027 and estimated through 6/30/2027.
void CopyRateSourcesWithNextQuarter(const std::filesystem::path& dest);

}  // namespace rwtest
