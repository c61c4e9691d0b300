#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace moxtexture
{

/// Reads a little-endian number of T's size; p needs no alignment.
template <typename T>
[[nodiscard]] inline T loadLE(const void* p)
{
    static_assert(std::is_trivially_copyable_v<T>);
    static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "a big-endian machine needs a byte swap here and in storeLE");
    T value;
    std::memcpy(&value, p, sizeof(T));
    return value;
}

/// Writes a number as T's size in little-endian bytes; p needs no alignment.
template <typename T>
inline void storeLE(void* p, T value)
{
    static_assert(std::is_trivially_copyable_v<T>);
    std::memcpy(p, &value, sizeof(T));
}

} // namespace moxtexture
