#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"

namespace moxtexture
{

/// Words of the command line as values. Each function gives nothing for a word that it does not understand.

/// Decimal digits and nothing else, below 2^32.
[[nodiscard]] std::optional<uint32_t> parseUnsigned(std::string_view strWord);

/// The same, from uiLeast to uiMost.
template <uint32_t uiLeast, uint32_t uiMost>
[[nodiscard]] std::optional<uint32_t> parseWithin(std::string_view strWord)
{
    const std::optional<uint32_t> uiValue = parseUnsigned(strWord);
    return uiValue && *uiValue >= uiLeast && *uiValue <= uiMost ? uiValue : std::nullopt;
}

/// A format's name as users see it, case ignored, runs of blanks, '-' and '_' alike ("moxtc-4bpp-rgba", "RGBA 8 8 8 8"), or an
/// uncompressed layout as letter and bit count of each channel in storage order ("r5g6b5"). Layouts that no pixel can have are
/// not understood: a letter twice, more than 32 bits a channel, a pixel that is no whole number of bytes.
[[nodiscard]] std::optional<MOXPixelWord> parseFormat(std::string_view strWord);

/// The number 0 to 13, or the long name, case ignored, with or without blanks.
[[nodiscard]] std::optional<EMOXTChannelType> parseChannelType(std::string_view strWord);

/// "lrgb" or "srgb", case ignored.
[[nodiscard]] std::optional<EMOXTColourSpace> parseColourSpace(std::string_view strWord);

/// "nearest", "linear" or "cubic", case ignored.
[[nodiscard]] std::optional<EResizeMode> parseFilter(std::string_view strWord);

/// A quality of that format by its number or text, case ignored. For formats with one quality any number is understood.
[[nodiscard]] std::optional<uint32_t> parseQuality(std::string_view strWord, MOXPixelWord pixelFormat);

/// True for words that parseQuality() understands for at least one format.
[[nodiscard]] bool isQualityOfSomeFormat(std::string_view strWord);

/// The format's name for a sentence: without the blank that ends the names of layouts.
[[nodiscard]] std::string getTidyName(MOXPixelWord pixelFormat);

/// False for a layout whose channels cannot hold values of that type, such as floats in 8 bits: writing would leave them 0.
[[nodiscard]] bool canHold(MOXPixelWord pixelFormat, EMOXTChannelType eChannelType);

/// The text as one line that a terminal shows as it stands: line ends become blanks, other control characters question marks.
[[nodiscard]] std::string toOneLine(std::string strText);

} // namespace moxtexture
