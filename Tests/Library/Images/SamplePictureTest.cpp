#include <cstring>
#include <vector>

#include <gtest/gtest.h>

#include "Images/LoadTextureFile.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

TEST(SamplePicture, IsWhatTheGeneratorMakes)
{
    LoadStatus status;
    CMOXTexture sample;
    loadTextureFile(status, sample, HALVANE_SOURCE_DIR "/Documentation/Samples/Sample.png");
    ASSERT_FALSE(status.bFailed) << status.strError;
    ASSERT_EQ(512u, sample.getWidth());
    ASSERT_EQ(512u, sample.getHeight());
    const std::vector<uint8_t> made = testsupport::makePicture(512, 512, 1);
    ASSERT_EQ(made.size(), sample.getBlockSize());
    EXPECT_EQ(0, std::memcmp(made.data(), sample.getDataPtr(), made.size()));
}

TEST(SeededRandom, GivesTheNumbersOfSplitMix64)
{
    // The published test sequence of seed 1234567.
    testsupport::CSeededRandom random(1234567);
    EXPECT_EQ(6457827717110365317u, random.next64());
    EXPECT_EQ(3203168211198807973u, random.next64());
    EXPECT_EQ(9817491932198370423u, random.next64());
}
