#pragma once

#include <cstdint>
#include <vector>

#include "Support/MemoryFile.h"
#include "Texture/CMOXTexture.h"

namespace testsupport
{

struct FileLoad
{
    bool bGood = false; ///< what the reader said
    moxtexture::CMOXTexture texture;
};

/// What a reader makes of some bytes.
/// @param reader  takes an open file and a texture, and gives a bool
template <typename Reader>
FileLoad loadFile(const std::vector<uint8_t>& bytes, Reader reader)
{
    const CMemoryFile file(bytes);
    FileLoad result;
    result.bGood = reader(file.get(), result.texture);
    return result;
}

} // namespace testsupport
