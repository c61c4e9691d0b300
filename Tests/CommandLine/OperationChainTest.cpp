#include "CommandLine/OperationChain.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

#include "Operations/MIPMaps.h"
#include "Operations/Resize.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;

namespace
{

/// A chain filled from words as a verb fills it.
class CParsedChain
{
public:
    explicit CParsedChain(const std::string& strWords)
    {
        m_Chain.addOptions(m_App);
        m_App.parse(strWords);
    }

    [[nodiscard]] const COperationChain& get() const { return m_Chain; }

private:
    CLI::App m_App;
    COperationChain m_Chain;
};

bool isUnderstood(const std::string& strWords)
{
    try
    {
        const CParsedChain chain(strWords);
        return true;
    }
    catch (const CLI::ParseError&)
    {
        return false;
    }
}

/// One byte a pixel, repeated in all four channels, as text: a row of 'a' to 'z', or '.' for zero.
CMOXTexture makeRow(const std::string& strPixels)
{
    CMOXTexture texture(
        CMOXTextureHeader(k_RGBA8, 1, static_cast<uint32_t>(strPixels.size()), 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    for (size_t i = 0; i < 4 * strPixels.size(); ++i)
        texture.getDataPtr()[i] = static_cast<uint8_t>(strPixels[i / 4]);
    return texture;
}

std::string textOf(const CMOXTexture& texture)
{
    std::string strPixels;
    for (uint32_t i = 0; i < texture.getWidth() * texture.getHeight(); ++i)
        strPixels += texture.getDataPtr()[4 * i] == 0 ? '.' : static_cast<char>(texture.getDataPtr()[4 * i]);
    return strPixels;
}

/// The row "ab" after the operations.
std::string rowAfter(const std::string& strWords)
{
    CMOXTexture texture = makeRow("ab");
    std::string strFailed;
    EXPECT_TRUE(CParsedChain(strWords).get().apply(texture, strFailed)) << strFailed;
    return textOf(texture);
}

CMOXTexture makePictureTexture()
{
    const std::vector<uint8_t> pixels = testsupport::makePicture(16, 12);
    return CMOXTexture(CMOXTextureHeader(k_RGBA8, 12, 16, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false), pixels.data());
}

std::vector<uint8_t> bytesOf(const CMOXTexture& texture)
{
    return {texture.getDataPtr(), texture.getDataPtr() + texture.getDataSize()};
}

std::vector<uint8_t> pictureAfter(const std::string& strWords)
{
    CMOXTexture texture = makePictureTexture();
    std::string strFailed;
    EXPECT_TRUE(CParsedChain(strWords).get().apply(texture, strFailed)) << strFailed;
    return bytesOf(texture);
}

std::vector<uint8_t> pictureResized(uint32_t uiWidth, uint32_t uiHeight, EResizeMode eMode)
{
    CMOXTexture texture = makePictureTexture();
    EXPECT_TRUE(Resize(texture, uiWidth, uiHeight, 1, eMode));
    return bytesOf(texture);
}

} // namespace

TEST(OperationChain, AppliesOperationsInTheOrderWritten)
{
    EXPECT_EQ("b", rowAfter("--flip x --canvas 1x1"));
    EXPECT_EQ("a", rowAfter("--canvas 1x1 --flip x"));
    EXPECT_EQ("aabb", rowAfter("--border 1,0"));
    EXPECT_EQ("bbaa", rowAfter("--border 1,0 --flip x"));
    EXPECT_EQ("b.", rowAfter("--flip x --canvas 1x1 --canvas 2x1"));
}

TEST(OperationChain, AppliesOneOperationAsOftenAsItIsWritten)
{
    EXPECT_EQ("ba", rowAfter("--flip x"));
    EXPECT_EQ("ab", rowAfter("--flip x --flip x"));
    EXPECT_EQ("ba", rowAfter("--flip x --flip x --flip x"));
    EXPECT_EQ(".b", rowAfter("--canvas 3x1 --flip x --canvas 2x1"));
}

TEST(OperationChain, TakesValuesAlsoBehindAnEqualsSign)
{
    EXPECT_EQ("b", rowAfter("--flip=x --canvas=1x1"));
}

TEST(Canvas, PutsThePictureAtItsOffset)
{
    EXPECT_EQ(".ab.", rowAfter("--canvas 4x1+1+0"));
    EXPECT_EQ("b.", rowAfter("--canvas 2x1+-1+0"));
    EXPECT_EQ("..ab", rowAfter("--canvas 2x2+0+1"));
    EXPECT_EQ("..ab", rowAfter("--canvas 2x2+0+1+0"));
    EXPECT_EQ("..", rowAfter("--canvas 2x1+0+0+1"));
    EXPECT_EQ("ab..", rowAfter("--canvas 4x1x1"));
}

TEST(Rotate, TurnsClockwiseAndBack)
{
    CMOXTexture texture = makeRow("ab");
    std::string strFailed;
    ASSERT_TRUE(CParsedChain("--rotate cw").get().apply(texture, strFailed));
    EXPECT_EQ(1u, texture.getWidth());
    EXPECT_EQ("ab", textOf(texture)); // from top to bottom
    texture = makeRow("ab");
    ASSERT_TRUE(CParsedChain("--rotate ccw").get().apply(texture, strFailed));
    EXPECT_EQ(2u, texture.getHeight());
    EXPECT_EQ("ba", textOf(texture));
    EXPECT_EQ("ab", rowAfter("--rotate cw --rotate ccw"));
}

TEST(Filter, IsLinearAtFirst)
{
    EXPECT_EQ(pictureResized(8, 6, eResizeLinear), pictureAfter("--resize 8x6"));
}

TEST(Filter, IsForTheOperationsBehindItUntilTheNext)
{
    EXPECT_EQ(pictureResized(8, 6, eResizeCubic), pictureAfter("--filter cubic --resize 8x6"));
    EXPECT_EQ(pictureResized(8, 6, eResizeLinear), pictureAfter("--resize 8x6 --filter cubic"));
    EXPECT_EQ(pictureResized(8, 6, eResizeNearest), pictureAfter("--filter cubic --filter nearest --resize 8x6 --filter linear"));
    EXPECT_NE(pictureResized(8, 6, eResizeNearest), pictureResized(8, 6, eResizeCubic));
}

TEST(Filter, IsForMipLevelsToo)
{
    CMOXTexture expected = makePictureTexture();
    ASSERT_TRUE(GenerateMIPMaps(expected, eResizeNearest, 0xFFFFFFFF));
    EXPECT_EQ(bytesOf(expected), pictureAfter("--filter nearest --mips all"));
}

TEST(Filter, AloneIsNoEdit)
{
    EXPECT_TRUE(CParsedChain("").get().isEmpty());
    EXPECT_TRUE(CParsedChain("--filter cubic").get().isEmpty());
    EXPECT_FALSE(CParsedChain("--filter cubic --colour-mips").get().isEmpty());
    EXPECT_FALSE(CParsedChain("--mips 1").get().isEmpty());
}

TEST(Mips, CountTheTopLevel)
{
    CMOXTexture texture = makePictureTexture();
    std::string strFailed;
    ASSERT_TRUE(CParsedChain("--mips 1").get().apply(texture, strFailed));
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    ASSERT_TRUE(CParsedChain("--mips 3").get().apply(texture, strFailed));
    EXPECT_EQ(3u, texture.getNumMIPLevels());
    ASSERT_TRUE(CParsedChain("--mips all").get().apply(texture, strFailed));
    EXPECT_EQ(5u, texture.getNumMIPLevels()); // 16, 8, 4, 2, 1
}

TEST(ColourMips, TintTheLevelsBelowTheTop)
{
    CMOXTexture texture = makePictureTexture();
    std::string strFailed;
    ASSERT_TRUE(CParsedChain("--mips 2 --colour-mips").get().apply(texture, strFailed));
    const uint8_t* pSecond = texture.getDataPtr(1);
    for (uint32_t i = 0; i < 8 * 6; ++i)
    {
        EXPECT_EQ(0, pSecond[4 * i]); // the first level below the top is green
        EXPECT_EQ(0, pSecond[4 * i + 2]);
    }
    EXPECT_EQ(pictureAfter("--mips 1"), std::vector<uint8_t>(texture.getDataPtr(), texture.getDataPtr() + 16 * 12 * 4));
}

TEST(OperationChain, NamesTheOperationThatFailed)
{
    CMOXTexture texture = makeRow("ab");
    texture.setChannelType(eCT_SignedByte); // no working form
    std::string strFailed;
    EXPECT_FALSE(CParsedChain("--filter cubic --resize 4x4 --flip x").get().apply(texture, strFailed));
    EXPECT_EQ("--resize 4x4", strFailed);
    EXPECT_FALSE(CParsedChain("--colour-mips").get().apply(texture, strFailed));
    EXPECT_EQ("--colour-mips", strFailed);
}

TEST(OperationChain, MayBeAppliedAgainAndAgain)
{
    const CParsedChain chain("--filter nearest --resize 8x6 --filter cubic");
    for (int i = 0; i < 2; ++i)
    {
        CMOXTexture texture = makePictureTexture();
        std::string strFailed;
        ASSERT_TRUE(chain.get().apply(texture, strFailed));
        EXPECT_EQ(pictureResized(8, 6, eResizeNearest), bytesOf(texture));
    }
}

TEST(OperationWords, AreRefusedWhereTheyAreNotWhatTheOptionTakes)
{
    for (const char* strWords : {"--resize",
                                 "--resize 4",
                                 "--resize 4x",
                                 "--resize x4",
                                 "--resize 0x4",
                                 "--resize 4x0",
                                 "--resize 4x4x0",
                                 "--resize 4x4x4x4",
                                 "--resize -4x4",
                                 "--resize 4x-4",
                                 "--resize 4.0x4",
                                 "--resize 4294967296x4",
                                 "--resize 4x4+1+1",
                                 "--resize 4*4",
                                 "--resize 4X4",
                                 "--canvas 4x4+1",
                                 "--canvas 4x4+1+",
                                 "--canvas 4x4-1-1",
                                 "--canvas 4x4+1+1+1+1",
                                 "--canvas 4x4+2147483648+0",
                                 "--canvas 4x4+1x1",
                                 "--canvas 0x4",
                                 "--flip",
                                 "--flip w",
                                 "--flip xy",
                                 "--flip X",
                                 "--flip 0",
                                 "--rotate 90",
                                 "--rotate",
                                 "--border 1",
                                 "--border 1,",
                                 "--border 1,-1",
                                 "--border 1,2,3,4",
                                 "--border 1;2",
                                 "--mips 0",
                                 "--mips -1",
                                 "--mips 33",
                                 "--mips 4294967295",
                                 "--mips ALL",
                                 "--mips",
                                 "--filter none",
                                 "--filter",
                                 "--colour-mips=false",
                                 "--colour-mips=1"})
        EXPECT_FALSE(isUnderstood(strWords)) << strWords;
}

TEST(OperationWords, AreTakenInEveryFormThatTheHelpTells)
{
    for (const char* strWords :
         {"--resize 4x4", "--resize 1x1x1", "--canvas 4x4", "--canvas 4x4x2", "--canvas 4x4+1+-1", "--canvas 4x4x2+0+0+-3",
          "--flip x --flip y --flip z", "--rotate cw --rotate ccw", "--border 0,0", "--border 1,2,3", "--mips 1", "--mips 32", "--mips all",
          "--colour-mips", "--filter nearest --filter linear --filter cubic"})
        EXPECT_TRUE(isUnderstood(strWords)) << strWords;
}
