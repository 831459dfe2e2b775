#pragma once
// Every file the program reads or writes outside the user's own case files
// derives from a few folders. The installation folder (rate tables, release
// file, manual, sample cases) is only ever read: a system-wide installation
// is not the user's to write. What the program writes lives in the user's
// own folders: the settings file in the per-user configuration folder, the
// recovery copy and the error log in the program's per-user data folder, the
// cases and a later release of the rates under the per-user data root. Tests
// point all of them at a temporary folder.

#include <filesystem>
#include <string>
#include <string_view>

namespace rw {

// The release file's name inside a release folder of the rates.
inline constexpr std::string_view kReleaseFileName = "qrat-release.txt";
// The per-user folders: the maker's folder in the user's data root, the
// program's folder in it.
inline constexpr std::string_view kMakerFolder = "Brindlecote";
inline constexpr std::string_view kProgramFolder = "Qrat";
// The program's folder for its own per-user files (settings, recovery copy,
// log), beside the maker's folder of cases.
inline constexpr std::string_view kAppFolder = "Ratewright";

struct Paths {
    std::filesystem::path installDir;
    // The per-user application-data root (the platform's user data directory).
    std::filesystem::path userDataRoot;
    // The per-user configuration folder (settings).
    std::filesystem::path configDir;
    // The program's per-user data folder (recovery copy, error log).
    std::filesystem::path appDataDir;
    // The folder of the release in use (rate tables, their sources, the
    // release file); empty means the installation folder.
    std::filesystem::path ratesDir;

    std::filesystem::path iniFile() const { return configDir / "qratcalc.INI"; }
    // Where an earlier version kept the settings: read once, as the starting
    // values, when the user has no settings file yet.
    std::filesystem::path legacyIniFile() const { return installDir / "qratcalc.INI"; }
    std::filesystem::path recoveryCopy() const { return appDataDir / "DEBUG.INT"; }
    std::filesystem::path errorLog() const { return appDataDir / "qraterr.log"; }
    std::filesystem::path helpFile() const { return installDir / "manqrat.pdf"; }
    std::filesystem::path ratesFolder() const { return ratesDir.empty() ? installDir : ratesDir; }
    std::filesystem::path releaseFile() const { return ratesFolder() / kReleaseFileName; }
    std::filesystem::path table(std::string_view fileName) const
    {
        return ratesFolder() / fileName;
    }
    // Where a table's published sources are kept in the release folder.
    std::filesystem::path tableSources() const { return ratesFolder() / "rates-src"; }
    // A later release of the rates the user installed without reinstalling
    // the program: rates/ in the per-user data folder.
    std::filesystem::path userReleaseDir() const
    {
        return userDataRoot / kMakerFolder / kProgramFolder / "rates";
    }

    // The installation folder from RW_INSTALL_DIR, else the folder of the
    // running executable; the data root from XDG_DATA_HOME, else
    // $HOME/.local/share; the configuration root from XDG_CONFIG_HOME, else
    // $HOME/.config. The program's own folders are "Brindlecote/Ratewright"
    // under each root (the desktop program sets them from the platform's
    // standard locations, which agree).
    static Paths FromEnvironment();
    // Tests: everything per-user under userData ("config" and "app" for the
    // settings and the program's data).
    static Paths ForFolders(std::filesystem::path install, std::filesystem::path userData)
    {
        Paths p;
        p.installDir = std::move(install);
        p.userDataRoot = std::move(userData);
        p.configDir = p.userDataRoot / "config";
        p.appDataDir = p.userDataRoot / "app";
        return p;
    }
};

}  // namespace rw
