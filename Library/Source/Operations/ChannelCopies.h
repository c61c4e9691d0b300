#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "Formats/ChannelTypes.h"
#include "Operations/ChannelKind.h"

namespace moxtexture
{

/// A float as an element: its whole part, not clamped, modulo the range of the element. 0 for NaN and from 2^63 on.
/// On purpose: exactly 2^32 is the maximum of the integer kind and so its full channel, not the 0 to which it would wrap.
template <typename T>
[[nodiscard]] constexpr T truncateToElement(float fValue)
{
    if constexpr (std::is_same_v<T, float>)
        return fValue;
    else
    {
        if (std::is_same_v<T, uint32_t> && fValue == ChannelKind<uint32_t>::kMaximum)
            return std::numeric_limits<T>::max();
        constexpr float fLimit = 9223372036854775808.0f;
        return fValue > -fLimit && fValue < fLimit ? static_cast<T>(static_cast<int64_t>(fValue)) : T(0);
    }
}

/// Float results from whole numbers stay finite: the largest short times the ratio below would be rounded up to infinity.
template <typename Source, typename Destination>
[[nodiscard]] constexpr float keepFinite(float fValue)
{
    return std::is_same_v<Destination, float> && std::is_integral_v<Source> ? std::min(fValue, ChannelKind<float>::kMaximum) : fValue;
}

/// A channel of one kind in the measure of another: times the ratio of their maxima, which is formed first, so that a full channel
/// stays one. Between equal kinds the value itself.
template <typename Source, typename Destination>
[[nodiscard]] constexpr float convertChannel(Source value)
{
    constexpr float fRatio = std::is_same_v<Source, uint32_t> ? ChannelKind<Destination>::kMaximum * 2.3283064e-10f
                                                              : ChannelKind<Destination>::kMaximum / ChannelKind<Source>::kMaximum;
    return keepFinite<Source, Destination>(static_cast<float>(value) * fRatio);
}

/// What a copy takes from a source pixel. The first four are the channels in their places.
enum ESourceQuantity : uint32_t
{
    eQuantityRed = 0,
    eQuantityGreen = 1,
    eQuantityBlue = 2,
    eQuantityAlpha = 3,
    eQuantityLuminance = 4,
    eQuantityIntensity = 5,
    eQuantityNone = 6, ///< nothing: the destination keeps what it has
};

/// For each of the destination's four channels what it takes.
using ChannelPlan = std::array<ESourceQuantity, k_uiWorkingChannels>;

[[nodiscard]] constexpr ESourceQuantity getQuantity(EChannelName eSource)
{
    if (eSource == eChannelUnspecified)
        return eQuantityAlpha;
    return eSource >= eChannelRed && eSource <= eChannelIntensity ? static_cast<ESourceQuantity>(eSource - eChannelRed) : eQuantityNone;
}

/// The pairs of copyPixelChannelsReference() in the end: of several copies into one channel the last one.
[[nodiscard]] ChannelPlan makeChannelPlan(uint32_t uiCount, const EChannelName* eChannels, const EChannelName* eChannelsSource);

/// A quantity of a pixel in the measure of the destination. Luminance and intensity are formed from converted channels.
template <typename Source, typename Destination>
[[nodiscard]] constexpr float measureQuantity(const Source* pPixel, ESourceQuantity eQuantity)
{
    const auto channel = [&](size_t uiChannel) { return convertChannel<Source, Destination>(pPixel[uiChannel]); };
    switch (eQuantity)
    {
    case eQuantityLuminance:
        return keepFinite<Source, Destination>(0.2126f * channel(0) + 0.7152f * channel(1) + 0.0722f * channel(2));
    case eQuantityIntensity:
        return keepFinite<Source, Destination>((channel(0) + channel(1) + channel(2)) / 3.0f);
    default:
        return channel(eQuantity);
    }
}

/// The same as an element. A channel between equal kinds is copied bit by bit, also where no float holds the number.
template <typename Source, typename Destination>
[[nodiscard]] constexpr Destination readQuantity(const Source* pPixel, ESourceQuantity eQuantity)
{
    if constexpr (std::is_same_v<Source, Destination>)
        if (eQuantity <= eQuantityAlpha)
            return pPixel[eQuantity];
    return truncateToElement<Destination>(measureQuantity<Source, Destination>(pPixel, eQuantity));
}

/// Copies channels pixel by pixel, pair by pair: what copyPixelChannels() has to equal.
///
/// @param pSource, pDestination  uiPixelCount pixels of four elements; may be the same, all reads of a pixel come before its writes
/// @param uiCount                of the pairs: what goes where, as CopyChannels() takes them
template <typename Source, typename Destination>
void copyPixelChannelsReference(const Source* pSource, Destination* pDestination, size_t uiPixelCount, uint32_t uiCount,
                                const EChannelName* eChannels, const EChannelName* eChannelsSource)
{
    for (size_t p = 0; p < uiPixelCount; ++p, pSource += k_uiWorkingChannels, pDestination += k_uiWorkingChannels)
    {
        std::array<Destination, eQuantityNone> aKept = {};
        for (uint32_t i = 0; i < uiCount; ++i)
        {
            const ESourceQuantity eQuantity = getQuantity(eChannelsSource[i]);
            if (eQuantity != eQuantityNone)
                aKept[eQuantity] = readQuantity<Source, Destination>(pSource, eQuantity);
        }
        for (uint32_t i = 0; i < uiCount; ++i)
        {
            const ESourceQuantity eQuantity = getQuantity(eChannelsSource[i]);
            const ESourceQuantity eTarget = getQuantity(eChannels[i]);
            if (eQuantity == eQuantityNone || eTarget == eQuantityNone)
                continue;
            if (eTarget <= eQuantityAlpha)
                pDestination[eTarget] = aKept[eQuantity];
            else
                std::fill_n(pDestination, 3, aKept[eQuantity]);
        }
    }
}

/// As copyPixelChannelsReference() for a plan: channel by channel through runs of pixels, without a choice at any pixel.
template <typename Source, typename Destination>
void copyPixelChannels(const Source* pSource, Destination* pDestination, size_t uiPixelCount, const ChannelPlan& plan);

} // namespace moxtexture
