// The penalty dialogs as logic: failure to file, failure to pay and
// accuracy-related. (The payroll deposit dialogs are tested with the other
// lists in tests/payments, as is a money field that is not a number.)
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include "penalties/accreldialog.h"
#include "penalties/ftodialogs.h"

#include <gtest/gtest.h>

using namespace rwtest;
using rw::MenuMark;

namespace {

struct Dialogs : ::testing::Test {
    rw::Case kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    RecordingMessages msgs;
};

TEST_F(Dialogs, FailureToFileStoresOnOkAndNoClearsTheMark)
{
    std::vector<std::size_t> extendedOpened;  // after how many warnings
    rw::FtoFileDialog dlg(kase, msgs, [&] { extendedOpened.push_back(msgs.shown.size()); });
    rw::FtoFileForm f = dlg.open();
    f.calculate = true;
    rw::FtoFileDialog::choiceChanged(f);
    EXPECT_TRUE(f.datesEnabled);
    f.filedDate = "12/31/2016";  // on the stop date: warned, then the Extended Due Date dialog
    dlg.filedLeft(f);
    EXPECT_TRUE(msgs.shown.at(0).text.starts_with("Filing date is on or after the stop date"));
    EXPECT_EQ(extendedOpened, std::vector<std::size_t>{1});

    f.assessDate = "13/45/2016";  // not a date: stored as day 0, after the warning
    f.filedDate = "9/20/2016";
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Set);
    EXPECT_TRUE(msgs.shown.back().text.starts_with("The Failure To File assessment date entered as 13/45/2016"));
    EXPECT_TRUE(rw::IsYes(kase.init.bFtoFile) && rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_EQ(kase.init.dtFtoFileAssess, Date());
    EXPECT_EQ(kase.init.dtFiled, D(2016, 9, 20));
    EXPECT_EQ(dlg.open().filedDate, "9/20/2016");
    f.calculate = false;
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bFtoFile));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
}

TEST_F(Dialogs, FailureToPayStoresTheAmountAndTheIncreasedRate)
{
    rw::FtoPayDialog dlg(kase, msgs);
    rw::FtoPayForm f = dlg.open();
    EXPECT_EQ(f.amountOnReturn, "10,000.00");  // the initial balance while no amount is kept
    f.calculate = true;
    rw::FtoPayDialog::choiceChanged(f);
    EXPECT_TRUE(f.assessEnabled && f.amountEnabled && f.increasedChoiceEnabled && !f.increasedStartEnabled);
    f.increasedRate = true;
    rw::FtoPayDialog::increasedChoiceChanged(f);
    EXPECT_TRUE(f.increasedStartEnabled);
    f.assessDate = "10/31/2016";
    f.amountOnReturn = "9,000.00";
    f.increasedStartDate = "7/1/2016";
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Set);
    EXPECT_TRUE(rw::IsYes(kase.init.bFtoPay) && rw::IsYes(kase.init.b6651d1));
    EXPECT_EQ(kase.init.dtFtoPayAssess, D(2016, 10, 31));
    EXPECT_EQ(kase.init.cAmtOnReturn, M("9,000.00"));
    EXPECT_EQ(kase.init.dt6651d1Start, D(2016, 7, 1));
    EXPECT_EQ(dlg.open().amountOnReturn, "9,000.00");

    f.calculate = false;  // No closes and empties the increased rate; the case keeps its flag
    rw::FtoPayDialog::choiceChanged(f);
    EXPECT_FALSE(f.increasedRate || f.increasedStartEnabled);
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bFtoPay));
    EXPECT_TRUE(rw::IsYes(kase.init.b6651d1));
    EXPECT_TRUE(msgs.shown.empty());
}

// The increased failure-to-pay rate is for returns due after 1986; the
// accuracy-related penalty for returns due from 1990.
TEST_F(Dialogs, PenaltiesOfReturnsDueTooEarlyAreTurnedOff)
{
    for (const auto& [due, off] : {std::pair{D(1986, 12, 31), true}, {D(1987, 1, 1), false}}) {
        kase.init.dtDue = due;
        kase.init.bFtoPay = kase.init.b6651d1 = rw::kYes;
        const rw::FtoPayForm f = rw::FtoPayDialog(kase, msgs).open();
        EXPECT_EQ(f.noteVisible, off) << due;
        EXPECT_EQ(f.increasedChoiceVisible, !off) << due;
        EXPECT_EQ(rw::IsYes(kase.init.b6651d1), !off) << due;
    }
    for (const auto& [due, off] : {std::pair{D(1989, 12, 31), true}, {D(1990, 1, 1), false}}) {
        kase.init.dtDue = due;
        kase.init.bAccRel = rw::kYes;
        const rw::AccRelForm f = rw::AccRelDialog(kase, msgs).open();
        EXPECT_EQ(f.calculate, !off) << due;
        EXPECT_EQ(f.note, off ? "Since the due date of the return is before 1990.  The Accuracy Related penalty "
                                "should not be used."
                              : "")
            << due;
        EXPECT_EQ(rw::IsYes(kase.init.bAccRel), !off) << due;
    }
}

TEST_F(Dialogs, AccuracyRelatedRateChoicesOkAndNo)
{
    rw::AccRelDialog dlg(kase, msgs);
    for (const auto& [rate, choice, text] : {std::tuple{0.2f, rw::AccRelRateChoice::Normal, ".20"},
                                             {0.4f, rw::AccRelRateChoice::EconomicSubstance, ".40"},
                                             {0.3f, rw::AccRelRateChoice::Other, ".30"}}) {
        kase.init.bAccRel = rw::kYes;
        kase.init.fAccRelRate = rate;
        const rw::AccRelForm f = dlg.open();  // reopens with the stored choice
        EXPECT_EQ(f.rateChoice, choice) << text;
        EXPECT_EQ(f.rate, text);
        EXPECT_EQ(f.rateEnabled, choice == rw::AccRelRateChoice::Other) << text;
        rw::AccRelForm clicked = f;  // a click fills the field; Other keeps its text
        clicked.rate = ".33";
        rw::AccRelDialog::rateChoiceClicked(clicked);
        EXPECT_EQ(clicked.rate, choice == rw::AccRelRateChoice::Other ? ".33" : text);
    }
    kase.init.bAccRel = rw::kNo;
    rw::AccRelForm f = dlg.open();
    f.calculate = true;
    dlg.calculateChanged(f);
    f.underpayment = "10,000.00";
    EXPECT_TRUE(dlg.accept(f).stored);
    EXPECT_EQ(kase.init.fAccRelRate, 0.2f);  // a new case's Yes takes the normal rate
    f.underpayment = "1,234.57";
    f.rateChoice = rw::AccRelRateChoice::Other;
    f.rate = ".25";
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Set);
    EXPECT_TRUE(rw::IsYes(kase.init.bAccRel) && rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_EQ(kase.init.cAccRelAmt, M("1,234.57"));
    EXPECT_EQ(kase.init.fAccRelRate, 0.25f);
    EXPECT_TRUE(dlg.wantsExtendedDueDate());
    f.calculate = false;  // No turns the penalty off at once, even if the dialog is then cancelled
    dlg.calculateChanged(f);
    EXPECT_FALSE(rw::IsYes(kase.init.bAccRel));
    EXPECT_FALSE(dlg.wantsExtendedDueDate());
    kase.init.bAccRel = rw::kYes;
    EXPECT_EQ(dlg.accept(f).mark, MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bAccRel));
    EXPECT_TRUE(msgs.shown.empty());
}

}  // namespace
