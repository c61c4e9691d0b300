#pragma once

#include <cstdint>
#include <string>

#include "Core/Bits.h"
#include "Formats/PixelEncoding.h"
#include "Texture/CMOXTMap.h"
#include "Texture/MetaDataBlock.h"

namespace moxtexture
{

/// Metadata by owner (FourCC), then by key.
using MetaDataMap = CMOXTMap<uint32_t, CMOXTMap<uint32_t, MetaDataBlock>>;

/// The metadata that the library itself reads and writes, all under CMOXTextureHeader::k_ui32NativeFourCC.
enum ENativeMetaData : uint32_t
{
    eMetaDataBumpMap = 1,      ///< 32-bit float scale, then four channel letters
    eMetaDataCubeMapOrder = 2, ///< up to six letters
    eMetaDataOrientation = 3,  ///< three bytes, one an axis
    eMetaDataBorder = 4,       ///< three 32-bit widths
    eMetaDataPadding = 5,      ///< bytes without a meaning
};

/// The shape and the encoding of a texture, with its metadata: a plain value.
///
/// Nothing is checked: impossible sizes or format numbers measure 0 or a truncated size. Whoever takes numbers from outside asks
/// fitsDataBlock() before making a texture of them.
class CMOXTextureHeader
{
public:
    /// The bytes 'M', 'O', 'X', 3: the version word of a file and the owner of the library's own metadata.
    static constexpr uint32_t k_ui32NativeFourCC = 0x03584F4D;
    /// Bytes of the leading fields in a native file.
    static constexpr uint32_t k_uiRecordSize = 52;
    /// In place of a level: all of them.
    static constexpr uint32_t k_uiAllLevels = 0xFFFFFFFF;
    static constexpr uint32_t k_uiFlagFileCompression = 1;
    static constexpr uint32_t k_uiFlagPreMultiplied = 2;

    /// 1 by 1 by 1, one surface, format ePF_Count: measures 0 bytes.
    CMOXTextureHeader() = default;

    /// Sizes are those of MIP level 0; height comes before width. No metadata.
    CMOXTextureHeader(MOXPixelWord pixelFormat, uint32_t ui32Height, uint32_t ui32Width, uint32_t ui32Depth, uint32_t ui32NumMIPLevels,
                      uint32_t ui32NumSurfaces, uint32_t ui32NumFaces, EMOXTColourSpace eColourSpace, EMOXTChannelType eChannelType,
                      bool bPreMultiplied);

    [[nodiscard]] MOXPixelWord getPixelFormat() const { return m_PixelFormat; }
    void setPixelFormat(MOXPixelWord pixelFormat) { m_PixelFormat = pixelFormat; }
    [[nodiscard]] EMOXTChannelType getChannelType() const { return m_eChannelType; }
    void setChannelType(EMOXTChannelType eChannelType) { m_eChannelType = eChannelType; }
    [[nodiscard]] EMOXTColourSpace getColourSpace() const { return m_eColourSpace; }
    void setColourSpace(EMOXTColourSpace eColourSpace) { m_eColourSpace = eColourSpace; }
    [[nodiscard]] uint32_t getNumMIPLevels() const { return m_ui32NumMIPLevels; }
    void setNumMIPLevels(uint32_t ui32NumMIPLevels) { m_ui32NumMIPLevels = ui32NumMIPLevels; }
    [[nodiscard]] uint32_t getNumArrayMembers() const { return m_ui32NumSurfaces; }
    void setNumArrayMembers(uint32_t ui32NumSurfaces) { m_ui32NumSurfaces = ui32NumSurfaces; }
    [[nodiscard]] uint32_t getNumFaces() const { return m_ui32NumFaces; }
    void setNumFaces(uint32_t ui32NumFaces) { m_ui32NumFaces = ui32NumFaces; }
    void setWidth(uint32_t ui32Width) { m_ui32Width = ui32Width; }
    void setHeight(uint32_t ui32Height) { m_ui32Height = ui32Height; }
    void setDepth(uint32_t ui32Depth) { m_ui32Depth = ui32Depth; }
    [[nodiscard]] uint32_t getFlags() const { return m_ui32Flags; }

    /// Format, type, space and the pre-multiplied flag together.
    [[nodiscard]] PixelEncoding getEncoding() const;

    /// Of a MIP level, at least 1; 0 if the texture has no such level.
    [[nodiscard]] uint32_t getWidth(uint32_t uiMIPLevel = 0) const;
    [[nodiscard]] uint32_t getHeight(uint32_t uiMIPLevel = 0) const;
    [[nodiscard]] uint32_t getDepth(uint32_t uiMIPLevel = 0) const;

    /// 0 for ASTC (counted by block), for BC6, BC7 and for unknown numbers.
    [[nodiscard]] uint32_t getBitsPerPixel() const { return getBitsPerPixel(m_PixelFormat); }
    [[nodiscard]] static uint32_t getBitsPerPixel(MOXPixelWord pixelFormat);

    /// The smallest surface that a format can hold, in pixels. Takes only numbers; 1, 1, 1 for layouts.
    static void getMinDimensions(MOXPixelWord pixelFormat, uint32_t& x, uint32_t& y, uint32_t& z);

    [[nodiscard]] bool isFileCompressed() const { return (m_ui32Flags & k_uiFlagFileCompression) != 0; }
    [[nodiscard]] bool isPreMultiplied() const { return (m_ui32Flags & k_uiFlagPreMultiplied) != 0; }
    /// On purpose: true sets its own bit, false clears every flag.
    void setIsPreMultiplied(bool bPreMultiplied);

    /// Bytes of one MIP level, or of all with k_uiAllLevels: of one surface, or of all array members and faces.
    ///
    /// A level at or past the end still measures. The result is truncated to 32 bits without notice; see fitsDataBlock().
    [[nodiscard]] uint32_t getDataSize(uint32_t uiMIPLevel, bool bAllSurfaces, bool bAllFaces) const;
    /// The whole data block.
    [[nodiscard]] uint32_t getDataSize() const { return getDataSize(k_uiAllLevels, true, true); }
    /// getDataSize() in pixels; 0 for a format without bits per pixel.
    [[nodiscard]] uint32_t getPixelCount(uint32_t uiMIPLevel, bool bAllSurfaces, bool bAllFaces) const;

    /// The same before truncation.
    [[nodiscard]] CWrappingCount measure(uint32_t uiMIPLevel, bool bAllSurfaces, bool bAllFaces) const;
    /// False where the whole block would take 4 GiB or more, so that its size as told is not its size.
    [[nodiscard]] bool fitsDataBlock() const;

    /// The leading fields as they stand in a native file.
    void writeRecord(uint8_t (&aui8Record)[k_uiRecordSize]) const;
    /// Takes over the leading fields, the metadata size among them; the metadata itself stays.
    void readRecord(const uint8_t (&aui8Record)[k_uiRecordSize]);

    /// Bytes that the metadata takes in a file.
    [[nodiscard]] uint32_t getMetaDataSize() const { return m_ui32MetaDataSize; }
    void setMetaDataSize(uint32_t ui32MetaDataSize) { m_ui32MetaDataSize = ui32MetaDataSize; }
    /// What getMetaDataSize() is where every block was accounted for: the sum over the blocks held.
    [[nodiscard]] uint32_t sumMetaDataSize() const;
    [[nodiscard]] const MetaDataMap& getMetaData() const { return m_MetaData; }
    [[nodiscard]] MetaDataMap& getMetaData() { return m_MetaData; }

    /// Stores a block under its owner and key.
    /// On purpose: a block that it replaces stays in the metadata size, unlike with the setters below.
    void addMetaData(MetaDataBlock block);
    /// Adds a block of zeros so that the texture data of a native file starts at a multiple of ui32Alignment; 0 and 1 add nothing.
    /// On purpose: counted modulo 2^32, so only powers of two are met, and a block without bytes is added where none are missing.
    void addPaddingMetaData(uint32_t ui32Alignment);

    [[nodiscard]] bool isBumpMap() const;
    /// @param strChannelOrder  up to four letters that say what each channel holds, such as "xyz"; more are cut off
    void setBumpMap(float fScale, const std::string& strChannelOrder);

    /// Up to six letters; empty for a texture of one face or without the record.
    [[nodiscard]] std::string getCubeMapOrder() const;

    /// 0, or for a mirrored axis 1 (X, the S axis runs to the left), 2 (Y, T runs up), 4 (Z, R runs out). Files may hold other
    /// values, which count as 0 wherever this is compared.
    [[nodiscard]] uint32_t getOrientation(EMOXTAxis eAxis) const;
    /// @param ui32Mask  1, 2 and 4 or'ed, as above
    void setOrientation(uint32_t ui32Mask);

    /// Widths of the border in pixels on each axis; 0 without the record.
    void getBorder(uint32_t& x, uint32_t& y, uint32_t& z) const;
    void setBorder(uint32_t x, uint32_t y, uint32_t z);

protected:
    /// How many of the levels 0 to uiLevelCount - 1 have the size of uiMIPLevel, which is below 32 and one of them: sizes come round
    /// every 32 levels, so that no number of levels takes long to measure.
    [[nodiscard]] static uint32_t countEqualLevels(uint32_t uiMIPLevel, uint32_t uiLevelCount);

private:
    [[nodiscard]] CWrappingCount measureLevelBits(uint32_t uiMIPLevel) const;
    [[nodiscard]] const MetaDataBlock* findNativeBlock(ENativeMetaData eKey) const;
    void setNativeBlock(ENativeMetaData eKey, const void* pData, uint32_t uiSize);

    uint32_t m_ui32Version = k_ui32NativeFourCC;
    uint32_t m_ui32Flags = 0;
    MOXPixelWord m_PixelFormat;
    EMOXTColourSpace m_eColourSpace = eCS_Linear;
    EMOXTChannelType m_eChannelType = eCT_UnsignedNormalisedByte;
    uint32_t m_ui32Height = 1;
    uint32_t m_ui32Width = 1;
    uint32_t m_ui32Depth = 1;
    uint32_t m_ui32NumSurfaces = 1;
    uint32_t m_ui32NumFaces = 1;
    uint32_t m_ui32NumMIPLevels = 1;
    uint32_t m_ui32MetaDataSize = 0;
    MetaDataMap m_MetaData;
};

} // namespace moxtexture
