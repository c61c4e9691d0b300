#pragma once

#include <cstdint>
#include <vector>

#include "Core/ByteOrder.h"
#include "Files/DdsWriter.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

namespace testsupport
{

struct DdsShape
{
    uint32_t uiWidth = 1;
    uint32_t uiHeight = 1;
    uint32_t uiDepth = 1;
    uint32_t uiLevels = 1;
    uint32_t uiMembers = 1;
    uint32_t uiFaces = 1;
};

/// A texture of random bytes.
inline moxtexture::CMOXTexture makeDdsTexture(const moxtexture::PixelEncoding& encoding, const DdsShape& shape)
{
    const moxtexture::CMOXTextureHeader header(encoding.pixelFormat, shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels,
                                               shape.uiMembers, shape.uiFaces, encoding.eColourSpace, encoding.eChannelType,
                                               encoding.bPreMultiplied);
    return moxtexture::CMOXTexture(header, CSeededRandom(1).bytes(header.getDataSize() + size_t{1}).data());
}

struct DdsWritten
{
    bool bGood = false;
    bool bFileThere = false;
    std::vector<uint8_t> bytes;

    uint32_t word(size_t uiOffset) const
    {
        return uiOffset + 4 <= bytes.size() ? moxtexture::loadLE<uint32_t>(&bytes[uiOffset]) : 0xDEADBEEF;
    }
};

/// The file that the DDS writer makes of a texture.
inline DdsWritten writeToDds(const moxtexture::CMOXTexture& texture)
{
    const CTemporaryFolder folder;
    DdsWritten written;
    written.bGood = moxtexture::writeDds(texture, folder.path("a.dds"));
    written.bFileThere = folder.count() != 0;
    written.bytes = readBytes(folder.path("a.dds"));
    return written;
}

inline DdsWritten writeToDds(const moxtexture::PixelEncoding& encoding, const DdsShape& shape)
{
    return writeToDds(makeDdsTexture(encoding, shape));
}

} // namespace testsupport
