// mkratecoverage: writes the manual's page of rate table coverage (first and
// last date, rows, methods and published sources of every authority's table)
// from the table sources. Every authority of the list must have a source that
// passes the table check.

#include "ratebuild/outfile.h"
#include "ratebuild/ratesource.h"
#include "rates/ratetable.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: mkratecoverage SOURCES_DIR OUT.md\n";
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    const std::filesystem::path out = argv[2];

    std::vector<rw::ratesrc::AuthorityTable> tables;
    bool ok = true;
    for (const rw::Authority& a : rw::Authorities()) {
        const auto src = rw::ratesrc::ReadSourceFile(dir / rw::ratesrc::SourceFileName(a.file),
                                                     rw::ratesrc::kTableHeader);
        const auto built = rw::ratesrc::BuildTable(src);
        for (const auto& p : built.problems)
            std::cerr << "mkratecoverage: " << p.text() << "\n";
        ok = ok && built.ok();
        tables.push_back({&a, src.rows});
    }
    if (!ok)
        return 1;
    std::string why;
    if (!rw::ratesrc::WriteOutputFile(out, rw::ratesrc::CoverageMarkdown(tables), true, &why)) {
        std::cerr << "mkratecoverage: " << why << "\n";
        return 1;
    }
    return 0;
}
