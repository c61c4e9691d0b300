#include "Pixels/Dither.h"

#include <algorithm>

#include "Formats/ChannelTypes.h"

namespace moxtexture
{
namespace
{

struct FormatBits
{
    EMOXTPixelFormat eFirst;
    EMOXTPixelFormat eLast;
    DitherBits auiBits;
};

constexpr FormatBits k_aFormatBits[] = {
    // clang-format off
    { ePF_MOXTC_2bpp_RGB,            ePF_MOXTC_2bpp_RGB,            {  5,  5,  5, 0 } },
    { ePF_MOXTC_2bpp_RGBA,           ePF_MOXTC_2bpp_RGBA,           {  4,  4,  4, 3 } },
    { ePF_MOXTC_4bpp_RGB,            ePF_MOXTC_4bpp_RGB,            {  5,  5,  5, 0 } },
    { ePF_MOXTC_4bpp_RGBA,           ePF_MOXTCII_4bpp,              {  4,  4,  4, 3 } },
    { ePF_ETC1,                      ePF_ETC1,                      {  4,  4,  4, 4 } },
    { ePF_BC1,                       ePF_BC1,                       {  5,  6,  5, 1 } },
    { ePF_DXT2,                      ePF_BC3,                       {  5,  6,  5, 8 } },
    { ePF_BC4,                       ePF_BC4,                       {  8,  0,  0, 0 } },
    { ePF_BC5,                       ePF_BC5,                       {  8,  8,  0, 0 } },
    { ePF_BC6,                       ePF_BC6,                       { 16, 16, 16, 0 } },
    { ePF_BC7,                       ePF_YUY2,                      {  8,  8,  8, 0 } },
    { ePF_1bpp,                      ePF_1bpp,                      {  1,  1,  1, 0 } },
    { ePF_Shared_Exponent_RGB999_E5, ePF_Shared_Exponent_RGB999_E5, { 14, 14, 14, 0 } },
    { ePF_2_Planar_RGBG_8_8_8_8,     ePF_2_Planar_GRGB_8_8_8_8,     {  8,  8,  8, 0 } },
    { ePF_ETC2_RGB,                  ePF_ETC2_RGB,                  {  4,  4,  4, 0 } },
    { ePF_ETC2_RGBA,                 ePF_ETC2_RGBA,                 {  4,  4,  4, 4 } },
    { ePF_ETC2_RGB_A1,               ePF_ETC2_RGB_A1,               {  5,  5,  5, 1 } },
    { ePF_EAC_R11,                   ePF_EAC_R11,                   { 11,  0,  0, 0 } },
    { ePF_EAC_RG11,                  ePF_EAC_RG11,                  { 11, 11,  0, 0 } },
    // clang-format on
};

DitherBits getLayoutBits(MOXPixelWord format)
{
    DitherBits auiBits = {};
    for (unsigned int i = 0; i < 4; ++i)
    {
        const uint8_t uiBits = format.getChannelBits(i);
        switch (getChannelName(format.getChannelLetter(i)))
        {
        case eChannelRed:
            auiBits[0] = uiBits;
            break;
        case eChannelGreen:
            auiBits[1] = uiBits;
            break;
        case eChannelBlue:
            auiBits[2] = uiBits;
            break;
        case eChannelLuminance:
        case eChannelIntensity:
            auiBits[0] = auiBits[1] = auiBits[2] = uiBits;
            break;
        case eChannelAlpha:
        case eChannelUnspecified:
            auiBits[3] = uiBits;
            break;
        case eChannelNone:
            break;
        }
    }
    return auiBits;
}

void addClamped(uint8_t& uiByte, int iError)
{
    uiByte = static_cast<uint8_t>(std::clamp(uiByte + iError, 0, 255));
}

} // namespace

DitherBits getDitherBits(MOXPixelWord newFormat)
{
    if (!newFormat.isCompressed())
        return getLayoutBits(newFormat);
    for (const FormatBits& row : k_aFormatBits)
        if (newFormat.getFormat() >= row.eFirst && newFormat.getFormat() <= row.eLast)
            return row.auiBits;
    return {};
}

void ditherSurfaceReference(uint8_t* pData, MOXPixelWord newFormat, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiDepth)
{
    if (pData == nullptr)
        return;
    const DitherBits auiBits = getDitherBits(newFormat);
    const auto at = [&](size_t uiChannel, size_t x, size_t y, size_t z) -> uint8_t&
    { return pData[((z * uiHeight + y) * uiWidth + x) * 4 + uiChannel]; };

    for (size_t uiChannel = 0; uiChannel < auiBits.size(); ++uiChannel)
    {
        const unsigned int uiKept = auiBits[uiChannel];
        if (uiKept < 1 || uiKept > 7)
            continue;
        const unsigned int uiCut = 8 - uiKept;
        for (size_t x = 0; x < uiWidth; ++x)
            for (size_t y = 0; y < uiHeight; ++y)
                for (size_t z = 0; z < uiDepth; ++z)
                {
                    uint8_t& uiByte = at(uiChannel, x, y, z);
                    // The high bits fill the low ones; the sum is never above 255.
                    const int iShown = ((uiByte >> uiCut) << uiCut) + (uiByte >> uiKept);
                    const int iError = uiByte - iShown;
                    uiByte = static_cast<uint8_t>(iShown);
                    const bool bRight = x + 1 < uiWidth;
                    if (bRight)
                        addClamped(at(uiChannel, x + 1, y, z), iError / 2);
                    if (y + 1 == uiHeight)
                        continue;
                    if (bRight)
                        addClamped(at(uiChannel, x + 1, y + 1, z), iError / 4);
                    addClamped(at(uiChannel, x, y + 1, z), iError / 4);
                }
    }
}

} // namespace moxtexture
