// The penalty dialogs as logic: what OK stores, what it refuses, and the
// penalties a return due too early cannot have. (The payroll deposit dialogs are tested with the
// other lists in tests/payments, as is a money field that is not a number.)
#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/refusal.h"

#include "penalties/accreldialog.h"
#include "penalties/ftodialogs.h"

#include <gtest/gtest.h>

using namespace rwtest;

namespace {

TEST(PenaltyDialogs, OkStores)
{
    rw::Case kase = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    RecordingMessages msgs;
    rw::FtoFileDialog file(kase, msgs);
    rw::FtoFileForm f = file.open();
    f.calculate = true;
    f.filedDate = "9/20/2016";  // the assessment of a return due after 7/18/1984 is not needed
    EXPECT_TRUE(file.accept(f));
    EXPECT_TRUE(kase.init.dtFtoFileAssess.isNoDate());
    EXPECT_EQ(kase.init.dtFiled, D(2016, 9, 20));
    f.calculate = false;
    EXPECT_TRUE(file.accept(f));
    EXPECT_FALSE(rw::IsYes(kase.init.bFtoFile));
    EXPECT_TRUE(rw::IsYes(kase.init.bAnyPenalties));

    rw::FtoPayDialog pay(kase, msgs);
    rw::FtoPayForm p = pay.open();
    EXPECT_EQ(p.amountOnReturn, "10,000.00");  // the initial balance while no amount is kept
    p.calculate = p.increasedRate = true;
    p.assessDate = "10/31/2016";
    p.amountOnReturn = "9,000.00";
    p.increasedStartDate = "7/1/2016";
    EXPECT_TRUE(pay.accept(p));
    EXPECT_EQ(kase.init.cAmtOnReturn, M("9,000.00"));
    EXPECT_EQ(kase.init.dt6651d1Start, D(2016, 7, 1));
    p.calculate = false;  // the increased rate keeps its flag
    EXPECT_TRUE(pay.accept(p));
    EXPECT_TRUE(rw::IsYes(kase.init.b6651d1));

    rw::AccRelDialog acc(kase, msgs);
    rw::AccRelForm a = acc.open();
    a.calculate = true;
    a.underpayment = "10,000.00";
    EXPECT_TRUE(acc.accept(a));
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
    EXPECT_TRUE(msgs.shown.empty());
}

// OK on the form refuses field: told once, the case as it was.
template<typename Dialog, typename Form>
void CheckRefused(const char* name, rw::Case c, Form f, rw::FormField<Form> field)
{
    EXPECT_EQ(rwtest::RefusalProblem<Dialog>(std::move(c), std::move(f), field), "") << name;
}

// The dates a penalty needs: the filing date; the assessment only of a
// return extended to before 7/19/1984 for failure to file, always for
// failure to pay; the start of the increased rate. A filing date that is not
// a date is refused when left, and the Extended Due Date does not follow.
TEST(PenaltyDialogs, EntriesRefused)
{
    using File = rw::FtoFileForm;
    using Pay = rw::FtoPayForm;
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10,000.00");
    CheckRefused<rw::FtoFileDialog>("no filing date", c, File{true, "", ""}, &File::filedDate);
    rw::Case old = c;
    old.init.dtExtended = D(1984, 7, 18);
    CheckRefused<rw::FtoFileDialog>("assessment, extended to 7/18/1984", old,
                                    File{true, "", "9/20/2016"}, &File::assessDate);
    for (const auto& [name, form, field] :
         {std::tuple{"no assessment", Pay{true, "", "", false, ""}, &Pay::assessDate},
          {"increased rate, no start", Pay{true, "10/31/2016", "", true, ""},
           &Pay::increasedStartDate}})
        CheckRefused<rw::FtoPayDialog>(name, c, form, field);
    RecordingMessages msgs;
    int opened = 0;
    rw::FtoFileDialog file(c, msgs, [&opened] { ++opened; });
    for (const char* filed : {"9/31/2016", "9/30/2016"}) {
        File f{true, "", filed};
        file.filedLeft(f);
    }
    EXPECT_TRUE(opened == 1 && msgs.shown.size() == 1);
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
