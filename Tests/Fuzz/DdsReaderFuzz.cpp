#include <cstddef>
#include <cstdint>

#include "Composition/DdsLayouts.h"
#include "Files/DdsReader.h"
#include "Files/DdsWriter.h"
#include "Fuzz/LoadedTexture.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

/// Any bytes as a DDS file, and what is loaded of them, put right, used.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture texture;
    const bool bLoaded = readDds(file.get(), texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::require(!bLoaded || texture.getDataSize() != 0);
    if (fuzzsupport::isKeptByDds(texture) && !needsDdsPreparation(texture))
        fuzzsupport::requireSavedAsItIs(texture, "dds", writeDds);
    correctLoadedDds(texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::useLoaded(texture);
    return 0;
}
