#include "casedata/casefile.h"
#include "casedata/initialinputs.h"

#include "support/recordingmessages.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

using rw::Date;
using rw::InitialInputsDialog;
using rw::Money;

// Writes a one-row table covering [from, thru] under the given file name.
void writeTable(const std::filesystem::path& dir, const char* file, Date from, Date thru)
{
    rw::RateRow r;
    r.dtFrom = from;
    r.dtThru = thru;
    r.fUPRate = 0.08f;
    r.fOPRate = 0.07f;
    r.sCalcMethod = 'C';
    const auto bytes = rw::EncodeRateTable({r});
    std::ofstream(dir / file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

class InitialInputs : public ::testing::Test {
protected:
    InitialInputs()
    {
        rw::ClearInputs(kase);
        writeTable(dir.path(), "fed.tbl", Date::fromCivil(1975, 7, 1), Date::fromCivil(2026, 12, 31));
        writeTable(dir.path(), "ca_bus1.tbl", Date::fromCivil(2000, 1, 1), Date::fromCivil(2017, 12, 31));
        writeTable(dir.path(), "Ma1-op.tbl", Date::fromCivil(2000, 1, 1), Date::fromCivil(2017, 12, 31));
    }

    rw::InitialInputsForm filledForm() const
    {
        rw::InitialInputsForm f;
        f.name = "Jane Q. Taxpayer";
        f.dueDate = "4/15/2016";
        f.startDate = "4/15/2016";
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

TEST_F(InitialInputs, OverpaymentStoresANegativeBalanceAndStopDaysAndReopensAsEntered)
{
    auto f = filledForm();
    f.overpayment = true;
    InitialInputsDialog::startSituationChanged(f);
    EXPECT_TRUE(f.stopDaysVisible);
    f.initialBalance = "500.00";
    f.stopDays = "10";
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.tlStart.cTax, Money::fromCents(-50000));
    EXPECT_EQ(kase.init.bOverpayment, -1);
    EXPECT_EQ(kase.init.nStopDays, 10);

    const auto again = dlg.open();
    EXPECT_TRUE(again.overpayment);
    EXPECT_TRUE(again.stopDaysVisible);
    EXPECT_EQ(again.initialBalance, "500.00");
    EXPECT_EQ(again.stopDays, "10");
}

TEST_F(InitialInputs, UnderpaymentStoresZeroStopDaysWhateverTheHiddenFieldHolds)
{
    auto f = filledForm();
    f.overpayment = false;
    f.stopDays = "25";
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.nStopDays, 0);
    EXPECT_EQ(kase.init.bOverpayment, 0);
    EXPECT_EQ(kase.init.tlStart.cTax, Money::fromCents(1000000));
    EXPECT_FALSE(dlg.open().stopDaysVisible);
}

TEST_F(InitialInputs, AuthorityPositionsStoreTheirCodesAndLoadTheirTables)
{
    auto f = filledForm();
    f.authority = 3;  // "CA - Corp: Large"
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.sTaxAuth.view(), "CAB ");
    ASSERT_EQ(rates.size(), 1u);
    EXPECT_EQ(rates[0].dtFrom, Date::fromCivil(2000, 1, 1));
    EXPECT_TRUE(msgs.shown.empty());

    f.authority = 16;  // "Massachusetts - Overpayment"
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.sTaxAuth.view(), "MAOP");
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "NOTICE!");
    EXPECT_EQ(msgs.shown[0].text,
              "After 6/30/03, MA interest on underpayments and overpayments is computed differently using "
              "different rates. ");

    f.authority = -1;  // nothing selected
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.sTaxAuth.view(), "US  ");
    EXPECT_EQ(dlg.open().authority, 0);
}

TEST_F(InitialInputs, PayrollWarningAboveOneDollar)
{
    auto f = filledForm();
    f.payroll = true;
    f.initialBalance = "1.00";
    dlg.payrollClicked(f);
    EXPECT_TRUE(msgs.shown.empty());
    f.initialBalance = "1.01";
    dlg.payrollClicked(f);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text,
              "For payroll tax situations the Balance Due should be $0 and the Start Calculation Date should "
              "be the first day of the quarter.");
    msgs.clear();
    f.initialBalance = "abc";
    dlg.payrollClicked(f);
    f.payroll = false;
    f.initialBalance = "5000";
    dlg.payrollClicked(f);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(InitialInputs, AnEmptyDueDateIsWarnedAboutAndStoredAsDayZero)
{
    auto f = filledForm();
    f.dueDate = "";
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.dtDue, Date(0.0));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].text,
              "The Due date entered as  is not valid.  Unless it is changed, somewhere at an inconvenient "
              "moment this program is likely to abort.");
}

TEST_F(InitialInputs, ABalanceThatIsNotANumberStoresNothing)
{
    auto f = filledForm();
    f.initialBalance = "12,34x";
    const rw::Case before = kase;
    EXPECT_EQ(dlg.accept(f), InitialInputsDialog::Result::KeepOpen);
    EXPECT_EQ(kase, before);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");

    f.overpayment = true;
    f.initialBalance = "10";
    f.stopDays = "31";
    EXPECT_EQ(dlg.accept(f), InitialInputsDialog::Result::KeepOpen);
    EXPECT_EQ(kase, before);
}

TEST_F(InitialInputs, StateTableRangeIsCheckedInclusivelyAndNoMeansSaveAndExit)
{
    auto f = filledForm();
    f.authority = 3;  // table 1/1/2000 - 12/31/2017
    f.startDate = "1/1/2000";
    f.stopDate = "12/31/2017";
    EXPECT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_TRUE(msgs.shown.empty());

    f.startDate = "12/31/1999";
    msgs.answerNext(true);
    EXPECT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "State Rate Table Problem");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Critical);
    EXPECT_TRUE(msgs.shown[0].question);
    EXPECT_EQ(msgs.shown[0].text.rfind("The start date, 12/31/1999, is not between the first date, 01/01/2000, "
                                       "and the last date, 12/31/2017, in the state's rate table file. You are "
                                       "welcome ",
                                       0),
              0u);
    msgs.clear();
    f.startDate = "1/1/2000";
    f.stopDate = "1/1/2018";
    msgs.answerNext(false);
    EXPECT_EQ(dlg.accept(f), InitialInputsDialog::Result::SaveAndExit);
    EXPECT_EQ(msgs.shown.at(0).text.rfind("The stop date, 01/01/2018, is not between", 0), 0u);

    // The federal table is never checked against its range here.
    msgs.clear();
    f.authority = 0;
    f.startDate = "1/1/1900";
    EXPECT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(InitialInputs, NamesAreCutToFiftyTwoAndShownTrimmed)
{
    auto f = filledForm();
    f.name = std::string(60, 'N');
    f.secondLine = "c/o Trustee";
    ASSERT_EQ(dlg.accept(f), InitialInputsDialog::Result::Stored);
    EXPECT_EQ(kase.init.sName.view(), std::string(52, 'N'));
    EXPECT_EQ(kase.init.s2ndLine.view(), "c/o Trustee" + std::string(41, ' '));
    EXPECT_EQ(dlg.open().secondLine, "c/o Trustee");
}

}  // namespace
