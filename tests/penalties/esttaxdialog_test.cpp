// The "Estimated Tax" dialog as logic: what OK stores and opens again, and
// the entries it refuses, each told once with the inputs left as they were.
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include "penalties/esttaxdialog.h"

#include <gtest/gtest.h>

#include <functional>

using namespace rwtest;

namespace {

using Form = rw::EstTaxForm;
using Row = rw::EstTaxRow;

// An individual's 2021: withholding of 1,000 on two dates, two payments.
Form Filled()
{
    Form f;
    f.calculate = true;
    f.taxYear = "2021";
    f.currentTax = "10,000.00";
    f.priorTax = "8,000.00";
    f.priorYearUsable = true;
    f.withholding = "1,000.00";
    f.withholdingByDate = true;
    f.withholdingRows = {{"6/30/2021", "400.00"}, {"12/31/2021", "600.00"}};
    f.payments = {{"4/15/2021", "2,000.00"}, {"1/18/2022", "2,000.00"}};
    return f;
}

struct State {
    rw::EstTaxInput in;
    bool on = false;
    rw::Date notice = rw::NoDate;
};

TEST(EstTaxDialog, OkStoresAndOpensAgain)
{
    State s;
    RecordingMessages msgs;
    rw::EstTaxDialog dlg(s.in, s.on, s.notice, msgs);
    EXPECT_EQ(dlg.open().taxYear, "");  // a case that never had the penalty
    Form f = Filled();
    ASSERT_TRUE(dlg.accept(f));
    EXPECT_TRUE(s.on);
    EXPECT_EQ(s.in.taxYear, 2021);
    EXPECT_EQ(s.in.currentTax, M("10000"));
    EXPECT_EQ(s.in.withholdingByDate, (std::vector<rw::DatedAmount>{{D(2021, 6, 30), M("400")},
                                                                    {D(2021, 12, 31), M("600")}}));
    EXPECT_EQ(s.in.estimatedPayments[1], (rw::DatedAmount{D(2022, 1, 18), M("2000")}));
    EXPECT_EQ(dlg.open(), f);

    // A June corporation of 2021 with its own installments and a notice.
    f.corporation = f.largeCorporation = f.ownInstallments = true;
    f.fiscalYearEndMonth = "6";
    f.withholdingByDate = false;
    f.withholdingRows.clear();
    f.installment1 = "1,000.00";
    f.installment2 = f.installment3 = f.installment4 = "3,000.00";
    f.payments = {{"7/1/2021", "500.00"}};
    f.noticeAndDemand = "11/1/2022";
    ASSERT_TRUE(dlg.accept(f));
    EXPECT_EQ(s.in.fiscalYearEndMonth, 6);
    EXPECT_EQ(s.in.installments->at(0), M("1000"));
    EXPECT_EQ(s.notice, D(2022, 11, 1));
    EXPECT_EQ(dlg.open(), f);

    f.calculate = false;  // No turns the penalty off and keeps its inputs
    ASSERT_TRUE(dlg.accept(f));
    EXPECT_FALSE(s.on);
    EXPECT_EQ(s.in.taxYear, 2021);
    EXPECT_TRUE(msgs.shown.empty());

    // A state case opens the same inputs under the note on how it figures the penalty.
    EXPECT_EQ(dlg.open().note, "");
    f.note = rw::kEstTaxStateCase;
    EXPECT_EQ(rw::EstTaxDialog(s.in, s.on, s.notice, msgs, false).open(), f);
}

// OK on the changed form: refused where expected, one box, inputs unchanged.
std::string Problem(const Form& f, rw::FormField<Form> field, std::vector<Row> Form::*list,
                    std::size_t row, rw::FormField<Row> rowField, std::string& told)
{
    State s;
    RecordingMessages msgs;
    rw::EstTaxDialog dlg(s.in, s.on, s.notice, msgs);
    Form first = Filled();
    dlg.accept(first);
    const Form before = dlg.open();
    Form g = f;
    if (dlg.accept(g))
        return "accepted";
    if (g.refused != field || (list && (g.*list)[row].refused != rowField))
        return "another field refused";
    if (msgs.shown.size() != 1)
        return std::to_string(msgs.shown.size()) + " boxes";
    told = msgs.shown[0].text;
    return dlg.open() == before && s.on && s.notice.isNoDate() ? "" : "the inputs changed";
}

TEST(EstTaxDialog, EntriesRefused)
{
    struct Case {
        const char* name;
        std::function<void(Form&)> change;
        rw::FormField<Form> field = nullptr;
        std::vector<Row> Form::*list = nullptr;
        std::size_t row = 0;
        rw::FormField<Row> rowField = nullptr;
        const char* text = nullptr;  // the box, when this dialog words it
    };
    const Case cases[] = {
        {"TaxYearNotAYear", [](Form& f) { f.taxYear = "20x1"; }, &Form::taxYear, nullptr, 0,
         nullptr,
         "The Tax Year entered as 20x1 is not a year.  Please enter the year in which the tax "
         "year begins, such as 2024."},
        {"TaxYearBefore2000", [](Form& f) { f.taxYear = "1999"; }, &Form::taxYear, nullptr, 0,
         nullptr,
         "The estimated tax penalty is figured for tax years beginning in 2000 or later.  Please "
         "enter a Tax Year of 2000 or later."},
        {"MonthNotAMonth",
         [](Form& f) {
             f.corporation = true;
             f.fiscalYearEndMonth = "13";
         },
         &Form::fiscalYearEndMonth, nullptr, 0, nullptr,
         "The Fiscal Year End Month entered as 13 is not a month.  Please enter the month the "
         "tax year ends, 1 to 12."},
        {"TaxNotAnAmount", [](Form& f) { f.currentTax = "ten"; }, &Form::currentTax},
        {"PriorTaxNegative", [](Form& f) { f.priorTax = "-5.00"; }, &Form::priorTax, nullptr, 0,
         nullptr,
         "The Prior Year Tax entered as -5.00 is negative.  Please enter an amount of 0 or "
         "more."},
        {"InstallmentNegative",
         [](Form& f) {
             f.ownInstallments = true;
             f.installment3 = "-1";
         },
         &Form::installment3},
        {"WithheldDatesDoNotAddUp", [](Form& f) { f.withholding = "1,100.00"; }, &Form::withholding,
         nullptr, 0, nullptr,
         "The amounts withheld on their dates add up to 1,000.00, not to the Tax Withheld of "
         "1,100.00.  Please correct the amounts or the total."},
        {"WithheldAmountNegative", [](Form& f) { f.withholdingRows[0].amount = "-400"; }, nullptr,
         &Form::withholdingRows, 0, &Row::amount},
        {"PaymentNotADate", [](Form& f) { f.payments[1].date = "13/45/2021"; }, nullptr,
         &Form::payments, 1, &Row::date},
        {"PaymentBeforeTheYear", [](Form& f) { f.payments[0].date = "12/31/2020"; }, nullptr,
         &Form::payments, 0, &Row::date},
        // The return of a 2021 individual is due 4/15/2022; the penalty stops there.
        {"PaymentAfterReturnDue", [](Form& f) { f.payments[1].date = "4/16/2022"; }, nullptr,
         &Form::payments, 1, &Row::date},
        // A year ending in June that begins before 2026 files by the 15th of the 3rd month.
        {"CorporationPaymentBeforeItsYear",
         [](Form& f) {
             f.corporation = true;
             f.fiscalYearEndMonth = "6";
             f.withholdingByDate = false;
             f.payments = {{"6/30/2021", "1.00"}};
         },
         nullptr, &Form::payments, 0, &Row::date,
         "The Payment date 6/30/2021 is outside the 2021 tax year's reach, 7/1/2021 to "
         "9/15/2022.  Please enter a date within it."},
        // The case file keeps 1,000 entries of each list.
        {"TooManyPayments", [](Form& f) { f.payments.resize(1001, f.payments[0]); }, nullptr,
         &Form::payments, 1000, &Row::date,
         "A case keeps at most 1,000 Payment entries.  Please remove this entry and those after "
         "it."},
        {"NoticeBeforeYearEnd", [](Form& f) { f.noticeAndDemand = "6/1/2021"; },
         &Form::noticeAndDemand, nullptr, 0, nullptr,
         "The Notice and Demand date 6/1/2021 is before the end of the 2021 tax year on "
         "12/31/2021.  Please enter the day notice and demand for the penalty was made."},
    };
    for (const Case& c : cases) {
        Form f = Filled();
        c.change(f);
        std::string told;
        EXPECT_EQ(Problem(f, c.field, c.list, c.row, c.rowField, told), "") << c.name;
        if (c.text) {
            EXPECT_EQ(told, c.text) << c.name;
        }
    }
}

// Leaving a field refuses it at once and stores nothing.
TEST(EstTaxDialog, RefusedWhereTyped)
{
    State s;
    RecordingMessages msgs;
    rw::EstTaxDialog dlg(s.in, s.on, s.notice, msgs);
    Form f = Filled();
    f.taxYear = "1999";
    dlg.fieldLeft(f, &Form::taxYear);
    EXPECT_EQ(f.refused, &Form::taxYear);
    f.taxYear = "2021";
    f.refused = nullptr;
    dlg.fieldLeft(f, &Form::taxYear);
    dlg.fieldLeft(f, &Form::currentTax);
    f.payments[0].date = "3/1/2023";
    dlg.rowLeft(f, f.payments[0], rw::EstTaxList::Payments, &Row::date);
    EXPECT_EQ(f.payments[0].refused, &Row::date);
    EXPECT_EQ(f.refused, nullptr);
    EXPECT_EQ(msgs.shown.size(), 2u);
    EXPECT_EQ(s.in.taxYear, 0);
}

}  // namespace
