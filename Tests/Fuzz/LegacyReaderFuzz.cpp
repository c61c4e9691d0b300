#include <cstddef>
#include <cstdint>

#include "Core/ByteOrder.h"
#include "Files/LegacyFile.h"
#include "Files/NativeFile.h"
#include "Formats/LegacyTypeTable.h"
#include "Fuzz/LoadedTexture.h"
#include "Support/MemoryFile.h"

using namespace moxtexture;

namespace
{

bool isLegacy(const uint8_t* pBytes, size_t uiSize)
{
    const uint32_t uiFirstWord = uiSize < 4 ? 0 : loadLE<uint32_t>(pBytes);
    return uiFirstWord == k_uiLegacyShortHeaderSize || uiFirstWord == k_uiLegacyHeaderSize;
}

} // namespace

/// Any bytes behind the first word of an older native file, and what is loaded of them used.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* pBytes, size_t uiSize)
{
    if (!isLegacy(pBytes, uiSize))
        return -1; // another target's business
    const testsupport::CMemoryFile file(pBytes, uiSize);
    CMOXTexture texture;
    const bool bLoaded = readNative(file.get(), texture);
    fuzzsupport::requireSound(texture);
    fuzzsupport::require(!bLoaded || texture.getDataSize() != 0);
    fuzzsupport::useLoaded(texture);
    for (uint32_t ui32Api = 1; ui32Api <= 7; ++ui32Api)
    {
        const auto write = [&](const CMOXTexture& what, const std::string& strPath) { return saveLegacy(what, strPath, ui32Api); };
        if (formatToLegacyType(texture.getEncoding(), ui32Api) >= 0)
            fuzzsupport::requireSavedAsItIs(texture, "mox", write);
    }
    return 0;
}
