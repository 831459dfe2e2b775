#include "ratebuild/outfile.h"

#include "base/binio.h"

#include <fstream>
#include <sstream>

namespace rw::ratesrc {

bool ReadOutputFile(const std::filesystem::path& file, std::string& bytes)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream s;
    s << in.rdbuf();
    bytes = s.str();
    return true;
}

bool WriteOutputFile(const std::filesystem::path& file, std::string_view bytes, bool onlyIfChanged,
                     std::string* why)
{
    auto fail = [&](const std::string& what) {
        if (why)
            *why = file.string() + ": " + what;
        return false;
    };
    if (onlyIfChanged) {
        std::string old;
        if (ReadOutputFile(file, old) && old == bytes)
            return true;
    }
    std::error_code ec;
    if (file.has_parent_path()) {
        std::filesystem::create_directories(file.parent_path(), ec);
        if (ec)
            return fail("cannot create the folder: " + ec.message());
    }
    try {
        WriteFileAtomically(file.string(), std::vector<char>(bytes.begin(), bytes.end()),
                            "WriteOutputFile");
    } catch (const Fault& f) {
        if (why)
            *why = f.detail();
        return false;
    }
    return true;
}

}  // namespace rw::ratesrc
