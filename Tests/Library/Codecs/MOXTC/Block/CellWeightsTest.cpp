#include "Codecs/MOXTC/Block/CellWeights.h"

#include <memory>

#include <gmock/gmock.h>

#include "Codecs/MOXTC/Block/Modulation.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

struct Strips
{
    BlockStrip upper;
    BlockStrip lower;
    CellWeights weights;

    std::vector<uint32_t> getRow(size_t y) const
    {
        return std::vector<uint32_t>(weights.aaui8[y].begin(), weights.aaui8[y].begin() + k_uiMaxBlockWidth);
    }
};

template <typename Check>
void forEveryForm(const Strips& strips, Check check)
{
    const auto pStrips = std::make_unique<Strips>(strips);
    interpolateWeightsReference(pStrips->upper, pStrips->lower, 1, pStrips->weights);
    check(*pStrips);
    forEachInstructionSet(
        [&]
        {
            pStrips->weights = {};
            interpolateWeights(pStrips->upper, pStrips->lower, 1, pStrips->weights);
            check(*pStrips);
        });
}

/// All pixels that are stored have 3 in the upper blocks and 8 in the lower ones.
std::unique_ptr<Strips> makeStrips(uint8_t ui8UpperMode, uint8_t ui8LowerMode)
{
    auto pStrips = std::make_unique<Strips>();
    for (uint32_t y = 0; y < k_uiBlockHeight; ++y)
    {
        for (uint32_t x = 0; x < 2 * k_uiMaxBlockWidth; ++x)
        {
            pStrips->upper.aaui8Weights[y][x] = (x ^ y) % 2 == 0 ? 3 : 0;
            pStrips->lower.aaui8Weights[y][x] = (x ^ y) % 2 == 0 ? 8 : 0;
            pStrips->upper.aui8Modes[x] = ui8UpperMode;
            pStrips->lower.aui8Modes[x] = ui8LowerMode;
        }
    }
    return pStrips;
}

} // namespace

TEST(CellWeights, BetweenAllNeighboursTakesBothRowsOfBlocks)
{
    forEveryForm(*makeStrips(k_ui8ModeBothAxes, k_ui8ModeBothAxes),
                 [](const Strips& strips)
                 {
                     EXPECT_THAT(strips.getRow(0), ElementsAre(3, 3, 3, 3, 3, 3, 3, 3));
                     // (3 + 3 + 3 + 8 + 2) / 4 is 4; (8 + 8 + 8 + 3 + 2) / 4 is 7.
                     EXPECT_THAT(strips.getRow(1), ElementsAre(4, 3, 4, 3, 4, 3, 4, 3));
                     EXPECT_THAT(strips.getRow(2), ElementsAre(8, 7, 8, 7, 8, 7, 8, 7));
                     EXPECT_THAT(strips.getRow(3), ElementsAre(8, 8, 8, 8, 8, 8, 8, 8));
                 });
}

TEST(CellWeights, BetweenHorizontalNeighboursStaysInTheRow)
{
    forEveryForm(*makeStrips(k_ui8ModeHorizontal, k_ui8ModeHorizontal),
                 [](const Strips& strips)
                 {
                     EXPECT_THAT(strips.getRow(1), ElementsAre(3, 3, 3, 3, 3, 3, 3, 3));
                     EXPECT_THAT(strips.getRow(2), ElementsAre(8, 8, 8, 8, 8, 8, 8, 8));
                 });
}

TEST(CellWeights, BetweenVerticalNeighboursCrossesTheRowsOfBlocks)
{
    forEveryForm(*makeStrips(k_ui8ModeVertical, k_ui8ModeVertical),
                 [](const Strips& strips)
                 {
                     // (3 + 8 + 1) / 2 is 6.
                     EXPECT_THAT(strips.getRow(1), ElementsAre(6, 3, 6, 3, 6, 3, 6, 3));
                     EXPECT_THAT(strips.getRow(2), ElementsAre(8, 6, 8, 6, 8, 6, 8, 6));
                 });
}

TEST(CellWeights, DirectBlocksKeepTheirOwn)
{
    forEveryForm(*makeStrips(k_ui8ModeDirect, k_ui8ModeHorizontal),
                 [](const Strips& strips)
                 {
                     EXPECT_THAT(strips.getRow(0), ElementsAre(3, 0, 3, 0, 3, 0, 3, 0));
                     EXPECT_THAT(strips.getRow(1), ElementsAre(0, 3, 0, 3, 0, 3, 0, 3));
                     EXPECT_THAT(strips.getRow(3), ElementsAre(8, 8, 8, 8, 8, 8, 8, 8));
                 });
}

TEST(CellWeights, NeighboursToTheSidesAreInTheNextBlocks)
{
    // Row 0 of the cell is row 2 of the upper blocks, from pixel 4 of the first to pixel 3 of the second; odd pixels are not stored.
    const auto pStrips = makeStrips(k_ui8ModeHorizontal, k_ui8ModeHorizontal);
    pStrips->upper.aaui8Weights[2][6] = 0;
    pStrips->upper.aaui8Weights[2][8] = 8;
    pStrips->upper.aaui8Weights[2][12] = 5;
    forEveryForm(*pStrips,
                 [](const Strips& strips)
                 {
                     // Between 3 and 0, 0 and 8, 8 and 3, 3 and 5: 2, 4, 6, 4.
                     EXPECT_THAT(strips.getRow(0), ElementsAre(3, 2, 0, 4, 8, 6, 3, 4));
                 });
}

TEST(CellWeights, TheFastFormGivesTheSameForRowsOfEveryLength)
{
    testsupport::CSeededRandom random(1);
    const auto pStrips = std::make_unique<Strips>();
    constexpr uint8_t k_aui8Weights[] = {0, 3, 5, 8};
    for (BlockStrip* pStrip : {&pStrips->upper, &pStrips->lower})
    {
        for (auto& aui8Row : pStrip->aaui8Weights)
            for (uint8_t& ui8 : aui8Row)
                ui8 = k_aui8Weights[random.below(4)];
        for (uint8_t& ui8 : pStrip->aui8Modes)
            ui8 = static_cast<uint8_t>(random.below(4));
    }
    for (size_t uiCells = 1; uiCells <= k_uiStripCells; ++uiCells)
    {
        interpolateWeightsReference(pStrips->upper, pStrips->lower, uiCells, pStrips->weights);
        forEachInstructionSet(
            [&]
            {
                const auto pFast = std::make_unique<CellWeights>();
                interpolateWeights(pStrips->upper, pStrips->lower, uiCells, *pFast);
                const auto iPixels = static_cast<std::ptrdiff_t>(uiCells * k_uiMaxBlockWidth);
                for (size_t y = 0; y < k_uiBlockHeight; ++y)
                    EXPECT_TRUE(std::equal(pFast->aaui8[y].begin(), pFast->aaui8[y].begin() + iPixels, pStrips->weights.aaui8[y].begin()))
                        << uiCells << ", " << y;
            });
    }
}
