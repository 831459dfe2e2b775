// The penalty dialogs as logic: what OK stores, and the penalties a return
// due too early cannot have. (The payroll deposit dialogs are tested with the
// other lists in tests/payments, as is a money field that is not a number.)
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include "penalties/accreldialog.h"
#include "penalties/ftodialogs.h"

#include <gtest/gtest.h>

using namespace rwtest;
using rw::MenuMark;

namespace {

TEST(PenaltyDialogs, OkStoresAndNoClearsTheMark)
{
    rw::Case kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    RecordingMessages msgs;
    rw::FtoFileDialog file(kase, msgs);
    rw::FtoFileForm f = file.open();
    f.calculate = true;
    f.assessDate = "13/45/2016";  // not a date: stored as day 0, after the warning
    f.filedDate = "9/20/2016";
    EXPECT_EQ(file.accept(f).mark, MenuMark::Set);
    EXPECT_TRUE(msgs.texts().at(0).starts_with(
        "The Failure To File assessment date entered as 13/45/2016"));
    EXPECT_EQ(kase.init.dtFtoFileAssess, Date());
    EXPECT_EQ(kase.init.dtFiled, D(2016, 9, 20));
    f.calculate = false;
    EXPECT_EQ(file.accept(f).mark, MenuMark::Clear);
    EXPECT_FALSE(rw::IsYes(kase.init.bFtoFile));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));

    rw::FtoPayDialog pay(kase, msgs);
    rw::FtoPayForm p = pay.open();
    EXPECT_EQ(p.amountOnReturn, "10,000.00");  // the initial balance while no amount is kept
    p.calculate = p.increasedRate = true;
    p.amountOnReturn = "9,000.00";
    p.increasedStartDate = "7/1/2016";
    EXPECT_EQ(pay.accept(p).mark, MenuMark::Set);
    EXPECT_EQ(kase.init.cAmtOnReturn, M("9,000.00"));
    EXPECT_EQ(kase.init.dt6651d1Start, D(2016, 7, 1));
    p.calculate = false;  // the increased rate keeps its flag
    EXPECT_EQ(pay.accept(p).mark, MenuMark::Clear);
    EXPECT_TRUE(rw::IsYes(kase.init.b6651d1));

    rw::AccRelDialog acc(kase, msgs);
    rw::AccRelForm a = acc.open();
    a.calculate = true;
    a.underpayment = "10,000.00";
    EXPECT_EQ(acc.accept(a).mark, MenuMark::Set);
    EXPECT_EQ(kase.init.fAccRelRate, 0.2f);  // a new case's Yes takes the normal rate
    a.rateChoice = rw::AccRelRateChoice::Other;
    a.rate = ".3";
    acc.accept(a);
    a = acc.open();  // reopened with the other rate, open for entry
    EXPECT_TRUE(a.rateChoice == rw::AccRelRateChoice::Other && a.rate == ".30" && a.rateEnabled);
    a.calculate = false;  // No turns the penalty off at once, even if the dialog is then cancelled
    acc.calculateChanged(a);
    EXPECT_FALSE(rw::IsYes(kase.init.bAccRel));
    EXPECT_FALSE(acc.wantsExtendedDueDate());
}

// The increased failure-to-pay rate is for returns due after 1986; the
// accuracy-related penalty for returns due from 1990.
TEST(PenaltyDialogs, PenaltiesOfReturnsDueTooEarlyAreTurnedOff)
{
    rw::Case kase = FederalCase(D(1980, 1, 1), D(2016, 12, 31), "10,000.00");
    RecordingMessages msgs;
    for (const auto& [due, off] : {std::pair{D(1986, 12, 31), true}, {D(1987, 1, 1), false}}) {
        kase.init.dtDue = due;
        kase.init.bFtoPay = kase.init.b6651d1 = rw::kYes;
        EXPECT_EQ(rw::FtoPayDialog(kase, msgs).open().noteVisible, off) << due;
        EXPECT_EQ(rw::IsYes(kase.init.b6651d1), !off) << due;
    }
    for (const auto& [due, off] : {std::pair{D(1989, 12, 31), true}, {D(1990, 1, 1), false}}) {
        kase.init.dtDue = due;
        kase.init.bAccRel = rw::kYes;
        EXPECT_EQ(rw::AccRelDialog(kase, msgs).open().note.empty(), !off) << due;
        EXPECT_EQ(rw::IsYes(kase.init.bAccRel), !off) << due;
    }
    EXPECT_STREQ(rw::kAccRelPre1990Note, "Since the due date of the return is before 1990.  The "
                                         "Accuracy Related penalty should not be used.");
}

}  // namespace
