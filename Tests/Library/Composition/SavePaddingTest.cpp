#include "Composition/SavePadding.h"

#include <string>

#include <gtest/gtest.h>

#include "Files/SaveTexture.h"
#include "Support/TemporaryFolder.h"
#include "Texture/CMOXTexture.h"

using namespace moxtexture;

namespace
{

uint32_t paddingOf(const CMOXTextureHeader& header)
{
    const auto* pBlocks = header.getMetaData().find(CMOXTextureHeader::k_ui32NativeFourCC);
    const MetaDataBlock* pBlock = pBlocks != nullptr ? pBlocks->find(eMetaDataPadding) : nullptr;
    return pBlock != nullptr ? pBlock->u32DataSize : 0;
}

} // namespace

TEST(SavePadding, PutsTheDataOnAMultipleOfAPowerOfTwo)
{
    for (const uint32_t uiAlignment : {2u, 4u, 8u, 16u, 64u, 4096u})
    {
        CMOXTextureHeader header;
        header.setOrientation(2); // 15 bytes of metadata
        setSavePadding(header, uiAlignment);
        EXPECT_EQ(0u, (52 + header.getMetaDataSize()) % uiAlignment) << uiAlignment;
        EXPECT_NE(0u, paddingOf(header)) << uiAlignment;
        EXPECT_EQ(15 + 12 + paddingOf(header), header.getMetaDataSize()) << uiAlignment;
    }
}

TEST(SavePadding, NothingMissingIsAWholeStep)
{
    // 52 + 12 = 64 bytes without any padding: a multiple of 4 already.
    CMOXTextureHeader header;
    setSavePadding(header, 4);
    EXPECT_EQ(4u, paddingOf(header));
    EXPECT_EQ(16u, header.getMetaDataSize());
}

TEST(SavePadding, OfZeroAndOneAddsNothing)
{
    for (const uint32_t uiAlignment : {0u, 1u})
    {
        CMOXTextureHeader header;
        setSavePadding(header, uiAlignment);
        EXPECT_EQ(0u, header.getMetaDataSize());
    }
}

TEST(SavePadding, ASecondTimeReplacesTheFirst)
{
    CMOXTextureHeader header;
    header.setBorder(1, 1, 1);
    setSavePadding(header, 32);
    const uint32_t uiFirst = header.getMetaDataSize();
    setSavePadding(header, 32);
    EXPECT_EQ(uiFirst, header.getMetaDataSize());
    EXPECT_EQ(header.sumMetaDataSize(), header.getMetaDataSize());
    setSavePadding(header, 2);
    EXPECT_EQ(24u + 12 + 2, header.getMetaDataSize()); // 52 + 24 + 12 = 88 is even: one step of 2
}

TEST(SavePadding, IsCountedModuloTwoToThe32ForOtherAlignmentsToo)
{
    // 2^32 - 64 - 15 = 4294967217 leaves 217 when divided by 1000: 79 + 217 = 296 is no multiple, on purpose.
    CMOXTextureHeader header;
    header.setOrientation(2);
    setSavePadding(header, 1000);
    EXPECT_EQ(217u, paddingOf(header));
}

TEST(SavePadding, StartsFromWhatIsHeldAndNotFromAnOverstatedSize)
{
    CMOXTextureHeader header;
    const MetaDataBlock block(0x31323334, 1, "abc", 3);
    header.addMetaData(block);
    header.addMetaData(block);    // one block of 15 bytes, told as 30
    header.addPaddingMetaData(8); // one of them too many: 64 + 30 = 94, so 2
    setSavePadding(header, 16);   // 64 + 15 = 79, so 1
    EXPECT_EQ(1u, paddingOf(header));
    EXPECT_EQ(15u + 13, header.getMetaDataSize());
    EXPECT_EQ(header.sumMetaDataSize(), header.getMetaDataSize());
}

TEST(SavePadding, SavedTwiceIsReadBackEachTime)
{
    const testsupport::CTemporaryFolder folder;
    const std::string strPath = folder.path("a.mox");
    for (const uint32_t uiAlignment : {4u, 2u, 64u})
    {
        const uint8_t aui8Pixel[4] = {1, 2, 3, 4};
        CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), aui8Pixel);
        for (int i = 0; i < 2; ++i)
        {
            setSavePadding(texture, uiAlignment);
            ASSERT_TRUE(saveTexture(texture, strPath));
            texture = CMOXTexture(strPath);
            ASSERT_EQ(4u, texture.getBlockSize()) << uiAlignment << ' ' << i;
            EXPECT_EQ(3, texture.getDataPtr()[2]);
            EXPECT_EQ(0u, (52 + texture.getMetaDataSize()) % uiAlignment);
        }
    }
}
