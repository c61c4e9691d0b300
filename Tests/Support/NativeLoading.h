#pragma once

#include <cstdint>
#include <vector>

#include "Files/NativeFile.h"
#include "Support/MemoryFile.h"
#include "Support/NativeFileBuilder.h"

namespace testsupport
{

struct NativeLoad
{
    bool bGood = false;
    moxtexture::CMOXTexture texture;
};

/// What the native reader makes of some bytes.
inline NativeLoad loadNative(const std::vector<uint8_t>& bytes)
{
    const CMemoryFile file(bytes);
    NativeLoad result;
    result.bGood = moxtexture::readNative(file.get(), result.texture);
    return result;
}

inline NativeLoad loadNative(const CNativeFileBuilder& builder)
{
    return loadNative(builder.bytes());
}

/// The whole data block.
inline std::vector<uint8_t> dataOf(const moxtexture::CMOXTexture& texture)
{
    const uint8_t* pData = texture.getDataPtr();
    return pData != nullptr ? std::vector<uint8_t>(pData, pData + texture.getBlockSize()) : std::vector<uint8_t>();
}

} // namespace testsupport
