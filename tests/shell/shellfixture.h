#pragma once
// The shell's commands around a session: an installation folder with a
// release of its own, a user data root, a folder for cases, the shared doubles.

#include "rates/ratetable.h"
#include "shell/session.h"
#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/releases.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace rwtest {

// A one-row rate table (1/1/1990 to 12/31/2029) whose rate tells which file it is.
inline std::vector<char> OneRowTable(float rate)
{
    return rw::EncodeRateTable({Row(D(1990, 1, 1), D(2029, 12, 31), rate, rate)});
}

// A release in folder: every authority's table (federal 0.01, California
// business 0.02, the others 0.03) and the release file of early 2018.
inline void WriteRelease(const std::filesystem::path& folder)
{
    std::filesystem::create_directories(folder);
    for (const rw::Authority& a : rw::Authorities())
        WriteBytes(folder / a.file, OneRowTable(a.file == "fed.tbl"       ? 0.01f
                                                : a.file == "ca_bus1.tbl" ? 0.02f
                                                                          : 0.03f));
    std::filesystem::copy_file(Release2018Folder() / rw::kReleaseFileName,
                               folder / rw::kReleaseFileName,
                               std::filesystem::copy_options::overwrite_existing);
}

// Writes folder's release file again for the tables it now holds, as the
// release build would, after `change` (a later name and dates, say).
inline void SealRelease(const std::filesystem::path& folder,
                        const std::function<void(rw::ReleaseInfo&)>& change)
{
    rw::ReleaseInfo info;
    std::string problem;
    if (!rw::ReadReleaseInfo(folder / rw::kReleaseFileName, info, &problem))
        throw std::runtime_error(problem);
    info.tables.clear();
    for (const rw::Authority& a : rw::Authorities()) {
        const std::vector<char> bytes = ReadBytes(folder / a.file);
        info.tables.push_back(
            rw::RecordTable(a.file, bytes, rw::ReadRateTableFile(folder / a.file).rows));
    }
    change(info);
    const std::string text = rw::FormatReleaseInfo(info);
    WriteBytes(folder / rw::kReleaseFileName, {text.begin(), text.end()});
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

    TempDir install, user, cases;
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
