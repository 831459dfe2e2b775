// Other charges: the Other Charges list and the Addition To Tax dialog, with
// the dialog's showings scripted.

#include "payments/charges.h"

#include "../penalties/pentest.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

#include <deque>

namespace {

using namespace pentest;
using rw::ChargeForm;

class Charges : public ::testing::Test {
protected:
    std::deque<std::function<bool(ChargeForm&)>> steps;
    std::vector<ChargeForm> seen;
    rw::Case kase = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "1,000.00");
    rwtest::RecordingMessages msgs;
    rw::ChargesDialog dlg{kase, msgs, [this](ChargeForm& f) {
                              seen.push_back(f);
                              if (steps.empty())
                                  return false;
                              auto s = steps.front();
                              steps.pop_front();
                              return s(f);
                          }};

    static std::function<bool(ChargeForm&)> enter(const char* desc, const char* liab, const char* intStart,
                                                  const char* total, const char* tax, const char* pen)
    {
        return [=](ChargeForm& f) {
            f.description = desc;
            f.liabilityDate = liab;
            f.interestDate = intStart;
            f.total = total;
            f.toTax = tax;
            f.toPenalties = pen;
            return true;
        };
    }
};

TEST_F(Charges, ListedByDateOfLiability)
{
    rw::ChargesForm list = dlg.open();
    EXPECT_FALSE(list.editEnabled);
    steps.push_back(enter("May", "5/1/2016", "5/1/2016", "100.00", "100.00", "0"));
    steps.push_back(enter("March", "3/1/2016", "5/2/2016", "100.00", "100.00", "0"));
    steps.push_back(enter("April", "4/1/2016", "5/3/2016", "100.00", "100.00", "0"));
    steps.push_back(enter("April too", "4/1/2016", "5/4/2016", "100.00", "0", "100.00"));
    dlg.add(list);
    for (int i = 0; i < 3; ++i)
        dlg.add(list);
    EXPECT_EQ(list.lines, (std::vector<std::string>{"03/01/2016 March           ", "04/01/2016 April           ",
                                                    "04/01/2016 April too       ", "05/01/2016 May             "}));
    EXPECT_EQ(kase.init.nCharges, 4);
    EXPECT_TRUE(list.editEnabled && list.deleteEnabled);
    // March and April lie before the start of the calculation.
    EXPECT_EQ(msgs.shown.size(), 3u);
    EXPECT_EQ(msgs.shown[0].text,
              "Addition to Tax liability date is on or before the start date of the interest calculation.  "
              "Unreliable results or an unplanned termination may occurr if this is not corrected. You might want "
              "to use 4/16/2016 instead.");
}

TEST_F(Charges, ZeroTotalOrCancelAddsNothing)
{
    rw::ChargesForm list = dlg.open();
    steps.push_back(enter("Zero", "5/1/2016", "5/1/2016", "0", "0", "0"));
    steps.push_back([](ChargeForm& f) {
        f.total = "100.00";
        return false;
    });
    dlg.add(list);
    dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"Charge not added!", "Charge not added!"}));
    EXPECT_EQ(kase.init.nCharges, 0);
    EXPECT_EQ(kase.charges.size(), 1u);
}

TEST_F(Charges, ChargeNotFullyAllocatedIsKeptWithAWarning)
{
    rw::ChargesForm list = dlg.open();
    steps.push_back(enter("Split", "5/1/2016", "5/1/2016", "100.00", "60.00", "30.00"));
    dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The additional charge of 100.00 has not been completely allocated between tax, and "
                                "penalty which total 90.00."}));
    ASSERT_EQ(kase.init.nCharges, 1);
    EXPECT_EQ(kase.charges[0].cToTax, M("60.00"));
    EXPECT_EQ(kase.charges[0].cToPen, M("30.00"));
}

TEST_F(Charges, ChargeWithoutAnInterestDateRunsFromItsDateOfLiability)
{
    rw::ChargesForm list = dlg.open();
    ChargeForm shown;
    steps.push_back([&](ChargeForm& f) {
        enter("Addition", "6/1/2016", "", "250.00", "250.00", "0")(f);
        return true;
    });
    dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"No date was given for interest to run on the charge; the date "
                                                      "of liability, 6/1/2016, is used."}));
    ASSERT_EQ(kase.init.nCharges, 1);
    EXPECT_EQ(kase.charges[0].dtIntStart, D(6, 1, 2016));

    // A charge that has its interest date keeps it when the field is emptied.
    msgs.clear();
    kase.charges[0].dtIntStart = D(7, 1, 2016);
    steps.push_back([](ChargeForm& f) {
        f.interestDate.clear();
        return true;
    });
    dlg.edit(list, 0);
    EXPECT_EQ(seen.back().interestDate, "7/1/2016");
    EXPECT_EQ(kase.charges[0].dtIntStart, D(7, 1, 2016));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Charges, EditAfterTheListWasSortedEditsTheChargeOnTheSelectedLine)
{
    rw::ChargesForm list = dlg.open();
    steps.push_back(enter("Later", "6/1/2016", "6/1/2016", "100.00", "100.00", "0"));
    steps.push_back(enter("Earlier", "5/1/2016", "5/1/2016", "200.00", "200.00", "0"));
    dlg.add(list);
    dlg.add(list);
    steps.push_back([](ChargeForm& f) {
        f.liabilityDate = "7/1/2016";
        return true;
    });
    dlg.edit(list, 0);
    EXPECT_EQ(seen.back().description, "Earlier");
    EXPECT_EQ(seen.back().total, "200.00");
    EXPECT_EQ(seen.back().unallocatedLabel, "Unallocated: 0.00");
    EXPECT_EQ(list.lines, (std::vector<std::string>{"06/01/2016 Later           ", "07/01/2016 Earlier         "}));

    const rw::Case before = kase;
    steps.push_back([](ChargeForm& f) {
        f.total = "1.00";
        return false;
    });
    dlg.edit(list, 1);
    EXPECT_EQ(kase, before);
    dlg.edit(list, -1);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"No item selected!  Please click on the item you want to select."}));
}

TEST_F(Charges, DeletingTheOnlyChargeClearsTheCheckMark)
{
    rw::ChargesForm list = dlg.open();
    steps.push_back(enter("One", "6/1/2016", "6/1/2016", "100.00", "100.00", "0"));
    dlg.add(list);
    msgs.answerNext(true);
    dlg.remove(list, 0);
    EXPECT_EQ(kase.init.nCharges, 0);
    EXPECT_EQ(kase.charges.size(), 1u);
    EXPECT_EQ(kase.charges[0], rw::ChargeRec{});
    EXPECT_TRUE(list.lines.empty());
    EXPECT_EQ(msgs.texts(),
              (std::vector<std::string>{"Do you want to delete charge information for charge liability date 6/1/2016?"}));
    EXPECT_EQ(msgs.shown[0].title, "WARNING!");
}

TEST_F(Charges, CountThatDisagreesWithTheListIsReportedAndMended)
{
    rw::ChargeRec ch;
    ch.dtLiab = ch.dtIntStart = D(5, 1, 2016);
    ch.cTotal = ch.cToTax = M("10.00");
    kase.charges.assign(2, ch);
    kase.init.nCharges = 1;
    rw::ChargesForm list;
    steps.push_back(enter("Third", "6/1/2016", "6/1/2016", "100.00", "100.00", "0"));
    dlg.add(list);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "AddChrgClick error! nChrgs 2 and gInit.nCharges 1 should be the same.  Please call "
                                "Ratewright technical support and report this message."}));
    EXPECT_EQ(kase.init.nCharges, 3);
}

TEST_F(Charges, DetailDialogReactions)
{
    rw::ChargeDialog d(kase, msgs);
    ChargeForm f;
    f.total = "100.00";
    f.toTax = "60.00";
    f.toPenalties = "30.00";
    rw::ChargeDialog::calcUnallocCharge(f);
    EXPECT_EQ(f.unallocatedLabel, "Unallocated: 10.00");
    f.liabilityDate = "12/31/2016";
    d.liabilityLeft(f);
    f.liabilityDate = "2/30/2016";
    d.liabilityLeft(f);
    EXPECT_EQ(msgs.texts(),
              (std::vector<std::string>{
                  "Addition to Tax liability date is on or after the stop date of the interest calculation.  "
                  "Unreliable results or an unplanned termination may occurr if this is not corrected. You might "
                  "want to use 12/30/2016 instead.",
                  "The Charge date entered as 2/30/2016 is not valid.  Unless it is changed, somewhere at an "
                  "inconvenient moment this program is likely to abort."}));
    msgs.clear();
    f.toPenalties = "3O";
    EXPECT_FALSE(d.okAllowed(f));
    EXPECT_EQ(msgs.shown.size(), 1u);
}

}  // namespace
