#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "Conversion/Transcode.h"
#include "Files/NativeFile.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

namespace
{

/// The pixels, or near enough: a number of levels counts in full.
uint64_t countPixels(const CMOXTextureHeader& header)
{
    CWrappingCount count = header.getWidth();
    for (const uint32_t uiFactor :
         {header.getHeight(), header.getDepth(), header.getNumMIPLevels(), header.getNumArrayMembers(), header.getNumFaces()})
        count *= uiFactor;
    return count.getValue();
}

/// A texture of the same encoding and kind of shape that is quick to convert. Nothing is lost by it: a short file's data fills no
/// more than the start of a large block, and the rest is zeros.
CMOXTexture cutToSize(const CMOXTexture& texture)
{
    constexpr uint64_t ui64MostPixels = 65536;
    if (texture.getDataSize() == 0 || countPixels(texture) <= ui64MostPixels)
        return texture;

    CMOXTextureHeader header(texture);
    while (countPixels(header) > ui64MostPixels) // ends, as there are no more than 32 levels
    {
        header.setWidth((header.getWidth() + 1) / 2);
        header.setHeight((header.getHeight() + 1) / 2);
        header.setDepth((header.getDepth() + 1) / 2);
        header.setNumArrayMembers((header.getNumArrayMembers() + 1) / 2);
        header.setNumFaces((header.getNumFaces() + 1) / 2);
    }
    const bool bLess = header.fitsDataBlock() && header.getDataSize() <= texture.getBlockSize();
    return CMOXTexture(header, bLess ? texture.getDataPtr() : nullptr);
}

} // namespace

/// Any bytes as a native file, and what is loaded of them brought to 8-bit RGBA.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture loaded;
    const bool bLoaded = readNative(file.get(), loaded);

    const bool bSound = loaded.fitsDataBlock() && loaded.getDataSize() == loaded.getBlockSize() &&
                        loaded.getMetaDataSize() == loaded.sumMetaDataSize() && (!bLoaded || loaded.getDataSize() != 0);
    if (!bSound)
        std::abort();

    CMOXTexture texture = cutToSize(loaded);
    if (Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false) &&
        (texture.getPixelFormat() != k_RGBA8 || texture.getDataSize() != texture.getBlockSize()))
        std::abort();
    return 0;
}
