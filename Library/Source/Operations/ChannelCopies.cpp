#include "Operations/ChannelCopies.h"

#include <cmath>

namespace moxtexture
{
namespace
{

constexpr size_t k_uiRun = 256;

/// truncateToElement() of a run of floats.
template <typename T>
void truncateRun(const float* pValues, size_t uiCount, T* pOut)
{
    if constexpr (sizeof(T) <= 2)
    {
        // Nearly always all of them fit 32 bits; then the low bits are the same, and vectors can do it.
        uint32_t uiBeyond = 0;
        for (size_t i = 0; i < uiCount; ++i)
            uiBeyond |= static_cast<uint32_t>(!(std::fabs(pValues[i]) < 2147483648.0f));
        if (uiBeyond == 0)
        {
            for (size_t i = 0; i < uiCount; ++i)
                pOut[i] = static_cast<T>(static_cast<int32_t>(pValues[i]));
            return;
        }
    }
    for (size_t i = 0; i < uiCount; ++i)
        pOut[i] = truncateToElement<T>(pValues[i]);
}

/// readQuantity() of a run of pixels. The quantity is a constant here, so that the loops have no choice in them.
template <ESourceQuantity eQuantity, typename Source, typename Destination>
void gatherRun(const Source* pSource, size_t uiCount, Destination* pOut)
{
    if constexpr (std::is_same_v<Source, Destination> && eQuantity <= eQuantityAlpha)
    {
        for (size_t i = 0; i < uiCount; ++i)
            pOut[i] = pSource[i * k_uiWorkingChannels + eQuantity];
    }
    else
    {
        std::array<float, k_uiRun> afValues;
        for (size_t i = 0; i < uiCount; ++i)
            afValues[i] = measureQuantity<Source, Destination>(pSource + i * k_uiWorkingChannels, eQuantity);
        truncateRun(afValues.data(), uiCount, pOut);
    }
}

template <typename Source, typename Destination>
using GatherRun = void (*)(const Source*, size_t, Destination*);

template <typename Source, typename Destination>
constexpr GatherRun<Source, Destination> k_apGatherRuns[eQuantityNone] = {
    gatherRun<eQuantityRed, Source, Destination>,       gatherRun<eQuantityGreen, Source, Destination>,
    gatherRun<eQuantityBlue, Source, Destination>,      gatherRun<eQuantityAlpha, Source, Destination>,
    gatherRun<eQuantityLuminance, Source, Destination>, gatherRun<eQuantityIntensity, Source, Destination>,
};

/// A plan of whole channels between equal kinds: each pixel is read and written at once. For wide elements this beats the runs.
template <typename T>
void permuteChannels(const T* pSource, T* pDestination, size_t uiPixelCount, const ChannelPlan& plan)
{
    std::array<const T*, k_uiWorkingChannels> apFrom;
    if (uiPixelCount == 0)
        return; // then the pointers may be null, and no channel lies behind them
    for (size_t c = 0; c < k_uiWorkingChannels; ++c)
        apFrom[c] = plan[c] != eQuantityNone ? pSource + plan[c] : pDestination + c;
    for (size_t i = 0; i < uiPixelCount * k_uiWorkingChannels; i += k_uiWorkingChannels)
    {
        const std::array<T, k_uiWorkingChannels> aPixel = {apFrom[0][i], apFrom[1][i], apFrom[2][i], apFrom[3][i]};
        std::copy_n(aPixel.data(), k_uiWorkingChannels, pDestination + i);
    }
}

bool isOfWholeChannels(const ChannelPlan& plan)
{
    return std::all_of(plan.begin(), plan.end(), [](ESourceQuantity e) { return e <= eQuantityAlpha || e == eQuantityNone; });
}

} // namespace

ChannelPlan makeChannelPlan(uint32_t uiCount, const EChannelName* eChannels, const EChannelName* eChannelsSource)
{
    ChannelPlan plan = {eQuantityNone, eQuantityNone, eQuantityNone, eQuantityNone};
    for (uint32_t i = 0; i < uiCount; ++i)
    {
        const ESourceQuantity eQuantity = getQuantity(eChannelsSource[i]);
        const ESourceQuantity eTarget = getQuantity(eChannels[i]);
        if (eQuantity == eQuantityNone || eTarget == eQuantityNone)
            continue;
        if (eTarget <= eQuantityAlpha)
            plan[eTarget] = eQuantity;
        else
            std::fill_n(plan.begin(), 3, eQuantity);
    }
    return plan;
}

template <typename Source, typename Destination>
void copyPixelChannels(const Source* pSource, Destination* pDestination, size_t uiPixelCount, const ChannelPlan& plan)
{
    if constexpr (std::is_same_v<Source, Destination> && sizeof(Source) == 4)
        if (isOfWholeChannels(plan))
            return permuteChannels(pSource, pDestination, uiPixelCount, plan);

    // Each quantity once, whoever takes it; behind them the channels that the destination keeps.
    std::array<std::array<Destination, k_uiRun>, eQuantityNone + k_uiWorkingChannels> aaRuns;
    std::array<bool, eQuantityNone> abTaken = {};
    std::array<size_t, k_uiWorkingChannels> auiRun;
    for (size_t c = 0; c < k_uiWorkingChannels; ++c)
    {
        auiRun[c] = plan[c] != eQuantityNone ? size_t{plan[c]} : eQuantityNone + c;
        if (plan[c] != eQuantityNone)
            abTaken[plan[c]] = true;
    }

    while (uiPixelCount != 0)
    {
        const size_t uiCount = std::min(uiPixelCount, k_uiRun);
        for (size_t uiQuantity = 0; uiQuantity < eQuantityNone; ++uiQuantity)
            if (abTaken[uiQuantity])
                k_apGatherRuns<Source, Destination>[uiQuantity](pSource, uiCount, aaRuns[uiQuantity].data());
        for (size_t c = 0; c < k_uiWorkingChannels; ++c)
            if (plan[c] == eQuantityNone)
                for (size_t i = 0; i < uiCount; ++i)
                    aaRuns[auiRun[c]][i] = pDestination[i * k_uiWorkingChannels + c];

        const Destination* const apRuns[k_uiWorkingChannels] = {aaRuns[auiRun[0]].data(), aaRuns[auiRun[1]].data(),
                                                                aaRuns[auiRun[2]].data(), aaRuns[auiRun[3]].data()};
        for (size_t i = 0; i < uiCount; ++i)
            for (size_t c = 0; c < k_uiWorkingChannels; ++c)
                pDestination[i * k_uiWorkingChannels + c] = apRuns[c][i];
        pSource += uiCount * k_uiWorkingChannels;
        pDestination += uiCount * k_uiWorkingChannels;
        uiPixelCount -= uiCount;
    }
}

template void copyPixelChannels(const uint8_t*, uint8_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint8_t*, uint16_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint8_t*, uint32_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint8_t*, float*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint16_t*, uint8_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint16_t*, uint16_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint16_t*, uint32_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint16_t*, float*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint32_t*, uint8_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint32_t*, uint16_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint32_t*, uint32_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const uint32_t*, float*, size_t, const ChannelPlan&);
template void copyPixelChannels(const float*, uint8_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const float*, uint16_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const float*, uint32_t*, size_t, const ChannelPlan&);
template void copyPixelChannels(const float*, float*, size_t, const ChannelPlan&);

} // namespace moxtexture
