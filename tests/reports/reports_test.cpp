// The reports over hand-made cases: whole window texts and printed pages
// against the texts written out beside this file; the summary's sums by
// code, which of its lines show, and its amount column; the page manager on
// the text back end (where a page breaks, its padding and number, refused
// reservations, the capacity of the current font, the amount column); the
// print and report display commands; pieces of single reports the expected
// texts lack.

#include "reportcases.h"

#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/ftoreport.h"
#include "reports/inputs.h"
#include "reports/payrollreport.h"
#include "reports/summary.h"
#include "reports/textprinter.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace rw;
using namespace reporttest;
using Lines = std::vector<std::string>;

// A text printer, 60 lines a page unless told, with its page manager and a
// print job that records the status line, repaints and computations.
struct Paper {
    explicit Paper(PageMetrics m = PageMetrics::Lines(60))
        : printer(std::move(m))
    {
    }
    TextPrinter printer;
    PrintState state;
    rwtest::RecordingMessages msgs;
    PrintManager pm{printer, state, msgs};
    Lines status;
    int repaints = 0, computations = 0;
    PrintJob job{printer, state, msgs, [this](std::string_view s) { status.emplace_back(s); },
                 [this] { ++repaints; }};
    std::int16_t reserve(int n)
    {
        return pm.PrnManager2(static_cast<std::int16_t>(n), "Taxpayer", "Line 2", "Title");
    }
    ReportSources sources(const CaseComputation& comp)
    {
        return {[this, comp](const Case&) { return ++computations, comp; }, {}};
    }
};

// The Report Choices dialog answered by the test: OK with a choice, or Cancel.
struct ScriptedChooser : ReportChooser {
    std::optional<std::int32_t> next;
    std::vector<bool> setupShown;
    bool chooseReports(ReportChoice& choice, bool withSetup) override
    {
        setupShown.push_back(withSetup);
        choice.mask = next.value_or(choice.mask);
        return next.has_value();
    }
};

enum Report {
    SummaryWindow,
    SummaryPrint,
    InputsWindow,
    InputsPrint,
    DetailPrint,
    AccRelWindow,
    FtoPrint,
    PayrollWindow,
    PayrollPrint,
    SummaryAndAccRelJob
};

struct Golden {
    std::string name, caseName, file;
    Report report;
    friend void PrintTo(const Golden& g, std::ostream* os) { *os << g.caseName << "/" << g.file; }
};

// Each report begins its own page; page numbers run on through a job. In
// everypenalty the payments' title, column headings and first row do not fit
// below the charges: they begin page 2 of the inputs together. The 50
// payments of longpayments cross a page with their headings repeated.
const Golden kGolden[] = {
    {"NewCaseSummaryWindow", "newcase", "summary-display.txt", SummaryWindow},
    {"NewCasePrintedSummary", "newcase", "summary-print.txt", SummaryPrint},
    {"NewCaseInputsWindow", "newcase", "inputs-display.txt", InputsWindow},
    {"NewCasePrintedInputs", "newcase", "inputs-print.txt", InputsPrint},
    {"NewCasePrintedDetail", "newcase", "detail-print.txt", DetailPrint},
    {"OverpaymentSummaryWindow", "overpayment", "summary-display.txt", SummaryWindow},
    {"OverpaymentInputsWindow", "overpayment", "inputs-display.txt", InputsWindow},
    {"EveryPenaltySummaryWindow", "everypenalty", "summary-display.txt", SummaryWindow},
    {"EveryPenaltyAccuracyRelatedWindow", "everypenalty", "accrel-display.txt", AccRelWindow},
    {"EveryPenaltyPrintedFailureToFileAndPay", "everypenalty", "fto-print.txt", FtoPrint},
    {"EveryPenaltyPayrollWindow", "everypenalty", "payroll-display.txt", PayrollWindow},
    {"EveryPenaltyPrintedPayroll", "everypenalty", "payroll-print.txt", PayrollPrint},
    {"EveryPenaltyPrintedInputs", "everypenalty", "inputs-print.txt", InputsPrint},
    {"EveryPenaltySummaryAndAccuracyInOneJob", "everypenalty", "job-summary-accrel.txt",
     SummaryAndAccRelJob},
    {"LongPaymentsPrintedInputs", "longpayments", "inputs-print.txt", InputsPrint},
};

class GoldenText : public testing::TestWithParam<Golden> { };

TEST_P(GoldenText, MatchesTheTextWrittenOut)
{
    const CaseComputation c = Computation(GetParam().caseName);
    Paper p;  // 60 lines a page in every font
    p.printer.setFont("Arial", 10.0f);
    std::string window;
    switch (GetParam().report) {
    case SummaryWindow:
        window = DispSummary(c.timeline, c.kase.init, c.interest);
        break;
    case InputsWindow:
        window = DispInputs(c.kase);
        break;
    case AccRelWindow:
        window = DispAccRelPen(c.kase.init);
        break;
    case PayrollWindow:
        window = ReportPRPen(c.kase.init, c.prTable, 0, nullptr);
        break;
    case SummaryPrint:
        PrnSummary(p.pm, c.timeline, c.kase.init, c.interest);
        break;
    case InputsPrint:
        PrintInputs(p.pm, c.kase);
        break;
    case DetailPrint:
        PrintDetail(p.pm, c.kase.init, c.rows);
        break;
    case FtoPrint:
        PrnFtoFilePay(p.pm, c.kase.init, c.ftoRows);
        break;
    case PayrollPrint:
        EXPECT_EQ(ReportPRPen(c.kase.init, c.prTable, 1, &p.pm), "");
        break;
    case SummaryAndAccRelJob:
        PrintReports(kRptSummary | kRptAccRel, 1, c.kase, p.job, SourcesFor(c));
        EXPECT_EQ(p.status,
                  (Lines{"Printing Summary...", "Printing Accuracy Related Penalty Analysis...",
                         "Printing Done"}));
        EXPECT_EQ(p.printer.documents(), 1);
        break;
    }
    const std::string expected = Expected(GetParam().caseName + "/" + GetParam().file);
    EXPECT_EQ(window.empty() ? p.printer.text() : CrLfToLf(window), expected);
    EXPECT_TRUE(p.msgs.shown.empty());
    EXPECT_EQ(p.state.usedHeight, 0);  // a printed report ends its page
    // A report that prints in a font of its own gives back the one it found.
    EXPECT_TRUE(p.printer.fontName() == "Arial" && p.printer.fontSize() == 10.0f);
}

INSTANTIATE_TEST_SUITE_P(Reports, GoldenText, testing::ValuesIn(kGolden),
                         [](const auto& p) { return p.param.name; });

TEST(CalcSummary, SumsEveryPointsTaxAndEachPenaltyByItsCode)
{
    const Date d = D(2016, 5, 1);
    const TimeLine tl = {
        Point("0BT ", D(2016, 4, 15), "1000.00"),
        Point("PMT ", d, "-100.00", "-50.00", "-25.00"),
        Point("FPP ", d, "0", "10.00"),
        Point("FFP ", d, "0", "20.00"),
        Point("PAR ", d, "0", "30.00"),
        Point("PDP ", d, "0", "40.00"),
        Point("N5P ", d, "0", "1.00"),
        Point("N50 ", d, "0", "2.00"),
        Point("SUP ", d, "0", "3.00"),
        Point("FR1 ", d, "0", "4.00"),
        Point("FR2 ", d, "0", "5.00"),
        Point("POV ", d, "0", "6.00"),
        Point("OTHC", d, "70.00", "60.00"),
        Point("DDD ", d, "500.00"),
        Point("XYZ ", d, "7.00", "99.00"),  // any other code adds its tax only
        Point("ZZSD", D(2016, 12, 31)),
        Point("PMT ", D(2017, 1, 15), "-400.00", "-10.00"),  // past the stop date: counted
    };
    SummarySums s;
    const Money total = CalcSummary(tl, InitInputs{}, s);
    const std::pair<Money SummarySums::*, const char*> sums[]
        = {{&SummarySums::unpaidTax, "1077.00"},  // 1000 - 100 + 70 + 500 + 7 - 400
           {&SummarySums::pmtsToPenalties, "-60.00"}, {&SummarySums::failureToPay, "10.00"},
           {&SummarySums::failureToFile, "20.00"},    {&SummarySums::accuracyRelated, "30.00"},
           {&SummarySums::payrollDeposit, "40.00"},   {&SummarySums::negligenceFlat, "1.00"},
           {&SummarySums::negligenceTime, "2.00"},    {&SummarySums::understatement, "3.00"},
           {&SummarySums::fraudFlat, "4.00"},         {&SummarySums::fraudTime, "5.00"},
           {&SummarySums::overvaluation, "6.00"},     {&SummarySums::otherPenalties, "60.00"}};
    for (const auto& [sum, want] : sums)
        EXPECT_EQ(s.*sum, M(want)) << want;
    EXPECT_EQ(total, M("1198.00"));  // 1077 + 181 of penalties - 60
}

TEST(SummaryLines, FollowTheFlagsAndTheTotalCountsEverySum)
{
    const std::tuple<std::string, std::function<void(InitInputs&)>, Lines> rows[]
        = {{"PenaltiesOff",
            [](InitInputs& in) { in.bAnyPenalties = kNo; },
            {"Unpaid tax", "Interest", "Other penalties", "Pmts allocated to penalties", "Total"}},
           {"EachItsOwnFlag",
            [](InitInputs& in) {
                in.bFtoFile = in.bNegTime = in.bFraudFlat = kNo;
                in.nDeposits = in.nCharges = in.nPmts = 0;
            },
            {"Unpaid tax", "Interest", "Failure to pay penalty", "Accuracy related penalty",
             "5% Negligence penalty", "Overvaluation penalty", "Substantial understmt penalty",
             "Time dependent fraud pen", "Total"}}};
    for (const auto& [name, change, labels] : rows) {
        SCOPED_TRACE(name);
        CaseComputation comp = Computation("everypenalty");
        change(comp.kase.init);
        const auto lines = SummaryLines(comp.timeline, comp.kase.init, comp.interest);
        std::vector<std::string> shown;
        for (const SummaryLine& l : lines)
            shown.push_back(l.label);
        EXPECT_EQ(shown, labels);
        // 11,900.00 tax + 1,234.57 interest + 2,250 + 500 + 2,000 + 252 + 200 - 50
        EXPECT_EQ(lines.back().amount, M("18286.57"));
    }
}

TEST(SummaryText, AmountsRightAlignedInFourteenAndCutWhenLonger)
{
    EXPECT_EQ(sFormatSumm(M("0")), "          0.00");
    EXPECT_EQ(sFormatSumm(M("-1234.56")), "     -1,234.56");
    EXPECT_EQ(sFormatSumm(M("12345678.905")), " 12,345,678.91");
    EXPECT_EQ(sFormatSumm(M("1234567890.12")), "1,234,567,890.");
    EXPECT_EQ(sFormatSummLine("Interest", M("1.5")),
              "Interest" + std::string(22, ' ') + "          1.50");
}

TEST(PrnManager2, ANewPageWhenTheReservationWouldReachTheFoot)
{
    // The heading block counts 7 lines, the foot keeps 6 free: a 60-line page
    // breaks when a reservation would bring the counter to 54.
    struct Row {
        std::string name;
        std::vector<int> reservations;
        std::vector<std::int16_t> newPage;  // what each answers
        int counter;  // after the last
    };
    for (const Row& r :
         {Row{"FirstLineBeginsThePage", {3, 1}, {1, 0}, 11}, Row{"SixFitAt47", {40, 6}, {1, 0}, 53},
          Row{"OneMoreAt53", {40, 6, 1}, {1, 0, 1}, 8}, Row{"SevenAt47", {40, 7}, {1, 1}, 14}}) {
        SCOPED_TRACE(r.name);
        Paper p;
        std::vector<std::int16_t> got;
        for (int n : r.reservations)
            got.push_back(p.reserve(n));
        EXPECT_EQ(got, r.newPage);
        EXPECT_EQ(p.state.usedHeight, r.counter * 10);  // lines of 10 units
    }
}

TEST(PrnManager2, EndOfReportPadsNumbersThePageAndTheNextJobRunsOn)
{
    Paper p;
    EXPECT_EQ(p.reserve(1), 1);
    p.printer.printAt(3, "Total");
    p.pm.PrnAmtAt(Money::fromCents(123456789), 10);  // 14 characters, the line left open
    p.pm.PrnAmtAt(Money::fromCents(-5), 25);
    p.printer.endLine();
    EXPECT_EQ(p.reserve(kEndReportPage), 0);
    EXPECT_EQ(p.state.usedHeight, 0);
    Lines page = {
        "", "", "  Taxpayer", "  Line 2", "  Title", "", "  Total    1,234,567.89          -0.05"};
    page.resize(53, "");  // up to capacity - 6 on the counter
    page.push_back("  Page 1");
    EXPECT_EQ(p.printer.pages(), std::vector<Lines>{page});
    // Another job on the same state: a fresh page, numbers run on, and ending
    // the document right after the page break adds no sheet.
    PrintManager other(p.printer, p.state, p.msgs);
    EXPECT_EQ(other.PrnManager2(1, "a", "b", "c"), 1);
    other.PrnManager2(kEndReportPage, "a", "b", "c");
    p.printer.endDoc();
    ASSERT_EQ(p.printer.pages().size(), 2u);
    EXPECT_EQ(p.printer.pages()[1].back(), "  Page 2");
}

TEST(PrnManager2, OutsideOneToFortyIsRefusedWithTheErrorMessage)
{
    for (int n : {0, 41, -1}) {
        Paper p;
        EXPECT_EQ(p.reserve(n), 0);
        ASSERT_EQ(p.msgs.shown.size(), 1u);
        EXPECT_EQ(std::tie(p.msgs.shown[0].title, p.msgs.shown[0].icon, p.msgs.shown[0].text),
                  std::tuple("Error!", MsgIcon::Critical,
                             std::to_string(n)
                                 + " lines passed to PrnManager2(). Please use between 1 and 40"));
        EXPECT_TRUE(p.printer.pages().empty() && p.state.usedHeight == 0);
    }
}

TEST(PrnManager2, MixedFontsFillThePageByTheirHeights)
{
    // A page 700 high. 12-point lines 13 high: 53 whole lines, reserved lines
    // ending by (53 - 7) x 13 = 598; 8-point lines 9 high: 77, by 70 x 9 = 630.
    // The heading block counts 7 lines of its font.
    PageMetrics m{700, [](std::string_view, float size) { return size >= 12.0f ? 13 : 9; }};
    const std::tuple<std::string, float, int, float, int> rows[]
        = {{"EightAfterTwelve", 12.0f, 10, 8.0f, 45},  // (630 - 91 - 130) / 9 = 45.4
           {"TwelveAfterEight", 8.0f, 40, 12.0f, 13}};  // (598 - 63 - 360) / 13 = 13.5
    for (const auto& [name, first, firstLines, then, fit] : rows) {
        SCOPED_TRACE(name);
        Paper p(m);
        auto printed = [&](int n) {  // 1 when the reservation began a page
            const std::int16_t began = p.reserve(n);
            for (int i = 0; i < n; ++i)
                p.printer.printLine(3, "x");
            return began;
        };
        p.printer.setFont("Courier New", first);
        printed(firstLines);
        p.printer.setFont("Courier New", then);
        int fitted = 0;
        while (printed(1) == 0)
            ++fitted;
        EXPECT_EQ(fitted, fit);
        EXPECT_EQ(p.printer.runOffs(), 0);
        EXPECT_EQ(p.printer.pages().at(0).back(), "  Page 1");
    }
}

TEST(PrintMaster, ComputesOnceSkipsWhatDoesNotApplyAndNumbersThePagesOnThroughTheJob)
{
    const std::string in = "Printing Inputs...", detail = "Printing Detailed Analysis...",
                      done = "Printing Done";
    struct Row {
        std::string name, caseName;
        std::int32_t choice;
        std::int16_t copies;
        int computations;
        Lines status;
        std::size_t pages;
    };
    for (const Row& r :
         {Row{"InputsWithoutComputing", "newcase", kRptInputs, 1, 0, {in, done}, 1},
          Row{"TwoCopiesComputedOnce",
              "newcase",
              kRptInputs | kRptDetail,
              2,
              1,
              {in, detail, in, detail, done},
              4},
          Row{"NoPenaltyNoDeposit",
              "newcase",
              kRptFailFilePay | kRptAccRel | kRptPayroll,
              1,
              1,
              {done},
              0},
          Row{"EveryReport",
              "everypenalty",
              63,
              1,
              1,  // the inputs take two pages
              {in, "Printing Summary...", detail, "Printing Failure To File and Pay Analysis...",
               "Printing Accuracy Related Penalty Analysis...",
               "Printing Payroll Penalty Analysis...", done},
              7}}) {
        SCOPED_TRACE(r.name);
        Paper j;
        PrintReports(r.choice, r.copies, Computation(r.caseName).kase, j.job,
                     j.sources(Computation(r.caseName)));
        EXPECT_EQ(j.computations, r.computations);
        EXPECT_EQ(j.status, r.status);
        ASSERT_EQ(j.printer.pages().size(), r.pages);
        for (std::size_t i = 0; i < r.pages; ++i)
            EXPECT_EQ(j.printer.pages()[i].back(), "  Page " + std::to_string(i + 1));
        EXPECT_EQ(j.printer.documents(), 1);
        EXPECT_TRUE(j.msgs.shown.empty());
    }
}

TEST(PrintMaster, CancelPrintsNothingAndFailureToPayAlonePrintsItsBlock)
{
    CaseComputation comp = Computation("everypenalty");
    comp.kase.init.bFtoFile = comp.kase.init.b6651d1 = kNo;
    ReportChoice choice{kRptFailFilePay};
    ScriptedChooser chooser;  // Cancel
    Paper j;
    PrintMaster(1, comp.kase, choice, chooser, j.job, j.sources(comp));
    EXPECT_TRUE(j.printer.pages().empty());
    EXPECT_EQ(j.repaints, 1);  // after the dialog

    chooser.next = kRptFailFilePay;
    PrintMaster(1, comp.kase, choice, chooser, j.job, j.sources(comp));
    EXPECT_EQ(chooser.setupShown, (std::vector<bool>{true, true}));
    EXPECT_EQ(j.repaints, 3);  // after the dialog and after the copy
    ASSERT_EQ(j.printer.pages().size(), 1u);
    const Lines& page = j.printer.pages()[0];
    EXPECT_EQ(std::count(page.begin(), page.end(), "FAILURE TO FILE:"), 0);
    EXPECT_EQ(std::count(page.begin(), page.end(), "FAILURE TO PAY:"), 1);
    EXPECT_TRUE(std::none_of(page.begin(), page.end(),
                             [](auto& l) { return l.starts_with("Failure to pay rate"); }));
}

TEST(ReportDisplay, WindowsOpenSummaryDetailFailureAccuracyPayrollInputs)
{
    const CaseComputation comp = Computation("everypenalty");
    const auto windows = ReportWindows(63, comp.kase, SourcesFor(comp));
    const ReportWindowKind order[]
        = {ReportWindowKind::Summary,        ReportWindowKind::DetailedInterest,
           ReportWindowKind::FailFilePay,    ReportWindowKind::AccuracyRelated,
           ReportWindowKind::PayrollPenalty, ReportWindowKind::Inputs};
    ASSERT_EQ(windows.size(), 6u);
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(windows[i].kind, order[i]);
    EXPECT_TRUE(windows[5].inputs->paymentsEnabled && windows[5].inputs->depositsEnabled);
    // The failure to file and pay grid's last row: 8 x 50.00 + 100.00; 5 x 450.00.
    EXPECT_EQ(windows[2].grid->cells.back(),
              (Lines{"TOTALS", "", "", "", "        500.00", "      2,250.00"}));

    // The command asks without Setup; newcase's lists hold one empty entry each, none counted.
    ReportChoice choice;
    ScriptedChooser chooser;
    chooser.next = kRptPayroll | kRptAccRel | kRptFailFilePay | kRptInputs;
    const CaseComputation plain = Computation("newcase");
    const auto shown = ReportDisplayCommand(plain.kase, choice, chooser, SourcesFor(plain));
    EXPECT_EQ(chooser.setupShown, std::vector<bool>{false});
    EXPECT_EQ(choice.mask, 57);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_FALSE(shown[0].inputs->paymentsEnabled || shown[0].inputs->chargesEnabled
                 || shown[0].inputs->depositsEnabled);
}

TEST(ReportDisplay, PayrollAnalysisIsBuiltFromTheDepositsEvenWithPenaltiesOff)
{
    // The computation holds no payroll table; the analysis builds its own:
    // 1,000.00 due 1/15/2016, paid 1/25/2016, 10 days late at 5 % = 50.00.
    CaseComputation comp;
    comp.kase = rwtest::FederalCase(D(2016, 1, 15), D(2016, 12, 31), "0");
    comp.kase.init.bPayroll = kYes;
    comp.kase.init.bAnyPenalties = kNo;
    rwtest::AddDeposit(comp.kase, D(2016, 1, 15), "1000.00", D(2016, 6, 30));
    rwtest::AddPayment(comp.kase, D(2016, 1, 25), {.tax = "1000.00"});
    const std::string text = ReportWindows(kRptPayroll, comp.kase, SourcesFor(comp)).at(0).text;
    EXPECT_NE(
        text.find(
            "     1,000.00       1,000.00  01/25/2016    10  5.00       1,000.00          50.00"),
        std::string::npos)
        << text;
    EXPECT_NE(text.find("Total          50.00"), std::string::npos) << text;
}

TEST(ReportParts, PayrollRowAtItsWidest)
{
    PRPenTblElement e{D(2012, 1, 15), M("1234567.89"), M("0"),          D(2015, 5, 3),  1204,
                      M("0"),         0.15f,           M("1234567.89"), M("185185.18"), kNo};
    EXPECT_EQ(
        PRPenRow(e),
        "     1,234,567.89           0.00  05/03/2015 1,204 15.00   1,234,567.89     185,185.18");
    e.fRate = 0.02f;
    e.nDaysLate = -3;
    EXPECT_EQ(PRPenRow(e).substr(45, 11), "   -3  2.00");
}

TEST(ReportParts, AnAssessmentDateLeftEmptyPrintsBlank)
{
    Case c;
    ClearInputs(c);
    c.init.bFtoFile = kYes;
    c.init.dtFtoFileAssess = NoDate;  // a return extended after 7/18/1984 needs none
    c.init.dtFiled = D(2016, 6, 1);
    const std::string text = rw::InputsWindow(c).text;
    EXPECT_NE(text.find("Date Failure To File Assessed: \r\n"), std::string::npos) << text;
    EXPECT_NE(text.find("Date Filed: 6/1/2016"), std::string::npos) << text;
}

TEST(ReportParts, DetailDescriptionNeverSetKeepsItsSixteenCells)
{
    const ResultPeriod r{{}, D(2016, 1, 1), D(2016, 1, 31), 0.03f, M("100.00"), M("0"),
                         30, 0.5,           M("1.00")};  // NULs
    Paper j;
    PrintDetail(j.pm, InitInputs{}, {r});
    EXPECT_EQ(j.printer.pages().at(0).at(10).substr(0, 54),
              std::string(25, ' ') + "01/01/2016 01/31/2016  3.0000");
}

TEST(ReportParts, AccuracyRelatedPenaltyComputedAfreshInDoubleFromTheSingleRate)
{
    InitInputs in;
    in.cAccRelAmt = M("10000.00");
    in.fAccRelRate = 0.4f;  // 0.4000000059604645 as a double
    EXPECT_EQ(AccRelReportPenalty(in), M("4000.0001"));
    EXPECT_NE(DispAccRelPen(in).find("Accuracy Related penalty            4,000.00\r\n"),
              std::string::npos);
}

}  // namespace
