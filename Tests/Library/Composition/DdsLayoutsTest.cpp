#include "Composition/DdsLayouts.h"

#include <cmath>
#include <cstring>

#include <gtest/gtest.h>

#include "Composition/CanonicalForm.h"
#include "Conversion/Transcode.h"
#include "Formats/DXGIFormatTable.h"
#include "Support/DdsLoading.h"
#include "Support/DdsOfOthers.h"
#include "Support/DdsTables.h"
#include "Support/DdsWriting.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiWidth = 8;
constexpr uint32_t k_uiHeight = 12;

/// As a program opens a file.
CMOXTexture open(const Bytes& bytes)
{
    DdsLoad load = loadDds(bytes);
    EXPECT_TRUE(load.bGood);
    correctLoadedDds(load.texture);
    return load.texture;
}

/// As a program saves one.
DdsWritten save(CMOXTexture texture)
{
    EXPECT_TRUE(hasDdsFormat(texture));
    if (needsDdsPreparation(texture))
    {
        EXPECT_TRUE(prepareForDds(texture));
    }
    return writeToDds(texture);
}

/// The header by hand, the data random.
Bytes makeFile(CDdsFileBuilder builder, MOXPixelWord format)
{
    const CMOXTextureHeader header(format, k_uiHeight, k_uiWidth, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return builder.size(k_uiWidth, k_uiHeight).data(CSeededRandom(format.getWord()).bytes(header.getDataSize())).bytes();
}

struct File
{
    std::string strName;
    Bytes bytes;
};

/// One for every row of the tables that a file can have.
std::vector<File> makeFiles()
{
    std::vector<File> files;
    const auto add = [&](const std::string& strName, uint32_t uiNumber, const CDdsFileBuilder& builder, MOXPixelWord format) {
        files.push_back({strName + " " + std::to_string(uiNumber), makeFile(builder, format)});
    };
    for (const D3DMaskRow& row : k_aD3DMaskRows)
    {
        const uint32_t uiFlags = row.uiReadFlag | (row.cAlphaFlag == 'y' ? 1u : 0u);
        const D3DReadRow* pRead = k_aD3DReadRows;
        while (pRead->uiNumber != row.uiNumber)
            ++pRead;
        const auto& masks = row.aui32Masks;
        add("masks of", row.uiNumber, CDdsFileBuilder().masks(uiFlags, row.uiBits, masks[0], masks[1], masks[2], masks[3]),
            pRead->pixelFormat);
    }
    for (const D3DReadRow& row : k_aD3DReadRows)
        for (const PublishedFormat& format : k_aPublishedD3D)
            if (format.uiNumber == row.uiNumber)
                add("D3D", row.uiNumber, CDdsFileBuilder().fourCC(row.uiNumber), row.pixelFormat);
    for (const FourCCRow& row : k_aFourCCRows)
        add(row.strLetters, row.uiNumber, CDdsFileBuilder().fourCC(row.uiNumber), MOXPixelWord(uint64_t{row.uiFormat}));
    for (const DXGIRow& row : k_aDXGIRows)
        if (CMOXTextureHeader::getBitsPerPixel(row.pixelFormat) != 0) // others have no size, and do not open
            add("DXGI", row.uiNumber, CDdsFileBuilder().extended(row.uiNumber), row.pixelFormat);
    return files;
}

/// What is shown of a pixel beside its own channels does not count.
std::vector<ChannelCodes> withoutSpare(std::vector<ChannelCodes> codes)
{
    for (ChannelCodes& pixel : codes)
        pixel.erase('x');
    return codes;
}

bool isOf(const CMOXTexture& texture, MOXPixelWord format, uint32_t uiType)
{
    return texture.getPixelFormat() == format && texture.getChannelType() == uiType;
}

CMOXTexture makeTexture(MOXPixelWord format, uint32_t uiType, const Bytes& bytes, EMOXTColourSpace eSpace = eCS_Linear)
{
    const auto uiWidth = static_cast<uint32_t>(bytes.size() * 8 / CMOXTextureHeader::getBitsPerPixel(format));
    return CMOXTexture(CMOXTextureHeader(format, 1, uiWidth, 1, 1, 1, 1, eSpace, static_cast<EMOXTChannelType>(uiType), false),
                       bytes.data());
}

Bytes dataOf(const DdsWritten& written)
{
    const size_t uiStart = seeDds(written.bytes).uiDataStart;
    return uiStart <= written.bytes.size() ? Bytes(written.bytes.begin() + static_cast<ptrdiff_t>(uiStart), written.bytes.end()) : Bytes();
}

const MOXPixelWord k_A2BGR10 = layout("abgr", 2, 10, 10, 10);
const MOXPixelWord k_RGB10A2 = layout("rgba", 10, 10, 10, 2);

} // namespace

TEST(DdsLayouts, OpenWithTheChannelsThatThePublishedHeadersTell)
{
    size_t uiChecked = 0;
    for (const File& file : makeFiles())
    {
        SCOPED_TRACE(file.strName);
        // 111 is read as 32 bits on purpose, where everybody else sees 16. 30 has no alpha elsewhere.
        if (seeDds(file.bytes).fields.empty() || file.strName == "D3D 111" || file.strName == "D3D 30")
            continue;
        ++uiChecked;
        EXPECT_EQ(withoutSpare(codesSeen(file.bytes)), withoutSpare(codesOf(open(file.bytes))));
    }
    // All rows of masks, the numbers but for those two, and every DXGI format that is made of colours.
    EXPECT_EQ(std::size(k_aD3DMaskRows) + std::size(k_aPublishedD3D) - 2 + std::size(k_aPublishedDXGI), uiChecked);
}

TEST(DdsLayouts, ThatOpenAreSavedSoThatOthersSeeTheSame)
{
    for (const File& file : makeFiles())
    {
        SCOPED_TRACE(file.strName);
        const CMOXTexture texture = open(file.bytes);
        const DdsWritten written = save(texture);
        EXPECT_TRUE(written.bGood);
        // The half of DXGI 54 becomes a float of 32 bits: see below.
        const bool bOther = file.strName == "D3D 111" || file.strName == "D3D 30" || file.strName == "DXGI 54";
        if (!seeDds(file.bytes).fields.empty() && !bOther)
        {
            EXPECT_EQ(withoutSpare(codesSeen(file.bytes)), withoutSpare(codesSeen(written.bytes)));
        }
    }
}

TEST(DdsLayouts, ThatOpenAreSavedAndOpenedAgain)
{
    for (const File& file : makeFiles())
    {
        SCOPED_TRACE(file.strName);
        if (file.strName == "DXGI 54")
            continue; // becomes a float of 32 bits: see below
        const CMOXTexture texture = open(file.bytes);
        const CMOXTexture again = open(save(texture).bytes);
        if (texture.getPixelFormat().isCompressed())
        {
            EXPECT_EQ(texture.getPixelFormat(), again.getPixelFormat());
            EXPECT_EQ(blockOf(texture), blockOf(again));
        }
        else
        {
            EXPECT_EQ(codesOf(texture), codesOf(again));
        }
        // And from then on it stays what it is.
        const CMOXTexture third = open(save(again).bytes);
        EXPECT_EQ(again.getEncoding(), third.getEncoding());
        EXPECT_EQ(blockOf(again), blockOf(third));
    }
}

TEST(DdsLayouts, OfOneHalfFloatGoOutAsAWholeOne)
{
    // 1, -2, 0.5 and 65504, the greatest half.
    const CMOXTexture texture = makeTexture(layout("r", 16), 12, {0x00, 0x3C, 0x00, 0xC0, 0x00, 0x38, 0xFF, 0x7B});
    const DdsWritten written = save(texture);
    EXPECT_TRUE(written.bGood);
    EXPECT_EQ(4u, written.word(80));
    EXPECT_EQ(114u, written.word(84));
    EXPECT_EQ((Bytes{0, 0, 0x80, 0x3F, 0, 0, 0, 0xC0, 0, 0, 0, 0x3F, 0, 0xE0, 0x7F, 0x47}), dataOf(written));
    const CMOXTexture again = open(written.bytes);
    EXPECT_TRUE(isOf(again, layout("r", 32), 12));
    EXPECT_EQ(dataOf(written), blockOf(again));
}

TEST(DdsLayouts, OfOneHalfFloatKeepEveryValue)
{
    Bytes halves;
    for (uint32_t uiCode = 0; uiCode < 65536; ++uiCode)
        halves.insert(halves.end(), {static_cast<uint8_t>(uiCode), static_cast<uint8_t>(uiCode >> 8)});
    CMOXTexture texture = makeTexture(layout("r", 16), 12, halves);
    ASSERT_TRUE(prepareForDds(texture));
    ASSERT_EQ(halves.size() * 2, texture.getBlockSize());
    for (uint32_t uiCode = 0; uiCode < 65536; ++uiCode)
    {
        float fWide;
        std::memcpy(&fWide, texture.getDataPtr() + size_t{4} * uiCode, 4);
        const int iExponent = static_cast<int>((uiCode >> 10) & 31);
        const auto fMantissa = static_cast<float>(uiCode & 0x3FF);
        ASSERT_EQ((uiCode & 0x8000) != 0, std::signbit(fWide)) << uiCode;
        if (iExponent == 31 && fMantissa != 0)
            ASSERT_TRUE(std::isnan(fWide)) << uiCode;
        else if (iExponent == 31)
            ASSERT_TRUE(std::isinf(fWide)) << uiCode;
        else
            ASSERT_EQ(iExponent == 0 ? std::ldexp(fMantissa, -24) : std::ldexp(1024 + fMantissa, iExponent - 25), std::fabs(fWide))
                << uiCode;
    }
}

TEST(DdsLayouts, OfAnArrayOfOneHalfFloatStay)
{
    const CMOXTextureHeader header(layout("r", 16), 1, 1, 1, 1, 2, 1, eCS_Linear, eCT_SignedFloatingPoint, false);
    const uint8_t aui8Data[] = {1, 2, 3, 4};
    const CMOXTexture texture(header, aui8Data);
    EXPECT_FALSE(needsDdsPreparation(texture));
    const DdsWritten written = save(texture);
    EXPECT_EQ(54u, written.word(128));
    EXPECT_EQ((Bytes{1, 2, 3, 4}), dataOf(written));
}

TEST(DdsLayouts, OfOneHalfFloatThatWouldNotFitAsAWholeOneAreRefused)
{
    // 2^31 + 2^17 bytes, which nobody touches; twice that is beyond 32 bits.
    CMOXTexture texture(CMOXTextureHeader(layout("r", 16), 32770, 32768, 1, 1, 1, 1, eCS_Linear, eCT_SignedFloatingPoint, false));
    EXPECT_FALSE(prepareForDds(texture));
    EXPECT_TRUE(isOf(texture, layout("r", 16), 12));
}

TEST(LoadedDds, OfFloatsHaveRedFirst)
{
    struct Row
    {
        uint32_t uiNumber;
        MOXPixelWord format;
        size_t uiPixelSize;
    };
    const Row aRows[] = {
        {112, layout("rg", 16, 16), 4},
        {113, layout("rgba", 16, 16, 16, 16), 8},
        {115, layout("rg", 32, 32), 8},
        {116, layout("rgba", 32, 32, 32, 32), 16},
    };
    for (const Row& row : aRows)
    {
        const Bytes data = CSeededRandom(5).bytes(row.uiPixelSize);
        const CMOXTexture texture = open(CDdsFileBuilder().fourCC(row.uiNumber).data(data).bytes());
        EXPECT_TRUE(isOf(texture, row.format, 12));
        EXPECT_EQ(data, blockOf(texture));
    }
    // The letters alone decide, not where they came from.
    CMOXTexture texture = makeTexture(layout("abgr", 16, 16, 16, 16), 12, {1, 2, 3, 4, 5, 6, 7, 8});
    correctLoadedDds(texture);
    EXPECT_TRUE(isOf(texture, layout("rgba", 16, 16, 16, 16), 12));
    EXPECT_EQ((Bytes{1, 2, 3, 4, 5, 6, 7, 8}), blockOf(texture));
}

TEST(LoadedDds, OfTenBitsHaveRedInTheLowestOnes)
{
    // Red 0x3FF alone.
    const Bytes red = {0xFF, 0x03, 0x00, 0x00};
    for (const uint32_t uiNumber : {24u, 25u})
    {
        const CMOXTexture texture = open(CDdsFileBuilder().extended(uiNumber).data(red).bytes());
        EXPECT_TRUE(isOf(texture, k_A2BGR10, uiNumber == 24 ? 8 : 10));
        EXPECT_EQ(red, blockOf(texture));
    }
    CMOXTexture shown = open(CDdsFileBuilder().extended(24).data({0xFF, 0x03, 0x00, 0xC0}).bytes());
    ASSERT_TRUE(toRGBA8Canonical(shown));
    EXPECT_EQ((Bytes{255, 0, 0, 255}), blockOf(shown));
}

TEST(LoadedDds, AreOpaqueWhereTheyHaveNoAlpha)
{
    const std::vector<CDdsFileBuilder> builders = {
        CDdsFileBuilder().masks(64, 32, 0xFF0000, 0xFF00, 0xFF).data({3, 2, 1, 0}),
        CDdsFileBuilder().masks(64, 32, 0xFF, 0xFF00, 0xFF0000).data({1, 2, 3, 0}),
        CDdsFileBuilder().masks(64, 16, 0x7C00, 0x3E0, 0x1F).data({0xFF, 0x7F}),
        CDdsFileBuilder().masks(0x40000, 32, 0xFF, 0xFF00, 0xFF0000).data({1, 2, 3, 0}),
        CDdsFileBuilder().masks(0x40000, 32, 0xFF, 0xFF00, 0xFF0000).data({1, 2, 3, 0xFF}),
        CDdsFileBuilder().extended(88).data({3, 2, 1, 0}),
        CDdsFileBuilder().extended(93).data({3, 2, 1, 77}),
    };
    for (const CDdsFileBuilder& builder : builders)
    {
        CMOXTexture texture = open(builder.bytes());
        ASSERT_TRUE(toRGBA8Canonical(texture));
        ASSERT_EQ(4u, texture.getBlockSize());
        EXPECT_EQ(255, texture.getDataPtr()[3]);
    }
}

TEST(LoadedDds, OfAllOtherLayoutsAreAsTheyWere)
{
    for (const DXGIRow& row : k_aDXGIRows)
    {
        if (row.uiNumber == 24 || row.uiNumber == 25 || row.uiNumber == 88 || row.uiNumber == 93)
            continue;
        SCOPED_TRACE(row.uiNumber);
        const DdsLoad load = loadDds(makeFile(CDdsFileBuilder().extended(row.uiNumber), row.pixelFormat));
        CMOXTexture texture = load.texture;
        correctLoadedDds(texture);
        EXPECT_EQ(load.texture.getEncoding(), texture.getEncoding());
        EXPECT_EQ(blockOf(load.texture), blockOf(texture));
    }
    CMOXTexture none;
    correctLoadedDds(none);
    EXPECT_EQ(MOXPixelWord(ePF_Count), none.getPixelFormat());
}

TEST(LoadedDds, ArePutRightOnEverySurface)
{
    const DdsShape shape = {5, 3, 1, 3, 2, 6};
    const PixelEncoding encoding = {layout("bgrx", 8, 8, 8, 8)};
    CMOXTexture texture = open(writeToDds(encoding, shape).bytes);
    const Bytes before = blockOf(makeDdsTexture(encoding, shape));
    const Bytes after = blockOf(texture);
    ASSERT_EQ(before.size(), after.size());
    for (size_t i = 0; i < after.size(); ++i)
        ASSERT_EQ(i % 4 == 3 ? 255 : before[i], after[i]) << i;
}

// What is saved, byte for byte: the layout and type, the pixel in memory, and what stands in the file.
TEST(SavedDds, HaveTheirBytesWhereTheHeaderSaysThatTheyAre)
{
    struct Row
    {
        MOXPixelWord format;
        uint32_t uiType;
        Bytes pixel;
        uint32_t uiMasksOrNumber; ///< the red mask, or the DXGI number where uiKind is 'X', or the FourCC field where it is 'F'
        char cKind;
        Bytes inFile;
    };
    const MOXPixelWord abgr16 = layout("abgr", 16, 16, 16, 16);
    const MOXPixelWord xrgb8 = layout("xrgb", 8, 8, 8, 8);
    const MOXPixelWord xbgr8 = layout("xbgr", 8, 8, 8, 8);
    const Row aRows[] = {
        {layout("rgb", 8, 8, 8), 0, {1, 2, 3}, 0xFF0000, 'M', {3, 2, 1}},
        {layout("rgb", 8, 8, 8), 8, {3, 2, 1}, 0xFF0000, 'M', {3, 2, 1}},
        {layout("argb", 8, 8, 8, 8), 0, {4, 1, 2, 3}, 0xFF0000, 'M', {3, 2, 1, 4}},
        {layout("argb", 8, 8, 8, 8), 8, {3, 2, 1, 4}, 0xFF0000, 'M', {3, 2, 1, 4}},
        {layout("al", 8, 8), 0, {4, 1}, 0xFF, 'M', {1, 4}},
        {layout("gr", 16, 16), 4, {3, 4, 1, 2}, 0xFFFF, 'M', {1, 2, 3, 4}},
        {layout("gr", 16, 16), 8, {1, 2, 3, 4}, 0xFFFF, 'M', {1, 2, 3, 4}},
        {abgr16, 4, {7, 8, 5, 6, 3, 4, 1, 2}, 36, 'F', {1, 2, 3, 4, 5, 6, 7, 8}},
        {abgr16, 8, {1, 2, 3, 4, 5, 6, 7, 8}, 36, 'F', {1, 2, 3, 4, 5, 6, 7, 8}},
        {abgr16, 9, {1, 2, 3, 4, 5, 6, 7, 8}, 13, 'X', {1, 2, 3, 4, 5, 6, 7, 8}},
        {abgr16, 12, {7, 8, 5, 6, 3, 4, 1, 2}, 113, 'F', {1, 2, 3, 4, 5, 6, 7, 8}},
        {layout("gr", 16, 16), 12, {3, 4, 1, 2}, 34, 'X', {1, 2, 3, 4}},
        {layout("rg", 16, 16), 12, {1, 2, 3, 4}, 34, 'X', {1, 2, 3, 4}},
        {layout("gr", 32, 32), 12, {5, 6, 7, 8, 1, 2, 3, 4}, 115, 'F', {1, 2, 3, 4, 5, 6, 7, 8}},
        {layout("abgr", 32, 32, 32, 32),
         12,
         {13, 14, 15, 16, 9, 10, 11, 12, 5, 6, 7, 8, 1, 2, 3, 4},
         2,
         'X',
         {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}},
        // Red 0x3FF alone: the highest ten bits of rgba, the lowest of abgr.
        {k_RGB10A2, 8, {0x00, 0x00, 0xC0, 0xFF}, 24, 'X', {0xFF, 0x03, 0x00, 0x00}},
        {k_RGB10A2, 10, {0x00, 0x00, 0xC0, 0xFF}, 25, 'X', {0xFF, 0x03, 0x00, 0x00}},
        {k_A2BGR10, 8, {0xFF, 0x03, 0x00, 0x00}, 24, 'X', {0xFF, 0x03, 0x00, 0x00}},
        {k_A2BGR10, 10, {0xFF, 0x03, 0x00, 0x00}, 25, 'X', {0xFF, 0x03, 0x00, 0x00}},
        {layout("abgr", 8, 8, 8, 8), 8, {1, 2, 3, 4}, 28, 'X', {1, 2, 3, 4}},
        {xrgb8, 8, {3, 2, 1, 4}, 88, 'X', {3, 2, 1, 4}},
        {xrgb8, 0, {4, 1, 2, 3}, 88, 'X', {3, 2, 1, 4}},
        {xbgr8, 8, {1, 2, 3, 4}, 88, 'X', {3, 2, 1, 4}},
        {xbgr8, 0, {4, 3, 2, 1}, 88, 'X', {3, 2, 1, 4}},
        // What was right all along.
        {layout("rgba", 8, 8, 8, 8), 0, {1, 2, 3, 4}, 28, 'X', {1, 2, 3, 4}},
        {layout("rgb", 5, 6, 5), 4, {1, 2}, 0xF800, 'M', {1, 2}},
        {layout("al", 4, 4), 0, {0x12}, 0xF, 'M', {0x12}},
        {layout("xlgr", 8, 8, 8, 8), 9, {1, 2, 3, 4}, 0xFF, 'M', {1, 2, 3, 4}},
    };
    for (const Row& row : aRows)
    {
        SCOPED_TRACE(testing::Message() << std::hex << row.format.getWord() << " of " << row.uiType);
        const DdsWritten written = save(makeTexture(row.format, row.uiType, row.pixel));
        ASSERT_TRUE(written.bGood);
        EXPECT_EQ(row.inFile, dataOf(written));
        if (row.cKind == 'M')
        {
            EXPECT_EQ(0u, written.word(80) & 4);
            EXPECT_EQ(row.uiMasksOrNumber, written.word(92));
        }
        else
        {
            EXPECT_EQ(4u, written.word(80));
            EXPECT_EQ(row.cKind == 'F' ? row.uiMasksOrNumber : CDdsFileBuilder::k_ui32DX10, written.word(84));
            if (row.cKind == 'X')
            {
                EXPECT_EQ(row.uiMasksOrNumber, written.word(128));
            }
        }
    }
}

TEST(SavedDds, KeepTheColourSpaceOfASpareChannelsLayout)
{
    CMOXTexture texture = makeTexture(layout("xrgb", 8, 8, 8, 8), 0, {4, 1, 2, 3}, eCS_sRGB);
    EXPECT_EQ(93u, save(texture).word(128));
}

TEST(SavedDds, AreOnlyTouchedWhereItIsNeeded)
{
    for (const CMOXTextureHeader& header :
         {CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false),
          CMOXTextureHeader(ePF_BC1, 4, 4, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false),
          CMOXTextureHeader(layout("argb", 8, 8, 8, 8), 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedInteger, false)})
    {
        EXPECT_FALSE(needsDdsPreparation(header));
        EXPECT_TRUE(hasDdsFormat(header));
        CMOXTexture texture(header);
        EXPECT_TRUE(prepareForDds(texture));
        EXPECT_EQ(header.getEncoding(), texture.getEncoding());
    }
}

TEST(SavedDds, WithoutANumberAreRefusedByTheWriterAsWell)
{
    const auto refused = [](MOXPixelWord format, uint32_t uiType, uint32_t uiMembers = 1)
    {
        CMOXTexture texture(CMOXTextureHeader(format, 8, 8, 1, 1, uiMembers, 1, eCS_Linear, static_cast<EMOXTChannelType>(uiType), false));
        const bool bRefused = !hasDdsFormat(texture);
        EXPECT_TRUE(prepareForDds(texture));
        const DdsWritten written = writeToDds(texture);
        EXPECT_EQ(!bRefused, written.bGood);
        EXPECT_EQ(!bRefused, written.bFileThere);
        return bRefused;
    };
    EXPECT_TRUE(refused(layout("rgb", 16, 16, 16), 4));
    EXPECT_TRUE(refused(layout("i", 8), 0));
    EXPECT_TRUE(refused(ePF_ETC1, 0));
    EXPECT_TRUE(refused(ePF_ASTC_4x4, 0));
    // The numbers of plain headers are none for arrays.
    EXPECT_TRUE(refused(layout("rgb", 8, 8, 8), 0, 2));
    EXPECT_TRUE(refused(layout("gr", 16, 16), 4, 2));
    EXPECT_FALSE(refused(layout("xrgb", 8, 8, 8, 8), 8, 2));
    EXPECT_FALSE(refused(k_A2BGR10, 8, 2));
    EXPECT_FALSE(refused(ePF_BC1, 0, 2));
}

TEST(SavedDds, OfAHeaderThatHasChangedSinceAreLeftToTheWriter)
{
    CMOXTexture texture = makeTexture(layout("rgb", 8, 8, 8), 0, {1, 2, 3});
    texture.setWidth(1000);
    EXPECT_TRUE(prepareForDds(texture));
    EXPECT_EQ(eCT_UnsignedNormalisedByte, texture.getChannelType());
    EXPECT_FALSE(writeToDds(texture).bGood);
}
