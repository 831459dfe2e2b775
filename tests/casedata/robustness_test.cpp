// Damaged and hostile inputs: the readers answer every byte sequence with a
// result (Ok, BadMarker or Damaged), never a crash, an exception or a read
// outside the input, and what they call Ok is consistent and writes back alike.

#include "casedata/casefile.h"
#include "rates/ratetable.h"

#include "handcase.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using Status = rw::CaseReadResult::Status;

// One random change: flip a bit, write a random 16-bit value where the counts
// of a case record live, cut, lengthen, overwrite a run with noise, or write a
// random 32-bit value where a rate table's count lives.
void Mutate(std::vector<char>& img, std::mt19937& rng)
{
    const auto pick = [&](std::size_t n) { return n == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); };
    const std::size_t kind = rng() % 6, at = kind == 1 ? 26 + 118 + 2 * pick(6) : kind == 5 ? 6 : pick(img.size());
    const std::size_t run = kind == 0 ? 1 : kind == 1 ? 2 : kind == 4 ? 12 : kind == 5 ? 4 : 0;
    for (std::size_t i = at; i < img.size() && i < at + run; ++i)
        img[i] = static_cast<char>(kind == 0 ? img[i] ^ (1 << (rng() % 8)) : rng());
    if (kind == 2)
        img.resize(pick(img.size() + 1));
    for (int k = kind == 3 ? static_cast<int>(rng() % 64) : 0; k > 0; --k)
        img.push_back(static_cast<char>(rng()));
}

TEST(Robustness, MutatedCaseFilesDecodeSafely)
{
    const std::vector<std::vector<char>> seeds = {
        rwtest::HandCaseFile("Qrat1999Q1.00", rwtest::HandLayout::L482, 1, {1, 1, 1}),
        rwtest::HandCaseFile("Qrat2005Q1.00", rwtest::HandLayout::L484, 2, {0, 2, 0}),
        rwtest::HandCaseFile("Qrat2018Q1.10", rwtest::HandLayout::L488, 3, {2, 0, 3})};
    std::mt19937 rng(1810);
    std::map<Status, int> seen;
    for (int round = 0; round < 20000; ++round) {
        std::vector<char> img = seeds[static_cast<std::size_t>(round) % seeds.size()];
        for (int m = 1 + static_cast<int>(rng() % 3); m > 0; --m)
            Mutate(img, rng);
        const rw::CaseReadResult r = rw::DecodeCase(img);
        ++seen[r.status];
        ASSERT_NE(r.status, Status::NotFound);
        ASSERT_TRUE(r.status != Status::Damaged || !r.detail.empty());
        if (r.status != Status::Ok)
            continue;
        ASSERT_TRUE(r.kase.countsConsistent()) << round;
        const std::vector<char> again = rw::EncodeCase(r.kase);
        ASSERT_EQ(rw::EncodeCase(rw::DecodeCase(again).kase), again) << round;
    }
    // The mutations reach every outcome.
    EXPECT_GT(seen[Status::Ok], 1000);
    EXPECT_GT(seen[Status::Damaged], 1000);
    EXPECT_GT(seen[Status::BadMarker], 10);
}

TEST(Robustness, MutatedAndRandomRateTablesDecodeSafely)
{
    rwtest::HandBytes seed;
    seed.raw("NOTVB3").i32(3);
    for (int i = 0; i < 3; ++i)
        seed.f64(30000.0 + 100 * i).f64(30099.0 + 100 * i).f32(0.05f * static_cast<float>(i + 1)).f32(0.04f).raw("....").raw(i == 1 ? "S" : "C");
    std::mt19937 rng(1990);
    int ok = 0, damaged = 0;
    for (int round = 0; round < 20000; ++round) {
        std::vector<char> img = seed.bytes;
        if (round % 4 == 0) {  // random bytes after the marker
            img.resize(6 + rng() % 1200);
            for (std::size_t i = 6; i < img.size(); ++i)
                img[i] = static_cast<char>(rng());
            const rw::CaseReadResult c = rw::DecodeCase(img);  // read as a case file too
            ASSERT_NE(c.status, Status::BadMarker);
            ASSERT_TRUE(c.status != Status::Ok || c.kase.countsConsistent());
        }
        for (int m = 1 + static_cast<int>(rng() % 3); m > 0; --m)
            Mutate(img, rng);
        const rw::RateTableReadResult r = rw::DecodeRateTable(img);
        if (r.status != rw::RateTableReadResult::Status::Ok) {
            ++damaged;
            ASSERT_TRUE(r.rows.empty());
            continue;
        }
        ++ok;
        // The count said how many rows, and the file held them all.
        std::uint32_t n = 0;
        for (int i = 3; i >= 0; --i)
            n = n * 256 + static_cast<unsigned char>(img[6 + static_cast<std::size_t>(i)]);
        ASSERT_EQ(n, r.rows.size());
        const std::vector<char> again = rw::EncodeRateTable(r.rows);
        ASSERT_EQ(again, std::vector<char>(img.begin(), img.begin() + static_cast<long>(again.size())));
    }
    EXPECT_GT(ok, 1000);
    EXPECT_GT(damaged, 1000);
}

}  // namespace
