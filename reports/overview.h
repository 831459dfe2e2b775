#pragma once
// The case at a glance, as the main window shows it between dialogs: the
// case's own inputs, which penalties and options are on, the three lists and
// what is owed at the stop date. Plain texts; every amount "###,###,##0.00".
// Each part names the dialog that changes it, so the window can open it.

#include "casedata/caserecord.h"
#include "reports/printmaster.h"

#include <optional>
#include <string>
#include <vector>

namespace rw {

// The dialog that changes a part of the overview.
enum class OverviewTarget {
    None,
    InitialInputs,
    FailureToFile,
    FailureToPay,
    AccuracyRelated,
    Payroll,
    EstimatedTax,
    InterestRates,
    Suspension,
    ExtendedDueDate,
    Payments,
    OtherCharges,
};

// One line of a section: "Failure to pay", "Assessed 11/16/2015", "".
struct OverviewLine {
    std::string label;
    std::string text;  // what the line says; may be empty
    std::string amount;  // an amount, empty for none
    OverviewTarget opens = OverviewTarget::None;
    friend bool operator==(const OverviewLine&, const OverviewLine&) = default;
};

// One of the case's lists: its entries in list order.
struct OverviewList {
    std::string title;  // "Payments"
    std::string count;  // "2 payments, 5,000.00 in all"; "None"
    std::vector<std::string> headings;
    std::vector<bool> amountColumns;  // per heading: the column holds amounts
    std::vector<std::vector<std::string>> rows;
    OverviewTarget opens = OverviewTarget::None;
    bool hidden = false;  // a list the case has no use for: deposits outside a payroll case
    friend bool operator==(const OverviewList&, const OverviewList&) = default;
};

struct CaseOverview {
    bool empty = false;  // a new case: nothing entered yet
    std::vector<OverviewLine> caseLines;  // taxpayer, dates, rate table, balance
    std::vector<OverviewLine> settings;  // the penalties and options that are on
    std::string unused;  // "Not used: failure to file, ..."; empty when all are on
    OverviewList payments;
    OverviewList charges;
    OverviewList deposits;
    std::string figuresTitle;  // "Owed at 12/31/2016"
    std::vector<OverviewLine> figures;  // the summary's lines, the last its total
    // Under the figures: why there are none (one line), or the empty-case
    // hint; else notes on the figures (estimated rates, negative amounts).
    std::vector<std::string> notes;
    std::optional<Money> total;  // the summary's total, when computed
    friend bool operator==(const CaseOverview&, const CaseOverview&) = default;
};

// The overview of the case. The figures come from sources.compute; a
// computation the rates cannot support (rw::Refusal), one without its dates
// and one that meets a fault are told in one line instead of figures, so
// building an overview never throws for them. The payments show their parts
// as the computation allocated them (the IRS method's again).
CaseOverview MakeCaseOverview(const Case& c, const ReportSources& sources);

// A new case: no taxpayer, no dates, no balance and no list entries.
bool IsEmptyCase(const Case& c);

}  // namespace rw
