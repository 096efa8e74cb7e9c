#include "tools/ZtTestDgnWriter.h"
#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnChunkedArray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

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

TEST(ZtDgnBytes, DecodesTheFileEncodings) {
    const std::uint8_t int32[] = {0x01, 0x00, 0x70, 0x11};
    EXPECT_EQ(ZtDgnInt32(int32), 70000);
    const std::uint8_t minusOne[] = {0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(ZtDgnInt32(minusOne), -1);
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
