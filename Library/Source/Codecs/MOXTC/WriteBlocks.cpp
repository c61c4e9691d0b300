#include "Codecs/MOXTC/WriteBlocks.h"

#include "Codecs/MOXTC/Block/BlockColours.h"
#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{
namespace
{

uint32_t packModulation(const ChosenModulation& modulation, uint8_t ui8BlockWidth)
{
    if (ui8BlockWidth == getBlockWidth(false))
        return packModulation4bpp(modulation.pui8Codes);
    if (modulation.uiMode == k_ui8ModeDirect)
        return packModulationDirect(modulation.pui8Codes);
    return packModulationInterpolated(modulation.pui8Codes, static_cast<uint8_t>(modulation.uiMode));
}

} // namespace

uint32_t packPixels(uint32_t uiColourA, uint32_t uiColourB, bool bII)
{
    std::array<uint8_t, 4> aui8A;
    std::array<uint8_t, 4> aui8B;
    storeLE(aui8A.data(), uiColourA);
    storeLE(aui8B.data(), uiColourB);
    return packColours(aui8A.data(), aui8B.data(), bII);
}

BlockWord makeBlockWord(const CompressorImages& images, const uint8_t* pui8HardFlags, size_t uiBlock, const ChosenModulation& modulation)
{
    const bool bII = pui8HardFlags != nullptr;
    BlockWord block{packModulation(modulation, images.ui8BlockWidth), packPixels(images.colourA[uiBlock], images.colourB[uiBlock], bII)};
    if (modulation.uiMode != k_ui8ModeDirect)
        block.ui32Colours |= k_ui32ModeFlag;
    if (bII && pui8HardFlags[uiBlock] != 0)
        block.ui32Colours |= k_ui32HardFlag;
    return block;
}

} // namespace moxtexture
