#pragma once

#include <cstdint>

namespace moxtexture
{

[[nodiscard]] constexpr bool isPowerOfTwo(uint32_t uiValue)
{
    return uiValue != 0 && (uiValue & (uiValue - 1)) == 0;
}

/// The least multiple of uiStep (1 or more) that is not below uiValue.
[[nodiscard]] constexpr uint64_t roundUpToMultiple(uint64_t uiValue, uint64_t uiStep)
{
    return (uiValue + uiStep - 1) / uiStep * uiStep;
}

/// A 64-bit count that wraps as unsigned arithmetic does and remembers that it has.
class CWrappingCount
{
public:
    constexpr CWrappingCount(uint64_t uiValue = 0) : m_ui64Value(uiValue) {}

    constexpr CWrappingCount& operator+=(const CWrappingCount& other)
    {
        m_bWrapped = m_bWrapped || other.m_bWrapped;
        m_bWrapped = __builtin_add_overflow(m_ui64Value, other.m_ui64Value, &m_ui64Value) || m_bWrapped;
        return *this;
    }

    /// Wrapping once counts even where the factor is 0: whoever asks wants to know about sizes that cannot be meant.
    constexpr CWrappingCount& operator*=(const CWrappingCount& other)
    {
        m_bWrapped = m_bWrapped || other.m_bWrapped;
        m_bWrapped = __builtin_mul_overflow(m_ui64Value, other.m_ui64Value, &m_ui64Value) || m_bWrapped;
        return *this;
    }

    constexpr CWrappingCount& operator/=(uint64_t uiDivisor)
    {
        m_ui64Value /= uiDivisor;
        return *this;
    }

    /// The count modulo 2^64.
    [[nodiscard]] constexpr uint64_t getValue() const { return m_ui64Value; }
    [[nodiscard]] constexpr bool hasWrapped() const { return m_bWrapped; }

private:
    uint64_t m_ui64Value;
    bool m_bWrapped = false;
};

[[nodiscard]] constexpr CWrappingCount operator+(CWrappingCount a, const CWrappingCount& b)
{
    return a += b;
}

[[nodiscard]] constexpr CWrappingCount operator*(CWrappingCount a, const CWrappingCount& b)
{
    return a *= b;
}

} // namespace moxtexture
