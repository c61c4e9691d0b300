#include "Files/LoadTexture.h"

#include <filesystem>
#include <istream>
#include <stdexcept>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Files/FileTypes.h"
#include "Support/DdsFileBuilder.h"
#include "Support/KtxFileBuilder.h"
#include "Support/MemoryLimit.h"
#include "Support/NativeLoading.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;
namespace fs = std::filesystem;

namespace
{

const std::vector<uint8_t> k_NativeFile = CNativeFileBuilder().data({1, 2, 3, 4}).bytes();

/// A reader as those of stream formats are: asks for exceptions, and reads a width and a pixel a byte each.
bool readToyFormat(std::istream& stream, CMOXTexture& texture)
{
    stream.exceptions(std::ios::badbit | std::ios::failbit | std::ios::eofbit);
    char cWidth = 0;
    stream.read(&cWidth, 1);
    texture = CMOXTexture(
        CMOXTextureHeader(layout("r", 8), 1, static_cast<uint32_t>(cWidth), 1, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false));
    stream.read(reinterpret_cast<char*>(texture.getDataPtr()), cWidth);
    return true;
}

bool readThrough(const std::vector<uint8_t>& bytes, bool (*reader)(std::istream&, CMOXTexture&), CMOXTexture& texture)
{
    const CMemoryFile file(bytes);
    return readThroughStream(file.get(), reader, texture);
}

} // namespace

TEST(LoadTexture, TheNativeReaderTakesEveryExtensionThatNoOtherClaims)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"image.mox", "IMAGE.MOX", "image.xyz", "image.png", "image", "image.", "code.h", ".mox"})
    {
        const CMOXTexture texture(folder.write(strName, k_NativeFile));
        EXPECT_EQ(4u, texture.getDataSize()) << strName;
        EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), dataOf(texture)) << strName;
    }
}

TEST(LoadTexture, AnExtensionOfAnotherReaderIsNotGivenToTheNativeOne)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"image.ktx", "IMAGE.KTX", "image.dds", "IMAGE.DDS", "image.astc"})
    {
        const CMOXTexture texture(folder.write(strName, k_NativeFile));
        EXPECT_EQ(0u, texture.getDataSize()) << strName;
        EXPECT_EQ(nullptr, texture.getDataPtr()) << strName;
    }
}

TEST(LoadTexture, EachContainerGoesToItsOwnReader)
{
    const std::vector<uint8_t> ktx = CKtxFileBuilder().level(4, {1, 2, 3, 4}).bytes();
    const std::vector<uint8_t> dds = CDdsFileBuilder().data({1, 2, 3, 4}).bytes();
    // One block of 4 by 4 pixels.
    std::vector<uint8_t> astc = {0x13, 0xAB, 0xA1, 0x5C, 4, 4, 1, 4, 0, 0, 4, 0, 0, 1, 0, 0};
    astc.resize(32, 7);

    const CTemporaryFolder folder;
    for (const char* strName : {"image.ktx", "IMAGE.KTX"})
        EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), dataOf(CMOXTexture(folder.write(strName, ktx)))) << strName;
    for (const char* strName : {"image.dds", "IMAGE.DDS"})
        EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4}), dataOf(CMOXTexture(folder.write(strName, dds)))) << strName;
    EXPECT_EQ(std::vector<uint8_t>(16, 7), dataOf(CMOXTexture(folder.write("image.astc", astc))));
    for (const char* strName : {"image.mox", "image.h", "image"})
        for (const std::vector<uint8_t>& bytes : {ktx, dds, astc})
            EXPECT_EQ(0u, CMOXTexture(folder.write(strName, bytes)).getDataSize()) << strName;
}

TEST(LoadTexture, PixelsThatAreMissingLeaveTheTextureAsFarAsItWasRead)
{
    const CTemporaryFolder folder;
    const std::vector<uint8_t> expected = {1, 2, 3, 4, 5, 0, 0, 0};
    const std::vector<uint8_t> ktx = CKtxFileBuilder().size(2, 1).level(8, {1, 2, 3, 4, 5}).bytes();
    EXPECT_EQ(expected, dataOf(CMOXTexture(folder.write("a.ktx", ktx))));
    const std::vector<uint8_t> dds = CDdsFileBuilder().size(2, 1).data({1, 2, 3, 4, 5}).bytes();
    EXPECT_EQ(expected, dataOf(CMOXTexture(folder.write("a.dds", dds))));

    for (const auto& [strExtension, bytes] : {std::pair("ktx", ktx), std::pair("dds", dds)})
    {
        const CMemoryFile file(bytes);
        CMOXTexture texture;
        EXPECT_FALSE(readTexture(file.get(), strExtension, texture));
        EXPECT_EQ(expected, dataOf(texture)) << strExtension;
    }
}

TEST(LoadTexture, NumbersOutsideTheFormatTableLeaveTheShapeAndNoData)
{
    const CTemporaryFolder folder;
    const CMOXTexture ktx(folder.write("a.ktx", CKtxFileBuilder().format(1).size(2, 3).level(24, std::vector<uint8_t>(24)).bytes()));
    EXPECT_EQ(2u, ktx.getWidth());
    EXPECT_EQ(0u, ktx.getDataSize());
    const CMOXTexture dds(folder.write("a.dds", CDdsFileBuilder().size(2, 3).extended(1).data(std::vector<uint8_t>(24)).bytes()));
    EXPECT_EQ(2u, dds.getWidth());
    EXPECT_EQ(0u, dds.getDataSize());
}

TEST(LoadTexture, WhatCannotBeOpenedOrReadGivesADefaultTexture)
{
    const CTemporaryFolder folder;
    std::vector<std::string> paths = {std::string(), "/dev/zero"};
    for (const std::string strExtension : {"mox", "ktx", "dds", "astc"})
    {
        paths.push_back(folder.path("missing." + strExtension));
        paths.push_back(folder.path("pipe." + strExtension));
        ASSERT_EQ(0, ::mkfifo(paths.back().c_str(), 0600)); // nobody ever writes to it
        paths.push_back(folder.path("folder." + strExtension));
        fs::create_directory(paths.back());
    }
    for (const std::string& strPath : paths)
    {
        const CMOXTexture texture(strPath);
        EXPECT_EQ(0u, texture.getDataSize()) << strPath;
        EXPECT_EQ(0u, texture.getBlockSize()) << strPath;
        EXPECT_EQ(1u, texture.getWidth()) << strPath;
    }
}

#ifndef HALVANE_SANITISED
TEST(LoadTexture, AHoleOfATerabyteTakesNoMemory)
{
    const CTemporaryFolder folder;
    for (const std::string strExtension : {"mox", "ktx", "dds", "astc"})
    {
        const std::string strPath = folder.write("a." + strExtension, "x");
        std::error_code failed;
        fs::resize_file(strPath, uint64_t{1} << 40, failed);
        ASSERT_FALSE(failed) << failed.message();
        const CMemoryLimit limit;
        EXPECT_EQ(0u, CMOXTexture(strPath).getDataSize()) << strExtension;
    }
}
#endif

TEST(LoadTexture, WhatTheReaderSaysIsDropped)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture(folder.write("a.mox", CNativeFileBuilder().bytes())); // no byte of data
    EXPECT_EQ((std::vector<uint8_t>{0, 0, 0, 0}), dataOf(texture));
}

TEST(LoadTexture, ALoadThatFailsAfterItsHeaderMeasuresNothing)
{
    const CTemporaryFolder folder;
    const CMOXTexture texture(folder.write("a.mox", CNativeFileBuilder().size(4, 2).block(1, 2, {}).data({1}).bytes()));
    EXPECT_EQ(0u, texture.getDataSize());
    EXPECT_EQ(4u, texture.getWidth());
}

TEST(LoadTexture, FromAnOpenFileTheExtensionDecidesToo)
{
    const CMemoryFile file(k_NativeFile);
    CMOXTexture texture;
    EXPECT_FALSE(readTexture(file.get(), "ktx", texture));
    EXPECT_EQ(0u, texture.getDataSize());
    EXPECT_TRUE(readTexture(file.get(), "mox", texture));
    EXPECT_EQ(4u, texture.getDataSize());
}

TEST(ReadThroughStream, GivesTheReaderTheWholeFile)
{
    CMOXTexture texture;
    EXPECT_TRUE(readThrough({3, 7, 8, 9}, readToyFormat, texture));
    EXPECT_EQ((std::vector<uint8_t>{7, 8, 9}), dataOf(texture));
}

TEST(ReadThroughStream, StartsAtTheStartWhateverThePosition)
{
    const std::vector<uint8_t> bytes = {3, 7, 8, 9};
    const CMemoryFile file(bytes);
    std::fseek(file.get(), 0, SEEK_END);
    CMOXTexture texture;
    EXPECT_TRUE(readThroughStream(file.get(), readToyFormat, texture));
}

TEST(ReadThroughStream, AShortFileIsARuntimeErrorOfTheStreamAndBecomesFalse)
{
    CMOXTexture texture;
    EXPECT_FALSE(readThrough({3, 7}, readToyFormat, texture));
    EXPECT_FALSE(readThrough({}, readToyFormat, texture));
}

TEST(ReadThroughStream, TheReadersFalseIsPassedOn)
{
    CMOXTexture texture;
    EXPECT_FALSE(readThrough(
        {3, 7, 8, 9}, [](std::istream&, CMOXTexture&) { return false; }, texture));
}

TEST(ReadThroughStream, OtherExceptionsPassThrough)
{
    CMOXTexture texture;
    const auto reader = [](std::istream&, CMOXTexture&) -> bool { throw std::logic_error("not the stream's"); };
    EXPECT_THROW(static_cast<void>(readThrough({3}, reader, texture)), std::logic_error);
}

TEST(ReadThroughStream, AFileWithoutAnEndIsNotGivenToTheReader)
{
    int aiEnds[2];
    ASSERT_EQ(0, ::pipe(aiEnds));
    std::FILE* pFile = ::fdopen(aiEnds[0], "rb");
    CMOXTexture texture;
    const auto reader = [](std::istream&, CMOXTexture&) -> bool { throw std::logic_error("was called"); };
    EXPECT_FALSE(readThroughStream(pFile, reader, texture));
    std::fclose(pFile);
    ::close(aiEnds[1]);
}

TEST(FileTypes, EveryRowHasOneReaderAndAWriter)
{
    for (const char* strExtension : {"ktx", "dds", "astc", "h", "mox", "png", ""})
    {
        const FileType& type = getFileType(strExtension);
        EXPECT_NE(type.readHandle == nullptr, type.readStream == nullptr) << strExtension;
        EXPECT_NE(nullptr, type.write) << strExtension;
    }
}
