#pragma once

#include <cstdint>

#include "Formats/D3DFormatTable.h"

namespace moxtexture
{

/// Numbers of the DDS header. Published: the DDS_HEADER and DDS_HEADER_DXT10 structures.
enum EDdsNumbers : uint32_t
{
    eDdsHeaderSize = 124,
    eDdsPixelFormatSize = 32,

    eDdsRequiredFields = 0x1007, ///< caps, height, width and pixel format are there
    eDdsPitch = 8,
    eDdsMIPCount = 0x20000,
    eDdsLinearSize = 0x80000,
    eDdsDepth = 0x800000,

    eDdsCapsComplex = 8,
    eDdsCapsTexture = 0x1000,
    eDdsCapsMIPMap = 0x400000,
    eDdsCaps2Cube = 0xFE00, ///< a cube with all of its faces; any of the bits makes a cube of all six
    eDdsCaps2Volume = 0x200000,

    eDdsResource1D = 2,
    eDdsResource2D = 3,
    eDdsResource3D = 4,
    eDdsMiscCube = 4,
};

/// A file has one face or these.
inline constexpr uint32_t k_uiDdsCubeFaces = 6;

/// The fields of the plain header that mean something here.
struct DdsHeader
{
    /// Bytes of the leading "DDS " and the header.
    static constexpr uint32_t k_uiRecordSize = 4 + eDdsHeaderSize;

    uint32_t ui32Flags = 0;
    uint32_t ui32Height = 0;
    uint32_t ui32Width = 0;
    uint32_t ui32PitchOrLinearSize = 0;
    uint32_t ui32Depth = 0;
    uint32_t ui32MIPCount = 0;
    D3DPixelFormat pixelFormat;
    uint32_t ui32Caps = 0;
    uint32_t ui32Caps2 = 0;

    /// True where the extended header follows.
    [[nodiscard]] bool isExtended() const;

    /// Takes the fields from the first bytes of a file; the size of the pixel format block is not looked at.
    /// @return false without "DDS " and the header's own size in front
    [[nodiscard]] bool readRecord(const uint8_t (&aui8Record)[k_uiRecordSize]);
    void writeRecord(uint8_t (&aui8Record)[k_uiRecordSize]) const;
};

/// The header that names a DXGI format, behind the plain one.
struct DdsExtendedHeader
{
    static constexpr uint32_t k_uiRecordSize = 20;

    uint32_t ui32Format = 0;
    uint32_t ui32Dimension = 0;
    uint32_t ui32MiscFlags = 0;
    uint32_t ui32ArraySize = 0; ///< of cubes, where the members are cubes

    void readRecord(const uint8_t (&aui8Record)[k_uiRecordSize]);
    void writeRecord(uint8_t (&aui8Record)[k_uiRecordSize]) const;
};

} // namespace moxtexture
