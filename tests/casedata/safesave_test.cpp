// Writing a case: a temporary file renamed over the target, so that a write
// failing at any step is a fault named "WriteCase" and leaves the previous
// file as it was, with no temporary file behind.

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
    FailingCalls(Step step, std::size_t allowBytes) : step_(step), allow_(allowBytes) {}
    int create(const char* path) override { return fail(Step::Create, EACCES) ? -1 : FileSystemCalls::create(path); }
    long write(int fd, const char* data, std::size_t n) override
    {
        if (step_ == Step::WriteNothing)
            return 0;
        if (step_ == Step::Write && fail(Step::Write, allow_ == 0 ? ENOSPC : 0))
            return -1;
        const long r = FileSystemCalls::write(fd, data, step_ == Step::Write ? std::min(n, allow_) : n);
        allow_ -= step_ == Step::Write && r > 0 ? static_cast<std::size_t>(r) : 0;  // a short write, then the disk is full
        return r;
    }
    int flush(int fd) override { return fail(Step::Flush, EIO) ? -1 : FileSystemCalls::flush(fd); }
    int close(int fd) override { return FileSystemCalls::close(fd) == 0 && !fail(Step::Close, EIO) ? 0 : -1; }
    int rename(const char* a, const char* b) override { return fail(Step::Rename, EXDEV) ? -1 : FileSystemCalls::rename(a, b); }

private:
    bool fail(Step step, int err)
    {
        if (step != step_ || err == 0)
            return false;
        errno = err;
        return true;
    }
    Step step_;
    std::size_t allow_;
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

TEST(SafeSave, AFailedWriteKeepsThePreviousFile)
{
    for (const auto& [step, allowBytes, fault] : {std::tuple{Step::Create, 0, "75 WriteCase"}, {Step::Write, 0, "57 WriteCase"},
                                                  {Step::Write, 4999, "57 WriteCase"},  // one byte short
                                                  {Step::WriteNothing, 0, "57 WriteCase"}, {Step::Flush, 0, "57 WriteCase"},
                                                  {Step::Close, 0, "57 WriteCase"}, {Step::Rename, 0, "75 WriteCase"}}) {
        SCOPED_TRACE(static_cast<int>(step));
        rwtest::TempDir dir;
        const std::string path = (dir / "CASE.INT").string();
        rwtest::WriteBytes(path, {'o', 'l', 'd'});
        FailingCalls calls(step, static_cast<std::size_t>(allowBytes));
        EXPECT_EQ(FaultOf([&] { rw::WriteFileAtomically(path, std::vector<char>(5000, 'n'), "WriteCase", calls); }), fault);
        EXPECT_EQ(rwtest::ReadText(path), "old");
        EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
    }
}

TEST(SafeSave, WriteCaseReplacesTheFileWholeOrFailsCleanly)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    rwtest::WriteBytes(path, std::vector<char>(5000, 'p'));
    rw::Case c;
    rw::ClearInputs(c);
    c.init.sName = "Written";
    rw::WriteCase(path, c);
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(c));
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
    // A folder in the way of the temporary file: the real calls fail to create
    // it, whoever runs the test (permissions do not stop an administrator).
    std::filesystem::create_directory(path + ".tmp~");
    EXPECT_EQ(FaultOf([&] { rw::WriteCase(path, rw::Case{}); }), "75 WriteCase");
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(c));
    EXPECT_NE(FaultOf([&] { rw::WriteCase((dir / "no-such-folder" / "A.INT").string(), c); }), "none");
    // The folder of a case file, for the next file dialog.
    EXPECT_EQ(rw::FolderOf("/home/pat/cases/A.INT"), "/home/pat/cases");
    EXPECT_EQ(rw::FolderOf("C:\\Data\\A.INT"), "C:\\Data");
    EXPECT_EQ(rw::FolderOf("A.INT"), "");
    EXPECT_EQ(rw::FolderOf("/A.INT"), "");
}

}  // namespace
