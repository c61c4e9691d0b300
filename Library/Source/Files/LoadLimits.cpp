#include "Files/LoadLimits.h"

#include "Core/Bits.h"

namespace moxtexture
{
namespace
{

bool mayBeMeant(const CMOXTextureHeader& header, uint64_t ui64FileSize)
{
    constexpr uint32_t uiMostLevels = 32;
    constexpr uint64_t ui64AlwaysAllowedBytes = 256 << 20;
    constexpr uint64_t ui64MostBytesPerFileByte = 16;
    constexpr uint64_t ui64AlwaysAllowedSurfaces = 65536;

    if (!header.fitsDataBlock() || header.getNumMIPLevels() > uiMostLevels)
        return false;

    const uint64_t ui64Size = header.getDataSize();
    // Divided, not multiplied: a folder or a sparse file may claim any length.
    if (ui64Size > ui64AlwaysAllowedBytes && (ui64Size - 1) / ui64MostBytesPerFileByte >= ui64FileSize)
        return false;

    const CWrappingCount surfaces = CWrappingCount(header.getNumMIPLevels()) * header.getNumArrayMembers() * header.getNumFaces();
    return !surfaces.hasWrapped() && (surfaces.getValue() <= ui64AlwaysAllowedSurfaces || surfaces.getValue() <= ui64FileSize);
}

} // namespace

bool takeDataBlock(CMOXTexture& texture, uint64_t ui64FileSize)
{
    if (mayBeMeant(texture, ui64FileSize) && texture.allocateData())
        return true;
    leaveWithoutData(texture);
    return false;
}

void leaveWithoutData(CMOXTexture& texture)
{
    texture.releaseData();
    texture.setPixelFormat(ePF_Count);
}

} // namespace moxtexture
