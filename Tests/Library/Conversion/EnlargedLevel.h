#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Texture/CMOXTexture.h"

namespace conversiontest
{

/// A level as a codec gets it that has a smallest surface: the rows start where those of the level do and run on into what follows,
/// with zeros past the end of the texture.
inline std::vector<uint8_t> enlargeLevel(const moxtexture::CMOXTexture& texture, uint32_t uiLeastWidth, uint32_t uiLeastHeight,
                                         uint32_t uiPixelBytes, uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
{
    const uint32_t uiWidth = std::max(texture.getWidth(uiLevel), uiLeastWidth);
    const uint32_t uiHeight = std::max(texture.getHeight(uiLevel), uiLeastHeight);
    const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
    const auto uiThere = static_cast<size_t>(texture.getDataPtr() + texture.getBlockSize() - pSurface);
    std::vector<uint8_t> pixels(size_t{uiWidth} * uiHeight * uiPixelBytes);
    for (size_t i = 0; i < pixels.size(); ++i)
    {
        const size_t x = i / uiPixelBytes % uiWidth, y = i / uiPixelBytes / uiWidth;
        const size_t uiPlace = (y * texture.getWidth(uiLevel) + x) * uiPixelBytes + i % uiPixelBytes;
        pixels[i] = uiPlace < uiThere ? pSurface[uiPlace] : 0;
    }
    return pixels;
}

} // namespace conversiontest
