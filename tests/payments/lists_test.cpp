// The lists of a case: payments, other charges and payroll deposits are added,
// edited and deleted through one routine, tested here once over the three;
// then what the charge and deposit dialogs do of their own, and a money field
// that is not a number, in every dialog that has one.
#include "listdialogs.h"

#include "penalties/accreldialog.h"
#include "penalties/ftodialogs.h"

#include <gtest/gtest.h>

using namespace rwtest;
using Texts = std::vector<std::string>;

namespace {

// What each list says of its own.
template <typename L>
struct Said;
template <>
struct Said<PaymentList> {
    static constexpr const char* notAdded = "Payment not added!";
    static constexpr const char* countError = "AddPmtClick error! nPmts 2 and gInit.nPmts 1";
    static constexpr const char* question = "Do you want to delete payment information for payment date ";
    static constexpr int noSelectionWarnings = 2;
};
template <>
struct Said<ChargeList> {
    static constexpr const char* notAdded = "Charge not added!";
    static constexpr const char* countError = "AddChrgClick error! nChrgs 2 and gInit.nCharges 1";
    static constexpr const char* question = "Do you want to delete charge information for charge liability date ";
    static constexpr int noSelectionWarnings = 2;
};
template <>
struct Said<DepositList> {
    static constexpr const char* notAdded = "Deposit not added!";
    static constexpr const char* countError = "AddDepClick error! nDeposits 2 and gInit.nDeposits 1";
    static constexpr const char* question = "Do you want to delete deposit information for deposit due ";
    static constexpr int noSelectionWarnings = 0;
};

template <typename L>
class Lists : public ::testing::Test {};
using ListKinds = ::testing::Types<PaymentList, ChargeList, DepositList>;
TYPED_TEST_SUITE(Lists, ListKinds);

TYPED_TEST(Lists, AddEditAndDeleteKeepTheListAndItsCountTogether)
{
    TypeParam l;
    using Entry = typename std::remove_reference_t<decltype(l.list)>::value_type;
    EXPECT_FALSE(l.form.editEnabled || l.form.deleteEnabled);
    l.enter("5/1/2016", "100.00");
    l.enter("6/1/2016", "200.00");
    l.dlg.add(l.form);
    l.dlg.add(l.form);
    EXPECT_EQ(l.count, 2);
    ASSERT_EQ(l.form.lines.size(), 2u);
    EXPECT_TRUE(l.form.lines[1].starts_with("06/01/2016"));
    EXPECT_TRUE(l.form.editEnabled && l.form.deleteEnabled);
    EXPECT_TRUE(l.msgs.shown.empty());

    const rw::Case before = l.kase;
    l.enter("7/1/2016", "5.00", false);  // a cancelled edit, or none selected, changes nothing
    l.dlg.edit(l.form, 1);
    l.dlg.edit(l.form, -1);
    l.dlg.remove(l.form, -1);
    EXPECT_EQ(l.kase, before);
    EXPECT_EQ(l.msgs.texts(), Texts(Said<TypeParam>::noSelectionWarnings, rw::kNoSelectionWarning));

    l.msgs.clear();
    l.msgs.answerNext(false);
    l.dlg.remove(l.form, 0);
    EXPECT_EQ(l.kase, before);
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
    const std::string q = Said<TypeParam>::question;
    EXPECT_EQ(l.msgs.texts(), (Texts{q + "5/1/2016?", q + "5/1/2016?", q + "6/1/2016?"}));
    EXPECT_EQ(l.msgs.shown[0].title, "WARNING!");
}

TYPED_TEST(Lists, CancelOrAZeroAmountAddsNothing)
{
    TypeParam l;
    l.enter("5/1/2016", "0");
    l.enter("5/1/2016", "100.00", false);
    l.dlg.add(l.form);
    l.dlg.add(l.form);
    EXPECT_EQ(l.msgs.texts(), Texts(2, Said<TypeParam>::notAdded));
    EXPECT_EQ(l.count, 0);
    EXPECT_EQ(l.list.size(), 1u);
}

TYPED_TEST(Lists, ACountThatDisagreesWithTheListIsReportedAndMended)
{
    TypeParam l;
    l.enter("5/1/2016", "100.00");
    l.enter("5/2/2016", "100.00");
    l.enter("6/1/2016", "100.00");
    l.dlg.add(l.form);
    l.dlg.add(l.form);
    l.count = 1;
    l.dlg.add(l.form);
    EXPECT_EQ(l.msgs.texts(), (Texts{std::string(Said<TypeParam>::countError) + " should be the same.  Please call "
                                                                                "Ratewright technical support and "
                                                                                "report this message."}));
    EXPECT_EQ(l.count, 3);
    EXPECT_EQ(l.list.size(), 3u);
}

// ---- Charges and deposits of their own ------------------------------------------

struct Charges : ::testing::Test, ChargeList {};
struct Deposits : ::testing::Test, DepositList {};

TEST_F(Charges, ListedByDateOfLiabilityAnEditEditsTheSelectedLine)
{
    for (const auto& [desc, liability] : {std::pair{"May", "5/1/2016"}, {"March", "3/1/2016"}, {"April", "4/1/2016"},
                                          {"April too", "4/1/2016"}}) {
        enter(liability, "100.00", true, desc);
        dlg.add(form);
    }
    EXPECT_EQ(form.lines, (Texts{"03/01/2016 March           ", "04/01/2016 April           ",
                                 "04/01/2016 April too       ", "05/01/2016 May             "}));
    ASSERT_EQ(msgs.shown.size(), 3u);  // March and April lie before the start
    EXPECT_TRUE(msgs.shown[0].text.starts_with("Addition to Tax liability date is on or before the start date"));
    steps.push_back([](rw::ChargeForm& f) {
        f.liabilityDate = "7/1/2016";
        return true;
    });
    dlg.edit(form, 0);
    EXPECT_EQ(seen.back().description, "March");
    EXPECT_EQ(seen.back().unallocatedLabel, "Unallocated: 0.00");
    EXPECT_EQ(form.lines.back(), "07/01/2016 March           ");
}

TEST_F(Charges, PartsAndTheDateInterestRunsFrom)
{
    steps.push_back([](rw::ChargeForm& f) {
        f = {"Split", "5/1/2016", "", "100.00", "60.00", "30.00", ""};
        return true;
    });
    dlg.add(form);
    EXPECT_EQ(msgs.texts(), (Texts{"No date was given for interest to run on the charge; the date of liability, "
                                   "5/1/2016, is used.",
                                   "The additional charge of 100.00 has not been completely allocated between tax, and "
                                   "penalty which total 90.00."}));
    ASSERT_EQ(count, 1);
    EXPECT_EQ(list[0].cToPen, M("30.00"));
    EXPECT_EQ(list[0].dtIntStart, D(2016, 5, 1));

    msgs.clear();  // a charge that has its interest date keeps it when the field is emptied
    list[0].dtIntStart = D(2016, 7, 1);
    list[0].cToTax = M("70.00");
    steps.push_back([](rw::ChargeForm& f) {
        f.interestDate.clear();
        return true;
    });
    dlg.edit(form, 0);
    EXPECT_EQ(seen.back().interestDate, "7/1/2016");
    EXPECT_EQ(list[0].dtIntStart, D(2016, 7, 1));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Deposits, ListedByDueDateEqualDatesInTheOrderEntered)
{
    for (const auto& [due, amount] : {std::pair{"5/16/2016", "2,000.00"}, {"4/30/2016", "1,000.00"}, {"5/16/2016", "500.00"}}) {
        enter(due, amount);
        dlg.add(form);
    }
    EXPECT_EQ(form.lines, (Texts{"04/30/2016", "05/16/2016", "05/16/2016"}));
    EXPECT_EQ(list[1].cRequired, M("2,000.00"));
    EXPECT_EQ(list[2].cRequired, M("500.00"));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_TRUE(seen[0].required.empty() && seen[0].dueDate.empty() && !seen[0].severe);  // opens empty, with No

    steps.push_back([](rw::DepositForm& f) {
        f.dueDate = "6/15/2016";
        return true;
    });
    dlg.edit(form, 0);
    EXPECT_EQ(seen.back().required, "1000");  // the amount as plain text
    EXPECT_EQ(form.lines, (Texts{"05/16/2016", "05/16/2016", "06/15/2016"}));
}

TEST_F(Deposits, SevereWithoutANoticeDateAsksForOne)
{
    msgs.answerNext(false);  // No: stored as not severe
    enter("4/30/2016", "1,000.00", true, true);
    dlg.add(form);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_TRUE(msgs.shown[0].question);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text, "The IRC Sec. 6656(b)(1)(B) penalty can not be calculated without either the date "
                                  "of the first delinquency notice or the date of the jeopardy assessment.  Do you "
                                  "want to enter one of those dates now?");
    EXPECT_FALSE(rw::IsYes(list[0].bSevere));
    for (const char* notice : {"6/1/2016", ""}) {  // Yes: shown again keeping what was entered
        seen.clear();
        msgs.answerNext(true);
        enter("4/30/2016", "1,000.00", true, true);
        steps.push_back([=](rw::DepositForm& f) {
            f.delinquencyDate = notice;
            return true;
        });
        dlg.add(form);
        ASSERT_EQ(seen.size(), 2u);
        EXPECT_EQ(seen[1].dueDate, "4/30/2016");
        EXPECT_EQ(rw::IsYes(list.back().bSevere), *notice != '\0') << notice;
    }
    EXPECT_EQ(list[1].dtDelinqNotice, D(2016, 6, 1));

    msgs.clear();  // a jeopardy date that is not a date: day 0, after the warning
    steps.push_back([](rw::DepositForm& f) {
        f.dueDate = "4/30/2016";
        f.required = "1,000.00";
        f.assessDate = "9/1/2016";
        f.severe = true;
        f.jeopardyDate = "6/31/2016";
        return true;
    });
    dlg.add(form);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_TRUE(msgs.shown[0].text.starts_with("The Jepardy Assessement date entered as 6/31/2016"));
    EXPECT_TRUE(rw::IsYes(list.back().bSevere));
    EXPECT_EQ(list.back().dtJeopardy, Date());
}

// ---- A money field that is not a number is answered, nothing is stored and
// the dialog stays open --------------------------------------------------------------

TEST(MoneyFields, NotANumberStoresNothing)
{
    const rw::RateTable rates = SimpleTable(0.05f);
    struct Row {
        const char* field;
        const char* typed;
        std::function<bool(rw::Case&, rw::Messages&, const char*)> ok;  // OK allowed, or stored
    };
    for (const Row& r : {
             Row{"Allocate To Tax", "1OO",
                 [&](rw::Case& c, rw::Messages& m, const char* typed) {
                     rw::PaymentForm f;
                     f.amount = "100.00";
                     f.toTax = typed;
                     return rw::PaymentDialog(c, rates, Minimums2018(), m).okAllowed(f);
                 }},
             Row{"Applied As Penalties", "3O",
                 [](rw::Case& c, rw::Messages& m, const char* typed) {
                     rw::ChargeForm f;
                     f.total = "100.00";
                     f.toPenalties = typed;
                     return rw::ChargeDialog(c, m).okAllowed(f);
                 }},
             Row{"Required Deposit", "1,OOO",
                 [](rw::Case& c, rw::Messages& m, const char* typed) {
                     rw::DepositForm f;
                     f.required = typed;
                     return rw::DepositDialog(c, m).okAllowed(f);
                 }},
             Row{"Amount Shown on Return", "9,000.0O",
                 [](rw::Case& c, rw::Messages& m, const char* typed) {
                     rw::FtoPayDialog dlg(c, m);
                     rw::FtoPayForm f = dlg.open();
                     f.calculate = true;
                     f.amountOnReturn = typed;
                     const rw::Accepted a = dlg.accept(f);
                     return a.stored || a.mark != rw::MenuMark::Keep;
                 }},
             Row{"Accuracy Related Underpayment", "1O",
                 [](rw::Case& c, rw::Messages& m, const char* typed) {
                     rw::AccRelDialog dlg(c, m);
                     rw::AccRelForm f = dlg.open();
                     f.calculate = true;
                     f.underpayment = typed;
                     return dlg.accept(f).stored;
                 }},
         }) {
        SCOPED_TRACE(r.field);
        rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
        const rw::Case before = c;
        RecordingMessages msgs;
        EXPECT_FALSE(r.ok(c, msgs, r.typed));
        EXPECT_EQ(c, before);
        EXPECT_EQ(msgs.texts(), Texts{"The " + std::string(r.field) + " entered as " + r.typed
                                      + " is not an amount.  Please enter a number such as 1,234.56."});
    }

    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");  // the rate is a fraction
    RecordingMessages msgs;
    rw::AccRelDialog dlg(c, msgs);
    rw::AccRelForm f = dlg.open();
    f.calculate = true;
    f.underpayment = "10,000.00";
    f.rateChoice = rw::AccRelRateChoice::Other;
    f.rate = "20%";
    EXPECT_FALSE(dlg.accept(f).stored);
    EXPECT_FALSE(rw::IsYes(c.init.bAccRel));
    EXPECT_EQ(msgs.texts(), (Texts{"The Accuracy Related Penalty Rate entered as 20% is not a number.  Please enter "
                                   "the rate as a fraction (20% is .2)."}));
}

}  // namespace
