#include "frontend/export/xls/cell_records.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace vexa::frontend {
namespace {

using biff::shortNumber;

/// A short number as the format says that it is read.
double valueOf(std::uint32_t bits) {
    double value = 0;
    if ((bits & 2U) != 0) {
        value = static_cast<std::int32_t>(bits) >> 2;
    } else {
        const std::uint64_t wide = std::uint64_t{bits & 0xFFFFFFFCU} << 32U;
        std::memcpy(&value, &wide, sizeof value);
    }
    return (bits & 1U) != 0 ? value / 100 : value;
}

bool isSame(double left, double right) { return std::memcmp(&left, &right, sizeof left) == 0; }

TEST(CellRecords, ShortNumbersAreExact) {
    std::mt19937_64 random(1);
    std::size_t brief = 0;
    for (int i = 0; i < 200'000; ++i) {
        const auto raw =
            static_cast<double>(static_cast<std::int64_t>(random() % 4'000'000'000) - 2'000'000'000);
        for (const double value : {raw, raw / 100, raw / 7, std::round(raw / 1000) / 10}) {
            const auto bits = shortNumber(value);
            if (!bits) continue;
            ++brief;
            ASSERT_TRUE(isSame(valueOf(*bits), value)) << value;
        }
    }
    EXPECT_GT(brief, 100'000U);
}

TEST(CellRecords, ShortNumbersAtTheirBounds) {
    for (const double value :
         {0.0, 1.0, -1.0, 536'870'911.0, -536'870'912.0, 0.01, 1.23, -0.05, 0.5, 1e300}) {
        const auto bits = shortNumber(value);
        EXPECT_TRUE(!bits || isSame(valueOf(*bits), value)) << value;
    }
    EXPECT_TRUE(shortNumber(536'870'911.0));
    EXPECT_TRUE(shortNumber(5'368'709.11));
    EXPECT_FALSE(shortNumber(536'870'913.0));
    EXPECT_FALSE(shortNumber(0.1234567));
    const auto negativeZero = shortNumber(-0.0);
    EXPECT_TRUE(!negativeZero || std::signbit(valueOf(*negativeZero)));
    EXPECT_FALSE(shortNumber(std::numeric_limits<double>::denorm_min()));
}

TEST(CellRecords, ReadsCellsOfOneRecord) {
    std::string bytes;
    biff::Records records(bytes);
    biff::appendBlanks(records, 3, 5, 9, 20);
    const auto cells = biff::cellsOf({biff::twoAt(bytes, 0), bytes});
    ASSERT_TRUE(cells);
    EXPECT_EQ(cells->row, 3U);
    EXPECT_EQ(cells->first, 5);
    EXPECT_EQ(cells->last, 9);
    std::string one;
    biff::Records oneRecord(one);
    biff::appendCellOf(oneRecord, *cells, 7);
    EXPECT_EQ(biff::twoAt(one, 0), biff::id::blank);
    EXPECT_EQ(biff::twoAt(one, 6), 7);
    EXPECT_EQ(biff::twoAt(one, 8), 20);
    // One column more than there are formats.
    bytes[bytes.size() - 2] = 10;
    EXPECT_FALSE(biff::cellsOf({biff::twoAt(bytes, 0), bytes}));
}

}  // namespace
}  // namespace vexa::frontend
