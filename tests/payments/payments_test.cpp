// Payments: what is owed on the payment date, the Payment Information dialog
// and the Payments list's own reactions. (Adding and deleting, shared with the
// other lists, are in lists_test.cpp; the allocation rules are tested with
// the penalties.)
#include "listdialogs.h"

#include <gtest/gtest.h>

using namespace rwtest;
using rw::PaymentForm;
using Texts = std::vector<std::string>;

namespace {

// 600.00 of tax from 4/15/2016 and a 100.00 penalty charged on 4/15; simple
// interest at 5 %. On 6/27/2016 (73 days) the interest is
// 700.00 x 0.05 x 73 / 365 = 7.00.
struct Payments : ::testing::Test, PaymentList {
    const rw::PaymentDialog& pd = dlg.paymentDialog();
    Payments() { AddCharge(kase, D(2016, 4, 15), {.penalties = "100.00"}); }

    void irs(const char* date, const char* amount, const char* desc = "Check")  // as the dialog allocates it
    {
        steps.push_back([=, this](PaymentForm& f) {
            f.description = desc;
            f.date = date;
            f.amount = amount;
            pd.irsMethodClicked(f);
            return true;
        });
    }
};

TEST_F(Payments, TheIrsMethodFillsTheAllocationOnTheDialog)
{
    const rw::OwedOnDate owed = pd.owedOn("6/27/2016");
    EXPECT_EQ(owed.tax, M("600.00"));
    EXPECT_EQ(owed.penalties, M("100.00"));
    EXPECT_EQ(owed.interest, M("7.00"));
    irs("6/27/2016", "1,000.00", "Check 1001");
    dlg.add(form);
    EXPECT_TRUE(seen[0].irsMethod && !seen[0].allocationEnabled);  // the opening form: the IRS method, empty
    EXPECT_TRUE(seen[0].amount.empty() && seen[0].date.empty());
    ASSERT_EQ(count, 1);
    EXPECT_EQ(list[0].cToTax, M("893.00"));  // 600.00 and the 293.00 left over
    EXPECT_EQ(list[0].cToPen, M("100.00"));
    EXPECT_EQ(list[0].cToInt, M("7.00"));
    EXPECT_TRUE(list[0].sMethod.is("I"));
    EXPECT_EQ(form.lines, (Texts{"06/27/2016 Check 1001      "}));
    EXPECT_TRUE(msgs.shown.empty());
}

// 500.00 x 7.00 / 707.00 = 4.950495... -> 4.9505, shown 4.95; one cent over is allowed.
TEST_F(Payments, TheUsersOwnAllocationShowsTheCeilingAndWarnsAboveIt)
{
    PaymentForm f;
    f.date = "6/27/2016";
    f.amount = "500.00";
    f.irsMethod = false;
    pd.irsMethodClicked(f);
    EXPECT_TRUE(f.allocationEnabled);
    EXPECT_EQ(f.maxInterestLabel, "Max. Interest: 4.95");
    f.toInterest = "4.96";
    pd.interestChanged(f);
    EXPECT_TRUE(msgs.shown.empty());
    f.toInterest = "4.97";
    pd.interestChanged(f);
    EXPECT_EQ(msgs.texts(), (Texts{"The allocation of the payment to interest may be too high since it exceeds $4.95!"}));
    EXPECT_EQ(f.toInterest, "4.97");  // the warning only advises
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 495.03");
    f.irsMethod = true;  // the ceiling goes with the IRS method
    pd.irsMethodClicked(f);
    EXPECT_TRUE(f.maxInterestLabel.empty());

}

TEST_F(Payments, NothingOwedGivesNoCeilingAndTheIrsMethodPutsAllOnTax)
{
    PaymentForm f;
    for (const char* typed : {"1", "12", "120", "1200"}) {  // typed before a date: allocated quietly
        f.amount = typed;
        pd.amountChanged(f);
    }
    EXPECT_EQ(f.toTax, "1,200.00");
    kase.init.tlStart.cTax = Money();
    kase.init.nCharges = 0;
    kase.charges.assign(1, rw::ChargeRec{});
    f.date = "6/27/2016";
    f.amount = "500.00";
    f.irsMethod = false;
    pd.refreshPmtAlloc(f);
    EXPECT_TRUE(f.maxInterestLabel.empty());
    f.irsMethod = true;
    pd.irsMethodClicked(f);
    EXPECT_EQ(f.toTax, "500.00");
    EXPECT_EQ(f.toInterest, "0.00");
    EXPECT_TRUE(msgs.shown.empty());
}

// The case changes between two payments (the initial balance becomes 900.00):
// the second, on the same date, is allocated against what is owed now, the
// first counting as nothing on its own day: 900.00 tax, 100.00 penalties,
// 1,000.00 x 0.05 x 73 / 365 = 10.00 interest.
TEST_F(Payments, EachShowingSeesTheCaseAsItNowStands)
{
    irs("6/27/2016", "700.00");
    dlg.add(form);
    EXPECT_EQ(list[0].cToTax, M("600.00"));
    kase.init.tlStart.cTax = M("900.00");
    irs("6/27/2016", "1,010.00");
    dlg.add(form);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(list[1].cToTax, M("900.00"));
    EXPECT_EQ(list[1].cToPen, M("100.00"));
    EXPECT_EQ(list[1].cToInt, M("10.00"));
}

TEST_F(Payments, RefusedEntriesAddNothing)
{
    steps.push_back([](PaymentForm& f) {  // one cent short
        f = {"Check", "6/27/2016", "500", false, "300", "100", "99.99", true, "", ""};
        return true;
    });
    enter("6/31/2016", "100.00");
    dlg.add(form);
    dlg.add(form);
    const Texts said = msgs.texts();
    ASSERT_EQ(said.size(), 4u);
    EXPECT_EQ(said[0], "The payment of 500 has not been completely allocated between tax, interest and penalty "
                       "which total 499.99.");
    EXPECT_EQ(said[1], "Payment not added!");
    EXPECT_TRUE(said[2].starts_with("The Payment date entered as 6/31/2016"));
    EXPECT_EQ(count, 0);
}

TEST_F(Payments, OnlyAPayrollCaseTakesPaymentsOutOfDateOrderWithoutAWarning)
{
    for (const char* date : {"5/1/2016", "5/1/2016", "4/20/2016"}) {
        enter(date, "100.00");
        dlg.add(form);
    }
    EXPECT_EQ(msgs.texts(), (Texts{"Payments have to be entered in chronological order for this program to be "
                                   "accurate.  This payment is not in chronological order! This payment date: "
                                   "4/20/2016. Previous payment date entered: 5/1/2016."}));
    EXPECT_EQ(count, 3);
    EXPECT_TRUE(form.lines.back().starts_with("04/20/2016"));
    steps.push_back([](PaymentForm& f) {  // an edit keeps the payment's place, though now later than the others
        f.date = "7/1/2016";
        return true;
    });
    dlg.edit(form, 0);
    EXPECT_FALSE(seen.back().irsMethod);  // stored as "T"
    EXPECT_EQ(list[0].dtPmt, D(2016, 7, 1));

    msgs.clear();
    kase.init.bPayroll = kase.init.bAutoArrange = rw::kYes;
    form = dlg.open();
    EXPECT_TRUE(form.payrollControlsVisible && form.autoArrange);
    enter("4/20/2016", "100.00");
    dlg.add(form);
    EXPECT_TRUE(msgs.shown.empty());
}

// An IRS-method payment of 650.00 on 5/1/2016, typed before the 100.00
// penalty was entered (648.68 tax, 1.32 interest), counts in what is owed on
// a later day as a computation allocates it: 600.00 tax and 50.00 of the
// penalty. Owed on 6/27/2016 then: no tax, 50.00 penalties, and interest of
//   4/16-5/1, 16 days on 700.00: 700 x 0.05 x 16 / 365 = 1.5342 -> 1.53
//   5/2-6/27, 57 days on 50.00: 0.3904 -> 0.39; together 1.92
// (Taken as typed it would leave -48.68 tax and 100.00 penalties.)
TEST_F(Payments, OwedOnADayTakesTheIrsMethodPaymentsBeforeItAsTheCaseNowStands)
{
    AddPayment(kase, D(2016, 5, 1), {.tax = "648.68", .interest = "1.32", .method = "I"});
    const rw::OwedOnDate owed = pd.owedOn("6/27/2016");
    EXPECT_EQ(owed.tax, Money());
    EXPECT_EQ(owed.penalties, M("50.00"));
    EXPECT_EQ(owed.interest, M("1.92"));
    EXPECT_EQ(list[0].cToTax, M("648.68"));  // the case keeps what was typed
}

// An IRS-method payment of 800.00 on 5/1/2016 typed before the penalty was
// entered (798.68 tax, 1.32 interest) opens allocated on 5/1 as the case now
// stands: 600.00 tax, 100.00 penalties, 700 x 0.05 x 16 / 365 = 1.53 interest
// and the 98.47 left to tax. Moved to 6/27/2016, its old copy on 5/1 is no
// payment before itself: 600.00 + 100.00 + 7.00 owed and 93.00 left to tax.
TEST_F(Payments, EditingAnIrsMethodPaymentAllocatesItOnTheCaseAsItStands)
{
    AddPayment(kase, D(2016, 5, 1), {.tax = "798.68", .interest = "1.32", .method = "I"});
    form = dlg.open();
    steps.push_back([this](PaymentForm& f) {
        f.date = "6/27/2016";
        pd.dateChanged(f);
        return true;
    });
    dlg.edit(form, 0);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(seen[0].toTax, "698.47");
    EXPECT_EQ(seen[0].toPenalties, "100.00");
    EXPECT_EQ(seen[0].toInterest, "1.53");
    EXPECT_EQ(list[0].dtPmt, D(2016, 6, 27));
    EXPECT_EQ(list[0].cToTax, M("693.00"));
    EXPECT_EQ(list[0].cToPen, M("100.00"));
    EXPECT_EQ(list[0].cToInt, M("7.00"));
    EXPECT_TRUE(msgs.shown.empty());
}

class RecordingProgress : public rw::ArrangeProgress {
public:
    void setVisible(bool v) override { visible.push_back(v); }
    std::vector<bool> visible;
};

// One deposit of 300.00 due 4/15/2016: "Late" 10 days late (5 %: 15.00), "OnTime".
TEST_F(Payments, ClosingWithAutoArrangeReordersAndClearsTheFlag)
{
    kase.init.bPayroll = rw::kYes;
    AddDeposit(kase, D(2016, 4, 15), "300.00", D(2016, 8, 1));
    AddPayment(kase, D(2016, 4, 25), {.tax = "300.00", .desc = "Late"});
    AddPayment(kase, D(2016, 4, 15), {.tax = "300.00", .desc = "OnTime"});
    form = dlg.open();
    form.autoArrange = true;
    RecordingProgress progress;
    dlg.close(form, &progress);
    EXPECT_EQ(list[0].sDesc.trimmed(), "OnTime");
    EXPECT_EQ(kase.init.bAutoArrange, rw::kNo);
    EXPECT_FALSE(form.autoArrange);
    EXPECT_TRUE(form.lines[0].starts_with("04/15/2016"));
    EXPECT_EQ(progress.visible, (std::vector<bool>{true, false}));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_TRUE(msgs.shown[0].text.starts_with("The employer saved $15 by"));

    kase.init.bAutoArrange = rw::kYes;  // unchecked: nothing is searched, the flag is 0 all the same
    std::swap(list[0], list[1]);
    form = dlg.open();
    form.autoArrange = false;
    dlg.close(form);
    EXPECT_EQ(list[0].sDesc.trimmed(), "Late");
    EXPECT_EQ(kase.init.bAutoArrange, rw::kNo);
}

}  // namespace
