#pragma once

#include <array>
#include <cstdint>

#include "Formats/ChannelTypes.h"
#include "Formats/PixelWord.h"
#include "Pixels/ChannelValues.h"

namespace moxtexture
{

/// What is wrong with a layout; pixels of a layout with any of these are never converted.
enum ELayoutFault : uint32_t
{
    eFaultNameTwice = 1,
    eFaultNameWithoutBits = 2,
    eFaultBitsWithoutName = 4,
    eFaultNameAfterGap = 8,
    eFaultPartOfAByte = 16, ///< the bits of a pixel are not whole bytes
    eFaultTooWide = 32,     ///< more than 128 bits a pixel
};

/// Where one channel lies in a pixel and how its bits are read and written.
///
/// In a packed pixel, one little-endian word, the first letter has the highest bits. A whole element has a place of its own, the
/// first letter first in memory.
struct ChannelPlace
{
    EChannelName eName = eChannelNone;
    unsigned int uiBits = 0;
    unsigned int uiShift = 0;  ///< of a field: the lowest bit in the pixel's word
    bool bWhole = false;       ///< an element, not a field
    uint64_t ui64Access = 0;   ///< the element's index, which is the position, or the mask of the field in the lowest 64 bits
    unsigned int uiOffset = 0; ///< of an element: its first byte
    EValueRule eReadRule = EValueRule::eNothing;
    EValueRule eWriteRule = EValueRule::eNothing;
};

/// One pixel of any uncompressed layout, its channels read and written as 32-bit floats.
///
/// The plain form of all conversion: the pumps below SurfacePump.h give the same bytes faster.
/// Any word and any channel type number make an accessor; what it cannot reach reads as 0.0 and is not written: elements past the
/// end of the pixel (where a layout mixes elements and fields), fields above the lowest 64 bits or wider, unknown channel types.
class CMOXPixelAccessor
{
public:
    static constexpr uint32_t k_uiRawBytes = 16;
    static constexpr unsigned int k_uiPositions = 4;

    CMOXPixelAccessor(MOXPixelWord pixelFormat, EMOXTChannelType eChannelType);

    /// ELayoutFault or'ed; 0 for a good layout.
    [[nodiscard]] uint32_t getFlags() const { return m_ui32Flags; }
    [[nodiscard]] EMOXTChannelType getChannelType() const { return m_eChannelType; }
    [[nodiscard]] unsigned int getChannelCount() const { return m_uiChannelCount; }
    /// Bits of a pixel, up to 1020.
    [[nodiscard]] unsigned int getTotalBits() const { return m_uiTotalBits; }
    /// Whole bytes of a pixel: where the next one starts. More than getPixel() holds only for eFaultTooWide.
    [[nodiscard]] uint32_t getBytes() const { return m_uiTotalBits / 8; }
    /// @param uiPosition  0 to 3
    [[nodiscard]] const ChannelPlace& getPlace(unsigned int uiPosition) const { return m_aPlaces[uiPosition]; }
    /// The position of a channel, or -1.
    [[nodiscard]] int getPosition(EChannelName eName) const { return eName < m_ai8Position.size() ? m_ai8Position[eName] : -1; }
    [[nodiscard]] bool hasChannel(EChannelName eName) const { return getPosition(eName) >= 0; }

    /// How many of red, green and blue there are.
    [[nodiscard]] unsigned int getColourCount() const;
    /// 1.0 for alpha and the unspecified channel where the layout has none, 0.0 for any other.
    [[nodiscard]] float readChannel(EChannelName eName) const;
    /// Does nothing for a channel that the layout has not.
    void writeChannel(EChannelName eName, float fValue);

    /// @param pBytes  getBytes() bytes, of which up to 16 are taken
    void setPixel(const uint8_t* pBytes);
    /// The pixel: 16 bytes, of which getBytes() count.
    [[nodiscard]] const uint8_t* getPixel() const { return m_aui8Raw.data(); }

    /// Fills this pixel from another one. Luminance and intensity spread over missing colours, and are made from colours: luminance
    /// as a weighted sum, intensity as the mean.
    /// @return false, with the pixel as it was, if either layout has a fault
    bool convertFrom(const CMOXPixelAccessor& source);

    /// Takes the colours of this pixel, already cut to its precision, from one space to the other; alpha stays.
    void applyColourSpace(EMOXTColourSpace eNewSpace, EMOXTColourSpace eOldSpace);

private:
    [[nodiscard]] float readPlace(const ChannelPlace& place) const;
    void writePlace(const ChannelPlace& place, float fValue);

    uint32_t m_ui32Flags = 0;
    EMOXTChannelType m_eChannelType;
    unsigned int m_uiTotalBits = 0;
    unsigned int m_uiChannelCount = 0;
    std::array<ChannelPlace, k_uiPositions> m_aPlaces;
    std::array<int8_t, 8> m_ai8Position;
    std::array<uint8_t, k_uiRawBytes> m_aui8Raw = {};
};

} // namespace moxtexture
