// Damaged and hostile inputs: the readers must answer every byte sequence
// with a result (Ok, BadMarker or Damaged), never a crash, an exception or a
// read outside the input, and a result they call Ok must be a consistent case.

#include "casedata/casefile.h"
#include "rates/ratetable.h"

#include "handcase.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using Status = rw::CaseReadResult::Status;

// Small, valid images of each layout, with and without lists.
std::vector<std::vector<char>> CaseSeeds()
{
    std::vector<std::vector<char>> seeds;
    seeds.push_back(rwtest::HandCaseFile("Qrat1999Q1.00", rwtest::HandLayout::L482, 1, {1, 1, 1}));
    seeds.push_back(rwtest::HandCaseFile("Qrat2005Q1.00", rwtest::HandLayout::L484, 2, {0, 2, 0}));
    seeds.push_back(rwtest::HandCaseFile("Qrat2018Q1.10", rwtest::HandLayout::L488, 3, {2, 0, 3}));
    seeds.push_back(rwtest::HandCaseFile("Qrat2018Q1.10", rwtest::HandLayout::L488, 4, {0, 0, 0}));
    return seeds;
}

std::vector<char> TableSeed()
{
    rwtest::HandBytes b;
    b.raw("NOTVB3").i32(3);
    for (int i = 0; i < 3; ++i)
        b.f64(30000.0 + 100 * i).f64(30099.0 + 100 * i).f32(0.05f * static_cast<float>(i + 1)).f32(0.04f).raw("....").raw(i == 1 ? "S" : "C");
    return b.bytes;
}

// One random change: flip bytes, write a random 16-bit count where counts
// live, cut the image, lengthen it, or overwrite a run with noise.
void Mutate(std::vector<char>& img, std::mt19937& rng)
{
    const auto pick = [&](std::size_t n) { return n == 0 ? 0 : std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); };
    switch (rng() % 6) {
    case 0:
        for (int k = 1 + static_cast<int>(rng() % 8); k > 0 && !img.empty(); --k)
            img[pick(img.size())] ^= static_cast<char>(1u << (rng() % 8));
        break;
    case 1:
        if (img.size() > 160) {  // the counts of the 482-, 484- and 488-byte records
            const std::size_t at = 26 + 118 + 2 * pick(6);
            const auto v = static_cast<std::uint16_t>(rng());
            img[at] = static_cast<char>(v & 0xFF);
            img[at + 1] = static_cast<char>(v >> 8);
        }
        break;
    case 2:
        img.resize(pick(img.size() + 1));
        break;
    case 3:
        for (int k = static_cast<int>(rng() % 64); k > 0; --k)
            img.push_back(static_cast<char>(rng()));
        break;
    case 4:
        if (!img.empty()) {
            const std::size_t at = pick(img.size());
            for (std::size_t i = at; i < img.size() && i < at + 12; ++i)
                img[i] = static_cast<char>(rng());
        }
        break;
    default:
        if (img.size() >= 10) {  // a rate table's count, or the tag of a case file
            const auto v = static_cast<std::uint32_t>(rng());
            for (int i = 0; i < 4; ++i)
                img[6 + static_cast<std::size_t>(i)] = static_cast<char>((v >> (8 * i)) & 0xFF);
        }
        break;
    }
}

TEST(Robustness, MutatedCaseFilesDecodeSafely)
{
    std::mt19937 rng(1810);
    const auto seeds = CaseSeeds();
    int ok = 0, damaged = 0, badMarker = 0;
    for (int round = 0; round < 20000; ++round) {
        std::vector<char> img = seeds[static_cast<std::size_t>(round) % seeds.size()];
        for (int m = 1 + static_cast<int>(rng() % 3); m > 0; --m)
            Mutate(img, rng);
        const rw::CaseReadResult r = rw::DecodeCase(img);
        switch (r.status) {
        case Status::Ok: {
            ++ok;
            ASSERT_TRUE(r.kase.countsConsistent()) << round;
            // What was read writes and reads back as the same case.
            const std::vector<char> again = rw::EncodeCase(r.kase);
            const rw::CaseReadResult r2 = rw::DecodeCase(again);
            ASSERT_EQ(r2.status, Status::Ok) << round;
            ASSERT_EQ(rw::EncodeCase(r2.kase), again) << round;
            break;
        }
        case Status::Damaged:
            ++damaged;
            ASSERT_FALSE(r.detail.empty());
            break;
        case Status::BadMarker:
            ++badMarker;
            break;
        case Status::NotFound:
            FAIL() << "a byte image cannot be missing";
        }
    }
    // The mutations reach every outcome.
    EXPECT_GT(ok, 1000);
    EXPECT_GT(damaged, 1000);
    EXPECT_GT(badMarker, 10);
}

TEST(Robustness, RandomBytesAfterTheMarkerDecodeSafely)
{
    std::mt19937 rng(2200);
    for (int round = 0; round < 5000; ++round) {
        std::vector<char> img = {'N', 'O', 'T', 'V', 'B', '3'};
        const std::size_t n = rng() % 1200;
        for (std::size_t i = 0; i < n; ++i)
            img.push_back(static_cast<char>(rng()));
        const rw::CaseReadResult r = rw::DecodeCase(img);
        ASSERT_NE(r.status, Status::BadMarker);
        if (r.status == Status::Ok) {
            ASSERT_TRUE(r.kase.countsConsistent());
        }
        const rw::RateTableReadResult t = rw::DecodeRateTable(img);
        if (t.status == rw::RateTableReadResult::Status::Ok) {
            ASSERT_GE(img.size(), 10 + 29 * t.rows.size());
        } else {
            ASSERT_TRUE(t.rows.empty());
        }
    }
}

TEST(Robustness, MutatedRateTablesDecodeSafely)
{
    std::mt19937 rng(1990);
    const std::vector<char> seed = TableSeed();
    int ok = 0, damaged = 0;
    for (int round = 0; round < 20000; ++round) {
        std::vector<char> img = seed;
        for (int m = 1 + static_cast<int>(rng() % 3); m > 0; --m)
            Mutate(img, rng);
        const rw::RateTableReadResult r = rw::DecodeRateTable(img);
        if (r.status == rw::RateTableReadResult::Status::Ok) {
            ++ok;
            // The count said how many rows, and the file held them all.
            std::int32_t n = 0;
            for (int i = 3; i >= 0; --i)
                n = n * 256 + static_cast<unsigned char>(img[6 + static_cast<std::size_t>(i)]);
            ASSERT_EQ(static_cast<std::size_t>(n), r.rows.size());
            const std::vector<char> again = rw::EncodeRateTable(r.rows);
            ASSERT_EQ(again, std::vector<char>(img.begin(), img.begin() + static_cast<long>(again.size())));
        } else if (r.status == rw::RateTableReadResult::Status::Damaged) {
            ++damaged;
            ASSERT_TRUE(r.rows.empty());
        }
    }
    EXPECT_GT(ok, 1000);
    EXPECT_GT(damaged, 1000);
}

}  // namespace
