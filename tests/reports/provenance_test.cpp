// Where a report's figures come from: the rate table, the release, the day
// prepared and the days computed on estimated rates; and rates shown with
// every decimal they hold.

#include "base/numtext.h"
#include "penalties/accreldialog.h"
#include "reports/accrelreport.h"
#include "reports/detail.h"
#include "reports/provenance.h"
#include "support/casebuilder.h"
#include "support/recordingmessages.h"

#include <gtest/gtest.h>

namespace {

using rw::Date;
using rwtest::D;
using Lines = std::vector<std::string>;

// The release of the fourth quarter of 2026: published rates through the
// end of 2026, the first quarter of 2027 carried forward.
rw::ReportProvenance Q4Release()
{
    return {"Qrat2026Q4", D(2026, 12, 31), D(2026, 11, 25)};
}

// Every case names its table; with the release read it names the release and
// the day, then the estimated days when there are any.
struct ProvenanceCase {
    const char* name;
    const char* authority;
    Date start, stop;
    bool releaseRead;
    const char* table;
    const char* estimated;  // "" for none
};

const ProvenanceCase kProvenance[] = {
    {"Pennsylvania", "PA  ", D(2024, 4, 15), D(2026, 6, 30), true, "Pennsylvania", ""},
    {"PastTheVerifiedDate", "US  ", D(2026, 4, 15), D(2027, 2, 15), true, "Federal",
     "1/1/2027 to 2/15/2027"},
    // Interest accrues from the day after the start.
    {"StartAfterTheVerifiedDate", "US  ", D(2027, 1, 20), D(2027, 3, 1), true, "Federal",
     "1/21/2027 to 3/1/2027"},
    {"StopOnTheVerifiedDate", "US  ", D(2026, 4, 15), D(2026, 12, 31), true, "Federal", ""},
    {"NoReleaseRead", "US  ", D(2026, 4, 15), D(2027, 2, 15), false, "Federal", ""},
};

class Provenance : public testing::TestWithParam<ProvenanceCase> { };

TEST_P(Provenance, LinesSayTableReleaseDayAndEstimates)
{
    const ProvenanceCase& p = GetParam();
    rw::Case c = rwtest::FederalCase(p.start, p.stop, "1000.00");
    c.init.sTaxAuth = p.authority;
    Lines expected = {std::string("Rate table: ") + p.table};
    if (p.releaseRead)
        expected.insert(expected.end(),
                        {"Rates: Qrat2026Q4, verified through 12/31/2026", "Prepared: 11/25/2026"});
    if (*p.estimated != '\0')
        expected.push_back(std::string("Estimated rates: ") + p.estimated);
    EXPECT_EQ(rw::ProvenanceLines(p.releaseRead ? Q4Release() : rw::ReportProvenance{}, c.init),
              expected);
}

INSTANTIATE_TEST_SUITE_P(Reports, Provenance, testing::ValuesIn(kProvenance),
                         [](const auto& i) { return std::string(i.param.name); });

rw::ResultPeriod Row(Date begin, Date end, std::int32_t days)
{
    rw::ResultPeriod r;
    r.sDesc = "Compound Int.";
    r.dtBegin = begin;
    r.dtEnd = end;
    r.fRate = 0.07f;
    r.nDays = days;
    return r;
}

TEST(DetailAnalysis, MarksEachRowAtAnEstimatedRateAndSaysWhatTheMarkMeans)
{
    const std::vector<rw::ResultPeriod> rows = {
        Row(D(2026, 10, 1), D(2026, 12, 31), 92),  // the last verified quarter
        Row(D(2027, 1, 1), D(2027, 2, 15), 46),  // carried forward
    };
    rw::Case c = rwtest::FederalCase(D(2026, 10, 1), D(2027, 2, 15), "1000.00");
    const rw::GridData g = rw::DetailGrid(rows, Q4Release());
    const std::size_t rate = 3;
    EXPECT_EQ(g.cells[0][rate].find('*'), std::string::npos);
    EXPECT_EQ(g.cells[1][rate].back(), '0');
    EXPECT_EQ(g.cells[2][rate].back(), '*');
    const std::string note = rw::DetailNote(c.init, rows, Q4Release());
    EXPECT_NE(note.find("Estimated rates: 1/1/2027 to 2/15/2027\r\n"), std::string::npos);
    EXPECT_NE(note.find(rw::kEstimateMarkNote), std::string::npos);
    // Without a release nothing is marked.
    EXPECT_EQ(rw::DetailGrid(rows).cells[2][rate].back(), '0');
}

struct RateText {
    const char* name;
    float rate;
    bool leadingZero;
    const char* expected;
};

const RateText kRates[] = {
    {"NormalRate", 0.2f, false, ".20"},
    {"EconomicSubstance", 0.4f, false, ".40"},
    {"TwelveAndAHalfPercent", 0.125f, false, ".125"},
    {"OneThird", 0.3333f, false, ".3333"},
    {"AboveOne", 1.5f, false, "1.50"},
    {"Zero", 0.0f, false, ".00"},
    {"WithLeadingZero", 0.125f, true, "0.125"},
};

class RateAsHeld : public testing::TestWithParam<RateText> { };

TEST_P(RateAsHeld, KeepsEveryDecimal)
{
    EXPECT_EQ(rw::FormatRateAsHeld(GetParam().rate, GetParam().leadingZero), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Reports, RateAsHeld, testing::ValuesIn(kRates),
                         [](const auto& i) { return std::string(i.param.name); });

// 12.5 % of 10,000.00 is 1,250.00, before and after the dialog is accepted
// again without a change.
TEST(AccuracyRelatedRate, AcceptingTheDialogAgainKeepsTheRate)
{
    rw::Case c = rwtest::FederalCase(D(2016, 4, 15), D(2017, 4, 15), "10000.00");
    c.init.bAccRel = rw::kYes;
    c.init.bAnyPenalties = rw::kYes;
    c.init.cAccRelAmt = rwtest::M("10000.00");
    c.init.fAccRelRate = 0.125f;
    rwtest::RecordingMessages msgs;
    rw::AccRelDialog dialog(c, msgs);
    rw::AccRelForm f = dialog.open();
    EXPECT_EQ(f.rate, ".125");
    ASSERT_TRUE(dialog.accept(f));
    EXPECT_EQ(c.init.fAccRelRate, 0.125f);
    EXPECT_EQ(rw::AccRelReportPenalty(c.init), rwtest::M("1250.00"));
    EXPECT_NE(rw::DispAccRelPen(c.init).find("Penalty Rate                           0.125\r\n"),
              std::string::npos);
}

}  // namespace
