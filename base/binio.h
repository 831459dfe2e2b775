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

// Reads a whole file into memory; nullopt-like empty result with ok=false
// when it cannot be opened.
bool ReadWholeFile(const std::string& path, std::vector<char>& out);

// The file-system calls of the safe writer, POSIX-like (-1 and errno on
// failure). Tests substitute calls that fail at a chosen step.
class FileSystemCalls {
public:
    virtual ~FileSystemCalls() = default;
    // Creates or truncates `path` for writing; a descriptor.
    virtual int create(const char* path);
    virtual long write(int fd, const char* data, std::size_t n);
    virtual int flush(int fd);  // to the disk
    virtual int close(int fd);
    virtual int rename(const char* from, const char* to);
    virtual int remove(const char* path);
};
FileSystemCalls& SystemFileCalls();

// Writes bytes to `path` safely: a temporary file beside it is written,
// flushed and renamed over the target, so a failed write never destroys the
// previous file. A failure is a fault (57 or 75) named after `procedure`.
void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes,
                         std::string_view procedure);
void WriteFileAtomically(const std::string& path, const std::vector<char>& bytes,
                         std::string_view procedure, FileSystemCalls& fs);

}  // namespace rw
