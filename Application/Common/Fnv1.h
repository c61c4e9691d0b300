#pragma once

#include <cstdint>
#include <string_view>

/// The 32-bit FNV-1 hash of bytes: multiply, then exclusive or. On purpose: nothing hashes to 0.
constexpr uint32_t fnv1(std::string_view bytes)
{
    constexpr uint32_t ui32Offset = 0x811c9dc5;
    constexpr uint32_t ui32Prime = 16777619;
    uint32_t ui32Hash = bytes.empty() ? 0 : ui32Offset;
    for (const char cByte : bytes)
        ui32Hash = (ui32Hash * ui32Prime) ^ static_cast<uint8_t>(cByte);
    return ui32Hash;
}
