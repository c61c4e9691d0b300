#include <cstddef>
#include <cstdint>

#include "Files/NativeFile.h"
#include "Fuzz/LoadedTexture.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

/// Any bytes as a native file, and what is loaded of them used.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture texture;
    const bool bLoaded = readNative(file.get(), texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::require(!bLoaded || texture.getDataSize() != 0);
    fuzzsupport::useLoaded(texture);
    return 0;
}
