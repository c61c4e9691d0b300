#pragma once

#include <cstdint>

#include "Texture/CMOXTArray.h"

namespace moxtexture
{

/// Values by key, in the order of insertion: the order in which metadata goes into files. Look-up is a linear search.
template <typename K, typename V>
class CMOXTMap
{
public:
    /// The value of a key; a key that is not there is appended with a default value.
    V& operator[](const K& key)
    {
        if (V* pValue = find(key))
            return *pValue;
        m_Keys.append(key);
        m_Values.append(V());
        return m_Values[m_Values.getSize() - 1];
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
};

} // namespace moxtexture
