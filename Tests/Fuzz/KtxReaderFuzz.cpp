#include <cstddef>
#include <cstdint>

#include "Files/KtxReader.h"
#include "Files/KtxWriter.h"
#include "Files/LoadTexture.h"
#include "Formats/GLFormatTable.h"
#include "Fuzz/LoadedTexture.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

/// Any bytes as a KTX file, and what is loaded of them used.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture texture;
    const bool bLoaded = readThroughStream(file.get(), readKtx, texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::require(!bLoaded || texture.getDataSize() != 0 || texture.getNumMIPLevels() == 0);
    fuzzsupport::useLoaded(texture);
    if (findGLFormat(texture.getEncoding()))
        fuzzsupport::requireSavedAsItIs(texture, "ktx", writeKtx);
    return 0;
}
