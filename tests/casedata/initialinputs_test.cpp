// The Initial Inputs dialog's logic: what OK stores, the tables it loads, the
// warnings it gives and the state-table check it asks.

#include "casedata/casefile.h"
#include "casedata/initialinputs.h"

#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

namespace {

using rw::InitialInputsDialog;
using Result = rw::InitialInputsDialog::Result;
using rwtest::D;
using rwtest::M;

class InitialInputs : public ::testing::Test {
protected:
    InitialInputs()
    {
        rw::ClearInputs(kase);
        // One-row tables: federal 7/1/1975-12/31/2026, two states 1/1/2000-12/31/2017.
        rwtest::WriteBytes(dir / "fed.tbl", rw::EncodeRateTable({rwtest::Row(D(1975, 7, 1), D(2026, 12, 31), 0.08f)}));
        for (const char* f : {"ca_bus1.tbl", "Ma1-op.tbl"})
            rwtest::WriteBytes(dir / f, rw::EncodeRateTable({rwtest::Row(D(2000, 1, 1), D(2017, 12, 31), 0.07f)}));
    }

    static rw::InitialInputsForm Filled()
    {
        rw::InitialInputsForm f;
        f.name = "Jane Q. Taxpayer";
        f.dueDate = f.startDate = "4/15/2016";
        f.stopDate = "12/31/2016";
        f.initialBalance = "10,000.00";
        return f;
    }

    rwtest::TempDir dir;
    rw::Paths paths = rw::Paths::ForFolders(dir.path(), dir.path());
    rw::Case kase;
    rw::RateTable rates;
    rwtest::RecordingMessages msgs;
    InitialInputsDialog dlg{kase, rates, paths, msgs};
};

TEST_F(InitialInputs, AnOverpaymentIsANegativeBalanceWithItsStopDays)
{
    auto f = Filled();
    f.overpayment = true;
    InitialInputsDialog::startSituationChanged(f);
    EXPECT_TRUE(f.stopDaysVisible);
    f.initialBalance = "500.00";
    f.stopDays = "10";
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.tlStart.cTax, M("-500.00"));
    EXPECT_EQ(kase.init.bOverpayment, -1);
    EXPECT_EQ(kase.init.nStopDays, 10);
    const auto again = dlg.open();
    EXPECT_TRUE(again.overpayment && again.stopDaysVisible);
    EXPECT_EQ(again.initialBalance, "500.00");
    EXPECT_EQ(again.stopDays, "10");

    // An underpayment stores no stop days, whatever the hidden field holds.
    f.overpayment = false;
    f.stopDays = "25";
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.nStopDays, 0);
    EXPECT_EQ(kase.init.bOverpayment, 0);
    EXPECT_EQ(kase.init.tlStart.cTax, M("500.00"));
    EXPECT_FALSE(dlg.open().stopDaysVisible);
}

TEST_F(InitialInputs, ListPositionsStoreTheirCodesAndLoadTheirTables)
{
    auto f = Filled();
    f.authority = 3;  // "CA - Corp: Large"
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.sTaxAuth.view(), "CAB ");
    ASSERT_EQ(rates.size(), 1u);
    EXPECT_EQ(rates[0].dtFrom, D(2000, 1, 1));
    EXPECT_TRUE(msgs.shown.empty());

    f.authority = 16;  // "Massachusetts - Overpayment", with its notice
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.sTaxAuth.view(), "MAOP");
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "NOTICE!");

    f.authority = -1;  // nothing selected
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.sTaxAuth.view(), "US  ");
    EXPECT_EQ(rates[0].dtFrom, D(1975, 7, 1));
    EXPECT_EQ(dlg.open().authority, 0);
}

TEST_F(InitialInputs, PayrollWarningAboveOneDollar)
{
    auto f = Filled();
    f.payroll = true;
    for (const char* quiet : {"1.00", "abc"}) {
        f.initialBalance = quiet;
        dlg.payrollClicked(f);
    }
    EXPECT_TRUE(msgs.shown.empty());
    f.initialBalance = "1.01";
    dlg.payrollClicked(f);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text, "For payroll tax situations the Balance Due should be $0 and the Start Calculation "
                                  "Date should be the first day of the quarter.");
    f.payroll = false;
    dlg.payrollClicked(f);
    EXPECT_EQ(msgs.shown.size(), 1u);
}

TEST_F(InitialInputs, AnEmptyDueDateIsWarnedAboutAndStoredAsDayZero)
{
    auto f = Filled();
    f.dueDate = "";
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.dtDue, rw::Date(0.0));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].text, "The Due date entered as  is not valid.  Unless it is changed, somewhere at an "
                                  "inconvenient moment this program is likely to abort.");
}

TEST_F(InitialInputs, AnAmountThatIsNotANumberStoresNothing)
{
    const rw::Case before = kase;
    auto f = Filled();
    f.initialBalance = "12,34x";
    EXPECT_EQ(dlg.accept(f), Result::KeepOpen);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    f.overpayment = true;
    f.initialBalance = "10";
    f.stopDays = "31";  // refund stop days run from 0 to 30
    EXPECT_EQ(dlg.accept(f), Result::KeepOpen);
    EXPECT_EQ(kase, before);
    f.stopDays = "30";
    EXPECT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.nStopDays, 30);
}

TEST_F(InitialInputs, DatesOutsideAStateTableAskYesToGoOnOrNoToSaveAndExit)
{
    auto f = Filled();
    f.authority = 3;  // table 1/1/2000 - 12/31/2017
    f.startDate = "1/1/2000";
    f.stopDate = "12/31/2017";
    EXPECT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_TRUE(msgs.shown.empty());
    f.startDate = "12/31/1999";
    msgs.answerNext(true);
    EXPECT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(msgs.shown.at(0).title, "State Rate Table Problem");
    f.startDate = "1/1/2000";
    f.stopDate = "1/1/2018";
    msgs.answerNext(false);
    EXPECT_EQ(dlg.accept(f), Result::SaveAndExit);
    EXPECT_TRUE(msgs.shown.at(1).text.starts_with("The stop date, 01/01/2018, is not between"));
    // The federal table is never checked against its range here.
    msgs.clear();
    f.authority = 0;
    f.startDate = "1/1/1900";
    EXPECT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(InitialInputs, NamesAreCutToFiftyTwoAndShownTrimmed)
{
    auto f = Filled();
    f.name = std::string(60, 'N');
    f.secondLine = "c/o Trustee";
    ASSERT_EQ(dlg.accept(f), Result::Stored);
    EXPECT_EQ(kase.init.sName.view(), std::string(52, 'N'));
    EXPECT_EQ(kase.init.s2ndLine.view(), "c/o Trustee" + std::string(41, ' '));
    EXPECT_EQ(dlg.open().secondLine, "c/o Trustee");
}

}  // namespace
