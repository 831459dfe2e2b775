// The date checks every input dialog shares (their texts are checked here),
// and the warnings of the interest options, suspension and extended due date.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"
#include "support/refusal.h"

#include "casedata/datechecks.h"
#include "casedata/extduedate.h"
#include "engine/optrates.h"
#include "engine/suspend.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

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
    for (const auto& [date, ok, warnings] : {std::tuple{D(2016, 4, 15), false, Texts{before}},
                                             {D(2016, 12, 31), false, Texts{after}},
                                             {D(2016, 4, 16), true, Texts{}},
                                             {D(2016, 12, 30), true, Texts{}}}) {
        RecordingMessages msgs;
        const rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "0");
        EXPECT_EQ(rw::ChkDateInPeriod(date, "Filing", c.init, msgs), ok);
        EXPECT_EQ(msgs.texts(), warnings);
    }
    RecordingMessages msgs;  // start on or after stop: both warnings, the start's first
    const rw::Case reversed = FederalCase(D(2016, 12, 31), D(2016, 4, 15), "0");
    EXPECT_FALSE(rw::ChkDateInPeriod(D(2016, 6, 1), "Filing", reversed.init, msgs));
    ASSERT_EQ(msgs.shown.size(), 2u);
    EXPECT_TRUE(msgs.texts()[0].starts_with("Filing date is on or before the start date"));
    EXPECT_TRUE(msgs.texts()[1].starts_with("Filing date is on or after the stop date"));
    EXPECT_EQ(rw::InitCSDateCtrl(rw::NoDate), "");
    EXPECT_EQ(rw::InitCSDateCtrl(D(2016, 7, 4)), "7/4/2016");
}

// A date field read on OK: a date, nothing the case can do without, or a
// refusal (told, the field marked to be selected again); leaving the field
// refuses only a text that is not a date. Nothing is ever read as day 0.
struct OneField {
    std::string text;
    rw::FormField<OneField> refused = nullptr;
};

TEST(DateChecks, FieldsRefuseWhatIsNotADateAndAnEmptyOneTheCaseNeeds)
{
    const std::string example = "as month/day/year, such as 4/15/2024.";
    const std::string notADate = " is not a date.  Please enter a date " + example;
    using Need = rw::DateNeed;
    const std::tuple<const char*, Need, std::optional<Date>, Texts> rows[] = {
        {" 4/15/2024", Need::Needed, D(2024, 4, 15), {}},
        {"13/45/2022", Need::Optional, {}, {"The Payment date entered as 13/45/2022" + notADate}},
        {"abc", Need::Optional, {}, {"The Payment date entered as abc" + notADate}},
        {"12/31/2199", Need::Needed, D(2199, 12, 31), {}},
        {"1/1/2200",
         Need::Optional,
         {},
         {"The Payment date entered as 1/1/2200 lies outside the years this program works with, "
          "1800 to 2199.  Please enter a date "
          + example}},
        {"", Need::Needed, {}, {"Please enter the Payment date " + example}},
        {"__/__/____", Need::Optional, rw::NoDate, {}},
    };
    for (const auto& [text, need, taken, said] : rows) {
        RecordingMessages msgs;
        OneField f{text}, left{text};
        EXPECT_EQ(rw::TakeDate(f, &OneField::text, "Payment", need, msgs), taken) << text;
        EXPECT_TRUE(msgs.texts() == said && (f.refused != nullptr) == !taken) << text;
        rw::DateLeft(left, &OneField::text, "Payment", msgs);
        EXPECT_EQ(left.refused != nullptr, !taken && !said.at(0).starts_with("Please")) << text;
    }
    RecordingMessages msgs;  // the amount of an entry is not 0
    OneField amount{"0.00"};
    EXPECT_FALSE(rw::TakeAmount(amount, &OneField::text, "Payment Amount", "payment", msgs));
    EXPECT_EQ(msgs.texts(),
              Texts{"The Payment Amount is 0.  Please enter the amount of the payment."});
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

// OK on the form refuses field: told once, the case as it was.
template<typename Dialog, typename Form>
void CheckRefused(const char* name, rw::Case c, Form f, rw::FormField<Form> field)
{
    EXPECT_EQ(rwtest::RefusalProblem<Dialog>(std::move(c), std::move(f), field), "") << name;
}

// What the option dialogs need on OK: a start date for a corporate rate that
// is on, both suspension dates (or neither), the restart after the
// suspension, an extended due date; a start date that is not one is refused
// when left.
TEST(Dialogs, OptionEntriesRefused)
{
    using O = rw::OptRatesForm;
    using S = rw::SuspendForm;
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "1000");
    O corp;
    corp.corpOPRate = true;
    CheckRefused<rw::OptRatesDialog>("a rate on, no start", c, corp, &O::corpOPStart);
    for (const auto& [name, form, field] :
         {std::tuple{"suspended, no restart", S{"6/1/2016", ""}, &S::restartDate},
          {"a restart, no suspension", S{" ", "9/1/2016"}, &S::suspendDate},
          {"restarted on the suspension day", S{"3/1/2016", "3/1/2016"}, &S::restartDate}})
        CheckRefused<rw::SuspendDialog>(name, c, form, field);
    CheckRefused<rw::ExtDueDateDialog>("no extended due date", c, rw::ExtDueDateForm{""},
                                       &rw::ExtDueDateForm::extended);
    RecordingMessages msgs;
    corp.corpUPStart = "13/45/1996";
    rw::OptRatesDialog(c, msgs).ChkCorpUPDate(corp);
    EXPECT_EQ(corp.refused, &O::corpUPStart);
}

TEST(Dialogs, SuspensionAndExtendedDueDate)
{
    rw::Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "1000");
    c.init.dtExtended = rw::NoDate;
    RecordingMessages msgs;
    rw::SuspendDialog suspend(c, msgs);
    rw::SuspendForm f{"3/1/2016", "3/1/2016"};  // restart on the suspension day: advice on leaving
    suspend.restartChanged(f);
    f = {"5/1/2016", "5/2/2016"};
    EXPECT_TRUE(suspend.accept(f) && c.init.dtRestart == D(2016, 5, 2));
    f = {"", " "};
    EXPECT_TRUE(suspend.accept(f));  // both emptied: no suspension
    EXPECT_TRUE(c.init.dtIntSuspend.isNoDate() && c.init.dtRestart.isNoDate());
    EXPECT_EQ(msgs.texts(),
              Texts{"The date interest is suspended, 3/1/2016, must be before the date interest is "
                    "restarted, 3/1/2016."});
    msgs.clear();

    rw::ExtDueDateDialog extended(c, msgs);
    EXPECT_EQ(extended.open().extended,
              "4/15/2016");  // no extended due date: the due date, at once
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));
    for (const char* text : {"4/14/2016", "4/15/2016", "12/30/2016", "12/31/2016", ""}) {
        rw::ExtDueDateForm left{text};
        extended.extendedLeft(left);
    }
    EXPECT_EQ(
        msgs.texts(),
        (Texts{"The extended due date, 4/14/2016, should NOT be earlier that the due date, "
               "4/15/2016.  Please change the extended due date to 4/15/2016 or later.",
               "The extended due date, 12/31/2016, should be earlier that the interest stop date, "
               "12/31/2016.  Please change the extended due date to 12/30/2016 or earlier."}));
    EXPECT_EQ(c.init.dtExtended, D(2016, 4, 15));  // leaving the field stores nothing
    rw::ExtDueDateForm ok{"10/17/2016"};
    EXPECT_TRUE(extended.accept(ok));
    EXPECT_EQ(c.init.dtExtended, D(2016, 10, 17));
}

}  // namespace
