#include "Codecs/MOXTC/OptimiseColours.h"

#include <gmock/gmock.h>

#include <functional>
#include <utility>

#include "CompressorTestImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

/// The plain form, which the fast one must equal.
template <typename Record>
void optimiseBoth(CompressorImages& images, const std::vector<Record>& blockData, const BlockRegion& region)
{
    CompressorImages fast = images;
    optimiseColours(fast, blockData, region);
    optimiseColoursReference(images, blockData, region);
    EXPECT_EQ(images.colourA, fast.colourA);
    EXPECT_EQ(images.colourB, fast.colourB);
}

using ColourPair = std::pair<uint32_t, uint32_t>;

/// A block by itself: its record, its two colours, and for pixel i the source and what the upscaled colours are there.
template <typename Record>
struct OneBlock
{
    Record record;
    uint32_t uiColourA;
    uint32_t uiColourB;
    std::function<uint32_t(uint32_t)> getSource;
    std::function<uint32_t(uint32_t)> getUpscaledA;
    std::function<uint32_t(uint32_t)> getUpscaledB;
};

template <typename Record>
ColourPair optimise(const OneBlock<Record>& block)
{
    constexpr uint8_t ui8Width = Record::k_uiBlockWidth;
    CompressorImages images = makeImages(ui8Width, 4, ui8Width, [&](uint32_t x, uint32_t y) { return block.getSource(y * ui8Width + x); });
    for (uint32_t i = 0; i < Record::k_uiPixels; ++i)
    {
        images.upscaledA[i] = block.getUpscaledA(i);
        images.upscaledB[i] = block.getUpscaledB(i);
    }
    images.colourA = {block.uiColourA};
    images.colourB = {block.uiColourB};
    const std::vector<Record> blockData{block.record};
    optimiseBoth(images, blockData, images.getWholeRegion());
    return {images.colourA[0], images.colourB[0]};
}

std::function<uint32_t(uint32_t)> everywhere(uint32_t uiPixel)
{
    return [=](uint32_t) { return uiPixel; };
}

/// A 4bpp block of standard mode with one code everywhere.
BlockRecord4bpp flatRecord(uint8_t ui8Code)
{
    BlockRecord4bpp record;
    record.aui8StandardCodes.fill(ui8Code);
    return record;
}

/// A 4bpp block whose upper half is A and whose lower half is B.
BlockRecord4bpp makeHalfRecord()
{
    BlockRecord4bpp record;
    for (size_t i = 8; i < 16; ++i)
        record.aui8StandardCodes[i] = 3;
    return record;
}

/// A block of code 0 with a difference of uiDifference between source and upscaled colours, all of them at 100 otherwise.
ColourPair shiftBy(uint32_t uiDifference)
{
    return optimise(OneBlock<BlockRecord4bpp>{flatRecord(0), level(100), level(100), everywhere(level(100) + uiDifference),
                                              everywhere(level(100)), everywhere(level(100))});
}

/// All weights alike and all channels alike, 16 pixels.
ColourPair shiftFlat(uint8_t ui8Code, uint32_t uiA, uint32_t uiB, uint32_t uiSource, uint32_t uiUpscaledA, uint32_t uiUpscaledB)
{
    return optimise(OneBlock<BlockRecord4bpp>{flatRecord(ui8Code), level(uiA), level(uiB), everywhere(level(uiSource)),
                                              everywhere(level(uiUpscaledA)), everywhere(level(uiUpscaledB))});
}

/// Levels of a half of the block that is all A, and of the other half, which is all B.
struct Halves
{
    uint32_t uiColourA;
    uint32_t uiSourceA;
    uint32_t uiColourB;
    uint32_t uiSourceB;
};

/// Weight 0 in the upper half and 1 in the lower one; the upscaled colours are those of the block. With dA and dB for the differences of
/// the halves: mean(d) = (dA + dB) / 2, mean(dw) = dB / 2, mean(w) = mean(ww) = 1/2, so that the variance is 1/4, the slope dB - dA, and
/// A is shifted by dA and B by dB.
template <typename Record>
ColourPair shiftHalves(const Record& record, const Halves& halves)
{
    return optimise(OneBlock<Record>{record, level(halves.uiColourA), level(halves.uiColourB),
                                     [&](uint32_t i) { return level(i < Record::k_uiPixels / 2 ? halves.uiSourceA : halves.uiSourceB); },
                                     everywhere(level(halves.uiColourA)), everywhere(level(halves.uiColourB))});
}

ColourPair shiftHalves(const Halves& halves)
{
    return shiftHalves(makeHalfRecord(), halves);
}

ColourPair levels(uint32_t uiA, uint32_t uiB)
{
    return {level(uiA), level(uiB)};
}

} // namespace

TEST(OptimiseColours, ABlockIsLeftAloneBelowASquaredShiftOf128)
{
    // 49 + 49 + 25 + 4 = 127.
    EXPECT_EQ(levels(100, 100), shiftBy(rgba(7, 7, 5, 2)));
    // 64 + 64 = 128. With all weights 0 A takes the shift of 8; then B moves half way to it, 100 + 8 / 2.
    EXPECT_EQ(ColourPair(rgba(108, 108, 100, 100), rgba(104, 104, 100, 100)), shiftBy(rgba(8, 8, 0, 0)));
    EXPECT_EQ(ColourPair(rgba(100, 100, 108, 108), rgba(100, 100, 104, 104)), shiftBy(rgba(0, 0, 8, 8)));
}

TEST(OptimiseColours, AnAlikeWeightSpreadsOneShiftOverBothColoursAndBringsThemNearer)
{
    // The blend is 100 * 5/8 + 180 * 3/8 = 130, d = 20. A2 = 100 + 20 * 5/8 = 112.5, B2 = 180 + 20 * 3/8 = 187.5, diff 75:
    // 112.5 + 75 * 3/16 = 126.5625 and 187.5 - 75 * 5/16 = 164.0625.
    EXPECT_EQ(levels(126, 164), shiftFlat(1, 100, 180, 150, 100, 180));
    // Downwards: d = -20, A2 = 87.5, B2 = 172.5, diff 85: 87.5 + 15.9375 = 103.4375, 172.5 - 26.5625 = 145.9375.
    EXPECT_EQ(levels(103, 145), shiftFlat(1, 100, 180, 110, 100, 180));
}

TEST(OptimiseColours, AnAlikeWeightOfPunchThroughIsAHalf)
{
    BlockRecord4bpp record;
    record.aui8PunchThroughCodes.fill(1);
    record.uiMode = 1;
    // The blend is 140, d = 20: A2 = 110, B2 = 190, diff 80: 110 + 80 / 4, 190 - 80 / 4.
    EXPECT_EQ(levels(130, 170), optimise(OneBlock<BlockRecord4bpp>{record, level(100), level(180), everywhere(level(160)),
                                                                   everywhere(level(100)), everywhere(level(180))}));
}

TEST(OptimiseColours, AnAlikeWeightClampsBeforeTheColoursApproach)
{
    // Weight 0, d = 20: A2 = 270 becomes 255, diff 100 - 255; B = 100 + 155 / 2 = 177.5. Unclamped it would be 185.
    EXPECT_EQ(levels(255, 177), shiftFlat(0, 250, 100, 255, 235, 0));
    // d = -20: A2 = -15 becomes 0, B = 100 - 100 / 2.
    EXPECT_EQ(levels(0, 50), shiftFlat(0, 5, 100, 30, 50, 0));
    // Weight 1: B2 = 270 becomes 255, A = 100 + 155 / 2.
    EXPECT_EQ(levels(177, 255), shiftFlat(3, 100, 250, 255, 0, 235));
}

TEST(OptimiseColours, AGapBelowOneDoesNotApproach)
{
    // Weight 5/8. The blend is 104 * 3/8 + 100 * 5/8 = 101.5, d = 7.5: A2 = 101 + 2.8125, B2 = 100 + 4.6875, diff 0.875.
    // It would make A 103.8125 + 0.875 * 5/16 = 104.08.
    EXPECT_EQ(levels(103, 104), shiftFlat(2, 101, 100, 109, 104, 100));
    // d = 8: A2 = 104, B2 = 105, diff 1 counts: A = 104.3125, B = 105 - 3/16.
    EXPECT_EQ(levels(104, 104), shiftFlat(2, 101, 100, 108, 100, 100));
    // d = 8 at 3/8 the other way round: A2 = 100 + 5, B2 = 101 + 3, diff -1 counts: A = 105 - 3/16, B = 104 + 5/16.
    EXPECT_EQ(levels(104, 104), shiftFlat(1, 100, 101, 108, 100, 100));
}

TEST(OptimiseColours, WeightsThatDifferShiftEachColourByItsOwnPixels)
{
    EXPECT_EQ(levels(120, 140), shiftHalves({100, 120, 180, 140})); // 20 and -40
    EXPECT_EQ(levels(70, 230), shiftHalves({100, 70, 180, 230}));   // -30 and 50
}

TEST(OptimiseColours, OnePixelOfAnotherWeightIsEnoughForALine)
{
    // Fifteen differences of 20 at weight 0 and one of 35 at 3/8: 15 more over 3/8 is a slope of 40, so A gets 20 and B 60.
    BlockRecord4bpp record;
    record.aui8StandardCodes[5] = 1;
    EXPECT_EQ(levels(120, 160),
              optimise(OneBlock<BlockRecord4bpp>{record, level(100), level(100), [](uint32_t i) { return level(i == 5 ? 135 : 120); },
                                                 everywhere(level(100)), everywhere(level(100))}));
}

TEST(OptimiseColours, At2bppThirtyTwoPixelsAreTheMean)
{
    BlockRecord2bpp record;
    for (size_t i = 16; i < 32; ++i)
        record.aui8DirectCodes[i] = 3;
    EXPECT_EQ(levels(120, 140), shiftHalves(record, {100, 120, 180, 140}));
}

TEST(OptimiseColours, TheUpscaledColoursMakeTheDifferenceAndTheBlocksOwnAreMoved)
{
    // Upscaled 60 and 200, source 90 and 150: shifts of 30 and -50.
    EXPECT_EQ(levels(40, 70), optimise(OneBlock<BlockRecord4bpp>{makeHalfRecord(), level(10), level(120),
                                                                 [](uint32_t i) { return level(i < 8 ? 90 : 150); }, everywhere(level(60)),
                                                                 everywhere(level(200))}));
}

TEST(OptimiseColours, ChannelsMoveEachForItselfAndAlphaIsOneOfThem)
{
    EXPECT_EQ(ColourPair(rgba(13, 36, 30, 40), rgba(90, 80, 90, 50)),
              optimise(OneBlock<BlockRecord4bpp>{makeHalfRecord(), rgba(10, 20, 30, 40), rgba(90, 80, 70, 60),
                                                 [](uint32_t i) { return i < 8 ? rgba(13, 36, 30, 40) : rgba(90, 80, 90, 50); },
                                                 everywhere(rgba(10, 20, 30, 40)), everywhere(rgba(90, 80, 70, 60))}));
}

TEST(OptimiseColours, ResultsAreCutOffAndNotTheShifts)
{
    // Half of each half differs by one more: shifts of 20.5 and -40.5, to 120.5 and 139.5.
    constexpr uint32_t auiSource[] = {120, 121, 140, 139};
    EXPECT_EQ(levels(120, 139), optimise(OneBlock<BlockRecord4bpp>{makeHalfRecord(), level(100), level(180),
                                                                   [&](uint32_t i) { return level(auiSource[i / 8 * 2 + i % 2]); },
                                                                   everywhere(level(100)), everywhere(level(180))}));
}

TEST(OptimiseColours, ShiftsEndAtAHundredEitherWay)
{
    EXPECT_EQ(levels(120, 230), shiftHalves({20, 150, 130, 255})); // 130 and 125
    EXPECT_EQ(levels(100, 80), shiftHalves({200, 60, 180, 50}));   // -140 and -130
    EXPECT_EQ(levels(120, 200), shiftHalves({20, 120, 100, 200})); // 100 twice
}

TEST(OptimiseColours, TheShiftOfBStartsFromThatOfABeforeItsLimit)
{
    // 150 and -50, a slope of -200: A gets 100, B still 150 - 200. From the limited 100 it would get -100.
    EXPECT_EQ(levels(120, 150), shiftHalves({20, 170, 200, 150}));
    // -150 and 50.
    EXPECT_EQ(levels(100, 150), shiftHalves({200, 50, 100, 150}));
}

TEST(OptimiseColours, MovedColoursEndAtZeroAndAt255)
{
    const auto move = [](uint32_t uiA, uint32_t uiB, uint32_t uiSourceA, uint32_t uiSourceB)
    {
        return optimise(OneBlock<BlockRecord4bpp>{makeHalfRecord(), level(uiA), level(uiB),
                                                  [=](uint32_t i) { return level(i < 8 ? uiSourceA : uiSourceB); }, everywhere(level(100)),
                                                  everywhere(level(100))});
    };
    // Shifts of 50 and -70, then of -50 and 70.
    EXPECT_EQ(levels(255, 0), move(230, 30, 150, 30));
    EXPECT_EQ(levels(0, 255), move(49, 186, 50, 170));
    EXPECT_EQ(levels(1, 254), move(51, 184, 50, 170));
}

namespace
{

/// Pixel i of a block of 8 by 4: the levels at the places that have stored codes, and between them in the outer and the inner rows.
uint32_t byRow(uint32_t i, uint32_t uiStored, uint32_t uiOuter, uint32_t uiInner)
{
    const uint32_t x = i % 8;
    const uint32_t y = i / 8;
    if (((x ^ y) & 1) == 0)
        return level(uiStored);
    return level(y == 0 || y == 3 ? uiOuter : uiInner);
}

} // namespace

TEST(OptimiseColours, WeightsAboveEightCountAsTheyAre)
{
    // Mode 2 with all codes 3: sixteen weights of 1, eight of 9/8, eight of 10/8.
    // mean(w) = (16 + 9 + 10) / 32 = 35/32, mean(ww) = (16 + 10.125 + 12.5) / 32 = 1236/1024, variance 11/1024.
    BlockRecord2bpp record;
    record.aui8InterpolatedCodes.fill(3);
    record.ui8Mode = 2;
    // Both upscaled colours are 50, so d is the source less 50: 16 times the weight. The slope is 16, A's shift 0.
    // With weights of 1 everywhere d would be 17.5 on average, and A would move to meet B.
    const auto getSource = [](uint32_t i) { return byRow(i, 66, 70, 68); };
    EXPECT_EQ(levels(100, 166),
              optimise(OneBlock<BlockRecord2bpp>{record, level(100), level(150), getSource, everywhere(level(50)), everywhere(level(50))}));
}

TEST(OptimiseColours, AWeightAboveOneTakesANegativePartOfA)
{
    // The weights of the test above between 200 and 40: 40 at 1, 40 * 9/8 - 200 / 8 = 20 at 9/8, 0 at 10/8. The source is 25 more
    // everywhere: the slope is 0, and both colours get 25.
    BlockRecord2bpp record;
    record.aui8InterpolatedCodes.fill(3);
    record.ui8Mode = 2;
    const auto getSource = [](uint32_t i) { return byRow(i, 65, 25, 45); };
    EXPECT_EQ(levels(225, 65),
              optimise(OneBlock<BlockRecord2bpp>{record, level(200), level(40), getSource, everywhere(level(200)), everywhere(level(40))}));
}

TEST(OptimiseColours, OnlyTheBlocksOfTheRegionAreMovedByTheirOwnPixels)
{
    // Blocks differ by 10 times their number, 12 blocks; all weights 0.
    CompressorImages images = makeImages(12, 16, 4, [](uint32_t x, uint32_t y) { return level(10 * (y / 4 * 3 + x / 4)); });
    const std::vector<BlockRecord4bpp> blockData(12);
    optimiseBoth(images, blockData, {1, 3, 2, 3});
    for (uint32_t uiBlock = 0; uiBlock < 12; ++uiBlock)
    {
        const bool bInside = uiBlock == 7 || uiBlock == 8;
        EXPECT_EQ(bInside ? level(10 * uiBlock) : 0u, images.colourA[uiBlock]) << uiBlock;
        EXPECT_EQ(bInside ? level(5 * uiBlock) : 0u, images.colourB[uiBlock]) << uiBlock;
    }
    EXPECT_THAT(images.upscaledA, testing::Each(0u));
}
