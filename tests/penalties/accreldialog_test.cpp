// The accuracy-related penalty dialog as logic.

#include "penalties/accreldialog.h"

#include "pentest.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using namespace pentest;
using rw::AccRelField;
using rw::AccRelRateChoice;

class AccRelDialogTest : public ::testing::Test {
protected:
    rw::Case kase = Federal(D(4, 15, 2016), D(4, 15, 2016), D(12, 31, 2016), "10,000.00");
    rwtest::RecordingMessages msgs;
    rw::AccRelDialog dlg{kase, msgs};
};

TEST_F(AccRelDialogTest, ReopensWithTheStoredRateChoice)
{
    struct Row {
        float rate;
        AccRelRateChoice choice;
        const char* text;
        bool open;
    };
    const Row rows[] = {
        {0.2f, AccRelRateChoice::Normal, ".20", false},
        {0.4f, AccRelRateChoice::EconomicSubstance, ".40", false},
        {0.3f, AccRelRateChoice::Other, ".30", true},
    };
    for (const Row& r : rows) {
        kase.init.bAccRel = rw::kYes;
        kase.init.cAccRelAmt = M("10,000.00");
        kase.init.fAccRelRate = r.rate;
        const rw::AccRelForm f = dlg.open();
        EXPECT_TRUE(f.calculate);
        EXPECT_TRUE(f.underpaymentEnabled);
        EXPECT_EQ(f.underpayment, "10,000.00");
        EXPECT_EQ(f.rateChoice, r.choice) << r.text;
        EXPECT_EQ(f.rate, r.text);
        EXPECT_EQ(f.rateEnabled, r.open) << r.text;
        EXPECT_TRUE(f.note.empty());
    }
}

TEST_F(AccRelDialogTest, ReturnsDueBefore1990OpenWithTheNoteAndThePenaltyOff)
{
    kase.init.dtDue = D(12, 31, 1989);
    kase.init.bAccRel = rw::kYes;
    const rw::AccRelForm f = dlg.open();
    EXPECT_FALSE(f.calculate);
    EXPECT_FALSE(f.underpaymentEnabled);
    EXPECT_EQ(f.note, "Since the due date of the return is before 1990.  The Accuracy Related penalty should not be used.");
    EXPECT_FALSE(rw::IsYes(kase.init.bAccRel));

    kase.init.dtDue = D(1, 1, 1990);
    kase.init.bAccRel = rw::kYes;
    EXPECT_TRUE(dlg.open().note.empty());
    EXPECT_TRUE(rw::IsYes(kase.init.bAccRel));
}

TEST_F(AccRelDialogTest, ChoosingNoTurnsThePenaltyOffAtOnce)
{
    kase.init.bAccRel = rw::kYes;
    rw::AccRelForm f = dlg.open();
    f.calculate = false;
    dlg.calculateChanged(f);
    EXPECT_FALSE(f.underpaymentEnabled);
    EXPECT_FALSE(rw::IsYes(kase.init.bAccRel));  // even if the dialog is now cancelled
    EXPECT_FALSE(dlg.wantsExtendedDueDate());
}

TEST_F(AccRelDialogTest, RateChoicesFillTheRateField)
{
    rw::AccRelForm f = dlg.open();
    f.rate = ".33";
    f.rateChoice = AccRelRateChoice::Other;
    rw::AccRelDialog::rateChoiceClicked(f);
    EXPECT_TRUE(f.rateEnabled);
    EXPECT_TRUE(f.focusRate);
    EXPECT_EQ(f.rate, ".33");  // keeps its text
    f.rateChoice = AccRelRateChoice::EconomicSubstance;
    rw::AccRelDialog::rateChoiceClicked(f);
    EXPECT_EQ(f.rate, ".40");
    EXPECT_FALSE(f.rateEnabled);
    f.rateChoice = AccRelRateChoice::Normal;
    rw::AccRelDialog::rateChoiceClicked(f);
    EXPECT_EQ(f.rate, ".20");
    EXPECT_FALSE(f.rateEnabled);
}

TEST_F(AccRelDialogTest, HintsFollowTheFocus)
{
    rw::AccRelForm f;
    const std::pair<AccRelField, const char*> hints[] = {
        {AccRelField::Underpayment, "The Accuracy Related underpayment is defined at I.R.C. Section 6664.  DO NOT "
                                    "INCLUDE ANY AMOUNT RELATED TO FRAUD!"},
        {AccRelField::NormalRate, "Choose this for the normal Accuracy Related Penalty rate."},
        {AccRelField::EconomicSubstanceRate, "Choose this for the Economic Substance Accuracy Related Penalty rate."},
        {AccRelField::OtherRate, "Click on this if you want a penalty rate other than the normal or the Economic "
                                 "Substance rate.  Specify the rate you want to use in the Accuracy Related Penalty "
                                 "Rate input box."},
        {AccRelField::Rate, "You can change the Accuracy Related Penalty rate here. Change this only in unusual "
                            "circumstances. Most of the you should use either the normal rate or the Economic "
                            "Substance rate."},
    };
    for (const auto& [field, text] : hints) {
        rw::AccRelDialog::focusEntered(f, field);
        EXPECT_EQ(f.note, text);
    }
}

TEST_F(AccRelDialogTest, OkStoresTheUnderpaymentAndTheTypedRate)
{
    rw::AccRelForm f = dlg.open();
    EXPECT_FALSE(f.calculate);
    f.calculate = true;
    dlg.calculateChanged(f);
    f.underpayment = "1,234.57";
    f.rateChoice = AccRelRateChoice::Other;
    f.rate = ".25";
    const rw::Accepted a = dlg.accept(f);
    EXPECT_TRUE(a.stored);
    EXPECT_EQ(a.mark, rw::MenuMark::Set);
    EXPECT_TRUE(rw::IsYes(kase.init.bAccRel));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
    EXPECT_EQ(kase.init.cAccRelAmt, M("1,234.57"));
    EXPECT_EQ(kase.init.fAccRelRate, 0.25f);
    EXPECT_TRUE(dlg.wantsExtendedDueDate());
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(AccRelDialogTest, NewCaseWithYesTakesTheNormalRate)
{
    rw::AccRelForm f = dlg.open();
    f.calculate = true;
    f.underpayment = "10,000.00";
    EXPECT_TRUE(dlg.accept(f).stored);
    EXPECT_EQ(kase.init.fAccRelRate, 0.2f);
}

TEST_F(AccRelDialogTest, RateThatIsNotANumberStoresNothing)
{
    rw::AccRelForm f = dlg.open();
    f.calculate = true;
    f.underpayment = "10,000.00";
    f.rateChoice = AccRelRateChoice::Other;
    f.rate = "20%";
    const rw::Case before = kase;
    const rw::Accepted a = dlg.accept(f);
    EXPECT_FALSE(a.stored);
    EXPECT_EQ(kase, before);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"The Accuracy Related Penalty Rate entered as 20% is not a "
                                                      "number.  Please enter the rate as a fraction (20% is .2)."}));
}

TEST_F(AccRelDialogTest, NoClearsTheCheckMark)
{
    kase.init.bAccRel = rw::kYes;
    rw::AccRelForm f = dlg.open();
    f.calculate = false;
    const rw::Accepted a = dlg.accept(f);
    EXPECT_TRUE(a.stored);
    EXPECT_EQ(a.mark, rw::MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bAccRel));
}

}  // namespace
