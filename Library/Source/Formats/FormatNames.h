#pragma once

#include <cstdint>
#include <string>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"

namespace moxtexture
{

/// The name shown to a user: of a numbered format its own ("ETC2 RGB A1"), of a layout its letters, a blank, and each bit
/// count with a blank behind it, in upper case ("RGBA 8 8 8 8 ", the last blank included). Empty for unknown numbers.
///
/// On purpose: the first bit count alone decides which of the two it is, not the whole upper half of the word. Where it is 0 the
/// lower half is the number, whatever stands above it.
[[nodiscard]] std::string getFormatName(MOXPixelWord pixelFormat);

/// "Unsigned Normalised Byte", or for bShort "UNorm"; empty for a number that names no type.
[[nodiscard]] std::string getChannelTypeName(EMOXTChannelType eType, bool bShort);

/// "Linear RGB" or "sRGB", for bShort "lRGB" or "sRGB"; empty for any other value.
[[nodiscard]] std::string getColourSpaceName(EMOXTColourSpace eSpace, bool bShort);

/// The face as a signed axis: the letter at uiIndex of strOrder, "+X" for an upper-case x, "-X" for a lower-case one.
///
/// @param strOrder  up to six letters as getCubeMapOrder() gives them; empty stands for "XxYyZz"
/// @return "N/A" for an index of 6 or more, or past the end of strOrder
[[nodiscard]] std::string getCubeFaceName(uint32_t uiIndex, const std::string& strOrder);

} // namespace moxtexture
