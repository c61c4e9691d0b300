#include "Composition/ChannelMoves.h"

#include <array>
#include <cstddef>
#include <optional>

#include "Core/ByteOrder.h"

namespace moxtexture
{
namespace
{

constexpr unsigned int k_uiPositions = 4;
constexpr unsigned int k_uiMostBits = 128;
constexpr unsigned int k_uiMostPackedBits = 64;

/// Where a channel's bits lie in a pixel, counted from the lowest bit of its first byte.
struct ChannelBits
{
    EChannelName eName = eChannelNone;
    unsigned int uiCount = 0;
    unsigned int uiFirst = 0;
};

struct PixelBits
{
    std::array<ChannelBits, k_uiPositions> aChannels;
    unsigned int uiTotal = 0;
};

bool isFloat(EMOXTChannelType eType)
{
    return eType == eCT_SignedFloatingPoint || eType == eCT_UnsignedFloatingPoint;
}

/// True for a channel that is an element of its own; all others are fields of the pixel, which is one little-endian word.
bool isElement(EMOXTChannelType eType, unsigned int uiBits)
{
    return isFloat(eType) ? uiBits == 16 || uiBits == 32 : uiBits == getStorageBits(eType);
}

/// @return nothing for a layout with a fault, or one that mixes elements and fields, which lie over each other
std::optional<PixelBits> findBits(MOXPixelWord format, EMOXTChannelType eType)
{
    PixelBits pixel;
    unsigned int uiCount = 0;
    unsigned int uiElements = 0;
    for (unsigned int i = 0; i < k_uiPositions; ++i)
    {
        ChannelBits& channel = pixel.aChannels[i];
        channel.eName = getChannelName(format.getChannelLetter(i));
        channel.uiCount = format.getChannelBits(i);
        channel.uiFirst = pixel.uiTotal;
        pixel.uiTotal += channel.uiCount;
        if ((channel.eName == eChannelNone) != (channel.uiCount == 0) || (channel.eName != eChannelNone && uiCount != i))
            return {};
        for (unsigned int j = 0; j < i; ++j)
            if (channel.eName != eChannelNone && pixel.aChannels[j].eName == channel.eName)
                return {};
        if (channel.eName == eChannelNone)
            continue;
        ++uiCount;
        if (isElement(eType, channel.uiCount))
            ++uiElements;
    }

    const bool bPacked = uiElements == 0;
    const bool bWhole = pixel.uiTotal % 8 == 0 && pixel.uiTotal <= (bPacked ? k_uiMostPackedBits : k_uiMostBits);
    if (format.isCompressed() || getStorageBits(eType) == 0 || !bWhole || (!bPacked && uiElements != uiCount))
        return {};
    if (bPacked) // the first letter has the highest bits
        for (ChannelBits& channel : pixel.aChannels)
            channel.uiFirst = pixel.uiTotal - channel.uiFirst - channel.uiCount;
    return pixel;
}

/// Types of one kind differ in nothing but the size of the element.
unsigned int getValueKind(EMOXTChannelType eType)
{
    constexpr unsigned int uiKindsOfIntegers = 4;
    return isFloat(eType) ? static_cast<unsigned int>(eType) : eType % uiKindsOfIntegers;
}

const ChannelBits* findChannel(const PixelBits& pixel, EChannelName eName)
{
    for (const ChannelBits& channel : pixel.aChannels)
        if (channel.eName == eName)
            return &channel;
    return nullptr;
}

struct BitMove
{
    unsigned int uiCount = 0;
    unsigned int uiFrom = 0;
    unsigned int uiTo = 0;
};

/// What becomes of each pixel: bits are moved, some are set, all others are 0.
struct PixelMoves
{
    std::array<BitMove, k_uiPositions> aMoves;
    unsigned int uiBytes = 0;
    uint64_t ui64Ones = 0; ///< only in pixels of up to 8 bytes

    [[nodiscard]] bool isIdentity() const
    {
        for (const BitMove& move : aMoves)
            if (move.uiFrom != move.uiTo)
                return false;
        return ui64Ones == 0;
    }
};

std::optional<PixelMoves> findMoves(MOXPixelWord format, EMOXTChannelType eType, MOXPixelWord newFormat, EMOXTChannelType eNewType)
{
    const std::optional<PixelBits> source = findBits(format, eType);
    const std::optional<PixelBits> target = findBits(newFormat, eNewType);
    if (!source || !target || source->uiTotal != target->uiTotal || getValueKind(eType) != getValueKind(eNewType))
        return {};

    PixelMoves moves;
    moves.uiBytes = source->uiTotal / 8;
    for (unsigned int i = 0; i < k_uiPositions; ++i)
    {
        const ChannelBits& to = target->aChannels[i];
        if (to.eName == eChannelNone)
            continue;
        const ChannelBits* pFrom = findChannel(*source, to.eName);
        if (pFrom == nullptr && to.eName == eChannelAlpha)
            pFrom = findChannel(*source, eChannelUnspecified);
        if (pFrom == nullptr || pFrom->uiCount != to.uiCount)
            return {};
        moves.aMoves[i] = {to.uiCount, pFrom->uiFirst, to.uiFirst};
    }
    return moves;
}

/// A pixel as a number. Pixels as large as a number are copied as one, which makes for vectors; others byte by byte.
template <typename Word, size_t uiBytes>
Word loadPixel(const uint8_t* pPixel)
{
    if constexpr (uiBytes == sizeof(Word))
        return loadLE<Word>(pPixel);
    Word pixel = 0;
    for (size_t i = 0; i < uiBytes; ++i)
        pixel = static_cast<Word>(pixel | static_cast<Word>(pPixel[i]) << (8 * i));
    return pixel;
}

template <typename Word, size_t uiBytes>
void storePixel(uint8_t* pPixel, Word pixel)
{
    if constexpr (uiBytes == sizeof(Word))
        return storeLE(pPixel, pixel);
    for (size_t i = 0; i < uiBytes; ++i)
        pPixel[i] = static_cast<uint8_t>(pixel >> (8 * i));
}

template <typename Word, size_t uiBytes>
void moveFields(const PixelMoves& moves, uint8_t* pData, size_t uiCount)
{
    std::array<Word, k_uiPositions> masks = {};
    std::array<unsigned int, k_uiPositions> from = {};
    std::array<unsigned int, k_uiPositions> to = {};
    for (unsigned int i = 0; i < k_uiPositions; ++i)
    {
        const BitMove& move = moves.aMoves[i];
        constexpr unsigned int uiWordBits = 8 * sizeof(Word);
        masks[i] = move.uiCount == 0 ? Word{0} : static_cast<Word>(static_cast<Word>(~Word{0}) >> (uiWordBits - move.uiCount));
        from[i] = move.uiFrom;
        to[i] = move.uiTo;
    }
    const auto ones = static_cast<Word>(moves.ui64Ones);
    for (size_t i = 0; i < uiCount; ++i, pData += uiBytes)
    {
        const auto source = loadPixel<Word, uiBytes>(pData);
        Word target = ones;
        for (unsigned int j = 0; j < k_uiPositions; ++j)
            target = static_cast<Word>(target | ((source >> from[j]) & masks[j]) << to[j]);
        storePixel<Word, uiBytes>(pData, target);
    }
}

/// True if every bit of the pixel belongs to an element of uiBits.
bool isOfElements(const PixelMoves& moves, unsigned int uiBits)
{
    unsigned int uiBytes = 0;
    for (const BitMove& move : moves.aMoves)
    {
        if (move.uiCount != 0 && move.uiCount != uiBits)
            return false;
        uiBytes += move.uiCount / 8;
    }
    return uiBytes == moves.uiBytes;
}

template <typename Element, size_t uiElements>
void moveElements(const PixelMoves& moves, uint8_t* pData, size_t uiCount)
{
    std::array<size_t, uiElements> aFrom = {};
    for (const BitMove& move : moves.aMoves)
        if (move.uiCount != 0)
            aFrom[move.uiTo / (8 * sizeof(Element))] = move.uiFrom / 8;
    for (size_t i = 0; i < uiCount; ++i, pData += sizeof(Element) * uiElements)
    {
        std::array<Element, uiElements> target;
        for (size_t j = 0; j < uiElements; ++j)
            target[j] = loadLE<Element>(pData + aFrom[j]);
        for (size_t j = 0; j < uiElements; ++j)
            storeLE(pData + j * sizeof(Element), target[j]);
    }
}

void apply(const PixelMoves& moves, CMOXTexture& texture)
{
    // The pixels of all surfaces follow each other without gaps.
    uint8_t* pData = texture.getDataPtr();
    if (pData == nullptr || moves.isIdentity())
        return;
    const size_t uiCount = texture.getBlockSize() / moves.uiBytes;
    switch (moves.uiBytes)
    {
    case 1:
        return moveFields<uint8_t, 1>(moves, pData, uiCount);
    case 2:
        return moveFields<uint16_t, 2>(moves, pData, uiCount);
    case 3:
        return isOfElements(moves, 8) ? moveElements<uint8_t, 3>(moves, pData, uiCount) : moveFields<uint32_t, 3>(moves, pData, uiCount);
    case 4:
        return moveFields<uint32_t, 4>(moves, pData, uiCount);
    case 5:
        return moveFields<uint64_t, 5>(moves, pData, uiCount);
    case 6:
        return isOfElements(moves, 16) ? moveElements<uint16_t, 3>(moves, pData, uiCount) : moveFields<uint64_t, 6>(moves, pData, uiCount);
    case 7:
        return moveFields<uint64_t, 7>(moves, pData, uiCount);
    case 8:
        return moveFields<uint64_t, 8>(moves, pData, uiCount);
    case 12: // more than 64 bits are elements of 32
        return moveElements<uint32_t, 3>(moves, pData, uiCount);
    case 16:
        return moveElements<uint32_t, 4>(moves, pData, uiCount);
    default:
        return;
    }
}

bool holdsItsBlock(const CMOXTexture& texture)
{
    return texture.fitsDataBlock() && texture.getDataSize() == texture.getBlockSize();
}

} // namespace

bool canMoveChannels(MOXPixelWord format, EMOXTChannelType eChannelType, MOXPixelWord newFormat, EMOXTChannelType eNewChannelType)
{
    return findMoves(format, eChannelType, newFormat, eNewChannelType).has_value();
}

bool moveChannels(CMOXTexture& texture, MOXPixelWord newFormat, EMOXTChannelType eNewChannelType)
{
    const std::optional<PixelMoves> moves = findMoves(texture.getPixelFormat(), texture.getChannelType(), newFormat, eNewChannelType);
    if (!moves || !holdsItsBlock(texture))
        return false;
    apply(*moves, texture);
    texture.setPixelFormat(newFormat);
    texture.setChannelType(eNewChannelType);
    return true;
}

void fillSpareChannel(CMOXTexture& texture)
{
    const MOXPixelWord format = texture.getPixelFormat();
    const EMOXTChannelType eType = texture.getChannelType();
    std::optional<PixelMoves> moves = findMoves(format, eType, format, eType);
    if (!moves || !holdsItsBlock(texture) || isFloat(eType) || moves->uiBytes > 8)
        return;
    const unsigned int uiSignBits = isSignedChannelType(eType) ? 1 : 0;
    for (unsigned int i = 0; i < k_uiPositions; ++i)
    {
        BitMove& move = moves->aMoves[i];
        if (getChannelName(format.getChannelLetter(i)) != eChannelUnspecified)
            continue;
        const unsigned int uiOnes = move.uiCount - uiSignBits;
        moves->ui64Ones = uiOnes == 0 ? 0 : ~uint64_t{0} >> (64 - uiOnes) << move.uiTo;
        move.uiCount = 0;
    }
    apply(*moves, texture);
}

} // namespace moxtexture
