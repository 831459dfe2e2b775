#pragma once
// The case: one record of initial and single-valued inputs and three lists
// (payments, other charges, payroll deposits). The field order of every record
// below is also its order in the case file.

#include "base/dates.h"
#include "base/fault.h"
#include "base/fixedtext.h"
#include "base/money.h"
#include "casedata/esttaxinputs.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace rw {

// One event of the interest time line: a date, a kind code, a description and
// the change it makes to the tax, penalty and interest balances.
struct TLPoint {
    FixedText<12> sSortCode;  // "yyyymmdd" + sCode
    FixedText<16> sDesc;
    FixedText<4> sCode;
    Date dtDate;
    Money cTax;
    Money cPen;
    Money cInt;

    friend bool operator==(const TLPoint&, const TLPoint&) = default;
};

struct InitInputs {
    FixedText<52> sName;
    FixedText<52> s2ndLine;
    Date dtDue;
    Flag bPayroll = 0;
    Flag bAutoArrange = 0;
    Flag bOverpayment = 0;
    Flag bTaxMotivated = 0;
    Flag bAnyPenalties = 0;
    std::int16_t nPmts = 0;
    std::int16_t nCharges = 0;
    std::int16_t nDeposits = 0;
    TLPoint tlStart;
    TLPoint tlStop;
    Flag bFtoFile = 0;
    Flag bFtoPay = 0;
    Flag bNegFlat = 0;
    Flag bNegTime = 0;
    Flag bSUP = 0;
    Flag bOtherPen = 0;
    Flag bAccRel = 0;
    Flag bOVal = 0;
    Flag b6651d1 = 0;
    Flag bFraudFlat = 0;
    Flag bFraudTime = 0;
    Flag bCorpUPRate = 0;
    Date dtCorpUPRateStart;
    Flag bCorpOPRate = 0;
    Date dtCorpOPRateStart;
    Date dtExtended;
    std::int16_t nStopDays = 0;
    Date dtFtoFileAssess;
    Date dtFiled;
    Date dtFtoPayAssess;
    Money cAmtOnReturn;
    Date dtNegFlatAssess;
    Money cNegFlatAmt;
    Money cNegTimeAmt;
    Date dtNegTimeAssess;
    Money cSUPAmt;
    float fSUPRate = 0.0f;
    Date dtAssessSUP;
    Money cAccRelAmt;
    float fAccRelRate = 0.0f;
    Money cOValAmt;
    Date dtOValAssess;
    float fOValRate = 0.0f;
    Date dt6651d1Start;
    Money cFraudFlatAmt;
    Date dtFraudFlatAssess;
    Money cFraudTimeAmt;
    Date dtFraudTimeAssess;
    Date dtIntSuspend;
    Date dtRestart;
    std::int16_t nReserved = 0;
    Flag bCorporate = 0;
    FixedText<4> sTaxAuth;

    bool isFederal() const { return sTaxAuth.is("US  "); }

    friend bool operator==(const InitInputs&, const InitInputs&) = default;
};

struct PaymentRec {
    FixedText<16> sDesc;
    Date dtPmt;
    Money cAmount;
    Money cToTax;
    Money cToInt;
    Money cToPen;
    FixedText<1> sMethod;  // "I": IRS allocation method, "T": the user's own

    friend bool operator==(const PaymentRec&, const PaymentRec&) = default;
};

struct ChargeRec {
    FixedText<16> sDesc;
    Date dtLiab;
    Date dtIntStart;
    Money cTotal;
    Money cToTax;
    Money cToPen;

    friend bool operator==(const ChargeRec&, const ChargeRec&) = default;
};

struct DepositRec {
    Date dtDepDue;
    Date dtDepAssess;
    Money cRequired;
    Flag bSevere = 0;
    Date dtDelinqNotice;
    Date dtJeopardy;

    friend bool operator==(const DepositRec&, const DepositRec&) = default;
};

// The case in memory. Each list is indexed from 0; while its count (in init)
// is 0 the list still holds exactly one empty entry, otherwise exactly count
// entries.
struct Case {
    InitInputs init;
    std::vector<PaymentRec> pmts = std::vector<PaymentRec>(1);
    std::vector<ChargeRec> charges = std::vector<ChargeRec>(1);
    std::vector<DepositRec> deposits = std::vector<DepositRec>(1);
    // Kept in the case file after the lists (a later version tag).
    EstTaxCase estTax;

    // The entries in use (the first nPmts / nCharges / nDeposits).
    std::span<const PaymentRec> payments() const;
    std::span<const ChargeRec> otherCharges() const;
    std::span<const DepositRec> payrollDeposits() const;

    // True when every list has the size its count calls for.
    bool countsConsistent() const;

    friend bool operator==(const Case&, const Case&) = default;
};

// ---- Keeping a list and its count together ----------------------------------

// What appending to a list found.
struct ListAppend {
    bool wasEmpty = false;  // the list held no entry before: the new one is its first
    bool countDisagreed
        = false;  // the list's size and its count differed; the count now follows the list
    std::int16_t sizeFound = 0;  // the list's size before appending
    std::int16_t countFound = 0;  // the count before appending
};

// Appends entry to a list of the case and sets its count. A list whose size
// disagrees with its count is reported back (the caller tells the user) and
// the count is taken from the list. Beyond 32,767 entries: an overflow fault
// named `procedure`, with the list unchanged.
template<typename T>
ListAppend AppendListEntry(std::vector<T>& list, std::int16_t& count, const T& entry,
                           std::string_view procedure);

// Removes entry `index` (0 <= index < count); removing the last entry leaves
// the one empty entry of an empty list. True when the list is now empty.
template<typename T>
bool RemoveListEntry(std::vector<T>& list, std::int16_t& count, std::size_t index);

// Resets a case to its defaults: everything zero, texts NUL, the eighteen
// optional dates NoDate, each list one empty entry, accuracy-related rate 0.2;
// the Case overload also empties the estimated tax penalty.
void ClearInputs(std::vector<PaymentRec>& pmts, std::vector<ChargeRec>& charges,
                 std::vector<DepositRec>& deposits, InitInputs& init);
void ClearInputs(Case& c);

// The nearest single to 0.2: the normal accuracy-related penalty rate.
inline constexpr float kNormalAccRelRate = 0.2f;

template<typename T>
ListAppend AppendListEntry(std::vector<T>& list, std::int16_t& count, const T& entry,
                           std::string_view procedure)
{
    ListAppend a;
    a.countFound = count;
    if (count == 0) {
        a.wasEmpty = true;
        list.assign(1, entry);
        count = 1;
        return a;
    }
    if (list.size() >= 32767)
        ThrowFault(kErrOverflow, procedure, "a list holds at most 32,767 entries");
    a.sizeFound = static_cast<std::int16_t>(list.size());
    a.countDisagreed = a.sizeFound != count;
    list.push_back(entry);
    count = static_cast<std::int16_t>(list.size());
    return a;
}

template<typename T>
bool RemoveListEntry(std::vector<T>& list, std::int16_t& count, std::size_t index)
{
    if (count <= 1) {
        list.assign(1, T{});
        count = 0;
        return true;
    }
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(index));
    count = static_cast<std::int16_t>(list.size());
    return false;
}

}  // namespace rw
