#include "Codecs/ETC/EtcDecodeA1.h"

#include <gmock/gmock.h>

#include "Codecs/ETC/EtcDecodeBlock.h"
#include "EtcDecodedBlock.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using namespace etctest;
using testing::Each;
using testing::ElementsAre;
using testsupport::CSeededRandom;

namespace
{

constexpr uint32_t k_ui32OpaqueBit = 2;

/// Differential, 10, 20, 30 and 13, 16, 30, tables 1 and 7, not flipped; T; H; planar: the blocks of EtcDecodeBlockTest.
constexpr uint32_t k_ui32Differential = 0x53A4F03C;
constexpr uint32_t k_ui32T = 0xFB23456D;
constexpr uint32_t k_ui32H = 0xACFA2CDC;
constexpr uint32_t k_ui32Planar = 0x55AB15B5;

struct Decoded
{
    EtcPixels pixels;
    EtcAlphas alphas;
};

Decoded decode(uint32_t ui32High, uint32_t ui32Low = k_ui32EveryIndex)
{
    Decoded decoded;
    decoded.alphas.aui8.fill(1);
    decoded.pixels = decodeEtcPixelsA1({ui32High, ui32Low}, decoded.alphas);
    return decoded;
}

void expectEqual(const EtcPixels& expected, const EtcPixels& pixels)
{
    EXPECT_EQ(expected.aui8Red, pixels.aui8Red);
    EXPECT_EQ(expected.aui8Green, pixels.aui8Green);
    EXPECT_EQ(expected.aui8Blue, pixels.aui8Blue);
}

/// Pixels 0, 1 and 3 of every row opaque, pixel 2 not.
void expectThirdPixelTransparent(const EtcAlphas& alphas)
{
    for (size_t y = 0; y < 4; ++y)
    {
        const std::vector<uint8_t> row(alphas.aui8.begin() + static_cast<ptrdiff_t>(y * 4),
                                       alphas.aui8.begin() + static_cast<ptrdiff_t>(y * 4 + 4));
        EXPECT_THAT(row, ElementsAre(255, 255, 0, 255));
    }
}

} // namespace

TEST(EtcDecodeA1, ADifferentialBlockWithoutTheOpaqueBitHasAPlainAndATransparentIndex)
{
    // Left 82, 165, 247: index 0 as it is, index 1 with 17. Right 107, 132, 247: index 3 less 183, index 2 transparent.
    const Decoded decoded = decode(k_ui32Differential);
    for (size_t y = 0; y < 4; ++y)
        EXPECT_EQ((Row{{82, 165, 247}, {99, 182, 255}, {0, 0, 0}, {0, 0, 64}}), rowOf(decoded.pixels, y));
    expectThirdPixelTransparent(decoded.alphas);
}

TEST(EtcDecodeA1, ATBlockWithoutTheOpaqueBitHasAThirdPaintThatIsTransparent)
{
    // Distance index 7, 64, as in T blocks of EtcDecodeBlockTest.
    const Decoded decoded = decode(k_ui32T);
    EXPECT_EQ((Row{{255, 34, 51}, {132, 149, 166}, {0, 0, 0}, {4, 21, 38}}), rowOf(decoded.pixels, 2));
    expectThirdPixelTransparent(decoded.alphas);
}

TEST(EtcDecodeA1, AnHBlockWithoutTheOpaqueBitHasAThirdPaintThatIsTransparent)
{
    const Decoded decoded = decode(k_ui32H);
    EXPECT_EQ((Row{{117, 185, 236}, {53, 121, 172}, {0, 0, 0}, {53, 121, 155}}), rowOf(decoded.pixels, 1));
    expectThirdPixelTransparent(decoded.alphas);
}

TEST(EtcDecodeA1, APlanarBlockWithoutTheOpaqueBitIsOpaque)
{
    const Decoded decoded = decode(k_ui32Planar, 0x9D0ACCF8);
    expectEqual(decodeEtcPixelsETC2({k_ui32Planar | k_ui32OpaqueBit, 0x9D0ACCF8}), decoded.pixels);
    EXPECT_THAT(decoded.alphas.aui8, Each(255));
}

TEST(EtcDecodeA1, WithTheOpaqueBitEveryModeIsOpaqueForEveryIndex)
{
    for (const uint32_t ui32High : {k_ui32Differential, k_ui32T, k_ui32H, k_ui32Planar})
    {
        const Decoded decoded = decode(ui32High | k_ui32OpaqueBit);
        expectEqual(decodeEtcPixelsETC2({ui32High | k_ui32OpaqueBit, k_ui32EveryIndex}), decoded.pixels);
        EXPECT_THAT(decoded.alphas.aui8, Each(255));
    }
}

TEST(EtcDecodeA1, NoBlockIsOfIndividualMode)
{
    // Bit 1 is clear, yet 0x20 is the 5-bit level 4 (33) and the delta 0, not the 4-bit levels 2 (34) and 0.
    const Decoded decoded = decode(0x20202000, 0);
    EXPECT_EQ((Row{{33, 33, 33}, {33, 33, 33}, {33, 33, 33}, {33, 33, 33}}), rowOf(decoded.pixels, 0));
}

TEST(EtcDecodeA1, TheModesAreToldApartInTheSameOrderWhateverTheOpaqueBit)
{
    CSeededRandom random(5);
    for (const uint32_t ui32Bytes : {0xFBFBFB00u, 0x04FB5000u, 0x50FBFB00u, 0x50045000u, 0x5050FB00u, 0x50505000u})
    {
        const uint32_t ui32High = ui32Bytes | (random.next32() & 0xFD);
        // Without index 2, which is transparent, and index 0, which has no modifier in differential blocks.
        const uint32_t ui32Low = packIndices({{{3, 3, 1, 1}, {1, 3, 3, 3}, {3, 1, 3, 3}, {3, 3, 3, 1}}});
        expectEqual(decodeEtcPixelsETC2({ui32High | k_ui32OpaqueBit, ui32Low}), decode(ui32High, ui32Low).pixels);
    }
}

TEST(EtcDecodeA1, TheRoutinesForOneModeAgreeWithThatForAll)
{
    CSeededRandom random(6);
    for (uint32_t i = 0; i < 1000; ++i)
    {
        const EtcBlockWords compact = {random.next32() >> 6, random.next32()};
        EtcAlphas alphas;
        const EtcPixels asH = decodeEtcPixelsA1H(compact, alphas);
        const Decoded stuffedH = decode(stuffH(compact, false).ui32High, compact.ui32Low);
        expectEqual(stuffedH.pixels, asH);
        EXPECT_EQ(stuffedH.alphas.aui8, alphas.aui8);
        const EtcPixels asT = decodeEtcPixelsA1T(compact, alphas);
        const Decoded stuffedT = decode(stuffT(compact, false).ui32High, compact.ui32Low);
        expectEqual(stuffedT.pixels, asT);
        EXPECT_EQ(stuffedT.alphas.aui8, alphas.aui8);
    }
    EtcAlphas alphas;
    expectEqual(decode(k_ui32Differential).pixels, decodeEtcPixelsA1Differential({k_ui32Differential, k_ui32EveryIndex}, alphas));
    expectThirdPixelTransparent(alphas);
}

TEST(EtcDecodeA1, ABlockIsWrittenAtItsPlaceInBothPlanesAndNowhereElse)
{
    constexpr uint32_t kStride = 7;
    std::vector<uint8_t> image(kStride * 6 * 3, 99), alpha(kStride * 6, 98);
    const Decoded decoded = decode(k_ui32T);
    etcDecodeBlockA1({k_ui32T, k_ui32EveryIndex}, image.data(), alpha.data(), kStride, 2, 1);
    for (size_t y = 0; y < 6; ++y)
        for (size_t x = 0; x < kStride; ++x)
        {
            const bool bInside = x >= 2 && x < 6 && y >= 1 && y < 5;
            EXPECT_EQ(bInside ? decoded.alphas.aui8[(y - 1) * 4 + x - 2] : 98, alpha[y * kStride + x]);
            EXPECT_EQ(bInside ? decoded.pixels.aui8Green[(y - 1) * 4 + x - 2] : 99, image[(y * kStride + x) * 3 + 1]);
        }
}
