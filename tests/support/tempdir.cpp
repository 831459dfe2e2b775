#include "support/tempdir.h"

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace rwtest {

TempDir::TempDir()
{
    std::string tmpl = (std::filesystem::temp_directory_path() / "rwtest-XXXXXX").string();
    if (!::mkdtemp(tmpl.data()))
        throw std::runtime_error("cannot create a temporary folder");
    path_ = tmpl;
}

TempDir::~TempDir()
{
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

}  // namespace rwtest
