// mkrelease: builds the release of the rates the program is installed with,
// from the rate sources under data/rates, into the installation folder:
//
//     mkrelease SOURCES_DIR OUT_DIR
//
// The same code as "qratcalc-cli release build". Every problem of the sources
// is reported and nothing is written, so a broken source fails the build
// instead of shipping stale tables.

#include "ratebuild/releasebuild.h"

#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: mkrelease SOURCES_DIR OUT_DIR\n";
        return 2;
    }
    namespace rs = rw::ratesrc;
    const rs::ReleaseBuild build = rs::BuildRelease(argv[1]);
    for (const rs::SourceProblem& p : build.problems)
        std::cerr << "mkrelease: " << p.text() << "\n";
    if (!build.ok()) {
        std::cerr << "mkrelease: nothing written\n";
        return 1;
    }
    std::string why;
    if (!rs::WriteRelease(build, argv[2], &why)) {
        std::cerr << "mkrelease: " << why << "\n";
        return 1;
    }
    return 0;
}
