#include "Composition/ConformTextures.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>
#include <vector>

#include "Operations/MIPMaps.h"
#include "Operations/Resize.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

struct Shape
{
    uint32_t uiWidth = 1;
    uint32_t uiHeight = 1;
    uint32_t uiDepth = 1;
    uint32_t uiLevels = 1;
    uint32_t uiMembers = 1;
    uint32_t uiFaces = 1;
};

CMOXTextureHeader makeHeader(const Shape& shape, MOXPixelWord format = k_RGBA8)
{
    return CMOXTextureHeader(format, shape.uiHeight, shape.uiWidth, shape.uiDepth, shape.uiLevels, shape.uiMembers, shape.uiFaces,
                             eCS_Linear, eCT_UnsignedNormalisedByte, false);
}

CMOXTexture makeNoise(const Shape& shape, MOXPixelWord format = k_RGBA8)
{
    const CMOXTextureHeader header = makeHeader(shape, format);
    const std::vector<uint8_t> aui8Bytes = testsupport::CSeededRandom(7).bytes(header.getDataSize());
    return CMOXTexture(header, aui8Bytes.data());
}

std::vector<uint8_t> bytesOf(const CMOXTexture& texture)
{
    const uint8_t* pData = texture.getDataPtr();
    return std::vector<uint8_t>(pData, pData + texture.getBlockSize());
}

/// Every surface's first byte, in the order of the data block.
std::vector<int> firstBytes(const CMOXTexture& texture)
{
    std::vector<int> aFirst;
    for (uint32_t uiLevel = 0; uiLevel < texture.getNumMIPLevels(); ++uiLevel)
        for (uint32_t uiMember = 0; uiMember < texture.getNumArrayMembers(); ++uiMember)
            for (uint32_t uiFace = 0; uiFace < texture.getNumFaces(); ++uiFace)
                aFirst.push_back(*texture.getDataPtr(uiLevel, uiMember, uiFace));
    return aFirst;
}

/// Each surface filled with 100 * level + 10 * member + face.
CMOXTexture makeNumbered(const Shape& shape, MOXPixelWord format = k_RGBA8)
{
    CMOXTexture texture(makeHeader(shape, format));
    for (uint32_t uiLevel = 0; uiLevel < shape.uiLevels; ++uiLevel)
        for (uint32_t uiMember = 0; uiMember < shape.uiMembers; ++uiMember)
            for (uint32_t uiFace = 0; uiFace < shape.uiFaces; ++uiFace)
                std::memset(texture.getDataPtr(uiLevel, uiMember, uiFace), static_cast<int>(100 * uiLevel + 10 * uiMember + uiFace),
                            texture.getDataSize(uiLevel, false, false));
    return texture;
}

bool makeSurfacesAlike(const CMOXTextureHeader& reference, CMOXTexture& texture, bool bFaces, bool bArrays)
{
    return conformSurfaces(reference, &texture, 1, findDifferences(reference, &texture, 1), bFaces, bArrays);
}

} // namespace

TEST(ConformTextures, NoteWidthHeightAndDepthOfTheTopLevelAsSize)
{
    const CMOXTextureHeader reference = makeHeader({8, 4, 2, 1, 1, 1});
    const std::vector<CMOXTexture> textures = {makeNoise({8, 4, 2, 1, 1, 1}), makeNoise({4, 4, 2, 1, 1, 1}), makeNoise({8, 8, 2, 1, 1, 1}),
                                               makeNoise({8, 4, 1, 1, 1, 1})};
    const ConformDifferences differences = findDifferences(reference, textures.data(), 4);
    EXPECT_EQ((std::vector<bool>{false, true, true, true}), differences.aSizes);
    EXPECT_TRUE(differences.anySizes());
    EXPECT_FALSE(differences.anyMIPs());
    EXPECT_FALSE(differences.anySurfaces());
}

TEST(ConformTextures, NoteLevelsAndSurfacesEachByThemselves)
{
    const CMOXTextureHeader reference = makeHeader({4, 4, 1, 3, 2, 6});
    const std::vector<CMOXTexture> textures = {makeNoise({4, 4, 1, 2, 2, 6}), makeNoise({4, 4, 1, 3, 1, 6}), makeNoise({4, 4, 1, 3, 2, 1})};
    const ConformDifferences differences = findDifferences(reference, textures.data(), 3);
    EXPECT_FALSE(differences.anySizes());
    EXPECT_EQ((std::vector<bool>{true, false, false}), differences.aMIPs);
    EXPECT_EQ((std::vector<bool>{false, true, true}), differences.aSurfaces);
}

TEST(ConformTextures, OfNoTexturesDifferInNothing)
{
    const ConformDifferences differences = findDifferences(makeHeader({}), nullptr, 0);
    EXPECT_FALSE(differences.anySizes() || differences.anyMIPs() || differences.anySurfaces());
}

TEST(ConformTextures, AreResizedLinearlyAndOnlyWhereTheyDiffer)
{
    const CMOXTextureHeader reference = makeHeader({6, 5, 1, 1, 1, 1});
    std::vector<CMOXTexture> textures = {makeNoise({9, 4, 1, 1, 2, 1}), makeNoise({6, 5, 1, 1, 1, 1})};
    CMOXTexture linear = textures[0];
    ASSERT_TRUE(Resize(linear, 6, 5, 1, eResizeLinear));
    const std::vector<uint8_t> untouched = bytesOf(textures[1]);

    ASSERT_TRUE(conformSizes(reference, textures.data(), 2, findDifferences(reference, textures.data(), 2)));
    EXPECT_EQ(bytesOf(linear), bytesOf(textures[0]));
    EXPECT_EQ(6u, textures[0].getWidth());
    EXPECT_EQ(2u, textures[0].getNumArrayMembers());
    EXPECT_EQ(untouched, bytesOf(textures[1]));
}

TEST(ConformTextures, GetTheLevelsOfTheReferenceLinearly)
{
    const CMOXTextureHeader reference = makeHeader({8, 8, 1, 3, 1, 1});
    std::vector<CMOXTexture> textures = {makeNoise({8, 8, 1, 1, 1, 1}), makeNoise({8, 8, 1, 3, 1, 1})};
    CMOXTexture linear = textures[0];
    ASSERT_TRUE(GenerateMIPMaps(linear, eResizeLinear, 3));
    const std::vector<uint8_t> untouched = bytesOf(textures[1]);

    ASSERT_TRUE(conformMIPMaps(reference, textures.data(), 2, findDifferences(reference, textures.data(), 2)));
    EXPECT_EQ(bytesOf(linear), bytesOf(textures[0]));
    EXPECT_EQ(untouched, bytesOf(textures[1]));
}

// On purpose: the differences are those from before, so the one level that resizing leaves is not seen.
TEST(ConformTextures, ThatHadEnoughLevelsBeforeResizingAreLeftWithOne)
{
    const CMOXTextureHeader reference = makeHeader({8, 8, 1, 3, 1, 1});
    CMOXTexture texture = makeNoise({4, 4, 1, 3, 1, 1});
    const ConformDifferences differences = findDifferences(reference, &texture, 1);
    ASSERT_TRUE(conformSizes(reference, &texture, 1, differences));
    ASSERT_TRUE(conformMIPMaps(reference, &texture, 1, differences));
    EXPECT_EQ(8u, texture.getWidth());
    EXPECT_EQ(1u, texture.getNumMIPLevels());
}

TEST(ConformTextures, RepeatTheirMembersInSuccession)
{
    CMOXTexture texture = makeNumbered({2, 2, 1, 1, 2, 1});
    ASSERT_TRUE(makeSurfacesAlike(makeHeader({2, 2, 1, 1, 5, 1}), texture, true, true));
    EXPECT_EQ((std::vector<int>{0, 10, 0, 10, 0}), firstBytes(texture));
}

TEST(ConformTextures, RepeatTheirFacesInSuccessionInEveryMemberAndLevel)
{
    CMOXTexture texture = makeNumbered({2, 2, 1, 2, 2, 2});
    ASSERT_TRUE(makeSurfacesAlike(makeHeader({2, 2, 1, 2, 3, 3}), texture, true, true));
    EXPECT_EQ((std::vector<int>{0, 1, 0, 10, 11, 10, 0, 1, 0, 100, 101, 100, 110, 111, 110, 100, 101, 100}), firstBytes(texture));
}

TEST(ConformTextures, LoseTheSurfacesThatTheReferenceHasNot)
{
    CMOXTexture texture = makeNumbered({2, 2, 1, 1, 3, 6});
    ASSERT_TRUE(makeSurfacesAlike(makeHeader({2, 2, 1, 1, 1, 1}), texture, true, true));
    EXPECT_EQ((std::vector<int>{0}), firstBytes(texture));
}

TEST(ConformTextures, TakeOnlyTheNumberThatIsAskedFor)
{
    const CMOXTextureHeader reference = makeHeader({2, 2, 1, 1, 2, 2});
    CMOXTexture faces = makeNumbered({2, 2, 1, 1, 1, 1});
    CMOXTexture members = faces;
    ASSERT_TRUE(makeSurfacesAlike(reference, faces, true, false));
    EXPECT_EQ(1u, faces.getNumArrayMembers());
    EXPECT_EQ(2u, faces.getNumFaces());
    ASSERT_TRUE(makeSurfacesAlike(reference, members, false, true));
    EXPECT_EQ(2u, members.getNumArrayMembers());
    EXPECT_EQ(1u, members.getNumFaces());
}

TEST(ConformTextures, KeepTheirOwnFormatSizesAndLevelsWhileSurfacesAreRepeated)
{
    CMOXTexture texture = makeNumbered({7, 5, 1, 2, 1, 1}, ePF_BC1);
    ASSERT_TRUE(makeSurfacesAlike(makeHeader({2, 2, 1, 1, 2, 1}), texture, true, true));
    EXPECT_EQ(MOXPixelWord(ePF_BC1).getWord(), texture.getPixelFormat().getWord());
    EXPECT_EQ(7u, texture.getWidth());
    EXPECT_EQ(2u, texture.getNumMIPLevels());
    EXPECT_EQ((std::vector<int>{0, 0, 100, 100}), firstBytes(texture));
}

TEST(ConformTextures, WithoutSurfacesCannotBeRepeated)
{
    const CMOXTextureHeader reference = makeHeader({2, 2, 1, 1, 2, 6});
    for (const Shape& shape : {Shape{2, 2, 1, 1, 0, 1}, Shape{2, 2, 1, 1, 1, 0}})
    {
        CMOXTexture texture{makeHeader(shape)};
        EXPECT_FALSE(makeSurfacesAlike(reference, texture, true, true));
        EXPECT_EQ(shape.uiMembers, texture.getNumArrayMembers());
        EXPECT_EQ(shape.uiFaces, texture.getNumFaces());
    }
    CMOXTexture none;
    EXPECT_FALSE(makeSurfacesAlike(reference, none, true, true));
    CMOXTexture cut = makeNoise({2, 2, 1, 1, 1, 1});
    cut.setNumArrayMembers(3); // more than its block holds
    EXPECT_FALSE(makeSurfacesAlike(reference, cut, true, true));
}

TEST(ConformTextures, StayAsTheyAreWhereTheReferenceHasNoSurfacesOrTooMany)
{
    for (const Shape& shape : {Shape{2, 2, 1, 1, 0, 1}, Shape{2, 2, 1, 1, 1, 0}, Shape{2, 2, 1, 1, 0xFFFFFFFF, 0xFFFFFFFF}})
    {
        CMOXTexture texture = makeNumbered({2, 2, 1, 1, 1, 2});
        EXPECT_FALSE(makeSurfacesAlike(makeHeader(shape), texture, true, true));
        EXPECT_EQ((std::vector<int>{0, 1}), firstBytes(texture));
    }
}

TEST(ConformTextures, OutsideAWorkingFormCannotBeResizedOrGivenLevels)
{
    const CMOXTextureHeader reference = makeHeader({8, 8, 1, 2, 1, 1});
    CMOXTexture texture = makeNoise({4, 4, 1, 1, 1, 1}, ePF_BC1);
    const std::vector<uint8_t> before = bytesOf(texture);
    const ConformDifferences differences = findDifferences(reference, &texture, 1);
    EXPECT_FALSE(conformSizes(reference, &texture, 1, differences));
    EXPECT_FALSE(conformMIPMaps(reference, &texture, 1, differences));
    EXPECT_EQ(before, bytesOf(texture));
}
