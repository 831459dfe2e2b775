#pragma once
// Writing the build's outputs so that a failed or interrupted run never leaves
// a half-written file behind, and an unchanged output keeps its time stamp.

#include <filesystem>
#include <string>
#include <string_view>

namespace rw::ratesrc {

// Writes bytes through the safe writer (WriteFileAtomically), creating
// missing folders. With onlyIfChanged, a file that already holds exactly these
// bytes is left alone. False (with `why`, naming the file and the system's
// reason) on failure.
bool WriteOutputFile(const std::filesystem::path& file, std::string_view bytes, bool onlyIfChanged,
                     std::string* why);

// The whole content of a file; false when it cannot be read.
bool ReadOutputFile(const std::filesystem::path& file, std::string& bytes);

}  // namespace rw::ratesrc
