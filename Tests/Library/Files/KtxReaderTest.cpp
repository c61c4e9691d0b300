#include "Files/KtxReader.h"

#include <gtest/gtest.h>

#include "Support/KtxLoading.h"
#include "Support/NativeLoading.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiR8 = 33321;
constexpr uint32_t k_uiRGB8 = 32849;
constexpr uint32_t k_uiETC1 = 36196;

/// uiCount bytes that go up from ui8First.
Bytes run(size_t uiCount, uint8_t ui8First = 1)
{
    Bytes bytes(uiCount);
    for (size_t i = 0; i < uiCount; ++i)
        bytes[i] = static_cast<uint8_t>(ui8First + i);
    return bytes;
}

bool hasOrientation(const CMOXTexture& texture)
{
    const auto* pBlocks = texture.getMetaData().find(CMOXTextureHeader::k_ui32NativeFourCC);
    return pBlocks != nullptr && pBlocks->find(eMetaDataOrientation) != nullptr;
}

Bytes orientationOf(const CMOXTexture& texture)
{
    Bytes bytes;
    for (const EMOXTAxis eAxis : {eAxisX, eAxisY, eAxisZ})
        bytes.push_back(static_cast<uint8_t>(texture.getOrientation(eAxis)));
    return bytes;
}

CKtxFileBuilder onePixel()
{
    return CKtxFileBuilder();
}

Bytes orientationFrom(CKtxFileBuilder builder)
{
    const KtxLoad load = loadKtx(builder.level(4, {1, 2, 3, 4}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(load.texture));
    return hasOrientation(load.texture) ? orientationOf(load.texture) : Bytes();
}

} // namespace

TEST(KtxReader, TakesShapeAndEncodingFromTheHeader)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(35907).size(2, 3).level(24, run(24)));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(2u, load.texture.getWidth());
    EXPECT_EQ(3u, load.texture.getHeight());
    EXPECT_EQ(1u, load.texture.getDepth());
    EXPECT_EQ(1u, load.texture.getNumMIPLevels());
    EXPECT_EQ(1u, load.texture.getNumFaces());
    EXPECT_EQ(1u, load.texture.getNumArrayMembers());
    EXPECT_EQ(k_RGBA8, load.texture.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedByte, load.texture.getChannelType());
    EXPECT_EQ(eCS_sRGB, load.texture.getColourSpace());
    EXPECT_EQ(run(24), dataOf(load.texture));
}

TEST(KtxReader, SizesOfZeroAreOne)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().size(2, 0, 0).elements(0).level(8, run(8)));
    ASSERT_TRUE(load.bGood);
    // As they stand in the record, in the order of height, width, depth and surfaces: the getters never tell 0.
    uint8_t aui8Record[CMOXTextureHeader::k_uiRecordSize];
    load.texture.writeRecord(aui8Record);
    EXPECT_EQ(1u, loadLE<uint32_t>(aui8Record + 24));
    EXPECT_EQ(2u, loadLE<uint32_t>(aui8Record + 28));
    EXPECT_EQ(1u, loadLE<uint32_t>(aui8Record + 32));
    EXPECT_EQ(1u, loadLE<uint32_t>(aui8Record + 36));
}

TEST(KtxReader, TheTypeTellsTheElementsOfAnUnsizedFormat)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(6410, 5123).size(1, 1).level(4, run(4)));
    ASSERT_TRUE(load.bGood);
    EXPECT_EQ(layout("la", 16, 16), load.texture.getPixelFormat());
    EXPECT_EQ(eCT_UnsignedNormalisedShort, load.texture.getChannelType());
}

TEST(KtxReader, NumbersOutsideTheTableFailOnceTheShapeIsSet)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(12345).size(20, 30).level(4, run(4)));
    EXPECT_FALSE(load.bGood);
    EXPECT_EQ(20u, load.texture.getWidth());
    EXPECT_EQ(30u, load.texture.getHeight());
    EXPECT_EQ(0u, load.texture.getDataSize());
}

TEST(KtxReader, NoLevelsGiveATextureWithoutLevelsAndReadNoData)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().size(4, 4).levels(0));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(0u, load.texture.getNumMIPLevels());
    EXPECT_EQ(k_RGBA8, load.texture.getPixelFormat());
    EXPECT_EQ(0u, load.texture.getBlockSize());
}

TEST(KtxReader, NoLevelsKeepTheKeysAndTheFaces)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().size(4, 4).faces(6).levels(0).withKey("KTXorientation", "S=l,T=d").level(64, run(64)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(6u, load.texture.getNumFaces());
    EXPECT_EQ((Bytes{1, 0, 0}), orientationOf(load.texture));
    EXPECT_EQ(0u, load.texture.getBlockSize());
}

TEST(KtxReader, NumbersOfOtherWritersAreRead)
{
    for (const uint32_t uiInternal : {33777u, 35916u, 35917u, 35918u, 35919u})
    {
        SCOPED_TRACE(uiInternal);
        const bool bBC1 = uiInternal < 35918;
        const Bytes data = run(bBC1 ? 8 : 16);
        const KtxLoad load = loadKtx(CKtxFileBuilder().format(uiInternal).size(4, 4).level(static_cast<uint32_t>(data.size()), data));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(MOXPixelWord(bBC1 ? ePF_BC1 : uiInternal == 35918 ? ePF_BC2 : ePF_BC3), load.texture.getPixelFormat());
        EXPECT_EQ(uiInternal == 33777 ? eCS_Linear : eCS_sRGB, load.texture.getColourSpace());
        EXPECT_EQ(data, dataOf(load.texture));
    }
}

TEST(KtxReader, BytesBehindTheLastLevelAreNotMissed)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 1).level(4, {1, 2, 3, 99, 98, 97, 96, 95}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(run(3), dataOf(load.texture));
}

TEST(KtxReader, AllEightOrientationsGiveTheirBytes)
{
    for (uint8_t ui8Mask = 0; ui8Mask < 8; ++ui8Mask)
    {
        const std::string strValue =
            std::string("S=") + (ui8Mask & 1 ? "l" : "r") + ",T=" + (ui8Mask & 2 ? "u" : "d") + ",R=" + (ui8Mask & 4 ? "o" : "i");
        const Bytes expected = {static_cast<uint8_t>(ui8Mask & 1), static_cast<uint8_t>(ui8Mask & 2), static_cast<uint8_t>(ui8Mask & 4)};
        EXPECT_EQ(expected, orientationFrom(onePixel().withKey("KTXorientation", strValue))) << strValue;
    }
    EXPECT_EQ((Bytes{1, 2, 4}), orientationFrom(onePixel().withKey("KTXorientation", "S=l,T=u,R=o")));
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKey("KTXorientation", "S=r,T=d,R=i")));
}

TEST(KtxReader, AnOrientationWithoutATPartSetsTheYBit)
{
    EXPECT_EQ((Bytes{0, 2, 0}), orientationFrom(onePixel().withKey("KTXorientation", "S=r")));
    EXPECT_EQ((Bytes{0, 2, 0}), orientationFrom(onePixel().withRecord(std::string("KTXorientation\0", 15))));
}

TEST(KtxReader, AFileWithoutKeysHasNoOrientation)
{
    EXPECT_EQ(Bytes(), orientationFrom(onePixel()));
}

TEST(KtxReader, AnyOtherKeyWritesTheOrientationAsItStands)
{
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKey("KTXwriter", "somebody, old")));
    EXPECT_EQ((Bytes{1, 0, 0}), orientationFrom(onePixel().withKey("KTXorientation", "S=l,T=d").withKey("KTXwriter", "somebody")));
    EXPECT_EQ((Bytes{1, 0, 0}), orientationFrom(onePixel().withKey("a", "b").withKey("KTXorientation", "S=l,T=d")));
    EXPECT_EQ((Bytes{0, 2, 0}), orientationFrom(onePixel().withKey("KTXorientation", "S=l,T=d").withKey("KTXorientation", "S=r,T=u")));
}

TEST(KtxReader, OnlyTheWholeKeyIsTheOrientation)
{
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withRecord("KTXorientation"))); // no zero behind it
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withRecord("KTX")));
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKey("KTXorientations", "S=l,T=u")));
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKey("ktxorientation", "S=l,T=u")));
}

TEST(KtxReader, AnOrientationEndsAtItsZeroOrWithItsRecord)
{
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKey("KTXorientation", std::string("S=r,T=d\0ld", 10))));
    EXPECT_EQ((Bytes{1, 0, 0}), orientationFrom(onePixel().withRecord(std::string("KTXorientation\0S=l,T=d", 22))));
}

TEST(KtxReader, AKeySizeOfZeroEndsTheKeys)
{
    EXPECT_EQ(
        (Bytes{1, 0, 0}),
        orientationFrom(onePixel().withKey("KTXorientation", "S=l,T=d").withKeyBytes({0, 0, 0, 0}).withKey("KTXorientation", "S=r,T=u")));
    EXPECT_EQ(Bytes(), orientationFrom(onePixel().withKeyBytes(Bytes(8))));
}

TEST(KtxReader, AKeySizePastTheSectionEndsTheKeys)
{
    for (const int iHigh : {1, 0x7F, 0x80, 0xFF})
        EXPECT_EQ(Bytes(), orientationFrom(onePixel().withKeyBytes({8, 0, 0, static_cast<uint8_t>(iHigh), 'K', 'T', 'X', 0, 1, 2, 3, 4})));
    EXPECT_EQ(Bytes(), orientationFrom(onePixel().withKeyBytes({9, 0, 0, 0, 'K', 'T', 'X', 0, 1, 2, 3, 4})));
    // One that fills the section to its last byte is whole.
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKeyBytes({8, 0, 0, 0, 'K', 'T', 'X', 0, 1, 2, 3, 4})));
    // Too few bytes for another size, as where a writer left padding out.
    EXPECT_EQ((Bytes{0, 0, 0}), orientationFrom(onePixel().withKeyBytes({4, 0, 0, 0, 'K', 0, 'b', 0, 1, 2, 3})));
}

TEST(KtxReader, RecordsArePaddedToFourBytes)
{
    for (const char* strValue : {"", "1", "12", "123", "1234"})
        EXPECT_EQ((Bytes{1, 2, 0}), orientationFrom(onePixel().withKey("k", strValue).withKey("KTXorientation", "S=l,T=u"))) << strValue;
}

TEST(KtxReader, ARowOfThreeBytesTakesOneByteOfPadding)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 2).level(8, {1, 2, 3, 99, 4, 5, 6, 99}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(run(6), dataOf(load.texture));
}

TEST(KtxReader, RowsOfEveryOddWidthAreTakenWithoutTheirPadding)
{
    for (const uint32_t uiBytes : {1u, 2u, 3u, 4u, 6u, 8u})
    {
        const uint32_t uiFormat = uiBytes == 1   ? k_uiR8
                                  : uiBytes == 2 ? 33323
                                  : uiBytes == 3 ? k_uiRGB8
                                  : uiBytes == 4 ? 32856
                                  : uiBytes == 6 ? 32852
                                                 : 32859;
        for (uint32_t uiWidth = 1; uiWidth <= 9; ++uiWidth)
        {
            SCOPED_TRACE(std::to_string(uiWidth) + " pixels of " + std::to_string(uiBytes) + " bytes");
            const uint32_t uiRow = uiWidth * uiBytes;
            const uint32_t uiPadded = (uiRow + 3) / 4 * 4;
            Bytes padded;
            Bytes tight;
            for (uint8_t y = 0; y < 3; ++y)
            {
                Bytes row = run(uiRow, static_cast<uint8_t>(50 * y));
                tight.insert(tight.end(), row.begin(), row.end());
                row.resize(uiPadded, 0xEE);
                padded.insert(padded.end(), row.begin(), row.end());
            }
            const KtxLoad load = loadKtx(CKtxFileBuilder().format(uiFormat).size(uiWidth, 3).level(3 * uiPadded, padded));
            EXPECT_TRUE(load.bGood);
            EXPECT_EQ(tight, dataOf(load.texture));
        }
    }
}

TEST(KtxReader, AnImageSizeWithoutRowPaddingIsReadWithoutSkipping)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder()
                                     .format(k_uiRGB8)
                                     .size(3, 3)
                                     .levels(2)
                                     .level(27,
                                            []
                                            {
                                                Bytes bytes = run(27);
                                                bytes.push_back(99); // to the next level
                                                return bytes;
                                            }())
                                     .level(3, {61, 62, 63, 99}));
    EXPECT_TRUE(load.bGood);
    Bytes expected = run(27);
    expected.insert(expected.end(), {61, 62, 63});
    EXPECT_EQ(expected, dataOf(load.texture));
}

TEST(KtxReader, SharedExponentPixelsHaveRowsToo)
{
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(35901, 35902).size(3, 2).level(24, run(24)));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(MOXPixelWord(ePF_Shared_Exponent_RGB999_E5), load.texture.getPixelFormat());
    EXPECT_EQ(run(24), dataOf(load.texture));
}

TEST(KtxReader, BlocksHaveNoRowsWhateverTheImageSizeSays)
{
    for (const uint32_t uiImageSize : {16u, 0u, 64u})
    {
        const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiETC1).size(5, 3).level(uiImageSize, run(16)));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(run(16), dataOf(load.texture));
    }
}

TEST(KtxReader, ACubeThatIsNoArrayHasTheSizeOfOneFaceAndPaddedFaces)
{
    // 3 by 3 bytes and 1 by 1, rows tight: faces of 9 bytes and 3 of padding, then of 1 and 3, with nothing between the levels.
    const auto paddedFaces = [](size_t uiSize, uint8_t uiStep, Bytes& expected)
    {
        Bytes data;
        for (uint8_t uiFace = 0; uiFace < 6; ++uiFace)
        {
            Bytes face = run(uiSize, static_cast<uint8_t>(1 + uiStep * uiFace));
            expected.insert(expected.end(), face.begin(), face.end());
            face.resize(uiSize + 3, 0xEE);
            data.insert(data.end(), face.begin(), face.end());
        }
        return data;
    };
    Bytes expected;
    const Bytes large = paddedFaces(9, 20, expected);
    const Bytes small = paddedFaces(1, 30, expected);
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 3).faces(6).levels(2).level(9, large).level(1, small));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(6u, load.texture.getNumFaces());
    EXPECT_EQ(expected, dataOf(load.texture));
}

TEST(KtxReader, ACubeThatIsNoArrayMayHavePaddedRows)
{
    // 3 by 2 bytes: rows of 3 and 1, faces of 8; then a level of 1 pixel: 1 and 3.
    Bytes data;
    Bytes expected;
    for (uint8_t i = 0; i < 12; ++i)
    {
        const Bytes row = run(3, static_cast<uint8_t>(10 * i));
        expected.insert(expected.end(), row.begin(), row.end());
        data.insert(data.end(), row.begin(), row.end());
        data.push_back(0xEE);
    }
    Bytes small;
    for (uint8_t i = 0; i < 6; ++i)
    {
        expected.push_back(static_cast<uint8_t>(200 + i));
        small.insert(small.end(), {static_cast<uint8_t>(200 + i), 0xEE, 0xEE, 0xEE});
    }
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 2).faces(6).levels(2).level(8, data).level(4, small));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(expected, dataOf(load.texture));
}

TEST(KtxReader, AnArrayOfCubesHasTheSizeOfTheLevelAndNoFacePadding)
{
    for (const uint32_t uiMembers : {1u, 2u})
    {
        const uint32_t uiSize = 9 * 6 * uiMembers; // tight
        Bytes data = run(uiSize);
        data.resize((uiSize + 3) / 4 * 4, 0xEE);
        const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 3).faces(6).elements(uiMembers).level(uiSize, data));
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(uiMembers, load.texture.getNumArrayMembers());
        EXPECT_EQ(run(uiSize), dataOf(load.texture));
    }
}

TEST(KtxReader, AnArrayOf3DPicturesIsReadMemberByMember)
{
    // 3 by 1 by 2 bytes in 2 members: four rows of 3 and 1.
    const KtxLoad load =
        loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 1, 2).elements(2).level(16, {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 10, 11, 12, 0}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(2u, load.texture.getDepth());
    EXPECT_EQ(run(12), dataOf(load.texture));
    EXPECT_EQ(7, load.texture.getDataPtr(0, 1, 0)[0]);
}

TEST(KtxReader, SlicesOf3DPicturesFollowEachOtherWithAndWithoutRowPadding)
{
    // 3 by 2 by 2 bytes and 1 by 1 by 1: four rows of 3 and 1, then one of 1 and 3.
    const auto builder = [] { return CKtxFileBuilder().format(k_uiR8).size(3, 2, 2).levels(2); };
    const KtxLoad padded = loadKtx(builder().level(16, {1, 2, 3, 99, 4, 5, 6, 99, 7, 8, 9, 99, 10, 11, 12, 99}).level(4, {13, 99, 99, 99}));
    EXPECT_TRUE(padded.bGood);
    EXPECT_EQ(run(13), dataOf(padded.texture));
    // 12 bytes end at a multiple of 4; the last level is as long as its only pixel.
    const KtxLoad tight = loadKtx(builder().level(12, run(12)).level(1, {13, 99, 99, 99}));
    EXPECT_TRUE(tight.bGood);
    EXPECT_EQ(run(13), dataOf(tight.texture));
}

TEST(KtxReader, EachLevelTellsForItselfWhetherItsRowsArePadded)
{
    // 6 by 2 bytes as they are, then 3 by 1 padded.
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(6, 2).levels(2).level(12, run(12)).level(4, {13, 14, 15, 99}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(run(15), dataOf(load.texture));
}

TEST(KtxReader, ACubeOfTwoSlicesIsPaddedBehindEachFace)
{
    // 1 by 1 by 2 bytes, tight: 2 bytes a face and 2 of padding.
    Bytes data;
    for (uint8_t i = 0; i < 6; ++i)
        data.insert(data.end(), {static_cast<uint8_t>(2 * i + 1), static_cast<uint8_t>(2 * i + 2), 0xEE, 0xEE});
    const KtxLoad load = loadKtx(CKtxFileBuilder().format(k_uiR8).size(1, 1, 2).faces(6).level(2, data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(run(12), dataOf(load.texture));
}

TEST(KtxReader, FacesOtherThanSixHaveTheSizeOfTheLevel)
{
    // Five faces of 2 bytes, then of 1, as they are: 10 bytes and 2 to the next level, then 5.
    const KtxLoad load = loadKtx(CKtxFileBuilder()
                                     .format(k_uiR8)
                                     .size(2, 1)
                                     .faces(5)
                                     .levels(2)
                                     .level(10,
                                            []
                                            {
                                                Bytes b = run(10);
                                                b.resize(12);
                                                return b;
                                            }())
                                     .level(5, {11, 12, 13, 14, 15}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(run(15), dataOf(load.texture));
}

TEST(KtxReader, AChainOfLevelsIsReadDownToOnePixel)
{
    // 5 by 3, 2 by 1, 1 by 1 pixels of 3 bytes: rows of 15 and 1, 6 and 2, 3 and 1.
    Bytes top;
    for (uint8_t y = 0; y < 3; ++y)
    {
        const Bytes row = run(15, static_cast<uint8_t>(1 + 15 * y));
        top.insert(top.end(), row.begin(), row.end());
        top.push_back(0xEE);
    }
    const KtxLoad load = loadKtx(CKtxFileBuilder()
                                     .format(k_uiRGB8)
                                     .size(5, 3)
                                     .levels(3)
                                     .level(48, top)
                                     .level(8, {46, 47, 48, 49, 50, 51, 0xEE, 0xEE})
                                     .level(4, {52, 53, 54, 0xEE}));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(run(54), dataOf(load.texture));
}

TEST(KtxReader, PaddingMissingAtTheVeryEndIsForgiven)
{
    // Of the last row,
    EXPECT_EQ(run(6), dataOf(loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 2).level(8, {1, 2, 3, 99, 4, 5, 6})).texture));
    EXPECT_TRUE(loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 2).level(8, {1, 2, 3, 99, 4, 5, 6})).bGood);
    // of the last face,
    const Bytes cube = {1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6, 0};
    const KtxLoad faces = loadKtx(CKtxFileBuilder().format(k_uiR8).size(1, 1).faces(6).level(1, cube));
    EXPECT_TRUE(faces.bGood);
    EXPECT_EQ(run(6), dataOf(faces.texture));
    // of the last level.
    const KtxLoad level = loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 1).level(3, run(3)));
    EXPECT_TRUE(level.bGood);
    EXPECT_EQ(run(3), dataOf(level.texture));
}

TEST(KtxReader, PaddingMissingBeforeMorePixelsIsNot)
{
    EXPECT_FALSE(loadKtx(CKtxFileBuilder().format(k_uiR8).size(3, 1).levels(2).level(4, run(3)).level(4, {9})).bGood);
}
