#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "Conversion/Transcode.h"
#include "Files/NativeFile.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

/// Any bytes as a native file, and what is loaded of them brought to 8-bit RGBA.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture texture;
    const bool bLoaded = readNative(file.get(), texture);

    const bool bSound = texture.fitsDataBlock() && texture.getDataSize() == texture.getBlockSize() &&
                        texture.getMetaDataSize() == texture.sumMetaDataSize() && (!bLoaded || texture.getDataSize() != 0);
    if (!bSound)
        std::abort();

    if (Transcode(texture, k_RGBA8, eCT_UnsignedNormalisedByte, eCS_Linear, 0, false) &&
        (texture.getPixelFormat() != k_RGBA8 || texture.getDataSize() != texture.getBlockSize()))
        std::abort();
    return 0;
}
