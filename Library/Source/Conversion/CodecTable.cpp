#include "Conversion/CodecTable.h"

#include <vector>

#include "Codecs/BC/BcCompress.h"
#include "Codecs/BC/BcDecompress.h"
#include "Codecs/ETC/EtcCompressImage.h"
#include "Codecs/ETC/EtcDecompressImage.h"
#include "Codecs/MOXTC/MOXTCCompress.h"
#include "Codecs/MOXTC/MOXTCDecompress.h"
#include "Codecs/Packed/OneBit.h"
#include "Codecs/Packed/PackedYUV.h"
#include "Codecs/Packed/PairFormats.h"
#include "Codecs/Packed/SharedExponent.h"

namespace moxtexture
{
namespace
{

/// The formats 0 to 5 by the three flags that their codec wants.
struct MOXTCFlags
{
    bool bHasAlpha, b2bpp, bII;
};

constexpr MOXTCFlags k_aMOXTCFlags[] = {
    {false, true, false},  // MOXTC 2bpp RGB
    {true, true, false},   // MOXTC 2bpp RGBA
    {false, false, false}, // MOXTC 4bpp RGB
    {true, false, false},  // MOXTC 4bpp RGBA
    {false, true, true},   // MOXTCII 2bpp
    {false, false, true},  // MOXTCII 4bpp
};

uint32_t compressMOXTC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    const MOXTCFlags& flags = k_aMOXTCFlags[surface.eFormat];
    return MOXTCCompress(pSource, pTarget, surface.uiWidth, surface.uiHeight, flags.bHasAlpha, flags.b2bpp, flags.bII, surface.uiQuality);
}

/// For the formats whose name tells of no alpha. Their blocks could hold one, so that of the pixels must not get there.
uint32_t compressOpaqueMOXTC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    std::vector<uint8_t> opaque(pSource, pSource + size_t{surface.uiWidth} * surface.uiHeight * 4);
    for (size_t i = 3; i < opaque.size(); i += 4)
        opaque[i] = 255;
    return compressMOXTC(opaque.data(), pTarget, surface);
}

uint32_t decompressMOXTC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    const MOXTCFlags& flags = k_aMOXTCFlags[surface.eFormat];
    return MOXTCDecompress(pSource, pTarget, surface.uiWidth, surface.uiHeight, flags.b2bpp, flags.bII);
}

/// Words with a sign are EAC's alone: the others take and give bytes, whatever type a texture of theirs claims.
bool hasSignedWords(const CodecSurface& surface)
{
    return surface.bSigned && (surface.eFormat == ePF_EAC_R11 || surface.eFormat == ePF_EAC_RG11);
}

uint32_t compressETC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    return etcCompressImage(pSource, pTarget, surface.uiWidth, surface.uiHeight, surface.uiQuality, surface.eFormat,
                            hasSignedWords(surface));
}

uint32_t decompressETC(const uint8_t* pSource, uint8_t* pTarget, const CodecSurface& surface)
{
    return etcDecompressImage(pSource, pTarget, surface.uiWidth, surface.uiHeight, surface.eFormat, hasSignedWords(surface));
}

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
    {ePF_MOXTC_2bpp_RGB, ePF_MOXTC_2bpp_RGB, compressOpaqueMOXTC, decompressMOXTC, false, true},
    {ePF_MOXTC_2bpp_RGBA, ePF_MOXTC_2bpp_RGBA, compressMOXTC, decompressMOXTC, false, true},
    {ePF_MOXTC_4bpp_RGB, ePF_MOXTC_4bpp_RGB, compressOpaqueMOXTC, decompressMOXTC, false, true},
    {ePF_MOXTC_4bpp_RGBA, ePF_MOXTCII_4bpp, compressMOXTC, decompressMOXTC, false, true},
    {ePF_ETC1, ePF_ETC1, compressETC, decompressETC, false, false},
    {ePF_BC1, ePF_BC3, compressBC, decompressBC, false, false},
    {ePF_UYVY, ePF_YUY2, withFormat<encodePackedYUV>, withFormat<decodePackedYUV>, false, false},
    {ePF_1bpp, ePF_1bpp, withSize<encodeOneBit>, withSize<decodeOneBit>, false, true},
    {ePF_Shared_Exponent_RGB999_E5, ePF_Shared_Exponent_RGB999_E5, withSize<encodeSharedExponent>, withSize<decodeSharedExponent>, false,
     false},
    {ePF_2_Planar_RGBG_8_8_8_8, ePF_2_Planar_GRGB_8_8_8_8, withFormat<encodePairFormat>, withFormat<decodePairFormat>, false, false},
    {ePF_ETC2_RGB, ePF_EAC_RG11, compressETC, decompressETC, false, false},
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
