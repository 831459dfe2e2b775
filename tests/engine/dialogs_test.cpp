// The interest options, suspension and extended due date dialogs as logic,
// and the date checks every input dialog shares (their texts are checked here).
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

struct Dialogs : ::testing::Test {
    rw::Case c = FederalCase(D(1990, 1, 1), D(2000, 12, 31), "1000");
    RecordingMessages msgs;
};

// A corporate rate starts the day after its threshold (12/31/1990, 12/31/1994)
// or on a later due date; a start on or before the threshold is warned about.
TEST_F(Dialogs, CorporateRateStartDates)
{
    rw::OptRatesDialog dlg(c, msgs);
    rw::OptRatesForm f = dlg.open();
    c.init.dtDue = D(1992, 4, 15);
    f.corpUPRate = f.corpOPRate = true;
    dlg.radCorpUPRateClick(f);
    dlg.radCorpOPRateClick(f);
    EXPECT_TRUE(f.corpUPStartEnabled);
    EXPECT_EQ(f.corpUPStart, "4/15/1992");
    EXPECT_EQ(f.corpOPStart, "1/1/1995");
    c.init.dtDue = D(1990, 4, 15);
    for (const char* text : {"", "3/33/1993"}) {  // empty or no date: the default; a date is kept
        f.corpUPStart = text;
        dlg.SetDefaultCorpUPRateDate(f);
        EXPECT_EQ(f.corpUPStart, "1/1/1991");
    }
    EXPECT_TRUE(msgs.shown.empty());
    for (const auto& [overpayment, text] : {std::pair{true, "12/31/1994"}, {true, "1/1/1995"},
                                            {false, "12/31/1990"}, {false, "1/1/1991"}}) {
        f.corpUPStart = f.corpOPStart = text;
        overpayment ? dlg.ChkCorpOPDate(f) : dlg.ChkCorpUPDate(f);
    }
    const std::string tail = ".  You might want to double check the date you entered, which appears to be too early.";
    EXPECT_EQ(msgs.texts(),
              (Texts{"The special interest rate on large corporate overpayments is for periods after 12/31/1994" + tail,
                     "The special interest rate on large corporate underpayments is for periods after 12/31/1990" + tail}));
    EXPECT_TRUE(msgs.shown[0].title == "WARNING" && msgs.shown[0].icon == rw::MsgIcon::Exclamation);

    // OK: No keeps the stored date, and so does Yes with an empty field
    f.corpUPStart = "7/1/1993";
    EXPECT_TRUE(dlg.accept(f));
    f.corpUPRate = f.corpOPRate = false;
    EXPECT_FALSE(dlg.accept(f));  // no rate on: no check mark
    EXPECT_EQ(c.init.bCorpUPRate, rw::kNo);
    f.corpUPRate = true;
    f.corpUPStart.clear();
    EXPECT_TRUE(dlg.accept(f));
    EXPECT_EQ(c.init.dtCorpUPRateStart, D(1993, 7, 1));
}

TEST_F(Dialogs, TaxMotivatedRatesAreForReturnsDue1985To1989)
{
    rw::OptRatesDialog dlg(c, msgs);
    c.init.tlStart.dtDate = D(1984, 12, 31);
    dlg.ChkTaxMotDate();
    c.init.dtDue = D(1989, 12, 31);
    c.init.tlStart.dtDate = D(1985, 1, 1);
    dlg.ChkTaxMotDate();
    for (const Date due : {D(1984, 12, 31), D(1985, 1, 1), D(1989, 12, 31), D(1990, 1, 1)})
        rw::ChkTaxMotivated(rw::kYes, due, msgs);
    rw::ChkTaxMotivated(rw::kNo, D(1990, 1, 1), msgs);
    const std::string advice = "The due date for using tax motivated rates should be between 1/1/85 and 12/31/89.";
    EXPECT_EQ(msgs.texts(), (Texts{"The tax motivated rates are for returns due on or before 12/31/1989.  You might "
                                   "want to double check the date you entered, which appears to be too late.",
                                   "The tax motivated rates will start after 12/31/1984.", advice, advice}));
    rw::OptRatesForm f = dlg.open();
    f.taxMotivated = true;
    EXPECT_TRUE(dlg.accept(f));
    EXPECT_EQ(c.init.bTaxMotivated, rw::kYes);
}

TEST_F(Dialogs, SuspensionStoresAValidPairOnly)
{
    rw::SuspendDialog dlg(c, msgs);
    rw::SuspendForm f{"3/1/1995", "3/1/1995"};  // restart on the suspension day: warned, not stored
    dlg.restartChanged(f);
    EXPECT_FALSE(dlg.accept(f));
    EXPECT_FALSE(dlg.accept({"", "3/2/1995"}));
    EXPECT_EQ(msgs.texts().at(0), "The date interest is suspended, 3/1/1995, must be before the date interest is "
                                  "restarted, 3/1/1995.");
    EXPECT_TRUE(msgs.shown.back().text.starts_with("The Interest Suspension date entered as  is not valid."));
    EXPECT_TRUE(c.init.dtIntSuspend.isNoDate());
    msgs.clear();
    EXPECT_TRUE(dlg.accept({"3/1/1995", "3/2/1995"}));  // "&Suspend Interest..." checked
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(c.init.dtIntSuspend, D(1995, 3, 1));
    EXPECT_EQ(c.init.dtRestart, D(1995, 3, 2));
    EXPECT_EQ(dlg.open().restartDate, "3/2/1995");
    EXPECT_FALSE(dlg.accept({"", ""}));  // emptied fields leave the stored pair alone
    EXPECT_EQ(c.init.dtIntSuspend, D(1995, 3, 1));
}

TEST_F(Dialogs, ExtendedDueDate)
{
    c.init.dtDue = D(2016, 4, 15);
    c.init.tlStop.dtDate = D(2016, 12, 31);
    for (const Date none : {rw::NoDate, Date(0.0)}) {  // opening fills the due date, whatever the button
        c.init.dtExtended = none;
        EXPECT_EQ(rw::ExtDueDateDialog(c, msgs).open().extended, "4/15/2016");
        EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));
    }
    rw::ExtDueDateDialog dlg(c, msgs);
    for (const char* text : {"4/14/2016", "4/15/2016", "12/30/2016", "12/31/2016"})
        dlg.extendedLeft({text});
    EXPECT_EQ(msgs.texts(), (Texts{"The extended due date, 4/14/2016, should NOT be earlier that the due date, "
                                   "4/15/2016.  Please change the extended due date to 4/15/2016 or later.",
                                   "The extended due date, 12/31/2016, should be earlier that the interest stop date, "
                                   "12/31/2016.  Please change the extended due date to 12/30/2016 or earlier."}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));  // leaving the field stores nothing
    EXPECT_TRUE(dlg.accept({"10/17/2016"}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 10, 17));
    EXPECT_FALSE(dlg.accept({"10/32/2016"}));
    EXPECT_EQ(c.init.dtExtended, Date(0.0));  // not a date: day 0, after the warning
}

TEST(DateChecks, DateInPeriodWarnsOnOrOutsideTheEdges)
{
    const std::string tail = "date of the interest calculation.  Unreliable results or an unplanned termination may "
                             "occurr if this is not corrected. You might want to use ";
    const std::string before = "Filing date is on or before the start " + tail + "4/16/2016 instead.";
    const std::string after = "Filing date is on or after the stop " + tail + "12/30/2016 instead.";
    for (const auto& [text, ok, warnings] :
         {std::tuple{"4/15/2016", false, Texts{before}}, {"12/31/2016", false, Texts{after}},
          {"4/16/2016", true, Texts{}}, {"12/30/2016", true, Texts{}},
          {"13/45/2016", true,
           Texts{"The Filing date entered as 13/45/2016 is not valid.  Unless it is changed, somewhere at an "
                 "inconvenient moment this program is likely to abort."}}}) {
        RecordingMessages msgs;
        EXPECT_EQ(rw::ChkDateInPeriod(text, "Filing", FederalCase(D(2016, 4, 15), D(2016, 12, 31), "0").init, msgs), ok);
        EXPECT_EQ(msgs.texts(), warnings);
    }
    RecordingMessages msgs;  // start on or after stop: both warnings, the start's first
    EXPECT_FALSE(rw::ChkDateInPeriod("6/1/2016", "Filing", FederalCase(D(2016, 12, 31), D(2016, 4, 15), "0").init, msgs));
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_TRUE(msgs.texts()[0].starts_with("Filing date is on or before the start date"));
    EXPECT_TRUE(msgs.texts()[1].starts_with("Filing date is on or after the stop date"));
    msgs.clear();
    rw::DateChkError(13, "Assessment", msgs);
    rw::DateChkError(9, "Assessment", msgs);
    EXPECT_EQ(msgs.texts(), (Texts{"Assessment date blank!  Unreliable results or an unplanned termination may "
                                   "occurr if this is not corrected. ",
                                   "Error: Subscript out of range"}));
    EXPECT_EQ(rw::InitCSDateCtrl(rw::NoDate), "");
    EXPECT_EQ(rw::InitCSDateCtrl(D(2016, 7, 4)), "7/4/2016");
}

}  // namespace
