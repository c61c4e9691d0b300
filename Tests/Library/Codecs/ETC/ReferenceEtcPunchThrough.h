#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include "Codecs/ETC/EtcDecodeA1.h"
#include "Codecs/ETC/EtcPunchThrough.h"
#include "Core/Diagnostics.h"
#include "ReferenceEtcFastETC2.h"
#include "ReferenceEtcQuantise.h"

/// The punch-through encoder, table after table and pixel after pixel.
namespace etcreference
{

/// One split of differentialBlockA1.
inline moxtexture::EtcDifferentialA1 differentialSplitA1(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas& alphas,
                                                         bool bTransparentMode, bool bFlip)
{
    constexpr int aaiModifiers[8][4] = {{-8, -2, 2, 8},     {-17, -5, 5, 17},   {-29, -9, 9, 29},     {-42, -13, 13, 42},
                                        {-60, -18, 18, 60}, {-80, -24, 24, 80}, {-106, -33, 33, 106}, {-183, -47, 47, 183}};
    constexpr uint32_t auiIndexOfPosition[4] = {3, 2, 0, 1};
    const std::array<const uint8_t*, 3> planes = {pixels.aui8Red.data(), pixels.aui8Green.data(), pixels.aui8Blue.data()};
    const auto half = [&](size_t x, size_t y) -> size_t { return (bFlip ? y : x) < 2 ? 0 : 1; };

    moxtexture::EtcQuantised aQuantised[2];
    for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
    {
        moxtexture::EtcMean mean{};
        for (size_t c = 0; c < 3; ++c)
        {
            float fSum = 0.0f;
            float fWeights = 0.0f;
            for (size_t y = 0; y < 4; ++y)
                for (size_t x = 0; x < 4; ++x)
                    if (half(x, y) == uiHalf)
                    {
                        const float fWeight = alphas.aui8[y * 4 + x] < 128 ? 0.0001f : 1.0f;
                        fSum = fSum + fWeight * static_cast<float>(planes[c][y * 4 + x]);
                        fWeights = fWeights + fWeight;
                    }
            mean[c] = fSum / fWeights;
        }
        aQuantised[uiHalf] = etcreference::quantiseCombined555(mean);
    }
    const moxtexture::EtcColour first = aQuantised[0].levels;
    moxtexture::EtcColour second = aQuantised[1].levels;
    int aaiBases[2][3];
    for (size_t c = 0; c < 3; ++c)
    {
        second[c] = static_cast<uint8_t>(first[c] + std::min(std::max(second[c] - first[c], -4), 3));
        aaiBases[0][c] = first[c] << 3 | first[c] >> 2;
        aaiBases[1][c] = second[c] << 3 | second[c] >> 2;
    }

    uint32_t auiBest[2] = {3121200, 3121200};
    uint32_t auiTable[2] = {0, 0};
    uint32_t aauiPositions[16] = {};
    for (uint32_t uiTable = 0; uiTable < 8; ++uiTable)
    {
        uint32_t auiSum[2] = {0, 0};
        uint32_t auiPosition[16] = {};
        for (size_t x = 0; x < 4; ++x)
            for (size_t y = 0; y < 4; ++y)
            {
                int iLeast = 390150;
                for (uint32_t uiPosition = 0; uiPosition < 4; ++uiPosition)
                {
                    if (bTransparentMode && uiPosition == 1)
                        continue;
                    int iError = 0;
                    for (size_t c = 0; c < 3; ++c)
                    {
                        int iValue = aaiBases[half(x, y)][c];
                        if (!(bTransparentMode && uiPosition == 2))
                            iValue = std::min(std::max(iValue + aaiModifiers[uiTable][uiPosition], 0), 255);
                        iError += (iValue - planes[c][y * 4 + x]) * (iValue - planes[c][y * 4 + x]);
                    }
                    if (iError < iLeast)
                    {
                        iLeast = iError;
                        auiPosition[y * 4 + x] = uiPosition;
                    }
                }
                if (alphas.aui8[y * 4 + x] < 128)
                    auiPosition[y * 4 + x] = 1;
                else
                    auiSum[half(x, y)] += static_cast<uint32_t>(iLeast);
            }
        for (size_t uiHalf = 0; uiHalf < 2; ++uiHalf)
            if (auiSum[uiHalf] < auiBest[uiHalf])
            {
                auiBest[uiHalf] = auiSum[uiHalf];
                auiTable[uiHalf] = uiTable;
                for (size_t y = 0; y < 4; ++y)
                    for (size_t x = 0; x < 4; ++x)
                        if (half(x, y) == uiHalf)
                            aauiPositions[y * 4 + x] = auiPosition[y * 4 + x];
            }
    }

    uint32_t ui32High = 0;
    for (size_t c = 0; c < 3; ++c)
    {
        ui32High = ui32High << 5 | first[c];
        ui32High = ui32High << 3 | (static_cast<uint32_t>(second[c] - first[c]) & 7);
    }
    ui32High = ui32High << 8 | auiTable[0] << 5 | auiTable[1] << 2 | (bTransparentMode ? 0u : 2u) | (bFlip ? 1u : 0u);
    uint32_t ui32Low = 0;
    for (uint32_t y = 0; y < 4; ++y)
        for (uint32_t x = 0; x < 4; ++x)
        {
            const uint32_t uiIndex = auiIndexOfPosition[aauiPositions[y * 4 + x]];
            ui32Low |= (uiIndex >> 1) << (16 + x * 4 + y) | (uiIndex & 1) << (x * 4 + y);
        }
    return {{ui32High, ui32Low}, auiBest[0] + auiBest[1]};
}

inline moxtexture::EtcDifferentialA1 differentialBlockA1(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas& alphas,
                                                         bool bTransparentMode)
{
    const moxtexture::EtcDifferentialA1 leftRight = etcreference::differentialSplitA1(pixels, alphas, bTransparentMode, false);
    const moxtexture::EtcDifferentialA1 topBottom = etcreference::differentialSplitA1(pixels, alphas, bTransparentMode, true);
    return topBottom.uiError < leftRight.uiError ? topBottom : leftRight;
}

inline moxtexture::EtcBlockWords hFastA1(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas& alphas)
{
    moxtexture::EtcModeFit fit = etcreference::hBlockErrorA1(
        pixels, alphas, etcreference::orderForH(etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels))));
    etcreference::settleHOrder(fit);
    return etcreference::packH(fit);
}

inline void etcFastBlockETC2A1(const moxtexture::EtcPixels& pixels, const moxtexture::EtcAlphas& alphas, moxtexture::EtcBlockWords& block)
{
    moxtexture::EtcAlphas ignored;
    const moxtexture::EtcDifferentialA1 transparent = etcreference::differentialBlockA1(pixels, alphas, true);
    block = transparent.block;
    double e = moxtexture::blockErrorRGBA(pixels, alphas, moxtexture::decodeEtcPixelsA1Differential(block, ignored));
    if (e != static_cast<double>(transparent.uiError))
    {
        char szText[100];
        std::snprintf(szText, sizeof szText, "testerr: %d, etcerr: %f\n", static_cast<int>(transparent.uiError), e);
        moxtexture::writeDiagnostic(szText);
    }

    const moxtexture::EtcBlockWords t = etcreference::packT(
        etcreference::tBlockErrorA1(pixels, alphas, etcreference::quantise444Pair(etcreference::lbgHalfIntensity(pixels))));
    const double et = moxtexture::blockErrorRGBA(pixels, alphas, moxtexture::decodeEtcPixelsA1T(t, ignored));
    if (et < e)
    {
        e = et;
        block = moxtexture::stuffT(t, false);
    }
    const moxtexture::EtcBlockWords h = etcreference::hFastA1(pixels, alphas);
    const double eh = moxtexture::blockErrorRGBA(pixels, alphas, moxtexture::decodeEtcPixelsA1H(h, ignored));
    if (eh < e)
    {
        e = eh;
        block = moxtexture::stuffH(h, false);
    }
    for (const uint8_t ui8Alpha : alphas.aui8)
        if (ui8Alpha < 128)
            return;

    const moxtexture::EtcDifferentialA1 opaque = etcreference::differentialBlockA1(pixels, alphas, false);
    const double eo = moxtexture::blockErrorRGB(pixels, moxtexture::decodeEtcPixelsETC1(opaque.block));
    if (eo < e)
    {
        e = eo;
        block = opaque.block;
    }
    etcreference::addedModes(pixels, EMeasure::ePlain, e, block);
}

} // namespace etcreference
