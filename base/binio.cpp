#include "base/binio.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace rw {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kDefaultReadLimit = std::size_t{64} << 20;

constexpr std::array<std::uint32_t, 256> kCrcTable = [] {
    std::array<std::uint32_t, 256> t{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t c = i;
        for (int k = 0; k < 8; ++k)
            c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        t[i] = c;
    }
    return t;
}();

// The fault number of a system error: permission (70) and the device (57)
// have their own; anything else is the path's (75) or `otherwise`.
std::int16_t faultFor(int err, std::int16_t otherwise)
{
    switch (err) {
    case EACCES:
    case EPERM:
    case EROFS:
        return kErrPermission;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
    case EIO:
        return kErrDeviceIO;
    default:
        return otherwise;
    }
}

// The file a chain of symbolic links ends in; the path itself when it is no
// link. Empty, with the reason in err, for a loop or an unreadable link.
fs::path followLinks(const fs::path& path, int& err)
{
    fs::path p = path;
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st { };
        if (::lstat(p.c_str(), &st) != 0 || !S_ISLNK(st.st_mode))
            return p;
        std::error_code ec;
        const fs::path to = fs::read_symlink(p, ec);
        if (ec) {
            err = ec.value();
            return {};
        }
        p = to.is_absolute() ? to : p.parent_path() / to;
    }
    err = ELOOP;
    return {};
}

// ".NAME.xxxxxxxx~" beside the file: hidden, and of a name no other writer
// picks.
fs::path temporaryName(const fs::path& target)
{
    static constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz0123456789";
    thread_local std::mt19937_64 rng{std::random_device{}()};
    std::string name = "." + target.filename().string() + ".";
    for (int i = 0; i < 8; ++i)
        name += kLetters[rng() % (sizeof kLetters - 1)];
    return target.parent_path() / (name + "~");
}

}  // namespace

FileBytes ReadFileBounded(const std::string& path, std::size_t maxBytes)
{
    FileBytes r;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        r.status = errno == ENOENT || errno == ENOTDIR ? ReadStatus::Missing : ReadStatus::Failed;
        r.reason = std::strerror(errno);
        return r;
    }
    struct stat st { };
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        r.status = ReadStatus::NotAFile;
        return r;
    }
    if (static_cast<std::uint64_t>(st.st_size) > maxBytes) {
        ::close(fd);
        r.status = ReadStatus::TooLarge;
        return r;
    }
    // One byte more than the size tells a file that grew while it was read.
    std::vector<char>& b = r.bytes;
    b.resize(static_cast<std::size_t>(st.st_size) + 1);
    std::size_t have = 0;
    for (;;) {
        if (have == b.size())
            b.resize(std::min(2 * b.size(), maxBytes + 1));
        const ssize_t n = ::read(fd, b.data() + have, b.size() - have);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            r.status = ReadStatus::Failed;
            r.reason = std::strerror(errno);
            break;
        }
        if (n == 0)
            break;
        have += static_cast<std::size_t>(n);
        if (have > maxBytes) {
            r.status = ReadStatus::TooLarge;
            break;
        }
    }
    ::close(fd);
    b.resize(r.status == ReadStatus::Ok ? have : 0);
    return r;
}

bool ReadWholeFile(const std::string& path, std::vector<char>& out)
{
    FileBytes r = ReadFileBounded(path, kDefaultReadLimit);
    if (r.status != ReadStatus::Ok)
        return false;
    out = std::move(r.bytes);
    return true;
}

std::uint32_t Crc32(std::span<const char> bytes)
{
    std::uint32_t c = 0xFFFFFFFFu;
    for (char ch : bytes)
        c = kCrcTable[(c ^ static_cast<unsigned char>(ch)) & 0xFFu] ^ (c >> 8);
    return c ^ 0xFFFFFFFFu;
}

int FileSystemCalls::create(const char* path, unsigned mode)
{
    return ::open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                  static_cast<mode_t>(mode));
}
long FileSystemCalls::write(int fd, const char* data, std::size_t n)
{
    return static_cast<long>(::write(fd, data, n));
}
int FileSystemCalls::setMode(int fd, unsigned mode)
{
    return ::fchmod(fd, static_cast<mode_t>(mode));
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
                         std::string_view procedure, FileSystemCalls& calls)
{
    const auto fault = [&](std::int16_t number, const std::string& what, int err) {
        ThrowFault(number, procedure, what + ": " + std::strerror(err));
    };
    int err = 0;
    const fs::path target = followLinks(path, err);
    if (target.empty())
        fault(kErrPathAccess, "cannot write " + path, err);

    struct stat old { };
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (!exists && errno != ENOENT)
        fault(faultFor(errno, kErrPathAccess), "cannot write " + path, errno);
    if (exists && !S_ISREG(old.st_mode))
        fault(kErrPathAccess, "cannot write " + path, S_ISDIR(old.st_mode) ? EISDIR : EINVAL);
    if (exists && ((old.st_mode & S_IWUSR) == 0 || ::access(target.c_str(), W_OK) != 0))
        ThrowFault(kErrPermission, procedure, path + " is write-protected");

    // A name someone else holds (another save at this moment, a link planted
    // in the folder) is never opened: another name is drawn.
    fs::path tmp;
    int fd = -1;
    for (int attempt = 0; fd < 0 && attempt < 100; ++attempt) {
        tmp = temporaryName(target);
        fd = calls.create(tmp.c_str(), exists ? 0600u : 0666u);
        if (fd < 0 && errno != EEXIST)
            fault(faultFor(errno, kErrPathAccess), "cannot write " + path, errno);
    }
    if (fd < 0)
        fault(kErrPathAccess, "cannot write " + path, EEXIST);

    // From here on a failure removes the temporary file; the target is untouched.
    const auto fail = [&](std::int16_t number, const std::string& what, int e, bool open) {
        if (open)
            calls.close(fd);
        calls.remove(tmp.c_str());
        fault(faultFor(e, number), what, e);
    };
    const std::string cannotWrite = "cannot write " + path;
    std::size_t done = 0;
    while (done < bytes.size()) {
        const long n = calls.write(fd, bytes.data() + done, bytes.size() - done);
        const int e = n < 0 ? errno : EIO;
        if (n < 0 && e == EINTR)
            continue;
        if (n <= 0)
            fail(kErrDeviceIO, cannotWrite, e, true);
        done += static_cast<std::size_t>(n);
    }
    if (exists) {
        // The file keeps its owner where the system lets it, and its permissions.
        struct stat now { };
        if (::fstat(fd, &now) == 0 && (now.st_uid != old.st_uid || now.st_gid != old.st_gid)
            && ::fchown(fd, old.st_uid, old.st_gid) != 0) {
            // Kept by the writer instead: only an administrator may give a file away.
        }
        if (calls.setMode(fd, old.st_mode & 07777) != 0)
            fail(kErrDeviceIO, cannotWrite, errno, true);
    }
    if (calls.flush(fd) != 0)
        fail(kErrDeviceIO, cannotWrite, errno, true);
    if (calls.close(fd) != 0)
        fail(kErrDeviceIO, cannotWrite, errno, false);
    if (calls.rename(tmp.c_str(), target.c_str()) != 0)
        fail(kErrPathAccess, "cannot replace " + path, errno, false);
    // The new name itself on the disk: a crash now still finds the new file.
    const fs::path folder = target.parent_path().empty() ? fs::path(".") : target.parent_path();
    const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
}

}  // namespace rw
