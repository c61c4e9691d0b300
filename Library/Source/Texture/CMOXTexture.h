#pragma once

#include <cstdlib>
#include <memory>
#include <string>

#include "Texture/CMOXTextureHeader.h"

namespace moxtexture
{

/// A header and the one block of data that it describes: MIP level outermost, then array member, then face; within a face rows
/// from the first pixel on, or a codec's blocks in the codec's own order.
///
/// Copies are deep. Nothing resizes in place: a new shape is a new texture, assigned over the old one.
/// Where memory is refused, constructors and assignment throw std::bad_alloc; allocateData() says so instead.
/// No texture may be used by two threads at once.
class CMOXTexture : public CMOXTextureHeader
{
public:
    /// The absence of a texture: 0 bytes, no data.
    CMOXTexture();

    /// A texture of that shape.
    /// @param pData  as many bytes as the header measures, to copy; null gives zeros
    explicit CMOXTexture(const CMOXTextureHeader& header, const void* pData = nullptr);

    /// Loads a texture file, chosen by its extension; what went wrong shows only in a data size of 0.
    explicit CMOXTexture(const std::string& strPath);

    CMOXTexture(const CMOXTexture& other);
    CMOXTexture(CMOXTexture&& other) noexcept;
    CMOXTexture& operator=(const CMOXTexture& other);
    CMOXTexture& operator=(CMOXTexture&& other) noexcept;
    ~CMOXTexture() = default;

    /// The start of a surface, or null: if the texture has no such level, member or face, no data, or a header that was changed
    /// since the block was taken and now says that the surface reaches past its end.
    [[nodiscard]] uint8_t* getDataPtr(uint32_t uiMIPLevel = 0, uint32_t uiArrayMember = 0, uint32_t uiFace = 0);
    [[nodiscard]] const uint8_t* getDataPtr(uint32_t uiMIPLevel = 0, uint32_t uiArrayMember = 0, uint32_t uiFace = 0) const;

    /// Bytes of the block that is held.
    [[nodiscard]] uint32_t getBlockSize() const { return m_uiDataSize; }

    /// Releases the block and takes one of zeros for the header as it stands now.
    /// @return false, with no data and a block size of 0, where the size does not fit 32 bits or memory is refused
    [[nodiscard]] bool allocateData();
    /// Gives the block back; the block size is 0 then.
    void releaseData();

private:
    struct Free
    {
        void operator()(uint8_t* p) const { std::free(p); }
    };

    void takeBlock(uint32_t uiSize, const void* pData);

    uint32_t m_uiDataSize = 0;
    std::unique_ptr<uint8_t, Free> m_pData; // from calloc: pages that nobody touches cost nothing
};

} // namespace moxtexture
