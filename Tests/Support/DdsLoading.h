#pragma once

#include <cstdint>
#include <vector>

#include "Files/DdsReader.h"
#include "Support/DdsFileBuilder.h"
#include "Support/FileLoading.h"

namespace testsupport
{

using DdsLoad = FileLoad;

/// What the DDS reader makes of some bytes.
inline DdsLoad loadDds(const std::vector<uint8_t>& bytes)
{
    return loadFile(bytes, moxtexture::readDds);
}

inline DdsLoad loadDds(const CDdsFileBuilder& builder)
{
    return loadDds(builder.bytes());
}

} // namespace testsupport
