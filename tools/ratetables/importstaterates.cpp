// importstaterates: turns the researched rate schedules into the table
// sources under data/rates. Run it by hand when the research changes, then
// review and commit the sources it writes:
//
//     importstaterates RESEARCH_DIR data/rates
//
// RESEARCH_DIR holds fed.csv (already a table source: copied unchanged once it
// passes the table check) and states/<CODE>.csv, one schedule per state code,
// rates in per cent. Each state's table keeps the latest run of sourced rows
// that give the underpayment rate (see LatestUsableRun); a refund rate left
// empty stays empty (not published). The rates become fractions by moving the
// decimal point in the text. Nothing is written unless every source passes.

#include "casedata/ratetable.h"
#include "casedata/numtext.h"
#include "tools/ratetables/outfile.h"
#include "tools/ratetables/ratesource.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: importstaterates RESEARCH_DIR OUT_DIR\n";
        return 2;
    }
    const std::filesystem::path research = argv[1];
    const std::filesystem::path outDir = argv[2];
    namespace rs = rw::ratesrc;

    auto rows = [](std::size_t n) { return std::to_string(n) + (n == 1 ? " row" : " rows"); };
    struct Output {
        std::filesystem::path file;
        std::string text;
    };
    std::vector<Output> outputs;
    bool ok = true;
    auto report = [&](const std::vector<rs::SourceProblem>& problems) {
        for (const auto& p : problems)
            std::cerr << "importstaterates: " << p.text() << "\n";
        ok = ok && problems.empty();
    };

    for (const rw::Authority& a : rw::Authorities()) {
        const std::string code = rw::TrimRight(a.code);
        const std::filesystem::path out = outDir / rs::SourceFileName(a.file);
        if (code == "US") {
            const std::filesystem::path in = research / "fed.csv";
            std::string text;
            if (!rs::ReadOutputFile(in, text)) {
                std::cerr << "importstaterates: " << in.string() << ": cannot be read\n";
                ok = false;
                continue;
            }
            const auto src = rs::ParseSource(text, in.string(), rs::kTableHeader);
            const auto built = rs::BuildTable(src);
            report(built.problems);
            if (built.ok()) {
                std::cout << code << "\t" << out.filename().string() << "\t" << src.rows.front().from << "\t"
                          << src.rows.back().thru << "\t" << rows(src.rows.size()) << "\n";
                outputs.push_back({out, text});
            }
            continue;
        }
        const std::filesystem::path in = research / "states" / (code + ".csv");
        const auto schedule = rs::ReadSourceFile(in, rs::kScheduleHeader);
        const auto conv = rs::ConvertSchedule(schedule);
        report(conv.problems);
        if (!conv.ok())
            continue;
        const std::string text = rs::FormatTableSource(conv.rows);
        const auto built = rs::BuildTable(rs::ParseSource(text, out.string(), rs::kTableHeader));
        report(built.problems);
        if (!built.ok())
            continue;
        const std::size_t left = schedule.rows.size() - conv.rows.size();
        std::cout << code << "\t" << out.filename().string() << "\t" << conv.rows.front().from << "\t"
                  << conv.rows.back().thru << "\t" << rows(conv.rows.size()) << "\t" << left
                  << " of the schedule's " << rows(schedule.rows.size()) << " left out";
        std::string unpublished;
        for (const std::string& p : rs::UnpublishedRefundPeriods(conv.rows))
            unpublished += (unpublished.empty() ? "" : ", ") + p;
        if (!unpublished.empty())
            std::cout << "\trefund rate not published " << unpublished;
        std::cout << "\n";
        outputs.push_back({out, text});
    }
    if (!ok) {
        std::cerr << "importstaterates: nothing written\n";
        return 1;
    }
    for (const Output& o : outputs) {
        std::string why;
        if (!rs::WriteOutputFile(o.file, o.text, true, &why)) {
            std::cerr << "importstaterates: " << why << "\n";
            return 1;
        }
    }
    return 0;
}
