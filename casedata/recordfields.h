#pragma once
// The fields of the case's records, by name, in the order the case file
// holds them. The case file walks them for its bytes and the JSON form of a
// case for its keys, so the order and the names are stated once.
//
// A visitor V has text(name, FixedText<N>&), date(name, Date&),
// money(name, Money&), rate(name, float&), flag(name, Flag&),
// integer(name, std::int16_t&) and point(name, TLPoint&) (a record nested in
// place); const records are visited through the same calls.

#include "casedata/caserecord.h"

namespace rw {

// The record part of the case file exists in three layouts, told apart by
// the file's version tag: files before "Qrat2000Q2.20" lack bAutoArrange,
// files before "Qrat2010Q3.11" lack fAccRelRate.
enum class InitLayout { Before2000Q22, Before2010Q311, Current };

template<typename V, typename P>
void VisitPointFields(V& v, P& p)
{
    v.text("sSortCode", p.sSortCode);
    v.text("sDesc", p.sDesc);
    v.text("sCode", p.sCode);
    v.date("dtDate", p.dtDate);
    v.money("cTax", p.cTax);
    v.money("cPen", p.cPen);
    v.money("cInt", p.cInt);
}

template<typename V, typename I>
void VisitInitFields(V& v, I& r, InitLayout layout = InitLayout::Current)
{
    v.text("sName", r.sName);
    v.text("s2ndLine", r.s2ndLine);
    v.date("dtDue", r.dtDue);
    v.flag("bPayroll", r.bPayroll);
    if (layout != InitLayout::Before2000Q22)
        v.flag("bAutoArrange", r.bAutoArrange);
    v.flag("bOverpayment", r.bOverpayment);
    v.flag("bTaxMotivated", r.bTaxMotivated);
    v.flag("bAnyPenalties", r.bAnyPenalties);
    v.integer("nPmts", r.nPmts);
    v.integer("nCharges", r.nCharges);
    v.integer("nDeposits", r.nDeposits);
    v.point("tlStart", r.tlStart);
    v.point("tlStop", r.tlStop);
    v.flag("bFtoFile", r.bFtoFile);
    v.flag("bFtoPay", r.bFtoPay);
    v.flag("bNegFlat", r.bNegFlat);
    v.flag("bNegTime", r.bNegTime);
    v.flag("bSUP", r.bSUP);
    v.flag("bOtherPen", r.bOtherPen);
    v.flag("bAccRel", r.bAccRel);
    v.flag("bOVal", r.bOVal);
    v.flag("b6651d1", r.b6651d1);
    v.flag("bFraudFlat", r.bFraudFlat);
    v.flag("bFraudTime", r.bFraudTime);
    v.flag("bCorpUPRate", r.bCorpUPRate);
    v.date("dtCorpUPRateStart", r.dtCorpUPRateStart);
    v.flag("bCorpOPRate", r.bCorpOPRate);
    v.date("dtCorpOPRateStart", r.dtCorpOPRateStart);
    v.date("dtExtended", r.dtExtended);
    v.integer("nStopDays", r.nStopDays);
    v.date("dtFtoFileAssess", r.dtFtoFileAssess);
    v.date("dtFiled", r.dtFiled);
    v.date("dtFtoPayAssess", r.dtFtoPayAssess);
    v.money("cAmtOnReturn", r.cAmtOnReturn);
    v.date("dtNegFlatAssess", r.dtNegFlatAssess);
    v.money("cNegFlatAmt", r.cNegFlatAmt);
    v.money("cNegTimeAmt", r.cNegTimeAmt);
    v.date("dtNegTimeAssess", r.dtNegTimeAssess);
    v.money("cSUPAmt", r.cSUPAmt);
    v.rate("fSUPRate", r.fSUPRate);
    v.date("dtAssessSUP", r.dtAssessSUP);
    v.money("cAccRelAmt", r.cAccRelAmt);
    if (layout == InitLayout::Current)
        v.rate("fAccRelRate", r.fAccRelRate);
    v.money("cOValAmt", r.cOValAmt);
    v.date("dtOValAssess", r.dtOValAssess);
    v.rate("fOValRate", r.fOValRate);
    v.date("dt6651d1Start", r.dt6651d1Start);
    v.money("cFraudFlatAmt", r.cFraudFlatAmt);
    v.date("dtFraudFlatAssess", r.dtFraudFlatAssess);
    v.money("cFraudTimeAmt", r.cFraudTimeAmt);
    v.date("dtFraudTimeAssess", r.dtFraudTimeAssess);
    v.date("dtIntSuspend", r.dtIntSuspend);
    v.date("dtRestart", r.dtRestart);
    v.integer("nReserved", r.nReserved);
    v.flag("bCorporate", r.bCorporate);
    v.text("sTaxAuth", r.sTaxAuth);
}

template<typename V, typename P>
void VisitPaymentFields(V& v, P& p)
{
    v.text("sDesc", p.sDesc);
    v.date("dtPmt", p.dtPmt);
    v.money("cAmount", p.cAmount);
    v.money("cToTax", p.cToTax);
    v.money("cToInt", p.cToInt);
    v.money("cToPen", p.cToPen);
    v.text("sMethod", p.sMethod);
}

template<typename V, typename C>
void VisitChargeFields(V& v, C& c)
{
    v.text("sDesc", c.sDesc);
    v.date("dtLiab", c.dtLiab);
    v.date("dtIntStart", c.dtIntStart);
    v.money("cTotal", c.cTotal);
    v.money("cToTax", c.cToTax);
    v.money("cToPen", c.cToPen);
}

template<typename V, typename D>
void VisitDepositFields(V& v, D& d)
{
    v.date("dtDepDue", d.dtDepDue);
    v.date("dtDepAssess", d.dtDepAssess);
    v.money("cRequired", d.cRequired);
    v.flag("bSevere", d.bSevere);
    v.date("dtDelinqNotice", d.dtDelinqNotice);
    v.date("dtJeopardy", d.dtJeopardy);
}

}  // namespace rw
