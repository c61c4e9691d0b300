#pragma once

#include <utility>

#include "Texture/CMOXTexture.h"
#include "Texture/SurfaceSize.h"
#include "Texture/SurfaceWalk.h"

namespace moxtexture
{

/// Replaces a texture by one of another shape, made surface by surface.
///
/// @param header  of the new texture; has no member, face or level that the old one has not
/// @param move    move(pSource, pTarget, uiMIPLevel) fills a surface of the new texture, which holds zeros; gives false to give up
/// @return false with the texture unchanged if it lacks a surface, if a move did, if the new one takes 4 GiB or more, and where memory is
/// refused
template <typename Move>
[[nodiscard]] bool replaceSurfaces(CMOXTexture& texture, const CMOXTextureHeader& header, Move move)
{
    CMOXTexture result;
    static_cast<CMOXTextureHeader&>(result) = header;
    if (!result.allocateData())
        return false;
    const bool bDone = walkSurfaces(header,
                                    [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                                    {
                                        const uint8_t* pSource = std::as_const(texture).getDataPtr(uiLevel, uiMember, uiFace);
                                        uint8_t* pTarget = result.getDataPtr(uiLevel, uiMember, uiFace);
                                        if (pSource == nullptr || pTarget == nullptr)
                                            return false;
                                        return move(pSource, pTarget, uiLevel);
                                    });
    if (bDone)
        texture = std::move(result);
    return bDone;
}

/// Copies a surface into another at an offset, in whole pixels; what would lie outside the destination is left out, and what the
/// source does not cover stays as it is.
///
/// @param pSource, pDestination    pixels of uiPixelBytes each; they do not overlap
/// @param i64X, i64Y, i64Z         where the source's first pixel goes, also below 0; within +-2^33
void copyBox(const uint8_t* pSource, const SurfaceSize& sourceSize, uint8_t* pDestination, const SurfaceSize& destinationSize, int64_t i64X,
             int64_t i64Y, int64_t i64Z, size_t uiPixelBytes);

} // namespace moxtexture
