#pragma once

#include <cstdint>
#include <vector>

#include "Files/DdsReader.h"
#include "Support/DdsFileBuilder.h"
#include "Support/MemoryFile.h"

namespace testsupport
{

struct DdsLoad
{
    bool bGood = false;
    moxtexture::CMOXTexture texture;
};

/// What the DDS reader makes of some bytes.
inline DdsLoad loadDds(const std::vector<uint8_t>& bytes)
{
    const CMemoryFile file(bytes);
    DdsLoad result;
    result.bGood = moxtexture::readDds(file.get(), result.texture);
    return result;
}

inline DdsLoad loadDds(const CDdsFileBuilder& builder)
{
    return loadDds(builder.bytes());
}

} // namespace testsupport
