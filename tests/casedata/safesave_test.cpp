// The safe save: a write that fails at any step is a fault named "WriteCase",
// leaves the previous file as it was and no temporary file behind.

#include "base/binio.h"
#include "casedata/casefile.h"

#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

namespace {

enum class Step { None, Create, Write, WriteNothing, Flush, Close, Rename };

// The real calls, with one step made to fail.
class FailingCalls : public rw::FileSystemCalls {
public:
    Step step = Step::None;
    std::size_t allowBytes = 0;  // for Write: bytes written before the disk is full

    int create(const char* path) override { return step == Step::Create ? Fail(EACCES) : FileSystemCalls::create(path); }
    long write(int fd, const char* data, std::size_t n) override
    {
        if (step == Step::WriteNothing)
            return 0;
        if (step == Step::Write) {
            if (written_ >= allowBytes)
                return Fail(ENOSPC);
            n = std::min(n, allowBytes - written_);  // a short write, then the failure
        }
        const long r = FileSystemCalls::write(fd, data, n);
        written_ += r > 0 ? static_cast<std::size_t>(r) : 0;
        return r;
    }
    int flush(int fd) override { return step == Step::Flush ? Fail(EIO) : FileSystemCalls::flush(fd); }
    int close(int fd) override
    {
        const int r = FileSystemCalls::close(fd);
        return step == Step::Close ? Fail(EIO) : r;
    }
    int rename(const char* from, const char* to) override
    {
        return step == Step::Rename ? Fail(EXDEV) : FileSystemCalls::rename(from, to);
    }

private:
    static int Fail(int err)
    {
        errno = err;
        return -1;
    }
    std::size_t written_ = 0;
};

// The fault a save ends in, as "number procedure"; "none" when it succeeded.
std::string FaultOf(const std::function<void()>& save)
{
    try {
        save();
    } catch (const rw::Fault& f) {
        return std::to_string(f.number()) + " " + f.procedure();
    }
    return "none";
}

struct FailRow {
    const char* name;
    Step step;
    std::size_t allowBytes;
    const char* fault;
};

class SafeSave : public testing::TestWithParam<FailRow> {};

TEST_P(SafeSave, AFailedWriteKeepsThePreviousFile)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    rwtest::WriteBytes(path, {'o', 'l', 'd'});
    FailingCalls calls;
    calls.step = GetParam().step;
    calls.allowBytes = GetParam().allowBytes;
    EXPECT_EQ(FaultOf([&] { rw::WriteFileAtomically(path, std::vector<char>(5000, 'n'), "WriteCase", calls); }),
              GetParam().fault);
    EXPECT_EQ(rwtest::ReadText(path), "old");
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
}

INSTANTIATE_TEST_SUITE_P(CaseFile, SafeSave,
                         testing::Values(FailRow{"CannotCreate", Step::Create, 0, "75 WriteCase"},
                                         FailRow{"DiskFullAtOnce", Step::Write, 0, "57 WriteCase"},
                                         FailRow{"DiskFullOneByteShort", Step::Write, 4999, "57 WriteCase"},
                                         FailRow{"WritesNothing", Step::WriteNothing, 0, "57 WriteCase"},
                                         FailRow{"FlushFails", Step::Flush, 0, "57 WriteCase"},
                                         FailRow{"CloseFails", Step::Close, 0, "57 WriteCase"},
                                         FailRow{"RenameFails", Step::Rename, 0, "75 WriteCase"}),
                         [](const testing::TestParamInfo<FailRow>& p) { return std::string(p.param.name); });

TEST(SafeSaveReal, ReplacesTheFileWholeOrFailsCleanly)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    rwtest::WriteBytes(path, std::vector<char>(50, 'p'));
    FailingCalls none;
    rw::WriteFileAtomically(path, {'n', 'e', 'w'}, "WriteCase", none);
    EXPECT_EQ(rwtest::ReadText(path), "new");
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));

    // A folder in the way of the temporary file: the real calls fail to create
    // it, whoever runs the test (permissions do not stop an administrator).
    std::filesystem::create_directory(path + ".tmp~");
    rw::Case c;
    rw::ClearInputs(c);
    EXPECT_EQ(FaultOf([&] { rw::WriteCase(path, c); }), "75 WriteCase");
    EXPECT_EQ(rwtest::ReadText(path), "new");
    EXPECT_NE(FaultOf([&] { rw::WriteCase((dir / "no-such-folder" / "A.INT").string(), c); }), "none");
}

}  // namespace
