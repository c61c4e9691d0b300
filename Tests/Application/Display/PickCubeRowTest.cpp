#include "Display/PickCubeRow.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "Support/EveryInstructionSet.h"
#include "Support/SeededPictures.h"

namespace
{

void expectEqualForms(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight, size_t uiCount)
{
    std::vector<uint32_t> faces(uiCount + 1, 99);
    std::vector<uint32_t> texels(uiCount + 1, 99);
    pickCubeRowReference(basis, x, y, uiFaceWidth, uiFaceHeight, faces.data(), texels.data(), uiCount);
    forEachInstructionSet(
        [&]
        {
            std::vector<uint32_t> fastFaces(uiCount + 1, 99);
            std::vector<uint32_t> fastTexels(uiCount + 1, 99);
            pickCubeRow(basis, x, y, uiFaceWidth, uiFaceHeight, fastFaces.data(), fastTexels.data(), uiCount);
            EXPECT_EQ(faces, fastFaces);
            EXPECT_EQ(texels, fastTexels);
        });
}

} // namespace

TEST(PickCubeRow, CountsTexelsRowByRow)
{
    // As in the test of pickCubeTexel(): face 1, texel 7, 1 of 10 by 6; face 2, texel 5, 5.
    const CubeBasis basis = makeCubeBasis(4, 2, {}, 1.0f);
    uint32_t aui32Faces[3];
    uint32_t aui32Texels[3];
    pickCubeRow(basis, 0, 0, 10, 6, aui32Faces, aui32Texels, 3);
    EXPECT_EQ(1u, aui32Faces[0]);
    EXPECT_EQ(17u, aui32Texels[0]);
    EXPECT_EQ(2u, aui32Faces[2]);
    EXPECT_EQ(55u, aui32Texels[2]);
}

TEST(PickCubeRow, GivesTheReferenceOnRandomViews)
{
    testsupport::CSeededRandom random(4);
    for (uint32_t uiView = 0; uiView < 3000; ++uiView)
    {
        const auto pitch = static_cast<int32_t>(random.below(1025)) - 512;
        const ViewOffset offset = {static_cast<int32_t>(random.next32()) >> random.below(24), pitch};
        const auto fZoom = static_cast<float>(1u << random.below(8));
        const CubeBasis basis = makeCubeBasis(1 + random.below(2000), 1 + random.below(2000), offset, fZoom);
        SCOPED_TRACE(uiView);
        expectEqualForms(basis, static_cast<int32_t>(random.below(1000)), static_cast<int32_t>(random.below(1000)), 1 + random.below(40000),
                         1 + random.below(50000), random.below(100));
    }
}

TEST(PickCubeRow, GivesTheReferenceOnEdgesAndCornersOfTheCube)
{
    // Square views whose pixels meet the cube's edges exactly, at every quarter turn.
    for (const int32_t i32Yaw : {0, 512, 1024, -512, 256, -256})
        for (const int32_t i32Pitch : {0, 512, -512, 256, -256})
        {
            const CubeBasis basis = makeCubeBasis(64, 64, {i32Yaw, i32Pitch}, 1.0f);
            for (int32_t y = 0; y < 64; ++y)
                expectEqualForms(basis, 0, y, 64, 64, 64);
        }
}

TEST(PickCubeRow, GivesTheReferenceForDirectionsWithoutALength)
{
    expectEqualForms(CubeBasis(), 0, 0, 5, 7, 33);
    CubeBasis basis;
    basis.du.fX = std::numeric_limits<float>::infinity();
    basis.origin.fZ = std::numeric_limits<float>::quiet_NaN();
    expectEqualForms(basis, 0, 1, 5, 7, 33);
    basis.origin.fZ = 1.0f;
    expectEqualForms(basis, 0, 1, 5, 7, 33);
}

TEST(PickCubeRow, GivesTheReferenceForTheWidestFaces)
{
    const CubeBasis basis = makeCubeBasis(200, 100, {77, 33}, 1.0f);
    expectEqualForms(basis, 0, 50, 0x7FFFFFFF, 1, 200);
    expectEqualForms(basis, 0, 50, 1, 0x7FFFFFFF, 200);
    expectEqualForms(basis, 0, 50, 33554431, 63, 200);
}
