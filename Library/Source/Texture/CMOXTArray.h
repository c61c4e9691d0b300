#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace moxtexture
{

/// A growing array of default-constructible, assignable elements.
///
/// Where memory is refused, reserve() and assignment leave the array as it was; append() gives the index that the element
/// would have had and drops it.
template <typename T>
class CMOXTArray
{
public:
    CMOXTArray() { takeBlock(k_uiFirstCapacity); }
    CMOXTArray(const CMOXTArray& other) { copyFrom(other); }
    CMOXTArray(CMOXTArray&& other) noexcept { swap(other); }

    CMOXTArray& operator=(const CMOXTArray& other)
    {
        if (this != &other)
            copyFrom(other);
        return *this;
    }

    CMOXTArray& operator=(CMOXTArray&& other) noexcept
    {
        swap(other);
        return *this;
    }

    virtual ~CMOXTArray() = default;

    /// @return the index of the new element
    uint32_t append(T element) // by value: it may be one of the array's own
    {
        reserve(m_uiSize + 1);
        if (m_uiSize >= m_uiCapacity)
            return m_uiSize;
        m_pData[m_uiSize] = std::move(element);
        return m_uiSize++;
    }

    /// Makes room for uiCount elements; grows at least to the double.
    void reserve(uint32_t uiCount)
    {
        if (uiCount > m_uiCapacity)
            takeBlock(std::max(uiCount, 2 * m_uiCapacity));
    }

    [[nodiscard]] uint32_t getSize() const { return m_uiSize; }
    [[nodiscard]] uint32_t getCapacity() const { return m_uiCapacity; }
    [[nodiscard]] T& operator[](uint32_t uiIndex) { return m_pData[uiIndex]; }
    [[nodiscard]] const T& operator[](uint32_t uiIndex) const { return m_pData[uiIndex]; }

private:
    static constexpr uint32_t k_uiFirstCapacity = 16;

    static std::unique_ptr<T[]> allocate(uint32_t uiCapacity) { return std::unique_ptr<T[]>(new (std::nothrow) T[uiCapacity]); }

    void takeBlock(uint32_t uiCapacity)
    {
        std::unique_ptr<T[]> pBlock = allocate(uiCapacity);
        if (!pBlock)
            return;
        for (uint32_t i = 0; i < m_uiSize; ++i)
            pBlock[i] = std::move(m_pData[i]);
        m_pData = std::move(pBlock);
        m_uiCapacity = uiCapacity;
    }

    void copyFrom(const CMOXTArray& other)
    {
        std::unique_ptr<T[]> pBlock = allocate(other.m_uiCapacity);
        if (!pBlock)
            return;
        std::copy_n(other.m_pData.get(), other.m_uiSize, pBlock.get());
        m_pData = std::move(pBlock);
        m_uiSize = other.m_uiSize;
        m_uiCapacity = other.m_uiCapacity;
    }

    void swap(CMOXTArray& other) noexcept
    {
        std::swap(m_uiSize, other.m_uiSize);
        std::swap(m_uiCapacity, other.m_uiCapacity);
        std::swap(m_pData, other.m_pData);
    }

    uint32_t m_uiSize = 0;
    uint32_t m_uiCapacity = 0;
    std::unique_ptr<T[]> m_pData;
};

} // namespace moxtexture
