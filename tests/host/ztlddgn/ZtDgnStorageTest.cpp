#include "tools/ZtTestDgnWriter.h"
#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnChunkedArray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace {

TEST(ZtDgnChunkedArray, ItemsKeepTheirPlaceAndOrderAcrossChunks) {
    struct Counted {
        std::shared_ptr<int> alive;
        std::size_t value;
    };
    auto alive = std::make_shared<int>(0);
    {
        ZtDgnChunkedArray<Counted, 4> array;
        std::vector<const Counted*> addresses;
        for (std::size_t i = 0; i < 1000; ++i)
            addresses.push_back(&array.Emplace(Counted{alive, i}));
        ASSERT_EQ(array.Size(), 1000u);
        for (std::size_t i = 0; i < 1000; ++i) {
            EXPECT_EQ(&array[i], addresses[i]);
            EXPECT_EQ(array[i].value, i);
        }
        EXPECT_EQ(alive.use_count(), 1001);
    }
    EXPECT_EQ(alive.use_count(), 1); // every item destroyed

    ZtDgnChunkedArray<std::uint64_t, 1 << 16> array; // chunks of 512 KiB, 1 MiB, 2 MiB, ...
    for (std::uint64_t i = 0; i < 600000; ++i)
        array.Emplace(i * 3);
    EXPECT_EQ(array[0], 0u);
    EXPECT_EQ(array[65535], 65535u * 3);
    EXPECT_EQ(array[65536], 65536u * 3);
    EXPECT_EQ(array[599999], 599999u * 3);
}

TEST(ZtDgnChunkedArray, RunsStaySideBySideAndPassOverTheRestOfAFullChunk) {
    ZtDgnChunkedArray<std::uint16_t, 4> words; // chunks of 4, 8, 16, ...
    const std::size_t runs[] = {3, 2, 4, 0, 8, 1};
    std::vector<std::pair<std::size_t, std::size_t>> placed; // first index, length
    std::uint16_t next = 1;
    for (std::size_t length : runs) {
        std::size_t first = 99;
        std::uint16_t* run = words.AppendRun(length, &first);
        for (std::size_t i = 0; i < length; ++i)
            run[i] = next++;
        placed.emplace_back(first, length);
    }
    // 3 leaves one place in the first chunk, too few for 2, which opens the second (4 to
    // 11); 4 follows it there, and 8 finds too little room behind that and opens the
    // third (12 to 27), where 1 follows it.
    const std::vector<std::pair<std::size_t, std::size_t>> expected = {{0, 3},  {4, 2},  {6, 4},
                                                                       {10, 0}, {12, 8}, {20, 1}};
    EXPECT_EQ(placed, expected);
    EXPECT_EQ(words.Size(), 21u);
    next = 1;
    for (const auto& [first, length] : placed)
        for (std::size_t i = 0; i < length; ++i)
            EXPECT_EQ(words[first + i], next++) << first + i;
}

TEST(ZtDgnChunkedArray, ForRangeVisitsItsItemsInOrderAcrossChunks) {
    ZtDgnChunkedArray<int, 4> array; // chunks of 4, 8, 16, ...
    for (int i = 0; i < 100; ++i)
        array.Emplace(i);
    for (const auto& [first, count] :
         {std::pair<int, int>{0, 100}, {3, 2}, {4, 8}, {5, 70}, {99, 1}, {50, 0}}) {
        std::vector<int> seen;
        array.ForRange(static_cast<std::size_t>(first), static_cast<std::size_t>(count),
                       [&](int item) { seen.push_back(item); });
        std::vector<int> expected(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            expected[static_cast<std::size_t>(i)] = first + i;
        EXPECT_EQ(seen, expected) << first << " " << count;
    }
}

TEST(ZtDgnBytes, DecodesTheFileEncodings) {
    const std::uint8_t int32[] = {0x01, 0x00, 0x70, 0x11};
    EXPECT_EQ(ZtDgnInt32(int32), 70000);
    const std::uint8_t minusOne[] = {0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(ZtDgnInt32(minusOne), -1);
    const std::uint8_t highWordFirst[] = {0x34, 0x12, 0x78, 0x56};
    EXPECT_EQ(ZtDgnUInt32(highWordFirst), 0x12345678u);
    const std::uint8_t rangeZero[] = {0x00, 0x80, 0x00, 0x00};
    EXPECT_EQ(ZtDgnRangeValue(rangeZero), 0);
    const std::uint8_t rangeLow[] = {0x00, 0x00, 0x01, 0x00};
    EXPECT_EQ(ZtDgnRangeValue(rangeLow), -2147483647);

    struct Vax {
        std::uint8_t bytes[8];
        double value;
    };
    const Vax vax[] = {
        {{0x80, 0x40, 0, 0, 0, 0, 0, 0}, 1.0},
        {{0x80, 0xC0, 0, 0, 0, 0, 0, 0}, -1.0},
        {{0x00, 0x40, 0, 0, 0, 0, 0, 0}, 0.5},
        {{0x7A, 0x45, 0x00, 0x20, 0, 0, 0, 0}, 1000.5},
        {{0, 0, 0, 0, 0, 0, 0, 0}, 0.0},
        {{0x00, 0x80, 0x12, 0x34, 0, 0, 0, 0}, 0.0}, // reserved operand
    };
    for (const Vax& v : vax)
        EXPECT_EQ(ZtDgnVaxDouble(v.bytes), v.value) << v.value;

    // Writing and reading back is exact wherever VAX D can hold the value.
    for (double value : {1.0, -3.25, 160000000.0, 8004000.0, -16002000.0, 1e-30, 1.7e38, 0.1,
                         std::nextafter(1.0, 2.0)}) {
        std::vector<std::uint8_t> bytes(8);
        ZtTestPutVaxDouble(bytes, 0, value);
        EXPECT_EQ(ZtDgnVaxDouble(bytes.data()), value) << value;
    }
}

} // namespace
