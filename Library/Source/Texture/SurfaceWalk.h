#pragma once

#include <cstdint>

#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// Calls visit(uiMIPLevel, uiArrayMember, uiFace) for every surface: array members outermost, then faces, then MIP levels.
///
/// @param visit  gives false to end the walk
/// @return false if a visit did
template <typename Visit>
bool walkSurfaces(const CMOXTextureHeader& header, Visit visit)
{
    if (header.getNumFaces() == 0 || header.getNumMIPLevels() == 0)
        return true; // nothing to visit, in however many members
    for (uint32_t uiMember = 0; uiMember < header.getNumArrayMembers(); ++uiMember)
        for (uint32_t uiFace = 0; uiFace < header.getNumFaces(); ++uiFace)
            for (uint32_t uiLevel = 0; uiLevel < header.getNumMIPLevels(); ++uiLevel)
                if (!visit(uiLevel, uiMember, uiFace))
                    return false;
    return true;
}

} // namespace moxtexture
