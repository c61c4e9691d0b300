#include "Files/LoadLimits.h"

#include "Core/Bits.h"

namespace moxtexture
{
namespace
{

constexpr uint64_t k_ui64MiB = 1 << 20;

/// @param ui64Allowed  what any file may claim
/// @param ui64PerByte  what it may claim beyond that for each of its own bytes
bool mayClaim(const CWrappingCount& claim, uint64_t ui64Allowed, uint64_t ui64PerByte, uint64_t ui64FileSize)
{
    if (claim.hasWrapped())
        return false;
    // Divided, not multiplied: a file may be of any length.
    return claim.getValue() <= ui64Allowed || (claim.getValue() - 1) / ui64PerByte < ui64FileSize;
}

CWrappingCount measureAsRGBA8(const CMOXTextureHeader& header)
{
    const CMOXTextureHeader inRGBA8(k_RGBA8, header.getHeight(), header.getWidth(), header.getDepth(), header.getNumMIPLevels(),
                                    header.getNumArrayMembers(), header.getNumFaces(), eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return inRGBA8.measure(CMOXTextureHeader::k_uiAllLevels, true, true);
}

bool mayBeMeant(const CMOXTextureHeader& header, uint64_t ui64FileSize)
{
    constexpr uint32_t uiMostLevels = 32;
    const CWrappingCount surfaces = CWrappingCount(header.getNumMIPLevels()) * header.getNumArrayMembers() * header.getNumFaces();
    return header.fitsDataBlock() && header.getNumMIPLevels() <= uiMostLevels &&
           mayClaim(header.getDataSize(), 256 * k_ui64MiB, 16, ui64FileSize) &&
           mayClaim(measureAsRGBA8(header), 1024 * k_ui64MiB, 64, ui64FileSize) && mayClaim(surfaces, 65536, 1, ui64FileSize);
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
