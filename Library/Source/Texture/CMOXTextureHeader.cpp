#include "Texture/CMOXTextureHeader.h"

#include <algorithm>

#include "Core/ByteOrder.h"

namespace moxtexture
{
namespace
{

/// A size of the top level as it is at a level. The shift count is taken modulo 32, so the sizes come round every 32 levels.
constexpr uint32_t sizeAtLevel(uint32_t uiSize, uint32_t uiMIPLevel)
{
    return std::max(1u, uiSize >> (uiMIPLevel % 32));
}

} // namespace

CMOXTextureHeader::CMOXTextureHeader(MOXPixelWord pixelFormat, uint32_t ui32Height, uint32_t ui32Width, uint32_t ui32Depth,
                                     uint32_t ui32NumMIPLevels, uint32_t ui32NumSurfaces, uint32_t ui32NumFaces,
                                     EMOXTColourSpace eColourSpace, EMOXTChannelType eChannelType, bool bPreMultiplied)
    : m_ui32Flags(bPreMultiplied ? k_uiFlagPreMultiplied : 0),
      m_PixelFormat(pixelFormat),
      m_eColourSpace(eColourSpace),
      m_eChannelType(eChannelType),
      m_ui32Height(ui32Height),
      m_ui32Width(ui32Width),
      m_ui32Depth(ui32Depth),
      m_ui32NumSurfaces(ui32NumSurfaces),
      m_ui32NumFaces(ui32NumFaces),
      m_ui32NumMIPLevels(ui32NumMIPLevels)
{
}

PixelEncoding CMOXTextureHeader::getEncoding() const
{
    return {m_PixelFormat, m_eChannelType, m_eColourSpace, isPreMultiplied()};
}

uint32_t CMOXTextureHeader::countEqualLevels(uint32_t uiMIPLevel, uint32_t uiLevelCount)
{
    return (uiLevelCount - uiMIPLevel - 1) / 32 + 1; // adding 31 before dividing would wrap near 2^32
}

uint32_t CMOXTextureHeader::getWidth(uint32_t uiMIPLevel) const
{
    return uiMIPLevel < m_ui32NumMIPLevels ? sizeAtLevel(m_ui32Width, uiMIPLevel) : 0;
}

uint32_t CMOXTextureHeader::getHeight(uint32_t uiMIPLevel) const
{
    return uiMIPLevel < m_ui32NumMIPLevels ? sizeAtLevel(m_ui32Height, uiMIPLevel) : 0;
}

uint32_t CMOXTextureHeader::getDepth(uint32_t uiMIPLevel) const
{
    return uiMIPLevel < m_ui32NumMIPLevels ? sizeAtLevel(m_ui32Depth, uiMIPLevel) : 0;
}

uint32_t CMOXTextureHeader::getBitsPerPixel(MOXPixelWord pixelFormat)
{
    if (pixelFormat.isCompressed())
        return getPixelFormatRow(pixelFormat.getFormat()).uiBitsPerPixel;
    uint32_t uiBits = 0;
    for (unsigned int i = 0; i < 4; ++i)
        uiBits += pixelFormat.getChannelBits(i);
    return uiBits;
}

void CMOXTextureHeader::getMinDimensions(MOXPixelWord pixelFormat, uint32_t& x, uint32_t& y, uint32_t& z)
{
    const PixelFormatRow& row = getPixelFormatRow(pixelFormat.isCompressed() ? pixelFormat.getFormat() : ePF_Count);
    x = row.uiMinX;
    y = row.uiMinY;
    z = row.uiMinZ;
}

void CMOXTextureHeader::setIsPreMultiplied(bool bPreMultiplied)
{
    m_ui32Flags = bPreMultiplied ? m_ui32Flags | k_uiFlagPreMultiplied : 0;
}

CWrappingCount CMOXTextureHeader::measureLevelBits(uint32_t uiMIPLevel) const
{
    uint32_t uiMinX;
    uint32_t uiMinY;
    uint32_t uiMinZ;
    getMinDimensions(m_PixelFormat, uiMinX, uiMinY, uiMinZ);
    const uint64_t ui64Width = roundUpToMultiple(sizeAtLevel(m_ui32Width, uiMIPLevel), uiMinX);
    const uint64_t ui64Height = roundUpToMultiple(sizeAtLevel(m_ui32Height, uiMIPLevel), uiMinY);
    const uint64_t ui64Depth = roundUpToMultiple(sizeAtLevel(m_ui32Depth, uiMIPLevel), uiMinZ);

    if (m_PixelFormat.isCompressed() && isASTC(m_PixelFormat.getFormat()))
        return CWrappingCount(ui64Depth / uiMinZ) * (ui64Height / uiMinY) * (ui64Width / uiMinX) * 128;
    return CWrappingCount(getBitsPerPixel()) * ui64Depth * ui64Height * ui64Width;
}

CWrappingCount CMOXTextureHeader::measure(uint32_t uiMIPLevel, bool bAllSurfaces, bool bAllFaces) const
{
    CWrappingCount size = 0;
    if (uiMIPLevel != k_uiAllLevels)
    {
        size = measureLevelBits(uiMIPLevel);
    }
    else
    {
        for (uint32_t i = 0; i < std::min(32u, m_ui32NumMIPLevels); ++i)
            size += measureLevelBits(i) * countEqualLevels(i, m_ui32NumMIPLevels);
    }

    size /= 8; // bits so far
    if (bAllFaces)
        size *= m_ui32NumFaces;
    if (bAllSurfaces)
        size *= m_ui32NumSurfaces;
    return size;
}

uint32_t CMOXTextureHeader::getDataSize(uint32_t uiMIPLevel, bool bAllSurfaces, bool bAllFaces) const
{
    return static_cast<uint32_t>(measure(uiMIPLevel, bAllSurfaces, bAllFaces).getValue());
}

uint32_t CMOXTextureHeader::getPixelCount(uint32_t uiMIPLevel, bool bAllSurfaces, bool bAllFaces) const
{
    const uint32_t uiBitsPerPixel = getBitsPerPixel();
    if (uiBitsPerPixel == 0)
        return 0;
    return static_cast<uint32_t>(uint64_t{getDataSize(uiMIPLevel, bAllSurfaces, bAllFaces)} * 8 / uiBitsPerPixel);
}

bool CMOXTextureHeader::fitsDataBlock() const
{
    const CWrappingCount size = measure(k_uiAllLevels, true, true);
    return !size.hasWrapped() && size.getValue() <= 0xFFFFFFFF;
}

void CMOXTextureHeader::writeRecord(uint8_t (&aui8Record)[k_uiRecordSize]) const
{
    storeLE<uint32_t>(aui8Record, m_ui32Version);
    storeLE<uint32_t>(aui8Record + 4, m_ui32Flags);
    storeLE<uint64_t>(aui8Record + 8, m_PixelFormat.getWord());
    storeLE<uint32_t>(aui8Record + 16, m_eColourSpace);
    storeLE<uint32_t>(aui8Record + 20, m_eChannelType);
    storeLE<uint32_t>(aui8Record + 24, m_ui32Height);
    storeLE<uint32_t>(aui8Record + 28, m_ui32Width);
    storeLE<uint32_t>(aui8Record + 32, m_ui32Depth);
    storeLE<uint32_t>(aui8Record + 36, m_ui32NumSurfaces);
    storeLE<uint32_t>(aui8Record + 40, m_ui32NumFaces);
    storeLE<uint32_t>(aui8Record + 44, m_ui32NumMIPLevels);
    storeLE<uint32_t>(aui8Record + 48, m_ui32MetaDataSize);
}

void CMOXTextureHeader::readRecord(const uint8_t (&aui8Record)[k_uiRecordSize])
{
    m_ui32Version = loadLE<uint32_t>(aui8Record);
    m_ui32Flags = loadLE<uint32_t>(aui8Record + 4);
    m_PixelFormat = MOXPixelWord(loadLE<uint64_t>(aui8Record + 8));
    m_eColourSpace = static_cast<EMOXTColourSpace>(loadLE<uint32_t>(aui8Record + 16));
    m_eChannelType = static_cast<EMOXTChannelType>(loadLE<uint32_t>(aui8Record + 20));
    m_ui32Height = loadLE<uint32_t>(aui8Record + 24);
    m_ui32Width = loadLE<uint32_t>(aui8Record + 28);
    m_ui32Depth = loadLE<uint32_t>(aui8Record + 32);
    m_ui32NumSurfaces = loadLE<uint32_t>(aui8Record + 36);
    m_ui32NumFaces = loadLE<uint32_t>(aui8Record + 40);
    m_ui32NumMIPLevels = loadLE<uint32_t>(aui8Record + 44);
    m_ui32MetaDataSize = loadLE<uint32_t>(aui8Record + 48);
}

} // namespace moxtexture
