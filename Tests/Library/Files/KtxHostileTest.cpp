#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "Core/OneShotReadBuf.h"
#include "Library/Files/LargestRequest.h"
#include "Support/KtxLoading.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;
constexpr uint32_t k_uiR8 = 33321;

/// Whatever a load ends in: what the header measures is what is held.
KtxLoad loadAndCheck(const Bytes& bytes)
{
    KtxLoad load = loadKtx(bytes);
    EXPECT_TRUE(load.texture.fitsDataBlock());
    EXPECT_EQ(load.texture.getDataSize(), load.texture.getBlockSize());
    EXPECT_EQ(load.texture.getMetaDataSize(), load.texture.sumMetaDataSize());
    EXPECT_TRUE(!load.bGood || load.texture.getDataSize() != 0 || load.texture.getNumMIPLevels() == 0);
    return load;
}

Bytes firstOf(const Bytes& bytes, size_t uiCount)
{
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(uiCount)};
}

} // namespace

TEST(HostileKtxFile, CutAtEveryByteItGivesWhatWasReadAndFalseWhereAPixelIsMissing)
{
    // 3 by 2 bytes with padded rows, then 1 by 1 with 3 bytes of padding.
    const Bytes whole = CKtxFileBuilder()
                            .format(k_uiR8)
                            .size(3, 2)
                            .levels(2)
                            .withKey("KTXorientation", "S=l,T=u,R=o")
                            .level(8, {1, 2, 3, 99, 4, 5, 6, 99})
                            .level(4, {7, 99, 99, 99})
                            .bytes();
    const size_t uiData = 64 + 32;              // 4 + 27 + 1 bytes of key
    const size_t uiLastPixel = uiData + 12 + 4; // two words of size, eight bytes
    ASSERT_EQ(uiLastPixel + 4, whole.size());
    const size_t auiPixels[] = {uiData + 4, uiData + 5, uiData + 6, uiData + 8, uiData + 9, uiData + 10, uiLastPixel};

    for (size_t uiLength = 0; uiLength <= whole.size(); ++uiLength)
    {
        SCOPED_TRACE(uiLength);
        const KtxLoad load = loadAndCheck(firstOf(whole, uiLength));
        EXPECT_EQ(uiLength > uiLastPixel, load.bGood);
        Bytes expected;
        if (uiLength >= uiData)
            for (size_t i = 0; i < 7; ++i)
                expected.push_back(auiPixels[i] < uiLength ? static_cast<uint8_t>(i + 1) : uint8_t{0});
        EXPECT_EQ(expected, dataOf(load.texture));
    }
}

TEST(HostileKtxFile, AStreamThatEndsEarlyThrowsWhatTheWrapperCatches)
{
    const Bytes bytes(63);
    OneShotReadBuf buffer(bytes);
    std::istream stream(&buffer);
    CMOXTexture texture;
    EXPECT_THROW(static_cast<void>(readKtx(stream, texture)), std::runtime_error);
}

TEST(HostileKtxFile, KeysPastTheEndOfTheFileAreRefusedWithoutTakingTheirMemory)
{
    for (const uint32_t uiClaimed : {29u, 0x7FFFFFFFu, 0xFFFFFFF0u, k_uiHuge})
    {
        const Bytes bytes =
            CKtxFileBuilder().keyValueSize(uiClaimed).withKeyBytes({0xE0, 0xFF, 0xFF, 0xFF, 'K'}).level(4, Bytes(15)).bytes();
        getLargestRequest() = 0;
        const KtxLoad load = loadAndCheck(bytes);
        EXPECT_FALSE(load.bGood);
        EXPECT_EQ(0u, load.texture.getDataSize());
        EXPECT_LT(getLargestRequest(), 65536u) << uiClaimed;
    }
}

TEST(HostileKtxFile, AMillionKeysAreReadOnceEach)
{
    Bytes keys;
    for (int i = 0; i < 1000000; ++i)
        keys.insert(keys.end(), {1, 0, 0, 0, 'k', 0, 0, 0}); // the shortest there is
    const KtxLoad load =
        loadAndCheck(CKtxFileBuilder().withKeyBytes(keys).withKey("KTXorientation", "S=l,T=u").level(4, Bytes(4, 1)).bytes());
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(1u, load.texture.getOrientation(eAxisX));
    EXPECT_EQ(2u, load.texture.getOrientation(eAxisY));
}

TEST(HostileKtxFile, GiantCountsAloneAndInPairsAreRefused)
{
    const Bytes sound = CKtxFileBuilder().size(2, 2).level(16, Bytes(16, 1)).bytes();
    for (size_t uiFirst = 16; uiFirst < 64; uiFirst += 4)
    {
        for (size_t uiSecond = uiFirst; uiSecond < 64; uiSecond += 4)
        {
            SCOPED_TRACE(std::to_string(uiFirst) + " and " + std::to_string(uiSecond));
            for (const uint32_t uiCount : {k_uiHuge, 0x80000000u, 0x40000000u})
            {
                Bytes bytes = sound;
                storeLE(&bytes[uiFirst], uiCount);
                storeLE(&bytes[uiSecond], uiCount);
                getLargestRequest() = 0;
                const KtxLoad load = loadAndCheck(bytes);
                EXPECT_LT(getLargestRequest(), 65536u);
                // From the width on: shape, counts, bytes of keys; and the internal format.
                const bool bTooMuch = uiFirst >= 36 || uiSecond >= 36 || uiFirst == 28 || uiSecond == 28;
                EXPECT_EQ(!bTooMuch, load.bGood);
                EXPECT_TRUE(!bTooMuch || load.texture.getDataSize() == 0);
            }
        }
    }
}

TEST(HostileKtxFile, NoFacesAreRefused)
{
    const KtxLoad load = loadAndCheck(CKtxFileBuilder().faces(0).level(4, Bytes(4)).bytes());
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(HostileKtxFile, AnImageSizeIsNeverBelievedBeyondItsPadding)
{
    for (const uint32_t uiImageSize : {0u, 1u, 0x7FFFFFFFu, 0x80000000u, k_uiHuge})
    {
        EXPECT_TRUE(loadAndCheck(CKtxFileBuilder().size(2, 2).level(uiImageSize, Bytes(16, 1)).bytes()).bGood) << uiImageSize;
        loadAndCheck(CKtxFileBuilder().format(k_uiR8).size(3, 3).faces(6).level(uiImageSize, Bytes(60, 1)).bytes());
    }
}

TEST(HostileKtxFile, AWidthOfZeroMeasuresOne)
{
    const KtxLoad load = loadAndCheck(CKtxFileBuilder().size(0, 0).level(4, {1, 2, 3, 4}).bytes());
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
}

TEST(HostileKtxFile, RandomBytesInASoundFileEndInATextureOrNone)
{
    const Bytes sound = CKtxFileBuilder().size(3, 2).withKey("KTXorientation", "S=r").withKey("a", "b").level(24, Bytes(24, 1)).bytes();
    CSeededRandom random(4);
    for (int i = 0; i < 5000; ++i)
    {
        Bytes bytes = sound;
        for (uint32_t uiChanges = 1 + random.below(4); uiChanges != 0; --uiChanges)
            bytes[12 + random.below(static_cast<uint32_t>(bytes.size() - 12))] = static_cast<uint8_t>(random.next32());
        bytes.resize(bytes.size() - random.below(8));
        loadAndCheck(bytes);
    }
}
