#include "Composition/FaceNames.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace moxtexture;

namespace
{

CMOXTextureHeader makeHeader(uint32_t uiFaces, const char* strOrder)
{
    CMOXTextureHeader header(k_RGBA8, 4, 4, 1, 1, 1, uiFaces, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    if (strOrder != nullptr)
        header.addMetaData(MetaDataBlock(CMOXTextureHeader::k_ui32NativeFourCC, eMetaDataCubeMapOrder, strOrder,
                                         static_cast<uint32_t>(std::strlen(strOrder))));
    return header;
}

} // namespace

TEST(FaceNames, WithoutAnOrderAreTheAxesInTurn)
{
    const CMOXTextureHeader header = makeHeader(6, nullptr);
    const char* const apNames[] = {"+X", "-X", "+Y", "-Y", "+Z", "-Z"};
    for (uint32_t i = 0; i < 6; ++i)
        EXPECT_EQ(apNames[i], getFaceName(header, i));
}

TEST(FaceNames, FollowTheOrderOfTheTexture)
{
    const CMOXTextureHeader header = makeHeader(6, "zZyYxX");
    const char* const apNames[] = {"-Z", "+Z", "-Y", "+Y", "-X", "+X"};
    for (uint32_t i = 0; i < 6; ++i)
        EXPECT_EQ(apNames[i], getFaceName(header, i));
}

TEST(FaceNames, EndWithTheOrder)
{
    const CMOXTextureHeader header = makeHeader(3, "Yx");
    EXPECT_EQ("+Y", getFaceName(header, 0));
    EXPECT_EQ("-X", getFaceName(header, 1));
    EXPECT_EQ("N/A", getFaceName(header, 2));
}

TEST(FaceNames, BeyondTheSixthFaceThereAreNone)
{
    const CMOXTextureHeader header = makeHeader(7, nullptr);
    EXPECT_EQ("N/A", getFaceName(header, 6));
    EXPECT_EQ("N/A", getFaceName(header, 0xFFFFFFFF));
}
