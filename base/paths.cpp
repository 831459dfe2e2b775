#include "base/paths.h"

#include <cstdlib>
#include <system_error>

namespace rw {

Paths Paths::FromEnvironment()
{
    namespace fs = std::filesystem;
    Paths p;
    if (const char* inst = std::getenv("RW_INSTALL_DIR"); inst && *inst) {
        p.installDir = inst;
    } else {
        std::error_code ec;
        const fs::path exe = fs::read_symlink("/proc/self/exe", ec);
        p.installDir = ec ? fs::current_path() : exe.parent_path();
    }
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg) {
        p.userDataRoot = xdg;
    } else if (const char* home = std::getenv("HOME"); home && *home) {
        p.userDataRoot = fs::path(home) / ".local" / "share";
    } else {
        p.userDataRoot = p.installDir;
    }
    fs::path configRoot;
    if (const char* xdg = std::getenv("XDG_CONFIG_HOME"); xdg && *xdg)
        configRoot = xdg;
    else if (const char* home = std::getenv("HOME"); home && *home)
        configRoot = fs::path(home) / ".config";
    else
        configRoot = p.userDataRoot;
    p.configDir = configRoot / kMakerFolder / kAppFolder;
    p.appDataDir = p.userDataRoot / kMakerFolder / kAppFolder;
    return p;
}

}  // namespace rw
