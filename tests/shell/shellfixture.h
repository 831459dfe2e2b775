#pragma once
// Scripted stand-ins for the windows and the platform around the shell's
// commands, and a fixture with an installation folder and a user data root
// of its own.

#include "shell/services.h"
#include "shell/session.h"

#include "../casedata/handcase.h"
#include "rates/ratetable.h"
#include "support/recordingmessages.h"
#include "support/releases.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <deque>
#include <fstream>
#include <functional>

namespace rwtest {

class ScriptedFiles : public rw::FileDialogs {
public:
    std::optional<std::string> openCase(const std::string& initialFolder) override
    {
        openFolders.push_back(initialFolder);
        return next(opens);
    }
    std::optional<std::string> saveCase(const std::string& initialFolder) override
    {
        saveFolders.push_back(initialFolder);
        return next(saves);
    }
    std::deque<std::optional<std::string>> opens, saves;  // answers; empty: cancel
    std::vector<std::string> openFolders, saveFolders;    // the folders they started in

private:
    static std::optional<std::string> next(std::deque<std::optional<std::string>>& q)
    {
        if (q.empty())
            return std::nullopt;
        auto a = q.front();
        q.pop_front();
        return a;
    }
};

class ScriptedDialogs : public rw::ModalDialogs {
public:
    void showInitialInputs(rw::Session& s) override
    {
        ++initialInputsShown;
        if (onInitialInputs)
            onInitialInputs(s);
    }
    int initialInputsShown = 0;
    std::function<void(rw::Session&)> onInitialInputs;
};

class RecordingProgram : public rw::ProgramControl {
public:
    void hideMainWindow() override { ++hides; }
    void endProgram() override { ++ends; }
    int hides = 0;
    int ends = 0;
};

class FixedClock : public rw::Clock {
public:
    rw::Date today() const override { return day; }
    rw::Date day = rw::Date::fromCivil(2018, 3, 31);
};

inline void WriteBytes(const std::filesystem::path& p, const std::vector<char>& bytes)
{
    std::ofstream(p, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

inline std::vector<char> ReadBytes(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

inline std::string ReadText(const std::filesystem::path& p)
{
    const std::vector<char> b = ReadBytes(p);
    return std::string(b.begin(), b.end());
}

// A one-row rate table whose underpayment rate tells which file it is.
inline std::vector<char> OneRowTable(float rate)
{
    HandBytes b;
    b.raw("NOTVB3").i32(1).f64(32874.0).f64(47483.0).f32(rate).f32(rate).raw("    ").raw("C");
    return b.bytes;
}

// A complete release in folder: every authority's table (one row from 1/1/1990
// to 12/31/2029; the federal rate 0.01, California business 0.02, the others
// 0.03) and the release file of early 2018.
inline void WriteRelease(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    for (const rw::Authority& a : rw::Authorities()) {
        const float rate = a.file == "fed.tbl" ? 0.01f : a.file == "ca_bus1.tbl" ? 0.02f : 0.03f;
        WriteBytes(folder / a.file, OneRowTable(rate));
    }
    std::filesystem::copy_file(Release2018Folder() / rw::kReleaseFileName, folder / rw::kReleaseFileName,
                               std::filesystem::copy_options::overwrite_existing);
}

class ShellTest : public testing::Test {
protected:
    ShellTest()
    {
        WriteRelease(install.path());
        session.paths = paths;
        session.release = Release2018();
        session.gsFileName = "UNTITLED.INT";
    }

    TempDir install;
    TempDir user;
    TempDir cases;
    rw::Paths paths = rw::Paths::ForFolders(install.path(), user.path() / "data");
    rw::Session session;
    RecordingMessages msgs;
    ScriptedFiles files;
    ScriptedDialogs dialogs;
    RecordingProgram program;
    FixedClock clock;
    rw::ShellContext ctx{session, msgs, files, dialogs, program, clock};
};

}  // namespace rwtest
