#pragma once
// A fresh folder for one test, removed with its contents afterwards.

#include <filesystem>

namespace rwtest {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(const std::filesystem::path& p) const { return path_ / p; }

private:
    std::filesystem::path path_;
};

}  // namespace rwtest
