#include "shell/session.h"

#include "casedata/casefile.h"

#include "shellfixture.h"

#include <gtest/gtest.h>

namespace {

struct TitleRow {
    const char* name;
    rw::Flag saved;
    const char* title;
};

class Titles : public testing::TestWithParam<TitleRow> {};

TEST_P(Titles, MarkUnsavedChanges)
{
    rw::Session s;
    s.release = rwtest::Release2018();
    s.gsFileName = GetParam().name;
    s.gbSaved = GetParam().saved;
    EXPECT_EQ(rw::RefreshTitle(s), GetParam().title);
    EXPECT_EQ(s.title, GetParam().title);
}

INSTANTIATE_TEST_SUITE_P(
    Session, Titles,
    testing::Values(TitleRow{"/home/pat/A.INT", -1, "2018, 1st Quarter Ratewright - /home/pat/A.INT"},
                    TitleRow{"/home/pat/A.INT", 0, "2018, 1st Quarter Ratewright - /home/pat/A.INT*"},
                    TitleRow{"UNTITLED.INT", 0, "2018, 1st Quarter Ratewright - UNTITLED.INT*"},
                    TitleRow{"B.INT", 1, "2018, 1st Quarter Ratewright - B.INT*"},  // only -1 is saved
                    TitleRow{"", -1, "2018, 1st Quarter Ratewright - Untitled.INT"}));

TEST(Session, AnEmptyNameBecomesUntitled)
{
    rw::Session s;
    s.gsFileName.clear();
    rw::RefreshTitle(s);
    EXPECT_EQ(s.gsFileName, "Untitled.INT");
}

TEST(Session, MenuMarksFollowTheCase)
{
    rw::Session s;
    rw::InitInputs& in = s.kase.init;
    in.nPmts = 3;
    s.kase.pmts.resize(3);
    in.nDeposits = 1;
    in.b6651d1 = -1;  // the increased rate alone marks Failure to Pay
    in.bAccRel = 1;   // any non-zero flag is yes
    in.bCorpOPRate = -1;
    in.dtIntSuspend = rw::Date::fromCivil(2017, 1, 1);
    rw::EnableInputs(s);
    rw::SetPenaltyChecks(s);
    rw::SetOptionChecks(s);
    EXPECT_TRUE(s.menus.initialInputsEnabled);
    EXPECT_TRUE(s.menus.paymentsChecked);
    EXPECT_FALSE(s.menus.chargesChecked);
    EXPECT_TRUE(s.menus.ftPayChecked);
    EXPECT_FALSE(s.menus.ftFileChecked);
    EXPECT_TRUE(s.menus.accuracyChecked);
    EXPECT_TRUE(s.menus.payrollChecked);
    EXPECT_TRUE(s.menus.interestRatesChecked);
    EXPECT_TRUE(s.menus.suspendChecked);

    rw::ClearInputs(s.kase);
    rw::EnableInputs(s);
    rw::SetPenaltyChecks(s);
    rw::SetOptionChecks(s);
    EXPECT_FALSE(s.menus.paymentsChecked);
    EXPECT_FALSE(s.menus.ftPayChecked);
    EXPECT_FALSE(s.menus.accuracyChecked);
    EXPECT_FALSE(s.menus.payrollChecked);
    EXPECT_FALSE(s.menus.interestRatesChecked);
    EXPECT_FALSE(s.menus.suspendChecked);
}

TEST(Session, OutputAndSaveStates)
{
    rw::Session s;
    rw::EnableOutputs(s, true);
    EXPECT_TRUE(s.menus.printEnabled && s.menus.reportsEnabled && s.menus.printButtonVisible && s.menus.viewButtonVisible);
    rw::EnableOutputs(s, false);
    EXPECT_FALSE(s.menus.printEnabled || s.menus.reportsEnabled || s.menus.printButtonVisible || s.menus.viewButtonVisible);
    rw::EnableSave(s, true);
    EXPECT_TRUE(s.menus.saveEnabled && s.menus.saveButtonVisible);
}

class RecoveryCopy : public rwtest::ShellTest {};

TEST_F(RecoveryCopy, IsTheCaseFileInTheInstallationFolderAndLeavesTheSavedState)
{
    session.kase.init.sName = "Recovered";
    session.gbSaved = 0;
    rw::WriteRecoveryCopy(session);
    EXPECT_EQ(rwtest::ReadBytes(install / "DEBUG.INT"), rw::EncodeCase(session.kase));
    EXPECT_EQ(session.gbSaved, 0);
    EXPECT_TRUE(rw::IsRecoveryCopy(session, (install / "DEBUG.INT").string()));
    EXPECT_TRUE(rw::IsRecoveryCopy(session, (install / "sub" / ".." / "DEBUG.INT").string()));
    EXPECT_FALSE(rw::IsRecoveryCopy(session, (install / "OTHER.INT").string()));
}

}  // namespace
