// A state case on the table the release build makes, read from the tests'
// release of the rates (built from the frozen sources of late 2026).
#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/releases.h"

#include "casedata/initialinputs.h"
#include "penalties/compute.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

// Pennsylvania, chosen in Initial Inputs: simple interest, 4 % for 2010 and
// 3 % for 2011 (PA.csv), one row each, from 1/2/2010:
//   10,000 x 0.04 x 364 / 365 = 398.9041 -> 398.90;  10,000 x 0.03 x 365 / 365 = 300.00.
TEST(BuiltTables, PennsylvaniaTwoThousandTenAndEleven)
{
    rw::Case c;
    rw::ClearInputs(c);
    rw::RateTable rates;
    RecordingMessages msgs;
    const rw::Paths paths = rw::Paths::ForFolders(FixtureReleaseFolder(), FixtureReleaseFolder());
    rw::InitialInputsForm f;
    f.name = "State Case";
    f.authority = 22;
    f.dueDate = f.startDate = "1/1/2010";
    f.stopDate = "12/31/2011";
    f.initialBalance = "10,000.00";
    ASSERT_EQ(rw::InitialInputsDialog(c, rates, paths, msgs).accept(f), rw::InitialInputsDialog::Result::Stored);
    ASSERT_TRUE(c.init.sTaxAuth.is("PA  "));
    const rw::CaseComputation k = rw::ComputeCase(c, rates, Minimums2018());
    ASSERT_EQ(k.rows.size(), 3u);
    EXPECT_EQ(k.rows[1].dtBegin, D(2010, 1, 2));
    EXPECT_EQ(k.rows[1].fRate, 0.04f);
    EXPECT_TRUE(k.rows[1].sDesc.is("Undrpmt Rate"));
    EXPECT_EQ(k.rows[1].cInterest, M("398.90"));
    EXPECT_EQ(k.rows[2].dtBegin, D(2011, 1, 1));
    EXPECT_EQ(k.rows[2].fRate, 0.03f);
    EXPECT_EQ(k.rows[2].cInterest, M("300.00"));
    EXPECT_TRUE(msgs.shown.empty());
}

}  // namespace
