#include "Files/CHeaderFile.h"

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "Files/NativeFile.h"
#include "Files/SaveTexture.h"
#include "Support/FileSizeLimit.h"
#include "Support/NativeLoading.h"
#include "Support/RunProgram.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiFont = 0x746E6F66; // "font"

CMOXTexture textureOf(MOXPixelWord format, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiLevels = 1)
{
    const CMOXTextureHeader header(format, uiHeight, uiWidth, 1, uiLevels, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    return CMOXTexture(header, CSeededRandom(7).bytes(header.getDataSize()).data());
}

std::string exported(const CMOXTexture& texture, const std::string& strName = "a.h")
{
    const CTemporaryFolder folder;
    EXPECT_TRUE(saveCHeader(texture, folder.path(strName)));
    return readText(folder.path(strName));
}

size_t countOf(const std::string& strText, const std::string& strPart)
{
    size_t uiCount = 0;
    for (size_t i = strText.find(strPart); i != std::string::npos; i = strText.find(strPart, i + 1))
        ++uiCount;
    return uiCount;
}

/// The bytes that the array's text stands for.
Bytes bytesOf(const std::string& strText)
{
    Bytes bytes;
    for (size_t i = strText.find("0x"); i != std::string::npos; i = strText.find("0x", i + 5))
        bytes.push_back(static_cast<uint8_t>(std::stoul(strText.substr(i + 2, 2), nullptr, 16)));
    return bytes;
}

} // namespace

TEST(CHeader, APixelWithMetaDataLetterByLetter)
{
    const uint8_t aui8Pixel[] = {1, 2, 0xAB, 255};
    CMOXTexture texture(CMOXTextureHeader(k_RGBA8, 1, 1, 1, 1, 1, 1, eCS_sRGB, eCT_UnsignedNormalisedByte, true), aui8Pixel);
    texture.setOrientation(2);
    texture.addMetaData(MetaDataBlock(k_uiFont, 8, "xy", 2));
    EXPECT_EQ("/********************************************************** \n"
              " * HalvaneLib\n"
              " **********************************************************/\n"
              "\n"
              "#ifndef A8BIT \n"
              " #define A8BIT static const unsigned char\n"
              "#endif\n"
              "\n"
              "A8BIT a[] = {\n"
              "\n"
              "/* Header */\n"
              "0x4d,0x4f,0x58,0x03,\n"
              "0x02,0x00,0x00,0x00,\n"
              "0x72,0x67,0x62,0x61,\n"
              "0x08,0x08,0x08,0x08,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x00,0x00,0x00,0x00,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x01,0x00,0x00,0x00,\n"
              "0x1d,0x00,0x00,0x00,\n" // 12 + 3 and 12 + 2
              "\n"
              "/* Meta Data */\n"
              "0x4d,0x4f,0x58,0x03,\n"
              "0x03,0x00,0x00,0x00,\n"
              "0x03,0x00,0x00,0x00,\n"
              "0x00,0x02,0x00,\n"
              "0x66,0x6f,0x6e,0x74,\n"
              "0x08,0x00,0x00,0x00,\n"
              "0x02,0x00,0x00,0x00,\n"
              "0x78,0x79,\n"
              "\n"
              "/* Data */\n"
              "0x01,0x02,0xab,0xff,};\n",
              exported(texture));
}

TEST(CHeader, TwoPixelsWithAMIPLevelAndWithoutMetaDataLetterByLetter)
{
    const uint8_t aui8Data[] = {0, 9, 10, 127, 128, 0xFE, 0xFF, 0x5A, 0xA5, 16, 17, 15};
    const CMOXTexture texture(CMOXTextureHeader(layout("rg", 16, 16), 1, 2, 1, 2, 1, 1, eCS_Linear, eCT_SignedFloatingPoint, false),
                              aui8Data);
    EXPECT_EQ("/********************************************************** \n"
              " * HalvaneLib\n"
              " **********************************************************/\n"
              "\n"
              "#ifndef A8BIT \n"
              " #define A8BIT static const unsigned char\n"
              "#endif\n"
              "\n"
              "A8BIT two[] = {\n"
              "\n"
              "/* Header */\n"
              "0x4d,0x4f,0x58,0x03,\n" // version
              "0x00,0x00,0x00,0x00,\n" // flags
              "0x72,0x67,0x00,0x00,\n" // letters
              "0x10,0x10,0x00,0x00,\n" // bits
              "0x00,0x00,0x00,0x00,\n" // space
              "0x0c,0x00,0x00,0x00,\n" // type
              "0x01,0x00,0x00,0x00,\n" // height
              "0x02,0x00,0x00,0x00,\n" // width
              "0x01,0x00,0x00,0x00,\n" // depth
              "0x01,0x00,0x00,0x00,\n" // members
              "0x01,0x00,0x00,0x00,\n" // faces
              "0x02,0x00,0x00,0x00,\n" // levels
              "0x00,0x00,0x00,0x00,\n" // metadata
              "\n"
              "/* Data */\n"
              "0x00,0x09,0x0a,0x7f,0x80,0xfe,0xff,0x5a,0xa5,0x10,0x11,0x0f,};\n",
              exported(texture, "two.h"));
}

TEST(CHeader, EveryByteHasItsOwnText)
{
    Bytes all;
    std::string strExpected;
    for (uint32_t i = 0; i < 256; ++i)
    {
        all.push_back(static_cast<uint8_t>(i));
        char acText[8];
        std::snprintf(acText, sizeof(acText), "0x%02x,", i);
        strExpected += acText;
        if ((i & 31) == 31)
            strExpected += '\n';
    }
    const CMOXTextureHeader header(layout("r", 8), 1, 256, 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false);
    const std::string strText = exported(CMOXTexture(header, all.data()));
    EXPECT_EQ(strExpected + "};\n", strText.substr(strText.find("/* Data */\n") + 11));
}

TEST(CHeader, ItsBytesAreTheNativeFilesAndLoadAsSuch)
{
    CMOXTexture cubes(CMOXTextureHeader(ePF_ETC1, 13, 9, 1, 4, 2, 6, eCS_sRGB, eCT_UnsignedNormalisedByte, true),
                      CSeededRandom(3).bytes(8000).data());
    cubes.setOrientation(6);
    cubes.addMetaData(MetaDataBlock(k_uiFont, 1, "one", 3));
    cubes.addMetaData(MetaDataBlock(k_uiFont, 2, "fourth", 6));
    cubes.addPaddingMetaData(64);
    const CMOXTexture volume(CMOXTextureHeader(k_RGBA16, 3, 2, 5, 2, 1, 1, eCS_Linear, eCT_UnsignedNormalisedShort, false),
                             CSeededRandom(4).bytes(3 * 2 * 5 * 8 + 1 * 1 * 2 * 8).data());
    const CTemporaryFolder folder;
    for (const CMOXTexture& texture : {cubes, volume, textureOf(ePF_1bpp, 17, 3), textureOf(k_RGBA8, 1, 1)})
    {
        ASSERT_TRUE(writeNative(texture, folder.path("a.mox")));
        const Bytes bytes = bytesOf(exported(texture));
        EXPECT_EQ(readBytes(folder.path("a.mox")), bytes);
        const NativeLoad load = loadNative(bytes);
        EXPECT_EQ(texture.getEncoding(), load.texture.getEncoding());
        EXPECT_EQ(dataOf(texture), dataOf(load.texture));
    }
}

TEST(CHeader, AMetaDataSizeThatIsNotTheBlocksGoesOutAsInTheNativeFile)
{
    CMOXTexture texture = textureOf(k_RGBA8, 1, 1);
    texture.addMetaData(MetaDataBlock(k_uiFont, 1, "one", 3));
    texture.addMetaData(MetaDataBlock(k_uiFont, 1, "fourth", 6)); // the first, which is gone, still counts
    const CTemporaryFolder folder;
    ASSERT_TRUE(writeNative(texture, folder.path("a.mox")));
    const Bytes bytes = bytesOf(exported(texture));
    EXPECT_EQ(readBytes(folder.path("a.mox")), bytes);
    EXPECT_EQ(52u + 18 + 4, bytes.size());
    EXPECT_EQ(15u + 18, bytes.at(48));

    // No size, no section, whatever there is.
    texture.setMetaDataSize(0);
    EXPECT_EQ(52u + 4, bytesOf(exported(texture)).size());
}

TEST(CHeader, WithoutMetaDataThereIsNoSectionForIt)
{
    EXPECT_EQ(std::string::npos, exported(textureOf(k_RGBA8, 1, 1)).find("Meta Data"));
}

TEST(CHeader, ALineOfDataHas32Bytes)
{
    const auto dataOfWidth = [](uint32_t uiWidth)
    {
        const std::string strText = exported(textureOf(layout("r", 8), uiWidth, 1));
        return strText.substr(strText.find("/* Data */\n") + 11);
    };
    EXPECT_EQ(31u * 5 + 3, dataOfWidth(31).size());
    EXPECT_EQ(1u, countOf(dataOfWidth(31), "\n"));
    EXPECT_EQ(32u * 5 + 1 + 3, dataOfWidth(32).size());
    EXPECT_EQ('\n', dataOfWidth(32)[160]);
    EXPECT_EQ(65u * 5 + 2 + 3, dataOfWidth(65).size());
    EXPECT_EQ('\n', dataOfWidth(65)[161 + 160]);
}

TEST(CHeader, ATextureWithoutDataEndsAtOnce)
{
    const std::string strText = exported(CMOXTexture());
    EXPECT_EQ("/* Data */\n};\n", strText.substr(strText.find("/* Data */")));
}

TEST(CHeader, The32ndOwnersMetaDataHasALineToAByte)
{
    CMOXTexture texture = textureOf(k_RGBA8, 1, 1);
    for (uint32_t i = 0; i < 33; ++i)
    {
        const uint8_t aui8Data[] = {0xC0, 0xC1, static_cast<uint8_t>(i)};
        texture.addMetaData(MetaDataBlock(i, 0, aui8Data, sizeof(aui8Data)));
    }
    const std::string strText = exported(texture);
    EXPECT_NE(std::string::npos, strText.find("\n0xc0,0xc1,0x1e,\n0x1f,0x00,"));
    EXPECT_NE(std::string::npos, strText.find("\n0xc0,\n0xc1,\n0x1f,\n\n0x20,0x00,"));
    EXPECT_NE(std::string::npos, strText.find("\n0xc0,0xc1,0x20,\n\n/* Data */"));
}

TEST(CHeader, TheArrayIsCalledAsTheFileIsUpToItsFirstDot)
{
    EXPECT_EQ("my", getCArrayName("C:\\textures\\my.big.tex.h"));
    EXPECT_EQ("my", getCArrayName("/home/a.b/my.h"));
    EXPECT_EQ("my", getCArrayName("one\\two/my.h"));
    EXPECT_EQ("my", getCArrayName("one/two\\my.h"));
    EXPECT_EQ("a", getCArrayName("a.h"));
    EXPECT_EQ("a", getCArrayName("a"));
    EXPECT_EQ("a", getCArrayName("a...h"));
    EXPECT_EQ("7-up (1)", getCArrayName("7-up (1).h")); // no name that a compiler would take
    EXPECT_EQ("", getCArrayName("folder/"));
    EXPECT_EQ("", getCArrayName("folder\\"));
    EXPECT_EQ("", getCArrayName("folder/.hidden.h"));
    EXPECT_EQ("", getCArrayName(".h"));
    EXPECT_EQ("", getCArrayName(""));
    EXPECT_NE(std::string::npos, exported(textureOf(k_RGBA8, 1, 1), "my.big.tex.h").find("A8BIT my[] = {\n"));
}

TEST(CHeader, TheNameIsTakenAsItIs)
{
    const CTemporaryFolder folder;
    std::FILE* pFile = std::fopen(folder.path("a.h").c_str(), "wb");
    ASSERT_NE(nullptr, pFile);
    EXPECT_TRUE(writeCHeader(textureOf(k_RGBA8, 1, 1), pFile, "%s%n 1-2"));
    std::fclose(pFile);
    EXPECT_NE(std::string::npos, readText(folder.path("a.h")).find("A8BIT %s%n 1-2[] = {\n"));
}

TEST(CHeader, ACompilerTakesItAndItsBytesAreTheNativeFiles)
{
    CMOXTexture texture = textureOf(k_RGBA8, 61, 47, 6);
    texture.setBumpMap(1.5f, "xyz");
    for (uint32_t i = 0; i < 40; ++i)
        texture.addMetaData(MetaDataBlock(i, i, "0123456789", 10));

    const CTemporaryFolder folder;
    ASSERT_TRUE(saveCHeader(texture, folder.path("picture.of.it.h")));
    ASSERT_TRUE(writeNative(texture, folder.path("picture.mox")));
    folder.write("main.c", "#include <stdio.h>\n"
                           "#include \"picture.of.it.h\"\n"
                           "int main(void) { return fwrite(picture, sizeof(picture), 1, stdout) != 1; }\n");
    const ProgramRun compiler =
        runProgram({"/usr/bin/env", "cc", "-std=c99", "-Wall", "-Werror", "-pedantic", folder.path("main.c"), "-o", folder.path("main")});
    ASSERT_EQ(0, compiler.iStatus) << compiler.strErrors;
    ProgramSetting setting;
    setting.strOutputPath = folder.path("bytes");
    ASSERT_EQ(0, runProgram({folder.path("main")}, setting).iStatus);
    EXPECT_EQ(readBytes(folder.path("picture.mox")), readBytes(folder.path("bytes")));
}

TEST(CHeader, ALongTextIsWholeAcrossItsWrites)
{
    const CMOXTexture texture = textureOf(layout("r", 8), 1000, 400);
    const std::string strText = exported(texture);
    const size_t uiStart = strText.find("/* Data */\n") + 11;
    ASSERT_EQ(uiStart + 400000 * 5 + 12500 + 3, strText.size());
    const uint8_t* pData = texture.getDataPtr();
    for (size_t i = 0; i < 400000; ++i)
        ASSERT_EQ(pData[i], std::stoi(strText.substr(uiStart + i * 5 + i / 32, 4), nullptr, 16)) << i;
}

TEST(CHeader, SavingByTheExtensionHWritesIt)
{
    const CMOXTexture texture = textureOf(k_RGBA8, 3, 3);
    const CTemporaryFolder folder;
    ASSERT_TRUE(saveTexture(texture, folder.path("a.h")));
    ASSERT_TRUE(saveTexture(texture, folder.path("b.H")));
    EXPECT_EQ(2u, folder.count());
    EXPECT_EQ(exported(texture), readText(folder.path("a.h")));
    EXPECT_EQ(exported(texture, "b.h"), readText(folder.path("b.H")));
}

TEST(CHeader, WhatCannotBeWrittenFailsAndNoFileRemains)
{
    const CMOXTexture texture = textureOf(k_RGBA8, 8, 8);
    const CTemporaryFolder folder;
    EXPECT_FALSE(saveCHeader(texture, folder.path("missing/a.h")));
    EXPECT_FALSE(saveCHeader(texture, folder.path()));
    for (const rlim_t uiRoom : {0u, 100u, 1000u})
    {
        const CFileSizeLimit limit(uiRoom);
        EXPECT_FALSE(saveCHeader(texture, folder.write("a.h", "earlier")));
        EXPECT_EQ(0u, folder.count()) << uiRoom;
    }
}
