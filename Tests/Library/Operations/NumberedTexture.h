#pragma once

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "Operations/ChannelKind.h"
#include "Support/SeededPictures.h"
#include "Texture/CMOXTexture.h"

/// Textures in working form whose pixels carry a number in all four channels, so that a test sees which pixel went where and that
/// each went whole.
namespace testsupport
{

using ChannelKinds = ::testing::Types<uint8_t, uint16_t, uint32_t, float>;

struct Shape
{
    uint32_t uiWidth = 1;
    uint32_t uiHeight = 1;
    uint32_t uiDepth = 1;
    uint32_t uiLevels = 1;
    uint32_t uiMembers = 1;
    uint32_t uiFaces = 1;
};

template <typename T>
moxtexture::CMOXTextureHeader headerOf(const Shape& shape)
{
    using Kind = moxtexture::ChannelKind<T>;
    return {Kind::kPixelFormat, shape.uiHeight, shape.uiWidth,          shape.uiDepth,      shape.uiLevels,
            shape.uiMembers,    shape.uiFaces,  moxtexture::eCS_Linear, Kind::kChannelType, false};
}

/// Pixels from 1 to at most 60, through the whole block.
template <typename T>
moxtexture::CMOXTexture numberedTexture(const Shape& shape)
{
    moxtexture::CMOXTexture texture(headerOf<T>(shape));
    T* pElements = reinterpret_cast<T*>(texture.getDataPtr());
    for (uint32_t i = 0; i < texture.getBlockSize() / sizeof(T); ++i)
        pElements[i] = static_cast<T>(1 + (i / 4) % 60 + (i % 4) * 60);
    return texture;
}

/// Pixels of any bytes; of floats the finite ones from 0.5 to 2 and their negatives.
template <typename T>
moxtexture::CMOXTexture seededTexture(const Shape& shape)
{
    moxtexture::CMOXTexture texture(headerOf<T>(shape), CSeededRandom(7).bytes(headerOf<T>(shape).getDataSize()).data());
    if constexpr (std::is_same_v<T, float>)
        for (uint32_t i = 3; i < texture.getBlockSize(); i += 4)
            texture.getDataPtr()[i] = static_cast<uint8_t>((texture.getDataPtr()[i] & 0x80) | 0x3F);
    return texture;
}

/// The numbers of the pixels of a surface; 0 for one of zeros, -1 for one that is torn.
template <typename T>
std::vector<int> numbersOf(const moxtexture::CMOXTexture& texture, uint32_t uiLevel = 0, uint32_t uiMember = 0, uint32_t uiFace = 0)
{
    const T* pElements = reinterpret_cast<const T*>(texture.getDataPtr(uiLevel, uiMember, uiFace));
    if (pElements == nullptr)
        return {};
    std::vector<int> numbers;
    const uint32_t uiPixels = texture.getWidth(uiLevel) * texture.getHeight(uiLevel) * texture.getDepth(uiLevel);
    for (uint32_t i = 0; i < uiPixels; ++i, pElements += 4)
    {
        const T red = pElements[0];
        const bool bWhole = pElements[1] == static_cast<T>(red + 60) && pElements[2] == static_cast<T>(red + 120) &&
                            pElements[3] == static_cast<T>(red + 180);
        const bool bZero = red == T(0) && pElements[1] == T(0) && pElements[2] == T(0) && pElements[3] == T(0);
        numbers.push_back(bZero ? 0 : bWhole ? static_cast<int>(red) : -1);
    }
    return numbers;
}

/// A texture that is no working form: 8-bit, blue first.
inline moxtexture::CMOXTexture foreignTexture()
{
    const uint8_t aui8Pixels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    return moxtexture::CMOXTexture(
        {moxtexture::layout("bgra", 8, 8, 8, 8), 1, 2, 1, 1, 1, 1, moxtexture::eCS_Linear, moxtexture::eCT_UnsignedNormalisedByte, false},
        aui8Pixels);
}

/// True if all that a texture holds is what foreignTexture() made.
inline bool isStillForeign(const moxtexture::CMOXTexture& texture)
{
    const uint8_t* pPixels = texture.getDataPtr();
    for (uint8_t i = 0; i < 8; ++i)
        if (texture.getBlockSize() != 8 || pPixels[i] != i + 1)
            return false;
    return true;
}

} // namespace testsupport
