#pragma once
// Little-endian, unpadded binary fields as the case and rate files hold them:
// Integer 2 bytes, Long 4, Single 4, Date 8 (the double day number), Currency 8
// (the scaled integer), fixed text N bytes.

#include "base/dates.h"
#include "base/fault.h"
#include "base/fixedtext.h"
#include "base/money.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

namespace rw {

static_assert(std::endian::native == std::endian::little, "the file formats are little-endian");

class BinWriter {
public:
    void raw(const void* p, std::size_t n)
    {
        const auto* c = static_cast<const char*>(p);
        buf_.insert(buf_.end(), c, c + n);
    }
    void operator()(const std::int16_t& v) { raw(&v, 2); }
    void operator()(const std::int32_t& v) { raw(&v, 4); }
    void operator()(const float& v) { raw(&v, 4); }
    void operator()(const Date& v)
    {
        const double d = v.dayNumber();
        raw(&d, 8);
    }
    void operator()(const Money& v)
    {
        const std::int64_t r = v.raw();
        raw(&r, 8);
    }
    template<std::size_t N>
    void operator()(const FixedText<N>& t)
    {
        raw(t.data(), N);
    }

    const std::vector<char>& bytes() const { return buf_; }
    std::vector<char>& bytes() { return buf_; }

private:
    std::vector<char> buf_;
};

// Reads fields from a byte buffer; reading past its end is a fault
// (62, "Input past end of file") named after `procedure`.
class BinReader {
public:
    BinReader(std::span<const char> data, std::string procedure)
        : data_(data)
        , procedure_(std::move(procedure))
    {
    }

    void raw(void* p, std::size_t n)
    {
        if (n > remaining())
            ThrowFault(kErrPastEnd, procedure_, "the file ends early");
        std::memcpy(p, data_.data() + pos_, n);
        pos_ += n;
    }
    void operator()(std::int16_t& v) { raw(&v, 2); }
    void operator()(std::int32_t& v) { raw(&v, 4); }
    void operator()(float& v) { raw(&v, 4); }
    void operator()(Date& v)
    {
        double d;
        raw(&d, 8);
        v = Date(d);
    }
    void operator()(Money& v)
    {
        std::int64_t r;
        raw(&r, 8);
        v = Money::fromRaw(r);
    }
    template<std::size_t N>
    void operator()(FixedText<N>& t)
    {
        raw(t.data(), N);
    }

    std::size_t remaining() const { return data_.size() - pos_; }
    std::size_t position() const { return pos_; }

private:
    std::span<const char> data_;
    std::size_t pos_ = 0;
    std::string procedure_;
};

// Reads a whole regular file into memory, refusing one larger than maxBytes
// before anything is allocated for it (a case file padded to a gigabyte, a
// folder or a device where a file was expected).
enum class ReadStatus { Ok, Missing, NotAFile, TooLarge, Failed };
struct FileBytes {
    ReadStatus status = ReadStatus::Ok;
    std::vector<char> bytes;
    std::string reason;  // Failed: the system's reason
};
FileBytes ReadFileBounded(const std::string& path, std::size_t maxBytes);
// The same as a yes or no, at most 64 MiB.
bool ReadWholeFile(const std::string& path, std::vector<char>& out);

// The CRC-32 of bytes (the polynomial of zip and PNG, 0xEDB88320 reflected):
// the checksum a release file gives for each of its tables and for itself.
std::uint32_t Crc32(std::span<const char> bytes);

// The file-system calls of the safe writer, POSIX-like (-1 and errno on
// failure). Tests substitute calls that fail at a chosen step.
class FileSystemCalls {
public:
    virtual ~FileSystemCalls() = default;
    // Creates `path`, which must not exist (not even as a symbolic link), for
    // writing with the permissions `mode` less the umask; a descriptor.
    virtual int create(const char* path, unsigned mode);
    virtual long write(int fd, const char* data, std::size_t n);
    virtual int setMode(int fd, unsigned mode);  // exactly, without the umask
    virtual int flush(int fd);  // to the disk
    virtual int close(int fd);
    virtual int rename(const char* from, const char* to);
    virtual int remove(const char* path);
};
FileSystemCalls& SystemFileCalls();

// Writes bytes to `path` so that the file is always either the old one or the
// whole new one: a temporary file of a name no one else uses is created in
// the file's own folder, written, flushed to the disk, given the file's
// permissions (a new file: read and write for everyone the umask allows) and
// renamed over it. A symbolic link is followed to the file it names, which is
// the one replaced; the link stays. Two writers at once each put a whole file
// in place, the later one winning. A write-protected file (the owner's write
// permission off, or one the user may not write) is not replaced.
//
// A failure leaves the previous file as it was and is a fault named after
// `procedure`: 70 when permission is denied (a write-protected file), 57 for
// the device (a full disk), 75 for the path (no such folder); its detail
// names the file and gives the system's reason.
void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes,
                         std::string_view procedure);
void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes,
                         std::string_view procedure, FileSystemCalls& fs);

}  // namespace rw
