// mkratetable: checks one rate table source (data/rates/<table>.csv) and
// writes its ".tbl". The encoded table is decoded, encoded again and the two
// compared byte by byte before it replaces the old one; on any problem no
// table is left behind, so a broken source fails the build instead of
// shipping a stale table. A row whose overpayment rate is empty in the source
// (not published) holds a quiet NaN as its overpayment rate.

#include "casedata/ratetable.h"
#include "tools/ratetables/outfile.h"
#include "tools/ratetables/ratesource.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

int usage()
{
    std::cerr << "usage: mkratetable SOURCE.csv TABLE.tbl   check the source and write the table\n"
                 "       mkratetable --check SOURCE.csv...   check sources only\n";
    return 2;
}

bool check(const std::filesystem::path& source, rw::RateTable* rows)
{
    const rw::ratesrc::SourceFile src = rw::ratesrc::ReadSourceFile(source, rw::ratesrc::kTableHeader);
    rw::ratesrc::TableBuild built = rw::ratesrc::BuildTable(src);
    for (const auto& p : built.problems)
        std::cerr << "mkratetable: " << p.text() << "\n";
    if (rows)
        *rows = std::move(built.rows);
    return built.problems.empty();
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && args[0] == "--check") {
        if (args.size() < 2)
            return usage();
        bool ok = true;
        for (std::size_t i = 1; i < args.size(); ++i)
            ok = check(args[i], nullptr) && ok;
        return ok ? 0 : 1;
    }
    if (args.size() != 2)
        return usage();

    const std::filesystem::path source = args[0];
    const std::filesystem::path table = args[1];
    std::error_code ec;
    rw::RateTable rows;
    if (!check(source, &rows)) {
        std::filesystem::remove(table, ec);
        return 1;
    }
    const std::vector<char> bytes = rw::EncodeRateTable(rows);
    // Compared as bytes: a refund rate that was not published is a NaN,
    // which never compares equal to itself as a number.
    const rw::RateTableReadResult back = rw::DecodeRateTable(bytes);
    if (back.status != rw::RateTableReadResult::Status::Ok || back.rows.size() != rows.size()
        || rw::EncodeRateTable(back.rows) != bytes) {
        std::cerr << "mkratetable: " << table.string() << ": the encoded table does not read back as built\n";
        std::filesystem::remove(table, ec);
        return 1;
    }
    std::string why;
    if (!rw::ratesrc::WriteOutputFile(table, std::string_view(bytes.data(), bytes.size()), false, &why)) {
        std::cerr << "mkratetable: " << why << "\n";
        return 1;
    }
    return 0;
}
