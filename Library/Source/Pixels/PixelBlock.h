#pragma once

#include <cstddef>
#include <cstdint>

#include "Pixels/CMOXPixelAccessor.h"

namespace moxtexture
{

/// Pixels that the fast routes hold at a time, so that what they pass on stays in the first cache.
inline constexpr size_t k_uiBlockPixels = 256;

/// A channel of more bits gets no table of its codes: that would leave the caches.
inline constexpr unsigned int k_uiLargestTableBits = 16;

/// The channel's lowest bit in its pixel, elements as well as fields.
[[nodiscard]] inline unsigned int getLowestBit(const ChannelPlace& place)
{
    return place.bWhole ? 8 * place.uiOffset : place.uiShift;
}

/// Loads packed pixels of 1 to 8 bytes into words.
void loadPixelWords(const uint8_t* pPixels, size_t uiPixelBytes, size_t uiCount, uint64_t* pWords);
/// Stores the lower uiPixelBytes, 1 to 8, of each word.
void storePixelWords(const uint64_t* pWords, size_t uiPixelBytes, size_t uiCount, uint8_t* pPixels);

/// Up to k_uiBlockPixels pixels of one layout whose channels are read and written as codes, one channel of all pixels at a time.
///
/// A loaded block shows what CMOXPixelAccessor would read and write pixel by pixel, layouts with both elements and fields included.
/// It refers to an accessor and to pixels that the caller keeps.
class CPixelBlock
{
public:
    /// @param accessor  a layout for which isFor() is true
    explicit CPixelBlock(const CMOXPixelAccessor& accessor);

    /// False for the few layouts that must go pixel by pixel: a faulty one, fields in pixels of more than 64 bits, channels of more
    /// than 32.
    [[nodiscard]] static bool isFor(const CMOXPixelAccessor& accessor);

    /// Opens pixels for reading; they are not changed.
    void openToRead(const uint8_t* pPixels, size_t uiCount);
    /// Opens pixels for reading and writing.
    void openToChange(uint8_t* pPixels, size_t uiCount);
    /// Opens pixels that are to be written; they start as zeros.
    void openToWrite(uint8_t* pPixels, size_t uiCount);
    /// Ends what openToChange() and openToWrite() began: the pixels are only valid after it.
    void close();

    /// The bits of the channel at a position, one number a pixel.
    void getCodes(unsigned int uiPosition, uint32_t* pCodes) const;
    /// Writes a channel. Bits above an element are cut; above a field they are or'ed into its neighbours.
    void putCodes(unsigned int uiPosition, const uint32_t* pCodes);

private:
    const CMOXPixelAccessor& m_Accessor;
    size_t m_uiPixelBytes;
    bool m_bWords; ///< pixels of up to 64 bits are held as words; the elements of larger ones stay in memory
    const uint8_t* m_pSource = nullptr;
    uint8_t* m_pPixels = nullptr;
    size_t m_uiCount = 0;
    uint64_t m_aui64Words[k_uiBlockPixels];
};

} // namespace moxtexture
