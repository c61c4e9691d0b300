#include "Texture/CMOXTexture.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace moxtexture
{

CMOXTexture::CMOXTexture() = default;

CMOXTexture::CMOXTexture(const CMOXTextureHeader& header, const void* pData) : CMOXTextureHeader(header)
{
    takeBlock(getDataSize(), pData);
}

CMOXTexture::CMOXTexture(const CMOXTexture& other) : CMOXTextureHeader(other)
{
    if (other.m_pData)
        takeBlock(other.m_uiDataSize, other.m_pData.get());
    m_uiDataSize = other.m_uiDataSize;
}

CMOXTexture::CMOXTexture(CMOXTexture&& other) noexcept
{
    *this = std::move(other);
}

CMOXTexture& CMOXTexture::operator=(const CMOXTexture& other)
{
    if (this != &other)
        *this = CMOXTexture(other);
    return *this;
}

CMOXTexture& CMOXTexture::operator=(CMOXTexture&& other) noexcept
{
    if (this == &other)
        return *this;
    CMOXTextureHeader::operator=(std::move(static_cast<CMOXTextureHeader&>(other)));
    m_uiDataSize = std::exchange(other.m_uiDataSize, 0);
    m_pData = std::move(other.m_pData);
    static_cast<CMOXTextureHeader&>(other) = CMOXTextureHeader();
    return *this;
}

void CMOXTexture::takeBlock(uint32_t uiSize, const void* pData)
{
    m_uiDataSize = uiSize;
    if (uiSize == 0)
        return;
    m_pData.reset(static_cast<uint8_t*>(pData != nullptr ? std::malloc(uiSize) : std::calloc(uiSize, 1)));
    if (!m_pData)
        throw std::bad_alloc();
    if (pData != nullptr)
        std::memcpy(m_pData.get(), pData, uiSize);
}

bool CMOXTexture::allocateData()
{
    releaseData();
    if (!fitsDataBlock())
        return false;
    const uint32_t uiSize = getDataSize();
    if (uiSize == 0)
        return true;
    m_pData.reset(static_cast<uint8_t*>(std::calloc(uiSize, 1)));
    m_uiDataSize = m_pData ? uiSize : 0;
    return m_pData != nullptr;
}

void CMOXTexture::releaseData()
{
    m_pData.reset();
    m_uiDataSize = 0;
}

uint8_t* CMOXTexture::getDataPtr(uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace)
{
    return const_cast<uint8_t*>(static_cast<const CMOXTexture*>(this)->getDataPtr(uiMIPLevel, uiArrayMember, uiFace));
}

const uint8_t* CMOXTexture::getDataPtr(uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace) const
{
    if (!m_pData || uiMIPLevel == k_uiAllLevels || uiMIPLevel >= getNumMIPLevels() || uiArrayMember >= getNumArrayMembers() ||
        uiFace >= getNumFaces())
        return nullptr;

    CWrappingCount offset = 0;
    for (uint32_t i = 0; i < std::min(32u, uiMIPLevel); ++i)
        offset += measure(i, true, true) * countEqualLevels(i, uiMIPLevel);
    offset += measure(uiMIPLevel, false, true) * uiArrayMember;
    const CWrappingCount surface = measure(uiMIPLevel, false, false);
    offset += surface * uiFace;

    const CWrappingCount end = offset + surface;
    if (end.hasWrapped() || end.getValue() > m_uiDataSize)
        return nullptr;
    return m_pData.get() + offset.getValue();
}

} // namespace moxtexture
