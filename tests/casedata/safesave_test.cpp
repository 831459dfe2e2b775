// The safe save: a write that fails at any step leaves the previous file as
// it was and no temporary file behind.

#include "base/binio.h"
#include "casedata/casefile.h"

#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fstream>

namespace {

std::string ReadText(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// The real calls, with one step made to fail.
class FailingCalls : public rw::FileSystemCalls {
public:
    enum class Step { None, Create, WriteAfter, WriteNothing, Flush, Close, Rename };
    Step step = Step::None;
    std::size_t allowBytes = 0;  // for WriteAfter: bytes written before the failure
    std::size_t written = 0;

    int create(const char* path) override
    {
        if (step == Step::Create)
            return failWith(EACCES);
        return FileSystemCalls::create(path);
    }
    long write(int fd, const char* data, std::size_t n) override
    {
        if (step == Step::WriteNothing)
            return 0;
        if (step == Step::WriteAfter) {
            if (written >= allowBytes)
                return failWith(ENOSPC);
            n = std::min(n, allowBytes - written);  // a short write, then the failure
        }
        const long r = FileSystemCalls::write(fd, data, n);
        if (r > 0)
            written += static_cast<std::size_t>(r);
        return r;
    }
    int flush(int fd) override { return step == Step::Flush ? failWith(EIO) : FileSystemCalls::flush(fd); }
    int close(int fd) override
    {
        const int r = FileSystemCalls::close(fd);
        return step == Step::Close ? failWith(EIO) : r;
    }
    int rename(const char* from, const char* to) override
    {
        return step == Step::Rename ? failWith(EXDEV) : FileSystemCalls::rename(from, to);
    }

private:
    static int failWith(int err)
    {
        errno = err;
        return -1;
    }
};

struct FailRow {
    const char* name;
    FailingCalls::Step step;
    std::size_t allowBytes;
    std::int16_t fault;
};

class SafeSave : public testing::TestWithParam<FailRow> {};

TEST_P(SafeSave, AFailedWriteKeepsThePreviousFile)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    std::ofstream(path, std::ios::binary) << "the previous case";
    FailingCalls calls;
    calls.step = GetParam().step;
    calls.allowBytes = GetParam().allowBytes;
    const std::vector<char> bytes(5000, 'n');
    try {
        rw::WriteFileAtomically(path, bytes, "WriteCase", calls);
        ADD_FAILURE() << "no fault";
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), GetParam().fault);
        EXPECT_EQ(f.procedure(), "WriteCase");
    }
    EXPECT_EQ(ReadText(path), "the previous case");
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
}

INSTANTIATE_TEST_SUITE_P(
    CaseFile, SafeSave,
    testing::Values(FailRow{"CannotCreate", FailingCalls::Step::Create, 0, 75},
                    FailRow{"DiskFullAtOnce", FailingCalls::Step::WriteAfter, 0, 57},
                    FailRow{"DiskFullHalfWay", FailingCalls::Step::WriteAfter, 2500, 57},
                    FailRow{"DiskFullOneByteShort", FailingCalls::Step::WriteAfter, 4999, 57},
                    FailRow{"WritesNothing", FailingCalls::Step::WriteNothing, 0, 57},
                    FailRow{"FlushFails", FailingCalls::Step::Flush, 0, 57},
                    FailRow{"CloseFails", FailingCalls::Step::Close, 0, 57},
                    FailRow{"RenameFails", FailingCalls::Step::Rename, 0, 75}),
    [](const testing::TestParamInfo<FailRow>& p) { return std::string(p.param.name); });

TEST(SafeSaveNoFailure, ReplacesTheFileWhole)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    std::ofstream(path, std::ios::binary) << "a much longer previous content than the new one";
    FailingCalls calls;
    rw::WriteFileAtomically(path, std::vector<char>{'n', 'e', 'w'}, "WriteCase", calls);
    EXPECT_EQ(ReadText(path), "new");
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
}

TEST(SafeSaveNoFailure, AFolderThatCannotTakeTheTemporaryFileFailsCleanly)
{
    // A folder in the way of the temporary file: the real calls fail to create
    // it, whoever runs the test (permissions do not stop an administrator).
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    std::ofstream(path, std::ios::binary) << "kept";
    std::filesystem::create_directory(path + ".tmp~");
    rw::Case c;
    rw::ClearInputs(c);
    try {
        rw::WriteCase(path, c);
        ADD_FAILURE() << "no fault";
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), 75);
        EXPECT_EQ(f.procedure(), "WriteCase");
    }
    EXPECT_EQ(ReadText(path), "kept");
    // A target folder that does not exist fails the same way.
    EXPECT_THROW(rw::WriteCase((dir / "no-such-folder" / "A.INT").string(), c), rw::Fault);
}

}  // namespace
