#include "casedata/initialinputs.h"
#include "rates/ratetable.h"

#include "base/fault.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <fstream>

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
std::vector<char> HandTable(const std::vector<HandRow>& rows)
{
    return HandTable(rows, static_cast<std::int32_t>(rows.size()));
}

void WriteFile(const std::filesystem::path& p, const std::vector<char>& bytes)
{
    std::ofstream(p, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

// 1/1/1990 is day 32874 and 12/31/2017 day 43100.
constexpr double k1990 = 32874.0;
constexpr double kEnd2017 = 43100.0;

TEST(RateTable, RowsReadFieldForField)
{
    const std::vector<char> file = HandTable({{k1990, 33238.0, 0.11f, 0.10f, 'C'}, {33239.0, kEnd2017, 0.09f, 0.08f, 'S'}});
    ASSERT_EQ(file.size(), 10u + 2 * 29);
    const rw::RateTableReadResult r = rw::DecodeRateTable(file);
    ASSERT_EQ(r.status, rw::RateTableReadResult::Status::Ok);
    ASSERT_EQ(r.rows.size(), 2u);
    EXPECT_EQ(r.rows[0].dtFrom.dayNumber(), k1990);
    EXPECT_EQ(r.rows[0].dtThru.dayNumber(), 33238.0);
    EXPECT_EQ(r.rows[0].fUPRate, 0.11f);
    EXPECT_EQ(r.rows[0].fOPRate, 0.10f);
    EXPECT_TRUE(r.rows[0].compounds());
    EXPECT_EQ(r.rows[1].sCalcMethod, 'S');
    EXPECT_FALSE(r.rows[1].compounds());
    EXPECT_EQ(r.rows[1].dtThru.dayNumber(), kEnd2017);
    EXPECT_EQ(rw::EncodeRateTable(r.rows), file);
}

// ---- Codes to files -----------------------------------------------------------------------

struct CodeRow {
    std::string code;
    const char* file;
    const char* notice;  // nullptr: none
};

const char* kIllinois =
    "After 12/31/03, for the first year, IL interest accrues at the Short-Term rates. After a year, interest "
    "accrues at the Long-Term rates.";
const char* kMassachusetts =
    "After 6/30/03, MA interest on underpayments and overpayments is computed differently using different rates. ";

const char* kFiles[] = {"fed.tbl",   "ar1.tbl",    "ca_pers.tbl", "ca_bus1.tbl", "ca_bus2.tbl", "fl1.tbl",
                        "ga1.tbl",   "hi1.tbl",    "id1.tbl",     "Il-st.tbl",   "Il-lt.tbl",   "in1.tbl",
                        "ky1.tbl",   "la1.tbl",    "md1.tbl",     "Ma1-up.tbl",  "Ma1-op.tbl",  "mi1.tbl",
                        "mn1.tbl",   "mo1.tbl",    "ny_ind1.tbl", "ny_crp1.tbl", "pa1.tbl",     "Ri1.tbl",
                        "sc1.tbl",   "va_reg.tbl", "va_lcorp.tbl", "ut1.tbl",    "vt1.tbl",     "wv1.tbl"};

class InstalledTables : public testing::Test {
protected:
    void SetUp() override
    {
        // Each table's one row carries its own rate, so the loaded table tells which file was read.
        for (std::size_t i = 0; i < std::size(kFiles); ++i)
            WriteFile(dir / kFiles[i], HandTable({{k1990, kEnd2017, RateOf(kFiles[i]), 0.0f, 'C'}}));
    }
    static float RateOf(std::string_view file)
    {
        for (std::size_t i = 0; i < std::size(kFiles); ++i)
            if (file == kFiles[i])
                return static_cast<float>(i + 1) / 64.0f;
        return -1.0f;
    }

    rwtest::TempDir dir;
    rwtest::TempDir user;
    rw::Paths paths = rw::Paths::ForFolders(dir.path(), user.path());
    rwtest::RecordingMessages msgs;
};

class CodesToFiles : public InstalledTables, public testing::WithParamInterface<CodeRow> {};

TEST_P(CodesToFiles, LoadTheTableTheAuthorityNames)
{
    const CodeRow& row = GetParam();
    RateTable rates;
    ASSERT_TRUE(rw::OpenRates(row.code, paths, msgs, rates));
    ASSERT_EQ(rates.size(), 1u);
    EXPECT_EQ(rates[0].fUPRate, RateOf(row.file)) << "expected " << row.file;
    if (row.notice) {
        ASSERT_EQ(msgs.shown.size(), 1u);
        EXPECT_EQ(msgs.shown[0].title, "NOTICE!");
        EXPECT_EQ(msgs.shown[0].text, row.notice);
        EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
    } else {
        EXPECT_TRUE(msgs.shown.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(
    RateTable, CodesToFiles,
    testing::Values(CodeRow{"US  ", "fed.tbl", nullptr}, CodeRow{"AR  ", "ar1.tbl", nullptr},
                    CodeRow{"CAP ", "ca_pers.tbl", nullptr}, CodeRow{"CAB ", "ca_bus1.tbl", nullptr},
                    CodeRow{"CARC", "ca_bus2.tbl", nullptr}, CodeRow{"FL  ", "fl1.tbl", nullptr},
                    CodeRow{"GA  ", "ga1.tbl", nullptr}, CodeRow{"HI  ", "hi1.tbl", nullptr},
                    CodeRow{"ID  ", "id1.tbl", nullptr}, CodeRow{"ILST", "Il-st.tbl", kIllinois},
                    CodeRow{"IL  ", "Il-lt.tbl", kIllinois}, CodeRow{"IN  ", "in1.tbl", nullptr},
                    CodeRow{"KY  ", "ky1.tbl", nullptr}, CodeRow{"LA  ", "la1.tbl", nullptr},
                    CodeRow{"MD  ", "md1.tbl", nullptr}, CodeRow{"MA  ", "Ma1-up.tbl", kMassachusetts},
                    CodeRow{"MAOP", "Ma1-op.tbl", kMassachusetts}, CodeRow{"MI  ", "mi1.tbl", nullptr},
                    CodeRow{"MN  ", "mn1.tbl", nullptr}, CodeRow{"MO  ", "mo1.tbl", nullptr},
                    CodeRow{"NYSI", "ny_ind1.tbl", nullptr}, CodeRow{"NYSC", "ny_crp1.tbl", nullptr},
                    CodeRow{"PA  ", "pa1.tbl", nullptr}, CodeRow{"RI  ", "Ri1.tbl", nullptr},
                    CodeRow{"SC  ", "sc1.tbl", nullptr}, CodeRow{"VAR ", "va_reg.tbl", nullptr},
                    CodeRow{"VALC", "va_lcorp.tbl", nullptr}, CodeRow{"UT  ", "ut1.tbl", nullptr},
                    CodeRow{"VT  ", "vt1.tbl", nullptr}, CodeRow{"WV  ", "wv1.tbl", nullptr},
                    // Codes are compared exactly, blanks included; anything else is federal.
                    CodeRow{"", "fed.tbl", nullptr}, CodeRow{"XX  ", "fed.tbl", nullptr},
                    CodeRow{"CAB", "fed.tbl", nullptr}, CodeRow{"cab ", "fed.tbl", nullptr},
                    CodeRow{"IL", "fed.tbl", nullptr}, CodeRow{"x:\\cases\\ca_bus1.TBL", "fed.tbl", nullptr}),
    [](const testing::TestParamInfo<CodeRow>& p) { return "Row" + std::to_string(p.index); });

TEST(RateTable, AuthorityListPositions)
{
    EXPECT_EQ(rw::Authorities().size(), 30u);
    EXPECT_EQ(rw::Authorities()[0].name, "Federal");
    EXPECT_EQ(rw::Authorities()[3].name, "CA - Corp: Large");
    EXPECT_EQ(rw::Authorities()[4].name, "CA - Corp: Regular");
    EXPECT_EQ(rw::AuthorityPosition("CAB "), 3);
    EXPECT_EQ(rw::AuthorityPosition("CARC"), 4);
    EXPECT_EQ(rw::AuthorityPosition("MAOP"), 16);
    EXPECT_EQ(rw::AuthorityPosition("CAB"), -1);
}

TEST_F(InstalledTables, NoticesComeWithEveryLoad)
{
    RateTable rates;
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(rw::OpenRates("MAOP", paths, msgs, rates));
    ASSERT_EQ(msgs.shown.size(), 3u);
    for (const auto& m : msgs.shown)
        EXPECT_EQ(m.text, kMassachusetts);
}

const RateTable kPrevious = {rw::RateRow{Date(1.0), Date(2.0), 0.5f, 0.25f, {}, 'S'}};

TEST_F(InstalledTables, AMissingTableIsReportedAndTheRatesStay)
{
    std::filesystem::remove(dir / "ca_bus2.tbl");
    RateTable rates = kPrevious;
    EXPECT_FALSE(rw::OpenRates("CARC", paths, msgs, rates));
    EXPECT_EQ(rates, kPrevious);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "File not found");
    EXPECT_EQ(msgs.shown[0].text, "File: " + (dir / "ca_bus2.tbl").string()
                                      + " does not exist.Please verify the file is in the correct directory. "
                                        "Procedure: OpenRates().");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
}

TEST_F(InstalledTables, AMissingMarkerIsReportedAndTheRatesStay)
{
    WriteFile(dir / "fed.tbl", HandTable({{k1990, kEnd2017, 0.1f, 0.1f, 'C'}}, 1, "NOTVB4"));
    RateTable rates = kPrevious;
    EXPECT_FALSE(rw::OpenRates("US  ", paths, msgs, rates));
    EXPECT_EQ(rates, kPrevious);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "Problem With Rate File");
    EXPECT_NE(msgs.shown[0].text.find("\"NOT_VB3\" code was missing from file, " + (dir / "fed.tbl").string()
                                      + " in procedure: OpenRates()."),
              std::string::npos)
        << msgs.shown[0].text;
}

TEST_F(InstalledTables, ATableShorterThanItsCountIsAFaultAndTheRatesStay)
{
    struct Row {
        const char* name;
        std::vector<char> bytes;
    };
    std::vector<char> cutRow = HandTable({{k1990, kEnd2017, 0.1f, 0.1f, 'C'}});
    cutRow.pop_back();
    for (const Row& row : {Row{"three said, two given", HandTable({{k1990, 33000.0, 0.1f, 0.1f, 'C'}, {33001.0, kEnd2017, 0.1f, 0.1f, 'C'}}, 3)},
                           Row{"last row cut", cutRow},
                           Row{"no count", HandBytes().raw("NOTVB3").raw("\x01\x00").bytes},
                           Row{"huge count", HandTable({}, 0x7fffffff)},
                           Row{"negative count", HandTable({}, -1)},
                           Row{"no rows", HandTable({}, 0)}}) {
        SCOPED_TRACE(row.name);
        WriteFile(dir / "fed.tbl", row.bytes);
        RateTable rates = kPrevious;
        try {
            rw::OpenRates("US  ", paths, msgs, rates);
            ADD_FAILURE() << "no fault";
        } catch (const rw::Fault& f) {
            EXPECT_EQ(f.number(), 62);
            EXPECT_EQ(f.procedure(), "OpenRates");
        }
        EXPECT_EQ(rates, kPrevious);
    }
}

// ---- The state-table date check -----------------------------------------------------------

struct RangeRow {
    const char* name;
    const char* code;
    double start, stop;
    bool inside;
};

class StateRange : public testing::TestWithParam<RangeRow> {};

TEST_P(StateRange, BoundsAreInclusive)
{
    const RangeRow& row = GetParam();
    const RateTable rates = {rw::RateRow{Date(k1990), Date(36000.0), 0.1f, 0.1f, {}, 'C'},
                             rw::RateRow{Date(36001.0), Date(kEnd2017), 0.1f, 0.1f, {}, 'C'}};
    rw::InitInputs init;
    init.sTaxAuth = row.code;
    init.tlStart.dtDate = Date(row.start);
    init.tlStop.dtDate = Date(row.stop);
    EXPECT_EQ(rw::CalcDatesWithinTable(init, rates), row.inside);
    rwtest::RecordingMessages msgs;
    EXPECT_EQ(rw::CheckStateTableDates(init, rates, msgs), rw::StateCheckAnswer::Continue);
    EXPECT_EQ(msgs.shown.size(), row.inside ? 0u : 1u);
}

INSTANTIATE_TEST_SUITE_P(
    RateTable, StateRange,
    testing::Values(RangeRow{"BothOnTheBounds", "CAP ", k1990, kEnd2017, true},
                    RangeRow{"StartADayEarly", "CAP ", k1990 - 1, kEnd2017, false},
                    RangeRow{"StopADayLate", "CAP ", k1990, kEnd2017 + 1, false},
                    RangeRow{"StopOnTheFirstDay", "NYSI", k1990, k1990, true},
                    RangeRow{"StartOnTheLastDay", "NYSI", kEnd2017, kEnd2017, true},
                    RangeRow{"FederalNeverChecked", "US  ", 1000.0, 90000.0, true}),
    [](const testing::TestParamInfo<RangeRow>& p) { return std::string(p.param.name); });

TEST(RateTable, TheRangeQuestionNamesTheDatesAndAnswersYesOrNo)
{
    const RateTable rates = {rw::RateRow{Date(k1990), Date(kEnd2017), 0.1f, 0.1f, {}, 'C'}};
    rw::InitInputs init;
    init.sTaxAuth = "GA  ";
    init.tlStart.dtDate = Date(k1990 - 1);
    init.tlStop.dtDate = Date(kEnd2017);
    rwtest::RecordingMessages msgs;
    msgs.answerNext(false);
    EXPECT_EQ(rw::CheckStateTableDates(init, rates, msgs), rw::StateCheckAnswer::SaveAndExit);
    ASSERT_EQ(msgs.shown.size(), 1u);
    const rwtest::ShownMessage& m = msgs.shown[0];
    EXPECT_EQ(m.title, "State Rate Table Problem");
    EXPECT_EQ(m.icon, rw::MsgIcon::Critical);
    EXPECT_TRUE(m.question);
    const std::string head =
        "The start date, 12/31/1989, is not between the first date, 01/01/1990, and the last date, 12/31/2017, in "
        "the state's rate table file. You are welcome ";
    const std::string tail =
        "current state rate table. If you press the YES button, the program will let you continue, but, if you "
        "don't change that date, it will abort without warning later. If you press the NO button, the program "
        "will save your data and exit afterwards. Continue?";
    EXPECT_EQ(m.text.substr(0, head.size()), head);
    ASSERT_GE(m.text.size(), tail.size());
    EXPECT_EQ(m.text.substr(m.text.size() - tail.size()), tail);
}

}  // namespace
