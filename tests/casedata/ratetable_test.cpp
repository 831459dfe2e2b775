// Rate table files (".tbl") built by hand: their rows, the file each
// authority's code opens, the refusals that keep the rates in use, and the
// check of the calculation dates against a state's table.

#include "casedata/initialinputs.h"
#include "rates/ratetable.h"

#include "base/fault.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

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

const char* kFiles[] = {"fed.tbl",     "ar1.tbl",     "ca_pers.tbl", "ca_bus1.tbl", "ca_bus2.tbl",  "fl1.tbl",
                        "ga1.tbl",     "hi1.tbl",     "id1.tbl",     "Il-st.tbl",   "Il-lt.tbl",    "in1.tbl",
                        "ky1.tbl",     "la1.tbl",     "md1.tbl",     "Ma1-up.tbl",  "Ma1-op.tbl",   "mi1.tbl",
                        "mn1.tbl",     "mo1.tbl",     "ny_ind1.tbl", "ny_crp1.tbl", "pa1.tbl",      "Ri1.tbl",
                        "sc1.tbl",     "va_reg.tbl",  "va_lcorp.tbl", "ut1.tbl",    "vt1.tbl",      "wv1.tbl"};

// Every table installed with one row whose rate tells which file was read.
class InstalledTables : public testing::Test {
protected:
    InstalledTables()
    {
        for (const char* f : kFiles)
            rwtest::WriteBytes(dir / f, HandTable({{k1990, kEnd2017, RateOf(f), 0.0f, 'C'}}, 1));
    }
    static float RateOf(std::string_view file)
    {
        for (std::size_t i = 0; i < std::size(kFiles); ++i)
            if (file == kFiles[i])
                return static_cast<float>(i + 1) / 64.0f;
        return -1.0f;
    }
    rwtest::TempDir dir;
    rw::Paths paths = rw::Paths::ForFolders(dir.path(), dir.path());
    rwtest::RecordingMessages msgs;
};

TEST_F(InstalledTables, EachCodeOpensItsFileAndSomeBringANotice)
{
    const std::string il = "After 12/31/03, for the first year, IL interest accrues at the Short-Term rates. After a "
                           "year, interest accrues at the Long-Term rates.";
    const std::string ma = "After 6/30/03, MA interest on underpayments and overpayments is computed differently "
                           "using different rates. ";
    struct Row {
        std::string code;
        const char* file;
        std::string notice;
    };
    for (const Row& row :
         {Row{"US  ", "fed.tbl", ""}, Row{"AR  ", "ar1.tbl", ""}, Row{"CAP ", "ca_pers.tbl", ""}, Row{"CAB ", "ca_bus1.tbl", ""},
          Row{"CARC", "ca_bus2.tbl", ""}, Row{"FL  ", "fl1.tbl", ""}, Row{"GA  ", "ga1.tbl", ""}, Row{"HI  ", "hi1.tbl", ""},
          Row{"ID  ", "id1.tbl", ""}, Row{"ILST", "Il-st.tbl", il}, Row{"IL  ", "Il-lt.tbl", il}, Row{"IN  ", "in1.tbl", ""},
          Row{"KY  ", "ky1.tbl", ""}, Row{"LA  ", "la1.tbl", ""}, Row{"MD  ", "md1.tbl", ""}, Row{"MA  ", "Ma1-up.tbl", ma},
          Row{"MAOP", "Ma1-op.tbl", ma}, Row{"MI  ", "mi1.tbl", ""}, Row{"MN  ", "mn1.tbl", ""}, Row{"MO  ", "mo1.tbl", ""},
          Row{"NYSI", "ny_ind1.tbl", ""}, Row{"NYSC", "ny_crp1.tbl", ""}, Row{"PA  ", "pa1.tbl", ""}, Row{"RI  ", "Ri1.tbl", ""},
          Row{"SC  ", "sc1.tbl", ""}, Row{"VAR ", "va_reg.tbl", ""}, Row{"VALC", "va_lcorp.tbl", ""}, Row{"UT  ", "ut1.tbl", ""},
          Row{"VT  ", "vt1.tbl", ""}, Row{"WV  ", "wv1.tbl", ""},
          // Codes are compared exactly, blanks included; anything else is federal.
          Row{"", "fed.tbl", ""}, Row{"CAB", "fed.tbl", ""}, Row{"cab ", "fed.tbl", ""}, Row{"x:\\ca_bus1.TBL", "fed.tbl", ""}}) {
        SCOPED_TRACE(row.code);
        msgs.clear();
        RateTable rates;
        ASSERT_TRUE(rw::OpenRates(row.code, paths, msgs, rates));
        ASSERT_EQ(rates.size(), 1u);
        EXPECT_EQ(rates[0].fUPRate, RateOf(row.file)) << "expected " << row.file;
        if (row.notice.empty()) {
            EXPECT_TRUE(msgs.shown.empty());
            continue;
        }
        ASSERT_TRUE(rw::OpenRates(row.code, paths, msgs, rates));  // and again at every load
        ASSERT_EQ(msgs.shown.size(), 2u);
        EXPECT_EQ(msgs.shown[1].title, "NOTICE!");
        EXPECT_EQ(msgs.shown[1].text, row.notice);
        EXPECT_EQ(msgs.shown[1].icon, rw::MsgIcon::Information);
    }
}

TEST_F(InstalledTables, AMissingOrDamagedTableKeepsTheRatesInUse)
{
    const RateTable previous = {rw::RateRow{Date(1.0), Date(2.0), 0.5f, 0.25f, {}, 'S'}};
    std::vector<char> cutRow = HandTable({{k1990, kEnd2017, 0.1f, 0.1f, 'C'}}, 1);
    cutRow.pop_back();
    struct Row {
        const char* name;
        std::optional<std::vector<char>> bytes;  // nullopt: no file
        std::string outcome;                     // the message's title, or the fault
    };
    for (const Row& row : {Row{"missing", std::nullopt, "File not found"},
                           Row{"wrong marker", HandTable({{k1990, kEnd2017, 0.1f, 0.1f, 'C'}}, 1, "NOTVB4"),
                               "Problem With Rate File"},
                           Row{"three said, two given",
                               HandTable({{k1990, 33000.0, 0.1f, 0.1f, 'C'}, {33001.0, kEnd2017, 0.1f, 0.1f, 'C'}}, 3),
                               "fault 62 OpenRates"},
                           Row{"last row cut", cutRow, "fault 62 OpenRates"},
                           Row{"no count", HandBytes().raw("NOTVB3").raw("\x01\x00").bytes, "fault 62 OpenRates"},
                           Row{"huge count", HandTable({}, 0x7fffffff), "fault 62 OpenRates"},
                           Row{"negative count", HandTable({}, -1), "fault 62 OpenRates"},
                           Row{"no rows", HandTable({}, 0), "fault 62 OpenRates"}}) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(dir / "fed.tbl");
        if (row.bytes)
            rwtest::WriteBytes(dir / "fed.tbl", *row.bytes);
        msgs.clear();
        RateTable rates = previous;
        std::string outcome;
        try {
            EXPECT_FALSE(rw::OpenRates("US  ", paths, msgs, rates));
            outcome = msgs.shown.size() == 1 ? msgs.shown[0].title : "messages: " + std::to_string(msgs.shown.size());
        } catch (const rw::Fault& f) {
            outcome = "fault " + std::to_string(f.number()) + " " + f.procedure();
        }
        EXPECT_EQ(outcome, row.outcome);
        EXPECT_EQ(rates, previous);
    }
    // The texts name the file.
    std::filesystem::remove(dir / "fed.tbl");
    RateTable rates;
    msgs.clear();
    rw::OpenRates("US  ", paths, msgs, rates);
    EXPECT_EQ(msgs.shown.at(0).text, "File: " + (dir / "fed.tbl").string()
                                         + " does not exist.Please verify the file is in the correct directory. "
                                           "Procedure: OpenRates().");
    rwtest::WriteBytes(dir / "fed.tbl", HandTable({}, 1, "NOTVB4"));
    msgs.clear();
    rw::OpenRates("US  ", paths, msgs, rates);
    EXPECT_NE(msgs.shown.at(0).text.find("\"NOT_VB3\" code was missing from file, " + (dir / "fed.tbl").string()
                                         + " in procedure: OpenRates()."),
              std::string::npos);
}

// ---- The state-table date check -----------------------------------------------------------

TEST(StateTableDates, BoundsAreInclusiveAndFederalCasesAreNeverChecked)
{
    const RateTable rates = {rw::RateRow{Date(k1990), Date(36000.0), 0.1f, 0.1f, {}, 'C'},
                             rw::RateRow{Date(36001.0), Date(kEnd2017), 0.1f, 0.1f, {}, 'C'}};
    struct Row {
        const char* name;
        const char* code;
        double start, stop;
        bool inside;
    };
    for (const Row& row : {Row{"both on the bounds", "CAP ", k1990, kEnd2017, true},
                           Row{"start a day early", "CAP ", k1990 - 1, kEnd2017, false},
                           Row{"stop a day late", "CAP ", k1990, kEnd2017 + 1, false},
                           Row{"start on the last day", "NYSI", kEnd2017, kEnd2017, true},
                           Row{"federal", "US  ", 1000.0, 90000.0, true}}) {
        SCOPED_TRACE(row.name);
        rw::InitInputs init;
        init.sTaxAuth = row.code;
        init.tlStart.dtDate = Date(row.start);
        init.tlStop.dtDate = Date(row.stop);
        EXPECT_EQ(rw::CalcDatesWithinTable(init, rates), row.inside);
        rwtest::RecordingMessages msgs;
        EXPECT_EQ(rw::CheckStateTableDates(init, rates, msgs), rw::StateCheckAnswer::Continue);  // Yes by default
        EXPECT_EQ(msgs.shown.size(), row.inside ? 0u : 1u);
    }
}

TEST(StateTableDates, TheQuestionNamesTheDatesAndNoMeansSaveAndExit)
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
    EXPECT_TRUE(m.text.starts_with("The start date, 12/31/1989, is not between the first date, 01/01/1990, and the "
                                   "last date, 12/31/2017, in the state's rate table file. You are welcome "))
        << m.text;
    EXPECT_TRUE(m.text.ends_with("current state rate table. If you press the YES button, the program will let you "
                                 "continue, but, if you don't change that date, it will abort without warning later. "
                                 "If you press the NO button, the program will save your data and exit afterwards. "
                                 "Continue?"))
        << m.text;
}

}  // namespace
