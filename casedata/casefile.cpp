#include "casedata/casefile.h"

#include <filesystem>

namespace rw {

namespace {

// Visits the fields of a time line point in file order.
template <typename V, typename P>
void visitPoint(V& v, P& p)
{
    v(p.sSortCode);
    v(p.sDesc);
    v(p.sCode);
    v(p.dtDate);
    v(p.cTax);
    v(p.cPen);
    v(p.cInt);
}

// Visits the case record in file order; the older layouts lack bAutoArrange
// (before 2000 Q2.20) and fAccRelRate (before 2010 Q3.11).
template <typename V, typename I>
void visitInit(V& v, I& r, InitLayout layout)
{
    v(r.sName);
    v(r.s2ndLine);
    v(r.dtDue);
    v(r.bPayroll);
    if (layout != InitLayout::Before2000Q22)
        v(r.bAutoArrange);
    v(r.bOverpayment);
    v(r.bTaxMotivated);
    v(r.bAnyPenalties);
    v(r.nPmts);
    v(r.nCharges);
    v(r.nDeposits);
    visitPoint(v, r.tlStart);
    visitPoint(v, r.tlStop);
    v(r.bFtoFile);
    v(r.bFtoPay);
    v(r.bNegFlat);
    v(r.bNegTime);
    v(r.bSUP);
    v(r.bOtherPen);
    v(r.bAccRel);
    v(r.bOVal);
    v(r.b6651d1);
    v(r.bFraudFlat);
    v(r.bFraudTime);
    v(r.bCorpUPRate);
    v(r.dtCorpUPRateStart);
    v(r.bCorpOPRate);
    v(r.dtCorpOPRateStart);
    v(r.dtExtended);
    v(r.nStopDays);
    v(r.dtFtoFileAssess);
    v(r.dtFiled);
    v(r.dtFtoPayAssess);
    v(r.cAmtOnReturn);
    v(r.dtNegFlatAssess);
    v(r.cNegFlatAmt);
    v(r.cNegTimeAmt);
    v(r.dtNegTimeAssess);
    v(r.cSUPAmt);
    v(r.fSUPRate);
    v(r.dtAssessSUP);
    v(r.cAccRelAmt);
    if (layout == InitLayout::Current)
        v(r.fAccRelRate);
    v(r.cOValAmt);
    v(r.dtOValAssess);
    v(r.fOValRate);
    v(r.dt6651d1Start);
    v(r.cFraudFlatAmt);
    v(r.dtFraudFlatAssess);
    v(r.cFraudTimeAmt);
    v(r.dtFraudTimeAssess);
    v(r.dtIntSuspend);
    v(r.dtRestart);
    v(r.nReserved);
    v(r.bCorporate);
    v(r.sTaxAuth);
}

template <typename V, typename P>
void visitPayment(V& v, P& p)
{
    v(p.sDesc);
    v(p.dtPmt);
    v(p.cAmount);
    v(p.cToTax);
    v(p.cToInt);
    v(p.cToPen);
    v(p.sMethod);
}

template <typename V, typename C>
void visitCharge(V& v, C& c)
{
    v(c.sDesc);
    v(c.dtLiab);
    v(c.dtIntStart);
    v(c.cTotal);
    v(c.cToTax);
    v(c.cToPen);
}

template <typename V, typename D>
void visitDeposit(V& v, D& d)
{
    v(d.dtDepDue);
    v(d.dtDepAssess);
    v(d.cRequired);
    v(d.bSevere);
    v(d.dtDelinqNotice);
    v(d.dtJeopardy);
}

void readInit(BinReader& in, InitInputs& init, InitLayout layout)
{
    visitInit(in, init, layout);
    init.nReserved = 0;  // reserved: ignored when read
}

template <typename T, typename Visit>
void readList(BinReader& in, std::vector<T>& list, std::int16_t count, std::size_t recordSize, Visit visit)
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

}  // namespace

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
    visitInit(w, init, InitLayout::Current);
    for (const PaymentRec& p : c.payments())
        visitPayment(w, p);
    for (const ChargeRec& ch : c.otherCharges())
        visitCharge(w, ch);
    for (const DepositRec& d : c.payrollDeposits())
        visitDeposit(w, d);
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
    try {
        BinReader in(bytes, "ReadCase");
        char marker[6];
        in.raw(marker, sizeof marker);
        FixedText<20> tag;
        in(tag);
        Case c;
        ClearInputs(c);
        switch (LayoutForTag(tag.view())) {
        case InitLayout::Before2000Q22: ConvTo2000Q22(in, c.init); break;
        case InitLayout::Before2010Q311: ConvTo2010Q311(in, c.init); break;
        case InitLayout::Current: readInit(in, c.init, InitLayout::Current); break;
        }
        if (c.init.nPmts < 0 || c.init.nCharges < 0 || c.init.nDeposits < 0)
            ThrowFault(kErrSubscript, "ReadCase", "a list count is negative");
        readList(in, c.pmts, c.init.nPmts, kPaymentSize, [](BinReader& b, PaymentRec& p) { visitPayment(b, p); });
        readList(in, c.charges, c.init.nCharges, kChargeSize, [](BinReader& b, ChargeRec& x) { visitCharge(b, x); });
        readList(in, c.deposits, c.init.nDeposits, kDepositSize, [](BinReader& b, DepositRec& d) { visitDeposit(b, d); });
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
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        CaseReadResult r;
        r.status = CaseReadResult::Status::NotFound;
        return r;
    }
    std::vector<char> bytes;
    if (!ReadWholeFile(path, bytes)) {
        CaseReadResult r;
        r.status = CaseReadResult::Status::Damaged;
        r.detail = ErrorDescription(kErrPathAccess);
        return r;
    }
    return DecodeCase(bytes);
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
                  "File: " + path + " does not exist." + "Please verify the file is in the correct directory.",
                  MsgIcon::Critical);
        return r.status;
    case CaseReadResult::Status::BadMarker:
        msgs.show("Problem With Case File",
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
