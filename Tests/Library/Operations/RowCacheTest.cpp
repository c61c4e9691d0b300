#include "Operations/RowCache.h"

#include <gtest/gtest.h>

#include <vector>

using namespace moxtexture;

namespace
{

class RowCache : public testing::Test
{
protected:
    RowCache() { m_Cache.clear(); }

    /// The wanted rows' numbers as they stand in what the cache gives; m_Made is what it made for that.
    std::array<float, 3> select(const std::array<uint32_t, 3>& auiWanted)
    {
        m_Made.clear();
        std::array<const float*, 3> pRows;
        m_Cache.select(
            auiWanted,
            [&](uint32_t uiRow, float* pFloats)
            {
                m_Made.push_back(uiRow);
                pFloats[0] = static_cast<float>(uiRow);
            },
            pRows.data());
        return {pRows[0][0], pRows[1][0], pRows[2][0]};
    }

    using Rows = std::array<float, 3>;
    using Made = std::vector<uint32_t>;

    CRowCache<3, 1> m_Cache;
    Made m_Made;
};

} // namespace

TEST_F(RowCache, MakesOnlyWhatItDoesNotHold)
{
    EXPECT_EQ((Rows{0, 1, 2}), select({0, 1, 2}));
    EXPECT_EQ((Made{0, 1, 2}), m_Made);
    EXPECT_EQ((Rows{1, 2, 3}), select({1, 2, 3}));
    EXPECT_EQ((Made{3}), m_Made);
    EXPECT_EQ((Rows{1, 2, 3}), select({1, 2, 3}));
    EXPECT_TRUE(m_Made.empty());
}

TEST_F(RowCache, OneRowMayBeWantedMoreThanOnce)
{
    EXPECT_EQ((Rows{0, 0, 1}), select({0, 0, 1}));
    EXPECT_EQ((Made{0, 1}), m_Made);
}

TEST_F(RowCache, RowsMayComeInAnyOrderAndAtAnyDistance)
{
    EXPECT_EQ((Rows{7, 9, 11}), select({7, 9, 11}));
    EXPECT_EQ((Rows{11, 3, 7}), select({11, 3, 7}));
    EXPECT_EQ((Made{3}), m_Made);
}

TEST_F(RowCache, HoldsNothingAfterClear)
{
    (void)select({0, 1, 2});
    m_Cache.clear();
    EXPECT_EQ((Rows{0, 1, 2}), select({0, 1, 2}));
    EXPECT_EQ((Made{0, 1, 2}), m_Made);
}
