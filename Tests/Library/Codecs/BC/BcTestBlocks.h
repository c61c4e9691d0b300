#pragma once

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "Codecs/BC/BcBlockRow.h"
#include "Core/ByteOrder.h"
#include "Support/SeededPictures.h"

namespace bctest
{

using moxtexture::BcPixels;
using testsupport::CSeededRandom;

[[nodiscard]] constexpr uint32_t rgba(uint32_t uiRed, uint32_t uiGreen, uint32_t uiBlue, uint32_t uiAlpha = 255)
{
    return uiRed | uiGreen << 8 | uiBlue << 16 | uiAlpha << 24;
}

[[nodiscard]] constexpr uint32_t grey(uint32_t uiLevel, uint32_t uiAlpha = 255)
{
    return rgba(uiLevel, uiLevel, uiLevel, uiAlpha);
}

[[nodiscard]] inline BcPixels flatBlock(uint32_t uiPixel)
{
    BcPixels pixels;
    pixels.fill(uiPixel);
    return pixels;
}

/// An opaque block of sixteen colours as 0xRRGGBB.
[[nodiscard]] inline BcPixels opaqueBlock(const std::array<uint32_t, 16>& auiColours)
{
    BcPixels pixels;
    std::transform(auiColours.begin(), auiColours.end(), pixels.begin(),
                   [](uint32_t uiColour) { return rgba(uiColour >> 16, uiColour >> 8 & 0xFF, uiColour & 0xFF); });
    return pixels;
}

/// The surface of Tests/Data/BcBlocks, whose files come from MakeBcFixtures.py.
constexpr uint32_t k_uiFixtureWidth = 31;
constexpr uint32_t k_uiFixtureHeight = 38;

/// A file of that folder; empty if it can't be read.
[[nodiscard]] inline std::vector<uint8_t> readFixture(const std::string& strName)
{
    std::ifstream file(std::string(HALVANE_SOURCE_DIR) + "/Tests/Data/BcBlocks/" + strName, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

[[nodiscard]] inline std::vector<uint8_t> readFixture(uint32_t uiType, const std::string& strEnding)
{
    return readFixture("type" + std::to_string(uiType) + strEnding);
}

/// The indices of a colour part from sixteen numbers in row order.
[[nodiscard]] inline uint32_t packIndices(const std::array<uint32_t, 16>& indices)
{
    uint32_t uiBits = 0;
    for (uint32_t i = 0; i < 16; ++i)
        uiBits |= indices[i] << 2 * i;
    return uiBits;
}

/// The 8 bytes of a colour part as a number.
[[nodiscard]] constexpr uint64_t colourPart(uint64_t uiColour0, uint64_t uiColour1, uint64_t uiIndices)
{
    return uiColour0 | uiColour1 << 16 | uiIndices << 32;
}

/// A block around the mean (160, 31, 0), symmetrical so that its axis is exactly (1, 1, 0) / sqrt 2, whose colours lie up to 140
/// and -140 along (1, 1): the end points are (230, 101, 0) and (90, -39, 0), the latter clamped to (90, 0, 0).
/// 5:6:5: 28, 25, 0 is 0xE320, and 11, 0, 0 is 0x5800.
///
/// With d = (-140, -101) and |d|^2 = 29801, the place of a pixel is t = (pixel - (230, 101)) . d / 29801:
///
///     first pixel (0, 51)      37250 / 29801 = 1.2500   3 t + 0.5 = 4.25   beyond step 3: left out
///     second      (140, 191)    3510 / 29801 = 0.1178               0.85   step 0, index 0
///     six times   (190, 1)     15700 / 29801 = 0.5268               2.08   step 2, index 3
///     four times  (130, 1)     24100 / 29801 = 0.8087               2.93   step 2, index 3
///     four times  (190, 61)     9640 / 29801 = 0.3235               1.47   step 1, index 2
[[nodiscard]] inline BcPixels blockWithFirstIndexLeftOut()
{
    BcPixels pixels;
    pixels[0] = rgba(0, 51, 0);
    pixels[1] = rgba(140, 191, 0);
    std::fill_n(pixels.begin() + 2, 6, rgba(190, 1, 0));
    std::fill_n(pixels.begin() + 8, 4, rgba(130, 1, 0));
    std::fill_n(pixels.begin() + 12, 4, rgba(190, 61, 0));
    return pixels;
}

/// The colour part of that block, its first index given.
[[nodiscard]] inline uint64_t partWithFirstIndexLeftOut(uint32_t uiFirstIndex)
{
    return colourPart(0xE320, 0x5800, packIndices({uiFirstIndex, 0, 3, 3, 3, 3, 3, 3, 3, 3, 3, 3, 2, 2, 2, 2}));
}

/// The same turned about: mean (95, 225, 0), end points (25, 155, 0), which is 0x1CC0, and (165, 295, 0), clamped to
/// (165, 255, 0), which is 0xA7E0. The last four pixels are transparent, so the lesser number is colour 0, and with
/// d = (140, 100), |d|^2 = 29600, the place of a pixel is t = (pixel - (25, 155)) . d / 29600:
///
///     first pixel (255, 205)   37200 / 29600 = 1.2568   2 t + 0.5 = 3.01   beyond step 2: left out
///     second      (115, 65)     3600 / 29600 = 0.1216               0.74   step 0, index 0
///     six times   (65, 255)    15600 / 29600 = 0.5270               1.55   step 1, index 2
///     four times  (125, 255)   24000 / 29600 = 0.8108               2.12   step 2, index 1
///     four times  (65, 195)    transparent, index 3
[[nodiscard]] inline BcPixels transparentBlockWithFirstIndexLeftOut()
{
    BcPixels pixels;
    pixels[0] = rgba(255, 205, 0);
    pixels[1] = rgba(115, 65, 0);
    std::fill_n(pixels.begin() + 2, 6, rgba(65, 255, 0));
    std::fill_n(pixels.begin() + 8, 4, rgba(125, 255, 0));
    std::fill_n(pixels.begin() + 12, 4, rgba(65, 195, 0, 127));
    return pixels;
}

[[nodiscard]] inline uint64_t transparentPartWithFirstIndexLeftOut(uint32_t uiFirstIndex)
{
    return colourPart(0x1CC0, 0xA7E0, packIndices({uiFirstIndex, 0, 2, 2, 2, 2, 2, 2, 1, 1, 1, 1, 3, 3, 3, 3}));
}

/// Fills a block with random pixels of one kind.
using BlockKind = std::function<void(CSeededRandom&, BcPixels&)>;

/// Kinds of block that a fit may stumble over; alphas are left at 255 and set by makeHardBlocks.
[[nodiscard]] inline std::vector<BlockKind> getHardKinds()
{
    const auto channel = [](int iValue) { return static_cast<uint32_t>(std::clamp(iValue, 0, 255)); };
    return {
        [](CSeededRandom& random, BcPixels& pixels) // anything
        {
            for (uint32_t& uiPixel : pixels)
                uiPixel = random.next32() | 0xFF000000;
        },
        [](CSeededRandom& random, BcPixels& pixels) { pixels = flatBlock(random.next32() | 0xFF000000); },
        [](CSeededRandom& random, BcPixels& pixels) // two colours
        {
            const uint32_t aui[2] = {random.next32() | 0xFF000000, random.next32() | 0xFF000000};
            for (uint32_t& uiPixel : pixels)
                uiPixel = aui[random.below(2)];
        },
        [](CSeededRandom& random, BcPixels& pixels) // flat in 5:6:5 or nearly so
        {
            const uint32_t uiBase = random.next32();
            for (uint32_t& uiPixel : pixels)
                uiPixel = (uiBase ^ (random.next32() & 0x000F0F0F)) | 0xFF000000;
        },
        [channel](CSeededRandom& random, BcPixels& pixels) // a gradient
        {
            const int iStart = static_cast<int>(random.below(256));
            const int iAcross = static_cast<int>(random.below(64)) - 32;
            const int iDown = static_cast<int>(random.below(64)) - 32;
            for (int i = 0; i < 16; ++i)
            {
                const int iLevel = iStart + i % 4 * iAcross + i / 4 * iDown;
                pixels[static_cast<size_t>(i)] = rgba(channel(iLevel), channel(iLevel / 2 + 60), channel(255 - iLevel));
            }
        },
        [channel](CSeededRandom& random, BcPixels& pixels) // nearly on a line
        {
            const int aiWay[3] = {static_cast<int>(random.below(511)) - 255, static_cast<int>(random.below(511)) - 255,
                                  static_cast<int>(random.below(511)) - 255};
            for (uint32_t& uiPixel : pixels)
            {
                const int iPlace = static_cast<int>(random.below(17)) - 8;
                const auto at = [&](int iAxis) { return channel(128 + iPlace * aiWay[iAxis] / 16 + static_cast<int>(random.below(3))); };
                uiPixel = rgba(at(0), at(1), at(2));
            }
        },
        [](CSeededRandom& random, BcPixels& pixels) // the corners of the cube, which are clamped most
        {
            for (uint32_t& uiPixel : pixels)
                uiPixel = rgba(random.below(2) * 255, random.below(2) * 255, random.below(2) * 255);
        },
        [](CSeededRandom& random, BcPixels& pixels) // one sum of channels: the first step gives 0
        {
            for (uint32_t& uiPixel : pixels)
            {
                const uint32_t uiRed = random.below(8) * 32;
                uiPixel = rgba(uiRed, 255 - uiRed, 100);
            }
        },
        [](CSeededRandom& random, BcPixels& pixels) // two directions of nearly the same spread: many steps
        {
            for (uint32_t i = 0; i < 16; ++i)
                pixels[i] = rgba(100 + i / 4 * 16 + random.below(2), 100 + i % 4 * 16 + random.below(2), random.below(4));
        },
        [](CSeededRandom& random, BcPixels& pixels) // an index is left out
        { pixels = random.below(2) == 0 ? blockWithFirstIndexLeftOut() : transparentBlockWithFirstIndexLeftOut(); },
        [](CSeededRandom& random, BcPixels& pixels) // the same block turned over: another place is left out
        {
            pixels = blockWithFirstIndexLeftOut();
            std::swap(pixels[0], pixels[random.below(16)]);
        },
    };
}

/// A row of random blocks of all hard kinds; a third of them opaque, a third with any alphas, a third with few.
[[nodiscard]] inline std::vector<BcPixels> makeHardBlocks(size_t uiCount, uint64_t ui64Seed)
{
    static const std::vector<BlockKind> kinds = getHardKinds();
    CSeededRandom random(ui64Seed);
    std::vector<BcPixels> blocks(uiCount);
    for (BcPixels& pixels : blocks)
    {
        kinds[random.below(static_cast<uint32_t>(kinds.size()))](random, pixels);
        const uint32_t uiAlphaKind = random.below(3);
        const uint32_t uiAlpha = random.below(256);
        for (uint32_t& uiPixel : pixels)
        {
            if (uiAlphaKind == 1)
                uiPixel = (uiPixel & 0x00FFFFFF) | random.next32() << 24;
            else if (uiAlphaKind == 2)
                uiPixel = (uiPixel & 0x00FFFFFF) | (uiAlpha + random.below(2)) << 24;
        }
    }
    return blocks;
}

/// The blocks as an image, uiAcross of them to a row of blocks.
[[nodiscard]] inline std::vector<uint8_t> layOutBlocks(const std::vector<BcPixels>& blocks, size_t uiAcross)
{
    std::vector<uint8_t> image(blocks.size() * 64);
    for (size_t uiBlock = 0; uiBlock < blocks.size(); ++uiBlock)
        for (size_t i = 0; i < 16; ++i)
        {
            const size_t y = uiBlock / uiAcross * 4 + i / 4;
            const size_t x = uiBlock % uiAcross * 4 + i % 4;
            moxtexture::storeLE(image.data() + (y * uiAcross * 4 + x) * 4, blocks[uiBlock][i]);
        }
    return image;
}

} // namespace bctest
