// libFuzzer target for everything that reads outside input: case files, rate
// tables, JSON cases and release files. A reader may refuse an input but must
// never crash, and a case it accepts must hold only readable dates and write
// and read back unchanged.

#include "casedata/casefile.h"
#include "casejson/casejson.h"
#include "rates/ratetable.h"
#include "rates/release.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<char> bytes(reinterpret_cast<const char*>(data),
                                  reinterpret_cast<const char*>(data) + size);

    const rw::CaseReadResult c = rw::DecodeCase(bytes);
    if (c.status == rw::CaseReadResult::Status::Ok) {
        if (!c.kase.countsConsistent() || !rw::DateOutOfRange(c.kase).empty())
            std::abort();
        const std::vector<char> image = rw::EncodeCase(c.kase);
        nlohmann::json doc;
        std::string error;
        if (!rw::ParseCaseJson(rw::CaseToJsonText(c.kase), doc, error))
            std::abort();
        const std::optional<rw::Case> back = rw::CaseFromJson(doc, error);
        if (!back || rw::EncodeCase(*back) != image)
            std::abort();
    }

    const rw::RateTableReadResult t = rw::DecodeRateTable(bytes);
    if (t.status == rw::RateTableReadResult::Status::Ok && bytes.size() < 10 + 29 * t.rows.size())
        std::abort();

    nlohmann::json doc;
    std::string error;
    if (rw::ParseCaseJson(std::string_view(bytes.data(), bytes.size()), doc, error)) {
        if (std::optional<rw::Case> k = rw::CaseFromJson(doc, error)) {
            if (!rw::DateOutOfRange(*k).empty())
                std::abort();
            const std::optional<rw::Case> again = rw::CaseFromJson(rw::CaseToJson(*k), error);
            if (!again || rw::EncodeCase(*again) != rw::EncodeCase(*k))
                std::abort();
        }
    }

    rw::ReleaseInfo release;
    rw::ParseReleaseInfo(std::string_view(bytes.data(), bytes.size()), "fuzz", release, &error);
    return 0;
}
