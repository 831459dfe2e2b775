#include "casedata/casefile.h"

#include <charconv>
#include <filesystem>

namespace rw {

namespace {

// Reads or writes each named field in file order: the name does not reach
// the file.
template<typename IO>
struct BinaryFields {
    IO& io;
    template<typename T>
    void text(const char*, T& t)
    {
        io(t);
    }
    template<typename T>
    void date(const char*, T& d)
    {
        io(d);
    }
    template<typename T>
    void money(const char*, T& m)
    {
        io(m);
    }
    template<typename T>
    void rate(const char*, T& f)
    {
        io(f);
    }
    template<typename T>
    void flag(const char*, T& f)
    {
        io(f);
    }
    template<typename T>
    void integer(const char*, T& n)
    {
        io(n);
    }
    template<typename P>
    void point(const char*, P& p)
    {
        VisitPointFields(*this, p);
    }
};

template<typename IO, typename R, typename Visit>
void binary(IO& io, R& record, Visit visit)
{
    BinaryFields<IO> f{io};
    visit(f, record);
}

void readInit(BinReader& in, InitInputs& init, InitLayout layout)
{
    binary(in, init, [layout](auto& f, auto& r) { VisitInitFields(f, r, layout); });
    init.nReserved = 0;  // reserved: ignored when read
}

template<typename T, typename Visit>
void readList(BinReader& in, std::vector<T>& list, std::int16_t count, std::size_t recordSize,
              Visit visit)
{
    if (count <= 0) {
        list.assign(1, T{});
        return;
    }
    // Size the list only after the file has shown that it holds the records.
    if (in.remaining() / recordSize < static_cast<std::size_t>(count))
        ThrowFault(kErrPastEnd, "ReadCase", "the file ends before its last record");
    list.assign(static_cast<std::size_t>(count), T{});
    for (T& item : list)
        visit(in, item);
}

// Looks at every date of a record, naming the first one out of range.
struct DateRangeCheck {
    std::string prefix;  // "payments[1]."
    std::string& bad;
    template<typename T>
    void text(const char*, const T&)
    {
    }
    void date(const char* name, const Date& d)
    {
        if (!bad.empty() || IsReadableDate(d))
            return;
        char n[32];
        const auto end = std::to_chars(n, n + sizeof n, d.dayNumber()).ptr;
        bad = prefix + name + ": not a date " + ReadableDatesText() + ": day "
              + std::string(n, end);
    }
    template<typename T>
    void money(const char*, const T&)
    {
    }
    template<typename T>
    void rate(const char*, const T&)
    {
    }
    template<typename T>
    void flag(const char*, const T&)
    {
    }
    template<typename T>
    void integer(const char*, const T&)
    {
    }
    template<typename P>
    void point(const char* name, const P& p)
    {
        DateRangeCheck inner{prefix + name + ".", bad};
        VisitPointFields(inner, p);
    }
};

template<typename T, typename Visit>
void checkDates(std::span<const T> list, const char* name, std::string& bad, Visit visit)
{
    for (std::size_t i = 0; i < list.size() && bad.empty(); ++i) {
        DateRangeCheck check{std::string(name) + "[" + std::to_string(i) + "].", bad};
        visit(check, list[i]);
    }
}

constexpr std::string_view kEstTaxMarker = "ESTX";

void writeFlag(BinWriter& w, bool b)
{
    w(ToFlag(b));
}

void writeDatedAmounts(BinWriter& w, const std::vector<DatedAmount>& list, const char* name)
{
    if (list.size() > kMaxEstTaxEntries)
        ThrowFault(kErrOverflow, "WriteCase",
                   std::string("estTax.") + name + ": more than "
                       + std::to_string(kMaxEstTaxEntries) + " entries");
    w(static_cast<std::int16_t>(list.size()));
    for (const DatedAmount& a : list) {
        w(a.date);
        w(a.amount);
    }
}

void writeEstTax(BinWriter& w, const EstTaxCase& e)
{
    const EstTaxInput& in = e.input;
    const bool yearFits
        = in.taxYear == 0 || (in.taxYear >= kFirstReadableYear && in.taxYear <= kLastReadableYear);
    if (!yearFits || in.fiscalYearEndMonth < 1 || in.fiscalYearEndMonth > 12)
        ThrowFault(kErrOverflow, "WriteCase", "estTax: the tax year or its last month is not one");
    w.raw(kEstTaxMarker.data(), kEstTaxMarker.size());
    writeFlag(w, e.on);
    w(static_cast<std::int16_t>(in.filer == EstTaxFiler::Corporation ? 1 : 0));
    w(static_cast<std::int16_t>(in.taxYear));
    w(static_cast<std::int16_t>(in.fiscalYearEndMonth));
    w(in.currentTax);
    w(in.priorTax);
    writeFlag(w, in.priorYearUsable);
    writeFlag(w, in.highIncome);
    writeFlag(w, in.largeCorporation);
    w(in.withholding);
    writeFlag(w, in.installments.has_value());
    for (std::size_t i = 0; i < 4; ++i)
        w(in.installments ? (*in.installments)[i] : Money{});
    w(e.noticeDate);
    writeDatedAmounts(w, in.withholdingByDate, "withholdingByDate");
    writeDatedAmounts(w, in.estimatedPayments, "estimatedPayments");
}

// Reads the estimated tax block, which must end the file. Returns what is
// wrong with it, empty when nothing; a block cut short is a fault.
std::string readEstTax(BinReader& in, EstTaxCase& e)
{
    char marker[4];
    in.raw(marker, sizeof marker);
    if (std::string_view(marker, sizeof marker) != kEstTaxMarker)
        return "estTax: the estimated tax penalty does not begin with \"ESTX\"";
    std::string bad;
    const auto number = [&](const char* name, int low, int high) {
        std::int16_t v = 0;
        in(v);
        if (bad.empty() && (v < low || v > high))
            bad = std::string("estTax.") + name + ": " + std::to_string(v) + " is not from "
                  + std::to_string(low) + " to " + std::to_string(high);
        return static_cast<int>(v);
    };
    const auto flag = [&](const char* name) {
        std::int16_t v = 0;
        in(v);
        if (bad.empty() && v != kYes && v != kNo)
            bad = std::string("estTax.") + name + ": " + std::to_string(v)
                  + " is not a flag (-1 or 0)";
        return v == kYes;
    };
    const auto list = [&](const char* name, std::vector<DatedAmount>& out) {
        if (!bad.empty())
            return;  // the first problem is the one told
        const int n = number(name, 0, static_cast<int>(kMaxEstTaxEntries));
        if (!bad.empty())
            return;
        // Size the list only after the file has shown that it holds the entries.
        if (in.remaining() / kDatedAmountSize < static_cast<std::size_t>(n))
            ThrowFault(kErrPastEnd, "ReadCase", "the file ends before its last entry");
        out.assign(static_cast<std::size_t>(n), DatedAmount{});
        for (DatedAmount& a : out) {
            in(a.date);
            in(a.amount);
        }
    };
    EstTaxInput& t = e.input;
    e.on = flag("on");
    t.filer = number("filer", 0, 1) == 1 ? EstTaxFiler::Corporation : EstTaxFiler::Individual;
    t.taxYear = number("taxYear", 0, kLastReadableYear);
    if (bad.empty() && t.taxYear != 0 && t.taxYear < kFirstReadableYear)
        bad = "estTax.taxYear: " + std::to_string(t.taxYear) + " is neither 0 nor a year from "
              + std::to_string(kFirstReadableYear) + " to " + std::to_string(kLastReadableYear);
    t.fiscalYearEndMonth = number("fiscalYearEndMonth", 1, 12);
    in(t.currentTax);
    in(t.priorTax);
    t.priorYearUsable = flag("priorYearUsable");
    t.highIncome = flag("highIncome");
    t.largeCorporation = flag("largeCorporation");
    in(t.withholding);
    const bool installments = flag("installments");
    std::array<Money, 4> parts{};
    for (Money& m : parts)
        in(m);
    if (installments)
        t.installments = parts;
    else if (bad.empty() && parts != std::array<Money, 4>{})
        bad = "estTax.installments: amounts given for installments that are not";
    in(e.noticeDate);
    list("withholdingByDate", t.withholdingByDate);
    list("estimatedPayments", t.estimatedPayments);
    if (bad.empty() && in.remaining() > 0)
        bad = "estTax: bytes left after the estimated tax penalty, where the file should end: "
              + std::to_string(in.remaining());
    return bad;
}

// A tag the program cannot read: one of its own kind ("Qrat...") above the
// latest it writes.
bool isLaterTag(std::string_view tag20)
{
    const FixedText<20> latest(kCaseVersionTagEstTax);
    return tag20.starts_with("Qrat") && tag20 > latest.view();
}

std::string tooLargeText()
{
    return "the file is larger than any case file (" + std::to_string(kMaxCaseFileSize) + " bytes)";
}

}  // namespace

std::string DateOutOfRange(const Case& c)
{
    std::string bad;
    DateRangeCheck init{"init.", bad};
    VisitInitFields(init, c.init);
    checkDates(c.payments(), "payments", bad,
               [](auto& v, const auto& p) { VisitPaymentFields(v, p); });
    checkDates(c.otherCharges(), "charges", bad,
               [](auto& v, const auto& x) { VisitChargeFields(v, x); });
    checkDates(c.payrollDeposits(), "deposits", bad,
               [](auto& v, const auto& d) { VisitDepositFields(v, d); });
    DateRangeCheck estTax{"estTax.", bad};
    estTax.date("noticeDate", c.estTax.noticeDate);
    const auto dated = [](auto& v, const DatedAmount& a) { v.date("date", a.date); };
    checkDates(std::span<const DatedAmount>(c.estTax.input.withholdingByDate),
               "estTax.withholdingByDate", bad, dated);
    checkDates(std::span<const DatedAmount>(c.estTax.input.estimatedPayments),
               "estTax.estimatedPayments", bad, dated);
    return bad;
}

InitLayout LayoutForTag(std::string_view tag20)
{
    if (tag20 < std::string_view("Qrat2000Q2.20"))
        return InitLayout::Before2000Q22;
    if (tag20 < std::string_view("Qrat2010Q3.11"))
        return InitLayout::Before2010Q311;
    return InitLayout::Current;
}

std::vector<char> EncodeCase(const Case& c)
{
    const bool estTax = !c.estTax.isEmpty();
    BinWriter w;
    w.raw(kFileMarker.data(), kFileMarker.size());
    const FixedText<20> tag(estTax ? kCaseVersionTagEstTax : kCaseVersionTag);
    w(tag);
    const InitInputs init = [&] {
        InitInputs copy = c.init;
        copy.nReserved = 0;  // reserved: always written as 0
        if (estTax)  // negative: earlier versions refuse the file
            copy.nPmts = static_cast<std::int16_t>(-1 - copy.nPmts);
        return copy;
    }();
    binary(w, init, [](auto& f, auto& r) { VisitInitFields(f, r); });
    for (const PaymentRec& p : c.payments())
        binary(w, p, [](auto& f, auto& r) { VisitPaymentFields(f, r); });
    for (const ChargeRec& ch : c.otherCharges())
        binary(w, ch, [](auto& f, auto& r) { VisitChargeFields(f, r); });
    for (const DepositRec& d : c.payrollDeposits())
        binary(w, d, [](auto& f, auto& r) { VisitDepositFields(f, r); });
    if (estTax)
        writeEstTax(w, c.estTax);
    return std::move(w.bytes());
}

void WriteCase(const std::string& path, const Case& c)
{
    const std::vector<char> bytes = WithFaultName("WriteCase", [&] { return EncodeCase(c); });
    WriteFileAtomically(path, bytes, "WriteCase");
}

void ConvTo2000Q22(BinReader& in, InitInputs& init)
{
    InitInputs scratch = init;
    readInit(in, scratch, InitLayout::Before2000Q22);
    scratch.bAutoArrange = 0;
    scratch.fAccRelRate = kNormalAccRelRate;
    init = scratch;
}

void ConvTo2010Q311(BinReader& in, InitInputs& init)
{
    InitInputs scratch = init;
    scratch.fAccRelRate = kNormalAccRelRate;
    readInit(in, scratch, InitLayout::Before2010Q311);
    init = scratch;
}

CaseReadResult DecodeCase(const std::vector<char>& bytes)
{
    CaseReadResult r;
    if (bytes.size() < kFileMarker.size()
        || std::string_view(bytes.data(), kFileMarker.size()) != kFileMarker) {
        r.status = CaseReadResult::Status::BadMarker;
        return r;
    }
    if (bytes.size() > kMaxCaseFileSize) {
        r.status = CaseReadResult::Status::Damaged;
        r.detail = tooLargeText();
        return r;
    }
    try {
        BinReader in(bytes, "ReadCase");
        char marker[6];
        in.raw(marker, sizeof marker);
        FixedText<20> tag;
        in(tag);
        if (isLaterTag(tag.view())) {
            const std::string_view shown
                = tag.view().substr(0, tag.view().find_last_not_of(" \0") + 1);
            r.status = CaseReadResult::Status::Damaged;
            r.detail = "the file was written by a later version of the program ("
                       + std::string(shown) + "); this version reads case files up to "
                       + std::string(kCaseVersionTagEstTax);
            return r;
        }
        Case c;
        ClearInputs(c);
        switch (LayoutForTag(tag.view())) {
        case InitLayout::Before2000Q22:
            ConvTo2000Q22(in, c.init);
            break;
        case InitLayout::Before2010Q311:
            ConvTo2010Q311(in, c.init);
            break;
        case InitLayout::Current:
            readInit(in, c.init, InitLayout::Current);
            // Stored as -1 - count; a count stored as it is turns negative.
            if (tag.is(kCaseVersionTagEstTax))
                c.init.nPmts = static_cast<std::int16_t>(-1 - c.init.nPmts);
            break;
        }
        if (c.init.nPmts < 0 || c.init.nCharges < 0 || c.init.nDeposits < 0)
            ThrowFault(kErrSubscript, "ReadCase", "a list count is negative");
        readList(in, c.pmts, c.init.nPmts, kPaymentSize, [](BinReader& b, PaymentRec& p) {
            binary(b, p, [](auto& f, auto& rec) { VisitPaymentFields(f, rec); });
        });
        readList(in, c.charges, c.init.nCharges, kChargeSize, [](BinReader& b, ChargeRec& x) {
            binary(b, x, [](auto& f, auto& rec) { VisitChargeFields(f, rec); });
        });
        readList(in, c.deposits, c.init.nDeposits, kDepositSize, [](BinReader& b, DepositRec& d) {
            binary(b, d, [](auto& f, auto& rec) { VisitDepositFields(f, rec); });
        });
        if (tag.is(kCaseVersionTagEstTax)) {
            if (std::string bad = readEstTax(in, c.estTax); !bad.empty()) {
                r.status = CaseReadResult::Status::Damaged;
                r.detail = std::move(bad);
                return r;
            }
        }
        if (std::string bad = DateOutOfRange(c); !bad.empty()) {
            r.status = CaseReadResult::Status::Damaged;
            r.detail = std::move(bad);
            return r;
        }
        r.kase = std::move(c);
    } catch (const Fault& f) {
        r.status = CaseReadResult::Status::Damaged;
        r.detail = ErrorDescription(f.number());
    } catch (const std::bad_alloc&) {
        r.status = CaseReadResult::Status::Damaged;
        r.detail = ErrorDescription(kErrOutOfMemory);
    }
    return r;
}

CaseReadResult ReadCaseFile(const std::string& path)
{
    const FileBytes file = ReadFileBounded(path, kMaxCaseFileSize);
    CaseReadResult r;
    switch (file.status) {
    case ReadStatus::Ok:
        return DecodeCase(file.bytes);
    case ReadStatus::Missing:
    case ReadStatus::NotAFile:
        r.status = CaseReadResult::Status::NotFound;
        return r;
    case ReadStatus::TooLarge:
        r.detail = tooLargeText();
        break;
    case ReadStatus::Failed:
        r.detail = ErrorDescription(kErrPathAccess) + ": " + file.reason;
        break;
    }
    r.status = CaseReadResult::Status::Damaged;
    return r;
}

bool ReadCase(const std::string& path, Case& c, Messages& msgs)
{
    return ReadCaseReporting(path, c, msgs) == CaseReadResult::Status::Ok;
}

CaseReadResult::Status ReadCaseReporting(const std::string& path, Case& c, Messages& msgs)
{
    CaseReadResult r = ReadCaseFile(path);
    switch (r.status) {
    case CaseReadResult::Status::NotFound:
        msgs.show("File not found",
                  "File: " + path + " does not exist."
                      + "Please verify the file is in the correct directory.",
                  MsgIcon::Critical);
        return r.status;
    case CaseReadResult::Status::BadMarker:
        msgs.show(
            "Problem With Case File",
            "File: " + path
                + " is not a case file of this program, or it was written by a version so old that "
                  "no files of that kind remain. Please call Brindlecote technical support at "
                  "support@brindlecote.example.",
            MsgIcon::Exclamation);
        return r.status;
    case CaseReadResult::Status::Damaged:
        msgs.show("Open", "Retrieve (Open) Error: " + r.detail, MsgIcon::Critical);
        return r.status;
    case CaseReadResult::Status::Ok:
        break;
    }
    c = std::move(r.kase);
    return CaseReadResult::Status::Ok;
}

std::string FolderOf(std::string_view path)
{
    const auto pos = path.find_last_of("/\\");
    if (pos == std::string_view::npos)
        return {};
    return std::string(path.substr(0, pos));
}

}  // namespace rw
