// The interest options, suspension and extended due date dialogs as logic,
// and the date checks they share.
#include "enginetest.h"

#include "casedata/datechecks.h"
#include "casedata/extduedate.h"
#include "engine/optrates.h"
#include "engine/suspend.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

using namespace enginetest;
using Texts = std::vector<std::string>;

namespace {

const char* const kTooEarlyUP =
    "The special interest rate on large corporate underpayments is for periods after 12/31/1990.  You might want "
    "to double check the date you entered, which appears to be too early.";
const char* const kTooEarlyOP =
    "The special interest rate on large corporate overpayments is for periods after 12/31/1994.  You might want "
    "to double check the date you entered, which appears to be too early.";

struct Dialogs : ::testing::Test {
    rw::Case c = Federal(D(1990, 1, 1), D(2000, 12, 31), "1000");
    rwtest::RecordingMessages msgs;
};

// ---- Optional rates ----------------------------------------------------------------

using OptRates = Dialogs;

TEST_F(OptRates, DefaultStartIsTheDayAfterTheThresholdOrTheDueDate)
{
    rw::OptRatesDialog dlg(c, msgs);
    rw::OptRatesForm f = dlg.open();
    EXPECT_FALSE(f.corpUPRate);
    EXPECT_FALSE(f.corpUPStartEnabled);

    c.init.dtDue = D(1992, 4, 15);
    f.corpUPRate = true;
    dlg.radCorpUPRateClick(f);
    EXPECT_TRUE(f.corpUPStartEnabled);
    EXPECT_EQ(f.corpUPStart, "4/15/1992");

    c.init.dtDue = D(1990, 4, 15);
    f.corpUPStart.clear();
    dlg.radCorpUPRateClick(f);
    EXPECT_EQ(f.corpUPStart, "1/1/1991");
    f.corpOPRate = true;
    dlg.radCorpOPRateClick(f);
    EXPECT_EQ(f.corpOPStart, "1/1/1995");

    // a date in the field is kept; a text that is no date is replaced
    f.corpUPStart = "3/3/1993";
    dlg.SetDefaultCorpUPRateDate(f);
    EXPECT_EQ(f.corpUPStart, "3/3/1993");
    f.corpUPStart = "3/33/1993";
    dlg.SetDefaultCorpUPRateDate(f);
    EXPECT_EQ(f.corpUPStart, "1/1/1991");

    f.corpUPRate = false;
    dlg.radCorpUPRateClick(f);
    EXPECT_EQ(f.corpUPStart, "");
    EXPECT_FALSE(f.corpUPStartEnabled);
    EXPECT_TRUE(msgs.shown.empty());
}

TEST_F(OptRates, NoKeepsTheStoredDateAndYesShowsIt)
{
    c.init.bCorpUPRate = rw::kYes;
    c.init.dtCorpUPRateStart = D(1993, 7, 1);
    rw::OptRatesDialog dlg(c, msgs);
    rw::OptRatesForm f = dlg.open();
    EXPECT_TRUE(f.corpUPRate);
    EXPECT_TRUE(f.corpUPStartEnabled);
    EXPECT_EQ(f.corpUPStart, "7/1/1993");

    f.corpUPRate = false;
    dlg.radCorpUPRateClick(f);
    f.corpUPRate = true;
    dlg.radCorpUPRateClick(f);
    EXPECT_EQ(f.corpUPStart, "7/1/1993");

    f.corpUPRate = false;
    EXPECT_FALSE(dlg.accept(f));  // no rate on: no check mark
    EXPECT_EQ(c.init.bCorpUPRate, rw::kNo);
    EXPECT_EQ(c.init.dtCorpUPRateStart, D(1993, 7, 1));

    // Yes with an empty field keeps the stored date too
    f.corpUPRate = true;
    f.corpUPStart.clear();
    EXPECT_TRUE(dlg.accept(f));
    EXPECT_EQ(c.init.bCorpUPRate, rw::kYes);
    EXPECT_EQ(c.init.dtCorpUPRateStart, D(1993, 7, 1));
    f.corpUPStart = "1/2/1994";
    dlg.accept(f);
    EXPECT_EQ(c.init.dtCorpUPRateStart, D(1994, 1, 2));
}

struct CorpDateCase {
    bool overpayment;
    const char* text;
    Texts warnings;
};
class CorpStartDate : public ::testing::TestWithParam<CorpDateCase> {};

TEST_P(CorpStartDate, WarnsWhenOnOrBeforeTheThreshold)
{
    const CorpDateCase& p = GetParam();
    rw::Case c = Federal(D(1990, 1, 1), D(2000, 12, 31), "1000");
    rwtest::RecordingMessages msgs;
    rw::OptRatesDialog dlg(c, msgs);
    rw::OptRatesForm f;
    f.corpUPStart = f.corpOPStart = p.text;
    if (p.overpayment)
        dlg.ChkCorpOPDate(f);
    else
        dlg.ChkCorpUPDate(f);
    EXPECT_EQ(msgs.texts(), p.warnings);
    for (const auto& m : msgs.shown) {
        EXPECT_EQ(m.title, "WARNING");
        EXPECT_EQ(m.icon, rw::MsgIcon::Exclamation);
    }
}

INSTANTIATE_TEST_SUITE_P(
    OptRates, CorpStartDate,
    ::testing::Values(CorpDateCase{true, "12/31/1994", {kTooEarlyOP}}, CorpDateCase{true, "1/1/1995", {}},
                      CorpDateCase{false, "12/31/1990", {kTooEarlyUP}}, CorpDateCase{false, "1/1/1991", {}},
                      CorpDateCase{false, "",
                                   {"The Special Corporate Underpayment Interest Starting date entered as  is not "
                                    "valid.  Unless it is changed, somewhere at an inconvenient moment this "
                                    "program is likely to abort."}}));

TEST_F(OptRates, TaxMotivatedWarnings)
{
    rw::OptRatesDialog dlg(c, msgs);
    c.init.dtDue = D(1990, 1, 1);
    c.init.tlStart.dtDate = D(1984, 12, 31);
    dlg.ChkTaxMotDate();
    EXPECT_EQ(msgs.texts(), (Texts{"The tax motivated rates are for returns due on or before 12/31/1989.  You might "
                                   "want to double check the date you entered, which appears to be too late.",
                                   "The tax motivated rates will start after 12/31/1984."}));
    msgs.clear();
    c.init.dtDue = D(1989, 12, 31);
    c.init.tlStart.dtDate = D(1985, 1, 1);
    dlg.ChkTaxMotDate();
    EXPECT_TRUE(msgs.shown.empty());

    // OK stores the choice; the due-date advice comes only for a due date
    // outside 1/1/1985-12/31/1989
    rw::OptRatesForm f = dlg.open();
    f.taxMotivated = true;
    EXPECT_TRUE(dlg.accept(f));
    EXPECT_EQ(c.init.bTaxMotivated, rw::kYes);
    EXPECT_TRUE(msgs.shown.empty());
    const Texts advice{"The due date for using tax motivated rates should be between 1/1/85 and 12/31/89."};
    for (Date due : {D(1984, 12, 31), D(1990, 1, 1)}) {
        msgs.clear();
        rw::ChkTaxMotivated(rw::kYes, due, msgs);
        EXPECT_EQ(msgs.texts(), advice);
    }
    msgs.clear();
    rw::ChkTaxMotivated(rw::kNo, D(1990, 1, 1), msgs);
    rw::ChkTaxMotivated(rw::kYes, D(1985, 1, 1), msgs);
    EXPECT_TRUE(msgs.shown.empty());
    f.taxMotivated = false;
    EXPECT_FALSE(dlg.accept(f));
    EXPECT_EQ(c.init.bTaxMotivated, rw::kNo);
}

// ---- Suspension ----------------------------------------------------------------------

using Suspension = Dialogs;

TEST_F(Suspension, OnlyAValidPairIsStored)
{
    rw::SuspendDialog dlg(c, msgs);
    rw::SuspendForm f = dlg.open();
    EXPECT_EQ(f.suspendDate, "");
    EXPECT_EQ(f.restartDate, "");

    // restart on the suspension day: warned, not stored
    f = {"3/1/1995", "3/1/1995"};
    dlg.restartChanged(f);
    EXPECT_EQ(msgs.texts(), (Texts{"The date interest is suspended, 3/1/1995, must be before the date interest is "
                                   "restarted, 3/1/1995."}));
    EXPECT_FALSE(dlg.accept(f));
    EXPECT_TRUE(c.init.dtIntSuspend.isNoDate());

    msgs.clear();
    f.suspendDate = "";
    EXPECT_FALSE(dlg.accept(f));
    EXPECT_EQ(msgs.texts(), (Texts{"The Interest Suspension date entered as  is not valid.  Unless it is changed, "
                                   "somewhere at an inconvenient moment this program is likely to abort."}));
    EXPECT_TRUE(c.init.dtIntSuspend.isNoDate());

    msgs.clear();
    f = {"3/1/1995", "3/2/1995"};
    dlg.restartChanged(f);
    EXPECT_TRUE(dlg.accept(f));  // "&Suspend Interest..." checked
    EXPECT_TRUE(msgs.shown.empty());
    EXPECT_EQ(c.init.dtIntSuspend, D(1995, 3, 1));
    EXPECT_EQ(c.init.dtRestart, D(1995, 3, 2));
    f = dlg.open();
    EXPECT_EQ(f.suspendDate, "3/1/1995");
    EXPECT_EQ(f.restartDate, "3/2/1995");

    // emptied fields leave the stored pair alone
    EXPECT_FALSE(dlg.accept({"", ""}));
    EXPECT_EQ(c.init.dtIntSuspend, D(1995, 3, 1));
}

// ---- Extended due date ----------------------------------------------------------------

using ExtendedDueDate = Dialogs;

TEST_F(ExtendedDueDate, OpeningFillsTheDueDateAndKeepsItOnCancel)
{
    c.init.dtDue = D(2016, 4, 15);
    c.init.tlStop.dtDate = D(2016, 12, 31);
    ASSERT_TRUE(c.init.dtExtended.isNoDate());
    rw::ExtDueDateDialog dlg(c, msgs);
    EXPECT_EQ(dlg.open().extended, "4/15/2016");
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));  // stays, whatever the button
    EXPECT_TRUE(msgs.shown.empty());

    c.init.dtExtended = Date(0.0);
    dlg.open();
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));
}

TEST_F(ExtendedDueDate, LeavingTheFieldChecksWithoutStoring)
{
    c.init.dtDue = D(2016, 4, 15);
    c.init.tlStop.dtDate = D(2016, 12, 31);
    c.init.dtExtended = D(2016, 10, 15);
    rw::ExtDueDateDialog dlg(c, msgs);
    dlg.extendedLeft({"4/14/2016"});
    EXPECT_EQ(msgs.texts(), (Texts{"The extended due date, 4/14/2016, should NOT be earlier that the due date, "
                                   "4/15/2016.  Please change the extended due date to 4/15/2016 or later."}));
    msgs.clear();
    dlg.extendedLeft({"12/31/2016"});
    EXPECT_EQ(msgs.texts(), (Texts{"The extended due date, 12/31/2016, should be earlier that the interest stop date, "
                                   "12/31/2016.  Please change the extended due date to 12/30/2016 or earlier."}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 10, 15));

    msgs.clear();
    EXPECT_TRUE(dlg.accept({"10/17/2016"}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 10, 17));
    EXPECT_FALSE(dlg.accept({"10/32/2016"}));
    EXPECT_EQ(c.init.dtExtended, Date(0.0));  // not a date: day 0, after the warning
    EXPECT_EQ(msgs.shown.size(), 1u);
}

// ---- The shared date checks -------------------------------------------------------------

struct PeriodCheck {
    const char* text;
    bool result;
    Texts warnings;
};
class DateInPeriod : public ::testing::TestWithParam<PeriodCheck> {};

TEST_P(DateInPeriod, WarnsOutsideTheCalculation)
{
    rw::Case c = Federal(D(2016, 4, 15), D(2016, 12, 31), "0");
    rwtest::RecordingMessages msgs;
    EXPECT_EQ(rw::ChkDateInPeriod(GetParam().text, "Filing", c.init, msgs), GetParam().result);
    EXPECT_EQ(msgs.texts(), GetParam().warnings);
}

const char* const kBeforeStart =
    "Filing date is on or before the start date of the interest calculation.  Unreliable results or an unplanned "
    "termination may occurr if this is not corrected. You might want to use 4/16/2016 instead.";
const char* const kAfterStop =
    "Filing date is on or after the stop date of the interest calculation.  Unreliable results or an unplanned "
    "termination may occurr if this is not corrected. You might want to use 12/30/2016 instead.";

INSTANTIATE_TEST_SUITE_P(
    DateChecks, DateInPeriod,
    ::testing::Values(PeriodCheck{"4/15/2016", false, {kBeforeStart}}, PeriodCheck{"12/31/2016", false, {kAfterStop}},
                      PeriodCheck{"4/16/2016", true, {}}, PeriodCheck{"12/30/2016", true, {}},
                      PeriodCheck{"13/45/2016",
                                  true,
                                  {"The Filing date entered as 13/45/2016 is not valid.  Unless it is changed, "
                                   "somewhere at an inconvenient moment this program is likely to abort."}}));

TEST(DateChecks, StartOnOrAfterStopGivesBothWarningsStartFirst)
{
    rw::Case c = Federal(D(2016, 12, 31), D(2016, 4, 15), "0");
    rwtest::RecordingMessages msgs;
    EXPECT_FALSE(rw::ChkDateInPeriod("6/1/2016", "Filing", c.init, msgs));
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_EQ(msgs.shown[0].text.rfind("Filing date is on or before the start date", 0), 0u);
    EXPECT_EQ(msgs.shown[1].text.rfind("Filing date is on or after the stop date", 0), 0u);
}

TEST(DateChecks, ErrorAnswersAndDateFields)
{
    rwtest::RecordingMessages msgs;
    rw::DateChkError(13, "Assessment", msgs);
    rw::DateChkError(9, "Assessment", msgs);
    EXPECT_EQ(msgs.texts(), (Texts{"Assessment date blank!  Unreliable results or an unplanned termination may "
                                   "occurr if this is not corrected. ",
                                   "Error: Subscript out of range"}));
    EXPECT_EQ(rw::InitCSDateCtrl(rw::NoDate), "");
    EXPECT_EQ(rw::InitCSDateCtrl(D(2016, 7, 4)), "7/4/2016");
    Date d = D(2000, 1, 1);
    EXPECT_FALSE(rw::DateValid("", "Filing", d, msgs));
    EXPECT_EQ(d, Date(0.0));
}

}  // namespace
