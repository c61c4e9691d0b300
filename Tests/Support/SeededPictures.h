#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace testsupport
{

/// Numbers that are the same on every machine and in every run (SplitMix64).
class CSeededRandom
{
public:
    explicit CSeededRandom(uint64_t ui64Seed) : m_ui64State(ui64Seed) {}

    uint64_t next64();
    uint32_t next32() { return static_cast<uint32_t>(next64() >> 32); }
    /// 0 to uiCount - 1; uiCount of 1 or more.
    uint32_t below(uint32_t uiCount) { return static_cast<uint32_t>((uint64_t{next32()} * uiCount) >> 32); }
    /// 0 to 1, 1 left out.
    float nextFloat() { return static_cast<float>(next32() >> 8) * (1.0f / 16777216.0f); }
    std::vector<uint8_t> bytes(size_t uiCount);

private:
    uint64_t m_ui64State;
};

/// A picture like those that become textures: clouds of noise at many scales as in a photo, hard edges, smooth gradients, rows
/// of letters, and an alpha channel that is opaque, cut out and soft in turn.
///
/// @return uiWidth * uiHeight pixels of four bytes, red first, rows without padding
std::vector<uint8_t> makePicture(uint32_t uiWidth, uint32_t uiHeight, uint64_t ui64Seed = 1);

} // namespace testsupport
