// Rate table files (".tbl") built by hand: their rows, the file each
// authority's code opens, and the refusals that keep the rates in use.

#include "rates/ratetable.h"

#include "base/fault.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>

using rw::Date;
using rw::RateTable;
using rwtest::HandBytes;

namespace {

struct HandRow {
    double from, thru;
    float up, op;
    char method;
};

// A rate table file by hand: marker, 32-bit count, 29-byte rows.
std::vector<char> HandTable(const std::vector<HandRow>& rows, std::int32_t count, std::string_view marker = "NOTVB3")
{
    HandBytes b;
    b.raw(marker).i32(count);
    for (const HandRow& r : rows)
        b.f64(r.from).f64(r.thru).f32(r.up).f32(r.op).raw("rsv!").raw(std::string_view(&r.method, 1));
    return b.bytes;
}

// 1/1/1990 is day 32874 and 12/31/2017 day 43100.
constexpr double k1990 = 32874.0;
constexpr double kEnd2017 = 43100.0;

TEST(RateTable, RowsReadFieldForFieldAndWriteBack)
{
    const std::vector<char> file = HandTable({{k1990, 33238.0, 0.11f, 0.10f, 'C'}, {33239.0, kEnd2017, 0.09f, 0.08f, 'S'}}, 2);
    const rw::RateTableReadResult r = rw::DecodeRateTable(file);
    ASSERT_EQ(r.status, rw::RateTableReadResult::Status::Ok);
    const std::array<char, 4> rsv{'r', 's', 'v', '!'};
    EXPECT_EQ(r.rows, (RateTable{rw::RateRow{Date(k1990), Date(33238.0), 0.11f, 0.10f, rsv, 'C'},
                                 rw::RateRow{Date(33239.0), Date(kEnd2017), 0.09f, 0.08f, rsv, 'S'}}));
    EXPECT_FALSE(r.rows[1].compounds());
    EXPECT_EQ(rw::EncodeRateTable(r.rows), file);
}

// Each authority's code and the file it opens.
const std::pair<std::string, std::string> kCodes[] = {
    {"US  ", "fed.tbl"},     {"AR  ", "ar1.tbl"},      {"CAP ", "ca_pers.tbl"}, {"CAB ", "ca_bus1.tbl"}, {"CARC", "ca_bus2.tbl"},
    {"FL  ", "fl1.tbl"},     {"GA  ", "ga1.tbl"},      {"HI  ", "hi1.tbl"},     {"ID  ", "id1.tbl"},     {"ILST", "Il-st.tbl"},
    {"IL  ", "Il-lt.tbl"},   {"IN  ", "in1.tbl"},      {"KY  ", "ky1.tbl"},     {"LA  ", "la1.tbl"},     {"MD  ", "md1.tbl"},
    {"MA  ", "Ma1-up.tbl"},  {"MAOP", "Ma1-op.tbl"},   {"MI  ", "mi1.tbl"},     {"MN  ", "mn1.tbl"},     {"MO  ", "mo1.tbl"},
    {"NYSI", "ny_ind1.tbl"}, {"NYSC", "ny_crp1.tbl"},  {"PA  ", "pa1.tbl"},     {"RI  ", "Ri1.tbl"},     {"SC  ", "sc1.tbl"},
    {"VAR ", "va_reg.tbl"},  {"VALC", "va_lcorp.tbl"}, {"UT  ", "ut1.tbl"},     {"VT  ", "vt1.tbl"},     {"WV  ", "wv1.tbl"}};

// Every table installed with one row whose rate tells which file was read.
class InstalledTables : public testing::Test {
protected:
    InstalledTables()
    {
        for (std::size_t i = 0; i < std::size(kCodes); ++i)
            rwtest::WriteBytes(dir / kCodes[i].second, HandTable({{k1990, kEnd2017, Rate(i), 0.0f, 'C'}}, 1));
    }
    static float Rate(std::size_t i) { return static_cast<float>(i + 1) / 64.0f; }
    rwtest::TempDir dir;
    rw::Paths paths = rw::Paths::ForFolders(dir.path(), dir.path());
    rwtest::RecordingMessages msgs;
};

TEST_F(InstalledTables, EachCodeOpensItsFileAndSomeBringANoticeAtEveryLoad)
{
    const std::string il = "After 12/31/03, for the first year, IL interest accrues at the Short-Term rates. After a "
                           "year, interest accrues at the Long-Term rates.";
    const std::string ma = "After 6/30/03, MA interest on underpayments and overpayments is computed differently "
                           "using different rates. ";
    const std::map<std::string, std::string> notices = {{"ILST", il}, {"IL  ", il}, {"MA  ", ma}, {"MAOP", ma}};
    // Codes are compared exactly, blanks included; anything else is federal.
    std::vector<std::pair<std::string, std::size_t>> cases = {{"", 0}, {"CAB", 0}, {"cab ", 0}, {"x:\\ca_bus1.TBL", 0}};
    for (std::size_t i = 0; i < std::size(kCodes); ++i)
        cases.emplace_back(kCodes[i].first, i);
    for (const auto& [code, file] : cases) {
        SCOPED_TRACE(code);
        msgs.clear();
        RateTable rates;
        for (int load = 0; load < 2; ++load)
            ASSERT_TRUE(rw::OpenRates(code, paths, msgs, rates));
        ASSERT_EQ(rates.size(), 1u);
        EXPECT_EQ(rates[0].fUPRate, Rate(file)) << "expected " << kCodes[file].second;
        if (!notices.contains(code)) {
            EXPECT_TRUE(msgs.shown.empty());
            continue;
        }
        ASSERT_EQ(msgs.shown.size(), 2u);
        EXPECT_EQ(msgs.shown[1].title + ": " + msgs.shown[1].text, "NOTICE!: " + notices.at(code));
        EXPECT_EQ(msgs.shown[1].icon, rw::MsgIcon::Information);
    }
}

TEST_F(InstalledTables, AMissingOrDamagedTableKeepsTheRatesInUse)
{
    const RateTable previous = {rw::RateRow{Date(1.0), Date(2.0), 0.5f, 0.25f, {}, 'S'}};
    std::vector<char> cutRow = HandTable({{k1990, kEnd2017, 0.1f, 0.1f, 'C'}}, 1);
    cutRow.pop_back();
    const std::vector<char> twoRows = HandTable({{k1990, 33000.0, 0.1f, 0.1f, 'C'}, {33001.0, kEnd2017, 0.1f, 0.1f, 'C'}}, 3);
    const std::string damaged = "fault 62 OpenRates";
    for (const auto& [name, bytes, outcome] : std::vector<std::tuple<const char*, std::vector<char>, std::string>>{
             {"missing", {}, "File not found"}, {"wrong marker", HandTable({}, 0, "NOTVB4"), "Problem With Rate File"},
             {"three said, two given", twoRows, damaged}, {"last row cut", cutRow, damaged},
             {"no count", HandBytes().raw("NOTVB3").raw("\x01\x00").bytes, damaged},
             {"huge count", HandTable({}, 0x7fffffff), damaged}, {"negative count", HandTable({}, -1), damaged},
             {"no rows", HandTable({}, 0), damaged}}) {
        SCOPED_TRACE(name);
        std::filesystem::remove(dir / "fed.tbl");
        if (!bytes.empty())
            rwtest::WriteBytes(dir / "fed.tbl", bytes);
        msgs.clear();
        RateTable rates = previous;
        std::string said;
        try {
            EXPECT_FALSE(rw::OpenRates("US  ", paths, msgs, rates));
            said = msgs.shown.size() == 1 ? msgs.shown[0].title : "messages: " + std::to_string(msgs.shown.size());
        } catch (const rw::Fault& f) {
            said = "fault " + std::to_string(f.number()) + " " + f.procedure();
        }
        EXPECT_EQ(said, outcome);
        EXPECT_EQ(rates, previous);
    }
    // The text names the file and the procedure.
    std::filesystem::remove(dir / "fed.tbl");
    RateTable rates;
    rw::OpenRates("US  ", paths, msgs, rates);
    EXPECT_EQ(msgs.shown.at(0).text, "File: " + (dir / "fed.tbl").string()
                                         + " does not exist.Please verify the file is in the correct directory. "
                                           "Procedure: OpenRates().");
}

}  // namespace
