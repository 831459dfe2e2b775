#include "shell/mainwindow.h"

#include "shellfixture.h"

#include <gtest/gtest.h>

namespace {

using rw::MainCommand;

TEST(MainWindow, ToolbarKeys)
{
    rwtest::RecordingMessages msgs;
    struct Row {
        const char* key;
        MainCommand command;
    };
    for (const Row& r : {Row{"New", MainCommand::New}, Row{"Open", MainCommand::Open}, Row{"Save", MainCommand::Save},
                         Row{"View", MainCommand::View}, Row{"Print", MainCommand::Print},
                         Row{"Help", MainCommand::Help}, Row{"Exit", MainCommand::Exit}})
        EXPECT_EQ(rw::ToolbarCommand(r.key, msgs), r.command) << r.key;
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(rw::ToolbarCommand("Zoom", msgs), MainCommand::Unknown);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text.rfind("The program does not understand the toolbar choice. Please let ", 0), 0u);
}

TEST(MainWindow, PaymentsWarnEveryTimeUnlessPayroll)
{
    rw::Session s;
    rwtest::RecordingMessages msgs;
    rw::BeforePayments(s, msgs);
    rw::BeforePayments(s, msgs);
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_EQ(msgs.shown[1].title, "WARNING");
    EXPECT_EQ(msgs.shown[1].icon, rw::MsgIcon::Exclamation);
    EXPECT_EQ(msgs.shown[1].text,
              "Since a payment's allocation between tax, penalty and interest is dependent upon prior penalties, "
              "other additions to tax and previous payments, it is critical that you enter all penalties and other "
              "charges before you enter payments.  Payments must be entered in chronological order.  If these "
              "guidelines are not followed, results will probably be inaccurate.");
    s.kase.init.bPayroll = -1;
    rw::BeforePayments(s, msgs);
    EXPECT_EQ(msgs.shown.size(), 2u);
}

TEST(MainWindow, PayrollPenaltiesNeedAPayrollCase)
{
    rw::Session s;
    rwtest::RecordingMessages msgs;
    EXPECT_FALSE(rw::BeforePayroll(s, msgs));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "WARNING");
    EXPECT_EQ(msgs.shown[0].text,
              "To run payroll penalties, the Initial Inputs window must have Payroll Tax indicated Yes.");
    s.kase.init.bPayroll = -1;
    EXPECT_TRUE(rw::BeforePayroll(s, msgs));
    EXPECT_EQ(msgs.shown.size(), 1u);
}

TEST(MainWindow, NoteAndHelp)
{
    rw::Session s;
    s.menus.note = "Next Step: Click on the Inputs menu to enter other information";
    rw::TopMenuOpened(s);
    EXPECT_EQ(s.menus.note, "");
    rwtest::RecordingMessages msgs;
    rw::HelpOnHelp(msgs);
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].text, "The help file is a searchable PDF file. Menu choice Help - Contents.");
    EXPECT_EQ(msgs.shown[0].icon, rw::MsgIcon::Information);
}

}  // namespace
