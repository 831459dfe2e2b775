// Damaged and hostile case files: the reader answers every byte sequence with
// a result (Ok, BadMarker or Damaged), never a crash, an exception or a read
// outside the input, and what it calls Ok is consistent and writes back alike.

#include "casedata/casefile.h"

#include "handcase.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using Status = rw::CaseReadResult::Status;

TEST(Robustness, MutatedCaseFilesDecodeSafely)
{
    const std::vector<std::vector<char>> seeds = {
        rwtest::HandCaseFile("Qrat1999Q1.00", rwtest::HandLayout::L482, 1, {1, 1, 1}),
        rwtest::HandCaseFile("Qrat2005Q1.00", rwtest::HandLayout::L484, 2, {0, 2, 0}),
        rwtest::HandCaseFile("Qrat2018Q1.10", rwtest::HandLayout::L488, 3, {2, 0, 3})};
    std::mt19937 rng(1810);
    const auto pick = [&](std::size_t n) { return n == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); };
    std::map<Status, int> seen;
    for (int round = 0; round < 20000; ++round) {
        std::vector<char> img = seeds[static_cast<std::size_t>(round) % seeds.size()];
        // One to three changes: flip a bit, write noise where the counts of a
        // record live or anywhere, cut, or lengthen.
        for (int m = 1 + static_cast<int>(rng() % 3); m > 0; --m) {
            const std::size_t kind = rng() % 5, at = kind == 1 ? 26 + 118 + 2 * pick(6) : pick(img.size());
            for (std::size_t i = at; i < img.size() && i < at + (kind == 0 ? 1 : kind == 1 ? 2 : kind == 2 ? 12 : 0); ++i)
                img[i] = static_cast<char>(kind == 0 ? img[i] ^ (1 << (rng() % 8)) : rng());
            if (kind == 3)
                img.resize(pick(img.size() + 1));
            for (int k = kind == 4 ? static_cast<int>(rng() % 64) : 0; k > 0; --k)
                img.push_back(static_cast<char>(rng()));
        }
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
    // The changes reach every outcome.
    EXPECT_GT(seen[Status::Ok], 1000);
    EXPECT_GT(seen[Status::Damaged], 1000);
    EXPECT_GT(seen[Status::BadMarker], 10);
}

}  // namespace
