// The Initial Inputs dialog's logic: what OK stores, the tables it loads, the
// warnings it gives and the state-table question it asks.

#include "casedata/casefile.h"
#include "casedata/initialinputs.h"

#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/shelldoubles.h"
#include "support/tempdir.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using Result = rw::InitialInputsDialog::Result;
using rwtest::D;
using rwtest::M;
using Texts = std::vector<std::string>;

class InitialInputs : public ::testing::Test {
protected:
    InitialInputs()
    {
        rw::ClearInputs(kase);
        // One-row tables: federal 7/1/1975-12/31/2026, two states 1/1/2000-12/31/2017.
        rwtest::WriteBytes(
            dir / "fed.tbl",
            rw::EncodeRateTable({rwtest::Row(D(1975, 7, 1), D(2026, 12, 31), 0.08f)}));
        for (const char* f : {"ca_bus1.tbl", "Ma1-op.tbl"})
            rwtest::WriteBytes(
                dir / f, rw::EncodeRateTable({rwtest::Row(D(2000, 1, 1), D(2017, 12, 31), 0.07f)}));
        form.name = std::string(60, 'N');
        form.secondLine = "c/o Trustee";
        form.dueDate = form.startDate = "4/15/2016";
        form.stopDate = "12/31/2016";
        form.initialBalance = "10,000.00";
    }

    rwtest::TempDir dir;
    rw::Paths paths = rw::Paths::ForFolders(dir.path(), dir.path());
    rw::Case kase;
    rw::RateTable rates;
    rwtest::RecordingMessages msgs;
    rw::InitialInputsDialog dlg{kase, rates, paths, msgs};
    rw::InitialInputsForm form;
};

TEST_F(InitialInputs, StoresTheFormAndOpensItAgain)
{
    form.overpayment = true;
    rw::InitialInputsDialog::startSituationChanged(form);
    EXPECT_TRUE(form.stopDaysVisible);
    form.initialBalance = "500.00";
    form.stopDays = "30";  // the most refund stop days
    ASSERT_EQ(dlg.accept(form), Result::Stored);
    EXPECT_EQ(kase.init.tlStart.cTax, M("-500.00"));  // an overpayment is a negative balance
    EXPECT_TRUE(kase.init.bOverpayment == -1 && kase.init.nStopDays == 30);
    EXPECT_EQ(kase.init.sName.view(), std::string(52, 'N'));
    EXPECT_EQ(kase.init.s2ndLine.view(), "c/o Trustee" + std::string(41, ' '));
    const rw::InitialInputsForm again = dlg.open();
    EXPECT_TRUE(again.overpayment && again.stopDaysVisible);
    EXPECT_EQ(again.initialBalance + " " + again.stopDays + " " + again.secondLine,
              "500.00 30 c/o Trustee");

    // An underpayment stores no stop days, whatever the hidden field holds.
    form.overpayment = false;
    ASSERT_EQ(dlg.accept(form), Result::Stored);
    EXPECT_TRUE(kase.init.nStopDays == 0 && kase.init.tlStart.cTax == M("500.00")
                && !dlg.open().stopDaysVisible);
}

TEST_F(InitialInputs, ListPositionsStoreTheirCodesAndLoadTheirTables)
{
    for (const auto& [position, code, from, notices] : {std::tuple{3, "CAB ", D(2000, 1, 1), 0u},
                                                        {16, "MAOP", D(2000, 1, 1), 1u},
                                                        {-1, "US  ", D(1975, 7, 1), 1u}}) {
        form.authority = position;
        ASSERT_EQ(dlg.accept(form), Result::Stored);
        EXPECT_EQ(kase.init.sTaxAuth.view(), code);
        EXPECT_EQ(rates.at(0).dtFrom, from);
        EXPECT_EQ(msgs.shown.size(), notices);  // Massachusetts has its notice
    }
    EXPECT_EQ(dlg.open().authority, 0);
}

TEST_F(InitialInputs, PayrollAdviceAboveOneDollar)
{
    form.payroll = true;
    for (const char* quiet : {"1.00", "abc"}) {
        form.initialBalance = quiet;
        dlg.payrollClicked(form);
    }
    EXPECT_TRUE(msgs.shown.empty());
    form.initialBalance = "1.01";
    dlg.payrollClicked(form);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title + ": " + msgs.shown[0].text,
              "WARNING: For payroll tax situations the Balance Due should be $0 and the Start "
              "Calculation Date should "
              "be the first day of the quarter.");
}

// Entries OK refuses, some also when their field is left: told once, sent
// back to the field, nothing stored. A stop date is only compared with a
// start date that is one.
TEST_F(InitialInputs, EntriesRefusedStoreNothing)
{
    using F = rw::InitialInputsForm;
    const std::tuple<const char*, rw::FormField<F>, const char*, bool, std::string> rows[] = {
        {"no due date", &F::dueDate, "", false,
         "Please enter the Due date as month/day/year, such as 4/15/2024."},
        {"stop before start", &F::stopDate, "4/14/2016", true,
         "The calculation cannot end on 4/14/2016, before it starts on 4/15/2016.  Please enter "
         "a stop date on or after the start date."},
        {"balance not an amount", &F::initialBalance, "12,34x", true,
         "The Intitial Balance entered as 12,34x is not an amount.  Please enter a number such as "
         "1,234.56."},
        {"31 stop days", &F::stopDays, "31", false,
         "The number of days before the check date on which interest stops on the refund must be "
         "a whole number from 0 to 30."},
    };
    const rw::Case before = kase;
    form.overpayment = true;
    for (const auto& [name, field, text, left, said] : rows) {
        F f = form;
        f.*field = text;
        msgs.clear();
        if (left) {
            field == &F::stopDate ? dlg.dateLeft(f, field) : dlg.balanceLeft(f);
            EXPECT_EQ(std::exchange(f.refused, nullptr), field) << name;
        }
        EXPECT_EQ(dlg.accept(f), Result::KeepOpen) << name;
        EXPECT_EQ(f.refused, field) << name;
        EXPECT_EQ(msgs.texts(), Texts(left ? 2 : 1, said)) << name;
        EXPECT_EQ(kase, before) << name;
    }
    msgs.clear();
    form.startDate = "4/15";
    form.stopDate = "4/14/2016";
    dlg.dateLeft(form, &F::stopDate);
    EXPECT_TRUE(msgs.shown.empty() && !form.refused);
}

TEST_F(InitialInputs, DatesOutsideAStateTableAskYesToGoOnOrNoToSaveAndExit)
{
    form.authority = 3;  // table 1/1/2000 - 12/31/2017, bounds inclusive
    form.startDate = "1/1/2000";
    form.stopDate = "12/31/2017";
    EXPECT_EQ(dlg.accept(form), Result::Stored);
    EXPECT_TRUE(msgs.shown.empty());
    form.startDate = "12/31/1999";
    msgs.answerNext(true);
    EXPECT_EQ(dlg.accept(form), Result::Stored);
    const rwtest::ShownMessage m = msgs.shown.at(0);
    EXPECT_TRUE(m.title == "State Rate Table Problem" && m.icon == rw::MsgIcon::Critical
                && m.question);
    EXPECT_TRUE(m.text.starts_with(
        "The start date, 12/31/1999, is not between the first date, 01/01/2000, and the "
        "last date, 12/31/2017, in the state's rate table file. You are welcome "));
    EXPECT_TRUE(m.text.ends_with(
        "state rate table. If you press the YES button, the program will let you continue, but, "
        "if you don't change that date, it will abort without warning later. If you press the "
        "NO button, the program will save your data and exit afterwards. Continue?"));
    form.startDate = "1/1/2000";
    form.stopDate = "1/1/2018";
    msgs.answerNext(false);
    EXPECT_EQ(dlg.accept(form), Result::SaveAndExit);
    EXPECT_TRUE(msgs.shown.at(1).text.starts_with("The stop date, 01/01/2018, is not between"));
    // The federal table is never checked against its range here.
    form.authority = 0;
    form.startDate = "1/1/1900";
    EXPECT_EQ(dlg.accept(form), Result::Stored);
    EXPECT_EQ(msgs.shown.size(), 2u);
}

}  // namespace
