#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "Library/Files/LargestRequest.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;
constexpr uint32_t k_uiCubeMap = 0x1000;

/// Whatever a load ends in: what the header measures is what is held, and every surface of a texture with data can be reached.
NativeLoad loadAndCheck(const Bytes& bytes)
{
    NativeLoad load = loadNative(bytes);
    const CMOXTexture& texture = load.texture;
    EXPECT_TRUE(texture.fitsDataBlock());
    EXPECT_EQ(texture.getDataSize(), texture.getBlockSize());
    EXPECT_EQ(texture.getMetaDataSize(), texture.sumMetaDataSize());
    if (texture.getDataSize() != 0)
    {
        EXPECT_NE(nullptr, texture.getDataPtr(texture.getNumMIPLevels() - 1, texture.getNumArrayMembers() - 1, texture.getNumFaces() - 1));
    }
    EXPECT_TRUE(!load.bGood || texture.getDataSize() != 0);
    return load;
}

/// No texture, and no memory for one either.
void expectRefused(const CLegacyFileBuilder& builder)
{
    getLargestRequest() = 0;
    const NativeLoad load = loadAndCheck(builder.bytes());
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
    EXPECT_EQ(nullptr, load.texture.getDataPtr());
    EXPECT_LT(getLargestRequest(), 4096u);
}

Bytes firstOf(const Bytes& bytes, size_t uiLength)
{
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(uiLength));
}

} // namespace

TEST(HostileLegacyFile, CutAtEveryLengthItFailsWithZerosForWhatIsMissing)
{
    // Six faces of 2 by 1 and 1 by 1 pixels of 4 bytes: 12 bytes a face in the file.
    const Bytes data = CSeededRandom(2).bytes(6 * 12);
    for (const uint32_t uiHeaderSize : {44u, 52u})
    {
        const CLegacyFileBuilder whole =
            CLegacyFileBuilder(uiHeaderSize).size(2, 1).levelsBelow(1).flags(k_uiLegacyRGBA8 | k_uiCubeMap).data(data);
        for (size_t uiLength = 0; uiLength < whole.bytes().size(); ++uiLength)
        {
            SCOPED_TRACE(std::to_string(uiHeaderSize) + ", cut at " + std::to_string(uiLength));
            const NativeLoad load = loadAndCheck(firstOf(whole.bytes(), uiLength));
            EXPECT_FALSE(load.bGood);
            if (uiLength < uiHeaderSize)
            {
                EXPECT_EQ(0u, load.texture.getDataSize());
                continue;
            }
            Bytes expected = data;
            std::fill(expected.begin() + static_cast<std::ptrdiff_t>(uiLength - uiHeaderSize), expected.end(), uint8_t{0});
            for (uint32_t uiFace = 0; uiFace < 6; ++uiFace)
            {
                const uint8_t* pTop = load.texture.getDataPtr(0, 0, uiFace);
                const uint8_t* pBelow = load.texture.getDataPtr(1, 0, uiFace);
                ASSERT_TRUE(pTop != nullptr && pBelow != nullptr);
                EXPECT_TRUE(std::equal(pTop, pTop + 8, &expected[uiFace * 12])) << uiFace;
                EXPECT_TRUE(std::equal(pBelow, pBelow + 4, &expected[uiFace * 12 + 8])) << uiFace;
            }
        }
        EXPECT_TRUE(loadAndCheck(whole.bytes()).bGood);
    }
}

TEST(HostileLegacyFile, CountsOfAllOnesAndNearThemAreRefusedWithoutTakingMemory)
{
    // Height, width, levels below the top, surfaces. One level more than all ones is none.
    for (const uint32_t uiFlags : {k_uiLegacyRGBA8, k_uiLegacyRGBA8 | k_uiCubeMap})
    {
        for (const size_t uiOffset : {4u, 8u, 12u, 48u})
        {
            for (const uint32_t uiValue : {k_uiHuge, 0xFFFFFFFEu, 0x80000000u, 0x40000000u})
            {
                SCOPED_TRACE(std::to_string(uiOffset) + ": " + std::to_string(uiValue));
                expectRefused(CLegacyFileBuilder().size(16, 16).flags(uiFlags).word(uiOffset, uiValue).data(CSeededRandom(3).bytes(16)));
            }
        }
    }
}

TEST(HostileLegacyFile, CountsOfAllOnesInPairsAreRefusedWithoutTakingMemory)
{
    for (const uint32_t uiHeaderSize : {44u, 52u})
    {
        for (const size_t uiFirst : {4u, 8u, 12u})
        {
            for (const size_t uiSecond : {4u, 8u, 12u})
            {
                SCOPED_TRACE(std::to_string(uiFirst) + " and " + std::to_string(uiSecond));
                expectRefused(CLegacyFileBuilder(uiHeaderSize).word(uiFirst, k_uiHuge).word(uiSecond, k_uiHuge).data(Bytes(64, 1)));
            }
        }
    }
}

TEST(HostileLegacyFile, SizesThatComeOutSmallIn32BitsAreRefused)
{
    expectRefused(CLegacyFileBuilder().size(0x40000001, 1).data({1, 2, 3, 4}));          // 2^32 + 4 bytes
    expectRefused(CLegacyFileBuilder().size(0x10000, 0x4000).data(Bytes(16, 1)));        // 2^32
    expectRefused(CLegacyFileBuilder().surfaces(0x40000004).data(Bytes(16, 1)));         // 2^32 + 16
    expectRefused(CLegacyFileBuilder().size(0x80000000, 0x80000000).data(Bytes(16, 1))); // 2^64
    // 178,956,971 members of six faces of 4 bytes: 2^32 + 8.
    expectRefused(CLegacyFileBuilder().flags(k_uiLegacyRGBA8 | k_uiCubeMap).surfaces(0x40000002).data(Bytes(24, 1)));
}

TEST(HostileLegacyFile, MoreThan32LevelsAreRefused)
{
    // The 33rd level down would be as large as the top.
    const Bytes data(4 * 40, 1);
    EXPECT_EQ(32u, loadAndCheck(CLegacyFileBuilder().levelsBelow(31).data(data).bytes()).texture.getNumMIPLevels());
    expectRefused(CLegacyFileBuilder().levelsBelow(32).data(data));
}

TEST(HostileLegacyFile, TheDataSizeInTheHeaderDecidesNothing)
{
    for (const uint32_t uiValue : {0u, 1u, 7u, 9u, 0x80000000u, k_uiHuge})
    {
        const NativeLoad load = loadAndCheck(CLegacyFileBuilder().size(2, 1).word(20, uiValue).data({1, 2, 3, 4, 5, 6, 7, 8}).bytes());
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 6, 7, 8}), dataOf(load.texture));
    }
}

TEST(HostileLegacyFile, WhatStandsBehindTheDataIsLeftAlone)
{
    for (const uint32_t uiHeaderSize : {44u, 52u})
    {
        const NativeLoad load = loadAndCheck(CLegacyFileBuilder(uiHeaderSize).data({1, 2, 3, 4, 5, 6, 7}).bytes());
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
    }
}

TEST(HostileLegacyFile, SidesOfZeroCountAsOnePixel)
{
    const NativeLoad load = loadAndCheck(CLegacyFileBuilder().size(0, 0).data({1, 2, 3, 4}).bytes());
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getWidth());
    EXPECT_EQ(1u, load.texture.getHeight());
}

TEST(HostileLegacyFile, AnyByteChangedGivesATextureOrNone)
{
    for (const uint32_t uiHeaderSize : {44u, 52u})
    {
        const Bytes sound = CLegacyFileBuilder(uiHeaderSize).size(3, 2).levelsBelow(1).data(Bytes(28, 1)).bytes();
        for (size_t uiByte = 0; uiByte < uiHeaderSize; ++uiByte)
        {
            for (uint32_t uiBit = 0; uiBit < 8; ++uiBit)
            {
                SCOPED_TRACE(std::to_string(uiByte) + ", bit " + std::to_string(uiBit));
                Bytes bytes = sound;
                bytes[uiByte] = static_cast<uint8_t>(bytes[uiByte] ^ (1u << uiBit));
                loadAndCheck(bytes);
            }
        }
    }
}

TEST(HostileLegacyFile, AnyFlagsWithAnySmallSizesGiveATextureOrNone)
{
    CSeededRandom random(9);
    for (uint32_t i = 0; i < 4096; ++i)
    {
        const uint32_t uiFlags = i < 256 ? i | 0xFFFFFF00 : random.next32();
        SCOPED_TRACE(uiFlags);
        loadAndCheck(CLegacyFileBuilder()
                         .size(random.below(70), random.below(70))
                         .flags(uiFlags)
                         .surfaces(i % 20)
                         .data(random.bytes(i % 300))
                         .bytes());
    }
}

TEST(HostileLegacyFile, ThroughThePathOfATextureARefusedFileHasNoData)
{
    const CTemporaryFolder folder;
    const Bytes sound = CLegacyFileBuilder().data({1, 2, 3, 4}).bytes();
    EXPECT_EQ(4u, CMOXTexture(folder.write("sound.mox", sound)).getDataSize());
    EXPECT_EQ(0u, CMOXTexture(folder.write("cut.mox", firstOf(sound, 51))).getDataSize());
    EXPECT_EQ(0u, CMOXTexture(folder.write("giant.mox", CLegacyFileBuilder().surfaces(k_uiHuge).data({1, 2, 3, 4}).bytes())).getDataSize());
    EXPECT_EQ(0u, CMOXTexture(folder.write("type.mox", CLegacyFileBuilder().flags(182).data({1, 2, 3, 4}).bytes())).getDataSize());
}
