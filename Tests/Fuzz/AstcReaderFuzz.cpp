#include <cstddef>
#include <cstdint>

#include "Files/AstcFile.h"
#include "Files/LoadTexture.h"
#include "Fuzz/LoadedTexture.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

/// Any bytes as an `.astc` file, and what is loaded of them used.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture texture;
    const bool bLoaded = readThroughStream(file.get(), readASTC, texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::require(!bLoaded || texture.getDataSize() != 0);
    fuzzsupport::useLoaded(texture);
    fuzzsupport::requireSavedAsItIs(texture, "astc", writeASTC);
    return 0;
}
