// The lists of a case: payments, charges and payroll deposits are added, edited
// and deleted through one routine, tested once over the three; what each list's
// dialog does of its own; a money field that is not a number, in every dialog.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/releases.h"

#include "payments/charges.h"
#include "payments/payments.h"
#include "penalties/accreldialog.h"
#include "penalties/depositdialogs.h"
#include "penalties/ftodialogs.h"

#include <gtest/gtest.h>

#include <deque>

using namespace rwtest;
using rw::PaymentForm;
using Texts = std::vector<std::string>;

namespace {

// A list dialog over a case from 4/15/2016 to 12/31/2016 owing 600.00, its
// entry dialog scripted: each showing records the form it got in `seen` and
// runs the next of `steps` (OK: true). enter() scripts an entry wholly to tax.
template<typename Form>
struct Scripted {
    rw::Case kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "600.00");
    RecordingMessages msgs;
    std::deque<std::function<bool(Form&)>> steps;
    std::vector<Form> seen;

    std::function<bool(Form&)> show()
    {
        return [this](Form& f) {
            seen.push_back(f);
            const bool ok = !steps.empty() && steps.front()(f);
            if (!steps.empty())
                steps.pop_front();
            return ok;
        };
    }
};

struct PaymentList : Scripted<rw::PaymentForm> {
    static constexpr const char* countError = "AddPmtClick error! nPmts 2 and gInit.nPmts 1";
    static constexpr const char* question
        = "Do you want to delete payment information for payment date ";
    rw::RateTable rates = SimpleTable(0.05f);
    rw::PaymentsDialog dlg{kase, rates, Minimums2018(), msgs, show()};
    rw::PaymentsForm form = dlg.open();
    std::vector<rw::PaymentRec>& list = kase.pmts;
    std::int16_t& count = kase.init.nPmts;

    void enter(const char* date, const char* amount, bool ok = true)
    {
        steps.push_back([=](rw::PaymentForm& f) {
            f.date = date;
            f.amount = f.toTax = amount;
            f.irsMethod = false;
            return ok;
        });
    }
};

struct ChargeList : Scripted<rw::ChargeForm> {
    static constexpr const char* countError = "AddChrgClick error! nChrgs 2 and gInit.nCharges 1";
    static constexpr const char* question
        = "Do you want to delete charge information for charge liability date ";
    rw::ChargesDialog dlg{kase, msgs, show()};
    rw::ChargesForm form = dlg.open();
    std::vector<rw::ChargeRec>& list = kase.charges;
    std::int16_t& count = kase.init.nCharges;

    void enter(const char* date, const char* amount, bool ok = true, const char* desc = "")
    {
        steps.push_back([=](rw::ChargeForm& f) {
            f.description = desc;
            f.liabilityDate = f.interestDate = date;
            f.total = f.toTax = amount;
            return ok;
        });
    }
};

struct DepositList : Scripted<rw::DepositForm> {
    static constexpr const char* countError
        = "AddDepClick error! nDeposits 2 and gInit.nDeposits 1";
    static constexpr const char* question
        = "Do you want to delete deposit information for deposit due ";
    rw::DepositListDialog dlg{kase, msgs, show()};
    rw::DepositListForm form = dlg.open();
    std::vector<rw::DepositRec>& list = kase.deposits;
    std::int16_t& count = kase.init.nDeposits;

    void enter(const char* date, const char* amount, bool ok = true, bool severe = false)
    {
        steps.push_back([=](rw::DepositForm& f) {
            f.dueDate = date;
            f.required = amount;
            f.assessDate = "9/1/2016";
            f.severe = severe;
            return ok;
        });
    }
};

template<typename L>
class Lists : public ::testing::Test {
};
using ListKinds = ::testing::Types<PaymentList, ChargeList, DepositList>;
TYPED_TEST_SUITE(Lists, ListKinds);

TYPED_TEST(Lists, AddEditAndDeleteKeepTheListAndItsCountTogether)
{
    TypeParam l;
    using Entry = typename std::remove_reference_t<decltype(l.list)>::value_type;
    l.enter("5/1/2016", "100.00");
    l.enter("6/1/2016", "200.00");
    l.enter("7/1/2016", "5.00", false);  // a cancelled edit, or none selected, changes nothing
    l.dlg.add(l.form);
    l.dlg.add(l.form);
    EXPECT_EQ(l.count, 2);
    EXPECT_TRUE(l.form.editEnabled && l.form.deleteEnabled);
    const rw::Case before = l.kase;
    l.dlg.edit(l.form, 1);
    l.dlg.edit(l.form, -1);
    l.dlg.remove(l.form, -1);
    l.msgs.answerNext(false);
    l.dlg.remove(l.form, 0);
    EXPECT_EQ(l.kase, before);
    const std::string q = TypeParam::question;
    Texts said(std::is_same_v<TypeParam, DepositList> ? 0 : 2,
               rw::kNoSelectionWarning);  // deposits say nothing
    said.push_back(q + "5/1/2016?");
    EXPECT_EQ(l.msgs.texts(), said);
    EXPECT_EQ(l.msgs.shown.back().title, "WARNING!");

    l.msgs.clear();
    l.msgs.answerNext(true);
    l.dlg.remove(l.form, 0);
    EXPECT_EQ(l.count, 1);
    EXPECT_TRUE(l.form.lines.at(0).starts_with("06/01/2016"));
    l.msgs.answerNext(true);
    l.dlg.remove(l.form, 0);  // the last one: the one empty entry of an empty list
    EXPECT_EQ(l.count, 0);
    EXPECT_EQ(l.list, std::vector<Entry>(1));
    EXPECT_TRUE(l.form.lines.empty());
    EXPECT_FALSE(l.form.editEnabled || l.form.deleteEnabled);
    EXPECT_EQ(l.msgs.texts(), (Texts{q + "5/1/2016?", q + "6/1/2016?"}));
}

TYPED_TEST(Lists, CancelAddsNothingSilentlyAndADisagreeingCountIsMended)
{
    TypeParam l;
    l.enter("5/1/2016", "100.00", false);
    l.dlg.add(l.form);
    EXPECT_TRUE(l.msgs.shown.empty());
    EXPECT_EQ(l.list.size(), 1u);
    for (const char* date : {"5/1/2016", "5/2/2016", "6/1/2016"})
        l.enter(date, "100.00");
    l.dlg.add(l.form);
    l.dlg.add(l.form);
    l.count = 1;
    l.dlg.add(l.form);
    EXPECT_EQ(l.msgs.texts(), Texts{std::string(TypeParam::countError)
                                    + " should be the same.  Please call Ratewright "
                                      "technical support and report this message."});
    EXPECT_EQ(l.count, 3);
    EXPECT_EQ(l.list.size(), 3u);
}

struct Charges : ::testing::Test, ChargeList { };
struct Deposits : ::testing::Test, DepositList { };
struct Payments : ::testing::Test, PaymentList { };

std::string Split(const rw::PaymentRec& p)
{
    return rw::FormatMoney(p.cToTax) + " / " + rw::FormatMoney(p.cToPen) + " / "
           + rw::FormatMoney(p.cToInt);
}

// Charges are listed by date of liability, those of one day as entered; one
// without a date for its interest takes its liability's, but keeps the one it
// has when the field is emptied.
TEST_F(Charges, ListedByDateOfLiabilityInterestFromTheLiability)
{
    steps.push_back([](rw::ChargeForm& f) {
        f = {"May", "5/1/2016", "", "100.00", "100.00", "", ""};
        return true;
    });
    dlg.add(form);
    EXPECT_EQ(msgs.texts(),
              (Texts{"No date was given for interest to run on the charge; the date of liability, "
                     "5/1/2016, is used."}));
    EXPECT_EQ(list.at(0).dtIntStart, D(2016, 5, 1));
    for (const auto& [desc, liability] :
         {std::pair{"March", "3/1/2016"}, {"April", "4/1/2016"}, {"April too", "4/1/2016"}}) {
        enter(liability, "100.00", true, desc);
        dlg.add(form);
    }
    EXPECT_EQ(form.lines, (Texts{"03/01/2016 March           ", "04/01/2016 April           ",
                                 "04/01/2016 April too       ", "05/01/2016 May             "}));
    EXPECT_EQ(msgs.shown.size(), 1u);  // the period is advised about when the field is left
    rw::ChargeForm early;
    early.liabilityDate = "4/1/2016";
    rw::ChargeDialog(kase, msgs).liabilityLeft(early);
    EXPECT_TRUE(msgs.texts().at(1).starts_with(
        "Addition to Tax liability date is on or before the start date"));
    msgs.clear();
    steps.push_back([](rw::ChargeForm& f) {
        f = {"Split", "5/1/2016", "", "100.00", "60.00", "30.00", ""};
        return true;
    });
    dlg.edit(form, 0);  // the charge on the first line, March's
    EXPECT_EQ(seen.back().description, "March");
    EXPECT_EQ(form.lines.at(2), "05/01/2016 Split           ");  // before May, as it was
    EXPECT_EQ(
        msgs.texts(),
        (Texts{"The additional charge of 100.00 has not been completely allocated between tax, "
               "and penalty which total 90.00."}));
    EXPECT_EQ(list[2].dtIntStart, D(2016, 3, 1));  // the date it had
}

// Deposits are listed by due date, those of one day as entered. A severe
// deposit without a notice date asks for one: No stores it as not severe; Yes
// shows the dialog again, and it is severe only with a date.
TEST_F(Deposits, ListedByDueDateSevereOnlyWithANoticeDate)
{
    for (const auto& [due, amount] :
         {std::pair{"5/16/2016", "2,000.00"}, {"4/30/2016", "1,000.00"}, {"5/16/2016", "500.00"}})
        enter(due, amount);
    for (int i = 0; i < 3; ++i)
        dlg.add(form);
    EXPECT_EQ(form.lines, (Texts{"04/30/2016", "05/16/2016", "05/16/2016"}));
    EXPECT_EQ(list[2].cRequired, M("500.00"));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));

    msgs.answerNext(false);
    enter("6/30/2016", "1,000.00", true, true);
    dlg.add(form);
    EXPECT_FALSE(rw::IsYes(list.back().bSevere));
    EXPECT_TRUE(msgs.shown.at(0).question && msgs.shown[0].title == "WARNING");
    EXPECT_EQ(msgs.shown[0].text,
              "The IRC Sec. 6656(b)(1)(B) penalty can not be calculated without either the date "
              "of the first delinquency notice or the date of the jeopardy assessment.  Do you "
              "want to enter one of those dates now?");
    for (const char* notice : {"6/1/2016", ""}) {
        seen.clear();
        msgs.answerNext(true);
        enter("7/1/2016", "1,000.00", true, true);
        steps.push_back([=](rw::DepositForm& f) {
            f.delinquencyDate = notice;
            return true;
        });
        dlg.add(form);
        EXPECT_EQ(seen.at(1).dueDate, "7/1/2016");
        EXPECT_EQ(rw::IsYes(list.back().bSevere), *notice != '\0') << notice;
    }
}

// 500.00 x 7.00 / 707.00 = 4.950495... -> 4.9505, shown 4.95; one cent over is
// allowed. The advice comes when the field is left, once for a text, never
// while it is typed.
TEST_F(Payments, TheUsersOwnInterestPartIsAdvisedAboutAboveItsCeiling)
{
    AddCharge(kase, D(2016, 4, 15),
              {.penalties = "100.00"});  // owed on 6/27: 600.00, 100.00, 7.00 (below)
    PaymentForm f;
    f.date = "6/27/2016";
    f.amount = "500.00";
    f.irsMethod = false;
    dlg.paymentDialog().irsMethodClicked(f);
    EXPECT_TRUE(f.allocationEnabled);
    EXPECT_EQ(f.maxInterestLabel, "Max. Interest: 4.95");
    for (const char* interest : {"4.96", "4.9", "4.97", "4.97"}) {
        f.toInterest = interest;
        dlg.paymentDialog().amountChanged(f);
    }
    EXPECT_TRUE(msgs.shown.empty());
    for (int leave = 0; leave < 2; ++leave)
        dlg.paymentDialog().moneyLeft(f, &PaymentForm::toInterest);
    f.toTax = "400.00";
    dlg.paymentDialog().amountChanged(f);
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 95.03");  // 500.00 - 400.00 - 4.97
    f.toTax = "495.03";
    EXPECT_TRUE(dlg.paymentDialog().okAllowed(f));  // advised already; it only advises
    EXPECT_EQ(
        msgs.texts(),
        Texts{"The allocation of the payment to interest may be too high since it exceeds $4.95!"});
    f.toInterest = "4.98";
    f.toTax = "495.02";
    EXPECT_TRUE(dlg.paymentDialog().okAllowed(f));  // a new part: advised on OK
    EXPECT_EQ(msgs.shown.size(), 2u);
    f.irsMethod = true;  // the ceiling goes with the IRS method
    dlg.paymentDialog().irsMethodClicked(f);
    EXPECT_TRUE(f.maxInterestLabel.empty());
}

// OK on an entry's form refuses field, told once (nullptr: lets it through).
template<typename Form, typename Ok>
void CheckOk(const Ok& ok, const char* name, Form f, rw::FormField<Form> field)
{
    RecordingMessages msgs;
    EXPECT_EQ(ok(f, msgs), field == nullptr) << name;
    EXPECT_TRUE(f.refused == field && msgs.shown.size() == (field ? 1u : 0u)) << name;
}

// OK refuses what cannot be stored, the dialog staying open with the field to
// mend selected: parts that do not add up select the tax part, or with the
// IRS method the amount.
TEST_F(Payments, EntriesRefusedOnOk)
{
    using F = PaymentForm;
    const auto ok = [this](F& f, rw::Messages& m) {
        return rw::PaymentDialog(kase, rates, Minimums2018(), m).okAllowed(f);
    };
    const F split{"Check", "6/27/2016", "500", false, "400", "", "99.99", true, "", ""};
    CheckOk(ok, "one cent short", split, &F::toTax);
    F irs = split;
    irs.irsMethod = !(irs.allocationEnabled = false);
    CheckOk(ok, "short by the IRS method", irs, &F::amount);
    for (const auto& [name, field, text] : {std::tuple{"adds up", &F::amount, "499.99"},
                                            {"no date", &F::date, ""},
                                            {"not a date", &F::date, "6/31/2016"},
                                            {"no amount", &F::amount, "0"},
                                            {"penalties not an amount", &F::toPenalties, "1O"}}) {
        F f = split;
        f.*field = text;
        CheckOk(ok, name, f, *name == 'a' ? nullptr : field);
    }
    F f = split;
    ok(f, msgs);
    EXPECT_EQ(msgs.texts(), Texts{"The payment of 500 has not been completely allocated between "
                                  "tax, interest and penalty which total 499.99."});
}

// A payment dated before the one before it is stored and warned about
// (except in a payroll case); Sort by Date puts the list in date order,
// payments of one day as they were.
TEST_F(Payments, OutOfDateOrderWarnedAndSortedByDate)
{
    for (const bool payroll : {false, true}) {
        kase.init.bPayroll = rw::ToFlag(payroll);
        enter("5/1/2016", "100.00");
        enter("4/20/2016", "100.00");
        dlg.add(form);
        dlg.add(form);
    }
    EXPECT_EQ(
        msgs.texts(),
        (Texts{"Payments have to be entered in chronological order for this program to be "
               "accurate.  This payment is not in chronological order! This payment date: "
               "4/20/2016. Previous payment date entered: 5/1/2016.  Sort by Date in the list "
               "of payments puts them in order."}));
    for (const char* desc : {"A", "B", "C", "D"})  // 5/1, 4/20, 5/1, 4/20
        list[static_cast<std::size_t>(*desc - 'A')].sDesc = desc;
    EXPECT_TRUE(form.sortEnabled);
    dlg.sortByDate(form);
    EXPECT_EQ(form.lines, (Texts{"04/20/2016 B               ", "04/20/2016 D               ",
                                 "05/01/2016 A               ", "05/01/2016 C               "}));
    EXPECT_EQ(count, 4);
}

// With a 100.00 penalty charged on 4/15, owed on 6/27/2016 (73 days): 600.00
// tax, 100.00 penalties, 700.00 x 0.05 x 73 / 365 = 7.00 interest. The IRS
// method allocates a payment against it: of 1,000.00, the 293.00 left over to
// tax. Each showing sees the case as it now stands: with the balance made
// 900.00, a second payment that day finds 900.00, 100.00 and
// 1,000.00 x 0.05 x 73 / 365 = 10.00 (the first counting as nothing on its day).
TEST_F(Payments, TheIrsMethodAllocatesOnTheCaseAsItNowStands)
{
    AddCharge(kase, D(2016, 4, 15), {.penalties = "100.00"});
    for (const auto& [balance, amount] :
         {std::pair{"600.00", "1,000.00"}, {"900.00", "1,010.00"}}) {
        kase.init.tlStart.cTax = M(balance);
        steps.push_back([this, amount](PaymentForm& f) {
            f.date = "6/27/2016";
            f.amount = amount;
            dlg.paymentDialog().irsMethodClicked(f);
            return true;
        });
        dlg.add(form);
    }
    EXPECT_TRUE(seen[0].irsMethod
                && seen[0].amount.empty());  // it opens empty, with the IRS method
    EXPECT_EQ(Split(list[0]), "893.00 / 100.00 / 7.00");
    EXPECT_EQ(Split(list[1]), "900.00 / 100.00 / 10.00");
    EXPECT_TRUE(list[0].sMethod.is("I"));
    EXPECT_TRUE(msgs.shown.empty());
}

// An IRS-method payment on 5/1/2016 typed before the 100.00 penalty was
// entered (its tax part all but 1.32 of interest) counts, in what is owed on
// a later day, as a computation allocates it: 600.00 tax and of 650.00 the
// 50.00 left to the penalty. Owed on 6/27/2016 then: no tax, 50.00 penalties
// and interest of 700 x 0.05 x 16 / 365 = 1.5342 -> 1.53 for 4/16-5/1 and
// 50 x 0.05 x 57 / 365 = 0.3904 -> 0.39 for 5/2-6/27: 1.92. Of 800.00 the
// payment opens allocated on 5/1: 600.00 tax, 100.00, 1.53 and 98.47 left to
// tax; moved to 6/27 its old copy is no payment before itself: 600.00 +
// 100.00 + 7.00 owed and 93.00 left to tax.
TEST_F(Payments, OwedOnADayAndAnEditTakeIrsMethodPaymentsAsTheCaseNowStands)
{
    AddCharge(kase, D(2016, 4, 15), {.penalties = "100.00"});
    AddPayment(kase, D(2016, 5, 1), {.tax = "648.68", .interest = "1.32", .method = "I"});
    const rw::OwedOnDate owed = dlg.paymentDialog().owedOn("6/27/2016");
    EXPECT_EQ(owed.tax, Money());
    EXPECT_EQ(owed.penalties, M("50.00"));
    EXPECT_EQ(owed.interest, M("1.92"));

    list[0].cToTax = M("798.68");
    list[0].cAmount = M("800.00");
    form = dlg.open();
    steps.push_back([this](PaymentForm& f) {
        f.date = "6/27/2016";
        dlg.paymentDialog().dateChanged(f);
        return true;
    });
    dlg.edit(form, 0);
    EXPECT_EQ(seen.at(0).toTax + " / " + seen[0].toPenalties + " / " + seen[0].toInterest,
              "698.47 / 100.00 / 1.53");
    EXPECT_EQ(list[0].dtPmt, D(2016, 6, 27));
    EXPECT_EQ(Split(list[0]), "693.00 / 100.00 / 7.00");
    EXPECT_TRUE(msgs.shown.empty());
}

// On OK a charge needs its date of liability and an amount, a deposit its
// due date, amount and assessment; a date given must be one.
TEST(EntryDialogs, ChargesAndDepositsRefusedOnOk)
{
    using C = rw::ChargeForm;
    using P = rw::DepositForm;
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    const auto charge = [&c](C& f, rw::Messages& m) { return rw::ChargeDialog(c, m).okAllowed(f); };
    for (const auto& [name, field, text, refused] :
         {std::tuple{"no liability", &C::liabilityDate, "", true},
          {"interest date not one", &C::interestDate, "5/32/2016", true},
          {"charge of 0", &C::total, "0.00", true},
          {"no interest date", &C::interestDate, "", false}}) {
        C f{"", "5/1/2016", "", "100", "100", "", ""};
        f.*field = text;
        CheckOk(charge, name, f, refused ? field : nullptr);
    }
    const auto deposit
        = [&c](P& f, rw::Messages& m) { return rw::DepositDialog(c, m).okAllowed(f); };
    for (const auto& [name, field, text, refused] :
         {std::tuple{"no due date", &P::dueDate, "", true},
          {"deposit of 0", &P::required, "", true},
          {"no assessment", &P::assessDate, "", true},
          {"notice date not one", &P::jeopardyDate, "abc", true},
          {"no notice dates", &P::jeopardyDate, "", false}}) {
        P f{"5/16/2016", "1,000", "9/1/2016", true, "", "6/1/2016", true, ""};
        f.*field = text;
        CheckOk(deposit, name, f, refused ? field : nullptr);
    }
}

// ---- A money field that is not a number: refused when left and on OK, nothing stored

TEST(MoneyFields, NotANumberRefusedNamingTheField)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    const rw::RateTable rates = SimpleTable(0.05f);
    RecordingMessages msgs;
    PaymentForm pay;
    rw::ChargeForm charge;
    rw::DepositForm deposit;
    rw::FtoPayForm toPay;
    rw::AccRelForm under, rate;
    pay.toTax = "1OO";
    charge.toPenalties = "3O";
    deposit.required = "1,OOO";
    toPay.amountOnReturn = "9,000.0O";
    under.underpayment = "1O";
    rate.calculate = true;
    rate.rate = "20%";
    rw::PaymentDialog(c, rates, Minimums2018(), msgs).moneyLeft(pay, &PaymentForm::toTax);
    rw::ChargeDialog(c, msgs).fieldLeft(charge, &rw::ChargeForm::toPenalties);
    rw::DepositDialog(c, msgs).fieldLeft(deposit, rw::DepositField::Required);
    rw::FtoPayDialog(c, msgs).amountLeft(toPay);
    rw::AccRelDialog accRel(c, msgs);
    accRel.underpaymentLeft(under);
    EXPECT_FALSE(accRel.accept(rate));  // on OK
    const std::string amount = " is not an amount.  Please enter a number such as 1,234.56.";
    EXPECT_EQ(msgs.texts(), (Texts{"The Allocate To Tax entered as 1OO" + amount,
                                   "The Applied As Penalties entered as 3O" + amount,
                                   "The Required Deposit entered as 1,OOO" + amount,
                                   "The Amount Shown on Return entered as 9,000.0O" + amount,
                                   "The Accuracy Related Underpayment entered as 1O" + amount,
                                   "The Accuracy Related Penalty Rate entered as 20% is not a "
                                   "number.  Please enter the rate as a fraction (20% is .2)."}));
    EXPECT_TRUE(pay.refused && charge.refused && deposit.refused && toPay.refused && under.refused
                && rate.refused == &rw::AccRelForm::rate);
    EXPECT_EQ(c, FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00"));
}

}  // namespace
