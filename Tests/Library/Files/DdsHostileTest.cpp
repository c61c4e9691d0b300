#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "Library/Files/LargestRequest.h"
#include "Support/DdsLoading.h"
#include "Support/MemoryLimit.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;

/// Whatever a load ends in: what the header measures is what is held.
DdsLoad loadAndCheck(const Bytes& bytes)
{
    DdsLoad load = loadDds(bytes);
    EXPECT_TRUE(load.texture.fitsDataBlock());
    EXPECT_EQ(load.texture.getDataSize(), load.texture.getBlockSize());
    EXPECT_TRUE(!load.bGood || load.texture.getDataSize() != 0);
    return load;
}

void cutEverywhere(const CDdsFileBuilder& builder, size_t uiDataStart, const Bytes& data)
{
    const Bytes whole = CDdsFileBuilder(builder).data(data).bytes();
    ASSERT_EQ(uiDataStart + data.size(), whole.size());
    for (size_t uiLength = 0; uiLength <= whole.size(); ++uiLength)
    {
        SCOPED_TRACE(uiLength);
        const DdsLoad load = loadAndCheck(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(uiLength)));
        EXPECT_EQ(uiLength == whole.size(), load.bGood);
        Bytes expected;
        if (uiLength >= uiDataStart)
        {
            expected = data;
            std::fill(expected.begin() + static_cast<std::ptrdiff_t>(uiLength - uiDataStart), expected.end(), uint8_t{0});
        }
        EXPECT_EQ(expected, dataOf(load.texture));
    }
}

void expectRefused(const CDdsFileBuilder& builder)
{
    const Bytes bytes = CDdsFileBuilder(builder).data(Bytes(16, 1)).bytes();
    getLargestRequest() = 0;
    const DdsLoad load = loadAndCheck(bytes);
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(0u, load.texture.getDataSize());
    EXPECT_LE(getLargestRequest(), size_t{4096});
}

} // namespace

TEST(HostileDdsFile, CutAtEveryLengthItGivesNoTextureOrOneWithZerosForWhatIsMissing)
{
    cutEverywhere(CDdsFileBuilder().size(3, 2), 128, CSeededRandom(1).bytes(24));
    cutEverywhere(CDdsFileBuilder().size(2, 3).extended(28), 148, CSeededRandom(2).bytes(24));
    cutEverywhere(CDdsFileBuilder().size(4, 8).fourCC(0x31545844), 128, CSeededRandom(3).bytes(16));
}

TEST(HostileDdsFile, AGiantArrayIsRefused)
{
    for (const uint32_t uiMembers : {k_uiHuge, 0x40000000u, 0x10000000u, 0x10001u})
    {
        SCOPED_TRACE(uiMembers);
        expectRefused(CDdsFileBuilder().extended(28, 3, 0, uiMembers));
        expectRefused(CDdsFileBuilder().extended(28, 3, 4, uiMembers));
    }
    // 15 members of 8192 by 8192 pixels of four bytes: below 2^32 bytes, but not in a file of 164.
    expectRefused(CDdsFileBuilder().size(8192, 8192).extended(28, 3, 0, 15));
    // More than 2^32 bytes, but what is left in 32 bits is there: 16 bytes of 0x10000001 members, 24 bytes of 178956971 cubes.
    expectRefused(CDdsFileBuilder().size(2, 2).extended(28, 3, 0, 0x10000001));
    expectRefused(CDdsFileBuilder().extended(28, 3, 4, 178956971));
}

TEST(HostileDdsFile, AnArrayWithAllOfItsChainsAndFacesButNoBytesIsNotWalkedOver)
{
    // 60000 members of six faces and 32 levels of one byte: 11520000 bytes, which may be, in 11520000 surfaces, which may not.
    expectRefused(CDdsFileBuilder().levels(32).extended(61, 3, 4, 60000));
}

TEST(HostileDdsFile, ZeroFacesCannotBeSaidAndAResourceDimensionOfZeroIsRefused)
{
    EXPECT_EQ(1u, loadAndCheck(CDdsFileBuilder().caps2(0).data(Bytes(4, 1)).bytes()).texture.getNumFaces());
    for (const uint32_t uiDimension : {0u, 1u, 5u, k_uiHuge})
        expectRefused(CDdsFileBuilder().extended(28, uiDimension));
}

#ifndef HALVANE_SANITISED
TEST(HostileDdsFile, AGiantArrayTakesNoMemory)
{
    const Bytes bytes = CDdsFileBuilder().size(8192, 8192).extended(28, 3, 0, 15).data(Bytes(16, 1)).bytes();
    const CMemoryLimit limit;
    EXPECT_FALSE(loadAndCheck(bytes).bGood);
}
#endif

TEST(HostileDdsFile, HugeSizesAreRefused)
{
    expectRefused(CDdsFileBuilder().size(k_uiHuge, k_uiHuge));
    expectRefused(CDdsFileBuilder().size(0x8000, 0x8000));
    expectRefused(CDdsFileBuilder().size(0x10000, 0x4001));
    expectRefused(CDdsFileBuilder().size(0x40000001, 1));
    expectRefused(CDdsFileBuilder().depth(k_uiHuge));
    expectRefused(CDdsFileBuilder().levels(k_uiHuge));
    expectRefused(CDdsFileBuilder().levels(33));
    // Each side and sum that is 0 or small in 32 bits: 2^16 * 2^16 pixels, 2^32 bits, and 2^30 + 1 pixels of four bytes.
    expectRefused(CDdsFileBuilder().size(0x10000, 0x10000));
    expectRefused(CDdsFileBuilder().size(0x10000, 0x10000).extended(28));
    expectRefused(CDdsFileBuilder().size(0x8000, 0x1000).depth(0x2000).extended(61, 4));
    expectRefused(CDdsFileBuilder().size(0x80000000, 0x80000000).depth(4).extended(28, 4));
    expectRefused(CDdsFileBuilder().size(1, 0x40000001).extended(28));
    expectRefused(CDdsFileBuilder().size(k_uiHuge, 1).fourCC(0x31545844));
}

TEST(HostileDdsFile, SidesOfZeroCountAsOne)
{
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(loadAndCheck(CDdsFileBuilder().size(0, 0).depth(0).data({1, 2, 3, 4}).bytes()).texture));
}

TEST(HostileDdsFile, FieldsOfAllOnesAloneAndInPairs)
{
    const CDdsFileBuilder aSound[] = {CDdsFileBuilder().size(2, 2).data(Bytes(16, 1)),
                                      CDdsFileBuilder().size(2, 2).extended(28, 3, 0, 1).data(Bytes(16, 1))};
    for (const CDdsFileBuilder& sound : aSound)
    {
        for (size_t uiFirst = 8; uiFirst < 148; uiFirst += 4)
        {
            for (size_t uiSecond = uiFirst; uiSecond < 148; uiSecond += 4)
            {
                SCOPED_TRACE(std::to_string(uiFirst) + " and " + std::to_string(uiSecond));
                Bytes bytes = sound.bytes();
                if (uiSecond + 4 > bytes.size())
                    continue;
                storeLE(&bytes[uiFirst], k_uiHuge);
                storeLE(&bytes[uiSecond], k_uiHuge);
                const DdsLoad load = loadAndCheck(bytes);
                // Height or width alone: 2 by 2^32 - 1 pixels of four bytes are more than there can be.
                const bool bTooMuch = uiFirst == 12 || uiFirst == 16 || uiSecond == 12 || uiSecond == 16;
                EXPECT_TRUE(!bTooMuch || load.texture.getDataSize() == 0);
            }
        }
    }
}

TEST(HostileDdsFile, BytesOutOfNowhereBehindASoundStart)
{
    CSeededRandom random(7);
    for (int i = 0; i < 3000; ++i)
    {
        Bytes bytes = random.bytes(148 + random.below(64));
        const Bytes start = CDdsFileBuilder::words({0x20534444, 124});
        std::copy(start.begin(), start.end(), bytes.begin());
        storeLE(&bytes[12], random.below(5));
        storeLE(&bytes[16], random.below(5));
        storeLE(&bytes[80], uint32_t{4});
        storeLE(&bytes[84], CDdsFileBuilder::k_ui32DX10);
        storeLE(&bytes[128], random.below(120));
        storeLE(&bytes[132], random.below(6));
        loadAndCheck(bytes);
    }
}
