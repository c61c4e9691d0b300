#include "Codecs/ETC/EtcPunchThrough.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastETC2.h"
#include "Codecs/ETC/EtcHModes.h"
#include "Codecs/ETC/EtcQuantise.h"
#include "Codecs/ETC/EtcTModes.h"
#include "Codecs/ETC/EtcTables.h"
#include "Core/Diagnostics.h"

namespace moxtexture
{

namespace
{

constexpr uint8_t k_ui8LeastOpaque = 128;
constexpr float k_fTransparentWeight = 0.0001f;
constexpr uint32_t k_uiStartOfPixel = 390150; ///< 6 * 255^2, above any squared error
constexpr uint32_t k_uiTransparentPosition = 1;
constexpr uint32_t k_uiBasePosition = 2; ///< in transparent mode

bool isFirstHalf(size_t uiX, size_t uiY, bool bFlip)
{
    return (bFlip ? uiY : uiX) < 2;
}

/// The weighted means of both halves, summed row by row in floats.
std::array<EtcMean, 2> weighHalves(const EtcPixels& pixels, const EtcAlphas& alphas, bool bFlip)
{
    std::array<EtcMean, 2> aSums{};
    std::array<float, 2> afWeights{};
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            const size_t i = etcPixelIndex(x, y);
            const size_t uiHalf = isFirstHalf(x, y, bFlip) ? 0 : 1;
            const float fWeight = alphas.aui8[i] < k_ui8LeastOpaque ? k_fTransparentWeight : 1.0f;
            afWeights[uiHalf] += fWeight;
            aSums[uiHalf][0] += fWeight * static_cast<float>(pixels.aui8Red[i]);
            aSums[uiHalf][1] += fWeight * static_cast<float>(pixels.aui8Green[i]);
            aSums[uiHalf][2] += fWeight * static_cast<float>(pixels.aui8Blue[i]);
        }
    for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
        for (float& fChannel : aSums[uiHalf])
            fChannel /= afWeights[uiHalf];
    return aSums;
}

struct Levels
{
    std::array<EtcColour, 2> aLevels;
    std::array<EtcColour, 2> aBytes;
};

/// The levels of the halves' means, the second's brought within reach of the first's.
Levels chooseLevels(const EtcPixels& pixels, const EtcAlphas& alphas, bool bFlip)
{
    const std::array<EtcMean, 2> aMeans = weighHalves(pixels, alphas, bFlip);
    const EtcQuantised first = quantiseCombined555(aMeans[0]);
    EtcQuantised second = quantiseCombined555(aMeans[1]);
    for (size_t c = 0; c < 3; ++c)
    {
        const int32_t iDelta = std::clamp(int32_t{second.levels[c]} - int32_t{first.levels[c]}, -4, 3);
        second.levels[c] = static_cast<uint8_t>(first.levels[c] + iDelta);
        second.bytes[c] = static_cast<uint8_t>(expandEtc5(second.levels[c]));
    }
    return {{first.levels, second.levels}, {first.bytes, second.bytes}};
}

uint32_t square(int32_t iValue)
{
    return static_cast<uint32_t>(iValue * iValue);
}

EtcDifferentialA1 searchSplit(const EtcPixels& pixels, const EtcAlphas& alphas, bool bTransparentMode, bool bFlip)
{
    const Levels levels = chooseLevels(pixels, alphas, bFlip);
    std::array<uint32_t, 2> auiBest = {k_uiEtcMaxPlainError, k_uiEtcMaxPlainError};
    std::array<uint32_t, 2> auiTables{};
    std::array<uint32_t, 2> aui32Indices{};
    for (uint32_t uiTable = 0; uiTable < 8; ++uiTable)
    {
        std::array<uint32_t, 2> auiErrors{};
        std::array<uint32_t, 2> aui32TableIndices{};
        for (uint32_t x = 0; x < 4; ++x)
            for (uint32_t y = 0; y < 4; ++y)
            {
                const size_t i = etcPixelIndex(x, y);
                const size_t uiHalf = isFirstHalf(x, y, bFlip) ? 0 : 1;
                const EtcColour& base = levels.aBytes[uiHalf];
                uint32_t uiLeast = k_uiStartOfPixel;
                uint32_t uiLeastPosition = 0;
                for (uint32_t uiPosition = 0; uiPosition < 4; ++uiPosition)
                {
                    if (bTransparentMode && uiPosition == k_uiTransparentPosition)
                        continue;
                    const bool bBase = bTransparentMode && uiPosition == k_uiBasePosition;
                    const int32_t iModifier = bBase ? 0 : k_aaiEtcModifiers[uiTable][uiPosition];
                    const uint32_t uiError = square(std::clamp(base[0] + iModifier, 0, 255) - pixels.aui8Red[i]) +
                                             square(std::clamp(base[1] + iModifier, 0, 255) - pixels.aui8Green[i]) +
                                             square(std::clamp(base[2] + iModifier, 0, 255) - pixels.aui8Blue[i]);
                    if (uiError < uiLeast)
                    {
                        uiLeast = uiError;
                        uiLeastPosition = uiPosition;
                    }
                }
                if (alphas.aui8[i] < k_ui8LeastOpaque)
                    uiLeastPosition = k_uiTransparentPosition;
                else
                    auiErrors[uiHalf] += uiLeast;
                const uint32_t uiIndex = k_aui8EtcIndexOfPosition[uiLeastPosition];
                aui32TableIndices[uiHalf] |= ((uiIndex >> 1) << 16 | (uiIndex & 1)) << etcIndexBit(x, y);
            }
        for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
            if (auiErrors[uiHalf] < auiBest[uiHalf])
            {
                auiBest[uiHalf] = auiErrors[uiHalf];
                auiTables[uiHalf] = uiTable;
                aui32Indices[uiHalf] = aui32TableIndices[uiHalf];
            }
    }
    EtcBlockWords block =
        packDifferential(levels.aLevels[0], levels.aLevels[1], bFlip, auiTables[0], auiTables[1], aui32Indices[0] | aui32Indices[1]);
    if (bTransparentMode)
        block.ui32High &= ~k_ui32EtcDiffBit;
    return {block, auiBest[0] + auiBest[1]};
}

} // namespace

EtcDifferentialA1 differentialBlockA1(const EtcPixels& pixels, const EtcAlphas& alphas, bool bTransparentMode)
{
    const EtcDifferentialA1 upright = searchSplit(pixels, alphas, bTransparentMode, false);
    const EtcDifferentialA1 flipped = searchSplit(pixels, alphas, bTransparentMode, true);
    return flipped.uiError < upright.uiError ? flipped : upright;
}

EtcBlockWords hFastA1(const EtcPixels& pixels, const EtcAlphas& alphas, const EtcColourPair& halfIntensity)
{
    EtcModeFit fit = hBlockErrorA1(pixels, alphas, orderForH(quantise444Pair(halfIntensity)));
    settleHOrder(fit);
    return packH(fit);
}

void etcFastBlockETC2A1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcBlockWords& block)
{
    EtcAlphas decodedAlphas;
    const EtcDifferentialA1 transparent = differentialBlockA1(pixels, alphas, true);
    block = transparent.block;
    double fError = blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1Differential(block, decodedAlphas));
    if (fError != transparent.uiError)
    {
        // Pixels with an alpha of exactly 128 count in the search and not in the measure.
        std::array<char, 64> acText;
        std::snprintf(acText.data(), acText.size(), "testerr: %d, etcerr: %f\n", static_cast<int>(transparent.uiError), fError);
        writeDiagnostic(acText.data());
    }

    const EtcColourPair halfIntensity = lbgHalfIntensity(pixels);
    const EtcBlockWords compactBlockT = packT(tBlockErrorA1(pixels, alphas, quantise444Pair(halfIntensity)));
    const double fT = blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1T(compactBlockT, decodedAlphas));
    if (fT < fError)
    {
        fError = fT;
        block = stuffT(compactBlockT, false);
    }
    const EtcBlockWords compactBlockH = hFastA1(pixels, alphas, halfIntensity);
    const double fH = blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1H(compactBlockH, decodedAlphas));
    if (fH < fError)
    {
        fError = fH;
        block = stuffH(compactBlockH, false);
    }
    if (std::any_of(alphas.aui8.begin(), alphas.aui8.end(), [](uint8_t ui8Alpha) { return ui8Alpha < k_ui8LeastOpaque; }))
        return;

    const EtcDifferentialA1 opaque = differentialBlockA1(pixels, alphas, false);
    const double fOpaque = blockErrorRGB(pixels, decodeEtcPixelsETC1(opaque.block));
    if (fOpaque < fError)
    {
        fError = fOpaque;
        block = opaque.block;
    }
    etcTryPlanarTH(pixels, halfIntensity, fError, block);
}

} // namespace moxtexture
