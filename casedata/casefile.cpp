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

std::vector<char> EncodeCase(const Case& c, std::string_view versionTag)
{
    BinWriter w;
    w.raw(kFileMarker.data(), kFileMarker.size());
    const FixedText<20> tag(versionTag);
    w(tag);
    const InitInputs init = [&] {
        InitInputs copy = c.init;
        copy.nReserved = 0;  // reserved: always written as 0
        return copy;
    }();
    binary(w, init, [](auto& f, auto& r) { VisitInitFields(f, r); });
    for (const PaymentRec& p : c.payments())
        binary(w, p, [](auto& f, auto& r) { VisitPaymentFields(f, r); });
    for (const ChargeRec& ch : c.otherCharges())
        binary(w, ch, [](auto& f, auto& r) { VisitChargeFields(f, r); });
    for (const DepositRec& d : c.payrollDeposits())
        binary(w, d, [](auto& f, auto& r) { VisitDepositFields(f, r); });
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
