#pragma once

#include <cstdint>
#include <vector>

#include "Files/NativeFile.h"
#include "Support/FileLoading.h"
#include "Support/NativeFileBuilder.h"

namespace testsupport
{

using NativeLoad = FileLoad;

/// What the native reader makes of some bytes.
inline NativeLoad loadNative(const std::vector<uint8_t>& bytes)
{
    return loadFile(bytes, moxtexture::readNative);
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
