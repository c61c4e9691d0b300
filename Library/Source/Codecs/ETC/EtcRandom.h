#pragma once

#include <cstdint>

namespace moxtexture
{

/// The sequence of pseudo-random numbers that the clustering of two colours draws its seeds from: a linear congruence in 32 bits,
/// of which bits 16 to 30 are given out.
///
/// Each clustering owns one, so any number of encodes may run at once and a block's result does not depend on what ran before.
class CEtcRandom
{
public:
    static constexpr uint32_t k_uiMaximum = 32767; ///< the greatest number that next() gives; the least is 0

    explicit constexpr CEtcRandom(uint32_t uiSeed) : m_ui32State(uiSeed) {}

    constexpr uint32_t next()
    {
        m_ui32State = m_ui32State * 214013u + 2531011u;
        return (m_ui32State >> 16) & k_uiMaximum;
    }

private:
    uint32_t m_ui32State;
};

} // namespace moxtexture
