#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Files/LegacyFile.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/LegacyTypeRows.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

struct Shape
{
    uint32_t uiWidth, uiHeight, uiLevels, uiMembers, uiFaces;
};

constexpr Shape k_aShapes[] = {
    {16, 8, 1, 1, 1}, {5, 3, 3, 1, 1}, {16, 16, 5, 1, 6}, {9, 1, 4, 3, 1}, {4, 4, 3, 2, 6},
};

CMOXTexture textureOf(const PixelEncoding& encoding, const Shape& shape)
{
    const CMOXTextureHeader header(encoding.pixelFormat, shape.uiHeight, shape.uiWidth, 1, shape.uiLevels, shape.uiMembers, shape.uiFaces,
                                   encoding.eColourSpace, encoding.eChannelType, encoding.bPreMultiplied);
    return CMOXTexture(header, CSeededRandom(11).bytes(header.getDataSize()).data());
}

PixelEncoding encodingOfType(uint32_t uiType)
{
    const auto isIt = [&](const LegacyReadRow& row) { return row.uiType == uiType; };
    const auto* pRow = std::find_if(std::begin(k_aLegacyRead), std::end(k_aLegacyRead), isIt);
    return encodingOf(pRow != std::end(k_aLegacyRead) ? pRow->numbers : LegacyNumbers{51, 14, 0, false});
}

std::vector<uint32_t> apisOfFamily(uint32_t uiApi)
{
    if (uiApi == 1)
        return {1, 2, 4};
    if (uiApi == 3)
        return {3, 5};
    return {uiApi};
}

/// Every API with every row that it writes, in one shape after the other: visit(row, api, texture before, texture read back).
template <typename Visit>
void saveAndLoadAll(Visit visit)
{
    const CTemporaryFolder folder;
    size_t uiCount = 0;
    for (const LegacyWrittenRow& row : k_aLegacyWritten)
    {
        for (const uint32_t uiApi : apisOfFamily(row.uiApi))
        {
            const CMOXTexture texture = textureOf(encodingOf(row.numbers), k_aShapes[uiCount++ % std::size(k_aShapes)]);
            ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), uiApi)) << uiApi << ", type " << row.iType;
            visit(row, uiApi, texture, CMOXTexture(folder.path("a.mox")));
        }
    }
}

/// What is not read back as it was written, although the bytes are: pixel words and channel types.
struct Change
{
    uint64_t uiWord;
    uint32_t uiChannelType;
    uint64_t uiReadWord;
    uint32_t uiReadChannelType;
    bool bReadPreMultiplied;
};

constexpr uint64_t k_uiI8 = 0x0000000800000069, k_uiAI8 = 0x0000080800006961;

/// OpenGL, OpenGL ES 1 and 2.
constexpr Change k_aChangesOfGL[] = {
    {k_uiI8, 0, 0x000000080000006C, 0, false},  // intensity as luminance
    {k_uiAI8, 0, 0x000008080000616C, 0, false}, // "ai" as "la"
    {0, 0, 1, 0, false},                        // formats without alpha as with it
    {2, 0, 3, 0, false},
};

/// DirectX 11 (9_3), OpenGL ES 3. The layouts of type 0, 4 and 8 have one type in the file, which is read with one of the three.
constexpr Change k_aChangesOfD3D9[] = {
    {0, 0, 1, 0, false},
    {2, 0, 3, 0, false},
    {8, 0, 8, 0, true}, // formats that are pre-multiplied by definition
    {10, 0, 10, 0, true},
    {0x0A0A0A0272676261, 9, 0x0A0A0A0262677261, 8, false},   // "abgr" signed as "argb" unsigned
    {0x0000202000006772, 12, 0x0000202000007267, 12, false}, // "rg" as "gr"
};

constexpr uint64_t k_aReadWithType4[] = {0x0203030862677261, 0x0404040462677261, 0x0505050162677261, 0x0505050162677278,
                                         0x0005060500626772};

template <size_t N>
const Change* findChange(const Change (&aChanges)[N], const LegacyNumbers& numbers)
{
    const auto isIt = [&](const Change& change)
    { return change.uiWord == numbers.uiWord && change.uiChannelType == numbers.uiChannelType; };
    const Change* pChange = std::find_if(std::begin(aChanges), std::end(aChanges), isIt);
    return pChange != std::end(aChanges) ? pChange : nullptr;
}

LegacyNumbers applied(const Change* pChange, const LegacyNumbers& numbers)
{
    if (pChange == nullptr)
        return numbers;
    return {pChange->uiReadWord, pChange->uiReadChannelType, 0, pChange->bReadPreMultiplied};
}

/// What a row's texture is when it is read back.
LegacyNumbers expectedBack(const LegacyWrittenRow& row)
{
    if (row.uiApi == 1)
        return applied(findChange(k_aChangesOfGL, row.numbers), row.numbers);
    if (row.uiApi != 3)
        return row.numbers;
    LegacyNumbers numbers = applied(findChange(k_aChangesOfD3D9, row.numbers), row.numbers);
    const uint32_t uiType = row.numbers.uiChannelType;
    if (numbers.uiWord >> 32 != 0 && (uiType == 0 || uiType == 4 || uiType == 8))
    {
        const bool bType4 =
            std::find(std::begin(k_aReadWithType4), std::end(k_aReadWithType4), numbers.uiWord) != std::end(k_aReadWithType4);
        numbers.uiChannelType = bType4 ? 4 : 8;
    }
    return numbers;
}

} // namespace

TEST(LegacyRoundTrip, BytesAndShapeComeBackFromEveryApiAndRow)
{
    saveAndLoadAll(
        [](const LegacyWrittenRow& row, uint32_t uiApi, const CMOXTexture& texture, const CMOXTexture& loaded)
        {
            SCOPED_TRACE("api " + std::to_string(uiApi) + ", type " + std::to_string(row.iType));
            EXPECT_EQ(dataOf(texture), dataOf(loaded));
            EXPECT_EQ(texture.getWidth(), loaded.getWidth());
            EXPECT_EQ(texture.getHeight(), loaded.getHeight());
            EXPECT_EQ(1u, loaded.getDepth());
            EXPECT_EQ(texture.getNumMIPLevels(), loaded.getNumMIPLevels());
            EXPECT_EQ(texture.getNumArrayMembers(), loaded.getNumArrayMembers());
            EXPECT_EQ(texture.getNumFaces(), loaded.getNumFaces());
            EXPECT_EQ(0u, loaded.getMetaDataSize());
        });
}

TEST(LegacyRoundTrip, TheEncodingComesBackButForTheRowsWhoseTypeIsReadAsAnother)
{
    saveAndLoadAll([](const LegacyWrittenRow& row, uint32_t uiApi, const CMOXTexture&, const CMOXTexture& loaded)
                   { EXPECT_EQ(encodingOf(expectedBack(row)), loaded.getEncoding()) << "api " << uiApi << ", type " << row.iType; });
}

TEST(LegacyRoundTrip, EveryPixelTypeIsReadWithEitherHeader)
{
    const CTemporaryFolder folder;
    for (const uint32_t uiHeaderSize : {44u, 52u})
    {
        for (uint32_t uiType = 0; uiType < 256; ++uiType)
        {
            SCOPED_TRACE("header " + std::to_string(uiHeaderSize) + ", type " + std::to_string(uiType));
            const PixelEncoding encoding = encodingOfType(uiType);
            const CMOXTexture expected = textureOf(encoding, {5, 7, 1, 1, 1});
            CLegacyFileBuilder builder(uiHeaderSize);
            builder.size(5, 7).flags(uiType).data(dataOf(expected));
            const CMOXTexture loaded(folder.write("a.mox", builder.bytes()));
            EXPECT_EQ(encoding, loaded.getEncoding());
            EXPECT_EQ(dataOf(expected), dataOf(loaded));
            EXPECT_EQ(encoding.pixelFormat == MOXPixelWord(ePF_Count), loaded.getDataSize() == 0);
        }
    }
}

TEST(LegacyRoundTrip, BumpMapsAndTheVerticalFlipComeBackEachAlone)
{
    const CTemporaryFolder folder;
    for (const bool bBumpMap : {false, true})
    {
        for (const uint32_t uiMask : {0u, 1u, 2u, 3u, 4u, 7u})
        {
            CMOXTexture texture = textureOf({k_RGBA8}, {4, 4, 3, 1, 1});
            if (bBumpMap)
                texture.setBumpMap(2.5f, "zyx");
            texture.setOrientation(uiMask);
            ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 2));
            const CMOXTexture loaded(folder.path("a.mox"));
            EXPECT_EQ(bBumpMap, loaded.isBumpMap());
            EXPECT_EQ(uiMask & 2, loaded.getOrientation(eAxisY));
            EXPECT_EQ(0u, loaded.getOrientation(eAxisX));
            EXPECT_EQ(0u, loaded.getOrientation(eAxisZ));
            EXPECT_EQ((bBumpMap ? 20u : 0u) + ((uiMask & 2) != 0 ? 15u : 0u), loaded.getMetaDataSize());
        }
    }
}

TEST(LegacyRoundTrip, FacesOtherThanSixAreReadAsSix)
{
    // Two faces: the flag, two surfaces, which are no whole cube, so one member of six faces, of which the file has two.
    const CTemporaryFolder folder;
    const CMOXTexture texture = textureOf({k_RGBA8}, {2, 2, 1, 1, 2});
    ASSERT_TRUE(saveLegacy(texture, folder.path("a.mox"), 1));
    const CMOXTexture loaded(folder.path("a.mox"));
    EXPECT_EQ(6u, loaded.getNumFaces());
    EXPECT_EQ(1u, loaded.getNumArrayMembers());
    Bytes expected = dataOf(texture);
    expected.resize(6 * 16);
    EXPECT_EQ(expected, dataOf(loaded));
}

TEST(LegacyRoundTrip, WhatCameBackAsItWasIsSavedAgainAsTheSameFile)
{
    const CTemporaryFolder folder;
    saveAndLoadAll(
        [&](const LegacyWrittenRow& row, uint32_t uiApi, const CMOXTexture& texture, const CMOXTexture& loaded)
        {
            if (texture.getEncoding() != loaded.getEncoding())
                return;
            ASSERT_TRUE(saveLegacy(texture, folder.path("first.mox"), uiApi));
            ASSERT_TRUE(saveLegacy(loaded, folder.path("second.mox"), uiApi));
            EXPECT_EQ(readBytes(folder.path("first.mox")), readBytes(folder.path("second.mox"))) << uiApi << ", type " << row.iType;
        });
}
