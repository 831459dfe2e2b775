#include "casedata/binio.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

namespace rw {

bool ReadWholeFile(const std::string& path, std::vector<char>& out)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return false;
    in.seekg(0, std::ios::end);
    const std::streamoff size = in.tellg();
    if (size < 0)
        return false;
    in.seekg(0, std::ios::beg);
    out.resize(static_cast<std::size_t>(size));
    if (size > 0 && !in.read(out.data(), size))
        return false;
    return true;
}

void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes, std::string_view procedure)
{
    namespace fs = std::filesystem;
    const fs::path target(path);
    const fs::path tmp = target.parent_path() / (target.filename().string() + ".tmp~");
    const int fd = ::open(tmp.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0)
        ThrowFault(kErrPathAccess, procedure, "cannot create " + tmp.string() + ": " + std::strerror(errno));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            const int err = errno;
            ::close(fd);
            ::unlink(tmp.c_str());
            ThrowFault(kErrDeviceIO, procedure, "cannot write " + tmp.string() + ": " + std::strerror(err));
        }
        done += static_cast<std::size_t>(n);
    }
    if (::fsync(fd) != 0 || ::close(fd) != 0) {
        const int err = errno;
        ::unlink(tmp.c_str());
        ThrowFault(kErrDeviceIO, procedure, "cannot write " + tmp.string() + ": " + std::strerror(err));
    }
    if (::rename(tmp.c_str(), target.c_str()) != 0) {
        const int err = errno;
        ::unlink(tmp.c_str());
        ThrowFault(kErrPathAccess, procedure, "cannot replace " + path + ": " + std::strerror(err));
    }
}

}  // namespace rw
