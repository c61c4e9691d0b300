#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

namespace moxtexture
{

/// One metadata record: an owner, a key, and an opaque run of bytes that the record owns.
struct MetaDataBlock
{
    /// Bytes of a record in a file before its data: owner, key and size.
    static constexpr uint32_t k_uiRecordSize = 12;

    uint32_t DevFOURCC = 0;
    uint32_t u32Key = 0;
    uint32_t u32DataSize = 0;
    std::unique_ptr<uint8_t[]> Data; ///< u32DataSize bytes, or null

    MetaDataBlock() = default;

    /// @param pData  uiSize bytes to copy; null gives bytes of zero
    MetaDataBlock(uint32_t ui32FourCC, uint32_t ui32Key, const void* pData, uint32_t uiSize)
        : DevFOURCC(ui32FourCC), u32Key(ui32Key), u32DataSize(uiSize), Data(new uint8_t[uiSize]())
    {
        if (pData != nullptr && uiSize != 0)
            std::memcpy(Data.get(), pData, uiSize);
    }

    MetaDataBlock(const MetaDataBlock& other) { *this = other; }
    MetaDataBlock(MetaDataBlock&&) = default;

    MetaDataBlock& operator=(const MetaDataBlock& other)
    {
        if (this == &other)
            return *this;
        // First the copy: where memory is refused, size and data still belong together.
        std::unique_ptr<uint8_t[]> pCopy(other.Data ? new uint8_t[other.u32DataSize] : nullptr);
        if (pCopy && other.u32DataSize != 0)
            std::memcpy(pCopy.get(), other.Data.get(), other.u32DataSize);
        DevFOURCC = other.DevFOURCC;
        u32Key = other.u32Key;
        u32DataSize = other.u32DataSize;
        Data = std::move(pCopy);
        return *this;
    }
    MetaDataBlock& operator=(MetaDataBlock&&) = default;
    ~MetaDataBlock() = default;

    /// Copies up to uiSize bytes of the data from its start; what the record does not hold reads as zeros.
    void read(void* pTarget, uint32_t uiSize) const
    {
        const uint32_t uiHeld = Data ? (u32DataSize < uiSize ? u32DataSize : uiSize) : 0;
        if (uiHeld != 0)
            std::memcpy(pTarget, Data.get(), uiHeld);
        if (uiSize != uiHeld)
            std::memset(static_cast<uint8_t*>(pTarget) + uiHeld, 0, uiSize - uiHeld);
    }
};

} // namespace moxtexture
