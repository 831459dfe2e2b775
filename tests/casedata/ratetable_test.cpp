// The rates' files: rate tables (".tbl") built by hand, their rows, the file each authority's code
// opens and the refusals that keep the rates in use; the release file, its refusals (naming the
// file and the line) and the failure-to-file minimum it gives for a due year.

#include "rates/ratetable.h"
#include "rates/release.h"

#include "base/binio.h"
#include "base/fault.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <ranges>
#include <tuple>

using rw::Date;
using rw::Money;
using rw::RateTable;
using rwtest::HandBytes;

namespace {

struct HandRow {
    double from, thru;
    float up, op;
    char method;
};

// A rate table file by hand: marker, 32-bit count, 29-byte rows.
std::vector<char> HandTable(const std::vector<HandRow>& rows, std::int32_t count,
                            std::string_view marker = "NOTVB3")
{
    HandBytes b;
    b.raw(marker).i32(count);
    for (const HandRow& r : rows)
        b.f64(r.from).f64(r.thru).f32(r.up).f32(r.op).raw("rsv!").raw(
            std::string_view(&r.method, 1));
    return b.bytes;
}

// 1/1/1990 is day 32874 and 12/31/2017 day 43100.
constexpr double k1990 = 32874.0;
constexpr double kEnd2017 = 43100.0;

TEST(RateTable, RowsReadFieldForFieldAndWriteBack)
{
    const auto file = HandTable(
        {{k1990, 33238.0, 0.11f, 0.10f, 'C'}, {33239.0, kEnd2017, 0.09f, 0.08f, 'S'}}, 2);
    const rw::RateTableReadResult r = rw::DecodeRateTable(file);
    ASSERT_EQ(r.status, rw::RateTableReadResult::Status::Ok);
    const std::array<char, 4> rsv{'r', 's', 'v', '!'};  // kept as read
    EXPECT_EQ(r.rows, (RateTable{{Date(k1990), Date(33238.0), 0.11f, 0.10f, rsv, 'C'},
                                 {Date(33239.0), Date(kEnd2017), 0.09f, 0.08f, rsv, 'S'}}));
    EXPECT_FALSE(r.rows[1].compounds());
    EXPECT_EQ(rw::EncodeRateTable(r.rows), file);
}

// Every authority's table installed with one row whose rate tells which file was read.
class InstalledTables : public testing::Test {
protected:
    InstalledTables()
    {
        for (const rw::Authority& a : rw::Authorities())
            rwtest::WriteBytes(dir / a.file,
                               HandTable({{k1990, kEnd2017, RateOf(a.file), 0.0f, 'C'}}, 1));
    }
    static float RateOf(std::string_view file)
    {
        const auto files = rw::Authorities() | std::views::transform(&rw::Authority::file);
        return static_cast<float>(std::ranges::find(files, file) - files.begin() + 1) / 64.0f;
    }
    rwtest::TempDir dir;
    rw::Paths paths = rw::Paths::ForFolders(dir.path(), dir.path());
    rwtest::RecordingMessages msgs;
};

TEST_F(InstalledTables, ACodeOpensItsFileAndSomeBringANoticeAtEveryLoad)
{
    const std::string il = "After 12/31/03, for the first year, IL interest accrues at the "
                           "Short-Term rates. After a "
                           "year, interest accrues at the Long-Term rates.";
    const std::string ma
        = "After 6/30/03, MA interest on underpayments and overpayments is computed differently "
          "using different rates. ";
    for (const auto& [code, file, notice] :
         std::vector<std::tuple<std::string, std::string, std::string>>{
             {"US  ", "fed.tbl", ""},
             {"CAB ", "ca_bus1.tbl", ""},
             {"CARC", "ca_bus2.tbl", ""},
             {"RI  ", "Ri1.tbl", ""},
             {"ILST", "Il-st.tbl", il},
             {"IL  ", "Il-lt.tbl", il},
             {"MA  ", "Ma1-up.tbl", ma},
             {"MAOP", "Ma1-op.tbl", ma},
             {"NYSC", "ny_crp1.tbl", ""},
             {"VALC", "va_lcorp.tbl", ""},
             // Codes are compared exactly, blanks included; anything else is federal.
             {"", "fed.tbl", ""},
             {"CAB", "fed.tbl", ""},
             {"cab ", "fed.tbl", ""},
             {"x:\\ca_bus1.tbl", "fed.tbl", ""}}) {
        SCOPED_TRACE(code);
        msgs.clear();
        RateTable rates;
        for (int load = 0; load < 2; ++load)
            ASSERT_TRUE(rw::OpenRates(code, paths, msgs, rates));
        ASSERT_EQ(rates.size(), 1u);
        EXPECT_EQ(rates[0].fUPRate, RateOf(file)) << "expected " << file;
        ASSERT_EQ(msgs.shown.size(), notice.empty() ? 0u : 2u);
        if (!notice.empty()) {
            EXPECT_EQ(msgs.shown[1].title + ": " + msgs.shown[1].text, "NOTICE!: " + notice);
            EXPECT_EQ(msgs.shown[1].icon, rw::MsgIcon::Information);
        }
    }
}

TEST_F(InstalledTables, AMissingOrDamagedTableKeepsTheRatesInUse)
{
    const RateTable previous = {rw::RateRow{Date(1.0), Date(2.0), 0.5f, 0.25f, {}, 'S'}};
    const auto twoRows
        = HandTable({{k1990, 33000.0, 0.1f, 0.1f, 'C'}, {33001.0, kEnd2017, 0.1f, 0.1f, 'C'}}, 3);
    const std::string damaged = "fault 62 OpenRates";
    for (const auto& [name, bytes, outcome] :
         std::vector<std::tuple<const char*, std::vector<char>, std::string>>{
             {"missing", {}, "File not found"},
             {"wrong marker", HandTable({}, 0, "NOTVB4"), "Problem With Rate File"},
             {"three said, two given", twoRows, damaged},
             {"no count", HandBytes().raw("NOTVB3\x01").bytes, damaged},
             {"huge count", HandTable({}, 0x7fffffff), damaged},
             {"negative count", HandTable({}, -1), damaged},
             {"no rows", HandTable({}, 0), damaged},
             // Day 2,958,466 is 1/1/10000.
             {"a row ending in the year 10000", HandTable({{k1990, 2958466.0, 0.1f, 0.1f, 'C'}}, 1),
              "fault 321 OpenRates: row 1 dtThru: not a date from 01/01/1800 to 12/31/2199"},
             {"rows out of order",
              HandTable({{33001.0, kEnd2017, 0.1f, 0.1f, 'C'}, {k1990, 33000.0, 0.1f, 0.1f, 'C'}},
                        2),
              "fault 321 OpenRates: row 2: dtFrom must follow the row before and not be after "
              "dtThru"}}) {
        SCOPED_TRACE(name);
        std::filesystem::remove(dir / "fed.tbl");
        if (!bytes.empty())
            rwtest::WriteBytes(dir / "fed.tbl", bytes);
        msgs.clear();
        RateTable rates = previous;
        std::string said;
        try {
            EXPECT_FALSE(rw::OpenRates("US  ", paths, msgs, rates));
            said = msgs.shown.size() == 1 ? msgs.shown[0].title
                                          : "messages: " + std::to_string(msgs.shown.size());
        } catch (const rw::Fault& f) {
            said = "fault " + std::to_string(f.number()) + " " + f.procedure();
            if (f.number() == rw::kErrInvalidFormat)  // the detail after the file's name
                said += f.detail().substr(f.detail().find(".tbl") + 4);
        }
        EXPECT_EQ(said, outcome);
        EXPECT_EQ(rates, previous);
    }
    // The text names the file and the procedure.
    std::filesystem::remove(dir / "fed.tbl");
    RateTable rates;
    rw::OpenRates("US  ", paths, msgs, rates);
    EXPECT_EQ(msgs.shown.at(0).text,
              "File: " + (dir / "fed.tbl").string()
                  + " does not exist.Please verify the file is in the correct directory. "
                    "Procedure: OpenRates().");
}

// ---- The release file ----------------------------------------------------------------------

const std::string kBody
    = "name=Qrat2026Q2\ndescription=2026, 2nd Quarter\nverified_through=06/30/2026\n"
      "verified_through_text=June 30, 2026\nestimated_through=12/31/2026\n"
      "estimated_through_text=December 31, 2026\nftf_minimum=1800,100.00,IRC 6651(a), flush\n"
      "ftf_minimum=2020,435.00,P.L. 116-94\nftf_minimum=2024,485.00,Rev. Proc. 2023-34\n"
      "table=fed.tbl,2,01/01/1990,12/31/2017,0123abcd\n";
// Sealed with the CRC-32 of "# a comment\n" and kBody (Python's zlib.crc32).
const std::string kGood = "# a comment\n" + kBody + "file_crc32=01d1a4c3\n";

// A release file of the given lines, sealed as the release build seals it.
std::string Sealed(const std::string& body)
{
    char crc[16];
    std::snprintf(crc, sizeof crc, "%08x", rw::Crc32("# a comment\n" + body));
    return "# a comment\n" + body + "file_crc32=" + crc + "\n";
}

TEST(ReleaseFile, ReadsEveryKeyAndWritesTheSameBack)
{
    rw::ReleaseInfo info;
    std::string problem;
    ASSERT_TRUE(rw::ParseReleaseInfo(kGood, "rel.txt", info, &problem)) << problem;
    EXPECT_EQ(info.name + " " + info.description + " " + info.estimatedThroughText,
              "Qrat2026Q2 2026, 2nd Quarter December 31, 2026");
    EXPECT_EQ(info.verifiedThrough, rw::Date::fromCivil(2026, 6, 30));
    ASSERT_EQ(info.ftfMinimums.rows.size(), 3u);
    EXPECT_EQ(info.ftfMinimums.rows[0].source, "IRC 6651(a), flush");  // the rest of the line
    EXPECT_EQ(info.tables, (std::vector<rw::TableRecord>{
                               {"fed.tbl", 2, Date(k1990), Date(kEnd2017), 0x0123abcd}}));
    EXPECT_EQ(rw::FormatReleaseInfo(info, "a comment"), kGood);

    // The minimum of the last listed year at or before the due year.
    const rw::FtfMinimumSchedule m = info.ftfMinimums;
    EXPECT_EQ(m.forDueYear(2019), Money::fromCents(100'00));
    EXPECT_EQ(m.forDueYear(2020), Money::fromCents(435'00));
    EXPECT_EQ(m.forDueYear(2099), Money::fromCents(485'00));
    EXPECT_EQ(m.forDueYear(1799), std::nullopt);
    EXPECT_EQ(rw::FtfMinimumSchedule{}.forDueYear(2024), std::nullopt);
    EXPECT_FALSE(rw::ReadReleaseInfo("/no/such/folder/qrat-release.txt", info, &problem));
    EXPECT_EQ(problem, "/no/such/folder/qrat-release.txt: cannot be read");
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    return text.replace(text.find(from), from.size(), to);
}

TEST(ReleaseFile, RefusalsNameTheFileAndLineAndKeepNothing)
{
    const std::string notADate = " is not a date mm/dd/yyyy from 01/01/1800 to 12/31/2199: ";
    const std::string tableForm = "rel.txt:12: table must be FILE,ROWS,FIRST,LAST,CRC32 (rows "
                                  "from 1, dates mm/dd/yyyy, 8 hex digits)";
    for (const auto& [text, said] : std::vector<std::pair<std::string, std::string>>{
             // Cut short or changed after it was written.
             {kGood.substr(0, kGood.find("ftf_minimum=2024")),
              "rel.txt: file_crc32 is not given: the file is cut short or was not written by the "
              "release build"},
             {Replaced(kGood, "485.00", "100.00"),
              "rel.txt:12: the file has changed since it was written (its checksum differs from "
              "file_crc32)"},
             {kGood + "name=again\n", "rel.txt:13: text after file_crc32"},
             // Sealed, but wrong inside.
             {Sealed(Replaced(kBody, "name=Qrat2026Q2\n", "")), "rel.txt: name is not given"},
             {Sealed(Replaced(kBody, "=06/30/2026", "=6/30/26")),
              "rel.txt:4: verified_through" + notADate + "6/30/26"},
             {Sealed(Replaced(kBody, "=12/31/2026", "=01/01/2200")),
              "rel.txt:6: estimated_through" + notADate + "01/01/2200"},
             {Sealed(Replaced(kBody, "=12/31/2026", "=03/31/2026")),
              "rel.txt: estimated_through is before verified_through"},
             {Sealed(kBody + "name=again\n"), "rel.txt:12: name is given twice"},
             {Sealed(kBody + "colour=blue\n"), "rel.txt:12: unknown key colour"},
             {Sealed(kBody + "just words\n"), "rel.txt:12: expected key=value"},
             {Sealed(kBody + "ftf_minimum=2023,450.00,x\n"),
              "rel.txt:12: ftf_minimum: the years must increase"},
             {Sealed(kBody + "ftf_minimum=2025,0,x\n"),
              "rel.txt:12: ftf_minimum: not an amount in dollars and cents above 0: 0"},
             {Sealed(kBody + "ftf_minimum=2025,510.00\n"),
              "rel.txt:12: ftf_minimum must be YEAR,AMOUNT,SOURCE"},
             {Sealed(kBody + "ftf_minimum=2025,510.00, \n"),
              "rel.txt:12: ftf_minimum: the row has no source"},
             // A year the writer could not write back as four digits.
             {Sealed(kBody + "ftf_minimum=0900,510.00,x\n"),
              "rel.txt:12: ftf_minimum: not a year from 1800 to 2199: 0900"},
             {Sealed(kBody + "table=fed.tbl,2,01/01/1990,12/31/2017,0123abcd\n"),
              "rel.txt:12: table: fed.tbl is given twice"},
             {Sealed(kBody + "table=fed.csv,2,01/01/1990,12/31/2017,0123abcd\n"),
              "rel.txt:12: table: fed.csv is not the table of an authority"},
             {Sealed(kBody + "table=pa1.tbl,2,01/01/1990,12/31/2017,0123abc\n"), tableForm},
             {Sealed(kBody.substr(0, kBody.find("ftf_minimum"))),
              "rel.txt: no ftf_minimum is given"}}) {
        rw::ReleaseInfo info;
        info.name = "left over";
        std::string problem;
        EXPECT_FALSE(rw::ParseReleaseInfo(text, "rel.txt", info, &problem));
        EXPECT_EQ(problem, said);
        EXPECT_EQ(info, rw::ReleaseInfo{}) << said;  // nothing half read is kept
    }
}

}  // namespace
