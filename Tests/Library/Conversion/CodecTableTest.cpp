#include "Conversion/CodecTable.h"

#include <algorithm>
#include <iterator>

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(CodecTable, EveryBCTypeWithAnEncoderHasItsEntries)
{
    for (const EMOXTPixelFormat eFormat : {ePF_BC1, ePF_DXT2, ePF_BC2, ePF_DXT4, ePF_BC3})
    {
        const CodecRow* pRow = findCodec(eFormat);
        ASSERT_NE(nullptr, pRow) << eFormat;
        EXPECT_NE(nullptr, pRow->pCompress);
        EXPECT_NE(nullptr, pRow->pDecompress);
        EXPECT_FALSE(pRow->bTakesDepth);
        EXPECT_FALSE(pRow->bDecodesSmallSurface);
    }
}

TEST(CodecTable, BC4ToBC7HaveNoEntries)
{
    for (const EMOXTPixelFormat eFormat : {ePF_BC4, ePF_BC5, ePF_BC6, ePF_BC7, ePF_Count})
        EXPECT_EQ(nullptr, findCodec(eFormat)) << eFormat;
}

TEST(CodecTable, TheFiveTypesWriteBlocksOfTheirOwnKind)
{
    // A flat red block: explicit alpha is eight bytes of FF, interpolated alpha FF FF and no index bits.
    uint8_t aui8Pixels[64];
    for (int i = 0; i < 16; ++i)
    {
        aui8Pixels[4 * i] = 255;
        aui8Pixels[4 * i + 1] = 0;
        aui8Pixels[4 * i + 2] = 0;
        aui8Pixels[4 * i + 3] = 255;
    }
    CodecSurface surface;
    surface.uiWidth = surface.uiHeight = 4;
    uint8_t aui8Block[16];

    surface.eFormat = ePF_BC1;
    ASSERT_EQ(8u, findCodec(ePF_BC1)->pCompress(aui8Pixels, aui8Block, surface));
    EXPECT_EQ(0x00, aui8Block[0]);
    EXPECT_EQ(0xF8, aui8Block[1]);

    for (const EMOXTPixelFormat eFormat : {ePF_DXT2, ePF_BC2})
    {
        surface.eFormat = eFormat;
        ASSERT_EQ(16u, findCodec(eFormat)->pCompress(aui8Pixels, aui8Block, surface));
        EXPECT_EQ(0xFF, aui8Block[2]) << eFormat;
    }
    for (const EMOXTPixelFormat eFormat : {ePF_DXT4, ePF_BC3})
    {
        surface.eFormat = eFormat;
        ASSERT_EQ(16u, findCodec(eFormat)->pCompress(aui8Pixels, aui8Block, surface));
        EXPECT_EQ(0xFF, aui8Block[0]) << eFormat;
        EXPECT_EQ(0x00, aui8Block[2]) << eFormat;
    }
}

TEST(CodecTable, IntermediatesAreRGBA8ButForTheFormatsWithTheirOwn)
{
    struct Own
    {
        uint32_t uiFormat;
        uint64_t ui64Word;
        uint32_t uiChannelType;
    };
    constexpr Own aOwn[] = {
        {6, 0x0008080800626772, 0},  {22, 0x0008080800626772, 0}, {19, 0x0020202000626772, 12},
        {25, 0x0000001000000072, 4}, {26, 0x0000101000006772, 4},
    };
    for (uint32_t uiFormat = 0; uiFormat < ePF_Count; ++uiFormat)
    {
        const auto* pOwn = std::find_if(std::begin(aOwn), std::end(aOwn), [&](const Own& row) { return row.uiFormat == uiFormat; });
        const bool bOwn = pOwn != std::end(aOwn);
        const Intermediate result = getIntermediate(static_cast<EMOXTPixelFormat>(uiFormat), eCT_UnsignedNormalisedByte);
        EXPECT_EQ(bOwn ? pOwn->ui64Word : 0x0808080861626772, result.pixelFormat.getWord()) << uiFormat;
        EXPECT_EQ(bOwn ? pOwn->uiChannelType : 0, result.eChannelType) << uiFormat;
    }
}

TEST(CodecTable, TheEACIntermediateIsSignedForTheSignedTypes)
{
    for (uint32_t uiType = 0; uiType < 16; ++uiType)
    {
        const bool bSigned = uiType == 1 || uiType == 3 || uiType == 5 || uiType == 7 || uiType == 9 || uiType == 11 || uiType == 12;
        EXPECT_EQ(bSigned ? 5u : 4u, getIntermediate(ePF_EAC_R11, static_cast<EMOXTChannelType>(uiType)).eChannelType) << uiType;
        EXPECT_EQ(bSigned ? 5u : 4u, getIntermediate(ePF_EAC_RG11, static_cast<EMOXTChannelType>(uiType)).eChannelType) << uiType;
        EXPECT_EQ(0u, getIntermediate(ePF_BC1, static_cast<EMOXTChannelType>(uiType)).eChannelType) << uiType;
    }
}
