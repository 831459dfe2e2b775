// State cases computed on the delivered state tables, end to end.
#include "casedata/fault.h"
#include "casedata/initialinputs.h"
#include "engine/intcalc.h"
#include "penalties/compute.h"

#include "support/recordingmessages.h"

#include "support/releases.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

using rw::Date;
using rw::Money;

rw::Paths InstalledPaths()
{
    const char* dir = std::getenv("RW_INSTALL_DIR");
    EXPECT_NE(dir, nullptr) << "the tests run with RW_INSTALL_DIR set to the built installation folder";
    return rw::Paths::ForFolders(dir ? dir : ".", dir ? dir : ".");
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

TEST(StateTables, PennsylvaniaTwoThousandTenToFifteenRunsOnThePennsylvaniaRates)
{
    const rw::Paths paths = InstalledPaths();
    rw::Case c;
    rw::ClearInputs(c);
    rw::RateTable rates;
    rwtest::RecordingMessages msgs;
    rw::InitialInputsDialog dlg(c, rates, paths, msgs);
    ASSERT_EQ(dlg.accept(StateCase(22, "1/1/2010", "12/31/2015")), rw::InitialInputsDialog::Result::Stored);
    ASSERT_TRUE(c.init.sTaxAuth.is("PA  "));
    EXPECT_TRUE(msgs.shown.empty()) << msgs.shown.at(0).text;

    const rw::CaseComputation k = rw::ComputeCase(c, rates, rwtest::Minimums2018());
    // Pennsylvania charges simple interest at an annual rate: 4 % for 2010,
    // 3 % for 2011 through 2016 (one period of the table). Interest runs from
    // 1/2/2010: 364 days of 2010, then 1/1/2011 - 12/31/2015, 1,826 days.
    //   10,000 x 0.04f x 364 / 365  = 398.9041 -> 398.90
    //   10,000 x 0.03f x 1826 / 365 = 1,500.8219 -> 1,500.82
    ASSERT_EQ(k.rows.size(), 3u);
    EXPECT_EQ(k.rows[1].dtBegin, Date::fromCivil(2010, 1, 2));
    EXPECT_EQ(k.rows[1].dtEnd, Date::fromCivil(2010, 12, 31));
    EXPECT_EQ(k.rows[1].fRate, 0.04f);
    EXPECT_EQ(k.rows[1].nDays, 364);
    EXPECT_TRUE(k.rows[1].sDesc.is("Undrpmt Rate"));
    EXPECT_EQ(k.rows[1].cInterest, Money::fromCents(39890));
    EXPECT_EQ(k.rows[2].dtBegin, Date::fromCivil(2011, 1, 1));
    EXPECT_EQ(k.rows[2].fRate, 0.03f);
    EXPECT_EQ(k.rows[2].nDays, 1826);
    EXPECT_EQ(k.rows[2].cInterest, Money::fromCents(150082));
    EXPECT_EQ(k.interest, Money::fromCents(189972));
}

TEST(StateTables, AStopDateBeyondAStateTableIsAnsweredByTheRangeMessageNotACrash)
{
    const rw::Paths paths = InstalledPaths();
    rw::Case c;
    rw::ClearInputs(c);
    rw::RateTable rates;
    rwtest::RecordingMessages msgs;
    rw::InitialInputsDialog dlg(c, rates, paths, msgs);
    // West Virginia's table ends 12/31/2023.
    msgs.answerNext(true);
    ASSERT_EQ(dlg.accept(StateCase(29, "1/1/2021", "6/30/2024")), rw::InitialInputsDialog::Result::Stored);
    ASSERT_TRUE(c.init.sTaxAuth.is("WV  "));
    ASSERT_EQ(msgs.shown.size(), 1u);
    EXPECT_EQ(msgs.shown[0].title, "State Rate Table Problem");
    EXPECT_EQ(msgs.shown[0].text.rfind("The stop date, 06/30/2024, is not between the first date, 01/01/2020, and "
                                       "the last date, 12/31/2023, in the state's rate table file.",
                                       0),
              0u);
    // Going on regardless, the computation refuses the period beyond the table
    // with a fault that names the lookup and the dates.
    try {
        (void)rw::ComputeCase(c, rates, rwtest::Minimums2018());
        FAIL() << "computed beyond the table";
    } catch (const rw::Fault& f) {
        EXPECT_EQ(f.number(), rw::kErrSubscript);
        EXPECT_NE(f.detail().find("12/31/2023"), std::string::npos) << f.detail();
    }
}

}  // namespace
