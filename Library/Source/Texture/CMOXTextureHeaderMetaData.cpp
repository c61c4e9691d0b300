#include <algorithm>
#include <utility>

#include "Core/ByteOrder.h"
#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

uint32_t CMOXTextureHeader::sumMetaDataSize() const
{
    uint32_t uiSum = 0;
    for (uint32_t i = 0; i < m_MetaData.getCount(); ++i)
    {
        const auto& blocks = m_MetaData.getValue(i);
        for (uint32_t j = 0; j < blocks.getCount(); ++j)
            uiSum += MetaDataBlock::k_uiRecordSize + blocks.getValue(j).u32DataSize;
    }
    return uiSum;
}

const MetaDataBlock* CMOXTextureHeader::findNativeBlock(ENativeMetaData eKey) const
{
    const auto* pBlocks = m_MetaData.find(k_ui32NativeFourCC);
    return pBlocks != nullptr ? pBlocks->find(eKey) : nullptr;
}

void CMOXTextureHeader::setNativeBlock(ENativeMetaData eKey, const void* pData, uint32_t uiSize)
{
    // Also a block without data counted its record when it was added.
    if (const MetaDataBlock* pOld = findNativeBlock(eKey))
        m_ui32MetaDataSize -= MetaDataBlock::k_uiRecordSize + pOld->u32DataSize;
    addMetaData(MetaDataBlock(k_ui32NativeFourCC, eKey, pData, uiSize));
}

void CMOXTextureHeader::addMetaData(MetaDataBlock block)
{
    const uint32_t uiSize = MetaDataBlock::k_uiRecordSize + block.u32DataSize;
    MetaDataBlock& place = m_MetaData[block.DevFOURCC][block.u32Key];
    place = std::move(block);
    m_ui32MetaDataSize += uiSize;
}

void CMOXTextureHeader::addPaddingMetaData(uint32_t ui32Alignment)
{
    if (ui32Alignment <= 1)
        return;
    // Header, this block's own record and the metadata so far stand before the data.
    const uint32_t uiSize = (0u - k_uiRecordSize - MetaDataBlock::k_uiRecordSize - m_ui32MetaDataSize) % ui32Alignment;
    addMetaData(MetaDataBlock(k_ui32NativeFourCC, eMetaDataPadding, nullptr, uiSize));
}

bool CMOXTextureHeader::isBumpMap() const
{
    return findNativeBlock(eMetaDataBumpMap) != nullptr;
}

void CMOXTextureHeader::setBumpMap(float fScale, const std::string& strChannelOrder)
{
    uint8_t aui8Data[8] = {};
    storeLE(aui8Data, fScale);
    std::copy_n(strChannelOrder.begin(), std::min<size_t>(4, strChannelOrder.size()), aui8Data + 4);
    setNativeBlock(eMetaDataBumpMap, aui8Data, sizeof(aui8Data));
}

std::string CMOXTextureHeader::getCubeMapOrder() const
{
    const MetaDataBlock* pBlock = m_ui32NumFaces < 2 ? nullptr : findNativeBlock(eMetaDataCubeMapOrder);
    if (pBlock == nullptr)
        return {};
    char acOrder[7] = {};
    pBlock->read(acOrder, 6);
    return acOrder;
}

uint32_t CMOXTextureHeader::getOrientation(EMOXTAxis eAxis) const
{
    uint8_t aui8Data[3] = {};
    if (const MetaDataBlock* pBlock = findNativeBlock(eMetaDataOrientation))
        pBlock->read(aui8Data, sizeof(aui8Data));
    return eAxis <= eAxisZ ? aui8Data[eAxis] : 0;
}

void CMOXTextureHeader::setOrientation(uint32_t ui32Mask)
{
    const uint8_t aui8Data[3] = {static_cast<uint8_t>(ui32Mask & 1), static_cast<uint8_t>(ui32Mask & 2),
                                 static_cast<uint8_t>(ui32Mask & 4)};
    setNativeBlock(eMetaDataOrientation, aui8Data, sizeof(aui8Data));
}

void CMOXTextureHeader::getBorder(uint32_t& x, uint32_t& y, uint32_t& z) const
{
    uint8_t aui8Data[12] = {};
    if (const MetaDataBlock* pBlock = findNativeBlock(eMetaDataBorder))
        pBlock->read(aui8Data, sizeof(aui8Data));
    x = loadLE<uint32_t>(aui8Data);
    y = loadLE<uint32_t>(aui8Data + 4);
    z = loadLE<uint32_t>(aui8Data + 8);
}

void CMOXTextureHeader::setBorder(uint32_t x, uint32_t y, uint32_t z)
{
    uint8_t aui8Data[12];
    storeLE(aui8Data, x);
    storeLE(aui8Data + 4, y);
    storeLE(aui8Data + 8, z);
    setNativeBlock(eMetaDataBorder, aui8Data, sizeof(aui8Data));
}

} // namespace moxtexture
