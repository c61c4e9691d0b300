#include "Files/DdsReader.h"

#include <cstdio>

#include <unistd.h>

#include <gtest/gtest.h>

#include "Support/DdsLoading.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiDXT1 = 0x31545844;
constexpr uint32_t k_uiDXT2 = 0x32545844;

Bytes surfaceOf(const CMOXTexture& texture, uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
{
    const uint8_t* pData = texture.getDataPtr(uiLevel, uiMember, uiFace);
    return pData != nullptr ? Bytes(pData, pData + texture.getDataSize(uiLevel, false, false)) : Bytes();
}

} // namespace

TEST(DdsReader, OnePixelOfThirtyTwoBits)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().data({3, 2, 1, 4}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((PixelEncoding{layout("argb", 8, 8, 8, 8), eCT_UnsignedNormalisedInteger}), load.texture.getEncoding());
    EXPECT_EQ(1u, load.texture.getWidth());
    EXPECT_EQ(1u, load.texture.getHeight());
    EXPECT_EQ(1u, load.texture.getDepth());
    EXPECT_EQ(1u, load.texture.getNumMIPLevels());
    EXPECT_EQ(1u, load.texture.getNumFaces());
    EXPECT_EQ(1u, load.texture.getNumArrayMembers());
    EXPECT_EQ(0u, load.texture.getMetaData().getCount());
    EXPECT_EQ((Bytes{3, 2, 1, 4}), dataOf(load.texture));
}

TEST(DdsReader, AFileOf127BytesFailsAndOneWithoutItsDataToo)
{
    Bytes bytes = CDdsFileBuilder().bytes();
    EXPECT_FALSE(loadDds(bytes).bGood);
    bytes.pop_back();
    ASSERT_EQ(127u, bytes.size());
    const DdsLoad load = loadDds(bytes);
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(DdsReader, NoFileFails)
{
    CMOXTexture texture;
    EXPECT_FALSE(readDds(nullptr, texture));
    EXPECT_EQ(0u, texture.getDataSize());
}

TEST(DdsReader, TheFourLettersAndTheHeaderSizeMustBeThere)
{
    EXPECT_FALSE(loadDds(CDdsFileBuilder().data({1, 2, 3, 4}).word(0, 0x21534444)).bGood);
    EXPECT_FALSE(loadDds(CDdsFileBuilder().data({1, 2, 3, 4}).word(4, 123)).bGood);
    EXPECT_TRUE(loadDds(CDdsFileBuilder().data({1, 2, 3, 4}).word(76, 24)).bGood) << "the size of the pixel format is not looked at";
}

TEST(DdsReader, TheFileIsReadFromItsStartWhateverItsPosition)
{
    const Bytes bytes = CDdsFileBuilder().data({1, 2, 3, 4}).bytes();
    const CMemoryFile file(bytes);
    ASSERT_EQ(0, std::fseek(file.get(), 77, SEEK_SET));
    CMOXTexture texture;
    EXPECT_TRUE(readDds(file.get(), texture));
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(texture));
}

TEST(DdsReader, DepthAndLevelsCountOnlyWithTheirFlags)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().size(2, 2).word(24, 7).word(28, 2).data(Bytes(16, 9)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getDepth());
    EXPECT_EQ(1u, load.texture.getNumMIPLevels());
}

TEST(DdsReader, AVolumeWithItsChain)
{
    // 4 by 2 by 2, then 2 by 1 by 1, then 1 by 1 by 1: 16 + 2 + 1 pixels of one byte.
    const Bytes data = CSeededRandom(1).bytes(19);
    const DdsLoad load = loadDds(CDdsFileBuilder().size(4, 2).depth(2).levels(3).caps2(0x200000).masks(0x20000, 8, 0xFF).data(data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(2u, load.texture.getDepth());
    EXPECT_EQ(1u, load.texture.getDepth(1));
    EXPECT_EQ(layout("l", 8), load.texture.getPixelFormat());
    EXPECT_EQ(data, dataOf(load.texture)) << "with one surface the order is that of memory";
}

TEST(DdsReader, AChainDeeperThanTheSizeAllowsGoesOnAtOnePixel)
{
    // 2 by 1, then three times 1 by 1, of one byte.
    const DdsLoad load = loadDds(CDdsFileBuilder().size(2, 1).levels(4).masks(0x20000, 8, 0xFF).data({1, 2, 3, 4, 5}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2}), surfaceOf(load.texture, 0, 0, 0));
    EXPECT_EQ((Bytes{3}), surfaceOf(load.texture, 1, 0, 0));
    EXPECT_EQ((Bytes{4}), surfaceOf(load.texture, 2, 0, 0));
    EXPECT_EQ((Bytes{5}), surfaceOf(load.texture, 3, 0, 0));
}

TEST(DdsReader, AnArrayOfVolumes)
{
    // Two members of 2 by 1 by 2 pixels, each with its level of one pixel.
    const DdsLoad load =
        loadDds(CDdsFileBuilder().size(2, 1).depth(2).levels(2).extended(61, 4, 0, 2).data({0, 1, 2, 3, 4, 10, 11, 12, 13, 14}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{0, 1, 2, 3}), surfaceOf(load.texture, 0, 0, 0));
    EXPECT_EQ((Bytes{4}), surfaceOf(load.texture, 1, 0, 0));
    EXPECT_EQ((Bytes{10, 11, 12, 13}), surfaceOf(load.texture, 0, 1, 0));
    EXPECT_EQ((Bytes{14}), surfaceOf(load.texture, 1, 1, 0));
}

TEST(DdsReader, AnyOfTheCubeCapsMakesSixFaces)
{
    for (const uint32_t uiCaps : {0xFE00u, 0x200u, 0x600u, 0x8000u})
    {
        const DdsLoad load = loadDds(CDdsFileBuilder().caps2(uiCaps).masks(2, 8, 0, 0, 0, 0xFF).data({1, 2, 3, 4, 5, 6}));
        EXPECT_TRUE(load.bGood) << uiCaps;
        EXPECT_EQ(6u, load.texture.getNumFaces());
        EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 6}), dataOf(load.texture));
    }
    EXPECT_EQ(1u, loadDds(CDdsFileBuilder().caps2(0x1FF).data(Bytes(4, 1))).texture.getNumFaces());
}

TEST(DdsReader, EachFaceOfACubeBringsItsWholeChain)
{
    // 2 by 2, then 1 by 1, of one byte: five bytes a face.
    Bytes data(30);
    for (size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<uint8_t>(i);
    const DdsLoad load = loadDds(CDdsFileBuilder().size(2, 2).levels(2).caps2(0xFE00).masks(0x20000, 8, 0xFF).data(data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{0, 1, 2, 3}), surfaceOf(load.texture, 0, 0, 0));
    EXPECT_EQ((Bytes{4}), surfaceOf(load.texture, 1, 0, 0));
    EXPECT_EQ((Bytes{5, 6, 7, 8}), surfaceOf(load.texture, 0, 0, 1));
    EXPECT_EQ((Bytes{29}), surfaceOf(load.texture, 1, 0, 5));
}

TEST(DdsReader, AnArrayOfCubesComesMemberByMemberFaceByFaceLevelByLevel)
{
    Bytes data(60);
    for (size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<uint8_t>(i);
    const DdsLoad load = loadDds(CDdsFileBuilder().size(2, 2).levels(2).extended(61, 3, 4, 2).data(data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(6u, load.texture.getNumFaces()) << "from the misc flags, without cube caps";
    EXPECT_EQ(2u, load.texture.getNumArrayMembers());
    for (uint8_t uiMember = 0; uiMember < 2; ++uiMember)
    {
        for (uint8_t uiFace = 0; uiFace < 6; ++uiFace)
        {
            const auto uiFirst = static_cast<uint8_t>(30 * uiMember + 5 * uiFace);
            const auto at = [&](int i) { return static_cast<uint8_t>(uiFirst + i); };
            EXPECT_EQ((Bytes{at(0), at(1), at(2), at(3)}), surfaceOf(load.texture, 0, uiMember, uiFace));
            EXPECT_EQ((Bytes{at(4)}), surfaceOf(load.texture, 1, uiMember, uiFace));
        }
    }
}

TEST(DdsReader, AnArraySizeOfZeroIsOneMember)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().extended(28, 3, 0, 0).data({1, 2, 3, 4}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getNumArrayMembers());
    EXPECT_EQ((PixelEncoding{k_RGBA8}), load.texture.getEncoding());
}

TEST(DdsReader, TheResourceDimensionCutsWhatItDoesNotHave)
{
    const CDdsFileBuilder whole = CDdsFileBuilder().size(2, 3).depth(4).data(Bytes(24, 5));
    const CMOXTexture line = loadDds(CDdsFileBuilder(whole).extended(61, 2)).texture;
    EXPECT_EQ(2u, line.getDataSize());
    EXPECT_EQ(1u, line.getHeight());
    EXPECT_EQ(1u, line.getDepth());
    const CMOXTexture plane = loadDds(CDdsFileBuilder(whole).extended(61, 3)).texture;
    EXPECT_EQ(6u, plane.getDataSize());
    EXPECT_EQ(3u, plane.getHeight());
    const CMOXTexture volume = loadDds(CDdsFileBuilder(whole).extended(61, 4)).texture;
    EXPECT_EQ(24u, volume.getDataSize());
    EXPECT_EQ(4u, volume.getDepth());
}

TEST(DdsReader, AnyOtherResourceDimensionFails)
{
    for (const uint32_t uiDimension : {0u, 1u, 5u, 0xFFFFFFFFu})
    {
        const DdsLoad load = loadDds(CDdsFileBuilder().extended(28, uiDimension).data({1, 2, 3, 4}));
        EXPECT_FALSE(load.bGood) << uiDimension;
        EXPECT_EQ(0u, load.texture.getDataSize());
    }
}

TEST(DdsReader, AnUnknownDXGINumberLeavesATextureWithoutAFormat)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().size(5, 6).extended(27).data(Bytes(120, 1)));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(MOXPixelWord(ePF_Count), load.texture.getPixelFormat());
    EXPECT_EQ(5u, load.texture.getWidth());
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(DdsReader, AFormatWithoutASizeHasNoData)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().size(4, 4).extended(98).data(Bytes(16, 1)));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(DdsReader, AnUnknownFourCCAndUnknownMasksFail)
{
    EXPECT_FALSE(loadDds(CDdsFileBuilder().fourCC(0x32495441).data(Bytes(16, 1))).bGood);
    EXPECT_FALSE(loadDds(CDdsFileBuilder().fourCC(0).data(Bytes(16, 1))).bGood);
    EXPECT_FALSE(loadDds(CDdsFileBuilder().masks(0x41, 32, 0xFF00, 0xFF, 0xFF0000, 0xFF000000).data(Bytes(4, 1))).bGood);
    EXPECT_FALSE(loadDds(CDdsFileBuilder().masks(0, 32, 0xFF0000, 0xFF00, 0xFF, 0xFF000000).data(Bytes(4, 1))).bGood);
}

TEST(DdsReader, BlocksOfACodecRoundUp)
{
    // 5 by 5 are 2 by 2 blocks of 8 bytes.
    const Bytes data = CSeededRandom(2).bytes(32);
    const DdsLoad load = loadDds(CDdsFileBuilder().size(5, 5).fourCC(k_uiDXT1).data(data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((PixelEncoding{ePF_BC1}), load.texture.getEncoding());
    EXPECT_EQ(data, dataOf(load.texture));
}

TEST(DdsReader, SomeFourCCsSayThatColoursArePreMultiplied)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().size(4, 4).fourCC(k_uiDXT2).data(Bytes(16, 1)));
    EXPECT_TRUE(load.bGood);
    EXPECT_TRUE(load.texture.isPreMultiplied());
}

TEST(DdsReader, NumbersStandInTheFieldOfTheFourCC)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().fourCC(113).data(Bytes(8, 1)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((PixelEncoding{k_RGBA16, eCT_SignedFloatingPoint}), load.texture.getEncoding());
    EXPECT_EQ(4u, loadDds(CDdsFileBuilder().fourCC(111).data(Bytes(4, 1))).texture.getDataSize()) << "32 bits";
}

TEST(DdsReader, TheMasksOfCommonFilesThatAreNotWrittenHere)
{
    const auto formatOf = [](const CDdsFileBuilder& builder)
    {
        const DdsLoad load = loadDds(CDdsFileBuilder(builder).data({1, 2, 3, 4}));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(eCT_UnsignedNormalisedInteger, load.texture.getChannelType());
        return load.texture.getPixelFormat();
    };
    EXPECT_EQ(layout("xrgb", 8, 8, 8, 8), formatOf(CDdsFileBuilder().masks(0x40, 32, 0xFF0000, 0xFF00, 0xFF)));
    EXPECT_EQ(layout("abgr", 8, 8, 8, 8), formatOf(CDdsFileBuilder().masks(0x41, 32, 0xFF, 0xFF00, 0xFF0000, 0xFF000000)));
    EXPECT_EQ(layout("xbgr", 8, 8, 8, 8), formatOf(CDdsFileBuilder().masks(0x40, 32, 0xFF, 0xFF00, 0xFF0000)));
}

TEST(DdsReader, DX10LettersCountOnlyWithTheFourCCFlag)
{
    // The letters are there, but the masks tell the layout, and the data follows the plain header.
    const DdsLoad load = loadDds(CDdsFileBuilder().word(84, CDdsFileBuilder::k_ui32DX10).data({1, 2, 3, 4}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(DdsReader, AShortfallOfDataReadsFalseButTheTextureHoldsWhatArrived)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().size(2, 1).data({1, 2, 3, 4, 5}));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 0, 0, 0}), dataOf(load.texture));
}

TEST(DdsReader, AShortfallInACubeWithChainsLeavesTheSurfacesThatArrived)
{
    // 2 by 1, then 1 by 1, of one byte: three bytes a face. The fourth face has its first pixel alone.
    const DdsLoad load =
        loadDds(CDdsFileBuilder().size(2, 1).levels(2).caps2(0xFE00).masks(0x20000, 8, 0xFF).data({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(6u, load.texture.getNumFaces());
    // In memory the level is outermost.
    EXPECT_EQ((Bytes{1, 2, 4, 5, 7, 8, 10, 0, 0, 0, 0, 0, 3, 6, 9, 0, 0, 0}), dataOf(load.texture));
}

TEST(DdsReader, WhatFollowsTheDataDoesNotMatter)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().data({1, 2, 3, 4, 5, 6, 7}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(DdsReader, ALevelCountOfZeroHasNoData)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().levels(0).data({1, 2, 3, 4}));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(DdsReader, ALevelCountOfZeroWithoutItsFlagIsOneLevel)
{
    const DdsLoad load = loadDds(CDdsFileBuilder().word(28, 0).data({1, 2, 3, 4}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getNumMIPLevels());
}

TEST(DdsReader, AFileThatCannotBeSoughtInFails)
{
    const Bytes bytes = CDdsFileBuilder().data({1, 2, 3, 4}).bytes();
    int aiEnds[2];
    ASSERT_EQ(0, ::pipe(aiEnds));
    ASSERT_EQ(static_cast<ssize_t>(bytes.size()), ::write(aiEnds[1], bytes.data(), bytes.size()));
    ::close(aiEnds[1]);
    std::FILE* pFile = ::fdopen(aiEnds[0], "rb");
    ASSERT_NE(nullptr, pFile);
    CMOXTexture texture;
    EXPECT_FALSE(readDds(pFile, texture));
    EXPECT_EQ(0u, texture.getDataSize());
    std::fclose(pFile);
}
