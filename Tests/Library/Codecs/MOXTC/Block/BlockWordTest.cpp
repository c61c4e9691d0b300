#include "Codecs/MOXTC/Block/BlockWord.h"

#include <array>

#include <gmock/gmock.h>

using namespace moxtexture;
using testing::ElementsAre;

TEST(BlockWord, HasTheModulationInTheFirstFourBytesAndTheColoursInTheLastLowestByteFirst)
{
    const std::array<uint8_t, 9> aui8Data = {0xFF, 0x01, 0x02, 0x03, 0x04, 0x11, 0x12, 0x13, 0x94};
    const BlockWord block = loadBlock(aui8Data.data() + 1);
    EXPECT_EQ(0x04030201u, block.ui32Modulation);
    EXPECT_EQ(0x94131211u, block.ui32Colours);
}

TEST(BlockWord, IsStoredAsItIsLoaded)
{
    std::array<uint8_t, 10> aui8Data = {};
    storeBlock(aui8Data.data() + 1, {0x04030201, 0x94131211});
    EXPECT_THAT(aui8Data, ElementsAre(0, 0x01, 0x02, 0x03, 0x04, 0x11, 0x12, 0x13, 0x94, 0));
}

TEST(BlockWord, IsEightPixelsWideAtTwoBitsAndFourAtFour)
{
    EXPECT_EQ(8u, getBlockWidth(true));
    EXPECT_EQ(4u, getBlockWidth(false));
}
