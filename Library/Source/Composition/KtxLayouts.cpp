#include "Composition/KtxLayouts.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "Composition/ChannelMoves.h"
#include "Formats/GLFormatTable.h"

namespace moxtexture
{
namespace
{

struct Channel
{
    char cLetter;
    uint8_t uiBits;
};

bool comesFirst(const Channel& a, const Channel& b)
{
    constexpr std::string_view strOrder = "rgbalix";
    return strOrder.find(a.cLetter) < strOrder.find(b.cLetter);
}

std::vector<Channel> getChannels(MOXPixelWord format, bool bSpareAsAlpha)
{
    std::vector<Channel> channels;
    for (unsigned int i = 0; i < 4 && format.getChannelBits(i) != 0; ++i)
    {
        const char cLetter = format.getChannelLetter(i);
        channels.push_back({bSpareAsAlpha && cLetter == 'x' ? 'a' : cLetter, format.getChannelBits(i)});
    }
    return channels;
}

MOXPixelWord makeLayout(const std::vector<Channel>& channels)
{
    std::array<Channel, 4> a = {};
    std::copy(channels.begin(), channels.end(), a.begin());
    return {a[0].cLetter, a[1].cLetter, a[2].cLetter, a[3].cLetter, a[0].uiBits, a[1].uiBits, a[2].uiBits, a[3].uiBits};
}

/// The types of the same kind of values, first the one whose element has uiBits.
std::vector<EMOXTChannelType> getTypesLike(EMOXTChannelType eType, uint8_t uiBits)
{
    constexpr uint32_t uiKindsOfIntegers = 4;
    if (eType >= eCT_SignedFloatingPoint)
        return {eType};
    std::vector<EMOXTChannelType> types;
    for (uint32_t uiType = eType % uiKindsOfIntegers; uiType < eCT_SignedFloatingPoint; uiType += uiKindsOfIntegers)
        types.push_back(static_cast<EMOXTChannelType>(uiType));
    std::stable_partition(types.begin(), types.end(), [uiBits](EMOXTChannelType e) { return getStorageBits(e) == uiBits; });
    return types;
}

/// What a file with the encoding's numbers is read as, or nothing.
std::optional<PixelEncoding> findReadAs(const PixelEncoding& encoding)
{
    const std::optional<GLFormat> format = findGLFormat(encoding);
    return format ? findGLFormat(format->ui32InternalFormat, format->ui32Type) : std::nullopt;
}

/// The first encoding with the same channels and bits that has numbers, and, if asked, numbers of its colour space.
std::optional<PixelEncoding> findEqual(const PixelEncoding& encoding, bool bKeepSpace)
{
    for (const bool bSpareAsAlpha : {false, true})
    {
        std::vector<Channel> channels = getChannels(encoding.pixelFormat, bSpareAsAlpha);
        std::sort(channels.begin(), channels.end(), comesFirst);
        for (const EMOXTChannelType eType : getTypesLike(encoding.eChannelType, encoding.pixelFormat.getChannelBits(0)))
            do
            {
                PixelEncoding candidate = encoding;
                candidate.pixelFormat = makeLayout(channels);
                candidate.eChannelType = eType;
                const std::optional<PixelEncoding> readAs = findReadAs(candidate);
                if (readAs && readAs->pixelFormat == candidate.pixelFormat && readAs->eChannelType == eType &&
                    (!bKeepSpace || readAs->eColourSpace == encoding.eColourSpace) &&
                    canMoveChannels(encoding.pixelFormat, encoding.eChannelType, candidate.pixelFormat, eType))
                    return candidate;
            } while (std::next_permutation(channels.begin(), channels.end(), comesFirst));
    }
    return {};
}

} // namespace

std::optional<PixelEncoding> findKtxEncoding(const PixelEncoding& encoding)
{
    const std::optional<PixelEncoding> readAs = findReadAs(encoding);
    if (readAs && (encoding.pixelFormat.isCompressed() || readAs->eColourSpace == encoding.eColourSpace))
        return encoding;
    if (encoding.pixelFormat.isCompressed())
        return {};
    if (const std::optional<PixelEncoding> equal = findEqual(encoding, true))
        return equal;
    return readAs ? encoding : findEqual(encoding, false);
}

bool prepareForKtx(CMOXTexture& texture)
{
    const std::optional<PixelEncoding> encoding = findKtxEncoding(texture.getEncoding());
    if (!encoding)
        return false;
    return *encoding == texture.getEncoding() || moveChannels(texture, encoding->pixelFormat, encoding->eChannelType);
}

} // namespace moxtexture
