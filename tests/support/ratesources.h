#pragma once
// The rate sources the program ships (data/rates), and a copy of them with
// one more quarter, as a user preparing an update would make it.

#include <filesystem>

namespace rwtest {

std::filesystem::path ShippedRateSources();

// Copies the shipped sources into dest (an existing, empty folder) and adds a
// quarter: the third quarter of 2026 is announced (its row loses the ESTIMATE
// mark and takes the source "Rev. Rul. 2026-12", 7 %) and the first quarter of
// 2027 is added as an estimate of 8 %. The release built from it is verified
// through 9/30/2026 and estimated through 3/31/2027.
void CopyRateSourcesWithNextQuarter(const std::filesystem::path& dest);

}  // namespace rwtest
