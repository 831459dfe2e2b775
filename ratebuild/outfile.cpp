#include "ratebuild/outfile.h"

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
    std::filesystem::path tmp = file;
    tmp += ".part";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        if (!out)
            return fail("cannot be written");
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        out.close();
        if (!out) {
            std::filesystem::remove(tmp, ec);
            return fail("writing failed");
        }
    }
    std::filesystem::rename(tmp, file, ec);
    if (ec) {
        const std::string message = ec.message();
        std::filesystem::remove(tmp, ec);
        return fail("cannot be replaced: " + message);
    }
    return true;
}

}  // namespace rw::ratesrc
