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
    CMOXTexture loaded;
    const bool bLoaded = readDds(file.get(), loaded);
    fuzzsupport::requireSound(loaded);
    fuzzsupport::require(!bLoaded || loaded.getDataSize() != 0);
    fuzzsupport::lookAtSurfaces(loaded);

    CMOXTexture texture = fuzzsupport::cutToSize(loaded);
    if (fuzzsupport::isKeptByDds(texture) && !needsDdsPreparation(texture))
        fuzzsupport::requireSavedAsItIs(texture, "dds", writeDds);
    correctLoadedDds(texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::useLoaded(texture);
    return 0;
}
