#include "Codecs/ETC/EtcRandom.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

using moxtexture::CEtcRandom;

TEST(EtcRandom, GivesBits16To30OfTheCongruence)
{
    // 0 * 214013 + 2531011 = 2531011 = 38 * 65536 + 40643
    EXPECT_EQ(CEtcRandom(0).next(), 38u);
    // 214013 + 2531011 = 2745024 = 41 * 65536 + 58048; 2745024 * 214013 + 2531011 is 1210316419 modulo 2^32, 18467 * 65536 and a rest
    CEtcRandom random(1);
    EXPECT_EQ(random.next(), 41u);
    EXPECT_EQ(random.next(), 18467u);
}

TEST(EtcRandom, LeavesBit31Out)
{
    // 20000 * 214013 + 2531011 = 4282791011 = 65350 * 65536 and a rest; 65350 - 32768 = 32582
    EXPECT_EQ(CEtcRandom(20000).next(), 32582u);
}

TEST(EtcRandom, ReachesItsMaximumAndNothingAbove)
{
    CEtcRandom random(10000);
    uint32_t uiMost = 0;
    uint32_t uiLeast = CEtcRandom::k_uiMaximum;
    for (int i = 0; i < 1000000; ++i)
    {
        const uint32_t uiNumber = random.next();
        uiMost = std::max(uiMost, uiNumber);
        uiLeast = std::min(uiLeast, uiNumber);
    }
    EXPECT_EQ(uiMost, 32767u);
    EXPECT_EQ(uiLeast, 0u);
}

TEST(EtcRandom, RunsAreApart)
{
    CEtcRandom first(10000);
    const uint32_t uiFirst = first.next();
    CEtcRandom second(10000);
    first.next();
    EXPECT_EQ(second.next(), uiFirst);
}
