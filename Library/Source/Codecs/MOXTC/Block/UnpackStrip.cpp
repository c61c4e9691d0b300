#include "Codecs/MOXTC/Block/UnpackStrip.h"

#include <algorithm>

#include "Codecs/MOXTC/Block/BlockColours.h"
#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{

namespace
{

constexpr uint32_t k_uiCentrePixel = 2 * 4 + 2; ///< of a 4bpp block

// So one table of weights serves both generations; they differ in what the bit does.
static_assert(k_aui8PunchThroughWeightsMOXTC1[0] == k_aui8PunchThroughWeightsMOXTCII[0]);
static_assert(k_aui8PunchThroughWeightsMOXTC1[1] == k_aui8PunchThroughWeightsMOXTCII[1]);
static_assert(k_aui8PunchThroughWeightsMOXTC1[2] - k_ui8PunchThroughOffset == k_aui8PunchThroughWeightsMOXTCII[2]);
static_assert(k_aui8PunchThroughWeightsMOXTC1[3] == k_aui8PunchThroughWeightsMOXTCII[3]);

uint8_t getWeight4bpp(const BlockModulation& modulation, uint32_t uiPixel, bool bHard)
{
    const uint8_t ui8Code = modulation.aui8Codes[uiPixel];
    if (modulation.ui8Mode == k_ui8ModeDirect || (bHard && uiPixel == k_uiCentrePixel))
        return k_aui8StandardWeights[ui8Code];
    const uint32_t uiBit = ui8Code == k_ui8PunchThroughCode ? k_ui8PunchThroughBit : 0;
    return static_cast<uint8_t>(k_aui8PunchThroughWeightsMOXTCII[ui8Code] | uiBit);
}

} // namespace

void unpackStripReference(BlockStrip& strip, size_t uiCount, bool b2bpp, bool bII)
{
    const uint32_t uiBlockWidth = getBlockWidth(b2bpp);
    for (size_t i = 0; i < uiCount; ++i)
    {
        const BlockWord& block = strip.aWords[i];
        const std::array<BlockColour, 2> aColours = {unpackColourA(block.ui32Colours, bII), unpackColourB(block.ui32Colours, bII)};
        for (size_t uiColour = 0; uiColour < 2; ++uiColour)
        {
            const std::array<uint8_t, 4>& aui8 = aColours[uiColour].aui8;
            for (size_t uiChannel = 0; uiChannel < 4; ++uiChannel)
                strip.aaui16Colours[i][uiColour * 4 + uiChannel] = static_cast<uint16_t>(uiChannel == 3 ? 2 * aui8[3] : aui8[uiChannel]);
            if (bII)
                strip.aaui32Expanded[i][uiColour] = loadLE<uint32_t>(expandColour(aColours[uiColour]).data());
        }

        const bool bHard = bII && (block.ui32Colours & k_ui32HardFlag) != 0;
        if (bII)
            strip.aui32Hard[i] = bHard ? 1 : 0;

        const BlockModulation modulation = unpackModulation(block, b2bpp);
        for (uint32_t uiPixel = 0; uiPixel < uiBlockWidth * k_uiBlockHeight; ++uiPixel)
            strip.aaui8Weights[uiPixel / uiBlockWidth][i * uiBlockWidth + uiPixel % uiBlockWidth] =
                b2bpp ? k_aui8StandardWeights[modulation.aui8Codes[uiPixel]] : getWeight4bpp(modulation, uiPixel, bHard);
        if (b2bpp)
            std::fill_n(strip.aui8Modes.begin() + static_cast<std::ptrdiff_t>(i * uiBlockWidth), uiBlockWidth, modulation.ui8Mode);
    }
}

} // namespace moxtexture
