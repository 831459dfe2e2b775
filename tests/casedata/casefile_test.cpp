#include "casedata/casefile.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <fstream>
#include <algorithm>
#include <functional>

using rw::Case;
using rw::Date;
using rw::Money;
using rwtest::HandBytes;
using rwtest::HandLayout;

namespace {

constexpr std::size_t R = 26;  // the record starts after the marker and the tag
const std::string kCurrentTag = std::string("Qrat2018Q1.10") + "       ";

Case Cleared()
{
    Case c;
    rw::ClearInputs(c);
    return c;
}

// The file of a cleared case, byte by byte: marker, tag, a record of zeros
// with NoDate in its eighteen optional dates and 0.2 in the accuracy rate.
std::vector<char> HandClearedFile()
{
    HandBytes b;
    b.raw("NOTVB3").raw(kCurrentTag);
    b.bytes.resize(514, '\0');
    for (std::size_t at : {104, 160, 224, 280, 290, 298, 308, 316, 324, 340, 364, 384, 412, 424, 440, 456, 464, 472}) {
        const std::vector<char> nd = HandBytes().f64(-32767.0).bytes;
        std::copy(nd.begin(), nd.end(), b.bytes.begin() + static_cast<long>(R + at));
    }
    const std::vector<char> rate = HandBytes().f32(0.2f).bytes;
    std::copy(rate.begin(), rate.end(), b.bytes.begin() + static_cast<long>(R + 400));
    return b.bytes;
}

void WriteFile(const std::filesystem::path& p, const std::vector<char>& bytes)
{
    std::ofstream(p, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::vector<char> ReadFile(const std::filesystem::path& p)
{
    std::ifstream in(p, std::ios::binary);
    return std::vector<char>(std::istreambuf_iterator<char>(in), {});
}

// ---- Sizes and the cleared case ------------------------------------------------------

TEST(CaseFile, AClearedCaseIsExactly514BytesAsBuiltByHand)
{
    const std::vector<char> img = rw::EncodeCase(Cleared());
    EXPECT_EQ(img.size(), 514u);
    EXPECT_EQ(img, HandClearedFile());
}

TEST(CaseFile, ClearInputsDefaults)
{
    Case c;
    c.init.sName = "Someone";
    c.init.nPmts = 2;
    c.pmts.resize(2);
    c.init.cAmtOnReturn = Money::fromCents(5);
    rw::ClearInputs(c);
    for (const Date* d : {&c.init.dtDue, &c.init.tlStart.dtDate, &c.init.tlStop.dtDate, &c.init.dtCorpUPRateStart,
                          &c.init.dtCorpOPRateStart, &c.init.dtExtended, &c.init.dtFtoFileAssess, &c.init.dtFiled,
                          &c.init.dtFtoPayAssess, &c.init.dtNegFlatAssess, &c.init.dtNegTimeAssess,
                          &c.init.dtAssessSUP, &c.init.dtOValAssess, &c.init.dt6651d1Start,
                          &c.init.dtFraudFlatAssess, &c.init.dtFraudTimeAssess, &c.init.dtIntSuspend,
                          &c.init.dtRestart})
        EXPECT_EQ(d->dayNumber(), -32767.0);
    EXPECT_EQ(c.init.nPmts, 0);
    EXPECT_EQ(c.init.nCharges, 0);
    EXPECT_EQ(c.init.nDeposits, 0);
    EXPECT_EQ(c.pmts.size(), 1u);
    EXPECT_EQ(c.charges.size(), 1u);
    EXPECT_EQ(c.deposits.size(), 1u);
    EXPECT_EQ(c.init.fAccRelRate, 0.2f);
    EXPECT_EQ(c.init.sTaxAuth.view(), std::string(4, '\0'));
    EXPECT_EQ(c.init.sName.view(), std::string(52, '\0'));
    EXPECT_TRUE(c.init.cAmtOnReturn.isZero());
    // The one empty entry of each list: texts never assigned, day 0, nothing owed.
    EXPECT_EQ(c.pmts[0].sDesc.view(), std::string(16, '\0'));
    EXPECT_EQ(c.pmts[0].dtPmt.dayNumber(), 0.0);
    EXPECT_TRUE(c.countsConsistent());
}

TEST(CaseFile, ListsFollowTheRecordInOrder)
{
    // Two payments, one charge, one deposit: 514 + 2 x 57 + 56 + 42 bytes.
    std::vector<char> file = rwtest::HandCaseFile(kCurrentTag, HandLayout::L488, 11, {2, 1, 1});
    file[R + 480] = file[R + 481] = 0;  // reserved: written as 0
    ASSERT_EQ(file.size(), 514u + 114 + 56 + 42);
    const rw::CaseReadResult r = rw::DecodeCase(file);
    ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
    rwtest::ExpectPaymentMatches(r.kase.pmts[0], 11);
    rwtest::ExpectPaymentMatches(r.kase.pmts[1], 12);
    rwtest::ExpectChargeMatches(r.kase.charges[0], 11);
    rwtest::ExpectDepositMatches(r.kase.deposits[0], 11);
    EXPECT_EQ(rw::EncodeCase(r.kase), file);
}

// ---- Every field at its offset ------------------------------------------------------------

struct OffsetRow {
    const char* name;
    std::size_t offset;  // in the record
    std::function<void(Case&)> set;
    std::vector<char> bytes;
};

class FieldOffsets : public testing::TestWithParam<OffsetRow> {};

TEST_P(FieldOffsets, AreWhereTheRecordPutsThem)
{
    const OffsetRow& row = GetParam();
    Case c = Cleared();
    row.set(c);
    std::vector<char> expected = HandClearedFile();
    std::copy(row.bytes.begin(), row.bytes.end(), expected.begin() + static_cast<long>(R + row.offset));
    EXPECT_EQ(rw::EncodeCase(c), expected);
    // And read from there.
    const rw::CaseReadResult r = rw::DecodeCase(expected);
    ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
    EXPECT_EQ(r.kase, c);
}

std::vector<char> F64(double v) { return HandBytes().f64(v).bytes; }
std::vector<char> I64(std::int64_t v) { return HandBytes().i64(v).bytes; }
std::vector<char> I16(std::int16_t v) { return HandBytes().i16(v).bytes; }
std::vector<char> F32(float v) { return HandBytes().f32(v).bytes; }
std::vector<char> Txt(const std::string& s) { return std::vector<char>(s.begin(), s.end()); }

#define FLAG_ROW(field, off) OffsetRow{#field, off, [](Case& c) { c.init.field = -1; }, I16(-1)}
#define DATE_ROW(field, off) OffsetRow{#field, off, [](Case& c) { c.init.field = Date(42475.25); }, F64(42475.25)}
#define MONEY_ROW(field, off) \
    OffsetRow{#field, off, [](Case& c) { c.init.field = Money::fromRaw(-1234567890123); }, I64(-1234567890123)}

INSTANTIATE_TEST_SUITE_P(
    CaseFile, FieldOffsets,
    testing::Values(
        OffsetRow{"sName", 0, [](Case& c) { c.init.sName = "Pat Doe"; }, Txt("Pat Doe" + std::string(45, ' '))},
        OffsetRow{"s2ndLine", 52, [](Case& c) { c.init.s2ndLine = "Line 2"; }, Txt("Line 2" + std::string(46, ' '))},
        DATE_ROW(dtDue, 104), FLAG_ROW(bPayroll, 112), FLAG_ROW(bAutoArrange, 114), FLAG_ROW(bOverpayment, 116),
        FLAG_ROW(bTaxMotivated, 118), FLAG_ROW(bAnyPenalties, 120),
        OffsetRow{"tlStart.sSortCode", 128, [](Case& c) { c.init.tlStart.sSortCode = "20160415STRT"; },
                  Txt("20160415STRT")},
        OffsetRow{"tlStart.sDesc", 140, [](Case& c) { c.init.tlStart.sDesc = "Start"; }, Txt("Start" + std::string(11, ' '))},
        OffsetRow{"tlStart.sCode", 156, [](Case& c) { c.init.tlStart.sCode = "STRT"; }, Txt("STRT")},
        DATE_ROW(tlStart.dtDate, 160), MONEY_ROW(tlStart.cTax, 168), MONEY_ROW(tlStart.cPen, 176),
        MONEY_ROW(tlStart.cInt, 184),
        OffsetRow{"tlStop.sSortCode", 192, [](Case& c) { c.init.tlStop.sSortCode = "x"; }, Txt("x" + std::string(11, ' '))},
        DATE_ROW(tlStop.dtDate, 224), MONEY_ROW(tlStop.cTax, 232), MONEY_ROW(tlStop.cInt, 248),
        FLAG_ROW(bFtoFile, 256), FLAG_ROW(bFtoPay, 258), FLAG_ROW(bNegFlat, 260), FLAG_ROW(bNegTime, 262),
        FLAG_ROW(bSUP, 264), FLAG_ROW(bOtherPen, 266), FLAG_ROW(bAccRel, 268), FLAG_ROW(bOVal, 270),
        FLAG_ROW(b6651d1, 272), FLAG_ROW(bFraudFlat, 274), FLAG_ROW(bFraudTime, 276), FLAG_ROW(bCorpUPRate, 278),
        DATE_ROW(dtCorpUPRateStart, 280), FLAG_ROW(bCorpOPRate, 288), DATE_ROW(dtCorpOPRateStart, 290),
        DATE_ROW(dtExtended, 298), OffsetRow{"nStopDays", 306, [](Case& c) { c.init.nStopDays = 30; }, I16(30)},
        DATE_ROW(dtFtoFileAssess, 308), DATE_ROW(dtFiled, 316), DATE_ROW(dtFtoPayAssess, 324),
        MONEY_ROW(cAmtOnReturn, 332), DATE_ROW(dtNegFlatAssess, 340), MONEY_ROW(cNegFlatAmt, 348),
        MONEY_ROW(cNegTimeAmt, 356), DATE_ROW(dtNegTimeAssess, 364), MONEY_ROW(cSUPAmt, 372),
        OffsetRow{"fSUPRate", 380, [](Case& c) { c.init.fSUPRate = 10.0f; }, F32(10.0f)},
        DATE_ROW(dtAssessSUP, 384), MONEY_ROW(cAccRelAmt, 392),
        OffsetRow{"fAccRelRate", 400, [](Case& c) { c.init.fAccRelRate = 0.4f; }, F32(0.4f)},
        MONEY_ROW(cOValAmt, 404), DATE_ROW(dtOValAssess, 412),
        OffsetRow{"fOValRate", 420, [](Case& c) { c.init.fOValRate = 30.0f; }, F32(30.0f)},
        DATE_ROW(dt6651d1Start, 424), MONEY_ROW(cFraudFlatAmt, 432), DATE_ROW(dtFraudFlatAssess, 440),
        MONEY_ROW(cFraudTimeAmt, 448), DATE_ROW(dtFraudTimeAssess, 456), DATE_ROW(dtIntSuspend, 464),
        DATE_ROW(dtRestart, 472), FLAG_ROW(bCorporate, 482),
        OffsetRow{"sTaxAuth", 484, [](Case& c) { c.init.sTaxAuth = "CAP"; }, Txt("CAP ")}),
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
    const rw::CaseReadResult r = rw::DecodeCase(file);
    ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
    EXPECT_EQ(r.kase.init.nReserved, 0);
}

// ---- The three layouts -----------------------------------------------------------------

struct LayoutRow {
    const char* name;
    std::string tag;  // all 20 bytes
    HandLayout layout;
};

class Layouts : public testing::TestWithParam<LayoutRow> {};

TEST_P(Layouts, AreChosenByTheWholeTagAndReadFieldForField)
{
    const LayoutRow& row = GetParam();
    ASSERT_EQ(row.tag.size(), 20u);
    const rwtest::HandCounts counts{2, 1, 2};
    const std::vector<char> file = rwtest::HandCaseFile(row.tag, row.layout, 3, counts);
    const std::size_t record = row.layout == HandLayout::L482 ? 482 : row.layout == HandLayout::L484 ? 484 : 488;
    ASSERT_EQ(file.size(), 26 + record + 2 * 57 + 56 + 2 * 42);
    const rw::CaseReadResult r = rw::DecodeCase(file);
    ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok) << r.detail;
    rwtest::ExpectInitMatches(r.kase.init, row.layout, 3, counts);
    rwtest::ExpectPaymentMatches(r.kase.pmts[0], 3);
    rwtest::ExpectPaymentMatches(r.kase.pmts[1], 4);
    rwtest::ExpectChargeMatches(r.kase.charges[0], 3);
    rwtest::ExpectDepositMatches(r.kase.deposits[0], 3);
    rwtest::ExpectDepositMatches(r.kase.deposits[1], 4);
    EXPECT_TRUE(r.kase.countsConsistent());
}

std::string Tag(std::string text, char pad = ' ')
{
    text.resize(20, pad);
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    CaseFile, Layouts,
    testing::Values(LayoutRow{"Year1999", Tag("Qrat1999Q4.10"), HandLayout::L482},
                    LayoutRow{"JustBelow2000Q220", Tag("Qrat2000Q2.19"), HandLayout::L482},
                    LayoutRow{"ShortTagWithNuls", Tag("Qrat2000Q2.2", '\0'), HandLayout::L482},
                    LayoutRow{"AllNuls", Tag("", '\0'), HandLayout::L482},
                    // The whole field is compared: the tag followed by blanks is not below the tag.
                    LayoutRow{"Exactly2000Q220", Tag("Qrat2000Q2.20"), HandLayout::L484},
                    LayoutRow{"Year2005", Tag("Qrat2005Q1.00"), HandLayout::L484},
                    LayoutRow{"PrefixOf2010Q311", Tag("Qrat2010Q3.1"), HandLayout::L484},
                    LayoutRow{"JustBelow2010Q311", Tag("Qrat2010Q3.10"), HandLayout::L484},
                    LayoutRow{"Exactly2010Q311", Tag("Qrat2010Q3.11"), HandLayout::L488},
                    LayoutRow{"Exactly2010Q311WithNuls", Tag("Qrat2010Q3.11", '\0'), HandLayout::L488},
                    LayoutRow{"ThisRelease", Tag("Qrat2018Q1.10"), HandLayout::L488},
                    LayoutRow{"LowerCaseSortsAbove", Tag("qrat1990"), HandLayout::L488}),
    [](const testing::TestParamInfo<LayoutRow>& p) { return std::string(p.param.name); });

// ---- Texts -------------------------------------------------------------------------------

TEST(CaseFile, NamesOfFiftyTwoCharactersRoundTripAndLongerOnesAreCut)
{
    const std::string n52 = "Fifty-two characters exactly, for the taxpayer name!";
    ASSERT_EQ(n52.size(), 52u);
    struct Row {
        std::string assigned;
        std::string stored;
    };
    for (const Row& row : {Row{n52, n52}, Row{n52 + "12345678", n52},
                           Row{"Short", "Short" + std::string(47, ' ')}}) {
        Case c = Cleared();
        c.init.sName = row.assigned;
        const std::vector<char> img = rw::EncodeCase(c);
        EXPECT_EQ(std::string(img.data() + R, 52), row.stored);
        EXPECT_EQ(rw::DecodeCase(img).kase.init.sName.str(), row.stored);
    }
}

TEST(CaseFile, EveryLatin1ByteReadsBackAsWritten)
{
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    Case c = Cleared();
    c.init.sName = all.substr(0, 52);
    c.init.s2ndLine = all.substr(52, 52);
    c.init.tlStart.sSortCode = all.substr(104, 12);
    c.init.tlStart.sDesc = all.substr(116, 16);
    c.init.tlStop.sSortCode = all.substr(132, 12);
    c.init.tlStop.sDesc = all.substr(144, 16);
    c.init.sTaxAuth = all.substr(160, 4);
    c.pmts.assign(6, rw::PaymentRec{});
    c.init.nPmts = 6;
    for (std::size_t i = 0; i < 6; ++i)
        c.pmts[i].sDesc = all.substr(164 + 16 * i, 16);  // through byte 255
    const std::vector<char> img = rw::EncodeCase(c);
    EXPECT_EQ(std::string(img.data() + R, 104), all.substr(0, 104));
    EXPECT_EQ(std::string(img.data() + 514, 16), all.substr(164, 16));
    EXPECT_EQ(std::string(img.data() + 514 + 5 * 57, 16), all.substr(244, 12) + std::string(4, ' '));
    const rw::CaseReadResult r = rw::DecodeCase(img);
    ASSERT_EQ(r.status, rw::CaseReadResult::Status::Ok);
    EXPECT_EQ(r.kase, c);
}

// ---- Reading files, with the messages ---------------------------------------------------------

TEST(CaseFile, ReadCaseOfAMissingFileTellsTheUserAndKeepsTheCase)
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

TEST(CaseFile, ReadCaseReplacesTheCaseFromAGoodFile)
{
    rwtest::TempDir dir;
    rwtest::RecordingMessages msgs;
    const std::vector<char> file = rwtest::HandCaseFile(Tag("Qrat2001Q1.00"), HandLayout::L484, 9, {1, 0, 1});
    WriteFile(dir / "GOOD.INT", file);
    Case c = Cleared();
    EXPECT_EQ(rw::ReadCaseReporting((dir / "GOOD.INT").string(), c, msgs), rw::CaseReadResult::Status::Ok);
    rwtest::ExpectInitMatches(c.init, HandLayout::L484, 9, {1, 0, 1});
    EXPECT_TRUE(msgs.shown.empty());
}

std::vector<char> AGoodFile()
{
    std::vector<char> f = rwtest::HandCaseFile(kCurrentTag, HandLayout::L488, 1, {2, 2, 2});
    f[R + 480] = f[R + 481] = 0;
    return f;
}

TEST(CaseFile, TruncatedFilesOfEveryLengthNeverTouchTheCase)
{
    rwtest::TempDir dir;
    const std::vector<char> good = AGoodFile();
    const std::string path = (dir / "CUT.INT").string();
    Case c = Cleared();
    c.init.sName = "Untouched";
    const std::vector<char> before = rw::EncodeCase(c);
    for (std::size_t len = 0; len < good.size(); ++len) {
        const std::vector<char> cut(good.begin(), good.begin() + static_cast<long>(len));
        ASSERT_EQ(rw::DecodeCase(cut).status, len < 6 ? rw::CaseReadResult::Status::BadMarker
                                                       : rw::CaseReadResult::Status::Damaged) << len;
        // Through a file, at the edges of the parts and at every 16th length between.
        const bool edge = len < 8 || (len >= 24 && len <= 28) || (len >= 512 && len <= 516) || len + 2 >= good.size();
        if (!edge && len % 16 != 0)
            continue;
        WriteFile(path, cut);
        rwtest::RecordingMessages msgs;
        const rw::CaseReadResult::Status s = rw::ReadCaseReporting(path, c, msgs);
        ASSERT_EQ(s, len < 6 ? rw::CaseReadResult::Status::BadMarker : rw::CaseReadResult::Status::Damaged) << len;
        ASSERT_EQ(rw::EncodeCase(c), before) << len;
        ASSERT_EQ(msgs.shown.size(), 1u);
        if (len >= 6) {
            EXPECT_EQ(msgs.shown[0].text, "Retrieve (Open) Error: Input past end of file") << len;
            EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Critical);
        }
    }
    // The whole file, and the file with bytes after its last record, read.
    WriteFile(path, good);
    rwtest::RecordingMessages msgs;
    EXPECT_TRUE(rw::ReadCase(path, c, msgs));
    std::vector<char> longer = good;
    longer.push_back('x');
    EXPECT_EQ(rw::DecodeCase(longer).status, rw::CaseReadResult::Status::Ok);
}

TEST(CaseFile, WrongMarkersAreRefusedWithAMessage)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "OLD.INT").string();
    for (const std::string& marker : {std::string("NOTVB2"), std::string("notvb3"), std::string("VB3NOT"), std::string("NOTVB\0", 6)}) {
        std::vector<char> file = AGoodFile();
        std::copy(marker.begin(), marker.end(), file.begin());
        WriteFile(path, file);
        rwtest::RecordingMessages msgs;
        Case c = Cleared();
        EXPECT_EQ(rw::ReadCaseReporting(path, c, msgs), rw::CaseReadResult::Status::BadMarker);
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
                           Row{"largest deposits", 126, 32767}, Row{"payments beyond the file", 122, 3},
                           Row{"charges beyond the file", 124, 3000}}) {
        SCOPED_TRACE(row.name);
        std::vector<char> file = AGoodFile();
        const std::vector<char> v = HandBytes().i16(row.value).bytes;
        std::copy(v.begin(), v.end(), file.begin() + static_cast<long>(R + row.at));
        EXPECT_EQ(rw::DecodeCase(file).status, rw::CaseReadResult::Status::Damaged);
    }
}

// ---- Writing ----------------------------------------------------------------------------

TEST(CaseFile, WriteCaseWritesTheImageAndFolderOfSplitsAtTheLastSeparator)
{
    rwtest::TempDir dir;
    Case c = Cleared();
    c.init.sName = "Written";
    const std::string path = (dir / "W.INT").string();
    rw::WriteCase(path, c);
    EXPECT_EQ(ReadFile(path), rw::EncodeCase(c));
    EXPECT_FALSE(std::filesystem::exists(path + ".tmp~"));
    EXPECT_EQ(rw::FolderOf("/home/pat/cases/A.INT"), "/home/pat/cases");
    EXPECT_EQ(rw::FolderOf("C:\\Data\\A.INT"), "C:\\Data");
    EXPECT_EQ(rw::FolderOf("A.INT"), "");
    EXPECT_EQ(rw::FolderOf("/A.INT"), "");
}

}  // namespace
