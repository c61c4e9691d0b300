#include "Formats/PixelWord.h"

#include <gtest/gtest.h>

#include "Formats/PixelEncoding.h"

using namespace moxtexture;

TEST(PixelWord, LettersStandInTheLowBytesAndBitCountsInTheHighOnes)
{
    EXPECT_EQ(0x0808080861626772u, MOXPixelWord('r', 'g', 'b', 'a', 8, 8, 8, 8).getWord());
    EXPECT_EQ(0x2020202061626772u, MOXPixelWord('r', 'g', 'b', 'a', 32, 32, 32, 32).getWord());
    EXPECT_EQ(0x0000101000006772u, MOXPixelWord('r', 'g', 0, 0, 16, 16, 0, 0).getWord());
    EXPECT_EQ(0x0000000800000061u, MOXPixelWord('a', 0, 0, 0, 8, 0, 0, 0).getWord());
}

TEST(PixelWord, TheShortFormLeavesMissingPositionsAtZero)
{
    EXPECT_EQ(0x0808080861626772u, layout("rgba", 8, 8, 8, 8).getWord());
    EXPECT_EQ(0x0000101000006772u, layout("rg", 16, 16).getWord());
    EXPECT_EQ(0x000B0B0A00726762u, layout("bgr", 10, 11, 11).getWord());
}

TEST(PixelWord, TheWorkingLayoutsAreFourEqualChannels)
{
    EXPECT_EQ(0x0808080861626772u, k_RGBA8.getWord());
    EXPECT_EQ(0x1010101061626772u, k_RGBA16.getWord());
    EXPECT_EQ(0x2020202061626772u, k_RGBA32.getWord());
}

TEST(PixelWord, PositionsGiveBackTheirLettersAndBits)
{
    const MOXPixelWord word(uint64_t{0x000506050062677A});
    EXPECT_EQ('z', word.getChannelLetter(0));
    EXPECT_EQ('g', word.getChannelLetter(1));
    EXPECT_EQ('b', word.getChannelLetter(2));
    EXPECT_EQ('\0', word.getChannelLetter(3));
    EXPECT_EQ(5u, word.getChannelBits(0));
    EXPECT_EQ(6u, word.getChannelBits(1));
    EXPECT_EQ(5u, word.getChannelBits(2));
    EXPECT_EQ(0u, word.getChannelBits(3));
    EXPECT_EQ(255u, MOXPixelWord(uint64_t{0xFF00000000000000}).getChannelBits(3));
}

TEST(PixelWord, TheUpperHalfAloneDecidesBetweenNumberAndLayout)
{
    const MOXPixelWord number(uint64_t{0x61}); // the number 97, not the channel "a"
    EXPECT_TRUE(number.isCompressed());
    EXPECT_EQ(0x61u, number.getFormat());
    EXPECT_TRUE(MOXPixelWord(uint64_t{0x00000000FFFFFFFF}).isCompressed());
    EXPECT_FALSE(MOXPixelWord(uint64_t{0x0000000100000000}).isCompressed());
    EXPECT_FALSE(MOXPixelWord(uint64_t{0x0100000000000061}).isCompressed());
}

TEST(PixelWord, IsTheNumberOfNoFormatByDefault)
{
    EXPECT_EQ(51u, MOXPixelWord().getWord());
    EXPECT_EQ(MOXPixelWord(ePF_Count), MOXPixelWord());
}

TEST(PixelWord, AFormatNumberIsTheWholeWord)
{
    const MOXPixelWord word = ePF_ETC2_RGB_A1;
    EXPECT_EQ(24u, word.getWord());
    EXPECT_EQ(ePF_ETC2_RGB_A1, word.getFormat());
    EXPECT_TRUE(word == MOXPixelWord(uint64_t{24}));
    EXPECT_TRUE(word != MOXPixelWord(uint64_t{0x0100000000000018}));
}

TEST(PixelEncoding, IsEqualOnlyInAllItsFields)
{
    const PixelEncoding encoding = {k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, false};
    PixelEncoding other = encoding;
    EXPECT_TRUE(encoding == other);
    other.pixelFormat = k_RGBA16;
    EXPECT_TRUE(encoding != other);
    other = encoding;
    other.eChannelType = eCT_UnsignedByte;
    EXPECT_TRUE(encoding != other);
    other = encoding;
    other.eColourSpace = eCS_sRGB;
    EXPECT_TRUE(encoding != other);
    other = encoding;
    other.bPreMultiplied = true;
    EXPECT_TRUE(encoding != other);
}
