#pragma once
// Every file the program reads or writes outside the user's own case files
// derives from two folders: the installation folder (rate tables, release
// file, settings file, error log, recovery copy, manual, sample cases) and the
// per-user data root under which the default data folder lies. Tests point
// both at a temporary folder.

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

struct Paths {
    std::filesystem::path installDir;
    // The per-user application-data root (the platform's user data directory).
    std::filesystem::path userDataRoot;
    // The folder of the release in use (rate tables, their sources, the
    // release file); empty means the installation folder.
    std::filesystem::path ratesDir;

    std::filesystem::path iniFile() const { return installDir / "qratcalc.INI"; }
    std::filesystem::path recoveryCopy() const { return installDir / "DEBUG.INT"; }
    std::filesystem::path errorLog() const { return installDir / "qraterr.log"; }
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
    // $HOME/.local/share.
    static Paths FromEnvironment();
    static Paths ForFolders(std::filesystem::path install, std::filesystem::path userData)
    {
        return Paths{std::move(install), std::move(userData), {}};
    }
};

}  // namespace rw
