#pragma once

#include <cstdint>

namespace moxtexture
{

/// In a table of file numbers: the directions in which a row is looked up. Where readers and writers differ on purpose, it shows here.
enum class ERowUse : uint8_t
{
    eBoth,
    eReadOnly,
    eWriteOnly,
};

[[nodiscard]] constexpr bool mayBeRead(ERowUse eUse)
{
    return eUse != ERowUse::eWriteOnly;
}

[[nodiscard]] constexpr bool mayBeWritten(ERowUse eUse)
{
    return eUse != ERowUse::eReadOnly;
}

} // namespace moxtexture
