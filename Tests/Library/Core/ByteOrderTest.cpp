#include "Core/ByteOrder.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(ByteOrder, ReadsTheLowestByteFirstAtAnyAddress)
{
    const uint8_t aui8Bytes[9] = {0xFF, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08};
    EXPECT_EQ(0x01, loadLE<uint8_t>(aui8Bytes + 1));
    EXPECT_EQ(0x0201, loadLE<uint16_t>(aui8Bytes + 1));
    EXPECT_EQ(0x04030201u, loadLE<uint32_t>(aui8Bytes + 1));
    EXPECT_EQ(0x0807060504030201u, loadLE<uint64_t>(aui8Bytes + 1));
}

TEST(ByteOrder, ReadsFloatsAsTheirBits)
{
    const uint8_t aui8One[4] = {0x00, 0x00, 0x80, 0x3F};
    EXPECT_EQ(1.0f, loadLE<float>(aui8One));
}

TEST(ByteOrder, WritesTheLowestByteFirstAndNothingBeside)
{
    uint8_t aui8Bytes[6] = {0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA};
    storeLE<uint32_t>(aui8Bytes + 1, 0x04030201);
    const uint8_t aui8Expected[6] = {0xAA, 0x01, 0x02, 0x03, 0x04, 0xAA};
    EXPECT_EQ(0, std::memcmp(aui8Expected, aui8Bytes, 6));
}
