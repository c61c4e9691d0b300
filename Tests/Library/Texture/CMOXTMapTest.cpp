#include "Texture/CMOXTMap.h"

#include <gtest/gtest.h>

#include <string>

using namespace moxtexture;

namespace
{

CMOXTMap<uint32_t, uint32_t> mapOf(uint32_t uiCount)
{
    CMOXTMap<uint32_t, uint32_t> map;
    for (uint32_t i = 0; i < uiCount; ++i)
        map[1000 - i] = i; // falling keys: insertion order and key order differ
    return map;
}

} // namespace

TEST(MoxtMap, GrowsItsKeysByDoubling)
{
    EXPECT_EQ(16u, mapOf(0).getKeyCapacity());
    EXPECT_EQ(16u, mapOf(16).getKeyCapacity());
    EXPECT_EQ(32u, mapOf(17).getKeyCapacity());
    EXPECT_EQ(64u, mapOf(33).getKeyCapacity());
}

TEST(MoxtMap, KeepsTheOrderOfInsertion)
{
    const auto map = mapOf(40);
    ASSERT_EQ(40u, map.getCount());
    for (uint32_t i = 0; i < 40; ++i)
    {
        EXPECT_EQ(1000 - i, map.getKey(i));
        EXPECT_EQ(i, map.getValue(i));
    }
}

TEST(MoxtMap, AKeyThatIsThereGivesItsValueAndAddsNothing)
{
    auto map = mapOf(20);
    map[990] = 77;
    EXPECT_EQ(20u, map.getCount());
    EXPECT_EQ(77u, map.getValue(10));
}

TEST(MoxtMap, ANewKeyGetsADefaultValue)
{
    CMOXTMap<uint32_t, std::string> map;
    EXPECT_EQ("", map[3]);
    EXPECT_EQ(1u, map.getCount());
}

TEST(MoxtMap, LookingForAKeyInsertsNothing)
{
    auto map = mapOf(3);
    EXPECT_TRUE(map.contains(999));
    EXPECT_FALSE(map.contains(1));
    EXPECT_EQ(nullptr, map.find(1));
    ASSERT_NE(nullptr, map.find(998));
    EXPECT_EQ(2u, *map.find(998));
    EXPECT_EQ(3u, map.getCount());
}

TEST(MoxtMap, CopiesShareNothing)
{
    auto map = mapOf(2);
    auto copy = map;
    copy[1000] = 50;
    copy[5] = 6;
    EXPECT_EQ(0u, map[1000]);
    EXPECT_EQ(2u, map.getCount());
    EXPECT_EQ(3u, copy.getCount());

    map = copy;
    EXPECT_EQ(50u, map[1000]);
    EXPECT_EQ(6u, map[5]);
    EXPECT_EQ(3u, map.getCount());
}

TEST(MoxtMap, AssignmentReplacesAllThatWasThere)
{
    auto map = mapOf(30);
    map = mapOf(1);
    EXPECT_EQ(1u, map.getCount());
    EXPECT_FALSE(map.contains(999));
    const auto& same = map;
    map = same;
    EXPECT_EQ(1u, map.getCount());
    EXPECT_EQ(0u, map[1000]);
}

TEST(MoxtMap, AKeyTakenOutLeavesTheOrderOfTheOthers)
{
    auto map = mapOf(4);
    EXPECT_TRUE(map.remove(999));
    EXPECT_FALSE(map.remove(999));
    ASSERT_EQ(3u, map.getCount());
    EXPECT_EQ(1000u, map.getKey(0));
    EXPECT_EQ(998u, map.getKey(1));
    EXPECT_EQ(997u, map.getKey(2));
    EXPECT_EQ(3u, map[997]);
    EXPECT_FALSE(map.contains(999));
}
