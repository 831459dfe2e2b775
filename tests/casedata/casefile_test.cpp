// Case files against images built byte by byte (handcase.h): every field at
// its offset, the three layouts chosen by the whole version tag and converted
// on reading, texts of any Latin-1 byte, and damaged files refused without
// touching the case in memory.

#include "casedata/casefile.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

using rw::Case;
using rw::Date;
using rw::Money;
using rwtest::HandBytes;
using rwtest::HandLayout;
using Status = rw::CaseReadResult::Status;

namespace {

constexpr std::size_t R = 26;  // the record starts after the marker and the tag

Case Cleared()
{
    Case c;
    rw::ClearInputs(c);
    return c;
}

std::string Tag(std::string text, char pad = ' ')
{
    text.resize(20, pad);
    return text;
}

void Put(std::vector<char>& file, std::size_t at, const std::vector<char>& bytes)
{
    std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<long>(at));
}

// The file of a cleared case: marker, tag, a record of zeros with NoDate
// (-32767) in its eighteen optional dates and 0.2 in the accuracy rate.
std::vector<char> HandClearedFile()
{
    std::vector<char> f = HandBytes().raw("NOTVB3").text("Qrat2018Q1.10", 20).bytes;
    f.resize(514, '\0');
    for (std::size_t at : {104, 160, 224, 280, 290, 298, 308, 316, 324, 340, 364, 384, 412, 424, 440, 456, 464, 472})
        Put(f, R + at, HandBytes().f64(-32767.0).bytes);
    Put(f, R + 400, HandBytes().f32(0.2f).bytes);
    return f;
}

TEST(CaseFile, AClearedCaseIsTheHandBuiltImage)
{
    EXPECT_EQ(rw::EncodeCase(Cleared()), HandClearedFile());
    // A case in use is cleared alike, each list back to one empty entry of day 0.
    Case used = Cleared();
    used.init.sName = "Someone";
    used.init.cAmtOnReturn = Money::fromCents(5);
    used.pmts.resize(2);
    used.pmts[0].dtPmt = Date(42475.0);
    used.init.nPmts = 2;
    rw::ClearInputs(used);
    EXPECT_EQ(used, Cleared());
    ASSERT_EQ(used.pmts.size(), 1u);
    EXPECT_EQ(used.pmts[0].dtPmt.dayNumber(), 0.0);
}

// ---- Every field of the record at its offset -----------------------------------

struct OffsetRow {
    const char* name;
    std::size_t offset;  // in the record
    std::function<void(Case&)> set;
    std::vector<char> bytes;
};

class FieldOffsets : public testing::TestWithParam<OffsetRow> {};

TEST_P(FieldOffsets, AreWrittenAndReadThere)
{
    Case c = Cleared();
    GetParam().set(c);
    std::vector<char> expected = HandClearedFile();
    Put(expected, R + GetParam().offset, GetParam().bytes);
    EXPECT_EQ(rw::EncodeCase(c), expected);
    const rw::CaseReadResult r = rw::DecodeCase(expected);
    ASSERT_EQ(r.status, Status::Ok);
    EXPECT_EQ(r.kase, c);
}

std::vector<char> Txt(const std::string& s) { return std::vector<char>(s.begin(), s.end()); }

#define FLAG_ROW(field, off) OffsetRow{#field, off, [](Case& c) { c.init.field = -1; }, HandBytes().i16(-1).bytes}
#define DATE_ROW(field, off) \
    OffsetRow{#field, off, [](Case& c) { c.init.field = Date(42475.25); }, HandBytes().f64(42475.25).bytes}
#define MONEY_ROW(field, off)                                                                   \
    OffsetRow{#field, off, [](Case& c) { c.init.field = Money::fromRaw(-1234567890123); }, \
              HandBytes().i64(-1234567890123).bytes}
#define TEXT_ROW(field, off, value, padded) \
    OffsetRow{#field, off, [](Case& c) { c.init.field = value; }, Txt(padded)}

INSTANTIATE_TEST_SUITE_P(
    CaseFile, FieldOffsets,
    testing::Values(
        TEXT_ROW(sName, 0, "Pat Doe", "Pat Doe" + std::string(45, ' ')),
        TEXT_ROW(s2ndLine, 52, "Line 2", "Line 2" + std::string(46, ' ')),
        DATE_ROW(dtDue, 104), FLAG_ROW(bPayroll, 112), FLAG_ROW(bAutoArrange, 114), FLAG_ROW(bOverpayment, 116),
        FLAG_ROW(bTaxMotivated, 118), FLAG_ROW(bAnyPenalties, 120),
        TEXT_ROW(tlStart.sSortCode, 128, "20160415STRT", "20160415STRT"),
        TEXT_ROW(tlStart.sDesc, 140, "Start", "Start" + std::string(11, ' ')),
        TEXT_ROW(tlStart.sCode, 156, "STRT", "STRT"), DATE_ROW(tlStart.dtDate, 160), MONEY_ROW(tlStart.cTax, 168),
        MONEY_ROW(tlStart.cPen, 176), MONEY_ROW(tlStart.cInt, 184),
        TEXT_ROW(tlStop.sSortCode, 192, "x", "x" + std::string(11, ' ')), DATE_ROW(tlStop.dtDate, 224),
        MONEY_ROW(tlStop.cTax, 232), MONEY_ROW(tlStop.cInt, 248), FLAG_ROW(bFtoFile, 256), FLAG_ROW(bFtoPay, 258),
        FLAG_ROW(bNegFlat, 260), FLAG_ROW(bNegTime, 262), FLAG_ROW(bSUP, 264), FLAG_ROW(bOtherPen, 266),
        FLAG_ROW(bAccRel, 268), FLAG_ROW(bOVal, 270), FLAG_ROW(b6651d1, 272), FLAG_ROW(bFraudFlat, 274),
        FLAG_ROW(bFraudTime, 276), FLAG_ROW(bCorpUPRate, 278), DATE_ROW(dtCorpUPRateStart, 280),
        FLAG_ROW(bCorpOPRate, 288), DATE_ROW(dtCorpOPRateStart, 290), DATE_ROW(dtExtended, 298),
        OffsetRow{"nStopDays", 306, [](Case& c) { c.init.nStopDays = 30; }, HandBytes().i16(30).bytes},
        DATE_ROW(dtFtoFileAssess, 308), DATE_ROW(dtFiled, 316), DATE_ROW(dtFtoPayAssess, 324),
        MONEY_ROW(cAmtOnReturn, 332), DATE_ROW(dtNegFlatAssess, 340), MONEY_ROW(cNegFlatAmt, 348),
        MONEY_ROW(cNegTimeAmt, 356), DATE_ROW(dtNegTimeAssess, 364), MONEY_ROW(cSUPAmt, 372),
        OffsetRow{"fSUPRate", 380, [](Case& c) { c.init.fSUPRate = 10.0f; }, HandBytes().f32(10.0f).bytes},
        DATE_ROW(dtAssessSUP, 384), MONEY_ROW(cAccRelAmt, 392),
        OffsetRow{"fAccRelRate", 400, [](Case& c) { c.init.fAccRelRate = 0.4f; }, HandBytes().f32(0.4f).bytes},
        MONEY_ROW(cOValAmt, 404), DATE_ROW(dtOValAssess, 412),
        OffsetRow{"fOValRate", 420, [](Case& c) { c.init.fOValRate = 30.0f; }, HandBytes().f32(30.0f).bytes},
        DATE_ROW(dt6651d1Start, 424), MONEY_ROW(cFraudFlatAmt, 432), DATE_ROW(dtFraudFlatAssess, 440),
        MONEY_ROW(cFraudTimeAmt, 448), DATE_ROW(dtFraudTimeAssess, 456), DATE_ROW(dtIntSuspend, 464),
        DATE_ROW(dtRestart, 472), FLAG_ROW(bCorporate, 482), TEXT_ROW(sTaxAuth, 484, "CAP", "CAP ")),
    [](const testing::TestParamInfo<OffsetRow>& p) {
        std::string n = p.param.name;
        std::replace(n.begin(), n.end(), '.', '_');
        return n;
    });

TEST(CaseFile, TheReservedFieldIsWrittenAsZeroAndIgnoredWhenRead)
{
    Case c = Cleared();
    c.init.nReserved = 77;
    EXPECT_EQ(rw::EncodeCase(c), HandClearedFile());
    std::vector<char> file = HandClearedFile();
    file[R + 480] = 5;
    EXPECT_EQ(rw::DecodeCase(file).kase.init.nReserved, 0);
}

// The list records after the record, each field where the hand image puts it.
TEST(CaseFile, ListRecordsFollowTheRecordFieldForField)
{
    using rwtest::HandDate, rwtest::HandInt, rwtest::HandMoney, rwtest::HandText;
    Case c = Cleared();
    c.init.nPmts = c.init.nCharges = c.init.nDeposits = 1;
    const auto money = [](int k) { return Money::fromRaw(HandMoney(k, 5)); };
    const auto date = [](int k) { return Date(HandDate(k, 5)); };
    rw::PaymentRec& p = c.pmts[0];
    p.sDesc = HandText(301, 5, 16);
    p.sMethod = "I";
    std::tie(p.dtPmt, p.cAmount, p.cToTax, p.cToInt, p.cToPen) = std::tuple(date(302), money(303), money(304), money(305), money(306));
    rw::ChargeRec& ch = c.charges[0];
    ch.sDesc = HandText(401, 5, 16);
    std::tie(ch.dtLiab, ch.dtIntStart, ch.cTotal, ch.cToTax, ch.cToPen) = std::tuple(date(402), date(403), money(404), money(405), money(406));
    c.deposits[0] = {date(501), date(502), money(503), HandInt(504, 5), date(505), date(506)};
    std::vector<char> expected = HandClearedFile();
    Put(expected, R + 122, HandBytes().i16(1).i16(1).i16(1).bytes);
    HandBytes lists;
    lists.append(rwtest::HandPayment(5)).append(rwtest::HandCharge(5)).append(rwtest::HandDeposit(5));
    expected.insert(expected.end(), lists.bytes.begin(), lists.bytes.end());
    ASSERT_EQ(expected.size(), 514u + 57 + 56 + 42);
    EXPECT_EQ(rw::EncodeCase(c), expected);
    EXPECT_EQ(rw::DecodeCase(expected).kase, c);
}

// ---- The three layouts -------------------------------------------------------------

struct LayoutRow {
    const char* name;
    std::string tag;  // all 20 bytes
    HandLayout layout;
};

class Layouts : public testing::TestWithParam<LayoutRow> {};

TEST_P(Layouts, AreChosenByTheWholeTagAndWrittenBackInTheCurrentOne)
{
    const LayoutRow& row = GetParam();
    const std::vector<char> file = rwtest::HandCaseFile(row.tag, row.layout, 3, {2, 1, 2});
    const rw::CaseReadResult r = rw::DecodeCase(file);
    ASSERT_EQ(r.status, Status::Ok) << r.detail;
    EXPECT_TRUE(r.kase.countsConsistent());
    EXPECT_EQ(rw::EncodeCase(r.kase), rwtest::HandAsCurrent(file, row.layout));
}

INSTANTIATE_TEST_SUITE_P(
    CaseFile, Layouts,
    testing::Values(LayoutRow{"Year1999", Tag("Qrat1999Q4.10"), HandLayout::L482},
                    LayoutRow{"JustBelow2000Q220", Tag("Qrat2000Q2.19"), HandLayout::L482},
                    LayoutRow{"ShortTagWithNuls", Tag("Qrat2000Q2.2", '\0'), HandLayout::L482},
                    LayoutRow{"AllNuls", Tag("", '\0'), HandLayout::L482},
                    // The whole field is compared: the tag followed by blanks is not below the tag.
                    LayoutRow{"Exactly2000Q220", Tag("Qrat2000Q2.20"), HandLayout::L484},
                    LayoutRow{"PrefixOf2010Q311", Tag("Qrat2010Q3.1"), HandLayout::L484},
                    LayoutRow{"JustBelow2010Q311", Tag("Qrat2010Q3.10"), HandLayout::L484},
                    LayoutRow{"Exactly2010Q311", Tag("Qrat2010Q3.11"), HandLayout::L488},
                    LayoutRow{"Exactly2010Q311WithNuls", Tag("Qrat2010Q3.11", '\0'), HandLayout::L488},
                    LayoutRow{"ThisRelease", Tag("Qrat2018Q1.10"), HandLayout::L488},
                    LayoutRow{"LowerCaseSortsAbove", Tag("qrat1990"), HandLayout::L488}),
    [](const testing::TestParamInfo<LayoutRow>& p) { return std::string(p.param.name); });

// ---- Texts -----------------------------------------------------------------------------

TEST(CaseFile, TextsAreCutToTheirWidthAndKeepEveryLatin1Byte)
{
    const std::string n52 = "Fifty-two characters exactly, for the taxpayer name!";
    ASSERT_EQ(n52.size(), 52u);
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    Case c = Cleared();
    c.init.sName = n52 + "12345678";
    c.init.s2ndLine = all.substr(0, 52);
    c.init.tlStart.sDesc = all.substr(52, 16);
    c.init.sTaxAuth = all.substr(252, 4);
    c.pmts.assign(6, rw::PaymentRec{});
    c.init.nPmts = 6;
    for (std::size_t i = 0; i < 6; ++i)
        c.pmts[i].sDesc = all.substr(68 + 31 * i, 16);
    const std::vector<char> img = rw::EncodeCase(c);
    EXPECT_EQ(std::string(img.data() + R, 104), n52 + all.substr(0, 52));
    EXPECT_EQ(std::string(img.data() + 514 + 5 * 57, 16), all.substr(223, 16));
    const rw::CaseReadResult r = rw::DecodeCase(img);
    ASSERT_EQ(r.status, Status::Ok);
    EXPECT_EQ(r.kase, c);
    EXPECT_EQ(r.kase.init.sName.str(), n52);
}

// ---- Reading damaged files, with the messages ------------------------------------------------

std::vector<char> AGoodFile()
{
    return rwtest::HandAsCurrent(rwtest::HandCaseFile(Tag("Qrat2018Q1.10"), HandLayout::L488, 1, {2, 2, 2}),
                                 HandLayout::L488);
}

TEST(CaseFile, AMissingFileIsToldAndTheCaseKept)
{
    rwtest::TempDir dir;
    rwtest::RecordingMessages msgs;
    Case c = Cleared();
    c.init.sName = "Kept";
    const Case before = c;
    const std::string path = (dir / "NONE.INT").string();
    EXPECT_FALSE(rw::ReadCase(path, c, msgs));
    EXPECT_EQ(c, before);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "File not found");
    EXPECT_EQ(msgs.shown[0].text, "File: " + path + " does not exist.Please verify the file is in the correct directory.");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Critical);
}

TEST(CaseFile, TruncatedFilesOfEveryLengthNeverTouchTheCase)
{
    rwtest::TempDir dir;
    const std::vector<char> good = AGoodFile();
    const std::string path = (dir / "CUT.INT").string();
    Case c = Cleared();
    c.init.sName = "Untouched";
    const Case before = c;
    for (std::size_t len = 0; len < good.size(); ++len) {
        const std::vector<char> cut(good.begin(), good.begin() + static_cast<long>(len));
        const Status expected = len < 6 ? Status::BadMarker : Status::Damaged;
        ASSERT_EQ(rw::DecodeCase(cut).status, expected) << len;
        // Through a file, at the edges of the parts and at every 16th length between.
        const bool edge = len < 8 || (len >= 24 && len <= 28) || (len >= 512 && len <= 516) || len + 2 >= good.size();
        if (!edge && len % 16 != 0)
            continue;
        rwtest::WriteBytes(path, cut);
        rwtest::RecordingMessages msgs;
        ASSERT_EQ(rw::ReadCaseReporting(path, c, msgs), expected) << len;
        ASSERT_EQ(c, before) << len;
        ASSERT_EQ(msgs.shown.size(), 1u);
        if (len >= 6) {
            EXPECT_EQ(msgs.shown[0].text, "Retrieve (Open) Error: Input past end of file") << len;
        }
    }
    // The whole file reads into the case; bytes after its last record are ignored.
    rwtest::WriteBytes(path, good);
    rwtest::RecordingMessages msgs;
    EXPECT_TRUE(rw::ReadCase(path, c, msgs));
    EXPECT_EQ(rw::EncodeCase(c), good);
    std::vector<char> longer = good;
    longer.push_back('x');
    EXPECT_EQ(rw::DecodeCase(longer).status, Status::Ok);
}

TEST(CaseFile, WrongMarkersAreRefusedWithAMessage)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "OLD.INT").string();
    for (const std::string& marker : {std::string("NOTVB2"), std::string("notvb3"), std::string("NOTVB\0", 6)}) {
        std::vector<char> file = AGoodFile();
        Put(file, 0, Txt(marker));
        rwtest::WriteBytes(path, file);
        rwtest::RecordingMessages msgs;
        Case c = Cleared();
        EXPECT_EQ(rw::ReadCaseReporting(path, c, msgs), Status::BadMarker);
        EXPECT_EQ(c, Cleared());
        ASSERT_EQ(msgs.shown.size(), 1u);
        EXPECT_EQ(msgs.shown[0].title, "Problem With Case File");
    }
}

TEST(CaseFile, CountsThatCannotBeTrueAreDamage)
{
    struct Row {
        const char* name;
        std::size_t at;  // count field in the record
        std::int16_t value;
    };
    for (const Row& row : {Row{"negative payments", 122, -1}, Row{"most negative charges", 124, -32768},
                           Row{"largest deposits", 126, 32767}, Row{"one payment beyond the file", 122, 3}}) {
        SCOPED_TRACE(row.name);
        std::vector<char> file = AGoodFile();
        Put(file, R + row.at, HandBytes().i16(row.value).bytes);
        EXPECT_EQ(rw::DecodeCase(file).status, Status::Damaged);
    }
}

// ---- Writing -------------------------------------------------------------------------

TEST(CaseFile, WriteCaseWritesTheImageAndFolderOfSplitsAtTheLastSeparator)
{
    rwtest::TempDir dir;
    Case c = Cleared();
    c.init.sName = "Written";
    const std::string path = (dir / "W.INT").string();
    rw::WriteCase(path, c);
    EXPECT_EQ(rwtest::ReadBytes(path), rw::EncodeCase(c));
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
    EXPECT_EQ(rw::FolderOf("/home/pat/cases/A.INT"), "/home/pat/cases");
    EXPECT_EQ(rw::FolderOf("C:\\Data\\A.INT"), "C:\\Data");
    EXPECT_EQ(rw::FolderOf("A.INT"), "");
    EXPECT_EQ(rw::FolderOf("/A.INT"), "");
}

}  // namespace
