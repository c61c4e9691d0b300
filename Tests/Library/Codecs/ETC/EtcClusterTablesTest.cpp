#include "Codecs/ETC/EtcClusterTables.h"

#include <gtest/gtest.h>

using namespace moxtexture;

TEST(EtcClusterTables, EveryMeanOfBytesIsTheRoundedQuotientOfDoubles)
{
    for (uint32_t uiCount = 1; uiCount < 16; ++uiCount)
        for (uint32_t uiSum = 0; uiSum <= 255 * uiCount; ++uiSum)
        {
            const double fMean = static_cast<double>(uiSum) / uiCount;
            ASSERT_EQ(static_cast<uint32_t>(fMean + 0.5), (2 * uiSum + uiCount) * k_etcMeanDivisors.aui32[uiCount] >> 20)
                << uiSum << " / " << uiCount;
        }
}

TEST(EtcClusterTables, SeedsAreDrawnDimensionByDimensionCentreByCentre)
{
    // The first six and the last six of sixty random numbers from the seed 10000.
    const double aafFirst[2][3] = {{32694, 12743, 11816}, {20150, 935, 23032}};
    const double aafLast[2][3] = {{30457, 20545, 3920}, {6488, 28115, 24}};
    for (size_t uiCentre = 0; uiCentre < 2; ++uiCentre)
        for (size_t c = 0; c < 3; ++c)
        {
            EXPECT_EQ(aafFirst[uiCentre][c] / 32767.0, k_etcClusterSeeds.aaaf[0][uiCentre][c]);
            EXPECT_EQ(aafLast[uiCentre][c] / 32767.0, k_etcClusterSeeds.aaaf[9][uiCentre][c]);
        }
}
