#pragma once

#include <cstdint>
#include <string_view>

#include "Formats/PixelWord.h"

namespace moxtexture
{

/// The formats that offer the same encoding qualities.
enum EQualityFamily
{
    eQualityNone, ///< one quality, number 0; the EAC formats and ETC2 RGB A1 are here, too
    eQualityMOXTC,
    eQualityETC,
    eQualityASTC,
};

[[nodiscard]] EQualityFamily getQualityFamily(MOXPixelWord pixelFormat);

/// The encoding qualities of a family of formats; a text's place in the list is the number that Transcode takes.
struct QualityNames
{
    const std::string_view* pTexts = nullptr;
    uint32_t uiCount = 0;        ///< 0: the family has one quality, number 0
    uint32_t uiDefaultIndex = 0; ///< where none is chosen

    [[nodiscard]] const std::string_view* begin() const { return pTexts; }
    [[nodiscard]] const std::string_view* end() const { return pTexts == nullptr ? nullptr : pTexts + uiCount; }
};

/// The qualities on offer for a family; none for eQualityNone.
[[nodiscard]] QualityNames getQualityNames(EQualityFamily eFamily);

/// The qualities on offer for a format: those of its family.
[[nodiscard]] QualityNames getQualityNames(MOXPixelWord pixelFormat);

} // namespace moxtexture
