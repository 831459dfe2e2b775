// State cases computed on the state tables the release build makes, end to
// end, read from the tests' release of the rates (built from the frozen
// sources of late 2026), on periods whose rates were published.
#include "base/fault.h"
#include "casedata/initialinputs.h"
#include "engine/intcalc.h"
#include "penalties/compute.h"

#include "support/recordingmessages.h"

#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using rw::Date;
using rw::Money;

rw::Paths ReleasePaths()
{
    const std::filesystem::path dir = rwtest::FixtureReleaseFolder();
    return rw::Paths::ForFolders(dir, dir);
}

rw::InitialInputsForm StateCase(int authority, const char* start, const char* stop)
{
    rw::InitialInputsForm f;
    f.name = "State Case";
    f.authority = authority;
    f.dueDate = start;
    f.startDate = start;
    f.stopDate = stop;
    f.initialBalance = "10,000.00";
    return f;
}

TEST(StateTables, PennsylvaniaTwoThousandTenAndElevenRunsOnThePennsylvaniaRates)
{
    const rw::Paths paths = ReleasePaths();
    rw::Case c;
    rw::ClearInputs(c);
    rw::RateTable rates;
    rwtest::RecordingMessages msgs;
    rw::InitialInputsDialog dlg(c, rates, paths, msgs);
    ASSERT_EQ(dlg.accept(StateCase(22, "1/1/2010", "12/31/2011")), rw::InitialInputsDialog::Result::Stored);
    ASSERT_TRUE(c.init.sTaxAuth.is("PA  "));
    EXPECT_TRUE(msgs.shown.empty()) << msgs.shown.at(0).text;

    const rw::CaseComputation k = rw::ComputeCase(c, rates, rwtest::Minimums2018());
    // Pennsylvania charges simple interest at an annual rate: 4 % for 2010,
    // 3 % for 2011 (PA.csv), one table row each; both years have 365 days.
    // Interest runs from 1/2/2010: 364 days of 2010, then 365 of 2011.
    //   10,000 x 0.04f x 364 / 365 = 398.9041 -> 398.90
    //   10,000 x 0.03f x 365 / 365 = 299.99999 -> 300.00
    ASSERT_EQ(k.rows.size(), 3u);
    EXPECT_EQ(k.rows[1].dtBegin, Date::fromCivil(2010, 1, 2));
    EXPECT_EQ(k.rows[1].dtEnd, Date::fromCivil(2010, 12, 31));
    EXPECT_EQ(k.rows[1].fRate, 0.04f);
    EXPECT_EQ(k.rows[1].nDays, 364);
    EXPECT_TRUE(k.rows[1].sDesc.is("Undrpmt Rate"));
    EXPECT_EQ(k.rows[1].cInterest, Money::fromCents(39890));
    EXPECT_EQ(k.rows[2].dtBegin, Date::fromCivil(2011, 1, 1));
    EXPECT_EQ(k.rows[2].dtEnd, Date::fromCivil(2011, 12, 31));
    EXPECT_EQ(k.rows[2].fRate, 0.03f);
    EXPECT_EQ(k.rows[2].nDays, 365);
    EXPECT_EQ(k.rows[2].cInterest, Money::fromCents(30000));
    EXPECT_EQ(k.interest, Money::fromCents(69890));
}

TEST(StateTables, AStopDateBeyondAStateTableIsAnsweredByTheRangeMessageNotACrash)
{
    const rw::Paths paths = ReleasePaths();
    rw::Case c;
    rw::ClearInputs(c);
    rw::RateTable rates;
    rwtest::RecordingMessages msgs;
    rw::InitialInputsDialog dlg(c, rates, paths, msgs);
    // West Virginia's table runs from 7/1/2002 to 12/31/2023 (WV.csv: the
    // first and last sourced rows).
    msgs.answerNext(true);
    ASSERT_EQ(dlg.accept(StateCase(29, "1/1/2021", "6/30/2024")), rw::InitialInputsDialog::Result::Stored);
    ASSERT_TRUE(c.init.sTaxAuth.is("WV  "));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "State Rate Table Problem");
    EXPECT_EQ(msgs.shown[0].text.rfind("The stop date, 06/30/2024, is not between the first date, 07/01/2002, and "
                                       "the last date, 12/31/2023, in the state's rate table file.",
                                       0),
              0u);
    // Going on regardless, the computation is refused, naming where the
    // table ends: an expected condition, not a fault.
    try {
        (void)rw::ComputeCase(c, rates, rwtest::Minimums2018());
        FAIL() << "computed beyond the table";
    } catch (const rw::Refusal& r) {
        EXPECT_NE(r.text().find("ends on 12/31/2023"), std::string::npos) << r.text();
    }
}

}  // namespace
