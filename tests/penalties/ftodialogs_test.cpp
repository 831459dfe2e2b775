// The failure-to-file and failure-to-pay input dialogs as logic.

#include "penalties/ftodialogs.h"

#include "pentest.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;
using rw::MenuMark;

class FtoDialogs : public ::testing::Test {
protected:
    rw::Case kase = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10,000.00");
    rwtest::RecordingMessages msgs;
};

TEST_F(FtoDialogs, FailureToFileOpensFromTheCaseAndStoresOnOk)
{
    int extendedOpened = 0;
    rw::FtoFileDialog dlg(kase, msgs, [&] { ++extendedOpened; });
    rw::FtoFileForm f = dlg.open();
    EXPECT_FALSE(f.calculate);
    EXPECT_FALSE(f.datesEnabled);

    f.calculate = true;
    rw::FtoFileDialog::choiceChanged(f);
    EXPECT_TRUE(f.datesEnabled);
    f.assessDate = "10/31/2016";
    f.filedDate = "9/20/2016";
    dlg.assessLeft(f);
    dlg.filedLeft(f);
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(extendedOpened, 1);  // leaving the filing date opens the Extended Due Date dialog

    const rw::Accepted a = dlg.accept(f);
    EXPECT_TRUE(a.stored);
    EXPECT_EQ(a.mark, MenuMark::Set);
    EXPECT_TRUE(rw::IsYes(kase.init.bFtoFile));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_EQ(kase.init.dtFtoFileAssess, D(10, 31, 2016));
    EXPECT_EQ(kase.init.dtFiled, D(9, 20, 2016));

    const rw::FtoFileForm again = dlg.open();
    EXPECT_TRUE(again.calculate);
    EXPECT_TRUE(again.datesEnabled);
    EXPECT_EQ(again.assessDate, "10/31/2016");
    EXPECT_EQ(again.filedDate, "9/20/2016");
}

TEST_F(FtoDialogs, FilingDateOutsideThePeriodIsWarnedAboutThenTheExtendedDueDateOpens)
{
    std::vector<std::string> order;
    rw::FtoFileDialog dlg(kase, msgs, [&] { order.push_back("extended"); });
    rw::FtoFileForm f;
    f.calculate = true;
    f.filedDate = "12/31/2016";
    dlg.filedLeft(f);
    ASSERT_EQ(msgs.texts(), (std::vector<std::string>{
                                "Filing date is on or after the stop date of the interest calculation.  Unreliable "
                                "results or an unplanned termination may occurr if this is not corrected. You might "
                                "want to use 12/30/2016 instead."}));
    EXPECT_EQ(order, (std::vector<std::string>{"extended"}));
}

TEST_F(FtoDialogs, FailureToFileNoClearsTheFlagAndCheckMark)
{
    kase.init.bFtoFile = kase.init.bAnyPenalties = rw::kYes;
    rw::FtoFileDialog dlg(kase, msgs);
    rw::FtoFileForm f = dlg.open();
    f.calculate = false;
    rw::FtoFileDialog::choiceChanged(f);
    EXPECT_FALSE(f.datesEnabled);
    const rw::Accepted a = dlg.accept(f);
    EXPECT_EQ(a.mark, MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bFtoFile));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(FtoDialogs, FailureToFileDateThatIsNotADateIsStoredAsDayZero)
{
    rw::FtoFileDialog dlg(kase, msgs);
    rw::FtoFileForm f;
    f.calculate = true;
    f.assessDate = "13/45/2016";
    f.filedDate = "9/20/2016";
    EXPECT_TRUE(dlg.accept(f).stored);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The Failure To File assessment date entered as 13/45/2016 is not valid.  Unless it "
                                "is changed, somewhere at an inconvenient moment this program is likely to abort."}));
    EXPECT_EQ(kase.init.dtFtoFileAssess, Date());
}

TEST_F(FtoDialogs, FailureToPayShowsTheInitialBalanceWhileNoAmountOnReturnIsKept)
{
    rw::FtoPayDialog dlg(kase, msgs);
    rw::FtoPayForm f = dlg.open();
    EXPECT_FALSE(f.calculate);
    EXPECT_EQ(f.amountOnReturn, "10,000.00");
    EXPECT_FALSE(f.noteVisible);
    EXPECT_TRUE(f.increasedChoiceVisible);
    EXPECT_FALSE(f.assessEnabled || f.amountEnabled || f.increasedChoiceEnabled || f.increasedStartEnabled);

    kase.init.cAmtOnReturn = M("2,500.25");
    f = dlg.open();
    EXPECT_EQ(f.amountOnReturn, "2,500.25");
}

TEST_F(FtoDialogs, FailureToPayStoresTheIncreasedRate)
{
    rw::FtoPayDialog dlg(kase, msgs);
    rw::FtoPayForm f = dlg.open();
    f.calculate = true;
    rw::FtoPayDialog::choiceChanged(f);
    EXPECT_TRUE(f.assessEnabled && f.amountEnabled && f.increasedChoiceEnabled);
    EXPECT_FALSE(f.increasedStartEnabled);
    f.increasedRate = true;
    rw::FtoPayDialog::increasedChoiceChanged(f);
    EXPECT_TRUE(f.increasedStartEnabled);
    f.assessDate = "10/31/2016";
    f.amountOnReturn = "9,000.00";
    f.increasedStartDate = "7/1/2016";
    const rw::Accepted a = dlg.accept(f);
    EXPECT_TRUE(a.stored);
    EXPECT_EQ(a.mark, MenuMark::Set);
    EXPECT_TRUE(rw::IsYes(kase.init.bFtoPay));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_TRUE(rw::IsYes(kase.init.b6651d1));
    EXPECT_EQ(kase.init.dtFtoPayAssess, D(10, 31, 2016));
    EXPECT_EQ(kase.init.cAmtOnReturn, M("9,000.00"));
    EXPECT_EQ(kase.init.dt6651d1Start, D(7, 1, 2016));
    EXPECT_TRUE(msgs.shown.empty());

    const rw::FtoPayForm again = dlg.open();
    EXPECT_TRUE(again.calculate && again.increasedRate && again.increasedStartEnabled);
    EXPECT_EQ(again.increasedStartDate, "7/1/2016");
    EXPECT_EQ(again.assessDate, "10/31/2016");
}

TEST_F(FtoDialogs, FailureToPayNoLeavesTheIncreasedRateFlag)
{
    kase.init.bFtoPay = kase.init.b6651d1 = rw::kYes;
    kase.init.dt6651d1Start = D(7, 1, 2016);
    rw::FtoPayDialog dlg(kase, msgs);
    rw::FtoPayForm f = dlg.open();
    f.calculate = false;
    rw::FtoPayDialog::choiceChanged(f);
    // Turning the penalty off in the form closes and empties the increased rate.
    EXPECT_FALSE(f.increasedRate);
    EXPECT_FALSE(f.increasedStartEnabled);
    EXPECT_TRUE(f.increasedStartDate.empty());
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bFtoPay));
    EXPECT_TRUE(rw::IsYes(kase.init.b6651d1));
}

TEST_F(FtoDialogs, FailureToPayAmountThatIsNotANumberStoresNothing)
{
    rw::FtoPayDialog dlg(kase, msgs);
    rw::FtoPayForm f = dlg.open();
    f.calculate = true;
    f.assessDate = "10/31/2016";
    f.amountOnReturn = "9,000.0O";
    const rw::Case before = kase;
    const rw::Accepted a = dlg.accept(f);
    EXPECT_FALSE(a.stored);
    EXPECT_EQ(a.mark, MenuMark::Keep);
    EXPECT_EQ(kase, before);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"The Amount Shown on Return entered as 9,000.0O is not an "
                                                      "amount.  Please enter a number such as 1,234.56."}));
}

TEST_F(FtoDialogs, ReturnsDueBy1986HaveNoIncreasedRate)
{
    struct Row {
        Date due;
        bool note;
    };
    for (const Row& r : {Row{D(12, 31, 1986), true}, Row{D(1, 1, 1987), false}}) {
        kase.init.dtDue = r.due;
        kase.init.bFtoPay = kase.init.b6651d1 = rw::kYes;
        rw::FtoPayDialog dlg(kase, msgs);
        const rw::FtoPayForm f = dlg.open();
        EXPECT_EQ(f.noteVisible, r.note) << r.due;
        EXPECT_EQ(f.increasedChoiceVisible, !r.note) << r.due;
        EXPECT_EQ(f.increasedRate, !r.note) << r.due;
        EXPECT_EQ(rw::IsYes(kase.init.b6651d1), !r.note) << r.due;
    }
    EXPECT_STREQ(rw::kIncreasedRateNote, "\xA7" "6651(d)(1) Penalty is only available for returns due after 12/31/1986.");
}

}  // namespace
