#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace moxtexture
{

/// Columns that are worked on at once: their rows of floats stay in the processor's cache, and memory does not grow with the
/// width of a surface.
inline constexpr uint32_t k_uiTileColumns = 512;

/// Made rows of one slice, of which the next row of the destination mostly needs the same again.
///
/// @tparam uiRows    rows needed at a time, and kept
/// @tparam uiFloats  in a row
template <size_t uiRows, size_t uiFloats>
class CRowCache
{
public:
    void clear() { m_auiKeys.fill(k_uiNone); }

    /// Finds the wanted rows, which may be less than uiRows different ones, and makes those that are not kept.
    ///
    /// @param make   called as make(uiRow, pFloats)
    /// @param pRows  gets uiRows pointers, one for each wanted row, good until the next call
    template <typename Make>
    void select(const std::array<uint32_t, uiRows>& auiWanted, const Make& make, const float** pRows)
    {
        for (size_t i = 0; i < uiRows; ++i)
        {
            auto itSlot = std::find(m_auiKeys.begin(), m_auiKeys.end(), auiWanted[i]);
            if (itSlot == m_auiKeys.end())
            {
                itSlot =
                    std::find_if(m_auiKeys.begin(), m_auiKeys.end(),
                                 [&](uint32_t uiKey) { return std::find(auiWanted.begin(), auiWanted.end(), uiKey) == auiWanted.end(); });
                *itSlot = auiWanted[i];
                make(auiWanted[i], m_aafRows[static_cast<size_t>(itSlot - m_auiKeys.begin())].data());
            }
            pRows[i] = m_aafRows[static_cast<size_t>(itSlot - m_auiKeys.begin())].data();
        }
    }

private:
    static constexpr uint32_t k_uiNone = 0xFFFFFFFF; // never a row: sizes are 32-bit counts

    std::array<uint32_t, uiRows> m_auiKeys;
    std::array<std::array<float, uiFloats>, uiRows> m_aafRows;
};

} // namespace moxtexture
