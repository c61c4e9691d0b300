#pragma once

#include <cstddef>
#include <cstdint>

#include "Conversion/CodecTable.h"
#include "Texture/CMOXTexture.h"
#include "Texture/SurfaceSize.h"

namespace moxtexture
{

/// One surface on its way through a codec, in either direction.
struct SurfaceJob
{
    const CodecRow* pCodec = nullptr;
    const uint8_t* pSource = nullptr;
    uint8_t* pTarget = nullptr;
    SurfaceSize real;   ///< as the texture has it
    SurfaceSize raised; ///< each axis at least as large as the smallest surface of the format
    CodecSurface surface;

    /// @return false if the format has no codec, or one of the textures no such surface
    [[nodiscard]] bool prepare(const CMOXTexture& source, CMOXTexture& target, EMOXTPixelFormat eFormat, uint32_t uiArrayMember,
                               uint32_t uiFace, uint32_t uiMIPLevel, bool bSigned);

    /// Runs an entry of the codec over a surface of that size: at once if it takes a depth, else slice by slice.
    /// @param uiSourceSlice, uiTargetSlice  bytes from one depth slice to the next
    /// @return the bytes that the codec told, added up; 0 if it failed on any slice
    [[nodiscard]] uint32_t run(CodecEntry pEntry, const SurfaceSize& size, size_t uiSourceSlice, size_t uiTargetSlice);
};

} // namespace moxtexture
