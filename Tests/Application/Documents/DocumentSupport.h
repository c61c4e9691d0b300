#pragma once

#include <cstdint>
#include <cstring>
#include <vector>

#include "Support/NativeLoading.h"
#include "Texture/CMOXTexture.h"

namespace testsupport
{

/// 8-bit RGBA whose bytes are (number of the byte * 7 + uiSeed) modulo 256.
inline moxtexture::CMOXTexture makeBytes(uint32_t uiWidth, uint32_t uiHeight, uint8_t uiSeed = 0, uint32_t uiLevels = 1,
                                         uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    moxtexture::CMOXTexture texture(moxtexture::CMOXTextureHeader(moxtexture::k_RGBA8, uiHeight, uiWidth, 1, uiLevels, uiMembers, uiFaces,
                                                                  moxtexture::eCS_Linear, moxtexture::eCT_UnsignedNormalisedByte, false));
    for (uint32_t i = 0; i < texture.getBlockSize(); ++i)
        texture.getDataPtr()[i] = static_cast<uint8_t>(i * 7 + uiSeed);
    return texture;
}

/// 32-bit float RGBA of one row, each pixel from the four numbers.
inline moxtexture::CMOXTexture makeFloats(const std::vector<float>& values)
{
    const auto uiWidth = static_cast<uint32_t>(values.size() / 4);
    return moxtexture::CMOXTexture(moxtexture::CMOXTextureHeader(moxtexture::k_RGBA32, 1, uiWidth, 1, 1, 1, 1, moxtexture::eCS_Linear,
                                                                 moxtexture::eCT_SignedFloatingPoint, false),
                                   values.data());
}

inline void fill(moxtexture::CMOXTexture& texture, uint8_t uiByte)
{
    std::memset(texture.getDataPtr(), uiByte, texture.getBlockSize());
}

} // namespace testsupport
