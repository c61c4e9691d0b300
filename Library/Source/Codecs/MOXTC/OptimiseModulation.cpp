#include "Codecs/MOXTC/OptimiseModulation.h"

#include <cstddef>

#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{
namespace
{

/// The source and the two upscaled pictures under one block.
template <size_t uiPixels>
struct BlockPixels
{
    std::array<uint32_t, uiPixels> auiSource;
    std::array<uint32_t, uiPixels> auiA;
    std::array<uint32_t, uiPixels> auiB;
};

template <typename Record>
using PixelsOf = BlockPixels<Record::k_uiPixels>;

template <typename Record>
PixelsOf<Record> loadBlockPixels(const CompressorImages& images, uint32_t uiBlockX, uint32_t uiBlockY)
{
    PixelsOf<Record> pixels;
    const size_t uiFirst = images.getFirstPixel(uiBlockX, uiBlockY);
    for (size_t i = 0; i < Record::k_uiPixels; ++i)
    {
        const size_t uiPlace = uiFirst + i / Record::k_uiBlockWidth * images.uiWidth + i % Record::k_uiBlockWidth;
        pixels.auiSource[i] = images.source[uiPlace];
        pixels.auiA[i] = images.upscaledA[uiPlace];
        pixels.auiB[i] = images.upscaledB[uiPlace];
    }
    return pixels;
}

/// The code of least squared error for pixel i, the lowest of equals.
template <size_t uiPixels>
uint8_t findBestCode(const BlockPixels<uiPixels>& pixels, size_t i, const WeightTable& weights)
{
    uint8_t ui8Best = 0;
    int32_t iLeast = getBlendError(pixels.auiSource[i], pixels.auiA[i], pixels.auiB[i], weights[0]);
    for (size_t uiCode = 1; uiCode < weights.size(); ++uiCode)
    {
        const int32_t iError = getBlendError(pixels.auiSource[i], pixels.auiA[i], pixels.auiB[i], weights[uiCode]);
        if (iError < iLeast)
        {
            iLeast = iError;
            ui8Best = static_cast<uint8_t>(uiCode);
        }
    }
    return ui8Best;
}

/// Error of a block as a mode shows it: of at most 32 pixels of four channels, each off by 318 or less.
template <size_t uiPixels>
int32_t getBlockError(const BlockPixels<uiPixels>& pixels, const std::array<uint8_t, uiPixels>& weights)
{
    int32_t iError = 0;
    for (size_t i = 0; i < uiPixels; ++i)
        iError += getBlendError(pixels.auiSource[i], pixels.auiA[i], pixels.auiB[i], weights[i]);
    return iError;
}

/// Gives the record the mode of least error times factor, the lowest of equals.
template <typename Record, typename Mode>
void chooseMode(const PixelsOf<Record>& pixels, Record& record, Mode Record::*pMode)
{
    Mode best = 0;
    int64_t i64Least = 0;
    for (uint32_t uiMode = 0; uiMode < record.aui8ModeFactors.size(); ++uiMode)
    {
        record.*pMode = static_cast<Mode>(uiMode);
        const int64_t i64Error = int64_t{getBlockError(pixels, getBlockWeights(record))} * record.aui8ModeFactors[uiMode];
        if (uiMode == 0 || i64Error < i64Least)
        {
            i64Least = i64Error;
            best = static_cast<Mode>(uiMode);
        }
    }
    record.*pMode = best;
}

void optimiseBlock(const PixelsOf<BlockRecord2bpp>& pixels, BlockRecord2bpp& record)
{
    for (uint32_t i = 0; i < BlockRecord2bpp::k_uiPixels; ++i)
    {
        const bool bNearerA =
            getSquaredDistance(pixels.auiSource[i], pixels.auiA[i]) < getSquaredDistance(pixels.auiSource[i], pixels.auiB[i]);
        record.aui8DirectCodes[i] = bNearerA ? 0 : 3;
        if (isStoredPosition(i % BlockRecord2bpp::k_uiBlockWidth, i / BlockRecord2bpp::k_uiBlockWidth))
            record.aui8InterpolatedCodes[i] = findBestCode(pixels, i, k_aui8StandardWeights);
    }
    chooseMode(pixels, record, &BlockRecord2bpp::ui8Mode);
}

void optimiseBlock(const PixelsOf<BlockRecord4bpp>& pixels, BlockRecord4bpp& record)
{
    for (size_t i = 0; i < BlockRecord4bpp::k_uiPixels; ++i)
    {
        record.aui8StandardCodes[i] = findBestCode(pixels, i, k_aui8StandardWeights);
        record.aui8PunchThroughCodes[i] = findBestCode(pixels, i, k_aui8PunchThroughWeightsMOXTCII);
    }
    chooseMode(pixels, record, &BlockRecord4bpp::uiMode);
}

template <typename Record>
void optimiseRegion(const CompressorImages& images, std::vector<Record>& blockData, const BlockRegion& region)
{
    for (uint32_t y = region.uiY0; y < region.uiY1; ++y)
        for (uint32_t x = region.uiX0; x < region.uiX1; ++x)
            optimiseBlock(loadBlockPixels<Record>(images, x, y), blockData[images.getBlockIndex(x, y)]);
}

} // namespace

void optimiseModulationReference(const CompressorImages& images, std::vector<BlockRecord2bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData, region);
}

void optimiseModulationReference(const CompressorImages& images, std::vector<BlockRecord4bpp>& blockData, const BlockRegion& region)
{
    optimiseRegion(images, blockData, region);
}

} // namespace moxtexture
