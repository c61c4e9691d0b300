#pragma once

#include <cstdint>
#include <map>
#include <new>

#include "Texture/CMOXTArray.h"

namespace moxtexture
{

/// Values by key, in the order of insertion: the order in which metadata goes into files.
///
/// Finds a key as a search from the first to the last would, but through an index: a hostile file may bring a million keys.
template <typename K, typename V>
class CMOXTMap
{
public:
    /// The value of a key; a key that is not there is appended with a default value. Throws std::bad_alloc where memory is refused.
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
        m_Index.emplace(key, uiIndex);
        m_Keys.append(key);
        return m_Values[m_Values.append(V())];
    }

    /// The value of a key, or null; never inserts.
    [[nodiscard]] const V* find(const K& key) const
    {
        const auto it = m_Index.find(key);
        return it != m_Index.end() ? &m_Values[it->second] : nullptr;
    }
    [[nodiscard]] V* find(const K& key) { return const_cast<V*>(static_cast<const CMOXTMap*>(this)->find(key)); }

    /// Takes a key out; the others keep their order.
    /// @return false if the key was not there
    bool remove(const K& key)
    {
        CMOXTMap kept;
        for (uint32_t i = 0; i < getCount(); ++i)
            if (!(m_Keys[i] == key))
                kept[m_Keys[i]] = m_Values[i];
        const bool bFound = kept.getCount() != getCount();
        *this = kept;
        return bFound;
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
    std::map<K, uint32_t> m_Index; // place by key; ordered, so that no choice of keys makes it slow
};

} // namespace moxtexture
