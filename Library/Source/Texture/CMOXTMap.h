#pragma once

#include <cstdint>
#include <new>
#include <utility>

#include "Texture/CMOXTArray.h"

namespace moxtexture
{

/// Values by key, in the order of insertion: the order in which metadata goes into files. Look-up searches from the first on.
///
/// Copies are deep. Where memory is refused, copies and operator[] throw std::bad_alloc and leave the map as it was.
template <typename K, typename V>
class CMOXTMap
{
public:
    CMOXTMap() = default;

    CMOXTMap(const CMOXTMap& other) : m_Keys(other.m_Keys), m_Values(other.m_Values)
    {
        // An array that got no memory stays empty without a word; keys and values must not part.
        if (m_Keys.getSize() != other.getCount() || m_Values.getSize() != other.getCount())
            throw std::bad_alloc();
    }

    CMOXTMap& operator=(const CMOXTMap& other)
    {
        if (this != &other)
            *this = CMOXTMap(other);
        return *this;
    }

    CMOXTMap(CMOXTMap&&) noexcept = default;
    CMOXTMap& operator=(CMOXTMap&&) noexcept = default;
    ~CMOXTMap() = default;

    /// The value of a key; a key that is not there is appended with a default value.
    V& operator[](const K& key)
    {
        if (V* pValue = find(key))
            return *pValue;
        // Room for both before either grows: a key without its value would shift all that follow.
        const uint32_t uiIndex = getCount();
        m_Keys.reserve(uiIndex + 1);
        m_Values.reserve(uiIndex + 1);
        if (m_Keys.getCapacity() <= uiIndex || m_Values.getCapacity() <= uiIndex)
            throw std::bad_alloc();
        m_Keys.append(key);
        return m_Values[m_Values.append(V())];
    }

    /// The value of a key, or null; never inserts.
    [[nodiscard]] const V* find(const K& key) const
    {
        for (uint32_t i = 0; i < getCount(); ++i)
            if (m_Keys[i] == key)
                return &m_Values[i];
        return nullptr;
    }
    [[nodiscard]] V* find(const K& key) { return const_cast<V*>(static_cast<const CMOXTMap*>(this)->find(key)); }

    /// Takes a key out; the others keep their order.
    /// @return false if the key was not there
    bool remove(const K& key)
    {
        if (!contains(key))
            return false;
        CMOXTMap kept;
        for (uint32_t i = 0; i < getCount(); ++i)
            if (!(m_Keys[i] == key))
                kept[m_Keys[i]] = std::move(m_Values[i]);
        *this = std::move(kept);
        return true;
    }

    [[nodiscard]] bool contains(const K& key) const { return find(key) != nullptr; }
    [[nodiscard]] uint32_t getCount() const { return m_Keys.getSize(); }
    [[nodiscard]] const K& getKey(uint32_t uiIndex) const { return m_Keys[uiIndex]; }
    [[nodiscard]] const V& getValue(uint32_t uiIndex) const { return m_Values[uiIndex]; }
    [[nodiscard]] V& getValue(uint32_t uiIndex) { return m_Values[uiIndex]; }
    [[nodiscard]] uint32_t getKeyCapacity() const { return m_Keys.getCapacity(); }

private:
    CMOXTArray<K> m_Keys;
    CMOXTArray<V> m_Values;
};

} // namespace moxtexture
