#include "Codecs/ETC/EtcPunchThrough.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcDecodeBlock.h"
#include "Codecs/ETC/EtcErrors.h"
#include "Codecs/ETC/EtcFastETC2.h"
#include "Codecs/ETC/EtcFastModes.h"
#include "Codecs/ETC/EtcQuantise.h"
#include "Core/Diagnostics.h"

namespace moxtexture
{

namespace
{

constexpr uint8_t k_ui8LeastOpaque = 128;
constexpr float k_fTransparentWeight = 0.0001f;

/// A half's red, green and blue in floats, and its weight.
using HalfSums = std::array<float, 4>;

/// The weighted means of the four halves of a block: left and right, top and bottom. Each sum runs row by row.
std::array<std::array<EtcMean, 2>, 2> weighHalves(const EtcPixels& pixels, const EtcAlphas& alphas)
{
    std::array<std::array<HalfSums, 2>, 2> aaSums{};
    for (size_t y = 0; y < 4; ++y)
        for (size_t x = 0; x < 4; ++x)
        {
            const size_t i = etcPixelIndex(x, y);
            const float fWeight = alphas.aui8[i] < k_ui8LeastOpaque ? k_fTransparentWeight : 1.0f;
            const HalfSums terms = {fWeight * pixels.aui8Red[i], fWeight * pixels.aui8Green[i], fWeight * pixels.aui8Blue[i], fWeight};
            for (size_t c = 0; c < terms.size(); ++c)
                aaSums[0][x / 2][c] += terms[c];
            for (size_t c = 0; c < terms.size(); ++c)
                aaSums[1][y / 2][c] += terms[c];
        }
    std::array<std::array<EtcMean, 2>, 2> aaMeans;
    for (size_t uiSplit = 0; uiSplit < 2; ++uiSplit)
        for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
            for (size_t c = 0; c < 3; ++c)
                aaMeans[uiSplit][uiHalf][c] = aaSums[uiSplit][uiHalf][c] / aaSums[uiSplit][uiHalf][3];
    return aaMeans;
}

/// The error of pixels that all become transparent, which are decoded as black.
double measureBlack(const EtcPixels& pixels, const EtcAlphas& alphas)
{
    constexpr EtcPixels black{};
    return blockErrorRGBA(pixels, alphas, black);
}

} // namespace

EtcDifferentialStartA1::EtcDifferentialStartA1(const EtcPixels& pixels, const EtcAlphas& alphas)
{
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
            ui32Transparent |= (alphas.aui8[etcPixelIndex(x, y)] < k_ui8LeastOpaque ? 1u : 0u) << etcIndexBit(x, y);

    const std::array<std::array<EtcMean, 2>, 2> aaMeans = weighHalves(pixels, alphas);
    for (size_t uiSplit = 0; uiSplit < 2; ++uiSplit)
    {
        const EtcQuantised first = quantiseCombined555(aaMeans[uiSplit][0]);
        EtcQuantised second = quantiseCombined555(aaMeans[uiSplit][1]);
        for (size_t c = 0; c < 3; ++c)
        {
            const int32_t iDelta = std::clamp(int32_t{second.levels[c]} - int32_t{first.levels[c]}, -4, 3);
            second.levels[c] = static_cast<uint8_t>(first.levels[c] + iDelta);
            second.bytes[c] = static_cast<uint8_t>(expandEtc5(second.levels[c]));
        }
        aaLevels[uiSplit] = {first.levels, second.levels};
        bases[uiSplit] = {first.bytes, second.bytes};
    }
}

EtcDifferentialA1 differentialBlockA1(const EtcPixels& pixels, const EtcDifferentialStartA1& start, bool bTransparentMode)
{
    const EtcSplitA1 split = findSplitA1(pixels, start.ui32Transparent, start.bases, bTransparentMode);
    const EtcColourPair& levels = start.aaLevels[split.bFlip ? 1 : 0];
    EtcBlockWords block = packDifferential(levels[0], levels[1], split.bFlip, split.auiTables[0], split.auiTables[1], split.ui32Indices);
    if (bTransparentMode)
        block.ui32High &= ~k_ui32EtcDiffBit;
    return {block, split.uiError};
}

void etcFastBlockETC2A1(const EtcPixels& pixels, const EtcAlphas& alphas, EtcBlockWords& block)
{
    // Where no alpha is from 1 to 128, transparent pixels and pixels that don't count are the same, and the errors of the searches
    // are those of the decoded blocks.
    const bool bSearchesMeasure =
        std::all_of(alphas.aui8.begin(), alphas.aui8.end(), [](uint8_t ui8Alpha) { return ui8Alpha == 0 || ui8Alpha > k_ui8LeastOpaque; });
    EtcAlphas decodedAlphas;

    const EtcDifferentialStartA1 start(pixels, alphas);
    const EtcDifferentialA1 transparent = differentialBlockA1(pixels, start, true);
    block = transparent.block;
    double fError = transparent.uiError;
    if (!bSearchesMeasure)
    {
        fError = blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1Differential(block, decodedAlphas));
        if (fError != transparent.uiError)
        {
            // Pixels with an alpha of exactly 128 count in the search and not in the measure.
            std::array<char, 64> acText;
            std::snprintf(acText.data(), acText.size(), "testerr: %d, etcerr: %f\n", static_cast<int>(transparent.uiError), fError);
            writeDiagnostic(acText.data());
        }
    }

    const EtcColourPair halfIntensity = lbgHalfIntensity(pixels);
    const EtcFastModes modes = fitFastModesA1(pixels, alphas, halfIntensity);
    if (!bSearchesMeasure || modes.t.uiError < fError)
    {
        const EtcBlockWords compact = makeFastTA1(pixels, alphas, modes.t);
        const double fT = blockErrorRGBA(pixels, alphas, decodeEtcPixelsA1T(compact, decodedAlphas));
        if (fT < fError)
        {
            fError = fT;
            block = stuffT(compact, false);
        }
    }
    // On purpose: the H search makes every pixel with an alpha transparent, whatever the colours, and no other pixel counts.
    const double fH = measureBlack(pixels, alphas);
    if (fH < fError)
    {
        fError = fH;
        block = stuffH(makeFastHA1(pixels, alphas, modes.h), false);
    }
    if (start.ui32Transparent != 0)
        return;

    const EtcDifferentialA1 opaque = differentialBlockA1(pixels, start, false);
    if (opaque.uiError < fError)
    {
        fError = opaque.uiError;
        block = opaque.block;
    }
    etcTryPlanarTH(pixels, halfIntensity, fError, block);
}

} // namespace moxtexture
