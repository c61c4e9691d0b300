#pragma once

#include <cstdint>

#include "Formats/PixelEncoding.h"
#include "Formats/RowUse.h"

namespace moxtexture
{

/// A DXGI format number and what it stands for. Published: the DXGI_FORMAT enumeration.
struct DXGIFormatRow
{
    uint32_t ui32Number;
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType;
    EMOXTColourSpace eColourSpace;
    ERowUse eUse;
};

/// For readers: what a number stands for, or null.
[[nodiscard]] const DXGIFormatRow* findDXGIFormat(uint32_t ui32Number);

/// For writers: the row of exactly that format, type and space. Failing that, for a numbered format a row of another type, if can be
/// of the same space; for a layout the row of the other space. Null where there is none of these either.
[[nodiscard]] const DXGIFormatRow* findDXGIFormat(const PixelEncoding& encoding);

} // namespace moxtexture
