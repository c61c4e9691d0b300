#pragma once

#include <algorithm>
#include <cstring>
#include <vector>

#include <gmock/gmock.h>

#include "Codecs/MOXTC/Block/BlockGrid.h"
#include "Codecs/MOXTC/MOXTC1Decoder.h"
#include "Codecs/MOXTC/MOXTCIIDecoder.h"
#include "MoxtcTestPictures.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

/// The fast decoders against the plain ones.
namespace moxtctest
{

struct Surface
{
    Format format;
    uint32_t uiWidth;
    uint32_t uiHeight;
    bool bRasterOrder = true; ///< MOXTCII only

    friend std::ostream& operator<<(std::ostream& stream, const Surface& surface)
    {
        return stream << surface.format << ' ' << surface.uiWidth << " x " << surface.uiHeight << (surface.bRasterOrder ? "" : " Morton");
    }
};

inline size_t getDataSize(const Surface& surface)
{
    return static_cast<size_t>(moxtexture::getMOXTCDataSize(surface.uiWidth, surface.uiHeight, surface.format.b2bpp, surface.format.bII));
}

/// What a decoder left in a buffer that had 0xAB in every byte, with some bytes before and behind the pixels.
struct Decoded
{
    static constexpr size_t k_uiMargin = 61; ///< odd, so that the pixels have no alignment

    uint32_t uiResult = 0;
    std::vector<uint8_t> buffer;

    friend bool operator==(const Decoded& a, const Decoded& b) { return a.uiResult == b.uiResult && a.buffer == b.buffer; }
};

enum class EForm
{
    ePlain,
    eFast,
};

inline Decoded decodeSurface(EForm eForm, const Surface& surface, const std::vector<uint8_t>& data)
{
    using namespace moxtexture;
    Decoded decoded;
    decoded.buffer.assign(size_t{surface.uiWidth} * surface.uiHeight * 4 + 2 * Decoded::k_uiMargin, CPicture::k_ui8Untouched);
    uint8_t* const pTarget = decoded.buffer.data() + Decoded::k_uiMargin;
    if (surface.format.bII)
        decoded.uiResult =
            (eForm == EForm::eFast ? DecompressMOXTCII : DecompressMOXTCIIReference)(
                data.data(), data.size(), pTarget, surface.uiWidth, surface.uiHeight, surface.bRasterOrder, surface.format.b2bpp)
                ? 1
                : 0;
    else
        decoded.uiResult = (eForm == EForm::eFast ? DecompressMOXTC : DecompressMOXTCReference)(
            data.data(), data.size(), surface.format.b2bpp, surface.uiWidth, surface.uiHeight, pTarget);
    return decoded;
}

/// Expects the plain decoder's result from the fast one, in every byte of the buffer, for every instruction set.
inline void expectThePlainPixels(const Surface& surface, const std::vector<uint8_t>& data)
{
    SCOPED_TRACE(testing::Message() << surface << ", " << data.size() << " bytes");
    const Decoded expected = decodeSurface(EForm::ePlain, surface, data);
    forEachInstructionSet([&] { EXPECT_TRUE(expected == decodeSurface(EForm::eFast, surface, data)); });
}

inline std::vector<uint8_t> makeRandomData(const Surface& surface)
{
    return testsupport::CSeededRandom(uint64_t{surface.uiWidth} << 32 | surface.uiHeight).bytes(getDataSize(surface));
}

/// Words of few kinds, so that neighbours have the farthest colours, the highest weights and all flags in every combination.
inline std::vector<uint8_t> makeExtremeData(const Surface& surface, uint64_t ui64Seed)
{
    constexpr uint32_t k_aui32Modulations[] = {0, 0xFFFFFFFF, 0xAAAAAAAA, 0x55555555, 0x000FFFFF, 0xFFF00001};
    constexpr uint32_t k_aui32Colours[] = {0, 0xFFFFFFFF, 0x7FFF7FFE, 0x0000FFFF, 0xFFFF0000, 0x80008000, 0x70007000, 0x8000FFFE};
    constexpr uint32_t k_ui32FlagBits = 0x80008001;
    testsupport::CSeededRandom random(ui64Seed);
    std::vector<uint8_t> data(getDataSize(surface));
    for (size_t i = 0; i + moxtexture::k_uiBlockBytes <= data.size(); i += moxtexture::k_uiBlockBytes)
    {
        const uint32_t ui32Flags = random.next32() & k_ui32FlagBits;
        moxtexture::storeBlock(data.data() + i, {k_aui32Modulations[random.below(std::size(k_aui32Modulations))],
                                                 k_aui32Colours[random.below(std::size(k_aui32Colours))] ^ ui32Flags});
    }
    return data;
}

/// Blocks of one mode of 2bpp, or of one flag at 4bpp, with random codes and colours.
inline std::vector<uint8_t> makeDataOfOneMode(const Surface& surface, bool bModeFlag, uint32_t ui32Clear, uint32_t ui32Set)
{
    std::vector<uint8_t> data = makeRandomData(surface);
    for (size_t i = 0; i + moxtexture::k_uiBlockBytes <= data.size(); i += moxtexture::k_uiBlockBytes)
    {
        BlockWord block = moxtexture::loadBlock(data.data() + i);
        block.ui32Modulation = (block.ui32Modulation & ~ui32Clear) | ui32Set;
        block.ui32Colours = (block.ui32Colours & ~k_ui32ModeBit) | (bModeFlag ? k_ui32ModeBit : 0);
        moxtexture::storeBlock(data.data() + i, block);
    }
    return data;
}

/// Cuts the data off at many places, within blocks too, down to nothing.
inline void expectThePlainPixelsOfShorterAndShorterData(const Surface& surface)
{
    std::vector<uint8_t> data = makeRandomData(surface);
    while (!data.empty())
    {
        data.resize(data.size() - std::min<size_t>(data.size(), 37));
        data.shrink_to_fit();
        expectThePlainPixels(surface, data);
    }
}

} // namespace moxtctest
