#pragma once

#include <array>
#include <cstdint>

#include <QtCore/QString>

#include "Display/ViewModes.h"
#include "Texture/CMOXTexture.h"

/// Reads the channel values of one pixel as they stand in the texture, into red, green, blue, alpha; channels that the format does
/// not have are 0.
///
/// Channels of 32 bits are read as 4 bytes and of 16 bits as 2; any other width as 1 byte.
/// @return false, with the values as they were, if the surface has no such pixel
[[nodiscard]] bool readPixelValue(const moxtexture::CMOXTexture& texture, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace,
                                  int32_t x, int32_t y, uint32_t (&aui32Values)[4]);

/// A value of readPixelValue() in the texture's channel type: "%u" for types 0 to 10 that are even, "%d" for 1 to 11 that are odd,
/// "%f" for the float types; empty for any other type.
[[nodiscard]] QString formatChannelValue(uint32_t ui32Value, moxtexture::EMOXTChannelType eType);

/// The larger value less the smaller one, both read in that type.
[[nodiscard]] uint32_t getChannelDifference(uint32_t ui32First, uint32_t ui32Second, moxtexture::EMOXTChannelType eType);

/// Texts of the colour read-out: four input values, four output values, four differences.
using ColourTexts = std::array<QString, 12>;

/// Of a single view: four values, the other eight texts empty.
[[nodiscard]] ColourTexts getColourTexts(const uint32_t (&aui32Values)[4], moxtexture::EMOXTChannelType eType);
/// Of a comparison.
[[nodiscard]] ColourTexts getColourTexts(const uint32_t (&aui32Input)[4], const uint32_t (&aui32Output)[4],
                                         moxtexture::EMOXTChannelType eType);

/// The place that the read-out tells about.
struct ReadoutPlace
{
    bool bMouseInside = false;
    int32_t i32PixelX = 0;
    int32_t i32PixelY = 0;
    ETextureViewModes eMode = eViewSingle;
    uint32_t ui32MIPLevel = 0;
    uint32_t ui32ArrayMember = 0;
    uint32_t ui32Face = 0;     ///< the current face
    uint32_t ui32CubeFace = 0; ///< the face under the mouse
};

/// "12, 34".
[[nodiscard]] QString getPositionString(const ReadoutPlace& place);
/// "Position: 12, 34": the status bar's label.
[[nodiscard]] QString getPositionText(const ReadoutPlace& place);
/// "MIP Map: 1   Surface: 2   Face: +X": the status bar's label, with the parts of which the texture has more than one.
[[nodiscard]] QString getSurfaceText(const moxtexture::CMOXTextureHeader& header, const ReadoutPlace& place);
/// The display dock's label: "12, 34", a new line, and "Face: +X" where there is more than one face; the pixel and the face's name
/// only while the mouse is inside.
[[nodiscard]] QString getDockPositionText(const moxtexture::CMOXTextureHeader& header, const ReadoutPlace& place);
