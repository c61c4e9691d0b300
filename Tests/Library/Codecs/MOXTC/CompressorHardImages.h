#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "CompressorTestImages.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

/// What the fast steps of the compressors are compared with the plain ones on.
namespace compressortest
{

using testsupport::CSeededRandom;

enum class EPixels
{
    eAny,         ///< every byte anything
    eExtreme,     ///< every byte 0 or 255: the greatest errors, and ties everywhere
    eNarrow,      ///< every byte 0, 1 or 2: ties everywhere, and hardly any error
    eFewOutliers, ///< narrow about a middle, with a far byte now and then
    eOnASphere,   ///< all about as far from grey as each other, in many directions
    ePicture,     ///< as a texture has them
    eFlat,
};

constexpr std::array<EPixels, 7> k_AllPixels = {EPixels::eAny,       EPixels::eExtreme, EPixels::eNarrow, EPixels::eFewOutliers,
                                                EPixels::eOnASphere, EPixels::ePicture, EPixels::eFlat};

/// Red and green of points about 100 away from (128, 128), and blue and alpha likewise.
[[nodiscard]] inline uint8_t getSphereByte(CSeededRandom& random, uint32_t& uiLeft)
{
    constexpr std::array<std::array<uint8_t, 2>, 8> aaui8Points = {
        {{228, 128}, {199, 199}, {128, 228}, {57, 199}, {28, 128}, {57, 57}, {128, 28}, {199, 57}}};
    if (uiLeft < 2)
        uiLeft = 2 * (1 + random.below(8));
    const uint8_t ui8Byte = aaui8Points[uiLeft / 2 - 1][uiLeft & 1];
    uiLeft = (uiLeft & 1) == 0 ? uiLeft + 1 : 0;
    return ui8Byte;
}

/// @return uiWidth * uiHeight pixels of four bytes
[[nodiscard]] inline std::vector<uint8_t> makeHardBytes(EPixels ePixels, uint32_t uiWidth, uint32_t uiHeight, CSeededRandom& random)
{
    if (ePixels == EPixels::ePicture)
        return testsupport::makePicture(uiWidth, uiHeight, random.next64());
    std::vector<uint8_t> bytes(size_t{uiWidth} * uiHeight * 4, 77);
    uint32_t uiSphere = 0;
    for (uint8_t& ui8Byte : bytes)
    {
        switch (ePixels)
        {
        case EPixels::eAny:
            ui8Byte = static_cast<uint8_t>(random.below(256));
            break;
        case EPixels::eExtreme:
            ui8Byte = random.below(2) == 0 ? 0 : 255;
            break;
        case EPixels::eNarrow:
            ui8Byte = static_cast<uint8_t>(random.below(3));
            break;
        case EPixels::eFewOutliers:
            ui8Byte = static_cast<uint8_t>(random.below(16) == 0 ? random.below(256) : 100 + random.below(8));
            break;
        case EPixels::eOnASphere:
            ui8Byte = getSphereByte(random, uiSphere);
            break;
        default:
            break;
        }
    }
    return bytes;
}

/// Pixels of random kinds as a picture of colours.
inline void fillRandomly(std::vector<uint32_t>& pixels, EPixels ePixels, CSeededRandom& random)
{
    const std::vector<uint8_t> bytes = makeHardBytes(ePixels, static_cast<uint32_t>(pixels.size()), 1, random);
    std::memcpy(pixels.data(), bytes.data(), bytes.size());
}

/// Pictures with source, colours and upscaled pictures of any pixels of one kind, the upscaled ones not made from the colours.
template <typename Record>
[[nodiscard]] CompressorImages makeHardImages(EPixels ePixels, uint32_t uiBlocksX, uint32_t uiBlocksY, CSeededRandom& random)
{
    const uint32_t uiWidth = uiBlocksX * Record::k_uiBlockWidth;
    const uint32_t uiHeight = uiBlocksY * 4;
    CompressorImages images = moxtexture::makeCompressorImages(makeHardBytes(ePixels, uiWidth, uiHeight, random).data(), uiWidth, uiHeight,
                                                               Record::k_uiBlockWidth);
    fillRandomly(images.colourA, ePixels, random);
    fillRandomly(images.colourB, ePixels, random);
    fillRandomly(images.upscaledA, ePixels, random);
    fillRandomly(images.upscaledB, ePixels, random);
    return images;
}

/// A part of the grid with at least one block.
[[nodiscard]] inline moxtexture::BlockRegion makeRandomRegion(const CompressorImages& images, CSeededRandom& random)
{
    moxtexture::BlockRegion region{};
    region.uiX0 = random.below(images.uiBlocksX);
    region.uiX1 = region.uiX0 + 1 + random.below(images.uiBlocksX - region.uiX0);
    region.uiY0 = random.below(images.uiBlocksY);
    region.uiY1 = region.uiY0 + 1 + random.below(images.uiBlocksY - region.uiY0);
    return region;
}

/// Codes 0 to 3 everywhere and any mode.
inline void fillRandomly(moxtexture::BlockRecord2bpp& record, CSeededRandom& random)
{
    for (uint8_t& ui8Code : record.aui8DirectCodes)
        ui8Code = random.below(2) == 0 ? 0 : 3;
    for (uint8_t& ui8Code : record.aui8InterpolatedCodes)
        ui8Code = static_cast<uint8_t>(random.below(4));
    record.ui8Mode = static_cast<uint8_t>(random.below(4));
}

inline void fillRandomly(moxtexture::BlockRecord4bpp& record, CSeededRandom& random)
{
    for (uint8_t& ui8Code : record.aui8StandardCodes)
        ui8Code = static_cast<uint8_t>(random.below(4));
    for (uint8_t& ui8Code : record.aui8PunchThroughCodes)
        ui8Code = static_cast<uint8_t>(random.below(4));
    record.uiMode = random.below(2);
}

template <typename Record>
[[nodiscard]] std::vector<Record> makeRandomRecords(const CompressorImages& images, CSeededRandom& random)
{
    std::vector<Record> records(images.getBlockCount());
    for (Record& record : records)
        fillRandomly(record, random);
    return records;
}

/// Calls body(images, random) with makeHardImages of every kind of pixels, in grids of many shapes: one block, one row, one column,
/// all that a vector's end falls on, and longer than a run.
template <typename Record, typename Body>
void forEachHardGrid(Body body)
{
    CSeededRandom random(2026);
    for (const EPixels ePixels : k_AllPixels)
    {
        const auto callBody = [&](uint32_t uiBlocksX, uint32_t uiBlocksY)
        {
            SCOPED_TRACE(testing::Message() << "pixels of kind " << static_cast<int>(ePixels) << ", " << uiBlocksX << " by " << uiBlocksY);
            body(makeHardImages<Record>(ePixels, uiBlocksX, uiBlocksY, random), random);
        };
        for (uint32_t uiBlocksX = 1; uiBlocksX <= 17; ++uiBlocksX)
            callBody(uiBlocksX, 1 + random.below(3));
        callBody(127 + random.below(5), 1);
        callBody(1, 9);
    }
}

} // namespace compressortest
