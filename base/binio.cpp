#include "base/binio.h"

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

int FileSystemCalls::create(const char* path)
{
    return ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
}
long FileSystemCalls::write(int fd, const char* data, std::size_t n)
{
    return static_cast<long>(::write(fd, data, n));
}
int FileSystemCalls::flush(int fd)
{
    return ::fsync(fd);
}
int FileSystemCalls::close(int fd)
{
    return ::close(fd);
}
int FileSystemCalls::rename(const char* from, const char* to)
{
    return std::rename(from, to);
}
int FileSystemCalls::remove(const char* path)
{
    return ::unlink(path);
}

FileSystemCalls& SystemFileCalls()
{
    static FileSystemCalls calls;
    return calls;
}

void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes,
                         std::string_view procedure)
{
    WriteFileAtomically(path, bytes, procedure, SystemFileCalls());
}

void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes,
                         std::string_view procedure, FileSystemCalls& fs)
{
    namespace fsys = std::filesystem;
    const fsys::path target(path);
    const fsys::path tmp = target.parent_path() / (target.filename().string() + ".tmp~");
    const int fd = fs.create(tmp.c_str());
    if (fd < 0)
        ThrowFault(kErrPathAccess, procedure,
                   "cannot create " + tmp.string() + ": " + std::strerror(errno));
    // From here on a failure removes the temporary file; the target is untouched.
    const auto fail = [&](std::int16_t number, const std::string& what, int err, bool open) {
        if (open)
            fs.close(fd);
        fs.remove(tmp.c_str());
        ThrowFault(number, procedure, what + ": " + std::strerror(err));
    };
    std::size_t done = 0;
    while (done < bytes.size()) {
        const long n = fs.write(fd, bytes.data() + done, bytes.size() - done);
        const int err = n < 0 ? errno : EIO;
        if (n < 0 && err == EINTR)
            continue;
        if (n <= 0)
            fail(kErrDeviceIO, "cannot write " + tmp.string(), err, true);
        done += static_cast<std::size_t>(n);
    }
    if (fs.flush(fd) != 0) {
        const int err = errno;
        fail(kErrDeviceIO, "cannot write " + tmp.string(), err, true);
    }
    if (fs.close(fd) != 0) {
        const int err = errno;
        fail(kErrDeviceIO, "cannot write " + tmp.string(), err, false);
    }
    if (fs.rename(tmp.c_str(), target.c_str()) != 0) {
        const int err = errno;
        fail(kErrPathAccess, "cannot replace " + path, err, false);
    }
}

}  // namespace rw
