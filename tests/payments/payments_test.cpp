// Payments: the allocation on the payment date, the Payment Information
// dialog and the Payments list, with the dialog's showings scripted. (The
// allocation rules themselves are tested with the penalties.)

#include "payments/payments.h"

#include "../penalties/pentest.h"
#include "support/recordingmessages.h"

#include "support/releases.h"

#include <gtest/gtest.h>

#include <deque>

namespace {

using namespace pentest;
using rw::OwedOnDate;
using rw::PaymentForm;

// ---- The dialogs ----------------------------------------------------------------

// Due and start 4/15/2016, stop 12/31/2016, 600.00 of tax and a 100.00 penalty
// charged on 4/15 (interest from 4/15); simple interest at 5 %. On 6/27/2016
// (73 days) the interest is 700.00 x 5 % x 73 / 365 = 7.00.
rw::Case caseWithPenalty(bool payroll = false)
{
    rw::Case c = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "600.00");
    c.init.bPayroll = rw::ToFlag(payroll);
    rw::ChargeRec ch;
    ch.sDesc = "Penalty";
    ch.dtLiab = ch.dtIntStart = D(4, 15, 2016);
    ch.cTotal = ch.cToPen = M("100.00");
    c.charges.assign(1, ch);
    c.init.nCharges = 1;
    return c;
}

class Payments : public ::testing::Test {
protected:
    std::deque<std::function<bool(PaymentForm&)>> steps;
    std::vector<PaymentForm> seen;
    rw::Case kase = caseWithPenalty();
    rw::RateTable rates = SimpleTable(0.05f);
    rwtest::RecordingMessages msgs;
    rw::PaymentsDialog dlg{kase, rates, rwtest::Minimums2018(), msgs, [this](PaymentForm& f) {
                               seen.push_back(f);
                               if (steps.empty())
                                   return false;
                               auto s = steps.front();
                               steps.pop_front();
                               return s(f);
                           }};

    // The user's own allocation.
    static std::function<bool(PaymentForm&)> own(const char* date, const char* amount, const char* tax,
                                                 const char* interest = "0", const char* penalties = "0",
                                                 const char* desc = "Check")
    {
        return [=](PaymentForm& f) {
            f.description = desc;
            f.date = date;
            f.amount = amount;
            f.irsMethod = false;
            f.toTax = tax;
            f.toInterest = interest;
            f.toPenalties = penalties;
            return true;
        };
    }
};

TEST_F(Payments, OwedOnThePaymentDate)
{
    const OwedOnDate owed = dlg.paymentDialog().owedOn("6/27/2016");
    EXPECT_EQ(owed.tax, M("600.00"));
    EXPECT_EQ(owed.penalties, M("100.00"));
    EXPECT_EQ(owed.interest, M("7.00"));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Payments, IrsMethodFillsTheAllocationOnTheDialog)
{
    rw::PaymentsForm list = dlg.open();
    EXPECT_FALSE(list.payrollControlsVisible);
    steps.push_back([this](PaymentForm& f) {
        f.description = "Check 1001";
        f.date = "6/27/2016";
        f.amount = "1,000.00";
        dlg.paymentDialog().irsMethodClicked(f);
        return true;
    });
    dlg.add(list);
    // The opening form: empty, the IRS method chosen, the allocation closed.
    EXPECT_TRUE(seen[0].irsMethod);
    EXPECT_FALSE(seen[0].allocationEnabled);
    EXPECT_TRUE(seen[0].amount.empty() && seen[0].date.empty());
    ASSERT_EQ(kase.init.nPmts, 1);
    const rw::PaymentRec& p = kase.pmts[0];
    // 600.00 tax, 100.00 penalties, 7.00 interest, the 293.00 left to tax.
    EXPECT_EQ(p.cToTax, M("893.00"));
    EXPECT_EQ(p.cToPen, M("100.00"));
    EXPECT_EQ(p.cToInt, M("7.00"));
    EXPECT_EQ(p.cAmount, M("1,000.00"));
    EXPECT_TRUE(p.sMethod.is("I"));
    EXPECT_TRUE(p.sDesc.is("Check 1001"));
    EXPECT_EQ(list.lines, (std::vector<std::string>{"06/27/2016 Check 1001      "}));
    EXPECT_TRUE(list.editEnabled && list.deleteEnabled);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Payments, UserAllocationShowsTheCeilingAndWarnsAboveIt)
{
    const rw::PaymentDialog& pd = dlg.paymentDialog();
    PaymentForm f;
    f.date = "6/27/2016";
    f.amount = "500.00";
    f.irsMethod = false;
    pd.irsMethodClicked(f);
    EXPECT_TRUE(f.allocationEnabled);
    // 500.00 x 7.00 / 707.00 = 4.950495... -> 4.9505, shown 4.95.
    EXPECT_EQ(f.maxInterestLabel, "Max. Interest: 4.95");
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 500.00");

    f.toInterest = "4.96";  // not above 4.9505 + 0.01
    pd.interestChanged(f);
    EXPECT_TRUE(msgs.shown.empty());
    f.toInterest = "4.97";
    pd.interestChanged(f);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The allocation of the payment to interest may be too high since it exceeds $4.95!"}));
    EXPECT_EQ(f.toInterest, "4.97");  // the warning only advises
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 495.03");
}

TEST_F(Payments, NothingOwedOnThePaymentDateGivesNoCeiling)
{
    // No balance and no charge: nothing is owed on 6/27/2016.
    kase.init.tlStart.cTax = Money();
    kase.init.nCharges = 0;
    kase.charges.assign(1, rw::ChargeRec{});
    const rw::PaymentDialog& pd = dlg.paymentDialog();
    PaymentForm f;
    f.date = "6/27/2016";
    f.amount = "500.00";
    f.irsMethod = false;
    f.toInterest = "20.00";
    pd.refreshPmtAlloc(f);
    EXPECT_TRUE(f.maxInterestLabel.empty());
    pd.interestChanged(f);
    EXPECT_TRUE(msgs.shown.empty());
    // With the IRS method it all goes to tax.
    f.irsMethod = true;
    pd.irsMethodClicked(f);
    EXPECT_EQ(f.toTax, "500.00");
    EXPECT_EQ(f.toInterest, "0.00");
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 0.00");
}

TEST_F(Payments, TypingTheAmountBeforeADateAllocatesQuietlyAndTheCeilingGoesWithTheIrsMethod)
{
    const rw::PaymentDialog& pd = dlg.paymentDialog();
    PaymentForm f;
    f.irsMethod = true;
    // Every keystroke of the amount refreshes the allocation; with no date yet
    // nothing is owed and nothing is warned about (the date field warns).
    for (const char* typed : {"1", "12", "120", "1200"}) {
        f.amount = typed;
        pd.amountChanged(f);
    }
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(f.toTax, "1,200.00");
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 0.00");

    // The ceiling shown for the user's own allocation goes when the IRS method
    // comes back: 500.00 x 7.00 / 707.00 -> 4.95 on 6/27/2016.
    f.date = "6/27/2016";
    f.amount = "500.00";
    f.irsMethod = false;
    pd.irsMethodClicked(f);
    EXPECT_EQ(f.maxInterestLabel, "Max. Interest: 4.95");
    f.irsMethod = true;
    pd.irsMethodClicked(f);
    EXPECT_TRUE(f.maxInterestLabel.empty());
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Payments, EachShowingOfThePaymentDialogSeesTheCaseAsItNowStands)
{
    rw::PaymentsForm list = dlg.open();
    // First payment, 6/27/2016: 600.00 tax, 100.00 penalties, 7.00 interest owed.
    steps.push_back([this](PaymentForm& f) {
        f.date = "6/27/2016";
        f.amount = "700.00";
        dlg.paymentDialog().irsMethodClicked(f);
        return true;
    });
    dlg.add(list);
    EXPECT_EQ(kase.pmts[0].cToTax, M("600.00"));
    EXPECT_EQ(kase.pmts[0].cToPen, M("100.00"));
    EXPECT_EQ(kase.pmts[0].cToInt, M("0.00"));

    // The case changes (the initial balance is now 900.00); a second payment on
    // the same date must be allocated against what is owed now, not what was
    // owed when the dialog showed before: payments on or after the date count
    // as nothing, so 900.00 tax, 100.00 penalties and 1,000.00 x 5 % x 73 / 365
    // = 10.00 interest.
    kase.init.tlStart.cTax = M("900.00");
    steps.push_back([this](PaymentForm& f) {
        f.date = "6/27/2016";
        f.amount = "1,010.00";
        dlg.paymentDialog().irsMethodClicked(f);
        return true;
    });
    dlg.add(list);
    ASSERT_EQ(kase.init.nPmts, 2);
    EXPECT_EQ(kase.pmts[1].cToTax, M("900.00"));
    EXPECT_EQ(kase.pmts[1].cToPen, M("100.00"));
    EXPECT_EQ(kase.pmts[1].cToInt, M("10.00"));
}

TEST_F(Payments, AllocationOffByOneCentIsRefused)
{
    rw::PaymentsForm list = dlg.open();
    steps.push_back(own("6/27/2016", "500", "300", "100", "99.99"));
    dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The payment of 500 has not been completely allocated between tax, interest and "
                                "penalty which total 499.99.",
                                "Payment not added!"}));
    EXPECT_EQ(kase.init.nPmts, 0);
    EXPECT_EQ(kase.pmts.size(), 1u);
    EXPECT_TRUE(list.lines.empty());
}

TEST_F(Payments, ZeroAmountCancelAndAnInvalidDateAddNothing)
{
    rw::PaymentsForm list = dlg.open();
    steps.push_back(own("6/27/2016", "0", "0"));
    steps.push_back([](PaymentForm& f) {
        f.amount = "100.00";
        return false;
    });
    steps.push_back(own("6/31/2016", "100.00", "100.00"));
    for (int i = 0; i < 3; ++i)
        dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "Payment not added!", "Payment not added!",
                                "The Payment date entered as 6/31/2016 is not valid.  Unless it is changed, "
                                "somewhere at an inconvenient moment this program is likely to abort.",
                                "Payment not added!"}));
    EXPECT_EQ(kase.init.nPmts, 0);
}

TEST_F(Payments, PaymentOutOfChronologicalOrderIsStoredAndWarnedAbout)
{
    rw::PaymentsForm list = dlg.open();
    steps.push_back(own("5/1/2016", "100.00", "100.00", "0", "0", "A"));
    steps.push_back(own("5/1/2016", "100.00", "100.00", "0", "0", "B"));
    steps.push_back(own("4/20/2016", "100.00", "100.00", "0", "0", "C"));
    for (int i = 0; i < 3; ++i)
        dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "Payments have to be entered in chronological order for this program to be "
                                "accurate.  This payment is not in chronological order! This payment date: "
                                "4/20/2016. Previous payment date entered: 5/1/2016."}));
    EXPECT_EQ(kase.init.nPmts, 3);
    EXPECT_EQ(list.lines.back(), "04/20/2016 C               ");
}

TEST_F(Payments, PayrollCasesTakePaymentsInAnyOrder)
{
    kase.init.bPayroll = rw::kYes;
    kase.init.bAutoArrange = rw::kYes;
    rw::PaymentsForm list = dlg.open();
    EXPECT_TRUE(list.payrollControlsVisible);
    EXPECT_TRUE(list.autoArrange);
    steps.push_back(own("5/1/2016", "100.00", "100.00"));
    steps.push_back(own("4/20/2016", "100.00", "100.00"));
    dlg.add(list);
    dlg.add(list);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Payments, CountThatDisagreesWithTheListIsReportedAndMended)
{
    AddPayment(kase, D(5, 1, 2016), "100.00");
    AddPayment(kase, D(5, 2, 2016), "100.00");
    kase.init.nPmts = 1;
    rw::PaymentsForm list;
    steps.push_back(own("6/1/2016", "100.00", "100.00"));
    dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "AddPmtClick error! nPmts 2 and gInit.nPmts 1 should be the same.  Please call "
                                "Ratewright technical support and report this message."}));
    EXPECT_EQ(kase.init.nPmts, 3);
    EXPECT_EQ(kase.pmts.size(), 3u);
}

TEST_F(Payments, EditKeepsThePlaceAndCancelChangesNothing)
{
    rw::PaymentsForm list = dlg.open();
    steps.push_back(own("5/1/2016", "100.00", "100.00", "0", "0", "A"));
    steps.push_back(own("6/1/2016", "200.00", "150.00", "50.00", "0", "B"));
    dlg.add(list);
    dlg.add(list);
    seen.clear();

    steps.push_back([](PaymentForm& f) {
        f.date = "7/1/2016";
        return true;
    });
    dlg.edit(list, 0);
    EXPECT_EQ(seen[0].description, "A");
    EXPECT_EQ(seen[0].date, "5/1/2016");
    EXPECT_EQ(seen[0].amount, "100.00");
    EXPECT_FALSE(seen[0].irsMethod);  // stored as "T"
    EXPECT_TRUE(seen[0].allocationEnabled);
    EXPECT_EQ(kase.pmts[0].dtPmt, D(7, 1, 2016));  // still first, though now later than B
    EXPECT_TRUE(msgs.shown.empty());

    const rw::Case before = kase;
    steps.push_back([](PaymentForm& f) {
        f.amount = "1.00";
        return false;
    });
    dlg.edit(list, 1);
    EXPECT_EQ(kase, before);
    EXPECT_TRUE(msgs.shown.empty());
    dlg.edit(list, -1);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"No item selected!  Please click on the item you want to select."}));
    EXPECT_EQ(kase, before);
}

// An IRS-method payment of 650.00 on 5/1/2016, typed before the 100.00
// penalty was entered (648.68 tax, 1.32 interest), counts in what is owed on a
// later day as a computation allocates it: 600.00 tax and 50.00 of the
// penalty. Owed on 6/27/2016 then: no tax, 50.00 penalties, and interest of
//   4/16 - 5/1, 16 days on 700.00: 1.534246... -> 1.53
//   the payment's part of interest: 0
//   5/2 - 6/27, 57 days on 50.00:  0.390410... -> 0.39
// (Taken as typed it would leave -48.68 tax and 100.00 penalties.)
TEST_F(Payments, OwedOnADayTakesTheIrsMethodPaymentsBeforeItAsTheCaseNowStands)
{
    AddPayment(kase, D(5, 1, 2016), "650.00");
    kase.pmts[0].cToTax = M("648.68");
    kase.pmts[0].cToInt = M("1.32");
    kase.pmts[0].sMethod = "I";
    const OwedOnDate owed = dlg.paymentDialog().owedOn("6/27/2016");
    EXPECT_EQ(owed.tax, Money());
    EXPECT_EQ(owed.penalties, M("50.00"));
    EXPECT_EQ(owed.interest, M("1.92"));
    EXPECT_EQ(kase.pmts[0].cToTax, M("648.68"));  // the case keeps what was typed
}

// An IRS-method payment of 800.00 on 5/1/2016, typed before the 100.00
// penalty was entered: 600.00 tax and 600.00 x 5 % x 16 / 365 = 1.315068...
// -> 1.32 interest were owed then (4/16 - 5/1), so 798.68 tax and 1.32
// interest.
TEST_F(Payments, EditingAnIrsMethodPaymentAllocatesItOnTheCaseAsItStands)
{
    AddPayment(kase, D(5, 1, 2016), "800.00");
    kase.pmts[0].cToTax = M("798.68");
    kase.pmts[0].cToInt = M("1.32");
    kase.pmts[0].sMethod = "I";
    rw::PaymentsForm list = dlg.open();
    PaymentForm moved;
    steps.push_back([this, &moved](PaymentForm& f) {
        // Moved to 6/27/2016 and allocated there. The payment's old copy on
        // 5/1 is not a payment before itself: 600.00 tax, 100.00 penalties
        // and 7.00 interest are owed (not -98.47 tax and no penalty), so
        // 600.00 + 100.00 + 7.00 and the 93.00 left to tax.
        f.date = "6/27/2016";
        dlg.paymentDialog().dateChanged(f);
        moved = f;
        return true;
    });
    dlg.edit(list, 0);
    // It opens allocated on 5/1 as the case now stands: 600.00 tax, 100.00
    // penalties, 700.00 x 5 % x 16 / 365 = 1.534246... -> 1.53 interest, and
    // the 98.47 left to tax.
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].toTax, "698.47");
    EXPECT_EQ(seen[0].toPenalties, "100.00");
    EXPECT_EQ(seen[0].toInterest, "1.53");
    EXPECT_EQ(seen[0].unallocatedLabel, "Unallocated: 0.00");
    EXPECT_EQ(moved.toTax, "693.00");
    EXPECT_EQ(moved.toPenalties, "100.00");
    EXPECT_EQ(moved.toInterest, "7.00");
    const rw::PaymentRec& p = kase.pmts[0];
    EXPECT_EQ(p.dtPmt, D(6, 27, 2016));
    EXPECT_EQ(p.cToTax, M("693.00"));
    EXPECT_EQ(p.cToPen, M("100.00"));
    EXPECT_EQ(p.cToInt, M("7.00"));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Payments, DeleteAsksAndTheLastDeletionClearsTheCheckMark)
{
    rw::PaymentsForm list = dlg.open();
    steps.push_back(own("5/1/2016", "100.00", "100.00", "0", "0", "A"));
    steps.push_back(own("6/1/2016", "100.00", "100.00", "0", "0", "B"));
    dlg.add(list);
    dlg.add(list);

    dlg.remove(list, -1);
    msgs.answerNext(false);
    dlg.remove(list, 0);
    EXPECT_EQ(kase.init.nPmts, 2);
    msgs.answerNext(true);
    dlg.remove(list, 0);
    EXPECT_EQ(kase.pmts[0].sDesc.trimmed(), "B");
    msgs.answerNext(true);
    dlg.remove(list, 0);
    EXPECT_EQ(kase.init.nPmts, 0);
    EXPECT_EQ(kase.pmts.size(), 1u);
    EXPECT_TRUE(list.lines.empty());
    EXPECT_FALSE(list.editEnabled);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "No item selected!  Please click on the item you want to select.",
                                "Do you want to delete payment information for payment date 5/1/2016?",
                                "Do you want to delete payment information for payment date 5/1/2016?",
                                "Do you want to delete payment information for payment date 6/1/2016?"}));
    EXPECT_EQ(msgs.shown[1].title, "WARNING!");
}

class RecordingProgress : public rw::ArrangeProgress {
public:
    void setVisible(bool v) override { visible.push_back(v); }
    void setVariationsText(std::string_view t) override { variations = t; }
    std::vector<bool> visible;
    std::string variations;
};

TEST_F(Payments, ClosingWithAutoArrangeReordersAndClearsTheFlag)
{
    kase.init.bPayroll = rw::kYes;
    AddDeposit(kase, D(4, 15, 2016), "300.00", D(8, 1, 2016));
    AddPayment(kase, D(4, 25, 2016), "300.00", "Late");    // 10 days: 5 %, 15.00
    AddPayment(kase, D(4, 15, 2016), "300.00", "OnTime");  // on the due date: 0
    rw::PaymentsForm list = dlg.open();
    list.autoArrange = true;
    RecordingProgress progress;
    dlg.close(list, &progress);
    EXPECT_EQ(kase.pmts[0].sDesc.trimmed(), "OnTime");
    EXPECT_EQ(kase.pmts[1].sDesc.trimmed(), "Late");
    EXPECT_EQ(kase.init.bAutoArrange, rw::kNo);
    EXPECT_FALSE(list.autoArrange);
    EXPECT_EQ(list.lines[0].substr(0, 10), "04/15/2016");
    EXPECT_EQ(progress.visible, (std::vector<bool>{true, false}));
    EXPECT_EQ(progress.variations, "Variations to Consider: 2");
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The employer saved $15 by having the Brindlecote optimize the application of "
                                "deposits to liabilities. The program calculated penalties for all 2 ways the "
                                "payments could have been arranged. Please refer to Rev. Proc. 99-10 and IRC "
                                "Section 6656(e) to properly report the application of deposits."}));

    // Unchecked: nothing is searched, and the flag is 0 all the same.
    kase.init.bAutoArrange = rw::kYes;
    std::swap(kase.pmts[0], kase.pmts[1]);
    rw::PaymentsForm again = dlg.open();
    again.autoArrange = false;
    dlg.close(again);
    EXPECT_EQ(kase.pmts[0].sDesc.trimmed(), "Late");
    EXPECT_EQ(kase.init.bAutoArrange, rw::kNo);
}

TEST_F(Payments, PayrollHintPointsToTheManual)
{
    int manual = 0;
    rw::PaymentsDialog withManual(kase, rates, rwtest::Minimums2018(), msgs, {}, [&] { ++manual; });
    withManual.payrollHint();
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"When the help file comes up, search for MATCH PAYROLL."}));
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
    EXPECT_EQ(manual, 1);
}

TEST_F(Payments, MoneyFieldThatIsNotAnAmountKeepsTheDialogOpen)
{
    PaymentForm f;
    f.amount = "100.00";
    f.toTax = "1OO";
    EXPECT_FALSE(dlg.paymentDialog().okAllowed(f));
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The Allocate To Tax entered as 1OO is not an amount.  Please enter a number such as "
                                "1,234.56."}));
}

}  // namespace
