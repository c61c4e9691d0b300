#include "Display/CubeBasis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{

void expectDirection(const CubeDirection& expected, const CubeDirection& direction)
{
    EXPECT_EQ(expected.fX, direction.fX);
    EXPECT_EQ(expected.fY, direction.fY);
    EXPECT_EQ(expected.fZ, direction.fZ);
}

/// The face that the middle of the view shows.
uint32_t getMiddleFace(ViewOffset offset)
{
    return pickCubeTexel(makeCubeBasis(64, 64, offset, 1.0f), 32, 32, 8, 8).uiFace;
}

} // namespace

TEST(CubeBasis, AWideViewReachesItsRatioToTheSides)
{
    // w / h = 2: hx = -2, hy = 1; kx = -2 * -2 / 4 = 1, ky = 1 * -2 / 2 = -1; no angle, so cosines 1 and sines 0.
    const CubeBasis basis = makeCubeBasis(4, 2, {}, 1.0f);
    expectDirection({-2.0f, 1.0f, 1.0f}, basis.origin);
    expectDirection({1.0f, 0.0f, 0.0f}, basis.du);
    expectDirection({0.0f, -1.0f, 0.0f}, basis.dv);
    expectDirection({1.0f, 0.0f, 1.0f}, basis.getDirection(3, 1));
}

TEST(CubeBasis, ATallViewReachesItsRatioUpAndDownAndZoomMovesTheScreenAway)
{
    // hx = -1, hy = 4 / 2; kx = -1 * -2 / 2 = 1, ky = 2 * -2 / 4 = -1
    const CubeBasis basis = makeCubeBasis(2, 4, {}, 8.0f);
    expectDirection({-1.0f, 2.0f, 8.0f}, basis.origin);
    expectDirection({1.0f, 0.0f, 0.0f}, basis.du);
    expectDirection({0.0f, -1.0f, 0.0f}, basis.dv);
}

TEST(CubeBasis, PartsOfTheOriginAreThoseOfTheFormula)
{
    // a = 128 / 512 * pi / 2 = pi / 8, b = 256 / 512 * -pi / 2 = -pi / 4; square view, zoom 2: hx = -1, hy = 1.
    // ca = 0.9238795, sa = 0.3826834, cb = 0.7071068, sb = -0.7071068
    // X = -0.9238795 + 0.2705981 - 0.5411961 = -1.1944776
    // Y = 0.7071068 + 1.4142136 = 2.1213203
    // Z = -0.3826834 - 0.6532815 + 1.3065630 = 0.2705981
    const CubeBasis basis = makeCubeBasis(4, 4, {128, 256}, 2.0f);
    EXPECT_NEAR(-1.1944776f, basis.origin.fX, 1e-5f);
    EXPECT_NEAR(2.1213203f, basis.origin.fY, 1e-5f);
    EXPECT_NEAR(0.2705981f, basis.origin.fZ, 1e-5f);
    // kx = 0.5, ky = -0.5: du = 0.5 * (ca, 0, sa); dv = -0.5 * (-sb sa, cb, sb ca) = -0.5 * (0.2705981, 0.7071068, -0.6532815)
    EXPECT_NEAR(0.4619398f, basis.du.fX, 1e-5f);
    EXPECT_EQ(0.0f, basis.du.fY);
    EXPECT_NEAR(0.1913417f, basis.du.fZ, 1e-5f);
    EXPECT_NEAR(-0.1352990f, basis.dv.fX, 1e-5f);
    EXPECT_NEAR(-0.3535534f, basis.dv.fY, 1e-5f);
    EXPECT_NEAR(0.3266407f, basis.dv.fZ, 1e-5f);
}

TEST(CubeBasis, OffsetsTurnTheViewByQuarters)
{
    EXPECT_EQ(4u, getMiddleFace({0, 0}));
    EXPECT_EQ(1u, getMiddleFace({512, 0}));
    EXPECT_EQ(0u, getMiddleFace({-512, 0}));
    EXPECT_EQ(5u, getMiddleFace({1024, 0}));
    EXPECT_EQ(2u, getMiddleFace({0, 512}));
    EXPECT_EQ(3u, getMiddleFace({0, -512}));
}

TEST(PickCubeFace, GivesFaceAndCoordinatesForEachSide)
{
    const auto expectPick = [](const CubeDirection& direction, uint32_t uiFace, float fU, float fV)
    {
        const CubePick pick = pickCubeFace(direction);
        EXPECT_EQ(uiFace, pick.uiFace);
        EXPECT_EQ(fU, pick.fU);
        EXPECT_EQ(fV, pick.fV);
    };
    expectPick({4.0f, 1.0f, 2.0f}, 0, -0.5f, -0.25f);
    expectPick({-4.0f, 1.0f, 2.0f}, 1, 0.5f, -0.25f);
    expectPick({1.0f, 4.0f, 2.0f}, 2, 0.25f, 0.5f);
    expectPick({1.0f, -4.0f, 2.0f}, 3, 0.25f, -0.5f);
    expectPick({1.0f, 2.0f, 4.0f}, 4, 0.25f, -0.5f);
    expectPick({1.0f, 2.0f, -4.0f}, 5, -0.25f, -0.5f);
}

TEST(PickCubeFace, XWinsATieAndYWinsOverZ)
{
    EXPECT_EQ(0u, pickCubeFace({1.0f, 1.0f, 1.0f}).uiFace);
    EXPECT_EQ(1u, pickCubeFace({-1.0f, 1.0f, -1.0f}).uiFace);
    EXPECT_EQ(2u, pickCubeFace({0.5f, 1.0f, 1.0f}).uiFace);
    EXPECT_EQ(3u, pickCubeFace({0.5f, -1.0f, 1.0f}).uiFace);
}

TEST(PickCubeTexel, TruncatesAndStopsAtTheLastTexel)
{
    const CubeBasis basis = makeCubeBasis(4, 2, {}, 1.0f);
    // (-2, 1, 1): face 1, u = 1 / 2, v = -1 / 2: 1.5 * 10 * 0.5 = 7.5 and 0.5 * 6 * 0.5 = 1.5
    CubeTexel texel = pickCubeTexel(basis, 0, 0, 10, 6);
    EXPECT_EQ(1u, texel.uiFace);
    EXPECT_EQ(7u, texel.uiX);
    EXPECT_EQ(1u, texel.uiY);
    // (0, 1, 1): face 2, u = 0, v = 1: 1 * 10 * 0.5 = 5 and 2 * 6 * 0.5 = 6, one too many
    texel = pickCubeTexel(basis, 2, 0, 10, 6);
    EXPECT_EQ(2u, texel.uiFace);
    EXPECT_EQ(5u, texel.uiX);
    EXPECT_EQ(5u, texel.uiY);
}

TEST(PickCubeTexel, ADirectionOfNoLengthOrWithoutANumberGivesTheFirstTexel)
{
    const CubeTexel none = pickCubeTexel(CubeBasis(), 3, 4, 10, 6);
    EXPECT_EQ(1u, none.uiFace);
    EXPECT_EQ(0u, none.uiX);
    EXPECT_EQ(0u, none.uiY);
    CubeBasis basis;
    basis.origin.fZ = std::numeric_limits<float>::quiet_NaN();
    const CubeTexel notANumber = pickCubeTexel(basis, 0, 0, 10, 6);
    EXPECT_EQ(3u, notANumber.uiFace);
    EXPECT_EQ(0u, notANumber.uiY);
}

TEST(PickCubeTexel, TheLargestFacesStayWithinThemselves)
{
    CubeBasis basis;
    basis.origin = {1.0f, -1.0f, -1.0f}; // face 0, u = 1, v = 1
    const CubeTexel texel = pickCubeTexel(basis, 0, 0, 0xFFFFFFFF, 33554431);
    EXPECT_EQ(0xFFFFFFFEu, texel.uiX);
    EXPECT_EQ(33554430u, texel.uiY);
}
