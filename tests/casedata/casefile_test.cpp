// Case files against images built byte by byte (handcase.h): every field in its place, the three
// layouts chosen by the whole version tag and converted on reading, damaged files refused without
// touching the case in memory; the safe save: a write failing at any step is a fault named
// "WriteCase" and leaves the previous file as it was.

#include "base/binio.h"
#include "casedata/casefile.h"

#include "handcase.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <iterator>
#include <thread>
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
    for (std::size_t at :
         {104, 160, 224, 280, 290, 298, 308, 316, 324, 340, 364, 384, 412, 424, 440, 456, 464, 472})
        Put(f, R + at, HandBytes().f64(-32767.0).bytes);
    Put(f, R + 400, HandBytes().f32(0.2f).bytes);
    return f;
}

// ---- Every field in its place ----------------------------------------------------------

// The case HandCaseFile(..., L488, 5, {1, 1, 1}) holds, each field named.
Case HandNamedCase()
{
    const auto T = [](int k, std::size_t n) { return rwtest::HandText(k, 5, n); };
    const auto D = [](int k) { return Date(rwtest::HandDate(k, 5)); };
    const auto I = [](int k) { return rwtest::HandInt(k, 5); };
    const auto M = [](int k) { return Money::fromRaw(rwtest::HandMoney(k, 5)); };
    const auto F = [](int k) { return rwtest::HandSingle(k, 5); };
    Case c;
    rw::InitInputs& in = c.init;
    in.sName = T(1, 52);
    in.s2ndLine = T(2, 52);
    in.dtDue = D(3);
    std::tie(in.bPayroll, in.bAutoArrange, in.bOverpayment, in.bTaxMotivated, in.bAnyPenalties)
        = std::tuple(I(4), I(5), I(6), I(7), I(8));
    in.nPmts = in.nCharges = in.nDeposits = 1;
    for (auto [p, k] : {std::pair{&in.tlStart, 100}, std::pair{&in.tlStop, 200}}) {
        p->sSortCode = T(k + 1, 12);
        p->sDesc = T(k + 2, 16);
        p->sCode = T(k + 3, 4);
        std::tie(p->dtDate, p->cTax, p->cPen, p->cInt)
            = std::tuple(D(k + 4), M(k + 5), M(k + 6), M(k + 7));
    }
    std::tie(in.bFtoFile, in.bFtoPay, in.bNegFlat, in.bNegTime, in.bSUP, in.bOtherPen, in.bAccRel,
             in.bOVal, in.b6651d1, in.bFraudFlat, in.bFraudTime, in.bCorpUPRate)
        = std::tuple(I(14), I(15), I(16), I(17), I(18), I(19), I(20), I(21), I(22), I(23), I(24),
                     I(25));
    std::tie(in.dtCorpUPRateStart, in.bCorpOPRate, in.dtCorpOPRateStart, in.dtExtended,
             in.nStopDays, in.dtFtoFileAssess, in.dtFiled, in.dtFtoPayAssess, in.cAmtOnReturn,
             in.dtNegFlatAssess, in.cNegFlatAmt)
        = std::tuple(D(26), I(27), D(28), D(29), I(30), D(31), D(32), D(33), M(34), D(35), M(36));
    std::tie(in.cNegTimeAmt, in.dtNegTimeAssess, in.cSUPAmt, in.fSUPRate, in.dtAssessSUP,
             in.cAccRelAmt, in.fAccRelRate, in.cOValAmt, in.dtOValAssess, in.fOValRate,
             in.dt6651d1Start, in.cFraudFlatAmt, in.dtFraudFlatAssess)
        = std::tuple(M(37), D(38), M(39), F(40), D(41), M(42), F(43), M(44), D(45), F(46), D(47),
                     M(48), D(49));
    std::tie(in.cFraudTimeAmt, in.dtFraudTimeAssess, in.dtIntSuspend, in.dtRestart, in.bCorporate)
        = std::tuple(M(50), D(51), D(52), D(53), I(55));  // the reserved field (54) reads as 0
    in.sTaxAuth = T(56, 4);
    rw::PaymentRec& p = c.pmts[0];
    p.sDesc = T(301, 16);
    p.sMethod = "I";
    std::tie(p.dtPmt, p.cAmount, p.cToTax, p.cToInt, p.cToPen)
        = std::tuple(D(302), M(303), M(304), M(305), M(306));
    rw::ChargeRec& ch = c.charges[0];
    ch.sDesc = T(401, 16);
    std::tie(ch.dtLiab, ch.dtIntStart, ch.cTotal, ch.cToTax, ch.cToPen)
        = std::tuple(D(402), D(403), M(404), M(405), M(406));
    c.deposits[0] = {D(501), D(502), M(503), I(504), D(505), D(506)};
    return c;
}

TEST(CaseFile, EveryFieldIsReadFromItsPlaceAndWrittenBackThere)
{
    const std::vector<char> file
        = rwtest::HandCaseFile("Qrat2018Q1.10", HandLayout::L488, 5, {1, 1, 1});
    const rw::CaseReadResult r = rw::DecodeCase(file);
    ASSERT_EQ(r.status, Status::Ok);
    EXPECT_EQ(r.kase, HandNamedCase());
    std::vector<char> longer = file;  // a byte after the last record is ignored
    longer.push_back('x');
    EXPECT_EQ(rw::DecodeCase(longer).kase, HandNamedCase());
    Case reserved = HandNamedCase();
    reserved.init.nReserved = 77;  // written as 0
    EXPECT_EQ(rw::EncodeCase(reserved), rwtest::HandAsCurrent(file, HandLayout::L488));
}

TEST(CaseFile, AClearedCaseIsTheHandBuiltImage)
{
    EXPECT_EQ(rw::EncodeCase(Cleared()), HandClearedFile());
    Case used
        = HandNamedCase();  // a case in use is cleared alike, each list back to one empty entry
    rw::ClearInputs(used);
    EXPECT_EQ(used, Cleared());
}

// ---- The three layouts -------------------------------------------------------------

TEST(CaseFile, LayoutsAreChosenByTheWholeTagAndWrittenBackInTheCurrentOne)
{
    for (const auto& [tag, layout] :
         {std::pair{Tag("Qrat1999Q4.10"), HandLayout::L482},
          {Tag("Qrat2000Q2.19"), HandLayout::L482},
          {Tag("Qrat2000Q2.2", '\0'), HandLayout::L482},
          {Tag("", '\0'), HandLayout::L482},
          // The whole field is compared: the tag followed by blanks is not below the tag.
          {Tag("Qrat2000Q2.20"), HandLayout::L484},
          {Tag("Qrat2010Q3.1"), HandLayout::L484},
          {Tag("Qrat2010Q3.10"), HandLayout::L484},
          {Tag("Qrat2010Q3.11"), HandLayout::L488},
          {Tag("Qrat2010Q3.11", '\0'), HandLayout::L488},
          {Tag("Qrat2018Q1.10"), HandLayout::L488},
          {Tag("qrat1990"), HandLayout::L488}}) {  // lower case sorts above
        SCOPED_TRACE(tag);
        const std::vector<char> file = rwtest::HandCaseFile(tag, layout, 3, {2, 1, 2});
        const rw::CaseReadResult r = rw::DecodeCase(file);
        ASSERT_EQ(r.status, Status::Ok) << r.detail;
        EXPECT_TRUE(r.kase.countsConsistent());
        EXPECT_EQ(rw::EncodeCase(r.kase), rwtest::HandAsCurrent(file, layout));
    }
}

// The two older layouts hold no accuracy-related rate: the converters give
// the record they read into the normal 20 %, whatever it held before.
TEST(CaseFile, OlderLayoutsGetTheNormalAccuracyRelatedRate)
{
    for (const auto& [layout, convert] : {std::pair{HandLayout::L482, &rw::ConvTo2000Q22},
                                          std::pair{HandLayout::L484, &rw::ConvTo2010Q311}}) {
        const std::vector<char> file = rwtest::HandCaseFile("Qrat1999Q4.10", layout, 3, {1, 1, 1});
        const std::span<const char> records = std::span<const char>(file).subspan(6 + 20);
        rw::BinReader in(records, "ReadCase");  // after the marker and the tag
        rw::InitInputs init;
        init.fAccRelRate = 0.4f;
        convert(in, init);
        EXPECT_EQ(init.fAccRelRate, 0.2f);
    }
}

// ---- Reading damaged files, with the messages ------------------------------------------------

TEST(CaseFile, ADamagedOrMissingFileIsToldAndTheCaseKept)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "BAD.INT").string();
    const std::string pastEnd = "Retrieve (Open) Error: Input past end of file",
                      marker = "Problem With Case File", outOfRange = "Retrieve (Open) Error: ",
                      calendar = "not a date from 01/01/1800 to 12/31/2199: day ",
                      tooLarge
                      = outOfRange + "the file is larger than any case file (5111487 bytes)";
    const auto good = rwtest::HandAsCurrent(
        rwtest::HandCaseFile("", HandLayout::L488, 1, {2, 2, 2}), HandLayout::L488);
    struct Row {
        const char* name;
        std::size_t at;
        std::vector<char> bytes;  // put into a good file of 514 + 2 x 57 + 2 x 56 + 2 x 42 bytes
        std::size_t length;  // the file cut to this length; 0 for no file at all
        Status status;
        std::string title;  // or the text
    };
    const auto i16 = [](std::int16_t v) { return HandBytes().i16(v).bytes; };
    for (const Row& row :
         {Row{"no file", 0, {}, 0, Status::NotFound, "File not found"},
          Row{"older marker", 0, {'N', 'O', 'T', 'V', 'B', '2'}, 824, Status::BadMarker, marker},
          Row{"marker cut short", 0, {}, 5, Status::BadMarker, marker},
          Row{"only the marker", 0, {}, 6, Status::Damaged, pastEnd},
          Row{"record cut by a byte", 0, {}, 513, Status::Damaged, pastEnd},
          Row{"last deposit cut by a byte", 0, {}, 823, Status::Damaged, pastEnd},
          Row{"negative payments", R + 122, i16(-1), 824, Status::Damaged, ""},
          Row{"largest deposits", R + 126, i16(32767), 824, Status::Damaged, ""},
          Row{"one payment beyond the file", R + 122, i16(3), 824, Status::Damaged, ""},
          // Day 2,958,466 is 1/1/10000, one day after the desktop calendar's last.
          Row{"due in the year 10000", R + 104, HandBytes().f64(2958466.0).bytes, 824,
              Status::Damaged, outOfRange + "init.dtDue: " + calendar + "2958466"},
          Row{"a payment a billion days before 1900", 514 + 57 + 16, HandBytes().f64(-1e9).bytes,
              824, Status::Damaged, outOfRange + "payments[1].dtPmt: " + calendar + "-1e+09"},
          // 26 + 488 + 32,767 x (57 + 56 + 42) + 88 + 2 x 1,000 x 16 bytes is the largest case
          // file.
          Row{"padded to a gigabyte", 0, {}, std::size_t{1} << 30, Status::Damaged, tooLarge}}) {
        SCOPED_TRACE(row.name);
        std::vector<char> file = good;
        Put(file, row.at, row.bytes);
        file.resize(std::min(row.length, file.size()));
        std::filesystem::remove(path);
        if (row.length > 0)
            rwtest::WriteBytes(path, file);
        if (row.length > file.size())
            std::filesystem::resize_file(path, row.length);  // a hole: no disk space taken
        rwtest::RecordingMessages msgs;
        Case c = Cleared();
        c.init.sName = "Kept";
        const Case before = c;
        EXPECT_EQ(rw::ReadCaseReporting(path, c, msgs), row.status);
        EXPECT_EQ(c, before);
        ASSERT_EQ(msgs.shown.size(), 1u);
        EXPECT_TRUE(row.title.empty() || msgs.shown[0].title == row.title
                    || msgs.shown[0].text == row.title)
            << msgs.shown[0].title << ": " << msgs.shown[0].text;
        EXPECT_TRUE(row.status == Status::BadMarker || msgs.shown[0].icon == rw::MsgIcon::Critical);
    }
    rwtest::RecordingMessages msgs;
    Case c;
    EXPECT_FALSE(rw::ReadCase(path + ".none", c, msgs));
    EXPECT_EQ(msgs.shown.at(0).text,
              "File: " + path
                  + ".none does not exist.Please verify the file is in the correct directory.");
}

// ---- The estimated tax block -----------------------------------------------------------

// A case's estimated tax inputs, and below them their block of the file byte by byte (money
// in ten-thousandths of a dollar).
rw::EstTaxCase HandEstTax()
{
    rw::EstTaxCase e;
    e.on = true;
    rw::EstTaxInput& in = e.input;
    in.filer = rw::EstTaxFiler::Corporation;
    std::tie(in.taxYear, in.fiscalYearEndMonth, in.currentTax, in.priorTax)
        = std::tuple(2017, 6, Money::fromRaw(250000000), Money::fromRaw(180000000));
    std::tie(in.priorYearUsable, in.highIncome, in.largeCorporation)
        = std::tuple(true, false, true);
    in.withholding = Money::fromRaw(10000);
    in.installments = {Money::fromRaw(1), Money::fromRaw(2), Money::fromRaw(3), Money::fromRaw(4)};
    e.noticeDate = Date(43000.0);
    in.withholdingByDate = {{Date(42950.0), Money::fromRaw(10000)}};
    in.estimatedPayments
        = {{Date(42900.0), Money::fromRaw(50000000)}, {Date(42990.0), Money::fromRaw(70000000)}};
    return e;
}
std::vector<char> HandEstTaxBlock()
{
    HandBytes b;
    b.raw("ESTX").i16(-1).i16(1).i16(2017).i16(6).i64(250000000).i64(180000000);  // 0-27
    b.i16(-1).i16(0).i16(-1).i64(10000).i16(-1).i64(1).i64(2).i64(3).i64(4);  // 28-75
    b.f64(43000.0).i16(1).f64(42950.0).i64(10000);  // 76-101
    b.i16(2).f64(42900.0).i64(50000000).f64(42990.0).i64(70000000);  // 102-135
    return b.bytes;
}
// The file of HandNamedCase with HandEstTax: the later tag, its one payment counted as -2 (at
// 26 + 122), and the block after the deposits.
std::vector<char> HandEstTaxFile()
{
    std::vector<char> f = rwtest::HandAsCurrent(
        rwtest::HandCaseFile("Qrat2018Q1.10", HandLayout::L488, 5, {1, 1, 1}), HandLayout::L488);
    Put(f, 6, HandBytes().text("Qrat2018Q1.11", 20).bytes);
    Put(f, 148, HandBytes().i16(-2).bytes);
    return HandBytes().append(f).append(HandEstTaxBlock()).bytes;
}

TEST(CaseFile, EstimatedTaxInputsTravelInTheirBlockUnderTheLaterTag)
{
    Case c = HandNamedCase();
    c.estTax = HandEstTax();
    EXPECT_EQ(rw::EncodeCase(c), HandEstTaxFile());
    const rw::CaseReadResult r = rw::DecodeCase(HandEstTaxFile());
    ASSERT_EQ(r.status, Status::Ok) << r.detail;
    EXPECT_EQ(r.kase, c);
    c.estTax.on = false;  // filled in but not asked for: still kept
    EXPECT_EQ(rw::DecodeCase(rw::EncodeCase(c)).kase, c);
    c.estTax = {};  // neither: the older file, byte for byte
    EXPECT_EQ(
        rw::EncodeCase(c),
        rwtest::HandAsCurrent(rwtest::HandCaseFile("Qrat2018Q1.10", HandLayout::L488, 5, {1, 1, 1}),
                              HandLayout::L488));

    // A version from before the block reads the later tag as it reads its own (here: the
    // file under the older tag) and refuses the negative count as it refuses any damaged file.
    std::vector<char> asRead = HandEstTaxFile();
    Put(asRead, 6, HandBytes().text("Qrat2018Q1.10", 20).bytes);
    EXPECT_EQ(rw::DecodeCase(asRead).status, Status::Damaged);
}

TEST(CaseFile, ADamagedEstimatedTaxBlockOrALaterTagIsRefused)
{
    const std::size_t B = HandEstTaxFile().size() - HandEstTaxBlock().size();
    const auto i16 = [](std::int16_t v) { return HandBytes().i16(v).bytes; };
    const std::string pastEnd = "Input past end of file";
    for (const auto& [name, at, bytes, cut, detail] : std::vector<
             std::tuple<const char*, std::size_t, std::vector<char>, std::size_t, std::string>>{
             {"marker",
              B,
              {'E', 'S', 'T', 'Y'},
              0,
              "estTax: the estimated tax penalty does not begin with \"ESTX\""},
             {"flag 1", B + 4, i16(1), 0, "estTax.on: 1 is not a flag (-1 or 0)"},
             {"filer 2", B + 6, i16(2), 0, "estTax.filer: 2 is not from 0 to 1"},
             {"year 1799", B + 8, i16(1799), 0,
              "estTax.taxYear: 1799 is neither 0 nor a year from 1800 to 2199"},
             {"month 13", B + 10, i16(13), 0, "estTax.fiscalYearEndMonth: 13 is not from 1 to 12"},
             {"amounts without installments", B + 42, i16(0), 0,
              "estTax.installments: amounts given for installments that are not"},
             {"notice a billion days before 1900", B + 76, HandBytes().f64(-1e9).bytes, 0,
              "estTax.noticeDate: not a date from 01/01/1800 to 12/31/2199: day -1e+09"},
             {"1001 payments", B + 102, i16(1001), 0,
              "estTax.estimatedPayments: 1001 is not from 0 to 1000"},
             {"a payment beyond the file", B + 102, i16(3), 0, pastEnd},
             {"block cut by a byte", 0, {}, 1, pastEnd},
             {"a byte after the block",
              B + 136,
              {'x'},
              0,
              "estTax: bytes left after the estimated tax penalty, where the file should end: 1"},
             {"a later tag", 6, HandBytes().text("Qrat2018Q1.12", 20).bytes, 0,
              "the file was written by a later version of the program (Qrat2018Q1.12); this "
              "version reads case files up to Qrat2018Q1.11"}}) {
        SCOPED_TRACE(name);
        std::vector<char> file = HandEstTaxFile();
        file.resize(std::max(file.size(), at + bytes.size()) - cut);
        Put(file, at, bytes);
        const rw::CaseReadResult r = rw::DecodeCase(file);
        EXPECT_EQ(r.status, Status::Damaged);
        EXPECT_EQ(r.detail, detail);
    }
}

// ---- Writing ------------------------------------------------------------------------------

enum class Step { Create, Write, WriteNothing, Flush, Close, Rename, PlantLink };

// The real calls, with one step made to fail; a write fails once `allow`
// bytes are written (after a short write). PlantLink puts a link to VICTIM
// at the first temporary name before it is created, as an attacker might.
struct FailingCalls : rw::FileSystemCalls {
    Step step = Step::Create;
    std::size_t allow = 0;
    bool planted = false;
    static int Fail(int err) { return errno = err, -1; }
    int create(const char* p, unsigned mode) override
    {
        if (step == Step::PlantLink && !std::exchange(planted, true))
            std::filesystem::create_symlink(std::filesystem::path(p).parent_path() / "VICTIM", p);
        return step == Step::Create ? Fail(EACCES) : FileSystemCalls::create(p, mode);
    }
    long write(int fd, const char* data, std::size_t n) override
    {
        if (step == Step::WriteNothing || (step == Step::Write && allow == 0))
            return step == Step::WriteNothing ? 0 : Fail(ENOSPC);
        const long r
            = FileSystemCalls::write(fd, data, step == Step::Write ? std::min(n, allow) : n);
        allow -= step == Step::Write && r > 0 ? static_cast<std::size_t>(r) : 0;
        return r;
    }
    int flush(int fd) override
    {
        return step == Step::Flush ? Fail(EIO) : FileSystemCalls::flush(fd);
    }
    int close(int fd) override
    {
        return FileSystemCalls::close(fd) != 0 || step == Step::Close ? Fail(EIO) : 0;
    }
    int rename(const char* a, const char* b) override
    {
        return step == Step::Rename ? Fail(EXDEV) : FileSystemCalls::rename(a, b);
    }
};

// The fault a save ends in, as "number procedure: detail"; "none" when it succeeded.
std::string FaultOf(const std::function<void()>& save)
{
    try {
        save();
        return "none";
    } catch (const rw::Fault& f) {
        return std::to_string(f.number()) + " " + f.procedure() + ": " + f.detail();
    }
}

// The entries of a folder: no temporary file is ever left behind.
const auto Entries
    = [](const auto& dir) { return std::distance(std::filesystem::directory_iterator(dir), {}); };

TEST(SafeSave, AFailedWriteKeepsThePreviousFile)
{
    for (const auto& [step, allowBytes, fault] :
         {std::tuple{Step::Create, 0, "70 WriteCase: cannot write CASE.INT: Permission denied"},
          {Step::Write, 0, "57 WriteCase: cannot write CASE.INT: No space left on device"},
          {Step::Write, 4999, "57 WriteCase: cannot write CASE.INT: No space left on device"},
          {Step::WriteNothing, 0, "57 WriteCase: cannot write CASE.INT: Input/output error"},
          {Step::Flush, 0, "57 WriteCase: cannot write CASE.INT: Input/output error"},
          {Step::Close, 0, "57 WriteCase: cannot write CASE.INT: Input/output error"},
          {Step::Rename, 0, "75 WriteCase: cannot replace CASE.INT: Invalid cross-device link"}}) {
        SCOPED_TRACE(static_cast<int>(step));
        rwtest::TempDir dir;
        const std::string path = (dir / "CASE.INT").string();
        rwtest::WriteBytes(path, {'o', 'l', 'd'});
        FailingCalls calls;
        calls.step = step;
        calls.allow = static_cast<std::size_t>(allowBytes);
        std::string said = FaultOf([&] {
            rw::WriteFileAtomically(path, std::vector<char>(5000, 'n'), "WriteCase", calls);
        });
        EXPECT_EQ(said.replace(said.find(path), path.size(), "CASE.INT"), fault);
        EXPECT_EQ(rwtest::ReadText(path), "old");
        EXPECT_EQ(Entries(dir.path()), 1);
    }
}

// What stands where the file is written (CASE.INT holding "old", mode 0640,
// first): the file, a folder, a link; the umask is 027.
TEST(SafeSave, WritesThroughLinksKeepsPermissionsAndRefusesWriteProtection)
{
    namespace fs = std::filesystem;
    using Setup = std::function<void(const fs::path&)>;
    const mode_t umaskBefore = ::umask(027);
    for (const auto& [name, setup, fault, file, mode] :
         std::vector<std::tuple<const char*, Setup, std::string, std::string, int>>{
             {"a new file", [](auto& d) { fs::remove(d / "CASE.INT"); }, "none", "CASE.INT", 0640},
             {"a private file", [](auto& d) { fs::permissions(d / "CASE.INT", fs::perms(0600)); },
              "none", "CASE.INT", 0600},
             {"write-protected", [](auto& d) { fs::permissions(d / "CASE.INT", fs::perms(0444)); },
              "70 WriteCase: DIR/CASE.INT is write-protected", "CASE.INT", 0444},
             {"a link: the file it names is written, the link stays",
              [](auto& d) {
                  fs::rename(d / "CASE.INT", d / "REAL.INT");
                  fs::permissions(d / "REAL.INT", fs::perms(0604));
                  fs::create_symlink("REAL.INT", d / "CASE.INT");
              },
              "none", "REAL.INT", 0604},
             {"a folder where the file should be",
              [](auto& d) { fs::remove(d / "CASE.INT"), fs::create_directory(d / "CASE.INT"); },
              "75 WriteCase: cannot write DIR/CASE.INT: Is a directory", "", 0}}) {
        SCOPED_TRACE(name);
        rwtest::TempDir dir;
        rwtest::WriteBytes(dir / "CASE.INT", {'o', 'l', 'd'});
        fs::permissions(dir / "CASE.INT", fs::perms(0640));
        setup(dir.path());
        std::string said = FaultOf([&] {
            rw::WriteFileAtomically((dir / "CASE.INT").string(), {'n', 'e', 'w'}, "WriteCase");
        });
        if (const auto at = said.find(dir.path().string()); at != std::string::npos)
            said.replace(at, dir.path().string().size(), "DIR");
        EXPECT_EQ(said, fault);
        EXPECT_TRUE(file.empty()
                    || (rwtest::ReadText(dir / file) == (said == "none" ? "new" : "old")
                        && fs::status(dir / file).permissions() == fs::perms(mode)));
        EXPECT_EQ(Entries(dir.path()), file == "REAL.INT" ? 2 : 1);
    }
    ::umask(umaskBefore);

    // A link planted at the name the temporary file was to have is never
    // followed: another name is taken, and the file the link names is untouched.
    rwtest::TempDir dir;
    rwtest::WriteBytes(dir / "VICTIM", {'v'});
    FailingCalls planting;
    planting.step = Step::PlantLink;
    rw::WriteFileAtomically((dir / "CASE.INT").string(), {'n'}, "WriteCase", planting);
    EXPECT_EQ(rwtest::ReadText(dir / "CASE.INT") + rwtest::ReadText(dir / "VICTIM"), "nv");
    // The folder of a case file, for the next file dialog.
    EXPECT_EQ(rw::FolderOf("/home/pat/A.INT") + " " + rw::FolderOf("C:\\Data\\A.INT"),
              "/home/pat C:\\Data");
    EXPECT_EQ(rw::FolderOf("A.INT") + rw::FolderOf("/A.INT"), "");
}

// Two saves of one file at the same moment, again and again: each is told it
// saved, and the file is always one of the two, whole.
TEST(SafeSave, TwoSavesAtOnceEachLeaveAWholeFile)
{
    rwtest::TempDir dir;
    const std::string path = (dir / "CASE.INT").string();
    const std::vector<char> a(100000, 'a'), b(70000, 'b');
    for (int round = 0; round < 50; ++round) {
        std::string saidB;
        std::thread other(
            [&] { saidB = FaultOf([&] { rw::WriteFileAtomically(path, b, "WriteCase"); }); });
        const std::string saidA = FaultOf([&] { rw::WriteFileAtomically(path, a, "WriteCase"); });
        other.join();
        const std::vector<char> now = rwtest::ReadBytes(path);
        ASSERT_TRUE(saidA + saidB == "nonenone" && (now == a || now == b))
            << round << saidA << saidB;
    }
    EXPECT_EQ(Entries(dir.path()), 1);
}

}  // namespace
