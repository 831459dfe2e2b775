// The computation as the command-line tool writes it: every value reads back
// as it was.
#include "enginetest.h"

#include "cli/cmd_compute.h"
#include "support/releases.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>

using namespace enginetest;

namespace {

TEST(ComputeJson, ValuesReadBackExactly)
{
    rw::Case c = Federal(D(2017, 1, 1), D(2017, 3, 1), "10000");
    AddPayment(c, D(1700, 1, 1), "1.5", "0", "0", nullptr);  // long before the start; keeps its NUL text
    const rw::RateTable t = {Row(D(2015, 1, 1), D(2018, 12, 31), 0.0725f)};
    const rw::CaseComputation k = rw::ComputeCase(c, t, rwtest::Minimums2018());
    const nlohmann::json j = nlohmann::json::parse(rw::cli::ComputationJson(k).dump());

    EXPECT_EQ(j["interest"], rw::ExactMoney(k.interest));
    ASSERT_EQ(j["rows"].size(), k.rows.size());
    const auto& row = j["rows"][1];
    EXPECT_EQ(row["dtBegin"], "01/02/2017");
    EXPECT_EQ(row["cTaxPen"], "10000.0000");
    EXPECT_EQ(row["sDesc"], "Compound Int.   ");
    const std::string rateText = nlohmann::json(row["fRate"]).dump();
    float rate = 0.0f;
    std::from_chars(rateText.data(), rateText.data() + rateText.size(), rate);
    EXPECT_EQ(rate, 0.0725f);
    EXPECT_EQ(std::strtod(row["dIntFactor"].dump().c_str(), nullptr), k.rows[1].dIntFactor);

    const auto& early = j["timeline"][0];
    EXPECT_EQ(early["dtDate"], static_cast<std::int64_t>(D(1700, 1, 1).dayNumber()));
    EXPECT_EQ(early["sDesc"], std::string(16, '\0'));
    EXPECT_EQ(early["sSortCode"], "17000101PMT ");
    EXPECT_EQ(early["cTax"], "-1.5000");
}

}  // namespace
