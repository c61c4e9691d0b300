#include "Documents/LoadToSurface.h"

#include <cstring>
#include <new>

#include "Composition/CanonicalForm.h"
#include "Conversion/Transcode.h"
#include "Documents/SurfaceHeader.h"
#include "Images/LoadTextureFile.h"

using namespace moxtexture;

namespace
{

/// Loads a file in the layout of the working texture, as it is to be looked at.
bool loadLike(const CMOXTexture& working, const std::string& strPath, CMOXTexture& texture)
{
    constexpr uint32_t k_uiQuality = 2;
    LoadStatus status;
    loadTextureFile(status, texture, strPath);
    return !status.bFailed &&
           Transcode(texture, working.getPixelFormat(), working.getChannelType(), working.getColourSpace(), k_uiQuality, false) &&
           undoOrientation(texture);
}

bool loadOver(CMOXTexture& working, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace, const std::string& strPath,
              const ConformTexture& conform)
{
    const CMOXTextureHeader reference = makeSurfaceHeader(working, uiMIPLevel);
    CMOXTexture loaded;
    if (working.getDataPtr(uiMIPLevel, uiArrayMember, uiFace) == nullptr || !loadLike(working, strPath, loaded) ||
        !conform(reference, loaded))
        return false;

    const uint32_t uiSize = working.getDataSize(uiMIPLevel, false, false);
    uint8_t* pSurface = working.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    const uint8_t* pLoaded = loaded.getDataPtr();
    if (pSurface == nullptr || pLoaded == nullptr || loaded.getPixelFormat() != working.getPixelFormat() ||
        loaded.getDataSize(0, false, false) != uiSize)
        return false;
    std::memcpy(pSurface, pLoaded, uiSize);
    return true;
}

} // namespace

bool loadIntoSurface(CMOXTexture& working, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace, const std::string& strPath,
                     const ConformTexture& conform)
{
    try
    {
        return loadOver(working, uiMIPLevel, uiArrayMember, uiFace, strPath, conform);
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}
