#include "shell/startup.h"

#include "base/fault.h"
#include "rates/ratetable.h"
#include "shell/filecommands.h"
#include "shell/settings.h"

namespace rw {

namespace fs = std::filesystem;

std::string WindowsVersion()
{
    return "2.6.1";
}

bool DataInInstallFolder(std::string_view version)
{
    return version <= std::string_view("2.6.0");
}

fs::path GetWin7AppDataPath(const Paths& paths, std::string_view name)
{
    const fs::path maker = paths.userDataRoot / kMakerFolder;
    fs::path folder = maker / name;
    // The data root is the platform's own (it may not exist yet for a new
    // account); the two levels below it are tested and created one by one.
    for (const fs::path& level : {paths.userDataRoot, maker, folder}) {
        std::error_code ec;
        if (fs::is_directory(level, ec))
            continue;
        if (level == paths.userDataRoot)
            fs::create_directories(level, ec);
        else
            fs::create_directory(level, ec);
        if (ec || !fs::is_directory(level))
            ThrowFault(kErrPathAccess, "GetWin7AppDataPath",
                       "cannot create " + level.string()
                           + (ec ? ": " + ec.message() : std::string()));
    }
    return folder;
}

fs::path DefaultDataFolder(std::string_view version, const Paths& paths)
{
    if (DataInInstallFolder(version))
        return paths.installDir;
    return GetWin7AppDataPath(paths, kProgramFolder);
}

void CopySampleCases(const Paths& paths, const fs::path& folder)
{
    for (std::string_view name : kSampleCases) {
        const fs::path from = paths.installDir / name;
        std::error_code ec;
        // A copy already there is the user's, perhaps changed and saved.
        if (!fs::is_regular_file(from, ec) || fs::exists(folder / name, ec))
            continue;
        fs::copy_file(from, folder / name, fs::copy_options::skip_existing, ec);
        if (ec)
            ThrowFault(kErrPathAccess, "Main",
                       "cannot copy " + from.string() + ": " + ec.message());
    }
}

void UseRelease(Session& s, Messages& msgs)
{
    const ReleaseInUse use = ChooseRelease(s.paths);
    for (const std::string& warning : use.warnings)
        msgs.show(kReleaseWarningTitle, warning, MsgIcon::Exclamation);
    s.release = use.info;
    s.paths.ratesDir = use.folder;
}

void SeedSettings(const Paths& paths)
{
    std::error_code ec;
    if (fs::exists(paths.iniFile(), ec) || !fs::is_regular_file(paths.legacyIniFile(), ec))
        return;
    fs::create_directories(paths.configDir, ec);
    fs::copy_file(paths.legacyIniFile(), paths.iniFile(), ec);
}

void Startup(Session& s, const Paths& paths, Messages& msgs, std::string_view platformVersion)
{
    s.gbSaved = kYes;
    s.paths = paths;
    SeedSettings(paths);
    // When the earlier settings could not be copied, they are still this
    // run's starting values.
    std::error_code ec;
    const SettingsFile settings(fs::exists(paths.iniFile(), ec) ? paths.iniFile()
                                                                : paths.legacyIniFile());

    const fs::path defaultFolder = DefaultDataFolder(platformVersion, paths);
    if (!DataInInstallFolder(platformVersion))
        CopySampleCases(paths, defaultFolder);
    s.gsDataPath = settings.read("Data Files", "Data File Path", defaultFolder.string());

    UseRelease(s, msgs);

    // A missing federal table is told and start-up goes on with no rates.
    OpenRates("US  ", s.paths, msgs, s.gRates);

    s.gsFileName.clear();
    RefreshTitle(s);  // names the empty file "Untitled.INT"
    ClearInputs(s.kase);
    s.savedCase = s.kase;
    s.copiedCase = s.kase;
    s.gsFileName = std::string(kUntitled);
    LoadRecentFiles(s);

    s.menus = MenuState{};
    EnableSave(s, false);
    EnableOutputs(s, false);
}

}  // namespace rw
