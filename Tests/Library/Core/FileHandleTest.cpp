#include "Core/FileHandle.h"

#include <algorithm>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Support/FileSizeLimit.h"
#include "Support/SeededPictures.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using testsupport::CTemporaryFolder;

TEST(FileHandle, OpensARegularFileForReading)
{
    const CTemporaryFolder folder;
    const CFileHandle file = CFileHandle::openForReading(folder.write("a", "four"));
    ASSERT_TRUE(file.isOpen());
    char acText[5] = {};
    EXPECT_EQ(4u, std::fread(acText, 1, 4, file.get()));
    EXPECT_STREQ("four", acText);
}

TEST(FileHandle, AMissingFileAFolderAndADeviceAreNotToBeRead)
{
    const CTemporaryFolder folder;
    EXPECT_FALSE(CFileHandle::openForReading(folder.path("missing")).isOpen());
    EXPECT_FALSE(CFileHandle::openForReading("").isOpen());
    EXPECT_FALSE(CFileHandle::openForReading(folder.path()).isOpen());
    EXPECT_FALSE(CFileHandle::openForReading("/dev/zero").isOpen());
}

TEST(FileHandle, APipeWithoutAWriterIsRefusedAndNotWaitedFor)
{
    const CTemporaryFolder folder;
    ASSERT_EQ(0, ::mkfifo(folder.path("pipe").c_str(), 0600));
    EXPECT_FALSE(CFileHandle::openForReading(folder.path("pipe")).isOpen());
    EXPECT_TRUE(canOpenForReading(folder.path("pipe")));
    EXPECT_FALSE(isRegularFile(folder.path("pipe")));
}

TEST(FileHandle, NamesAreBytesThatGoToTheSystemAsTheyAre)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"Tür \xE6\x96\x87 \xF0\x9F\x96\xBC.mox", "not UTF-8 \xFF\xFE", "a\nb"})
    {
        CFileHandle file = CFileHandle::openForWriting(folder.path(strName));
        ASSERT_TRUE(file.isOpen());
        EXPECT_TRUE(file.close());
        EXPECT_TRUE(std::filesystem::exists(folder.path(strName)));
        EXPECT_TRUE(CFileHandle::openForReading(folder.path(strName)).isOpen());
    }
}

TEST(FileHandle, OpeningForWritingEmptiesAnEarlierFile)
{
    const CTemporaryFolder folder;
    CFileHandle file = CFileHandle::openForWriting(folder.write("a", "earlier"));
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(3u, std::fwrite("new", 1, 3, file.get()));
    EXPECT_TRUE(file.close());
    EXPECT_FALSE(file.isOpen());
    EXPECT_EQ("new", testsupport::readText(folder.path("a")));
}

TEST(FileHandle, CloseTellsOfWhatCouldNotBeWritten)
{
    CFileHandle file = CFileHandle::openForWriting("/dev/full");
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(3u, std::fwrite("abc", 1, 3, file.get())); // kept back until the file is closed
    EXPECT_FALSE(file.close());
}

TEST(FileHandle, CloseRemembersAFailureBeforeTheLastWrite)
{
    const CTemporaryFolder folder;
    CFileHandle file = CFileHandle::openForReading(folder.write("a", "x"));
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ(EOF, std::fputc('y', file.get()));
    EXPECT_FALSE(file.close());
}

TEST(FileHandle, ClosingWhatIsNotOpenFails)
{
    EXPECT_FALSE(CFileHandle().close());
}

TEST(FileHandle, OnlyAFileIsARegularFileAlsoThroughALink)
{
    const CTemporaryFolder folder;
    std::filesystem::create_symlink(folder.write("a", "x"), folder.path("link"));
    EXPECT_TRUE(isRegularFile(folder.path("link")));
    EXPECT_FALSE(isRegularFile(folder.path()));
    EXPECT_FALSE(isRegularFile(folder.path("missing")));
    EXPECT_FALSE(isRegularFile("/dev/null"));
}

TEST(FileHandle, AFolderCanBeOpenedThoughThereIsNothingToRead)
{
    const CTemporaryFolder folder;
    EXPECT_TRUE(canOpenForReading(folder.path()));
    EXPECT_FALSE(canOpenForReading(folder.path("missing")));
    EXPECT_FALSE(canOpenForReading(""));
}

TEST(FinishWriting, KeepsAFileThatIsWholeAndRemovesOneThatIsNot)
{
    const CTemporaryFolder folder;
    CFileHandle good = CFileHandle::openForWriting(folder.path("a"));
    EXPECT_TRUE(finishWriting(good, true, folder.path("a")));
    CFileHandle bad = CFileHandle::openForWriting(folder.path("b"));
    EXPECT_FALSE(finishWriting(bad, false, folder.path("b")));
    EXPECT_TRUE(std::filesystem::exists(folder.path("a")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("b")));
}

TEST(FinishWriting, RemovesAFileThatFillsTheDiskOnlyOnClosing)
{
    const CTemporaryFolder folder;
    const testsupport::CFileSizeLimit limit(2);
    CFileHandle file = CFileHandle::openForWriting(folder.path("a"));
    EXPECT_EQ(3u, std::fwrite("abc", 1, 3, file.get())); // kept back until then
    EXPECT_FALSE(finishWriting(file, true, folder.path("a")));
    EXPECT_EQ(0u, folder.count());
}

TEST(WriteFile, KeepsWhatWasWrittenAndRemovesWhatFailed)
{
    const CTemporaryFolder folder;
    EXPECT_TRUE(writeFile(folder.path("a"), [](std::FILE* pFile) { return std::fwrite("abc", 1, 3, pFile) == 3; }));
    EXPECT_EQ("abc", testsupport::readText(folder.path("a")));
    EXPECT_FALSE(writeFile(folder.path("a"), [](std::FILE*) { return false; }));
    EXPECT_EQ(0u, folder.count());
}

TEST(WriteFile, DoesNotCallTheWriterWhereThePathCannotBeOpened)
{
    const CTemporaryFolder folder;
    bool bCalled = false;
    EXPECT_FALSE(writeFile(folder.path("missing/a"), [&](std::FILE*) { return bCalled = true; }));
    EXPECT_FALSE(bCalled);
}

TEST(FileSize, IsTheBytesOfTheFileAndLeavesItAtItsStart)
{
    const CTemporaryFolder folder;
    const CFileHandle file = CFileHandle::openForReading(folder.write("a", "12345"));
    ASSERT_TRUE(file.isOpen());
    EXPECT_EQ('1', std::fgetc(file.get()));
    uint64_t ui64Size = 0;
    ASSERT_TRUE(getFileSize(file.get(), ui64Size));
    EXPECT_EQ(5u, ui64Size);
    EXPECT_EQ('1', std::fgetc(file.get()));
}

TEST(FileSize, IsNotToBeHadOfAPipe)
{
    int aiEnds[2];
    ASSERT_EQ(0, ::pipe(aiEnds));
    std::FILE* pFile = ::fdopen(aiEnds[0], "rb");
    ASSERT_NE(nullptr, pFile);
    uint64_t ui64Size = 0;
    EXPECT_FALSE(getFileSize(pFile, ui64Size));
    std::vector<uint8_t> bytes(1);
    EXPECT_FALSE(readWholeFile(pFile, bytes));
    EXPECT_TRUE(bytes.empty());
    std::fclose(pFile);
    ::close(aiEnds[1]);
}

TEST(ReadWholeFile, GivesAllBytesWhateverThePosition)
{
    const CTemporaryFolder folder;
    const CFileHandle file = CFileHandle::openForReading(folder.write("a", std::vector<uint8_t>{1, 0, 255}));
    ASSERT_TRUE(file.isOpen());
    std::fgetc(file.get());
    std::vector<uint8_t> bytes;
    ASSERT_TRUE(readWholeFile(file.get(), bytes));
    EXPECT_EQ((std::vector<uint8_t>{1, 0, 255}), bytes);
}

TEST(ReadWholeFile, AnEmptyFileIsNoBytes)
{
    const CTemporaryFolder folder;
    const CFileHandle file = CFileHandle::openForReading(folder.write("a", ""));
    ASSERT_TRUE(file.isOpen());
    std::vector<uint8_t> bytes(1);
    EXPECT_TRUE(readWholeFile(file.get(), bytes));
    EXPECT_TRUE(bytes.empty());
}

TEST(ReadWholeFile, AFileOfSeveralStepsIsReadToItsEnd)
{
    const CTemporaryFolder folder;
    for (const uint32_t uiSize : {(1u << 20) - 1, 1u << 20, (1u << 20) + 1, (3u << 20) + 5})
    {
        const std::vector<uint8_t> content = testsupport::CSeededRandom(uiSize).bytes(uiSize);
        const CFileHandle file = CFileHandle::openForReading(folder.write("a", content));
        ASSERT_TRUE(file.isOpen());
        std::vector<uint8_t> bytes;
        ASSERT_TRUE(readWholeFile(file.get(), bytes));
        EXPECT_TRUE(content == bytes) << uiSize;
    }
}

TEST(ReadWholeFile, ALongerFileThanIsWantedIsRefusedUnread)
{
    const CTemporaryFolder folder;
    const CFileHandle file = CFileHandle::openForReading(folder.write("a", "12345"));
    ASSERT_TRUE(file.isOpen());
    std::vector<uint8_t> bytes(1);
    EXPECT_FALSE(readWholeFile(file.get(), bytes, 4));
    EXPECT_TRUE(bytes.empty());
    EXPECT_TRUE(readWholeFile(file.get(), bytes, 5));
    EXPECT_EQ(5u, bytes.size());
}

TEST(ReadWholeFile, AHoleOfATerabyteIsRefusedAtOnce)
{
    const CTemporaryFolder folder;
    const std::string strPath = folder.write("a", "x");
    std::error_code failed;
    std::filesystem::resize_file(strPath, uint64_t{1} << 40, failed);
    ASSERT_FALSE(failed) << failed.message();
    const CFileHandle file = CFileHandle::openForReading(strPath);
    ASSERT_TRUE(file.isOpen());
    std::vector<uint8_t> bytes;
    EXPECT_FALSE(readWholeFile(file.get(), bytes, uint64_t{1} << 32));
    EXPECT_TRUE(bytes.empty());
}

TEST(ReadWholeFile, WhatClaimsMoreThanItDeliversTakesNoMoreThanThat)
{
    // Five bytes of a stream whose end stands at 4096.
    struct Position
    {
        off64_t iPosition = 0;
    } position;
    cookie_io_functions_t functions = {};
    functions.read = [](void* pCookie, char* pBuffer, size_t uiSize) -> ssize_t
    {
        auto& iPosition = static_cast<Position*>(pCookie)->iPosition;
        const size_t uiCount = iPosition < 5 ? std::min(uiSize, static_cast<size_t>(5 - iPosition)) : 0;
        std::fill_n(pBuffer, uiCount, 'x');
        iPosition += static_cast<off64_t>(uiCount);
        return static_cast<ssize_t>(uiCount);
    };
    functions.seek = [](void* pCookie, off64_t* pOffset, int iOrigin)
    {
        auto& iPosition = static_cast<Position*>(pCookie)->iPosition;
        const off64_t iBase = iOrigin == SEEK_END ? 4096 : iOrigin == SEEK_CUR ? iPosition : 0;
        iPosition = *pOffset += iBase;
        return 0;
    };
    std::FILE* pFile = ::fopencookie(&position, "rb", functions);
    ASSERT_NE(nullptr, pFile);
    uint64_t ui64Size = 0;
    ASSERT_TRUE(getFileSize(pFile, ui64Size));
    ASSERT_EQ(4096u, ui64Size);
    std::vector<uint8_t> bytes(1);
    EXPECT_FALSE(readWholeFile(pFile, bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(0u, bytes.capacity());
    std::fclose(pFile);
}

TEST(ReadWholeFile, AFolderGivesNoBytes)
{
    const CTemporaryFolder folder;
    std::FILE* pFile = std::fopen(folder.path().c_str(), "rb"); // which the system allows
    ASSERT_NE(nullptr, pFile);
    std::vector<uint8_t> bytes(1);
    // What end a folder has, and so whether this fails, depends on the file system; none of them delivers any byte.
    (void)readWholeFile(pFile, bytes);
    EXPECT_TRUE(bytes.empty());
    std::fclose(pFile);
}
