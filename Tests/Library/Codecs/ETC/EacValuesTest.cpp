#include "Codecs/ETC/EacValues.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{

using namespace moxtexture;

class EacValuesOfBothSigns : public testing::TestWithParam<bool>
{
protected:
    [[nodiscard]] const EacValues& getValues() const { return GetParam() ? eacValuesSigned : eacValuesUnsigned; }

    /// The value on a line from near 0 at place 0 to near 65536 at place 256.
    [[nodiscard]] int32_t toLine(uint16_t ui16Value) const { return GetParam() ? ui16Value ^ 0x8000 : ui16Value; }
};

TEST_P(EacValuesOfBothSigns, HoldEveryValueOfEveryBlock)
{
    uint32_t uiWrong = 0;
    for (uint32_t uiBase = 0; uiBase < 256; ++uiBase)
        for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
            for (uint32_t uiMultiplier = 0; uiMultiplier < 16; ++uiMultiplier)
                for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
                    uiWrong += getValues().get(uiBase, uiTable, uiMultiplier, uiIndex) !=
                                       eacValue(uiBase, uiTable, uiMultiplier, uiIndex, GetParam())
                                   ? 1u
                                   : 0u;
    EXPECT_EQ(0u, uiWrong);
}

TEST_P(EacValuesOfBothSigns, StandNearTheirPlaceTimes256)
{
    for (int32_t iPlace = 0; iPlace < 256; ++iPlace)
    {
        const int32_t iValue = toLine(getValues().aui16Places[static_cast<size_t>(iPlace - EacValues::k_iLeastPlace)]);
        EXPECT_GE(iValue, 256 * iPlace - 32) << iPlace;
        EXPECT_LE(iValue, 256 * iPlace + 160) << iPlace;
    }
}

TEST_P(EacValuesOfBothSigns, LieWithin481OfTheBaseAtMultiplier0)
{
    for (uint32_t uiBase = 1; uiBase < 256; ++uiBase)
        for (uint32_t uiTable = 0; uiTable < 16; ++uiTable)
            for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
            {
                // Table 13 has the modifier 0 at index 4.
                const int32_t iBaseValue = toLine(getValues().get(uiBase, 13, 1, 4));
                EXPECT_LE(std::abs(toLine(getValues().get(uiBase, uiTable, 0, uiIndex)) - iBaseValue), 481);
            }
}

TEST_P(EacValuesOfBothSigns, OfTheWidestRowLeaveNoPixelFartherThan9700)
{
    for (uint32_t uiPixel = 0; uiPixel < 65536; ++uiPixel)
    {
        int32_t iLeast = 65536;
        for (uint32_t uiIndex = 0; uiIndex < 8; ++uiIndex)
            iLeast = std::min(iLeast, std::abs(static_cast<int32_t>(
                                          static_cast<int16_t>(static_cast<uint16_t>(uiPixel - getValues().get(128, 0, 15, uiIndex))))));
        ASSERT_LE(iLeast, 9700) << uiPixel;
    }
}

INSTANTIATE_TEST_SUITE_P(Signs, EacValuesOfBothSigns, testing::Bool(), [](const auto& sign) { return sign.param ? "Signed" : "Unsigned"; });

} // namespace
