#pragma once

#include <cstddef>
#include <cstdint>

#include "Codecs/ETC/EtcRandom.h"

namespace moxtexture
{

// Numbers that the clustering of two colours would else compute anew for every block.

constexpr uint32_t k_uiEtcClusterAttempts = 10;
constexpr uint32_t k_uiEtcClusterIterations = 10;

/// The random numbers of every clustering as parts of 1: by attempt, centre and dimension (and a zero).
struct EtcClusterSeeds
{
    alignas(64) double aaaf[k_uiEtcClusterAttempts][2][4];
};

constexpr EtcClusterSeeds makeEtcClusterSeeds()
{
    EtcClusterSeeds seeds{};
    CEtcRandom random(10000);
    for (auto& aaCentres : seeds.aaaf)
        for (auto& afCentre : aaCentres)
            for (size_t c = 0; c < 3; ++c)
                afCentre[c] = random.next() / double{CEtcRandom::k_uiMaximum};
    return seeds;
}

inline constexpr EtcClusterSeeds k_etcClusterSeeds = makeEtcClusterSeeds();

/// By count of pixels: 2^20 over twice the count, rounded up. The product with a sum of doubled bytes and the count, shifted right by
/// 20, is the quotient.
struct EtcMeanDivisors
{
    uint32_t aui32[16];
};

constexpr EtcMeanDivisors makeEtcMeanDivisors()
{
    EtcMeanDivisors divisors{};
    for (uint32_t uiCount = 1; uiCount < 16; ++uiCount)
        divisors.aui32[uiCount] = ((1u << 20) + 2 * uiCount - 1) / (2 * uiCount);
    return divisors;
}

inline constexpr EtcMeanDivisors k_etcMeanDivisors = makeEtcMeanDivisors();

} // namespace moxtexture
