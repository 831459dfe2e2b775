// The payroll deposit list and the deposit dialog as logic, with the dialog's
// showings scripted.

#include "penalties/depositdialogs.h"

#include "pentest.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace {

using namespace pentest;
using rw::DepositForm;

class Deposits : public ::testing::Test {
protected:
    // Each showing of the deposit dialog runs the next scripted step on the
    // form; the step's result is OK (true) or Cancel (false).
    std::deque<std::function<bool(DepositForm&)>> steps;
    std::vector<DepositForm> seen;  // the form as each showing received it
    rw::Case kase = [] {
        rw::Case c = Federal(D(7, 31, 2016), D(4, 1, 2016), D(12, 31, 2016), "0");
        c.init.bPayroll = rw::kYes;
        return c;
    }();
    rwtest::RecordingMessages msgs;
    rw::DepositListDialog list{kase, msgs, [this](DepositForm& f) {
                                   seen.push_back(f);
                                   if (steps.empty())
                                       return false;
                                   auto step = steps.front();
                                   steps.pop_front();
                                   return step(f);
                               }};

    static std::function<bool(DepositForm&)> enter(const char* due, const char* required, const char* assess,
                                                   bool severe = false)
    {
        return [=](DepositForm& f) {
            f.dueDate = due;
            f.required = required;
            f.assessDate = assess;
            f.severe = severe;
            return true;
        };
    }
};

TEST_F(Deposits, AddingKeepsTheListSortedByDueDate)
{
    rw::DepositListForm form = list.open();
    EXPECT_TRUE(form.lines.empty());
    EXPECT_FALSE(form.editEnabled || form.deleteEnabled);

    steps.push_back(enter("5/16/2016", "2,000.00", "9/1/2016"));
    list.add(form);
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));
    steps.push_back(enter("4/15/2016", "1,000.00", "9/1/2016"));
    list.add(form);
    steps.push_back(enter("5/16/2016", "500.00", "10/1/2016"));
    list.add(form);

    EXPECT_EQ(form.lines, (std::vector<std::string>{"04/15/2016", "05/16/2016", "05/16/2016"}));
    EXPECT_TRUE(form.editEnabled && form.deleteEnabled);
    ASSERT_EQ(kase.init.nDeposits, 3);
    ASSERT_EQ(kase.deposits.size(), 3u);
    // Deposits of one due date keep the order they were entered in.
    EXPECT_EQ(kase.deposits[1].cRequired, M("2,000.00"));
    EXPECT_EQ(kase.deposits[2].cRequired, M("500.00"));
    EXPECT_EQ(kase.deposits[2].dtDepAssess, D(10, 1, 2016));
    EXPECT_TRUE(msgs.shown.empty());
    // The dialog opened with No, the amount empty and the dates blank.
    EXPECT_FALSE(seen[0].severe);
    EXPECT_TRUE(seen[0].required.empty() && seen[0].dueDate.empty() && seen[0].delinquencyDate.empty());
}

TEST_F(Deposits, CancelOrAZeroAmountAddsNothing)
{
    rw::DepositListForm form = list.open();
    steps.push_back([](DepositForm& f) {
        f.required = "100.00";
        return false;  // Cancel
    });
    steps.push_back(enter("4/15/2016", "0", "9/1/2016"));
    steps.push_back(enter("4/15/2016", "", "9/1/2016"));
    for (int i = 0; i < 3; ++i)
        list.add(form);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>(3, "Deposit not added!")));
    EXPECT_EQ(kase.init.nDeposits, 0);
    EXPECT_EQ(kase.deposits.size(), 1u);
    EXPECT_FALSE(rw::IsYes(kase.init.bAnyPenalties));
}

const char* kSevereQuestion =
    "The IRC Sec. 6656(b)(1)(B) penalty can not be calculated without either the date of the first delinquency "
    "notice or the date of the jeopardy assessment.  Do you want to enter one of those dates now?";

TEST_F(Deposits, SevereWithoutNoticeDatesAnsweredNoIsStoredAsNotSevere)
{
    rw::DepositListForm form = list.open();
    steps.push_back(enter("4/15/2016", "1,000.00", "9/1/2016", true));
    msgs.answerNext(false);
    list.add(form);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_TRUE(msgs.shown[0].question);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text, kSevereQuestion);
    EXPECT_EQ(kase.init.nDeposits, 1);
    EXPECT_FALSE(rw::IsYes(kase.deposits[0].bSevere));
    EXPECT_EQ(seen.size(), 1u);
}

TEST_F(Deposits, SevereQuestionAnsweredYesShowsTheDialogAgain)
{
    rw::DepositListForm form = list.open();
    steps.push_back(enter("4/15/2016", "1,000.00", "9/1/2016", true));
    steps.push_back([](DepositForm& f) {
        f.delinquencyDate = "6/1/2016";
        return true;
    });
    msgs.answerNext(true);
    list.add(form);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1].dueDate, "4/15/2016");  // the second showing keeps what was entered
    ASSERT_EQ(kase.init.nDeposits, 1);
    EXPECT_TRUE(rw::IsYes(kase.deposits[0].bSevere));
    EXPECT_EQ(kase.deposits[0].dtDelinqNotice, D(6, 1, 2016));
    EXPECT_EQ(kase.deposits[0].dtDepDue, D(4, 15, 2016));
}

TEST_F(Deposits, SevereQuestionAnsweredYesButStillNoDateIsNotSevere)
{
    rw::DepositListForm form = list.open();
    steps.push_back(enter("4/15/2016", "1,000.00", "9/1/2016", true));
    steps.push_back([](DepositForm&) { return true; });
    msgs.answerNext(true);
    list.add(form);
    ASSERT_EQ(kase.init.nDeposits, 1);
    EXPECT_FALSE(rw::IsYes(kase.deposits[0].bSevere));
}

TEST_F(Deposits, JeopardyDateThatIsNotADateIsWarnedAboutAndStoredAsDayZero)
{
    rw::DepositListForm form = list.open();
    steps.push_back([](DepositForm& f) {
        f.dueDate = "4/15/2016";
        f.required = "1,000.00";
        f.assessDate = "9/1/2016";
        f.severe = true;
        f.jeopardyDate = "6/31/2016";
        return true;
    });
    list.add(form);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "The Jepardy Assessement date entered as 6/31/2016 is not valid.  Unless it is "
                                "changed, somewhere at an inconvenient moment this program is likely to abort."}));
    ASSERT_EQ(kase.init.nDeposits, 1);
    EXPECT_TRUE(rw::IsYes(kase.deposits[0].bSevere));
    EXPECT_EQ(kase.deposits[0].dtJeopardy, Date());
}

TEST_F(Deposits, EditKeepsTheListSortedAndCancelChangesNothing)
{
    rw::DepositListForm form = list.open();
    steps.push_back(enter("4/15/2016", "1,000.00", "9/1/2016"));
    list.add(form);
    steps.push_back(enter("5/16/2016", "2,000.00", "9/1/2016"));
    list.add(form);
    seen.clear();

    steps.push_back([](DepositForm& f) {
        f.dueDate = "6/15/2016";
        return true;
    });
    list.edit(form, 0);
    EXPECT_EQ(seen[0].required, "1000");  // the amount as plain text
    EXPECT_EQ(seen[0].dueDate, "4/15/2016");
    EXPECT_TRUE(seen[0].delinquencyDate.empty());
    EXPECT_EQ(form.lines, (std::vector<std::string>{"05/16/2016", "06/15/2016"}));
    EXPECT_EQ(kase.deposits[1].cRequired, M("1,000.00"));

    const rw::Case before = kase;
    steps.push_back([](DepositForm& f) {
        f.required = "5.00";
        return false;
    });
    list.edit(form, 1);
    list.edit(form, -1);
    EXPECT_EQ(kase, before);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(Deposits, DeleteAsksAndTheLastDeletionClearsTheCheckMark)
{
    rw::DepositListForm form = list.open();
    steps.push_back(enter("4/15/2016", "1,000.00", "9/1/2016"));
    list.add(form);
    steps.push_back(enter("5/16/2016", "2,000.00", "9/1/2016"));
    list.add(form);

    msgs.answerNext(false);
    list.remove(form, 1);
    EXPECT_EQ(kase.init.nDeposits, 2);
    msgs.answerNext(true);
    list.remove(form, 1);
    EXPECT_EQ(kase.init.nDeposits, 1);
    msgs.answerNext(true);
    list.remove(form, 0);
    EXPECT_EQ(kase.init.nDeposits, 0);
    EXPECT_EQ(kase.deposits.size(), 1u);
    EXPECT_TRUE(form.lines.empty());
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "Do you want to delete deposit information for deposit due 5/16/2016?",
                                "Do you want to delete deposit information for deposit due 5/16/2016?",
                                "Do you want to delete deposit information for deposit due 4/15/2016?"}));
    EXPECT_EQ(msgs.shown[0].title, "WARNING!");
}

TEST_F(Deposits, CountThatDisagreesWithTheListIsReportedAndMended)
{
    AddDeposit(kase, D(4, 15, 2016), "1,000.00", D(9, 1, 2016));
    AddDeposit(kase, D(5, 16, 2016), "1,000.00", D(9, 1, 2016));
    kase.init.nDeposits = 1;
    rw::DepositListForm form;
    steps.push_back(enter("6/15/2016", "300.00", "9/1/2016"));
    list.add(form);
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{
                                "AddDepClick error! nDeposits 2 and gInit.nDeposits 1 should be the same.  Please "
                                "call Ratewright technical support and report this message."}));
    EXPECT_EQ(kase.init.nDeposits, 3);
    EXPECT_EQ(kase.deposits.size(), 3u);
}

TEST_F(Deposits, DepositDialogHintsNoticeDatesAndFieldChecks)
{
    rw::DepositDialog dlg(kase, msgs);
    DepositForm f;
    rw::DepositDialog::focusEntered(f, rw::DepositField::Severe);
    EXPECT_EQ(f.hint, "I.R.C. Sec. 6656(b)(1)(B) increases the penalty rate to 15% in situations after either "
                      "delinquency notices (Sec. 6303) or jeopardy assessments (Sec. 6861, 6862 or 6331(a)).");
    rw::DepositDialog::focusEntered(f, rw::DepositField::DelinquencyDate);
    EXPECT_EQ(f.hint, "Enter date of the first deliquency notice under I.R.C. Sec. 6303.  If no deliquency notice "
                      "was issued, leave input blank.");
    rw::DepositDialog::focusEntered(f, rw::DepositField::JeopardyDate);
    EXPECT_EQ(f.hint, "Enter date notice and demand for immediate payment was given under I.R.C. Sec. 6861, 6862 "
                      "or 6331(a).  If no deliquency notice was issued, leave input blank.");
    dlg.focusLeft(f, rw::DepositField::JeopardyDate);
    EXPECT_TRUE(f.hint.empty());

    f.severe = true;
    rw::DepositDialog::severeChanged(f);
    EXPECT_TRUE(f.noticeDatesEnabled);
    f.severe = false;
    rw::DepositDialog::severeChanged(f);
    EXPECT_FALSE(f.noticeDatesEnabled);

    f.dueDate = "4/1/2016";  // the start date itself
    dlg.focusLeft(f, rw::DepositField::DueDate);
    f.assessDate = "2/30/2016";
    dlg.focusLeft(f, rw::DepositField::AssessDate);
    EXPECT_EQ(msgs.texts(),
              (std::vector<std::string>{
                  "The deposit due date is on or before the start date of the interest calculation.  Unreliable "
                  "results or an unplanned termination may occurr if this is not corrected. You might want to use "
                  "4/2/2016 instead.",
                  "The Deposit penalty assessement date entered as 2/30/2016 is not valid.  Unless it is changed, "
                  "somewhere at an inconvenient moment this program is likely to abort."}));

    msgs.clear();
    f.required = "1,OOO";
    EXPECT_FALSE(dlg.okAllowed(f));
    f.required = "";
    EXPECT_TRUE(dlg.okAllowed(f));
    EXPECT_EQ(msgs.shown.size(), 1u);
}

TEST_F(Deposits, TutorialPointsToTheManual)
{
    int manual = 0;
    rw::DepositListDialog withManual(kase, msgs, {}, [&] { ++manual; });
    withManual.tutorial();
    EXPECT_EQ(msgs.texts(), (std::vector<std::string>{"When the help file comes up, search for EXAMPLES."}));
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
    EXPECT_EQ(manual, 1);
}

}  // namespace
