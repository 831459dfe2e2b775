// The overview of the main window over named cases: its figures against
// sums worked out by hand, the one line told instead of figures, the lists
// and the penalty lines it shows.

#include "reports/overview.h"
#include "reports/standardsources.h"
#include "support/casebuilder.h"
#include "support/releases.h"

#include <gtest/gtest.h>

namespace {

using namespace rw;
using namespace rwtest;
using Lines = std::vector<std::pair<std::string, std::string>>;

// 3.65% simple: one ten-thousandth of the balance a day.
ReportSources Simple(RateTable table = SimpleTable(0.0365f))
{
    return StandardReportSources(table, Minimums2018());
}

Case NewCase()
{
    Case c;
    ClearInputs(c);
    c.init.sTaxAuth = "US  ";
    return c;
}

// 10,000.00 from 4/15/2016 to 12/31/2016; 4,000.00 paid 6/13 by the IRS
// method (stored as interest, allocated again to the tax owed first); a
// penalty of 500.00 charged 9/1.
Case PaymentsAndCharges()
{
    Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
    AddPayment(c, D(2016, 6, 13), {.interest = "4000", .method = "I"});
    AddCharge(c, D(2016, 9, 1), {.penalties = "500"});
    return c;
}

// The accuracy-related penalty, 20% of 8,000.00, from the extended due date 6/15/2016.
Case AccuracyRelated()
{
    Case c = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
    c.init.bAnyPenalties = c.init.bAccRel = kYes;
    c.init.cAccRelAmt = M("8000");
    c.init.dtExtended = D(2016, 6, 15);
    return c;
}

Case NameOnly()
{
    Case c = NewCase();
    c.init.sName = "Lee Example";
    return c;
}

struct Named {
    const char* name;
    Case kase;
    ReportSources sources;
    Lines figures;  // the last is the total
    std::vector<std::string> notes;
};

TEST(CaseOverview, FiguresOrWhyThereAreNone)
{
    const Named cases[] = {
        {"new case",
         NewCase(),
         Simple(),
         {},
         {"A new case. Enter the taxpayer, the dates and the balance in Inputs - Initial Inputs; "
          "what is owed then shows here."}},
        {"dates not entered",
         NameOnly(),
         Simple(),
         {},
         {"No figures yet: the case needs its start and stop dates (Inputs - Initial Inputs)."}},
        // 260 days at 10,000.00: 260.00.
        {"balance only",
         FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000"),
         Simple(),
         {{"Unpaid tax", "10,000.00"}, {"Interest", "260.00"}, {"Total", "10,260.00"}},
         {}},
        // 4/16-6/13: 59 days on 10,000.00 = 59.00; 6/14-9/1: 80 days on
        // 6,000.00 = 48.00; 9/2-12/31: 121 days on 6,500.00 = 78.65.
        {"payments and charges",
         PaymentsAndCharges(),
         Simple(),
         {{"Unpaid tax", "6,000.00"},
          {"Interest", "185.65"},
          {"Other penalties", "500.00"},
          {"Pmts allocated to penalties", "0.00"},
          {"Total", "6,685.65"}},
         {}},
        // 4/16-6/15: 61 days on 10,000.00 = 61.00; 6/16-12/31: 199 days on
        // 11,600.00 = 230.84.
        {"accuracy-related penalty",
         AccuracyRelated(),
         Simple(),
         {{"Unpaid tax", "10,000.00"},
          {"Interest", "291.84"},
          {"Accuracy related penalty", "1,600.00"},
          {"Total", "11,891.84"}},
         {}},
        {"rates missing",
         FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000"),
         Simple({Row(D(2016, 1, 1), D(2016, 6, 30), 0.0365f, 0.0f, 'S')}),
         {},
         {"Interest cannot be computed: the Federal rate table ends on 6/30/2016, and this "
          "calculation needs a rate for 7/1/2016 to 12/31/2016."}},
        {"fault in the computation",
         FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000"),
         {[](const Case&) -> CaseComputation { ThrowFault(kErrSubscript, "GetInterest"); }, {}},
         {},
         {"The figures could not be computed: Subscript out of range in GetInterest."}},
    };
    for (const Named& n : cases) {
        SCOPED_TRACE(n.name);
        const CaseOverview o = MakeCaseOverview(n.kase, n.sources);
        Lines figures;
        for (const OverviewLine& l : o.figures)
            figures.emplace_back(l.label, l.amount);
        EXPECT_EQ(figures, n.figures);
        EXPECT_EQ(o.notes, n.notes);
        EXPECT_EQ(o.total.has_value(), !n.figures.empty());
        if (o.total) {
            EXPECT_EQ(FormatMoney(*o.total), n.figures.back().second);
        }
        EXPECT_EQ(o.empty, std::string_view(n.name) == "new case");
    }
}

TEST(CaseOverview, ListsAndPenaltyLines)
{
    const CaseOverview o = MakeCaseOverview(PaymentsAndCharges(), Simple());
    using Row = std::vector<std::string>;
    EXPECT_EQ(o.payments.rows, std::vector<Row>({{"06/13/2016", "Payment", "4,000.00", "4,000.00",
                                                  "0.00", "0.00", "IRS method"}}));
    EXPECT_EQ(o.payments.count, "1 payment, 4,000.00");
    EXPECT_EQ(o.charges.rows, std::vector<Row>({{"09/01/2016", "Charge", "09/01/2016", "500.00"}}));
    EXPECT_EQ(o.deposits.count, "None");

    // Only what is on, each with what it rests on.
    const CaseOverview p = MakeCaseOverview(AccuracyRelated(), Simple());
    EXPECT_EQ(p.settings,
              std::vector<OverviewLine>(
                  {{"Accuracy-related penalty", "20% of the underpayment", "8,000.00",
                    OverviewTarget::AccuracyRelated},
                   {"Extended due date", "6/15/2016", "", OverviewTarget::ExtendedDueDate}}));

    // The estimated tax penalty: what it is figured for, in a federal and a state case.
    Case est = FederalCase(D(2016, 4, 15), D(2016, 12, 31), "10000");
    est.estTax.on = true;
    est.estTax.input = {.filer = EstTaxFiler::Corporation,
                        .taxYear = 2015,
                        .fiscalYearEndMonth = 6,
                        .currentTax = M("1000")};
    for (const char* authority : {"US  ", "PA  "}) {
        est.init.sTaxAuth = authority;
        EXPECT_EQ(MakeCaseOverview(est, Simple()).settings,
                  std::vector<OverviewLine>({{"Estimated tax penalty",
                                              "Corporation, tax year from 7/1/2015; no notice and "
                                              "demand, so no interest on it",
                                              "", OverviewTarget::EstimatedTax}}));
    }
}

}  // namespace
