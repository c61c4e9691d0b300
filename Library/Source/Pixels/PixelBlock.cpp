#include "Pixels/PixelBlock.h"

#include <cstring>

#include "Core/ByteOrder.h"

namespace moxtexture
{
namespace
{

template <size_t uiPixelBytes>
void loadWordsOf(const uint8_t* pPixels, size_t uiCount, uint64_t* pWords)
{
    for (size_t i = 0; i < uiCount; ++i)
    {
        uint64_t ui64Word = 0;
        std::memcpy(&ui64Word, pPixels + i * uiPixelBytes, uiPixelBytes);
        pWords[i] = ui64Word;
    }
}

template <size_t uiPixelBytes>
void storeWordsOf(const uint64_t* pWords, size_t uiCount, uint8_t* pPixels)
{
    for (size_t i = 0; i < uiCount; ++i)
        std::memcpy(pPixels + i * uiPixelBytes, &pWords[i], uiPixelBytes);
}

template <typename Element>
void loadElements(const uint8_t* pFirst, size_t uiStride, size_t uiCount, uint32_t* pCodes)
{
    for (size_t i = 0; i < uiCount; ++i)
        pCodes[i] = loadLE<Element>(pFirst + i * uiStride);
}

template <typename Element>
void storeElements(const uint32_t* pCodes, size_t uiStride, size_t uiCount, uint8_t* pFirst)
{
    for (size_t i = 0; i < uiCount; ++i)
        storeLE(pFirst + i * uiStride, static_cast<Element>(pCodes[i]));
}

/// The channel's bits in a pixel of up to 64 bits, elements as well as fields.
uint64_t getWordMask(const ChannelPlace& place)
{
    return place.bWhole ? getLowMask(place.uiBits) << (8 * place.uiOffset) : place.ui64Access;
}

} // namespace

void loadPixelWords(const uint8_t* pPixels, size_t uiPixelBytes, size_t uiCount, uint64_t* pWords)
{
    constexpr decltype(&loadWordsOf<1>) apLoad[] = {loadWordsOf<1>, loadWordsOf<2>, loadWordsOf<3>, loadWordsOf<4>,
                                                    loadWordsOf<5>, loadWordsOf<6>, loadWordsOf<7>, loadWordsOf<8>};
    apLoad[uiPixelBytes - 1](pPixels, uiCount, pWords);
}

void storePixelWords(const uint64_t* pWords, size_t uiPixelBytes, size_t uiCount, uint8_t* pPixels)
{
    constexpr decltype(&storeWordsOf<1>) apStore[] = {storeWordsOf<1>, storeWordsOf<2>, storeWordsOf<3>, storeWordsOf<4>,
                                                      storeWordsOf<5>, storeWordsOf<6>, storeWordsOf<7>, storeWordsOf<8>};
    apStore[uiPixelBytes - 1](pWords, uiCount, pPixels);
}

CPixelBlock::CPixelBlock(const CMOXPixelAccessor& accessor)
    : m_Accessor(accessor), m_uiPixelBytes(accessor.getBytes()), m_bWords(m_uiPixelBytes <= sizeof(uint64_t))
{
}

bool CPixelBlock::isFor(const CMOXPixelAccessor& accessor)
{
    if (accessor.getFlags() != 0 || accessor.getBytes() == 0)
        return false;
    for (unsigned int i = 0; i < accessor.getChannelCount(); ++i)
    {
        const ChannelPlace& place = accessor.getPlace(i);
        if (place.uiBits > 32 || (!place.bWhole && accessor.getBytes() > sizeof(uint64_t)))
            return false;
    }
    return true;
}

void CPixelBlock::openToRead(const uint8_t* pPixels, size_t uiCount)
{
    m_pSource = pPixels;
    m_pPixels = nullptr;
    m_uiCount = uiCount;
    if (m_bWords)
        loadPixelWords(pPixels, m_uiPixelBytes, uiCount, m_aui64Words);
}

void CPixelBlock::openToChange(uint8_t* pPixels, size_t uiCount)
{
    openToRead(pPixels, uiCount);
    m_pPixels = pPixels;
}

void CPixelBlock::openToWrite(uint8_t* pPixels, size_t uiCount)
{
    m_pSource = pPixels;
    m_pPixels = pPixels;
    m_uiCount = uiCount;
    if (m_bWords)
        std::memset(m_aui64Words, 0, uiCount * sizeof(uint64_t));
    else
        std::memset(pPixels, 0, uiCount * m_uiPixelBytes);
}

void CPixelBlock::close()
{
    if (m_bWords && m_pPixels != nullptr)
        storePixelWords(m_aui64Words, m_uiPixelBytes, m_uiCount, m_pPixels);
    m_pPixels = nullptr;
}

void CPixelBlock::getCodes(unsigned int uiPosition, uint32_t* pCodes) const
{
    const ChannelPlace& place = m_Accessor.getPlace(uiPosition);
    if (m_bWords)
    {
        const uint64_t ui64Mask = getLowMask(place.uiBits);
        const unsigned int uiShift = getLowestBit(place);
        for (size_t i = 0; i < m_uiCount; ++i)
            pCodes[i] = static_cast<uint32_t>((m_aui64Words[i] >> uiShift) & ui64Mask);
    }
    else if (place.uiBits == 16)
        loadElements<uint16_t>(m_pSource + place.uiOffset, m_uiPixelBytes, m_uiCount, pCodes);
    else
        loadElements<uint32_t>(m_pSource + place.uiOffset, m_uiPixelBytes, m_uiCount, pCodes);
}

void CPixelBlock::putCodes(unsigned int uiPosition, const uint32_t* pCodes)
{
    const ChannelPlace& place = m_Accessor.getPlace(uiPosition);
    if (m_bWords)
    {
        const uint64_t ui64Mask = getWordMask(place);
        const uint64_t ui64Cut = place.bWhole ? ui64Mask : ~uint64_t{0};
        const unsigned int uiShift = getLowestBit(place);
        for (size_t i = 0; i < m_uiCount; ++i)
            m_aui64Words[i] = (m_aui64Words[i] & ~ui64Mask) | ((uint64_t{pCodes[i]} << uiShift) & ui64Cut);
    }
    else if (place.uiBits == 16)
        storeElements<uint16_t>(pCodes, m_uiPixelBytes, m_uiCount, m_pPixels + place.uiOffset);
    else
        storeElements<uint32_t>(pCodes, m_uiPixelBytes, m_uiCount, m_pPixels + place.uiOffset);
}

} // namespace moxtexture
