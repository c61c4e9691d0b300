#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "Codecs/ETC/EtcPixels.h"
#include "Support/SeededPictures.h"

namespace etctest
{

using moxtexture::EtcAlphas;
using moxtexture::EtcPixels;
using testsupport::CSeededRandom;

using Planes = std::array<std::array<uint8_t, 16>*, 3>;

/// Red, green, blue.
inline Planes planesOf(EtcPixels& pixels)
{
    return {&pixels.aui8Red, &pixels.aui8Green, &pixels.aui8Blue};
}

inline uint8_t toByte(int32_t iValue)
{
    return static_cast<uint8_t>(std::clamp(iValue, 0, 255));
}

/// -iReach to iReach.
inline int32_t around(CSeededRandom& random, int32_t iReach)
{
    return static_cast<int32_t>(random.below(static_cast<uint32_t>(2 * iReach + 1))) - iReach;
}

inline EtcPixels flatEtcBlock(uint8_t ui8Red, uint8_t ui8Green, uint8_t ui8Blue)
{
    EtcPixels pixels;
    pixels.aui8Red.fill(ui8Red);
    pixels.aui8Green.fill(ui8Green);
    pixels.aui8Blue.fill(ui8Blue);
    return pixels;
}

inline void paintRandom(CSeededRandom& random, EtcPixels& pixels)
{
    for (auto* const pPlane : planesOf(pixels))
        for (uint8_t& ui8Value : *pPlane)
            ui8Value = toByte(static_cast<int32_t>(random.below(256)));
}

inline void paintFlat(CSeededRandom& random, EtcPixels& pixels)
{
    for (auto* const pPlane : planesOf(pixels))
        pPlane->fill(toByte(static_cast<int32_t>(random.below(256))));
}

/// A flat colour with little noise.
inline void paintNearFlat(CSeededRandom& random, EtcPixels& pixels)
{
    const int32_t iReach = 1 + static_cast<int32_t>(random.below(12));
    for (auto* const pPlane : planesOf(pixels))
    {
        const auto iBase = static_cast<int32_t>(random.below(256));
        for (uint8_t& ui8Value : *pPlane)
            ui8Value = toByte(iBase + around(random, iReach));
    }
}

inline void paintGradient(CSeededRandom& random, EtcPixels& pixels)
{
    for (auto* const pPlane : planesOf(pixels))
    {
        const auto iBase = static_cast<int32_t>(random.below(256));
        const int32_t iAcross = around(random, 30);
        const int32_t iDown = around(random, 30);
        for (int32_t i = 0; i < 16; ++i)
            (*pPlane)[static_cast<size_t>(i)] = toByte(iBase + i % 4 * iAcross + i / 4 * iDown);
    }
}

/// Two colours, each with a little noise, on the two sides of a straight line.
inline void paintEdge(CSeededRandom& random, EtcPixels& pixels)
{
    const int32_t iAcross = around(random, 4);
    const int32_t iDown = around(random, 4);
    const int32_t iLimit = around(random, 8);
    const int32_t iNoise = around(random, 3);
    for (auto* const pPlane : planesOf(pixels))
    {
        const int32_t aiBases[2] = {static_cast<int32_t>(random.below(256)), static_cast<int32_t>(random.below(256))};
        for (int32_t i = 0; i < 16; ++i)
        {
            const bool bBeyond = i % 4 * iAcross + i / 4 * iDown > iLimit;
            (*pPlane)[static_cast<size_t>(i)] = toByte(aiBases[bBeyond ? 1 : 0] + around(random, std::abs(iNoise)));
        }
    }
}

inline void paintTwoColours(CSeededRandom& random, EtcPixels& pixels)
{
    const uint32_t uiPattern = random.next32();
    for (auto* const pPlane : planesOf(pixels))
    {
        const uint8_t aui8Bases[2] = {toByte(static_cast<int32_t>(random.below(256))), toByte(static_cast<int32_t>(random.below(256)))};
        for (size_t i = 0; i < 16; ++i)
            (*pPlane)[i] = aui8Bases[uiPattern >> i & 1];
    }
}

/// Corners of the cube, where every candidate is clamped.
inline void paintExtreme(CSeededRandom& random, EtcPixels& pixels)
{
    for (auto* const pPlane : planesOf(pixels))
        for (uint8_t& ui8Value : *pPlane)
            ui8Value = random.below(2) == 0 ? 0 : 255;
}

/// Greys, where many choices tie.
inline void paintGrey(CSeededRandom& random, EtcPixels& pixels)
{
    paintNearFlat(random, pixels);
    pixels.aui8Green = pixels.aui8Red;
    pixels.aui8Blue = pixels.aui8Red;
}

/// A crop of a painted picture; its alphas follow the same crop.
inline void paintPhoto(CSeededRandom& random, EtcPixels& pixels)
{
    constexpr uint32_t uiSide = 256;
    static const std::vector<uint8_t> picture = testsupport::makePicture(uiSide, uiSide, 6);
    const uint32_t uiX = random.below(uiSide - 3);
    const uint32_t uiY = random.below(uiSide - 3);
    size_t uiChannel = 0;
    for (auto* const pPlane : planesOf(pixels))
    {
        for (uint32_t i = 0; i < 16; ++i)
            (*pPlane)[i] = picture[((uiY + i / 4) * uiSide + uiX + i % 4) * 4 + uiChannel];
        ++uiChannel;
    }
}

/// Blocks of all kinds in turn: the first nine are one of each.
/// @return the same for the same seed on every machine
inline std::vector<EtcPixels> makeEtcTestBlocks(uint32_t uiSeed, size_t uiCount)
{
    constexpr void (*apPainters[])(CSeededRandom&, EtcPixels&) = {paintPhoto, paintRandom,     paintFlat,    paintNearFlat, paintGradient,
                                                                  paintEdge,  paintTwoColours, paintExtreme, paintGrey};
    CSeededRandom random(uiSeed);
    std::vector<EtcPixels> blocks(uiCount);
    for (size_t i = 0; i < uiCount; ++i)
        apPainters[i % std::size(apPainters)](random, blocks[i]);
    return blocks;
}

/// Alphas of all kinds in turn: random, near the limit of punch-through, flat, opaque with holes, soft ramps, 0 and 255.
inline std::vector<EtcAlphas> makeEtcTestAlphas(uint32_t uiSeed, size_t uiCount)
{
    CSeededRandom random(uiSeed);
    std::vector<EtcAlphas> blocks(uiCount);
    for (size_t uiBlock = 0; uiBlock < uiCount; ++uiBlock)
    {
        std::array<uint8_t, 16>& aui8 = blocks[uiBlock].aui8;
        const auto iBase = static_cast<int32_t>(random.below(256));
        const int32_t iAcross = around(random, 30);
        const int32_t iDown = around(random, 30);
        for (int32_t i = 0; i < 16; ++i)
        {
            uint8_t& ui8Value = aui8[static_cast<size_t>(i)];
            switch (uiBlock % 7)
            {
            case 0:
                ui8Value = toByte(static_cast<int32_t>(random.below(256)));
                break;
            case 1:
                ui8Value = toByte(127 + static_cast<int32_t>(random.below(4)));
                break;
            case 2:
                ui8Value = toByte(iBase);
                break;
            case 3:
                ui8Value = random.below(4) == 0 ? 0 : 255;
                break;
            case 4:
                ui8Value = toByte(iBase + i % 4 * iAcross + i / 4 * iDown);
                break;
            case 5:
                ui8Value = toByte(iBase + around(random, 4));
                break;
            default:
                ui8Value = random.below(2) == 0 ? 0 : 255;
                break;
            }
        }
    }
    return blocks;
}

} // namespace etctest
