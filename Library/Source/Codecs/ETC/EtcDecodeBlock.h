#pragma once

#include <cstdint>

#include "Codecs/ETC/EtcBlockBits.h"
#include "Codecs/ETC/EtcPixels.h"

namespace moxtexture
{

/// The modes of a block whose diff bit is set (or of any punch-through block), told apart by which sum is no level.
enum EEtcDifferentialMode
{
    eEtcDifferential,
    eEtcT,
    eEtcH,
    eEtcPlanar,
};

/// The mode of such a block: red decides before green, and green before blue.
[[nodiscard]] EEtcDifferentialMode getEtcDifferentialMode(uint32_t ui32High);

/// Decodes individual and differential mode, with flip.
///
/// On purpose: a sum beyond 0 to 31 isn't refused; it is an 8-bit value whose expansion to a byte keeps 8 bits.
[[nodiscard]] EtcPixels decodeEtcPixelsETC1(const EtcBlockWords& words);

/// Decodes the five modes of ETC2 without alpha.
[[nodiscard]] EtcPixels decodeEtcPixelsETC2(const EtcBlockWords& words);

/// Decode the compact forms of EtcBlockBits.h.
[[nodiscard]] EtcPixels decodeEtcPixelsT(const EtcBlockWords& compact);
[[nodiscard]] EtcPixels decodeEtcPixelsH(const EtcBlockWords& compact);
[[nodiscard]] EtcPixels decodeEtcPixelsPlanar(const EtcBlockWords& compact);

/// The halves of a block of individual or differential mode: base colours as bytes, and modifier tables.
struct EtcHalfColours
{
    EtcColour aBases[2];
    uint32_t auiTables[2];
    bool bFlip;

    /// 0 for the pixels of the left half (the top one with flip), else 1.
    [[nodiscard]] constexpr uint32_t getHalf(uint32_t uiX, uint32_t uiY) const { return (bFlip ? uiY : uiX) / 2; }
};

/// Those of a block of differential mode.
[[nodiscard]] EtcHalfColours readEtcHalvesDifferential(uint32_t ui32High);

inline void setEtcPixel(EtcPixels& pixels, size_t uiX, size_t uiY, const EtcColour& colour)
{
    pixels.aui8Red[etcPixelIndex(uiX, uiY)] = colour[0];
    pixels.aui8Green[etcPixelIndex(uiX, uiY)] = colour[1];
    pixels.aui8Blue[etcPixelIndex(uiX, uiY)] = colour[2];
}

/// Decode a block into an image of 3 bytes a pixel, R, G, B, as a patch of 4 by 4 pixels whose first is (uiX, uiY).
///
/// @param uiStride  pixels from one row of the image to the next
/// Published: Khronos Data Format Specification, chapters ETC1 and ETC2. Any 64 bits are a block. No state.
void etcDecodeBlockETC1(const EtcBlockWords& words, uint8_t* pui8Image, uint32_t uiStride, uint32_t uiX, uint32_t uiY);
void etcDecodeBlockETC2(const EtcBlockWords& words, uint8_t* pui8Image, uint32_t uiStride, uint32_t uiX, uint32_t uiY);

/// Writes a block's pixels as such a patch.
void writeEtcPixels(const EtcPixels& pixels, uint8_t* pui8Image, uint32_t uiStride, uint32_t uiX, uint32_t uiY);

} // namespace moxtexture
