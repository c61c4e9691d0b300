#include "Composition/KtxLayouts.h"

#include <gtest/gtest.h>

#include "Formats/GLFormatTable.h"
#include "Support/CatalogueLayouts.h"
#include "Support/ChannelBits.h"
#include "Support/DdsTables.h"
#include "Support/KtxLoading.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

PixelEncoding encodingOf(MOXPixelWord format, uint32_t uiType, EMOXTColourSpace eSpace = eCS_Linear)
{
    return {format, static_cast<EMOXTChannelType>(uiType), eSpace};
}

CMOXTexture makeTexture(const PixelEncoding& encoding)
{
    const CMOXTextureHeader header(encoding.pixelFormat, 6, 5, 1, 2, 1, 1, encoding.eColourSpace, encoding.eChannelType, false);
    return CMOXTexture(header, CSeededRandom(11).bytes(header.getDataSize() + size_t{1}).data());
}

/// What is left where 'x' and 'a' are the same.
std::vector<ChannelCodes> withSpareAsAlpha(std::vector<ChannelCodes> codes)
{
    for (ChannelCodes& pixel : codes)
        if (const auto spare = pixel.find('x'); spare != pixel.end())
        {
            pixel['a'] = spare->second;
            pixel.erase('x');
        }
    return codes;
}

uint32_t internalFormatOf(const Bytes& file)
{
    return file.size() >= 64 ? loadLE<uint32_t>(&file[28]) : 0;
}

} // namespace

// From what, to which layout and type, and the number that stands in the file.
TEST(KtxLayouts, WithoutANumberBecomeTheEqualOneThatHasIt)
{
    struct Row
    {
        MOXPixelWord from;
        uint32_t uiType;
        EMOXTColourSpace eSpace;
        MOXPixelWord to;
        uint32_t uiNewType;
        uint32_t uiInternalFormat;
    };
    const MOXPixelWord rgba8 = layout("rgba", 8, 8, 8, 8);
    const MOXPixelWord rgb8 = layout("rgb", 8, 8, 8);
    const MOXPixelWord rgba4 = layout("rgba", 4, 4, 4, 4);
    const MOXPixelWord rgb5a1 = layout("rgba", 5, 5, 5, 1);
    const MOXPixelWord a2bgr10 = layout("abgr", 2, 10, 10, 10);
    // clang-format off
    const Row aRows[] = {
        {layout("argb", 8, 8, 8, 8),     0,  eCS_Linear, rgba8,                          0,  32856},
        {layout("argb", 8, 8, 8, 8),     0,  eCS_sRGB,   rgba8,                          0,  35907},
        {layout("argb", 8, 8, 8, 8),     8,  eCS_sRGB,   rgba8,                          0,  35907},
        {layout("argb", 8, 8, 8, 8),     2,  eCS_Linear, rgba8,                          2,  36220},
        {layout("abgr", 8, 8, 8, 8),     0,  eCS_Linear, rgba8,                          0,  32856},
        {layout("abgr", 8, 8, 8, 8),     8,  eCS_Linear, rgba8,                          0,  32856},
        {layout("abgr", 8, 8, 8, 8),     9,  eCS_Linear, rgba8,                          1,  36759},
        {layout("bgra", 8, 8, 8, 8),     0,  eCS_sRGB,   rgba8,                          0,  35907},
        {layout("bgra", 8, 8, 8, 8),     8,  eCS_Linear, rgba8,                          0,  32856},
        {layout("xrgb", 8, 8, 8, 8),     0,  eCS_Linear, rgba8,                          0,  32856},
        {layout("xbgr", 8, 8, 8, 8),     8,  eCS_Linear, rgba8,                          0,  32856},
        {layout("bgrx", 8, 8, 8, 8),     0,  eCS_sRGB,   rgba8,                          0,  35907},
        {rgb8,                           8,  eCS_Linear, rgb8,                           0,  32849},
        {rgb8,                           8,  eCS_sRGB,   rgb8,                           0,  35905},
        {layout("bgr", 8, 8, 8),         0,  eCS_sRGB,   rgb8,                           0,  35905},
        {layout("rgb", 5, 6, 5),         8,  eCS_Linear, layout("rgb", 5, 6, 5),         4,  36194},
        {layout("bgr", 5, 6, 5),         4,  eCS_Linear, layout("rgb", 5, 6, 5),         4,  36194},
        {layout("rgb", 3, 3, 2),         8,  eCS_Linear, layout("rgb", 3, 3, 2),         0,  10768},
        {layout("argb", 1, 5, 5, 5),     4,  eCS_Linear, rgb5a1,                         4,  32855},
        {layout("argb", 1, 5, 5, 5),     8,  eCS_Linear, rgb5a1,                         4,  32855},
        {layout("xrgb", 1, 5, 5, 5),     8,  eCS_Linear, rgb5a1,                         4,  32855},
        {layout("argb", 4, 4, 4, 4),     4,  eCS_Linear, rgba4,                          4,  32854},
        {layout("argb", 4, 4, 4, 4),     8,  eCS_Linear, rgba4,                          4,  32854},
        {layout("rgba", 10, 10, 10, 2),  8,  eCS_Linear, a2bgr10,                        8,  32857},
        {layout("argb", 2, 10, 10, 10),  8,  eCS_Linear, a2bgr10,                        8,  32857},
        {a2bgr10,                        10, eCS_Linear, layout("rgba", 10, 10, 10, 2),  10, 36975},
        {layout("xbgr", 2, 10, 10, 10),  8,  eCS_Linear, layout("rgbx", 10, 10, 10, 2),  8,  32850},
        {layout("gr", 8, 8),             9,  eCS_Linear, layout("rg", 8, 8),             1,  36757},
        {layout("gr", 16, 16),           8,  eCS_Linear, layout("rg", 16, 16),           4,  33324},
        {layout("gr", 16, 16),           4,  eCS_Linear, layout("rg", 16, 16),           4,  33324},
        {layout("gr", 16, 16),           9,  eCS_Linear, layout("rg", 16, 16),           5,  36761},
        {layout("gr", 16, 16),           12, eCS_Linear, layout("rg", 16, 16),           12, 33327},
        {layout("gr", 32, 32),           12, eCS_Linear, layout("rg", 32, 32),           12, 33328},
        {layout("abgr", 16, 16, 16, 16), 8,  eCS_Linear, layout("rgba", 16, 16, 16, 16), 4,  32859},
        {layout("abgr", 16, 16, 16, 16), 12, eCS_Linear, layout("rgba", 16, 16, 16, 16), 12, 34842},
        {layout("abgr", 32, 32, 32, 32), 12, eCS_Linear, layout("rgba", 32, 32, 32, 32), 12, 34836},
        {layout("l", 8),                 8,  eCS_Linear, layout("l", 8),                 0,  32832},
        {layout("a", 8),                 8,  eCS_Linear, layout("a", 8),                 0,  32828},
        {layout("r", 8),                 8,  eCS_Linear, layout("r", 8),                 0,  33321},
        {layout("al", 8, 8),             0,  eCS_Linear, layout("la", 8, 8),             0,  32837},
        {layout("al", 8, 8),             8,  eCS_Linear, layout("la", 8, 8),             0,  32837},
        {layout("l", 16),                8,  eCS_Linear, layout("l", 16),                4,  6409},
        {layout("rgb", 11, 11, 10),      13, eCS_Linear, layout("bgr", 10, 11, 11),      13, 35898},
        // Where no number keeps the space, that is all that is lost.
        {layout("argb", 4, 4, 4, 4),     4,  eCS_sRGB,   rgba4,                          4,  32854},
        {layout("argb", 8, 8, 8, 8),     2,  eCS_sRGB,   rgba8,                          2,  36220},
    };
    // clang-format on
    for (const Row& row : aRows)
    {
        SCOPED_TRACE(testing::Message() << std::hex << row.from.getWord() << " of " << row.uiType);
        const CMOXTexture before = makeTexture(encodingOf(row.from, row.uiType, row.eSpace));
        CMOXTexture after = before;
        ASSERT_TRUE(prepareForKtx(after));
        EXPECT_EQ(encodingOf(row.to, row.uiNewType, row.eSpace), after.getEncoding());
        const bool bSpare = row.to.getChannelLetter(3) == 'x';
        EXPECT_EQ(bSpare ? codesOf(before) : withSpareAsAlpha(codesOf(before)), codesOf(after));

        const Bytes file = saveKtx(after);
        EXPECT_EQ(row.uiInternalFormat, internalFormatOf(file));
        const KtxLoad load = loadKtx(file);
        EXPECT_TRUE(load.bGood);
        EXPECT_EQ(blockOf(after), blockOf(load.texture));
    }
}

TEST(KtxLayouts, WithNumbersOfTheirOwnStay)
{
    struct Row
    {
        MOXPixelWord format;
        uint32_t uiType;
        EMOXTColourSpace eSpace;
        uint32_t uiInternalFormat;
    };
    const Row aRows[] = {
        {layout("rgba", 8, 8, 8, 8), 0, eCS_sRGB, 35907},
        {layout("bgra", 8, 8, 8, 8), 0, eCS_Linear, 32993},
        {layout("l", 16), 4, eCS_Linear, 6409},
        {layout("r", 32), 8, eCS_Linear, 6403},
        {layout("abgr", 2, 10, 10, 10), 8, eCS_Linear, 32857},
        // No number keeps the space, so there is nothing to gain.
        {layout("rgb", 5, 6, 5), 4, eCS_sRGB, 36194},
        {layout("rgb", 16, 16, 16), 12, eCS_sRGB, 34843},
        {ePF_ETC1, 0, eCS_sRGB, 36196},
        {ePF_BC1, 8, eCS_sRGB, 33776},
        {ePF_ASTC_6x6x6, 0, eCS_sRGB, 37865},
        {ePF_Shared_Exponent_RGB999_E5, 12, eCS_Linear, 35901},
        {ePF_DXT2, 0, eCS_Linear, 33778},
    };
    for (const Row& row : aRows)
    {
        SCOPED_TRACE(testing::Message() << std::hex << row.format.getWord());
        const PixelEncoding encoding = encodingOf(row.format, row.uiType, row.eSpace);
        EXPECT_EQ(encoding, findKtxEncoding(encoding));
        const CMOXTexture before = makeTexture(encoding);
        CMOXTexture after = before;
        EXPECT_TRUE(prepareForKtx(after));
        EXPECT_EQ(encoding, after.getEncoding());
        EXPECT_EQ(blockOf(before), blockOf(after));
        EXPECT_EQ(row.uiInternalFormat, internalFormatOf(saveKtx(after)));
    }
}

TEST(KtxLayouts, WithoutAnEqualAreRefusedAndStay)
{
    const PixelEncoding aEncodings[] = {
        encodingOf(layout("al", 4, 4), 0),
        encodingOf(layout("argb", 8, 3, 3, 2), 8),
        encodingOf(layout("argb", 8, 3, 3, 2), 0), // elements that lie over fields
        encodingOf(layout("lgr", 6, 5, 5), 9),
        encodingOf(layout("xlgr", 8, 8, 8, 8), 9),
        encodingOf(layout("abgr", 2, 10, 10, 10), 9),
        encodingOf(layout("i", 8), 0),
        encodingOf(layout("ai", 8, 8), 0),
        encodingOf(layout("rgb", 10, 11, 11), 13),
        encodingOf(layout("r", 16), 13),
        encodingOf(layout("rgba", 8, 8, 8, 8), 14),
        encodingOf(layout("rr", 8, 8), 0),
        encodingOf(ePF_1bpp, 0),
        encodingOf(ePF_UYVY, 0),
        encodingOf(ePF_YUY2, 0),
        encodingOf(ePF_2_Planar_RGBG_8_8_8_8, 0),
        encodingOf(ePF_BC4, 0),
        encodingOf(ePF_BC5, 8),
        encodingOf(ePF_BC7, 0),
        encodingOf(ePF_Count, 0),
        encodingOf(MOXPixelWord(uint64_t{1000}), 0),
        encodingOf(MOXPixelWord(UINT64_MAX), 0),
    };
    for (const PixelEncoding& encoding : aEncodings)
    {
        SCOPED_TRACE(testing::Message() << std::hex << encoding.pixelFormat.getWord());
        EXPECT_FALSE(findKtxEncoding(encoding).has_value());
        CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
        texture.setPixelFormat(encoding.pixelFormat);
        texture.setChannelType(encoding.eChannelType);
        EXPECT_FALSE(prepareForKtx(texture));
        EXPECT_EQ(encoding.pixelFormat, texture.getPixelFormat());
        EXPECT_EQ(4u, texture.getBlockSize());
    }
}

TEST(KtxLayouts, KeepEveryBitOfWhateverMayBeSaved)
{
    // Every order of four, three, two and one channels, every type, both spaces.
    std::string strLetters = "abgr";
    size_t uiSaved = 0;
    do
        for (uint32_t uiType = 0; uiType < k_uiChannelTypeCount; ++uiType)
            for (const EMOXTColourSpace eSpace : {eCS_Linear, eCS_sRGB})
                for (const uint8_t uiBits : {uint8_t{4}, uint8_t{8}, uint8_t{16}, uint8_t{32}})
                    for (size_t uiCount = 1; uiCount <= 4; ++uiCount)
                    {
                        const auto bits = [&](size_t i) { return i < uiCount ? uiBits : uint8_t{0}; };
                        const PixelEncoding encoding = encodingOf(
                            layout(std::string_view(strLetters).substr(0, uiCount), uiBits, bits(1), bits(2), bits(3)), uiType, eSpace);
                        const std::optional<PixelEncoding> found = findKtxEncoding(encoding);
                        if (!found)
                            continue;
                        ++uiSaved;
                        const CMOXTexture before = makeTexture(encoding);
                        CMOXTexture after = before;
                        ASSERT_TRUE(prepareForKtx(after));
                        ASSERT_EQ(codesOf(before), codesOf(after)) << strLetters << uiType;
                        ASSERT_TRUE(findGLFormat(after.getEncoding()).has_value());
                        // The space is kept for unsigned normalised bytes of three and four channels, where there are numbers for it.
                        const KtxLoad load = loadKtx(saveKtx(after));
                        ASSERT_EQ(blockOf(after), blockOf(load.texture));
                        const bool bKept =
                            uiBits == 8 && uiType % 4 == 0 && uiType < 12 && (uiCount == 4 || (uiCount == 3 && strLetters[3] == 'a'));
                        ASSERT_EQ(bKept ? eSpace : eCS_Linear, load.texture.getColourSpace()) << strLetters << uiType;
                    }
    while (std::next_permutation(strLetters.begin(), strLetters.end()));
    EXPECT_GT(uiSaved, 1000u);
}

TEST(KtxLayouts, OfTheEncodeDialogAreSavedButForWhatHasNoEqual)
{
    for (const CatalogueLayout& row : k_aCatalogueLayouts)
        EXPECT_TRUE(findKtxEncoding(row.getEncoding()).has_value()) << row.strLetters << row.uiType;
}

TEST(KtxLayouts, ThatDdsFilesOpenToAreSavedButForWhatHasNoEqual)
{
    // 52, 29, 61, 62 and 67 of the D3D numbers; 111 and 112 of DXGI.
    const MOXPixelWord aWithout[] = {layout("al", 4, 4),         layout("argb", 8, 3, 3, 2), layout("lgr", 6, 5, 5),
                                     layout("xlgr", 8, 8, 8, 8), layout("ai", 4, 4),         layout("ia", 4, 4)};
    const auto check = [&](MOXPixelWord format, uint32_t uiType)
    {
        const bool bWithout = std::find(std::begin(aWithout), std::end(aWithout), format) != std::end(aWithout) ||
                              (format == layout("abgr", 2, 10, 10, 10) && uiType == 9);
        EXPECT_EQ(!bWithout, findKtxEncoding(encodingOf(format, uiType)).has_value()) << std::hex << format.getWord() << " " << uiType;
    };
    for (const D3DReadRow& row : k_aD3DReadRows)
        check(row.pixelFormat, row.uiType);
    for (const DXGIRow& row : k_aDXGIRows)
        if (!row.pixelFormat.isCompressed())
            check(row.pixelFormat, row.uiType);
}

TEST(KtxLayouts, OfAHeaderThatHasChangedSinceAreRefused)
{
    CMOXTexture texture = makeTexture(encodingOf(layout("bgr", 8, 8, 8), 0));
    texture.setHeight(7000);
    EXPECT_FALSE(prepareForKtx(texture));
    EXPECT_EQ(layout("bgr", 8, 8, 8), texture.getPixelFormat());
}
