#include "rates/ratetable.h"

#include "base/binio.h"

namespace rw {

namespace {

constexpr Authority kAuthorities[] = {
    {"Federal", "US  ", "fed.tbl", AuthorityNotice::None},
    {"Arkansas", "AR  ", "ar1.tbl", AuthorityNotice::None},
    {"CA - Personal", "CAP ", "ca_pers.tbl", AuthorityNotice::None},
    {"CA - Corp: Large", "CAB ", "ca_bus1.tbl", AuthorityNotice::None},
    {"CA - Corp: Regular", "CARC", "ca_bus2.tbl", AuthorityNotice::None},
    {"Florida", "FL  ", "fl1.tbl", AuthorityNotice::None},
    {"Georgia", "GA  ", "ga1.tbl", AuthorityNotice::None},
    {"Hawaii", "HI  ", "hi1.tbl", AuthorityNotice::None},
    {"Idaho", "ID  ", "id1.tbl", AuthorityNotice::None},
    {"Illinois - Short-Term", "ILST", "Il-st.tbl", AuthorityNotice::Illinois},
    {"Illinois - Long-Term", "IL  ", "Il-lt.tbl", AuthorityNotice::Illinois},
    {"Indiana", "IN  ", "in1.tbl", AuthorityNotice::None},
    {"Kentucky", "KY  ", "ky1.tbl", AuthorityNotice::None},
    {"Louisiana", "LA  ", "la1.tbl", AuthorityNotice::None},
    {"Maryland", "MD  ", "md1.tbl", AuthorityNotice::None},
    {"Massachusetts - Underpayment", "MA  ", "Ma1-up.tbl", AuthorityNotice::Massachusetts},
    {"Massachusetts - Overpayment", "MAOP", "Ma1-op.tbl", AuthorityNotice::Massachusetts},
    {"Michigan", "MI  ", "mi1.tbl", AuthorityNotice::None},
    {"Minnesota", "MN  ", "mn1.tbl", AuthorityNotice::None},
    {"Missouri", "MO  ", "mo1.tbl", AuthorityNotice::None},
    {"New York State - Income Tax", "NYSI", "ny_ind1.tbl", AuthorityNotice::None},
    {"New York State - Corporation Tax", "NYSC", "ny_crp1.tbl", AuthorityNotice::None},
    {"Pennsylvania", "PA  ", "pa1.tbl", AuthorityNotice::None},
    {"Rhode Island", "RI  ", "Ri1.tbl", AuthorityNotice::None},
    {"South Carolina", "SC  ", "sc1.tbl", AuthorityNotice::None},
    {"Virginia - Regular", "VAR ", "va_reg.tbl", AuthorityNotice::None},
    {"Virginia - Large Corp", "VALC", "va_lcorp.tbl", AuthorityNotice::None},
    {"Utah", "UT  ", "ut1.tbl", AuthorityNotice::None},
    {"Vermont", "VT  ", "vt1.tbl", AuthorityNotice::None},
    {"West Virginia", "WV  ", "wv1.tbl", AuthorityNotice::None},
};
static_assert(std::size(kAuthorities) == 30);

template<typename V, typename R>
void visitRow(V& v, R& r)
{
    v(r.dtFrom);
    v(r.dtThru);
    v(r.fUPRate);
    v(r.fOPRate);
}

}  // namespace

std::span<const Authority> Authorities()
{
    return kAuthorities;
}

int AuthorityPosition(std::string_view code)
{
    for (std::size_t i = 0; i < std::size(kAuthorities); ++i)
        if (kAuthorities[i].code == code)
            return static_cast<int>(i);
    return -1;
}

const Authority& AuthorityForCode(std::string_view code)
{
    const int pos = AuthorityPosition(code);
    return kAuthorities[pos < 0 ? 0 : pos];
}

std::string_view IllinoisNotice()
{
    return "After 12/31/03, for the first year, IL interest accrues at the Short-Term rates. After "
           "a year, "
           "interest accrues at the Long-Term rates.";
}

std::string_view MassachusettsNotice()
{
    return "After 6/30/03, MA interest on underpayments and overpayments is computed differently "
           "using "
           "different rates. ";
}

std::vector<char> EncodeRateTable(const RateTable& rows)
{
    BinWriter w;
    w.raw("NOTVB3", 6);
    const auto n = static_cast<std::int32_t>(rows.size());
    w(n);
    for (const RateRow& r : rows) {
        visitRow(w, r);
        w.raw(r.reserved.data(), 4);
        w.raw(&r.sCalcMethod, 1);
    }
    return std::move(w.bytes());
}

RateTableReadResult DecodeRateTable(const std::vector<char>& bytes)
{
    RateTableReadResult res;
    if (bytes.size() < 6 || std::string_view(bytes.data(), 6) != "NOTVB3") {
        res.status = RateTableReadResult::Status::BadMarker;
        return res;
    }
    try {
        BinReader in(bytes, "OpenRates");
        char marker[6];
        in.raw(marker, 6);
        std::int32_t n = 0;
        in(n);
        if (n < 1)
            ThrowFault(kErrSubscript, "OpenRates", "the table holds no rows");
        if (in.remaining() / kRateRowSize < static_cast<std::size_t>(n))
            ThrowFault(kErrPastEnd, "OpenRates", "the file is shorter than its row count says");
        res.rows.resize(static_cast<std::size_t>(n));
        for (std::size_t i = 0; i < res.rows.size(); ++i) {
            RateRow& r = res.rows[i];
            visitRow(in, r);
            in.raw(r.reserved.data(), 4);
            in.raw(&r.sCalcMethod, 1);
            const std::string row = "row " + std::to_string(i + 1);
            for (const auto& [name, d] : {std::pair{"dtFrom", r.dtFrom}, {"dtThru", r.dtThru}})
                if (!IsReadableDate(d) || d.isNoDate())
                    ThrowFault(kErrInvalidFormat, "OpenRates",
                               row + " " + name + ": not a date " + ReadableDatesText());
            if (r.dtThru < r.dtFrom || (i > 0 && !(res.rows[i - 1].dtThru < r.dtFrom)))
                ThrowFault(kErrInvalidFormat, "OpenRates",
                           row + ": dtFrom must follow the row before and not be after dtThru");
        }
    } catch (const Fault& f) {
        res.status = RateTableReadResult::Status::Damaged;
        // A table that ends early or holds no rows is a read error (62).
        res.errNumber = f.number() == kErrInvalidFormat ? kErrInvalidFormat : kErrPastEnd;
        res.detail = f.number() == kErrInvalidFormat ? f.detail() : ErrorDescription(f.number());
        res.rows.clear();
    }
    return res;
}

std::string RateTableProblem(const RateTableReadResult& r)
{
    switch (r.status) {
    case RateTableReadResult::Status::NotFound:
        return "does not exist";
    case RateTableReadResult::Status::BadMarker:
        return "is not a rate table (the NOTVB3 marker is missing)";
    case RateTableReadResult::Status::Damaged:
        return "is damaged: " + r.detail;
    case RateTableReadResult::Status::Ok:
        break;
    }
    return {};
}

RateTableReadResult ReadRateTableFile(const std::filesystem::path& path)
{
    const FileBytes file = ReadFileBounded(path.string(), kMaxRateTableSize);
    RateTableReadResult r;
    switch (file.status) {
    case ReadStatus::Ok:
        return DecodeRateTable(file.bytes);
    case ReadStatus::Missing:
    case ReadStatus::NotAFile:
        r.status = RateTableReadResult::Status::NotFound;
        return r;
    case ReadStatus::TooLarge:
        r.errNumber = kErrInvalidFormat;
        r.detail = "larger than any rate table (" + std::to_string(kMaxRateTableSize) + " bytes)";
        break;
    case ReadStatus::Failed:
        r.errNumber = kErrPathAccess;
        r.detail = ErrorDescription(kErrPathAccess) + ": " + file.reason;
        break;
    }
    r.status = RateTableReadResult::Status::Damaged;
    return r;
}

bool OpenRates(std::string_view code, const Paths& paths, Messages& msgs, RateTable& rates)
{
    const Authority& auth = AuthorityForCode(code);
    if (auth.notice == AuthorityNotice::Illinois)
        msgs.show("NOTICE!", IllinoisNotice(), MsgIcon::Information);
    else if (auth.notice == AuthorityNotice::Massachusetts)
        msgs.show("NOTICE!", MassachusettsNotice(), MsgIcon::Information);

    const std::string path = paths.table(auth.file).string();
    RateTableReadResult r = ReadRateTableFile(paths.table(auth.file));
    switch (r.status) {
    case RateTableReadResult::Status::NotFound:
        msgs.show("File not found",
                  "File: " + path + " does not exist."
                      + "Please verify the file is in the correct directory. "
                      + "Procedure: OpenRates().",
                  MsgIcon::Information);
        return false;
    case RateTableReadResult::Status::BadMarker:
        msgs.show(
            "Problem With Rate File",
            "The \"NOT_VB3\" code was missing from file, " + path
                + " in procedure: OpenRates(). Please notify Brindlecote technical support at "
                  "support@brindlecote.example.",
            MsgIcon::Information);
        return false;
    case RateTableReadResult::Status::Damaged:
        ThrowFault(r.errNumber, "OpenRates", path + ": " + r.detail);
    case RateTableReadResult::Status::Ok:
        break;
    }
    rates = std::move(r.rows);
    return true;
}

}  // namespace rw
