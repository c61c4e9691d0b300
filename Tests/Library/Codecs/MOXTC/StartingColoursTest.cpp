#include "Codecs/MOXTC/StartingColours.h"

#include <gmock/gmock.h>

#include <utility>

#include "CompressorTestImages.h"

using namespace moxtexture;
using namespace compressortest;

namespace
{

std::pair<uint32_t, uint32_t> order(uint32_t uiFirst, uint32_t uiSecond)
{
    orderByLuminance(uiFirst, uiSecond);
    return {uiFirst, uiSecond};
}

void expectOrder(uint32_t uiA, uint32_t uiB)
{
    EXPECT_EQ(std::make_pair(uiA, uiB), order(uiA, uiB));
    EXPECT_EQ(std::make_pair(uiA, uiB), order(uiB, uiA));
}

/// The plain form, which the fast one must equal.
void findBoth(CompressorImages& images, bool bOverlap)
{
    CompressorImages fast = images;
    findStartingColours(fast, bOverlap);
    findStartingColoursReference(images, bOverlap);
    EXPECT_EQ(images.colourA, fast.colourA);
    EXPECT_EQ(images.colourB, fast.colourB);
}

/// The colours of the first block.
std::pair<uint32_t, uint32_t> findColours(CompressorImages& images, bool bOverlap)
{
    findBoth(images, bOverlap);
    return {images.colourA[0], images.colourB[0]};
}

/// The corners of a square, of which both diagonals are the farthest pairs.
constexpr uint32_t k_uiP = rgba(0, 0, 0);
constexpr uint32_t k_uiQ = rgba(10, 10, 0);
constexpr uint32_t k_uiR = rgba(10, 0, 0);
constexpr uint32_t k_uiS = rgba(0, 10, 0);

} // namespace

TEST(StartingColours, TheDarkerColourComesFirst)
{
    expectOrder(rgba(0, 0, 255), rgba(0, 100, 0));  // 28 and 59
    expectOrder(rgba(100, 0, 0), rgba(0, 100, 0));  // 30 and 59
    expectOrder(rgba(255, 0, 0), rgba(80, 80, 80)); // 76 and 80
}

TEST(StartingColours, BrightnessHasNoFraction)
{
    // 90 / 100 and 59 / 100 are both 0: the numbers 0xFF000003 and 0xFF000100 decide.
    expectOrder(rgba(3, 0, 0), rgba(0, 1, 0));
    // 120 / 100 is 1: the brighter one, though its number is the smaller one.
    expectOrder(rgba(0, 1, 0), rgba(4, 0, 0));
}

TEST(StartingColours, RedGreenAndBlueCountThirtyFiftyNineAndEleven)
{
    // Each share decides by a hair against a colour whose number would decide otherwise, once from below and once from above.
    expectOrder(rgba(0, 0, 19), rgba(10, 0, 0));            // 209 and 300
    expectOrder(rgba(33, 0, 0), rgba(0, 0, 90));            // 990 twice
    expectOrder(rgba(103, 0, 255), rgba(0, 100, 0));        // 5895 and 5900
    expectOrder(rgba(0, 99, 0), rgba(103, 0, 255));         // 5841 and 5895
    expectOrder(rgba(0, 18, 0, 255), rgba(0, 0, 100, 254)); // 1062 and 1100
    expectOrder(rgba(0, 0, 99, 254), rgba(0, 18, 0, 255));  // 1089 and 1062
}

TEST(StartingColours, OfEqualBrightnessTheSmallerNumberComesFirstAndAlphaIsItsTop)
{
    expectOrder(rgba(200, 200, 200, 5), rgba(200, 200, 200, 9));
    // 3 of red make 90 / 100, 5 of blue 55 / 100; the blue one has the smaller alpha.
    expectOrder(rgba(0, 0, 5, 127), rgba(3, 0, 0, 128));
    expectOrder(rgba(3, 0, 0, 128), rgba(0, 0, 5, 128));
}

TEST(StartingColours, TheFarthestTwoPixelsOfTheBlock)
{
    CompressorImages images = makeImages(4, 4, 4,
                                         [](uint32_t x, uint32_t y)
                                         {
                                             if (x == 2 && y == 3)
                                                 return rgba(90, 20, 20);
                                             if (x == 3 && y == 0)
                                                 return rgba(20, 10, 250);
                                             return rgba(40, 40, 40);
                                         });
    // The blue one is 70 * 70 + 10 * 10 + 230 * 230 from the red one; the greys are nearer to both.
    // Brightness 39 (20 * 30 + 10 * 59 + 250 * 11 = 3940) and 41 (90 * 30 + 20 * 59 + 20 * 11 = 4100).
    EXPECT_EQ(std::make_pair(rgba(20, 10, 250), rgba(90, 20, 20)), findColours(images, false));
}

TEST(StartingColours, AlphaCountsAsADistance)
{
    CompressorImages images = makeImages(4, 4, 4,
                                         [](uint32_t x, uint32_t y)
                                         {
                                             if (x == 1 && y == 1)
                                                 return rgba(100, 100, 100, 0);
                                             return x == 2 ? rgba(200, 100, 100, 255) : rgba(100, 100, 100, 255);
                                         });
    // 255 * 255 + 100 * 100 across both alpha and red.
    EXPECT_EQ(std::make_pair(rgba(100, 100, 100, 0), rgba(200, 100, 100, 255)), findColours(images, false));
}

TEST(StartingColours, OfEquallyFarPairsTheOneThatStartsFirstIsTaken)
{
    // P and Q, at 0 and 3, are as far apart as R and S, at 1 and 2.
    CompressorImages images = makeImages(4, 4, 4,
                                         [](uint32_t x, uint32_t y)
                                         {
                                             constexpr uint32_t auiFirst[] = {k_uiP, k_uiR, k_uiS, k_uiQ};
                                             return y == 0 ? auiFirst[x] : k_uiP;
                                         });
    EXPECT_EQ(std::make_pair(k_uiP, k_uiQ), findColours(images, false));
}

TEST(StartingColours, WithTheOverlapPixelsCountInTheOrderOfTheWindow)
{
    const auto getPixel = [](uint32_t x, uint32_t y)
    {
        constexpr uint32_t auiThird[] = {k_uiS, k_uiQ, k_uiR, k_uiP};
        return y == 2 ? auiThird[x] : k_uiP;
    };
    CompressorImages images = makeImages(4, 4, 4, getPixel);
    // The block starts with P, whose partner is Q.
    EXPECT_EQ(std::make_pair(k_uiP, k_uiQ), findColours(images, false));
    // The window of the only block starts at (-2, -2), which is (2, 2): R, whose partner is S. Brightness 300 / 100 and 590 / 100.
    EXPECT_EQ(std::make_pair(k_uiR, k_uiS), findColours(images, true));
}

TEST(StartingColours, AFlatBlockHasItsColourTwice)
{
    CompressorImages images = makeImages(8, 4, 8, [](uint32_t, uint32_t) { return rgba(1, 2, 3, 4); });
    for (const bool bOverlap : {false, true})
        EXPECT_EQ(std::make_pair(rgba(1, 2, 3, 4), rgba(1, 2, 3, 4)), findColours(images, bOverlap));
}

TEST(StartingColours, WithoutTheOverlapABlockSeesItsOwnPixelsOnly)
{
    for (const uint8_t ui8BlockWidth : {uint8_t{4}, uint8_t{8}})
    {
        const uint32_t uiWidth = 4u * ui8BlockWidth;
        const uint32_t uiX = 2u * ui8BlockWidth - 1; // the last column of block 1
        CompressorImages images =
            makeImages(uiWidth, 16, ui8BlockWidth, [&](uint32_t x, uint32_t y) { return x == uiX && y == 8 ? level(255) : level(0); });
        findBoth(images, false);
        for (uint32_t y = 0; y < 4; ++y)
            for (uint32_t x = 0; x < 4; ++x)
                EXPECT_EQ(x == 1 && y == 2 ? level(255) : level(0), images.colourB[images.getBlockIndex(x, y)]) << x << ", " << y;
    }
}

TEST(StartingColours, TheWindowReachesHalfABlockFartherOnAllSidesAndWraps)
{
    // Along an axis of four blocks, in halves of blocks: half h lies in block h / 2 and in the window of the block beside that half.
    // Window of block 0: halves 7, 0, 1, 2; of 1: 1 to 4; of 2: 3 to 6; of 3: 5, 6, 7, 0.
    constexpr bool abSeen[8][4] = {{true, false, false, true}, {true, true, false, false}, {true, true, false, false},
                                   {false, true, true, false}, {false, true, true, false}, {false, false, true, true},
                                   {false, false, true, true}, {true, false, false, true}};
    for (const uint8_t ui8BlockWidth : {uint8_t{4}, uint8_t{8}})
    {
        const uint32_t uiHalf = ui8BlockWidth / 2u;
        for (uint32_t uiDotY = 0; uiDotY < 16; ++uiDotY)
        {
            for (uint32_t uiDotX = 0; uiDotX < 8 * uiHalf; ++uiDotX)
            {
                CompressorImages images =
                    makeImages(8 * uiHalf, 16, ui8BlockWidth,
                               [&](uint32_t x, uint32_t y) { return x == uiDotX && y == uiDotY ? level(255) : level(0); });
                findBoth(images, true);
                for (uint32_t y = 0; y < 4; ++y)
                    for (uint32_t x = 0; x < 4; ++x)
                    {
                        const bool bSeen = abSeen[uiDotX / uiHalf][x] && abSeen[uiDotY / 2][y];
                        ASSERT_EQ(bSeen ? level(255) : level(0), images.colourB[images.getBlockIndex(x, y)])
                            << "dot " << uiDotX << ", " << uiDotY << " block " << x << ", " << y;
                        ASSERT_EQ(level(0), images.colourA[images.getBlockIndex(x, y)]);
                    }
            }
        }
    }
}
