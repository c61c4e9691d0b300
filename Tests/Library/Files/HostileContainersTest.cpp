#include <string>

#include <gtest/gtest.h>

#include "Files/FileTypes.h"
#include "Library/Files/LargestRequest.h"
#include "Support/DdsFileBuilder.h"
#include "Support/KtxFileBuilder.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/MemoryLimit.h"
#include "Support/NativeFileBuilder.h"
#include "Support/TemporaryFolder.h"
#include "Texture/CMOXTexture.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;
constexpr uint32_t k_uiR8 = 33321; // of a KTX file

/// A file of a few bytes that claims far more than it can have.
struct HostileFile
{
    const char* strName;
    Bytes bytes;
};

Bytes astcFile(uint8_t ui8BlockZ, uint32_t uiSize)
{
    Bytes bytes = {0x13, 0xAB, 0xA1, 0x5C, 4, 4, ui8BlockZ};
    for (int i = 0; i < 3; ++i)
        for (const uint32_t uiShift : {0u, 8u, 16u})
            bytes.push_back(static_cast<uint8_t>(uiSize >> uiShift));
    bytes.resize(64, 1);
    return bytes;
}

std::vector<HostileFile> makeFiles()
{
    const Bytes few(64, 1);
    return {
        {"giant-array.dds", CDdsFileBuilder().size(4, 4).extended(28, 3, 0, k_uiHuge).data(few).bytes()},
        {"giant-array-of-cubes.dds", CDdsFileBuilder().extended(28, 3, 4, 0x10000000).data(few).bytes()},
        {"array-of-large-members.dds", CDdsFileBuilder().size(8192, 8192).extended(28, 3, 0, 15).data(few).bytes()},
        {"array-of-small-members.dds", CDdsFileBuilder().extended(61, 3, 0, 0x10000000).data(few).bytes()},
        {"resource-dimension-0.dds", CDdsFileBuilder().extended(28, 0).data(few).bytes()},
        {"levels.dds", CDdsFileBuilder().levels(k_uiHuge).data(few).bytes()},
        {"sides.dds", CDdsFileBuilder().size(k_uiHuge, k_uiHuge).depth(k_uiHuge).data(few).bytes()},
        {"key-value-size.ktx", CKtxFileBuilder().keyValueSize(0xFFFFFFF0).withKeyBytes({0xE0, 0xFF, 0xFF, 0xFF}).level(4, few).bytes()},
        {"no-faces.ktx", CKtxFileBuilder().faces(0).level(4, few).bytes()},
        {"faces.ktx", CKtxFileBuilder().faces(k_uiHuge).level(4, few).bytes()},
        {"elements.ktx", CKtxFileBuilder().format(k_uiR8).elements(0x10000000).level(4, few).bytes()},
        {"levels.ktx", CKtxFileBuilder().levels(k_uiHuge).level(4, few).bytes()},
        {"sides.ktx", CKtxFileBuilder().size(k_uiHuge, k_uiHuge, k_uiHuge).level(4, few).bytes()},
        {"image-size.ktx", CKtxFileBuilder().size(8192, 8192).elements(15).level(0xF0000000, few).bytes()},
        {"sides.astc", astcFile(1, 0xFFFFFF)},
        {"sides-of-cubic-blocks.astc", astcFile(4, 0xFFFFFF)},
        {"surfaces.mox", CLegacyFileBuilder().surfaces(k_uiHuge).data(few).bytes()},
        {"surfaces-of-large-sides.mox", CLegacyFileBuilder().size(8192, 8192).surfaces(15).data(few).bytes()},
        {"sides-44.mox", CLegacyFileBuilder(44).size(k_uiHuge, k_uiHuge).data(few).bytes()},
        {"levels-52.mox", CLegacyFileBuilder().levelsBelow(k_uiHuge - 1).data(few).bytes()},
        {"members-3.mox", CNativeFileBuilder().members(k_uiHuge).data(few).bytes()},
    };
}

/// The texture of a path, with what it took to come to it in getLargestRequest().
CMOXTexture loadMeasured(const std::string& strPath)
{
    getLargestRequest() = 0;
    return CMOXTexture(strPath);
}

} // namespace

TEST(HostileContainers, WhatClaimsMoreThanItCanHaveIsRefusedWithNothingLargeTaken)
{
    const CTemporaryFolder folder;
    for (const HostileFile& file : makeFiles())
    {
        const CMOXTexture texture = loadMeasured(folder.write(file.strName, file.bytes));
        EXPECT_EQ(0u, texture.getDataSize()) << file.strName;
        EXPECT_EQ(nullptr, texture.getDataPtr()) << file.strName;
        EXPECT_LT(getLargestRequest(), 65536u) << file.strName;
    }
}

#ifndef HALVANE_SANITISED
TEST(HostileContainers, AndFitsALittleMemory)
{
    const CTemporaryFolder folder;
    for (const HostileFile& file : makeFiles())
    {
        const std::string strPath = folder.write(file.strName, file.bytes);
        const CMemoryLimit limit;
        EXPECT_EQ(0u, CMOXTexture(strPath).getDataSize()) << file.strName;
    }
}
#endif

TEST(HostileContainers, SoundOnesOfTheSameSizesAreLoaded)
{
    // What the files above are refused for is what they claim, not how they were put together.
    const Bytes four(4, 1);
    const CTemporaryFolder folder;
    for (const HostileFile& file :
         {HostileFile{"a.dds", CDdsFileBuilder().extended(28, 3, 0, 1).data(four).bytes()},
          HostileFile{"a.ktx", CKtxFileBuilder().withKey("a", "b").level(4, four).bytes()}, HostileFile{"a.astc", astcFile(1, 4)},
          HostileFile{"b.astc", astcFile(4, 4)}, HostileFile{"a.mox", CLegacyFileBuilder().data(four).bytes()},
          HostileFile{"b.mox", CLegacyFileBuilder(44).data(four).bytes()}})
        EXPECT_NE(0u, CMOXTexture(folder.write(file.strName, file.bytes)).getDataSize()) << file.strName;
}

TEST(HostileContainers, AnEmptyFileOfAnyKindIsNoTexture)
{
    const CTemporaryFolder folder;
    for (const char* strName : {"a.ktx", "a.dds", "a.astc", "a.h", "a.mox", "a"})
        EXPECT_EQ(0u, CMOXTexture(folder.write(strName, Bytes())).getDataSize()) << strName;
}
