#include "Texture/SurfaceWalk.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

using namespace moxtexture;

namespace
{

using Surface = std::array<uint32_t, 3>; // level, member, face

CMOXTextureHeader headerOf(uint32_t uiLevels, uint32_t uiMembers, uint32_t uiFaces)
{
    return {k_RGBA8, 1, 1, 1, uiLevels, uiMembers, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false};
}

} // namespace

TEST(SurfaceWalk, GoesThroughMembersThenFacesThenLevels)
{
    std::vector<Surface> visited;
    EXPECT_TRUE(walkSurfaces(headerOf(2, 2, 3),
                             [&](uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
                             {
                                 visited.push_back({uiLevel, uiMember, uiFace});
                                 return true;
                             }));
    const std::vector<Surface> expected = {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}, {1, 0, 1}, {0, 0, 2}, {1, 0, 2},
                                           {0, 1, 0}, {1, 1, 0}, {0, 1, 1}, {1, 1, 1}, {0, 1, 2}, {1, 1, 2}};
    EXPECT_EQ(expected, visited);
}

TEST(SurfaceWalk, EndsAtTheFirstVisitThatGivesFalse)
{
    int iVisits = 0;
    EXPECT_FALSE(walkSurfaces(headerOf(4, 4, 6), [&](uint32_t, uint32_t, uint32_t) { return ++iVisits < 5; }));
    EXPECT_EQ(5, iVisits);
}

TEST(SurfaceWalk, OfNoSurfacesVisitsNoneAtOnce)
{
    for (const CMOXTextureHeader& header : {headerOf(0, 0xFFFFFFFF, 0xFFFFFFFF), headerOf(1, 0xFFFFFFFF, 0), headerOf(1, 0, 6)})
        EXPECT_TRUE(walkSurfaces(header, [](uint32_t, uint32_t, uint32_t) { return false; }));
}
