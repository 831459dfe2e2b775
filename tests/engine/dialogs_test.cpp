// The date checks every input dialog shares (their texts are checked here),
// and the warnings of the interest options, suspension and extended due date.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include "casedata/datechecks.h"
#include "casedata/extduedate.h"
#include "engine/optrates.h"
#include "engine/suspend.h"

#include <gtest/gtest.h>

using namespace rwtest;
using Texts = std::vector<std::string>;

namespace {

TEST(DateChecks, DateInPeriodWarnsOnOrOutsideTheEdges)
{
    const std::string tail
        = "date of the interest calculation.  Unreliable results or an unplanned termination may "
          "occurr if this is not corrected. You might want to use ";
    const std::string before
        = "Filing date is on or before the start " + tail + "4/16/2016 instead.";
    const std::string after = "Filing date is on or after the stop " + tail + "12/30/2016 instead.";
    for (const auto& [text, ok, warnings] :
         {std::tuple{"4/15/2016", false, Texts{before}},
          {"12/31/2016", false, Texts{after}},
          {"4/16/2016", true, Texts{}},
          {"12/30/2016", true, Texts{}},
          {"13/45/2016", true,
           Texts{"The Filing date entered as 13/45/2016 is not valid.  Unless it is changed, "
                 "somewhere at an "
                 "inconvenient moment this program is likely to abort."}}}) {
        RecordingMessages msgs;
        const rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "0");
        EXPECT_EQ(rw::ChkDateInPeriod(text, "Filing", c.init, msgs), ok);
        EXPECT_EQ(msgs.texts(), warnings);
    }
    RecordingMessages msgs;  // start on or after stop: both warnings, the start's first
    const rw::Case reversed = FederalCase(D(2016, 12, 31), D(2016, 4, 15), "0");
    EXPECT_FALSE(rw::ChkDateInPeriod("6/1/2016", "Filing", reversed.init, msgs));
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_TRUE(msgs.texts()[0].starts_with("Filing date is on or before the start date"));
    EXPECT_TRUE(msgs.texts()[1].starts_with("Filing date is on or after the stop date"));
    msgs.clear();
    rw::DateChkError(13, "Assessment", msgs);
    rw::DateChkError(9, "Assessment", msgs);
    EXPECT_EQ(msgs.texts(),
              (Texts{"Assessment date blank!  Unreliable results or an unplanned termination may "
                     "occurr if this is not corrected. ",
                     "Error: Subscript out of range"}));
    EXPECT_EQ(rw::InitCSDateCtrl(rw::NoDate), "");
    EXPECT_EQ(rw::InitCSDateCtrl(D(2016, 7, 4)), "7/4/2016");
}

// The corporate rates start after 12/31/1990 and 12/31/1994, by default on
// the day after; the tax-motivated rates are for returns due 1985 to 1989.
TEST(Dialogs, InterestOptionsAtTheirThresholds)
{
    rw::Case c = FederalCase(D(1990, 1, 1), D(2000, 12, 31), "1000", D(1990, 4, 15));
    RecordingMessages msgs;
    rw::OptRatesDialog dlg(c, msgs);
    rw::OptRatesForm f = dlg.open();
    f.corpUPRate = f.corpOPRate = true;
    dlg.radCorpUPRateClick(f);
    dlg.radCorpOPRateClick(f);
    EXPECT_EQ(f.corpUPStart, "1/1/1991");
    EXPECT_EQ(f.corpOPStart, "1/1/1995");
    for (const auto& [overpayment, text] : {std::pair{true, "12/31/1994"},
                                            {true, "1/1/1995"},
                                            {false, "12/31/1990"},
                                            {false, "1/1/1991"}}) {
        f.corpUPStart = f.corpOPStart = text;
        overpayment ? dlg.ChkCorpOPDate(f) : dlg.ChkCorpUPDate(f);
    }
    c.init.dtDue = D(1990, 1, 1);
    c.init.tlStart.dtDate = D(1984, 12, 31);
    dlg.ChkTaxMotDate();
    for (const Date due : {D(1984, 12, 31), D(1985, 1, 1), D(1989, 12, 31), D(1990, 1, 1)})
        rw::ChkTaxMotivated(rw::kYes, due, msgs);
    rw::ChkTaxMotivated(rw::kNo, D(1990, 1, 1), msgs);
    const std::string early
        = ".  You might want to double check the date you entered, which appears to be too "
          "early.";
    const std::string after = "The special interest rate on large corporate ";
    const std::string advice
        = "The due date for using tax motivated rates should be between 1/1/85 and 12/31/89.";
    EXPECT_EQ(msgs.texts(),
              (Texts{after + "overpayments is for periods after 12/31/1994" + early,
                     after + "underpayments is for periods after 12/31/1990" + early,
                     "The tax motivated rates are for returns due on or before 12/31/1989.  You "
                     "might want to double "
                     "check the date you entered, which appears to be too late.",
                     "The tax motivated rates will start after 12/31/1984.", advice, advice}));
    EXPECT_TRUE(msgs.shown[0].title == "WARNING" && msgs.shown[0].icon == rw::MsgIcon::Exclamation);
}

TEST(Dialogs, SuspensionAndExtendedDueDate)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "1000");
    c.init.dtExtended = rw::NoDate;
    RecordingMessages msgs;
    rw::SuspendDialog suspend(c, msgs);
    rw::SuspendForm f{"3/1/2016", "3/1/2016"};  // restart on the suspension day: warned, not stored
    suspend.restartChanged(f);
    EXPECT_FALSE(suspend.accept(f));
    EXPECT_TRUE(suspend.accept({"5/1/2016", "5/2/2016"}));
    EXPECT_EQ(c.init.dtRestart, D(2016, 5, 2));
    EXPECT_FALSE(suspend.accept({"", ""}));  // emptied fields leave the stored pair alone
    EXPECT_EQ(c.init.dtIntSuspend, D(2016, 5, 1));
    EXPECT_EQ(msgs.texts().at(0),
              "The date interest is suspended, 3/1/2016, must be before the date interest is "
              "restarted, 3/1/2016.");
    msgs.clear();

    rw::ExtDueDateDialog extended(c, msgs);
    EXPECT_EQ(extended.open().extended,
              "4/15/2016");  // no extended due date: the due date, at once
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));
    for (const char* text : {"4/14/2016", "4/15/2016", "12/30/2016", "12/31/2016"})
        extended.extendedLeft({text});
    EXPECT_EQ(
        msgs.texts(),
        (Texts{"The extended due date, 4/14/2016, should NOT be earlier that the due date, "
               "4/15/2016.  Please change the extended due date to 4/15/2016 or later.",
               "The extended due date, 12/31/2016, should be earlier that the interest stop date, "
               "12/31/2016.  Please change the extended due date to 12/30/2016 or earlier."}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));  // leaving the field stores nothing
    EXPECT_TRUE(extended.accept({"10/17/2016"}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 10, 17));
}

}  // namespace
