#pragma once
// Start-up: the settings file, the user's data folder with the sample cases,
// the federal rate table and an empty case, before the main window shows.
// The About box and the main window itself belong to the window layer: it
// shows the About box, runs Startup (inside RunCommand, named "Main"), and
// then shows the main window drawn from the session.
//
// Dates: every date the program shows or reads without an explicit pattern is
// month/day/four-digit year ("M/d/yyyy"), whatever the user's locale; the
// date helpers of casedata format them so, so there is no system setting to
// change here.

#include "base/messages.h"
#include "base/paths.h"
#include "shell/session.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace rw {

// The platform version as "platform id.major.minor". The default data folder
// depends on it; on this platform it is always "2.6.1", which selects the
// per-user folder.
std::string WindowsVersion();

// The installation folder for versions up to "2.6.0" (compared as plain
// text, so "2.10.0" is below it), otherwise the per-user folder, which this
// call creates (GetWin7AppDataPath).
std::filesystem::path DefaultDataFolder(std::string_view version, const Paths& paths);
// True when the version keeps the data in the installation folder.
bool DataInInstallFolder(std::string_view version);

// The per-user data folder for `name`: the user's data root, "Brindlecote",
// then name, each level created when missing. A folder that cannot be
// created is a fault (75, "GetWin7AppDataPath").
std::filesystem::path GetWin7AppDataPath(const Paths& paths, std::string_view name);

// The sample cases installed beside the program.
inline constexpr std::string_view kSampleCases[] = {"DEMO_INC.INT", "DEMO941.INT"};

// Copies the sample cases from the installation folder into folder when they
// are missing there: a copy already there is the user's and stays as it is.
// A sample missing from the installation is skipped; a copy that fails is a
// fault (75, "Main"). The installed samples stay available from Help.
void CopySampleCases(const Paths& paths, const std::filesystem::path& folder);

// The release of the rates: the installed one, or a later one the user put
// into the data folder; a release that cannot be used is told once. Sets the
// session's release and the folder its tables are read from.
void UseRelease(Session& s, Messages& msgs);

// The user's settings file, when missing, starts as a copy of the one an
// earlier version kept in the installation folder (if any).
void SeedSettings(const Paths& paths);

// The start-up steps in order: saved state, settings file, default data
// folder (and the samples, for the per-user folder), "Data File Path" from
// the settings, the release of the rates (UseRelease), the federal table, the title, an empty
// case named "UNTITLED.INT", and the main window's first menu state (Save,
// Print and Reports off, their buttons hidden).
void Startup(Session& s, const Paths& paths, Messages& msgs,
             std::string_view platformVersion = WindowsVersion());

}  // namespace rw
