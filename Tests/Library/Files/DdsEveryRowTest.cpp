#include <set>

#include <gtest/gtest.h>

#include "Support/DdsLoading.h"
#include "Support/DdsTables.h"
#include "Support/DdsWriting.h"
#include "Support/NativeLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

/// Most pictures here are 8 by 4: two blocks of the BC formats, whole bytes of 1bpp; MOXTC rounds them up.
constexpr DdsShape k_Shape = {8, 4};

MOXPixelWord numbered(uint32_t uiFormat)
{
    return MOXPixelWord(uint64_t{uiFormat});
}

EMOXTChannelType typed(uint32_t uiType)
{
    return static_cast<EMOXTChannelType>(uiType);
}

uint32_t countBits(MOXPixelWord layoutWord)
{
    const uint64_t uiWord = layoutWord.getWord();
    return static_cast<uint32_t>((uiWord >> 32 & 0xFF) + (uiWord >> 40 & 0xFF) + (uiWord >> 48 & 0xFF) + (uiWord >> 56));
}

/// Bytes of 8 by 4 pixels.
size_t countBytes(MOXPixelWord pixelFormat)
{
    switch (pixelFormat.getWord())
    {
    case 0:
    case 1:
    case 2:
    case 3:
        return 32; // 16 by 8 pixels of 2 bits, 8 by 8 of 4 bits
    case 7:
    case 12:
        return 16; // two blocks of 8 bytes
    case 8:
    case 9:
    case 10:
    case 11:
    case 13:
        return 32; // two blocks of 16 bytes
    case 15:
        return 0; // a name without a size
    case 16:
    case 17:
    case 20:
    case 21:
        return 64; // 4 bytes for two pixels
    case 18:
        return 4; // a bit a pixel
    case 19:
        return 128; // 4 bytes a pixel
    default:
        return size_t{8} * 4 * countBits(pixelFormat) / 8;
    }
}

void expectReadAs(const CDdsFileBuilder& builder, const PixelEncoding& expected)
{
    const Bytes data = CSeededRandom(3).bytes(countBytes(expected.pixelFormat));
    const DdsLoad load = loadDds(CDdsFileBuilder(builder).size(8, 4).data(data));
    EXPECT_TRUE(load.bGood);
    EXPECT_EQ(expected, load.texture.getEncoding());
    EXPECT_EQ(expected.bPreMultiplied ? 2u : 0u, load.texture.getFlags());
    EXPECT_EQ(8u, load.texture.getWidth());
    EXPECT_EQ(4u, load.texture.getHeight());
    EXPECT_EQ(data, dataOf(load.texture));
}

struct PixelFormatWords
{
    uint32_t uiFlags;
    uint32_t uiFourCC;
    uint32_t uiBits;
    std::array<uint32_t, 4> aui32Masks;
};

/// The plain header of 8 by 4 pixels, field by field from the published layout.
Bytes plainHeader(bool bPitch, size_t uiPitchOrSize, const PixelFormatWords& words)
{
    std::vector<uint32_t> fields = {0x20534444, 124, bPitch ? 0x100Fu : 0x81007u, 4, 8, static_cast<uint32_t>(uiPitchOrSize), 1, 1};
    fields.resize(fields.size() + 11); // reserved
    fields.insert(fields.end(), {32, words.uiFlags, words.uiFourCC, words.uiBits});
    fields.insert(fields.end(), words.aui32Masks.begin(), words.aui32Masks.end());
    fields.insert(fields.end(), {0x1000, 0, 0, 0, 0});
    return CDdsFileBuilder::words(fields);
}

constexpr PixelFormatWords k_Extended = {4, 0x30315844, 0, {}};

void expectStart(const Bytes& expected, const DdsWritten& written)
{
    ASSERT_LE(expected.size(), written.bytes.size());
    EXPECT_EQ(expected, Bytes(written.bytes.begin(), written.bytes.begin() + static_cast<std::ptrdiff_t>(expected.size())));
}

/// What a number in the plain header is read as.
PixelEncoding readAs(uint32_t uiNumber)
{
    for (const D3DReadRow& row : k_aD3DReadRows)
        if (row.uiNumber == uiNumber)
            return {row.pixelFormat, typed(row.uiType)};
    ADD_FAILURE() << uiNumber;
    return {};
}

} // namespace

TEST(DdsEveryRow, ANumberInTheFieldOfTheFourCCIsReadAsItsLayout)
{
    for (const D3DReadRow& row : k_aD3DReadRows)
    {
        SCOPED_TRACE(row.uiNumber);
        expectReadAs(CDdsFileBuilder().fourCC(row.uiNumber), {row.pixelFormat, typed(row.uiType)});
    }
}

TEST(DdsEveryRow, AFourCCIsReadAsItsFormat)
{
    for (const FourCCRow& row : k_aFourCCRows)
    {
        SCOPED_TRACE(row.strLetters);
        expectReadAs(CDdsFileBuilder().fourCC(row.uiNumber),
                     {numbered(row.uiFormat), eCT_UnsignedNormalisedByte, eCS_Linear, row.bPreMultiplied});
    }
}

TEST(DdsEveryRow, MasksAreReadAsTheLayoutOfTheirNumber)
{
    for (const D3DMaskRow& row : k_aD3DMaskRows)
    {
        SCOPED_TRACE(row.uiNumber);
        const auto& [uiRed, uiGreen, uiBlue, uiAlpha] = row.aui32Masks;
        for (const uint32_t uiAlphaFlag : {0u, 1u})
            if (row.cAlphaFlag == '?' || (row.cAlphaFlag == 'y') == (uiAlphaFlag == 1))
                expectReadAs(CDdsFileBuilder().masks(row.uiReadFlag | uiAlphaFlag, row.uiBits, uiRed, uiGreen, uiBlue, uiAlpha),
                             readAs(row.uiNumber));
    }
}

TEST(DdsEveryRow, ADXGINumberIsReadAsItsFormatTypeAndSpace)
{
    for (const DXGIRow& row : k_aDXGIRows)
    {
        SCOPED_TRACE(row.uiNumber);
        if (countBytes(row.pixelFormat) != 0)
            expectReadAs(CDdsFileBuilder().extended(row.uiNumber),
                         {row.pixelFormat, typed(row.uiType), static_cast<EMOXTColourSpace>(row.uiSpace)});
    }
}

TEST(DdsEveryRow, DXGINumbersOfAFormatWithoutASizeGiveNoData)
{
    for (const uint32_t uiNumber : {96u, 98u, 99u})
    {
        const DdsLoad load = loadDds(CDdsFileBuilder().size(4, 4).extended(uiNumber).data(Bytes(16, 1)));
        EXPECT_FALSE(load.bGood);
        EXPECT_EQ(numbered(15), load.texture.getPixelFormat());
        EXPECT_EQ(0u, load.texture.getDataSize());
    }
}

TEST(DdsEveryRow, ALayoutIsWrittenWithTheHeaderOfItsNumber)
{
    for (const D3DWriteRow& row : k_aD3DWriteRows)
    {
        SCOPED_TRACE(row.uiNumber);
        PixelFormatWords words = {4, row.uiNumber, 0, {}};
        for (const D3DMaskRow& masks : k_aD3DMaskRows)
            if (masks.uiNumber == row.uiNumber)
                words = {masks.uiWrittenFlags, 0x30315844, countBits(row.pixelFormat), masks.aui32Masks};
        const DdsWritten written = writeToDds({row.pixelFormat, typed(row.uiType)}, k_Shape);
        EXPECT_TRUE(written.bGood);
        EXPECT_EQ(128 + countBytes(row.pixelFormat), written.bytes.size());
        expectStart(plainHeader(true, countBits(row.pixelFormat), words), written); // 8 pixels, 8 bits: bytes a row are bits a pixel
    }
}

TEST(DdsEveryRow, AFormatWithAFourCCIsWrittenWithIt)
{
    std::vector<FourCCRow> rows(std::begin(k_aFourCCRows), std::end(k_aFourCCRows));
    rows.push_back({"PTC2", 0x32435450, 0, false});
    rows.push_back({"PTC4", 0x34435450, 2, false});
    for (const FourCCRow& row : rows)
    {
        SCOPED_TRACE(row.uiFormat);
        const size_t uiSize = countBytes(numbered(row.uiFormat));
        const DdsWritten written = writeToDds({numbered(row.uiFormat)}, k_Shape);
        EXPECT_TRUE(written.bGood);
        EXPECT_EQ(128 + uiSize, written.bytes.size());
        expectStart(plainHeader(false, uiSize, {4, row.uiNumber, 0, {}}), written);
    }
}

TEST(DdsEveryRow, AnArrayIsWrittenWithItsDXGINumber)
{
    for (const DXGIRow& row : k_aDXGIRows)
    {
        const size_t uiSize = countBytes(row.pixelFormat);
        if (uiSize == 0 || row.uiNumber == 65)
            continue;
        SCOPED_TRACE(row.uiNumber);
        const PixelEncoding encoding = {row.pixelFormat, typed(row.uiType), static_cast<EMOXTColourSpace>(row.uiSpace)};
        const DdsWritten written = writeToDds(encoding, {8, 4, 1, 1, 2});
        EXPECT_TRUE(written.bGood);
        EXPECT_EQ(148 + 2 * uiSize, written.bytes.size());
        const bool bPitch = !row.pixelFormat.isCompressed();
        Bytes expected = plainHeader(bPitch, bPitch ? countBits(row.pixelFormat) : 2 * uiSize, k_Extended);
        const Bytes extended = CDdsFileBuilder::words({row.uiNumber, 3, 0, 2, 0});
        expected.insert(expected.end(), extended.begin(), extended.end());
        expectStart(expected, written);
    }
}

TEST(DdsEveryRow, ALayoutOfThePlainHeaderIsReadBackWithAllButItsSmallTypesAndTwoFloats)
{
    for (const D3DWriteRow& row : k_aD3DWriteRows)
    {
        SCOPED_TRACE(std::to_string(row.uiNumber) + " of type " + std::to_string(row.uiType));
        const CMOXTexture texture = makeDdsTexture({row.pixelFormat, typed(row.uiType)}, k_Shape);
        const DdsLoad load = loadDds(writeToDds(texture).bytes);
        EXPECT_EQ(readAs(row.uiNumber), load.texture.getEncoding());
        // Types 0 and 4 come back as 8, half floats of one channel as whole ones, of which half are missing, and "rg" as "gr".
        const bool bSame = row.uiType >= 8 && row.uiNumber != 111 && row.uiNumber != 115;
        EXPECT_EQ(bSame, texture.getEncoding() == load.texture.getEncoding());
        EXPECT_EQ(row.uiNumber != 111, load.bGood);
        EXPECT_EQ(row.uiNumber != 111, dataOf(texture) == dataOf(load.texture));
    }
}

TEST(DdsEveryRow, AHalfFloatOfOneChannelComesBackAsAWholeOneWithZerosForTheSecondHalf)
{
    const CMOXTexture texture = makeDdsTexture({layout("r", 16), eCT_SignedFloatingPoint}, k_Shape);
    const DdsLoad load = loadDds(writeToDds(texture).bytes);
    Bytes expected = dataOf(texture);
    ASSERT_EQ(64u, expected.size());
    expected.resize(128);
    EXPECT_EQ(expected, dataOf(load.texture));
}

TEST(DdsEveryRow, AFourCCIsReadBackWithoutTypeAndSpaceAndMOXTCAlwaysAsIfItHadAlpha)
{
    for (const FourCCRow& row : k_aFourCCRows)
    {
        SCOPED_TRACE(row.strLetters);
        const PixelEncoding plain = {numbered(row.uiFormat), eCT_UnsignedNormalisedByte, eCS_Linear, row.bPreMultiplied};
        PixelEncoding other = plain;
        other.eChannelType = eCT_UnsignedNormalisedInteger;
        other.eColourSpace = eCS_sRGB;
        other.bPreMultiplied = !row.bPreMultiplied;
        for (const PixelEncoding& encoding : {plain, other})
        {
            const CMOXTexture texture = makeDdsTexture(encoding, k_Shape);
            const DdsLoad load = loadDds(writeToDds(texture).bytes);
            EXPECT_TRUE(load.bGood);
            EXPECT_EQ(plain, load.texture.getEncoding());
            EXPECT_EQ(dataOf(texture), dataOf(load.texture));
        }
    }
    EXPECT_EQ(numbered(1), loadDds(writeToDds({numbered(0)}, k_Shape).bytes).texture.getPixelFormat());
    EXPECT_EQ(numbered(3), loadDds(writeToDds({numbered(2)}, k_Shape).bytes).texture.getPixelFormat());
}

TEST(DdsEveryRow, AnArrayOfEveryDXGIRowIsReadBackAsItWas)
{
    for (const DXGIRow& row : k_aDXGIRows)
    {
        if (countBytes(row.pixelFormat) == 0)
            continue;
        SCOPED_TRACE(row.uiNumber);
        const PixelEncoding encoding = {row.pixelFormat, typed(row.uiType), static_cast<EMOXTColourSpace>(row.uiSpace)};
        const CMOXTexture texture = makeDdsTexture(encoding, {11, 6, 1, 3, 2});
        const DdsLoad load = loadDds(writeToDds(texture).bytes);
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(encoding, load.texture.getEncoding());
        EXPECT_EQ(dataOf(texture), dataOf(load.texture));
    }
}

TEST(DdsEveryRow, ASingleTextureOfADXGIRowIsReadBackAsItWasUnlessItHasAPlainNumber)
{
    // 16 and 54 are floats of the plain header (115, 111), 71 to 78 and 107 FourCCs without type and space, 85, 86 and 115 masks
    // without type. 68 and 69 are FourCCs, 10 and 41 floats, that lose nothing.
    const std::set<uint32_t> changed = {16, 54, 71, 72, 74, 75, 77, 78, 85, 86, 107, 115};
    for (const DXGIRow& row : k_aDXGIRows)
    {
        if (countBytes(row.pixelFormat) == 0)
            continue;
        const PixelEncoding encoding = {row.pixelFormat, typed(row.uiType), static_cast<EMOXTColourSpace>(row.uiSpace)};
        const DdsLoad load = loadDds(writeToDds(encoding, k_Shape).bytes);
        EXPECT_EQ(changed.count(row.uiNumber) == 0, encoding == load.texture.getEncoding()) << row.uiNumber;
        EXPECT_EQ(row.uiNumber != 54, load.bGood) << row.uiNumber;
    }
}
