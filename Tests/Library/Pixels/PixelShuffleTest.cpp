#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Pixels/PixelShuffle.h"
#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using testing::ElementsAre;

namespace
{

std::vector<uint8_t> shuffleBy(decltype(&shufflePixels) pShuffle, const PixelShuffle& shuffle, const std::vector<uint8_t>& source)
{
    const size_t uiCount = source.size() / shuffle.uiSourceBytes;
    std::vector<uint8_t> target(uiCount * shuffle.uiTargetBytes);
    pShuffle(shuffle, source.data(), target.data(), uiCount);
    return target;
}

} // namespace

TEST(PixelShuffle, TakesBytesByIndexAndConstants)
{
    PixelShuffle shuffle;
    shuffle.uiSourceBytes = 3;
    shuffle.uiTargetBytes = 4;
    shuffle.aui8From = {2, 1, 0, PixelShuffle::k_uiConstant};
    shuffle.aui8Value = {9, 9, 9, 255};
    const std::vector<uint8_t> source = {1, 2, 3, 4, 5, 6};
    EXPECT_THAT(shuffleBy(shufflePixelsReference, shuffle, source), ElementsAre(3, 2, 1, 255, 6, 5, 4, 255));
    EXPECT_FALSE(shuffle.isIdentity());
}

TEST(PixelShuffle, TheIdentityNeedsEqualSizes)
{
    PixelShuffle shuffle;
    shuffle.uiSourceBytes = 4;
    shuffle.uiTargetBytes = 3;
    shuffle.aui8From = {0, 1, 2, 3};
    EXPECT_FALSE(shuffle.isIdentity());
    shuffle.uiTargetBytes = 4;
    EXPECT_TRUE(shuffle.isIdentity());
    shuffle.aui8From[3] = PixelShuffle::k_uiConstant;
    EXPECT_FALSE(shuffle.isIdentity());
}

TEST(PixelShuffle, GivesTheReferenceBytesForAllSizesAndLengths)
{
    testsupport::CSeededRandom random(11);
    forEachInstructionSet(
        [&]
        {
            for (size_t uiSourceBytes = 1; uiSourceBytes <= 16; ++uiSourceBytes)
                for (size_t uiTargetBytes = 1; uiTargetBytes <= 16; ++uiTargetBytes)
                {
                    PixelShuffle shuffle;
                    shuffle.uiSourceBytes = uiSourceBytes;
                    shuffle.uiTargetBytes = uiTargetBytes;
                    for (size_t i = 0; i < uiTargetBytes; ++i)
                    {
                        const bool bConstant = random.below(4) == 0;
                        shuffle.aui8From[i] = bConstant ? PixelShuffle::k_uiConstant
                                                        : static_cast<uint8_t>(random.below(static_cast<uint32_t>(uiSourceBytes)));
                        shuffle.aui8Value[i] = static_cast<uint8_t>(random.next32());
                    }
                    for (size_t uiCount = 0; uiCount < 40; uiCount += 1 + uiCount / 8)
                    {
                        const std::vector<uint8_t> source = random.bytes(uiCount * uiSourceBytes);
                        ASSERT_EQ(shuffleBy(shufflePixelsReference, shuffle, source), shuffleBy(shufflePixels, shuffle, source))
                            << uiSourceBytes << " to " << uiTargetBytes << " bytes, " << uiCount << " pixels";
                    }
                }
        });
}
