#include "Codecs/BC/BcCompress.h"

#include <cstring>
#include <vector>

#include "Codecs/BC/BcAlphaBlock.h"
#include "Codecs/BC/BcBlockRow.h"
#include "Codecs/BC/BcCompressBlock.h"
#include "Core/Bits.h"
#include "Core/BlockPadding.h"

namespace moxtexture
{

namespace
{

/// The row encoders: the fast ones or the plain ones.
struct RowEncoders
{
    decltype(&bcAlphaRow) encodeAlpha;
    decltype(&bcColourRow) encodeColours;
};

/// Gives the pixels of each row of blocks, padded to whole blocks.
class CPaddedRows
{
public:
    CPaddedRows(const uint8_t* pSource, uint32_t uiWidth, uint32_t uiHeight)
        : m_pSource(pSource),
          m_uiWidth(uiWidth),
          m_uiHeight(uiHeight),
          m_uiPaddedWidth(roundUpToMultiple(uiWidth, k_uiBcSide)),
          m_uiPaddedHeight(roundUpToMultiple(uiHeight, k_uiBcSide))
    {
        if (m_uiWidth != m_uiPaddedWidth || m_uiHeight != m_uiPaddedHeight)
            m_padded.resize(m_uiPaddedWidth * k_uiBcRowBytes);
    }

    [[nodiscard]] uint64_t getPaddedWidth() const { return m_uiPaddedWidth; }
    [[nodiscard]] uint64_t getPaddedHeight() const { return m_uiPaddedHeight; }

    /// The first pixel of row uiRow, a multiple of 4, and three rows below it, getPaddedWidth() pixels each without padding
    /// between them; valid until the next call.
    const uint8_t* getRows(uint64_t uiRow)
    {
        if (m_uiWidth == m_uiPaddedWidth && uiRow + k_uiBcSide <= m_uiHeight)
            return m_pSource + uiRow * m_uiWidth * k_uiPixelBytes;
        for (uint64_t y = 0; y < k_uiBcSide; ++y)
        {
            const uint8_t* pRow = m_pSource + getPaddingSource(uiRow + y, m_uiHeight, m_uiPaddedHeight) * m_uiWidth * k_uiPixelBytes;
            uint8_t* pPadded = m_padded.data() + y * m_uiPaddedWidth * k_uiPixelBytes;
            std::memcpy(pPadded, pRow, m_uiWidth * k_uiPixelBytes);
            for (uint64_t x = m_uiWidth; x < m_uiPaddedWidth; ++x)
            {
                const uint64_t uiFrom = getPaddingSource(x, m_uiWidth, m_uiPaddedWidth);
                std::memcpy(pPadded + x * k_uiPixelBytes, pRow + uiFrom * k_uiPixelBytes, k_uiPixelBytes);
            }
        }
        return m_padded.data();
    }

private:
    static constexpr size_t k_uiPixelBytes = 4;

    const uint8_t* m_pSource;
    uint64_t m_uiWidth;
    uint64_t m_uiHeight;
    uint64_t m_uiPaddedWidth;
    uint64_t m_uiPaddedHeight;
    std::vector<uint8_t> m_padded;
};

uint32_t countBytes(uint64_t uiWidth, uint64_t uiHeight, uint32_t uiType)
{
    const uint64_t uiPixels = uiWidth * uiHeight;
    return static_cast<uint32_t>(hasBcAlphaPart(uiType) ? uiPixels : uiPixels / 2);
}

uint32_t compressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType,
                       const RowEncoders& encoders)
{
    if (!isBcType(uiType) || uiWidth == 0 || uiHeight == 0)
        return 0;
    if (pSource == nullptr || pDestination == nullptr)
        return countBytes(uiWidth, uiHeight, uiType);

    CPaddedRows rows(pSource, uiWidth, uiHeight);
    const bool bHasAlphaPart = hasBcAlphaPart(uiType);
    const size_t uiBlockBytes = getBcBlockBytes(uiType);
    const size_t uiBlockCount = rows.getPaddedWidth() / k_uiBcSide;
    BcIndexSlots slots;
    for (uint64_t uiRow = 0; uiRow < rows.getPaddedHeight(); uiRow += k_uiBcSide)
    {
        BcRowToEncode row{rows.getRows(uiRow), uiBlockCount * k_uiBcRowBytes, pDestination, uiBlockBytes, uiBlockCount};
        if (bHasAlphaPart)
        {
            encoders.encodeAlpha(row, hasExplicitAlpha(uiType));
            row.pParts += k_uiBcPartBytes;
        }
        encoders.encodeColours(row, !bHasAlphaPart, slots);
        pDestination += uiBlockCount * uiBlockBytes;
    }
    return countBytes(rows.getPaddedWidth(), rows.getPaddedHeight(), uiType);
}

} // namespace

uint32_t bcCompressImage(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType)
{
    return compressImage(pSource, pDestination, uiWidth, uiHeight, uiType, {bcAlphaRow, bcColourRow});
}

uint32_t bcCompressImageReference(const uint8_t* pSource, uint8_t* pDestination, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiType)
{
    return compressImage(pSource, pDestination, uiWidth, uiHeight, uiType, {bcAlphaRowReference, bcColourRowReference});
}

} // namespace moxtexture
