#include "Conversion/CodecTable.h"

#include "Codecs/BC/BcCompress.h"
#include "Codecs/BC/BcDecompress.h"
#include "Codecs/Packed/OneBit.h"
#include "Codecs/Packed/PackedYUV.h"
#include "Codecs/Packed/PairFormats.h"
#include "Codecs/Packed/SharedExponent.h"

namespace moxtexture
{
namespace
{

/// BC1, DXT2, BC2, DXT4, BC3 are the types 1 to 5 of that codec.
uint32_t bcType(const CodecSurface& surface)
{
    return surface.eFormat - ePF_BC1 + 1;
}

uint32_t compressBC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    return bcCompressImage(pSource, pTarget, surface.uiWidth, surface.uiHeight, bcType(surface));
}

uint32_t decompressBC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    return bcDecompressImage(pSource, pTarget, surface.uiWidth, surface.uiHeight, bcType(surface));
}

/// Entries that take the size and the format's number.
template <auto kEntry>
uint32_t withFormat(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    return kEntry(pSource, pTarget, surface.uiWidth, surface.uiHeight, surface.eFormat);
}

/// Entries of one format, which take the size alone.
template <auto kEntry>
uint32_t withSize(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    return kEntry(pSource, pTarget, surface.uiWidth, surface.uiHeight);
}

// BC4 to BC7 have numbers and no codec: converting to or from them fails.
constexpr CodecRow k_aCodecs[] = {
    // first, last, compress, decompress, takes depth, decodes small surfaces
    {ePF_BC1, ePF_BC3, compressBC, decompressBC, false, false},
    {ePF_UYVY, ePF_YUY2, withFormat<encodePackedYUV>, withFormat<decodePackedYUV>, false, false},
    {ePF_1bpp, ePF_1bpp, withSize<encodeOneBit>, withSize<decodeOneBit>, false, true},
    {ePF_Shared_Exponent_RGB999_E5, ePF_Shared_Exponent_RGB999_E5, withSize<encodeSharedExponent>, withSize<decodeSharedExponent>, false,
     false},
    {ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8, withFormat<encodePairFormat>, withFormat<decodePairFormat>, false, false},
};

} // namespace

const CodecRow* findCodec(EMOXTPixelFormat eFormat)
{
    for (const CodecRow& row : k_aCodecs)
        if (eFormat >= row.eFirstFormat && eFormat <= row.eLastFormat)
            return &row;
    return nullptr;
}

Intermediate getIntermediate(EMOXTPixelFormat eFormat, EMOXTChannelType eTextureChannelType)
{
    const EMOXTChannelType eEacType = isSignedChannelType(eTextureChannelType) ? eCT_SignedNormalisedShort : eCT_UnsignedNormalisedShort;
    switch (eFormat)
    {
    case ePF_ETC1:
    case ePF_ETC2_RGB:
        return {layout("rgb", 8, 8, 8), eCT_UnsignedNormalisedByte};
    case ePF_Shared_Exponent_RGB999_E5:
        return {layout("rgb", 32, 32, 32), eCT_SignedFloatingPoint};
    case ePF_EAC_R11:
        return {layout("r", 16), eEacType};
    case ePF_EAC_RG11:
        return {layout("rg", 16, 16), eEacType};
    default:
        return {k_RGBA8, eCT_UnsignedNormalisedByte};
    }
}

} // namespace moxtexture
