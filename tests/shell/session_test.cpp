// The main window's own messages, and the title of the session.

#include "shell/mainwindow.h"

#include "shellfixture.h"

namespace {

TEST(MainWindow, MessagesOfTheToolBarPaymentsPayrollAndHelp)
{
    rw::Session s;
    rwtest::RecordingMessages msgs;
    EXPECT_EQ(rw::ToolbarCommand("Print", msgs), rw::MainCommand::Print);
    EXPECT_EQ(rw::ToolbarCommand("Zoom", msgs), rw::MainCommand::Unknown);
    rw::BeforePayments(s, msgs);  // every time unless payroll
    EXPECT_FALSE(rw::BeforePayroll(s, msgs));
    rw::HelpOnHelp(msgs);
    s.kase.init.bPayroll = -1;
    rw::BeforePayments(s, msgs);
    EXPECT_TRUE(rw::BeforePayroll(s, msgs));
    ASSERT_EQ(msgs.shown.size(), 4u);
    EXPECT_TRUE(msgs.shown[0].text.starts_with("The program does not understand the toolbar choice. Please let "));
    EXPECT_EQ(msgs.shown[1].text,
              "Since a payment's allocation between tax, penalty and interest is dependent upon prior penalties, "
              "other additions to tax and previous payments, it is critical that you enter all penalties and other "
              "charges before you enter payments.  Payments must be entered in chronological order.  If these "
              "guidelines are not followed, results will probably be inaccurate.");
    EXPECT_EQ(msgs.shown[2].text,
              "To run payroll penalties, the Initial Inputs window must have Payroll Tax indicated Yes.");
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(msgs.shown[i].title == "WARNING" && msgs.shown[i].icon == rw::MsgIcon::Exclamation) << i;
    EXPECT_EQ(msgs.shown[3].text, "The help file is a searchable PDF file. Menu choice Help - Contents.");
    EXPECT_EQ(msgs.shown[3].icon, rw::MsgIcon::Information);
}

TEST(Session, TitleMarksUnsavedChangesAndAnEmptyNameBecomesUntitled)
{
    rw::Session s;
    s.release = rwtest::Release2018();
    s.gsFileName = "B.INT";
    s.gbSaved = 1;  // only -1 is saved
    EXPECT_EQ(rw::RefreshTitle(s), "2018, 1st Quarter Ratewright - B.INT*");
    s.gsFileName.clear();
    s.gbSaved = -1;
    EXPECT_EQ(rw::RefreshTitle(s), "2018, 1st Quarter Ratewright - Untitled.INT");
    EXPECT_EQ(s.gsFileName, "Untitled.INT");
}

}  // namespace
