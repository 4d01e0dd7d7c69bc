#include "foundation/memory/ByteOrder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

using q1framework::ByteOrder;

namespace
{
template <typename Integer>
std::string memoryOf(const Integer& value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}
}

TEST(ByteOrder, SwapsTwoFourAndEightByteValues)
{
    EXPECT_EQ(ByteOrder::swapped(uint16_t(0x0102)), 0x0201);
    EXPECT_EQ(ByteOrder::swapped(uint32_t(0x01020304)), 0x04030201u);
    EXPECT_EQ(ByteOrder::swapped(uint64_t(0x0102030405060708)), 0x0807060504030201u);
    EXPECT_EQ(ByteOrder::swapped(int16_t(-2)), int16_t(-257));
    EXPECT_EQ(ByteOrder::swapped(int32_t(0x000000FF)), int32_t(0xFF000000));
}

TEST(ByteOrder, ConversionsLayOutBytesInFileOrderOnAnyHost)
{
    uint32_t little = 0x01020304;
    ByteOrder::toLittleEndian(little);
    EXPECT_EQ(memoryOf(little), "\x04\x03\x02\x01");
    ByteOrder::fromLittleEndian(little);
    EXPECT_EQ(little, 0x01020304u);

    int64_t big = 0x0102030405060708;
    ByteOrder::toBigEndian(big);
    EXPECT_EQ(memoryOf(big), "\x01\x02\x03\x04\x05\x06\x07\x08");
    ByteOrder::fromBigEndian(big);
    EXPECT_EQ(big, 0x0102030405060708);

    uint16_t values[3] = {0x0102, 0x0304, 0x0506};
    ByteOrder::toBigEndian(values, 3);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(values), 6), "\x01\x02\x03\x04\x05\x06");
    ByteOrder::fromBigEndian(values, 3);
    ByteOrder::toLittleEndian(values, 3);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(values), 6), "\x02\x01\x04\x03\x06\x05");
    ByteOrder::fromLittleEndian(values, 3);
    EXPECT_EQ(values[2], 0x0506);
}
