#pragma once
// The settings file: an INI-style text file of "[Section]" headers and
// "key=value" lines, read and written one key at a time.
//
// - Section and key names compare without regard to case (ASCII letters);
//   blanks around names and values are not part of them. Lines beginning
//   with ';' are comments. The first section of a name and the first key of a
//   name in it count.
// - A value is read into a buffer of 255 characters: at most 254 come back,
//   the rest is cut. Quotes are part of the value.
// - Writing a key replaces its line (and only that line) or adds it at the
//   end of its section, creating the section at the end of the file, or the
//   file itself; every other line is kept as it was, line endings included.

#include <filesystem>
#include <string>
#include <string_view>

namespace rw {

inline constexpr std::size_t kProfileBuffer = 255;

class SettingsFile {
public:
    explicit SettingsFile(std::filesystem::path file)
        : file_(std::move(file))
    {
    }

    const std::filesystem::path& path() const { return file_; }

    // The value of key in section, or def when the file, the section or the
    // key is missing. Cut to kProfileBuffer - 1 characters, the default too.
    std::string read(std::string_view section, std::string_view key, std::string_view def) const;

    // Sets key to value in section, creating the file's folder when missing.
    // A file that cannot be written is a fault (75, "WriteSettings").
    void write(std::string_view section, std::string_view key, std::string_view value);

private:
    std::filesystem::path file_;
};

}  // namespace rw
